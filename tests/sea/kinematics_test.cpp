// Motion of the water in Airy, Stokes and stream function waves: tables, derivatives, continuity, axes.
//
// Tables: closed forms (Airy), and an independent solution of the wave (Stokes V with the same coefficients summed
// directly; a Fourier solution of order 24 for the stream function).
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "sea/stream_field.h"
#include "test_sea.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

/// A row of a table with few digits; half a unit of the last, and one for what comes before it.
void expect_row(const char* what, const Seen& is, std::array<double, 4> row, double tolerance) {
  SCOPED_TRACE(what);
  EXPECT_NEAR(is.u, row[0], tolerance);
  EXPECT_NEAR(is.w, row[1], tolerance);
  EXPECT_NEAR(is.a, row[2], tolerance);
  EXPECT_NEAR(is.b, row[3], tolerance);
  EXPECT_EQ(is.across, 0.0);
}

// H 12, T 12, d 50, at x = 0: 1 s before the crest at 5 m under and 2 m above mean level, 2 s behind it.

TEST(Airy, MotionOfAStormWave) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  set_airy_number(0.03067471);
  EXPECT_NEAR(eta_at(0.0, -1.0), 5.19615, 1.0e-5);
  EXPECT_NEAR(eta_at(0.0, 2.0), 3.0, 1.0e-5);
  expect_row("t -1, z -5", motion_at(0, -5, -1), {2.60257, 1.32383, 0.78676, -1.20058}, 1.0e-5);
  expect_row("t -1, z +2", motion_at(0, 2, -1), {3.15893, 1.67959, 0.95495, -1.52322}, 1.0e-5);
  expect_row("t +2, z -5", motion_at(0, -5, 2), {1.50259, -2.29295, -1.36270, -0.69316}, 1.0e-5);
}

TEST(Airy, MotionWithWheelerStretching) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  set_airy_number(0.03067471);
  wave.ISTRCH = 1;
  expect_row("t -1, z -5", motion_at(0, -5, -1), {2.32577, 1.13922, 0.70308, -1.03316}, 1.0e-5);
  expect_row("t -1, z +2", motion_at(0, 2, -1), {2.75613, 1.42367, 0.83318, -1.29113}, 1.0e-5);
  expect_row("t +2, z -5", motion_at(0, -5, 2), {1.40364, -2.09639, -1.27296, -0.63374}, 1.0e-5);
}

TEST(Stokes, MotionOfAStormWave) {
  const Sea sea(wave_stokes, 12.0, 12.0, 50.0);
  EXPECT_NEAR(eta_at(0.0, -1.0), 5.45358, 1.0e-5);
  EXPECT_NEAR(eta_at(0.0, 2.0), 2.38644, 1.0e-5);
  expect_row("t -1, z -5", motion_at(0, -5, -1), {2.58318, 1.39772, 0.90261, -1.22719}, 1.0e-5);
  expect_row("t -1, z +2", motion_at(0, 2, -1), {3.13687, 1.79950, 1.13028, -1.57179}, 1.0e-5);
  expect_row("t +2, z -5", motion_at(0, -5, 2), {1.36201, -2.32124, -1.46128, -0.57597}, 1.0e-5);
}

TEST(StreamFunction, MotionOfAStormWave) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  EXPECT_NEAR(eta_at(0.0, -1.0), 5.446, 1.1e-3);
  EXPECT_NEAR(eta_at(0.0, 2.0), 2.381, 1.0e-3);
  expect_row("t -1, z -5", motion_at(0, -5, -1), {2.5816, 1.3981, 0.8688, -0.9751}, 1.0e-4);
  expect_row("t -1, z +2", motion_at(0, 2, -1), {3.1349, 1.8005, 1.0918, -1.1757}, 1.0e-4);
  expect_row("t +2, z -5", motion_at(0, -5, 2), {1.3598, -2.3201, -1.4238, -0.3372}, 1.0e-4);
}

