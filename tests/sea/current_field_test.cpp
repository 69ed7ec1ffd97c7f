// The current at a point: over depth, stretched to the surface, in time.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <vector>

#include "run/workpool.h"
#include "sea/stretching.h"
#include "test_sea.h"

namespace tidearc::test {
namespace {

const char* const warning = "     *** warning *** nonlinear stretching did not converge    10\n";

double speed(double level) {
  const std::array<double, 3> levels{0.0, 20.0, 50.0};
  const std::array<double, 9> vectors{1.0, 0, 0, 0.5, 0, 0, 0.0, 0, 0};
  Point velocity{};
  CURADD(levels, vectors, level, velocity);
  return velocity[0];
}

TEST(CURADD, RunsStraightBetweenLevelsAndBeyondTheEnds) {
  EXPECT_DOUBLE_EQ(speed(0.0), 1.0);
  EXPECT_DOUBLE_EQ(speed(5.0), 0.875);
  EXPECT_DOUBLE_EQ(speed(20.0), 0.5);
  EXPECT_NEAR(speed(30.0), 0.33333, 1.0e-5);
  EXPECT_DOUBLE_EQ(speed(50.0), 0.0);
  EXPECT_DOUBLE_EQ(speed(-3.0), 1.075);     // above the first level
  EXPECT_NEAR(speed(80.0), -0.5, 1.0e-15);  // below the last
}

TEST(CURADD, AddsVectorsToWhatStandsThere) {
  const std::array<double, 2> levels{0.0, 10.0};
  const std::array<double, 6> vectors{1.0, 2.0, 0.0, 0.0, -2.0, 0.5};
  Point velocity{10.0, 20.0, 30.0};
  CURADD(levels, vectors, 2.5, velocity);
  EXPECT_EQ(velocity, (Point{10.75, 21.0, 30.125}));
}

TEST(CURADD, AnIntervalWithoutThicknessGivesItsLowerVector) {
  const std::array<double, 3> levels{0.0, 0.0, 10.0};
  const std::array<double, 9> vectors{1.0, 0, 0, 0.4, 0, 0, 0, 0, 0};
  Point velocity{};
  CURADD(levels, vectors, 0.0, velocity);
  EXPECT_EQ(velocity[0], 0.4);
}

TEST(CURADD, AJumpBelongsToTheWaterAboveIt) {
  const std::array<double, 4> levels{0.0, 10.0, 10.0, 20.0};
  const std::array<double, 12> vectors{1.0, 0, 0, 1.0, 0, 0, 0.2, 0, 0, 0.2, 0, 0};
  Point at{}, below{};
  CURADD(levels, vectors, 10.0, at);
  CURADD(levels, vectors, 10.001, below);
  EXPECT_DOUBLE_EQ(at[0], 1.0);
  EXPECT_DOUBLE_EQ(below[0], 0.2);
}

TEST(CURADD, ATableWithoutAnIntervalAddsNothing) {
  Point velocity{};
  CURADD({}, {}, 1.0, velocity);
  const std::array<double, 1> level{0.0};
  const std::array<double, 3> vector{1.0, 0.0, 0.0};
  CURADD(level, vector, 1.0, velocity);
  EXPECT_EQ(velocity, Point{});
}

// Levels 0, 20, 50 with speeds 1, 0.5, 0; an elevation of 6, wave length 204.833, depth 50: depth of the point, level,
// speed.
struct StretchCase {
  double h, level, speed;
};

TEST(Stretching, LinearLevels) {
  for (const auto& [h, level, v] :
       {StretchCase{-3, 2.67857, 0.93304}, StretchCase{5, 9.82143, 0.75446}, StretchCase{30, 32.14286, 0.29762}}) {
    EXPECT_NEAR(linear_level(h, 6.0, 50.0), level, 1.0e-5);
    EXPECT_NEAR(speed(linear_level(h, 6.0, 50.0)), v, 1.0e-5);
  }
}

TEST(Stretching, NonlinearLevels) {
  for (const auto& [h, level, v] :
       {StretchCase{-3, 2.51020, 0.93725}, StretchCase{5, 9.33585, 0.76660}, StretchCase{30, 31.61377, 0.30644}}) {
    const StretchedLevel is = nonlinear_level(h, 6.0, 50.0, 204.833);
    EXPECT_NEAR(is.level, level, 1.0e-5);
    EXPECT_NEAR(speed(is.level), v, 1.0e-5);
    EXPECT_FALSE(is.converged);
  }
}

TEST(Stretching, SurfaceAndBedTakeTheEndsOfTheTable) {
  for (const double eta : {6.0, -4.0}) {
    EXPECT_NEAR(linear_level(-eta, eta, 50.0), 0.0, 1.0e-14);
    EXPECT_NEAR(linear_level(50.0, eta, 50.0), 50.0, 1.0e-14);
    EXPECT_EQ(nonlinear_level(-eta, eta, 50.0, 204.833).level, 0.0);
    EXPECT_TRUE(nonlinear_level(-eta, eta, 50.0, 204.833).converged);
    EXPECT_EQ(nonlinear_level(50.0, eta, 50.0, 204.833).level, 50.0);
  }
}

// A point on the bed has f zero there, the first trial is the bed again and takes the other end along: both values are
// zero, and the next quotient is 0/0.
TEST(Stretching, TheSearchForAPointOnTheBedEndsWithoutDividing) {
  const double d = 50.0, k = 2 * 3.14159265358979 / 204.833;
  const auto f = [&](double z) { return z + d + 6.0 * std::sinh(k * (d + z)) / std::sinh(k * d); };
  const double a = -d, fa = f(a), fb = f(0.0);
  EXPECT_EQ(fa, 0.0);
  const double trial = (a * fb - fa * 0.0) / (fb - fa);
  EXPECT_EQ(trial, -d);
  EXPECT_EQ(f(trial), 0.0);
  EXPECT_TRUE(std::isnan((a * f(trial) - fa * trial) / (f(trial) - fa)));
  const StretchedLevel is = nonlinear_level(d, 6.0, d, 204.833);
  EXPECT_EQ(is.level, d);
  EXPECT_FALSE(is.converged);
}

// Ten passes come within 1E-9 of the depth, from shallow water to five wave lengths.
TEST(Stretching, TenPassesReachTheLevel) {
  const double d = 50.0;
  for (const double L : {625.0, 300.0, 100.0, 10.0}) {
    for (const double eta : {3.0, 0.4, -0.4, -3.0}) {
      const double k = 2 * 3.14159265358979 / L;
      // A residual of f is one of the level over its slope, at least 1 - |eta| k where the water is deep.
      if (std::abs(eta) * k > 0.9) continue;
      for (double h = -eta + 0.1; h < d; h += 3.7) {
        const double z = -nonlinear_level(h, eta, d, L).level;
        EXPECT_NEAR(z + h + eta * std::sinh(k * (d + z)) / std::sinh(k * d), 0.0, 1.0e-9 * d)
            << L << ' ' << eta << ' ' << h;
      }
    }
  }
}

// Beyond 2 pi d/L = 100 (d 50, L 3.14) the decay is exp(2 pi z/L). From a depth of a wave length on the search is
// quick.
TEST(Stretching, InVeryDeepWaterDecaysWithOneExponential) {
  for (const double L : {3.2, 3.1, 1.0, 1.0e-3}) {
    for (const double h : {3.5, 10.0, 49.0}) {
      const double level = nonlinear_level(h, 0.3, 50.0, L).level;
      EXPECT_NEAR(level, h + 0.3 * std::exp(-2 * 3.14159265358979 * level / L), 1.0e-9) << L << ' ' << h;
    }
  }
}

// What a sea leaves that has no components.
TEST(Stretching, WithoutAWaveAndItsLengthLevelsAreDepths) {
  for (const double h : {0.0, 5.0, 50.0}) EXPECT_NEAR(nonlinear_level(h, 0.0, 50.0, 0.0).level, h, 1e-12) << h;
}

// The whole way from a point to its current: a crest of 6 over it.
class UnderACrest : public ::testing::Test {
 protected:
  UnderACrest() : sea_(wave_airy, 12.0, 12.0, 50.0) {
    set_airy_number(2 * 3.14159265358979 / 204.833);
    wave.L = 204.833;
  }
  double speed_at(double z, int stretching) {
    set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}}, stretching);
    return motion_at(0.0, z, 0.0, {.current_only = true}).u;
  }
  Sea sea_;
};

