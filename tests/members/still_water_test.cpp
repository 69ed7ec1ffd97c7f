// Buoyancy, static current, added mass: loads by the gravity and water control.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "model/gravity.h"
#include "sea/members/morison.h"
#include "water.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

void expect_point(const Point& is, const Point& wanted, double tolerance) {
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(is[i], wanted[i], tolerance) << "component " << i + 1;
}

class StillWater : public ::testing::Test {
 protected:
  StillWater() { still_sea(); }
};

class Buoyancy : public StillWater {};

MemberLoad buoyancy(const MemberPlace& place, double Db = 1.0) {
  MemberLoad load;
  BUOYLD(Db, place, load);
  return load;
}

// Pressure integrated over side and caps of a closed tube, reckoned outside of the program.
TEST_F(Buoyancy, OfAnInclinedMemberUnderWater) {
  const MemberPlace place = member_between({0.0, 0.0, -10.0}, {8.0, 0.0, -4.0}, 2);
  const MemberLoad load = buoyancy(place);
  expect_point(force_at_I(place, load), {44.2253, 0.0, 72.6558}, 6e-5);
  expect_point(force_at_J(place, load), {-44.2253, 0.0, 6.3179}, 6e-5);
  expect_point(moment_at_I(place, load), {0.0, -52.6492, 0.0}, 6e-5);
  expect_point(moment_at_J(place, load), {0.0, 52.6492, 0.0}, 6e-5);
  expect_point(resultant(place, load).force, {0.0, 0.0, 78.9737}, 6e-5);
}

TEST_F(Buoyancy, OfAMemberThatTheSurfaceCuts) {
  const MemberPlace place = member_between({0.0, 0.0, -4.0}, {8.0, 0.0, 2.0}, 2);
  const MemberLoad load = buoyancy(place);
  expect_point(force_at_I(place, load), {7.4879, 0.0, 42.6653}, 6e-5);
  expect_point(force_at_J(place, load), {-7.4879, 0.0, 9.9838}, 6e-5);
  expect_point(moment_at_I(place, load), {0.0, -46.7993, 0.0}, 6e-5);
  expect_point(moment_at_J(place, load), {0.0, 31.1995, 0.0}, 6e-5);
  const Resultant sum = resultant(place, load);
  expect_point(sum.force, {0.0, 0.0, 52.6492}, 6e-5);
  EXPECT_NEAR(moment_at_I(place, load)[1] + moment_at_J(place, load)[1] - 8.0 * force_at_J(place, load)[2] +
                  6.0 * force_at_J(place, load)[0],
              -140.398, 6e-4);
}

TEST_F(Buoyancy, OfAVerticalPileIsThePressureUnderItsFoot) {
  const MemberPlace place = pile(-50.0, 10.0, 2);
  const MemberLoad load = buoyancy(place);
  expect_point(force_at_I(place, load), {0.0, 0.0, weight_density * 50.0 * pi / 4.0}, 1e-11);
  EXPECT_NEAR(force_at_I(place, load)[2], 394.869, 6e-4);
  expect_point(force_at_J(place, load), {}, 0.0);
}

/// The water that a member displaces, and where.
struct Displaced {
  double weight;
  Point middle;
};

Displaced displaced(const MemberPlace& place, double Db, double level) {
  // Thin slices.
  constexpr int slices = 100000;
  Displaced sum{};
  Point first{};
  for (int i = 0; i < slices; ++i) {
    const double at = (i + 0.5) / slices;
    Point p;
    for (std::size_t c = 0; c < 3; ++c) p[c] = place.I[c] + at * (place.J[c] - place.I[c]);
    if (p[2] > level) continue;
    const double l = std::hypot(place.J[0] - place.I[0], place.J[1] - place.I[1], place.J[2] - place.I[2]);
    const double w = weight_density * pi / 4.0 * Db * Db * l / slices;
    sum.weight += w;
    for (std::size_t c = 0; c < 3; ++c) first[c] += w * p[c];
  }
  for (std::size_t c = 0; c < 3; ++c) sum.middle[c] = sum.weight > 0.0 ? first[c] / sum.weight : 0.0;
  return sum;
}

