// Update vectors and line searches: iterations that save factorisations.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "solve/bfgs.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// The shallow two-bar truss with its apex beside the middle, under a load not far below its limit: the stiffness falls
/// to a small part of the first one.
TrussDeck softening_truss(double load = 45.0) { return two_bar_truss(load, 1.0); }

/// Bars of EA/L 100 and 200 in a row, which yield at 1 and 2; node 3 is imposed.
TrussDeck imposed_row() {
  TrussDeck deck = bars_in_a_row(20.0, 2.0, 0.1, 1.0);
  deck.prescribe(3, 1, 0.1);
  return deck;
}

/// The stiffness is formed at every 20th iteration.
SegmentCards modified_newton() {
  SegmentCards cards;
  cards.MAXIT = 200;
  cards.KISTF = 20;
  cards.TOLU = 1e-6;
  return cards;
}

/// Unbalance of the softening truss at an apex displacement, by the bars alone.
double unbalance_of_apex(double u, double v, double load) {
  double fx = 0.0, fz = -load;
  for (const double end : {-10.0, 10.0}) {
    const double x = 1.0 - end;
    const double L = std::hypot(x, 0.5), l = std::hypot(x + u, 0.5 + v);
    const double N = 1.0e6 * (l / L - 1.0);
    fx -= N * (x + u) / l;
    fz -= N * (0.5 + v) / l;
  }
  return std::max(std::abs(fx), std::abs(fz));
}

TEST(UpdateVectors, SaveFactorisations) {
  std::vector<int> iterations, formations;
  for (const int KBFGS : {0, 1}) {
    TrussDeck deck = softening_truss();
    SegmentCards cards = modified_newton();
    cards.KBFGS = KBFGS;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_LT(unbalance_of_apex(run.U[0], run.U[1], 45.0), 2e-6);
    const ProgressRow last = progress_rows(run.progress).back();
    iterations.push_back(last.iteration);
    formations.push_back(last.formations);
    EXPECT_EQ(count_of(run.report, "     BFGS STIFFNESS MODIFICATION\n"),
              KBFGS == 0 ? 0 : last.iteration - last.formations)
        << "in every iteration that does not form the stiffness";
  }
  RecordProperty("iterations_without", iterations[0]);
  RecordProperty("iterations_with", iterations[1]);
  EXPECT_EQ(formations[0], 2) << iterations[0] << " iterations";
  EXPECT_EQ(formations[1], 1) << iterations[1] << " iterations";
  EXPECT_LT(iterations[1], iterations[0]);
}

TEST(UpdateVectors, ServeTheReferenceSolutionToo) {
  // Arcs with the stiffness of the first iteration of each step alone.
  constexpr double load = 100.0;
  for (const int KISTF : {1, 30}) {
    TrussDeck deck = softening_truss(load);
    SegmentCards cards = modified_newton();
    cards.KISTF = KISTF;
    cards.MAXIT = 40;
    cards.KBFGS = 1;
    cards.KSTEP = 2;
    cards.KNMS = 1;
    cards.KDIR = 4;
    cards.KITER = 2;
    cards.KIPAR = 2;
    cards.ARCL = 0.04;
    cards.STEP0 = 0.1;
    cards.NSTEPS = 10;
    cards.FQUIT = -10.0;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    ASSERT_EQ(run.status, 0) << run.errors << run.progress;
    EXPECT_LT(unbalance_of_apex(run.U[0], run.U[1], load * run.accumulated), 2e-6);
    EXPECT_NEAR(std::hypot(run.DSTEP[0], run.DSTEP[1]), 0.04, 1e-12);
    const ProgressRow last = progress_rows(run.progress).back();
    EXPECT_TRUE(KISTF == 1 || last.formations == 10) << "one in each step";
    EXPECT_GT(last.iteration, 1);
  }
}

TEST(UpdateVectors, ContinueOverTheEndOfAStep) {
  // KISTF 0: the stiffness is formed in the first iteration of the macro alone.
  TrussDeck deck = softening_truss();
  SegmentCards cards = modified_newton();
  cards.KSSTF = 2;
  cards.KISTF = 0;
  cards.KBFGS = 1;
  cards.STEP0 = 0.25;
  cards.NSTEPS = 3;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors << run.progress;
  EXPECT_EQ(progress_rows(run.progress).back().formations, 1);
  const std::vector<std::string> lines = lines_of(run.report);
  bool in_second = false, modified_at_once = false;
  for (const std::string& line : lines) {
    if (line.find("BEGIN LOAD STEP NO.  2") != std::string::npos) in_second = true;
    if (in_second && line.find("BEGIN ITERATION NO.  2") != std::string::npos) break;
    if (in_second && line.find("BFGS STIFFNESS MODIFICATION") != std::string::npos) modified_at_once = true;
  }
  EXPECT_TRUE(modified_at_once) << "the pair of the last iteration of step 1 serves the first of step 2";
  EXPECT_LT(unbalance_of_apex(run.U[0], run.U[1], 45.0 * 0.75), 2e-6);
}

