// What a static analysis prints and saves: headings, progress table, reports by code, saved levels, largest unbalances.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// One bar of length 10 along X: EA 1000, yield at force 1, hardening 0.1.
TrussDeck bar(double load) { return loaded_bar(load, 0.1, 1.0); }

RunResult run_segment(const SegmentCards& segment, double load = 0.5) {
  TrussDeck deck = bar(load);
  deck.stat({segment});
  return run_deck(deck.text());
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(StatOutput, TheMacroTellsItsCard) {
  const RunResult run = run_segment({});
  const std::string stars = " ***********************************\n";
  EXPECT_TRUE(has(run.report, stars + " STATIC ANALYSIS CONTROL INFORMATION\n" + stars));
  EXPECT_TRUE(has(run.report, "     NUMBER OF ANALYSIS SEGMENTS .................... =    1\n"));
  EXPECT_TRUE(has(run.report, "     ANALYSIS LABEL ........................... SEGMENTS"));
  EXPECT_TRUE(has(run.progress, " SEGMENTS"));
  EXPECT_TRUE(has(run.progress, " - STATIC ANALYSIS\n     START OF STATIC MACRO: NUMBER =  1\n"));
}

TEST(StatOutput, TheTableHasItsLegendAndHeads) {
  const RunResult run = run_segment({.MAXIT = 12, .TOLU = 0.25});
  EXPECT_TRUE(has(test::trimmed(run.progress),
                  "     STATIC MACRO OUTPUT INFORMATION FOR SEGMENT  1\n"
                  "     (1) - CURRENT STEP NUMBER\n"
                  "     (2) - CURRENT ITERATION NUMBER (MAX=12)\n"
                  "     (3) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)\n"
                  "     (4) - LOAD LEVEL (NORMALLY ONLY UP TO 1.0)\n"
                  "     (5) - LOAD INCREMENT LEVEL (<= 1.0)\n"
                  "     (6) - NORM OF APPLIED LOAD\n"
                  "     (7) - NORM OF OUT-OF-BALANCE LOAD (MAX=.250E+00)\n"
                  "     (8) - STATE UPDATE CODE\n"
                  "     (9) - STIFFNESS UPDATE CODE\n"
                  "     (10)- TOTAL NUMBER OF STIFFNESS REFORMULATIONS\n"
                  "     (11)- ARC LENGTH\n"
                  "     (12)- CURRENT STIFFNESS PARAMETER\n"
                  "     (13)- NUMBER OF NEGATIVE STIFFNESS DIAGONALS\n"));
  EXPECT_TRUE(has(run.progress,
                  "   (1) (2) (3)    (4)    (5)     (6)     (7)    (8) (9) (10)     (11)       (12)      (13)\n"
                  "  STEP ITR LOAD   LOAD  INCRE  APPLIED UNBALANC STA STF STIF   CURRENT    CURRENT     NEG.\n"
                  "    #   #  STEP  ----LEVEL--- ---LOAD(NORM)---- UPDATED   #  ARC-LENGTH  STIFFNESS    DIAGS.\n"
                  "      1  1    1  1.0000 1.00000 .500E+00 .000E+00 YES YES    1   0.0000       0.0000        0\n"));
}

TEST(StatOutput, AStepTellsItsPhasesInTheirOrder) {
  const RunResult run = run_segment({.KPRINT = 0});
  const std::string stars = " **************************************************\n";
  const std::string dashes = " --------------------------------------------------\n";
  EXPECT_TRUE(has(run.report, stars + "     BEGIN LOAD STEP NO.  1\n" + stars + dashes +
                                  "     BEGIN ITERATION NO.  1\n" + dashes +
                                  "     STEP LOAD FORMED\n     STATE UPDATED\n     STIFFNESS FORMED\n"
                                  "     STATE DETERMINATION\n\n"
                                  " RESPONSE AT LOAD STEP    1     ITERATION NO.    1     LOAD LEVEL =   1.00000\n"))
      << run.report;
}

TEST(StatOutput, ReportsComeWhereTheirCodeAsksForThem) {
  const auto reports = [](int KPRINT) {
    return count_of(run_segment({.STEP0 = 0.25, .NSTEPS = 4, .KPRINT = KPRINT}).report, "RESULTS FOR GROUP  1");
  };
  EXPECT_EQ(reports(0), 0);
  EXPECT_EQ(reports(1), 1) << "end of segment";
  EXPECT_EQ(reports(2), 4) << "every step";
  EXPECT_EQ(reports(3), 4) << "every iteration, of which each step takes one";
}

TEST(StatOutput, AnIterationReportHasItsHeading) {
  const RunResult run = run_segment({.KPRINT = 3}, 1.5);
  EXPECT_TRUE(
      has(run.report,
          "     ITERATION NO.            ..........=    2\n     APPLIED LOAD LEVEL  ...............=   1.00000\n"));
  EXPECT_EQ(count_of(run.report, "RESULTS FOR GROUP  1"), 2);
}

TEST(StatOutput, NegativeStepCountsAskForEnvelopesAtTheEndOfTheSegment) {
  const RunResult run = run_segment({.STEP0 = 0.5, .NSTEPS = -2}, 1.5);
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO."), 2);
  EXPECT_EQ(count_of(run.report, " NODAL DISPLACEMENT ENVELOPES"), 1);
  EXPECT_EQ(count_of(run.report, " RESPONSE ENVELOPES, ELEMENT GROUP  1"), 1);
}

TEST(StatOutput, ElementEnvelopesOutlastTheMacro) {
  TrussDeck deck = bar(0.8);
  deck.stat({{}});
  deck.stat({{.NSTEPS = -1, .factors = {-1.0}}});
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0);
  EXPECT_TRUE(has(run.report.substr(run.report.find(" RESPONSE ENVELOPES")), "0.8000E+00"))
      << "the largest force is that of the first macro";
}

