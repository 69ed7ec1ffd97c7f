// The load increment as an unknown: targets and their remainders, trials and their directions, messages. The model has
// six equations; da and du are given.
#include "static/scale.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "segment_fixture.h"
#include "solve/solver.h"
#include "static/stepping.h"

namespace tidearc::test {
namespace {

TermVector along(int equation, double factor = 1.0, double scale = 1.0) {
  TermVector g;
  g.scale = scale;
  g.count = 1;
  g.equation[0] = equation;
  g.factor[0] = factor;
  return g;
}

class StepControl : public testing::Test {
 protected:
  StepControl() {
    three_node_model();
    carve_analysis_arrays();
    solver = SolverBlock{};
    step = StepBlock{};
    scaling = ScaleBlock{};
    step.NS = 1;
    step.NI = 1;
    segment.KSTEP = 2;
    segment.KNMS = 1;
    segment.KDIR = 1;
    segment.STEP0 = 0.1;
    statics.STEPF = 0.1;
  }

  ConstReals zero() { return {none_.data(), 6}; }
  void set(int vector, std::vector<double> values) {
    values.resize(7, 0.0);
    for (int e = 1; e <= 7; ++e) equation_vector(vector)(e) = values[static_cast<std::size_t>(e - 1)];
  }
  void begin_step() { STEPVEC(1, zero(), TargetMode::set); }
  /// SCALE0 on the first entries of da and du.
  bool find(std::vector<double> da, std::vector<double> du = {}) {
    set(arrays.RA, da);
    set(arrays.BFGS2, du);
    return SCALE0(pool.reals(arrays.RA, 6), pool.reals(arrays.BFGS2, 6), step.NI);
  }
  double du(int e) { return equation_vector(arrays.BFGS2)(e); }
  void take(std::vector<double> x) {
    x.resize(6, 0.0);
    STEPVEC(step.NI, {x.data(), 6}, TargetMode::take);
  }
  void begin_iteration(int KIPAR, std::vector<double> increment = {}) {
    segment.KITER = 2;
    segment.KIPAR = KIPAR;
    step.NI = 2;
    set(arrays.DSTEP, increment);
    STEPVEC(2, pool.reals(arrays.DSTEP, 6), TargetMode::set);
  }

  Scratch scratch;

