// Input of beam groups: cards, defaults, limits, generation, messages.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "elements/beam/local_axes.h"
#include "frame_deck.h"
#include "run/stops.h"

namespace tidearc::test {
namespace {

/// Three nodes in a row along x, 0, 2 and 4, the first held; node 4 on their line, node 5 above it.
FrameDeck five_nodes(const std::string& group) {
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0, 10.0}) deck.node(x, 0, 0);
  deck.node(1, 0, 3);
  deck.fix(1, "111111");
  deck.fix(4, "111111");
  deck.fix(5, "111111");
  deck.group(group);
  deck.load(2, {0, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  return deck;
}
RunResult run_group(const std::string& group) { return run_deck(five_nodes(group).text()); }
RunResult run_kept(const std::string& group) { return run_static(five_nodes(group).text()); }
bool has(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }
/// The report with its box rows removed tells these words, the run ends with this status.
void expect_stop(const std::string& group, const std::string& words, const std::string& place = "") {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_fatal) << words;
  EXPECT_TRUE(has(run.report, words)) << run.report;
  EXPECT_TRUE(has(run.errors, place)) << run.errors;
}
void expect_data_error(const std::string& group, const std::string& words, const std::string& place) {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_data_error) << words;
  EXPECT_TRUE(has(run.report, words)) << run.report;
  EXPECT_TRUE(has(run.errors, place)) << run.errors;
}
void expect_good(const std::string& group, const std::string& words = "") {
  const RunResult run = run_group(group);
  EXPECT_EQ(run.status, status_good) << run.errors;
  EXPECT_TRUE(has(run.report, words)) << words;
}

LinearGroup linear() {
  LinearGroup group;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  return group;
}
LargeGroup large(int type = 2) {
  LargeGroup group;
  group.ITYPE = type;
  group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1});
  return group;
}
/// The group with its two usual elements.
template <class Group>
std::string with_elements(Group group) {
  group.element({.I = 1, .J = 2});
  group.element({.I = 2, .J = 3});
  return group.text();
}
std::string replaced(std::string text, const std::string& part, const std::string& by) {
  const std::size_t at = text.find(part);
  EXPECT_NE(at, std::string::npos) << part;
  return text.replace(at, part.size(), by);
}

TEST(BeamInput, EchoesTheGroupOfLinearBeams) {
  const RunResult run = run_group(with_elements(linear()));
  EXPECT_EQ(run.status, 0) << run.errors;
  for (const char* words : {"LINEAR BEAM ELEMENT",
                            "LENGTH OF ELEMENT INFORMATION .................. =  688",
                            "NUMBER OF DEGREES OF FREEDOM PER ELEMENT ....... =   12",
                            "NUMBER OF GAUSS WAVE INTEGRATION POINTS ........ =    2",
                            "FLAG FOR THE INDUCED FIXED END MOMENTS",
                            "NUMBER OF END-ECCENTRICITY TYPES",
                            "MEMBER AXES DEFAULT TO SACS CONVENTIONS",
                            "YOUNGS",
                            "MODULUS",
                            "POISSON",
                            "SELF WEIGHT",
                            "INTERNAL FLUID",
                            "COEFFICIENTS FOR USE OF EXTENDED MORISON EQUATION",
                            "CTV",
                            "JCA",
                            "DIFF",
                            "HINGE",
                            "HIST",
                            "GEOM",
                            "WAVE",
                            "GAUS",
                            "BUOY",
                            "I-END",
                            "J-END",
                            "ELEMENT DATA INPUT DIRECTLY"})
    EXPECT_TRUE(has(run.report, words)) << words;
}

