// Pressure on four-node surfaces and forces along lines, against closed forms.
#include "model/surface.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tidearc {
namespace {

Point sum_of(const Corners& forces) {
  Point sum{};
  for (const Point& f : forces) {
    for (std::size_t i = 0; i < 3; ++i) sum[i] += f[i];
  }
  return sum;
}

Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Moment of the corner forces about the origin.
Point moment_of(const Corners& x, const Corners& forces) {
  Point sum{};
  for (std::size_t k = 0; k < 4; ++k) {
    const Point m = cross(x[k], forces[k]);
    for (std::size_t i = 0; i < 3; ++i) sum[i] += m[i];
  }
  return sum;
}

void expect_near(const Point& found, const Point& wanted, double tolerance) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(found[i], wanted[i], tolerance) << "axis " << i + 1;
}

constexpr double round_off = 1.0E-12;  // a handful of operations on numbers of order ten

const Corners rectangle{{{0, 0, 0}, {4, 0, 0}, {4, 3, 0}, {0, 3, 0}}};

TEST(SurfacePressure, UniformPressurePushesAgainstTheOutwardNormalOfCounterClockwiseCorners) {
  const Corners f = pressure_forces(rectangle, {2, 2, 2, 2});
  expect_near(sum_of(f), {0, 0, -24}, round_off);  // p A = 2 * 12, normal +Z
}

TEST(SurfacePressure, UniformPressureOnARectangleGivesAQuarterToEachCorner) {
  for (const Point& corner : pressure_forces(rectangle, {2, 2, 2, 2})) expect_near(corner, {0, 0, -6}, round_off);
}

TEST(SurfacePressure, ReversedCornersReverseTheForce) {
  const Corners clockwise{rectangle[3], rectangle[2], rectangle[1], rectangle[0]};
  expect_near(sum_of(pressure_forces(clockwise, {2, 2, 2, 2})), {0, 0, 24}, round_off);
}

TEST(SurfacePressure, LinearPressureActsAtTwoThirdsOfTheDepth) {
  // Gate 4 wide and 3 deep with p from 0 at y = 3 to 9 at y = 0: force 9/2 * 12, 1 above the bottom.
  const Corners f = pressure_forces(rectangle, {9, 9, 0, 0});
  expect_near(sum_of(f), {0, 0, -54}, round_off);
  expect_near(moment_of(rectangle, f), {-54.0 * 1.0, 54.0 * 2.0, 0}, 1.0E-11);
}

TEST(SurfacePressure, BilinearPressureOfOneCornerIsSharedLikeAProductOfTwoLinearElements) {
  // p = N3: the shares are A/36 * {1, 2, 4, 2}.
  const Corners f = pressure_forces(rectangle, {0, 0, 1, 0});
  EXPECT_NEAR(f[0][2], -12.0 / 36.0, round_off);
  EXPECT_NEAR(f[1][2], -24.0 / 36.0, round_off);
  EXPECT_NEAR(f[2][2], -48.0 / 36.0, round_off);
  EXPECT_NEAR(f[3][2], -24.0 / 36.0, round_off);
}

TEST(SurfacePressure, TriangleWithAFoldedEdgeGivesAThirdOfTheForceToEachCorner) {
  const Corners triangle{{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {0, 3, 0}}};
  const Corners f = pressure_forces(triangle, {5, 5, 5, 5});
  expect_near(f[0], {0, 0, -10}, round_off);
  expect_near(f[1], {0, 0, -10}, round_off);
  expect_near({f[2][0] + f[3][0], f[2][1] + f[3][1], f[2][2] + f[3][2]}, {0, 0, -10}, round_off);
}

TEST(SurfacePressure, LinearPressureOnATriangleHasTheMeanOfTheCornersAsItsMean) {
  const Corners triangle{{{0, 0, 0}, {4, 0, 0}, {0, 3, 0}, {0, 3, 0}}};
  const Corners f = pressure_forces(triangle, {3, 6, 9, 9});
  expect_near(sum_of(f), {0, 0, -36}, round_off);  // mean 6 on an area of 6
  // Centre of a linear pressure on a triangle: x_c = sum of p_i (x_1+x_2+x_3+x_i)/12 over the mean, per area.
  const double x_c = (3 * 4 + 6 * 8 + 9 * 4) / 12.0 / 6.0;
  const double y_c = (3 * 3 + 6 * 3 + 9 * 6) / 12.0 / 6.0;
  expect_near(moment_of(triangle, f), {-36 * y_c, 36 * x_c, 0}, 1.0E-11);
}

TEST(SurfacePressure, TurningTheSurfaceTurnsTheForces) {
  // A turn by 90 degrees about X takes +Z into -Y.
  Corners turned;
  for (std::size_t k = 0; k < 4; ++k) turned[k] = {rectangle[k][0], 0, rectangle[k][1]};
  const std::array<double, 4> p{1, 4, 2, 7};
  const Corners flat = pressure_forces(rectangle, p);
  const Corners upright = pressure_forces(turned, p);
  for (std::size_t k = 0; k < 4; ++k) expect_near(upright[k], {0, -flat[k][2], 0}, round_off);
}

