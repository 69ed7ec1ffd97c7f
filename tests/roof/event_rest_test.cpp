// What is left of a step behind an event: of displacement steps against the load, and of bars whose length first falls
// and then grows.
#include <gtest/gtest.h>

#include <cmath>
#include <sstream>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

std::vector<double> event_factors(const std::string& report) {
  std::vector<double> factors;
  for (const std::string& line : lines_of(report))
    if (line.find("EVENT PREDICTED, EVENT FACTOR =") != std::string::npos)
      factors.push_back(std::stod(line.substr(36, 10)));
  return factors;
}

// ------------------------------------------------------------------------------------------- steps against the load

/// One or two bars of EA/L 100 side by side, hardening 0.1; the first yields at extension 0.01, the second at 0.015.
/// Node 2 is pulled by 3 at full level.
TrussDeck side_by_side(int bars) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000, 0.1, 1, 1);
  deck.material(1000, 0.1, 1.5, 1.5);
  deck.section(1);
  for (int k = 1; k <= bars; ++k) deck.bar(1, 2, k);
  deck.pattern(2, 3.0, 0, 0);
  return deck;
}
/// Force of these bars at an extension of 0.02.
double force_at_end(int bars) { return 1.0 + 10.0 * 0.01 + (bars == 2 ? 1.5 + 10.0 * 0.005 : 0.0); }

/// One step of 0.02 along or against the load; the sign of the vector's scale alone must not matter.
SegmentCards directed_step(int KNMS, double direction, double scale) {
  SegmentCards cards;
  cards.KSTEP = 2;
  cards.KNMS = KNMS;
  cards.STEP0 = 0.02;
  cards.KEVENT = 1;
  cards.FQUIT = -10.0;
  cards.KDIR = 3;
  if (KNMS == 1) cards.ARCL = 0.02;
  if (KNMS == 2) cards.SEGVAL = 1.0;
  if (KNMS == 3) {
    cards.NSVEC = 1;
    cards.vectors = vector_cards(2, 1, 1.0, scale);
  }
  cards.vectors += vector_cards(2, 1, direction);
  return cards;
}

void expect_whole_step(const SegmentCards& cards, int bars, double direction) {
  TrussDeck deck = side_by_side(bars);
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(event_factors(run.report).size(), static_cast<std::size_t>(bars));
  EXPECT_NEAR(run.U.at(0), 0.02 * direction, 1e-9);
  EXPECT_NEAR(run.accumulated, direction * force_at_end(bars) / 3.0, 1e-6);
  EXPECT_EQ(progress_rows(run.progress).back().iteration, 1);
}

TEST(RestOfAStep, IsWhatTheEventsHaveLeftAlongTheLoadAndAgainstIt) {
  for (const int KNMS : {1, 2, 3}) {
    for (const double direction : {1.0, -1.0}) {
      for (const int bars : {1, 2}) {
        SCOPED_TRACE(std::to_string(KNMS) + " " + std::to_string(direction) + " " + std::to_string(bars));
        expect_whole_step(directed_step(KNMS, direction, 1.0), bars, direction);
      }
    }
  }
}

TEST(RestOfAStep, OfAVectorWithANegativeScaleToo) {
  for (const double direction : {1.0, -1.0}) expect_whole_step(directed_step(3, direction, -1.0), 2, direction);
}

TEST(RestOfAStep, OfTheVectorThatBecomesCriticalBehindAnEvent) {
  // Node 3 hangs on node 2 by a bar of EA/L 25. Vector 1 measures node 2, vector 2 node 3 at a quarter. While bar 1 is
  // elastic a unit of load moves node 2 by 0.01 and node 3 by 0.05; behind its yield, by 0.1 and 0.14: vector 1 is
  // critical then, and node 2 stops at 0.02 wherever the sign leads.
  for (const double direction : {1.0, -1.0}) {
    TrussDeck deck = nodes_in_a_row(20.0);
    deck.material(1000, 0.1, 1, 1);
    deck.material(250);
    deck.section(1);
    deck.bar(1, 2, 1);
    deck.bar(2, 3, 2);
    deck.pattern(3, 3.0, 0, 0);
    SegmentCards cards = directed_step(3, direction, 1.0);
    cards.NSVEC = 2;
    cards.vectors = vector_cards(2, 1, 1.0, 1.0) + vector_cards(3, 1, 1.0, 4.0) + vector_cards(2, 1, direction);
    deck.stat({cards});
    const RunResult run = run_static(deck.text());
    ASSERT_EQ(run.status, 0) << run.errors;
    EXPECT_NE(run.report.find("CRITICAL VECTOR =    2"), std::string::npos);
    EXPECT_NE(run.report.find("CRITICAL VECTOR =    1"), std::string::npos);
    EXPECT_NEAR(run.U.at(0), 0.02 * direction, 1e-9);
  }
}

