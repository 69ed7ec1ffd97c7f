// State determination of the truss inside a model: forces in the equations, generations, failure, pressures, envelopes.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "elements/contract/pass.h"
#include "model.h"
#include "model/control.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

TrussGroupText bar_group(ElementText element_text = {}) {
  TrussGroupText text;
  text.elements = element_text.card();
  return text;
}

TEST(TrussState, BarsWithoutYieldStressStretchElastically) {
  Model model(bar_nodes(), bar_group().cards());
  model.build();
  model.set_displacement(1, 1, 0.02);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 1000.0 / 10.0 * 0.02, 1e-14);
  EXPECT_EQ(model.resisting_force(1, 2), 0.0);
  EXPECT_EQ(model.record(1).KYLD, truss_elastic);
}

// E 1000, A 1, L 10, EH/E 0.1, yield stress 1: EA/L = 100 splits into 90 and 10; the first branch yields at 0.9, at an
// extension of 0.01; a load of 1.5 is borne at u = 0.01 + 0.5/10 = 0.06.
TEST(TrussState, BilinearBarFollowsItsHardeningBranch) {
  TrussGroupText text = bar_group();
  text.ratio = 0.1;
  text.tension = 1.0;
  text.compression = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  const TrussRecord law = model.record(1);
  EXPECT_NEAR(law.SK1, 90.0, 1e-12);
  EXPECT_NEAR(law.SK2, 10.0, 1e-12);
  EXPECT_NEAR(law.FYT, 0.9, 1e-15);
  EXPECT_NEAR(law.FYC, -0.9, 1e-15);
  EXPECT_NEAR(law.DY, 0.01, 1e-17);

  model.set_displacement(1, 1, 0.015);
  determine_states();
  EXPECT_NEAR(1.5 - model.resisting_force(1, 1), 0.45, 1e-12);
  EXPECT_EQ(model.record(1).KYLD, truss_yielded);
  model.set_displacement(1, 1, 0.06);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 1.5, 1e-12);
  EXPECT_NEAR(model.record(1).PLPOS, 0.05, 1e-12);
}

TEST(TrussState, TrialsAreIndependentOfEachOtherUntilAStateUpdate) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.5);  // far into yield: a trial that is given up
  determine_states();
  model.set_displacement(1, 1, 0.005);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 0.5, 1e-14);
  EXPECT_EQ(model.record(1).PLPOS, 0.0);
  EXPECT_NEAR(model.record(1).FMAX, 0.5, 1e-14) << "a rejected trial leaves no trace in the envelope";
}

TEST(TrussState, UpdatedStatesAreWhereTheNextIncrementStarts) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.03);  // yields at 0.01
  determine_states();
  model.update_state();
  model.set_displacement(1, 1, 0.025);  // elastic unloading by 0.005
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 1.0 - 0.5, 1e-12);
  EXPECT_NEAR(model.record(1).PLPOS, 0.02, 1e-14);
  EXPECT_NEAR(model.record(1).EXT, 0.025, 1e-14);
}

TEST(TrussState, AZeroIncrementBringsTheInitialForceIntoTheEquations) {
  ElementText element_text;
  element_text.force = 0.25;
  Model model(bar_nodes(), bar_group(element_text).cards());
  model.build();
  determine_states();
  EXPECT_EQ(model.resisting_force(1, 1), 0.25);
  EXPECT_NEAR(model.record(1).EXT, 0.0025, 1e-17);
}

// A rotation of a bar of length 10 by 30 degrees about its held end, in plan.
TEST(TrussState, ARigidRotationGivesNoForceWhenTheElementFollowsItsNodes) {
  ElementText element_text;
  element_text.KGEOM = 1;
  Model model(bar_nodes(), bar_group(element_text).cards());
  model.build();
  model.set_displacement(1, 1, 10.0 * (std::sqrt(0.75) - 1.0));
  model.set_displacement(1, 2, 5.0);
  determine_states();
  // Stiffness 100 times the rounding of a length of 10.
  EXPECT_NEAR(model.record(1).F1, 0.0, 100.0 * 1e-14);
  EXPECT_NEAR(model.record(1).DIR[0], std::sqrt(0.75), 1e-15);
  EXPECT_NEAR(model.record(1).DIR[1], 0.5, 1e-15);
}

