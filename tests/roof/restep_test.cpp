// Resteps: a step that does not come to rest is taken again, smaller, from the state at its start.
#include <gtest/gtest.h>

#include <string>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// Restep card: reduction 0.5, smallest step, attempts, lower iteration limit, increase factor, largest step, greatest
/// unbalance.
std::string restep_card(const char* stepmin, int attempts, int itlow, const char* increase, const char* umax = "") {
  char card[128];
  std::snprintf(card, sizeof card, "%10s%10s%5d%5d%10s%10s%5d%10s%10s%10s", "0.5", stepmin, attempts, itlow, increase,
                "1.0", 0, "", "", umax);
  return card;
}

/// One bar of length 10 along X: EA 1000, yield at force 1, hardening `ratio`.
TrussDeck bar(double ratio, double load) { return loaded_bar(load, ratio, 1.0); }

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Restep, HalvesTheStepWhenTheIterationsAreUsedUp) {
  // One iteration a step: the load that crosses the yield point cannot come to rest in one, until its step is so small
  // that the unbalance stays within the tolerance.
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat(
      {{.STEP0 = 1.0, .NSTEPS = 50, .MAXIT = 1, .KTERM = 0, .TOLU = 0.02, .card4 = restep_card("0.001", 1, 0, "1.0")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_TRUE(has(run.report, "PREDICTED NONCONVERGENCE - RESTART STEP   1 WITH STEP SIZE =   0.5000D+00"))
      << run.report;
  EXPECT_TRUE(has(run.report, "STATE AT BEGINNING OF STEP RECOVERED"));
  EXPECT_TRUE(has(run.report, "STATE SAVED FOR POSSIBLE RESTEP"));
  EXPECT_DOUBLE_EQ(progress_rows(run.progress).back().level, 1.0);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 0.002);
}

TEST(Restep, LeavesNoTraceOfTheRejectedTrial) {
  // The rejected full step would leave plastic extension behind; the accepted path ends exactly on the hardening
  // branch.
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.STEP0 = 1.0, .NSTEPS = 50, .MAXIT = 2, .KTERM = 0, .card4 = restep_card("0.001", 1, 0, "1.0", "0.2")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_TRUE(has(run.report, " RESTEPPING DUE TO LARGE UNBALANCE FORCE "));
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
  EXPECT_NEAR(truss_rows(run.report)[0].positive, 0.05, 1e-6);
}

TEST(Restep, DoesNotRepeatTheStepHeadingNorMoveTheStepCount) {
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.STEP0 = 1.0, .NSTEPS = 50, .MAXIT = 2, .KTERM = 0, .card4 = restep_card("0.001", 1, 0, "1.0", "0.2")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(count_of(run.report, "BEGIN LOAD STEP NO.  1"), 1);
}

TEST(Restep, IsSuspendedWhenTheSmallestStepFailsTooOften) {
  // The step that crosses the yield point cannot come to rest in one iteration, whatever its size.
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.NSTEPS = 50, .MAXIT = 1, .KTERM = 0, .card4 = restep_card("0.125", 1, 0, "1.0")}, {}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.report, "    1 ATTEMPTS TO REDUCE STEP SIZE BELOW    0.12500D+00     ANALYSIS SUSPENDED"));
  EXPECT_TRUE(has(run.progress,
                  "SEGMENT  1 OF CURRENT STATIC MACRO TERMINATED: REACHING MAX. ALLOWABLE NO. OF ATTEMPTS IN REDUCING "
                  "STEP SIZE BELOW THE SMALLEST ALLOWABLE)"));
  EXPECT_TRUE(has(run.progress, "STATIC MACRO NUMBER  1 TERMINATED: FATAL ERRORS DETECTED"));
  EXPECT_FALSE(has(run.progress, "SEGMENT  1 OF CURRENT STATIC MACRO COMPLETED"));
  // The trial is taken as it stands: level 0.75, elastically reached, 1.125 where 1.0125 is carried.
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.01125, 1e-7);
}

TEST(Restep, WithoutAnAttemptLimitGoesOnAtTheSmallestStep) {
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.NSTEPS = 50, .MAXIT = 1, .KTERM = 0, .KPRINT = 0, .card4 = restep_card("0.125", 0, 0, "1.0")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(has(run.report, "SOLUTION HAS NOT CONVERGED AFTER     1 ITERATIONS- ANALYSIS CONTINUED"));
  const auto rows = progress_rows(run.progress);
  EXPECT_DOUBLE_EQ(rows.back().level, 1.0);
  // The accepted trial writes its row twice: as it failed, and with the new step size.
  const auto twice = [&](std::size_t i) {
    return rows[i].step == rows[i - 1].step && rows[i].level == rows[i - 1].level;
  };
  bool found = false;
  for (std::size_t i = 1; i < rows.size(); ++i) found = found || twice(i);
  EXPECT_TRUE(found);
}

