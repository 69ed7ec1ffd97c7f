// The cards of each pattern kind: echo, checks, messages, records.
#include "load_model.h"
#include "model/pattern_records.h"

namespace tidearc::test {
namespace {

/// A load card: first node, six loads, last node, difference.
std::string load_card(int first, double x, double z, int last, int difference) {
  return format("I5,F10.2,10X,F10.2,30X,2I5", first, x, z, last, difference) + "\n";
}
std::string head(int cards, const std::string& title = "") { return format("I5", cards) + title + "\n"; }

/// Runs the pattern section for one pattern of a kind; the exit status of a stop.
std::optional<int> read_one(int StaticLoadBlock::*kind) {
  static_loads.*kind = 1;
  static_loads.NPAT = 1;
  return stop_of(PATTIN);
}

/// The words behind the header of the only pattern.
template <class T>
T first_record() {
  FILE(units.NT10, "REWI");
  FILE(units.NT10, "SKIP", 1);
  T record{};
  FILE(units.NT10, "READ", words(sizeof record), &record);
  return record;
}

// ---- nodal loads

TEST(NodalLoads, FillTheVectorByEquation) {
  LoadModel model(head(1, "DEAD LOAD") + "    2      10.0      20.0      30.0       1.0       2.0       3.0\n",
                  row_of_nodes(2));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
  EXPECT_EQ((first_record<std::array<double, 13>>()),
            (std::array<double, 13>{0, 0, 0, 0, 0, 0, 10, 20, 30, 1, 2, 3, 0}));
  EXPECT_EQ(patterns.resultant[0], (NodeValues{10, 20, 30, 1, 2, 3}));
}

TEST(NodalLoads, AreEchoedTabulatedAndSummed) {
  LoadModel model(head(2, "DEAD LOAD") + load_card(1, 1.5, -2.0, 2, 0) + load_card(2, 0.5, 0.0, 0, 0), row_of_nodes(3));
  model.number();
  read_one(&StaticLoadBlock::NFPAT);
  EXPECT_EQ(trimmed(model.scratch.report()),
            "1\n STATIC FORCE PATTERN SPECIFICATION COMMANDS\n\n\n"
            "     LOAD PATTERN NO.    1 - NODAL LOAD\n"
            " -----------------------------------------------------------------\n"
            "     DEAD LOAD\n"
            " -----------------------------------------------------------------\n\n"
            "     NO. OF STATIC LOAD GENERATING COMMANDS =    2\n\n"
            "     FIRST      X-LOAD      Y-LOAD      Z-LOAD      X-MOMT      Y-MOMT      Z-MOMT      LAST      NODE\n"
            "      NODE                                                                              NODE      DIFF\n\n"
            "         1       1.500       0.000      -2.000       0.000       0.000       0.000         2         0\n"
            "         2       0.500       0.000       0.000       0.000       0.000       0.000         0         0\n"
            "\n NODAL LOADS\n\n"
            "      NODE          FX          FY          FZ          MX          MY          MZ\n\n"
            "         1       1.500       0.000      -2.000       0.000       0.000       0.000\n"
            "         2       2.000       0.000      -2.000       0.000       0.000       0.000\n"
            "\n     TOTAL FORCES AND MOMENTS:\n\n"
            "                    FX          FY          FZ          MX          MY          MZ\n"
            "                 3.500       0.000      -4.000       0.000       0.000       0.000\n");
}

TEST(NodalLoads, OnAConstrainedComponentShowAsZero) {
  LoadModel model(head(1) + load_card(1, 5.0, 6.0, 0, 0), row_of_nodes(1));
  model.fix(1, {1}).number();
  read_one(&StaticLoadBlock::NFPAT);
  EXPECT_EQ(patterns.resultant[0], (NodeValues{0, 0, 6, 0, 0, 0}));
}

TEST(NodalLoads, OnASharedEquationCountAtEachOfItsNodes) {
  LoadModel model(head(1) + load_card(1, 5.0, 0.0, 0, 0), row_of_nodes(2));
  model.tie(2, 1, 1).number();
  read_one(&StaticLoadBlock::NFPAT);
  EXPECT_EQ(patterns.resultant[0][0], 10.0);
  EXPECT_TRUE(has_line(model.scratch.report(),
                       "         2       5.000       0.000       0.000       0.000       0.000       0.000"));
}

TEST(NodalLoads, WithLastNodeEqualToFirstLoadTheNodeOnce) {
  for (const int difference : {0, 1, 7}) {
    LoadModel model(head(1) + load_card(2, 5.0, 0.0, 2, difference), row_of_nodes(3));
    model.number();
    EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
    EXPECT_EQ(patterns.resultant[0][0], 5.0);
  }
}

TEST(NodalLoads, WithoutALastNodeTakeNoNoticeOfTheDifference) {
  for (const int difference : {3, -1}) {
    LoadModel model(head(1) + load_card(2, 5.0, 0.0, 0, difference), row_of_nodes(3));
    model.number();
    EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
    EXPECT_EQ(patterns.resultant[0][0], 5.0);
  }
}

TEST(NodalLoads, RunByTheDifferenceAndByOneWithoutIt) {
  LoadModel model(head(2) + load_card(1, 1.0, 0.0, 5, 2) + load_card(1, 0.0, 1.0, 5, 0), row_of_nodes(5));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
  EXPECT_EQ(patterns.resultant[0][0], 3.0);
  EXPECT_EQ(patterns.resultant[0][2], 5.0);
}

TEST(NodalLoads, WithASpanThatTheDifferenceDoesNotDivideStopTheRunInADataCheckToo) {
  struct Bad {
    int first, last, difference;
  };
  for (const Bad& bad : {Bad{1, 4, 2}, Bad{3, 2, 1}, Bad{1, 3, -1}, Bad{2, 2, -1}, Bad{2, -1, 0}}) {
    for (const int mode : {0, 1}) {
      LoadModel model(head(1) + load_card(bad.first, 5.0, 0.0, bad.last, bad.difference), row_of_nodes(5));
      model.number();
      run.RUNMOD = mode;
      EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), status_fatal);
      EXPECT_TRUE(trimmed(model.scratch.report()).ends_with("\n ERROR IN GRAVITY LOAD INPUT\n"));
      EXPECT_TRUE(model.scratch.errors().starts_with("TAModel.inp line 2, columns 66-75: load command"))
          << model.scratch.errors();
    }
  }
}

