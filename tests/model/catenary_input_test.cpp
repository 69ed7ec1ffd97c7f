// Catenary commands: echo, checks, nodes placed in space, table, and the rows kept for cable elements.
#include <cmath>

#include "node_model.h"

namespace tidearc::test {
namespace {

SizeBlock size_of(int NUMNP, int NCONT, int NCATEN) {
  SizeBlock s;
  s.NUMNP = NUMNP;
  s.NCONT = NCONT;
  s.NCATEN = NCATEN;
  return s;
}

struct Command {
  int number = 1, a = 1, b = 5, count = 3, increment = 1, IOPT = 2, shape = 0;
  std::string weight = "2.", parameter = "200.";
  std::string card() const {
    return fives({number, a, b, count, increment, IOPT, shape}) + tens({weight, parameter}) + "\n";
  }
};

// Level span of 120 in X: with w = 2 and H = 200 the parameter a is 100, the sag 100 (cosh 0.6 - 1).
const std::string level_ends = control(1, "0.", "7.", "50.") + control(5, "120.", "7.", "50.");
const double sag = 100.0 * (std::cosh(0.6) - 1.0);

TEST(CatenaryCommand, PlacesNodesBelowTheChordAgainstGravity) {
  NodeModel m(level_ends + Command{}.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_NEAR(coordinates(3)[0], 60.0, 1e-9);
  EXPECT_NEAR(coordinates(3)[1], 7.0, 1e-12);
  EXPECT_NEAR(coordinates(3)[2], 50.0 - sag, 1e-9);
  // A quarter of the length 2 a sinh 0.6 from A: x = 60 - a asinh(sinh(0.6) / 2).
  EXPECT_NEAR(coordinates(2)[0], 60.0 - 100.0 * std::asinh(0.5 * std::sinh(0.6)), 1e-9);
  EXPECT_NEAR(coordinates(4)[0], 60.0 + 100.0 * std::asinh(0.5 * std::sinh(0.6)), 1e-9);
  EXPECT_EQ(m.code(2), node_generated);
  EXPECT_EQ(m.code(1), node_control);
}

TEST(CatenaryCommand, TakesOverNodesThatWereControlNodesOrFilledIn) {
  NodeModel m(level_ends + control(3, "1.", "1.", "1.") + Command{}.card(), size_of(5, 3, 1));
  NODEIN();
  EXPECT_EQ(m.code(3), node_generated);
  EXPECT_NEAR(coordinates(3)[2], 50.0 - sag, 1e-9);
}

TEST(CatenaryCommand, HangsInTheDirectionOfGravity) {
  for (const int axis : {1, 2, 3}) {
    for (const double sign : {-1.0, 1.0}) {
      std::vector<std::string> end{"120.", "120.", "120."};
      end[static_cast<std::size_t>(axis - 1)] = "0.";
      end[static_cast<std::size_t>(axis % 3)] = "0.";  // along the other horizontal axis alone
      NodeModel m(control(1, "0.", "0.", "0.") + control(5, end[0], end[1], end[2]) + Command{}.card(),
                  size_of(5, 2, 1));
      gravity.direction = {};
      gravity.direction[static_cast<std::size_t>(axis - 1)] = sign;
      NODEIN();
      EXPECT_EQ(run.RUNMOD, 0);
      EXPECT_NEAR(coordinates(3)[static_cast<std::size_t>(axis - 1)], sign * sag, 1e-9) << axis;
      EXPECT_NEAR(coordinates(3)[static_cast<std::size_t>((axis + 1) % 3)], 60.0, 1e-9) << axis;
      EXPECT_NEAR(coordinates(3)[static_cast<std::size_t>(axis % 3)], 0.0, 1e-9) << axis;
    }
  }
}

TEST(CatenaryCommand, StaysInTheVerticalPlaneOfItsEnds) {
  NodeModel m(control(1, "1.", "2.", "0.") + control(5, "31.", "42.", "20.") + Command{}.card(), size_of(5, 2, 1));
  NODEIN();
  for (int node = 2; node <= 4; ++node) {
    const auto [x, y, z] = coordinates(node);
    EXPECT_NEAR((x - 1.0) * 40.0 - (y - 2.0) * 30.0, 0.0, 1e-9);
  }
}

TEST(CatenaryCommand, IsEchoedWithItsOptionsAndProperties) {
  NodeModel m(level_ends + Command{}.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_TRUE(m.reports("1\n CATENARY GENERATION\n"));
  EXPECT_TRUE(m.reports(" CATENARY N0 ................................... =    1\n")) << m.report();
  EXPECT_TRUE(m.reports(" NODE AT THE BEGINNING OF THE CATENARY(NODE A) . =    1\n"));
  EXPECT_TRUE(m.reports(" NODE AT THE END OF THE CATENARY(NODE B) ....... =    5\n"));
  EXPECT_TRUE(m.reports(" NUMBER OF NODES TO BE GENERATED ............... =    3\n"));
  EXPECT_TRUE(m.reports(" NODE NUMBER INCREMENT ......................... =    1\n"));
  EXPECT_TRUE(m.reports(" CATENARY GENERATION OPTION (IOPT) ............. =    2\n"));
  EXPECT_TRUE(m.reports("        1:  TENSION AT END B (TOP NODE)\n"));
  EXPECT_TRUE(m.reports("        6:  MOORING LINE LENGTH WITH BOTTOM INTERACTION\n"));
  EXPECT_TRUE(m.reports(" CATENARY SHAPE ................................ =    0\n"));
  EXPECT_TRUE(m.reports("0 OR BLANK: SAGGING\n"));
  EXPECT_TRUE(m.reports("1: STRAIGHT\n"));
  EXPECT_TRUE(m.reports(" WEIGHT OF CATENARY IN WATER PER UNIT LENGTH ... =  2.00000E+00\n"));
  EXPECT_TRUE(m.reports(" CATENARY GENERATION PARAMETER  X:\n        X = HORIZONTAL LOAD"));
  EXPECT_TRUE(m.reports(" CATENARY PROPERTIES\n"));
  EXPECT_TRUE(m.reports("NUMBER OF ITERATIONS TAKEN ..................... =    0\n"));
  EXPECT_TRUE(m.reports("HORIZONTAL DISTANCE BETWEEN END POINTS ......... =        120.000\n"));
  EXPECT_TRUE(m.reports("VERTICAL DISTANCE BETWEEN END POINTS ........... =          0.000\n"));
  EXPECT_TRUE(m.reports("WEIGHT PER UNIT LENGTH OF CATENARY ............. =    2.00000E+00\n"));
  // 200 cosh 0.6 at both ends.
  EXPECT_TRUE(m.reports("TENSION AT THE LOWER END ....................... =    2.37093E+02\n"));
  EXPECT_TRUE(m.reports("TENSION AT THE UPPER END ....................... =    2.37093E+02\n"));
  EXPECT_TRUE(m.reports("HORIZONTAL LOAD ................................ =    2.00000E+02\n"));
}

TEST(CatenaryCommand, ListsItsNodesFromAToBWithTensionAndRadius) {
  NodeModel m(level_ends + Command{}.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_TRUE(m.reports(" CATENARY GENERATED GLOBAL COORDINATES\n"));
  EXPECT_TRUE(m.reports(" RADIUS OF\n"));
  EXPECT_TRUE(m.reports(" CURVATURE\n"));
  // Ends: tension 200 cosh 0.6, radius 100 cosh^2 0.6; middle: 200 and 100.
  EXPECT_TRUE(m.reports("         1          0.000          7.000         50.000        237.093        140.533\n"))
      << m.report();
  EXPECT_TRUE(m.reports("         3         60.000          7.000         31.453        200.000        100.000\n"));
  EXPECT_TRUE(m.reports("         5        120.000          7.000         50.000        237.093        140.533\n"));
}

TEST(CatenaryCommand, WithoutCommandsSaysNone) {
  NodeModel m(level_ends, size_of(5, 2, 0));
  NODEIN();
  EXPECT_TRUE(m.reports("1\n CATENARY GENERATION\n\n (NONE)\n"));
  EXPECT_EQ(catenaries.count, 0);
}

TEST(CatenaryCommand, TreatsAnOptionOutsideTwoToSixAsOne) {
  for (const int IOPT : {0, -1, 1, 7}) {
    Command c;
    c.IOPT = IOPT;
    c.shape = 1;
    c.parameter = "237.093043648";  // 200 cosh 0.6
    NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_TRUE(m.reports("OPTION (IOPT) ............. =    1\n"));
    EXPECT_EQ(catenaries.rows[0].IOPT, 1);
    EXPECT_NEAR(catenaries.rows[0].horizontal, 200.0, 1e-5);
  }
}

TEST(CatenaryCommand, OfOptionOneFollowsItsShape) {
  Command c;
  c.IOPT = 1;
  c.parameter = "240.";
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  const double sagging = catenaries.rows[0].horizontal;
  c.shape = 1;
  NodeModel n(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  const double stretched = catenaries.rows[0].horizontal;
  EXPECT_NEAR(sagging * std::cosh(120.0 / sagging), 240.0, 1e-6);
  EXPECT_NEAR(stretched * std::cosh(120.0 / stretched), 240.0, 1e-6);
  EXPECT_LT(sagging, 120.0 / 1.19967864);
  EXPECT_GT(stretched, 120.0 / 1.19967864);
}

TEST(CatenaryCommand, OfEveryOtherOptionFindsTheSameLine) {
  const std::string length = "127.3307164";  // 200 sinh 0.6
  const std::string down = "-32.483015";     // atan(sinh 0.6) in degrees
  const std::string up = "32.4830151";
  const std::vector<std::pair<int, std::string>> options{{2, "200."}, {3, length}, {4, down}, {5, up}};
  for (const auto& [IOPT, parameter] : options) {
    Command c;
    c.IOPT = IOPT;
    // The field has ten columns: eight figures are given.
    c.parameter = parameter.substr(0, 10);
    NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(run.RUNMOD, 0);
    // The eight figures of the card give as many of the load.
    EXPECT_NEAR(catenaries.rows[0].horizontal, 200.0, 2e-5) << IOPT;
  }
}

// Touch-down at x = 60, then a = 100 and reach 120: B at x = 180, z = 100 (cosh 1.2 - 1).
const std::string moored_ends = control(1, "0.", "0.", "0.") + control(11, "180.", "0.", "81.0655567");

Command mooring() {
  Command c;
  c.b = 11;
  c.count = 9;
  c.IOPT = 6;
  c.parameter = "210.946136";  // 60 + 100 sinh 1.2
  return c;
}

TEST(CatenaryCommand, OfAMooringLineLaysTheExcessOnTheBed) {
  NodeModel m(moored_ends + mooring().card(), size_of(11, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_NEAR(catenaries.rows[0].horizontal, 200.0, 1e-3);
  // 60 of 210.9 of ten intervals: node 1 + 3.
  EXPECT_NEAR(coordinates(4)[0], 60.0, 1e-4);
  EXPECT_NEAR(coordinates(4)[2], 0.0, 1e-4);
  EXPECT_NEAR(coordinates(2)[0], 20.0, 1e-4);
  EXPECT_NEAR(coordinates(3)[0], 40.0, 1e-4);
  for (int node = 2; node <= 10; ++node) EXPECT_EQ(m.code(node), node_generated);
  // Node 5 is one seventh of the hanging length further: x = 60 + 100 asinh(sinh(1.2) / 7).
  EXPECT_NEAR(coordinates(5)[0], 60.0 + 100.0 * std::asinh(std::sinh(1.2) / 7.0), 1e-4);
  EXPECT_NEAR(catenaries.rows[0].length, 210.946136, 1e-4);
  EXPECT_NEAR(catenaries.rows[0].span, 180.0, 1e-12);
  EXPECT_TRUE(m.reports(" CATENARY SHAPE ................................ =    1\n"));
}

TEST(CatenaryCommand, OfAMooringLineShowsNoCurvatureOnTheBed) {
  NodeModel m(moored_ends + mooring().card(), size_of(11, 2, 1));
  NODEIN();
  EXPECT_TRUE(m.reports("         2         20.000          0.000          0.000        200.000            Inf\n"))
      << m.report();
}

TEST(CatenaryCommand, OfABuoyantLineIsTheMirrorOfTheHeavyOne) {
  // A heavy line sags below its chord; the buoyant one of the same figures bows above it.
  Command c;
  c.weight = "-2.";
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_NEAR(coordinates(3)[2], 50.0 + sag, 1e-9);
  EXPECT_NEAR(coordinates(2)[0], 60.0 - 100.0 * std::asinh(0.5 * std::sinh(0.6)), 1e-9);
  EXPECT_TRUE(m.reports("WEIGHT PER UNIT LENGTH OF CATENARY ............. =    2.00000E+00\n"));
}

TEST(CatenaryCommand, OfABuoyantLineExchangesItsEnds) {
  Command c;
  c.weight = "-2.";
  c.IOPT = 3;
  c.parameter = "70.";
  NodeModel m(control(1, "0.", "0.", "0.") + control(5, "30.", "0.", "40.") + c.card(), size_of(5, 2, 1));
  NODEIN();
  const CatenaryRow& row = catenaries.rows[0];
  EXPECT_EQ(row.node_a, 5);
  EXPECT_EQ(row.node_b, 1);
  EXPECT_EQ(row.count, -3);
  EXPECT_EQ(row.increment, -1);
  EXPECT_EQ(row.weight, 2.0);
  // Its tension is greatest at the end that is really lower: by weight times difference of elevation.
  EXPECT_NEAR(row.tension_b - row.tension_a, 2.0 * 40.0, 1e-6);
  const std::string report = m.report();
  const auto number_behind = [&](const std::string& label) {
    return std::stod(report.substr(report.find('=', report.find(label)) + 1));
  };
  EXPECT_NEAR(number_behind("TENSION AT THE LOWER END"), row.tension_b, 1e-4 * row.tension_b);
  EXPECT_NEAR(number_behind("TENSION AT THE UPPER END"), row.tension_a, 1e-4 * row.tension_a);
  // The table runs from the new end A.
  EXPECT_LT(report.find("         5         30.000          0.000         40.000"),
            report.find("         1          0.000          0.000          0.000", report.find("GENERATED GLOBAL")));
}

TEST(CatenaryCommand, OfABuoyantLineIsNotAllowedOnTheBed) {
  Command c = mooring();
  c.weight = "-2.";
  NodeModel m(moored_ends + c.card(), size_of(11, 2, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****     BUOYANT CATENARY NOT ALLOWED WITH IOPT=6\n"));
  EXPECT_EQ(catenaries.count, 0);
  EXPECT_DOUBLE_EQ(coordinates(6)[0], 90.0);  // where the gap between the ends was filled
}

TEST(CatenaryCommand, TellsLowerAndUpperEndWhenBIsBelowA) {
  NodeModel m(control(1, "0.", "0.", "40.") + control(5, "30.", "0.", "0.") + Command{}.card(), size_of(5, 2, 1));
  NODEIN();
  const CatenaryRow& row = catenaries.rows[0];
  EXPECT_NEAR(row.tension_a - row.tension_b, 80.0, 1e-6);
  const std::string report = m.report();
  const auto number_behind = [&](const std::string& label) {
    return std::stod(report.substr(report.find('=', report.find(label)) + 1));
  };
  EXPECT_NEAR(number_behind("TENSION AT THE LOWER END"), row.tension_b, 1e-4 * row.tension_b);
  EXPECT_TRUE(m.reports("VERTICAL DISTANCE BETWEEN END POINTS ........... =         40.000\n"));
}

TEST(CatenaryCommand, WithoutASolutionWarnsAndGoesOn) {
  Command c;
  c.IOPT = 3;
  c.parameter = "119.";
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  const std::string row = " " + std::string(72, 'W') + "\n";
  EXPECT_TRUE(m.reports(row + " WARNING - THE ITERATIVE PROCESS HAS NOT ACHIEVED A CATENARY SOLUTION.\n" + row))
      << m.report();
  EXPECT_NEAR(coordinates(3)[0], 60.0, 1e-3);
  EXPECT_EQ(catenaries.count, 1);
}

TEST(CatenaryCommand, WithoutATensionForItWarnsInBothShapes) {
  for (const int shape : {0, 1}) {
    Command c;
    c.IOPT = 1;
    c.shape = shape;
    c.parameter = "181.";  // the least is 120/1.19968 cosh 1.19968 = 181.07
    NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(m.times_reported("HAS NOT ACHIEVED A CATENARY SOLUTION."), 1);
    c.parameter = "181.1";
    NodeModel n(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(n.times_reported("HAS NOT ACHIEVED A CATENARY SOLUTION."), 0);
  }
}

TEST(CatenaryCommand, BetweenUnspecifiedNodesIsADataErrorForEach) {
  Command c;
  c.a = 6;
  c.b = 7;
  NodeModel m(level_ends + c.card(), size_of(7, 2, 1));
  NODEIN();
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE     6  COORDINATES NOT YET DEFINED\n"));
  EXPECT_TRUE(m.reports(" ***** DATA ERROR *****      NODE     7  COORDINATES NOT YET DEFINED\n"));
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(catenaries.count, 0);
}

TEST(CatenaryCommand, WithAnEndOutOfRangeIsSkipped) {
  for (const int bad : {0, 6, -1}) {
    Command c;
    c.b = bad;
    NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports("OUT OF RANGE, ENTERING CHEC MODE"));
    EXPECT_NE(m.scratch.errors().find("line 3, columns 11-15"), std::string::npos);
    EXPECT_EQ(catenaries.count, 0);
  }
}

TEST(CatenaryCommand, ReportsTheFirstGeneratedNodeOutOfRange) {
  Command c;
  c.count = 99999;
  NodeModel m(level_ends + c.card(), size_of(8, 2, 1));
  NODEIN();
  EXPECT_EQ(m.times_reported("OUT OF RANGE, ENTERING CHEC MODE"), 1);
  EXPECT_TRUE(m.reports("NODE     9  OUT OF RANGE"));
}

TEST(CatenaryCommand, TakesAnIncrementOfZeroAsOneAndANegativeCountAsZero) {
  Command c;
  c.increment = 0;
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_NEAR(coordinates(3)[2], 50.0 - sag, 1e-9);
  c.count = -3;
  NodeModel n(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(catenaries.rows[0].count, 0);
  EXPECT_DOUBLE_EQ(coordinates(3)[2], 50.0);
}

TEST(CatenaryCommand, NumbersItsNodesByTheIncrement) {
  Command c;
  c.count = 1;
  c.increment = 2;
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_NEAR(coordinates(3)[2], 50.0 - sag, 1e-9);
  EXPECT_DOUBLE_EQ(coordinates(2)[2], 50.0);
}

TEST(CatenaryCommand, NeedsAHorizontalSpan) {
  for (const std::string& end : {control(5, "0.", "0.", "9."), control(5, "0.", "0.", "0.")}) {
    NodeModel m(control(1, "0.", "0.", "0.") + end + Command{}.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports("CATENARY     1  HAS NO HORIZONTAL SPAN, ENTERING CHEC MODE\n"));
  }
  Command same;
  same.b = 1;
  NodeModel m(level_ends + same.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_TRUE(m.reports("HAS NO HORIZONTAL SPAN"));
}

TEST(CatenaryCommand, NeedsAPositiveHorizontalLoad) {
  for (const std::string load : {"0.", "-5."}) {
    Command c;
    c.parameter = load;
    NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
    NODEIN();
    EXPECT_EQ(m.data_errors(), 1);
    EXPECT_TRUE(m.reports("CATENARY     1  HORIZONTAL LOAD IS NOT POSITIVE, ENTERING CHEC MODE\n"));
  }
}

TEST(CatenaryCommand, OfAMooringLineNeedsEndBAboveEndA) {
  Command c = mooring();
  c.b = 5;
  c.count = 3;
  NodeModel m(level_ends + c.card(), size_of(5, 2, 1));
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("CATENARY     1  END B IS NOT ABOVE END A WITH IOPT=6, ENTERING CHEC MODE\n"));
}

TEST(CatenaryCommand, NeedsADirectionOfGravity) {
  NodeModel m(level_ends + Command{}.card(), size_of(5, 2, 1));
  gravity.direction = {};
  NODEIN();
  EXPECT_EQ(m.data_errors(), 1);
  EXPECT_TRUE(m.reports("CATENARY     1  GRAVITY HAS NO DIRECTION, ENTERING CHEC MODE\n"));
}

TEST(CatenaryTable, KeepsOneRowForEachLine) {
  Command c;
  c.number = 17;
  NodeModel m(level_ends + c.card() + Command{}.card(), size_of(5, 2, 2));
  NODEIN();
  ASSERT_EQ(catenaries.count, 2);
  const CatenaryRow& row = catenaries.rows[0];
  EXPECT_EQ(row.number, 17);
  EXPECT_EQ(row.node_a, 1);
  EXPECT_EQ(row.node_b, 5);
  EXPECT_EQ(row.count, 3);
  EXPECT_EQ(row.increment, 1);
  EXPECT_EQ(row.IOPT, 2);
  EXPECT_EQ(row.weight, 2.0);
  EXPECT_EQ(row.horizontal, 200.0);
  EXPECT_DOUBLE_EQ(row.span, 120.0);
  EXPECT_NEAR(row.length, 200.0 * std::sinh(0.6), 1e-9);
  EXPECT_NEAR(row.tension_a, 200.0 * std::cosh(0.6), 1e-9);
  EXPECT_NEAR(row.tension_b, 200.0 * std::cosh(0.6), 1e-9);
}

TEST(CatenaryTable, HoldsFiveHundredLines) {
  std::string deck = level_ends;
  for (int i = 1; i <= 501; ++i) {
    Command c;
    c.number = i;
    c.count = 0;
    deck += c.card();
  }
  NodeModel full(deck, size_of(5, 2, 500));
  NODEIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(catenaries.count, 500);
  NodeModel over(deck, size_of(5, 2, 501));
  NODEIN();
  EXPECT_EQ(over.data_errors(), 1);
  EXPECT_TRUE(over.reports("CATENARY   501  EXCEEDS THE TABLE OF 500 CATENARIES, ENTERING CHEC MODE\n"));
  EXPECT_EQ(catenaries.count, 500);
}

}  // namespace
}  // namespace tidearc::test
