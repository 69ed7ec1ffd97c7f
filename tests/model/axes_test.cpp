// Local coordinate systems and the nodes that use them.
#include <cmath>

#include "node_model.h"

namespace tidearc::test {
namespace {

SizeBlock size_of(int NUMNP, int NCSYS, int NDSYS) {
  SizeBlock s;
  s.NUMNP = NUMNP;
  s.NCSYS = NCSYS;
  s.NDSYS = NDSYS;
  return s;
}

std::string system_card(int a, const std::vector<std::string>& Va, int b, const std::vector<std::string>& Vb) {
  return fives({a}) + tens(Va) + "     " + fives({b}) + tens(Vb) + "\n";
}
const std::string skew = system_card(1, {"3.", "4.", "0."}, 2, {"0.", "1.", "0."});

void expect_axis(int system, int k, double x, double y, double z) {
  const RealTable AXES = axes_of(system);
  EXPECT_NEAR(AXES(1, k), x, 1e-15) << "direction " << k;
  EXPECT_NEAR(AXES(2, k), y, 1e-15) << "direction " << k;
  EXPECT_NEAR(AXES(3, k), z, 1e-15) << "direction " << k;
}

void expect_right_handed(int system) {
  const RealTable A = axes_of(system);
  const double det = A(1, 1) * (A(2, 2) * A(3, 3) - A(3, 2) * A(2, 3)) -
                     A(1, 2) * (A(2, 1) * A(3, 3) - A(3, 1) * A(2, 3)) +
                     A(1, 3) * (A(2, 1) * A(3, 2) - A(3, 1) * A(2, 2));
  EXPECT_NEAR(det, 1.0, 1e-14);
  for (int j = 1; j <= 3; ++j) {
    for (int k = 1; k <= 3; ++k) {
      const double dot = A(1, j) * A(1, k) + A(2, j) * A(2, k) + A(3, j) * A(3, k);
      EXPECT_NEAR(dot, j == k ? 1.0 : 0.0, 1e-14);
    }
  }
}

TEST(Axes, KeepTheFirstDirectionAndAdjustTheSecond) {
  NodeModel m(skew, size_of(1, 1, 0));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_axis(1, 1, 0.6, 0.8, 0.0);
  expect_axis(1, 2, -0.8, 0.6, 0.0);
  expect_axis(1, 3, 0.0, 0.0, 1.0);
}

TEST(Axes, AreRightHandedForEveryPairOfDirections) {
  for (int a = 1; a <= 3; ++a) {
    for (int b = 1; b <= 3; ++b) {
      if (a == b) continue;
      NodeModel m(system_card(a, {"1.", "2.", "3."}, b, {"-2.", "1.", "5."}), size_of(1, 1, 0));
      AXESIN();
      EXPECT_EQ(run.RUNMOD, 0);
      expect_right_handed(1);
      const double length = std::sqrt(14.0);
      expect_axis(1, a, 1.0 / length, 2.0 / length, 3.0 / length);
      // Direction b stays on the side of the vector that was given for it.
      const RealTable A = axes_of(1);
      EXPECT_GT(-2.0 * A(1, b) + 1.0 * A(2, b) + 5.0 * A(3, b), 0.0) << a << b;
    }
  }
}

TEST(Axes, OfThirdAndFirstDirectionGiveTheSecond) {
  NodeModel m(system_card(3, {"0.", "0.", "2."}, 1, {"1.", "0.", "9."}), size_of(1, 1, 0));
  AXESIN();
  expect_axis(1, 1, 1.0, 0.0, 0.0);
  expect_axis(1, 2, 0.0, 1.0, 0.0);
}

TEST(Axes, AreEchoedAndListed) {
  NodeModel m(skew, size_of(1, 1, 0));
  AXESIN();
  EXPECT_TRUE(m.reports("1\n NODAL LOCAL COORDINATE SYSTEMS\n"));
  EXPECT_TRUE(m.reports(" INPUT DEFINITION OF COORDINATE SYSTEMS\n"));
  EXPECT_TRUE(m.reports("COMPONENTS IN MASTER SYSTEM"));
  EXPECT_TRUE(
      m.reports("\n           1        1          3.0000     4.0000     0.0000\n"
                "                    2          0.0000     1.0000     0.0000\n"))
      << m.report();
  EXPECT_TRUE(m.reports(" COMPUTED LOCAL COORDINATE AXES - ORTHONORMALIZED\n"));
  EXPECT_TRUE(
      m.reports("\n           1        1          0.6000     0.8000     0.0000\n"
                "                    2         -0.8000     0.6000     0.0000\n"
                "                    3          0.0000     0.0000     1.0000\n"));
}

TEST(Axes, WithoutSystemsSaySo) {
  NodeModel m("", size_of(1, 0, 0));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(m.report(), "1\n NODAL LOCAL COORDINATE SYSTEMS\n\n ALL NODES IN MASTER COORDINATE SYSTEM\n");
}

TEST(Axes, WithoutSystemsButWithAssignmentsAreADataError) {
  NodeModel m("", size_of(1, 0, 2));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     NCSYS =     0     NDSYS =     2\n")) << m.report();
}

TEST(Axes, WithANegativeCountAreADataError) {
  NodeModel m("", size_of(1, -1, 0));
  AXESIN();
  EXPECT_TRUE(m.reports("NCSYS =    -1     NDSYS =     0\n"));
}

TEST(Axes, NeedTwoDifferentDirectionsOfOneToThree) {
  for (const auto& [a, b] : {std::pair{1, 1}, {0, 2}, {1, 4}, {-1, 2}, {12, 3}}) {
    NodeModel m(system_card(a, {"1.", "0.", "0."}, b, {"0.", "1.", "0."}), size_of(1, 1, 0));
    AXESIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     LOCAL DIRECTIONS MUST BE 1, 2 OR 3 AND DIFFERENT\n"));
    expect_axis(1, 1, 1.0, 0.0, 0.0);  // the master axes stay
    expect_axis(1, 3, 0.0, 0.0, 1.0);
  }
}

TEST(Axes, ReportEachZeroVector) {
  NodeModel m(system_card(1, {"0.", "0.", "0."}, 2, {"0.", "0.", "0."}), size_of(1, 1, 0));
  AXESIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     ZERO VECTOR 1\n"));
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     ZERO VECTOR 2\n"));
  expect_right_handed(1);
}

TEST(Axes, ReportParallelVectorsAsAZeroThirdVector) {
  NodeModel m(system_card(1, {"2.", "0.", "0."}, 2, {"-1.", "0.", "0."}), size_of(1, 1, 0));
  AXESIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("ZERO VECTOR 3\n"));
  expect_axis(1, 1, 1.0, 0.0, 0.0);
}

TEST(Axes, HaveTheirZeroAtALengthOfTenToTheMinusEight) {
  NodeModel at(system_card(1, {"1.0E-8", "0.", "0."}, 2, {"0.", "1.", "0."}), size_of(1, 1, 0));
  AXESIN();
  EXPECT_TRUE(at.reports("ZERO VECTOR 1"));
  NodeModel above(system_card(1, {"1.1E-8", "0.", "0."}, 2, {"0.", "1.", "0."}), size_of(1, 1, 0));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 0);
}