TEST(NodalLoads, OfANodeOutOfRangeAreSkippedAsADataError) {
  LoadModel model(head(3) + load_card(0, 1.0, 0.0, 0, 0) + load_card(1, 1.0, 0.0, 3, 0) + load_card(2, 4.0, 0.0, 0, 0),
                  row_of_nodes(2));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(patterns.resultant[0][0], 4.0);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 1-5: NODE 0 OUT OF RANGE"), 1);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 3, columns 66-70: NODE 3 OUT OF RANGE"), 1);
}

TEST(NodalLoads, WithANegativeCountAreAnEmptyPattern) {
  LoadModel model(head(-4), row_of_nodes(1));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NFPAT), std::nullopt);
  EXPECT_EQ((first_record<std::array<double, 7>>()), (std::array<double, 7>{}));
}

TEST(NodalLoads, OfASecondPatternStartFromZero) {
  LoadModel model(head(1) + load_card(1, 5.0, 0.0, 0, 0) + head(1) + load_card(1, 0.0, 2.0, 0, 0), row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 2;
  PATTIN();
  EXPECT_EQ(patterns.resultant[1], (NodeValues{0, 0, 2, 0, 0, 0}));
}

// ---- follower forces

TEST(FollowerForces, AreWrittenCardByCardAndListed) {
  LoadModel model(head(2, "CABLE") + "    1    2      12.5\n    2    3     -4.25\n", row_of_nodes(3));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NFOLL), std::nullopt);
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " LOAD PATTERN NO.    1 - FOLLOWER FORCE"));
  EXPECT_TRUE(has_line(report, " NODA    NODD            FORCE"));
  EXPECT_TRUE(has_line(report, "    1       2           12.500")) << report;
  EXPECT_TRUE(has_line(report, "    2       3           -4.250"));
  const auto record = first_record<FollowerRecord>();
  EXPECT_EQ(record.NODA, 1);
  EXPECT_EQ(record.NODD, 2);
  EXPECT_EQ(record.force, 12.5);
}

