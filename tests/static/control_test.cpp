// When a static analysis forms its stiffness and takes over its state; how its step grows.
#include "static/control.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tidearc {
namespace {

/// Decisions at iterations 1..n as a string of 1, 0 and -.
std::string stiffness_by_iteration(int n, UpdateRules rules) {
  UpdateCounters counters;
  std::string decisions;
  for (int NI = 1; NI <= n; ++NI) {
    const int KSTF = stiffness_decision(NI, 0, false, rules, counters);
    decisions += KSTF == 1 ? '1' : KSTF == 0 ? '0' : '-';
  }
  return decisions;
}

/// Decisions with KISTF 0 over steps (KFORM 0, -1, ..) of `iterations` each.
std::string stiffness_by_step(int steps, int iterations, UpdateRules rules, UpdateCounters& counters) {
  std::string decisions;
  for (int KFORM = 0; KFORM > -steps; --KFORM)
    for (int NI = 1; NI <= iterations; ++NI)
      decisions += stiffness_decision(NI, KFORM, false, rules, counters) == 1 ? '1' : '0';
  return decisions;
}

TEST(StiffnessDecision, FollowsTheIterationInterval) {
  EXPECT_EQ(stiffness_by_iteration(6, {.KISTF = 1, .KSSTF = 1, .KISTA = 9, .KBFGS = 0}), "111111");
  EXPECT_EQ(stiffness_by_iteration(6, {.KISTF = 2, .KSSTF = 1, .KISTA = 9, .KBFGS = 0}), "101010");
  EXPECT_EQ(stiffness_by_iteration(6, {.KISTF = 3, .KSSTF = 1, .KISTA = 9, .KBFGS = 1}), "1--1--");
}

TEST(StiffnessDecision, AnEventFormsAndMovesTheCounter) {
  UpdateCounters counters;
  const UpdateRules rules{.KISTF = 3, .KSSTF = 1, .KISTA = 9, .KBFGS = 0};
  EXPECT_EQ(stiffness_decision(1, 0, false, rules, counters), 1);
  EXPECT_EQ(counters.stiffness_iteration, 4);
  EXPECT_EQ(stiffness_decision(2, 0, true, rules, counters), 1);
  EXPECT_EQ(counters.stiffness_iteration, 7);
}

TEST(StiffnessDecision, WithoutIterationControlOnlyTheFirstIterationOfTheMacroForms) {
  UpdateCounters counters;
  EXPECT_EQ(stiffness_by_step(3, 2, {.KISTF = 0, .KSSTF = 2, .KISTA = 9, .KBFGS = 0}, counters), "100000");
}

TEST(StiffnessDecision, ANewMacroFormsAgainBecauseItsCountersStartAtZero) {
  UpdateCounters counters;
  const UpdateRules rules{.KISTF = 0, .KSSTF = 1, .KISTA = 9, .KBFGS = 0};
  EXPECT_EQ(stiffness_by_step(2, 1, rules, counters), "10");
  counters = {};
  EXPECT_EQ(stiffness_by_step(2, 1, rules, counters), "10");
}

TEST(StateDecision, TakesOverAtTheFirstIterationAndAtItsInterval) {
  UpdateCounters counters;
  const UpdateRules rules{.KISTF = 1, .KSSTF = 1, .KISTA = 3, .KBFGS = 0};
  std::string decisions;
  for (int NI = 1; NI <= 7; ++NI) decisions += state_decision(NI, false, 0, rules, counters) == 1 ? '1' : '0';
  EXPECT_EQ(decisions, "1001001");
}

TEST(StateDecision, AnEventTakesOverWithoutMovingTheCounter) {
  UpdateCounters counters;
  const UpdateRules rules{.KISTF = 1, .KSSTF = 1, .KISTA = 3, .KBFGS = 0};
  state_decision(1, false, 0, rules, counters);
  EXPECT_EQ(state_decision(2, true, 0, rules, counters), 1);
  EXPECT_EQ(counters.state_iteration, 4);
}

TEST(StateDecision, IntervalOneLeavesTheDecisionAsItStands) {
  UpdateCounters counters;
  const UpdateRules rules{.KISTF = 1, .KSSTF = 1, .KISTA = 1, .KBFGS = 0};
  EXPECT_EQ(state_decision(1, false, 0, rules, counters), 0);
  EXPECT_EQ(state_decision(1, false, 1, rules, counters), 1);
  EXPECT_EQ(counters.state_iteration, 0);
}

TEST(StepGrowth, AppliesTheIncreaseOnlyBelowTheIterationLimit) {
  EXPECT_EQ(step_growth(3, 0, 4, 4.0), 4.0);
  EXPECT_EQ(step_growth(4, 0, 4, 4.0), 0.0);
}

TEST(StepGrowth, DesiredIterationsOverrideTheLimitAndCanShrinkTheStep) {
  EXPECT_DOUBLE_EQ(step_growth(1, 4, 0, 4.0), 2.0);
  EXPECT_DOUBLE_EQ(step_growth(5, 4, 0, 4.0), 1.0);
  EXPECT_DOUBLE_EQ(step_growth(17, 4, 0, 4.0), 0.5);
}

TEST(RelativeStep, IsTheFactorItselfWithoutAnInitialStep) {
  EXPECT_EQ(relative_step(0.25, 0.5), 0.5);
  EXPECT_EQ(relative_step(0.25, 0.0), 0.25);
}

}  // namespace
}  // namespace tidearc
