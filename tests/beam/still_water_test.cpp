// Buoyancy, static current and added mass of the beams: their patterns, the forces that reports tell, the masses.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "elements/beam/natural.h"
#include "elements/beam/sea.h"
#include "frame_deck.h"
#include "group_deck.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "sea/sea_factors.h"

namespace tidearc::test {
namespace {

using Six = std::array<double, 6>;

/// Forces and moments of all nodes of a pattern vector, in master axes, about the origin.
Six resultant_of(int pattern) {
  const ConstReals vector = pool.reals(pattern, NEQ1());
  Six sum{};
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    Six f{};
    for (int c = 1; c <= 6; ++c) {
      const int e = equation_of(node, c);
      if (e <= sizes.NEQ) f[static_cast<std::size_t>(c - 1)] = vector(e);
    }
    to_global(node, f.data());
    to_global(node, f.data() + 3);
    const std::array<double, 3> x = coordinates(node);
    f[3] += x[1] * f[2] - x[2] * f[1];
    f[4] += x[2] * f[0] - x[0] * f[2];
    f[5] += x[0] * f[1] - x[1] * f[0];
    for (std::size_t i = 0; i < 6; ++i) sum[i] += f[i];
  }
  return sum;
}

/// A force at a point, about the origin.
Six acting_at(const std::array<double, 3>& x, const std::array<double, 3>& F) {
  return {F[0], F[1], F[2], x[1] * F[2] - x[2] * F[1], x[2] * F[0] - x[0] * F[2], x[0] * F[1] - x[1] * F[0]};
}

void expect_near(const Six& found, const Six& expected, double tolerance) {
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

enum class Type { linear, wave, large, vortex };
constexpr std::array every_type = {Type::linear, Type::wave, Type::large, Type::vortex};

/// Cards of a group of any type whose elements take a section of that water; `offset` where it is not zero (type 27 has
/// none).
std::string group_of(Type type, const WaterCards& water, int KFEM, int KBUOY,
                     const std::array<double, 6>& offset = {}) {
  const bool offsets = offset != std::array<double, 6>{};
  if (type == Type::linear || type == Type::wave) {
    LinearGroup group;
    group.ITYPE = type == Type::wave ? 7 : 3;
    group.KFEM = KFEM;
    group.NGAUSS = 4;
    group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .water = water});
    if (offsets) group.offset(offset);
    group.element({.I = 1, .J = 2, .BUOY = KBUOY, .ECC = offsets ? 1 : 0});
    return group.text();
  }
  LargeGroup group;
  group.ITYPE = type == Type::vortex ? 27 : 2;
  group.KFEM = KFEM;
  group.NSUB = 4;
  group.viv = "\n\n\n";
  group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1, .water = water});
  if (offsets) group.offset(offset);
  group.element({.I = 1, .J = 2, .BUOY = KBUOY, .ECC = offsets ? 1 : 0});
  return group.text();
}

/// A deck of that element between two free nodes; a third one, held, far away.
struct Member {
  std::array<double, 3> I{}, J{};
  WaterCards section = {};
  WaterCard sea = {};
  int KFEM = 1, KBUOY = 1;
  std::array<double, 6> offset = {};  ///< I-X, I-Y, I-Z, J-X, J-Y, J-Z
  bool turned = false;
};
FrameDeck deck_of(Type type, const Member& m) {
  FrameDeck deck;
  deck.node(m.I[0], m.I[1], m.I[2]);
  deck.node(m.J[0], m.J[1], m.J[2]);
  deck.node(0, 99, 0);
  deck.fix(3, "111111");
  if (m.turned) deck.turn(2, {0.6, 0.8, 0}, {0, 0, 1});
  deck.water(m.sea);
  deck.group(group_of(type, m.section, m.KFEM, m.KBUOY, m.offset));
  return deck;
}
/// Reads it; no analysis follows.
void read_model(Type type, const Member& m) {
  const RunResult run = run_static(deck_of(type, m).text());
  EXPECT_EQ(run.status, 0) << run.errors << run.report;
}

constexpr double gamma = 10.05525;
const double Ab = std::numbers::pi / 4.0;  // of diameter 1