TEST(FollowerForces, OfANodeOutOfRangeLeaveAForceOfZero) {
  for (const std::string nodes_of_card : {"    0    2", "    1    4", "   -1    1"}) {
    LoadModel model(head(1) + nodes_of_card + "      12.5\n", row_of_nodes(3));
    model.number();
    EXPECT_EQ(read_one(&StaticLoadBlock::NFOLL), std::nullopt);
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_EQ(count_of_text(model.scratch.report(), "OUT OF RANGE, ENTERING CHEC MODE"), 1);
    EXPECT_EQ(first_record<FollowerRecord>().force, 0.0);
  }
}

// ---- temperatures

struct NodeVectors {
  std::array<double, 4> first{};
};

TEST(Temperatures, AreStoredByNodeAndALaterCardOverwrites) {
  LoadModel model(head(2, "WARM") + "    1    4    1      20.0       3.0\n    2    4    2      50.0       0.0\n",
                  row_of_nodes(4));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NTPAT), std::nullopt);
  EXPECT_EQ(first_record<NodeVectors>().first, (std::array<double, 4>{20, 50, 20, 50}));
  NodeVectors pressure{};
  FILE(units.NT10, "READ", 8, &pressure);
  EXPECT_EQ(pressure.first, (std::array<double, 4>{3, 0, 3, 0}));
}

TEST(Temperatures, AreEchoedAndTabulated) {
  LoadModel model(head(1, "WARM") + "    2    3    0      20.0       3.0\n", row_of_nodes(4));
  model.number();
  read_one(&StaticLoadBlock::NTPAT);
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " LOAD PATTERN NO.    1 -  TEMPERATURE AND PRESSURE LOAD")) << report;
  EXPECT_TRUE(has_line(report, "     INPUT DATA"));
  EXPECT_TRUE(has_line(report, "       1         2      3      0        0.2000D+02     0.3000D+01")) << report;
  EXPECT_TRUE(has_line(report, " NODAL TEMPERATURES AND PRESSURES"));
  EXPECT_TRUE(has_line(report, "         3     0.2000D+02     0.3000D+01")) << report;
  EXPECT_FALSE(has_line(report, "         4     0.0000D+00     0.0000D+00"));
}

TEST(Temperatures, EachPatternStartsFromZero) {
  LoadModel model(head(1) + "    1    2    1      20.0\n" + head(1) + "    2    2    1      30.0\n", row_of_nodes(2));
  model.number();
  static_loads.NTPAT = static_loads.NPAT = 2;
  PATTIN();
  FILE(units.NT10, "REWI");
  FILE(units.NT10, "SKIP", 4);
  std::array<double, 2> temperature{};
  FILE(units.NT10, "READ", 4, temperature.data());
  EXPECT_EQ(temperature, (std::array<double, 2>{0, 30}));
}

TEST(Temperatures, WithABadRangeStopTheRun) {
  struct Bad {
    std::string card, text, columns;
  };
  for (const Bad& bad : {Bad{"    0    2    1", " FIRST NODE EQUALS ZERO", "1-5"},
                         Bad{"    3    2    1", " LAST NODE IS LESS THAN FIRST NODE", "6-10"},
                         Bad{"    3    0    0", " LAST NODE IS LESS THAN FIRST NODE", "6-10"},
                         Bad{"    1    4    2", " INCREMENT SPACING NOT EVEN", "11-15"},
                         Bad{"    1    4   -1", " INCREMENT SPACING NOT EVEN", "11-15"}}) {
    LoadModel model(head(1) + bad.card + "      20.0\n", row_of_nodes(4));
    model.number();
    run.RUNMOD = 1;
    EXPECT_EQ(read_one(&StaticLoadBlock::NTPAT), status_fatal) << bad.card;
    EXPECT_TRUE(trimmed(model.scratch.report()).ends_with("\n ERROR IN TEMPERATURE LOAD INPUT\n" + bad.text + "\n"));
    EXPECT_TRUE(model.scratch.errors().starts_with("TAModel.inp line 2, columns " + bad.columns + ": temperature card"))
        << model.scratch.errors();
  }
}