// H 15, T 14, d 100, g 9.80665: phase [degrees], elevation, motion. Times zero, x from the phase.

using Table = std::vector<std::array<double, 6>>;

void expect_table(const Table& table, double relative) {
  for (const auto& [degrees, z, u, w, a, b] : table) {
    SCOPED_TRACE(std::to_string(degrees) + " degrees, z " + std::to_string(z));
    const Seen is = motion_at(degrees * pi / 180.0 / wave.k, z, 0.0);
    // Relative to the motion at that height: a zero of the phase is only as sharp as the wave number.
    const double speed = std::max(std::hypot(u, w), 0.1), rate = std::max(std::hypot(a, b), 0.1);
    EXPECT_NEAR(is.u, u, relative * speed);
    EXPECT_NEAR(is.w, w, relative * speed);
    EXPECT_NEAR(is.a, a, relative * rate);
    EXPECT_NEAR(is.b, b, relative * rate);
  }
}

TEST(Airy, MotionOverAPeriodAgreesWithTheClosedForm) {
  const Sea sea(wave_airy, 15.0, 14.0, 100.0, 9.80665);
  expect_table({{0, 7.5, 4.04523258, 0, 0, -1.77739409},
                {0, 0, 3.46548094, 0, 0, -1.51065373},
                {0, -20, 2.31367459, 0, 0, -0.970219359},
                {0, -100, 0.824411982, 0, 0, 0},
                {30, 6.49519053, 3.43118436, 1.93763471, 0.889068573, -1.50620597},
                {30, 0, 3.00119453, 1.68299606, 0.777652104, -1.30826451},
                {30, -20, 2.00370097, 1.08090645, 0.519187364, -0.840234612},
                {30, -100, 0.713961719, 0, 0.184997616, 0},
                {60, 3.75, 1.87179016, 3.16244428, 1.4550222, -0.819434204},
                {60, 0, 1.73274047, 2.91503469, 1.34693295, -0.755326867},
                {60, -20, 1.1568373, 1.87218489, 0.899258894, -0.48510968},
                {60, -100, 0.412205991, 0, 0.32042527, 0},
                {90, 0, 0, 3.36599213, 1.55530421, 0},
                {90, -20, 0, 2.1618129, 1.03837473, 0},
                {90, -100, 0, 0, 0.369995232, 0},
                {135, -5.30330086, -2.19841257, 2.11971467, 0.986645254, 0.951325718},
                {135, 0, -2.45046507, 2.38011586, 1.09976615, 1.0681935},
                {135, -20, -1.63601499, 1.52863256, 0.734241812, 0.686048688},
                {135, -100, -0.582947303, 0, 0.261626138, 0},
                {180, -7.5, -2.97307931, 0, 0, 1.28199053},
                {180, 0, -3.46548094, 0, 0, 1.51065373},
                {180, -20, -2.31367459, 0, 0, 0.970219359},
                {180, -100, -0.824411982, 0, 0, 0}},
               2.0e-8);
}

