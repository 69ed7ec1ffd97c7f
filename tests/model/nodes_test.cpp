// Control nodes, generation commands, gaps, the coordinate table.

#include "node_model.h"

namespace tidearc::test {
namespace {

SizeBlock size_of(int NUMNP, int NCONT, int NGEN = 0) {
  SizeBlock s;
  s.NUMNP = NUMNP;
  s.NCONT = NCONT;
  s.NGEN = NGEN;
  return s;
}

void expect_at(int node, double x, double y, double z) {
  const std::array<double, 3> at = coordinates(node);
  EXPECT_DOUBLE_EQ(at[0], x) << "node " << node;
  EXPECT_DOUBLE_EQ(at[1], y) << "node " << node;
  EXPECT_DOUBLE_EQ(at[2], z) << "node " << node;
}

/// First and last node of a span, number, difference, spacing, list.
std::string generation(int first, int last, int count, int difference, const std::string& spacing,
                       const std::vector<int>& list = {}) {
  return fives({first, last, count, difference}) + field(spacing, 10) + fives(list) + "\n";
}

TEST(ControlNodes, AreEchoedAndListedWithTheirSpecification) {
  NodeModel m(control(2, "4.", "5.", "-6.25") + control(1, "1.", "2.", "3."), size_of(2, 2));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(1, 1.0, 2.0, 3.0);
  expect_at(2, 4.0, 5.0, -6.25);
  EXPECT_EQ(m.code(1), node_control);
  const std::string expected =
      "1\n"
      " NODE SPECIFICATION\n"
      "\n"
      " CONTROL NODE COORDINATES\n"
      "\n"
      "      NODE       X-COORD       Y-COORD       Z-COORD\n"
      "\n"
      "         2         4.000         5.000        -6.250\n"
      "         1         1.000         2.000         3.000\n"
      "\n\n"
      " NODE COORDINATE GENERATION COMMANDS\n"
      "\n"
      " (NONE)\n"
      "1\n"
      " CATENARY GENERATION\n"
      "\n"
      " (NONE)\n"
      "1\n"
      " NODE COORDINATES\n"
      "\n"
      "      NODE       X-COORD       Y-COORD       Z-COORD       SPECIFICATION\n"
      "\n"
      "         1         1.000         2.000         3.000       CONTROL\n"
      "         2         4.000         5.000        -6.250       CONTROL\n";
  EXPECT_EQ(m.report(), expected);
}

TEST(ControlNodes, GivenTwiceKeepTheLastValues) {
  NodeModel m(control(1, "1.", "2.", "3.") + control(1, "7.", "8.", "9."), size_of(1, 2));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(1, 7.0, 8.0, 9.0);
}

TEST(ControlNodes, NodeOneMustBeAmongThem) {
  NodeModel m(control(2, "1.", "2.", "3."), size_of(2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****       NODE 1 MUST BE DEFINED, ENTERING CHEC MODE\n"));
  EXPECT_TRUE(run.had_data_error);
}

TEST(ControlNodes, OutOfRangeAreReportedAndLeaveNothing) {
  for (const int bad : {0, 3, -1, 99999}) {
    NodeModel m(control(1, "1.", "2.", "3.") + control(bad, "9.", "9.", "9.") + control(2, "4.", "5.", "6."),
                size_of(2, 3));
    NODEIN();
    EXPECT_EQ(m.data_errors(), 1) << bad;
    EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE" + field(std::to_string(bad), 6) +
                          "  OUT OF RANGE, ENTERING CHEC MODE\n"));
    EXPECT_NE(m.scratch.errors().find("TAModel.inp line 2, columns 1-5: NODE"), std::string::npos);
    expect_at(1, 1.0, 2.0, 3.0);
    expect_at(2, 4.0, 5.0, 6.0);
  }
}

TEST(ControlNodes, AModelWithoutNodesMissesNodeOne) {
  NodeModel m("", size_of(0, 0));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("NODE 1 MUST BE DEFINED"));
}

TEST(ControlNodes, ACountBeyondTheDeckEndsInTheInputLayer) {
  NodeModel m(control(1, "1.", "2.", "3."), size_of(2, 99999));
  EXPECT_EQ(stop_of(NODEIN), status_io);
}

TEST(ControlNodes, ALetterInANumberEndsInTheInputLayer) {
  NodeModel m("   1x        1.\n", size_of(1, 1));
  EXPECT_EQ(stop_of(NODEIN), status_io);
}

TEST(CoordinateTable, ShowsUnspecifiedNodesAndReportsEach) {
  NodeModel m(control(1, "1.", "0.", "0."), size_of(3, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_TRUE(m.reports("         2" + std::string(50, ' ') + "UNSPECIFIED\n"));
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE     3  COORDINATES NOT SPECIFIED,   ENTERING CHEC MODE\n"));
  EXPECT_EQ(m.code(3), node_unspecified);
  expect_at(3, 0.0, 0.0, 0.0);
}

TEST(Gaps, AreFilledAtEqualSpacingAlongTheStraightLine) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(5, "8.", "4.", "-2.") + control(6, "9.", "9.", "9."),
              size_of(6, 3));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(2, 2.0, 1.0, -0.5);
  expect_at(3, 4.0, 2.0, -1.0);
  expect_at(4, 6.0, 3.0, -1.5);
  EXPECT_EQ(m.code(4), node_generated);
  EXPECT_TRUE(m.reports("         3         4.000         2.000        -1.000       GENERATED\n"));
}

TEST(Gaps, AtTheEndOfTheNumbersStayUnspecified) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(2, "1.", "0.", "0."), size_of(4, 2));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_EQ(m.code(3), node_unspecified);
  EXPECT_EQ(m.code(4), node_unspecified);
}

