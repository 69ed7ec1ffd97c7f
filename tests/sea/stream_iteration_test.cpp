// The iteration of the stream function wave: damping, breaking, divergence and restarts, its equations, its words.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <string>

#include "run/units.h"
#include "scratch.h"
#include "sea/airy.h"
#include "sea/stream_function.h"
#include "sea/stream_solution.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

constexpr double g = 9.81;
constexpr double deep_limit = 0.02711;  // of H/gT^2, where the hyperbolic tangent is 1

int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

void set_wave(double H, double T, double d) {
  wave = {};
  wave.IWTY = wave_stream;
  wave.H = H;
  wave.T_structure = T;
  wave.d = d;
  wave.g = g;
  wave.NPTS = 37;
}
void solve(int order = 9, int coefficient_iterations = 15) { SFSOLVE(1e-6, 20, coefficient_iterations, order, 0); }

StreamWave started(double H, double T, double d, int order = 9) {
  StreamWave made = stream_wave(H, T, d, g, 0.0, order, 37);
  start_stream_wave(made, linear_length(T, d, g, 1e-6, 20).L, breaking_of(H, T, d, g).ratio());
  return made;
}

const char diverging[] = "   SOLUTION DIVERGING---PROGRAM IS RESTARTING WITH MORE DAMPING.\n";
const char impossible[] = " *************** CONVERGENCE IMPOSSIBLE ******\n CHECK INPUT VARIABLES\n";
const char length_line[] = "NO. OF ITER. PERFORMED FOR WAVE LENGTH      =";
const std::string star_line = " " + std::string(105, '*') + "\n";

TEST(StreamBreaking, TheRatioIsThatOfTheHeightToTheLimit) {
  EXPECT_NEAR(breaking_of(12.0, 12.0, 50.0, g).ratio(), 0.407, 0.0005);
  const Breaking shallow = breaking_of(0.078 * g, 10.0, 0.1 * g, g);  // x 0.001, y 0.00078
  EXPECT_NEAR(shallow.x, 0.001, 1e-15);
  EXPECT_NEAR(shallow.y, 0.00078, 1e-15);
  EXPECT_NEAR(shallow.limit, 0.02711 * 0.02876206486, 1e-12) << "tanh 0.02877; the limit is 0.78 of the depth";
  EXPECT_NEAR(breaking_of(1.0, 1.0, 1000.0, g).limit, deep_limit, 1e-15) << "also where cosh would overflow";
}

TEST(StreamBreaking, BothSidesOfTheAccuracyOf00003) {
  const auto with = [](double y) { return breaking_of(y * g * 64.0, 8.0, 200.0, g); };
  EXPECT_TRUE(with(deep_limit + 0.000301).beyond());
  EXPECT_FALSE(with(deep_limit + 0.000301).within_accuracy());
  EXPECT_FALSE(with(deep_limit + 0.000299).beyond());
  EXPECT_TRUE(with(deep_limit + 0.000299).within_accuracy());
  EXPECT_TRUE(with(deep_limit - 0.000299).within_accuracy());
  EXPECT_FALSE(with(deep_limit - 0.000301).within_accuracy());
  EXPECT_FALSE(with(deep_limit - 0.000301).beyond());
}

TEST(StreamBreaking, AHeightBeyondTheLimitStopsTheRunBeforeAnySolution) {
  const test::Scratch scratch;
  set_wave((deep_limit + 0.000301) * g * 64.0, 8.0, 200.0);
  EXPECT_EQ(test::stop_of([] { solve(); }), 1);
  EXPECT_EQ(scratch.report(), star_line +
                                  " WAVE HEIGHT EXCEEDS BREAKING WAVE HEIGHT OF APPROXIMATETELY    0.00 UNITS LENGTH."
                                  "CHECK INPUT PARAMETERS.\n" +
                                  star_line);
  EXPECT_NE(scratch.errors().find("17.2"), std::string::npos) << "TAP.err tells height and limit: " << scratch.errors();
}

