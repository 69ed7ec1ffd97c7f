// The truss in dynamic analyses: its damped matrix, its damping force in every yield code, the geometric matrix under
// the weights of a step, the step that is only tried, envelopes that start anew. Bars of EA/L 100.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/stiffness.h"
#include "model.h"
#include "run/layout.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

constexpr double BETAO = 0.5, BETAT = 0.25;

TrussGroupText damped_group(const ElementText& element_text) {
  TrussGroupText text;
  text.BETAO = BETAO;
  text.BETAT = BETAT;
  text.elements = element_text.card();
  return text;
}

/// A bar that has come into a yield code, in steps that are taken over.
struct Path {
  const char* name;
  TrussGroupText group;
  std::vector<double> extensions;
  int code;
  double initial, tangent;  ///< stiffnesses that its damping has
};

std::vector<Path> paths() {
  TrussGroupText elastic = damped_group({});
  TrussGroupText yielding = elastic;
  yielding.tension = 1.0;  // DY 0.01
  yielding.ratio = 0.1;
  TrussGroupText failing = elastic;
  failing.tension = 1.0;
  failing.ductility = 2.0;  // fails beyond 0.02; the force of 1 goes along half of 100
  TrussGroupText curve = damped_group({.KBUCK = 2});
  curve.tension = 1.0;
  curve.elements += format("22F10.3", std::array<double, 6>{0, 0, 1, 1, 5, 2}) + "\n";
  return {{"elastic", elastic, {0.3}, truss_elastic, 100.0, 100.0},
          {"yielding", yielding, {0.03}, truss_yielded, 100.0, 10.0},
          {"unloading", yielding, {0.03, 0.025}, truss_elastic, 100.0, 100.0},
          {"failing", failing, {0.021, 0.024}, truss_failed_outward, 50.0, 50.0},
          {"failing inwards", failing, {0.021, 0.024, 0.022}, truss_failed_inward, 50.0, 50.0},
          {"gone", failing, {0.021, 0.2}, truss_gone, 1.0e-8, 1.0e-8},
          {"on a curve", curve, {0.03}, truss_curve + 2, 100.0, 25.0}};
}

void walk(const Model& model, const std::vector<double>& extensions) {
  for (const double u : extensions) {
    model.set_displacement(1, 1, u);
    determine_states();
    model.update_state();
  }
}

/// First diagonal entry of the whole matrix.
double diagonal(int KFORM) {
  double value = 0.0;
  form_element_matrices(KFORM, true, 0, [&](const ElementMatrix& m) { value = m.EMAT[0]; });
  return value;
}

double damping_force(const Model& model, double velocity) {
  equation_vector(arrays.VD)(1) = velocity;
  for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U0)(e) = equation_vector(arrays.U)(e);
  sum_dynamic_forces(0.0, 0.0, arrays.VD, arrays.ACC, {.effective = arrays.WORK, .damping = arrays.DAMP});
  EXPECT_EQ(equation_vector(arrays.WORK)(1), equation_vector(arrays.DAMP)(1)) << "one damping, two passes";
  return equation_vector(arrays.DAMP)(model.equation(1, 1));
}

TEST(DampedTruss, HasADampingForceThatOpposesTheMotionInEveryCode) {
  for (const Path& path : paths()) {
    SCOPED_TRACE(path.name);
    Model model(bar_nodes(), path.group.cards());
    model.build();
    walk(model, path.extensions);
    ASSERT_EQ(model.record(1).KYLD, path.code);
    const double expected = 2.0 * (BETAO * path.initial + BETAT * path.tangent);
    EXPECT_NEAR(damping_force(model, 2.0), expected, 1e-12 * expected);
    EXPECT_NEAR(damping_force(model, -2.0), -expected, 1e-12 * expected);
  }
}

// A2 40, AB 0.125: 40 (BETAO K0 + BETAT Kt) + 0.875 Kt.
TEST(DampedTruss, HasAMatrixThatBelongsToItsDampingForceInEveryCode) {
  for (const Path& path : paths()) {
    SCOPED_TRACE(path.name);
    Model model(bar_nodes(), path.group.cards());
    model.build();
    integration.A2 = 40.0;
    integration.AB = 0.125;
    walk(model, path.extensions);
    const double expected = 40.0 * (BETAO * path.initial + BETAT * path.tangent) + 0.875 * path.tangent;
    EXPECT_NEAR(diagonal(1), expected, 1e-13 * expected);
    EXPECT_NEAR(diagonal(7), expected, 1e-13 * expected);
    EXPECT_NEAR(diagonal(0), path.tangent, 1e-13 * path.tangent) << "plain in a static analysis";
    EXPECT_NEAR(diagonal(-3), path.tangent, 1e-13 * path.tangent);
  }
}