TEST(SurfacePressure, MovingTheSurfaceLeavesTheForces) {
  Corners moved = rectangle;
  for (Point& x : moved) x = {x[0] + 100, x[1] - 50, x[2] + 7};
  expect_near(sum_of(pressure_forces(moved, {1, 4, 2, 7})), sum_of(pressure_forces(rectangle, {1, 4, 2, 7})), 1.0E-11);
}

TEST(SurfacePressure, UniformPressureOnAWarpedSurfaceGivesTheProjectedArea) {
  // The vector area of any surface on a closed line is half the sum of x(i) cross x(i+1).
  const Corners warped{{{0, 0, 0}, {4, 0, 1}, {4, 3, 0}, {0, 3, 2}}};
  Point area{};
  for (std::size_t k = 0; k < 4; ++k) {
    const Point c = cross(warped[k], warped[(k + 1) % 4]);
    for (std::size_t i = 0; i < 3; ++i) area[i] += 0.5 * c[i];
  }
  expect_near(sum_of(pressure_forces(warped, {2, 2, 2, 2})), {-2 * area[0], -2 * area[1], -2 * area[2]}, round_off);
}

TEST(SurfacePressure, UniformPressureOnAClosedBoxIsInEquilibrium) {
  const Corners c{{{0, 0, 0}, {2, 0, 0}, {2, 3, 0}, {0, 3, 0}}};
  Corners t = c;
  for (Point& x : t) x[2] = 5;
  const std::array<Corners, 6> faces{Corners{c[3], c[2], c[1], c[0]}, Corners{t[0], t[1], t[2], t[3]},
                                     Corners{c[0], c[1], t[1], t[0]}, Corners{c[1], c[2], t[2], t[1]},
                                     Corners{c[2], c[3], t[3], t[2]}, Corners{c[3], c[0], t[0], t[3]}};
  Point sum{};
  for (const Corners& face : faces) {
    const Point f = sum_of(pressure_forces(face, {1, 1, 1, 1}));
    for (std::size_t i = 0; i < 3; ++i) sum[i] += f[i];
  }
  expect_near(sum, {0, 0, 0}, round_off);
}

TEST(SurfacePressure, FluidLiftsASubmergedBoxByTheWeightItDisplaces) {
  // Archimedes: density 10, volume 2 * 3 * 5; fluid surface 4 above the top.
  const Corners c{{{0, 0, 0}, {2, 0, 0}, {2, 3, 0}, {0, 3, 0}}};
  Corners t = c;
  for (Point& x : t) x[2] = 5;
  const std::array<Corners, 6> faces{Corners{c[3], c[2], c[1], c[0]}, Corners{t[0], t[1], t[2], t[3]},
                                     Corners{c[0], c[1], t[1], t[0]}, Corners{c[1], c[2], t[2], t[1]},
                                     Corners{c[2], c[3], t[3], t[2]}, Corners{c[3], c[0], t[0], t[3]}};
  Point sum{};
  for (const Corners& face : faces) {
    std::array<double, 4> p{};
    for (std::size_t k = 0; k < 4; ++k) p[k] = fluid_pressure(10, {0, 0, 1}, {0, 0, 9}, face[k]);
    const Point f = sum_of(pressure_forces(face, p));
    for (std::size_t i = 0; i < 3; ++i) sum[i] += f[i];
  }
  expect_near(sum, {0, 0, 300}, 1.0E-10);
}

TEST(FluidPressure, GrowsWithDepthAndIsZeroAboveTheSurface) {
  EXPECT_DOUBLE_EQ(fluid_pressure(64, {0, 0, 1}, {0, 0, 10}, {3, 4, 8}), 128.0);
  EXPECT_EQ(fluid_pressure(64, {0, 0, 1}, {0, 0, 10}, {3, 4, 10}), 0.0);
  EXPECT_EQ(fluid_pressure(64, {0, 0, 1}, {0, 0, 10}, {3, 4, 12}), 0.0);
}

TEST(FluidPressure, DensityIsScaledByTheLengthOfTheUpwardDirection) {
  EXPECT_DOUBLE_EQ(fluid_pressure(1, {0, 3, 4}, {0, 0, 0}, {0, -3, -4}), 25.0);  // depth 5, length 5
}

TEST(FollowerForce, PointsFromTheLoadedNodeTowardTheOther) {
  expect_near(force_along_line(10, {1, 1, 1}, {4, 1, 5}), {6, 0, 8}, round_off);
  expect_near(force_along_line(-10, {1, 1, 1}, {4, 1, 5}), {-6, 0, -8}, round_off);
}

TEST(FollowerForce, IsZeroBetweenCoincidentNodes) {
  EXPECT_EQ(force_along_line(10, {1, 2, 3}, {1, 2, 3}), (Point{0, 0, 0}));
}

}  // namespace
}  // namespace tidearc
