// Input of truss groups: cards, defaults, limits, generation, messages and what the model gets from its elements.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "elements/contract/pass.h"
#include "model.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc::test {
namespace {

std::vector<ModelNode> chain(int count, double spacing = 10.0) {
  std::vector<ModelNode> list;
  for (int i = 0; i < count; ++i) list.push_back({spacing * i, 0.0, 0.0, i == 0 ? "" : "XYZ"});
  return list;
}

/// A group whose property cards are all blank but for their numbers.
std::string blank_group(int materials, int sections, int gauss, const std::string& elements, int NUMEL = 1) {
  std::string text = format("3I5", 1, NUMEL, 1) + "\n" + format("3I5", materials, sections, gauss) + "\n";
  for (int k = 1; k <= std::max(materials, 1); ++k) text += format("I5", k) + "      100.\n\n";
  for (int k = 1; k <= std::max(sections, 1); ++k) text += format("I5", k) + "        1.\n\n";
  return text + elements;
}

bool tells(const Model& model, const std::string& words) { return model.report().find(words) != std::string::npos; }
std::string one_element() { return ElementText{}.card(); }

TEST(TrussInput, EchoesGroupMaterialsSectionsAndElements) {
  TrussGroupText text;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value());
  for (const char* words : {"THREE DIMENSIONAL TRUSS ELEMENTS",
                            "NUMBER OF DEGREES OF FREEDOM PER ELEMENT ....... =    6",
                            "LENGTH OF ELEMENT INFORMATION .................. =  358",
                            "NUMBER OF DIFFERENT MATERIAL TYPES.......    1",
                            "NUMBER OF DIFFERENT SECTION TYPES........    1",
                            "NUMBER OF GAUSS WAVE INTEGRATION POINTS..    2",
                            "MATERIAL PROPERTIES",
                            "MAT.",
                            "EMOD",
                            "RATIO",
                            "EH/E",
                            "YIELD STRESS",
                            "TENSION",
                            "COMPRESSION",
                            "POISON'S",
                            "SELF WEIGHT",
                            "DNESITY",
                            "MASS",
                            "DENSITY",
                            "INTERNAL FLUID",
                            "WEIGHT DENSITY",
                            "MASS DENSITY",
                            "PRESSURE",
                            "DUCTILITY",
                            "OF FAILURE",
                            "SECTION PROPERTIES",
                            "AREA OR",
                            "DIAM.",
                            "WALL",
                            "THIC.",
                            "INT.",
                            "WATER",
                            "CD",
                            "CM",
                            "CKM",
                            "LONG.",
                            "MG",
                            "Wt/Leng",
                            "Buoy_",
                            "COEFFICIENTS FOR USE OF EXTENDED MORISON EQUATION",
                            "CTV",
                            "CTD",
                            "CAM",
                            "CAD",
                            "ICA",
                            "JCA",
                            "GEOM",
                            "HIST",
                            "BUCK",
                            "CAT",
                            "WAVE",
                            "GAUSS",
                            "BUOY",
                            "ERROR MESSAGES",
                            "KEY",
                            "MESSAGE",
                            "ELEMENT DATA INPUT DIRECTLY      NONE",
                            "*       ELEMENT DATA GENERATED           NONE",
                            "**      ELEMENT CARD OUT OF SEQUENCE     FATAL"}) {
    EXPECT_TRUE(tells(model, words)) << words;
  }
}

