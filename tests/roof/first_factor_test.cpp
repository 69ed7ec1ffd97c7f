// Steps without iterations, and the first factorisation of a macro, which they leave to a later segment.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

/// A step that makes no iteration and is taken as it stands, at level 0.
SegmentCards idle_segment() {
  SegmentCards cards;
  cards.MAXIT = 0;
  cards.KTERM = 2;
  cards.FQUIT = -1.0;
  return cards;
}

/// A segment of two steps whose own rules never ask for a factorisation behind the first step of the macro.
SegmentCards keeping_segment(double factor = 1.0) {
  SegmentCards cards;
  cards.KSSTF = 99;
  cards.KISTF = 0;
  cards.STEP0 = 0.5;
  cards.NSTEPS = 2;
  cards.factors = {factor};
  return cards;
}

TEST(StepsWithoutIterations, AreTakenAsTheyStand) {
  TrussDeck deck = loaded_bar(3.0);
  deck.stat({idle_segment()});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(run.U.at(0), 0.0);
  EXPECT_EQ(run.accumulated, 0.0);
  EXPECT_NE(run.report.find("SOLUTION HAS NOT CONVERGED AFTER     0 ITERATIONS- ANALYSIS CONTINUED"),
            std::string::npos);
  EXPECT_NE(run.report.find(" RESPONSE AT LOAD STEP    1     ITERATION NO.    0"), std::string::npos);
  EXPECT_TRUE(progress_rows(run.progress).empty());
  EXPECT_NE(run.progress.find("COMPLETED: MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED"), std::string::npos);
}

TEST(StepsWithoutIterations, EndTheMacroWhenItsCodeSaysStop) {
  for (const int MAXIT : {0, -3}) {
    TrussDeck deck = loaded_bar(3.0);
    SegmentCards cards = idle_segment();
    cards.KTERM = 1;
    cards.MAXIT = MAXIT;
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 4);
    EXPECT_NE(run.report.find("SOLUTION HAS NOT CONVERGED AFTER     0 ITERATIONS- ANALYSIS STOPPED"),
              std::string::npos);
    EXPECT_NE(run.progress.find("TERMINATED: MAX. ALLOWABLE NUMBER OF ITERATIONS REACHED"), std::string::npos);
  }
}

TEST(FirstFactorisation, FollowsInTheFirstIterationOfTheMacroWhicheverStepHasIt) {
  TrussDeck deck = loaded_bar(3.0);
  deck.stat({idle_segment(), keeping_segment()});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(run.U.at(0), 0.03, 1e-15);
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0].stiffness, "YES");
  EXPECT_NE(rows[1].stiffness, "YES") << "the rules hold again";
  EXPECT_EQ(rows[1].formations, 1);
}

TEST(FirstFactorisation, IsThatOfItsOwnMacro) {
  // The first macro leaves a yielded bar and a factor that would do for the second, which still forms its own.
  TrussDeck deck = loaded_bar(1.5, 0.1, 1.0);
  deck.stat({SegmentCards{}});
  deck.stat({idle_segment(), keeping_segment()});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(run.U.at(0), 0.21, 1e-13) << "1 / 100, and 2 / 10 of hardening";
  const std::vector<ProgressRow> rows = progress_rows(run.progress);
  ASSERT_EQ(rows.size(), 4U);
  EXPECT_EQ(rows[1].formations, 2);
  EXPECT_EQ(rows[2].stiffness, "YES");
  EXPECT_EQ(rows[3].formations, 3);
}

}  // namespace
}  // namespace tidearc::test