TEST(StreamBreaking, AHeightWithinTheAccuracyIsSolvedWithAWarning) {
  const test::Scratch scratch;
  set_wave((deep_limit - 0.000299) * g * 64.0, 8.0, 200.0);
  EXPECT_EQ(test::stop_of([] { solve(); }), std::nullopt);
  const std::string warning =
      star_line +
      " **** INPUT WAVE PARAMETERS ARE WITHIN THE ACCURACY OF THE BREAKING INDICATOR;  IF SOLUTION IS NOT SUCCESSFUL,"
      "CHECK INPUT PARAMETERS.  ****\n" +
      star_line;
  EXPECT_EQ(scratch.report().rfind(warning, 0), 0u);
  EXPECT_EQ(count_of(scratch.report(), "RMS ERROR IN DFSBC"), 1);
  EXPECT_GT(wave.L, 100.0);
}

TEST(StreamDamping, FollowsBreakingOrderAndShallowWater) {
  const auto with_ratio = [](double ratio, double x, int NN) {
    return first_damping({.x = x, .y = ratio * 0.02, .limit = 0.02}, NN);
  };
  EXPECT_EQ(with_ratio(0.7499, 0.1, 10), 5);
  EXPECT_EQ(with_ratio(0.7501, 0.1, 10), 3);
  EXPECT_EQ(with_ratio(0.5, 0.1, 16), 5) << "order 15";
  EXPECT_EQ(with_ratio(0.5, 0.1, 18), 5);
  EXPECT_EQ(with_ratio(0.5, 0.1, 19), 3);
  EXPECT_EQ(with_ratio(0.5, 0.00233, 10), 5);
  EXPECT_EQ(with_ratio(0.5, 0.00232, 10), 3);
}

TEST(StreamIteration, ReportsTheLengthCountAndTheError) {
  const test::Scratch scratch;
  set_wave(12.0, 12.0, 50.0);
  wave.T_water = 99.0;
  solve();
  EXPECT_EQ(wave.T_water, 12.0) << "no period but that of the observer";
  const std::vector<std::string> lines = test::lines_of(scratch.report());
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_EQ(lines[0], "        NO. OF ITER. PERFORMED FOR WAVE LENGTH      =    3");
  const std::string label = "        RMS ERROR IN DFSBC" + std::string(26, ' ');
  ASSERT_EQ(lines[1].size(), label.size() + 9);
  EXPECT_EQ(lines[1].substr(0, label.size()), label);
  EXPECT_EQ(lines[1].substr(label.size(), 2), "0.");
  EXPECT_EQ(lines[1].substr(label.size() + 5), "D-04") << lines[1];
}

// Totals of the independent walk: halved in each pass with a damping of one half.
TEST(StreamIteration, WithADampingOfOneHalfEachTotalIsHalfOfTheOneBefore) {
  StreamWave of = started(12.0, 12.0, 50.0);
  std::array<double, 13> totals{};
  for (double& total : totals) {
    const SurfaceSolution surface = SFETA(of);
    const StreamStep step = SFCFF(of, 0.5);
    EXPECT_TRUE(surface.agreed);
    EXPECT_FALSE(step.singular);
    total = std::abs(surface.height_error) + std::abs(step.mean_level_error) + of.RMS;
  }
  EXPECT_NEAR(totals[0], 3.147, 0.001);
  EXPECT_NEAR(totals[1], 1.569, 0.001);
  EXPECT_NEAR(totals[2], 0.785, 0.001);
  for (std::size_t i = 1; i < totals.size(); ++i) EXPECT_NEAR(totals[i] / totals[i - 1], 0.5, 0.02) << i;
  EXPECT_NEAR(totals[12], 7.1e-4, 0.05e-4) << "below H/10000";
}

