// The wake of a cylinder: Strouhal numbers, tracking of a motion, lock-in, phases.
#include "sea/members/wake.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

namespace tidearc::test {
namespace {

constexpr double turn = 2.0 * std::numbers::pi;

TEST(StrouhalNumber, IsThatOfThePublishedBranches) {
  // Fey, Koenig and Eckelmann 1998: St* + m/sqrt(Re).
  EXPECT_NEAR(strouhal_number(100.0), 0.2684 - 0.10356, 1e-12);
  EXPECT_NEAR(strouhal_number(400.0), 0.2257 - 0.02201, 1e-12);
  EXPECT_NEAR(strouhal_number(2500.0), 0.2040 + 0.006728, 1e-12);
  EXPECT_NEAR(strouhal_number(1.0e4), 0.1776 + 0.022023, 1e-12);
  EXPECT_NEAR(strouhal_number(1.0e5), 0.1846, 1e-4);
  EXPECT_EQ(strouhal_number(3.5e6), 0.27);  // Roshko 1961
  EXPECT_EQ(strouhal_number(1.0e8), 0.27);
}

TEST(StrouhalNumber, HasNoJumpWhereItsBranchesMeet) {
  for (const double Re : {180.0, 360.0, 1300.0, 5000.0, 2.0e5, 3.5e6})
    EXPECT_NEAR(strouhal_number(Re * (1.0 - 1e-9)), strouhal_number(Re * (1.0 + 1e-9)), 3e-4) << Re;
}

TEST(StrouhalNumber, IsNothingWhereNoVorticesAreShed) {
  EXPECT_EQ(strouhal_number(46.9), 0.0);
  EXPECT_GT(strouhal_number(47.0), 0.1);
  EXPECT_EQ(strouhal_number(0.0), 0.0);
}

TEST(LiftRamp, GrowsFromItsBeginOverItsLength) {
  WakeLaw law;
  law.trampb = 2.0;
  law.trampl = 4.0;
  EXPECT_EQ(lift_ramp(law, 1.9), 0.0);
  EXPECT_EQ(lift_ramp(law, 2.0), 0.0);
  EXPECT_EQ(lift_ramp(law, 3.0), 0.25);
  EXPECT_EQ(lift_ramp(law, 6.0), 1.0);
  EXPECT_EQ(lift_ramp(law, 60.0), 1.0);
  law.trampl = 0.0;
  EXPECT_EQ(lift_ramp(law, 1.999), 0.0);
  EXPECT_EQ(lift_ramp(law, 2.0), 1.0);
  law.timrwl = 5.0;
  EXPECT_EQ(lift_ramp(law, 4.999), 0.0) << "no wake, no lift";
  EXPECT_EQ(lift_ramp(law, 5.0), 1.0);
}

TEST(WakeCoefficients, WithoutATableAreThoseOfTheCardAndDragGrowsWithTheAmplitude) {
  WakeLaw law;
  law.cl0 = 0.7;
  law.cd0 = 1.2;
  EXPECT_EQ(wake_coefficients(law, 0.0).lift, 0.7);
  EXPECT_EQ(wake_coefficients(law, 0.0).more_drag, 0.0);
  EXPECT_EQ(wake_coefficients(law, 0.5).lift, 0.7);
  EXPECT_NEAR(wake_coefficients(law, 0.5).more_drag, 1.2 * 1.05, 1e-14);  // Blevins: CD (1 + 2.1 A/D)
}

TEST(WakeCoefficients, OfATableAreLinearAndHeldAtItsEnds) {
  const std::array<double, 3> amplitude{0.1, 0.5, 1.5};
  const std::array<double, 6> rows{0.4, 1.0, 0.8, 2.0, 0.0, 3.0};
  WakeLaw law;
  law.cl0 = 9.0;
  law.cd0 = 1.0;
  law.columns = 2;
  law.argument = amplitude;
  law.coefficient = rows;
  const double expected[5][3] = {{0.0, 0.4, 0.0}, {0.1, 0.4, 0.0}, {0.3, 0.6, 0.5}, {1.0, 0.4, 1.5}, {2.0, 0.0, 2.0}};
  for (const auto& [A, lift, drag] : expected) {
    EXPECT_NEAR(wake_coefficients(law, A).lift, lift, 1e-14) << A;
    EXPECT_NEAR(wake_coefficients(law, A).more_drag, drag, 1e-14) << A;
  }
  law.columns = 1;  // the rows are then 0.4, 1.0, 0.8
  law.coefficient = std::span<const double>(rows).first(3);
  EXPECT_NEAR(wake_coefficients(law, 0.3).lift, 0.7, 1e-14);
  EXPECT_NEAR(wake_coefficients(law, 0.3).more_drag, 2.1 * 0.3, 1e-14);
}

TEST(RandomPart, IsTheSameAgainAndFillsItsInterval) {
  EXPECT_EQ(random_part(42, 7, 1), random_part(42, 7, 1));
  EXPECT_NE(random_part(42, 7, 1), random_part(43, 7, 1));
  EXPECT_NE(random_part(42, 7, 1), random_part(42, 8, 1));
  EXPECT_NE(random_part(42, 7, 1), random_part(42, 7, 2));
  // Mean and mean square of a uniform number are 1/2 and 1/3; of 40000 their deviations are 0.0014 and 0.0015.
  double sum = 0.0, squares = 0.0;
  const int n = 40000;
  for (int i = 0; i < n; ++i) {
    const double r = random_part(-1, i / 4, i % 4);
    ASSERT_GE(r, 0.0);
    ASSERT_LT(r, 1.0);
    sum += r;
    squares += r * r;
  }
  EXPECT_NEAR(sum / n, 0.5, 0.006);
  EXPECT_NEAR(squares / n, 1.0 / 3.0, 0.006);
}

/// A sine of frequency f and velocity amplitude v from time 0 on.
MotionTrack tracked(double f, double v, double dt, int steps, int nbuf) {
  MotionTrack track{};
  for (int i = 0; i <= steps; ++i) track_motion(i * dt, v * std::sin(turn * f * i * dt - 0.5), nbuf, track);
  return track;
}

TEST(MotionTrack, FindsFrequencyAndAmplitudeOfASine) {
  const double f = 0.8, v = 0.3;
  const Vibration motion = vibration_of(tracked(f, v, 0.01, 1000, 500));
  EXPECT_NEAR(motion.frequency, f, 1e-5);
  EXPECT_NEAR(motion.amplitude, v / (turn * f), 1e-3 * v / (turn * f));
  EXPECT_NEAR(std::sin(turn * f * motion.crossing - 0.5), 0.0, 1e-4);
  EXPECT_GT(motion.crossing, 10.0 - 1.0 / f);
}

TEST(MotionTrack, KnowsNothingBeforeTwoCrossingsOfItsBuffer) {
  // A cycle is 125 values long: two upward crossings lie in the last 126 values at least.
  EXPECT_EQ(vibration_of(tracked(0.8, 0.3, 0.01, 1000, 100)).frequency, 0.0);
  EXPECT_GT(vibration_of(tracked(0.8, 0.3, 0.01, 1000, 260)).frequency, 0.0);
  EXPECT_EQ(vibration_of(tracked(0.8, 0.3, 0.01, 1000, 0)).frequency, 0.0);
  EXPECT_EQ(vibration_of(tracked(0.8, 0.3, 0.01, 100, 1000)).frequency, 0.0);
  EXPECT_EQ(vibration_of(MotionTrack{}).frequency, 0.0);
}

TEST(MotionTrack, ForgetsAMotionThatHasEnded) {
  MotionTrack track = tracked(0.8, 0.3, 0.01, 1000, 300);
  EXPECT_GT(vibration_of(track).frequency, 0.0);
  for (int i = 1; i <= 300; ++i) track_motion(10.0 + 0.01 * i, 0.0, 300, track);
  EXPECT_EQ(vibration_of(track).frequency, 0.0);
}

TEST(MotionTrack, TakesAVelocityOfATimeOnce) {
  // The first of a time counts: -1 at 0, 1 at 1, whatever is told of time 0 again; so the crossing is at 0.5.
  MotionTrack track{};
  for (const double velocity : {-1.0, 1.0}) track_motion(0.0, velocity, 100, track);
  track_motion(1.0, 1.0, 100, track);
  EXPECT_EQ(track.crossings, 1);
  EXPECT_EQ(track.when[0], 0.5);
  EXPECT_EQ(track.values, 2);
}

TEST(MotionTrack, GoesBackWithTheTime) {
  // The values of a dropped step, and those of the same times once more, leave what a straight run leaves.
  const double f = 0.8, dt = 0.01;
  const auto value = [&](int i) { return 0.3 * std::sin(turn * f * i * dt - 0.5); };
  MotionTrack straight{}, returned{};
  for (int i = 0; i <= 900; ++i) track_motion(i * dt, value(i), 400, straight);
  for (int i = 0; i <= 900; ++i) {
    track_motion(i * dt, value(i), 400, returned);
    if (i % 7 == 0) track_motion(i * dt, value(i), 400, returned);
  }
  EXPECT_EQ(vibration_of(returned).frequency, vibration_of(straight).frequency);
  EXPECT_EQ(vibration_of(returned).crossing, vibration_of(straight).crossing);
  track_motion(3.0, value(300), 400, returned);
  EXPECT_LE(vibration_of(returned).crossing, 3.0);
}

TEST(Shedding, HasTheFrequencyOfStrouhal) {
  WakeLaw law;
  law.strouhal = 0.2;
  const WakeFlow flow{1.5, 0.5, 1.0e-6, 0.0};
  EXPECT_NEAR(shedding_of(law, flow, {}).frequency, 0.6, 1e-14);
  EXPECT_FALSE(shedding_of(law, flow, {}).locked);
  law.strouhal = 0.0;  // Re 7.5e5
  EXPECT_NEAR(shedding_of(law, flow, {}).frequency, strouhal_number(7.5e5) * 3.0, 1e-14);
  EXPECT_EQ(shedding_of(law, {0.0, 0.5, 1.0e-6, 0.0}, {}).frequency, 0.0);
}

TEST(Shedding, SpreadsItsFrequencyOverTheWakes) {
  WakeLaw law;
  law.strouhal = 0.2;
  law.alpha = 0.25;
  EXPECT_NEAR(shedding_of(law, {1.5, 0.5, 1.0e-6, 0.6}, {}).frequency, 0.6 * 1.15, 1e-14);
  EXPECT_NEAR(shedding_of(law, {1.5, 0.5, 1.0e-6, -1.0}, {}).frequency, 0.6 * 0.75, 1e-14);
  law.alpha = 3.0;
  EXPECT_EQ(shedding_of(law, {1.5, 0.5, 1.0e-6, -1.0}, {}).frequency, 0.0) << "never backwards";
}

TEST(Shedding, LocksInOnBothSidesUpToTheCutoff) {
  WakeLaw law;
  law.strouhal = 0.2;
  law.cutoff = 0.3;
  const WakeFlow flow{1.5, 0.5, 1.0e-6, 0.0};  // sheds at 0.6
  const double frequencies[4] = {0.6 / 1.299, 0.6 / 1.301, 0.6 / 0.701, 0.6 / 0.699};
  const bool locked[4] = {true, false, true, false};
  for (int i = 0; i < 4; ++i) {
    const Shedding s = shedding_of(law, flow, {frequencies[i], 0.1, 0.0});
    EXPECT_EQ(s.locked, locked[i]) << i;
    EXPECT_NEAR(s.frequency, locked[i] ? frequencies[i] : 0.6, 1e-14) << i;
  }
  law.cutoff = 0.0;
  EXPECT_FALSE(shedding_of(law, flow, {0.6, 0.1, 0.0}).locked) << "no cutoff, no lock-in";
}

TEST(WakePhase, IsTheIntegralOfTheFrequency) {
  const WakeLaw law;
  // Frequencies 0.5 and 0.7 at the ends of 2 s: 1.2 turns.
  WakePhase wake = advance_wake(law, {0.3, 0.5, {}}, 4.0, 6.0, {0.7, false}, {});
  EXPECT_NEAR(wake.phase, 0.5, 1e-14);
  EXPECT_EQ(wake.frequency, 0.7);
  wake = advance_wake(law, {0.3, 0.5, {}}, 4.0, 4.0, {0.7, false}, {});
  EXPECT_EQ(wake.phase, 0.3);
  wake = advance_wake(law, {0.1, 0.5, {}}, 4.0, 3.0, {0.5, false}, {});
  EXPECT_NEAR(wake.phase, 0.6, 1e-14) << "a time before the accepted one runs back";
}

TEST(WakePhase, StandsUntilTheWakeIsFollowed) {
  WakeLaw law;
  law.timrwl = 5.0;
  EXPECT_EQ(advance_wake(law, {0.3, 0.5, {}}, 2.0, 4.0, {0.5, false}, {}).phase, 0.3);
  EXPECT_NEAR(advance_wake(law, {0.3, 0.5, {}}, 4.0, 6.0, {0.5, false}, {}).phase, 0.8, 1e-14);
}

TEST(WakePhase, LockedInIsDrawnToTheVelocityOfTheMotion) {
  const WakeLaw law;
  const Vibration motion{0.8, 0.1, 1.0};  // upward crossings at 1.0 and every 1.25 s
  for (const double start : {0.0, 0.2, 0.49, 0.51, 0.9}) {
    WakePhase wake{start, 0.8, {}};
    for (int i = 0; i < 1000; ++i)
      wake = advance_wake(law, wake, 2.0 + 0.01 * i, 2.0 + 0.01 * (i + 1), {0.8, true}, motion);
    const double target = 0.8 * (12.0 - 1.0);
    EXPECT_NEAR(std::remainder(wake.phase - target, 1.0), 0.0, 1e-3) << start;
  }
}

TEST(WakeTime, AcceptsWhatStandsWhenALaterTimeComes) {
  const WakeLaw law;
  WakeState wake{};
  begin_wake_time(law, 3, 0.0, wake);
  EXPECT_EQ(wake.accepted[2].phase, random_part(0, 3, 2));
  wake.now[2].phase = 0.11;
  begin_wake_time(law, 3, 1.0, wake);
  EXPECT_EQ(wake.before, 0.0);
  EXPECT_EQ(wake.accepted[2].phase, 0.11);
  wake.now[2].phase = 0.22;
  begin_wake_time(law, 3, 1.0, wake);  // formed anew
  EXPECT_EQ(wake.accepted[2].phase, 0.11);
  begin_wake_time(law, 3, 0.5, wake);  // dropped
  EXPECT_EQ(wake.before, 0.0);
  EXPECT_EQ(wake.accepted[2].phase, 0.11);
}

}  // namespace
}  // namespace tidearc::test
