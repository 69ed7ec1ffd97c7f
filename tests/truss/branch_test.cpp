// The walk of the truss's two branches. Numbers: SK1 90, SK2 10, yield forces +-0.9, so the first branch yields at an
// extension of 0.01 from rest; with SK1 100, SK2 0 and yield forces +-1 likewise.
#include "elements/truss/branch.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tidearc {
namespace {

constexpr BranchLaw hardening{90.0, 10.0, 0.9, -0.9, law_symmetric};
constexpr BranchLaw perfect{100.0, 0.0, 1.0, -1.0, law_symmetric};
constexpr BranchLaw strut{100.0, 0.0, 1.0, -1.0, law_buckling};

void expect_whole_walk(double fractions) { EXPECT_NEAR(fractions, 1.0, 1e-7); }

TEST(BranchWalk, ElasticTrialBelowYieldIsTaken) {
  BranchState state{};
  expect_whole_walk(walk_branches(hardening, 0.005, state));
  EXPECT_DOUBLE_EQ(state.F1, 0.45);
  EXPECT_DOUBLE_EQ(state.F2, 0.05);
  EXPECT_EQ(state.code, truss_elastic);
}

TEST(BranchWalk, ReachingTheYieldLevelExactlyYields) {
  BranchState state{};
  walk_branches(perfect, 0.01, state);
  EXPECT_EQ(state.code, truss_yielded);
  EXPECT_EQ(state.F1, 1.0);
  EXPECT_NEAR(state.PLPOS, 0.0, 1e-17);
}

TEST(BranchWalk, BeyondYieldTheRestIsPlastic) {
  BranchState state{};
  expect_whole_walk(walk_branches(hardening, 0.06, state));
  EXPECT_EQ(state.F1, 0.9);
  EXPECT_DOUBLE_EQ(state.F2, 0.6);
  EXPECT_NEAR(state.PLPOS, 0.05, 1e-15);
  EXPECT_EQ(state.PLNEG, 0.0);
  EXPECT_EQ(state.code, truss_yielded);
}

TEST(BranchWalk, CompressionYieldsAtItsOwnLevel) {
  BranchState state{};
  walk_branches({100.0, 0.0, 1.0, -0.5, law_symmetric}, -0.02, state);
  EXPECT_EQ(state.F1, -0.5);
  EXPECT_NEAR(state.PLNEG, -0.015, 1e-15);
  EXPECT_EQ(state.PLPOS, 0.0);
}

TEST(BranchWalk, UnloadingIsElastic) {
  BranchState state{1.0, 0.0, 0.02, 0.0, 0.0, truss_yielded};
  expect_whole_walk(walk_branches(perfect, -0.004, state));
  EXPECT_EQ(state.code, truss_elastic);
  EXPECT_NEAR(state.F1, 0.6, 1e-15);
  EXPECT_EQ(state.PLPOS, 0.02);
}

// From yield in tension (force 1) through elastic unloading over 0.02 to yield in compression, then 0.03 plastic.
TEST(BranchWalk, BothYieldLevelsAreWalkedInOneCall) {
  BranchState state{1.0, 0.0, 0.0, 0.0, 0.0, truss_yielded};
  expect_whole_walk(walk_branches(perfect, -0.05, state));
  EXPECT_EQ(state.F1, -1.0);
  EXPECT_NEAR(state.PLNEG, -0.03, 1e-15);
  EXPECT_EQ(state.code, truss_yielded);
}

// Kinematic hardening: the elastic range of the total force keeps its width of 1.8 around the moved centre F2.
TEST(BranchWalk, HardeningIsKinematic) {
  BranchState state{};
  walk_branches(hardening, 0.06, state);   // total 1.5
  walk_branches(hardening, -0.02, state);  // elastic range 0.02 wide: just to yield in compression
  EXPECT_NEAR(state.F1, -0.9, 1e-14);
  EXPECT_NEAR(state.F1 + state.F2, 1.5 - 2.0, 1e-14);
  EXPECT_NEAR(state.PLNEG, 0.0, 1e-15);
}

TEST(BranchWalk, AStrutStaysAtItsBucklingForceUntilItsShorteningIsTakenUp) {
  BranchState state{};
  walk_branches(strut, -0.04, state);
  EXPECT_EQ(state.F1, -1.0);
  EXPECT_NEAR(state.PLBUCK, 0.03, 1e-15);

  expect_whole_walk(walk_branches(strut, 0.02, state));
  EXPECT_EQ(state.F1, -1.0) << "extends at constant force";
  EXPECT_EQ(state.code, truss_yielded);
  EXPECT_NEAR(state.PLBUCK, 0.01, 1e-15);
  EXPECT_EQ(state.PLPOS, 0.0);

  expect_whole_walk(walk_branches(strut, 0.015, state));  // 0.01 of take-up, then 0.005 elastic
  EXPECT_EQ(state.code, truss_elastic);
  EXPECT_NEAR(state.F1, -0.5, 1e-13);
  EXPECT_EQ(state.PLBUCK, 0.0);
}

// Straight again at the very end of the increment: exhausted, so the code returns to elastic.
TEST(BranchWalk, TakeUpThatEndsWithTheIncrementEndsElastic) {
  BranchState state{-1.0, 0.0, 0.0, -0.03, 0.03125, truss_yielded};
  expect_whole_walk(walk_branches(strut, 0.03125, state));
  EXPECT_EQ(state.code, truss_elastic);
  EXPECT_EQ(state.F1, -1.0);
}

// Take-up 0.03, elastic over 0.02 from -1 to +1, plastic 0.05: three legs and a fourth in one increment.
TEST(BranchWalk, AStrutIsPulledThroughStraightToTensionYieldInOneCall) {
  BranchState state{-1.0, 0.0, 0.0, -0.03, 0.03, truss_yielded};
  expect_whole_walk(walk_branches(strut, 0.1, state));
  EXPECT_EQ(state.F1, 1.0);
  EXPECT_NEAR(state.PLPOS, 0.05, 1e-14);
  EXPECT_NEAR(state.PLBUCK, -0.05, 1e-14) << "tension yield may leave it negative, without effect";
}

TEST(BranchWalk, BucklingAgainStartsTheShorteningAnew) {
  BranchState state{1.0, 0.0, 0.05, -0.03, -0.05, truss_yielded};
  walk_branches(strut, -0.03, state);  // unload 0.02 to -1, then 0.01 plastic
  EXPECT_EQ(state.F1, -1.0);
  EXPECT_NEAR(state.PLBUCK, 0.01, 1e-15);
}

TEST(BranchWalk, ABuckledStrutInTensionUnloadsLikeAnyOther) {
  BranchState state{1.0, 0.0, 0.05, 0.0, 0.0, truss_yielded};
  walk_branches(strut, -0.005, state);
  EXPECT_EQ(state.code, truss_elastic);
  EXPECT_NEAR(state.F1, 0.5, 1e-15);
}

TEST(BranchWalk, NoHardeningKeepsTheSecondBranchAtZero) {
  BranchState state{};
  walk_branches(perfect, 0.5, state);
  EXPECT_EQ(state.F2, 0.0);
  EXPECT_EQ(branch_tangent(state.code, perfect.SK1, perfect.SK2), 0.0);
}

// With EH/E of 1 the first branch has neither stiffness nor strength.
TEST(BranchWalk, FullHardeningIsLinear) {
  BranchState state{};
  expect_whole_walk(walk_branches({0.0, 100.0, 0.0, -0.0, law_symmetric}, 0.5, state));
  EXPECT_EQ(state.F1, 0.0);
  EXPECT_EQ(state.F2, 50.0);
  EXPECT_EQ(state.code, truss_elastic);
}

TEST(BranchWalk, NoIncrementChangesNothing) {
  for (const int code : {truss_elastic, truss_yielded}) {
    BranchState state{0.5, 0.25, 0.1, -0.1, 0.2, code};
    walk_branches(hardening, 0.0, state);
    EXPECT_EQ(state.F1, 0.5);
    EXPECT_EQ(state.F2, 0.25);
    EXPECT_EQ(state.PLPOS, 0.1);
    EXPECT_EQ(state.PLNEG, -0.1);
    EXPECT_EQ(state.PLBUCK, 0.2);
    EXPECT_EQ(state.code, code);
  }
}

TEST(BranchWalk, AForceBeyondYieldComesBackToTheLevel) {
  BranchState state{3.0, 0.0, 0.0, 0.0, 0.0, truss_elastic};
  expect_whole_walk(walk_branches(perfect, 0.01, state));
  EXPECT_EQ(state.F1, 1.0);
  EXPECT_NEAR(state.PLPOS, 0.01, 1e-17);
}

// Laws that no material has, as letters in a deck may make them, must not keep the walk going.
TEST(BranchWalk, EndsForEveryLaw) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double inf = std::numeric_limits<double>::infinity();
  for (const double SK1 : {-100.0, 0.0, 100.0, inf, nan}) {
    for (const double FY : {-1.0, 0.0, 1.0, nan}) {
      for (const int KBUCK : {0, 1}) {
        for (const double dE : {-0.1, 0.1, inf, nan}) {
          for (const int code : {0, 1}) {
            BranchState state{0.5, 0.0, 0.0, 0.0, nan, code};
            walk_branches({SK1, 0.0, FY, -FY, KBUCK}, dE, state);
          }
        }
      }
    }
  }
}

