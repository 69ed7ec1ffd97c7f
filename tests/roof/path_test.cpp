// Paths through limit points: the shallow two-bar truss in every mode of displacement stepping, against its closed
// form.
//
// Two bars of EA 1,000,000 from (-10, 0) and (10, 0) to an apex of height 0.5 that moves in Z; bars keep EA and turn
// with their ends. At apex deflection w the load is P(w) = 2 EA (h - w) (1/l - 1/L0), l = sqrt(b^2 + (h - w)^2); limit
// loads
// +-47.9925245 at w 0.211445 and 0.788555 (after R. von Mises, 1923).
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

constexpr double full_load = 100.0;
constexpr double limit_load = 47.9925245;

double closed_form(double w) {
  const double x = 0.5 - w;
  return 2.0e6 * x * (1.0 / std::sqrt(100.0 + x * x) - 1.0 / std::sqrt(100.25));
}

/// Steps of 0.04 along the path by arc length; every mode below changes this.
SegmentCards path_segment() {
  SegmentCards cards;
  cards.STEP0 = 0.1;
  cards.NSTEPS = 24;
  cards.MAXIT = 20;
  cards.FQUIT = -10.0;
  cards.KPOSTN = 1;
  cards.TOLU = 1e-7;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KDIR = 4;
  cards.KITER = 2;
  cards.KIPAR = 2;
  cards.ARCL = 0.04;
  return cards;
}

struct PathPoint {
  double w;
  double P;
};

/// Load (with all its digits) and deflection of each step.
std::vector<PathPoint> path_of(const RunResult& run) {
  std::vector<PathPoint> path;
  std::istringstream lines(run.levels);
  std::string line;
  while (std::getline(lines, line)) {
    int sequence = 0;
    double time = 0.0, level = 0.0;
    if (!(std::istringstream(line) >> sequence >> time >> level)) continue;
    const double w = -displacement(run.report, " Z", 2, static_cast<int>(path.size()));
    path.push_back({w, level * full_load});
  }
  return path;
}

/// The mode traces the whole path: 24 points on the closed form, up to the first limit, down to the second and up
/// again.
void expect_whole_path(const SegmentCards& cards) {
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.report;
  const std::vector<PathPoint> path = path_of(run);
  ASSERT_EQ(path.size(), 24U) << run.progress;
  double highest = 0.0, lowest = 0.0;
  for (const PathPoint& point : path) {
    EXPECT_NEAR(point.P, closed_form(point.w), 1.0e-4 * limit_load) << "w " << point.w;
    highest = std::max(highest, point.P);
    lowest = std::min(lowest, point.P);
  }
  for (std::size_t i = 1; i < path.size(); ++i) EXPECT_GT(path[i].w, path[i - 1].w) << "step " << i + 1;
  EXPECT_GT(highest, 0.99 * limit_load);
  EXPECT_LT(lowest, -0.99 * limit_load);
  EXPECT_GT(path.back().P, -20.0) << "on the rising branch behind the second limit point";
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED"), std::string::npos);
}

TEST(Path, ByArcLength) { expect_whole_path(path_segment()); }

TEST(Path, ByArcLengthUnderTheSecondCodeOfTheStiffnessParameter) {
  SegmentCards cards = path_segment();
  cards.KDIR = 5;
  expect_whole_path(cards);
}

TEST(Path, ByArcLengthAlongADirectionVector) {
  SegmentCards cards = path_segment();
  cards.KDIR = 3;
  cards.vectors = vector_cards(2, 3, -1.0);
  expect_whole_path(cards);
}

TEST(Path, ByAnArcOfTheFirstTangent) {
  // Tangent 2 EA h^2 / L0^3 (1000000 * 0.5 / 1003.75..): the first arc is STEP0 times 100 over it.
  SegmentCards cards = path_segment();
  const double stiffness = 2.0e6 * 0.25 / std::pow(100.25, 1.5);
  cards.ARCL = 0.0;
  cards.STEP0 = 0.04 * stiffness / full_load;
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  for (const ProgressRow& row : progress_rows(run.progress)) EXPECT_NEAR(row.arc, 0.04, 1e-5);
  const std::vector<PathPoint> path = path_of(run);
  ASSERT_EQ(path.size(), 24U);
  for (const PathPoint& point : path) EXPECT_NEAR(point.P, closed_form(point.w), 1.0e-4 * limit_load);
  EXPECT_NEAR(path.back().w, 0.96, 1e-4);
}

