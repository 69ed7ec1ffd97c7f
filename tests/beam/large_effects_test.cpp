// What acts on large displacement beams beside nodal loads: offsets in large rotation, pressures, self weight, an axial
// force that no extension can bear.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "beam_block.h"
#include "frame_deck.h"

namespace tidearc::test {
namespace {

void expect_relative(double found, double expected, double tolerance) {
  EXPECT_NEAR(found, expected, tolerance * std::abs(expected));
}

// Offsets are rigid arms whose ends follow the node's rotation in the first order, about arms that keep their master
// components: exactly what very stiff linear beams between node and end do, whatever the rotation.
TEST(LargeOffsets, EqualStiffLinearArmsInLargeRotation) {
  constexpr int members = 6;
  const std::array<double, 3> arm_I = {0.0, 0.1, 0.3}, arm_J = {0.2, -0.1, 0.25};
  std::array<std::array<double, 6>, 2> tips{};
  for (const bool arms : {false, true}) {
    FrameDeck deck;
    // Ends 1 .. 7 of the chain along x; the first and the last node stand beside their ends.
    for (int i = 0; i <= members; ++i) {
      const std::array<double, 3> e = i == 0 ? arm_I : i == members ? arm_J : std::array<double, 3>{};
      const double sign = arms ? 0.0 : 1.0;
      deck.node(i / 6.0 - sign * e[0], -sign * e[1], -sign * e[2]);
    }
    LargeGroup group;
    group.E = 1.0;
    group.section({.A = 1e4, .IY = 1.0, .IZ = 1.0, .J = 2.0});
    group.offset({arm_I[0], arm_I[1], arm_I[2], 0, 0, 0});
    group.offset({0, 0, 0, arm_J[0], arm_J[1], arm_J[2]});
    for (int i = 1; i <= members; ++i) {
      group.element({.I = i, .J = i + 1, .SD = 2, .ECC = arms ? 0 : i == 1 ? 1 : i == members ? 2 : 0});
    }
    deck.group(group.text());
    int base = 1, tip = members + 1;
    if (arms) {
      base = deck.node(-arm_I[0], -arm_I[1], -arm_I[2]);
      tip = deck.node(1 - arm_J[0], -arm_J[1], -arm_J[2]);
      LinearGroup rigid;
      rigid.E = 1e7;
      rigid.section({.A = 1e3, .J = 1e2, .I3 = 1e2, .I2 = 1e2});
      rigid.element({.I = base, .J = 1});
      rigid.element({.I = tip, .J = members + 1});
      deck.group(rigid.text());
    }
    deck.fix(base, "111111");
    deck.load(tip, {0, 1.5, 0.8, 0.4, -0.3, 0.9});
    deck.stat({steps_of(8, 1e-3, 60)});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << run.progress;
    for (std::size_t c = 0; c < 6; ++c) tips[arms ? 1 : 0][c] = moved(tip, static_cast<int>(c) + 1);
  }
  EXPECT_GT(std::hypot(tips[0][3], tips[0][4], tips[0][5]), 0.8);
  for (std::size_t c = 0; c < 6; ++c) EXPECT_NEAR(tips[0][c], tips[1][c], 1e-5) << c;
}

TEST_F(Beams, AnOffsetEndMovesWithTheRotationTimesItsArmHoweverLarge) {
  // Node J turns by 0.9 about z and stays where it is: its end moves by r x e = 0.9 (-e_y, e_x, 0), not along an arc.
  LargeBeam& beam = large();
  const double e[3] = {beam.ECC[1], beam.ECC[3], beam.ECC[5]};
  element.EDISP[11] = 0.9;
  SDET02();
  double chord[3] = {beam.CHORD[0] - 0.9 * e[1], beam.CHORD[1] + 0.9 * e[0], beam.CHORD[2]};
  const double length = std::hypot(chord[0], chord[1], chord[2]);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(beam.TELEM[i], chord[i] / length, 1e-14);
  // The extension is that of the projection on the chord half-way: (l^2 - L^2)/2 over its length.
  const double half[3] = {(chord[0] + beam.CHORD[0]) / 2, (chord[1] + beam.CHORD[1]) / 2, chord[2]};
  EXPECT_NEAR(beam.ENAT[5], (length * length - beam.XL * beam.XL) / 2 / std::hypot(half[0], half[1], half[2]), 1e-14);
  // The node's moment is that of the end and e x F of the end's force.
  RESP02();
  Vector12 f;
  natural_to_master(beam.TGLOB, beam.QNAT, f);
  EXPECT_NEAR(element.ERES[9], f[9] + e[1] * f[8] - e[2] * f[7], 1e-12);
  EXPECT_NEAR(element.ERES[10], f[10] + e[2] * f[6] - e[0] * f[8], 1e-12);
  EXPECT_NEAR(element.ERES[11], f[11] + e[0] * f[7] - e[1] * f[6], 1e-12);
}

/// A member of length 2 and area 2 between a held node and one that is free along it, under node pressures 3 and 5 and
/// an internal pressure of 4; Poisson's ratio 0.3. `held` holds its far end too.
LargeBeam pressed(int type, bool held) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(2, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, held ? "111110" : "011110");
  LargeGroup group;
  group.ITYPE = type;
  group.viv = "\n\n\n";
  group.poisson = 0.3;
  group.pressure = 4;
  group.section({.A = 2, .IY = 1, .IZ = 1, .J = 1});
  group.element({.I = 1, .J = 2});
  deck.group(group.text());
  deck.pressure(1, 3.0);
  deck.pressure(2, 5.0);
  deck.load(2, {0, 0, 0, 0, 0, 0});
  SegmentCards segment = one_step(1e-9);
  segment.temperatures = {1.0, 1.0};
  deck.stat({segment});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  EXPECT_NEAR(moved(2, 1), 0.0, 1e-14);
  return type == 2 ? large_record(1) : vortex_record(1).beam;
}

TEST(NodePressure, EntersTheEffectiveForceOfEitherEndAndNoOther) {
  for (const int type : {2, 27}) {
    for (const bool held : {false, true}) {
      const LargeBeam beam = pressed(type, held);
      EXPECT_DOUBLE_EQ(beam.PEND[0], (4 + 3) * 2.0);
      EXPECT_DOUBLE_EQ(beam.PEND[1], (4 + 5) * 2.0);
      EXPECT_NEAR(beam.P, (1 - 0.6) * 0.5 * (14 + 18), 1e-12);
      for (const double q : beam.QNAT) EXPECT_NEAR(q, 0.0, 1e-12);
    }
  }
}

/// Tip of a type 2 cantilever of one element under its weight, times 1E4: length 4, EI 1E7, weight 3 per unit length.
double sag(int KFEM, double tip_beyond_end) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(4 + tip_beyond_end, 0, 0);
  deck.fix(1, "111111");
  deck.self_weight("-Z");
  LargeGroup group;
  group.E = 1e7;
  group.weight = 2;
  group.fluid_weight = 0.5;
  group.KFEM = KFEM;
  group.section({.A = 0.25, .ID = 1.2, .IY = 1, .IZ = 1, .J = 1, .growth = 2.5 - 0.5 * 1.1309733553});
  group.offset({0, 0, 0, -tip_beyond_end, 0, 0});
  group.element({.I = 1, .J = 2, .ECC = tip_beyond_end == 0 ? 0 : 1});
  deck.group(group.text());
  SegmentCards segment = one_step(1e-9);
  segment.generated = {1.0, 0.0, 0.0};
  deck.stat({segment});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  return 1e4 * moved(2, 3);
}