// ------------------------------------------------------------------------------------------- bars that follow nodes

/// A bar of EA 1000, hardening 0.1 and yield force 10 from the origin to a node at (10, 0, 1), which two patterns of
/// displacements lead: back along X by 0.5, then across the axis of the bar to Z = -3.
TrussDeck led_bar() {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 1);
  deck.fix(1, "111111");
  deck.fix(2, "010111");
  deck.material(1000, 0.1, 10, 10);
  deck.section(1);
  deck.bar(1, 2, 1, 1, 1);
  deck.prescribe(2, 1, -0.5);
  deck.prescribe(2, 3, -4.0);
  return deck;
}

/// Lengths of that bar at its corners and its laws: first branch SK1 with yield force 9, second SK2.
const double L0 = std::sqrt(101.0), L1 = std::hypot(9.5, 1.0), L2 = std::hypot(9.5, 3.0);

SegmentCards led(double along, double across) {
  SegmentCards cards;
  cards.factors = {};
  cards.pfactors = {along, across};
  cards.KEVENT = 1;
  cards.MAXIT = 2;
  return cards;
}

TEST(EventsOfBarsThatTurn, DoNotStandStillWhereTheBarFirstGoesTheOtherWay) {
  // Shortened by 0.4975 the bar has yielded; across the axis it is shorter still at first, and as long again at half of
  // the way. There it unloads, and yields in tension when it is 18 / SK1 longer.
  TrussDeck deck = led_bar();
  deck.stat({led(1.0, 0.0), led(0.0, 1.0)});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  const std::vector<double> factors = event_factors(run.report);
  ASSERT_EQ(factors.size(), 3U) << "yields, unloads, yields: each of them once";
  EXPECT_NEAR(factors[1], 0.5, 1e-6) << "unloads";
  EXPECT_NEAR(run.U.at(0), -0.5, 1e-14);
  EXPECT_NEAR(run.U.at(1), -4.0, 1e-14);
  const TrussRow bar = truss_rows(run.report).at(0);
  EXPECT_EQ(bar.code, 1);
  EXPECT_NEAR(bar.force, 9.0 + 100.0 / L0 * (L2 - L0), 1e-3);
  // Plastic in compression from the yield at 9 / SK1 to L1, in tension from 18 / SK1 behind it to L2.
  const double elastic = 9.0 / (900.0 / L0);
  EXPECT_NEAR(bar.negative, L1 - L0 + elastic, 2e-5);
  EXPECT_NEAR(bar.positive, L2 - L1 - 2.0 * elastic, 2e-5);
}

TEST(EventsOfBarsThatTurn, AreTheSameInEveryStorageScheme) {
  TrussDeck deck = led_bar();
  deck.stat({led(1.0, 0.0), led(0.0, 1.0)});
  std::string on_disk = deck.text();
  const std::size_t storage = on_disk.find("\n\n\n\n");  // behind the title: the third of the blank cards
  ASSERT_NE(storage, std::string::npos);
  on_disk.replace(storage, 4, "\n\n\n DISK SYMM         0\n");
  EXPECT_EQ(event_factors(run_static(on_disk).report), event_factors(run_static(deck.text()).report));
}

TEST(EventsOfBarsThatTurn, EndOneYieldOfAShallowTrussWithFewOfThem) {
  // Under 40 downwards the bars of this truss, which turn, yield in compression; they shorten, and a shortening bar is
  // never short of its bound: one event for each bar.
  TrussDeck deck = two_bar_truss(40.0, 0.0, 0.9, 450.0);
  SegmentCards cards;
  cards.KEVENT = 1;
  cards.MAXIT = 20;
  deck.stat({cards});
  const RunResult run = run_static(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_LE(event_factors(run.report).size(), 4U);
}

}  // namespace
}  // namespace tidearc::test
