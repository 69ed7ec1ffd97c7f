// Events: a step is cut where a bar yields or unloads, and goes on with the new stiffness.
//
// The three-bar truss with hardening 0.05 (E 3000, A 10, yield stress 60; height 200, side bars at 30 degrees): loads
// and deflections of an independent event-to-event solver, agreeing with return mapping to 2e-14.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

constexpr double first_yield = 1379.42286;

TrussDeck three_bars(double hardening) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(115.470054, 0, 0);
  deck.node(230.940108, 0, 0);
  deck.node(115.470054, -200, 0);
  for (const int node : {1, 2, 3}) deck.fix(node, "111111");
  deck.fix(4, "001111");
  deck.material(3000, hardening, 60, 60);
  deck.section(10);
  deck.bar(1, 4);
  deck.bar(2, 4);
  deck.bar(3, 4);
  deck.pattern(4, 0, -1800, 0);
  return deck;
}

struct Event {
  double factor;
  int group, element;
};

std::vector<Event> events_of(const std::string& report) {
  std::vector<Event> events;
  for (const std::string& line : lines_of(report)) {
    if (line.find("EVENT PREDICTED, EVENT FACTOR =") == std::string::npos) continue;
    events.push_back({std::stod(line.substr(36, 10)), std::stoi(line.substr(56, 5)), std::stoi(line.substr(73, 5))});
  }
  return events;
}

SegmentCards one_step(std::vector<double> factors) {
  SegmentCards cards;
  cards.KEVENT = 1;
  cards.factors = std::move(factors);
  return cards;
}

TEST(Events, TheLineTellsFactorGroupAndElement) {
  TrussDeck deck = three_bars(0.05);
  deck.stat({one_step({1.0})});
  const RunResult run = run_static(deck.text());
  EXPECT_NE(run.report.find("     EVENT PREDICTED, EVENT FACTOR =  0.766347     GROUP    1     ELEMENT    2\n"),
            std::string::npos)
      << run.report;
}

TEST(Events, AStepGoesFromYieldToYieldAndNeedsNoSecondIteration) {
  TrussDeck deck = three_bars(0.05);
  deck.stat({one_step({1.0})});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::vector<Event> events = events_of(run.report);
  ASSERT_GE(events.size(), 2U);
  EXPECT_NEAR(events[0].factor, first_yield / 1800.0, 2e-6) << "just past it";
  EXPECT_EQ(events[0].element, 2);
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 1U) << "no row for an event";
  EXPECT_EQ(rows[0].iteration, 1);
  EXPECT_EQ(rows[0].formations, 3) << "the elastic stiffness, and one after each of two yields";
  EXPECT_EQ(rows[0].state, "YES");
  EXPECT_EQ(rows[0].stiffness, "YES");
  EXPECT_NEAR(run.U.at(1), -14.0772519, 1e-6);
  const std::vector<TrussRow> bars = truss_rows(run.report);
  EXPECT_NEAR(bars[0].force, 649.184542, 0.005);
  EXPECT_NEAR(bars[1].force, 675.57939, 0.005);
  EXPECT_NEAR(bars[2].force, 649.184542, 0.005);
  EXPECT_EQ(count_of(run.report, "BEGIN ITERATION NO."), 1);
  EXPECT_EQ(count_of(run.report, "STEP LOAD FORMED"), 1 + static_cast<int>(events.size())) << "the rest of the step";
}

TEST(Events, AStepEndsAtAYieldWhenTheLoadDoes) {
  // One step to just below each yield and one to just past it: the first has no event, the second one.
  for (const double part : {0.999, 1.001}) {
    TrussDeck deck = three_bars(0.05);
    deck.stat({one_step({part * first_yield / 1800.0})});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(events_of(run.report).size(), part > 1.0 ? 1U : 0U);
    EXPECT_EQ(progress_rows(run.progress).size(), 1U);
  }
}

