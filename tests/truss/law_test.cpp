// The truss's law from its cards: the yield force of curves, initial forces at a plateau, bars without modulus or area.
#include "elements/truss/law.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "model.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/stops.h"
#include "solve/arrays.h"

namespace tidearc::test {
namespace {

std::string curve_cards(const TrussGroupText& properties, double force, const std::vector<double>& pairs) {
  TrussGroupText text = properties;
  text.elements = ElementText{.force = force, .KBUCK = 2}.card();
  for (const double value : pairs) text.elements += format("F10.3", value);
  text.elements += "\n";
  return text.cards();
}
/// Slope 1 up to the pair (1, 1), then 0.25 up to (5, 2), then flat.
const std::vector<double> two_slopes{0, 0, 1, 1, 5, 2};

// 0.7 times 0.1 is 0.06999999999999999 in binary, so the force of the plateau, 0.14, is above twice the yield force.
TEST(TrussLaw, AnInitialForceEqualToThePlateauIsBorne) {
  TrussGroupText text;
  text.area = 0.7;
  text.tension = 0.1;
  ASSERT_GT(0.14 / (0.7 * 0.1), 2.0);
  Model model(bar_nodes(), curve_cards(text, 0.14, two_slopes));
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value()) << model.report();
  EXPECT_EQ(model.record(1).F2, 0.14);
  // Two yield forces stand from a deformation of 5 DY on; DY = fyt L / E = 0.001.
  EXPECT_NEAR(model.record(1).EXT, 0.005, 1e-17);
}

TEST(TrussLaw, AnInitialForceThatIsReallyAboveThePlateauStops) {
  TrussGroupText text;
  text.area = 0.7;
  text.tension = 0.1;
  Model model(bar_nodes(), curve_cards(text, 0.1401, two_slopes));
  EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
}

// The yield force as stiffness times yield extension would be 0.7455, one unit in the last place above A fyt.
TEST(TrussLaw, CurveForcesAreRatiosToTheYieldForceItself) {
  TrussGroupText text;
  text.EMOD = 205.0;
  text.area = 2.1;
  text.tension = 0.355;
  text.ratio = 0.03;
  Model model(bar_nodes(9.7), curve_cards(text, 0.0, two_slopes));
  model.build();
  model.set_displacement(1, 1, 5.0);
  determine_states();
  EXPECT_EQ(model.record(1).F2, 2.0 * (2.1 * 0.355)) << "to the last digit";
}

TEST(TrussLaw, WithoutYieldStressTheUnitIsTheStiffness) {
  Model model(bar_nodes(), curve_cards({}, 0.0, two_slopes));
  model.build();
  model.set_displacement(1, 1, 50.0);
  determine_states();
  EXPECT_EQ(model.record(1).F2, 200.0);
}

void expect_finite(const TrussRecord& truss) {
  for (const double value : {truss.F1, truss.F2, truss.EXT, truss.FREP, truss.EXTMAX, truss.EXTMIN, truss.FMAX,
                             truss.FMIN, truss.PLPOS, truss.PLNEG, truss.SK1, truss.SK2}) {
    EXPECT_TRUE(std::isfinite(value));
  }
}

/// Reads the model, moves it to and fro, forms its matrix and asks for its events; every number must be finite.
void expect_finite_run(const std::string& cards) {
  Model model(bar_nodes(), cards);
  ASSERT_FALSE(stop_of([&] { model.build(); }).has_value()) << model.report();
  for (const double u : {0.0, 0.3, -0.2}) {
    model.set_displacement(1, 1, u);
    determine_states();
    expect_finite(model.record(1));
    EXPECT_TRUE(std::isfinite(model.resisting_force(1, 1)));
    form_element_matrices(0, true, 0, [](const ElementMatrix& m) {
      for (int i = 0; i < 36; ++i) EXPECT_TRUE(std::isfinite(m.EMAT[i]));
    });
    equation_vector(arrays.WORK)(1) = 0.5;
    const FirstEvent found = first_event(arrays.WORK);
    EXPECT_TRUE(found.EFAC >= 0.0 && found.EFAC <= 1.0);
    model.update_state();
  }
  EXPECT_EQ(model.report().find("NaN"), std::string::npos);
}

TEST(TrussLaw, BarsWithoutModulusOrAreaHaveFiniteNumbers) {
  for (const double tension : {0.0, 1.0}) {
    for (const double ductility : {0.0, 3.0}) {
      TrussGroupText text;
      text.tension = tension;
      text.compression = tension;
      text.ductility = ductility;
      text.elements = ElementText{}.card();
      TrussGroupText soft = text;
      soft.EMOD = 0.0;
      TrussGroupText thin = text;
      thin.area = 0.0;
      for (const TrussGroupText& group_text : {soft, thin}) {
        expect_finite_run(group_text.cards());
        expect_finite_run(curve_cards(group_text, 0.0, two_slopes));
        expect_finite_run(curve_cards(group_text, 0.0, {-1, -1, 0, 0.5, 1, 1}));
        TrussGroupText loaded = group_text;
        loaded.elements = ElementText{.force = 0.25}.card();
        expect_finite_run(loaded.cards());
      }
    }
  }
}

// An infinite yield extension: the curve stays at its force of no deformation.
TEST(TrussLaw, WithoutModulusACurveKeepsItsForceAtZero) {
  TrussGroupText text;
  text.EMOD = 0.0;
  text.tension = 2.0;
  Model model(bar_nodes(), curve_cards(text, 1.0, {-1, -1, 0, 0.5, 1, 1}));
  EXPECT_FALSE(stop_of([&] { model.build(); }).has_value()) << model.report();
  EXPECT_EQ(model.record(1).EXT, 0.0) << "the initial force is that of no deformation";
  model.set_displacement(1, 1, 3.0);
  determine_states();
  EXPECT_EQ(model.resisting_force(1, 1), 1.0);
}

TEST(TrussLaw, AnInitialForceAtAnInfiniteExtensionStops) {
  for (const double area : {0.0, 1.0}) {
    TrussGroupText text;
    text.EMOD = 0.0;
    text.area = area;
    text.tension = 2.0;
    Model model(bar_nodes(), curve_cards(text, 1.0, two_slopes));
    EXPECT_EQ(stop_of([&] { model.build(); }), status_fatal);
    EXPECT_NE(model.report().find("NO CORRESPONDING DEFORMATION CAN BE FOUND FROM INITIAL FORCE"), std::string::npos);
  }
}

}  // namespace
}  // namespace tidearc::test