TEST_F(UnderACrest, Code1KeepsTheProfileAndHoldsItsTop) {
  EXPECT_DOUBLE_EQ(speed_at(3.0, 1), 1.0);
  EXPECT_DOUBLE_EQ(speed_at(-5.0, 1), 0.875);
  EXPECT_NEAR(speed_at(-30.0, 1), 0.33333, 1.0e-5);
  EXPECT_DOUBLE_EQ(speed_at(3.0, 0), 1.0);
}

TEST_F(UnderACrest, Code2StretchesInProportion) {
  EXPECT_NEAR(speed_at(3.0, 2), 0.93304, 1.0e-5);
  EXPECT_NEAR(speed_at(-5.0, 2), 0.75446, 1.0e-5);
  EXPECT_NEAR(speed_at(-30.0, 2), 0.29762, 1.0e-5);
}

TEST_F(UnderACrest, Code3StretchesAsTheOrbitsDecayAndWarnsEachTime) {
  EXPECT_NEAR(speed_at(3.0, 3), 0.93725, 1.0e-5);
  EXPECT_EQ(sea_.scratch.report(), warning);
  EXPECT_NEAR(speed_at(-5.0, 3), 0.76660, 1.0e-5);
  EXPECT_NEAR(speed_at(-30.0, 3), 0.30644, 1.0e-5);
  EXPECT_NEAR(speed_at(-50.0, 3), 0.0, 1.0e-5);
  EXPECT_EQ(sea_.scratch.report(), std::string(warning) + warning + warning + warning);
}

