// WAVLD: what it prepares, and what it leaves out.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "scratch.h"
#include "sea/wave_constants.h"
#include "water.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

void expect_none(const MemberLoad& load) {
  for (const double part : load) EXPECT_EQ(part, 0.0);
}

double shear(const MemberPlace& place, const MemberMotion& motion, double time,
             const WaterSection& section = plain_tube()) {
  MemberLoad load;
  WAVLD(section, place, motion, time, false, load);
  return resultant(place, load).force[0];
}

MemberMotion moving(double at_I, double at_J) {
  MemberMotion motion;
  motion.velocity = {Point{at_I, 0.0, 0.0}, Point{at_J, 0.0, 0.0}};
  return motion;
}

MemberMotion accelerated(double at_I, double at_J) {
  MemberMotion motion;
  motion.acceleration = {Point{at_I, 0.0, 0.0}, Point{at_J, 0.0, 0.0}};
  return motion;
}

/// Uniform current of 2 along X over the depth of 50.
class UniformCurrent : public ::testing::Test {
 protected:
  UniformCurrent() { current_sea({0.0, 50.0}, {2.0, 2.0}); }
};

TEST_F(UniformCurrent, LoadsAMemberByItsDrag) {
  EXPECT_NEAR(shear(pile(-30.0, -10.0, 2), {}, 1.0), 0.5 * rho * 4.0 * 20.0, 1e-5);
}

TEST_F(UniformCurrent, LoadsNothingOfDiameterZero) {
  MemberLoad load;
  load.fill(7.0);  // what stood there is cleared
  WAVLD(plain_tube(0.0), pile(-30.0, -10.0, 2), {}, 1.0, true, load);
  expect_none(load);
  EXPECT_EQ(wave_member.rule.count, 2);
  EXPECT_EQ(wave_member.length, 0.0);  // it returned before the ends were looked at
}

TEST_F(UniformCurrent, LoadsNothingWithoutPointsLengthWavesOrAxisOfGravity) {
  expect_none(wave_load(plain_tube(), pile(-30.0, -10.0, 0), 1.0));
  expect_none(wave_load(plain_tube(), pile(-30.0, -10.0, 5), 1.0));
  expect_none(wave_load(plain_tube(), pile(-30.0, -30.0, 2), 1.0));
  wave.IWTY = wave_none;
  expect_none(wave_load(plain_tube(), pile(-30.0, -10.0, 2), 1.0));
  wave.IWTY = wave_current_only;
  wave.sg = 0.0;
  expect_none(wave_load(plain_tube(), pile(-30.0, -10.0, 2), 1.0));
}

TEST_F(UniformCurrent, LoadsNothingOutsideTheLimits) {
  expect_none(wave_load(plain_tube(), pile(0.5, 10.0, 2), 1.0));
  expect_none(wave_load(plain_tube(), pile(-70.0, -50.5, 2), 1.0));
  EXPECT_EQ(wave_member.segments, 0);
}

TEST_F(UniformCurrent, IsMetAtTheVelocityOfTheMember) {
  const MemberPlace place = pile(-30.0, -10.0, 2);
  EXPECT_NEAR(shear(place, moving(0.5, 0.5), 1.0), 0.5 * rho * 4.0 * 20.0, 1e-5);  // code 0
  wave.relative_velocity = 1;
  EXPECT_NEAR(shear(place, moving(0.5, 0.5), 1.0), 0.5 * rho * 2.25 * 20.0, 1e-5);
  EXPECT_NEAR(shear(place, moving(3.0, 3.0), 1.0), -0.5 * rho * 20.0, 1e-5);
  EXPECT_NEAR(shear(place, moving(0.5, 0.5), 0.0), 0.5 * rho * 4.0 * 20.0, 1e-5);  // time zero
}

TEST_F(UniformCurrent, IsMetAtVelocitiesThatFollowTheEnds) {
  // Speed 2 - v s along the member: integral of the square 4 - 2 v + v^2/3. Were the rate divided by the number of
  // points, end J would be met at 2 - v/4 with four points: 4 - v/2 + v^2/48, and rigid turning would depend on the
  // rule. It must not.
  wave.relative_velocity = 1;
  const double v = 1.2;
  const double exact = 0.5 * rho * 20.0 * (4.0 - 2.0 * v + v * v / 3.0);
  const double divided = 0.5 * rho * 20.0 * (4.0 - 0.5 * v + v * v / 48.0);
  for (const int points : {2, 3, 4}) {
    for (const int code : {0, 1}) {
      wave.added_mass_code = code;
      EXPECT_NEAR(shear(pile(-30.0, -10.0, points), moving(0.0, v), 1.0), exact, 1e-5);
    }
  }
  EXPECT_GT(divided - exact, 5.0);
}

