// Steps that do not come to rest in displacement stepping and behind events; prescribed displacements that change.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// The shallow two-bar truss with its apex at (2, 0.5), free in X and Z, under 100 downwards at full level.
TrussDeck crooked_truss() { return two_bar_truss(100.0, 2.0); }

/// Largest force on the apex that the bars and the load leave.
double unbalance_of_apex(const RunResult& run) {
  double fx = 0.0, fz = -100.0 * run.accumulated;
  for (const double end : {-10.0, 10.0}) {
    const double x = 2.0 - end;
    const double L = std::hypot(x, 0.5), l = std::hypot(x + run.U.at(0), 0.5 + run.U.at(1));
    const double N = 1.0e6 * (l / L - 1.0);
    fx -= N * (x + run.U.at(0)) / l;
    fz -= N * (0.5 + run.U.at(1)) / l;
  }
  return std::max(std::abs(fx), std::abs(fz));
}

/// Arcs of 0.16, which are too long for two iterations.
SegmentCards long_arcs() {
  SegmentCards cards;
  cards.STEP0 = 0.1;
  cards.NSTEPS = 12;
  cards.MAXIT = 2;
  cards.KTERM = 0;
  cards.FQUIT = -10.0;
  cards.TOLU = 1e-4;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KDIR = 4;
  cards.KITER = 2;
  cards.KIPAR = 2;
  cards.ARCL = 0.16;
  return cards;
}

/// Card 4: reduction 0.5, smallest step, attempts; greatest unbalance.
std::string restep_card(const char* smallest, int attempts, const char* UMAX = "") {
  char card[128];
  std::snprintf(card, sizeof card, "%10s%10s%5d%5d%10s%10s%5d%10s%10s%10s", "0.5", smallest, attempts, 0, "", "", 0, "",
                "", UMAX);
  return card;
}

TEST(DisplacementRestep, SavesAnArcThatIsTooLong) {
  TrussDeck deck = crooked_truss();
  SegmentCards cards = long_arcs();
  cards.card4 = restep_card("0.01", 1);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  EXPECT_GT(count_of(run.report, "STATE AT BEGINNING OF STEP RECOVERED"), 0);
  EXPECT_LT(unbalance_of_apex(run), 2e-4);
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  for (const ProgressRow& row : rows) {
    // The arc goes with the step factor; iterations hold the length of the first one.
    EXPECT_NEAR(row.arc, 0.16 * row.increment / 0.1, 2e-5 * row.arc + 1e-5 * row.arc / row.increment) << row.step;
  }
  EXPECT_LT(rows.back().increment, 0.1);
  EXPECT_NEAR(std::hypot(run.DSTEP[0], run.DSTEP[1]), 1.6 * rows.back().increment, 1e-4);
}

TEST(DisplacementRestep, MeasuresTheFirstArcOnce) {
  TrussDeck deck = crooked_truss();
  SegmentCards cards = long_arcs();
  cards.ARCL = 0.0;  // the first arc is 0.4 of the first tangent displacement
  cards.STEP0 = 0.4;
  cards.TOLU = 1e-8;
  cards.NSTEPS = 1;
  cards.card4 = restep_card("0.001", 1);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_LT(rows.back().increment, 0.4) << "the first step was taken anew";
  EXPECT_NEAR(rows.back().arc / rows.front().arc, rows.back().increment / 0.4, 1e-3);
}

TEST(DisplacementRestep, ThatCannotSaveEndsWithCodeFive) {
  TrussDeck deck = crooked_truss();
  SegmentCards cards = long_arcs();
  cards.MAXIT = 1;
  cards.TOLU = 1e-9;
  cards.KIPAR = 1;
  cards.card4 = restep_card("0.25", 1);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_NE(run.report.find("         1 ATTEMPTS TO REDUCE STEP SIZE BELOW    0.25000D+00     ANALYSIS SUSPENDED\n"),
            std::string::npos)
      << run.report;
  EXPECT_NE(run.progress.find("TERMINATED: REACHING MAX. ALLOWABLE NO. OF ATTEMPTS"), std::string::npos);
  EXPECT_EQ(count_of(run.report, "STATE AT BEGINNING OF STEP RECOVERED"), 2) << "0.05 and 0.025 of 0.1";
}