TEST(StatOutput, AccumulatedFactorsAndTheirResultants) {
  TrussDeck deck = bar(0.5);
  deck.pattern(2, 0.25, 0, 0);
  deck.stat({{.STEP0 = 0.5, .NSTEPS = 1, .factors = {1.0, -2.0}}});
  const RunResult run = run_deck(deck.text());
  // Level 0.5: factors 0.5 and -1.0; 0.5 * 0.5 - 1.0 * 0.25 = 0.
  EXPECT_TRUE(has(run.report, "    1     0.50000    2    -1.00000\n")) << run.report;
  EXPECT_TRUE(has(run.report, "TOTAL ACCUMULATED STATIC NODAL FORCES AND MOMENTS:"));
  TrussDeck single = bar(0.5);
  single.stat({{.STEP0 = 0.5, .NSTEPS = 1}});
  const std::string report = run_deck(single.text()).report;
  const std::string table = report.substr(report.find("TOTAL ACCUMULATED STATIC NODAL FORCES AND MOMENTS:"));
  EXPECT_TRUE(has(table, "FX           FY           FZ           MX           MY           MZ\n"));
  EXPECT_TRUE(has(table, "       0.25000       0.0000 ")) << table;
}

TEST(StatOutput, DebugLinesRepeatTheirGroups) {
  TrussDeck deck;
  for (int n = 0; n < 4; ++n) deck.node(10.0 * n, 0, 0);
  deck.fix(1, "111111");
  for (int n = 2; n <= 4; ++n) deck.fix(n, "011111");
  deck.material(1000);
  deck.section(1);
  for (int n = 1; n < 4; ++n) deck.bar(n, n + 1);
  deck.pattern(4, 1, 0, 0);
  deck.stat({{.MACPR = 1}});
  const RunResult run = run_deck(deck.text());
  // Three unbalances and three reference loads fill one record of six; after the solve du is 0.01, 0.02, 0.03.
  EXPECT_TRUE(has(run.report,
                  "  *NS,NI,RU,RA=   1  1  0.00000D+00  0.00000D+00  0.10000D+01  0.00000D+00  0.00000D+00  "
                  "0.00000D+00\n"))
      << run.report;
  EXPECT_TRUE(has(run.report, "  *NS,NI,RU,RA=   1  1  0.10000D-01  0.20000D-01  0.30000D-01"));
  EXPECT_TRUE(has(run.report, "  *NS,NI,RINC,DDIS=   1  1  0.00000D+00  0.00000D+00  0.10000D+01"));
}

TEST(StatOutput, UnsavedStepsAreSavedAtTheEndOfTheSegment) {
  // Saved at step 2; step 3 is left over and saved with the level that was reached.
  const RunResult run = run_segment({.STEP0 = 0.25, .NSTEPS = 3, .KPOST = 1, .KPOSTN = 2});
  EXPECT_EQ(count_of(run.levels, " STAT "), 2) << run.levels;
  EXPECT_TRUE(has(run.levels, " 1 0.000000000000000E+00 7.500000000000000E-01")) << run.levels;
  EXPECT_EQ(count_of(run_segment({.STEP0 = 0.25, .NSTEPS = 4, .KPOST = 1, .KPOSTN = 2}).levels, " STAT "), 2)
      << "nothing is left over";
}

