// Elevations between which the sea acts on members: regular waves, current alone.
#include "wave_section.h"

namespace tidearc::test {
namespace {

/// A current of two levels, the second at `deepest`.
std::string current(const std::string& deepest) {
  return current_header("1", "2") + tens({"0."}) + tens({"0.", "1.", "0.", "0."}) + tens({deepest, "1.", "0.", "0."});
}

/// A wave of 12 m in 50 m of water with its mean level at 3.0, kept beyond the life of its section.
WaveState solved(const RegularWave& card, double sign = -1.0, const std::string& deepest = "") {
  WaveSection m(WaveControl{"1", deepest.empty() ? "0" : "1"}.card() + (deepest.empty() ? "" : current(deepest)) +
                card.cards());
  gravity.direction = {0.0, 0.0, sign};
  gravity.water_level = 3.0;
  WAVEIN();
  return wave;
}

TEST(WaveLimits, OfBlankFieldsAreOneHeightAboveTheWaterAndTheMudline) {
  const WaveState w = solved(RegularWave{});
  EXPECT_EQ(w.mudline, -47.0);
  EXPECT_EQ(w.upper_force, 15.0);
  EXPECT_EQ(w.lower_force, -47.0);
  EXPECT_EQ(w.lower_current, -47.0);
}

TEST(WaveLimits, FollowADownwardAxis) {
  const WaveState w = solved(RegularWave{}, 1.0);
  EXPECT_EQ(w.mudline, 53.0);
  EXPECT_EQ(w.upper_force, -9.0);
  EXPECT_EQ(w.lower_force, 53.0);
}

TEST(WaveLimits, AreTheGivenElevations) {
  const WaveState w = solved(RegularWave{.upper = "9.", .lower = "-20."});
  EXPECT_EQ(w.upper_force, 9.0);
  EXPECT_EQ(w.lower_force, -20.0);
  EXPECT_EQ(w.lower_current, -20.0);
  EXPECT_EQ(solved(RegularWave{.upper = "1.E-9"}).upper_force, 1e-9);
}

TEST(WaveLimits, MoveALowerLimitUnderTheMudlineToIt) {
  EXPECT_EQ(solved(RegularWave{.lower = "-47.1"}).lower_force, -47.0);
  EXPECT_EQ(solved(RegularWave{.lower = "-46.9"}).lower_force, -46.9);
  EXPECT_EQ(solved(RegularWave{.lower = "53.1"}, 1.0).lower_force, 53.0);
  EXPECT_EQ(solved(RegularWave{.lower = "52.9"}, 1.0).lower_force, 52.9);
}

TEST(WaveLimits, OfCurrentsAreTheDeepestLevelEvenUnderTheMudline) {
  EXPECT_EQ(solved(RegularWave{.lower = "-20."}, -1.0, "30.").lower_current, -27.0);
  EXPECT_EQ(solved(RegularWave{}, -1.0, "80.").lower_current, -77.0);
  EXPECT_EQ(solved(RegularWave{}, 1.0, "30.").lower_current, 33.0);
}

TEST(WaveLimits, OfCurrentsAreTheDeepestLevelOfAllTimes) {
  WaveSection m(WaveControl{"1", "1"}.card() + current_header("2", "2") + tens({"0."}) + tens({"0.", "1."}) +
                tens({"40.", "1."}) + tens({"5."}) + tens({"0.", "1."}) + tens({"25.", "1."}) + RegularWave{}.cards());
  WAVEIN();
  EXPECT_EQ(wave.lower_current, -40.0);
  EXPECT_TRUE(m.reports("LOWEST ELEVATION TO CALCULATE CURRENT FORCE     -40.00\n")) << m.report();
}

TEST(CurrentAlone, ReachesFromTheWaterToItsDeepestLevel) {
  WaveSection m(WaveControl{"3", "1"}.card() + current("30."));
  gravity.water_level = 3.0;
  WAVEIN();
  EXPECT_EQ(wave.d, 30.0);
  EXPECT_EQ(wave.upper_force, 3.0);
  EXPECT_EQ(wave.lower_force, -27.0);
  EXPECT_EQ(wave.lower_current, -27.0);
  EXPECT_EQ(wave.mudline, -27.0);
  EXPECT_EQ(wave.current_stretching, 1);
  EXPECT_EQ(deck_line(), 5);  // no wave cards
}

TEST(CurrentAlone, WithoutACurrentHasItsLimitsAtTheWater) {
  WaveSection m(WaveControl{"3"}.card());
  gravity.water_level = 3.0;
  WAVEIN();
  EXPECT_EQ(wave.upper_force, 3.0);
  EXPECT_EQ(wave.lower_force, 3.0);
  EXPECT_EQ(wave.lower_current, 3.0);
}

}  // namespace
}  // namespace tidearc::test