TEST(TrussInput, ReadsEveryFieldOfTheCards) {
  const std::string cards = format("3I5", 1, 1, 1) + "\n" + format("3I5", 1, 1, 2) + "\n" +
                            "    1    2.0E11       .05    3.5E8   -2.5E8        .3     77E3    7\n"
                            "    7850.     9810.     1000.     2.5E6       12.    8   .00001   .00002\n"
                            "    1        .5       .02        .4        .6        .7       1.8        .9"
                            "        .1       11.       .55\n"
                            "       1.1       1.2       1.3       1.4    5    6\n" +
                            "    1    2    1    1    1     1.E6    1    3    1    4    2    1    5\n";
  Model model(chain(2), cards);
  model.build();
  const TrussRecord t = model.record(1);
  const TrussMaterial& m = t.material;
  EXPECT_EQ(m.EMOD, 2.0e11);
  EXPECT_EQ(m.ratio, 0.05);
  EXPECT_EQ(m.yield_tension, 3.5e8);
  EXPECT_EQ(m.yield_compression, -2.5e8);
  EXPECT_EQ(m.poisson, 0.3);
  EXPECT_EQ(m.weight, 77.0e3);
  EXPECT_EQ(m.mass, 7850.0);
  EXPECT_EQ(m.fluid_weight, 9810.0);
  EXPECT_EQ(m.fluid_mass, 1000.0);
  EXPECT_EQ(m.pressure, 2.5e6);
  EXPECT_EQ(m.ductility, 12.0);
  const TrussSection& s = t.section;
  EXPECT_EQ(s.thickness, 0.02);
  EXPECT_EQ(s.inside_diameter, 0.4);
  EXPECT_EQ(s.water_diameter, 0.6);
  EXPECT_EQ(s.CD, 0.7);
  EXPECT_EQ(s.CM, 1.8);
  EXPECT_EQ(s.CKM, 0.9);
  EXPECT_EQ(s.longitudinal_CD, 0.1);
  EXPECT_EQ(s.growth_weight, 11.0);
  EXPECT_EQ(s.buoyant_diameter, 0.55);
  EXPECT_EQ(s.CTV, 1.1);
  EXPECT_EQ(s.CAD, 1.4);
  EXPECT_EQ(s.ICA, 5);
  EXPECT_EQ(s.JCA, 6);
  // Tube of 0.5 with a wall of 0.02: pi/4 (0.25 - 0.2116) = 0.030159289...
  EXPECT_NEAR(s.area, 0.030159289474462, 1e-15);
  EXPECT_EQ(t.KGEOM, 1);
  EXPECT_EQ(t.KHIST, 3);
  EXPECT_EQ(t.KBUCK, 1);
  EXPECT_EQ(t.KCAT, 4);
  EXPECT_EQ(t.KWAVE, 2);
  EXPECT_EQ(t.KBUOY, 1);
  EXPECT_EQ(t.NGAUSS, 2);
  EXPECT_EQ(t.F1, 1.0e6);
  EXPECT_NEAR(t.SK1, 0.95 * 2.0e11 * s.area / 10.0, 1e-3);
  EXPECT_NEAR(t.FYC, -0.95 * s.area * 2.5e8, 1e-6) << "the sign of the compressive yield stress does not matter";
  EXPECT_NEAR(t.DUCTL, 12.0 * 3.5e8 * 10.0 / 2.0e11, 1e-12);
  EXPECT_NEAR(t.OVTOL[0], 1.0e-4, 1e-18) << "strain times length";
  EXPECT_NEAR(t.OVTOL[1], 2.0e-4, 1e-18);
  EXPECT_EQ(t.head.KSTIF, 1);
  EXPECT_EQ(t.head.number, 1);
}

TEST(TrussInput, CountsBelowOneAreOneAndGaussAboveFourIsFour) {
  Model model(chain(2), blank_group(0, -3, 7, one_element()));
  model.build();
  EXPECT_TRUE(tells(model, "NUMBER OF DIFFERENT MATERIAL TYPES.......    1"));
  EXPECT_TRUE(tells(model, "NUMBER OF DIFFERENT SECTION TYPES........    1"));
  EXPECT_TRUE(tells(model, "NUMBER OF GAUSS WAVE INTEGRATION POINTS..    4"));
  EXPECT_EQ(model.record(1).NGAUSS, 4);
}

TEST(TrussInput, FourGaussPointsPass) {
  Model model(chain(2), blank_group(1, 1, 4, one_element()));
  model.build();
  EXPECT_EQ(model.record(1).NGAUSS, 4);
}

TEST(TrussInput, AHundredAndFiftyTypesPass) {
  ElementText last;
  last.MAT = 150;
  last.SEC = 150;
  Model model(chain(2), blank_group(150, 150, 0, last.card()));
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value());
  EXPECT_TRUE(executing());
}

TEST(TrussInput, AHundredAndFiftyOneMaterialsStop) {
  Model model(chain(2), blank_group(151, 1, 0, one_element()));
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, " ERROR MESSAGES"));
  EXPECT_TRUE(tells(model, "MAXIMUM ALLOWABLE NUMBER OF MATERIAL TYPES IS 150."));
  EXPECT_NE(model.errors().find("line 2"), std::string::npos) << model.errors();
}