TEST(Stokes, MotionOverAPeriodAgreesWithAnIndependentSolution) {
  const Sea sea(wave_stokes, 15.0, 14.0, 100.0, 9.80665);
  expect_table({{0, 8.17839492, 4.06751853, 0, 0, -1.8232583},
                {0, 0, 3.43894894, 0, 0, -1.52313248},
                {0, -20, 2.30591703, 0, 0, -0.974950059},
                {0, -100, 0.843055829, 0, 0, 0},
                {30, 6.74575481, 3.39109133, 1.95832555, 0.930412743, -1.50534227},
                {30, 0, 2.95606186, 1.6891725, 0.805542407, -1.30001588},
                {30, -20, 1.9870004, 1.08265071, 0.53264394, -0.835648723},
                {30, -100, 0.729342938, 0, 0.190338522, 0},
                {60, 3.28284339, 1.76774757, 3.10125508, 1.45969212, -0.756741507},
                {60, 0, 1.65711726, 2.88796005, 1.36299946, -0.707195868},
                {60, -20, 1.12512469, 1.85813249, 0.907709143, -0.463025535},
                {60, -100, 0.419429792, 0, 0.328496745, 0},
                {90, -0.655301405, -0.0641014604, 3.22587839, 1.49833977, 0.0574073985},
                {90, 0, -0.0658576449, 3.27139786, 1.51820662, 0.0589790844},
                {90, -20, -0.0288694021, 2.11751505, 1.02320968, 0.0258237108},
                {90, -100, -0.00211314002, 0, 0.377432258, 0},
                {135, -5.19158629, -2.15331791, 2.01370681, 0.91629544, 0.93004738},
                {135, 0, -2.38860382, 2.2437656, 1.00957141, 1.03995791},
                {135, -20, -1.61112449, 1.46747649, 0.696213633, 0.672487141},
                {135, -100, -0.594650524, 0, 0.264968891, 0},
                {180, -6.82160508, -2.89504004, 0, 0, 1.22044067},
                {180, 0, -3.30676924, 0, 0, 1.40434061},
                {180, -20, -2.24808935, 0, 0, 0.923143096},
                {180, -100, -0.838829311, 0, 0, 0}},
               1.0e-7);
}

// Order 9 by least squares beside the exact steady wave: within 2.0E-4 of the motion at the point.
TEST(StreamFunction, MotionOverAPeriodAgreesWithAnIndependentSolution) {
  const Sea sea(wave_stream, 15.0, 14.0, 100.0, 9.80665);
  expect_table({{0, 8.18191166, 4.06805134, 0, 0, -1.48236296},
                {0, 0, 3.43902183, 0, 0, -1.28225688},
                {0, -20, 2.30584926, 0, 0, -0.871517943},
                {0, -100, 0.843032449, 0, 0, 0},
                {30, 6.7439839, 3.39065328, 1.95871731, 0.921484756, -1.1862332},
                {30, 0, 2.95578237, 1.68947281, 0.797460024, -1.06031889},
                {30, -20, 1.98681671, 1.08271731, 0.525721252, -0.732587315},
                {30, -100, 0.729315882, 0, 0.183950398, 0},
                {60, 3.28081446, 1.76685781, 3.10102221, 1.44897812, -0.486044374},
                {60, 0, 1.65640017, 2.88785544, 1.35312711, -0.471425999},
                {60, -20, 1.12479597, 1.85802233, 0.900326103, -0.361139905},
                {60, -100, 0.419400036, 0, 0.322149401, 0},
                {90, -0.655524211, -0.0645889144, 3.22511763, 1.49374773, 0.280474646},
                {90, 0, -0.0663584968, 3.27063565, 1.51343193, 0.288198458},
                {90, -20, -0.0290946409, 2.11712182, 1.02183391, 0.125798684},
                {90, -100, -0.00213030872, 0, 0.377450027, 0},
                {135, -5.19185695, -2.15286979, 2.01297135, 0.920453248, 1.10687469},
                {135, 0, -2.38808498, 2.24291062, 1.01263149, 1.25821405},
                {135, -20, -1.61085607, 1.46702951, 0.702143404, 0.769236002},
                {135, -100, -0.594621019, 0, 0.272196074, 0},
                {180, -6.81808834, -2.89443045, 0, 0, 1.38269212},
                {180, 0, -3.3057723, 0, 0, 1.61747853},
                {180, -20, -2.24755806, 0, 0, 1.01835087},
                {180, -100, -0.838771558, 0, 0, 0}},
               2.0e-4);
}