 private:
  std::vector<double> none_ = std::vector<double>(6, 0.0);
};

TEST_F(StepControl, ALoadStepAndItsConstantLoadIterationsFindNothing) {
  segment.KSTEP = 1;
  step.DL = 0.25;
  EXPECT_TRUE(find({1.0}, {2.0}));
  EXPECT_EQ(step.DL, 0.25) << "the load increment of the step stands";
  EXPECT_EQ(du(1), 2.0);
  step.NI = 2;
  step.DL = 0.0;
  EXPECT_TRUE(find({1.0}, {2.0}));
  EXPECT_EQ(step.DL, 0.0);
}

// The Euclidean norm.

TEST_F(StepControl, TheFirstArcIsItsPartOfTheFirstTangentAndTheNextFollowsIt) {
  begin_step();
  EXPECT_EQ(scaling.SB, 0.1);
  EXPECT_TRUE(find({30.0, 40.0}));
  EXPECT_DOUBLE_EQ(scaling.SARC, 5.0);
  EXPECT_DOUBLE_EQ(statics.ARC, 5.0);
  EXPECT_DOUBLE_EQ(step.DL, 0.1);
  EXPECT_DOUBLE_EQ(du(2), 4.0);
  // With the base of before the measurement the second arc would be 0.1: a fiftieth of the first.
  step.NS = 2;
  begin_step();
  EXPECT_DOUBLE_EQ(scaling.SARC, 5.0);
  EXPECT_TRUE(find({30.0, 40.0}));
  EXPECT_DOUBLE_EQ(step.DL, 0.1);
}

TEST_F(StepControl, ARestepOfTheFirstStepDoesNotMeasureAgain) {
  begin_step();
  find({30.0, 40.0});
  statics.STEPF = 0.05;
  begin_step();
  EXPECT_DOUBLE_EQ(scaling.SARC, 2.5);
  EXPECT_TRUE(find({3.0, 4.0}));
  EXPECT_DOUBLE_EQ(scaling.SARC, 2.5);
  EXPECT_DOUBLE_EQ(step.DL, 0.5);
}

TEST_F(StepControl, AGivenArcIsTheBase) {
  statics.ARC = 2.0;
  statics.STEPF = 0.2;
  begin_step();
  EXPECT_EQ(scaling.SB, 2.0);
  EXPECT_DOUBLE_EQ(scaling.SARC, 4.0) << "twice the step of STEP0";
  EXPECT_TRUE(find({3.0, 4.0}));
  EXPECT_DOUBLE_EQ(step.DL, 0.8);
  EXPECT_EQ(statics.ARC, 2.0);
}

TEST_F(StepControl, AStepFactorOfZeroCountsAsItself) {
  segment.STEP0 = 0.0;
  statics.ARC = 2.0;
  statics.STEPF = 0.5;
  begin_step();
  EXPECT_EQ(scaling.SARC, 1.0);
}

TEST_F(StepControl, AnArcThatIsNoNumberIsNotKept) {
  begin_step();
  find({NAN});
  EXPECT_EQ(statics.ARC, 0.0);
}

TEST_F(StepControl, TheUnbalanceIsPartOfTheStep) {
  // 3, 4, 5: the unbalance alone moves 3 across; along the load 4 is left of an arc of 5.
  statics.ARC = 5.0;
  response.LEVEL = -9.0;
  begin_step();
  EXPECT_TRUE(find({0.0, 2.0}, {3.0, 0.0}));
  EXPECT_DOUBLE_EQ(step.DL, 2.0);
  EXPECT_DOUBLE_EQ(du(1), 3.0);
  EXPECT_DOUBLE_EQ(du(2), 4.0);
}

TEST_F(StepControl, WhatAnEventHasTakenOfTheArcIsNotSoughtAgain) {
  statics.ARC = 5.0;
  begin_step();
  take({1.2, 1.6});
  EXPECT_EQ(scaling.AARC, 2.0);
  response.LEVEL = -9.0;
  EXPECT_TRUE(find({0.0, 1.0}));
  EXPECT_DOUBLE_EQ(step.DL, 3.0);
}

TEST_F(StepControl, AnUnbalanceBeyondTheArcIsShortenedWithAWarning) {
  statics.ARC = 1.0;
  begin_step();
  EXPECT_TRUE(find({1.0, 0.0}, {-1.0, 2.0}));
  EXPECT_DOUBLE_EQ(du(2), 1.0) << "half of it touches the arc";
  EXPECT_DOUBLE_EQ(step.DL, 0.5);
  EXPECT_NEAR(du(1), 0.0, 1e-15);
  EXPECT_TRUE(has_line(scratch.report(),
                       "     **SCALE0** NEG. NS,RAD,A,B,C,DS=     1  -0.12000D+02   0.10000D+01  -0.20000D+01"
                       "   0.40000D+01   0.10000D+01"))
      << scratch.report();
}

TEST_F(StepControl, TheLevelOfAFirstIterationEndsAtOne) {
  statics.ARC = 5.0;
  response.LEVEL = 0.75;
  begin_step();
  EXPECT_TRUE(find({1.0}));
  EXPECT_EQ(step.DL, 0.25);
  response.LEVEL = -4.0;
  EXPECT_TRUE(find({1.0}));
  EXPECT_EQ(step.DL, 5.0) << "exactly up to the limit";
}

TEST_F(StepControl, AReferenceLoadThatMovesNothingFailsBothTrials) {
  begin_step();
  EXPECT_FALSE(find({0.0}, {0.0625, 0, 0, 0, 0, -2.0}));
  EXPECT_EQ(step.DL, 0.0);
  EXPECT_TRUE(has_block(scratch.report(), {" UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE",
                                           "  0.100E+00  0.000E+00  0.000E+00  0.399E+01  0.000E+00  0.000E+00",
                                           "   1  0.000E+00  0.625E-01   2  0.000E+00  0.000E+00   3  0.000E+00"
                                           "  0.000E+00   4  0.000E+00  0.000E+00   5  0.000E+00  0.000E+00",
                                           "   6  0.000E+00 -0.200E+01"}))
      << scratch.report();
  EXPECT_NE(scratch.contents("fort.53").find(" UNBALANCE TOO LARGE TO ACCOMODATE SPECIFIED STEP SIZE"),
            std::string::npos);
}

// The maximum value.

TEST_F(StepControl, TheLargestEntryReachesItsTarget) {
  segment.KNMS = 2;
  segment.SEGVAL = 20.0;
  begin_step();
  EXPECT_EQ(scaling.SMAX, 2.0);
  EXPECT_TRUE(find({4.0, 1.0}, {0.0, 0.5}));
  EXPECT_EQ(step.DL, 0.5);
  EXPECT_EQ(du(1), 2.0);
  take({0.25, -1.5});
  EXPECT_EQ(scaling.AMAX, 1.5);
  EXPECT_TRUE(find({4.0}));
  EXPECT_EQ(step.DL, 0.125);
}

TEST_F(StepControl, TheSignOfTheMaximumIsThatOfTheTrial) {
  segment.KNMS = 2;
  segment.SEGVAL = 20.0;
  begin_step();
  EXPECT_TRUE(find({-4.0})) << "a target of +2 would take the load away; -2 adds to it";
  EXPECT_EQ(step.DL, 0.5);
  EXPECT_EQ(du(1), -2.0);
}

TEST_F(StepControl, AMaximumThatNothingMovesTakesTheRestOfTheLevel) {
  segment.KNMS = 2;
  segment.SEGVAL = 20.0;
  response.LEVEL = 0.25;
  begin_step();
  EXPECT_TRUE(find({0.0}));
  EXPECT_EQ(step.DL, 0.75);
}

// Stepping vectors.

TEST_F(StepControl, TheCriticalVectorReachesItsTarget) {
  segment.KNMS = 3;
  segment.NSVEC = 2;
  segment.stepping[0] = along(1);
  segment.stepping[1] = along(2, -1.0, 5.0);
  begin_step();
  EXPECT_EQ(scaling.SARC, 0.1) << "the base is what the table shows";
  EXPECT_EQ(scaling.SVEC[1], 0.5);
  EXPECT_TRUE(find({1.0, 40.0}, {0.0, 0.125}));
  EXPECT_EQ(scaling.KCRIT, 2);
  EXPECT_EQ(step.DL, (-0.5 + 0.125) / -40.0) << "the trial of sign + would take the load away";
  EXPECT_TRUE(has_line(scratch.report(), "     CRITICAL VECTOR =    2"));
  for (step.NS = 1; step.NS <= 2; ++step.NS) {
    begin_step();
    take({0.0, -0.2});
    EXPECT_DOUBLE_EQ(scaling.SREM[1], 0.3) << "each step begins its account anew";
  }
}

TEST_F(StepControl, AStepAgainstTheVectorUsesItsTargetUp) {
  segment.KNMS = 3;
  segment.NSVEC = 1;
  segment.stepping[0] = along(1, 1.0, 5.0);
  begin_step();
  EXPECT_TRUE(find({-40.0})) << "the load moves the other way";
  EXPECT_EQ(scaling.sign, -1.0);
  take({-0.2});
  EXPECT_DOUBLE_EQ(scaling.SREM[0], 0.3);
  EXPECT_TRUE(find({-40.0}));
  EXPECT_DOUBLE_EQ(du(1), -0.3);
}

TEST_F(StepControl, OneVectorIsNotNamed) {
  segment.KNMS = 3;
  segment.NSVEC = 1;
  segment.stepping[0] = along(1);
  begin_step();
  EXPECT_TRUE(find({1.0}));
  EXPECT_EQ(scratch.report(), "");
}

TEST_F(StepControl, VectorsThatNothingMovesStopTheJob) {
  segment.KNMS = 3;
  segment.NSVEC = 1;
  segment.stepping[0] = along(1);
  begin_step();
  EXPECT_EQ(stop_of([&] { find({0.0, 1.0}); }), status_fatal);
  EXPECT_TRUE(has_block(scratch.report(),
                        {"     ERRORS! CHECK THE STEPPING VECTOR.", " NO DISPLACEMENT IS FOUND IN THE VECTOR"}));
}

// Directions.

TEST_F(StepControl, ADirectionVectorMayTakeTheLoadAway) {
  segment.KDIR = 3;
  segment.direction = along(1);
  statics.ARC = 1.0;
  begin_step();
  EXPECT_TRUE(find({-2.0}));
  EXPECT_EQ(step.DL, -0.5);
  EXPECT_EQ(du(1), 1.0);
}

TEST_F(StepControl, TheCriticalVectorCanBeTheDirection) {
  segment.KDIR = 2;
  segment.KNMS = 3;
  segment.NSVEC = 1;
  segment.stepping[0] = along(1);
  begin_step();
  EXPECT_TRUE(find({-2.0}));
  EXPECT_EQ(step.DL, -0.05);
}

TEST_F(StepControl, BothTrialsCanFailTheirDirection) {
  segment.KDIR = 3;
  segment.direction = along(2, -1.0);
  statics.ARC = 1.0;
  begin_step();
  EXPECT_FALSE(find({1.0, 0.0}, {0.0, 1.0})) << "both lie on the side of +2";
}

TEST_F(StepControl, TheFirstStepOfTheStiffnessParameterLoads) {
  for (const int KDIR : {4, 5}) {
    scaling = {};
    segment.KDIR = KDIR;
    statics.ARC = 1.0;
    step.NS = 1;
    solver.NNEG = 3;
    set(arrays.RINC, {8.0});
    begin_step();
    EXPECT_TRUE(find({2.0}));
    EXPECT_EQ(step.DL, 0.5) << "whatever the pivots";
    EXPECT_EQ(scaling.CSP0, 4.0);
    EXPECT_EQ(scaling.CSP, 1.0);
  }
}

TEST_F(StepControl, LaterStepsUnloadWhereTheStiffnessHasANegativePivot) {
  segment.KDIR = 4;
  statics.ARC = 1.0;
  scaling.CSP0 = 4.0;
  scaling.SB = 1.0;
  step.NS = 2;
  set(arrays.RINC, {8.0});
  begin_step();
  EXPECT_TRUE(find({4.0}));
  EXPECT_EQ(step.DL, 0.25);
  EXPECT_EQ(scaling.CSP, 0.5);
  solver.NNEG = 1;
  EXPECT_TRUE(find({-4.0}));
  EXPECT_EQ(step.DL, -0.25);
  EXPECT_EQ(du(1), 1.0) << "on along the path";
  EXPECT_EQ(scaling.CSP, -0.5);
}

TEST_F(StepControl, AFirstStepThatUnloadsFailsUnderTheStiffnessParameter) {
  segment.KDIR = 4;
  segment.KNMS = 2;
  segment.SEGVAL = 0.0;
  begin_step();
  EXPECT_FALSE(find({1.0}, {0.5})) << "both targets are 0, and take load away";
}

TEST_F(StepControl, TheStiffnessParameterSaturates) {
  segment.KDIR = 4;
  statics.ARC = 1.0;
  scaling.CSP0 = 4.0;
  step.NS = 2;
  begin_step();
  set(arrays.RINC, {1.0E-7});
  find({1.0});
  EXPECT_EQ(scaling.CSP, 999999.0);
  find({-1.0});
  EXPECT_EQ(scaling.CSP, -999999.0);
}

// Iterations.

TEST_F(StepControl, AnIterationDoesNoWork) {
  begin_iteration(1);
  set(arrays.RINC, {1.0, 2.0});
  EXPECT_TRUE(find({1.0, 1.0}, {4.0, 1.0}));
  EXPECT_EQ(step.DL, -2.0);
  EXPECT_EQ(du(1) + 2.0 * du(2), 0.0);
  take({2.0, -1.0});
  EXPECT_EQ(scaling.WREM, 0.0) << "nor is any left after an event";
  take({1.0, 1.0});
  EXPECT_EQ(scaling.WREM, -3.0) << "work that was done is taken back";
}

TEST_F(StepControl, WorkThatTheReferenceLoadCannotDoTakesNoLoad) {
  begin_iteration(1);
  set(arrays.RINC, {1.0});
  EXPECT_TRUE(find({0.0, 1.0}, {4.0}));
  EXPECT_EQ(step.DL, 0.0);
}

TEST_F(StepControl, AnUnknownIterationParameterActsAsWork) {
  for (const int KIPAR : {0, 5, 3}) {  // 3: there is no stepping vector
    begin_iteration(KIPAR);
    set(arrays.RINC, {1.0});
    EXPECT_TRUE(find({2.0}, {4.0}));
    EXPECT_EQ(step.DL, -2.0) << KIPAR;
  }
}

TEST_F(StepControl, AnIterationDoesNotMoveTheCriticalVector) {
  segment.KNMS = 3;
  segment.NSVEC = 2;
  segment.stepping[0] = along(1);
  segment.stepping[1] = along(2);
  begin_step();
  find({1.0, 2.0});
  begin_iteration(3);
  EXPECT_TRUE(find({5.0, 2.0}, {9.0, 3.0}));
  EXPECT_EQ(step.DL, -1.5) << "vector 2 stays the critical one";
}

TEST_F(StepControl, AnIterationDoesNotMoveItsVector) {
  segment.iteration = along(3, 2.0);
  begin_iteration(4);
  EXPECT_TRUE(find({0.0, 0.0, 4.0}, {1.0, 1.0, 1.0}));
  EXPECT_EQ(step.DL, -0.25);
  take({5.0, 5.0, 0.0});
  EXPECT_EQ(scaling.IREM, 0.0) << "a change cut by an event has not moved it either";
  take({0.0, 0.0, 0.5});
  take({0.0, 0.0, 0.25});
  EXPECT_EQ(scaling.IACC, 1.5) << "factor 2";
  EXPECT_EQ(scaling.IREM, -1.5);
  EXPECT_TRUE(find({0.0, 0.0, 3.0}, {0.0, 0.0, 0.75}));
  EXPECT_EQ(step.DL, -0.5) << "what an event has moved it is taken back: (-1.5 - 1.5) / 6";
  begin_iteration(4);
  EXPECT_EQ(scaling.IREM, 0.0) << "an iteration begins anew";
}

TEST_F(StepControl, AnIterationKeepsTheLengthOfTheStep) {
  begin_iteration(2, {1.0, 0.0});
  EXPECT_EQ(scaling.SARC, 1.0);
  EXPECT_TRUE(find({1.0, 0.0}, {0.0, 0.5}));
  EXPECT_NEAR(step.DL, std::sqrt(0.75) - 1.0, 1e-15);
  EXPECT_NEAR(std::hypot(1.0 + du(1), du(2)), 1.0, 1e-15);
}

TEST_F(StepControl, AnArcWithoutAReferenceSolutionTakesNoLoad) {
  begin_iteration(2, {1.0});
  EXPECT_TRUE(find({0.0}, {0.5}));
  EXPECT_EQ(step.DL, 0.0);
}

TEST_F(StepControl, ALevelMayPassOneInAnIteration) {
  segment.iteration = along(1);
  begin_iteration(4);
  response.LEVEL = 0.75;
  EXPECT_TRUE(find({1.0}, {-2.0}));
  EXPECT_EQ(step.DL, 2.0);
}

TEST_F(StepControl, AnIncrementThatLeavesTheArcEndsTheStep) {
  step.NS = 7;
  begin_iteration(2, {1.0, 0.0});
  EXPECT_FALSE(find({1.0, 0.0}, {0.0, 2.0}));
  EXPECT_TRUE(has_line(scratch.report(),
                       "     **SCALE0** NEG.RADICAL NSTEP,NIT,A,B,C=     7    2    0.10000D+01    0.20000D+01"
                       "    0.40000D+01"))
      << scratch.report();
}

TEST_F(StepControl, AStepWithoutAnIncrementHasNoAngle) {
  begin_iteration(2, {});
  EXPECT_FALSE(find({1.0, 0.0}, {2.0, 0.0}));
  EXPECT_TRUE(has_line(scratch.report(),
                       "     **SCALE0** DIVIDE BY 0, NSTEP,NIT,R1,R2,DPROD,DDALFA1,DDALFA2=     1    2"
                       "   -0.20000D+01   -0.20000D+01    0.00000D+00    0.00000D+00    0.00000D+00"))
      << scratch.report();
}

TEST_F(StepControl, RootsThatBothTurnBackEndTheStep) {
  begin_iteration(2, {1.0, 0.0});
  EXPECT_FALSE(find({0.0, 1.0}, {-1.5, 0.0}));
  EXPECT_EQ(step.DL, 0.0);
  EXPECT_TRUE(has_line(scratch.report(),
                       "     **SCALE0** NEGATIVE THETAS, NSTEP,NIT,THETA1,THETA2,DDALFA1,DDALFA2=     1    2"
                       "   -0.50000D+00   -0.50000D+00    0.10000D+01    0.10000D+01"))
      << scratch.report();
}

TEST_F(StepControl, CodesActAsTold) {
  segment.KNMS = 7;
  segment.KDIR = 0;
  EXPECT_EQ(step_measure(), StepMeasure::norm);
  EXPECT_EQ(step_direction(), StepDirection::load);
  segment.KDIR = -3;
  EXPECT_EQ(step_direction(), StepDirection::load);
  segment.KDIR = 5;
  EXPECT_EQ(step_direction(), StepDirection::stiffness);
  EXPECT_TRUE(finds_load(1));
  EXPECT_FALSE(finds_load(2));
  segment.KSTEP = 3;
  segment.KITER = 2;
  EXPECT_FALSE(finds_load(1));
  EXPECT_TRUE(finds_load(2));
}

}  // namespace
}  // namespace tidearc::test
