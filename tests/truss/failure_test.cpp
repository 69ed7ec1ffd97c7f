// Failure by ductility beside the plain bar: curves, initial forces, bars without yield, going back; and struts over
// several state updates. Bars of E 1000, A 1, L 10: EA/L 100; with a yield stress of 1 DY is 0.01.
#include <gtest/gtest.h>

#include <array>

#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "model.h"
#include "run/layout.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

void move_to(const Model& model, double u) {
  model.set_displacement(1, 1, u);
  determine_states();
}
void step_to(const Model& model, double u) {
  move_to(model, u);
  model.update_state();
}

double stiffness(bool reset) {
  double value = 0.0;
  form_element_matrices(0, reset, solver.NELCHK, [&](const ElementMatrix& m) { value = m.EMAT[0]; });
  return value;
}

TrussGroupText ductile(double tension, ElementText element_text) {
  TrussGroupText text;
  text.tension = tension;
  text.ductility = 3.0;
  text.elements = element_text.card();
  if (element_text.KBUCK == 2) text.elements += format("22F10.3", std::array<double, 6>{0, 0, 1, 1, 5, 2}) + "\n";
  return text;
}

// Limit 0.03. At 0.04 the curve bears 1.75; from there the force goes by 50 per length, whichever way the bar moves.
TEST(TrussFailure, ACurveElementLeavesItsCurveForGood) {
  Model model(bar_nodes(), ductile(1.0, {.KBUCK = 2}).cards());
  model.build();
  step_to(model, 0.03);
  EXPECT_EQ(model.record(1).KYLD, 102) << "the limit itself is borne";
  step_to(model, 0.04);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_NEAR(model.resisting_force(1, 1), 1.75, 1e-12);
  EXPECT_NEAR(stiffness(true), 50.0, 1e-12);
  step_to(model, 0.03);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_inward);
  EXPECT_NEAR(model.resisting_force(1, 1), 1.25, 1e-12) << "not the curve's 1.5";
  step_to(model, 0.05);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_NEAR(model.resisting_force(1, 1), 0.25, 1e-12);
  step_to(model, 0.0);
  EXPECT_EQ(model.record(1).KYLD, truss_gone);
  for (const double u : {0.02, -0.5, 0.5}) {
    step_to(model, u);
    EXPECT_EQ(model.record(1).KYLD, truss_gone);
    EXPECT_EQ(model.resisting_force(1, 1), 0.0);
    EXPECT_EQ(stiffness(true), 1.0e-8);
  }
}

// An initial force of 5 stands at an extension of 0.05, beyond the limit of 0.03.
TEST(TrussFailure, AnInitialForceBeyondTheLimitFailsWithoutMotion) {
  Model model(bar_nodes(), ductile(1.0, {.force = 5.0}).cards());
  model.build();
  determine_states();
  EXPECT_EQ(model.record(1).KFAIL, 1);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward) << "no motion is not against the force";
  EXPECT_NEAR(model.record(1).SK2, -50.0, 1e-12);
  EXPECT_EQ(model.resisting_force(1, 1), 5.0) << "still borne";
  determine_states();
  EXPECT_EQ(model.resisting_force(1, 1), 5.0) << "and again from the same reference";
  model.update_state();
  determine_states();
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_EQ(model.resisting_force(1, 1), 5.0);
  move_to(model, 0.02);
  EXPECT_NEAR(model.resisting_force(1, 1), 4.0, 1e-12);
}

TEST(TrussFailure, ABarWithoutTensionYieldNeverFailsWhateverItsDuctility) {
  TrussGroupText text = ductile(0.0, {});
  text.compression = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  for (const double u : {1000.0, -1000.0}) {
    step_to(model, u);
    EXPECT_EQ(model.record(1).KFAIL, 0);
  }
  EXPECT_NEAR(model.resisting_force(1, 1), -1.0, 1e-9);
}

// Without yield stress the yield extension of a curve counts as 1, so a ductility of 3 is an extension of 3; there the
// curve bears 1.5 times EA/L.
TEST(TrussFailure, ACurveWithoutYieldStressFailsAtItsDuctilityAsAnExtension) {
  Model model(bar_nodes(), ductile(0.0, {.KBUCK = 2}).cards());
  model.build();
  step_to(model, 3.0);
  EXPECT_EQ(model.record(1).KFAIL, 0);
  EXPECT_NEAR(model.resisting_force(1, 1), 150.0, 1e-10);
  step_to(model, 3.4);
  EXPECT_EQ(model.record(1).KFAIL, 1);
  EXPECT_NEAR(model.resisting_force(1, 1), 160.0, 1e-10);
  step_to(model, 4.4);
  EXPECT_NEAR(model.resisting_force(1, 1), 110.0, 1e-10);
}