TEST(Path, ByArcLengthAtConstantWork) {
  SegmentCards cards = path_segment();
  cards.KIPAR = 1;
  expect_whole_path(cards);
}

TEST(Path, ByArcLengthAtAnIterationVector) {
  SegmentCards cards = path_segment();
  cards.KIPAR = 4;
  cards.vectors = vector_cards(2, 3, -2.0);
  expect_whole_path(cards);
}

SegmentCards by_stepping_vector(int KIPAR) {
  SegmentCards cards = path_segment();
  cards.KNMS = 3;
  cards.NSVEC = 1;
  cards.KDIR = 2;
  cards.KIPAR = KIPAR;
  cards.vectors = vector_cards(2, 3, -1.0, 0.4);
  if (KIPAR == 4) cards.vectors += vector_cards(2, 3, 1.0);
  return cards;
}

TEST(Path, BySteppingVectorAtConstantWork) { expect_whole_path(by_stepping_vector(1)); }
TEST(Path, BySteppingVectorAtConstantArcLength) { expect_whole_path(by_stepping_vector(2)); }
TEST(Path, BySteppingVectorThatIterationsDoNotMove) { expect_whole_path(by_stepping_vector(3)); }
TEST(Path, BySteppingVectorAtAnIterationVector) { expect_whole_path(by_stepping_vector(4)); }

TEST(Path, ByMaximumValueAlongADirectionVector) {
  SegmentCards cards = path_segment();
  cards.KNMS = 2;
  cards.SEGVAL = 0.4;
  cards.KDIR = 3;
  cards.KIPAR = 1;
  cards.vectors = vector_cards(2, 3, -1.0);
  expect_whole_path(cards);
}

TEST(Path, WithGrowingLoadReachesTheLimitAndNotBeyond) {
  SegmentCards cards = path_segment();
  cards.KDIR = 1;
  cards.NSTEPS = 5;
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::vector<PathPoint> path = path_of(run);
  for (const PathPoint& point : path) EXPECT_NEAR(point.P, closed_form(point.w), 1.0e-4 * limit_load);
  EXPECT_NEAR(path.back().w, 0.2, 1e-5);
}

TEST(Path, OfALoadStepThatIteratesOnItsArc) {
  SegmentCards cards = path_segment();
  cards.KSTEP = 1;
  cards.KNMS = 0;
  cards.KDIR = 1;
  cards.STEP0 = 0.125;
  cards.NSTEPS = 3;
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::vector<PathPoint> path = path_of(run);
  ASSERT_EQ(path.size(), 3U);
  for (const PathPoint& point : path) EXPECT_NEAR(point.P, closed_form(point.w), 1.0e-4 * limit_load);
  // The first step keeps the deflection of its first tangent, 12.5 over 2 EA h^2 / L0^3.
  EXPECT_NEAR(path[0].w, 12.5 / (5.0e5 / std::pow(100.25, 1.5)), 1e-6);
  EXPECT_EQ(count_of(run.report, "STEP LOAD FORMED"), 3);
  EXPECT_GT(count_of(run.report, "ARBITRARY LOAD FORMED"), 0);
}

TEST(Path, WithConstantLoadIterationsEndsBelowTheLimit) {
  SegmentCards cards = path_segment();
  cards.KITER = 1;
  cards.KIPAR = 0;
  cards.NSTEPS = 3;
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  for (const PathPoint& point : path_of(run)) EXPECT_NEAR(point.P, closed_form(point.w), 1.0e-4 * limit_load);
  EXPECT_EQ(count_of(run.report, "ARBITRARY LOAD FORMED"), 3) << "a reference load at the first iteration of each step";
}

