// Input of truss elements with a force-deformation curve: selection, echo, initial forces.
#include <gtest/gtest.h>

#include <array>

#include "elements/contract/pass.h"
#include "model.h"
#include "run/layout.h"
#include "run/stops.h"

namespace tidearc::test {
namespace {

bool tells(const Model& model, const std::string& words) { return model.report().find(words) != std::string::npos; }

/// Curve 0,0 1,1 5,2 in ratios; DY 0.01 and yield force 1 with a yield stress of 1.
std::string curve_element(double force, bool by_history) {
  ElementText element_text;
  element_text.force = force;
  (by_history ? element_text.KHIST : element_text.KBUCK) = 2;
  return element_text.card() + format("22F10.3", std::array<double, 6>{0, 0, 1, 1, 5, 2}) + "\n";
}

TEST(TrussInput, BuckOrHistCodeTwoCallsForACurve) {
  for (const bool by_history : {false, true}) {
    TrussGroupText text;
    text.tension = 1.0;
    text.elements = curve_element(0.0, by_history);
    Model model(bar_nodes(), text.cards());
    model.build();
    EXPECT_EQ(model.record(1).KBUCK, 2);
    EXPECT_EQ(model.record(1).KYLD, 101);
    EXPECT_EQ(model.record(1).CURVE[20], 5.0);
    EXPECT_TRUE(tells(model, "Deformation vs Force data pairs:"));
  }
}

TEST(TrussInput, OtherHistoryCodesAreKeptWithoutEffect) {
  TrussGroupText text;
  text.elements = ElementText{.KHIST = 1}.card();
  Model model(bar_nodes(), text.cards());
  model.build();
  EXPECT_EQ(model.record(1).KHIST, 1);
  EXPECT_EQ(model.record(1).KBUCK, 0);
}

// Force 1.5 lies on the second segment, at ratio 3: extension 0.03.
TEST(TrussInput, AnInitialForceOnACurveFindsItsDeformation) {
  TrussGroupText text;
  text.tension = 1.0;
  text.elements = curve_element(1.5, false);
  Model model(bar_nodes(), text.cards());
  model.build();
  EXPECT_EQ(model.record(1).KYLD, 102);
  EXPECT_NEAR(model.record(1).EXT, 0.03, 1e-15);
  EXPECT_EQ(model.record(1).F1, 0.0);
  EXPECT_EQ(model.record(1).F2, 1.5);
  EXPECT_TRUE(tells(model, "Initial Internal Deformation and its ratio to DY =   3.00000E-02  3.00000E+00"))
      << model.report();
}

TEST(TrussInput, AnInitialForceBeyondTheCurveStops) {
  TrussGroupText text;
  text.tension = 1.0;
  text.elements = curve_element(2.5, false);
  Model model(bar_nodes(), text.cards());
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
  EXPECT_TRUE(tells(model, "****ERROR****"));
  EXPECT_TRUE(tells(model, "NO CORRESPONDING DEFORMATION CAN BE FOUND FROM INITIAL FORCE "));
}

// Without a yield stress DY is 1 and the yield force EA/L = 100.
TEST(TrussInput, ACurveWithoutYieldStressIsReadInExtensions) {
  TrussGroupText text;
  text.elements = curve_element(150.0, false);
  Model model(bar_nodes(), text.cards());
  model.build();
  EXPECT_NEAR(model.record(1).EXT, 3.0, 1e-13);
  EXPECT_EQ(model.record(1).DY, 1.0);
}

}  // namespace
}  // namespace tidearc::test