TEST(StreamIteration, TheStepIsMadeInThePassThatConverges) {
  const test::Scratch scratch;
  StreamWave of = started(12.0, 12.0, 50.0);
  StreamWave byhand = of;
  int damping = 5;
  EXPECT_EQ(SFITER(of, 15, false, damping), StreamStatus::solved);
  EXPECT_EQ(damping, 5);
  for (int pass = 1; pass <= 13; ++pass) {
    SFETA(byhand);
    SFCFF(byhand, 0.5);
  }
  EXPECT_EQ(of.X, byhand.X) << "thirteen steps";
  EXPECT_EQ(of.eta, byhand.eta);
}

TEST(StreamIteration, ThePassBehindTheLastIterationMakesNoStep) {
  const test::Scratch scratch;
  StreamWave of = started(12.0, 12.0, 50.0);
  StreamWave byhand = of;
  int damping = 5;
  EXPECT_EQ(SFITER(of, 1, false, damping), StreamStatus::solved) << "two passes, no message, no failure";
  SFETA(byhand);
  SFCFF(byhand, 0.5);
  EXPECT_EQ(of.X, byhand.X);
  EXPECT_NE(of.eta, byhand.eta) << "the surface and the error are those of the new unknowns";
  EXPECT_EQ(scratch.report(), "");
}

TEST(StreamIteration, TheForceFlagIgnoresTheTolerance) {
  const test::Scratch scratch;
  int damping = 5;
  StreamWave free = started(12.0, 12.0, 50.0);
  StreamWave forced = free;
  SFITER(free, 40, false, damping);
  SFITER(forced, 40, true, damping);
  EXPECT_GT(std::abs(free.eta[0] - free.eta[36] - 12.0), 1e-5);
  EXPECT_LT(std::abs(forced.eta[0] - forced.eta[36] - 12.0), 1e-9);
  set_wave(12.0, 12.0, 50.0);
  SFSOLVE(1e-6, 20, 40, 9, 2);
  EXPECT_EQ(wave.eta[0], free.eta[0]) << "only the value 1 is the flag";
  SFSOLVE(1e-6, 20, 40, 9, 1);
  EXPECT_EQ(wave.eta[0], forced.eta[0]);
}

// In very deep water squares of sinh(n k (d + eta)) pass the largest number: totals that are no numbers count as
// larger.
TEST(StreamIteration, InVeryDeepWaterFiveAttemptsFailAndTheRunStops) {
  const test::Scratch scratch;
  set_wave(6.0, 8.0, 650.0);
  EXPECT_EQ(test::stop_of([] { solve(); }), 1);
  const std::string report = scratch.report();
  EXPECT_EQ(count_of(report, diverging), 4) << "0.4, 0.3, 0.2, 0.1; five times one tenth leave nothing of 0.5";
  EXPECT_EQ(count_of(report, impossible), 1);
  EXPECT_EQ(count_of(report, length_line), 5) << "the length is found anew for every attempt";
  EXPECT_GE(count_of(report, "   20 ITERATIONS ON ETA FAILED TO CONVERGE\n"), 1);
  EXPECT_EQ(count_of(report, "RMS ERROR IN DFSBC"), 0);
  EXPECT_EQ(report.find(impossible) + std::string(impossible).size(), report.size()) << "nothing follows";
  EXPECT_NE(scratch.errors().find("stream function"), std::string::npos);
}

TEST(StreamIteration, WithLessDampingToBeginWithTwoRestartsAreLeft) {
  const test::Scratch scratch;
  set_wave(14.0, 8.0, 900.0);  // 0.82 of breaking
  EXPECT_EQ(test::stop_of([] { solve(); }), 1);
  EXPECT_EQ(count_of(scratch.report(), diverging), 2);
  EXPECT_EQ(count_of(scratch.report(), impossible), 1);
}

