// The STAT macro from deck to report: load steps, iterations, restep, end codes, and what they leave on the files.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// One bar of length 10 along X, EA 1000, pulled at node 2 by 1.5: hardening 0.1, yield force 1.
TrussDeck yielding_bar(double load = 1.5) { return loaded_bar(load, 0.1, 1.0); }

/// The same bar without yield: u = load * L / EA.
TrussDeck elastic_bar(double load = 1.0) { return loaded_bar(load); }

TEST(Stat, YieldingBarNeedsTwoIterationsAndEndsOnTheHardeningBranch) {
  // EA/L is 100; yield at u 0.01 and force 1, then 10 per unit: 0.5 more takes 0.05. The first iteration reaches
  // u 0.015 elastically and is out of balance by 1.5 - (1 + 10 * 0.005) = 0.45.
  TrussDeck deck = yielding_bar();
  deck.stat({{}});
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.report;
  const auto rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 2u) << run.progress;
  EXPECT_NEAR(rows[0].unbalance, 0.45, 1e-3);
  EXPECT_NEAR(rows[1].unbalance, 0.0, 1e-9);
  EXPECT_EQ(rows[1].formations, 2);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
  const auto bars = truss_rows(run.report);
  ASSERT_EQ(bars.size(), 1u);
  EXPECT_NEAR(bars[0].force, 1.5, 1e-5);
  EXPECT_EQ(bars[0].code, 1);
  EXPECT_NEAR(bars[0].positive, 0.05, 1e-6);
  EXPECT_NE(run.progress.find("SEGMENT  1 OF CURRENT STATIC MACRO COMPLETED: MAXIMUM LOAD LEVEL REACHED"),
            std::string::npos)
      << run.progress;
  EXPECT_NE(run.progress.find("STATIC MACRO NUMBER  1 COMPLETED: MAXIMUM NUMBER OF SEGMENTS REACHED"),
            std::string::npos);
  EXPECT_TRUE(run.ended);
}

TEST(Stat, StepsNeverPassTheFullLevel) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.375, .NSTEPS = 9}});
  const RunResult run = run_deck(deck.text());
  const auto rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 3u);
  EXPECT_DOUBLE_EQ(rows[0].level, 0.375);
  EXPECT_DOUBLE_EQ(rows[1].level, 0.75);
  EXPECT_DOUBLE_EQ(rows[2].level, 1.0);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.01, 1e-9);
}

TEST(Stat, EndsWithCodeThreeWhenTheStepsAreUsed) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 2}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED"), std::string::npos);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.005, 1e-9);
}

TEST(Stat, ALevelNotAboveTheTerminationFactorEndsTheSegment) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 9, .FQUIT = 0.25}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(progress_rows(run.progress).size(), 1u);
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM LOAD LEVEL REACHED"), std::string::npos);
}

TEST(Stat, AStepFactorOfZeroEndsAfterOneStep) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.0, .NSTEPS = 9}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO."), 1);
}

TEST(Stat, NoStepsAllowedStillRunsOne) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.5, .NSTEPS = 0}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO."), 1);
  EXPECT_NE(run.progress.find("MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED"), std::string::npos);
}

TEST(Stat, TheLastStepUsesItsOwnTolerance) {
  // Unbalance after the first iteration is 0.45: the last step accepts it.
  TrussDeck deck = yielding_bar();
  deck.stat({{.TOLU = 1e-6, .TOLL = 0.5}});
  EXPECT_EQ(progress_rows(run_deck(deck.text()).progress).size(), 1u);
  TrussDeck strict = yielding_bar();
  strict.stat({{.NSTEPS = 2, .TOLU = 1e-6, .TOLL = 0.5}});
  EXPECT_EQ(progress_rows(run_deck(strict.text()).progress).size(), 2u);
}

TEST(Stat, StopsWhenTheIterationsAreUsedUp) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.MAXIT = 1, .KTERM = 1, .KPRINT = 0}, {}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_NE(run.report.find("SOLUTION HAS NOT CONVERGED AFTER     1 ITERATIONS- ANALYSIS STOPPED"), std::string::npos);
  EXPECT_NE(
      run.progress.find("SEGMENT  1 OF CURRENT STATIC MACRO TERMINATED: MAX. ALLOWABLE NUMBER OF ITERATIONS REACHED"),
      std::string::npos);
  EXPECT_NE(run.progress.find("STATIC MACRO NUMBER  1 TERMINATED: FATAL ERRORS DETECTED"), std::string::npos);
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO."), 1) << "the second segment only reads its cards";
  EXPECT_EQ(count_of(run.report, "LOAD SEGMENT NO."), 2);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.015, 1e-9) << "the last state is printed whatever KPRINT said";
  EXPECT_TRUE(run.ended);
}

