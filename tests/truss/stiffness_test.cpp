// The stiffness pass over trusses, resisting, damping and dynamic forces, the event operation and the state log.
#include "elements/contract/stiffness.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/truss/operations.h"
#include "model.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

struct Formed {
  std::vector<int> LM;
  std::vector<double> EMAT;
  double operator()(std::size_t i, std::size_t j) const { return EMAT[(j - 1) * 6 + i - 1]; }
};

std::vector<Formed> form(bool reset, int NELCHK = 1000) {
  std::vector<Formed> formed;
  form_element_matrices(0, reset, NELCHK, [&](const ElementMatrix& m) {
    EXPECT_EQ(m.ND, 6);
    EXPECT_FALSE(m.packed);
    formed.push_back({{m.LM, m.LM + 6}, {m.EMAT, m.EMAT + 36}});
  });
  return formed;
}

std::string bar_cards(double tension = 0.0, ElementText element_text = {}) {
  TrussGroupText text;
  text.tension = tension;
  text.ratio = tension > 0.0 ? 0.1 : 0.0;
  text.BETAO = 0.5;
  text.BETAT = 0.25;
  text.elements = element_text.card();
  return text.cards();
}

TEST(TrussStiffness, TheFirstDeliveryIsTheWholeMatrix) {
  Model model(bar_nodes(), bar_cards());
  model.build();
  const std::vector<Formed> formed = form(true);
  ASSERT_EQ(formed.size(), 1u);
  EXPECT_NEAR(formed[0](1, 1), 100.0, 1e-12);
  EXPECT_NEAR(formed[0](1, 4), -100.0, 1e-12);
  EXPECT_EQ(formed[0].LM[0], model.equation(1, 1));
  EXPECT_EQ(formed[0].LM[3], NEQ1()) << "held components go to the sink";
  EXPECT_EQ(model.record(1).head.KSTIF, 0);
  EXPECT_EQ(model.record(1).KLAST, truss_elastic);
  EXPECT_EQ(model.record(1).head.LM[3], 2) << "the record keeps its slots";
}

TEST(TrussStiffness, AnUnchangedElementIsNotFormedAgain) {
  Model model(bar_nodes(), bar_cards());
  model.build();
  form(true);
  determine_states();
  EXPECT_EQ(model.record(1).head.KSTIF, 0);
  EXPECT_EQ(solver.NELCHK, 0);
  EXPECT_TRUE(form(false).empty());
}

TEST(TrussStiffness, YieldDeliversTheChangeAndUnloadingTakesItBack) {
  Model model(bar_nodes(), bar_cards(1.0));
  model.build();
  form(true);
  model.set_displacement(1, 1, 0.02);
  determine_states();
  EXPECT_EQ(solver.NELCHK, 1);
  std::vector<Formed> change = form(false, solver.NELCHK);
  ASSERT_EQ(change.size(), 1u);
  EXPECT_NEAR(change[0](1, 1), 10.0 - 100.0, 1e-12);
  EXPECT_EQ(model.record(1).KLAST, truss_yielded);

  model.set_displacement(1, 1, 0.005);  // another trial from the same reference: elastic
  determine_states();
  EXPECT_EQ(model.record(1).head.KSTIF, 1);
  EXPECT_EQ(model.record(1).KLAST, truss_yielded) << "what was delivered belongs to the element, not to a generation";
  change = form(false, solver.NELCHK);
  ASSERT_EQ(change.size(), 1u);
  EXPECT_NEAR(change[0](1, 1), 90.0, 1e-12);
}

TEST(TrussStiffness, ARejectedTrialThatReturnsToTheDeliveredCodeNeedsNothing) {
  Model model(bar_nodes(), bar_cards(1.0));
  model.build();
  form(true);
  model.set_displacement(1, 1, 0.02);
  determine_states();
  model.set_displacement(1, 1, 0.005);
  determine_states();
  EXPECT_EQ(model.record(1).head.KSTIF, 0);
  EXPECT_EQ(solver.NELCHK, 0);
}