// One point under a crest of 4 m: H 8, T 10, d 50, g 9.80665, closed form.
TEST(Airy, APointUnderTheCrestAboveMeanLevel) {
  const Sea sea(wave_airy, 8.0, 10.0, 50.0, 9.80665);
  EXPECT_NEAR(motion_at(0, 3, 0).u, 2.92763775, 1.0e-8);
  EXPECT_EQ(motion_at(0, 3, 0).a, 0.0);
  wave.ISTRCH = 1;
  EXPECT_NEAR(motion_at(0, 3, 0).u, 2.49867381, 1.0e-8);
}

TEST(Airy, WithWheelerStretchingTheSurfaceMovesAsMeanLevelDoes) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  for (const double t : {-5.0, -2.2, 0.0, 1.0, 3.3, 6.0}) {
    wave.ISTRCH = 0;
    const Seen mean = motion_at(0.0, 0.0, t);
    wave.ISTRCH = 1;
    const Seen is = motion_at(0.0, eta_at(0.0, t), t);
    EXPECT_NEAR(is.u, mean.u, 1.0e-13);
    EXPECT_NEAR(is.w, mean.w, 1.0e-13);
    EXPECT_NEAR(is.a, mean.a, 1.0e-13);
    EXPECT_NEAR(is.b, mean.b, 1.0e-13);
  }
}

TEST(Airy, WithoutStretchingTheMotionGrowsAboveTheCrest) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  const double k = wave.k;
  EXPECT_NEAR(motion_at(0, 20, 0).u / motion_at(0, 0, 0).u, std::cosh(70 * k) / std::cosh(50 * k), 1.0e-12);
}

// Beyond k d = 100 both profiles are exp(-k depth): L 12.5, d 200 is k d 100.5, d 198 is 99.5.
TEST(Airy, VeryDeepWaterTakesOneExponential) {
  const Sea sea(wave_airy, 1.0, 2.8298, 200.0);
  ASSERT_GT(wave.k * wave.d, 100.0);
  const double t = 0.3, theta = -2 * pi * t / 2.8298, A = pi / 2.8298, B = 2 * pi * A / 2.8298;
  for (const double z : {0.4, 0.0, -1.0, -10.0}) {
    const double decay = std::exp(wave.k * z);
    const Seen is = motion_at(0, z, t);
    EXPECT_NEAR(is.u, A * decay * std::cos(theta), 1.0e-12 * A);
    EXPECT_NEAR(is.w, A * decay * std::sin(theta), 1.0e-12 * A);
    EXPECT_NEAR(is.a, B * decay * std::sin(theta), 1.0e-12 * B);
    EXPECT_NEAR(is.b, -B * decay * std::cos(theta), 1.0e-12 * B);
  }
}

TEST(Airy, BothSidesOfTheDeepLimitAgree) {
  const Sea sea(wave_airy, 1.0, 2.8298, 198.5);
  ASSERT_LT(wave.k * wave.d, 100.0);
  const Seen below = motion_at(3.0, -2.0, 0.7);
  wave.d = 200.0;
  prepare_wave_constants();
  ASSERT_GT(wave.k * wave.d, 100.0);
  const Seen above = motion_at(3.0, -2.0, 0.7);
  EXPECT_NEAR(above.u, below.u, 1.0e-13);
  EXPECT_NEAR(above.w, below.w, 1.0e-13);
}

TEST(Wave, ACrestStandsAtMinusItsDistanceAndRunsWithTheWave) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    wave.crest_distance = 40.0;
    const double crest = eta_at(-40.0, 0.0);
    EXPECT_GT(crest, eta_at(-42.0, 0.0));
    EXPECT_GT(crest, eta_at(-38.0, 0.0));
    EXPECT_NEAR(eta_at(-40.0 + 3.0 * wave.L / 12.0, 3.0), crest, 1.0e-9);
  }
}

TEST(Wave, BeforeTheCrestComesTheWaterRisesAndGathersSpeed) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    const Seen is = motion_at(0.0, -5.0, -2.0);
    EXPECT_GT(eta_at(0.0, -1.9), eta_at(0.0, -2.0));
    EXPECT_GT(is.w, 0.0);
    EXPECT_GT(is.a, 0.0);
  }
}

