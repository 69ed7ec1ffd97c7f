// Input of beam groups: cards, defaults, limits, generation, messages.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "elements/beam/local_axes.h"
#include "group_deck.h"
#include "run/layout.h"

namespace tidearc::test {
namespace {

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

/// Number of the deck line that starts with `words`, as messages name it.
std::string line_starting(const std::string& group, const std::string& words) {
  const std::string deck = five_nodes(group).text();
  const auto at = static_cast<std::ptrdiff_t>(deck.find("\n" + words));
  return "line " + std::to_string(2 + std::count(deck.begin(), deck.begin() + at, '\n'));
}

TEST(BeamInput, AModulusOrAnAreaOfZeroIsAWarning) {
  LinearGroup soft = linear();
  soft.E = 0;
  const RunResult run = run_group(with_elements(soft));
  EXPECT_TRUE(has(run.report, boxed('W', " YOUNGS MODULUS EITHER ZERO OR NEGATIVE"))) << run.report;
  const std::string area_box = boxed('W', " AREA OF SECTION     2 EITHER ZERO OR NEGATIVE.");
  for (const double area : {0.0, -2.0, 1e-9}) {
    LinearGroup thin;
    for (const double A : {1.0, area, 1.0}) thin.section({.A = A, .J = 1, .I3 = 1, .I2 = 1});
    const std::string cards = with_elements(thin);
    const RunResult with = run_group(cards);
    EXPECT_EQ(has(with.report, area_box), area <= 0);
    // The complaint is about the card of that section, not about the last one read.
    EXPECT_EQ(has(with.errors, line_starting(cards, "    2    0") + ", columns 31-40: section 2"), area <= 0)
        << with.errors;
  }
}

TEST(BeamInput, ASectionOfShearAreasAloneIsFatal) {
  const std::string words = boxed('F', " PROPERTIES OTHER THAN SHEAR AREAS ARE ZERO");
  for (const LinearGroup::Section& s : {LinearGroup::Section{.AS2 = 1}, {.AS3 = 1}, {.AS2 = 1, .AS3 = 2}}) {
    LinearGroup group;
    group.section(s);
    expect_stop(with_elements(group), words, "columns 11-90");
  }
  // Any other property of the section, or no shear area, is not this.
  for (const LinearGroup::Section& s : {LinearGroup::Section{},
                                        {.OD = 1, .AS2 = 1},
                                        {.t = 1, .AS2 = 1},
                                        {.A = 1, .AS2 = 1},
                                        {.ID = 1, .AS2 = 1},
                                        {.J = 1, .AS2 = 1},
                                        {.I3 = 1, .AS2 = 1},
                                        {.I2 = 1, .AS3 = 1}}) {
    LinearGroup group;
    group.section(s);
    EXPECT_FALSE(has(run_group(with_elements(group)).report, "SHEAR AREAS ARE ZERO"));
  }
  // What the water asks of a section is none of its properties.
  LinearGroup wet;
  wet.section({.AS2 = 1, .growth = 3});
  expect_stop(with_elements(wet), words);
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
  const std::string words = "** ERROR **  CAN NOT SPECIFY INITIAL MOMENTS AND CATENARY GENERATION.";
  // Both further cards of a linear beam follow any code, and the first bears moments.
  for (const int INIT : {1, 2, 9, -1}) {
    LinearGroup group = linear();
    group.element({.I = 1, .J = 2, .CAT = 1, .INIT = INIT, .further = "\n\n"});
    expect_stop(group.text(), words, "columns 68-72");
  }
  LinearGroup without = linear();
  without.element({.I = 1, .J = 2, .axial = 4.0, .CAT = 1});
  expect_good(without.text(), "     KEY     MESSAGE");
  for (const int INIT : {0, 1, 2, 3}) {
    LargeGroup other = large();
    other.element({.I = 1,
                   .J = 2,
                   .axial = 4.0,
                   .CAT = 1,
                   .INIT = INIT,
                   .further = std::string(INIT == 3   ? "\n\n"
                                          : INIT == 0 ? ""
                                                      : "\n")});
    if (INIT == 1 || INIT == 3) {
      expect_stop(other.text(), words, "columns 81-90");
    } else {
      expect_good(other.text(), INIT == 2 ? "INITIAL DEFORMATIONS" : "     KEY     MESSAGE");
    }
  }
}

TEST(BeamInput, InitialCodesOfLargeBeamsAre0To3) {
  for (const int type : {2, 27}) {
    for (const int INIT : {-1, 4, 10}) {
      LargeGroup group = large(type);
      group.viv = "\n\n\n";
      group.element({.I = 1, .J = 2, .INIT = INIT});
      group.element({.I = 2, .J = 3});
      expect_data_error(
          group.text(),
          " ELEMENT     1  INITIAL CODE" + format("I6", INIT) + "  IS NOT 0, 1, 2 OR 3, ENTERING CHEC MODE",
          "columns 86-90");
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

}  // namespace
}  // namespace tidearc::test