TEST_F(UnderACrest, Code3DoesNotWarnWhereTheRootIsExactlyZero) {
  EXPECT_EQ(speed_at(6.0, 3), 1.0);
  EXPECT_EQ(sea_.scratch.report(), "");
}

TEST_F(UnderACrest, AnyOtherCodeRunsOnAboveMeanLevel) {
  for (const int code : {4, 9, -1}) {
    EXPECT_DOUBLE_EQ(speed_at(3.0, code), 1.075);
    EXPECT_DOUBLE_EQ(speed_at(-5.0, code), 0.875);
    EXPECT_NEAR(speed_at(-30.0, code), 0.33333, 1.0e-5);
  }
}

// Linear profile from 1 to 0.2 over 50 under a crest of 4: closed form.
TEST(Stretching, APointAboveMeanLevelInALinearProfile) {
  const Sea sea(wave_airy, 8.0, 10.0, 50.0, 9.80665);
  set_current({{0.0, 1.0}, {50.0, 0.2}}, 2);
  EXPECT_NEAR(motion_at(0.0, 3.0, 0.0, {.current_only = true}).u, 0.985185185, 1.0e-9);
}

// A Stokes crest stands higher than H/2, but its current is stretched to H/2.
TEST(Stretching, OfAStokesWaveTakesTheSurfaceOfTheFirstOrder) {
  const Sea sea(wave_stokes, 12.0, 12.0, 50.0);
  ASSERT_GT(eta_at(0.0, 0.0), 6.8);
  set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}}, 2);
  EXPECT_NEAR(motion_at(0.0, -5.0, 0.0, {.current_only = true}).u, 0.75446, 1.0e-5);
  EXPECT_NEAR(motion_at(0.0, -5.0, 6.0, {.current_only = true}).u, speed(50.0 - 45.0 * 50.0 / 44.0), 1.0e-12);
}

