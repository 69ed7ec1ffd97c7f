// Force of water per length of a member.
#include "sea/members/morison.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "water.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;
constexpr std::array<double, 9> global_axes{1.0, 0.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 1.0};

WaterSection tube() {
  WaterSection section;
  section.D = 2.0;
  section.CD = 0.7;
  section.CDS = 0.1;
  section.CM = 1.6;
  section.KM = 0.9;
  return section;
}

Point local_force(const WaterSection& section, const Point& V, const Point& A, double ramp = 1.0) {
  return MORISON(section_terms(section, rho), global_axes, LoadMode::local, V, A, ramp);
}

TEST(SectionTerms, HoldPiInAllButTheNormalDrag) {
  const SectionTerms terms = section_terms(tube(), rho);
  EXPECT_DOUBLE_EQ(terms.drag, 0.5 * 0.7 * 2.0 * rho);
  EXPECT_DOUBLE_EQ(terms.tangential, 0.5 * 0.1 * 2.0 * rho * pi);
  EXPECT_DOUBLE_EQ(terms.inertia, 1.6 * pi * rho);  // area pi
  EXPECT_DOUBLE_EQ(terms.added_mass, 0.9 * pi * rho);
}

TEST(Morison, GivesDragByTheNormalSpeedInItsDirection) {
  const Point force = local_force(tube(), {0.0, 3.0, -4.0}, {});
  EXPECT_DOUBLE_EQ(force[1], 0.5 * rho * 0.7 * 2.0 * 5.0 * 3.0);
  EXPECT_DOUBLE_EQ(force[2], -0.5 * rho * 0.7 * 2.0 * 5.0 * 4.0);
  EXPECT_EQ(force[0], 0.0);
}

TEST(Morison, GivesInertiaByTheNormalAcceleration) {
  const Point force = local_force(tube(), {}, {7.0, 2.0, -3.0});
  EXPECT_EQ(force[0], 0.0);
  EXPECT_DOUBLE_EQ(force[1], 1.6 * rho * pi * 2.0);
  EXPECT_DOUBLE_EQ(force[2], -1.6 * rho * pi * 3.0);
}

TEST(Morison, GivesTangentialDragOnTheSurfaceOfTheMember) {
  EXPECT_DOUBLE_EQ(local_force(tube(), {-3.0, 0.0, 0.0}, {})[0], -0.5 * rho * 0.1 * 2.0 * pi * 9.0);
}

TEST(Morison, TakesTheRampOnAllTerms) {
  const Point whole = local_force(tube(), {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0});
  const Point half = local_force(tube(), {1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}, 0.5);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_DOUBLE_EQ(half[i], 0.5 * whole[i]);
}

TEST(Morison, TurnsTheForceBackInModeTwo) {
  // An inclined member: local force turned by hand against the force of mode 2.
  const MemberPlace place = member_between({0.0, 0.0, -20.0}, {10.0, 5.0, -5.0}, 2);
  const Point V{1.5, 0.2, -0.3}, A{0.4, -0.5, 0.6};
  const SectionTerms terms = section_terms(tube(), rho);
  const Point local = MORISON(terms, place.axes, LoadMode::local, V, A, 1.0);
  const Point global = MORISON(terms, place.axes, LoadMode::global, V, A, 1.0);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(global[i], local[0] * place.axes[i] + local[1] * place.axes[3 + i] + local[2] * place.axes[6 + i],
                1e-14);
  }
}

TEST(Morison, GivesNoForceInWaterAtRest) {
  const Point force = local_force(tube(), {}, {});
  for (const double part : force) EXPECT_EQ(part, 0.0);
}

/// A table that is 1, 1.2, 1.5, 2 in the first quadrant and tells each other angle by its degrees.
GeneralCoefficients marked_table() {
  GeneralCoefficients table{2.0, {1.0, 1.2, 1.5, 2.0}, {}};
  for (int i = 4; i < 12; ++i) table.drag[i] = 30.0 * i;
  return table;
}

WaterSection general_tube(const GeneralCoefficients& table, int second_code) {
  WaterSection section;
  section.D = 1.0;
  section.CD = 0.7;
  section.CM = 1.6;
  section.ICA = 7;
  section.JCA = second_code;
  section.general = &table;
  return section;
}

/// Drag coefficient that a direction of flow meets: in 0.5 rho D V^2, along the flow.
double coefficient_at(const GeneralCoefficients& table, double Vy, double Vz) {
  const Point force = local_force(general_tube(table, 1), {0.0, Vy, Vz}, {});
  const double Vn = std::hypot(Vy, Vz);
  return (force[1] * Vy + force[2] * Vz) / Vn / (0.5 * rho * Vn * Vn);
}

TEST(GeneralDrag, PassesACubicThroughTheFourValuesOfTheQuadrant) {
  const GeneralCoefficients table = marked_table();
  EXPECT_NEAR(coefficient_at(table, 1.0, 1.0), 1.33125, 1e-12);  // (-1 + 9*1.2 + 9*1.5 - 2)/16
  EXPECT_NEAR(coefficient_at(table, 2.0, 0.0), 1.0, 1e-12);
  EXPECT_NEAR(coefficient_at(table, std::sqrt(3.0), 1.0), 1.2, 1e-12);
  EXPECT_NEAR(coefficient_at(table, 1.0, std::sqrt(3.0)), 1.5, 1e-12);
  EXPECT_NEAR(coefficient_at(table, 0.0, 3.0), 2.0, 1e-12);
}

