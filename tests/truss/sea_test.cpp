// The truss in water: wave loads, buoyancy, static current, added mass, the force that reports tell, the water plane.
#include "elements/truss/sea.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "elements/contract/stiffness.h"
#include "elements/contract/walk.h"
#include "elements/truss/operations.h"
#include "model.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "sea/field.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"
#include "solve/integration.h"

namespace tidearc::test {
namespace {

using Six = std::array<double, 6>;

constexpr double gamma = 10.0;
const double Ab = std::numbers::pi / 4.0;  // of diameter 1

/// Gravity along -Z, water of weight density 10 and mass density 2 up to the origin.
void fill_the_sea(int KBUOY, double current = 0.0) {
  reset_gravity();
  sizes.IGRAV = 1;
  gravity.water_weight = gamma;
  gravity.water_mass = 2.0;
  gravity.KBUOY = KBUOY;
  if (current == 0.0) return;
  gravity.KCURR = 1;
  gravity.NCLEV = 2;
  gravity.CLEVI[1] = 1000.0;
  gravity.CVELI[1] = gravity.CVELI[4] = current;  // along Y
}

/// The same water in motion for the pass of the sea.
void flow_along_Y(double speed) {
  wave = WaveState{};
  wave.IWTY = wave_current_only;
  wave.current_code = 1;
  wave.current_stretching = 1;
  wave.sg = -1.0;
  wave.gravity = {0.0, 0.0, -1.0};
  wave.rho = 2.0;
  wave.d = wave.L = 1000.0;
  wave.mudline = wave.lower_force = wave.lower_current = -1000.0;
  wave.NTIME = 1;
  wave.NLEVEL = 2;
  current_now = CurrentNow{};
  current_now.time = 0.0;
  current_now.NLEVEL = 2;
  current_now.level[1] = 1000.0;
  current_now.vector[1] = current_now.vector[4] = speed;
}

struct SeaTruss : ::testing::Test {
  void SetUp() override { clear(); }
  void TearDown() override { clear(); }
  static void clear() {
    sea_factors = {};
    wave = WaveState{};
    current_now = CurrentNow{};
    force_scale.index = 0;
    reset_gravity();
  }
};

TrussGroupText tube() {
  TrussGroupText text;
  text.EMOD = 1000.0;
  text.water_diameter = 1.0;
  text.CD = 1.0;
  text.NGAUSS = 4;
  return text;
}

/// A free bar between two points.
std::vector<ModelNode> free_bar(const std::array<double, 3>& I, const std::array<double, 3>& J, int system = 0) {
  return {{I[0], I[1], I[2], "XYZ"}, {J[0], J[1], J[2], "XYZ", system}};
}

Six nodal(int pattern) {
  Six f{};
  for (int n = 1; n <= 2; ++n) {
    for (int c = 1; c <= 3; ++c) {
      f[static_cast<std::size_t>(3 * n + c - 4)] = pool.reals(pattern, NEQ1())(equation_of(n, c));
    }
  }
  return f;
}
void expect_near(const Six& found, const Six& expected, double tolerance) {
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

// (0,0,-10) to (8,0,-4): caps of 10 and 4 of head along the member, the side load 0.8 gamma Ab over 10 by levers.
TEST_F(SeaTruss, BuoyancyIsThatOfItsCapsAndHalfOfItsSideAtEitherEnd) {
  TrussGroupText text = tube();
  text.elements = ElementText{.KBUOY = 1}.card();
  Model model(free_bar({0, 0, -10}, {8, 0, -4}), text.cards());
  fill_the_sea(1);
  model.build();
  const double w = gamma * Ab;
  const Six expected = {w * (8 - 2.4), 0, w * (6 + 3.2), w * (-3.2 - 2.4), 0, w * (-2.4 + 3.2)};
  expect_near(nodal(patterns.KBUOYV), expected, 1e-11);
  const TrussRecord truss = model.record(1);
  Six kept;
  std::copy_n(truss.FBUOY, 6, kept.begin());
  expect_near(kept, expected, 1e-11);
}

TEST_F(SeaTruss, BuoyancyNeedsBothCodes) {
  for (const int of_deck : {0, 1}) {
    for (const int of_element : {0, 3}) {
      TrussGroupText text = tube();
      text.elements = ElementText{.KBUOY = of_element}.card();
      Model model(free_bar({0, 0, -10}, {8, 0, -4}), text.cards());
      fill_the_sea(of_deck);
      model.build();
      EXPECT_EQ(nodal(patterns.KBUOYV)[2] != 0.0, of_deck == 1 && of_element == 3);
    }
  }
}

// 0.5 rho D U^2 = 4 on 10, half at either end; a turned node sees it in its own axes: local 2 along -Y.
TEST_F(SeaTruss, StaticCurrentActsOnBothEndsInTheAxesOfTheirNodes) {
  TrussGroupText text = tube();
  text.elements = ElementText{}.card();
  Model model(free_bar({0, 0, -10}, {8, 0, -4}, 1), text.cards(), 1, {{-1, 0, 0, 0, -1, 0, 0, 0, 1}});
  fill_the_sea(0, 2.0);
  model.build();
  expect_near(nodal(patterns.KCURRV), {0, 20, 0, 0, -20, 0}, 1e-5);
}

TEST_F(SeaTruss, AddedMassIsNormalToIt) {
  TrussGroupText text = tube();
  text.CKM = 1.5;
  text.elements = ElementText{}.card();
  // Two thirds of 10 along (0.8, 0, 0.6) are wet: 0.25 * 1.5 * 2 pi per unit length, half to each node.
  for (const int IGRAV : {0, 1}) {
    Model model(free_bar({0, 0, -4}, {8, 0, 2}), text.cards());
    fill_the_sea(0);
    sizes.IGRAV = IGRAV;
    model.build();
    const double half = IGRAV * 0.75 * std::numbers::pi * 10 / 3;
    const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
    for (const int node : {1, 2}) {
      EXPECT_NEAR(AMASS(equation_of(node, 1)), 0.36 * half, 1e-12);
      EXPECT_NEAR(AMASS(equation_of(node, 2)), half, 1e-12);
      EXPECT_NEAR(AMASS(equation_of(node, 3)), 0.64 * half, 1e-12);
    }
  }
}

TEST_F(SeaTruss, WaveLoadsAreGlobalLeverLoadsKeptInTheRecord) {
  TrussGroupText text = tube();
  text.elements = ElementText{}.card();
  Model model(free_bar({0, 0, -30}, {0, 0, -20}), text.cards());
  model.build();
  flow_along_Y(3.0);
  form_wave_loads(1.0, false, arrays.WORK);
  // 0.5 * 2 * 9 per unit length over 10.
  EXPECT_NEAR(equation_vector(arrays.WORK)(equation_of(1, 2)), 45.0, 1e-4);
  EXPECT_NEAR(equation_vector(arrays.WORK)(equation_of(2, 2)), 45.0, 1e-4);
  EXPECT_EQ(equation_vector(arrays.WORK)(equation_of(2, 3)), 0.0);
  EXPECT_NEAR(model.record(1).FWAVE[1], 45.0, 1e-4);
  EXPECT_NEAR(model.record(1).FWAVE[4], 45.0, 1e-4);
  // They are relative to the ends' motion, and selective relative velocity is not for the truss.
  wave.relative_velocity = 1;
  wave.cutoff_diameter = 0.5;
  equation_vector(arrays.VEL)(equation_of(1, 2)) = -1.0;
  equation_vector(arrays.VEL)(equation_of(2, 2)) = -1.0;
  form_wave_loads(1.0, false, arrays.WORK);
  EXPECT_NEAR(equation_vector(arrays.WORK)(equation_of(1, 2)), 80.0, 1e-4);
}

TEST_F(SeaTruss, WaveLoadsNeedAPointOfIntegration) {
  for (const int of_element : {0, 9}) {
    TrussGroupText text = tube();
    text.NGAUSS = 0;
    text.elements = ElementText{.KWAVE = of_element}.card();
    Model model(free_bar({0, 0, -30}, {0, 0, -20}), text.cards());
    model.build();
    flow_along_Y(3.0);
    form_wave_loads(1.0, false, arrays.WORK);
    EXPECT_NEAR(equation_vector(arrays.WORK)(equation_of(1, 2)), of_element == 0 ? 0.0 : 45.0, 1e-4);
  }
}

// A closed tube held at its foot, under its buoyancy: the end above bears nothing, the foot its whole lift.
TEST_F(SeaTruss, ReportedForceIsTheMeanOfItsEndForces) {
  TrussGroupText text = tube();
  text.elements = ElementText{.KBUOY = 1}.card();
  Model model({{0, 0, -10, ""}, {0, 0, -4, "Z"}}, text.cards());
  fill_the_sea(1);
  model.build();
  // Nodal load at the upper end: -4 gamma Ab; EA/L = 1000/6.
  const double w = gamma * Ab;
  sea_factors.buoyancy = 1.0;
  model.set_displacement(2, 3, -4 * w * 6 / 1000);
  determine_states();
  EXPECT_NEAR(model.resisting_force(2, 3), -4 * w, 1e-11);
  EXPECT_NEAR(model.record(1).FREP, 3 * w, 1e-11);
  EXPECT_NEAR(model.record(1).FMAX, 3 * w, 1e-11);
  sea_factors.buoyancy = 0.0;
  determine_states();
  EXPECT_NEAR(model.record(1).FREP, -4 * w, 1e-11);
}

TEST_F(SeaTruss, ReportedForceTakesEveryLoadAtItsFactor) {
  TrussRecord truss{};
  const Six along = {-1, 0, 0, 1, 0, 0};
  std::copy_n(along.begin(), 6, truss.DIR);
  for (std::size_t i = 0; i < 6; ++i) {
    truss.FWAVE[i] = i == 3 ? 8.0 : 0.0;
    truss.FBUOY[i] = i == 0 ? 20.0 : 1.0;
    truss.FCURR[i] = i == 1 ? 1e6 : 0.0;
  }
  EXPECT_EQ(axial_part_of_sea(truss), 0.0);
  sea_factors = {.wave = 0.5, .buoyancy = 2.0, .current = 3.0};
  EXPECT_DOUBLE_EQ(axial_part_of_sea(truss), 0.5 * (0.5 * 8.0 + 2.0 * (1.0 - 20.0)));
}

TEST_F(SeaTruss, WithoutSeaTheReportedForceKeepsEveryBit) {
  TrussRecord truss{};
  const Six along = {-0.6, 0, -0.8, 0.6, 0, 0.8};
  std::copy_n(along.begin(), 6, truss.DIR);
  for (const double factor : {0.0, 1.0, -1.0}) {
    sea_factors = {factor, factor, factor};
    EXPECT_FALSE(std::signbit(axial_part_of_sea(truss))) << factor;  // x - 0.0 is x, -0.0 too
  }
}

/// Entry of the matrix of the one element.
double diagonal(std::size_t freedom, int KFORM = 0) {
  double value = 0.0;
  for_each_element(Pass::reading, [&](const ElementType&, const Word* record, int) {
    load_record(record);
    STIF01(KFORM, 0.0, 0.0, true);
    value = element.EMAT[7 * freedom];
  });
  return value;
}

// pi/4 D^2 gamma / |cosine| on the vertical freedom of J where I is the lower end, else of I.
TEST_F(SeaTruss, ACutMemberHasTheStiffnessOfItsWaterPlane) {
  const double K = 1000.0 / 10, vertical = 0.36 * K, plane = Ab * gamma / 0.6;
  for (const bool I_lower : {true, false}) {
    for (const int KBUOY : {0, 1}) {
      TrussGroupText text = tube();
      text.elements = ElementText{.KBUOY = KBUOY}.card();
      const std::array<double, 3> low = {0, 0, -4}, high = {8, 0, 2};
      Model model(free_bar(I_lower ? low : high, I_lower ? high : low), text.cards());
      fill_the_sea(1);
      model.build();
      EXPECT_NEAR(diagonal(2), vertical + (I_lower ? 0.0 : KBUOY * plane), 1e-11);
      EXPECT_NEAR(diagonal(5), vertical + (I_lower ? KBUOY * plane : 0.0), 1e-11);
      EXPECT_NEAR(diagonal(0), 0.64 * K, 1e-11);
      gravity.KBUOY = 0;
      EXPECT_NEAR(diagonal(5), vertical, 1e-11);
    }
  }
}

// Like the geometric stiffness it takes the weight of the step's end, and no part in damping.
TEST_F(SeaTruss, TheWaterPlaneHasTheWeightOfTheStepsEndInADynamicMatrix) {
  TrussGroupText text = tube();
  text.elements = ElementText{.KBUOY = 1}.card();
  Model model(free_bar({0, 0, -4}, {8, 0, 2}), text.cards());
  fill_the_sea(1);
  model.build();
  integration.AB = -0.25;
  EXPECT_NEAR(diagonal(5, 1) - diagonal(2, 1), 1.25 * Ab * gamma / 0.6, 1e-11);
  EXPECT_NEAR(diagonal(5, 0) - diagonal(2, 0), Ab * gamma / 0.6, 1e-11);
  integration.AB = 0.0;
}

TEST_F(SeaTruss, AMemberWhollyWetOrDryHasNone) {
  TrussGroupText text = tube();
  text.elements = ElementText{.KBUOY = 1}.card();
  struct Case {
    double low, high;
    bool cut;
  };
  // An end in the surface is wet.
  for (const Case c : {Case{-10, -4, false}, Case{-6, 0, false}, Case{0, 6, true}, Case{1, 7, false}}) {
    Model model(free_bar({0, 0, c.low}, {8, 0, c.high}), text.cards());
    fill_the_sea(1);
    model.build();
    EXPECT_NEAR(diagonal(5), 36.0 + (c.cut ? Ab * gamma / 0.6 : 0.0), 1e-11) << c.low;
  }
}

TEST_F(SeaTruss, TheWaterPlaneTakesTheDiameterOfBuoyancyAndTheAxisOfGravity) {
  TrussGroupText text = tube();
  text.Db = 2.0;
  text.elements = ElementText{.KBUOY = 1}.card();
  Model model(free_bar({-4, 0, 0}, {2, 0, 8}), text.cards());
  fill_the_sea(1);
  gravity.direction = {-1.0, 0.0, 0.0};
  model.build();
  EXPECT_NEAR(diagonal(3), 36.0 + 4 * Ab * gamma / 0.6, 1e-11);
  EXPECT_NEAR(diagonal(5), 64.0, 1e-11);
}

TEST_F(SeaTruss, KeepsTheTableOfLoadCode7) {
  TrussGroupText text = tube();
  text.ICA = 7;
  text.JCA = 1;
  text.elements = ElementText{}.card();
  std::string cards;
  for (int i = 1; i <= 25; ++i) cards += format("F10.3", 0.5 * i) + (i % 8 == 0 || i == 25 ? "\n" : "");
  text.general = cards;
  Model model(free_bar({0, 0, -30}, {0, 0, -20}), text.cards());
  model.build();
  const TrussRecord truss = model.record(1);
  EXPECT_EQ(truss.general.inertia, 0.5);
  EXPECT_EQ(truss.general.drag[0], 1.0);
  EXPECT_EQ(truss.general.drag[11], 6.5);
  EXPECT_EQ(truss.general.lift[0], 7.0);
  EXPECT_EQ(truss.general.lift[11], 12.5);
  EXPECT_EQ(truss.section.JCA, 1);
  EXPECT_NE(model.report().find("COEFFICIENTS OF GENERAL DRAG AND LIFT"), std::string::npos);
  EXPECT_NE(model.report().find("    1  5.0000E-01  DRAG   1.0000   1.5000"), std::string::npos);
}

TEST_F(SeaTruss, PrintsNothingForTheLoadFile) {
  TrussGroupText text = tube();
  text.elements = ElementText{}.card();
  Model model(bar_nodes(), text.cards());
  model.build();
  response.TIME = 1.0;
  const std::string before = model.report();
  print_elements(-1);
  EXPECT_EQ(model.report(), before);
  print_elements();
  EXPECT_NE(model.report(), before);
}

}  // namespace
}  // namespace tidearc::test