// Archimedes: the weight of the water in the wet length, upward, through its middle.
TEST(Buoyancy, OfADrownedMemberIsTheWeightOfItsWaterThroughItsMiddle) {
  for (const Type type : every_type) {
    for (const int KFEM : {0, 1}) {
      read_model(
          type,
          {.I = {0, 0, -10}, .J = {8, 0, -4}, .section = {.D = 1}, .sea = {.weight = gamma, .KBUOY = 1}, .KFEM = KFEM});
      expect_near(resultant_of(patterns.KBUOYV), acting_at({4, 0, -7}, {0, 0, gamma * Ab * 10}), 1e-9);
    }
  }
}

TEST(Buoyancy, OfAMemberThatTheSurfaceCutsIsThatOfItsWetPart) {
  // Wet over two thirds of 10, from end I or from end J.
  const std::array<double, 3> low = {0, 0, -4}, high = {8, 0, 2};
  const Six expected = acting_at({8.0 / 3, 0, -2}, {0, 0, gamma * Ab * 20 / 3});
  for (const Type type : every_type) {
    for (const bool upward : {true, false}) {
      read_model(type, {.I = upward ? low : high,
                        .J = upward ? high : low,
                        .section = {.D = 1},
                        .sea = {.weight = gamma, .KBUOY = 1}});
      expect_near(resultant_of(patterns.KBUOYV), expected, 1e-9);
    }
  }
}

TEST(Buoyancy, NeedsWaterTheGenerationCodeAndTheElementsOwnCode) {
  const Member member{.I = {0, 0, -10}, .J = {8, 0, -4}, .section = {.D = 1}, .sea = {.weight = gamma, .KBUOY = 1}};
  for (const Type type : every_type) {
    Member dry = member;
    dry.sea.level = -11;
    Member without_code = member;
    without_code.sea.KBUOY = 0;
    Member without_own = member;
    without_own.KBUOY = 0;
    for (const Member& m : {dry, without_code, without_own}) {
      read_model(type, m);
      expect_near(resultant_of(patterns.KBUOYV), {}, 0.0);
    }
    // Any code of the element, any code from 1 on of the deck.
    Member other_codes = member;
    other_codes.sea.KBUOY = 2;
    other_codes.KBUOY = -1;
    read_model(type, other_codes);
    EXPECT_NEAR(resultant_of(patterns.KBUOYV)[2], gamma * Ab * 10, 1e-9);
  }
}

TEST(Buoyancy, TakesItsOwnDiameterWhereTheSectionHasOne) {
  for (const Type type : every_type) {
    read_model(type,
               {.I = {0, 0, -10}, .J = {8, 0, -4}, .section = {.D = 1, .Db = 2}, .sea = {.weight = gamma, .KBUOY = 1}});
    EXPECT_NEAR(resultant_of(patterns.KBUOYV)[2], gamma * 4 * Ab * 10, 1e-8);
  }
}

// By pressure integration over sides and caps, I (0,0,-10), J (8,0,-4): gamma Ab = 7.897368, its part normal to the
// member 0.8 of it over 10, half to each end, and 10 and 4 of head on the caps.
TEST(Buoyancy, GivesEachEndItsCapAndItsShareOfTheSide) {
  read_model(Type::linear,
             {.I = {0, 0, -10}, .J = {8, 0, -4}, .section = {.D = 1}, .sea = {.weight = gamma, .KBUOY = 1}});
  const ConstReals vector = pool.reals(patterns.KBUOYV, NEQ1());
  const Six at_I = {44.2253, 0, 72.6558, 0, -52.6492, 0}, at_J = {-44.2253, 0, 6.3179, 0, 52.6492, 0};
  for (int c = 1; c <= 6; ++c) {
    EXPECT_NEAR(vector(equation_of(1, c)), at_I[static_cast<std::size_t>(c - 1)], 6e-5) << c;
    EXPECT_NEAR(vector(equation_of(2, c)), at_J[static_cast<std::size_t>(c - 1)], 6e-5) << c;
  }
  // The record keeps them in local axes: caps and the axial part are axial.
  const LinearBeamRecord beam = linear_record(1);
  EXPECT_NEAR(beam.sea.FBUOY[0], gamma * Ab * 10, 1e-9);
  EXPECT_NEAR(beam.sea.FBUOY[6], -gamma * Ab * 4, 1e-9);
}