TEST(Events, AReversalFollowsTheUnloadingBranchesAtOnce) {
  // Loads 1800, -1800, 1500, 0, each in one step.
  TrussDeck deck = three_bars(0.05);
  deck.stat({one_step({1.0}), one_step({-2.0}), one_step({3300.0 / 1800.0}), one_step({-1500.0 / 1800.0})});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const double deflection[] = {14.0772519, -14.0772519, -3.32132876, -7.67097393};
  for (int k = 0; k < 4; ++k)
    EXPECT_NEAR(displacement(run.report, " Y", 4, k), -deflection[k], 5e-4) << k;  // half a digit of the print
  EXPECT_NEAR(run.U.at(1), 7.67097393, 1e-6);
  for (const ProgressRow& row : progress_rows(run.progress)) EXPECT_EQ(row.iteration, 1);
  const std::vector<TrussRow> bars = truss_rows(run.report);
  EXPECT_NEAR(bars[0].force, 61.9824437, 0.005);
  EXPECT_NEAR(bars[1].force, -107.356742, 0.005);
}

TEST(Events, WithoutTheirCodeTheStepIterates) {
  TrussDeck deck = three_bars(0.05);
  SegmentCards cards = one_step({1.0});
  cards.KEVENT = 0;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_TRUE(events_of(run.report).empty());
  EXPECT_GT(progress_rows(run.progress).size(), 1U);
  EXPECT_NEAR(run.U.at(1), -14.0772519, 1e-6);
}

TEST(Events, ACodeAboveOneIsTheirLimitInAStep) {
  std::size_t unlimited = 0;
  for (const int KEVENT : {1, 2, 3}) {
    TrussDeck deck = three_bars(0.05);
    SegmentCards cards = one_step({1.0});
    cards.KEVENT = KEVENT;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    const std::size_t found = events_of(run.report).size();
    if (KEVENT == 1) unlimited = found;
    EXPECT_EQ(found, KEVENT == 1 ? unlimited : std::min<std::size_t>(unlimited, static_cast<std::size_t>(KEVENT)));
    EXPECT_NEAR(run.U.at(1), -14.0772519, 1e-6) << "what is left is iterated";
  }
}

TEST(Events, TheLimitCountsInEachStepAnew) {
  // Yield of the centre bar in step 3 of 4, of the side bars in step 4 (at 1800 * 0.25 per step).
  TrussDeck deck = three_bars(0.05);
  SegmentCards cards = one_step({1.0});
  cards.STEP0 = 0.25;
  cards.NSTEPS = 4;
  cards.KEVENT = 2;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(events_of(run.report).size(), 2U) << run.report;
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_NEAR(rows[3].level, 1.0, 1e-12);
}

/// 130 bars side by side of stiffness 100 each, whose curves have eight ordinates up to extension 9 in places of their
/// own: 1040 events on the way, although the stiffness never changes.
TrussDeck bars_of_many_events() {
  constexpr int bars = 130;
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000);
  deck.section(1);
  for (int k = 0; k < bars; ++k) {
    deck.bar(1, 2, 1, 1, 0, 2);
    std::vector<double> curve{-1.0, -1.0};
    for (int j = 1; j <= 8; ++j) curve.insert(curve.end(), 2, j + 0.005 * k);
    curve.insert(curve.end(), 2, 100.0);
    deck.curve(curve);
  }
  deck.pattern(2, 100.0 * bars * 9.004, 0, 0);
  return deck;
}

TEST(Events, AreLeftAfterAThousandOfAStep) {
  TrussDeck deck = bars_of_many_events();
  deck.stat({one_step({1.0})});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(events_of(run.report).size(), 1000U);
  EXPECT_NEAR(run.U.at(0), 9.004, 1e-9);
}