TEST(GeneralDrag, FindsTheQuadrantByTheSignsOfTheVelocity) {
  // A table that is its own angle in degrees (0 counting as 360 from the fourth quadrant on) is met exactly.
  GeneralCoefficients table{};
  for (int i = 0; i < 12; ++i) table.drag[i] = 30.0 * i;
  const auto at = [&](double degrees) {
    const double a = degrees * pi / 180.0;
    return coefficient_at(table, std::cos(a), std::sin(a));
  };
  for (const double degrees : {10.0, 45.0, 80.0, 100.0, 135.0, 170.0, 190.0, 225.0, 260.0}) {
    EXPECT_NEAR(at(degrees), degrees, 1e-9);
  }
  table.drag[0] = 360.0;
  for (const double degrees : {280.0, 315.0, 350.0}) EXPECT_NEAR(at(degrees), degrees, 1e-9);
}

TEST(GeneralDrag, CountsZeroAsPositive) {
  GeneralCoefficients table{};
  for (int i = 0; i < 12; ++i) table.drag[i] = i + 1.0;
  EXPECT_NEAR(coefficient_at(table, -1.0, 0.0), 7.0, 1e-12);   // 180 degrees, upper half
  EXPECT_NEAR(coefficient_at(table, 0.0, -1.0), 10.0, 1e-12);  // 270 degrees
}

TEST(GeneralLift, ActsAcrossTheFlow) {
  GeneralCoefficients table{};
  for (double& value : table.lift) value = 0.8;
  const WaterSection section = general_tube(table, 1);
  const double q = 0.5 * rho * 0.8;
  // Quadrants by the sign of the direction: -l s on y, +l c on z.
  for (const auto& [Vy, Vz] : std::vector<std::pair<double, double>>{{3, 4}, {-3, 4}, {-3, -4}, {3, -4}}) {
    const Point force = local_force(section, {0.0, Vy, Vz}, {});
    EXPECT_NEAR(force[1], -q * 5.0 * Vz, 1e-12);
    EXPECT_NEAR(force[2], q * 5.0 * Vy, 1e-12);
  }
}

TEST(GeneralDrag, TakesItsOwnInertiaOnTheThirdAxis) {
  const GeneralCoefficients table = marked_table();
  for (const int code : {1, 0, 2}) {
    const Point force = local_force(general_tube(table, code), {}, {0.0, 1.0, 1.0}, 0.5);
    EXPECT_DOUBLE_EQ(force[1], 0.25 * pi * 1.6 * rho * 0.5) << code;
    EXPECT_DOUBLE_EQ(force[2], 0.25 * pi * 2.0 * rho * 0.5) << code;
  }
}

TEST(GeneralDrag, LeavesThePlainDragWithAnotherSecondCode) {
  const GeneralCoefficients table = marked_table();
  const Point force = local_force(general_tube(table, 0), {0.0, 3.0, 4.0}, {});
  EXPECT_DOUBLE_EQ(force[1], 0.5 * rho * 0.7 * 5.0 * 3.0);
  EXPECT_DOUBLE_EQ(force[2], 0.5 * rho * 0.7 * 5.0 * 4.0);
}

TEST(GeneralDrag, IsNotTakenWithAnotherLoadCode) {
  const GeneralCoefficients table = marked_table();
  WaterSection section = general_tube(table, 1);
  section.ICA = 6;
  EXPECT_DOUBLE_EQ(local_force(section, {0.0, 3.0, 4.0}, {0.0, 0.0, 1.0})[2],
                   0.25 * pi * 1.6 * rho + 0.5 * rho * 0.7 * 5.0 * 4.0);
}

constexpr Point up{0.0, 0.0, 1.0};

TEST(AddedMassCorrection, TakesTheInertiaOffWhereTheWavePutsWaterOn) {
  const Point force = MASSADD(1, {2.0, -1.0, 5.0}, up, up, 3.0);
  EXPECT_DOUBLE_EQ(force[0], -6.0);
  EXPECT_DOUBLE_EQ(force[1], 3.0);
  EXPECT_DOUBLE_EQ(force[2], 0.0);
}

TEST(AddedMassCorrection, GivesItBackWhereWaterIsMissing) {
  EXPECT_DOUBLE_EQ(MASSADD(-1, {2.0, 0.0, 0.0}, up, up, 3.0)[0], 6.0);
}

TEST(AddedMassCorrection, IsNoneInTheOtherStatesAndWithoutAddedMass) {
  for (const double part : MASSADD(0, {2.0, 1.0, 0.0}, up, {1.0, 0.0, 0.0}, 3.0)) EXPECT_EQ(part, 0.0);
  for (const double part : MASSADD(1, {2.0, 1.0, 0.0}, up, up, 0.0)) EXPECT_EQ(part, 0.0);
}

TEST(AddedMassCorrection, GrowsByTheSquaredSineOfTheTurnOfTheChord) {
  const double a = 0.3;
  const Point undeformed{std::sin(a), 0.0, std::cos(a)};
  const double s2 = std::sin(a) * std::sin(a);
  EXPECT_NEAR(MASSADD(1, {0.0, 2.0, 0.0}, up, undeformed, 3.0)[1], -6.0 - 6.0 * s2, 1e-14);
  EXPECT_NEAR(MASSADD(-1, {0.0, 2.0, 0.0}, up, undeformed, 3.0)[1], 6.0 - 6.0 * s2, 1e-14);
}

}  // namespace
}  // namespace tidearc::test