TEST(UpdateVectors, AreForgottenByARestep) {
  // KISTF 0: the step that is taken anew does not form the stiffness in its first iteration, nor has it pairs.
  TrussDeck deck = softening_truss();
  SegmentCards cards = modified_newton();
  cards.KSSTF = 2;
  cards.KISTF = 0;
  cards.KBFGS = 1;
  cards.MAXIT = 3;
  cards.STEP0 = 0.5;
  cards.NSTEPS = 1;
  cards.KTERM = 0;
  cards.card4 = "       0.5       0.5";
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  const std::size_t recovered = run.report.find("STATE AT BEGINNING OF STEP RECOVERED");
  ASSERT_NE(recovered, std::string::npos) << run.progress;
  const std::size_t second = run.report.find("BEGIN ITERATION NO.  2", recovered);
  ASSERT_NE(second, std::string::npos);
  EXPECT_LT(run.report.find("BFGS STIFFNESS MODIFICATION"), recovered);
  EXPECT_GT(run.report.find("BFGS STIFFNESS MODIFICATION", recovered), second);
}

TEST(UpdateVectors, AreForgottenByAFactorisation) {
  // Formed in iterations 1 and 4: iterations 5 and 6 each store a pair, and those of 2 and 3 are gone.
  TrussDeck deck = softening_truss();
  SegmentCards cards = modified_newton();
  cards.KBFGS = 1;
  cards.KISTF = 3;
  cards.MAXIT = 6;
  cards.KTERM = 2;
  cards.TOLU = -1.0;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(progress_rows(run.progress).back().formations, 2) << run.progress;
  EXPECT_EQ(bfgs.NBFGS, 2);
}

TEST(UpdateVectors, AreForgottenAtAnEvent) {
  // The bars yield at 450 in iteration 2, behind the pair of iteration 1; the pairs of 2, 3 and 4 follow.
  TrussDeck deck = two_bar_truss(40.0, 0.0, 0.9, 450.0);
  SegmentCards cards = modified_newton();
  cards.KBFGS = 1;
  cards.KEVENT = 1;
  cards.MAXIT = 5;
  cards.KTERM = 2;
  cards.TOLU = -1.0;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  const std::size_t event = run.report.rfind("EVENT PREDICTED");
  ASSERT_NE(event, std::string::npos);
  ASSERT_GT(event, run.report.find("BFGS STIFFNESS MODIFICATION"));
  ASSERT_LT(event, run.report.find("BEGIN ITERATION NO.  3"));
  EXPECT_EQ(bfgs.NBFGS, 3);
}

TEST(UpdateVectors, LeaveWhatIsImposed) {
  // Node 2 follows. The force on node 3 changes in every iteration, and is no part of a pair.
  TrussDeck deck = imposed_row();
  SegmentCards cards = modified_newton();
  cards.KBFGS = 1;
  cards.factors = {};
  cards.pfactors = {1.0};
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_GE(count_of(run.report, "BFGS STIFFNESS MODIFICATION"), 2);
  EXPECT_EQ(run.U.at(1), 0.1);
  EXPECT_NEAR(run.U.at(0), 19.1 / 210.0, 1e-7) << "200 (0.1 - u) = 1 + 10 (u - 0.01)";
}

TEST(UpdateVectors, OfAnIterationWithAnEventAreNotKept) {
  // Yield at an event: the stiffness is formed behind it, and pairs of before are forgotten.
  TrussDeck deck = loaded_bar(1.5, 0.1, 1.0);
  SegmentCards cards = modified_newton();
  cards.KBFGS = 1;
  cards.KEVENT = 1;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(count_of(run.report, "BFGS STIFFNESS MODIFICATION"), 0);
  EXPECT_NEAR(run.U.at(0), 0.06, 1e-9);
}

// The bar of EA/L 100 yields at 1 and hardens with 10: with the elastic stiffness each iteration takes a tenth of the
// way, and a length of 10 all of it.

SegmentCards searching(int NLS, double SLOW, double SUP, double TOLS) {
  SegmentCards cards;
  cards.MAXIT = 100;
  cards.KISTF = 3;
  cards.NLS = NLS;
  cards.SLOW = SLOW;
  cards.SUP = SUP;
  cards.TOLS = TOLS;
  return cards;
}

