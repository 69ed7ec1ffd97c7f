// Whole decks of large displacement beams against closed forms and published or independent figures.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "elements/beam/natural.h"
#include "frame_deck.h"

namespace tidearc::test {
namespace {

void expect_relative(double found, double expected, double tolerance) {
  EXPECT_NEAR(found, expected, tolerance * std::abs(expected));
}

/// A cantilever along x, EI 1, from the origin; EA large against EI.
struct Strip {
  int elements = 20;
  int SD = 2;
  double L = 1.0, EI = 1.0, EA = 1e5;
  int KGE = 0;
};
FrameDeck strip(const Strip& s) {
  FrameDeck deck;
  for (int i = 0; i <= s.elements; ++i) deck.node(s.L * i / s.elements, 0, 0);
  deck.fix(1, "111111");
  LargeGroup group;
  group.E = 1.0;
  group.section({.A = s.EA, .IY = s.EI, .IZ = s.EI, .J = s.EI});
  for (int i = 1; i <= s.elements; ++i) group.element({.I = i, .J = i + 1, .KGE = s.KGE, .SD = s.SD});
  deck.group(group.text());
  return deck;
}

TEST(LargeBeam, IsTheLinearBeamUnderSmallLoads) {
  for (const int SD : {1, 2, 3}) {
    for (std::size_t c = 0; c < 6; ++c) {
      FrameDeck deck = strip({.elements = 2, .SD = SD});
      Load load{};
      load[c] = 1e-7;
      deck.load(3, load);
      deck.stat({one_step(1e-14)});
      EXPECT_EQ(run_static(deck.text()).status, 0);
      const double G = 1.0 / 2.5;
      const double expected[6] = {1e-12, 1e-7 / 3, 1e-7 / 3, 1e-7 / G, 1e-7, 1e-7};
      expect_relative(moved(3, static_cast<int>(c) + 1), expected[c], 1e-6);
    }
  }
}

// The elastica: cantilever under a dead transverse tip load alpha = PL^2/EI. Rows alpha, deflection, shortening,
// rotation by elliptic integrals (K. Mattiasson, Int. J. Numer. Methods Eng. 17 (1981)).
TEST(Elastica, FollowsTheEllipticIntegralsInEveryPlane) {
  const double rows[][4] = {{1, 0.301720774, 0.0564332363, 0.46135195},
                            {5, 0.713791524, 0.387628361, 1.21536812},
                            {10, 0.810609025, 0.554995598, 1.43028554}};
  for (const auto& row : rows) {
    for (const int SD : {2, 3}) {
      for (const bool vertical : {false, true}) {
        FrameDeck deck = strip({.SD = SD});
        const double P = row[0];
        deck.load(21, vertical ? Load{0, 0, P, 0, 0, 0} : Load{0, P, 0, 0, 0, 0});
        deck.stat({steps_of(20)});
        const RunResult run = run_static(deck.text());
        EXPECT_EQ(run.status, 0) << run.progress;
        expect_relative(moved(21, vertical ? 3 : 2), row[1], 0.005);
        expect_relative(-moved(21, 1), row[2], 0.005);
        expect_relative(vertical ? -moved(21, 5) : moved(21, 6), row[3], 0.005);
      }
    }
  }
}

TEST(Elastica, HasTheReactionsOfItsDisplacedLoads) {
  // Dead loads (3, 8, 5) and a moment about X at the tip, wherever it has gone to: forces exactly, moments but for the
  // stretch of the members, which stand on their input length (strains of 1E-4).
  for (const int SD : {2, 3}) {
    FrameDeck deck = strip({.elements = 8, .SD = SD});
    deck.load(9, {3, 8, 5, 0.1, 0, 0});
    deck.stat({steps_of(20, 1e-7)});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << run.progress;
    const LargeBeam beam = large_record(1);
    std::array<double, 12> f;
    natural_to_master(beam.TGLOB, beam.QNAT, f);
    const double x = 1 + moved(9, 1), y = moved(9, 2), z = moved(9, 3);
    EXPECT_GT(y, 0.5);
    const double expected[6] = {3, 8, 5, 0.1 + y * 5 - z * 8, z * 3 - x * 5, x * 8 - y * 3};
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(f[i], -expected[i], 1e-6) << SD;
    for (std::size_t i = 3; i < 6; ++i) EXPECT_NEAR(f[i], -expected[i], 1e-3) << SD;
  }
}

TEST(Elastica, HasTheSameDigitsWhereverItsRecordsLive) {
  std::vector<std::vector<double>> answers;
  for (const char* storage : {" CORE SYMM", " DISK SYMM"}) {
    FrameDeck deck = strip({.elements = 6});
    deck.storage = storage;
    deck.load(7, {0, 2, 1, 0.5, 0, 0});
    deck.stat({steps_of(4)});
    RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << storage << run.errors;
    answers.push_back(run.U);
  }
  EXPECT_EQ(answers[0], answers[1]);
}

/// Tip of a cantilever of 20 elements rolled up by an end moment theta EI/L in `steps` steps; its distance from the
/// circle's tip over L.
double roll_error(int SD, double theta, int steps) {
  FrameDeck deck = strip({.SD = SD, .EA = 1e4});
  deck.load(21, {0, 0, 0, 0, 0, theta});
  deck.stat({steps_of(steps, 1e-7, 60)});
  const RunResult run = run_static(deck.text());
  if (run.status != 0) return 1e9;
  const double x = std::sin(theta) / theta, y = (1 - std::cos(theta)) / theta;
  return std::hypot(1 + moved(21, 1) - x, moved(21, 2) - y);
}

// The circle of radius L/theta. Halving the step halves the error of code 1, and quarters that of codes 2 and 3 until
// the error of twenty straight elements is left (2.3E-4 at a quarter of a circle, of the order (theta/20)^2/24).
TEST(RollUp, TheStartFrameConvergesWithTheFirstPowerOfTheStep) {
  for (const double theta : {std::numbers::pi / 2, std::numbers::pi, 2 * std::numbers::pi}) {
    const double coarse = roll_error(1, theta, 40), fine = roll_error(1, theta, 80);
    EXPECT_NEAR(coarse / fine, 2.0, 0.1) << theta;
  }
  EXPECT_LT(roll_error(1, std::numbers::pi / 2, 80), 0.007);
}

TEST(RollUp, HalfStepsConvergeWithTheSecondPowerOfTheStep) {
  for (const int SD : {2, 3}) {
    const double theta = 2 * std::numbers::pi;
    const double coarse = roll_error(SD, theta, 20), middle = roll_error(SD, theta, 40),
                 fine = roll_error(SD, theta, 80);
    EXPECT_NEAR(coarse / middle, 4.0, 0.1);
    EXPECT_NEAR(middle / fine, 4.0, 0.1);
    EXPECT_LT(middle, 0.0012);
    EXPECT_LT(roll_error(SD, std::numbers::pi, 40), 0.001);
    EXPECT_LT(roll_error(SD, std::numbers::pi / 2, 20), 0.0003);
  }
}

// Williams' toggle (lb, in): half span 12.943, rise 0.386, EA 1884683.7, EI 9274.05732, both ends clamped. Loads at
// crown displacements 0.05, 0.10, 0.15 on the way to the limit load of 33.87: independent co-rotational solver, 20
// elements a leg.
TEST(Toggle, FollowsThePathBelowItsLimit) {
  const double rows[][2] = {{15.1889987, 0.05}, {25.2233453, 0.10}, {31.0204187, 0.15}};
  for (const auto& [P, w] : rows) {
    FrameDeck deck;
    constexpr int legs = 20;
    for (int i = 0; i <= 2 * legs; ++i) {
      const double s = static_cast<double>(i) / legs;
      deck.node(12.943 * s, 0, 0.386 * (s <= 1 ? s : 2 - s));
    }
    deck.fix(1, "111111");
    deck.fix(2 * legs + 1, "111111");
    for (int n = 2; n <= 2 * legs; ++n) deck.fix(n, "010101");
    LargeGroup group;
    group.E = 1.03e7;
    group.section({.A = 0.182979, .IY = 0.000900394, .IZ = 0.000900394, .J = 0.001});
    for (int i = 1; i <= 2 * legs; ++i) group.element({.I = i, .J = i + 1, .SD = 3});
    deck.group(group.text());
    deck.load(legs + 1, {0, 0, -P, 0, 0, 0});
    deck.stat({steps_of(10, 1e-5)});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << run.progress;
    expect_relative(-moved(legs + 1, 3), w, 0.01);
  }
}

/// Negative pivots of the tangent of a straight column, L 5, EI 2.1E6, EA 2.1E9, under the axial force P.
int negative_pivots(double P, int elements, const std::string& foot, const std::string& head) {
  FrameDeck deck;
  for (int i = 0; i <= elements; ++i) deck.node(5.0 * i / elements, 0, 0);
  deck.fix(1, foot);
  deck.fix(elements + 1, head);
  for (int n = 2; n <= elements; ++n) deck.fix(n, "001110");
  LargeGroup group;
  group.E = 2.1e11;
  group.section({.A = 0.01, .IY = 1e-5, .IZ = 1e-5, .J = 1e-5});
  for (int i = 1; i <= elements; ++i) group.element({.I = i, .J = i + 1});
  deck.group(group.text());
  deck.load(elements + 1, {-P, 0, 0, 0, 0, 0});
  SegmentCards to_the_load = one_step(1e-3);
  SegmentCards there = one_step(1e-3);
  there.factors = {1e-9};
  deck.stat({to_the_load, there});
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.progress;
  return progress_rows(run.progress).back().negative;
}

// Loads of the consistent geometric stiffness with 1, 2 and 4 elements from an independent solver; the exact loads of
// pinned-pinned, cantilever, fixed-pinned and fixed-fixed columns are 829046.77, 207261.692, 1696019.55 and 3316187.08.
// One element between clamped ends has no freedom to bend.
TEST(Euler, ANegativePivotAppearsAtTheBucklingLoadOfTheElements) {
  struct Column {
    const char* foot;
    const char* head;
    double load[3];
  };
  const Column columns[] = {{"111110", "011110", {1008000.0, 835283.1, 829471.4}},
                            {"111111", "001110", {208820.8, 207367.8, 207268.5}},
                            {"111111", "011110", {2520000.0, 1739539.0, 1699506.0}},
                            {"111111", "011111", {0.0, 3360000.0, 3341133.0}}};
  const int elements[3] = {1, 2, 4};
  for (const Column& column : columns) {
    for (std::size_t k = 0; k < 3; ++k) {
      if (column.load[k] == 0.0) continue;
      EXPECT_EQ(negative_pivots(0.9995 * column.load[k], elements[k], column.foot, column.head), 0);
      EXPECT_EQ(negative_pivots(1.0015 * column.load[k], elements[k], column.foot, column.head), 1);
    }
  }
}

// Cantilever column with a lateral tip load (AISC Design Guide 25, case 1; kip, in): tip = HL^3/3EI 3(tan 2u -
// 2u)/(8u^3).
TEST(PDelta, AmplifiesTheSwayOfAColumn) {
  const double rows[][2] = {
      {407.369103, 0.439108361}, {1222.10731, 0.563033957}, {2444.21462, 0.981071958}, {2729.37299, 1.18793261}};
  for (const auto& [P, tip] : rows) {
    FrameDeck deck;
    for (int i = 0; i <= 8; ++i) deck.node(0, 0, 24.5 * i);
    deck.fix(1, "111111");
    LargeGroup group;
    group.E = 29500;
    group.section({.A = 51.7, .IY = 2150, .IZ = 2150, .J = 4300});
    for (int i = 1; i <= 8; ++i) group.element({.I = i, .J = i + 1, .SD = 2});
    deck.group(group.text());
    deck.load(9, {10, 0, -P, 0, 0, 0});
    deck.stat({steps_of(4, 1e-6)});
    EXPECT_EQ(run_static(deck.text()).status, 0);
    expect_relative(moved(9, 1), tip, 0.005);
  }
}

TEST(Temperature, LengthensAFreeBarAndPressesAHeldOne) {
  for (const bool held : {false, true}) {
    FrameDeck deck;
    deck.node(0, 0, 0);
    deck.node(2, 0, 0);
    deck.fix(1, "111111");
    deck.fix(2, held ? "100000" : "000000");
    LargeGroup group;
    group.E = 1000;
    group.alpha = 1e-3;
    group.section({.A = 2, .IY = 1, .IZ = 1, .J = 1});
    group.element({.I = 1, .J = 2});
    deck.group(group.text());
    deck.temperature(1, 1, 10);
    deck.load(2, {0, 0, 0, 0, 0, 0});
    SegmentCards segment = one_step(1e-9);
    segment.temperatures = {1.0};
    deck.stat({segment});
    const RunResult run = run_static(deck.text());
    EXPECT_EQ(run.status, 0) << run.progress;
    // Mean temperature 5: strain 0.005, length 2, EA 2000.
    EXPECT_NEAR(moved(2, 1), held ? 0.0 : 0.01, 1e-12);
    EXPECT_NEAR(large_record(1).QNAT[5], held ? -10.0 : 0.0, 1e-9);
    EXPECT_NEAR(large_record(1).P, held ? -10.0 : 0.0, 1e-9);
  }
}

TEST(Pressure, ActsOnTheEffectiveForceAlone) {
  FrameDeck deck;
  deck.node(0, 0, 0);
  deck.node(2, 0, 0);
  deck.fix(1, "111111");
  LargeGroup group;
  group.E = 1000;
  group.poisson = 0.3;
  group.pressure = 5;
  group.section({.A = 2, .IY = 1, .IZ = 1, .J = 1});
  group.element({.I = 1, .J = 2});
  deck.group(group.text());
  deck.load(2, {3, 0, 0, 0, 0, 0});
  deck.stat({one_step(1e-9)});
  EXPECT_EQ(run_static(deck.text()).status, 0);
  EXPECT_NEAR(large_record(1).QNAT[5], 3.0, 1e-9);
  EXPECT_NEAR(large_record(1).P, 3.0 + (1 - 0.6) * 5 * 2, 1e-9);
  EXPECT_EQ(large_record(1).PEND[0], 10.0);
}

TEST(InitialState, TakesForcesDeformationsAndAnAxialForce) {
  const auto record_of = [](int INIT, const std::string& further, double axial, int KGI) {
    LargeGroup group;
    group.E = 1000;
    group.section({.A = 1, .IY = 2, .IZ = 3, .J = 1});
    group.element({.I = 1, .J = 2, .KGI = KGI, .KGE = 1, .axial = axial, .INIT = INIT, .further = further});
    group.element({.I = 2, .J = 3});
    const RunResult run = run_static(unloaded_row_with_held_nodes(group.text()).text());
    EXPECT_EQ(run.status, 0) << run.errors;
    return large_record(1);
  };
  const std::string forces = ten(1) + ten(2) + ten(3) + ten(4) + ten(5) + ten(6) + "\n";
  const std::string deformations = ten(0.001) + ten(0) + ten(0.002) + ten(0) + ten(0.003) + ten(0.004) + "\n";
  const LargeBeam first = record_of(1, forces, 0, 0);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(first.QNAT[i], static_cast<double>(i + 1), 1e-12);
  EXPECT_EQ(first.P, 0.0);
  const LargeBeam second = record_of(2, deformations, 0, 0);
  // 4EI2/L 4000, 2EI2/L 2000, 4EI3/L 6000, 2EI3/L 3000, GJ/L 200, EA/L 500.
  const double expected[6] = {4, 2, 12, 6, 0.6, 2};
  for (std::size_t i = 0; i < 6; ++i) EXPECT_NEAR(second.QNAT[i], expected[i], 1e-12);
  EXPECT_NEAR(second.P, 2.0, 1e-12);
  const LargeBeam both = record_of(3, forces + deformations, 10, 1);
  for (std::size_t i = 0; i < 6; ++i) {
    EXPECT_NEAR(both.QNAT[i], expected[i] + static_cast<double>(i + 1) + (i == 5 ? 10 : 0), 1e-12);
  }
  EXPECT_NEAR(both.P, 12.0, 1e-12);
}

TEST(InitialState, TheFirstMatrixHasTheAxialForceWhereItIsAskedFor) {
  for (const int KGI : {0, 1, 2}) {
    FrameDeck deck;
    deck.node(0, 0, 0);
    deck.node(2, 0, 0);
    deck.fix(1, "111111");
    LargeGroup group;
    group.section({.A = 1, .IY = 1, .IZ = 1, .J = 1});
    group.element({.I = 1, .J = 2, .KGI = KGI, .axial = 12});
    deck.group(group.text());
    EXPECT_EQ(run_static(deck.text()).status, 0);  // no macro: the records are those of input
    EXPECT_EQ(large_record(1).P, KGI == 1 ? 12.0 : 0.0);
    EXPECT_NEAR(large_record(1).QNAT[5], 12.0, 1e-12);
    EXPECT_EQ(large_record(1).head.KSTIF, 1);
  }
}

}  // namespace
}  // namespace tidearc::test
