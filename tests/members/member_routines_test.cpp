// One member in one sea: where the water is asked, what part is loaded.
#include "sea/members/member_routines.h"

#include <gtest/gtest.h>

#include <cmath>

#include "water.h"

namespace tidearc::test {
namespace {

class FakeWaves : public ::testing::Test {
 protected:
  FakeWaves() {
    still_sea();
    fake.velocity = {2.0, 0.0, 0.0};
  }
  MemberLoad run(const MemberPlace& place, bool current = false) {
    if (current) set_current({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
    member = made_ready(place, section);
    MemberLoad load{};
    member_waves(fake_family(), member, 1.0, false, load);
    return load;
  }
  /// Wet length that a load of uniform drag stands for.
  double wet_length(const MemberPlace& place) { return resultant(place, run(place)).force[0] / (0.5 * rho * 4.0); }

  WaterSection section = plain_tube();
  WaveMember member;
};

TEST_F(FakeWaves, AreAskedAtTheGaussPointsAndForTheSurfaceAtTheEnds) {
  run(pile(-20.0, -10.0, 2));
  ASSERT_EQ(fake.asked.size(), 2u);
  EXPECT_NEAR(fake.asked[0][2], -15.0 + 5.0 / std::sqrt(3.0), 1e-7);
  EXPECT_NEAR(fake.asked[1][2], -15.0 - 5.0 / std::sqrt(3.0), 1e-7);
  EXPECT_EQ(fake.surfaces, 2);
}

TEST_F(FakeWaves, LoadTheWetPart) {
  EXPECT_NEAR(wet_length(pile(-20.0, -10.0, 2)), 10.0, 1e-6);
  EXPECT_NEAR(wet_length(pile(-20.0, 10.0, 2)), 20.0, 1e-6);
  EXPECT_NEAR(wet_length(pile(10.0, -20.0, 2)), 20.0, 1e-6);  // node I on top
  EXPECT_EQ(wet_length(pile(1.0, 10.0, 2)), 0.0);
  EXPECT_NEAR(wet_length(pile(-20.0, 0.0, 2)), 20.0, 1e-6);  // an end in the surface is wet
}

TEST_F(FakeWaves, UnderASurfaceThatIsNotFiniteGiveALoadThatIsNotEither) {
  for (const double surface : {std::nan(""), HUGE_VAL, -HUGE_VAL}) {
    fake.surface = surface;
    for (const double part : run(pile(-20.0, -10.0, 2))) EXPECT_TRUE(std::isnan(part)) << surface;
  }
}

TEST_F(FakeWaves, LeaveFlagsOfTheWetEnds) {
  run(pile(-20.0, 10.0, 2));
  EXPECT_EQ(member.wet, (std::array<bool, 2>{true, false}));
  EXPECT_NEAR(member.cut, 2.0 / 3.0, 1e-12);
  run(pile(10.0, -20.0, 2));
  EXPECT_EQ(member.wet, (std::array<bool, 2>{false, true}));
  EXPECT_NEAR(member.cut, 1.0 / 3.0, 1e-12);
  run(pile(1.0, 10.0, 2));
  EXPECT_EQ(member.wet, (std::array<bool, 2>{false, false}));
  EXPECT_TRUE(fake.asked.size() == 4u);  // the dry member was not asked
}

TEST_F(FakeWaves, AreCutAtTheForceLimits) {
  fake.surface = 30.0;
  EXPECT_NEAR(wet_length(pile(-60.0, 20.0, 2)), 62.0, 1e-5);  // -50 to 12
  EXPECT_NEAR(wet_length(pile(10.0, 20.0, 2)), 2.0, 1e-6);
  EXPECT_EQ(wet_length(pile(13.0, 20.0, 2)), 0.0);
  EXPECT_EQ(wet_length(pile(-60.0, -50.0, 2)), 0.0);
}

TEST_F(FakeWaves, OfWhichTheSurfaceAndALimitCutOneMemberAtBothEnds) {
  fake.surface = 4.0;
  EXPECT_NEAR(wet_length(pile(-60.0, 20.0, 2)), 54.0, 1e-5);
  EXPECT_NEAR(wet_length(pile(20.0, -60.0, 2)), 54.0, 1e-5);
}

TEST_F(FakeWaves, AreSplitAtTheLevelsOfTheCurrent) {
  run(pile(-50.0, 10.0, 2), true);
  EXPECT_EQ(member.segments, 2);
  EXPECT_EQ(fake.asked.size(), 4u);
  fake.asked.clear();
  run(pile(-50.0, 10.0, 2));  // the code stands
  EXPECT_EQ(fake.asked.size(), 4u);
  EXPECT_LT(fake.asked[0][2], -20.0);
  EXPECT_GT(fake.asked[3][2], -20.0);
}

TEST_F(FakeWaves, HaveOneSegmentWithoutCurrent) {
  set_current({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  wave.current_code = 0;
  run(pile(-50.0, 10.0, 2));
  EXPECT_EQ(member.segments, 1);
}

TEST_F(FakeWaves, GiveTheCurrentAloneBelowTheLowerForceLimit) {
  wave.lower_force = -30.0;
  wave.lower_current = -50.0;
  member = made_ready(pile(-40.0, -20.0, 2), section);
  member.lower = -50.0;
  MemberLoad load{};
  member_waves(fake_family(), member, 1.0, false, load);
  ASSERT_EQ(fake.current_only.size(), 2u);
  EXPECT_FALSE(fake.current_only[0]);  // -24.2
  EXPECT_TRUE(fake.current_only[1]);   // -35.8
}

TEST_F(FakeWaves, GiveTheWaveOnTheLowerForceLimit) {
  wave.lower_force = -30.0;
  run(member_between({0.0, 0.0, -30.0}, {0.0, 10.0, -30.0}, 1));
  EXPECT_EQ(fake.current_only, (std::vector<bool>{false}));
}

TEST_F(FakeWaves, LoadALevelMemberInTheSurfaceWhole) {
  const MemberPlace place = member_between({0.0, 0.0, 0.0}, {0.0, 10.0, 0.0}, 2);
  EXPECT_NEAR(resultant(place, run(place)).force[0], 0.5 * rho * 4.0 * 10.0, 1e-6);
}

TEST(MemberRoutine, IsThatOfTheWaveType) {
  still_sea();
  EXPECT_EQ(member_routine(wave_none, 0.0), nullptr);
  EXPECT_EQ(member_routine(wave_airy, 0.0), &WLAIRY);
  EXPECT_EQ(member_routine(wave_stokes, 0.0), &WLSTOK);
  EXPECT_EQ(member_routine(wave_current_only, 0.0), &WLCURR);
  EXPECT_EQ(member_routine(wave_irregular, 0.0), &WLIRR);
  EXPECT_EQ(member_routine(wave_stream, 0.0), &WLSF);
  EXPECT_EQ(member_routine(wave_grid, 0.0), &WLGRID);
  EXPECT_EQ(member_routine(wave_legendre, 0.0), &WLLEG);
}

TEST(MemberRoutine, OfAnEmbeddedWaveGoesByItsWeight) {
  still_sea();
  wave.T_water = 12.0;
  wave.peak_time = 100.0;
  EXPECT_EQ(member_routine(wave_embedded, 100.0), &WLSF);
  EXPECT_EQ(member_routine(wave_embedded, 94.0), &WLSF);  // half a period
  EXPECT_EQ(member_routine(wave_embedded, 93.9), &WLBLEND);
  EXPECT_EQ(member_routine(wave_embedded, 108.9), &WLBLEND);
  EXPECT_EQ(member_routine(wave_embedded, 109.0), &WLIRR);  // three quarters
}

}  // namespace
}  // namespace tidearc::test
