// The rule of trial lengths of a line search.
#include "solve/line_search.h"

#include <gtest/gtest.h>

#include <limits>

namespace tidearc {
namespace {

constexpr double SLOW = 0.1;
constexpr double SUP = 2.0;

/// A search whose first two trials, at 1.0 and at SLOW, had the unbalances r1 and r2.
LineSearch after_two(double r1, double r2) {
  LineSearch search;
  EXPECT_TRUE(next_trial_length(search, 1, r1, SLOW, SUP));
  EXPECT_TRUE(next_trial_length(search, 2, r2, SLOW, SUP));
  return search;
}

TEST(LineSearchLengths, BeginAtOneAndGoToTheLowerThenToTheUpperLimit) {
  LineSearch search;
  EXPECT_EQ(search.SLEN, 1.0);
  next_trial_length(search, 1, 10.0, SLOW, SUP);
  EXPECT_EQ(search.SLEN, SLOW);
  next_trial_length(search, 2, 8.0, SLOW, SUP);
  EXPECT_EQ(search.SLEN, SUP);
}

TEST(LineSearchLengths, OfTheFirstThreeTrialsAreNotMeasuredAgainstTheLimits) {
  LineSearch search;
  EXPECT_TRUE(next_trial_length(search, 1, 10.0, 3.0, 2.0));
  EXPECT_TRUE(next_trial_length(search, 2, 10.0, 3.0, 2.0));
}

TEST(LineSearchLengths, TheFourthIsCalculatedFromTheUnbalances) {
  // r1 10 at length 1, 5 at the upper limit, s1 0.1: 0.5 (-5 * 0.01 - 5) / (5 * 0.1 + 5) = -5.05 / 11.
  LineSearch search = after_two(10.0, 8.0);
  EXPECT_FALSE(next_trial_length(search, 3, 5.0, SLOW, SUP));
  EXPECT_NEAR(search.SLEN, -5.05 / 11.0, 1e-15);
}

TEST(LineSearchLengths, AreOutsideOnlyBeyondTheLimitsThemselves) {
  // With a negative measure the rule gives positive lengths: r1 1, r -1, s1 0.5: 0.5 (-2 * 0.25 + 1) / (2 * 0.5 - 1)
  // has no denominator; r -3: 0.5 (-4 * 0.25 + 3) / (4 * 0.5 - 3) = -1.
  LineSearch search;
  next_trial_length(search, 1, 1.0, 0.5, SUP);
  next_trial_length(search, 2, 1.0, 0.5, SUP);
  LineSearch without_denominator = search;
  EXPECT_FALSE(next_trial_length(without_denominator, 3, -1.0, 0.5, SUP));
  EXPECT_FALSE(next_trial_length(search, 3, -3.0, 0.5, SUP));
  EXPECT_DOUBLE_EQ(search.SLEN, -1.0);
  LineSearch at_limit;
  next_trial_length(at_limit, 1, 1.0, 0.5, SUP);
  next_trial_length(at_limit, 2, 1.0, 0.5, SUP);
  EXPECT_TRUE(next_trial_length(at_limit, 3, -3.0, -1.0, SUP)) << "a length on the limit is inside";
}

TEST(LineSearchLengths, LaterOnesForgetTheFirstTrial) {
  // After the fourth trial s0 is the lower limit and r1, s1 are 0: 0.5 (-r s0^2) / (r s0) = -s0 / 2.
  LineSearch search = after_two(10.0, 8.0);
  next_trial_length(search, 3, 5.0, SLOW, SUP);
  EXPECT_FALSE(next_trial_length(search, 4, 3.0, SLOW, SUP));
  EXPECT_NEAR(search.SLEN, -SLOW / 2.0, 1e-15);
}

TEST(LineSearchTrials, TheBestIsKeptAndOfEqualOnesTheLater) {
  LineSearch search;
  keep_best_trial(search, 4.0);
  search.SLEN = 0.5;
  keep_best_trial(search, 5.0);
  EXPECT_EQ(search.SBEST, 1.0);
  search.SLEN = 0.25;
  keep_best_trial(search, 4.0);
  EXPECT_EQ(search.SBEST, 0.25);
  EXPECT_EQ(search.RBEST, 4.0);
}

TEST(LineSearchTrials, AValueThatIsNotFiniteIsNeverTheBest) {
  LineSearch search;
  search.SLEN = 0.5;
  keep_best_trial(search, std::numeric_limits<double>::quiet_NaN());
  keep_best_trial(search, std::numeric_limits<double>::infinity());
  EXPECT_EQ(search.SBEST, 1.0);
  keep_best_trial(search, 1.0E20);
  EXPECT_EQ(search.SBEST, 0.5) << "an unbalance of the first limit itself is kept";
}

}  // namespace
}  // namespace tidearc