TEST(Path, TheTableTellsArcParameterAndPivots) {
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({path_segment()});
  const RunResult run = run_static(deck.text());
  int step = 0;
  double last = 0.0;
  for (const ProgressRow& row : progress_rows(run.progress)) {
    EXPECT_NEAR(row.arc, 0.04, 1e-6);
    if (row.step == step) continue;
    step = row.step;  // first iteration: the stiffness at the last point, w = 0.04 (step - 1)
    const double w = 0.04 * (step - 1);
    const bool falling = w > 0.2114 && w < 0.7886;
    EXPECT_EQ(row.negative, falling ? 1 : 0) << w;
    EXPECT_EQ(row.parameter < 0.0, falling) << w;
    EXPECT_TRUE(step == 1 ? row.parameter == 1.0 : w > 0.5 || row.parameter < last) << "softer with every step";
    last = row.parameter;
  }
  EXPECT_EQ(step, 24);
}

TEST(Path, TheLastStepIsCutAtTheFullLevel) {
  SegmentCards cards = path_segment();
  cards.NSTEPS = 60;
  TrussDeck deck = two_bar_truss(full_load);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM LOAD LEVEL REACHED"), std::string::npos);
  const std::vector<PathPoint> path = path_of(run);
  const PathPoint before = path[path.size() - 2];
  EXPECT_LT(before.P, full_load);
  EXPECT_GE(path.back().P, full_load);
  EXPECT_LT(path.back().w - before.w, 0.04) << "shorter than its arc";
}

// An apex that is not in the middle moves sideways too: no closed form, but the bars must carry the load that the path
// has reached. Checked with all digits at the last step.
RunResult expect_last_step_in_equilibrium(const SegmentCards& cards) {
  TrussDeck deck = two_bar_truss(full_load, 2.0);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(path_of(run).size(), static_cast<std::size_t>(cards.NSTEPS)) << run.progress;
  const double u = run.U.at(0), v = run.U.at(1);
  double fx = 0.0, fz = 0.0;
  for (const double end : {-10.0, 10.0}) {
    const double x = 2.0 - end;
    const double L = std::hypot(x, 0.5), l = std::hypot(x + u, 0.5 + v);
    const double N = 1.0e6 * (l / L - 1.0);
    fx += N * (x + u) / l;
    fz += N * (0.5 + v) / l;
  }
  EXPECT_NEAR(fx, 0.0, 1e-5);
  EXPECT_NEAR(fz, -run.accumulated * full_load, 1e-5);
  EXPECT_LT(v, -0.5) << "the apex has snapped below its supports";
  return run;
}

TEST(CrookedPath, ByArcLengthWithItsLength) {
  SegmentCards cards = path_segment();
  cards.NSTEPS = 16;
  const RunResult run = expect_last_step_in_equilibrium(cards);
  EXPECT_NEAR(std::hypot(run.DSTEP[0], run.DSTEP[1]), 0.04, 1e-12) << "iterations keep the arc";
}

TEST(CrookedPath, AtConstantWork) {
  SegmentCards cards = path_segment();
  cards.NSTEPS = 16;
  cards.KIPAR = 1;
  expect_last_step_in_equilibrium(cards);
}

TEST(CrookedPath, ByTheCriticalOfTwoVectors) {
  SegmentCards cards = path_segment();
  cards.NSTEPS = 16;
  cards.KNMS = 3;
  cards.NSVEC = 2;
  cards.KDIR = 2;
  cards.KIPAR = 3;
  cards.vectors = vector_cards(2, 1, 1.0, 0.4) + vector_cards(2, 3, -1.0, 0.4);
  const RunResult run = expect_last_step_in_equilibrium(cards);
  EXPECT_EQ(count_of(run.report, "CRITICAL VECTOR =    2"), 16);
  EXPECT_NEAR(run.DSTEP[1], -0.04, 1e-12) << "iterations leave the critical vector where it is";
}

TEST(CrookedPath, WithStateUpdatesInsideTheSteps) {
  // The state is taken over at every iteration: the arc is still that of the whole step.
  SegmentCards cards = path_segment();
  cards.NSTEPS = 16;
  cards.KISTA = 1;
  const RunResult run = expect_last_step_in_equilibrium(cards);
  EXPECT_NEAR(std::hypot(run.DSTEP[0], run.DSTEP[1]), 0.04, 1e-12);
}

}  // namespace
}  // namespace tidearc::test