// Engineering strain at large displacement: a bar of 10 pulled sideways by 7.5 has a length of 12.5.
TEST(TrussState, LargeDisplacementTurnsAndStretchesTheBar) {
  ElementText element_text;
  element_text.KGEOM = 1;
  Model model(bar_nodes(), bar_group(element_text).cards());
  model.build();
  model.set_displacement(1, 2, 7.5);
  determine_states();
  const double N = 100.0 * 2.5;
  EXPECT_NEAR(model.resisting_force(1, 1), N * 0.8, 1e-11);
  EXPECT_NEAR(model.resisting_force(1, 2), N * 0.6, 1e-11);
}

TEST(TrussState, SmallDisplacementKeepsTheInputDirection) {
  Model model(bar_nodes(), bar_group().cards());
  model.build();
  model.set_displacement(1, 2, 7.5);
  determine_states();
  EXPECT_EQ(model.record(1).EXT, 0.0);
  EXPECT_EQ(model.resisting_force(1, 2), 0.0);
}

TEST(TrussState, EndsThatMeetGiveFiniteForces) {
  ElementText element_text;
  element_text.KGEOM = 1;
  Model model(bar_nodes(), bar_group(element_text).cards());
  model.build();
  model.set_displacement(1, 1, -10.0);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), -1000.0, 1e-9);
}

TEST(TrussState, StiffnessIsMarkedUnchangedOnlyAtTheCodeItWasFormedWith) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  determine_states();
  EXPECT_EQ(model.record(1).head.KSTIF, 1) << "never formed";
  EXPECT_EQ(solver.NELCHK, 1);
}

// Ductility 3 on a yield extension of 0.01: fails beyond 0.03, then unloads along half of the stiffness of 100, so the
// force of 1 is gone within 0.02.
TEST(TrussState, FailureByDuctilityTakesTheForceAwayAlongHalfTheStiffness) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  text.ductility = 3.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.03);
  determine_states();
  EXPECT_EQ(model.record(1).KFAIL, 0) << "the limit itself is borne";
  model.set_displacement(1, 1, 0.031);
  determine_states();
  EXPECT_EQ(model.record(1).KFAIL, 1);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_NEAR(model.record(1).SK2, -50.0, 1e-12);
  EXPECT_EQ(model.record(1).SK1, 0.0);
  EXPECT_NEAR(model.resisting_force(1, 1), 1.0, 1e-12) << "the failing step still bears its force";
  model.update_state();

  model.set_displacement(1, 1, 0.041);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 0.5, 1e-12);
  model.set_displacement(1, 1, 0.021);  // back: inward, and the force goes as well
  determine_states();
  EXPECT_EQ(model.record(1).KYLD, truss_failed_inward);
  EXPECT_NEAR(model.resisting_force(1, 1), 0.5, 1e-12);
  EXPECT_NEAR(model.record(1).SK2, 50.0, 1e-12);
  model.set_displacement(1, 1, 0.06);
  determine_states();
  EXPECT_EQ(model.record(1).KYLD, truss_gone);
  EXPECT_EQ(model.resisting_force(1, 1), 0.0);
  EXPECT_EQ(model.record(1).SK2, 1.0e-8);
  model.update_state();
  model.set_displacement(1, 1, -5.0);
  determine_states();
  EXPECT_EQ(model.resisting_force(1, 1), 0.0) << "gone for good";
}

TEST(TrussState, BlankDuctilityNeverFails) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 1000.0);
  determine_states();
  EXPECT_EQ(model.record(1).KFAIL, 0);
  EXPECT_NEAR(model.resisting_force(1, 1), 1.0, 1e-12);
}

TEST(TrussState, FailureInCompressionIsMeasuredByTheSmallestExtension) {
  TrussGroupText text = bar_group();
  text.tension = 1.0;
  text.compression = 1.0;
  text.ductility = 3.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, -0.04);
  determine_states();
  EXPECT_EQ(model.record(1).KFAIL, 1);
  EXPECT_EQ(model.record(1).KYLD, truss_failed_outward);
  EXPECT_NEAR(model.record(1).F1, -1.0, 1e-12);
}