// Yielded at 0.02 with hardening (90 and 10): force 1.1, tangent 10. Failed at 0.04, given up, and on to 0.025.
TEST(TrussFailure, GoingBackTakesTheFailureBack) {
  TrussGroupText text = ductile(1.0, {});
  text.ratio = 0.1;
  Model model(bar_nodes(), text.cards());
  model.build();
  step_to(model, 0.02);
  EXPECT_NEAR(stiffness(true), 10.0, 1e-12);
  FILE(units.NT15, "REWI");
  save_states();
  step_to(model, 0.04);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_NEAR(stiffness(false), 50.0 - 10.0, 1e-12);
  step_to(model, 0.5);
  EXPECT_EQ(model.record(1).KYLD, truss_gone);

  FILE(units.NT15, "REWI");
  recover_states();
  equation_vector(arrays.U0)(1) = 0.02;
  const TrussRecord back = model.record(1);
  EXPECT_EQ(back.KYLD, truss_yielded);
  EXPECT_EQ(back.KFAIL, 0);
  EXPECT_NEAR(back.SK1, 90.0, 1e-12);
  EXPECT_NEAR(back.SK2, 10.0, 1e-12);
  EXPECT_NEAR(back.EXTMAX, 0.02, 1e-17) << "or it would fail again at once";
  move_to(model, 0.025);
  EXPECT_EQ(model.record(1).KYLD, truss_yielded);
  EXPECT_NEAR(model.resisting_force(1, 1), 0.9 + 0.25, 1e-12);
  EXPECT_NEAR(stiffness(false), 10.0 - 50.0, 1e-12) << "the change since the last delivery";
  EXPECT_NEAR(stiffness(true), 10.0, 1e-12);
}

TrussGroupText strut(int KBUCK) {
  TrussGroupText text;
  text.ratio = 0.1;
  text.tension = 1.0;
  text.compression = 1.0;
  text.elements = ElementText{.KBUCK = KBUCK}.card();
  return text;
}

// Shortened by 0.06: the first branch stands at -0.9 after 0.01, so 0.05 is to be taken up. On the way back the second
// branch alone gives force, 10 times the extension, until 0.05 is used up at -0.01; then 90 more come in.
TEST(TrussStrut, TakesUpItsShorteningOverSeveralUpdatesWithHardening) {
  Model model(bar_nodes(), strut(1).cards());
  model.build();
  struct Leg {
    double u, first_branch, PLBUCK;
    int code;
  };
  for (const Leg& leg : {Leg{-0.03, -0.9, 0.02, 1}, Leg{-0.06, -0.9, 0.05, 1}, Leg{-0.04, -0.9, 0.03, 1},
                         Leg{-0.05, -0.9, 0.04, 1}, Leg{-0.02, -0.9, 0.01, 1}, Leg{-0.005, -0.45, 0.0, 0},
                         Leg{0.02, 0.9, -0.01, 1}, Leg{-0.01, -0.9, 0.01, 1}, Leg{-0.005, -0.9, 0.005, 1}}) {
    step_to(model, leg.u);
    const TrussRecord truss = model.record(1);
    EXPECT_NEAR(truss.F1, leg.first_branch, 1e-12) << leg.u;
    EXPECT_NEAR(truss.F2, 10.0 * leg.u, 1e-12) << leg.u;
    EXPECT_NEAR(truss.PLBUCK, leg.PLBUCK, 1e-14) << leg.u;
    EXPECT_EQ(truss.KYLD, leg.code) << leg.u;
    EXPECT_NEAR(model.resisting_force(1, 1), leg.first_branch + 10.0 * leg.u, 1e-12) << leg.u;
  }
}

TEST(TrussStrut, AnyBucklingCodeButTheCurvesBuckles) {
  for (const int KBUCK : {1, 3, -1}) {
    Model model(bar_nodes(), strut(KBUCK).cards());
    model.build();
    step_to(model, -0.06);
    step_to(model, -0.04);
    EXPECT_NEAR(model.record(1).F1, -0.9, 1e-12) << KBUCK << ": nothing is given back";
    EXPECT_EQ(model.record(1).KBUCK, KBUCK);
  }
  Model model(bar_nodes(), strut(0).cards());
  model.build();
  step_to(model, -0.06);
  step_to(model, -0.05);
  EXPECT_NEAR(model.record(1).F1, 0.0, 1e-12) << "yields alike: 90 times 0.01 given back";
}

}  // namespace
}  // namespace tidearc::test
