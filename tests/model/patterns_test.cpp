// The static load pattern section: order, count and storage of patterns; the generated patterns.
#include "model/patterns.h"

#include "load_model.h"
#include "model/pattern_records.h"

namespace tidearc::test {
namespace {

PatternHeader next_header() {
  PatternHeader header{};
  FILE(units.NT10, "READ", 12, &header);
  return header;
}
std::string title_of(const PatternHeader& header) { return {header.title.data(), header.title.size()}; }

TEST(PatternSection, WithoutPatternsPrintsNone) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  PATTIN();
  EXPECT_EQ(trimmed(model.scratch.report()), "1\n STATIC FORCE PATTERN SPECIFICATION COMMANDS\n\n (NONE)\n");
  EXPECT_EQ(static_loads.NMADE, 0);
}

TEST(PatternSection, ThatAsksForPatternsButMakesNonePrintsNone) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  static_loads.NPAT = 3;
  PATTIN();
  EXPECT_TRUE(model.scratch.report().ends_with(" (NONE)\n"));
}

TEST(PatternSection, ReadsTheKindsInTheirOrder) {
  LoadModel model("    0NODAL A\n    0NODAL B\n    0FOLLOWER\n    0TEMPERATURE\n    0    3\n", row_of_nodes(2));
  model.number();
  static_loads.NFPAT = 2;
  static_loads.NFOLL = static_loads.NTPAT = static_loads.NPPAT = 1;
  static_loads.ISELFW = static_loads.IBUOY = static_loads.ICURR = 1;
  static_loads.NPAT = 8;
  PATTIN();
  EXPECT_EQ(static_loads.NMADE, 8);
  const std::array<int, 8> kinds{1, 1, 2, 3, 4, 5, 6, 7};
  const std::array<int, 8> lengths{26, 26, 0, 4, 1, 26, 26, 26};
  const std::array<int, 8> data_records{1, 1, 0, 2, 2, 1, 1, 1};
  const std::array<std::string, 8> titles{"NODAL A", "NODAL B",     "FOLLOWER", "TEMPERATURE",
                                          "       ", "SELF WEIGHT", "BUOYANCY", "STATIC CURRENT"};
  FILE(units.NT10, "REWI");
  for (std::size_t p = 0; p < 8; ++p) {
    const PatternHeader header = next_header();
    EXPECT_EQ(header.kind, kinds[p]);
    EXPECT_EQ(header.length, lengths[p]);
    EXPECT_TRUE(title_of(header).starts_with(titles[p])) << title_of(header);
    EXPECT_EQ(patterns.type[p], kinds[p]);
    FILE(units.NT10, "SKIP", data_records[p]);
  }
}

TEST(PatternSection, RewindsThePatternFileFirst) {
  LoadModel model("    0ONE\n    0TWO\n", row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 1;
  PATTIN();
  PATTIN();
  FILE(units.NT10, "REWI");
  EXPECT_TRUE(title_of(next_header()).starts_with("TWO"));
}

TEST(PatternSection, GeneratesOnePatternForACodeOfTwo) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  static_loads.ISELFW = static_loads.NPAT = 2;
  PATTIN();
  EXPECT_EQ(static_loads.NMADE, 1);
}

std::string empty_patterns(int n) {
  std::string deck;
  for (int i = 0; i < n; ++i) deck += "    0\n";
  return deck;
}