// With a current the frequency at a fixed point is that of the structure, the wave number that of the water.
TEST(Wave, PhaseRunsWithThePeriodOfTheStructure) {
  for (const WaveType type : {wave_airy, wave_stokes}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    wave.T_structure = 11.0;
    prepare_wave_constants();
    EXPECT_NEAR(eta_at(0.0, 11.0), eta_at(0.0, 0.0), 1.0e-12);
    EXPECT_NEAR(eta_at(2 * pi / wave.k, 0.0), eta_at(0.0, 0.0), 1.0e-12);
    // Amplitudes belong to the water: the local rate of change there is k C, not the frequency of the structure.
    const double dt = 1.0e-4;
    const double rate = (motion_at(0, -5, 2.0 + dt).u - motion_at(0, -5, 2.0 - dt).u) / (2 * dt);
    EXPECT_NEAR(motion_at(0, -5, 2.0).a, rate * 11.0 / 12.0, 1.0e-7);
  }
}

TEST(Wave, LocalAccelerationsAreTheRatesOfTheVelocities) {
  for (const WaveType type : {wave_airy, wave_stokes}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    const double dt = 1.0e-4;
    for (const double z : {-50.0, -20.0, -5.0, 0.0, 4.0}) {
      for (double t = -6.0; t < 6.0; t += 0.7) {
        const Seen before = motion_at(7.0, z, t - dt), behind = motion_at(7.0, z, t + dt), is = motion_at(7.0, z, t);
        EXPECT_NEAR(is.a, (behind.u - before.u) / (2 * dt), 1.0e-7);
        EXPECT_NEAR(is.b, (behind.w - before.w) / (2 * dt), 1.0e-7);
      }
    }
  }
}

/// Velocities around a point, by central differences.
struct Gradients {
  double ut, ux, uz, wt, wx, wz;
};
Gradients gradients_at(double x, double z, double t) {
  const double e = 1.0e-3;
  const Seen left = motion_at(x - e, z, t), right = motion_at(x + e, z, t);
  const Seen below = motion_at(x, z - e, t), above = motion_at(x, z + e, t);
  const Seen before = motion_at(x, z, t - e), behind = motion_at(x, z, t + e);
  return {(behind.u - before.u) / (2 * e), (right.u - left.u) / (2 * e), (above.u - below.u) / (2 * e),
          (behind.w - before.w) / (2 * e), (right.w - left.w) / (2 * e), (above.w - below.w) / (2 * e)};
}

TEST(StreamFunction, AccelerationsAreThoseOfTheWaterThatPasses) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  for (const double z : {-40.0, -5.0, 3.0}) {
    for (double t = -6.0; t < 6.0; t += 0.7) {
      const Seen is = motion_at(7.0, z, t);
      const Gradients g = gradients_at(7.0, z, t);
      EXPECT_NEAR(is.a, g.ut + is.u * g.ux + is.w * g.uz, 1.0e-6);
      EXPECT_NEAR(is.b, g.wt + is.u * g.wx + is.w * g.wz, 1.0e-6);
    }
  }
}

TEST(Wave, TheWaterKeepsItsVolumeAndDoesNotSpin) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    for (const double z : {-40.0, -5.0, 3.0}) {
      for (double t = -6.0; t < 6.0; t += 0.7) {
        const Gradients g = gradients_at(7.0, z, t);
        EXPECT_NEAR(g.ux + g.wz, 0.0, 2.0e-8);
        EXPECT_NEAR(g.uz - g.wx, 0.0, 2.0e-8);
      }
    }
  }
}

TEST(Wave, TheBedLetsNothingThrough) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    for (double t = -6.0; t < 6.0; t += 0.7) {
      EXPECT_EQ(motion_at(7.0, -50.0, t).w, 0.0);
      EXPECT_EQ(motion_at(7.0, -50.0, t).b, 0.0);
    }
  }
}