TEST(Stat, ContinuesOutOfEquilibriumWhenAskedTo) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.MAXIT = 1, .KTERM = 2}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.report.find("SOLUTION HAS NOT CONVERGED AFTER     1 ITERATIONS- ANALYSIS CONTINUED"),
            std::string::npos);
}

TEST(Stat, AnUnbalanceLeftBehindIsTakenByTheNextSegment) {
  // The first segment ends at u 0.015, out of balance by 0.45; the second adds no load and brings the bar to rest.
  TrussDeck deck = yielding_bar();
  deck.stat({{.MAXIT = 1, .KTERM = 2}, {.factors = {0.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
}

TEST(Stat, UnloadingReturnsAlongTheElasticBranch) {
  // From the yielded state the first iteration is ten times too soft; an eighth of the load stays inside the elastic
  // range on the way back, where the next stiffness is right.
  TrussDeck deck = yielding_bar();
  deck.stat({{}, {.STEP0 = 0.125, .NSTEPS = 8, .factors = {-1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06 - 0.015, 1e-7);
  EXPECT_NE(run.report.find(" STATIC FORCE PATTERN ACCUMULATED  FACTORS"), std::string::npos);
}

TEST(Stat, ASecondMacroGoesOnFromTheStateOfTheFirst) {
  TrussDeck deck = yielding_bar();
  deck.stat({{}});
  deck.stat({{.STEP0 = 0.125, .NSTEPS = 8, .factors = {-1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.045, 1e-7);
  EXPECT_NE(run.progress.find("START OF STATIC MACRO: NUMBER =  2"), std::string::npos);
}

TEST(Stat, ImposedDisplacementMovesWithTheLevelAndStaysAfterTheSegment) {
  TrussDeck deck = elastic_bar(0.0);
  deck.prescribe(2, 1, 0.02);
  deck.stat({{.STEP0 = 0.5, .NSTEPS = 4, .pfactors = {1.0}}, {.pfactors = {-0.5}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NEAR(displacement(run.report, " X", 2, 0), 0.01, 1e-12);
  EXPECT_NEAR(displacement(run.report, " X", 2, 1), 0.02, 1e-12);
  EXPECT_NEAR(displacement(run.report, " X", 2, 2), 0.01, 1e-12);
  EXPECT_NEAR(truss_rows(run.report, 1)[0].force, 2.0, 1e-6);
}

TEST(Stat, APatternWithFactorZeroHoldsItsEquation) {
  TrussDeck deck = elastic_bar(1.0);
  deck.prescribe(2, 1, 0.02);
  deck.stat({{.pfactors = {0.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(displacement(run.report, " X", 2), 0.0);
}

TEST(Stat, ResetOfTheFirstUnbalanceMovesTheLoadToTheSecondIteration) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.IROB = 1}});
  const auto rows = progress_rows(run_deck(deck.text()).progress);
  ASSERT_EQ(rows.size(), 2u);
  EXPECT_NEAR(rows[0].unbalance, 1.0, 1e-3);
  EXPECT_NEAR(rows[1].unbalance, 0.0, 1e-9);
}

TEST(Stat, StateUpdatesInTheStepDoNotCountTheLevelTwice) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 9, .KISTA = 1}});
  const RunResult run = run_deck(deck.text());
  const auto rows = progress_rows(run.progress);
  ASSERT_FALSE(rows.empty());
  EXPECT_DOUBLE_EQ(rows.back().level, 1.0);
  EXPECT_EQ(rows.back().step, 4);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
}

TEST(Stat, OnlyAskedLevelsAreSaved) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.125, .NSTEPS = 8, .KPOSTN = 3}});
  const RunResult run = run_deck(deck.text());
  // Saved at steps 3 and 6; the first saved step shows 0.
  EXPECT_EQ(run.levels,
            " SEQ_NO  TIME  LOAD_LEVEL UNBALANCED_FORCE MACRO MACRO_SEQ\n"
            " 0 0.000000000000000E+00 3.750000000000000E-01 0.000000000000000E+00 STAT 1\n"
            " 1 0.000000000000000E+00 7.500000000000000E-01 0.000000000000000E+00 STAT 1\n");
}

TEST(Stat, ALargeMoveOfTheLevelIsSavedWhateverTheCount) {
  TrussDeck deck = elastic_bar();
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 8, .ULTFAC = 0.4}});
  // Each quarter moves the level by more than 0.4 of the largest level: 0.25 > 0.1, 0.25 > 0.2, 0.25 < 0.3, 0.5 > 0.4.
  EXPECT_EQ(count_of(run_deck(deck.text()).levels, "STAT"), 3);
}

TEST(Stat, TopUnbalancesAreListedByFallingSize) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.NTOP = 5}});
  const RunResult run = run_deck(deck.text());
  EXPECT_NE(run.top.find(" *****  TOP OUT-OF-BALANCE FORCES IN STATIC ANALYSIS *****"), std::string::npos) << run.top;
  EXPECT_NE(run.top.find("    1\n    2    1    4.50000E-01\n"), std::string::npos) << run.top;
}