TEST_F(UniformCurrent, IsMetAtVelocitiesOfAPartlyWetMember) {
  // Wet from -30 to 0 of a pile to 10: the velocity is that at the place on the whole member.
  wave.relative_velocity = 1;
  const double V0 = 2.0, V1 = 2.0 - 0.75 * 1.2;
  const double exact = 0.5 * rho * 30.0 * (V0 * V0 + V0 * V1 + V1 * V1) / 3.0;
  EXPECT_NEAR(shear(pile(-30.0, 10.0, 2), moving(0.0, 1.2), 1.0), exact, 1e-5);
  EXPECT_NEAR(shear(pile(10.0, -30.0, 2), moving(1.2, 0.0), 1.0), exact, 1e-5);
}

TEST_F(UniformCurrent, GrowsOverTheRampTime) {
  const MemberPlace place = pile(-30.0, -10.0, 2);
  const double whole = shear(place, {}, 5.0);
  wave.ramp_time = 4.0;
  EXPECT_EQ(shear(place, {}, 0.0), 0.0);
  EXPECT_NEAR(shear(place, {}, 1.0), 0.25 * whole, 1e-12);
  EXPECT_EQ(shear(place, {}, 4.0), whole);
  EXPECT_EQ(shear(place, {}, 5.0), whole);
  wave.ramp_time = 0.0;
  EXPECT_EQ(shear(place, {}, 0.0), whole);
}

TEST_F(UniformCurrent, LoadsTheDisplacedMemberWithTheCode) {
  MemberMotion motion;
  motion.displacement = {Point{0.0, 0.0, -20.0}, Point{0.0, 0.0, -20.0}};
  const MemberPlace place = pile(1.0, 11.0, 2);
  EXPECT_EQ(shear(place, motion, 1.0), 0.0);
  wave.large_displacement = 1;
  EXPECT_NEAR(shear(place, motion, 1.0), 0.5 * rho * 4.0 * 10.0, 1e-6);
  // A member that is pulled to twice its length is loaded over twice its length.
  motion.displacement = {Point{0.0, 0.0, -31.0}, Point{0.0, 0.0, -21.0}};
  EXPECT_NEAR(shear(place, motion, 1.0), 0.5 * rho * 4.0 * 20.0, 1e-6);
  EXPECT_DOUBLE_EQ(wave_member.length, 20.0);
}

TEST_F(UniformCurrent, TakesTheTangentialDragAlongTheMember) {
  WaterSection section = plain_tube();
  section.CDS = 0.1;
  const MemberPlace place = member_between({0.0, 0.0, -10.0}, {20.0, 0.0, -10.0}, 2);
  EXPECT_NEAR(shear(place, {}, 1.0, section), 0.5 * rho * 0.1 * pi * 4.0 * 20.0, 1e-6);
}

TEST_F(UniformCurrent, ActsUnderAnyDirectionOfGravity) {
  wave.sg = 1.0;
  wave.gravity = {0.0, 0.0, 1.0};
  wave.lower_force = wave.lower_current = wave.mudline = 50.0;
  EXPECT_NEAR(shear(pile(10.0, 30.0, 2), {}, 1.0), 0.5 * rho * 4.0 * 20.0, 1e-5);
  EXPECT_EQ(shear(pile(-30.0, -10.0, 2), {}, 1.0), 0.0);
}