TEST(TrussStiffness, AnElementThatFollowsItsNodesIsAlwaysFormed) {
  Model model(bar_nodes(), bar_cards(0.0, {.KGEOM = 1}));
  model.build();
  form(true);
  determine_states();
  EXPECT_EQ(model.record(1).head.KSTIF, 1);
  const std::vector<Formed> change = form(false, solver.NELCHK);
  ASSERT_EQ(change.size(), 1u);
  for (const double value : change[0].EMAT) EXPECT_EQ(value, 0.0);
}

// Tension 100 in a bar that has become 11 long: geometric stiffness 100/11 across the bar.
TEST(TrussStiffness, GeometricStiffnessIsThatOfTheForceAtHand) {
  Model model(bar_nodes(), bar_cards(0.0, {.KGEOM = 1}));
  model.build();
  model.set_displacement(1, 1, 1.0);
  determine_states();
  const std::vector<Formed> formed = form(true);
  EXPECT_NEAR(formed[0](1, 1), 100.0, 1e-10);
  EXPECT_NEAR(formed[0](2, 2), 100.0 / 11.0, 1e-12);
  EXPECT_NEAR(formed[0](3, 3), 100.0 / 11.0, 1e-12);
}

// Internal pressure 4 on area 1, Poisson's ratio 0.3: (1 - 0.6) * 4 / 10 across the bar.
TEST(TrussStiffness, EndPressuresStiffenTheBarAcross) {
  TrussGroupText text;
  text.poisson = 0.3;
  text.pressure = 4.0;
  text.elements = ElementText{.KGEOM = 1}.card();
  Model model(bar_nodes(), text.cards());
  model.build();
  determine_states();
  EXPECT_NEAR(form(true)[0](2, 2), 0.16, 1e-14);
  EXPECT_EQ(model.resisting_force(1, 1), 0.0);
}

// The assembled matrix is the derivative of the assembled force, also for a node with local axes turned by 30 degrees
// about Z.
TEST(TrussStiffness, MatrixOfATurnedNodeIsTheDerivativeOfItsForce) {
  const double c = std::sqrt(0.75), s = 0.5;
  std::vector<ModelNode> two = {{3, 4, 5, "XYZ", 1}, {0, 0, 0, "", 0}};
  Model model(two, bar_cards(0.0, {.KGEOM = 1}), 1, {{c, s, 0, -s, c, 0, 0, 0, 1}});
  model.build();
  const auto force_at = [&](int component, double value, double(&force)[3]) {
    const double start[3] = {0.3, -0.2, 0.4};
    for (int k = 1; k <= 3; ++k) model.set_displacement(1, k, start[k - 1] + (k == component ? value : 0.0));
    determine_states();
    for (int k = 1; k <= 3; ++k) force[k - 1] = model.resisting_force(1, k);
  };
  double here[3];
  force_at(0, 0.0, here);
  const Formed K = form(true)[0];
  const double h = 1e-5;
  for (int j = 1; j <= 3; ++j) {
    double up[3], down[3];
    force_at(j, h, up);
    force_at(j, -h, down);
    for (int i = 1; i <= 3; ++i) {
      // Second order in h with third derivatives near 10, rounding of forces near 100.
      EXPECT_NEAR(K(static_cast<std::size_t>(i), static_cast<std::size_t>(j)), (up[i - 1] - down[i - 1]) / (2 * h),
                  1e-7);
      EXPECT_NEAR(K(static_cast<std::size_t>(i), static_cast<std::size_t>(j)),
                  K(static_cast<std::size_t>(j), static_cast<std::size_t>(i)), 1e-13);
    }
  }
}

TEST(TrussStiffness, TheCurveHasTheSlopeOfItsSegment) {
  TrussGroupText text;
  text.tension = 1.0;
  text.elements = ElementText{.KBUCK = 2}.card() + format("22F10.3", std::array<double, 6>{0, 0, 1, 1, 5, 2}) + "\n";
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.02);
  determine_states();
  EXPECT_NEAR(form(true)[0](1, 1), 25.0, 1e-12);
  model.set_displacement(1, 1, 0.2);
  determine_states();
  EXPECT_NEAR(form(true)[0](1, 1), 0.0, 1e-12);
}

TEST(TrussStiffness, AGoneElementKeepsAResidualStiffness) {
  TrussGroupText text;
  text.tension = 1.0;
  text.ductility = 2.0;
  text.elements = ElementText{}.card();
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.03);
  determine_states();
  EXPECT_NEAR(form(true)[0](1, 1), 50.0, 1e-12) << "the magnitude while the force goes";
  model.update_state();
  model.set_displacement(1, 1, 0.2);
  determine_states();
  EXPECT_EQ(form(true)[0](1, 1), 1.0e-8);
}

