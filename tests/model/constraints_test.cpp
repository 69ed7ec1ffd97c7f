// Constraint commands, identical displacements, equation numbers.
#include "node_model.h"

namespace tidearc::test {
namespace {

SizeBlock size_of(int NUMNP, int NZERO, int NEQUAL = 0, int IBANDW = 0) {
  SizeBlock s;
  s.NUMNP = NUMNP;
  s.NZERO = NZERO;
  s.NEQUAL = NEQUAL;
  s.IBANDW = IBANDW;
  return s;
}

std::string constraint(int first, const std::string& code, int last = 0, int difference = 0,
                       const std::vector<int>& list = {}) {
  return fives({first}) + "    " + code + fives({last, difference}) + fives(list) + "\n";
}
std::string tie(const std::string& code, const std::vector<int>& list) { return code + "    " + fives(list) + "\n"; }

std::vector<int> row(int node) {
  std::vector<int> values;
  for (int c = 1; c <= 6; ++c) values.push_back(equation_of(node, c));
  return values;
}

TEST(Equations, RunNodeByNodeInTheOrderOfTheComponents) {
  NodeModel m("", size_of(2, 0));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 12);
  EXPECT_EQ(row(1), (std::vector<int>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(row(2), (std::vector<int>{7, 8, 9, 10, 11, 12}));
}

TEST(Equations, StandComponentAfterComponentInTheTable) {
  NodeModel m("", size_of(3, 0));
  DOFIN();
  EXPECT_EQ(equation_at((4 - 1) * 3 + 2), equation_of(2, 4));
  EXPECT_EQ(pool.integers(nodes.ID, 18)((4 - 1) * 3 + 2), 10);  // node 2, rotation X: 6 of node 1, then the fourth
}

TEST(Constraints, PointAtTheSinkBehindTheLastEquation) {
  NodeModel m(constraint(1, "111000"), size_of(1, 1));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 3);
  EXPECT_EQ(row(1), (std::vector<int>{4, 4, 4, 1, 2, 3}));
}

TEST(Constraints, TakeAnyNonZeroDigitAndBlanksAsFree) {
  NodeModel m(constraint(1, "9 1 2 "), size_of(1, 1));
  DOFIN();
  EXPECT_EQ(row(1), (std::vector<int>{4, 1, 4, 2, 4, 3}));
}

TEST(Constraints, OfALaterCommandReplaceTheWholeRow) {
  NodeModel m(constraint(1, "111111") + constraint(1, "010000"), size_of(1, 2));
  DOFIN();
  EXPECT_EQ(row(1), (std::vector<int>{1, 6, 2, 3, 4, 5}));
}

TEST(Constraints, ReachFromFirstToLastByTheDifference) {
  NodeModel m(constraint(1, "111111", 6, 2), size_of(6, 1));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 18);
  EXPECT_EQ(equation_of(5, 1), 19);
  EXPECT_EQ(equation_of(6, 1), 13);
}

TEST(Constraints, TakeADifferenceOfZeroAsOne) {
  NodeModel m(constraint(2, "111111", 4), size_of(4, 1));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 6);
}