TEST(Events, OfTwoStepsMayBeMoreThanAThousand) {
  TrussDeck deck = bars_of_many_events();
  SegmentCards cards = one_step({1.0});
  cards.STEP0 = 0.5;
  cards.NSTEPS = 2;
  deck.stat({cards});
  EXPECT_EQ(events_of(run_static(deck.text()).report).size(), 1040U);
}

TEST(Events, AreFoundInDisplacementSteps) {
  // The bar of EA/L 100 yields at force 0.9 of its first branch, extension 0.01; arcs of 0.008: the second step has the
  // event and goes on to its full arc.
  TrussDeck deck = loaded_bar(3.0, 0.1, 1.0);
  SegmentCards cards = one_step({1.0});
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.ARCL = 0.008;
  cards.STEP0 = 0.1;
  cards.NSTEPS = 3;
  cards.KITER = 2;
  cards.KIPAR = 2;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  ASSERT_EQ(events_of(run.report).size(), 1U) << run.report;
  EXPECT_NEAR(events_of(run.report)[0].factor, 0.25, 2e-6);
  EXPECT_NEAR(displacement(run.report, " X", 2, 0), 0.008, 1e-9);
  EXPECT_NEAR(displacement(run.report, " X", 2, 1), 0.016, 1e-7);
  EXPECT_NEAR(displacement(run.report, " X", 2, 2), 0.024, 1e-7);
  // Force 1 at extension 0.01, then 10 for each unit of extension: 1.14 at 0.024.
  EXPECT_NEAR(run.accumulated * 3.0, 1.0 + 10.0 * (run.U[0] - 0.01), 1e-6);
  for (const ProgressRow& row : progress_rows(run.progress)) EXPECT_EQ(row.iteration, 1);
}

/// The shallow truss under 40: its bars, which turn and soften, reach their yield force of 450 in a later iteration.
TrussDeck shallow_truss() { return two_bar_truss(40.0, 0.0, 0.9, 450.0); }

TEST(Events, OfALaterIterationTakeBackOnlyTheirOwnLoad) {
  // The load increment of that iteration is 0: what the step had applied before must not be lost with it.
  TrussDeck deck = shallow_truss();
  SegmentCards cards = one_step({1.0});
  cards.MAXIT = 20;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::string& report = run.report;
  EXPECT_GT(report.find("EVENT PREDICTED"), report.find("BEGIN ITERATION NO.  2"));
  EXPECT_GE(events_of(report).size(), 1U);
  EXPECT_EQ(run.accumulated, 1.0);
  const double x = 0.5 + run.U.at(0), L = std::sqrt(100.25), l = std::hypot(10.0, x);
  const double N = 450.0 + 0.9e6 * ((L - l) / L - 450.0e-6);
  EXPECT_GT(N, 450.0);
  EXPECT_NEAR(2.0 * N * x / l, 40.0, 2e-6);
}

TEST(Events, MoveTheNextFormationOfTheStiffness) {
  // Every third iteration forms: 1, 4, 7. An event in iteration 3 forms too, and takes the turn of iteration 4.
  TrussDeck deck = shallow_truss();
  SegmentCards cards = one_step({1.0});
  cards.MAXIT = 100;
  cards.KISTF = 3;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  std::string formed;
  for (const ProgressRow& row : progress_rows(run.progress)) formed += row.stiffness == "YES" ? '1' : '0';
  EXPECT_EQ(formed.substr(0, 7), "1010001") << run.report.find("BEGIN ITERATION NO.  3");
}

TEST(Events, EndTheLineSearchOfTheirIteration) {
  TrussDeck deck = shallow_truss();
  SegmentCards cards = one_step({1.0});
  cards.MAXIT = 100;
  cards.KISTF = 3;
  cards.NLS = 4;
  cards.SLOW = 0.5;
  cards.SUP = 1.25;
  cards.TOLS = 0.01;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::size_t event = run.report.find("EVENT PREDICTED");
  const std::size_t next = run.report.find("BEGIN ITERATION", event);
  ASSERT_NE(next, std::string::npos) << "the rest of the iteration is not the end of it";
  EXPECT_GT(run.report.find("LINE SEARCH NO", event), next) << "nor is the rest searched";
  EXPECT_NE(run.report.find("LINE SEARCH NO", next), std::string::npos);
}