// Offsets and local axes of nodes move nothing of the resultant: the member between its ends decides.
TEST(StillWater, KeepsForceAndOverturningWithOffsetsAndTurnedNodes) {
  for (const Type type : {Type::linear, Type::wave, Type::large}) {
    for (const int KFEM : {0, 1}) {
      // Ends at (0,0,-10) and (8,0,-4); the current flows along Y, at 3-4-5 to the member: 0.5 rho D U^2 = 1 over 10.
      read_model(type, {.I = {0.5, 1, -10},
                        .J = {8, -2, -3},
                        .section = {.D = 1, .CD = 1},
                        .sea = {.weight = gamma, .mass = 0.5, .KBUOY = 1, .current = {0, 2, 0}},
                        .KFEM = KFEM,
                        .offset = {-0.5, -1, 0, 0, 2, -1},
                        .turned = true});
      expect_near(resultant_of(patterns.KBUOYV), acting_at({4, 0, -7}, {0, 0, gamma * Ab * 10}), 1e-9);
      // Gauss points in single precision.
      expect_near(resultant_of(patterns.KCURRV), acting_at({4, 0, -7}, {0, 10, 0}), 1e-5);
    }
  }
}

TEST(StaticCurrent, NeedsADiameterAndAnIntegrationPoint) {
  const Member member{.I = {0, 0, -10},
                      .J = {8, 0, -4},
                      .section = {.D = 1, .CD = 1},
                      .sea = {.weight = gamma, .mass = 0.5, .current = {0, 2, 0}},
                      .KBUOY = 0};
  Member thin = member;
  thin.section.D = 0;
  read_model(Type::linear, thin);
  expect_near(resultant_of(patterns.KCURRV), {}, 0.0);
  for (const int points : {0, 1, 5}) {  // of the element; the group has none
    LinearGroup group;
    group.NGAUSS = 0;
    group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .water = member.section});
    group.element({.I = 1, .J = 2, .WAVE = points});
    FrameDeck deck;
    deck.node(0, 0, -10);
    deck.node(8, 0, -4);
    deck.water(member.sea);
    deck.group(group.text());
    EXPECT_EQ(run_static(deck.text()).status, 0);
    EXPECT_NEAR(resultant_of(patterns.KCURRV)[1], points == 0 ? 0.0 : 10.0, 1e-5) << points;
  }
}

/// A cantilever along X of length 4 from node 1, in a current of 3 per unit length along Y, one step of the pattern.
/// 0.5 rho D CD U^2 = 0.5 * 1.5 * 4.
template <class Group>
RunResult run_cantilever(Group group) {
  FrameDeck deck;
  deck.node(0, 0, -20);
  deck.node(4, 0, -20);
  deck.fix(1, "111111");
  deck.water({.weight = 9.81, .mass = 1.5, .current = {0, 2, 0}});
  group.element({.I = 1, .J = 2});
  deck.group(group.text());
  SegmentCards segment = one_step(1e-9);
  segment.generated = {0.0, 0.0, 1.0};
  deck.stat({segment});
  return run_static(deck.text());
}
LinearGroup linear_tube(int KFEM) {
  LinearGroup group;
  group.E = 1e6;
  group.KFEM = KFEM;
  group.NGAUSS = 4;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1, .water = {.D = 1, .CD = 1}});
  return group;
}

/// The free end bears nothing, the held one w L and w L^2/2. Local y is Y, z is Z.
void expect_cantilever(const std::array<double, 12>& found, double tolerance) {
  const std::array<double, 12> expected = {0, -12, 0, 0, 0, -24, 0, 0, 0, 0, 0, 0};
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
}

