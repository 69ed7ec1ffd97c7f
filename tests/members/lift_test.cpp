// Lift of a member in a current: amplitude, frequency, phase, lock-in, and what a dropped step leaves.
#include "sea/members/lift.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <vector>

#include "scratch.h"
#include "water.h"

namespace tidearc::test {
namespace {

constexpr double turn = 2.0 * std::numbers::pi;
constexpr int stream = 17;

/// A pile of diameter 1 from -30 to -10 in a uniform current of 2 along X: z x X is Y, the direction of its lift. St
/// 0.2 sheds at 0.4; lift coefficient 0.8: amplitude 0.5*1.025*0.8*4*20.
class Pile : public ::testing::Test {
 protected:
  Pile() {
    current_sea({0.0, 50.0}, {2.0, 2.0});
    law.strouhal = 0.2;
    law.cl0 = 0.8;
    law.iseed = 42;
    law.nnc = 4;
    law.nbuf = 2000;
  }
  /// Wave load with lift at a time, in global axes; `motion` moves both ends along Y.
  Point force(double time, double velocity_Y = 0.0) {
    MemberMotion motion;
    motion.velocity = {Point{0.0, velocity_Y, 0.0}, Point{0.0, velocity_Y, 0.0}};
    MemberLoad load;
    int told = 1;
    WAVLDV(plain_tube(), place, motion, time, false, load, told);
    MemberLoad without = load;
    add_vortex_load(law, 1.0, stream, time, wake, lift, load);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(load[i], without[i] + lift[i], 1e-12);
    return resultant(place, lift).force;
  }
  double lift_at(double time, double velocity_Y = 0.0) { return force(time, velocity_Y)[1]; }

  MemberPlace place = pile(-30.0, -10.0, 4);
  WakeLaw law;
  WakeState wake{};
  MemberLoad lift{};
  static constexpr double amplitude = 0.5 * rho * 0.8 * 4.0 * 20.0;
};

/// Amplitude of the part of a frequency, and the mean, of values over whole cycles.
struct Part {
  double amplitude, mean, rest;
};
Part part_of(const std::vector<double>& values, double f, double dt) {
  double s = 0.0, c = 0.0, mean = 0.0;
  const double n = static_cast<double>(values.size());
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double angle = turn * f * static_cast<double>(i) * dt;
    s += 2.0 * values[i] * std::sin(angle) / n;
    c += 2.0 * values[i] * std::cos(angle) / n;
    mean += values[i] / n;
  }
  double rest = 0.0;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const double angle = turn * f * static_cast<double>(i) * dt;
    rest = std::max(rest, std::abs(values[i] - mean - s * std::sin(angle) - c * std::cos(angle)));
  }
  return {std::hypot(s, c), mean, rest};
}

TEST_F(Pile, AtRestFeelsASineOfTheStrouhalFrequencyAcrossTheFlow) {
  std::vector<double> values;
  for (int i = 0; i < 2500; ++i) {  // 20 cycles of 2.5 s in steps of 0.02
    const Point F = force(0.02 * i);
    values.push_back(F[1]);
    EXPECT_NEAR(F[0], 0.0, 1e-12);
    EXPECT_NEAR(F[2], 0.0, 1e-12);
  }
  const Part sine = part_of(values, 0.4, 0.02);
  EXPECT_NEAR(sine.amplitude, amplitude, 1e-6 * amplitude);  // points and weights of single precision
  EXPECT_NEAR(sine.mean, 0.0, 1e-9 * amplitude);
  EXPECT_NEAR(sine.rest, 0.0, 1e-6 * amplitude) << "nothing but the sine";
}

TEST_F(Pile, GetsHalfOfItsLiftAtEitherEnd) {
  force(0.0);
  EXPECT_NE(force_at_I(place, lift)[1], 0.0);
  EXPECT_NEAR(force_at_I(place, lift)[1], force_at_J(place, lift)[1], 1e-6 * amplitude);
  // uniform load: q l^2/12, opposite at the ends
  EXPECT_NEAR(std::abs(moment_at_I(place, lift)[0]), std::abs(force_at_I(place, lift)[1]) * 20.0 / 6.0,
              1e-5 * amplitude);
}

TEST_F(Pile, ShedsByTheReynoldsNumberWithoutAStrouhalNumber) {
  law.strouhal = 0.0;
  wave.g = 9.80665;
  const double f = strouhal_number(2.0 / 1.19e-6) * 2.0;
  std::vector<double> values;
  for (int i = 0; i < 500; ++i) values.push_back(lift_at(i / (100.0 * f)));
  EXPECT_NEAR(part_of(values, f, 1.0 / (100.0 * f)).amplitude, amplitude, 1e-6 * amplitude);
}

