// The convergence prediction: a linear estimate of the iterations that are left.
#include "solve/prediction.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "scratch.h"

namespace tidearc {
namespace {

constexpr PredictionRules rules_from_second{.MAXIT = 10, .KPRED = 2, .WPRED = 1.0, .GRACE = 0.0};

/// Feeds a history of unbalances from iteration 1 on; the flag after the last.
bool predict(std::initializer_list<double> history, double TOL, const PredictionRules& rules) {
  bool flag = false;
  int NI = 0;
  begin_prediction(*history.begin(), rules.MAXIT);
  for (const double R : history) flag = predict_nonconvergence(++NI, R, TOL, rules);
  return flag;
}

TEST(Prediction, WithoutACodeOnlyTheLastIterationPredicts) {
  test::Scratch scratch;
  const PredictionRules rules{.MAXIT = 3, .KPRED = 0, .WPRED = 1.0, .GRACE = 0.0};
  EXPECT_FALSE(predict({9, 8}, 1, rules));
  EXPECT_TRUE(predict({9, 8, 7}, 1, rules));
}

TEST(Prediction, OneAllowedIterationPredictsAtOnce) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({9}, 1, {.MAXIT = 1, .KPRED = 2, .WPRED = 1.0, .GRACE = 0.0}));
  EXPECT_FALSE(predict({9}, 1, {.MAXIT = 2, .KPRED = 2, .WPRED = 1.0, .GRACE = 0.0}));
}

TEST(Prediction, TellsTheIterationsThatALinearDecayStillNeeds) {
  test::Scratch scratch;
  // 10 then 8, down to 1: (8 - 1) / (10 - 8) = 3.5, cut to 3, and one more.
  EXPECT_FALSE(predict({10, 8}, 1, rules_from_second));
  EXPECT_EQ(scratch.report(), "     CONVERGENCE PREDICTION -    4 MORE ITERATIONS TO CONVERGE\n");
}

TEST(Prediction, RestepsWhenTheEstimatePassesTheLimit) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({10, 9}, 0.5, rules_from_second));  // n = 8: 2 + 9 is above 10
  EXPECT_FALSE(predict({10, 9}, 1.5, rules_from_second)) << "n = 7: 2 + 8 is not";
}

TEST(Prediction, GraceAllowsAnEstimateWithinItsShareOfTheIterations) {
  test::Scratch scratch;
  PredictionRules rules = rules_from_second;
  rules.GRACE = 4.5;  // trunc(2 * 4.5) = 9, and 9 more iterations are asked for
  EXPECT_FALSE(predict({10, 9}, 0.5, rules));
  rules.GRACE = 4.0;
  EXPECT_TRUE(predict({10, 9}, 0.5, rules));
}

TEST(Prediction, ARepeatedUnbalanceDiverges) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({10, 10}, 1, rules_from_second));
  EXPECT_EQ(test::trimmed(scratch.report()), "     CONVERGENCE PREDICTION - SOLUTION IS DIVERGING\n\n");
}

TEST(Prediction, AnEstimateIsCutTowardsZeroOnBothSides) {
  test::Scratch scratch;
  // (9 - 8.5) / 1 and (9 - 9.5) / 1: no iteration, and one more.
  EXPECT_FALSE(predict({10, 9}, 8.5, rules_from_second));
  EXPECT_FALSE(predict({10, 9}, 9.5, rules_from_second));
  const std::string one = "     CONVERGENCE PREDICTION -    1 MORE ITERATIONS TO CONVERGE\n";
  EXPECT_EQ(scratch.report(), one + one);
}

TEST(Prediction, ANegativeEstimateDiverges) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({10, 5}, 20, rules_from_second));  // (5 - 20) / 5 = -3
  EXPECT_FALSE(predict({10, 5}, 10, rules_from_second)) << "-1, and one more, is told alike but decides nothing";
  const std::string line = "     CONVERGENCE PREDICTION - SOLUTION IS DIVERGING\n\n";
  EXPECT_EQ(test::trimmed(scratch.report()), line + line);
}

TEST(Prediction, BeforeItsIterationItOnlyPrints) {
  test::Scratch scratch;
  PredictionRules rules = rules_from_second;
  rules.KPRED = 3;
  EXPECT_FALSE(predict({10, 10}, 1, rules));
  EXPECT_FALSE(predict({10, 9.75}, 1, rules));
  EXPECT_EQ(test::trimmed(scratch.report()),
            "     CONVERGENCE PREDICTION - SOLUTION IS DIVERGING\n\n"
            "     CONVERGENCE PREDICTION -   36 MORE ITERATIONS TO CONVERGE\n");
}