RunResult search_in_yielding_bar(const SegmentCards& cards) {
  TrussDeck deck = loaded_bar(1.5, 0.1, 1.0);
  deck.stat({cards});
  return run_static(deck.text());
}

TEST(LineSearch, SavesFactorisations) {
  const ProgressRow without = progress_rows(search_in_yielding_bar(searching(1, 0.1, 10.0, 0.01)).progress).back();
  const RunResult run = search_in_yielding_bar(searching(5, 0.1, 10.0, 0.01));
  const ProgressRow with = progress_rows(run.progress).back();
  EXPECT_EQ(without.formations, 2) << "the stiffness of the second branch is formed in iteration 4";
  EXPECT_EQ(with.formations, 1);
  EXPECT_EQ(without.iteration, 4);
  EXPECT_EQ(with.iteration, 2) << "10 times the second increment is the answer";
  EXPECT_NEAR(run.U.at(0), 0.06, 1e-12);
}

TEST(LineSearch, TellsItsTrials) {
  const RunResult run = search_in_yielding_bar(searching(5, 0.1, 10.0, 0.01));
  const std::vector<std::string> lines = lines_of(run.report);
  std::vector<std::string> told;
  for (const std::string& line : lines)
    if (line.find("SEARCH") != std::string::npos && line[5] != '1') told.push_back(line);
  const std::vector<std::string> expected{
      "     BEGIN LINE SEARCH NO.1     SEARCH TOLERANCE =   0.1000D-01",
      "     LINE SEARCH NO.     2     STEP SIZE =      0.100D+00",
      "     LINE SEARCH NO.     3     STEP SIZE =      0.100D+02",
  };
  ASSERT_GE(told.size(), 3U);
  EXPECT_EQ(std::vector<std::string>(told.end() - 3, told.end()), expected) << "a trial below TOL ends the search";
}

TEST(LineSearch, EndsWithinItsOwnTolerance) {
  // Length 8 leaves a fifth of the unbalance of length 0, 2/9 of that of length 1.
  const RunResult run = search_in_yielding_bar(searching(3, 0.1, 8.0, 0.25));
  EXPECT_NE(run.report.find("     LINE SEARCH CONVERGED     END LINE SEARCH - STEP SIZE =    8.0000\n"),
            std::string::npos)
      << run.report;
  EXPECT_NEAR(run.U.at(0), 0.06, 1e-7);
}

TEST(LineSearch, WithoutSuccessTakesItsBestTrial) {
  const RunResult run = search_in_yielding_bar(searching(3, 0.1, 5.0, 0.01));
  EXPECT_NE(run.report.find("     LINE SEARCH DID NOT CONVERGE AFTER   3 TRIES\n"
                            "     PREDICTED LINE SEARCH LENGTH OF "),
            std::string::npos)
      << run.report;
  // Unbalance 0.45 behind the first iteration; a length of 5 with a tenth of the way each takes half of it.
  EXPECT_NE(run.report.find("     STATE DETERMINATION\n"
                            "     SOLUTION CONTINUED WITH STEP SIZE =   5.00000     AND UNBALANCED NORM   =     "
                            "0.2250D+00\n"),
            std::string::npos);
  EXPECT_NEAR(run.U.at(0), 0.06, 1e-7);
}

TEST(LineSearch, TheCalculatedLengthIsBeyondTheLimits) {
  // Unbalances 0.405 at length 1 and 0.225 at 5: 0.5 ((0.225 - 0.405) 0.01 - 0.225) / ((0.405 - 0.225) 0.1 + 0.225).
  const RunResult run = search_in_yielding_bar(searching(9, 0.1, 5.0, 0.01));
  EXPECT_NE(run.report.find("PREDICTED LINE SEARCH LENGTH OF   -0.4667D+00 IS BEYOND SPECIFIED LIMITS\n"),
            std::string::npos)
      << run.report;
  EXPECT_NE(run.report.find("DID NOT CONVERGE AFTER   3 TRIES"), std::string::npos);
}

TEST(LineSearch, OfTwoTrialsEndsBeforeTheUpperLimit) {
  const RunResult run = search_in_yielding_bar(searching(2, 0.1, 10.0, 0.01));
  EXPECT_NE(run.report.find("DID NOT CONVERGE AFTER   2 TRIES\n     STATE DETERMINATION"), std::string::npos)
      << "without a length beyond the limits";
  EXPECT_NE(run.report.find("SOLUTION CONTINUED WITH STEP SIZE =   1.00000"), std::string::npos);
}