TEST(StreamIteration, ALowerOrderServesInVeryDeepWater) {
  const test::Scratch scratch;
  set_wave(6.0, 8.0, 1100.0);
  EXPECT_EQ(test::stop_of([] { solve(5); }), std::nullopt);
  EXPECT_NEAR(wave.L, 103.305, 0.02) << "as in a depth of 100";
  EXPECT_EQ(count_of(scratch.report(), diverging), 0);
}

TEST(StreamIteration, AnAttemptThatDivergesIsStartedAgainAndMaySucceed) {
  const test::Scratch scratch;
  set_wave(26.73, 12.0, 42.38);  // at breaking, order 12
  EXPECT_EQ(test::stop_of([] { solve(12); }), std::nullopt);
  EXPECT_EQ(count_of(scratch.report(), diverging), 1);
  EXPECT_EQ(count_of(scratch.report(), length_line), 2);
  EXPECT_EQ(count_of(scratch.report(), "RMS ERROR IN DFSBC"), 1);
}

TEST(StreamIteration, DivergenceIsJudgedByTheFirstTotalOfTheAttempt) {
  const test::Scratch scratch;
  StreamWave of = started(12.0, 12.0, 50.0);
  of.X[1] *= 8.0;  // a start so far off that the first step makes it worse
  int damping = 1;
  EXPECT_EQ(SFITER(of, 15, false, damping), StreamStatus::impossible);
  EXPECT_EQ(damping, 0);
  of = started(12.0, 12.0, 50.0);
  of.X[1] *= 8.0;
  damping = 2;
  EXPECT_EQ(SFITER(of, 15, false, damping), StreamStatus::restart);
  EXPECT_EQ(damping, 1);
}

TEST(StreamIteration, AHarmonicThatNoPointSeesMakesTheEquationsSingularAndTheStepGoesOn) {
  const test::Scratch scratch;
  StreamWave of = started(12.0, 12.0, 50.0, 3);
  StreamWave without = started(12.0, 12.0, 50.0, 2);
  for (std::size_t i = 0; i < 37; ++i) of.cosine[i][3] = of.sine[i][3] = 0.0;
  int damping = 5;
  EXPECT_EQ(SFITER(of, 15, false, damping), StreamStatus::solved);
  SFITER(without, 15, false, damping);
  EXPECT_EQ(scratch.report().rfind("   CFF MATRIX IS SINGLUAR\n", 0), 0u);
  EXPECT_EQ(of.X[3], 0.0) << "its correction is zero";
  EXPECT_NEAR(of.X[0], without.X[0], 1e-9 * of.X[0]) << "the others are those of the lower order";
}

TEST(StreamIteration, NearBreakingInShallowWaterTheErrorStaysAndAHigherOrderRemovesIt) {
  const test::Scratch scratch;
  StreamWave of = started(8.0, 12.0, 12.0);
  int damping = 3;
  EXPECT_EQ(SFITER(of, 60, false, damping), StreamStatus::solved);
  EXPECT_NEAR(of.RMS, 6.0e-3, 0.1e-3) << "above H/10000 whatever the count";
  of = started(8.0, 12.0, 12.0, 15);
  EXPECT_EQ(SFITER(of, 60, false, damping), StreamStatus::solved);
  EXPECT_LT(of.RMS, 8.0e-4);
}

TEST(StreamSurface, OneHalfStepIsTheSurfaceConditionAtTheOldElevations) {
  StreamWave of = stream_wave(2.0, 8.0, 20.0, g, 1.0, 2, 3);
  of.X = {80.0, -3.0, 0.5, 0.25};
  std::array<double, 3> from{1.0, 0.0, -1.0}, to{};
  SFSURF(of, from, to);
  // (X4 - X2 sinh(k z) cos - X3 sinh(2 k z) cos 2) / (80/8 - 1), k = pi/40, by hand.
  const double k = std::numbers::pi / 40.0;
  EXPECT_NEAR(to[0], (0.25 + 3.0 * std::sinh(21.0 * k) - 0.5 * std::sinh(42.0 * k)) / 9.0, 1e-14);
  EXPECT_NEAR(to[1], (0.25 + 0.5 * std::sinh(40.0 * k)) / 9.0, 1e-14);
  EXPECT_NEAR(to[2], (0.25 - 3.0 * std::sinh(19.0 * k) - 0.5 * std::sinh(38.0 * k)) / 9.0, 1e-14);
}