TEST(Gaps, BeforeTheFirstSpecifiedNodeStayUnspecified) {
  NodeModel m(control(3, "0.", "0.", "0.") + control(5, "1.", "0.", "0."), size_of(5, 2));
  NODEIN();
  EXPECT_EQ(m.code(1), node_unspecified);
  EXPECT_EQ(m.code(2), node_unspecified);
  EXPECT_EQ(m.code(4), node_generated);
  EXPECT_EQ(m.data_errors(), 3);  // node 1 must be defined; nodes 1 and 2 not specified
}

TEST(Gaps, OfAModelOfTheLargestSizeAreFilled) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(63000, "62999.", "0.", "0."), size_of(63000, 2));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_NEAR(coordinates(31500)[0], 31499.0, 1e-9 * 62999.0);
}

const std::string two_ends = control(1, "0.", "0.", "0.") + control(9, "8.", "4.", "0.");

TEST(Generation, WithSpacingZeroAndThreeNodesMakesQuarterPoints) {
  NodeModel m(two_ends + generation(1, 9, 3, 2, "0."), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(3, 2.0, 1.0, 0.0);
  expect_at(5, 4.0, 2.0, 0.0);
  expect_at(7, 6.0, 3.0, 0.0);
  expect_at(2, 1.0, 0.5, 0.0);  // then the gap between 1 and 3
  EXPECT_EQ(m.code(5), node_generated);
}

TEST(Generation, HeadingAndEchoStandInTheirColumns) {
  NodeModel m(two_ends + generation(1, 9, 3, 2, "0.25"), size_of(9, 2, 1));
  NODEIN();
  EXPECT_TRUE(
      m.reports("\n\n NODE COORDINATE GENERATION COMMANDS\n\n"
                "    FIRST      LAST     NO.OF     NODE      SPACING     LIST OF NODES\n"
                "     NODE      NODE     NODES      DIFF\n\n"
                "        1         9         3         2        0.250         3    5    7\n"))
      << m.report();
}

TEST(Generation, ReadsASpacingBelowOneAsAFractionOfTheSpan) {
  NodeModel m(two_ends + generation(1, 9, 3, 2, "0.125"), size_of(9, 2, 1));
  NODEIN();
  expect_at(7, 3.0, 1.5, 0.0);
}

TEST(Generation, ReadsASpacingOfOneAsALength) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(5, "8.", "0.", "0.") + generation(1, 5, 3, 1, "1."),
              size_of(5, 2, 1));
  NODEIN();
  expect_at(2, 1.0, 0.0, 0.0);
  expect_at(4, 3.0, 0.0, 0.0);
}

TEST(Generation, ReadsASpacingAboveOneAsALength) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(4, "3.", "4.", "0.") + generation(1, 4, 2, 1, "2.5"),
              size_of(4, 2, 1));
  NODEIN();
  expect_at(2, 1.5, 2.0, 0.0);
  expect_at(3, 3.0, 4.0, 0.0);
}

TEST(Generation, TakesANegativeSpacingAsAFraction) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(3, "8.", "0.", "0.") + generation(1, 3, 1, 1, "-0.5"),
              size_of(3, 2, 1));
  NODEIN();
  expect_at(2, -4.0, 0.0, 0.0);
}