TEST(ReportedForces, OfACantileverInACurrentAreThoseOfBeamTheory) {
  for (const int KFEM : {0, 1}) {
    EXPECT_EQ(run_cantilever(linear_tube(KFEM)).status, 0);
    EXPECT_EQ(sea_factors.current, 1.0);
    const LinearBeamRecord beam = linear_record(1);
    expect_cantilever(reported_forces(beam.F, beam.sea), 1e-5);
    // The envelope keeps them too.
    EXPECT_NEAR(beam.envelope.forces.smallest[1], -12, 1e-5);
    EXPECT_NEAR(beam.envelope.forces.largest[7], 0, 1e-5);
    EXPECT_NEAR(beam.envelope.forces.smallest[5], -24, 1e-5);
  }
  // The tip goes by w L^4/8EI with the end moments.
  EXPECT_EQ(run_cantilever(linear_tube(1)).status, 0);
  EXPECT_NEAR(moved(2, 2), 3.0 * 256 / 8e6, 1e-10);
}

TEST(ReportedForces, StandOnTheReport) {
  const RunResult run = run_cantilever(linear_tube(1));
  const std::vector<std::string> lines = lines_from(run.report, " NAME            AXIAL", 3);
  ASSERT_EQ(lines.size(), 3u);
  EXPECT_EQ(lines[1].substr(12, 60), "  0.00E+00 -0.12E+02  0.00E+00  0.00E+00  0.00E+00 -0.24E+02");
  EXPECT_EQ(std::stod(lines[2].substr(22, 10)), 0.0) << lines[2];
}

TEST(ReportedForces, OfTheLargeBeamsAreThoseOfBeamTheory) {
  for (const int type : {2, 27}) {
    LargeGroup group;
    group.ITYPE = type;
    group.E = 1e9;
    group.KFEM = 1;
    group.NSUB = 4;
    group.viv = "\n\n\n";
    group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1, .water = {.D = 1, .CD = 1}});
    EXPECT_EQ(run_cantilever(group).status, 0);
    const LargeBeam beam = type == 2 ? large_record(1) : vortex_record(1).beam;
    // The envelope: the first determination came to the end.
    EXPECT_NEAR(beam.envelope.forces.smallest[1], -12, 1e-4);
    EXPECT_NEAR(beam.envelope.forces.smallest[5], -24, 1e-4);
    EXPECT_NEAR(beam.envelope.forces.smallest[7], 0, 1e-4);
    EXPECT_NEAR(beam.envelope.forces.largest[11], 0, 1e-4);
  }
}

// The load keeps its direction while the frame turns: in equilibrium the free end bears nothing, however far it went,
// and the held one the whole load, which acts against X on a member along Y.
TEST(ReportedForces, OfAMemberThatTurnsFollowItsFrame) {
  for (const int KFEM : {0, 1}) {
    FrameDeck deck;
    deck.node(0, 0, -20);
    deck.node(0, 4, -20);
    deck.fix(1, "111111");
    deck.water({.weight = 9.81, .mass = 1.5, .current = {-2, 0, 0}});
    LargeGroup group;
    group.E = 60;
    group.KFEM = KFEM;
    group.NSUB = 4;
    group.section({.A = 100, .IY = 1, .IZ = 1, .J = 1, .water = {.D = 1, .CD = 1}});
    group.element({.I = 1, .J = 2});
    deck.group(group.text());
    SegmentCards segment = steps_of(20, 1e-9);
    segment.generated = {0.0, 0.0, 1.0};
    deck.stat({segment});
    ASSERT_EQ(run_static(deck.text()).status, 0);
    const LargeBeam beam = large_record(1);
    std::array<double, 12> internal{};
    natural_to_local(beam.QNAT, beam.XL, internal);
    const std::array<double, 12> found = reported_forces(internal, beam.sea, beam.TELEM);
    EXPECT_LT(beam.TELEM[0], -0.3);  // sine of its turn
    for (std::size_t i = 6; i < 12; ++i) EXPECT_NEAR(found[i], 0.0, 1e-5) << KFEM << i;
    EXPECT_NEAR(found[0] * beam.TELEM[0] + found[1] * beam.TELEM[3], 12.0, 1e-5);
    EXPECT_NEAR(found[0] * beam.TELEM[1] + found[1] * beam.TELEM[4], 0.0, 1e-5);
  }
}