TEST(BeamInput, EchoesTheGroupOfLargeBeams) {
  LargeGroup group = large();
  group.offset({1, 2, 3, 4, 5, 6});
  const RunResult run = run_group(with_elements(group));
  EXPECT_EQ(run.status, 0) << run.errors;
  for (const char* words : {"3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS",
                            "LENGTH OF ELEMENT INFORMATION .................. =  826",
                            "NUMBER OF SUB-DIVISIONS FOR WAVE FORCE",
                            "FLAG FOR THE INDUCED FIXED END MOMENTS",
                            "NUMBER OF END-ECCENTRICITY TYPES",
                            "POST RESULT FLAG (=0 EFFECTIVE FORCE)",
                            "THEMAL COEFF.",
                            "WALL THIC.",
                            "INT. DIAM",
                            "I-Y",
                            "I-Z",
                            "WAVE DIAM",
                            "CKM",
                            "LONG. CD",
                            "MG Wt/Leng",
                            "Buoy_Diam",
                            "Angle(rad)",
                            "KGI",
                            "KGE",
                            "S.D.",
                            "OUT",
                            "DIFF"})
    EXPECT_TRUE(has(run.report, words)) << words;
}

TEST(BeamInput, KnowsFourWordsOfAxisConventions) {
  for (const char* word : {"", "SACS", "sacs"}) {
    LinearGroup group = linear();
    group.KDEF = word;
    expect_good(with_elements(group), "     MEMBER AXES DEFAULT TO SACS CONVENTIONS");
  }
  for (const char* word : {"STRUD", "strud"}) {
    LargeGroup group = large();
    group.KDEF = word;
    expect_good(with_elements(group), "     MEMBER AXES DEFAULT TO STRUDL CONVENTIONS");
  }
  for (const char* word : {" SACS", "Sacs", "Strud"}) {
    LinearGroup group = linear();
    group.KDEF = word;
    expect_stop(with_elements(group), "ERROR! UNDEFINED LOCAL AXIS CONVENTION DATA.     " + group.KDEF,
                "columns 26-30");
  }
  LargeGroup group = large();
  group.KDEF = "GLOBE";
  expect_stop(with_elements(group), "ERROR! UNDEFINED LOCAL AXIS CONVENTION DATA.     GLOBE", "columns 21-25");
}

std::string many_properties(int materials, int sections, int offsets) {
  LinearGroup group = linear();
  group.NMAT = materials;
  for (int k = 2; k <= sections; ++k) group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  for (int k = 1; k <= offsets; ++k) group.offset({});
  group.element({.I = 1, .J = 2, .MAT = materials, .SEC = sections});
  group.element({.I = 2, .J = 3, .ECC = std::min(offsets, 99)});
  return group.text();
}

TEST(BeamInput, ALinearGroupHasRoomFor1000RealsOfProperties) {
  expect_good(many_properties(36, 34, 0));  // 36*7 + 34*22 = 1000
  expect_stop(many_properties(37, 34, 0), " NMAT*7 + NSEC*22 <= 1000", "columns 1-10");
  expect_stop(many_properties(140, 1, 0), " NMAT*7 + NSEC*22 <= 1000");
}

TEST(BeamInput, ALinearGroupHas100OffsetTypesAtMost) {
  expect_good(many_properties(1, 1, 100));
  expect_stop(many_properties(1, 1, 101), " FATAL ERROR - NECC .GT. 100 - INCREASE DIMENSION IN SUBROUTINE INEL03.",
              "columns 21-25");
}