TEST(TrussInput, AHundredAndFiftyOneSectionsStop) {
  Model model(chain(2), blank_group(1, 151, 0, one_element()));
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, "MAXIMUM ALLOWABLE NUMBER OF SECTION TYPES IS 150."));
}

TEST(TrussInput, MaterialsOutOfOrderStop) {
  Model model(chain(2), format("3I5", 1, 1, 1) + "\n" + format("3I5", 2, 1, 0) + "\n    1\n\n    3\n\n");
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, "** ERROR **  MATERIAL PROPERTY NUMBERS SHOULD BE INPUT SEQUENTIALLY."));
  EXPECT_NE(model.errors().find("line 5, columns 1-5"), std::string::npos) << model.errors();
}

TEST(TrussInput, SectionsOutOfOrderStop) {
  Model model(chain(2), format("3I5", 1, 1, 1) + "\n" + format("3I5", 1, 1, 0) + "\n    1\n\n    2\n\n");
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, "** ERROR **  SECTION PROPERTY NUMBERS SHOULD BE INPUT SEQUENTIALLY."));
}

TEST(TrussInput, NoYieldStressMeansNoYield) {
  TrussGroupText text;
  text.tension = -5.0;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  model.build();
  EXPECT_EQ(model.record(1).FYT, 1.0e20);
  EXPECT_EQ(model.record(1).FYC, -1.0e20);
  EXPECT_EQ(model.record(1).DUCTL, 0.0);
}

TEST(TrussInput, AGapIsGeneratedWithTheIncrementOfTheCardBeforeIt) {
  TrussGroupText text;
  text.NUMEL = 5;
  text.NFIRST = 11;
  ElementText first{.number = 11, .I = 1, .J = 2, .force = 0.5, .KGEOM = 1, .increment = 2};
  ElementText last{.number = 15, .I = 1, .J = 3};
  text.elements = first.card() + last.card();
  Model model(chain(9), text.cards());
  model.build();
  for (int k = 0; k < 4; ++k) {
    const TrussRecord t = model.record(k + 1);
    EXPECT_EQ(t.head.number, 11 + k);
    EXPECT_EQ(t.NODEI, 1 + 2 * k);
    EXPECT_EQ(t.NODEJ, 2 + 2 * k);
    EXPECT_EQ(t.KGEOM, 1);
    EXPECT_EQ(t.F1, 0.5) << "all other data equal";
  }
  EXPECT_EQ(model.record(5).NODEJ, 3);
  EXPECT_TRUE(tells(model, " *       12       3       4"));
  EXPECT_TRUE(tells(model, "         11       1       2"));
  EXPECT_EQ(element_counts.NELTOT, 5);
}

TEST(TrussInput, ABlankIncrementIsOne) {
  TrussGroupText text;
  text.NUMEL = 3;
  text.elements = ElementText{.number = 1}.card() + ElementText{.number = 3, .I = 3, .J = 4}.card();
  Model model(chain(4), text.cards());
  model.build();
  EXPECT_EQ(model.record(2).NODEI, 2);
  EXPECT_EQ(model.record(2).NODEJ, 3);
}

void expect_out_of_sequence(const std::string& elements, int NUMEL, int NFIRST, const std::string& line) {
  TrussGroupText text;
  text.NUMEL = NUMEL;
  text.NFIRST = NFIRST;
  text.elements = elements;
  Model model(chain(4), text.cards());
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, " **" + line)) << model.report();
  EXPECT_TRUE(tells(model, "ELEMENT CARD OUT OF SEQUENCE     FATAL"));
  EXPECT_NE(model.errors().find("out of sequence"), std::string::npos);
}

TEST(TrussInput, TheFirstCardMustBearTheFirstNumber) {
  expect_out_of_sequence(ElementText{.number = 2}.card(), 3, 1, "       2       1       2");
  expect_out_of_sequence(ElementText{.number = 1}.card(), 3, 2, "       1       1       2");
}
TEST(TrussInput, NumbersMustRise) {
  expect_out_of_sequence(ElementText{.number = 1}.card() + ElementText{.number = 1}.card(), 3, 1, "       1       1");
}
TEST(TrussInput, NumbersEndWithTheGroup) {
  expect_out_of_sequence(ElementText{.number = 1}.card() + ElementText{.number = 4}.card(), 3, 1, "       4       1");
}