// At the surface of the stream function wave the water follows it: w = d eta/dt + u d eta/dx. The table of 37 points is
// straight between its points, so the slope is taken over a whole interval, half-way.
TEST(StreamFunction, WaterInTheSurfaceStaysInIt) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  const double interval = wave.L / 72.0;
  for (int i = 1; i < 35; ++i) {
    const double x = -(i + 0.5) * interval;
    const double slope = (eta_at(x + 0.5 * interval, 0.0) - eta_at(x - 0.5 * interval, 0.0)) / interval;
    const Seen is = motion_at(x, eta_at(x, 0.0), 0.0);
    EXPECT_NEAR(is.w, (is.u - wave.C) * slope, 0.01) << i;
  }
}

TEST(Wave, KinematicFactorIsOnHorizontalMotionAlone) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    set_current({{0.0, 1.0}, {50.0, 0.0}});
    const Seen plain = motion_at(0, -5, 1.3);
    const double current = motion_at(0, -5, 1.3, {.current_only = true}).u;
    const WavePressure pressure = pressure_at(0, -5, 1.3);
    const double eta = eta_at(0, 1.3);
    wave.kinematic_factor = 0.9;
    const Seen is = motion_at(0, -5, 1.3);
    EXPECT_NEAR(is.u, 0.9 * (plain.u - current) + current, 1.0e-14);
    EXPECT_DOUBLE_EQ(is.a, 0.9 * plain.a);
    EXPECT_EQ(is.w, plain.w);
    EXPECT_EQ(is.b, plain.b);
    EXPECT_EQ(eta_at(0, 1.3), eta);
    EXPECT_EQ(pressure_at(0, -5, 1.3).dynamic, pressure.dynamic);
  }
}

// The same wave with gravity along any axis, either way, and any mean level.
TEST(Wave, EveryVerticalAxisGivesTheSameMotion) {
  for (const int vertical : {1, 2, 3}) {
    for (const double sg : {-1.0, 1.0}) {
      SCOPED_TRACE("axis " + std::to_string(vertical) + ", sign " + std::to_string(sg));
      {
        const Sea sea(wave_stokes, 12.0, 12.0, 50.0);
        Sea::turn(vertical, sg, 31.0);
        EXPECT_NEAR(eta_at(0.0, -1.0), 5.45358, 1.0e-5);
        expect_row("Stokes", motion_at(0, -5, -1), {2.58318, 1.39772, 0.90261, -1.22719}, 1.0e-5);
        EXPECT_NEAR(pressure_at(0, -5, -1).total, 42.733 + 50.276, 1.0e-3);
      }
      {
        const Sea sea(wave_airy, 12.0, 12.0, 50.0);
        Sea::turn(vertical, sg, -7.0);
        set_airy_number(0.03067471);
        wave.ISTRCH = 1;
        EXPECT_NEAR(eta_at(0.0, 2.0), 3.0, 1.0e-5);
        expect_row("Wheeler", motion_at(0, -5, 2), {1.40364, -2.09639, -1.27296, -0.63374}, 1.0e-5);
      }
      {
        const Sea sea(wave_stream, 12.0, 12.0, 50.0);
        Sea::turn(vertical, sg, 4.0);
        EXPECT_NEAR(eta_at(0.0, 2.0), 2.381, 1.0e-3);
        expect_row("stream", motion_at(0, -5, 2), {1.3598, -2.3201, -1.4238, -0.3372}, 1.0e-4);
      }
    }
  }
}