TEST(Temperatures, OfANodeOutOfRangeAreSkippedAsADataError) {
  LoadModel model(head(3) + "   -2    1    1      20.0\n    1    5    1      20.0\n    4    4    1      30.0\n",
                  row_of_nodes(4));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NTPAT), std::nullopt);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(first_record<NodeVectors>().first, (std::array<double, 4>{0, 0, 0, 30}));
}

// ---- surface pressures

/// Words behind the header: code, data, first surface.
struct SurfacePattern {
  PatternHeader header{};
  int KPRS = 0;
  PressureData data{};
  std::vector<SurfaceRecord> surfaces;

  SurfacePattern() {
    FILE(units.NT10, "REWI");
    FILE(units.NT10, "READ", 12, &header);
    FILE(units.NT10, "READ", 1, &KPRS);
    FILE(units.NT10, "READ", words(sizeof data), &data);
    surfaces.resize(static_cast<std::size_t>(header.length - 1));
    for (SurfaceRecord& surface : surfaces) FILE(units.NT10, "READ", words(sizeof surface), &surface);
  }
};

TEST(SurfacePressures, OfCodeThreeReadNoPressureCards) {
  LoadModel model("    1    3    9       2.5\n    1    2    3    4\n", row_of_nodes(4));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), std::nullopt);
  EXPECT_EQ(deck_line(), 2);
  const SurfacePattern pattern;
  EXPECT_EQ(pattern.header.kind, 4);
  EXPECT_EQ(pattern.header.length, 2);
  EXPECT_EQ(std::string(pattern.header.title.data(), 40), std::string(40, ' '));
  EXPECT_EQ(pattern.KPRS, 3);
  EXPECT_EQ(pattern.data.value, 2.5);
  EXPECT_EQ(pattern.surfaces[0].node, (SurfaceNodes{1, 2, 3, 4}));
}

TEST(SurfacePressures, HeadIsEchoed) {
  LoadModel model("    0    2    0     64.0       0.0       0.0       1.0  1.0  2.0 10.0\n", row_of_nodes(4));
  model.number();
  read_one(&StaticLoadBlock::NPPAT);
  const std::string report = trimmed(model.scratch.report());
  EXPECT_EQ(
      count_of_text(report,
                    " LOAD PATTERN    1 - SURFACE PRESSURE LOAD\n\n"
                    "     NO. OF SURFACE ELEMENT CARDS FOR THIS PATTERN .. =    0\n"
                    "     PRESSURE CODE .................................. =    2\n"
                    "     1: NODAL PRESSURES INPUT DIRECTLY\n"
                    "     2: PRESSURE FROM FLUID DEPTH\n"
                    "     3: UNIFORM PRESSURE\n"
                    "     NO. OF PRESSURE CARDS (KPRS = 1 ONLY) .......... =    0\n"
                    "     KPRS = 2: FLUID DENSITY ........................ =  0.6400E+02\n"
                    "     KPRS = 3: UNIFORM PRESSURE VALUE ............... =  0.0000E+00\n"
                    "     UPWARD DIRECTION, X, Y, Z ...................... =      0.0000      0.0000      1.0000\n"
                    "     POINT OF THE FLUID SURFACE, X, Y, Z ............ =      1.0000      2.0000     10.0000\n"),
      1)
      << report;
  const SurfacePattern pattern;
  EXPECT_EQ(pattern.data.up, (std::array<double, 3>{0, 0, 1}));
  EXPECT_EQ(pattern.data.level, (std::array<double, 3>{1, 2, 10}));
}

TEST(SurfacePressures, RepeatCountGeneratesSurfacesWithTheIncrements) {
  LoadModel model(
      "    2    3    0       1.0\n    1    2    6    5    3    1    1    1    1\n    1    2    3    0    2"
      "    1    1    1    1\n",
      row_of_nodes(8));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), std::nullopt);
  const SurfacePattern pattern;
  ASSERT_EQ(pattern.surfaces.size(), 5U);
  EXPECT_EQ(pattern.surfaces[0].node, (SurfaceNodes{1, 2, 6, 5}));
  EXPECT_EQ(pattern.surfaces[2].node, (SurfaceNodes{3, 4, 8, 7}));
  EXPECT_EQ(pattern.surfaces[4].node, (SurfaceNodes{2, 3, 4, 0}));  // a triangle stays a triangle
  EXPECT_TRUE(has_line(model.scratch.report(), "          3       3       4       8       7"))
      << model.scratch.report();
}