TEST(WaterViscosity, IsThatOfSeaWaterInTheDecksUnits) {
  EXPECT_NEAR(water_viscosity(9.80665), 1.19e-6, 1e-18);
  EXPECT_NEAR(water_viscosity(32.174), 1.28e-5, 2e-8);  // feet
}

TEST_F(Pile, StartsInAPhaseOfItsSeed) {
  const double first = lift_at(0.0);
  WakeState again{};
  std::swap(wake, again);
  EXPECT_EQ(lift_at(0.0), first);
  wake = {};
  law.iseed = 43;
  EXPECT_NE(lift_at(0.0), first);
}

TEST_F(Pile, LiftGrowsOverItsRamp) {
  std::vector<double> full;
  for (int i = 0; i <= 12; ++i) full.push_back(lift_at(0.5 * i));
  wake = {};
  law.trampb = 2.0;
  law.trampl = 2.0;
  for (int i = 0; i <= 12; ++i) {
    const double part = i <= 4 ? 0.0 : (i >= 8 ? 1.0 : 0.25 * (i - 4));
    EXPECT_NEAR(lift_at(0.5 * i), part * full[static_cast<std::size_t>(i)], 1e-12) << i;
  }
}

TEST_F(Pile, LiftTakesTheFactorsOfTheWaveLoadAndItsOwn) {
  const double plain = lift_at(1.0);
  wake = {};
  law.blokfac = 0.6;
  EXPECT_NEAR(lift_at(1.0), 0.6 * plain, 1e-12);
  wake = {};
  wave.ramp_time = 4.0;
  EXPECT_NEAR(lift_at(1.0), 0.25 * 0.6 * plain, 1e-12);
  wake = {};
  wave.ramp_time = 0.0;
  wave.NORAMP = 2;
  force_scale.time[0] = 0.0;
  force_scale.time[1] = 2.0;
  force_scale.multiplier[0] = 1.0;
  force_scale.multiplier[1] = 2.0;
  force_scale.index = 0;
  EXPECT_NEAR(lift_at(1.0), 1.5 * 0.6 * plain, 1e-12);
}

TEST_F(Pile, HasNoLiftBeforeItsWakeIsFollowed) {
  const double start = lift_at(0.0);
  wake = {};
  law.timrwl = 3.0;
  for (const double time : {0.0, 1.0, 2.9}) EXPECT_EQ(lift_at(time), 0.0) << time;
  EXPECT_NEAR(lift_at(3.0), start, 1e-12) << "the phase stood still";
}

TEST_F(Pile, CorrelatedPointsShareAWake) {
  // Weights of four points over a length: 0.173927, 0.326073, 0.326073, 0.173927.
  const double w[4] = {0.1739274, 0.3260726, 0.3260726, 0.1739274};
  const double sine[4] = {std::sin(turn * random_part(42, stream, 0)), std::sin(turn * random_part(42, stream, 1)),
                          std::sin(turn * random_part(42, stream, 2)), std::sin(turn * random_part(42, stream, 3))};
  const double expected[5] = {w[0] * sine[0] + w[1] * sine[1] + w[2] * sine[2] + w[3] * sine[3],
                              0.5 * sine[0] + 0.5 * sine[1], (w[0] + w[1] + w[2]) * sine[0] + w[3] * sine[1], sine[0],
                              sine[0]};
  for (int nnc = 1; nnc <= 5; ++nnc) {
    wake = {};
    law.nnc = nnc;
    EXPECT_NEAR(lift_at(0.0), amplitude * expected[nnc - 1], 1e-5 * amplitude) << nnc;
  }
  const double alone = expected[0];
  for (const int nnc : {0, -3}) {
    wake = {};
    law.nnc = nnc;
    EXPECT_NEAR(lift_at(0.0), amplitude * alone, 1e-5 * amplitude) << nnc;
  }
}

TEST_F(Pile, WakesSpreadTheirFrequencies) {
  law.nnc = 2;
  law.alpha = 0.2;
  lift_at(0.0);
  for (std::size_t g = 0; g < 2; ++g) {
    const double spread = 2.0 * random_part(42, stream, 4 + static_cast<int>(g)) - 1.0;
    EXPECT_NEAR(wake.now[g].frequency, 0.4 * (1.0 + 0.2 * spread), 1e-12);
  }
  EXPECT_NE(wake.now[0].frequency, wake.now[1].frequency);
}

TEST_F(Pile, HasNoLiftWithoutFlow) {
  current_sea({0.0, 50.0}, {0.0, 0.0});
  for (int i = 0; i < 20; ++i) {
    const Point F = force(0.5 * i, 0.3);
    for (const double part : F) EXPECT_EQ(part, 0.0);
  }
}