TEST(DisplacementRestep, SuspendedAtConstantArcContinuesWithTheFirstStep) {
  TrussDeck deck = crooked_truss();
  SegmentCards cards = long_arcs();
  cards.MAXIT = 1;
  cards.NSTEPS = 2;
  cards.TOLU = 1e-9;
  cards.card4 = restep_card("0.25", 1);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_NE(run.report.find("ANALYSIS SUSPENDED\n     SOLUTION HAS NOT CONVERGED AFTER     1 ITERATIONS- ANALYSIS "
                            "CONTINUED\n"),
            std::string::npos)
      << run.report;
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED"), std::string::npos);
  bool second = false;
  for (const ProgressRow& row : progress_rows(run.progress)) {
    if (row.step == 1 || second) continue;
    second = true;
    EXPECT_NEAR(row.increment, 0.1, 1e-9) << "back at the first step factor";
  }
  EXPECT_TRUE(second);
}

TEST(DisplacementRestep, WithoutAttemptsGoesOnAtTheSmallestStep) {
  TrussDeck deck = crooked_truss();
  SegmentCards cards = long_arcs();
  cards.MAXIT = 1;
  cards.NSTEPS = 1;
  cards.TOLU = 1e-9;
  cards.card4 = restep_card("0.5", 0);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 3U) << "the first trial, the second, and its second line";
  EXPECT_NEAR(rows[2].increment, 0.05, 1e-9);
  EXPECT_NE(run.report.find(" ANALYSIS CONTINUED"), std::string::npos);
}

void expect_lost(TrussDeck deck, SegmentCards cards) {
  cards.MAXIT = 10;
  cards.ARCL = 0.008;
  cards.NSTEPS = 5;
  cards.card4 = restep_card("0.1", 0);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 4) << cards.KTERM << run.progress;
  EXPECT_NE(run.report.find("SOLUTION IS NOT FINITE"), std::string::npos);
  EXPECT_NE(run.progress.find("MAX. ALLOWABLE NUMBER OF ITERATIONS REACHED"), std::string::npos);
  EXPECT_EQ(count_of(run.report, "STATE AT BEGINNING OF STEP RECOVERED"), cards.KTERM == 0 ? 3 : 0);
  ASSERT_FALSE(run.U.empty());
  EXPECT_TRUE(std::isfinite(run.U[0])) << "the last accepted state stands";
}

TEST(DisplacementRestep, AnArcThatIsLostEndsInEveryMode) {
  // The square of the reference solution overflows: the arc equation has no numbers, however short the arc.
  for (const int KTERM : {0, 1, 2}) {
    TrussDeck deck = bar_along_x();
    deck.pattern(2, 1.0E+99, 0, 0);
    SegmentCards cards = long_arcs();
    cards.KTERM = KTERM;
    cards.factors = {1.0E+99};
    expect_lost(deck, cards);
  }
}

TEST(DisplacementRestep, APlateauIsLostOrWalkedOn) {
  // Perfect plasticity: behind yield the only stiffness is zero and the reference solution is not finite. A restep
  // assembles anew, and the stand-in for the missing stiffness lets the arc go on along the plateau.
  for (const int KTERM : {1, 2}) {
    SegmentCards cards = long_arcs();
    cards.KTERM = KTERM;
    expect_lost(loaded_bar(3.0, 0.0, 1.0), cards);
  }
  TrussDeck deck = loaded_bar(3.0, 0.0, 1.0);
  SegmentCards cards = long_arcs();
  cards.MAXIT = 10;
  cards.ARCL = 0.008;
  cards.NSTEPS = 5;
  cards.card4 = restep_card("0.1", 0);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_NEAR(run.accumulated * 3.0, 1.0, 1e-9);
  EXPECT_GT(run.U.at(0), 0.0102);
}

