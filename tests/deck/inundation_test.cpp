// Force of the sea on a deck against closed forms: uniform and linear motions under plane surfaces.
#include "elements/deck/inundation.h"

#include <gtest/gtest.h>

#include <cmath>

#include "water.h"

namespace tidearc::test {
namespace {

constexpr double rho = 1.025, weight = 1.025 * 9.81;
const double half = std::sqrt(3.0) / 2.0;  // cosine of 30 degrees

void expect_vector(const Point& found, const Point& expected, double within = 1e-9) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(found[i], expected[i], within) << "component " << i;
}

TEST(DeckForce, OfACurrentAtMidHeightIsDragOnTheFrontAndBuoyancy) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.u = {3.0, 0.0, 0.0};
  const DeckForce force = deck_force(box, water, middle_of_box);
  // 0.5*1.025*2*9*(20*2) and 1.025*9.81*(30*20*2); the drag acts 1 above the underside.
  expect_vector(force.F, {369.0, 0.0, 12066.3});
  expect_vector(force.M, {0.0, 369.0, 0.0});
}

TEST(DeckForce, UnderASurfaceThatIsNotFiniteIsNotEither) {
  DeckBox box = plain_box();
  box.CD[0] = box.CD[1] = 2.0;
  const DeckWater water = plain_water();
  for (const double level : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    sea.level = level;
    const DeckForce force = deck_force(box, water, middle_of_box);
    for (const double component : force.F) EXPECT_TRUE(std::isnan(component)) << level;
  }
}

TEST(DeckForce, MomentsAreAboutThePointThatIsGiven) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.u = {3.0, 0.0, 0.0};
  const DeckForce force = deck_force(box, water, {-4.0, 7.0, 20.0});
  // r = (4, -7, -15) to the middle; M = M0 + r x F
  expect_vector(force.F, {369.0, 0.0, 12066.3});
  expect_vector(force.M, {-7.0 * 12066.3, 369.0 - 15.0 * 369.0 - 4.0 * 12066.3, 7.0 * 369.0});
}

TEST(DeckForce, TurnsWithTheBox) {
  DeckBox box = plain_box();
  box.THETA = 30.0;
  box.X0 = 0.0;
  box.Y0 = 0.0;
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.u = {3.0 * half, 1.5, 0.0};  // along x'
  const Point middle{15.0 * half - 10.0 * 0.5, 15.0 * 0.5 + 10.0 * half, 5.0};
  const DeckForce force = deck_force(box, water, middle);
  expect_vector(force.F, {369.0 * half, 184.5, 12066.3});
  expect_vector(force.M, {-184.5, 369.0 * half, 0.0});  // 1 up times the drag
}

TEST(DeckForce, OfABoxTurnedByARightAngleComesFromItsOtherSide) {
  DeckBox box = plain_box();
  box.THETA = 90.0;  // x' is Y, y' is -X: the current along X meets the side y' = WIDTH, 30 wide
  box.CD[0] = 7.0;
  box.CD[1] = 0.5;
  const DeckWater water = plain_water();
  sea.u = {3.0, 0.0, 0.0};
  const DeckForce force = deck_force(box, water, middle_of_box);
  EXPECT_NEAR(force.F[0], 0.5 * rho * 0.5 * 9.0 * 60.0, 1e-9);
  EXPECT_NEAR(force.F[1], 0.0, 1e-9);
}

TEST(DeckForce, ASlantingCurrentActsOnBothSidesByItsComponents) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  box.CD[1] = 1.0;
  const DeckWater water = plain_water();
  sea.u = {-2.0, 1.0, 0.0};
  const DeckForce force = deck_force(box, water, middle_of_box);
  expect_vector(force.F, {-0.5 * rho * 2.0 * 4.0 * 40.0, 0.5 * rho * 1.0 * 1.0 * 60.0, 12066.3});
}

TEST(DeckForce, IsThatOfTheSideThatFacesTheCurrent) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.slope_x = 2.0 / 30.0;  // 1 wet at x' = 0, 3 at x' = LENGTH
  sea.u = {3.0, 0.0, 0.0};
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], 184.5, 1e-9);
  sea.u = {-3.0, 0.0, 0.0};
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], -553.5, 1e-9);
  sea.u = {0.0, 0.0, 0.0};  // not negative: the side at 0, here by its inertia
  sea.a = {2.0, 0.0, 0.0};
  box.KI[0] = 1.0;
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], rho * 2.0 * 20.0 * 1.0 * 30.0, 1e-9);
}

TEST(DeckForce, SideIsChosenAtMidWetHeightInTheMiddle) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.slope_x = 2.0 / 30.0;
  sea.u = {-6.0 * 3.0, 0.0, 0.0};
  sea.du[0] = {0.0, 0.0, 3.0};  // zero at level 6, mid wet height of the middle: the side at 0, where it is met at 5.5
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], -0.5 * rho * 2.0 * 1.5 * 1.5 * 20.0, 1e-9);
  sea.u[0] -= 0.01;  // now the other side, met at 6.5
  const double u = 3.0 * 6.5 - 18.01;
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], 0.5 * rho * 2.0 * u * u * 60.0, 1e-9);
}