TEST(Constraints, PreferAListToALastNode) {
  NodeModel m(constraint(1, "111111", 99, -5, {3}), size_of(4, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(sizes.NEQ, 12);
  EXPECT_EQ(equation_of(2, 1), 1);
  EXPECT_EQ(equation_of(3, 1), 13);
}

TEST(Constraints, CountOnlyTheLeadingPositiveEntriesOfAList) {
  NodeModel m(constraint(1, "111111", 0, 0, {2, 0, 3}), size_of(3, 1));
  DOFIN();
  EXPECT_EQ(equation_of(3, 1), 1);
}

TEST(Constraints, AreEchoedInTheirColumns) {
  NodeModel m(constraint(1, "101010") + constraint(1, "100000", 3) + constraint(1, "100000", 0, 0, {2, 3}),
              size_of(3, 3));
  DOFIN();
  EXPECT_TRUE(m.reports("1\n CONSTRAINED DISPLACEMENT COMMANDS\n"));
  EXPECT_TRUE(m.reports("         1       1    0    1         0    1    0           0         0\n")) << m.report();
  EXPECT_TRUE(m.reports("         1       1    0    0         0    0    0           3         0         2    3\n"));
  EXPECT_TRUE(m.reports("         1       1    0    0         0    0    0           0         0         2    3\n"));
}

TEST(Constraints, OfAGeneratedRowAreEchoedElevenToALine) {
  NodeModel m(constraint(1, "100000", 14), size_of(14, 1));
  DOFIN();
  EXPECT_TRUE(m.reports("    0         2    3    4    5    6    7    8    9   10   11   12\n" + std::string(75, ' ') +
                        "   13   14\n"))
      << m.report();
}

TEST(Constraints, WithoutCommandsSayNone) {
  NodeModel m("", size_of(1, 0));
  DOFIN();
  EXPECT_TRUE(m.reports("1\n CONSTRAINED DISPLACEMENT COMMANDS\n\n (NONE)\n"));
}

TEST(Constraints, WithANegativeDifferenceAreABadLoop) {
  NodeModel m(constraint(1, "111111", 3, -1), size_of(3, 1));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BAD LOOP\n"));
  EXPECT_EQ(sizes.NEQ, 18);
}

TEST(Constraints, WithALastNodeBelowTheFirstAreThoseOfTheFirstAlone) {
  for (const int difference : {0, 1, 2}) {
    NodeModel m(constraint(3, "111111", 1, difference), size_of(3, 1));
    DOFIN();
    EXPECT_EQ(run.RUNMOD, 0) << m.report();
    EXPECT_EQ(sizes.NEQ, 12);
    EXPECT_EQ(equation_of(3, 1), 13);
    EXPECT_EQ(row(1), (std::vector<int>{1, 2, 3, 4, 5, 6}));
  }
}

TEST(Constraints, WithALastNodeBelowTheFirstAreEchoedWithoutAList) {
  NodeModel m(constraint(3, "100000", 2), size_of(3, 1));
  DOFIN();
  EXPECT_TRUE(m.reports("         3       1    0    0         0    0    0           2         0\n")) << m.report();
}

TEST(Constraints, WithALastNodeBelowTheFirstAndANegativeDifferenceAreABadLoop) {
  NodeModel m(constraint(3, "111111", 1, -1), size_of(3, 1));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BAD LOOP\n"));
  EXPECT_EQ(sizes.NEQ, 18);
}

TEST(Constraints, OfOneNodeDoNotUseTheirDifference) {
  NodeModel m(constraint(2, "111111", 0, -1), size_of(3, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(equation_of(2, 1), 13);
}

TEST(Constraints, OnNodesOutOfRangeAreSkipped) {
  for (const std::string& bad : {constraint(0, "111111"), constraint(4, "111111"), constraint(-2, "111111", 3),
                                 constraint(1, "111111", 4), constraint(1, "111111", -1)}) {
    NodeModel m(bad, size_of(3, 1));
    DOFIN();
    EXPECT_EQ(m.data_errors(), 1) << bad;
    EXPECT_TRUE(m.reports("  OUT OF RANGE, ENTERING CHEC MODE")) << bad;
    EXPECT_EQ(sizes.NEQ, 18) << bad;
  }
}

TEST(Constraints, SkipAListEntryOutOfRange) {
  NodeModel m(constraint(1, "111111", 0, 0, {2, 9, 3}), size_of(4, 1));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("NODE     9  OUT OF RANGE"));
  EXPECT_NE(m.scratch.errors().find("line 1, columns 31-35"), std::string::npos);
  EXPECT_EQ(sizes.NEQ, 6);
  EXPECT_EQ(equation_of(3, 6), 7);
}

TEST(IdenticalDisplacements, ShareTheEquationOfTheMaster) {
  NodeModel m(tie("101000", {1, 2, 3}), size_of(3, 0, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(sizes.NEQ, 14);
  EXPECT_EQ(equation_of(2, 1), 1);
  EXPECT_EQ(equation_of(3, 3), 3);
  EXPECT_EQ(equation_of(2, 2), 7);
}

TEST(IdenticalDisplacements, MayNameAMasterOfHigherNumber) {
  NodeModel m(tie("100000", {3, 1}), size_of(3, 0, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(equation_of(1, 1), equation_of(3, 1));
  EXPECT_EQ(sizes.NEQ, 17);
}

TEST(IdenticalDisplacements, WithAConstrainedMasterAreConstrained) {
  NodeModel m(constraint(1, "100000") + tie("100000", {1, 2}), size_of(2, 1, 1));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 10);
  EXPECT_EQ(equation_of(2, 1), 11);
}

TEST(IdenticalDisplacements, OverwriteAConstraintOfTheSlave) {
  NodeModel m(constraint(2, "100000") + tie("100000", {1, 2}), size_of(2, 1, 1));
  DOFIN();
  EXPECT_EQ(equation_of(2, 1), 1);
}

TEST(IdenticalDisplacements, LeaveTheMasterAsItIsEvenWhenItIsListedAgain) {
  NodeModel m(tie("111111", {2, 1, 2}), size_of(2, 0, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(sizes.NEQ, 6);
  EXPECT_EQ(equation_of(2, 1), 1);
}

TEST(IdenticalDisplacements, WithOneNodeOnTheCardHaveNoEffect) {
  NodeModel m(tie("111111", {2}) + tie("111111", {0, 1, 2}), size_of(2, 0, 2));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(sizes.NEQ, 12);
}

TEST(IdenticalDisplacements, EndTheirListAtTheFirstEntryBelowOne) {
  NodeModel m(tie("100000", {1, 2, -1, 3}), size_of(3, 0, 1));
  DOFIN();
  EXPECT_EQ(equation_of(2, 1), 1);
  EXPECT_NE(equation_of(3, 1), 1);
}

TEST(IdenticalDisplacements, ResolveAChainWhoseMasterWasResolvedBefore) {
  // Node 2 follows node 1 and node 3 follows node 2: in rising order 2 is resolved before 3 asks for it.
  NodeModel m(tie("100000", {1, 2}) + tie("100000", {2, 3}), size_of(3, 0, 2));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(equation_of(3, 1), 1);
}

TEST(IdenticalDisplacements, OfAnUnresolvedChainAreReportedAndConstrained) {
  // Node 1 follows node 2, which follows node 3: when node 1 asks, node 2 is still tied.
  NodeModel m(tie("100000", {2, 1}) + tie("100000", {3, 2}), size_of(3, 0, 2));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(
      m.reports(" ***** DATA ERROR *****      NODE     1  IDENTICAL DISPLACEMENT NOT RESOLVED, ENTERING CHEC MODE\n"));
  EXPECT_EQ(equation_of(1, 1), sizes.NEQ + 1);
  EXPECT_EQ(equation_of(2, 1), equation_of(3, 1));
}

TEST(IdenticalDisplacements, InACircleAreReportedForEveryNode) {
  NodeModel m(tie("100000", {1, 2}) + tie("100000", {2, 1}), size_of(2, 0, 2));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_EQ(equation_of(1, 1), 11);
  EXPECT_EQ(equation_of(2, 1), 11);
}

TEST(IdenticalDisplacements, OnNodesOutOfRangeAreReported) {
  NodeModel m(tie("100000", {9, 1}) + tie("100000", {1, 9, 2}), size_of(2, 0, 2));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_EQ(equation_of(2, 1), 1);
  EXPECT_NE(m.scratch.errors().find("line 1, columns 11-15: NODE 9"), std::string::npos);
  EXPECT_NE(m.scratch.errors().find("line 2, columns 16-20: NODE 9"), std::string::npos);
}

TEST(IdenticalDisplacements, OfASingleNodeOutOfRangeAreReported) {
  NodeModel m(tie("100000", {9}), size_of(2, 0, 1));
  DOFIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_EQ(sizes.NEQ, 12);
}

TEST(IdenticalDisplacements, AreEchoedInTheirColumns) {
  NodeModel m(tie("101000", {1, 2}), size_of(2, 0, 1));
  DOFIN();
  EXPECT_TRUE(m.reports("\n IDENTICAL DISPLACEMENT COMMANDS\n"));
  EXPECT_TRUE(m.reports(" DISPLACEMENT CODE"));
  EXPECT_TRUE(m.reports("       1  0  1  0  0  0            1    2\n")) << m.report();
}

TEST(DisplacementCodes, ShowConstrainedComponentsAsZero) {
  NodeModel m(constraint(1, "110000"), size_of(2, 1));
  DOFIN();
  EXPECT_TRUE(m.reports(" DISPLACEMENT CODES\n"));
  EXPECT_TRUE(m.reports("NUMBERS OF DEGREES OF FREEDOM\n"));
  EXPECT_TRUE(m.reports("         1            0       0       1       2       3       4\n")) << m.report();
  EXPECT_TRUE(m.reports("         2            5       6       7       8       9      10\n"));
}

TEST(DisplacementCodes, AreNotPrintedHereWhenNodesAreRenumbered) {
  NodeModel m("", size_of(2, 0, 0, 1));
  DOFIN();
  EXPECT_FALSE(m.reports("DISPLACEMENT CODES"));
  print_displacement_codes(" DISPLACEMENT CODES (RENUMBERED)");
  EXPECT_TRUE(m.reports(" DISPLACEMENT CODES (RENUMBERED)\n"));
}

TEST(Equations, MustNotBeMissing) {
  NodeModel m(constraint(1, "111111"), size_of(1, 1));
  DOFIN();
  EXPECT_EQ(sizes.NEQ, 0);
  EXPECT_EQ(equation_of(1, 1), 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     NO FREE DEGREES OF FREEDOM, ENTERING CHEC MODE\n"));
}

TEST(Equations, OfAModelWithoutNodesAreMissing) {
  NodeModel m("", size_of(0, 0));
  DOFIN();
  EXPECT_TRUE(m.reports("NO FREE DEGREES OF FREEDOM"));
}

TEST(Equations, OfOneFreeComponentAreEnough) {
  NodeModel m(constraint(1, "111110"), size_of(1, 1));
  DOFIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(sizes.NEQ, 1);
}

}  // namespace
}  // namespace tidearc::test