TEST(BeamInput, ALargeGroupHas150OfEachAtMost) {
  const auto text = [](int materials, int sections, int offsets) {
    LargeGroup group = large();
    for (int k = 2; k <= sections; ++k) group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1});
    for (int k = 1; k <= offsets; ++k) group.offset({});
    std::string cards = with_elements(group);
    if (materials == 1) return cards;
    std::string more;
    for (int k = 1; k <= materials; ++k) more += format("I5", k) + "     " + ten(1000) + ten(0.25) + "\n\n";
    const std::string one =
        "    1     " + ten(1000) + ten(0.25) + ten(0) + "\n" + ten(0) + ten(0) + ten(0) + ten(0) + ten(0) + "\n";
    cards = replaced(cards, one, more);
    const std::string counts = format("I5", sections) + "    1    0";
    return replaced(cards, "\n    1" + counts, "\n" + format("I5", materials) + counts);
  };
  expect_good(text(150, 150, 150));
  expect_stop(text(151, 1, 0), "MAXIMUM ALLOWABLE NUMBER OF MATERIAL TYPES IS 150.", "columns 1-5");
  expect_stop(text(1, 151, 0), "MAXIMUM ALLOWABLE NUMBER OF SECTION TYPES IS 150.", "columns 6-10");
  expect_stop(text(1, 1, 151), "MAXIMUM ALLOWABLE NUMBER OF END ECCS. IS 150.", "columns 26-30");
}

TEST(BeamInput, PropertyCardsBearTheirNumbersInSequence) {
  expect_stop(replaced(with_elements(linear()), "\n    1     ", "\n    2     "),
              "** ERROR **  MATERIAL PROPERTY NUMBERS SHOULD BE INPUT SEQUENTIALLY.", "columns 1-5");
  expect_stop(replaced(with_elements(linear()), "\n    1    0", "\n    3    0"),
              "** ERROR **  SECTION PROPERTY NUMBERS SHOULD BE INPUT SEQUENTIALLY.", "columns 1-5");
  LargeGroup group = large();
  group.offset_count = 1;
  group.offset({});
  expect_stop(with_elements(group), "** ERROR **  ECCENTRICITY TYPE NUMBERS SHOULD BE INPUT SEQUENTIALLY.");
}

TEST(BeamInput, AModulusOrAnAreaOfZeroIsAWarning) {
  LinearGroup soft = linear();
  soft.E = 0;
  const RunResult run = run_group(with_elements(soft));
  EXPECT_TRUE(has(run.report, std::string(130, 'W') + "\n YOUNGS MODULUS EITHER ZERO OR NEGATIVE")) << run.report;
  LinearGroup thin;
  thin.section({.J = 1, .I3 = 1, .I2 = 1});
  EXPECT_TRUE(has(run_group(with_elements(thin)).report,
                  std::string(130, 'W') + "\n AREA OF SECTION     1 EITHER ZERO OR NEGATIVE."));
}

TEST(BeamInput, ASectionOfShearAreasAloneIsFatal) {
  LinearGroup group;
  group.section({.AS2 = 1});
  expect_stop(with_elements(group), std::string(130, 'F') + "\n PROPERTIES OTHER THAN SHEAR AREAS ARE ZERO");
  LinearGroup nothing;
  nothing.section({});
  EXPECT_FALSE(has(run_group(with_elements(nothing)).report, "SHEAR AREAS ARE ZERO"));
}

TEST(BeamInput, ATubeFillsWhatTheSectionLeavesAtZero) {
  const auto filled = [](double OD, double t, double own) {
    LinearSection section{};
    section.outside_diameter = OD;
    section.thickness = t;
    section.area = section.inside_diameter = section.J = section.I3 = section.I2 = own;
    fill_from_tube(section);
    return section;
  };
  // Published figures of the tube 0.5 by 0.02.
  const LinearSection tube = filled(0.5, 0.02, 0.0);
  EXPECT_NEAR(tube.area, 0.0301592895, 1e-10);
  EXPECT_NEAR(tube.I2, 0.000870095501, 1e-12);
  EXPECT_NEAR(tube.I3, 0.000870095501, 1e-12);
  EXPECT_NEAR(tube.J, 0.001740191, 1e-9);
  EXPECT_NEAR(tube.inside_diameter, 0.46, 1e-15);
  const LinearSection own = filled(0.5, 0.02, 3.0);
  for (const double value : {own.area, own.inside_diameter, own.J, own.I3, own.I2}) EXPECT_EQ(value, 3.0);
  const LinearSection bar = filled(0.5, 0.0, 0.0);
  EXPECT_EQ(bar.J, 0.0);
}