// Half a period fraction folds to crest .. trough for the surface; folded, the phase of the motion would have the water
// rise behind the crest as it does before it, while the surface falls.
TEST(StreamFunction, MotionTakesThePhaseWithItsSign) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  const double t = 1.5, dt = 1.0e-3;
  const double f = -wave.C * t / wave.L;
  EXPECT_NEAR((eta_at(0, t + dt) - eta_at(0, t - dt)) / (2 * dt), -3.1, 0.1);
  const double folded = stream_motion(wave_constants.stream, 45.0, 2 * pi * folded_fraction(f)).w;
  EXPECT_GT(folded, 1.398);  // the speeds of the tables at 1 s and 2 s from the crest, but rising
  EXPECT_LT(folded, 2.320);
  EXPECT_NEAR(motion_at(0, -5, t).w, -folded, 1.0e-12);
  EXPECT_NEAR(motion_at(0, -5, t).w, -motion_at(0, -5, -t).w, 1.0e-12);
  EXPECT_NEAR(motion_at(0, -5, t).a, -motion_at(0, -5, -t).a, 1.0e-12);
  EXPECT_NEAR(motion_at(0, -5, t).u, motion_at(0, -5, -t).u, 1.0e-12);
}

TEST(StreamFunction, FractionsFoldToHalfAPeriod) {
  EXPECT_EQ(folded_fraction(0.0), 0.0);
  EXPECT_EQ(folded_fraction(0.2), 0.2);
  EXPECT_EQ(folded_fraction(-0.2), 0.2);
  EXPECT_EQ(folded_fraction(0.5), 0.5);
  EXPECT_EQ(folded_fraction(-0.5), 0.5);
  EXPECT_EQ(folded_fraction(0.625), 0.375);
  EXPECT_EQ(folded_fraction(-0.625), 0.375);
  EXPECT_EQ(folded_fraction(7.75), 0.25);
  EXPECT_EQ(folded_fraction(-7.75), 0.25);
  EXPECT_EQ(folded_fraction(-3.0), 0.0);
}

TEST(StreamFunction, SurfaceIsStraightBetweenThePointsOfItsTable) {
  const std::vector<double> eta{4.0, 1.0, -2.0};  // at 0, 0.25, 0.5
  EXPECT_EQ(table_elevation(eta, 0.0).value(), 4.0);
  EXPECT_EQ(table_elevation(eta, 0.125).value(), 2.5);
  EXPECT_EQ(table_elevation(eta, 0.25).value(), 1.0);
  EXPECT_NEAR(table_elevation(eta, 0.45).value(), -1.4, 1.0e-15);
  EXPECT_EQ(table_elevation(eta, 0.5).value(), -2.0);
  EXPECT_NEAR(table_elevation(eta, 0.5 + 5.0e-8).value(), -2.0 - 6.0e-7, 1.0e-12);
  EXPECT_FALSE(table_elevation(eta, 0.5 + 2.0e-7));
  EXPECT_FALSE(table_elevation(eta, -1.0e-9));
  EXPECT_FALSE(table_elevation(eta, std::nan("")));
  EXPECT_FALSE(table_elevation({}, 0.1));
}

// An interval reaches a little beyond its end, so a point just behind a table point still belongs to the one before.
TEST(StreamFunction, TheFirstIntervalThatHoldsAFractionGivesTheSurface) {
  const std::vector<double> eta{4.0, 1.0, 1.0};
  EXPECT_NEAR(table_elevation(eta, 0.25 + 0.9e-7).value(), 1.0 - 0.9e-7 * 12.0, 1.0e-13);
  EXPECT_EQ(table_elevation(eta, 0.25 + 1.1e-7).value(), 1.0);
}

TEST(StreamFunction, ASurfaceThatCannotBeFoundStopsTheRun) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  wave.C = std::nan("");
  EXPECT_EQ(stop_of([] { SFNETA(0.0, {0.0, 0.0, 0.0}); }), 1);
  EXPECT_NE(sea.scratch.report().find("\n FREE SURFACE ELEVATION CANNOT BE FOUND.\n"), std::string::npos);
  EXPECT_NE(sea.scratch.errors().find("no surface at time"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
