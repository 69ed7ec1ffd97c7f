// What the model gets from its beams: self weight, with and without fixed-end moments, and masses.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "frame_deck.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "run/workpool.h"

namespace tidearc::test {
namespace {

void expect_relative(double found, double expected, double tolerance) {
  EXPECT_NEAR(found, expected, tolerance * std::abs(expected));
}

/// Tip of a cantilever of one element under its weight: length 4, EI 1000, weight 3 per unit length.
double sag(int KFEM, const std::array<double, 3>& to, const std::array<double, 6>& offset = {}, int offset_type = 0) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(to[0], to[1], to[2]);
  deck.fix(1, "111111");
  deck.self_weight("-Z");
  LinearGroup group;
  group.E = 1000;
  group.weight = 2;
  group.fluid_weight = 0.5;
  group.KFEM = KFEM;
  // 2 * 0.25 + 0.5 pi/4 1.2^2 + growth
  group.section({.A = 0.25, .ID = 1.2, .J = 1e6, .I3 = 1, .I2 = 1, .growth = 2.5 - 0.5 * 1.1309733553});
  group.offset(offset);
  group.element({.I = 1, .J = 2, .ECC = offset_type});
  deck.group(group.text());
  SegmentCards segment = one_step();
  segment.generated = {1.0, 0.0, 0.0};
  deck.stat({segment});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  return moved(2, 3);
}

// wL^4/8EI with the fixed-end moments; half the weight at the tip alone, (wL/2)L^3/3EI, without them.
TEST(SelfWeight, BendsACantileverExactlyWithItsFixedEndMoments) {
  expect_relative(sag(1, {4, 0, 0}), -3.0 * 256 / 8000, 1e-8);
  expect_relative(sag(0, {4, 0, 0}), -3.0 * 256 / 6000, 1e-8);
  expect_relative(sag(2, {4, 0, 0}), -3.0 * 256 / 6000, 1e-8);
}

TEST(SelfWeight, BendsASlopedMemberByItsNormalPart) {
  // 3-4-5 slope, length 4: normal part 0.8 w, its vertical share 0.8 again; the axial part is stiff (EA 250):
  // 0.6 w L/2 at the tip shortens it by 0.6 w L^2/(2EA), 0.6 of that vertical.
  const double L4 = 256, w = 3;
  const double bending = 0.64 * w * L4 / 8000, axial = 0.36 * w * 16 / (2 * 250);
  expect_relative(sag(1, {3.2, 0, 2.4}), -(bending + axial), 1e-8);
}

TEST(SelfWeight, OffsetsGiveMomentsWithTheFixedEndMomentsAlone) {
  // The tip node stands 1 beyond end J: the forces of end J move there with their moment, L is 4.
  const double w = 3, span = 4, EI = 1000;
  const double v = -w * std::pow(span, 4) / (8 * EI), slope = -w * std::pow(span, 3) / (6 * EI);
  expect_relative(sag(1, {5, 0, 0}, {0, 0, 0, -1, 0, 0}, 1), v + slope, 1e-8);
  // Without them the force wL/2 acts at the node, 1 beyond the end.
  const double P = w * span / 2;
  const double v0 = -P * (std::pow(span, 3) / 3 + span * span / 2) / EI, slope0 = -P * (span * span / 2 + span) / EI;
  expect_relative(sag(0, {5, 0, 0}, {0, 0, 0, -1, 0, 0}, 1), v0 + slope0, 1e-8);
}

TEST(SelfWeight, StandsInTheAxesOfATurnedNode) {
  // A cantilever of length 4 along x, weight 3, whose tip node has axes (0,0,1), (1,0,0), (0,1,0): the tip sinks along
  // -X of the node and turns about its Z (the master Y).
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(4, 0, 0);
  deck.fix(1, "111111");
  deck.turn(2, {0, 0, 1}, {1, 0, 0});
  deck.self_weight("-Z");
  LinearGroup group;
  group.E = 1000;
  group.weight = 3;
  group.KFEM = 1;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  group.element({.I = 1, .J = 2});
  deck.group(group.text());
  SegmentCards segment = one_step();
  segment.generated = {1.0, 0.0, 0.0};
  deck.stat({segment});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  expect_relative(moved(2, 1), -3.0 * 256 / 8000, 1e-9);
  expect_relative(moved(2, 6), 3.0 * 64 / 6000, 1e-9);
  EXPECT_NEAR(moved(2, 5), 0.0, 1e-12);
}

TEST(Masses, OfABeamGoToTheTranslationsOfItsNodes) {
  // L 4, rho A 2 * 0.25, contained fluid 0.5 pi/4 1.2^2 per unit length.
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(4, 0, 0);
  deck.node(0, 9, 0);
  deck.fix(3, "111111");
  LinearGroup linear;
  linear.mass = 2;
  linear.fluid_mass = 0.5;
  linear.section({.A = 0.25, .ID = 1.2, .J = 1, .I3 = 1, .I2 = 1});
  linear.element({.I = 1, .J = 2});
  deck.group(linear.text());
  LargeGroup large;
  large.mass = 7;
  large.section({.A = 0.5, .IY = 1, .IZ = 1, .J = 1});
  large.element({.I = 1, .J = 3});
  deck.group(large.text());
  EXPECT_EQ(run_static(deck.text()).status, 0);
  const double half = 2 * (0.5 + 0.5 * 1.1309733553), half_large = 4.5 * 3.5;
  const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
  for (int c = 1; c <= 3; ++c) {
    EXPECT_NEAR(AMASS(equation_of(1, c)), half + half_large, 1e-9);
    EXPECT_NEAR(AMASS(equation_of(2, c)), half, 1e-9);
    EXPECT_EQ(AMASS(equation_of(1, c + 3)), 0.0);
  }
}

}  // namespace
}  // namespace tidearc::test