TEST(FatalEnd, OfAStepThatMovesNothing) {
  // The load pulls at the fixed node.
  TrussDeck deck = bar_along_x();
  deck.pattern(1, 1, 0, 0);
  SegmentCards cards = long_arcs();
  cards.KPOST = 1;
  cards.card4 = restep_card("0.1", 0);
  deck.stat({cards, cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(count_of(run.report, " UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE\n"), 1);
  EXPECT_EQ(count_of(run.progress, " UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE\n"), 1);
  EXPECT_EQ(count_of(run.progress, "SEGMENT  1 OF CURRENT STATIC MACRO"), 0) << "no code is told";
  EXPECT_NE(run.progress.find("TERMINATED: FATAL ERRORS DETECTED"), std::string::npos);
  EXPECT_EQ(count_of(run.report, " RESPONSE AT LOAD STEP"), 0);
  EXPECT_EQ(count_of(run.levels, " STAT "), 0) << "a step without an end is not an unsaved one";
  EXPECT_EQ(count_of(run.report, " STATIC FORCE PATTERN ACCUMULATED  FACTORS"), 1) << "the segment has its end";
  EXPECT_EQ(count_of(run.report, "LOAD SEGMENT NO."), 2) << "the second is read only";
  EXPECT_NE(run.errors.find("no load increment is found: segment 1, step 1, iteration 1"), std::string::npos)
      << run.errors;
}

TEST(FatalEnd, LeavesTheStateThatWasDeterminedLast) {
  // An iteration at constant arc length without an arc: the first iteration drops the unbalance and moves nothing.
  TrussDeck deck = loaded_bar(1.0);
  SegmentCards cards = long_arcs();
  cards.KTERM = 1;
  cards.KSTEP = 1;
  cards.KNMS = 0;
  cards.KDIR = 1;
  cards.IROB = 1;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_NE(run.report.find("**SCALE0** DIVIDE BY 0"), std::string::npos) << run.report;
  EXPECT_EQ(run.U.at(0), 0.0);
  EXPECT_NEAR(run.accumulated, 0.1, 1e-15) << "the level of the first iteration";
  EXPECT_EQ(progress_rows(run.progress).size(), 1U);
}

// Prescribed displacements.

/// Bars of EA/L 100 and 200 from node 1 over 2 to 3, in a row along X; node 3 is imposed.
TrussDeck imposed_row() {
  TrussDeck deck = bars_in_a_row(15.0, 1.0);
  deck.prescribe(3, 1, 0.03);
  return deck;
}

TEST(ImposedDisplacements, ChangeFromSegmentToSegment) {
  // Both patterns hold their equations in every segment, with factor 0 too: what a segment imposes stays.
  for (const int KSTEP : {1, 2}) {
    TrussDeck deck = imposed_row();
    deck.prescribe(2, 1, 0.05);
    SegmentCards cards;
    cards.factors = {};
    cards.STEP0 = 0.25;
    cards.NSTEPS = 50;
    cards.FQUIT = -1.0;
    cards.KSTEP = KSTEP;
    if (KSTEP == 2) {
      cards.KNMS = 1;
      cards.ARCL = 0.01;
      cards.KITER = 2;
      cards.KIPAR = 2;
    }
    SegmentCards second = cards, third = cards;
    cards.pfactors = {1.0, 0.0};
    second.pfactors = {0.0, 1.0};
    third.pfactors = {-2.0, -0.5};
    deck.stat({cards, second, third});
    const RunResult run = run_static(deck.text());
    ASSERT_EQ(run.status, 0) << run.errors << run.progress;
    EXPECT_EQ(count_of(run.progress, "COMPLETED: MAXIMUM LOAD LEVEL REACHED"), 3) << run.progress;
    EXPECT_NEAR(run.U.at(0), 0.05 - 0.025, 1e-15);
    EXPECT_NEAR(run.U.at(1), 0.03 - 0.06, 1e-15);
    const std::vector<TrussRow> bars = truss_rows(run.report);
    EXPECT_NEAR(bars[0].force, 100.0 * 0.025, 1e-4);
    EXPECT_NEAR(bars[1].force, 200.0 * (-0.03 - 0.025), 1e-3);
  }
}

TEST(ImposedDisplacements, MoveWithTheLevelOfADisplacementStep) {
  // Node 3 alone is imposed; node 2 follows at two thirds. An arc of 0.01 of (2/3, 1): level 0.01 / (0.03 * 1.2019).
  TrussDeck deck = imposed_row();
  SegmentCards cards = long_arcs();
  cards.KTERM = 1;
  cards.factors = {};
  cards.pfactors = {1.0};
  cards.ARCL = 0.01;
  cards.NSTEPS = 2;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  const double level = 2.0 * 0.01 / (0.03 * std::hypot(1.0, 2.0 / 3.0));
  EXPECT_NEAR(run.U.at(1), level * 0.03, 1e-15);
  EXPECT_NEAR(run.U.at(0), level * 0.02, 1e-15);
  EXPECT_NEAR(progress_rows(run.progress).back().level, level, 5e-5);
}

}  // namespace
}  // namespace tidearc::test
