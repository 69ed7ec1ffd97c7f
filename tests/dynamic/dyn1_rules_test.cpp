// The decisions of an analysis with variable steps, on both sides of every compare.
#include "dynamic/dyn1_rules.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tidearc {
namespace {

constexpr double just_below(double x) { return std::nextafter(x, -1e300); }
constexpr double just_above(double x) { return std::nextafter(x, 1e300); }

StepRules factors() { return {1.0E-4, 0.32, 0.5, 2.0, 0.05, 0.03, 2}; }
/// Both factors 0: the sizes of steps follow the error.
StepRules by_error() { return {1.0E-4, 0.32, 0.0, 0.0, 1.0E-5, 1.0E-6, 2}; }

TEST(SmallerStep, IsTheStepTimesTheFactor) { EXPECT_EQ(reduced_step(0.02, 7.0, factors()), 0.01); }

TEST(SmallerStep, WithAFactorOfOneIsHalf) {
  StepRules rules = factors();
  rules.REDF = 1.0;
  EXPECT_EQ(reduced_step(0.02, 7.0, rules), 0.01);
  rules.REDF = just_below(1.0);
  EXPECT_EQ(reduced_step(0.02, 7.0, rules), just_below(1.0) * 0.02);
}

// An undamped oscillator of frequency 10 and velocity 1, the first step of 0.02: error 6.600660066E-5.
TEST(SmallerStep, FollowsTheCubeRootOfTheErrorWhenTheFactorIsZero) {
  EXPECT_NEAR(reduced_step(0.02, 6.600660066E-5, by_error()), 0.00726386126, 0.5E-11);
}

TEST(SmallerStep, ByTheErrorHasNineThreesInItsExponent) {
  const double quotient = std::sqrt(1.0E-5 * 1.0E-6) / 1.0E3;
  const double step = 1.0E5;
  EXPECT_EQ(reduced_step(step, 1.0E3, by_error()), step * std::pow(quotient, 0.333333333));
  EXPECT_NE(reduced_step(step, 1.0E3, by_error()), step * std::pow(quotient, 0.3333333));
}

TEST(SmallerStep, ByTheErrorStopsAtTheSmallestStep) { EXPECT_EQ(reduced_step(0.02, 1.0E6, by_error()), 1.0E-4); }

TEST(SmallerStep, ByTheErrorIsHalfFromTheSmallestStepOn) {
  EXPECT_EQ(reduced_step(1.0E-4, 1.0, by_error()), 0.5E-4);
  EXPECT_EQ(reduced_step(just_above(1.0E-4), 1.0E6, by_error()), 1.0E-4);
  StepRules negative = by_error();
  negative.DTMIN = -1.0E-4;
  EXPECT_EQ(reduced_step(1.0E-4, 1.0, negative), 0.5E-4) << "by the magnitude of DTMIN";
}

TEST(SmallerStep, OfAQuotientOfOneIsHalf) {
  StepRules rules = by_error();
  rules.ERRUP = rules.ERRLO = 0.25;
  EXPECT_EQ(reduced_step(0.02, 0.25, rules), 0.01);
}

// The quotient is 0, and the larger of DTMIN and 0 is DTMIN.
TEST(SmallerStep, OfALowerToleranceOfZeroIsTheSmallestStep) {
  StepRules rules = by_error();
  rules.ERRLO = 0.0;
  EXPECT_EQ(reduced_step(0.02, 1.0, rules), 1.0E-4);
  rules.DTMIN = -2.0E-4;
  EXPECT_EQ(reduced_step(0.02, 1.0, rules), 2.0E-4);
  rules.DTMIN = 0.0;
  EXPECT_EQ(reduced_step(0.02, 1.0, rules), 0.01) << "nothing would be left of the step";
}

TEST(SmallerStep, OfALowerToleranceThatGivesNoQuotientIsHalf) {
  StepRules rules = by_error();
  rules.ERRLO = -1.0;
  EXPECT_EQ(reduced_step(0.02, 1.0, rules), 0.01);
}

TEST(LongerStep, IsTheStepTimesTheFactor) { EXPECT_EQ(increased_step(0.02, 7.0, factors()), 0.04); }

TEST(LongerStep, FollowsTheErrorWithSevenThreesWhenTheFactorIsZero) {
  StepRules rules = by_error();
  rules.DTMAX = 1.0E6;
  const double quotient = std::sqrt(1.0E-5 * 1.0E-6) / 1.0E-20;
  EXPECT_EQ(increased_step(0.02, 1.0E-20, rules), 0.02 * std::pow(quotient, 0.3333333));
  EXPECT_NE(increased_step(0.02, 1.0E-20, rules), 0.02 * std::pow(quotient, 0.333333333));
}

TEST(LongerStep, ByTheErrorStopsAtTheLargestStep) { EXPECT_EQ(increased_step(0.02, 1.0E-20, by_error()), 0.32); }

TEST(LongerStep, IsTwiceTheStepWithoutAnErrorOrFromTheLargestStep) {
  EXPECT_EQ(increased_step(0.02, 0.0, by_error()), 0.04);
  EXPECT_EQ(increased_step(0.02, -1.0, by_error()), 0.04);
  EXPECT_LT(increased_step(0.02, 3.0E-6, by_error()), 0.03) << "the error counts from the smallest one on";
  EXPECT_EQ(increased_step(0.32, 1.0E-7, by_error()), 0.64);
}

TEST(Growth, MayReachTheLargestStepButNotPassIt) {
  EXPECT_EQ(grown_step(0.16, 0.0, factors()), 0.32);
  EXPECT_EQ(grown_step(just_above(0.16), 0.0, factors()), std::nullopt) << "no cut to the largest step";
}

TEST(Growth, IsNoneWithoutALargestStep) {
  StepRules rules = factors();
  rules.DTMAX = 0.0;
  EXPECT_EQ(grown_step(0.02, 0.0, rules), std::nullopt);
  rules = by_error();
  rules.DTMAX = 0.0;
  EXPECT_EQ(grown_step(0.02, 1.0E-7, rules), std::nullopt);
  rules.DTMAX = 0.01;
  EXPECT_EQ(grown_step(0.02, 1.0E-7, rules), std::nullopt) << "a smaller limit does not shorten the step";
}

TEST(Growth, ByAFactorOfOneKeepsTheStep) {
  StepRules rules = factors();
  rules.INCF = 1.0;
  EXPECT_EQ(grown_step(0.02, 0.0, rules), 0.02);
}

TEST(Refusal, ThatLandsOnTheSmallestStepTakesIt) {
  StepRules rules = factors();
  rules.DTMIN = 0.01;
  const Judgement judgement = refuse_step(0.02, 1.0, rules);
  EXPECT_EQ(judgement.verdict, Verdict::repeat);
  EXPECT_EQ(judgement.DT, 0.01);
}

TEST(Refusal, BelowAPositiveSmallestStepGoesOnWithTheStep) {
  StepRules rules = factors();
  rules.DTMIN = just_above(0.01);
  const Judgement judgement = refuse_step(0.02, 1.0, rules);
  EXPECT_EQ(judgement.verdict, Verdict::take);
  EXPECT_EQ(judgement.DT, 0.02);
}

TEST(Refusal, BelowANegativeSmallestStepEnds) {
  StepRules rules = factors();
  rules.DTMIN = -just_above(0.01);
  EXPECT_EQ(refuse_step(0.02, 1.0, rules).verdict, Verdict::stop);
  rules.DTMIN = -0.01;
  EXPECT_EQ(refuse_step(0.02, 1.0, rules).verdict, Verdict::repeat);
}

TEST(Refusal, WithoutASmallestStepGoesOnUntilNothingIsLeft) {
  StepRules rules = factors();
  rules.DTMIN = 0.0;
  EXPECT_EQ(refuse_step(1.0E-300, 1.0, rules).verdict, Verdict::repeat);
  rules.REDF = 1.0E-200;
  EXPECT_EQ(refuse_step(1.0E-300, 1.0, rules).verdict, Verdict::stop) << "0 is not positive";
}

TEST(ErrorTest, EqualToTheUpperToleranceIsTooLarge) {
  ErrorCounts counts{1, false};
  const Judgement judgement = judge_error(0.02, 0.05, true, factors(), counts);
  EXPECT_EQ(judgement.verdict, Verdict::repeat);
  EXPECT_EQ(judgement.DT, 0.01);
  EXPECT_EQ(counts.NLOW, 0);
}

TEST(ErrorTest, JustBelowTheUpperToleranceKeepsTheStep) {
  ErrorCounts counts{1, false};
  EXPECT_EQ(judge_error(0.02, just_below(0.05), true, factors(), counts).verdict, Verdict::take);
  EXPECT_EQ(counts.NLOW, 0);
  EXPECT_TRUE(counts.KEEP);
}

TEST(ErrorTest, EqualToTheLowerToleranceKeepsTheStep) {
  ErrorCounts counts{1, false};
  EXPECT_EQ(judge_error(0.02, 0.03, true, factors(), counts).verdict, Verdict::take);
  EXPECT_EQ(counts.NLOW, 0);
  EXPECT_TRUE(counts.KEEP);
}

TEST(ErrorTest, BelowTheLowerToleranceCountsUntilTheStepMayGrow) {
  ErrorCounts counts;
  judge_error(0.02, just_below(0.03), true, factors(), counts);
  EXPECT_EQ(counts.NLOW, 1);
  EXPECT_TRUE(counts.KEEP) << "one of two";
  counts.KEEP = false;  // the next step
  judge_error(0.02, 0.01, true, factors(), counts);
  EXPECT_EQ(counts.NLOW, 2);
  EXPECT_FALSE(counts.KEEP);
  judge_error(0.04, 0.01, true, factors(), counts);
  EXPECT_EQ(counts.NLOW, 3) << "growth does not clear the count";
  EXPECT_FALSE(counts.KEEP);
}

TEST(ErrorTest, OfAnEventSubstepDoesNotCountAsLow) {
  ErrorCounts counts{1, false};
  EXPECT_EQ(judge_error(0.02, 0.01, false, factors(), counts).verdict, Verdict::take);
  EXPECT_EQ(counts.NLOW, 1);
  EXPECT_FALSE(counts.KEEP);
  judge_error(0.02, 0.04, false, factors(), counts);
  EXPECT_EQ(counts.NLOW, 0);
  EXPECT_TRUE(counts.KEEP);
  EXPECT_EQ(judge_error(0.02, 0.05, false, factors(), counts).verdict, Verdict::repeat);
}

TEST(ErrorTest, OfAStepThatIsAcceptedAsTheSmallestKeepsItsSize) {
  StepRules rules = factors();
  rules.DTMIN = 0.02;
  ErrorCounts counts{1, false};
  EXPECT_EQ(judge_error(0.02, 1.0, true, rules, counts).verdict, Verdict::take);
  EXPECT_TRUE(counts.KEEP);
  rules.DTMIN = -0.02;
  EXPECT_EQ(judge_error(0.02, 1.0, true, rules, counts).verdict, Verdict::stop);
}

TEST(ErrorTest, TakesWhatIsNotANumberAsTooLarge) {
  ErrorCounts counts;
  EXPECT_EQ(judge_error(0.02, std::nan(""), true, factors(), counts).verdict, Verdict::repeat);
}

TEST(UnbalanceTest, AboveTheUpperToleranceShortensTheNextStep) {
  EXPECT_EQ(step_after_unbalance(0.02, 5.0, 5.0, 1.0, 0.01, false, factors()), 0.02) << "equal is not above";
  EXPECT_EQ(step_after_unbalance(0.02, just_above(5.0), 5.0, 1.0, 0.01, false, factors()), 0.01);
  EXPECT_EQ(step_after_unbalance(0.02, 6.0, 5.0, 1.0, 0.01, true, factors()), 0.01) << "kept or not";
}

TEST(UnbalanceTest, DoesNotGoBelowTheSmallestStep) {
  StepRules rules = factors();
  for (const double smallest : {0.015, -0.015}) {
    rules.DTMIN = smallest;
    EXPECT_EQ(step_after_unbalance(0.02, 6.0, 5.0, 1.0, 0.01, false, rules), 0.015);
  }
}

TEST(UnbalanceTest, ByTheErrorShortensByItsCubeRootAndNeverGrows) {
  const StepRules rules = by_error();
  const auto next = [&](double ERR) { return step_after_unbalance(0.02, 6.0, 5.0, 1.0, ERR, false, rules); };
  EXPECT_NEAR(next(6.600660066E-5), 0.00726386126, 0.5E-11);
  EXPECT_EQ(next(1.0E-8), 0.02);
  EXPECT_EQ(next(0.0), 0.01);
}

TEST(UnbalanceTest, ByTheErrorGoesToTheSmallestStepWithALowerToleranceOfZero) {
  StepRules rules = by_error();
  rules.ERRLO = 0.0;
  EXPECT_EQ(step_after_unbalance(0.02, 6.0, 5.0, 1.0, 1.0E-5, false, rules), 1.0E-4);
  rules.DTMIN = 0.0;
  EXPECT_EQ(step_after_unbalance(0.02, 6.0, 5.0, 1.0, 1.0E-5, false, rules), 0.01);
}

TEST(UnbalanceTest, BelowTheLowerToleranceLengthensTheNextStep) {
  EXPECT_EQ(step_after_unbalance(0.02, 1.0, 5.0, 1.0, 0.01, false, factors()), 0.02) << "equal is not below";
  EXPECT_EQ(step_after_unbalance(0.02, just_below(1.0), 5.0, 1.0, 0.01, false, factors()), 0.04);
  EXPECT_EQ(step_after_unbalance(0.02, 0.5, 5.0, 1.0, 0.01, true, factors()), 0.02) << "unless it is kept";
  EXPECT_EQ(step_after_unbalance(0.17, 0.5, 5.0, 1.0, 0.01, false, factors()), 0.17) << "not past the largest step";
}

TEST(LoadLevel, RisesBelowTheCutoffVelocity) {
  EXPECT_TRUE(level_rises(just_below(1.0E-4), 1.0E-4, 0.25, LineType::none));
  EXPECT_FALSE(level_rises(1.0E-4, 1.0E-4, 0.25, LineType::none));
  EXPECT_FALSE(level_rises(0.0, 1.0E-4, 0.0, LineType::same));
}

TEST(LoadLevel, DoesNotRiseAgainWhenTheStepIsTakenAnew) {
  for (const LineType last : {LineType::same, LineType::longer, LineType::substep})
    EXPECT_TRUE(level_rises(0.0, 1.0E-4, 0.25, last));
  for (const LineType last : {LineType::error, LineType::substeps}) EXPECT_FALSE(level_rises(0.0, 1.0E-4, 0.25, last));
}

TEST(Limits, AreExceededWhenTheyAreMet) {
  EXPECT_EQ(exceeded_limit(just_below(5.0), 5.0, just_below(2.0), 2.0), std::nullopt);
  EXPECT_EQ(exceeded_limit(5.0, 5.0, 0.0, 2.0), Dyn1End::unbalance);
  EXPECT_EQ(exceeded_limit(0.0, 5.0, 2.0, 2.0), Dyn1End::displacement);
  EXPECT_EQ(exceeded_limit(5.0, 5.0, 2.0, 2.0), Dyn1End::unbalance) << "the unbalance first";
  EXPECT_EQ(exceeded_limit(0.0, 0.0, 0.0, 2.0), Dyn1End::unbalance) << "a blank limit";
}

TEST(MacroEnd, ComesWithStepsThenTimeThenLevel) {
  const MacroLimits limits{10, 2.0, 1.0, 1.0E-4};
  EXPECT_EQ(reached_end(9, just_below(2.0), just_below(1.0), 0.0, limits), std::nullopt);
  EXPECT_EQ(reached_end(10, 2.0, 1.0, 0.0, limits), Dyn1End::steps);
  EXPECT_EQ(reached_end(9, 2.0, 1.0, 0.0, limits), Dyn1End::time);
  EXPECT_EQ(reached_end(9, 1.0, 1.0, 0.0, limits), Dyn1End::level);
}

TEST(MacroEnd, WaitsAtTheLastLevelUntilTheStructureRests) {
  const MacroLimits limits{10, 2.0, 1.0, 1.0E-4};
  EXPECT_EQ(reached_end(1, 0.0, 1.0, 1.0E-4, limits), Dyn1End::level) << "at the cutoff velocity it rests";
  EXPECT_EQ(reached_end(1, 0.0, 1.0, just_above(1.0E-4), limits), std::nullopt);
}

TEST(MacroEnd, OfBlankLimitsComesWithTheFirstStep) {
  EXPECT_EQ(reached_end(1, 0.1, 0.0, 0.0, {0, 5.0, 2.0, 1.0E-4}), Dyn1End::steps);
  EXPECT_EQ(reached_end(1, 0.1, 0.0, 0.0, {9, 0.0, 2.0, 1.0E-4}), Dyn1End::time);
}

TEST(Outputs, FallDueByStepsOrByTimeAndThenCountAnew) {
  const OutputInterval interval{3, 1.0};
  OutputCount count{0, 5.0};
  EXPECT_FALSE(output_due(interval, 5.25, count));
  EXPECT_FALSE(output_due(interval, 5.5, count));
  EXPECT_TRUE(output_due(interval, 5.75, count)) << "third step";
  EXPECT_FALSE(output_due(interval, 6.5, count)) << "0.75 since the last";
  EXPECT_TRUE(output_due(interval, 6.75, count)) << "1.0 since the last";
  EXPECT_FALSE(output_due(interval, 7.0, count));
  EXPECT_FALSE(output_due(interval, 7.25, count)) << "both counts began anew";
  EXPECT_TRUE(output_due(interval, 7.5, count));
}

TEST(Outputs, WithoutIntervalsNeverFallDue) {
  OutputCount count;
  for (int step = 1; step < 100; ++step) EXPECT_FALSE(output_due({0, 1.0E15}, step, count));
}

// The change of acceleration over the step times |BETA - 1/6| DT^2 (O. C. Zienkiewicz, Y. M. Xie, Earthquake Eng.
// Struct. Dyn. 20 (1991) 871-887): oscillator of frequency 10, velocity 1, DT 0.02; the acceleration goes from 0 to
// -100 times the displacement.
TEST(LocalError, IsTheChangeOfAccelerationTimesItsScale) {
  const double scale = local_error_scale(0.25, 0.02);
  EXPECT_NEAR(scale, 1.0 / 30000.0, 1E-19);
  EXPECT_NEAR(local_error(10000.0, 200.0, 1.0, 0.01980198019802, 1.0, 0.0, scale), 6.600660066E-5, 0.5E-14);
}

TEST(LocalError, IsZeroWithAScaleOfZeroWhateverTheIncrement) {
  EXPECT_EQ(local_error_scale(1.0 / 6.0, 0.02), 0.0);
  EXPECT_EQ(local_error(15000.0, 300.0, 2.0, std::numeric_limits<double>::infinity(), 1.0, 0.0, 0.0), 0.0);
}

// d = v DT + a DT^2/2 with constant acceleration a.
TEST(MidstepMotion, IsThatOfConstantAcceleration) {
  const double v = 3.0, a = -4.0, DT = 0.5;
  const Midstep middle = midstep_motion(v * DT + 0.5 * a * DT * DT, v, DT);
  EXPECT_DOUBLE_EQ(middle.acceleration, a);
  EXPECT_DOUBLE_EQ(middle.velocity, v + a * DT / 2.0);
  EXPECT_DOUBLE_EQ(middle.displacement, v * DT / 2.0 + a * DT * DT / 8.0);
}

}  // namespace
}  // namespace tidearc
