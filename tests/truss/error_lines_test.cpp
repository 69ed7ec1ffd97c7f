// Which deck line a message about an element names on the error stream. Element cards stand from line 7 on.
#include <gtest/gtest.h>

#include <array>

#include "elements/contract/pass.h"
#include "model.h"
#include "run/layout.h"
#include "run/stops.h"

namespace tidearc::test {
namespace {

std::vector<ModelNode> chain(int count) {
  std::vector<ModelNode> list;
  for (int i = 0; i < count; ++i) list.push_back({10.0 * i, 0.0, 0.0, i == 0 ? "" : "XYZ"});
  return list;
}

std::string curve_card() { return format("22F10.3", std::array<double, 6>{0, 0, 1, 1, 5, 2}) + "\n"; }

std::string errors_of(const std::vector<ModelNode>& nodes, int NUMEL, const std::string& elements) {
  TrussGroupText text;
  text.NUMEL = NUMEL;
  text.tension = 1.0;
  text.elements = elements;
  Model model(nodes, text.cards());
  stop_of([&] { ELDATA(); });
  return model.errors();
}

void expect_line(const std::string& errors, const std::string& line) {
  EXPECT_NE(errors.find(" " + line), std::string::npos) << errors;
}

TEST(ElementErrors, NodesAreThoseOfTheElementCardThoughACurveCardFollowsIt) {
  expect_line(errors_of(chain(2), 1, ElementText{.I = 9, .KBUCK = 2}.card() + curve_card()),
              "line 7, columns 6-10: NODE 9 OUT OF RANGE");
  expect_line(errors_of(chain(2), 1, ElementText{.J = 9, .KHIST = 2}.card() + curve_card()),
              "line 7, columns 11-15: NODE 9 OUT OF RANGE");
  expect_line(errors_of(chain(2), 1, ElementText{.J = 9}.card()), "line 7, columns 11-15: NODE 9 OUT OF RANGE");
}

TEST(ElementErrors, AGeneratedElementNamesTheWholeCardItIsGeneratedFrom) {
  expect_line(errors_of(chain(3), 5, ElementText{.number = 1}.card() + ElementText{.number = 5, .I = 1, .J = 3}.card()),
              "line 7: NODE 4 OUT OF RANGE");
  expect_line(errors_of(chain(3), 5,
                        ElementText{.number = 1, .KBUCK = 2}.card() + curve_card() +
                            ElementText{.number = 5, .I = 1, .J = 3}.card()),
              "line 7: NODE 4 OUT OF RANGE");
}

TEST(ElementErrors, ZeroLengthNamesTheElementsCard) {
  expect_line(errors_of(chain(2), 1, ElementText{.J = 1, .KBUCK = 2}.card() + curve_card()),
              "line 7: element 1 has zero length");
  std::vector<ModelNode> nodes = chain(4);
  nodes[2].x = nodes[1].x;  // nodes 2 and 3 coincide: element 2, generated from the first card
  expect_line(errors_of(nodes, 3, ElementText{.number = 1}.card() + ElementText{.number = 3, .I = 3, .J = 4}.card()),
              "line 7: element 2 has zero length");
}

TEST(ElementErrors, AnInitialForceBeyondTheCurveNamesItsColumns) {
  expect_line(errors_of(chain(2), 1, ElementText{.force = 2.5, .KBUCK = 2}.card() + curve_card()),
              "line 7, columns 26-35: element 1: the curve bears the initial force nowhere");
}

TEST(ElementErrors, ThoseOfALaterCardNameThatCard) {
  expect_line(errors_of(chain(3), 2, ElementText{.number = 1}.card() + ElementText{.number = 2, .I = 2, .J = 9}.card()),
              "line 8, columns 11-15: NODE 9 OUT OF RANGE");
}

}  // namespace
}  // namespace tidearc::test