TEST(TrussInput, ZeroLengthStopsBehindTheEchoOfTheGroup) {
  TrussGroupText text;
  text.NUMEL = 3;
  text.elements = ElementText{.number = 1}.card() + ElementText{.number = 2, .I = 2, .J = 2}.card() +
                  ElementText{.number = 3, .I = 2, .J = 3}.card();
  Model model(chain(3), text.cards());
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  const std::string report = model.report();
  const std::size_t message = report.find(" ERROR ELEMENT     2 HAS ZERO LENGTH");
  ASSERT_NE(message, std::string::npos);
  EXPECT_LT(message, report.find("          3       2       3"));
  EXPECT_LT(message, report.find("ERROR MESSAGES"));
}

TEST(TrussInput, NodesOutOfRangeAreDataErrorsAndReadingGoesOn) {
  TrussGroupText text;
  text.NUMEL = 3;
  text.elements = ElementText{.number = 1, .I = 0, .J = 2}.card() + ElementText{.number = 2, .I = 1, .J = 99}.card() +
                  ElementText{.number = 3, .I = 1, .J = 3}.card();
  Model model(chain(3), text.cards());
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value());
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(tells(model, " ***** DATA ERROR *****      NODE     0  OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_TRUE(tells(model, " ***** DATA ERROR *****      NODE    99  OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_TRUE(tells(model, "          3       1       3"));
  EXPECT_TRUE(tells(model, "STORAGE REQUIREMENTS")) << "the storage report appears in check mode too";
}

TEST(TrussInput, AGapThatLeavesTheModelIsOneDataErrorHoweverLongItIs) {
  TrussGroupText text;
  text.NUMEL = 99999;
  text.elements = ElementText{.number = 1}.card() + ElementText{.number = 99999, .I = 2, .J = 3}.card();
  Model model(chain(3), text.cards());
  stop_of([&] { ELDATA(); });
  const std::string report = model.report();
  const std::string error = "DATA ERROR";
  std::size_t count = 0;
  for (std::size_t at = report.find(error); at != std::string::npos; at = report.find(error, at + 1)) ++count;
  EXPECT_EQ(count, 1u);
}

TEST(TrussInput, AHugeCountOfElementsEndsAtTheFirstMissingCard) {
  Model model(chain(3), "    1" + std::string("2000000000    1").substr(5) + "\n");
  EXPECT_EQ(stop_of([&] { model.build(); }), status_io);
}

TEST(TrussInput, ANegativeCountOfElementsIsNone) {
  TrussGroupText text;
  text.NUMEL = -4;
  Model model(chain(3), text.cards());
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value());
  EXPECT_EQ(element_counts.NELTOT, 0);
}

TEST(TrussInput, MaterialAndSectionNumbersAreChecked) {
  TrussGroupText text;
  text.NUMEL = 3;
  text.elements = ElementText{.number = 1, .MAT = 2}.card() +
                  ElementText{.number = 2, .I = 2, .J = 3, .MAT = 1, .SEC = -1}.card() +
                  ElementText{.number = 3, .I = 1, .J = 3, .MAT = 1, .SEC = 1}.card();
  Model model(chain(3), text.cards());
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value());
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(
      tells(model, " ***** DATA ERROR *****      ELEMENT     1  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_TRUE(
      tells(model, " ***** DATA ERROR *****      ELEMENT     2  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE"));
  EXPECT_FALSE(tells(model, "ELEMENT     3  PROPERTY"));
}

// Bar of 10 with area 2, density 3, a bore of 0.5 filled with density 4: half of 10 * (6 + 4 pi/16) to each end.
TEST(TrussInput, HalfOfTheMassGoesToEachEnd) {
  TrussGroupText text;
  text.area = 2.0;
  text.mass = 3.0;
  text.inside = 0.5;
  text.fluid_mass = 4.0;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  model.build();
  const double half = 5.0 * (6.0 + std::numbers::pi / 4.0);
  for (int c = 1; c <= 3; ++c) {
    EXPECT_NEAR(pool.reals(masses.AMASS, NEQ1())(model.equation(2, c)), half, 1e-12);
  }
}