TEST(PatternLimit, FiveHundredPatternsPass) {
  LoadModel model(empty_patterns(500), row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 500;
  EXPECT_EQ(stop_of(PATTIN), std::nullopt);
  EXPECT_EQ(static_loads.NMADE, 500);
}

TEST(PatternLimit, FiveHundredAndOneStopAfterTheLastIsWritten) {
  LoadModel model(empty_patterns(500), row_of_nodes(1));
  model.number();
  static_loads.NFPAT = 500;
  static_loads.ISELFW = 1;
  static_loads.NPAT = 501;
  EXPECT_EQ(stop_of(PATTIN), status_fatal);
  EXPECT_TRUE(has_line(model.scratch.report(),
                       "     ERROR! PROGRAM STOPS BECAUSE NUMBER OF STATIC LOADS 501 EXCEEDING "
                       "NUMBER OF ALLOWABLES 500."));
  EXPECT_EQ(count_of_text(model.scratch.errors(), "501 static load patterns, at most 500 are allowed"), 1);
  EXPECT_EQ(count_of_text(model.scratch.report(), "STATIC SELF WEIGHT PATTERN"), 1);
  EXPECT_EQ(patterns.type[0], pattern_nodal);  // the tables of the first 500 are as they were
  EXPECT_EQ(patterns.type[499], pattern_nodal);
}

TEST(PatternLimit, PrescribedDisplacementsDoNotCount) {
  LoadModel model(empty_patterns(500), row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 500;
  static_loads.NZDISP = 9;
  EXPECT_EQ(stop_of(PATTIN), std::nullopt);
}

TEST(PatternStorage, FirstNodeVectorAloneKeepsItsRoomWithoutTemperatures) {
  LoadModel model("    0\n", row_of_nodes(3));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 1;
  const int before = storage.NEXT;
  PATTIN();
  EXPECT_EQ(patterns.KTEMP, before);
  EXPECT_EQ(storage.NEXT, before + 2 * 3);
}

TEST(PatternStorage, NodeVectorsAndScratchKeepTheirRoomWithATemperaturePattern) {
  LoadModel model("    0\n", row_of_nodes(3));
  model.number();
  static_loads.NTPAT = static_loads.NPAT = 1;
  const int before = storage.NEXT;
  PATTIN();
  EXPECT_EQ(patterns.KPRES, before + 2 * 3);
  EXPECT_EQ(NEQ1(), 19);
  EXPECT_EQ(storage.NEXT, before + 2 * 3 + 2 * 3 + 20);  // 19 integers and a pad word
}

TEST(PatternStorage, ThatDoesNotFitStopsInPhaseFive) {
  LoadModel model("", row_of_nodes(3));
  model.number();
  storage.NEXT = storage.MSTOR + 1 - 32;
  EXPECT_EQ(stop_of(PATTIN), std::nullopt);
  storage.NEXT = storage.MSTOR + 2 - 32;
  EXPECT_EQ(stop_of(PATTIN), status_fatal);
  EXPECT_EQ(count_of_text(model.scratch.report(), "INPUT PHASE - STATIC LOAD PATTERNS"), 1);
}

/// Direction 1 along global Y, 2 along global -X, 3 along global Z.
const std::array<Position, 3> quarter_turn{Position{0, 1, 0}, Position{-1, 0, 0}, Position{0, 0, 1}};

TEST(GeneratedPatterns, PrintInGlobalAxesAndMarkTurnedNodes) {
  LoadModel model("", row_of_nodes(3));
  model.turn(2, quarter_turn).number();
  const Reals weight = model.vector(patterns.KSELFW);
  weight(equation_of(1, 3)) = -5.0;
  weight(equation_of(2, 1)) = 10.0;  // local 1 is global Y
  weight(equation_of(2, 5)) = 4.0;   // local 2 is global -X
  static_loads.ISELFW = static_loads.NPAT = 1;
  PATTIN();
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " STATIC SELF WEIGHT PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)"));
  EXPECT_TRUE(has_line(report, "      1       0.000       0.000      -5.000       0.000       0.000       0.000"))
      << report;
  EXPECT_TRUE(
      has_line(report, "      2       0.000      10.000       0.000      -4.000       0.000       0.000  NONGL"))
      << report;
  EXPECT_EQ(count_of_text(report, "\n      3  "), 0);
  EXPECT_TRUE(has_line(report, "     TOTAL GRAVITY FORCES IN GLOBAL DIRECTIONS:"));
  EXPECT_TRUE(has_line(report, "          0.0000      10.000     -5.0000     -4.0000      0.0000      0.0000"))
      << report;
  EXPECT_EQ(patterns.resultant[0], (NodeValues{0, 10, -5, -4, 0, 0}));
}

TEST(GeneratedPatterns, WriteTheVectorInTheNodesOwnAxes) {
  LoadModel model("", row_of_nodes(1));
  model.turn(1, quarter_turn).number();
  model.vector(patterns.KSELFW)(1) = 10.0;
  static_loads.ISELFW = static_loads.NPAT = 1;
  PATTIN();
  FILE(units.NT10, "REWI");
  next_header();
  std::array<double, 7> vector{};
  FILE(units.NT10, "READ", 14, vector.data());
  EXPECT_EQ(vector[0], 10.0);
}

TEST(GeneratedPatterns, CountOnlyWhatReachesFreeEquations) {
  LoadModel model("", row_of_nodes(2));
  model.fix(1, {3}).number();
  model.vector(patterns.KSELFW)(NEQ1()) = -100.0;
  model.vector(patterns.KSELFW)(equation_of(2, 3)) = -7.0;
  static_loads.ISELFW = static_loads.NPAT = 1;
  PATTIN();
  EXPECT_EQ(patterns.resultant[0][2], -7.0);
  EXPECT_EQ(count_of_text(model.scratch.report(), "\n      1  "), 0);
}

TEST(GeneratedPatterns, OfBuoyancyAndCurrentHaveTheirOwnHeadings) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  model.vector(patterns.KBUOYV)(equation_of(2, 3)) = 8.0;
  model.vector(patterns.KCURRV)(equation_of(2, 1)) = 9.0;
  static_loads.IBUOY = static_loads.ICURR = 1;
  static_loads.NPAT = 2;
  PATTIN();
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " STATIC BUOYANCY FORCE PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)"));
  EXPECT_TRUE(has_line(report, "     TOTAL BUOYANCY FORCES IN GLOBAL DIRECTIONS:"));
  EXPECT_TRUE(has_line(report, " STATIC CURRENT FORCE PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)"));
  EXPECT_TRUE(has_line(report, "     TOTAL CURRENT FORCES IN GLOBAL DIRECTIONS:"));
  EXPECT_EQ(patterns.resultant[0][2], 8.0);
  EXPECT_EQ(patterns.resultant[1][0], 9.0);
}

}  // namespace
}  // namespace tidearc::test