TEST_F(Pile, OutOfTheWaterHasNoLiftAndItsWakeStands) {
  const double before = lift_at(1.0);
  EXPECT_NE(before, 0.0);
  const double phase = wake.now[0].phase;
  place = pile(10.0, 30.0, 4);
  EXPECT_EQ(lift_at(2.0), 0.0);
  EXPECT_EQ(lift_at(3.0), 0.0);
  // half a step of the old frequency went by before the flow was gone
  EXPECT_NEAR(std::remainder(wake.now[0].phase - phase - 0.5 * 0.4, 1.0), 0.0, 1e-12);
}

TEST_F(Pile, SteadyFlowLeavesTheWaveOut) {
  airy_sea();
  for (int i = 0; i < 12; ++i) EXPECT_EQ(lift_at(1.0 * i), 0.0) << "a wave alone is no steady flow";
  wake = {};
  law.KMOTN = 1;
  double largest = 0.0;
  for (int i = 0; i < 48; ++i) largest = std::max(largest, std::abs(lift_at(0.25 * i)));
  EXPECT_GT(largest, 1.0);
}

TEST_F(Pile, OscillatoryFlowIsRelativeToTheBodyWhenTheSeaAsksForIt) {
  // A body that goes along with the current sheds nothing.
  MemberMotion along_flow;
  along_flow.velocity = {Point{2.0, 0.0, 0.0}, Point{2.0, 0.0, 0.0}};
  wave.relative_velocity = 1;
  for (const int KMOTN : {1, 0}) {
    law.KMOTN = KMOTN;
    wake = {};
    MemberLoad load;
    int told = 1;
    WAVLDV(plain_tube(), place, along_flow, 1.0, false, load, told);
    add_vortex_load(law, 1.0, stream, 1.0, wake, lift, load);
    EXPECT_EQ(resultant(place, lift).force[1] == 0.0, KMOTN == 1) << KMOTN;
  }
}

TEST_F(Pile, LiftStaysOnItsSideWhenTheFlowTurnsRound) {
  lift_at(0.0);
  EXPECT_EQ(wake.now[0].axis[1], 1.0);
  current_sea({0.0, 50.0}, {-2.0, -2.0});
  lift_at(1.0);
  EXPECT_EQ(wake.now[0].axis[1], 1.0);
  wake = {};
  lift_at(1.0);
  EXPECT_EQ(wake.now[0].axis[1], -1.0);
}

TEST_F(Pile, LiftOfALeaningMemberIsNormalToItAndToTheFlow) {
  place = member_between({0.0, 0.0, -30.0}, {10.0, 0.0, -20.0}, 4);  // 45 degrees: half of the flow squared is normal
  const double phase = random_part(42, stream, 0);
  const Point F = force(0.0);
  EXPECT_NEAR(F[0], 0.0, 1e-9);
  EXPECT_NEAR(F[2], 0.0, 1e-9);
  EXPECT_NEAR(F[1], 0.5 * rho * 0.8 * 2.0 * std::sqrt(200.0) * std::sin(turn * phase), 1e-5 * amplitude);
}

TEST_F(Pile, OnlyTheFirstSegmentSheds) {
  current_sea({0.0, 20.0, 50.0}, {2.0, 2.0, 2.0});
  EXPECT_NEAR(lift_at(0.0), 0.5 * amplitude * std::sin(turn * random_part(42, stream, 0)), 1e-5 * amplitude);
  EXPECT_EQ(wave_member.segments, 2);
  // -30 to -20: its middle is at 5 of 20
  const double arm = force_at_J(place, lift)[1] * 20.0 - moment_at_I(place, lift)[0] - moment_at_J(place, lift)[0];
  EXPECT_NEAR(arm / resultant(place, lift).force[1], 5.0, 1e-5);
}

/// Lifts of a member that vibrates across the flow with a frequency, over the last 20 of 60 cycles; 100 steps each.
struct Vibrating {
  std::vector<double> lifts, velocities;
  double drag = 0.0;
};

class VibratingPile : public Pile {
 protected:
  Vibrating vibrate(double f, double A) {
    wake = {};
    Vibrating found;
    const double dt = 0.01 / f;
    const auto velocity = [&](int i) { return turn * f * A * std::sin(turn * 0.01 * i); };
    for (int i = 0; i < 6000; ++i) {
      // the motion at hand is that of the step before
      const Point F = force(dt * i, velocity(i == 0 ? 0 : i - 1));
      if (i < 4000) continue;
      found.lifts.push_back(F[1]);
      found.velocities.push_back(velocity(i));
      found.drag += F[0] / 2000.0;
    }
    return found;
  }
};