TEST(StatOutput, ALostStepIsNotAnUnsavedStep) {
  TrussDeck deck = bar(0.5);
  deck.pattern(2, 1e308, 0, 0);
  deck.stat({{.STEP0 = 0.5, .NSTEPS = 1, .KPOST = 1, .KPOSTN = 1, .factors = {1.0, 0.0}},
             {.KTERM = 2, .KPOST = 1, .KPOSTN = 1, .factors = {0.0, 1e300}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.report, " SOLUTION IS NOT FINITE"));
  EXPECT_EQ(count_of(run.levels, " STAT "), 1) << run.levels;
}

TEST(StatOutput, EqualUnbalancesAreListedLowerEquationFirst) {
  // Two equal bars to two loaded nodes: both yield alike and are out of balance alike.
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.node(-10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.fix(3, "011111");
  deck.material(1000, 0.1, 1, 1);
  deck.section(1);
  deck.bar(1, 2);
  deck.bar(1, 3);
  deck.pattern(2, 1.5, 0, 0);
  deck.pattern(3, -1.5, 0, 0);
  deck.stat({{.NTOP = 9, .factors = {1.0, 1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_TRUE(has(run.top, " LOAD STEP "));
  EXPECT_TRUE(has(run.top, " NODE  DOF   OUT-OF-BALANCE "));
  EXPECT_TRUE(has(run.top, "    1\n    2    1    4.50000E-01\n    3    1   -4.50000E-01\n    1\n")) << run.top;
  EXPECT_EQ(count_of(run.top, "\n    1\n"), 3) << "two iterations and the end of the step";
}

TEST(StatOutput, AFatalCardEndsTheSegmentWithItsCode) {
  TrussDeck deck = bar(0.5);
  deck.stat({{}, {}});
  std::string text = deck.text();
  const std::size_t card = text.find("    1    0              0    1");
  ASSERT_NE(card, std::string::npos);
  text.replace(card + 25, 5, "    6");  // step direction code above 5
  const RunResult run = run_deck(text);
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.progress, "SEGMENT  1 OF CURRENT STATIC MACRO TERMINATED: FATAL ERRORS FOUND IN INPUT CARDS"));
  EXPECT_TRUE(has(run.progress, "STATIC MACRO NUMBER  1 TERMINATED: FATAL ERRORS DETECTED"));
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP"), 0);
  EXPECT_EQ(count_of(run.report, "LOAD SEGMENT NO."), 2) << "the second segment reads its cards";
}

TEST(StatOutput, AFatalCardOfADataCheckShowsInTheExitStatus) {
  TrussDeck deck = bar(0.5);
  deck.command = "CHEC";
  deck.stat({{}});
  std::string text = deck.text();
  text.replace(text.find("    1    0              0    1") + 25, 5, "    6");
  EXPECT_EQ(run_deck(text).status, 3);
}

TEST(StatOutput, StiffnessBySteps) {
  // Without iteration control the stiffness is formed once a macro, whatever the number of steps.
  TrussDeck deck = bar(0.5);
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 4, .KISTF = 0}});
  deck.stat({{.STEP0 = 0.25, .NSTEPS = 4, .KISTF = 0, .factors = {-1.0}}});
  const RunResult run = run_deck(deck.text());
  // A step control of 1 sets an iteration control of 0 to 1, so the step control is 2 here.
  EXPECT_EQ(run.status, 0);
  TrussDeck by_steps = bar(0.5);
  by_steps.stat({{.STEP0 = 0.25, .NSTEPS = 4, .KSSTF = 2, .KISTF = 0}});
  by_steps.stat({{.STEP0 = 0.25, .NSTEPS = 4, .KSSTF = 2, .KISTF = 0, .factors = {-1.0}}});
  const auto rows = progress_rows(run_deck(by_steps.text()).progress);
  ASSERT_EQ(rows.size(), 8u);
  EXPECT_EQ(rows[3].formations, 1);
  EXPECT_EQ(rows[4].formations, 2);
  EXPECT_EQ(rows[7].formations, 2);
  EXPECT_EQ(rows[1].stiffness, "NO ");
}

TEST(StatOutput, NegativeEventCodesScanNothing) {
  const RunResult run = run_segment({.KEVENT = -1});
  EXPECT_EQ(run.status, 0) << run.errors;
}

TEST(StatOutput, StepsWithoutIterationsAreTakenAsTheyAre) {
  for (const int MAXIT : {0, -3}) {
    const RunResult stopped = run_segment({.MAXIT = MAXIT, .KTERM = 1});
    EXPECT_EQ(stopped.status, 4);
    const RunResult continued = run_segment({.MAXIT = MAXIT, .KTERM = 2});
    EXPECT_EQ(continued.status, 0);
    EXPECT_EQ(displacement(continued.report, " X", 2), 0.0);
  }
}

TEST(StatOutput, AnInfiniteForceBetweenHeldNodesIsSeen) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 2, 1, 1, 1);
  deck.prescribe(2, 1, 1e200);
  deck.stat({{.factors = {}, .pfactors = {1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.report, " SOLUTION IS NOT FINITE"));
  EXPECT_FALSE(has(run.progress, "COMPLETED"));
}

}  // namespace
}  // namespace tidearc::test