TEST(StreamSurface, ASurfaceThatDoesNotSettleIsTold) {
  StreamWave of = started(12.0, 12.0, 50.0);
  EXPECT_TRUE(SFETA(of).agreed);
  of.X[1] *= 8.0;
  EXPECT_FALSE(SFETA(of).agreed) << "the half steps part instead of coming together";
  of.eta[0] = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(SFETA(of).agreed);
}

TEST(StreamSurface, TheHeightErrorIsWhatIsMissingOfTheHeight) {
  StreamWave of = started(12.0, 12.0, 50.0);
  const double error = SFETA(of).height_error;
  EXPECT_DOUBLE_EQ(error, 12.0 - of.eta[0] + of.eta[36]);
  EXPECT_GT(error, 0.0);
}

// Corrections of a whole step against the derivatives by differences: the linear model of the conditions must be
// theirs.
TEST(StreamStep, AFullStepOfNewtonSquaresTheErrorOfTheConditions) {
  StreamWave of = started(6.0, 12.0, 50.0);
  double before = 0.0;
  for (int pass = 1; pass <= 5; ++pass) {
    for (int settle = 0; settle < 20; ++settle) SFETA(of);  // a surface without an error of its own
    const double height_error = 6.0 - of.eta[0] + of.eta[36];
    const StreamStep step = SFCFF(of, 1.0);
    const double total = std::abs(height_error) + std::abs(step.mean_level_error) + of.RMS;
    if (pass > 1) {
      EXPECT_LT(total, 0.2 * before * before + 1e-11) << pass;
    }
    before = total;
  }
  EXPECT_LT(before, 1e-10);
}

TEST(Sfgauss, SolvesWithPivotsBelowTheDiagonal) {
  // Columns of a matrix with zeros on its diagonal; x = (1, -2, 3).
  std::array<double, 9> matrix{0, 2, 4, 1, 0, -1, 3, 1, 0};
  std::array<double, 3> right{7, 5, 6};
  EXPECT_TRUE(SFGAUSS(RealTable(matrix.data(), 3, 3), Reals(right.data(), 3)));
  EXPECT_NEAR(right[0], 1.0, 1e-15);
  EXPECT_NEAR(right[1], -2.0, 1e-15);
  EXPECT_NEAR(right[2], 3.0, 1e-15);
}

TEST(Sfgauss, TakesTheLargestPivotSoThatATinyOneDoesNoHarm) {
  std::array<double, 4> matrix{1e-20, 1, 1, 1};
  std::array<double, 2> right{1, 2};
  EXPECT_TRUE(SFGAUSS(RealTable(matrix.data(), 2, 2), Reals(right.data(), 2)));
  EXPECT_NEAR(right[0], 1.0, 1e-15);
  EXPECT_NEAR(right[1], 1.0, 1e-15);
}

TEST(Sfgauss, PassesOverAColumnOfZerosAndGivesItsUnknownZero) {
  std::array<double, 9> matrix{2, 0, 0, 0, 0, 0, 0, 0, 4};
  std::array<double, 3> right{6, 5, 8};
  EXPECT_FALSE(SFGAUSS(RealTable(matrix.data(), 3, 3), Reals(right.data(), 3)));
  EXPECT_EQ(right[0], 3.0);
  EXPECT_EQ(right[1], 0.0);
  EXPECT_EQ(right[2], 2.0);
}

}  // namespace
}  // namespace tidearc