TEST(TrussInput, ElementMassesAddToCommandMasses) {
  TrussGroupText text;
  text.mass = 3.0;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  pool.reals(masses.AMASS, NEQ1())(1) = 100.0;
  model.build();
  EXPECT_NEAR(pool.reals(masses.AMASS, NEQ1())(1), 115.0, 1e-12);
}

// Weight 3 on area 2, bore of 0.5 filled with weight 4, growth of 7 per length: 10 * (6 + pi/4 + 7), half to each end.
TEST(TrussInput, HalfOfTheWeightGoesToEachEndAlongGravity) {
  TrussGroupText text;
  text.area = 2.0;
  text.weight = 3.0;
  text.inside = 0.5;
  text.fluid_weight = 4.0;
  text.growth = 7.0;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  gravity.direction = {0.0, 0.6, -0.8};
  model.build();
  const double half = 5.0 * (13.0 + std::numbers::pi / 4.0);
  const Reals weight = pool.reals(patterns.KSELFW, NEQ1());
  EXPECT_EQ(weight(model.equation(2, 1)), 0.0);
  EXPECT_NEAR(weight(model.equation(2, 2)), 0.6 * half, 1e-12);
  EXPECT_NEAR(weight(model.equation(2, 3)), -0.8 * half, 1e-12);
}

// Local axes of node 2: local 1 along global Y, local 2 along -X, local 3 along Z.
TEST(TrussInput, WeightIsInTheLocalAxesOfItsNode) {
  std::vector<ModelNode> two = chain(2);
  two[1].system = 1;
  TrussGroupText text;
  text.weight = 1.0;
  text.elements = one_element();
  Model model(two, text.cards(), 1, {{0, 1, 0, -1, 0, 0, 0, 0, 1}});
  gravity.direction = {0.0, 1.0, 0.0};
  model.build();
  const Reals weight = pool.reals(patterns.KSELFW, NEQ1());
  EXPECT_NEAR(weight(model.equation(2, 1)), 5.0, 1e-12);
  EXPECT_NEAR(weight(model.equation(2, 2)), 0.0, 1e-12);
}

TEST(TrussInput, AnInitialForceStandsWithItsElasticExtension) {
  TrussGroupText text;
  text.ratio = 0.25;
  text.elements = ElementText{.force = -3.0}.card();
  Model model(chain(2), text.cards());
  model.build();
  EXPECT_EQ(model.record(1).F1, -3.0);
  EXPECT_EQ(model.record(1).F2, 0.0);
  EXPECT_NEAR(model.record(1).EXT, -0.03, 1e-17);
}

TEST(TrussInput, WorkingStorageReturnsBehindTheGroup) {
  TrussGroupText text;
  text.elements = one_element();
  Model model(chain(2), text.cards());
  const int mark = storage.NEXT;
  ELDATA();
  EXPECT_EQ(storage.NEXT, mark);
}

TEST(TrussInput, PropertyTablesThatDoNotFitStopInTheElementPhase) {
  // Room for what stands before element input only.
  TrussGroupText text;
  text.elements = one_element();
  int mark = 0;
  {
    Model model(chain(2), text.cards());
    mark = storage.NEXT;
  }
  // A material of 26 and a section of 30 words, and 50 for its table of general drag: 106 words fit, 105 do not.
  {
    Model model(chain(2), text.cards(), 1, {}, mark - 1 + 106);
    EXPECT_FALSE(stop_of([&] { ELDATA(); }).has_value());
  }
  Model model(chain(2), text.cards(), 1, {}, mark - 1 + 105);
  EXPECT_EQ(stop_of([&] { ELDATA(); }), status_fatal);
  EXPECT_TRUE(tells(model, "INPUT PHASE - ELEM. DATA INPUT"));
}

TEST(TrussInput, LettersInANumberEndInTheIOLayer) {
  Model model(chain(2), blank_group(1, 1, 0, "    1    1  two\n"));
  EXPECT_EQ(stop_of([&] { model.build(); }), status_io);
}

}  // namespace
}  // namespace tidearc::test