TEST(ReportedForces, AreTheInternalOnesWithoutTheSea) {
  BeamSea sea{};
  const std::array<double, 12> internal = {1.0 / 3, -0.0, 0.0, 1e300, -1e-300, 5, 6, 7, 8, 9, 10, 11};
  sea_factors = {};
  for (const double wave_factor : {0.0, -2.0}) {  // the second with no loads in the record
    sea_factors.wave = wave_factor;
    const std::array<double, 12> found = reported_forces(internal, sea);
    for (std::size_t i = 0; i < 12; ++i) {
      EXPECT_EQ(found[i], internal[i]) << i;
      if (wave_factor == 0.0) {
        EXPECT_EQ(std::signbit(found[i]), std::signbit(internal[i])) << i;
      }
    }
  }
  for (std::size_t i = 0; i < 12; ++i) sea.FWAVE[i] = sea.FBUOY[i] = sea.FCURR[i] = -1.0 - static_cast<double>(i);
  sea_factors = {.wave = 2.0, .buoyancy = 0.5, .current = -1.0};
  EXPECT_EQ(reported_forces(internal, sea)[5], 5 + 1.5 * 6);
  sea_factors = {};
}

// 0.25 KM D^2 rho pi of the wet length, normal to the member, half to each node.
TEST(AddedMass, IsNormalToTheMemberAndThatOfItsWetLength) {
  const double m = 0.25 * 1.2 * 4 * 1.025 * std::numbers::pi;
  for (const Type type : every_type) {
    // Of 10 along (0.8, 0, 0.6), two thirds are wet.
    read_model(type, {.I = {0, 0, -4}, .J = {8, 0, 2}, .section = {.D = 2, .CKM = 1.2}, .sea = {.mass = 1.025}});
    const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
    const double half = m * 10 / 3;
    const std::array<double, 3> parts = {0.36, 1.0, 0.64};
    for (const int node : {1, 2}) {
      for (int c = 1; c <= 3; ++c) {
        EXPECT_NEAR(AMASS(equation_of(node, c)), half * parts[static_cast<std::size_t>(c - 1)], 1e-12);
      }
      EXPECT_EQ(AMASS(equation_of(node, 4)), 0.0);
    }
  }
}

TEST(AddedMass, SeesTheAxesOfATurnedNode) {
  // Node 2 has local 1 at (0.6, 0.8, 0), local 2 upward; the member stands along that local 1: none along it.
  const double half = 0.5 * 0.25 * 1.2 * 4 * 1.025 * std::numbers::pi * 10;
  read_model(
      Type::linear,
      {.I = {0, 0, -4}, .J = {6, 8, -4}, .section = {.D = 2, .CKM = 1.2}, .sea = {.mass = 1.025}, .turned = true});
  const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
  EXPECT_NEAR(AMASS(equation_of(2, 1)), 0.0, 1e-12);
  EXPECT_NEAR(AMASS(equation_of(2, 2)), half, 1e-12);
  EXPECT_NEAR(AMASS(equation_of(2, 3)), half, 1e-12);
  EXPECT_NEAR(AMASS(equation_of(1, 1)), half * 0.64, 1e-12);
  EXPECT_NEAR(AMASS(equation_of(1, 2)), half * 0.36, 1e-12);
}

TEST(AddedMass, StandsInTheMassSummary) {
  FrameDeck deck =
      deck_of(Type::linear, {.I = {0, 0, -20}, .J = {0, 0, -10}, .section = {.D = 2, .CKM = 1}, .sea = {.mass = 1.0}});
  const RunResult run = run_static(deck.text());
  // pi over 10: 31.416 along X and Y, nothing along Z.
  const std::vector<std::string> lines = lines_from(run.report, "LUMPED MASS SUMMARY", 40);
  std::string text;
  for (const std::string& row : lines) text += row + "\n";
  EXPECT_TRUE(has(text, "        2       0.1571E+02  0.1571E+02  0.0000E+00       0.0000E+00")) << text;
  EXPECT_TRUE(has(text, "            31.416      31.416      0.0000")) << text;
}

}  // namespace
}  // namespace tidearc::test