TEST(Stat, TwoProblemsInOneDeckDoNotSeeEachOther) {
  TrussDeck first = yielding_bar();
  first.stat({{}});
  TrussDeck second = elastic_bar();
  second.stat({{}});
  const RunResult both = run_deck(first.problem() + second.text());
  const RunResult alone = run_deck(second.text());
  EXPECT_EQ(both.status, 0);
  EXPECT_EQ(displacement(both.report, " X", 2), displacement(alone.report, " X", 2));
  EXPECT_EQ(count_of(both.report, "E X E C U T I O N   T I M E   L O G"), 2);
}

TEST(Stat, ACheckRunReadsEverythingAndAnalysesNothing) {
  TrussDeck deck = elastic_bar();
  deck.command = "CHEC";
  deck.stat({{}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO."), 0);
  EXPECT_NE(run.progress.find("FATAL ERRORS FOUND BEFORE THIS STATIC ANALYSIS MACRO"), std::string::npos);
  EXPECT_NE(run.progress.find("TERMINATED: FATAL ERRORS DETECTED"), std::string::npos);
  EXPECT_TRUE(run.ended);
}

TEST(Stat, ASearchOfOneTrialEndsWithTheFullLength) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.USCALE = 1.0, .TOLS = 0.5}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_NE(run.report.find("LINE SEARCH DID NOT CONVERGE AFTER   1 TRIES"), std::string::npos);
  EXPECT_NE(run.report.find("SOLUTION CONTINUED WITH STEP SIZE =   1.00000     AND UNBALANCED NORM   =     0.4500D+00"),
            std::string::npos);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
}

TEST(Stat, ASearchDoesNotMeasureItsSecondLengthAgainstTheLimits) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.USCALE = 1.0, .SUP = 0.1, .SLOW = 0.5, .TOLS = 0.5}});
  EXPECT_EQ(run_deck(deck.text()).report.find("PREDICTED LINE SEARCH LENGTH"), std::string::npos);
}

TEST(Stat, ASearchToleranceOfOneAcceptsTheFullLength) {
  TrussDeck deck = yielding_bar();
  deck.stat({{.USCALE = 1.0, .TOLS = 1.0}});
  const RunResult run = run_deck(deck.text());
  EXPECT_NE(run.report.find("LINE SEARCH CONVERGED     END LINE SEARCH - STEP SIZE =    1.0000"), std::string::npos);
}

TEST(Stat, ResetOfTheFirstUnbalanceLeavesImposedDisplacements) {
  TrussDeck deck = elastic_bar(0.0);
  deck.prescribe(2, 1, 0.02);
  deck.stat({{.IROB = 1, .pfactors = {1.0}}});
  EXPECT_NEAR(displacement(run_deck(deck.text()).report, " X", 2), 0.02, 1e-12);
}