TEST_F(Buoyancy, IsTheWeightOfTheWaterDisplacedThroughItsMiddle) {
  gravity.water_level = 1.5;
  const std::vector<std::pair<Point, Point>> members{
      {{0, 0, -10}, {8, 3, -4}}, {{8, 3, -4}, {0, 0, -10}}, {{1, 2, -5}, {4, -6, 9}}, {{4, -6, 9}, {1, 2, -5}},
      {{0, 0, 3}, {5, 5, 2}},    {{0, 0, -7}, {6, 2, -7}},  {{2, 2, 1.5}, {7, 1, 6}}};
  for (const auto& [I, J] : members) {
    for (const int form : {0, 1, 2}) {  // full set, levers in local axes, levers in global axes
      MemberPlace place = member_between(I, J, 2, form == 0);
      if (form == 2) place = bar_of(place);
      const Resultant sum = resultant(place, buoyancy(place, 0.8));
      const Displaced water = displaced(place, 0.8, 1.5);
      expect_point(sum.force, {0.0, 0.0, water.weight}, 1e-3);
      expect_point(sum.moment, {water.weight * water.middle[1], -water.weight * water.middle[0], 0.0}, 1e-2);
    }
  }
}

TEST_F(Buoyancy, OfALevelMemberIsAUniformLoad) {
  const MemberPlace place = member_between({0.0, 0.0, -7.0}, {12.0, 0.0, -7.0}, 2);
  const MemberLoad load = buoyancy(place);
  const double w = weight_density * pi / 4.0;
  EXPECT_NEAR(force_at_I(place, load)[2], 6.0 * w, 1e-12);
  EXPECT_NEAR(moment_at_I(place, load)[1], -12.0 * w, 1e-12);  // w L^2/12
  EXPECT_NEAR(moment_at_J(place, load)[1], 12.0 * w, 1e-12);
  EXPECT_NEAR(force_at_I(place, load)[0], weight_density * 7.0 * pi / 4.0, 1e-12);
}

TEST_F(Buoyancy, IsNoneAboveTheWaterAndWithoutAnAxisOfGravity) {
  for (const double part : buoyancy(member_between({0.0, 0.0, 1.0}, {4.0, 0.0, 3.0}, 2))) EXPECT_EQ(part, 0.0);
  gravity.direction = {};
  for (const double part : buoyancy(member_between({0.0, 0.0, -9.0}, {4.0, 0.0, -3.0}, 2))) EXPECT_EQ(part, 0.0);
}

TEST_F(Buoyancy, FollowsAnyAxisOfGravity) {
  gravity.direction = {0.0, 1.0, 0.0};  // along +Y: deeper is larger, up is -Y
  gravity.water_level = -2.0;
  const MemberPlace place = member_between({0.0, 3.0, 0.0}, {6.0, 5.0, 1.0}, 2);
  const double l = std::sqrt(36.0 + 4.0 + 1.0);
  expect_point(resultant(place, buoyancy(place)).force, {0.0, -weight_density * pi / 4.0 * l, 0.0}, 1e-11);
}

TEST_F(Buoyancy, OfAMemberWithoutLengthIsNone) {
  MemberPlace place = pile(-5.0, -5.0, 2);
  for (const double part : buoyancy(place)) EXPECT_EQ(part, 0.0);
}

class StaticCurrent : public StillWater {};

MemberLoad static_current(const MemberPlace& place, const WaterSection& section) {
  MemberLoad load;
  static_current_load(section, place, load);
  return load;
}

/// Shear and moment about the bed of a pile from the bed at -50.
void expect_pile(const MemberPlace& place, double shear, double overturning, double tolerance) {
  const Resultant sum = resultant(place, static_current(place, plain_tube()));
  EXPECT_NEAR(sum.force[0], shear, tolerance);
  EXPECT_NEAR(sum.moment[1] + 50.0 * sum.force[0], overturning, 50.0 * tolerance);
}

TEST_F(StaticCurrent, OfALinearProfile) {
  set_static_current({0.0, 50.0}, {1.0, 0.0});
  // 0.5 rho integral of (1 - z/50)^2: rho 50/6, at three quarters of the height.
  expect_pile(pile(-50.0, 0.0, 2), 8.54167, 320.313, 2e-5);
  expect_pile(pile(-50.0, 20.0, 4), 8.54167, 320.313, 2e-5);
  expect_pile(bar_of(pile(-50.0, 0.0, 2)), 8.54167, 320.313, 2e-5);
}