std::string assignment(int first, int system, int last = 0, int difference = 0, const std::vector<int>& list = {}) {
  return fives({first, system, last, difference}) + fives(list) + "\n";
}

TEST(Assignment, ToOneNode) {
  NodeModel m(skew + assignment(2, 1), size_of(3, 1, 1));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(system_of(1), 0);
  EXPECT_EQ(system_of(2), 1);
  EXPECT_EQ(system_of(3), 0);
}

TEST(Assignment, ToARowOfNodes) {
  NodeModel m(skew + assignment(1, 1, 6, 2), size_of(6, 1, 1));
  AXESIN();
  EXPECT_EQ(system_of(1) + system_of(3) + system_of(5), 3);
  EXPECT_EQ(system_of(2) + system_of(4) + system_of(6), 0);
}

TEST(Assignment, TakesADifferenceOfZeroAsOne) {
  NodeModel m(skew + assignment(2, 1, 4), size_of(4, 1, 1));
  AXESIN();
  EXPECT_EQ(system_of(1), 0);
  EXPECT_EQ(system_of(2) + system_of(3) + system_of(4), 3);
}

TEST(Assignment, ToAListUpToItsZeroEntry) {
  NodeModel m(skew + assignment(1, 1, 9, -1, {4, 0, 3}), size_of(4, 1, 1));
  AXESIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(system_of(1), 1);
  EXPECT_EQ(system_of(4), 1);
  EXPECT_EQ(system_of(3), 0);
}

