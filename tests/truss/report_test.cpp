// Result and envelope pages of truss groups.
#include <gtest/gtest.h>

#include "elements/contract/pass.h"
#include "model.h"
#include "solve/arrays.h"

namespace tidearc::test {
namespace {

/// Two bars in line, then a group without elements, then a third bar.
std::string three_groups() {
  TrussGroupText two;
  two.NUMEL = 2;
  two.NFIRST = 5;
  two.elements = ElementText{.number = 5, .I = 1, .J = 2}.card() + ElementText{.number = 6, .I = 2, .J = 3}.card();
  TrussGroupText nothing;
  nothing.NUMEL = 0;
  TrussGroupText one;
  one.elements = ElementText{.number = 1, .I = 1, .J = 3}.card();
  return two.cards() + nothing.cards() + one.cards();
}
std::vector<ModelNode> line_of_nodes() { return {{20, 0, 0, "X"}, {10, 0, 0, "X"}, {0, 0, 0, ""}}; }

std::string behind(const std::string& text, const std::string& mark) {
  const std::size_t at = text.find(mark);
  return at == std::string::npos ? std::string() : text.substr(at);
}

TEST(TrussReports, ResultsHaveATitlePerGroupAndALinePerElement) {
  Model model(line_of_nodes(), three_groups(), 3);
  model.build();
  model.set_displacement(1, 1, 0.03);
  model.set_displacement(2, 1, 0.01);
  determine_states();
  print_elements();
  EXPECT_EQ(trimmed(behind(model.report(), "      RESULTS FOR GROUP  1")),
            "      RESULTS FOR GROUP  1 (THREE DIMENSIONAL TRUSS ELEMENTS), TIME =  0.0000E+00\n"
            "\n"
            "     MY GROUP\n"
            "\n"
            " ELEM  NODE-I  NODE-J  YLD      AXIAL FORCE        EXTENSION    ACC.PLAST POS    ACC.PLAST NEG\n"
            "    5       1       2    0      0.20000E+01      0.20000E-01      0.00000E+00      0.00000E+00\n"
            "    6       2       3    0      0.10000E+01      0.10000E-01      0.00000E+00      0.00000E+00\n"
            "\n"
            "\n"
            "\n"
            "      RESULTS FOR GROUP  3 (THREE DIMENSIONAL TRUSS ELEMENTS), TIME =  0.0000E+00\n"
            "\n"
            "     MY GROUP\n"
            "\n"
            " ELEM  NODE-I  NODE-J  YLD      AXIAL FORCE        EXTENSION    ACC.PLAST POS    ACC.PLAST NEG\n"
            "    1       1       3    0      0.15000E+01      0.30000E-01      0.00000E+00      0.00000E+00\n");
}

TEST(TrussReports, EnvelopesTellExtremesBesideTheirTimes) {
  Model model(line_of_nodes(), three_groups(), 3);
  model.build();
  response.TIME = 2.5;
  model.set_displacement(1, 1, 0.03);
  model.set_displacement(2, 1, 0.01);
  determine_states();
  print_element_envelopes();
  const std::string page = trimmed(behind(model.report(), "1******************************************************"));
  EXPECT_NE(page.find("1" + std::string(54, '*') + "\n RESPONSE ENVELOPES, ELEMENT GROUP  1 TIME = 0.2500E+01\n" +
                      std::string(55, '*') + "\n"),
            std::string::npos);
  EXPECT_EQ(page.find("ELEMENT GROUP  2"), std::string::npos) << "a group without elements prints no title";
  EXPECT_NE(page.find("  THREE DIMENSIONAL TRUSS ELEMENTS\n\n     MY GROUP\n"), std::string::npos);
  for (const char* head : {"MAXIMUM AXIAL FORCES", "MAXIMUM EXTENSIONS", "ACCUM. PLASTIC EXTENSIONS"}) {
    EXPECT_NE(page.find(head), std::string::npos);
  }
  EXPECT_NE(page.find("    5      1      2  0.2000E+01    2.500  0.0000E+00    0.000  0.2000E-01    2.500"
                      "  0.0000E+00    0.000  0.0000E+00  0.0000E+00\n"),
            std::string::npos);
  EXPECT_NE(page.find("    6      2      3"), std::string::npos);
}

TEST(TrussReports, ThePrintTimeOfTheRunGoesBeforeTheAnalysisTime) {
  Model model(line_of_nodes(), three_groups(), 3);
  model.build();
  response.TIME = 2.5;
  response.PRTIME = 7.0;
  print_elements();
  EXPECT_NE(model.report().find("TIME =  0.7000E+01"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