TEST(Prediction, OfAnEarlierIterationIsForgotten) {
  test::Scratch scratch;
  // A step that cannot be made smaller goes on behind a prediction.
  EXPECT_TRUE(predict({10, 10}, 1, rules_from_second));
  EXPECT_FALSE(predict({10, 10, 1.25}, 1, rules_from_second)) << "one more iteration is enough";
  PredictionRules one_allowed{.MAXIT = 1, .KPRED = 9, .WPRED = 1.0, .GRACE = 0.0};
  EXPECT_FALSE(predict({10, 11}, 1, one_allowed)) << "prediction begins at iteration 9";
}

// The memory of prediction, all of it.
void expect_memory(double PR, double PW, double PA, double PC, double PB) {
  EXPECT_DOUBLE_EQ(prediction.PR, PR);
  EXPECT_DOUBLE_EQ(prediction.PW, PW);
  EXPECT_DOUBLE_EQ(prediction.PA, PA);
  EXPECT_DOUBLE_EQ(prediction.PC, PC);
  EXPECT_DOUBLE_EQ(prediction.PB, PB);
}

TEST(Prediction, KeepsRatiosUnderWeightsThatArePowersOfTheFactor) {
  test::Scratch scratch;
  PredictionRules rules = rules_from_second;
  rules.WPRED = 2.0;
  // Ratios 0.8, 0.5, 0.75 with the weights 1, 2, 4: sums 0.8, 1.8, 4.8. The average is over the weights before this
  // iteration's own, 1, 3, 7; the next weight is 2 to the power of the iteration less one.
  predict({10, 8}, 1, rules);
  expect_memory(8, 3, 0.8, 2, 0.8);
  predict({10, 8, 4}, 1, rules);
  expect_memory(4, 7, 1.8, 4, 0.6);
  predict({10, 8, 4, 3}, 1, rules);
  expect_memory(3, 15, 4.8, 8, 4.8 / 7.0);
}

TEST(Prediction, WeightsWithAFactorBelowOneForgetNothingButCountLess) {
  test::Scratch scratch;
  PredictionRules rules = rules_from_second;
  rules.WPRED = 0.5;
  predict({10, 5, 4}, 1, rules);  // ratios 0.5 and 0.8 with the weights 1 and 1/2, over 1 and 1 1/2
  expect_memory(4, 1.75, 0.9, 0.25, 0.6);
}

TEST(Prediction, OfADivergingIterationRemembersItsUnbalanceAlone) {
  test::Scratch scratch;
  PredictionRules rules = rules_from_second;
  rules.WPRED = 2.0;
  predict({10, 8, 9}, 1, rules);
  expect_memory(9, 3, 0.8, 2, 0.8);
  predict({10, 8, 9, 4.5}, 1, rules);  // one half with the weight 2 of iteration 2, over 3; then 2 to the power of 3
  expect_memory(4.5, 11, 1.8, 8, 0.6);
}

TEST(Prediction, BeginsEachStepWithoutMemory) {
  test::Scratch scratch;
  predict({10, 8, 4}, 1, rules_from_second);
  EXPECT_TRUE(predict({10, 8, 8}, 1, rules_from_second));
  begin_prediction(7, 5);
  expect_memory(7, 1, 0, 1, 0);
  EXPECT_EQ(prediction.KPFLAG, 0);
  EXPECT_FALSE(predict_nonconvergence(1, 7, 1, rules_from_second));
  expect_memory(7, 1, 0, 1, 0);
}

TEST(Prediction, WithoutACodeKeepsWhatTheStepBeganWith) {
  test::Scratch scratch;
  predict({9, 8, 7}, 1, {.MAXIT = 9, .KPRED = 0, .WPRED = 2.0, .GRACE = 0.0});
  expect_memory(9, 1, 0, 1, 0);
}

TEST(Prediction, OfAnUnbalanceThatBarelyMovesIsMoreThanAllIterationsAndNoDivergence) {
  test::Scratch scratch;
  // From 1 to the number below it: (1 - 0.5) * 2^53 iterations, far beyond 32 bits and beyond the field.
  EXPECT_TRUE(predict({1.0, 1.0 - 0x1p-53}, 0.5, rules_from_second));
  EXPECT_EQ(scratch.report(), "     CONVERGENCE PREDICTION - **** MORE ITERATIONS TO CONVERGE\n");
}

TEST(Prediction, OfATinyMoveAlreadyFarBelowTheToleranceDiverges) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({1.0, 1.0 - 0x1p-53}, 3.0, rules_from_second));  // -2 * 2^53
  EXPECT_EQ(test::trimmed(scratch.report()), "     CONVERGENCE PREDICTION - SOLUTION IS DIVERGING\n\n");
}

TEST(Prediction, AnUnbalanceThatIsNotANumberDiverges) {
  test::Scratch scratch;
  EXPECT_TRUE(predict({10, std::numeric_limits<double>::quiet_NaN()}, 1, rules_from_second));
}

}  // namespace
}  // namespace tidearc