TEST(DeckForce, OfADryMiddleTheSurfaceThereDecides) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.level = 4.0;
  sea.slope_x = -0.2;  // 2 wet at x' = 0, dry from x = -5 on
  sea.u = {3.0, 0.0, 0.0};
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], 369.0, 1e-9);
  EXPECT_LE(sea.highest_above, 0.0) << "no motion is asked for above the water";
}

TEST(DeckForce, IsNothingOnADryDeck) {
  DeckBox box = plain_box();
  for (std::size_t i = 0; i < 3; ++i) box.CD[i] = box.KI[i] = box.KS[i] = 1.0;
  box.F0[0] = box.F0[1] = 100.0;
  const DeckWater water = plain_water();
  sea.u = {3.0, 3.0, 3.0};
  sea.a = {1.0, 1.0, 1.0};
  for (const double level : {-20.0, 5.0}) {
    sea.level = level;
    const DeckForce force = deck_force(box, water, middle_of_box);
    expect_vector(force.F, {}, 0.0);
    expect_vector(force.M, {}, 0.0);
  }
  EXPECT_LE(sea.highest_above, 0.0);
}

TEST(DeckForce, OfASunkenDeckIsThatOfItsHeight) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.level = 100.0;
  sea.u = {3.0, 0.0, 0.0};
  const DeckForce force = deck_force(box, water, middle_of_box);
  expect_vector(force.F, {738.0, 0.0, 2.0 * 12066.3});
  expect_vector(force.M, {0.0, 738.0 * 2.0, 0.0});
}

TEST(DeckForce, OfInertiaTakesTheWholeWetBox) {
  DeckBox box = plain_box();
  box.KI[0] = 1.5;
  box.KI[1] = 0.5;
  box.KI[2] = 0.25;
  const DeckWater water = plain_water();
  sea.a = {0.8, -0.4, 0.6};
  const DeckForce force = deck_force(box, water, middle_of_box);
  const double mass = rho * 30.0 * 20.0 * 2.0;
  expect_vector(force.F, {1.5 * 0.8 * mass, -0.5 * 0.4 * mass, 0.25 * 0.6 * mass + weight * 1200.0});
}

TEST(DeckForce, VerticalDragFollowsTheSignOfTheVelocity) {
  DeckBox box = plain_box();
  box.CD[2] = 2.0;
  const DeckWater water = plain_water();
  for (const double w : {1.5, -1.5}) {
    sea.u = {0.0, 0.0, w};
    EXPECT_NEAR(deck_force(box, water, middle_of_box).F[2], 12066.3 + 0.5 * rho * 2.0 * w * std::abs(w) * 600.0, 1e-9);
  }
}

TEST(DeckForce, SlamActsWhileTheWaterRises) {
  DeckBox box = plain_box();
  box.CD[0] = box.CD[1] = 1.0;
  box.KS[0] = 3.0;
  box.KS[1] = 0.5;
  box.KS[2] = 2.0;
  const DeckWater water = plain_water();
  const double side_x = 0.5 * rho * 9.0 * 40.0, side_y = 0.5 * rho * 60.0, below = 0.5 * rho * 600.0;
  sea.u = {-3.0, 1.0, 0.5};
  expect_vector(deck_force(box, water, middle_of_box).F, {-4.0 * side_x, 1.5 * side_y, 12066.3 + 2.0 * 0.25 * below});
  for (const double w : {0.0, -0.5}) {
    sea.u[2] = w;
    expect_vector(deck_force(box, water, middle_of_box).F, {-side_x, side_y, 12066.3});
  }
}

TEST(DeckForce, SolidRatioTakesAreasAndVolumes) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  box.KI[0] = 1.0;
  box.PHI = 0.4;
  const DeckWater water = plain_water();
  sea.u = {3.0, 0.0, 0.0};
  sea.a = {0.5, 0.0, 0.0};
  expect_vector(deck_force(box, water, middle_of_box).F, {0.4 * (369.0 + rho * 0.5 * 1200.0), 0.0, 0.4 * 12066.3});
}

TEST(DeckForce, FactorsOnTheMotionStandInTheAxesOfTheBox) {
  DeckBox box = plain_box();
  box.THETA = 90.0;
  box.R[0] = 2.0;  // along x', that is Y
  box.R[1] = 3.0;
  box.R[2] = 0.5;
  for (std::size_t i = 0; i < 3; ++i) box.CD[i] = box.KI[i] = 1.0;
  const DeckWater water = plain_water();
  sea.u = {1.0, 1.0, 1.0};
  sea.a = {0.1, 0.1, 0.1};
  const double mass = rho * 1200.0;
  expect_vector(deck_force(box, water, middle_of_box).F,
                {0.5 * rho * 9.0 * 60.0 + mass * 0.3, 0.5 * rho * 4.0 * 40.0 + mass * 0.2,
                 12066.3 + 0.5 * rho * 0.25 * 600.0 + mass * 0.05});
}