TEST(LineSearch, IsOffInTheFirstIterationWithoutItsScale) {
  SegmentCards cards = searching(5, 0.1, 10.0, 0.01);
  const RunResult off = search_in_yielding_bar(cards);
  EXPECT_EQ(count_of(off.report, "LINE SEARCH NO.     2"), 1) << "in iteration 2 alone";
  cards.USCALE = 1.0;
  const RunResult on = search_in_yielding_bar(cards);
  EXPECT_EQ(count_of(on.report, "LINE SEARCH NO.     2"), 2);
  EXPECT_EQ(count_of(on.report, "BEGIN LINE SEARCH NO.1"), 1) << "not announced in iteration 1";
}

TEST(LineSearch, IsOffBehindAnEvent) {
  SegmentCards cards = searching(5, 0.1, 10.0, 0.01);
  cards.KEVENT = 1;
  cards.USCALE = 1.0;
  const RunResult run = search_in_yielding_bar(cards);
  EXPECT_EQ(count_of(run.report, "EVENT PREDICTED"), 1);
  EXPECT_EQ(count_of(run.report, "LINE SEARCH NO"), 0);
  EXPECT_EQ(count_of(run.report, "LINE SEARCH DID"), 0);
}

TEST(LineSearch, DoesNotScaleTheLevelNorWhatItImposes) {
  // The search moves node 2 alone.
  TrussDeck deck = imposed_row();
  SegmentCards cards = searching(4, 0.1, 3.0, 0.01);
  cards.USCALE = 1.0;
  cards.factors = {};
  cards.pfactors = {1.0};
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_GT(count_of(run.report, "LINE SEARCH NO.     3"), 0);
  EXPECT_EQ(run.U.at(1), 0.1);
  // Equilibrium: the thin bar carries 1 + 10 (u - 0.01) at most, the thick one 2 before it yields: 200 (0.1 - u) =
  // 1 + 10 (u - 0.01) gives u = 19.1 / 210.
  EXPECT_NEAR(run.U.at(0), 19.1 / 210.0, 1e-7);
}

TEST(LineSearch, ListsTheUnbalancesOfEachTrial) {
  SegmentCards cards = searching(5, 0.1, 10.0, 0.01);
  cards.NTOP = 1;
  const RunResult run = search_in_yielding_bar(cards);
  EXPECT_EQ(count_of(run.top, "    1\n"), 5) << "iteration 1, three trials of iteration 2, step end\n" << run.top;
}

TEST(LineSearch, ATrialAtTheToleranceItselfIsNotBelowIt) {
  // Perfect plasticity leaves exactly 0.5: the search goes on, although the iteration then has converged.
  TrussDeck deck = loaded_bar(1.5, 0.0, 1.0);
  SegmentCards cards = searching(1, 0.1, 10.0, 0.01);
  cards.USCALE = 1.0;
  cards.TOLU = 0.5;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  EXPECT_EQ(progress_rows(run.progress).size(), 1U);
  EXPECT_EQ(count_of(run.report, "DID NOT CONVERGE AFTER   1 TRIES"), 1);
}

TEST(LineSearch, ATrialTooFarOutOfBalanceResteps) {
  // Length 30 of an iteration that takes a tenth of the way leaves -0.9, where 0.45 was.
  SegmentCards cards = searching(5, 0.1, 30.0, 0.01);
  cards.KTERM = 0;
  cards.card4 = "       0.5     0.001    1    0                        0                           0.6";
  const RunResult run = search_in_yielding_bar(cards);
  const std::size_t refused = run.report.find("RESTEPPING DUE TO LARGE UNBALANCE");
  ASSERT_NE(refused, std::string::npos) << run.report;
  EXPECT_LT(run.report.find("LINE SEARCH NO.     3"), refused);
  EXPECT_NE(run.report.find("STATE AT BEGINNING OF STEP RECOVERED", refused), std::string::npos);
}

TEST(LineSearch, OfTrialsThatAreAllLostTakesNone) {
  // Perfect plasticity: behind yield, in the second step, the stiffness is zero, and no length of the increment is a
  // number.
  for (const int KTERM : {1, 2}) {
    TrussDeck deck = loaded_bar(3.0, 0.0, 1.0);
    SegmentCards cards = searching(3, 0.1, 10.0, 0.01);
    cards.KISTF = 1;
    cards.KTERM = KTERM;
    cards.MAXIT = 4;
    cards.STEP0 = 0.25;
    cards.NSTEPS = 2;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 4);
    EXPECT_NE(run.report.find("DID NOT CONVERGE AFTER   3 TRIES"), std::string::npos);
    EXPECT_NE(run.report.find("SOLUTION IS NOT FINITE"), std::string::npos) << run.report;
    EXPECT_NEAR(run.U.at(0), 0.0075, 1e-15) << "the state at the start of the step";
  }
}

}  // namespace
}  // namespace tidearc::test