TEST(Restep, AStateThatIsNotFiniteIsNeverAcceptedAtTheSmallestStep) {
  // Without hardening the stiffness is zero beyond the yield force, and the solve divides zero by zero.
  TrussDeck deck = bar(0.0, 1.5);
  deck.stat({{.NSTEPS = 50, .MAXIT = 3, .KTERM = 0, .card4 = restep_card("0.125", 2, 0, "1.0")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.report, " SOLUTION IS NOT FINITE"));
  EXPECT_TRUE(has(run.progress, "TERMINATED: MAX. ALLOWABLE NUMBER OF ITERATIONS REACHED"));
  // The last accepted step stands: level 0.625, force 0.9375.
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.009375, 1e-8);
  EXPECT_NEAR(truss_rows(run.report)[0].force, 0.9375, 1e-5);
}

TEST(Restep, AStepThatNeededFewIterationsGrows) {
  TrussDeck deck = bar(0.1, 0.5);
  deck.stat({{.STEP0 = 0.125, .NSTEPS = 50, .MAXIT = 5, .KTERM = 0, .card4 = restep_card("0.001", 1, 3, "2.0")}});
  const RunResult run = run_deck(deck.text());
  const auto rows = progress_rows(run.progress);
  ASSERT_GE(rows.size(), 3u);
  EXPECT_DOUBLE_EQ(rows[0].increment, 0.125);
  EXPECT_DOUBLE_EQ(rows[1].increment, 0.125 * 1.0) << "the largest step is 1.0 times the initial one";
  EXPECT_TRUE(has(run.report, "NUMBER OF ITERATIONS TO CONVERGE WAS LESS THAN    3     NEW STEP SIZE =    0.25000D+00"))
      << run.report;
}

TEST(Restep, AReductionThatDoesNotReduceIsNotRepeatedForEver) {
  for (const char* factor : {"1.0", "2.0"}) {
    TrussDeck deck = bar(0.1, 1.5);
    std::string card = restep_card("0.001", 1, 0, "1.0");
    card.replace(0, 10, std::string(7, ' ') + factor);
    deck.stat({{.MAXIT = 1, .KTERM = 0, .card4 = card}});
    const RunResult run = run_deck(deck.text());
    EXPECT_TRUE(has(run.report, "ANALYSIS SUSPENDED"));
    EXPECT_EQ(run.status, 4);
  }
}

TEST(Restep, ANegativeSmallestStepEndsWhenTheDigitsDo) {
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.MAXIT = 1, .KTERM = 0, .KPRINT = 0, .TOLU = -1.0, .card4 = restep_card("-1.0", 1, 0, "1.0")}});
  EXPECT_EQ(run_deck(deck.text()).status, 4);
}

TEST(Restep, ANegativeSmallestStepWithoutAnAttemptLimitEndsWithAnEmptyStep) {
  // Taken as it stands, -1.0 would turn the step round at the smallest size and let reductions begin anew, for ever.
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.MAXIT = 2, .KTERM = 0, .KPRINT = 0, .TOLU = -1.0, .card4 = restep_card("-1.0", 0, 0, "1.0")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_EQ(progress_rows(run.progress).back().increment, 0.0);
  EXPECT_TRUE(has(run.report, " ANALYSIS CONTINUED"));
}

TEST(Restep, TheSecondAttemptBelowTheSmallestStepSuspends) {
  // Two yield points are crossed, in tension and, two segments later, again: each crossing step fails in one iteration.
  TrussDeck deck = bar(0.1, 1.5);
  const std::string card = restep_card("0.125", 2, 0, "1.0");
  deck.stat({{.NSTEPS = 50, .MAXIT = 1, .KTERM = 0, .card4 = card}});
  const RunResult once = run_deck(deck.text());
  EXPECT_EQ(once.status, 0) << "one attempt is below the limit";
  EXPECT_FALSE(has(once.report, "ANALYSIS SUSPENDED"));
}

TEST(Restep, ARefusedTrialAtTheSmallestStepIsTakenAndIteratedOn) {
  // The unbalance of 0.45 is above the limit of 0.2, and no smaller step is allowed: the second iteration closes it.
  TrussDeck deck = bar(0.1, 1.5);
  deck.stat({{.KTERM = 0, .card4 = restep_card("1.0", 0, 0, "1.0", "0.2")}});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_EQ(progress_rows(run.progress).back().iteration, 2);
  EXPECT_NEAR(run.U.at(0), 0.06, 1e-12);
  EXPECT_NEAR(run.DSTEP.at(0), 0.06, 1e-12);
}