TEST(DeckForce, ConstantForcesActAlongTheBoxWhileACellIsWet) {
  DeckBox box = plain_box();
  box.THETA = 30.0;
  box.F0[0] = 100.0;
  box.F0[1] = 40.0;
  const DeckWater water = plain_water();
  const Point about{50.0, 60.0, 70.0};
  const DeckForce without = deck_force(plain_box(), water, about);
  const DeckForce with = deck_force(box, water, about);
  EXPECT_NEAR(with.F[0], 100.0 * half - 20.0, 1e-9);
  EXPECT_NEAR(with.F[1], 50.0 + 40.0 * half, 1e-9);
  EXPECT_NEAR(with.F[2], without.F[2], 1e-9);
  EXPECT_NEAR(with.M[2], 0.0, 1e-9) << "they act at the point of the moments";
}

TEST(DeckForce, ConstantForcesWaitForACellOfTheUnderside) {
  DeckBox box = plain_box();
  box.F0[0] = 100.0;
  const DeckWater water = plain_water();
  sea.level = 4.0;
  sea.slope_x = -0.2;  // wet to x = -5
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], 0.0, 1e-12) << "one cell, its middle dry";
  box.Nx = 3;  // middles at -10, 0, 10
  EXPECT_NEAR(deck_force(box, water, middle_of_box).F[0], 100.0, 1e-12);
}

TEST(DeckForce, StripsConvergeToTheIntegralUnderASlopingSurface) {
  DeckBox box = plain_box();
  box.CD[0] = 2.0;
  const DeckWater water = plain_water();
  sea.slope_y = 0.25;  // wet height from -1 at y = -10 + 2 .. : level - 5 = 2 + y/4, dry below y = -8, 4.5 at y = 10
  sea.u = {3.0, 0.0, 0.0};
  // Integral of min(max(2 + y/4, 0), 4) over the width: a triangle of 16 by 4 up to y = 8, and 2 by 4.
  const double area = 40.0, volume = 30.0 * area;
  // its first moment: 32 times the centroid at -8 + 2/3*16, and 8 times 9
  const double first = 32.0 * (-8.0 + 32.0 / 3.0) + 8.0 * 9.0;
  double last_error = 1e30;
  for (const int strips : {3, 30, 300}) {
    box.Nx = 2;
    box.Ny = strips;
    const DeckForce force = deck_force(box, water, middle_of_box);
    const double error = std::abs(force.F[0] - 0.5 * rho * 2.0 * 9.0 * area) / 369.0 +
                         std::abs(force.F[2] - weight * volume) / 12066.3 +
                         std::abs(force.M[0] - weight * 30.0 * first) / (12066.3 * 10.0);
    EXPECT_LT(error, 0.15 * last_error) << strips;
    last_error = error;
  }
  EXPECT_LT(last_error, 1e-4);
}

TEST(DeckForce, StripsAlongTheOtherSideAndCellsGoByTheirOwnNumbers) {
  DeckBox box = plain_box();
  box.CD[1] = 1.0;
  box.Nx = 3;  // strips of 10 of the sides along x', middles at -10, 0, 10
  const DeckWater water = plain_water();
  sea.u = {0.0, 1.0, 0.0};
  sea.slope_x = 0.1;  // wet 1, 2, 3 there
  const DeckForce force = deck_force(box, water, middle_of_box);
  expect_vector(force.F, {0.0, 0.5 * rho * (10.0 + 20.0 + 30.0), 12066.3});
  // side: z arms 0.5, 1, 1.5 over areas 10, 20, 30; underside: 200 rho g (1*10 - 3*10) about y; about z: 10*(30 - 10)
  expect_vector(force.M, {-0.5 * rho * (5.0 + 20.0 + 45.0), -weight * 200.0 * 20.0, 0.5 * rho * 200.0});
}

TEST(DeckForce, AsksTheWholeMotionAtTheTimeAndItsStations) {
  DeckBox box = plain_box();
  box.CD[0] = box.CD[2] = 1.0;
  const DeckWater water = plain_water(12.5);
  sea.du[0] = {0.0, 0.0, 1.0};  // u = z: 6 at mid wet height of the side
  sea.du[2] = {0.0, 0.0, 1.0};  // w = z: 5 at the underside
  const DeckForce force = deck_force(box, water, middle_of_box);
  EXPECT_NEAR(force.F[0], 0.5 * rho * 36.0 * 40.0, 1e-9);
  EXPECT_NEAR(force.F[2], 12066.3 + 0.5 * rho * 25.0 * 600.0, 1e-9);
  EXPECT_EQ(sea.last_time, 12.5);
  EXPECT_EQ(sea.last_lower_current, -50.0);
  EXPECT_FALSE(sea.parts_left_out);
}

}  // namespace
}  // namespace tidearc::test
