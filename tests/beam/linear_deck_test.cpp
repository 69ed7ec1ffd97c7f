// Whole decks of linear beams against closed forms and published or independent figures.
#include <gtest/gtest.h>

#include <array>
#include <cmath>

#include "frame_deck.h"

namespace tidearc::test {
namespace {

using Vector3 = std::array<double, 3>;

double dot(const Vector3& a, const Vector3& b) { return a[0] * b[0] + a[1] * b[1] + a[2] * b[2]; }

/// Displacement (or rotation, first = 4) of a node along a direction.
double along(int node, const Vector3& direction, int first = 1) {
  return dot({moved(node, first), moved(node, first + 1), moved(node, first + 2)}, direction);
}
Load force(const Vector3& d, double P) { return {P * d[0], P * d[1], P * d[2], 0, 0, 0}; }
Load moment(const Vector3& d, double M) { return {0, 0, 0, M * d[0], M * d[1], M * d[2]}; }

void expect_relative(double found, double expected, double tolerance) {
  EXPECT_NEAR(found, expected, tolerance * std::abs(expected));
}

/// A tubular cantilever (N, m) from the origin along x, with two normals.
struct Cantilever {
  Vector3 x, y, z;
  std::string KDEF = "";
  bool shear = false;
  int elements = 1;
};
constexpr double E = 2.1e11, nu = 0.3, L = 6.0;

FrameDeck deck_of(const Cantilever& c) {
  FrameDeck deck;
  for (int i = 0; i <= c.elements; ++i) {
    const double s = L * i / c.elements;
    deck.node(c.x[0] * s, c.x[1] * s, c.x[2] * s);
  }
  deck.fix(1, "111111");
  LinearGroup group;
  group.E = E;
  group.poisson = nu;
  group.KDEF = c.KDEF;
  group.section({.OD = 0.5, .t = 0.02, .AS3 = c.shear ? 0.0151227868 : 0.0});
  for (int i = 1; i <= c.elements; ++i) group.element({.I = i, .J = i + 1});
  deck.group(group.text());
  return deck;
}

RunResult run_under(const Cantilever& c, const Load& load) {
  FrameDeck deck = deck_of(c);
  deck.load(c.elements + 1, load);
  deck.stat({one_step()});
  RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  return run;
}

const double r14 = std::sqrt(14.0), r5 = std::sqrt(5.0), r70 = std::sqrt(70.0);
/// Along the axes, and along (1,2,3)/sqrt(14).
std::vector<Cantilever> cantilevers() {
  std::vector<Cantilever> list;
  for (const char* KDEF : {"", "SACS", "sacs", "STRUD", "strud"}) {
    list.push_back({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, KDEF});
    list.push_back({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}, KDEF});
    list.push_back({{0, 0, 1}, {1, 0, 0}, {0, 1, 0}, KDEF});
    list.push_back({{0, 0, -1}, {1, 0, 0}, {0, -1, 0}, KDEF});
    list.push_back({{1 / r14, 2 / r14, 3 / r14}, {-2 / r5, 1 / r5, 0}, {-3 / r70, -6 / r70, 5 / r70}, KDEF});
  }
  list.push_back({{0, 0, 1}, {1, 0, 0}, {0, 1, 0}, "", false, 4});
  return list;
}

// Closed forms PL/EA, PL^3/3EI, PL^2/2EI, TL/GJ, ML^2/2EI, ML/EI of the tube 0.5 by 0.02.
TEST(Cantilever, TakesEveryTipActionInEveryDirection) {
  for (const Cantilever& c : cantilevers()) {
    const int tip = c.elements + 1;
    run_under(c, force(c.x, 1e6));
    expect_relative(along(tip, c.x), 0.000947350852, 1e-7);
    run_under(c, moment(c.x, 1e5));
    expect_relative(along(tip, c.x, 4), 0.00426882533, 1e-7);
    for (const auto& [a, b, sign] : {std::tuple{c.y, c.z, 1.0}, std::tuple{c.z, c.y, -1.0}}) {
      run_under(c, force(a, 1e5));
      expect_relative(along(tip, a), 0.0394045415, 1e-7);
      expect_relative(along(tip, b, 4), sign * 0.00985113537, 1e-7);
      // A card holds the skew tip to 1E-8.
      EXPECT_NEAR(along(tip, b), 0.0, 1e-9);
      EXPECT_NEAR(along(tip, c.x), 0.0, 1e-9);
      run_under(c, moment(b, 1e5));
      expect_relative(along(tip, a), sign * 0.00985113537, 1e-7);
      expect_relative(along(tip, b, 4), 0.00328371179, 1e-7);
    }
  }
}

TEST(Cantilever, IsMoreFlexibleWithAShearAreaOnTheAxisOfTheLoad) {
  for (const int elements : {1, 3}) {
    const Cantilever c{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, "", true, elements};
    run_under(c, force(c.z, 1e5));  // shear area on axis 3
    expect_relative(along(elements + 1, c.z), 0.0398957586, 1e-7);
    run_under(c, force(c.y, 1e5));  // none on axis 2
    expect_relative(along(elements + 1, c.y), 0.0394045415, 1e-7);
  }
}

TEST(Cantilever, TwoBeamsOfATubeBendAsOne) {
  // Two-beam tubular cantilever: OD 1.0, t 0.025, L 10, Fx 2E6 at the top; closed form with shear area 0.038329659, as
  // in the public verification of a substructure program (static displacements 0.112183398 and 0.355110726).
  FrameDeck deck;
  for (const double z : {0.0, 5.0, 10.0}) deck.node(0, 0, z);
  deck.fix(1, "111111");
  LinearGroup group;
  group.E = 2.1e11;
  group.poisson = 0.3;
  group.section({.OD = 1.0, .t = 0.025, .AS3 = 0.038329659});
  group.element({.I = 1, .J = 2, .K = 0});
  group.element({.I = 2, .J = 3});
  deck.group(group.text());
  deck.load(3, {0, 2e6, 0, 0, 0, 0});  // y is axis 3 of a vertical member
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  expect_relative(moved(2, 2), 0.112183398, 1e-7);
  expect_relative(moved(3, 2), 0.355110726, 1e-7);
}

TEST(Cantilever, EndForcesHoldTheLoadAndTheReactions) {
  const Cantilever c{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
  run_under(c, {1e4, 2e4, 3e4, 4e4, 5e4, 6e4});
  const LinearBeamRecord beam = linear_record(1);
  const double J[6] = {1e4, 2e4, 3e4, 4e4, 5e4, 6e4};
  // At I: the opposite forces, and moments about I: r x F with r = (6, 0, 0).
  const double I[6] = {-1e4, -2e4, -3e4, -4e4, -(5e4 - 6 * 3e4), -(6e4 + 6 * 2e4)};
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_NEAR(beam.F[i], I[i], 1e-6) << i;
    EXPECT_NEAR(beam.F[i + 6], J[i], 1e-6) << i;
  }
}

TEST(SectionAxes, InertiaAbout3ActsInThePlaneOf1And2) {
  // I3 1.0E-4, I2 2.5E-5; axis 2 by a third node above the member.
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(4, 0, 0);
  deck.node(1, 0, 3);
  deck.fix(1, "111111");
  deck.fix(3, "111111");
  LinearGroup group;
  group.E = 2e11;
  group.section({.A = 0.01, .J = 1e-5, .I3 = 1e-4, .I2 = 2e-5});
  group.element({.I = 1, .J = 2, .K = 3});
  deck.group(group.text());
  deck.load(2, {0, 1e3, 1e3, 0, 0, 0});
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  expect_relative(moved(2, 3), 1e3 * 64 / (3 * 2e11 * 1e-4), 1e-9);
  expect_relative(moved(2, 2), 1e3 * 64 / (3 * 2e11 * 2e-5), 1e-9);
  EXPECT_EQ(linear_record(1).KNODE, 3);
}

/// A beam along x of length 10 and EI 1000, EA 1E4, held at both ends, with a node in its middle.
struct SpanEnds {
  int HI = 0, HJ = 0;  ///< hinges at the outer ends
  int MI = 0, MJ = 0;  ///< on both sides of the middle
};
double middle_deflection(const SpanEnds& ends, int component) {
  FrameDeck deck;
  for (const double x : {0.0, 5.0, 10.0}) deck.node(x, 0, 0);
  deck.fix(1, "111111");
  deck.fix(3, "111111");
  LinearGroup group;
  group.E = 1000;
  group.section({.A = 10, .J = 1, .I3 = 1, .I2 = 1});
  group.element({.I = 1, .J = 2, .HI = ends.HI, .HJ = ends.MI});
  group.element({.I = 2, .J = 3, .HI = ends.MJ, .HJ = ends.HJ});
  deck.group(group.text());
  Load load{};
  load[static_cast<std::size_t>(component - 1)] = 1.0;
  deck.load(2, load);
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  return moved(2, component);
}

// Central load on a span L with EI: clamped PL^3/192EI, propped 7PL^3/768EI, pinned PL^3/48EI; with a hinge in the
// middle two cantilevers P(L/2)^3/6EI.
TEST(Hinges, AtTheOuterEndsMakeProppedAndPinnedSpans) {
  const double unit = 1e3 / 1000;
  expect_relative(middle_deflection({}, 2), unit / 192, 1e-9);
  expect_relative(middle_deflection({1, 0}, 2), 7 * unit / 768, 1e-9);
  expect_relative(middle_deflection({0, 1}, 2), 7 * unit / 768, 1e-9);
  expect_relative(middle_deflection({1, 1}, 2), unit / 48, 1e-9);
  expect_relative(middle_deflection({10, 10}, 2), unit / 192, 1e-9);  // about axis 2: the other plane
  expect_relative(middle_deflection({10, 10}, 3), unit / 48, 1e-9);
  expect_relative(middle_deflection({11, 11}, 3), unit / 48, 1e-9);
}

TEST(Hinges, InTheMiddleMakeTwoCantilevers) {
  expect_relative(middle_deflection({0, 0, 1, 0}, 2), 1e3 / 1000 / 48, 1e-9);
  expect_relative(middle_deflection({0, 0, 10, 0}, 3), 1e3 / 1000 / 48, 1e-9);
}

TEST(Hinges, BearNothingOfWhatTheyRelease) {
  // One digit at one end: the force that it names is zero there, all other end forces of the first member are not.
  const std::size_t freedom[4] = {5, 4, 3, 0};
  for (const bool J : {false, true}) {
    int code = 1;
    for (const std::size_t released : freedom) {
      FrameDeck deck;
      for (const double x : {0.0, 5.0, 10.0}) deck.node(x, 0, 0);
      deck.fix(1, "111111");
      deck.fix(3, "111111");
      LinearGroup group;
      group.section({.A = 10, .J = 1, .I3 = 1, .I2 = 1});
      group.element({.I = 1, .J = 2, .HI = J ? 0 : code, .HJ = J ? code : 0});
      group.element({.I = 2, .J = 3});
      deck.group(group.text());
      deck.load(2, {1, 2, 3, 4, 5, 6});
      deck.stat({one_step()});
      EXPECT_EQ(run_static(deck.text()).status, 0);
      const LinearBeamRecord beam = linear_record(1);
      const bool both_ends = released == 0 || released == 3;  // nothing along the member bears it on
      for (std::size_t i = 0; i < 12; ++i) {
        const bool none = i == released + (J ? 6 : 0) || (both_ends && i % 6 == released);
        if (none) {
          EXPECT_EQ(beam.F[i], 0.0) << code << ' ' << i;
        } else {
          EXPECT_GT(std::abs(beam.F[i]), 1e-3) << code << ' ' << i;
        }
      }
      code *= 10;
    }
  }
}

TEST(Hinges, ReleaseTorsionAndAxialForce) {
  const double G = 400, EA = 1e4;
  expect_relative(middle_deflection({}, 4), 5 / (2 * G), 1e-9);
  expect_relative(middle_deflection({100, 0}, 4), 5 / G, 1e-9);
  expect_relative(middle_deflection({}, 1), 5 / (2 * EA), 1e-9);
  expect_relative(middle_deflection({0, 1000}, 1), 5 / EA, 1e-9);
}

TEST(Offsets, ARigidArmTurnsAForceIntoAMoment) {
  // A cantilever whose end I stands 1 above the base and whose tip node stands 0.5 beside end J.
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(4, 0.5, 1);
  deck.fix(1, "111111");
  LinearGroup group;
  group.E = 1000;
  group.section({.A = 10, .J = 2, .I3 = 1, .I2 = 1});
  group.offset({0, 0, 1, 0, -0.5, 0});
  group.element({.I = 1, .J = 2, .ECC = 1});
  deck.group(group.text());
  deck.load(2, {0, 0, 1, 0, 0, 0});
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  const LinearBeamRecord beam = linear_record(1);
  EXPECT_DOUBLE_EQ(beam.XL, 4.0);
  // Torque 0.5 on the member (e x F with e = (0, -0.5, 0), taken back), tip: 64/3EI + 0.5^2 L/GJ.
  EXPECT_NEAR(beam.F[9], 0.5, 1e-12);
  EXPECT_NEAR(beam.F[8], 1.0, 1e-12);
  expect_relative(moved(2, 3), 64.0 / 3000 + 0.25 * 4 / 800, 1e-9);
  expect_relative(moved(2, 4), 0.5 * 4 / 800, 1e-9);
}

TEST(Portal, SwaysAsTheFormulaAndAnIndependentSolutionSay) {
  // Fixed-base portal, columns 4, beam 6, EI 2E7, 50E3 at node 2. Inextensible (EA 2E13 here): Kleinlogel, base moments
  // 60000, sway 0.0106666667. EA 2E9: independent solver.
  for (const bool stiff : {true, false}) {
    FrameDeck deck;
    deck.node(0, 0, 0);
    deck.node(0, 4, 0);
    deck.node(6, 4, 0);
    deck.node(6, 0, 0);
    for (const int n : {1, 4}) deck.fix(n, "111111");
    for (const int n : {2, 3}) deck.fix(n, "001110");
    LinearGroup group;
    group.E = 2e7;
    group.section({.A = stiff ? 1e6 : 100.0, .J = 1, .I3 = 1, .I2 = 1});
    for (int i = 1; i <= 3; ++i) group.element({.I = i, .J = i + 1});
    deck.group(group.text());
    deck.load(2, {50e3, 0, 0, 0, 0, 0});
    deck.stat({one_step(stiff ? 0.1 : 1e-6)});  // EA/L of 1E13 leaves that much of rounding
    EXPECT_EQ(run_static(deck.text()).status, 0);
    if (stiff) {
      expect_relative(moved(2, 1), 0.0106666667, 1e-5);
      EXPECT_NEAR(std::abs(linear_record(1).F[4] + linear_record(1).F[5]), 60000, 0.6);
      EXPECT_NEAR(std::abs(linear_record(1).F[10] + linear_record(1).F[11]), 40000, 0.6);
    } else {
      expect_relative(moved(2, 1), 0.0107182842, 1e-7);
      expect_relative(moved(3, 1), 0.0106434683, 1e-7);
      EXPECT_NEAR(linear_record(1).F[0], 13321.492 * -1, 1e-2);
      EXPECT_NEAR(std::hypot(linear_record(1).F[1], linear_record(1).F[2]), 25061.3724, 1e-3);
      EXPECT_NEAR(std::abs(linear_record(1).F[4] + linear_record(1).F[5]), 60210.8737, 1e-3);
      EXPECT_NEAR(std::abs(linear_record(3).F[10] + linear_record(3).F[11]), 59860.1743, 1e-3);
    }
  }
}

TEST(Grillage, SharesTheLoadOfItsCrossing) {
  // Two simply supported beams crossing at midspan: EI 3E7, L 8 and EI 1E7, L 5, 1E5 downward: P = k1 + k2 with
  // k = 48EI/L^3.
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(-4, 0, 0);
  deck.node(4, 0, 0);
  deck.node(0, -2.5, 0);
  deck.node(0, 2.5, 0);
  for (const int n : {2, 3}) deck.fix(n, "111100");
  for (const int n : {4, 5}) deck.fix(n, "111010");
  LinearGroup group;
  group.E = 1e7;
  group.section({.A = 1, .J = 1, .I3 = 3, .I2 = 3});
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  group.element({.I = 2, .J = 1, .SEC = 1});
  group.element({.I = 1, .J = 3, .SEC = 1});
  group.element({.I = 4, .J = 1, .SEC = 2});
  group.element({.I = 1, .J = 5, .SEC = 2});
  deck.group(group.text());
  deck.load(1, {0, 0, -1e5, 0, 0, 0});
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  expect_relative(moved(1, 3), -0.0150319429, 1e-7);
  EXPECT_NEAR(2 * std::abs(linear_record(1).F[8]), 42277.3393, 1e-3);
  EXPECT_NEAR(2 * std::abs(linear_record(3).F[8]), 57722.6607, 1e-3);
  EXPECT_NEAR(std::abs(linear_record(1).F[10]), 84554.6787, 1e-3);
  EXPECT_NEAR(std::abs(linear_record(3).F[10]), 72153.3258, 1e-3);
}

TEST(InitialState, ForcesAndDisplacementsAddToTheTotals) {
  // Both ends held: what the cards give stands unchanged; displacements give K u too.
  LinearGroup group;
  group.E = 1000;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  std::string forces(20, ' '), displacements(20, ' ');
  for (int k = 1; k <= 12; ++k) {
    forces += ten(k);
    displacements += ten(k == 8 ? 0.25 : 0.0);  // axial of J
  }
  group.element({.I = 1, .J = 2, .axial = 7.0, .INIT = 1, .further = forces + "\n" + displacements + "\n"});
  group.element({.I = 2, .J = 3});
  const RunResult run = run_static(unloaded_row_with_held_nodes(group.text()).text());
  EXPECT_EQ(run.status, 0) << run.errors;
  const LinearBeamRecord beam = linear_record(1);
  // Card order: moments about 2 at I and J, about 3, torsion, axial, shear 2, shear 3. EA/L 500 times 0.25 is 125.
  const double expected[12] = {7 - 7 - 125, 9, 11, 5, 1, 3, 8 + 7 + 125, 10, 12, 6, 2, 4};
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(beam.F[i], expected[i], 1e-12) << i;
  EXPECT_EQ(beam.U[6], 0.25);
}

TEST(InitialState, AnAxialForceActsInTheFirstUnbalance) {
  // Two bars in a row between held ends, the first with initial tension 6: the middle node moves to where both bear 3.
  FrameDeck deck;
  for (const double x : {0.0, 2.0, 4.0}) deck.node(x, 0, 0);
  deck.fix(1, "111111");
  deck.fix(3, "111111");
  LinearGroup group;
  group.E = 1000;
  group.section({.A = 1, .J = 1, .I3 = 1, .I2 = 1});
  group.element({.I = 1, .J = 2, .axial = 6.0});
  group.element({.I = 2, .J = 3});
  deck.group(group.text());
  deck.load(2, {0, 0, 0, 0, 0, 0});
  deck.stat({one_step()});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  EXPECT_NEAR(moved(2, 1), -6.0 / 1000, 1e-12);
  EXPECT_NEAR(linear_record(1).F[6], 3.0, 1e-10);
  EXPECT_NEAR(linear_record(2).F[6], 3.0, 1e-10);
}

TEST(GeometryCode, AddsTheTermsOfTheInitialAxialForceAlone) {
  // A cantilever, tip load 1, EI 1000, L 10, P -12: end bending 4EI/L + PL/7.5 and 2EI/L - PL/30, the tip by inverting
  // [2(own+other)/L^2, -(own+other)/L; .., own].
  const double EI = 1000, span = 10, P = -12;
  const auto tip = [&](int GEOM) {
    FrameDeck deck;
    deck.node(0, 0, 0);
    deck.node(span, 0, 0);
    deck.fix(1, "111111");
    LinearGroup group;
    group.E = EI;
    group.section({.A = 1000, .J = 1, .I3 = 1, .I2 = 1});
    group.element({.I = 1, .J = 2, .GEOM = GEOM, .axial = P});
    deck.group(group.text());
    deck.load(2, {0, 1, 0, 0, 0, 0});
    deck.stat({one_step()});
    EXPECT_EQ(run_static(deck.text()).status, 0);
    return moved(2, 2);
  };
  const double own = 4 * EI / span + P * span / 7.5, other = 2 * EI / span - P * span / 30;
  const double a = 2 * (own + other) / (span * span), b = -(own + other) / span;
  expect_relative(tip(1), own / (a * own - b * b), 1e-9);
  expect_relative(tip(0), 1e3 / (3 * EI), 1e-9);
  expect_relative(tip(2), 1e3 / (3 * EI), 1e-9);
}

}  // namespace
}  // namespace tidearc::test