TEST(FailedWalk, CodeFollowsForceAndMotion) {
  struct Case {
    double F1, dE;
    int code;
  };
  for (const Case& c : {Case{1.0, 0.001, truss_failed_outward}, Case{1.0, -0.001, truss_failed_inward},
                        Case{-1.0, 0.001, truss_failed_inward}, Case{-1.0, -0.001, truss_failed_outward}}) {
    FailingState state{c.F1, 50.0, truss_failed_outward};
    walk_failed(c.dE, state);
    EXPECT_EQ(state.code, c.code);
    EXPECT_NEAR(std::abs(state.F1), 0.95, 1e-15) << "the magnitude falls whatever the motion";
    EXPECT_EQ(state.SK2, c.code == truss_failed_outward ? -50.0 : 50.0);
  }
}

TEST(FailedWalk, ForceThatCrossesZeroIsGone) {
  for (const double F1 : {1.0, -1.0}) {
    FailingState state{F1, 50.0, truss_failed_outward};
    walk_failed(0.021, state);
    EXPECT_EQ(state.F1, 0.0);
    EXPECT_EQ(state.SK2, 1.0e-8);
    EXPECT_EQ(state.code, truss_gone);
    walk_failed(10.0, state);
    EXPECT_EQ(state.F1, 0.0);
    EXPECT_EQ(state.code, truss_gone);
  }
}