TEST(SurfacePressures, RepeatCountBelowOneReadsAsOne) {
  for (const std::string repeat : {"    0", "   -5"}) {
    LoadModel model("    1    3\n    1    2    3    4" + repeat + "\n", row_of_nodes(4));
    model.number();
    read_one(&StaticLoadBlock::NPPAT);
    EXPECT_EQ(SurfacePattern().surfaces.size(), 1U);
  }
}

TEST(SurfacePressures, NodesOutOfRangeEndTheCardAsADataError) {
  LoadModel model("    2    3\n    1    2    3    4    9    1    1    1    1\n    4    3    2    1\n", row_of_nodes(5));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), std::nullopt);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(count_of_text(model.scratch.report(), "NODE     6  OUT OF RANGE"), 1);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 16-20:"), 1);
  EXPECT_EQ(SurfacePattern().surfaces.size(), 3U);  // two good ones of the first card, and the second card
}

TEST(SurfacePressures, ThirdNodeOfZeroIsOutOfRange) {
  LoadModel model("    1    3\n    1    2    0    4\n", row_of_nodes(5));
  model.number();
  read_one(&StaticLoadBlock::NPPAT);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(count_of_text(model.scratch.errors(), "line 2, columns 11-15:"), 1);
}

TEST(SurfacePressures, OfCodeOneComeFromPressureCardsAndAreZeroElsewhere) {
  LoadModel model(
      "    2    1    3\n    1    2    3    4\n    4    5    6\n"
      "    1    3    2       7.0\n    4                 9.0\n    5    6            2.0\n",
      row_of_nodes(6));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), std::nullopt);
  const SurfacePattern pattern;
  EXPECT_EQ(pattern.KPRS, 1);
  EXPECT_EQ(pattern.surfaces[0].pressure, (std::array<double, 4>{7, 0, 7, 9}));
  EXPECT_EQ(pattern.surfaces[1].pressure, (std::array<double, 4>{9, 2, 2, 2}));
  const std::string report = model.scratch.report();
  EXPECT_TRUE(has_line(report, " NODAL PRESSURES"));
  EXPECT_TRUE(has_line(report, "         4     0.9000E+01")) << report;
  EXPECT_FALSE(has_line(report, "         2     0.0000E+00"));
}

TEST(SurfacePressures, CardWithoutALastNodeTakesNoNoticeOfTheIncrement) {
  LoadModel model("    1    1    1\n    1    2    3    4\n    4    0   -1       9.0\n", row_of_nodes(4));
  model.number();
  EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), std::nullopt);
  EXPECT_EQ(SurfacePattern().surfaces[0].pressure, (std::array<double, 4>{0, 0, 0, 9}));
}

TEST(SurfacePressures, WithABadRangeOfPressuresStopTheRun) {
  for (const std::string card : {"    0", "    7", "    1    7", "    3    2", "    1    3   -1", "    1    4    2"}) {
    LoadModel model("    0    1    1\n" + card + "\n", row_of_nodes(6));
    model.number();
    run.RUNMOD = 1;
    EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), status_fatal) << card;
    EXPECT_TRUE(trimmed(model.scratch.report()).ends_with("\n     ERROR IN PRESSURE INPUT DATA\n"));
    EXPECT_TRUE(model.scratch.errors().starts_with("TAModel.inp line 2, columns 1-15: pressure card"));
  }
}

TEST(SurfacePressures, WithAnUnknownCodeStopTheRun) {
  for (const std::string code : {"    0", "    4", "   -1"}) {
    LoadModel model("    0" + code + "\n", row_of_nodes(4));
    model.number();
    EXPECT_EQ(read_one(&StaticLoadBlock::NPPAT), status_fatal);
    EXPECT_TRUE(trimmed(model.scratch.report()).ends_with("\n     ERROR IN PRESSURE INPUT DATA\n"));
    EXPECT_TRUE(model.scratch.errors().starts_with("TAModel.inp line 1, columns 6-10: pressure code"));
  }
}

}  // namespace
}  // namespace tidearc::test
