// The wave force scale table.
#include "sea/members/magnification.h"

#include <gtest/gtest.h>

#include <array>

#include "water.h"

namespace tidearc::test {
namespace {

constexpr std::array<double, 3> times{1.0, 2.0, 4.0};
constexpr std::array<double, 3> multipliers{0.5, 1.0, 2.0};

double at(double time, int& index) { return force_multiplier(times, multipliers, time, index); }

TEST(Magnification, IsLinearBetweenRowsAndOneOutside) {
  int index = 0;
  EXPECT_EQ(at(0.5, index), 1.0);
  EXPECT_EQ(index, 0);
  EXPECT_EQ(at(1.0, index), 0.5);
  EXPECT_EQ(index, 1);
  EXPECT_EQ(at(1.5, index), 0.75);
  EXPECT_EQ(at(2.0, index), 1.0);
  EXPECT_EQ(index, 2);
  EXPECT_EQ(at(3.0, index), 1.5);
  EXPECT_EQ(at(4.0, index), 1.0);
  EXPECT_EQ(index, 4);
}

TEST(Magnification, StaysOffOnceTheTableHasBeenPassed) {
  int index = 0;
  EXPECT_EQ(at(5.0, index), 1.0);
  EXPECT_EQ(at(3.0, index), 1.0);
  EXPECT_EQ(at(1.0, index), 1.0);
}

TEST(Magnification, ExtrapolatesThePairAtHandForATimeThatGoesBack) {
  int index = 0;
  EXPECT_EQ(at(3.0, index), 1.5);
  EXPECT_EQ(at(1.0, index), 0.5);  // on the line of rows (2, 1), (4, 2), not of the first row
  EXPECT_EQ(at(0.0, index), 0.0);
  EXPECT_EQ(index, 2);
}

TEST(Magnification, SkipsRowsThatATimeHasPassed) {
  int index = 0;
  EXPECT_EQ(at(3.999, index), 1.0 + 1.999 / 2.0);
}

TEST(Magnification, OfOneRowIsNone) {
  int index = 0;
  const std::array<double, 1> time{1.0}, multiplier{7.0};
  EXPECT_EQ(force_multiplier(time, multiplier, 0.9, index), 1.0);
  EXPECT_EQ(force_multiplier(time, multiplier, 1.0, index), 1.0);
  EXPECT_EQ(index, 2);
}

class MagnifiedLoad : public ::testing::Test {
 protected:
  MagnifiedLoad() {
    current_sea({0.0, 50.0}, {2.0, 2.0});
    wave.NORAMP = 3;
    for (std::size_t i = 0; i < 3; ++i) {
      force_scale.time[i] = times[i];
      force_scale.multiplier[i] = multipliers[i];
    }
  }
  /// Force per length 0.5 rho D V^2 over 10.
  double factor(double time) const {
    return resultant(place, wave_load(plain_tube(), place, time)).force[0] / (0.5 * rho * 4.0 * 10.0);
  }
  const MemberPlace place = pile(-20.0, -10.0, 2);
};

TEST_F(MagnifiedLoad, FollowsTheTable) {
  EXPECT_NEAR(factor(0.5), 1.0, 1e-7);
  EXPECT_NEAR(factor(1.5), 0.75, 1e-7);
  EXPECT_NEAR(factor(3.0), 1.5, 1e-7);
  EXPECT_NEAR(factor(4.0), 1.0, 1e-7);
  EXPECT_NEAR(factor(3.0), 1.0, 1e-7);
}

TEST_F(MagnifiedLoad, ScalesEveryEntryAlike) {
  const MemberLoad plain = wave_load(plain_tube(), place, 0.5);
  const MemberLoad scaled = wave_load(plain_tube(), place, 1.5);
  for (std::size_t i = 0; i < plain.size(); ++i) EXPECT_DOUBLE_EQ(scaled[i], 0.75 * plain[i]);
}

TEST_F(MagnifiedLoad, IsLeftAloneWithoutATable) {
  wave.NORAMP = 0;
  EXPECT_NEAR(factor(1.5), 1.0, 1e-7);
}

}  // namespace
}  // namespace tidearc::test