TEST(BeamInput, GeneratesTheElementsOfAGapWithTheIncrementOfTheCardBefore) {
  FrameDeck deck;
  for (int i = 0; i < 8; ++i) deck.node(i, 0, 0);
  deck.node(0, 0, 5);
  deck.fix(1, "111111");
  deck.fix(2, "111111");
  deck.fix(9, "111111");
  LinearGroup group = linear();
  group.element({.I = 1, .J = 3, .DIFF = 2, .K = 9, .HJ = 0});
  group.element({.number = 3, .I = 5, .J = 7});
  group.element({.number = 5, .I = 2, .J = 8});
  deck.group(group.text());
  deck.load(3, {0, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  const RunResult run = run_static(deck.text());
  EXPECT_TRUE(has(run.report, " *        2       3       5")) << run.report;
  EXPECT_TRUE(has(run.report, " *        4       6       8"));
  const LinearBeamRecord second = linear_record(2);
  EXPECT_EQ(second.NODEI, 3);
  EXPECT_EQ(second.NODEJ, 5);
  EXPECT_EQ(second.KNODE, 9);
  EXPECT_EQ(linear_record(4).NODEI, 6);  // an increment of 0 is 1
  EXPECT_EQ(linear_record(4).KNODE, axes_SACS);
}

TEST(BeamInput, AnElementCardOutOfSequenceEndsTheRun) {
  for (const int number : {1, 4}) {
    LinearGroup group = linear();
    group.element({.number = number == 4 ? 2 : 1, .I = 1, .J = 2});
    group.element({.number = 1, .I = 2, .J = 3});
    group.last = 2;
    const RunResult run = run_group(group.text());
    EXPECT_EQ(run.status, status_fatal);
    EXPECT_TRUE(has(run.report, " **       ")) << run.report;
    EXPECT_TRUE(has(run.report, "     **     ELEMENT DATA OUT OF SEQUENCE"));
    EXPECT_TRUE(has(run.report, "ELEMENT CARD OUT OF SEQUENCE     FATAL"));
  }
  LargeGroup group = large();
  group.element({.number = 1, .I = 1, .J = 2});
  group.element({.number = 5, .I = 2, .J = 3});
  group.last = 2;
  expect_stop(group.text(), "     **     ELEMENT DATA OUT OF SEQUENCE", "columns 1-5");
}

template <class Group>
void expect_range_errors(const Group& empty, const char* offset_columns) {
  const auto one = [&](auto change) {
    Group group = empty;
    typename Group::Element e;
    change(e);
    group.element(e);
    return group.text();
  };
  expect_data_error(one([](auto& e) { e.J = 6; }), " NODE     6  OUT OF RANGE, ENTERING CHEC MODE", "columns 11-15");
  expect_data_error(one([](auto& e) { e.I = 0; }), " NODE     0  OUT OF RANGE, ENTERING CHEC MODE", "columns 6-10");
  expect_data_error(one([](auto& e) { e.K = 6; }), " NODE     6  OUT OF RANGE, ENTERING CHEC MODE", "columns 21-25");
  const std::string words = " ELEMENT     1  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE";
  expect_data_error(one([](auto& e) { e.MAT = 2; }), words, "columns 26-30");
  expect_data_error(one([](auto& e) { e.SEC = -1; }), words, "columns 31-35");
  expect_data_error(one([](auto& e) { e.ECC = 2; }), words, offset_columns);
}

TEST(BeamInput, NumbersOutOfRangeAreDataErrors) {
  LinearGroup first = linear();
  first.offset({});
  expect_range_errors(first, "columns 66-67");
  expect_range_errors(linear(), "columns 66-67");
  LargeGroup second = large();
  second.offset({});
  expect_range_errors(second, "columns 76-80");
}

TEST(BeamInput, HingeCodesAreMadeOfDigits0And1) {
  LinearGroup group = linear();
  group.element({.I = 1, .J = 2, .HI = 20});
  expect_data_error(group.text(), " ELEMENT     1  HINGE CODE    20  IS NOT MADE OF DIGITS 0 AND 1", "columns 73-76");
  LinearGroup other = linear();
  other.element({.I = 1, .J = 2, .HJ = 3});
  expect_data_error(other.text(), "HINGE CODE     3", "columns 77-80");
}

TEST(BeamInput, AMemberWithoutLengthEndsTheRun) {
  LinearGroup group = linear();
  group.element({.I = 2, .J = 2});
  expect_stop(group.text(), " ERROR ELEMENT     1 HAS ZERO LENGTH     NODE-I     2     NODE-J     2", "line");
  LargeGroup offset = large();
  offset.offset({2, 0, 0, 0, 0, 0});
  offset.element({.I = 1, .J = 2, .ECC = 1});
  expect_stop(offset.text(), "HAS ZERO LENGTH");
}

TEST(BeamInput, AThirdNodeOnTheLineTakesSACSAxesForThatElement) {
  LinearGroup group = linear();
  group.KDEF = "STRUD";
  group.element({.I = 1, .J = 2, .K = 4});
  group.element({.I = 2, .J = 3});
  group.element({.I = 1, .J = 3, .K = 5});
  group.element({.I = 1, .J = 3, .K = -5});
  const RunResult run = run_kept(group.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(has(run.report,
                  "     ERROR.    K-NODE LIES ON BEAM X-AXIS\n     PROCEEDING WITH SACS ASSUMPTION FOR LOCAL AXES"));
  EXPECT_EQ(linear_record(1).KNODE, axes_SACS);
  EXPECT_EQ(linear_record(2).KNODE, axes_STRUDL);
  EXPECT_EQ(linear_record(3).KNODE, 5);
  EXPECT_EQ(linear_record(4).KNODE, axes_STRUDL);
}

TEST(BeamInput, InitialForcesExcludeACatenary) {
  LinearGroup group = linear();
  group.element({.I = 1, .J = 2, .CAT = 1, .INIT = 1, .further = "\n\n"});
  expect_stop(group.text(), "** ERROR **  CAN NOT SPECIFY INITIAL MOMENTS AND CATENARY GENERATION.", "columns 68-72");
  for (const int INIT : {1, 2, 3}) {
    LargeGroup other = large();
    other.element({.I = 1, .J = 2, .CAT = 1, .INIT = INIT, .further = INIT == 3 ? "\n\n" : "\n"});
    if (INIT == 2) {
      expect_good(other.text(), "INITIAL DEFORMATIONS");
    } else {
      expect_stop(other.text(), "** ERROR **  CAN NOT SPECIFY INITIAL MOMENTS AND CATENARY GENERATION.",
                  "columns 81-90");
    }
  }
}

TEST(BeamInput, MasterAndSlaveAreInert) {
  for (const char* columns : {"         2          ", "                   3"}) {
    LinearGroup group = linear();
    group.element({.I = 1, .J = 2, .INIT = 1, .further = std::string(columns) + ten(1) + "\n\n"});
    const RunResult run = run_group(group.text());
    EXPECT_TRUE(has(run.report, " WARNING - MASTER/SLAVE NOT WORKING IN THIS VERSION "));
    EXPECT_TRUE(has(run.report, "MOMENTS(22)"));
    EXPECT_TRUE(has(run.report, "SHEAR DEF(33)"));
  }
}

TEST(BeamInput, AGroupWithoutElementsHasItsCardsAndNoRecords) {
  LinearGroup group = linear();
  FrameDeck deck = five_nodes(group.text());
  LinearGroup members = linear();
  deck.group(with_elements(members));
  EXPECT_EQ(run_static(deck.text()).status, 0);
  EXPECT_EQ(linear_record(1).head.number, 1);
}

TEST(BeamInput, TheAngleOfALargeSectionTurnsItsAxes) {
  LargeGroup group;
  group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1, .angle = 0.5});
  EXPECT_EQ(run_kept(with_elements(group)).status, 0);
  const LargeBeam beam = large_record(1);
  EXPECT_NEAR(beam.TELEM[4], std::cos(0.5), 1e-15);
  EXPECT_NEAR(beam.TELEM[5], std::sin(0.5), 1e-15);
}

const std::string vortex_cards =
    "    1    3       0.2       0.9       1.1       2.0       3.0       4.0       0.5       1.4      4711          "
    "256\n"
    "    3    2LIFT COEFFICIENTS\nBY AMPLITUDE\n 0.10 0.20 0.30\n       1.0       2.0\n       3.0       4.0\n"
    "       5.0       6.0\n";

std::string vortex_group(int kviv = 2, int NSUB = 1, const std::string& cards = vortex_cards) {
  LargeGroup group = large(27);
  group.kviv = kviv;
  group.NSUB = NSUB;
  group.viv = cards;
  return with_elements(group);
}

TEST(VortexInput, EchoesItsCardsAndRunsAsALargeBeam) {
  const RunResult run = run_group(vortex_group());
  EXPECT_EQ(run.status, 0) << run.errors << run.report;
  for (const char* words : {"3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS AND VIV",
                            "LENGTH OF ELEMENT INFORMATION .................. = 1484",
                            "MEMBER LOCAL AXIS ORIENTATION (KDEF)",
                            "VIV ALGORITHM (kviv) ........................... =    2",
                            "POST RESULT FLAG (=0 EFFECTIVE FORCE)",
                            "INPLANE MOTION 0=STEADY 1=OSCILLATORY .......... =    1",
                            "NUMBER OF CORRELATED GAUSS POINTS (nnc) ........ =    3",
                            "STROUHAL NUMBER (DEFAULT= Re Dependent)",
                            "BASE LIFT COEFFICIENT (cl0)",
                            "BASE DRAG COEFFICIENT (cd0)",
                            "BEGIN RAMP TIME (trampb)",
                            "LIFT RAMP TIME (trampl)",
                            "START TIME FOR VIV TRACKING (timrwl)",
                            "SHEDDING FREQUENCY DISTRIBUTION (alpha)",
                            "LOCK-IN CUTOFF (cutoff)",
                            "RANDOM NUMBER SEED (iseed) ..................... = 4711",
                            "BLOCK FACTOR (blokfac) (default=1.0) ........... =  0.1000E+01",
                            "LIFT COEFFICIENTS",
                            "BY AMPLITUDE",
                            "0.2000",
                            "6.0000E+00",
                            " (NONLINEAR ELASTIC BEAM-COLUMN ELEMENTS) TIME ="})
    EXPECT_TRUE(has(run.report, words)) << words;
  EXPECT_FALSE(has(run.report, "** warning **"));
}

TEST(VortexInput, OnlyTheSecondAlgorithmExists) {
  for (const int kviv : {0, 1, 3}) {
    expect_stop(vortex_group(kviv), "** ERROR **  Only Rev 2 algorithm available at this time.", "columns 26-30");
  }
}

TEST(VortexInput, MoreThanOneSegmentIsAWarning) {
  const RunResult run = run_group(vortex_group(2, 2));
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(
      has(run.report, "** warning ** more than one segment but only the first segment is used for viv calculations."));
}

TEST(VortexInput, ATableMustFit) {
  const std::string first = vortex_cards.substr(0, vortex_cards.find('\n') + 1);
  expect_stop(vortex_group(2, 1, first + "  101    1\n\n"), "COEFFICIENT TABLE OF   101 BY     1 VALUES IS TOO LARGE.");
  expect_stop(vortex_group(2, 1, first + "   90    9\n\n"), "IS TOO LARGE.");
  expect_good(vortex_group(2, 1, first + "    0    0\n\n"));
}

}  // namespace
}  // namespace tidearc::test
