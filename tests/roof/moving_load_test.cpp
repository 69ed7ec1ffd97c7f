// Displacement stepping under a load that turns with the displacements.
//
// A node on two springs of stiffness 3 (along X) and 8 (along Y), which keep their directions, is pulled by a rope of
// force 5 at full level toward the point (4, 4.5). The expected states come from the same iteration on two freedoms,
// written out below.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

constexpr double full_arc = 0.1;
constexpr int steps = 6;

/// With a yield stress the springs yield at it and harden by one half.
std::string pulled_node(SegmentCards cards, double yield = 0.0) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(-10, 0, 0);
  deck.node(0, -10, 0);
  deck.node(4, 4.5, 0);
  deck.fix(1, "001111");
  for (const int node : {2, 3, 4}) deck.fix(node, "111111");
  deck.material(10, 0.5, yield, yield);
  deck.section(3);
  deck.section(8);
  deck.bar(2, 1, 1, 1);
  deck.bar(3, 1, 1, 2);
  cards.factors = {};
  deck.stat({cards});
  std::string text = deck.text();
  const std::string loads = "    0    0    0    0    0    0    0    0\n";
  const std::string rope = "    0    1    0    0    0    0    0    0\n    1ROPE\n    1    4       5.0\n";
  text.replace(text.find(loads), loads.size(), rope);
  const std::string empty_factors = "\n\n\n\n\n\nNONE";
  text.replace(text.find(empty_factors), 2, "\n       1.0\n");
  return text;
}

struct Pair {
  double x, y;
};
Pair rope_at(Pair u) {
  const double x = 4.0 - u.x, y = 4.5 - u.y, l = std::hypot(x, y);
  return {5.0 * x / l, 5.0 * y / l};
}

struct State {
  Pair u{0.0, 0.0};
  double level = 0.0;
};

/// One step of this arc; its iterations do no work against the rope's force at the state that they start from.
void take_step(State& s, int iterations, double arc) {
  const auto unbalance = [&] {
    const Pair f = rope_at(s.u);
    return Pair{s.level * f.x - 3.0 * s.u.x, s.level * f.y - 8.0 * s.u.y};
  };
  for (int NI = 1; NI <= iterations; ++NI) {
    const Pair f = rope_at(s.u), r = unbalance();
    const Pair da{f.x / 3.0, f.y / 8.0}, du{r.x / 3.0, r.y / 8.0};
    const double A = da.x * da.x + da.y * da.y, B = 2.0 * (du.x * da.x + du.y * da.y);
    const double C = du.x * du.x + du.y * du.y - arc * arc;
    const double DL = NI == 1 ? (std::sqrt(B * B - 4.0 * A * C) - B) / (2.0 * A)
                              : -(f.x * du.x + f.y * du.y) / (f.x * da.x + f.y * da.y);
    s.u = {s.u.x + du.x + DL * da.x, s.u.y + du.y + DL * da.y};
    s.level += DL;
  }
}

/// The tolerance lets no iteration end a step: all are made, and the step is taken as it stands.
SegmentCards constant_work(int MAXIT) {
  SegmentCards cards;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KITER = 2;
  cards.KIPAR = 1;
  cards.ARCL = full_arc;
  cards.STEP0 = 0.25;
  cards.MAXIT = MAXIT;
  cards.TOLU = -1.0;
  return cards;
}

TEST(MovingLoad, IsTheReferenceLoadOfEveryIterationAtItsState) {
  for (const int MAXIT : {1, 2, 5}) {
    SegmentCards cards = constant_work(MAXIT);
    cards.NSTEPS = steps;
    cards.KTERM = 2;
    const RunResult run = run_static(pulled_node(cards));
    ASSERT_EQ(run.status, 0) << run.errors << run.progress;
    State expected;
    for (int NS = 1; NS <= steps; ++NS) take_step(expected, MAXIT, full_arc);
    EXPECT_NEAR(run.U.at(0), expected.u.x, 1e-12) << MAXIT;
    EXPECT_NEAR(run.U.at(1), expected.u.y, 1e-12) << MAXIT;
    EXPECT_NEAR(run.accumulated, expected.level, 1e-12) << MAXIT;
  }
}

TEST(MovingLoad, IsThatOfTheStepStartAfterARestep) {
  // The first try of the first step is given up, half the arc is taken as it stands: its load must not be that of the
  // state where the first try ended.
  SegmentCards cards = constant_work(2);
  cards.KTERM = 0;
  cards.card4 = "       0.5       0.5";
  const RunResult run = run_static(pulled_node(cards));
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  ASSERT_EQ(count_of(run.report, "STATE AT BEGINNING OF STEP RECOVERED"), 1) << run.report;
  State expected;
  take_step(expected, 2, 0.5 * full_arc);
  EXPECT_NEAR(run.U.at(0), expected.u.x, 1e-12);
  EXPECT_NEAR(run.U.at(1), expected.u.y, 1e-12);
  EXPECT_NEAR(run.accumulated, expected.level, 1e-12);
}

TEST(MovingLoad, IsInEquilibriumBehindEventsToo) {
  // Both springs yield, at elongations of 0.5. Iterations at constant work change the level of the rope, which turns; a
  // spring that is pulled too far on the way keeps some of it, so the forces are those of the report.
  SegmentCards cards;
  cards.KEVENT = 1;
  cards.KITER = 2;
  cards.KIPAR = 1;
  cards.MAXIT = 60;
  cards.TOLU = 1e-9;
  const RunResult run = run_static(pulled_node(cards, 0.5));
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  EXPECT_GE(count_of(run.report, "EVENT PREDICTED"), 2);
  EXPECT_GT(progress_rows(run.progress).back().iteration, 1);
  EXPECT_GT(std::abs(run.accumulated - 1.0), 1e-3);
  const Pair f = rope_at({run.U.at(0), run.U.at(1)});
  const std::vector<TrussRow> springs = truss_rows(run.report);
  EXPECT_GT(springs.at(0).positive, 0.0);
  EXPECT_GT(springs.at(1).positive, 0.0);
  EXPECT_NEAR(springs.at(0).force, run.accumulated * f.x, 1e-4);
  EXPECT_NEAR(springs.at(1).force, run.accumulated * f.y, 1e-4);
}

}  // namespace
}  // namespace tidearc::test