TEST(Assignment, IsEchoedAndListed) {
  NodeModel m(skew + assignment(1, 1, 0, 0, {3}), size_of(3, 1, 1));
  AXESIN();
  EXPECT_TRUE(m.reports(" INPUT NODAL COORDINATE SYSTEM ASSIGNMENT\n"));
  EXPECT_TRUE(m.reports("\n\n         1          1         0         0         3\n")) << m.report();
  EXPECT_TRUE(m.reports(" GENERATED NODAL COORDINATE SYSTEM ASSIGNMENT\n"));
  EXPECT_TRUE(m.reports("     NOTE - ALL NODES NOT LISTED ARE\n     IN MASTER COORDINATE SYSTEM\n"));
  EXPECT_TRUE(m.reports("         1         1\n         3         1\n"));
  EXPECT_TRUE(m.reports(" NOTE - ALL FURTHER DEFINITION OF NODAL QUANTITIES (CONSTRAINED DOF, MASSES,\n"));
  EXPECT_TRUE(m.reports("PRESCRIBED FORCES AND DISPLACEMENTS) FOR THE ABOVE LISTED NODES\n"));
  EXPECT_TRUE(m.reports("MUST BE GIVEN IN THE SPECIFIED LOCAL COORDINATE SYSTEM.\n"));
  EXPECT_TRUE(m.reports("ALL OUTPUT NODAL QUANTITIES WILL BE GIVEN IN NODAL LOCAL COORDINATES.\n"));
}

TEST(Assignment, OfARowIsEchoedTwelveToALine) {
  NodeModel m(skew + assignment(1, 1, 14), size_of(14, 1, 1));
  AXESIN();
  EXPECT_TRUE(m.reports("   12   13\n" + std::string(46, ' ') + "   14\n")) << m.report();
}

TEST(Assignment, OfASystemThatDoesNotExistIsABadSystem) {
  for (const int system : {0, 2, -1}) {
    NodeModel m(skew + assignment(1, system), size_of(1, 1, 1));
    AXESIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BAD COORD SYSTEM\n"));
    EXPECT_EQ(system_of(1), 0);
  }
}

TEST(Assignment, OfARowThatCannotBeFollowedIsABadLoop) {
  for (const std::string& bad :
       {assignment(0, 1, 2), assignment(3, 1, 2), assignment(1, 1, 4), assignment(1, 1, 3, -1), assignment(1, 1, -3)}) {
    NodeModel m(skew + bad, size_of(3, 1, 1));
    AXESIN();
    EXPECT_EQ(m.data_errors(), 1) << bad;
    EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BAD LOOP\n")) << bad;
    EXPECT_EQ(system_of(1) + system_of(2) + system_of(3), 0) << bad;
  }
}

TEST(Assignment, ReportsEveryListEntryOutsideTheModel) {
  NodeModel m(skew + assignment(1, 1, 0, 0, {2, 4, -1, 3}), size_of(3, 1, 1));
  AXESIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BAD LIST\n"));
  EXPECT_EQ(system_of(2) + system_of(3), 2);
  EXPECT_NE(m.scratch.errors().find("line 2, columns 26-30: BAD LIST"), std::string::npos);
}

TEST(Assignment, OfASingleNodeOutsideTheModelIsOutOfRange) {
  for (const std::string& bad : {assignment(4, 1), assignment(0, 1), assignment(4, 1, 0, 0, {2})}) {
    NodeModel m(skew + bad, size_of(3, 1, 1));
    AXESIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports("  OUT OF RANGE, ENTERING CHEC MODE"));
    EXPECT_EQ(system_of(2), 0);
  }
}

TEST(Turning, ToGlobalAndBackGivesTheSameVector) {
  NodeModel m(skew + assignment(2, 1), size_of(2, 1, 1));
  AXESIN();
  std::array<double, 3> v{1.0, 0.0, 7.0};
  to_global(2, v.data());
  EXPECT_NEAR(v[0], 0.6, 1e-15);
  EXPECT_NEAR(v[1], 0.8, 1e-15);
  EXPECT_DOUBLE_EQ(v[2], 7.0);
  to_local(2, v.data());
  EXPECT_NEAR(v[0], 1.0, 1e-15);
  EXPECT_NEAR(v[1], 0.0, 1e-15);
  to_global(1, v.data());
  EXPECT_NEAR(v[0], 1.0, 1e-15);  // node 1 stands in the master system
}

TEST(Turning, WithoutSystemsChangesNothing) {
  NodeModel m("", size_of(1, 0, 0));
  std::array<double, 3> v{1.0, 2.0, 3.0};
  to_global(1, v.data());
  to_local(1, v.data());
  EXPECT_EQ(v, (std::array<double, 3>{1.0, 2.0, 3.0}));
}

}  // namespace
}  // namespace tidearc::test