TEST_F(VibratingPile, LocksInOnBothSidesUpToTheCutoff) {
  law.cutoff = 0.25;  // frequencies 0.4/1.25 = 0.32 to 0.4/0.75 = 0.533
  for (const double f : {0.325, 0.4, 0.525}) {
    const Vibrating locked = vibrate(f, 0.4);
    const Part sine = part_of(locked.lifts, f, 0.01 / f);
    EXPECT_NEAR(sine.amplitude, amplitude, 1e-3 * amplitude) << f;
    double in_phase = 0.0;
    for (std::size_t i = 0; i < 2000; ++i)
      in_phase += 2.0 * locked.lifts[i] * locked.velocities[i] / (turn * f * 0.4) / 2000.0;
    EXPECT_NEAR(in_phase, amplitude, 1e-2 * amplitude) << "in phase with the velocity at " << f;
  }
}

TEST_F(VibratingPile, ShedsAtItsOwnFrequencyBeyondTheCutoff) {
  law.cutoff = 0.25;
  for (const double f : {0.31, 0.55}) {
    const Vibrating loose = vibrate(f, 0.4);
    EXPECT_LT(part_of(loose.lifts, f, 0.01 / f).amplitude, 0.1 * amplitude) << f;
    EXPECT_EQ(wake.now[0].frequency, 0.4) << f;
  }
  law.cutoff = 0.0;
  vibrate(0.4, 0.4);
  EXPECT_EQ(wake.now[0].frequency, 0.4);
}

TEST_F(VibratingPile, DoesNotLockInWithABufferOfLessThanACycle) {
  law.cutoff = 0.25;
  law.nbuf = 90;
  vibrate(0.45, 0.4);
  EXPECT_EQ(wake.now[0].frequency, 0.4);
  law.nbuf = 250;
  vibrate(0.45, 0.4);
  EXPECT_NEAR(wake.now[0].frequency, 0.45, 1e-4);
}

TEST_F(VibratingPile, LockedInItsDragGrowsWithItsAmplitude) {
  law.cutoff = 0.25;
  law.cd0 = 1.2;
  const double growth = 0.5 * rho * 1.2 * 2.1 * 0.4 * 4.0 * 20.0;
  EXPECT_NEAR(vibrate(0.45, 0.4).drag, growth, 2e-3 * growth);
  EXPECT_NEAR(vibrate(0.9, 0.4).drag, 0.0, 1e-12) << "not locked in";
}

TEST_F(VibratingPile, TakesItsCoefficientsFromTheTableAtItsAmplitude) {
  const std::array<double, 2> amplitudes{0.0, 1.0};
  const std::array<double, 4> rows{0.2, 1.0, 1.2, 2.0};
  law.argument = amplitudes;
  law.coefficient = rows;
  law.columns = 2;
  law.cd0 = 1.0;
  law.cutoff = 0.25;
  const Vibrating locked = vibrate(0.4, 0.5);
  EXPECT_NEAR(part_of(locked.lifts, 0.4, 0.025).amplitude, 0.7 / 0.8 * amplitude, 2e-3 * amplitude);
  EXPECT_NEAR(locked.drag, 0.5 * rho * 0.5 * 4.0 * 20.0, 2e-3 * amplitude);
  law.cutoff = 0.0;
  EXPECT_NEAR(part_of(vibrate(0.4, 0.5).lifts, 0.4, 0.025).amplitude, 0.2 / 0.8 * amplitude, 2e-3 * amplitude);
}

TEST_F(VibratingPile, ADroppedStepLeavesNoTrace) {
  law.cutoff = 0.3;
  law.nnc = 2;
  law.alpha = 0.1;
  const auto velocity = [](double t) { return 0.8 * std::sin(turn * 0.42 * t); };
  std::vector<double> straight, troubled;
  for (int i = 0; i < 800; ++i) straight.push_back(lift_at(0.02 * i, velocity(0.02 * std::max(i - 1, 0))));
  wake = {};
  for (int i = 0; i < 800; ++i) {
    const double now = 0.02 * i, before = 0.02 * std::max(i - 1, 0);
    if (i % 5 == 3) {  // a longer step is tried and dropped, the load of the accepted state formed anew
      lift_at(now + 0.05, velocity(before));
      lift_at(before, velocity(before));
    }
    if (i % 7 == 2) lift_at(now + 0.03, velocity(before));  // the same, without that
    troubled.push_back(lift_at(now, velocity(before)));
    if (i % 3 != 1) continue;
    EXPECT_EQ(lift_at(now, velocity(before)), troubled.back()) << "formed twice";
  }
  EXPECT_EQ(troubled, straight) << "bit by bit";
}

}  // namespace
}  // namespace tidearc::test