TEST(Events, OfAStepThatIsLostAreTakenBack) {
  // Perfect plasticity: behind its event in step 2 the bar has no stiffness, and the state of the step start, at a
  // force of 0.75, stands again.
  for (const int KTERM : {1, 2}) {
    TrussDeck deck = loaded_bar(3.0, 0.0, 1.0);
    SegmentCards cards = one_step({1.0});
    cards.KTERM = KTERM;
    cards.STEP0 = 0.25;
    cards.NSTEPS = 2;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 4);
    EXPECT_EQ(events_of(run.report).size(), 1U);
    EXPECT_NEAR(run.U.at(0), 0.0075, 1e-15);
    EXPECT_EQ(run.accumulated, 0.25);
  }
}

TEST(Events, CutImposedDisplacementsToo) {
  TrussDeck deck = bar_along_x(0.1, 1.0);
  deck.prescribe(2, 1, 0.04);
  SegmentCards cards = one_step({});
  cards.pfactors = {1.0};
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  ASSERT_EQ(events_of(run.report).size(), 1U);
  EXPECT_NEAR(events_of(run.report)[0].factor, 0.25, 2e-6);
  EXPECT_NEAR(run.U.at(0), 0.04, 1e-15) << "the rest comes with the rest of the step";
  EXPECT_NEAR(truss_rows(run.report)[0].force, 1.3, 1e-5);
}

/// A bar whose overshoot strain of 0.001 leaves 0.9 out of balance behind its event.
TrussDeck overshooting_bar(double load) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000, 0.1, 1, 1, 0.0, "     0.001");
  deck.section(1);
  deck.bar(1, 2);
  deck.pattern(2, load, 0, 0);
  return deck;
}

TEST(Events, ALargeUnbalanceAtAnEventRestepsBeforeItIsTaken) {
  TrussDeck deck = overshooting_bar(3.0);
  SegmentCards cards = one_step({1.0});
  cards.NSTEPS = 20;
  cards.KTERM = 0;
  cards.card4 = "       0.5     0.125    1    0                        0                           0.5";
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_GT(count_of(run.report, " RESTEPPING DUE TO LARGE UNBALANCE FORCE"), 0) << run.report;
  EXPECT_GT(count_of(run.report, "STATE AT BEGINNING OF STEP RECOVERED"), 0);
}

TEST(Events, CountAnewInAStepThatIsTakenAnew) {
  // Loads 12, 6, 3, 1.5 in tries of the first step. At 1.5 the bar passes its yield by less than the overshoot.
  TrussDeck deck = overshooting_bar(12.0);
  SegmentCards cards = one_step({1.0});
  cards.KEVENT = 2;
  cards.KTERM = 0;
  cards.card4 = "       0.5     0.001    1    0                        0                           0.5";
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(events_of(run.report).size(), 3U) << run.report;
}

TEST(Events, OfATrialThatIsTakenOutOfBalanceCountOnce) {
  // No smaller step is allowed: the part up to the event is taken as it stands, and iterations go on from there.
  TrussDeck deck = overshooting_bar(3.0);
  SegmentCards cards = one_step({1.0});
  cards.KTERM = 0;
  cards.card4 = "       0.5       1.0    0    0                        0                           0.5";
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(count_of(run.report, " RESTEPPING DUE TO LARGE UNBALANCE FORCE"), 1) << run.report;
  EXPECT_GT(progress_rows(run.progress).back().iteration, 1);
  EXPECT_GT(run.U.at(0), 0.02);
  EXPECT_NEAR(run.DSTEP.at(0), run.U.at(0), 1e-15) << "the only step began at zero";
}

}  // namespace
}  // namespace tidearc::test