TEST(Generation, OverNoDistanceWithALengthPutsAllOnTheFirstNode) {
  NodeModel m(control(1, "5.", "6.", "7.") + control(4, "5.", "6.", "7.") + generation(1, 4, 2, 1, "2."),
              size_of(4, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(2, 5.0, 6.0, 7.0);
  expect_at(3, 5.0, 6.0, 7.0);
}

TEST(Generation, WithoutDifferenceUsesAsManyListedNodesAsCounted) {
  NodeModel m(two_ends + generation(1, 9, 2, 0, "0.25", {7, 4, 2}), size_of(9, 2, 1));
  NODEIN();
  expect_at(7, 2.0, 1.0, 0.0);
  expect_at(4, 4.0, 2.0, 0.0);
  expect_at(2, 8.0 / 6.0, 4.0 / 6.0, 0.0);  // not counted: a third of the gap from node 1 to node 4
}

TEST(Generation, UsesTheListWhenTheCountIsBelowOne) {
  NodeModel m(two_ends + generation(1, 9, 0, 2, "0.25", {7}), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(7, 6.0, 3.0, 0.0);  // nothing was generated: the gap from 1 to 9
}

TEST(Generation, TakesNoMoreThanTenListedNodes) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(12, "16.", "0.", "0.") +
                  generation(1, 12, 99, 0, "0.0625", {2, 3, 4, 5, 6, 7, 8, 9, 10, 11}),
              size_of(12, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(11, 10.0, 0.0, 0.0);
}

TEST(Generation, EndsAListAtItsFirstEntryBelowOne) {
  NodeModel m(two_ends + generation(1, 9, 4, 0, "0.25", {3, 0, 5, 7}), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(3, 2.0, 1.0, 0.0);
  expect_at(5, 4.0, 2.0, 0.0);  // from the gap 3 to 9, not from the list: 2 + 2 * 1
}

TEST(Generation, WithADifferenceMakesMoreThanTenNodesAndReplacesTheList) {
  NodeModel m(control(1, "0.", "0.", "0.") + control(22, "21.", "0.", "0.") + generation(1, 22, 20, 1, "0.", {5, 5}),
              size_of(22, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_NEAR(coordinates(21)[0], 20.0, 1e-13 * 20.0);
  // Fourteen nodes fill the line of the echo; the rest goes on below, 57 columns to the right.
  EXPECT_TRUE(m.reports(std::string(57, ' ') + "   16   17   18   19   20   21\n")) << m.report();
}

TEST(Generation, RunsDownwardWithANegativeDifference) {
  NodeModel m(two_ends + generation(9, 1, 3, -2, "0."), size_of(9, 2, 1));
  NODEIN();
  expect_at(7, 6.0, 3.0, 0.0);
  expect_at(3, 2.0, 1.0, 0.0);
}

TEST(Generation, GivesAControlNodeNewCoordinatesAndTheGeneratedCode) {
  NodeModel m(two_ends + control(5, "50.", "50.", "50.") + generation(1, 9, 1, 4, "0."), size_of(9, 3, 1));
  NODEIN();
  expect_at(5, 4.0, 2.0, 0.0);
  EXPECT_EQ(m.code(5), node_generated);
}

TEST(Generation, CanStartFromNodesGeneratedBefore) {
  NodeModel m(two_ends + generation(1, 9, 1, 4, "0.") + generation(1, 5, 1, 2, "0."), size_of(9, 2, 2));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  expect_at(3, 2.0, 1.0, 0.0);
}

TEST(Generation, FromAnUnspecifiedNodeIsReportedForBothEnds) {
  NodeModel m(two_ends + generation(3, 5, 1, 1, "0."), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 2);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE     3  COORDINATES NOT YET DEFINED, ENTERING CHEC MODE\n"));
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE     5  COORDINATES NOT YET DEFINED, ENTERING CHEC MODE\n"));
  EXPECT_NE(m.scratch.errors().find("line 3, columns 6-10"), std::string::npos);
  expect_at(4, 3.0, 1.5, 0.0);  // the gap is filled all the same
}

TEST(Generation, WithAnEndOutOfRangeIsSkipped) {
  for (const int bad : {0, -3, 10}) {
    NodeModel m(two_ends + generation(bad, 9, 1, 1, "0."), size_of(9, 2, 1));
    NODEIN();
    EXPECT_EQ(m.data_errors(), 1) << bad;
    EXPECT_TRUE(m.reports("OUT OF RANGE, ENTERING CHEC MODE"));
    NodeModel n(two_ends + generation(1, bad, 1, 4, "0."), size_of(9, 2, 1));
    NODEIN();
    EXPECT_EQ(n.data_errors(), 1) << bad;
    EXPECT_NE(n.scratch.errors().find("line 3, columns 6-10"), std::string::npos);
  }
}

TEST(Generation, SkipsAListedNodeOutOfRangeButCountsItsPlace) {
  NodeModel m(two_ends + generation(1, 9, 3, 0, "0.25", {3, 10, 7}), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  expect_at(3, 2.0, 1.0, 0.0);
  expect_at(7, 6.0, 3.0, 0.0);
  EXPECT_NE(m.scratch.errors().find("line 3, columns 36-40: NODE 10 OUT OF RANGE"), std::string::npos);
}

TEST(Generation, ReportsARowThatLeavesTheModelOnce) {
  NodeModel m(two_ends + generation(1, 9, 99999, 7, "0.5"), size_of(9, 2, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("NODE    15  OUT OF RANGE"));
  expect_at(8, 4.0, 2.0, 0.0);
}

}  // namespace
}  // namespace tidearc::test