// Tension 100 in a bar that is 11 long. Its damping has no part in the geometric matrix.
TEST(DampedTruss, WeightsTheGeometricMatrixOfTheStepsEnd) {
  Model model(bar_nodes(), damped_group({.KGEOM = 1}).cards());
  model.build();
  integration.A2 = 40.0;
  integration.AB = 0.125;
  model.set_displacement(1, 1, 1.0);
  determine_states();
  const auto across = [](int KFORM) {
    double value = 0.0;
    form_element_matrices(KFORM, true, 0, [&](const ElementMatrix& m) { value = m.EMAT[1 + 6 * 1]; });
    return value;
  };
  EXPECT_NEAR(across(1), 0.875 * 100.0 / 11.0, 1e-12);
  EXPECT_NEAR(across(2), 0.875 * 100.0 / 11.0, 1e-12);
  EXPECT_NEAR(across(0), 100.0 / 11.0, 1e-12);
}

TEST(DampedTruss, DeliversTheChangeOfItsDampedMatrix) {
  TrussGroupText text = damped_group({});
  text.tension = 1.0;
  text.ratio = 0.1;
  Model model(bar_nodes(), text.cards());
  model.build();
  integration.A2 = 40.0;
  integration.AB = 0.125;
  EXPECT_NEAR(diagonal(1), 40.0 * 75.0 + 87.5, 1e-11);
  model.set_displacement(1, 1, 0.03);
  determine_states();
  double change = 0.0;
  form_element_matrices(2, false, solver.NELCHK, [&](const ElementMatrix& m) { change = m.EMAT[0]; });
  EXPECT_NEAR(change, -(40.0 * 0.25 + 0.875) * 90.0, 1e-11) << "the initial part stays";
}

TEST(UndampedTruss, HasNoDampingForceWhateverTheVelocity) {
  TrussGroupText text;
  text.elements = ElementText{}.card();
  Model model(bar_nodes(), text.cards());
  model.build();
  equation_vector(arrays.VD)(1) = 2.0;
  equation_vector(arrays.DAMP)(1) = 77.0;
  determine_states({.damped = arrays.VD, .damping = arrays.DAMP});
  EXPECT_EQ(equation_vector(arrays.DAMP)(1), 0.0);
  EXPECT_FALSE(elements_damp());
}

// From 0.005 through 0.02: 0.9 of the first branch and 10 * 0.025 of the second, if it were taken.
TEST(TrussMidstep, YieldsWithoutATrace) {
  TrussGroupText text = damped_group({});
  text.tension = 1.0;
  text.ratio = 0.1;
  Model model(bar_nodes(), text.cards());
  model.build();
  open_state_log();
  walk(model, {0.005});
  save_states();
  const TrussRecord before = model.record(1);
  equation_vector(arrays.BFGS1)(1) = 0.02;
  equation_vector(arrays.VD)(1) = 2.0;
  determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
  EXPECT_NEAR(equation_vector(arrays.BFGS2)(1), 1.15, 1e-13);
  EXPECT_NEAR(equation_vector(arrays.DAMP)(1), 2.0 * (50.0 + 2.5), 1e-11) << "with the tangent half-way";
  const TrussRecord after = model.record(1);
  EXPECT_EQ(after.KYLD, truss_elastic);
  EXPECT_EQ(after.EXT, before.EXT);
  EXPECT_EQ(after.FMAX, before.FMAX);
  EXPECT_EQ(after.head.KSTIF, before.head.KSTIF);
  EXPECT_EQ(state_log.written, 0);
}

TEST(TrussEnvelope, StartsAnewFromThePresentValues) {
  TrussGroupText text = damped_group({});
  text.tension = 1.0;
  text.ratio = 0.1;
  Model model(bar_nodes(), text.cards());
  model.build();
  response.TIME = 1.0;
  walk(model, {0.02, -0.001});
  response.TIME = 5.0;
  restart_element_envelopes();
  TrussRecord truss = model.record(1);
  EXPECT_DOUBLE_EQ(truss.EXTMAX, -0.001);
  EXPECT_DOUBLE_EQ(truss.EXTMIN, -0.001);
  EXPECT_EQ(truss.FMAX, truss.FREP);
  EXPECT_EQ(truss.FMIN, truss.FREP);
  for (const double time : {truss.TFMAX, truss.TFMIN, truss.TEMAX, truss.TEMIN}) EXPECT_EQ(time, 5.0);
  EXPECT_DOUBLE_EQ(truss.PLPOS, 0.01) << "accumulated, no extreme";
  response.TIME = 6.0;
  walk(model, {0.004});
  truss = model.record(1);
  EXPECT_DOUBLE_EQ(truss.EXTMAX, 0.004);
  EXPECT_EQ(truss.TEMAX, 6.0);
  EXPECT_DOUBLE_EQ(truss.EXTMIN, -0.001);
  EXPECT_EQ(truss.TEMIN, 5.0);
}

}  // namespace
}  // namespace tidearc::test