TEST(Stretching, OfAStreamFunctionWaveTakesItsSurface) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}}, 2);
  for (const double t : {0.0, 1.0, -2.0, 6.0}) {
    const double eta = eta_at(0.0, t);
    const double level = 50.0 - 45.0 * 50.0 / (50.0 + eta);
    EXPECT_NEAR(motion_at(0.0, -5.0, t, {.current_only = true}).u, speed(level), 1.0e-12);
  }
}

TEST(Current, ComesUponTheWaveAndLeavesTheAccelerationAlone) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    const Seen still = motion_at(0.0, -5.0, 1.0);
    set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}});
    for (std::size_t n = 0; n < 3; ++n) current_now.vector[3 * n + 1] = 0.3;
    const Seen both = motion_at(0.0, -5.0, 1.0);
    EXPECT_DOUBLE_EQ(both.u, still.u + 0.875);
    EXPECT_DOUBLE_EQ(both.across, 0.3);
    EXPECT_EQ(both.w, still.w);
    EXPECT_EQ(both.a, still.a);
    EXPECT_EQ(both.b, still.b);
    EXPECT_EQ(motion_at(0.0, -5.0, 1.0, {.wave_only = true}).u, still.u);
    const Seen current = motion_at(0.0, -5.0, 1.0, {.current_only = true});
    EXPECT_EQ(current.u, 0.875);
    EXPECT_EQ(current.w, 0.0);
    EXPECT_EQ(current.a, 0.0);
    EXPECT_EQ(current.b, 0.0);
  }
}

TEST(Current, AloneLeavesNothingOfWhatStoodInTheVectors) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream, wave_current_only}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}});
    WaterMotion motion{{7.0, 8.0, 9.0}, {7.0, 8.0, 9.0}};
    wave_family(type).kinematics(place(0.0, -5.0), 1.0, wave.lower_current, {.current_only = true}, motion);
    EXPECT_EQ(motion.velocity, (Point{0.875, 0.0, 0.0}));
    EXPECT_EQ(motion.acceleration, (Point{0.0, 0.0, 0.0}));
  }
}

TEST(Current, IsLeftOutBelowItsLowerLimitAndNotOnIt) {
  for (const double sg : {-1.0, 1.0}) {
    Sea sea;
    wave.IWTY = wave_current_only;
    wave.d = 50.0;
    Sea::turn(3, sg, 2.0);
    set_current({{0.0, 1.0}, {50.0, 0.0}});
    wave.lower_current = 2.0 + sg * 30.0;
    EXPECT_NEAR(motion_at(0.0, -30.0, 0.0).u, 0.4, 1.0e-14);
    EXPECT_EQ(motion_at(0.0, -30.001, 0.0).u, 0.0);
    EXPECT_DOUBLE_EQ(motion_at(0.0, 1.0, 0.0).u, 1.0);
  }
}

TEST(Current, IsNotThereWithoutItsCode) {
  Sea sea;
  wave.IWTY = wave_current_only;
  set_current({{0.0, 1.0}, {50.0, 0.0}});
  wave.current_code = 0;
  EXPECT_EQ(motion_at(0.0, -3.0, 0.0).u, 0.0);
}

// --- in time -------------------------------------------------------------------------------------------------------