TEST(Stat, ANewSetOfPrescribedEquationsFormsTheStiffnessWhateverTheRulesSay) {
  // The first segment has no iteration, so that its step passes the only phase in which the rules would form.
  TrussDeck deck = elastic_bar(0.0);
  deck.prescribe(2, 1, 0.02);
  deck.stat({{.MAXIT = 0, .KTERM = 2, .KSSTF = 2, .KISTF = 0, .pfactors = {0.0}},
             {.KSSTF = 2, .KISTF = 0, .pfactors = {1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.02, 1e-12);
  EXPECT_EQ(progress_rows(run.progress).back().stiffness, "YES");
}

TEST(Stat, TheStateBeforeALostStepHasThePressuresOfItsLevel) {
  // Perfectly plastic: yield force 1, load 1.5. At level 0.5 the force is 0.75 and the node pressure 50, so that the
  // reported force is 0.75 - 0.3 * 2 * 50; the second step passes the yield force and is lost.
  TrussDeck deck = loaded_bar(1.5, 0.0, 1.0);
  deck.stat({{.STEP0 = 0.5, .NSTEPS = 2, .KTERM = 1}});
  std::string text = deck.text();
  const auto change = [&](const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    ASSERT_NE(at, std::string::npos) << from;
    text.replace(at, from.size(), to);
  };
  const std::string yield = "        1.        1.\n";
  change(yield, "        1.        1.       0.3\n");
  change("    1    0    0    0    0    0    0    0\n", "    1    0    1    0    0    0    0    0\n");
  change("\n\n   -1   -1   -1\n", "\n    1PRESSURE\n    1    2    1       0.0     100.0\n\n   -1   -1   -1\n");
  change("        1.\n\n\n\n\n", "        1.\n\n        1.\n\n\n");
  const RunResult run = run_deck(text);
  EXPECT_EQ(run.status, 4) << run.errors;
  EXPECT_NE(run.report.find(" SOLUTION IS NOT FINITE"), std::string::npos);
  EXPECT_NEAR(truss_rows(run.report, 0)[0].force, 0.75 - 30.0, 1e-4);
  EXPECT_NEAR(truss_rows(run.report, 1)[0].force, 0.75 - 30.0, 1e-4) << "printed again after the lost step";
}

/// Two bars at right angles, loaded by 3 and 4, and a moment of 7 on a free rotation.
TrussDeck corner_with_moment() {
  TrussDeck deck;
  deck.node(10, 0, 0);
  deck.node(0, 10, 0);
  deck.node(0, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "111111");
  deck.fix(3, "001110");
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 3);
  deck.bar(2, 3);
  deck.pattern(3, 3, 4, 0, 7);
  return deck;
}

TEST(Stat, TheAppliedLoadIsMeasuredAsTheUnbalanceIs) {
  // Largest entry 4 or root of the sum of squares 5; with the moment 7, or root of 74.
  const double expected[2][2] = {{4.0, 7.0}, {5.0, std::sqrt(74.0)}};
  for (const int type : {0, 1}) {
    for (const int moments : {0, 1}) {
      TrussDeck deck = corner_with_moment();
      deck.stat({{.MAXIT = 1, .KTERM = 2, .KUTYPE = type, .KUMOM = moments}});
      const auto rows = progress_rows(run_deck(deck.text()).progress);
      ASSERT_EQ(rows.size(), 1u);
      EXPECT_NEAR(rows[0].applied, expected[type][moments], 6e-3 * expected[type][moments]);
    }
  }
}

TEST(Stat, AnUnbalancedMomentCountsOnlyWhenAskedFor) {
  for (const int moments : {0, 1}) {
    TrussDeck deck = corner_with_moment();
    deck.stat({{.MAXIT = 1, .KTERM = 2, .KUMOM = moments}});
    const auto rows = progress_rows(run_deck(deck.text()).progress);
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_NEAR(rows[0].unbalance, moments == 1 ? 7.0 : 0.0, 0.05) << "no truss resists a moment";
  }
}

TEST(Stat, TheWeightedNormComparesEnergies) {
  // K = 100 on the one equation: after the first iteration RU = 0.45, P = 1.5, R = 1.05, so 0.45 / 1.5 = 0.3; no
  // reference norm of the load is formed.
  TrussDeck deck = yielding_bar();
  deck.stat({{.KUTYPE = 2}});
  const auto rows = progress_rows(run_deck(deck.text()).progress);
  ASSERT_GE(rows.size(), 1u);
  EXPECT_NEAR(rows[0].unbalance, 0.3, 1e-3);
  EXPECT_EQ(rows[0].applied, 0.0);
}

TEST(Stat, AMechanismIsNeverReportedAsSolved) {
  // A single bar along X cannot carry a load across: the only stiffness left is the tiny one of a bare diagonal.
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "001111");
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 2);
  deck.pattern(2, 0, 1e308, 0);
  deck.stat({{.KTERM = 2}});
  const RunResult run = run_deck(deck.text());
  EXPECT_NE(run.report.find("WWWWW D. O. F.     2 HAS ZERO STIFFNESS WWWWW"), std::string::npos);
  EXPECT_NE(run.report.find(" SOLUTION IS NOT FINITE"), std::string::npos);
  // Back-substitution multiplies the infinite displacement into the row above it: equation 1 is the first that is lost.
  EXPECT_NE(run.report.find("AT NODE     2  DIRECTION 1"), std::string::npos);
  EXPECT_EQ(run.progress.find("COMPLETED"), std::string::npos);
  EXPECT_EQ(run.status, 4);
}

}  // namespace
}  // namespace tidearc::test
