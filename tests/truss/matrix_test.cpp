// Geometry and matrices of the truss.
#include "elements/truss/matrix.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "elements/truss/geometry.h"

namespace tidearc {
namespace {

using Point = std::array<double, 3>;
using Matrix36 = std::array<double, 36>;

TEST(TrussGeometry, DirectionPointsFromJToI) {
  const TrussGeometry g = truss_geometry(Point{3.0, 4.0, 0.0}, Point{0.0, 0.0, 0.0});
  EXPECT_EQ(g.length, 5.0);
  EXPECT_DOUBLE_EQ(g.DIR[0], 0.6);
  EXPECT_DOUBLE_EQ(g.DIR[1], 0.8);
  EXPECT_DOUBLE_EQ(g.DIR[3], -0.6);
  EXPECT_DOUBLE_EQ(g.DIR[4], -0.8);
}

TEST(TrussGeometry, ExtensionIsPositiveWhenTheEndsMoveApart) {
  const double DIR[6] = {1, 0, 0, -1, 0, 0};
  const double apart[6] = {0.5, 0, 0, -0.25, 0, 0};
  EXPECT_EQ(extension(DIR, apart), 0.75);
}

TEST(EndMotion, GivesTheLengthOnTheWay) {
  const EndMotion m =
      end_motion(Point{3.0, 4.0, 0.0}, Point{0.0, 0.0, 0.0}, Point{1.0, 0.0, 2.0}, Point{0.0, 2.0, 2.0});
  EXPECT_EQ(m.length, 5.0);
  EXPECT_EQ(m.along, 3.0 - 8.0);
  EXPECT_EQ(m.squared, 5.0);
  for (const double t : {0.0, 0.25, 1.0, 3.0}) {
    const double length = truss_geometry(Point{3.0 + t, 4.0, 2.0 * t}, Point{0.0, 2.0 * t, 2.0 * t}).length;
    EXPECT_NEAR(m.extension(t), length - 5.0, 1e-14) << t;
  }
  EXPECT_NEAR(m.fraction_to(m.extension(3.0)), 3.0, 1e-14);
}

TEST(EndMotion, KeepsItsDigitsNearTheStart) {
  const EndMotion away{5.0, 5.0, 1.0};  // straight away from the other end, by 1
  EXPECT_NEAR(away.extension(1e-14), 1e-14, 1e-28);
  EXPECT_NEAR(away.fraction_to(1e-14), 1e-14, 1e-28);
  const EndMotion from_one_point{0.0, 0.0, 4.0};
  EXPECT_EQ(from_one_point.extension(0.0), 0.0);
  EXPECT_EQ(from_one_point.extension(0.5), 1.0);
  EXPECT_EQ(from_one_point.fraction_to(1.0), 0.5);
  EXPECT_FALSE(std::isfinite(EndMotion{1.0, 0.0, 0.0}.fraction_to(0.5))) << "ends that do not move";
}

TEST(WaveAxes, AreARightHandedSystemAlongTheMember) {
  std::array<double, 9> axes{};
  wave_axes(Point{0.6, 0.0, 0.8}, axes);
  // z x along = (0,0,1) x (0.6,0,0.8) = (0,0.6,0) -> (0,1,0); along x that = (-0.8,0,0.6).
  const std::array<double, 9> expected = {0.6, 0.0, 0.8, 0.0, 1.0, 0.0, -0.8, 0.0, 0.6};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(axes[i], expected[i], 1e-15) << i;
}

TEST(WaveAxes, AVerticalMemberTakesTheSecondReference) {
  std::array<double, 9> axes{};
  wave_axes(Point{0.0, 0.0, 1.0}, axes);
  // y x along = (0,1,0) x (0,0,1) = (1,0,0); along x that = (0,1,0).
  EXPECT_EQ(axes[3], 1.0);
  EXPECT_EQ(axes[7], 1.0);
  const double c = 0.999998;  // below the limit: still the vertical reference
  wave_axes(Point{std::sqrt(1.0 - c * c), 0.0, c}, axes);
  EXPECT_NEAR(axes[4], 1.0, 1e-12);
}

double at(const Matrix36& K, std::size_t i, std::size_t j) { return K[i + 6 * j]; }

TEST(TrussMatrix, AxialMatrixOfAHorizontalBar) {
  Matrix36 K{};
  const double DIR[6] = {1, 0, 0, -1, 0, 0};
  axial_matrix(7.0, DIR, K);
  EXPECT_EQ(at(K, 0, 0), 7.0);
  EXPECT_EQ(at(K, 0, 3), -7.0);
  EXPECT_EQ(at(K, 3, 3), 7.0);
  EXPECT_EQ(at(K, 1, 1), 0.0);
}

/// Force N(L) d at end I of a bar with force N0 + K (L - L0), for finite differences.
Point end_force(Point xI, const Point& xJ, double N0, double K, double L0) {
  double d[3], L = 0.0;
  for (std::size_t i = 0; i < 3; ++i) L += (xI[i] - xJ[i]) * (xI[i] - xJ[i]);
  L = std::sqrt(L);
  for (std::size_t i = 0; i < 3; ++i) d[i] = (xI[i] - xJ[i]) / L;
  const double N = N0 + K * (L - L0);
  return {N * d[0], N * d[1], N * d[2]};
}

TEST(TrussMatrix, IsTheDerivativeOfTheForce) {
  const Point xI = {3.0, -2.0, 5.0}, xJ = {-1.0, 1.0, 0.5};
  const TrussGeometry g = truss_geometry(xI, xJ);
  const double N = 4.0, K = 30.0;
  Matrix36 EMAT{};
  axial_matrix(K, g.DIR, EMAT);
  add_geometric_matrix(N / g.length, g.DIR, EMAT);
  const double h = 1e-5;
  for (std::size_t j = 0; j < 3; ++j) {
    Point up = xI, down = xI;
    up[j] += h;
    down[j] -= h;
    const Point f_up = end_force(up, xJ, N, K, g.length), f_down = end_force(down, xJ, N, K, g.length);
    // Central differences: error of order h^2 times third derivatives (about 1), and rounding 1e-15 * 30 / h.
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(at(EMAT, i, j), (f_up[i] - f_down[i]) / (2.0 * h), 1e-8);
  }
}

TEST(TrussMatrix, IsSymmetricAndFreeOfRigidTranslation) {
  Matrix36 K{};
  const TrussGeometry g = truss_geometry(Point{1.0, 2.0, -0.5}, Point{0.3, 0.7, 4.0});
  axial_matrix(12.3, g.DIR, K);
  add_geometric_matrix(-3.21, g.DIR, K);
  for (std::size_t i = 0; i < 6; ++i) {
    for (std::size_t j = 0; j < 6; ++j) EXPECT_EQ(at(K, i, j), at(K, j, i));
    for (std::size_t c = 0; c < 3; ++c) EXPECT_NEAR(at(K, i, c) + at(K, i, c + 3), 0.0, 1e-14);
  }
}

// The two forms in which the geometric matrix is usually written: diag(0, n, n) for a bar along X, and with c, the
// cosine on X, and a, b the two others: [1-cc, -ca, -cb; 1-aa, -ab; 1-bb], formed from 1-cc = aa+bb.
TEST(TrussMatrix, GeometricMatrixIsBothUsualForms) {
  Matrix36 along_x{};
  add_geometric_matrix(2.5, std::array<double, 6>{1, 0, 0, -1, 0, 0}, along_x);
  const double diagonal[3] = {0.0, 2.5, 2.5};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) EXPECT_EQ(at(along_x, i, j), i == j ? diagonal[i] : 0.0);
  }
  const double c = 2.0 / 7.0, a = 3.0 / 7.0, b = 6.0 / 7.0;
  Matrix36 inclined{};
  add_geometric_matrix(2.5, std::array<double, 6>{c, a, b, -c, -a, -b}, inclined);
  const double form[3][3] = {
      {a * a + b * b, -c * a, -c * b}, {-c * a, c * c + b * b, -a * b}, {-c * b, -a * b, c * c + a * a}};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      EXPECT_NEAR(at(inclined, i, j), 2.5 * form[i][j], 1e-15);
      EXPECT_NEAR(at(inclined, i + 3, j), -2.5 * form[i][j], 1e-15);
      EXPECT_NEAR(at(inclined, i + 3, j + 3), 2.5 * form[i][j], 1e-15);
    }
  }
}

}  // namespace
}  // namespace tidearc