// A member with internal pressure 4 on area 2 and Poisson's ratio 0.3 reports its force less 2 * 0.3 * 8.
TEST(TrussState, EndPressuresChangeTheReportedForceOnly) {
  TrussGroupText text = bar_group();
  text.poisson = 0.3;
  text.pressure = 4.0;
  text.area = 2.0;
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.05);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 10.0, 1e-12);
  EXPECT_NEAR(model.record(1).FREP, 10.0 - 4.8, 1e-12);
  EXPECT_NEAR(model.record(1).FMAX, 5.2, 1e-12);
}

// Node pressures 1 and 5 beside an internal pressure of 4: end pressures 5 and 9, mean 7, on area 2: 14.
TEST(TrussState, NodePressuresOfATemperaturePatternAddToTheEnds) {
  TrussGroupText text = bar_group();
  text.poisson = 0.25;
  text.pressure = 4.0;
  text.area = 2.0;
  Model model(bar_nodes(), text.cards());
  ELDATA();
  patterns.KTEMP = carve_reals(sizes.NUMNP);
  patterns.KPRES = carve_reals(sizes.NUMNP);
  patterns.have_temperatures = true;
  pool.reals(patterns.KPRES, 2)(1) = 1.0;
  pool.reals(patterns.KPRES, 2)(2) = 5.0;
  model.lay_down_arrays();
  LODELM();
  determine_states();
  EXPECT_NEAR(model.record(1).FREP, -2.0 * 0.25 * 14.0, 1e-12);
}

TEST(TrussState, EnvelopesKeepExtremesWithTheirTimes) {
  Model model(bar_nodes(), bar_group().cards());
  model.build();
  response.TIME = 1.0;
  model.set_displacement(1, 1, 0.02);
  determine_states();
  model.update_state();
  response.TIME = 2.0;
  model.set_displacement(1, 1, -0.01);
  determine_states();
  const TrussRecord truss = model.record(1);
  EXPECT_NEAR(truss.FMAX, 2.0, 1e-13);
  EXPECT_EQ(truss.TFMAX, 1.0);
  EXPECT_NEAR(truss.FMIN, -1.0, 1e-13);
  EXPECT_EQ(truss.TFMIN, 2.0);
  EXPECT_NEAR(truss.EXTMAX, 0.02, 1e-15);
  EXPECT_EQ(truss.TEMAX, 1.0);
  EXPECT_NEAR(truss.EXTMIN, -0.01, 1e-15);
  EXPECT_EQ(truss.TEMIN, 2.0);
}

// Four pairs: a spring of slope 1 up to ratio 1, of slope 0.5 up to ratio 3, then flat; negative side flat at -1.
TEST(TrussState, ACurveIsWalkedOnTotalExtensionWithoutHysteresis) {
  ElementText element_text;
  element_text.KBUCK = 2;
  TrussGroupText text = bar_group(element_text);
  text.tension = 1.0;
  text.elements += format("22F10.3", std::array<double, 8>{-1, -1, 0, 0, 1, 1, 3, 2}) + "\n";
  Model model(bar_nodes(), text.cards());
  model.build();
  model.set_displacement(1, 1, 0.02);  // ratio 2: force ratio 1.5, yield force 1
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 1.5, 1e-12);
  EXPECT_EQ(model.record(1).KYLD, 103);
  model.update_state();
  model.set_displacement(1, 1, 0.005);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 0.5, 1e-12) << "back on the same line";
  model.set_displacement(1, 1, -0.5);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), -1.0, 1e-12);
  EXPECT_EQ(model.record(1).KYLD, 100);
  model.set_displacement(1, 1, 0.5);
  determine_states();
  EXPECT_NEAR(model.resisting_force(1, 1), 2.0, 1e-12);
  EXPECT_EQ(model.record(1).KYLD, 110);
}

TEST(TrussState, SameRunsGiveSameBits) {
  double force[2];
  for (double& value : force) {
    TrussGroupText text = bar_group();
    text.ratio = 0.07;
    text.tension = 1.3;
    Model model(bar_nodes(9.7), text.cards());
    model.build();
    model.set_displacement(1, 1, 0.0371);
    determine_states();
    value = model.resisting_force(1, 1);
  }
  EXPECT_EQ(force[0], force[1]);
}

}  // namespace
}  // namespace tidearc::test