TEST(FailedWalk, NoIncrementKeepsTheCode) {
  FailingState state{1.0, 50.0, truss_failed_inward};
  walk_failed(0.0, state);
  EXPECT_EQ(state.code, truss_failed_inward);
  EXPECT_EQ(state.F1, 1.0);
}

TEST(BeginFailure, TakesBothBranchesAndHalfTheStiffness) {
  const FailingState outward = begin_failure(0.9, 0.3, 90.0, 10.0, 0.01);
  EXPECT_DOUBLE_EQ(outward.F1, 1.2);
  EXPECT_EQ(outward.SK2, -50.0);
  EXPECT_EQ(outward.code, truss_failed_outward);
  const FailingState inward = begin_failure(0.9, 0.3, 90.0, 10.0, -0.01);
  EXPECT_EQ(inward.SK2, 50.0);
  EXPECT_EQ(inward.code, truss_failed_inward);
}

TEST(BranchTangent, IsThatOfTheCode) {
  EXPECT_EQ(branch_tangent(truss_elastic, 90.0, 10.0), 100.0);
  EXPECT_EQ(branch_tangent(truss_yielded, 90.0, 10.0), 10.0);
  EXPECT_EQ(branch_tangent(truss_failed_outward, 0.0, -50.0), 50.0);
  EXPECT_EQ(branch_tangent(truss_failed_inward, 0.0, 50.0), 50.0);
  EXPECT_EQ(branch_tangent(truss_gone, 0.0, 1.0e-8), 1.0e-8);
}

}  // namespace
}  // namespace tidearc
