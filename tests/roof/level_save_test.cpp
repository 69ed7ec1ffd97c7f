// Which steps are saved by their level: where it has moved by more than a part of the largest level so far, in
// magnitude, which keeps its sign.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

std::vector<double> saved_levels(const TrussDeck& deck) {
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  std::vector<double> levels;
  std::istringstream lines(run.levels);
  std::string line;
  while (std::getline(lines, line)) {
    int sequence = 0;
    double time = 0.0, level = 0.0;
    if (std::istringstream(line) >> sequence >> time >> level) levels.push_back(level);
  }
  return levels;
}

void expect_levels(const std::vector<double>& levels, const std::vector<double>& expected, double within) {
  ASSERT_EQ(levels.size(), expected.size());
  for (std::size_t i = 0; i < levels.size(); ++i) EXPECT_NEAR(levels[i], expected[i], within) << i;
}

/// A bar of EA/L 100 under 1, in eight steps of 0.00125: a rising or a falling level, an eighth at a time.
TrussDeck eight_steps(double direction, double ULTFAC) {
  TrussDeck deck = loaded_bar(1.0);
  SegmentCards cards;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KDIR = 3;
  cards.vectors = vector_cards(2, 1, direction);
  cards.ARCL = 0.00125;
  cards.STEP0 = 0.125;
  cards.NSTEPS = 8;
  cards.FQUIT = -10.0;
  cards.ULTFAC = ULTFAC;
  deck.stat({cards});
  return deck;
}

TEST(LevelSaves, FollowARisingLevelByPartsOfIt) {
  // Moved since the save before, against 0.3 of the level: 1/8, 1/8 (of 0.075), 1/8 (0.1125), none at 4/8 (0.15), two
  // steps at 5/8, none at 6/8 (0.225) and 7/8 (2/8 against 0.2625), three steps at the end.
  expect_levels(saved_levels(eight_steps(1.0, 0.3)), {0.125, 0.25, 0.375, 0.625, 1.0}, 1e-12);
}

TEST(LevelSaves, TakeEveryStepBelowZero) {
  // The largest level in magnitude is negative there, and any change is above a part of it.
  std::vector<double> every;
  for (int k = 1; k <= 8; ++k) every.push_back(-0.125 * k);
  expect_levels(saved_levels(eight_steps(-1.0, 0.3)), every, 1e-12);
}

TEST(LevelSaves, MeasureAFallingLevelByTheTurningPoint) {
  // The shallow truss in steps of 0.04 over its limit load of 47.99 and down again, until the apex is nearly as low as
  // the other limit: levels of the closed form P(w) = 2 EA (h - w) (1/l - 1/L0), and the rule on them.
  TrussDeck deck = two_bar_truss(100.0);
  SegmentCards cards;
  cards.KSTEP = 2;
  cards.KNMS = 3;
  cards.NSVEC = 1;
  cards.KDIR = 2;
  cards.vectors = vector_cards(2, 3, -1.0);
  cards.STEP0 = 0.04;
  cards.NSTEPS = 18;
  cards.MAXIT = 20;
  cards.KITER = 2;
  cards.KIPAR = 3;
  cards.FQUIT = -10.0;
  cards.ULTFAC = 0.25;
  deck.stat({cards});
  std::vector<double> expected;
  double largest = 0.0, saved = 0.0;
  for (int k = 1; k <= 18; ++k) {
    const double x = 0.5 - 0.04 * k;
    const double level = 2.0e4 * x * (1.0 / std::sqrt(100.0 + x * x) - 1.0 / std::sqrt(100.25));
    largest = std::max(largest, level);
    if (std::abs(level - saved) > 0.25 * largest) expected.push_back(saved = level);
  }
  ASSERT_LT(expected.size(), 12U);
  ASSERT_LT(expected.back(), 0.0) << "down to the other side";
  expect_levels(saved_levels(deck), expected, 1e-6);
}

}  // namespace
}  // namespace tidearc::test