TEST(TrussOperations, WithDampingTheMatrixTakesBothCoefficients) {
  Model model(bar_nodes(), bar_cards(1.0));
  model.build();
  model.set_displacement(1, 1, 0.02);
  determine_states();
  std::memcpy(element.record.data(), pool.words(storage.KEDAT, 358), 358 * 4);
  STIF01(1, 0.5, 0.25, true);
  EXPECT_NEAR(element.EMAT[0], 0.5 * 100.0 + 1.25 * 10.0, 1e-12);
  STIF01(0, 0.5, 0.25, true);
  EXPECT_NEAR(element.EMAT[0], 10.0, 1e-12);
}

// BETAO 0.5 on 100 and BETAT 0.25 on the tangent of 10: 52.5 times the axial velocity.
TEST(TrussOperations, DampingForcesActAlongTheBar) {
  Model model(bar_nodes(), bar_cards(1.0));
  model.build();
  model.set_displacement(1, 1, 0.02);
  determine_states();
  std::memcpy(element.record.data(), pool.words(storage.KEDAT, 358), 358 * 4);
  element.EVEL[0] = 2.0;
  element.EACC[3] = -4.0;
  RESP01();
  EXPECT_NEAR(element.EDAMP[0], 105.0, 1e-11);
  EXPECT_NEAR(element.EDAMP[3], -105.0, 1e-11);
  DYNF01(0.5, 0.25);
  EXPECT_NEAR(element.EDYNF[0], 52.5 * (1.5 * 2.0 + 0.25 * 4.0), 1e-11);
}

TEST(TrussOperations, TheEventOfAnIncrementLeavesTheRecordAlone) {
  Model model(bar_nodes(), bar_cards(1.0, {.KGEOM = 1}));
  model.build();
  std::memcpy(element.record.data(), pool.words(storage.KEDAT, 358), 358 * 4);
  const TrussRecord before = current_record<TrussRecord>();
  element.EDISP = {};
  element.EDISP[0] = 0.04;  // yields at 0.01
  const ElementEvent event = EVNT01();
  EXPECT_NEAR(event.factor, 0.25 + 1.0e-6 * 0.01 / 0.04, 1e-12);
  EXPECT_EQ(event.code, 2);
  EXPECT_EQ(std::memcmp(&before, element.record.data(), sizeof(before)), 0);
}

TEST(TrussOperations, AStateOutsideItsBoundPrintsTheEventLine) {
  Model model(bar_nodes(), bar_cards(1.0, {.force = 5.0}));
  model.build();
  std::memcpy(element.record.data(), pool.words(storage.KEDAT, 358), 358 * 4);
  element.EDISP = {};
  element.EDISP[0] = 0.04;
  EXPECT_EQ(EVNT01().factor, 1.0);
  EXPECT_NE(model.report().find(" EVNT01-CRCO/DV,DVC,CT,DST,DTC,CRFAC"), std::string::npos);
}

TEST(TrussOperations, AChangeOfCodeIsLogged) {
  Model model(bar_nodes(), bar_cards(1.0));
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  model.build();
  response.NLSTEP = 4;
  response.TIME = 1.5;
  model.set_displacement(1, 1, 0.02);
  determine_states();
  FILE(UNIT_STATE_LOG, "REWI");
  Word header = 9;
  FILE(UNIT_STATE_LOG, "READ", 1, &header);
  EXPECT_EQ(header, 0);
  struct {
    int integers[8];
    double reals[8];
  } record;
  FILE(UNIT_STATE_LOG, "READ", 24, &record);
  const int integers[8] = {1, 1, 1, 2, 1, 1, 4, 0};
  for (int i = 0; i < 8; ++i) EXPECT_EQ(record.integers[i], integers[i]) << i;
  const double reals[8] = {1.5, 1.1, 1.1, 0.02, 0.02, 0.01, 0.0, 1.1};
  for (int i = 0; i < 8; ++i) EXPECT_NEAR(record.reals[i], reals[i], 1e-14) << i;
}

}  // namespace
}  // namespace tidearc::test