// wL^4/8EI with the fixed-end moments; half the weight at the tip alone, (wL/2)L^3/3EI, without them.
TEST(LargeSelfWeight, BendsACantileverAsThatOfALinearBeamDoes) {
  expect_relative(sag(1, 0), -3.0 * 256 / 8000, 1e-6);
  expect_relative(sag(0, 0), -3.0 * 256 / 6000, 1e-6);
  // The tip node 1 beyond end J: slope wL^3/6EI times 1 more; without the moments the force acts at the node.
  expect_relative(sag(1, 1), -3.0 * 256 / 8000 - 3.0 * 64 / 6000, 1e-6);
  const double P = 6, EI = 1000;
  expect_relative(sag(0, 1), -P * (64.0 / 3 + 8) / EI - P * (8 + 4) / EI, 1e-6);
}

TEST(InitialAxialForce, StandsWhereThereIsNoAxialStiffness) {
  // A member without area keeps the force as a constant: in its axial force, in its effective force and so in the
  // stiffness of the string that it is: deflection wanted of a string 2 + 2 long with tension 6 under 0.003 in its
  // middle is 0.003/(6/2 + 6/2).
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0}) deck.node(x, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "101111");
  deck.fix(3, "111111");
  LargeGroup group;
  group.E = 1e-9;
  group.section({.A = 0, .IY = 1, .IZ = 1, .J = 1});
  group.element({.I = 1, .J = 2, .KGE = 1, .axial = 6});
  group.element({.I = 2, .J = 3, .KGE = 1, .axial = 6});
  deck.group(group.text());
  deck.load(2, {0, 0.003, 0, 0, 0, 0});
  deck.stat({one_step(1e-10)});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  expect_relative(moved(2, 2), 0.0005, 1e-6);
  EXPECT_NEAR(large_record(1).P, 6.0, 1e-12);
  EXPECT_NEAR(large_record(1).QNAT[5], 6.0, 1e-12);
  EXPECT_NEAR(large_record(1).ENAT[5], 0.0005 * 0.0005 / 4, 1e-12);  // what the slope lengthens
}

}  // namespace
}  // namespace tidearc::test