/// Table in the work array: times 10, 20, 40; two levels, the lower at 10, 20, 20; top vectors (1,0,0), (2,1,0),
/// (0,1,0), bottom vectors half of them.
class CurrentInTime : public ::testing::Test {
 protected:
  CurrentInTime() {
    pool.allocate(1000);
    wave.current_code = 1;
    wave.NTIME = 3;
    wave.NLEVEL = 2;
    wave.KCURT = 11;
    const double times[3] = {10.0, 20.0, 40.0}, depth[3] = {10.0, 20.0, 20.0};
    const double top[3][3] = {{1, 0, 0}, {2, 1, 0}, {0, 1, 0}};
    std::vector<double> table(times, times + 3);
    for (const double d : depth) table.insert(table.end(), {0.0, d});
    for (const auto& v : top) table.insert(table.end(), {v[0], v[1], v[2], 0.5 * v[0], 0.5 * v[1], 0.5 * v[2]});
    const auto into = pool.reals(11, static_cast<int>(table.size()));
    for (int i = 1; i <= into.size(); ++i) into(i) = table[static_cast<std::size_t>(i - 1)];
  }
  ~CurrentInTime() override { pool.release(); }
  static void expect(double time, double depth, Point top) {
    SCOPED_TRACE(time);
    CURNOW(time);
    EXPECT_EQ(current_now.time, time);
    EXPECT_EQ(current_now.NLEVEL, 2);
    EXPECT_DOUBLE_EQ(current_now.level[0], 0.0);
    EXPECT_DOUBLE_EQ(current_now.level[1], depth);
    for (std::size_t c = 0; c < 3; ++c) {
      EXPECT_DOUBLE_EQ(current_now.vector[c], top[c]);
      EXPECT_DOUBLE_EQ(current_now.vector[3 + c], 0.5 * top[c]);
    }
  }
  Sea sea_;
};

TEST_F(CurrentInTime, IsTheFirstSliceBeforeTheFirstTime) {
  expect(0.0, 10.0, {1, 0, 0});
  expect(9.99, 10.0, {1, 0, 0});
}

TEST_F(CurrentInTime, RunsStraightBetweenSlicesLevelsToo) {
  expect(10.0, 10.0, {1, 0, 0});
  expect(15.0, 15.0, {1.5, 0.5, 0});
  expect(20.0, 20.0, {2, 1, 0});
  expect(25.0, 20.0, {1.5, 1, 0});
}

TEST_F(CurrentInTime, IsTheLastSliceFromTheLastTimeOn) {
  expect(40.0, 20.0, {0, 1, 0});
  expect(1.0e6, 20.0, {0, 1, 0});
  expect(25.0, 20.0, {1.5, 1, 0});  // and a time may go back
}

TEST_F(CurrentInTime, OfOneTimeStays) {
  wave.NTIME = 1;
  const double table[9] = {10.0, 0.0, 30.0, 1, 0, 0, 0.5, 0, 0};
  const auto into = pool.reals(11, 9);
  for (int i = 1; i <= 9; ++i) into(i) = table[i - 1];
  for (const double time : {0.0, 10.0, 500.0}) expect(time, 30.0, {1, 0, 0});
}

// Times out of order are told when they are read; the search takes the first one above.
TEST_F(CurrentInTime, OfDisorderedTimesTakesTheFirstThatIsAbove) {
  pool.reals(11, 3)(2) = 5.0;  // 10, 5, 40
  expect(4.0, 10.0, {1, 0, 0});
  expect(7.0, 10.0, {1, 0, 0});
  expect(12.0, 20.0, {2.0 - 0.4, 1, 0});  // between 5 and 40: r = 0.2
}

// A current that turns at once: the later slice holds from its time on.
TEST_F(CurrentInTime, OfTwoEqualTimesIsTheLaterFromThenOn) {
  pool.reals(11, 3)(3) = 20.0;  // 10, 20, 20
  expect(19.0, 19.0, {1.9, 0.9, 0});
  expect(20.0, 20.0, {0, 1, 0});
}

TEST_F(CurrentInTime, WithoutACurrentLeavesEverything) {
  wave.current_code = 0;
  CURNOW(15.0);
  EXPECT_EQ(current_now.NLEVEL, 0);
}

TEST_F(CurrentInTime, ReachesAPoint) {
  wave.IWTY = wave_current_only;
  wave.d = 50.0;
  CURNOW(15.0);
  EXPECT_DOUBLE_EQ(motion_at(0.0, -7.5, 15.0).u, 1.5 * 0.75);
  EXPECT_DOUBLE_EQ(motion_at(0.0, -7.5, 15.0).across, 0.5 * 0.75);
}

}  // namespace
}  // namespace tidearc::test