TEST(Restep, AttemptsAreCountedInEachSegmentAnew) {
  // Yield in tension is one attempt in the first segment; unloading with the stiffness of the yielded bar are two in
  // the second. Three suspend.
  TrussDeck deck = bar(0.1, 1.5);
  const SegmentCards first{
      .NSTEPS = 50, .MAXIT = 1, .KTERM = 0, .FQUIT = -1.0, .card4 = restep_card("0.125", 3, 0, "1.0")};
  SegmentCards second = first;
  second.factors = {-2.0};
  second.NSTEPS = 2;
  deck.stat({first, second});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_EQ(count_of(run.report, " ANALYSIS CONTINUED"), 3);
}

TEST(Restep, AStepTakenOutOfBalanceDoesNotGrow) {
  // No step of one iteration comes to rest within a tolerance below zero, and fewer than three are few.
  TrussDeck deck = bar(0.1, 0.5);
  deck.stat(
      {{.STEP0 = 0.125, .NSTEPS = 2, .MAXIT = 1, .KTERM = 0, .TOLU = -1.0, .card4 = restep_card("0.5", 0, 3, "2.0")}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0);
  EXPECT_FALSE(has(run.report, "NEW STEP SIZE"));
  EXPECT_DOUBLE_EQ(progress_rows(run.progress).back().increment, 0.0625);
}

TEST(Restep, DesiredIterationsShrinkTheStepAfterConvergence) {
  // Two iterations at the yield point where one is desired: sqrt(1 / (2 - 1)) is 1; three would shrink.
  TrussDeck deck = bar(0.1, 0.5);
  deck.stat(
      {{.STEP0 = 0.125, .NSTEPS = 50, .MAXIT = 5, .KTERM = 0, .card4 = restep_card("0.001", 1, 0, "9.0") + "    4"}});
  const RunResult run = run_deck(deck.text());
  // Each step takes one iteration: the factor is sqrt(4) = 2, capped by the largest step.
  EXPECT_TRUE(
      has(run.report, "NUMBER OF ITERATIONS TO CONVERGE WAS LESS THAN    0     NEW STEP SIZE =    0.25000D+00"));
}

TEST(Restep, PredictionRestepsBeforeTheIterationsAreUsedUp) {
  // At constant stiffness the unbalance 0.45 falls by the factor 0.9 an iteration: far more than twenty are needed.
  TrussDeck deck = bar(0.1, 1.5);
  std::string card = restep_card("0.25", 1, 0, "1.0");
  card.replace(50, 5, "    2");
  deck.stat({{.MAXIT = 20, .KTERM = 0, .KSSTF = 2, .KISTF = 0, .TOLU = 1e-3, .card4 = card}});
  const RunResult run = run_deck(deck.text());
  EXPECT_TRUE(has(run.report, "CONVERGENCE PREDICTION - ")) << run.report;
  EXPECT_TRUE(has(run.report, "PREDICTED NONCONVERGENCE - RESTART STEP   1 WITH STEP SIZE =   0.5000D+00"));
  EXPECT_LT(progress_rows(run.progress)[1].iteration, 3);
}

TEST(Restep, NeverFiresWithoutItsCode) {
  TrussDeck deck = bar(0.1, 0.5);
  deck.stat({{.STEP0 = 0.125, .NSTEPS = 50, .KTERM = 1}});
  const RunResult run = run_deck(deck.text());
  EXPECT_FALSE(has(run.report, "NEW STEP SIZE"));
  EXPECT_FALSE(has(run.report, "STATE SAVED FOR POSSIBLE RESTEP"));
}

TEST(Restep, AfterAResetTheRotationsOfATrussStillHaveTheirSmallStiffness) {
  // Rotations are left free: their diagonals are swept in the first step, and again after the reset of a later restep.
  TrussDeck deck = bar(0.1, 1.5);
  std::string text = deck.text();
  TrussDeck free_rotations;
  free_rotations.node(0, 0, 0);
  free_rotations.node(10, 0, 0);
  free_rotations.fix(1, "111111");
  free_rotations.fix(2, "011000");
  free_rotations.material(1000, 0.1, 1, 1);
  free_rotations.section(1);
  free_rotations.bar(1, 2);
  free_rotations.pattern(2, 1.5, 0, 0);
  free_rotations.stat(
      {{.STEP0 = 0.5, .NSTEPS = 50, .MAXIT = 2, .KTERM = 0, .card4 = restep_card("0.001", 1, 0, "1.0", "0.2")}});
  const RunResult run = run_deck(free_rotations.text());
  EXPECT_EQ(run.status, 0) << run.report;
  EXPECT_TRUE(has(run.report, "RESTART STEP   2"));
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.06, 1e-7);
  EXPECT_GE(count_of(run.report, "WWWWW D. O. F.     2 HAS ZERO STIFFNESS WWWWW"), 2);
}

}  // namespace
}  // namespace tidearc::test