TEST_F(StaticCurrent, OfABentProfileIsExactWithTwoPoints) {
  // Parabolas of the load between the levels, integrated in closed form.
  set_static_current({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  expect_pile(pile(-50.0, 0.0, 2), 7.26042, 280.807, 2e-5);
  expect_pile(pile(-50.0, 30.0, 2), 7.26042, 280.807, 2e-5);
}

TEST_F(StaticCurrent, NeedsTwoLevels) {
  const MemberPlace place = pile(-50.0, 0.0, 2);
  for (int levels = 0; levels < 2; ++levels) {
    set_static_current(std::vector<double>(static_cast<std::size_t>(levels), 0.0), {1.0});
    EXPECT_EQ(static_current(place, plain_tube()), MemberLoad{}) << levels;
  }
}

TEST_F(StaticCurrent, EndsAtTheDeepestLevelWhateverTheOrder) {
  set_static_current({0.0, 30.0, 20.0}, {1.0, 1.0, 1.0});
  const MemberPlace place = pile(-50.0, 10.0, 4);
  EXPECT_NEAR(resultant(place, static_current(place, plain_tube())).force[0], 0.5 * rho * 30.0, 1e-5);
}

TEST_F(StaticCurrent, EndsAtTheDeepestLevel) {
  set_static_current({0.0, 20.0}, {1.0, 1.0});
  const MemberPlace place = pile(-50.0, 10.0, 4);
  const Resultant sum = resultant(place, static_current(place, plain_tube()));
  EXPECT_NEAR(sum.force[0], 0.5 * rho * 20.0, 1e-6);
  EXPECT_NEAR(sum.moment[1], -0.5 * rho * 20.0 * 10.0, 1e-5);
}

// Case M02 of the collection of verification cases: uniform current 1.5 on an inclined tube of 0.8, CD 1, in newtons:
// 0.5 rho CD D |Vn| Vn L in closed form.
TEST_F(StaticCurrent, OnAnInclinedTubeIsDragOfTheNormalVelocity) {
  gravity.water_mass = 1025.0;
  set_static_current({0.0, 50.0}, {1.5, 1.5});
  for (const bool global : {false, true}) {
    MemberPlace place = member_between({0.0, 0.0, -20.0}, {10.0, 5.0, -5.0}, 2);
    if (global) place = bar_of(place);
    const Resultant sum = resultant(place, static_current(place, plain_tube(0.8)));
    expect_point(sum.force, {10418.5755, -2083.7151, -6251.1453}, 1e-3);
  }
}

TEST_F(StaticCurrent, IsNoneWithoutDiameterPointsLevelsOrWater) {
  set_static_current({0.0, 50.0}, {1.0, 1.0});
  const auto none = [](const MemberLoad& load) {
    for (const double part : load) EXPECT_EQ(part, 0.0);
  };
  none(static_current(pile(-50.0, 0.0, 2), plain_tube(0.0)));
  none(static_current(pile(-50.0, 0.0, 0), plain_tube()));
  none(static_current(pile(0.5, 10.0, 2), plain_tube()));
  none(static_current(pile(-70.0, -50.0, 2), plain_tube()));
  gravity.NCLEV = 1;
  none(static_current(pile(-50.0, 0.0, 2), plain_tube()));
  gravity.NCLEV = 2;
  gravity.direction = {};
  none(static_current(pile(-50.0, 0.0, 2), plain_tube()));
}

class AddedMass : public StillWater {};

TEST_F(AddedMass, ActsAcrossTheWetLength) {
  WaterSection section = plain_tube();
  section.KM = 1.0;
  const double per_length = 0.25 * pi * rho;
  expect_point(added_mass(section, {0.0, 0.0, -50.0}, {0.0, 0.0, 10.0}), {per_length * 50.0, per_length * 50.0, 0.0},
               1e-12);
  expect_point(added_mass(section, {0.0, 0.0, 5.0}, {0.0, 0.0, 10.0}), {}, 0.0);
  expect_point(added_mass(section, {3.0, 0.0, -5.0}, {9.0, 8.0, -5.0}),
               {per_length * 10.0 * 0.64, per_length * 10.0 * 0.36, per_length * 10.0}, 1e-12);
}

TEST_F(AddedMass, OfAMemberInTheSurfaceCountsWhole) {
  WaterSection section = plain_tube();
  section.KM = 1.0;
  EXPECT_NEAR(added_mass(section, {0.0, 0.0, 0.0}, {4.0, 0.0, 0.0})[2], 4.0 * 0.25 * pi * rho, 1e-12);
}

TEST_F(AddedMass, IsNoneWithoutItsCoefficientOrWater) {
  WaterSection section = plain_tube();
  expect_point(added_mass(section, {0.0, 0.0, -50.0}, {0.0, 0.0, 10.0}), {}, 0.0);
  section.KM = 1.0;
  gravity.water_mass = 0.0;
  expect_point(added_mass(section, {0.0, 0.0, -50.0}, {0.0, 0.0, 10.0}), {}, 0.0);
}

}  // namespace
}  // namespace tidearc::test