TEST(CurrentProfile, IsExactWithTwoPointsSinceMembersAreSplitAtItsLevels) {
  // The levels are depths: a member from the bed up is split at 20 m of depth. Taken against heights above the water,
  // which are negative, none would be met, and two points over the whole pile give another shear.
  current_sea({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  const MemberPlace place = pile(-50.0, 0.0, 2);
  const Resultant sum = resultant(place, wave_load(plain_tube(), place, 1.0));
  EXPECT_NEAR(sum.force[0], 7.26042, 2e-5);
  EXPECT_NEAR(sum.moment[1] + 50.0 * sum.force[0], 280.807, 1e-3);
  EXPECT_EQ(wave_member.segments, 2);
  wave.current_code = 0;
  EXPECT_EQ(wave_load(plain_tube(), place, 1.0), MemberLoad{});
}

/// The wave of the tests above with a uniform current of 1 down to -50.
class WaveAndCurrent : public ::testing::Test {
 protected:
  WaveAndCurrent() {
    airy_sea();
    set_current({0.0, 50.0}, {1.0, 1.0});
  }
};

TEST_F(WaveAndCurrent, ActTogetherBetweenTheLimits) {
  const MemberPlace place = pile(-0.01, 0.0, 1);
  // Crest, at the middle of a short piece: u = pi H/T cosh(k s)/sinh(k d).
  const double u = pi * std::cosh(wave.k * 49.995) / std::sinh(wave.k * 50.0) + 1.0;
  EXPECT_NEAR(shear(place, {}, 0.0), 0.5 * rho * u * u * 0.01, 1e-5);
}

TEST_F(WaveAndCurrent, LeaveTheCurrentAloneBelowTheLowerForceLimit) {
  wave.lower_force = -30.0;
  EXPECT_NEAR(shear(pile(-45.0, -35.0, 3), {}, -3.0), 0.5 * rho * 10.0, 1e-6);
  EXPECT_GT(shear(pile(-30.0, -20.0, 3), {}, -3.0), 0.5 * rho * 10.0 + 5.0);  // inertia of the wave
}

TEST_F(WaveAndCurrent, EndAtTheLowerOfBothLimits) {
  wave.lower_force = -30.0;
  wave.lower_current = -40.0;
  EXPECT_EQ(shear(pile(-50.0, -40.5, 2), {}, 0.0), 0.0);
  EXPECT_NEAR(shear(pile(-50.0, -35.0, 3), {}, 0.0), 0.5 * rho * 5.0, 1e-6);
}

TEST_F(WaveAndCurrent, LeaveTheWaveAloneBelowTheLowerCurrentLimit) {
  const MemberPlace place = pile(-45.0, -35.0, 3);
  wave.lower_current = -30.0;
  const double with_limit = shear(place, {}, 0.0);
  wave.current_code = 0;
  EXPECT_NEAR(with_limit, shear(place, {}, 0.0), 1e-12);
}

TEST(SurfaceCut, EndsTheWetPartWithinOneHundredthOfTheChord) {
  airy_sea();  // crest at +6
  wave_load(plain_tube(), pile(-10.0, 10.0, 2), 0.0);
  EXPECT_LE(wave_member.cut, 0.8);
  EXPECT_GT(wave_member.cut, 0.8 - 1.0 / 128.0);
  EXPECT_EQ(wave_member.wet, (std::array<bool, 2>{true, false}));
  wave_load(plain_tube(), pile(10.0, -10.0, 2), 0.0);
  EXPECT_LE(wave_member.cut, 0.2);
  EXPECT_GT(wave_member.cut, 0.2 - 1.0 / 128.0);
}

TEST(SurfaceCut, IsJudgedByTheEndsAlone) {
  airy_sea();
  // A beam 3 above still water from trough to trough: the crest between its dry ends is not seen.
  expect_none(wave_load(plain_tube(), member_between({-102.0, 0.0, 3.0}, {102.0, 0.0, 3.0}, 4), 0.0));
  // A beam 3 below it from crest to crest: the trough between its wet ends is not seen either.
  wave_load(plain_tube(), member_between({0.0, 0.0, -3.0}, {204.833, 0.0, -3.0}, 4), 0.0);
  EXPECT_EQ(wave_member.wet, (std::array<bool, 2>{true, true}));
}

TEST(UpperLimit, TakesTheCrestOff) {
  airy_sea();
  const double whole = shear(pile(-10.0, 3.0, 4), {}, 0.0);
  wave.upper_force = 3.0;
  EXPECT_NEAR(shear(pile(-10.0, 10.0, 4), {}, 0.0), whole, 1e-6);
}

TEST(UpperLimit, SparesMembersAboveItTheSea) {
  // A stream function sea without a surface table stops the run as soon as it is asked.
  Scratch scratch;
  still_sea();
  wave.IWTY = wave_stream;
  wave.L = 200.0;
  wave.T_water = wave.T_structure = 12.0;
  EXPECT_TRUE(stop_of([] { wave_load(plain_tube(), pile(-10.0, 11.0, 2), 1.0); }).has_value());
  EXPECT_FALSE(stop_of([] { wave_load(plain_tube(), pile(12.5, 20.0, 2), 1.0); }).has_value());
  EXPECT_FALSE(stop_of([] { wave_load(plain_tube(0.0), pile(-10.0, 11.0, 2), 1.0); }).has_value());
}

TEST(LoadForms, OfAnInclinedMemberInAWaveHaveTheSameSums) {
  airy_sea();
  set_current({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  WaterSection section = plain_tube(0.8);
  section.CDS = 0.1;
  MemberPlace place = member_between({3.0, -4.0, -27.0}, {12.0, 6.0, 9.0}, 3);
  const Resultant full = resultant(place, wave_load(section, place, 1.0));
  place.end_moments = false;
  const Resultant levers = resultant(place, wave_load(section, place, 1.0));
  place = bar_of(place);
  const MemberLoad load = wave_load(section, place, 1.0);
  const Resultant global = resultant(place, load);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(levers.force[i], full.force[i], 1e-12);
    EXPECT_NEAR(global.force[i], full.force[i], 1e-12);
    EXPECT_NEAR(levers.moment[i], full.moment[i], 1e-10);
    EXPECT_NEAR(global.moment[i], full.moment[i], 1e-10);
    EXPECT_EQ(load[3 + i], 0.0);
    EXPECT_EQ(load[9 + i], 0.0);
  }
  EXPECT_GT(std::abs(full.force[0]), 10.0);
}

TEST(SixFreedoms, TakeNoMomentsWhateverTheFlag) {
  airy_sea();
  MemberPlace bar = bar_of(pile(-20.0, -10.0, 2));
  const MemberLoad plain = wave_load(plain_tube(), bar, 0.0);
  bar.end_moments = true;
  EXPECT_EQ(wave_load(plain_tube(), bar, 0.0), plain);
}

/// Airy waves of height 8 with variable added mass; a tube of KM 1 whose CD and CM are 0, so that nothing else acts.
class AddedMassInWaves : public ::testing::Test {
 protected:
  AddedMassInWaves() {
    airy_sea();
    wave.H = 8.0;
    prepare_wave_constants();
    wave.added_mass_code = 1;
    tube.CD = tube.CM = 0.0;
    tube.KM = 1.0;
  }
  double correction(const MemberPlace& place, double time, double a = 1.0) const {
    return shear(place, accelerated(a, a), time, tube);
  }
  static constexpr double crest = 12.0, trough = 6.0;
  static constexpr double km = 0.25 * pi * rho;
  WaterSection tube = plain_tube();
};

TEST_F(AddedMassInWaves, IsAddedAboveTheRestLevelUnderACrest) {
  EXPECT_NEAR(correction(pile(0.0, 8.0, 2), crest), -3.2201, 5e-5);  // 4 of 8 are wet
  EXPECT_NEAR(correction(pile(0.0, 8.0, 2), crest), -km * 4.0, 1e-6);
  EXPECT_NEAR(correction(bar_of(pile(0.0, 8.0, 2)), crest), -km * 4.0, 1e-6);
}

TEST_F(AddedMassInWaves, LeavesASubmergedMemberAlone) {
  // The water about it may well rest: type 3 without current. Its added mass stands in the mass matrix all the same; to
  // take the rest of the water for a dry place would strip it off.
  EXPECT_EQ(correction(pile(-20.0, -10.0, 2), crest), 0.0);
  EXPECT_EQ(correction(pile(-20.0, -10.0, 2), trough), 0.0);
  current_sea({0.0, 50.0}, {0.0, 0.0});
  wave.added_mass_code = 1;
  EXPECT_EQ(correction(pile(-20.0, -10.0, 2), 1.0), 0.0);
}

TEST_F(AddedMassInWaves, IsTakenAwayBelowTheRestLevelInATrough) {
  EXPECT_NEAR(correction(pile(-4.0, 4.0, 2), trough), km * 4.0, 1e-6);  // wet end I in the trough: cut at 0
  EXPECT_NEAR(correction(pile(-8.0, 0.0, 2), trough), km * 4.0, 1e-6);
  EXPECT_NEAR(correction(pile(-3.0, -1.0, 2), trough), km * 2.0, 1e-6);  // both ends dry
  EXPECT_NEAR(correction(bar_of(pile(-3.0, -1.0, 2)), trough), km * 2.0, 1e-6);
  EXPECT_EQ(correction(pile(0.5, 3.0, 2), trough), 0.0);
  EXPECT_NEAR(correction(pile(-3.0, 5.0, 3), trough), km * 3.0, 1e-6);  // only the part below the rest level
}

TEST_F(AddedMassInWaves, CountsTheRestLevelItselfAsBelow) {
  // Across the wave, at the level to which the mass matrix has it.
  const MemberPlace level = member_between({0.0, -2.0, 0.0}, {0.0, 3.0, 0.0}, 2);
  EXPECT_NEAR(correction(level, trough), km * 5.0, 1e-6);
  EXPECT_EQ(correction(level, crest), 0.0);
}

TEST_F(AddedMassInWaves, IsNotTakenFromBelowTheLowerLimit) {
  wave.lower_force = wave.lower_current = -2.0;
  EXPECT_NEAR(correction(pile(-3.0, -1.0, 2), trough), km * 1.0, 1e-6);
}

TEST_F(AddedMassInWaves, NeedsTheCodeAndTheCoefficient) {
  tube.KM = 0.0;
  EXPECT_EQ(correction(pile(0.0, 8.0, 2), crest), 0.0);
  tube.KM = 1.0;
  wave.added_mass_code = 0;
  EXPECT_EQ(correction(pile(0.0, 8.0, 2), crest), 0.0);
  EXPECT_EQ(correction(pile(-3.0, -1.0, 2), trough), 0.0);
}

TEST_F(AddedMassInWaves, FollowsTheAccelerationAlongTheMember) {
  // From 1 at the foot to 3 at the head of 8: 1 + s/4 over the wet 4 gives 6; the other half of the member is dry.
  const MemberPlace place = pile(0.0, 8.0, 2);
  EXPECT_NEAR(shear(place, accelerated(1.0, 3.0), crest, tube), -km * 6.0, 1e-5);
  EXPECT_NEAR(shear(pile(-3.0, -1.0, 2), accelerated(1.0, 3.0), trough, tube), km * 4.0, 1e-6);
}

TEST_F(AddedMassInWaves, MovesAsOneWithEndIAtTimeZero) {
  EXPECT_NEAR(shear(pile(0.0, 8.0, 2), accelerated(1.0, 3.0), 0.0, tube), -km * 4.0, 1e-6);
}

TEST_F(AddedMassInWaves, HasNoRampButTheMagnification) {
  wave.ramp_time = 100.0;
  EXPECT_NEAR(correction(pile(0.0, 8.0, 2), crest), -km * 4.0, 1e-6);
  wave.NORAMP = 2;
  force_scale.time = {};
  force_scale.multiplier = {};
  force_scale.time[1] = 1000.0;
  force_scale.multiplier[0] = force_scale.multiplier[1] = 2.0;
  EXPECT_NEAR(correction(pile(0.0, 8.0, 2), crest), -km * 8.0, 1e-6);
  EXPECT_NEAR(correction(pile(-3.0, -1.0, 2), trough + 12.0), km * 4.0, 1e-6);
}

TEST_F(AddedMassInWaves, CountsTheTurnOfTheChordWithLargeDisplacements) {
  // A pile whose head has moved by its length along Y: the chord has turned by 45 degrees, the squared sine is 1/2.
  wave.large_displacement = 1;
  MemberMotion motion = accelerated(1.0, 1.0);
  motion.displacement[1] = {0.0, 3.0, 0.0};
  const double length = 3.0 * std::sqrt(2.0);
  EXPECT_NEAR(shear(pile(0.0, 3.0, 2), motion, crest, tube), -1.5 * km * length, 1e-6);
}

TEST(VortexMember, IsLoadedAsAnyOtherAndWarnedOfOnce) {
  Scratch scratch;
  current_sea({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  const MemberPlace place = pile(-50.0, 0.0, 2);
  MemberLoad load;
  int told = 0;
  WAVLDV(plain_tube(), place, {}, 1.0, false, load, told);
  EXPECT_EQ(load, wave_load(plain_tube(), place, 1.0));
  EXPECT_EQ(told, 1);
  WAVLDV(plain_tube(), place, {}, 2.0, false, load, told);
  EXPECT_EQ(scratch.report(),
            "     ** warning ** more than one segment but only the first segment is used for viv calculations.\n");
}

TEST(VortexMember, InOneSegmentHasNoWarning) {
  Scratch scratch;
  current_sea({0.0, 20.0, 50.0}, {1.0, 0.5, 0.0});
  MemberLoad load;
  int told = 0;
  WAVLDV(plain_tube(), pile(-20.0, 0.0, 2), {}, 1.0, false, load, told);
  WAVLDV(plain_tube(), pile(5.0, 10.0, 2), {}, 1.0, false, load, told);
  EXPECT_EQ(told, 0);
  EXPECT_EQ(scratch.report(), "");
}

}  // namespace
}  // namespace tidearc::test
