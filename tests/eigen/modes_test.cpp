// Frequencies, shapes and forces of springs and masses, whole decks in process, against closed forms.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "spring_deck.h"
#include "support/run_deck.h"
#include "support/scratch.h"
#include "support/truss_deck.h"

namespace tidearc {
namespace {

using namespace test;
using std::numbers::pi;

/// Circular frequency of n masses between walls.
double chain_frequency(int n, int mode, double k, double m) {
  return 2.0 * std::sqrt(k / m) * std::sin(mode * pi / (2.0 * (n + 1)));
}
constexpr double four_digits = 5.1e-4;  // half a unit of the last digit of E10.4, where the mantissa is .1000

TEST(Modes, OfAChainHaveItsFrequenciesAndPeriods) {
  SpringDeck deck = spring_chain(10, 300.0, 2.0);
  deck.want(4);
  deck.eign(1);
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto modes = printed_modes(run.report);
  const auto values = last_values(run.report);
  ASSERT_EQ(modes.size(), 4U);
  ASSERT_EQ(values.size(), 8U) << "the eigenvalues of all vectors are printed";
  for (int i = 1; i <= 4; ++i) {
    const double omega = chain_frequency(10, i, 300.0, 2.0);
    const auto& mode = modes[static_cast<std::size_t>(i - 1)];
    EXPECT_NEAR(mode.circular / omega, 1.0, four_digits);
    EXPECT_NEAR(mode.frequency / (omega / (2 * pi)), 1.0, four_digits);
    EXPECT_NEAR(mode.period / (2 * pi / omega), 1.0, four_digits);
    EXPECT_NEAR(values[static_cast<std::size_t>(i - 1)] / (omega * omega), 1.0, 1e-5);
  }
}

TEST(Modes, AreMassNormalisedWithTheirLargestEntryPositive) {
  SpringDeck deck = spring_chain(5, 1.0, 4.0);
  deck.want(5);
  const RunResult run = run_deck(deck.text());
  const auto modes = printed_modes(run.report);
  ASSERT_EQ(modes.size(), 5U);
  for (int i = 1; i <= 5; ++i) {
    const auto& shape = modes[static_cast<std::size_t>(i - 1)].shape;
    ASSERT_EQ(shape.size(), 7U);
    double largest = 0.0, lowest = 0.0;
    for (const auto& row : shape) {
      largest = std::max(largest, row[0]);
      lowest = std::min(lowest, row[0]);
    }
    EXPECT_GE(largest, -lowest) << i;
    const double sign = shape[1][0] < 0.0 ? -1.0 : 1.0;
    for (int e = 0; e <= 6; ++e) {
      const auto& row = shape[static_cast<std::size_t>(e)];
      const double expected = std::sqrt(2.0 / (6.0 * 4.0)) * std::sin(i * e * pi / 6.0);
      EXPECT_NEAR(sign * row[0], expected, 1e-6) << i << ' ' << e;
      for (std::size_t c = 1; c < 6; ++c) EXPECT_EQ(row[c], 0.0) << "constrained components print 0";
    }
  }
}

TEST(Modes, OfChainsOfAnyLengthHaveTheirLargestEntryPositive) {
  for (int n = 2; n <= 9; ++n) {
    SpringDeck deck = spring_chain(n, 1.0, 4.0);
    deck.want(n);
    for (const PrintedMode& mode : printed_modes(run_deck(deck.text()).report)) {
      double largest = 0.0, lowest = 0.0;
      for (const auto& row : mode.shape) {
        largest = std::max(largest, row[0]);
        lowest = std::min(lowest, row[0]);
      }
      EXPECT_GE(largest, -lowest) << n;
    }
  }
}

TEST(Modes, ComeOutWithElementMassesToo) {
  // A bar of two elements, free to stretch along X: each end node bears half of its elements.
  TrussDeck truss;
  std::string text = spring_chain(1, 50.0, 3.0).text();
  const std::string material = "    1" + ten(1.0) + "\n\n";
  const auto at = text.find(material);
  ASSERT_NE(at, std::string::npos);
  text.replace(at, material.size(), "    1" + ten(1.0) + "\n" + ten(0.2) + "\n");  // mass density
  const auto modes = printed_modes(run_deck(text).report);
  ASSERT_EQ(modes.size(), 1U);
  // areas are 50 and lengths 1: each spring weighs 10 and gives half to the middle
  EXPECT_NEAR(modes[0].circular, std::sqrt(100.0 / 13.0), 1e-3);
}

TEST(Modes, OfMasslessPointsAreLeftOut) {
  SpringDeck deck;
  int last = 0;
  for (int i = 0; i <= 8; ++i) {
    const bool wall = i == 0 || i == 8;
    const int node = deck.point(i, 0, 0, wall ? "111111" : "011111");
    if (i % 2 == 0 && !wall) deck.mass(node, {1.0, 0.0, 0.0});
    if (last > 0) deck.spring(last, node, 2.0);
    last = node;
  }
  deck.want(3);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  ASSERT_EQ(modes.size(), 3U);
  for (int i = 1; i <= 3; ++i)
    EXPECT_NEAR(modes[static_cast<std::size_t>(i - 1)].circular / chain_frequency(3, i, 1.0, 1.0), 1.0, four_digits);
}

TEST(Modes, ThatAreRepeatedComeAsOftenAsTheyAre) {
  SpringDeck deck;
  const int middle = deck.point(0, 0, 0, "000111");
  const int walls[3] = {deck.point(1, 0, 0, "111111"), deck.point(0, 1, 0, "111111"), deck.point(0, 0, 1, "111111")};
  for (const int wall : walls) deck.spring(middle, wall, 9.0);
  deck.mass(middle, 1.0);
  deck.want(3);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  ASSERT_EQ(modes.size(), 3U);
  for (const PrintedMode& mode : modes) EXPECT_EQ(mode.circular, 3.0);
}

TEST(Modes, OfARigidBodyNeedAShift) {
  SpringDeck deck = spring_chain(6, 10.0, 1.0, false);
  deck.want(3);
  const RunResult stopped = run_deck(deck.text());
  EXPECT_EQ(stopped.status, 1);
  EXPECT_NE(stopped.report.find(" SOLUTION TERMINATED IN SUBSP*,\n     RIGID BODY MODE(S) FOUND.\n"),
            std::string::npos);
  EXPECT_NE(stopped.errors.find("rigid body"), std::string::npos);
  EXPECT_EQ(stopped.report.find("STRUCTURE FREQUENCIES"), std::string::npos);

  deck.want(3, 0.0, 0.1);
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const auto modes = printed_modes(run.report);
  ASSERT_EQ(modes.size(), 3U);
  EXPECT_NEAR(modes[0].circular, 0.0, 1e-5);
  for (int i = 1; i <= 2; ++i)
    EXPECT_NEAR(modes[static_cast<std::size_t>(i)].circular / (2 * std::sqrt(10.0) * std::sin(i * pi / 12.0)), 1.0,
                four_digits);
  for (const auto& row : modes[0].shape) EXPECT_NEAR(row[0], 1.0 / std::sqrt(6.0), 1e-5);
}

// Solutions of the first cycle are almost nothing but the motion that the structure hardly resists: a stiff row free
// but for a shift that is small beside its frequencies, and a stiff row on one soft spring.
TEST(Modes, OfAStiffRowThatHardlyStandsAreFound) {
  for (const double k : {1.0E4, 1.0E6, 1.0E8, 1.0E10}) {
    SpringDeck deck = spring_chain(6, k, 1.0, false);
    deck.want(3, 0.0, 1.0E-5 * std::sqrt(k));
    const RunResult run = run_deck(deck.text());
    ASSERT_EQ(run.status, 0) << k << run.errors;
    const auto modes = printed_modes(run.report);
    ASSERT_EQ(modes.size(), 3U) << k;
    EXPECT_NEAR(modes[0].circular / std::sqrt(k), 0.0, 1e-5) << k;
    for (int i = 1; i <= 2; ++i)
      EXPECT_NEAR(modes[static_cast<std::size_t>(i)].circular / (2 * std::sqrt(k) * std::sin(i * pi / 12.0)), 1.0,
                  four_digits)
          << k;
  }
  for (const double ground : {1000.0, 100.0, 10.0}) {
    SpringDeck deck = spring_chain(8, 1.0E8, 1.0, false);
    deck.spring(1, deck.point(0.0, 0.0, 0.0, "111111"), ground);
    deck.want(2);
    const RunResult run = run_deck(deck.text());
    ASSERT_EQ(run.status, 0) << ground << run.errors;
    const auto modes = printed_modes(run.report);
    ASSERT_EQ(modes.size(), 2U) << ground;
    // All masses move as one on the soft spring; the row's own first motion hardly knows of it.
    EXPECT_NEAR(modes[0].circular / std::sqrt(ground / 8.0), 1.0, 1e-3) << ground;
    EXPECT_NEAR(modes[1].circular / (2 * std::sqrt(1.0E8) * std::sin(pi / 16.0)), 1.0, four_digits) << ground;
  }
}

TEST(Modes, AreTheSameWithAShiftAndWithout) {
  SpringDeck deck = spring_chain(20, 100.0, 1.0);
  deck.want(3);
  deck.eign(1, 30);
  const auto plain = last_values(run_deck(deck.text()).report);
  deck.want(3, 0.0, 0.1);
  const std::string report = run_deck(deck.text()).report;
  const auto shifted = last_values(report);
  ASSERT_EQ(plain.size(), 6U);
  ASSERT_EQ(shifted.size(), 6U);
  const double sigma = std::pow(2 * pi * 0.1, 2);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR((shifted[i] + sigma) / plain[i], 1.0, 3e-5) << "cycles tell shifted values";
    EXPECT_NEAR(printed_modes(report)[i].circular / std::sqrt(plain[i]), 1.0, four_digits) << "the table does not";
  }
}

/// RX, RY, MX, MY to rounding.
void expect_cut(const PrintedMode& mode, const std::array<double, 4>& expected, const char* why = "") {
  for (std::size_t c = 0; c < 4; ++c) EXPECT_NEAR(mode.cut[c], expected[c], 1e-12) << c << ' ' << why;
}

/// Masses at heights 1, 2, 3, each on springs of its own: two along X, one along Y.
SpringDeck masts() {
  SpringDeck deck;
  const double stiffness[3] = {4.0, 9.0, 25.0};
  for (int i = 0; i < 3; ++i) {
    const bool along_y = i == 1;
    const int node = deck.point(0, 0, i + 1, along_y ? "101111" : "011111");
    const int wall = along_y ? deck.point(0, -1, i + 1, "111111") : deck.point(-1, 0, i + 1, "111111");
    deck.spring(wall, node, stiffness[i]);
    deck.mass(node, 4.0);
  }
  deck.want(3);
  return deck;
}

TEST(CutForces, SumInertiaForcesAboveTheElevation) {
  SpringDeck deck = masts();
  deck.eign(0, 0, 0, 1.5);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  ASSERT_EQ(modes.size(), 3U);
  // shape 1/sqrt(m) = 0.5, w^2 = k/m: force k/sqrt(m)
  expect_cut(modes[0], {0.0, 0.0, 0.0, 0.0}, "height 1 is below");
  expect_cut(modes[1], {0.0, 4.5, -4.5 * 0.5, 0.0}, "along Y, arm 0.5");
  expect_cut(modes[2], {12.5, 0.0, 0.0, 12.5 * 1.5}, "along X, arm 1.5");
}

TEST(CutForces, LeaveOutANodeAtTheElevation) {
  SpringDeck deck = masts();
  deck.eign(0, 0, 0, 3.0);
  for (const PrintedMode& mode : printed_modes(run_deck(deck.text()).report)) expect_cut(mode, {0.0, 0.0, 0.0, 0.0});
}

TEST(CutForces, TakeTheVerticalFromGravity) {
  SpringDeck deck = masts();
  deck.gravity_card = "   -X";  // heights along X: none of the masses is above 0.5
  deck.eign(0, 0, 0, 0.5);
  for (const PrintedMode& mode : printed_modes(run_deck(deck.text()).report)) expect_cut(mode, {0.0, 0.0, 0.0, 0.0});
  deck.eign(0, 0, 0, -0.5);  // all above; horizontal axes are Y and Z
  const auto modes = printed_modes(run_deck(deck.text()).report);
  expect_cut(modes[1], {4.5, 0.0, 0.0, 2.25});
  expect_cut(modes[0], {0.0, 0.0, 0.0, 0.0}, "a motion along the vertical");
}

TEST(CutForces, CountAMassThatNodesShareOnce) {
  // Two nodes at heights 1 and 2 tied along X: the mass of their equation acts at the first.
  SpringDeck deck;
  const int low = deck.point(0, 0, 1, "011111"), high = deck.point(0, 0, 2, "011111"),
            wall = deck.point(-1, 0, 1, "111111");
  deck.spring(wall, low, 4.0);
  deck.mass(low, 3.0);
  deck.mass(high, 1.0);
  deck.tie(low, high);
  deck.eign(0, 0, 0, 0.0);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  ASSERT_EQ(modes.size(), 1U);
  EXPECT_EQ(modes[0].circular, 1.0);
  expect_cut(modes[0], {2.0, 0.0, 0.0, 2.0}, "force w^2 sqrt(m) = 2 at height 1");
  EXPECT_EQ(modes[0].shape[0], modes[0].shape[1]);
}

TEST(CutForces, AreGlobalWhereANodeHasAxesOfItsOwn) {
  // The node's X axis is the master Y: it moves along its X.
  SpringDeck deck;
  const int node = deck.point(0, 0, 2, "011111"), wall = deck.point(0, -1, 2, "111111");
  deck.spring(wall, node, 4.0);
  deck.mass(node, {4.0, 0.0, 0.0});
  deck.turn(node, {0, 1, 0}, {-1, 0, 0});
  deck.eign(0, 0, 0, 0.5);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  ASSERT_EQ(modes.size(), 1U);
  EXPECT_EQ(modes[0].shape[0][0], 0.5) << "shapes are in the node's axes";
  expect_cut(modes[0], {0.0, 2.0, -3.0, 0.0}, "forces are not: 2 along Y, arm 1.5");
}

TEST(CutForces, CountUpwardAgainstGravity) {
  SpringDeck deck = masts();
  deck.gravity_card = "    Z";  // weight acts along +Z: above means below in Z
  deck.eign(0, 0, 0, 1.5);
  const auto modes = printed_modes(run_deck(deck.text()).report);
  expect_cut(modes[0], {2.0, 0.0, 0.0, -1.0});
  expect_cut(modes[1], {0.0, 0.0, 0.0, 0.0});
}

}  // namespace
}  // namespace tidearc
