// Steps that are chosen by their error: midstep residual and local error, and what the unbalance adds.
//
// The oscillator of mass 4, EA/L 400 and initial velocity 1 has the circular frequency 10; without damping and without
// load its midstep residual is K a DT^2/8, with the constant acceleration of the step. The sequences of steps are those
// of an independent computation by these formulas.
#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <utility>
#include <vector>

#include "dyn1_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

Dyn1Deck oscillator() {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  return deck;
}

Dyn1CardValues chosen_steps(int KSOL, int count) {
  Dyn1CardValues cards;
  cards.KSOL = KSOL;
  cards.DT = 0.02;
  cards.DTMIN = 1.0E-4;
  cards.DTMAX = 0.32;
  cards.ERRUP = 0.05;
  cards.ERRLO = 0.03;
  cards.NSMAX = count;
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  return cards;
}

Dyn1CardValues going_on(Dyn1CardValues cards) {
  cards.NINIT = 0;
  cards.commands = "";
  return cards;
}

TEST(Dyn1Midstep, ErrorShrinksAndGrowsTheStep) {
  const MacroRun run = run_one(oscillator(), chosen_steps(3, 6));
  ASSERT_EQ(run.status, 0) << run.errors;
  struct Expected {
    int type;
    double time, ERR;
  };
  const std::vector<Expected> expected{{1, 0.02, 0.019801980}, {4, 0.04, 0.058621704}, {1, 0.03, 0.012320683},
                                       {2, 0.04, 0.017086552}, {4, 0.06, 0.095206515}, {1, 0.05, 0.021681981},
                                       {2, 0.06, 0.026061131}, {4, 0.08, 0.128002036}, {1, 0.07, 0.030180320}};
  ASSERT_EQ(run.lines.size(), expected.size()) << run.progress;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(run.lines[i].type, expected[i].type) << i;
    EXPECT_NEAR(run.lines[i].time, expected[i].time, 1E-12) << i;
    EXPECT_NEAR(run.lines[i].ERR, expected[i].ERR, 0.51E-3 * std::pow(10.0, std::ceil(std::log10(expected[i].ERR))))
        << i;
  }
}

TEST(Dyn1Midstep, ErrorOfAcceptedStepsHasAllItsDigits) {
  const std::vector<double> expected{0.019801980, 0.012320683, 0.017086552, 0.021681981, 0.026061131, 0.030180320};
  for (std::size_t i = 0; i < expected.size(); ++i)
    EXPECT_NEAR(run_one(oscillator(), chosen_steps(3, static_cast<int>(i) + 1)).last().ERR, expected[i], 0.51E-9) << i;
}

// The macro goes on with the step that is refused and is not allowed a smaller one.
TEST(Dyn1Midstep, ErrorOfRefusedStepsHasAllItsDigits) {
  const std::vector<std::pair<int, double>> refused{{1, 0.058621704}, {3, 0.095206515}, {5, 0.128002036}};
  for (const auto& [before, ERR] : refused) {
    Dyn1Deck deck = oscillator();
    const Dyn1CardValues first = chosen_steps(3, before);
    Dyn1CardValues second = going_on(first);
    second.DTMIN = -0.02;
    deck.macro(dyn1_text(first) + dyn1_text(second));
    EXPECT_NEAR(run_macros(deck.text()).last().ERR, ERR, 0.51E-9) << before;
  }
}

// e = P_m - (P_n + P')/2 + K a DT^2/8 with a = 2 (d/DT - v)/DT, for a load that is not linear over the step.
TEST(Dyn1Midstep, ErrorSeesALoadInTheMiddleOfTheStep) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  deck.force_record({{0.0, 0.0}, {0.01, 3.0}, {0.02, 1.0}, {100.0, 1.0}});
  Dyn1CardValues cards = chosen_steps(3, 1);
  cards.NFORCE = 1;
  cards.ERRUP = 1.0E10;
  cards.ERRLO = 0.0;
  cards.commands += command_card(2, 1);
  const Snapshot s = run_one(deck, cards).last();
  const double acceleration = 2.0 * (s.U[0] / 0.02 - 1.0) / 0.02;
  EXPECT_NEAR(s.ERR, std::abs(3.0 - 0.5 * (0.0 + 1.0) + 400.0 * acceleration * 0.0004 / 8.0), 1E-12);
}

// Velocity and displacement in the middle of the step with constant acceleration, by hand: R_m = K (v DT/2 + a DT^2/8),
// damping BETAO K v_m, masses M (a + DMASS v_m).
TEST(Dyn1Midstep, ErrorContainsAllDampingForces) {
  Dyn1Deck deck = oscillator();
  deck.BETAO = 0.01;
  Dyn1CardValues cards = chosen_steps(3, 1);
  cards.DMASS = 0.3;
  cards.ERRUP = 1.0E10;
  cards.ERRLO = 0.0;
  const Snapshot s = run_one(deck, cards).last();
  const double a = 2.0 * (s.U[0] / 0.02 - 1.0) / 0.02;
  const double v = 1.0 + a * 0.01;
  const double u = 0.01 + a * 0.0004 / 8.0;
  EXPECT_NEAR(s.ERR, std::abs(400.0 * u + 4.0 * v + 4.0 * (a + 0.3 * v)), 1E-12);
}

// The bilinear oscillator of the event tests, second step with its event: the error of the last substep is that of the
// whole increment, from the start of the step, where the bar is elastic.
TEST(Dyn1Midstep, ErrorBehindAnEventIsThatOfTheWholeIncrement) {
  Dyn1CardValues cards;
  cards.KSOL = 1;
  cards.NSMAX = 1;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  Dyn1Deck deck = bilinear_oscillator();
  deck.macro(dyn1_text(cards) + dyn1_text(cards));
  const MacroRun run = run_macros(deck.text());
  ASSERT_EQ(run.lines.size(), 3U);
  const Snapshot& start = run.behind[0];
  const Snapshot& end = run.behind[1];
  const double d = end.U[0] - start.U[0];
  const double v = start.VEL[0];
  const double force = 100.0 * (start.U[0] + (d + v * 0.1) / 4.0);
  EXPECT_NEAR(end.ERR, std::abs(1.5 - force - 2.0 * (d / 0.1 - v) / 0.1), 1E-12);
}

// From rest, at half the load: e = 0.5 P - K d/4 - M 2 d/DT^2.
TEST(Dyn1Midstep, ErrorHasTheLoadAtItsLevel) {
  Dyn1CardValues cards;
  cards.KSOL = 3;
  cards.NSMAX = 1;
  cards.PRECF = 0.5;
  cards.PRECMX = 9.0;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  Dyn1Deck deck;
  deck.bar(100.0, 1.0);
  deck.force_record({{0.0, 3.0}, {100.0, 3.0}});
  const Snapshot s = run_one(deck, cards).last();
  EXPECT_NEAR(s.ERR, std::abs(1.5 - 25.0 * s.U[0] - 200.0 * s.U[0]), 1E-12);
}

TEST(Dyn1Midstep, ErrorIsNoneAtASupportThatMoves) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  deck.displacement_record({{0.0, 0.0}, {1.0, 5.0}});
  Dyn1CardValues cards = chosen_steps(3, 2);
  cards.NINIT = 0;
  cards.NIMPOSED = 1;
  cards.commands = command_card(2, 1);
  const MacroRun run = run_one(deck, cards);
  EXPECT_EQ(run.last().ERR, 0.0);
  EXPECT_NEAR(run.last().U[0], 0.2, 1E-15);
}

// The second step has an event and two substeps, but counts as one step of low error.
TEST(Dyn1Midstep, ErrorCountsAStepWithEventsOnce) {
  Dyn1CardValues cards;
  cards.KSOL = 1;
  cards.NSMAX = 4;
  cards.ERRLO = 1.0E9;
  cards.NBELOW = 4;
  cards.DTMAX = 1.0;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  Dyn1Deck deck = bilinear_oscillator();
  deck.macro(dyn1_text(cards) + dyn1_text(cards));
  const MacroRun run = run_macros(deck.text());
  std::vector<int> types;
  for (const Dyn1Line& line : run.lines)
    if (line.type < 3) types.push_back(line.type);
  EXPECT_EQ(types, (std::vector<int>{1, 1, 1, 2, 1, 1, 1, 2})) << "each macro counts from nothing";
}

// A bilinear oscillator (EA/L 100, hardening 0.1, yield force 1, mass 1, force 1.5) without scan for events: what is
// left out of balance goes into the acceleration, or not.
MacroRun without_events(int count, int KACC) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues cards;
  cards.KSOL = 3;
  cards.KACC = KACC;
  cards.NSMAX = count;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  return run_one(deck, cards);
}

TEST(Dyn1AccelerationCorrection, PutsTheUnbalanceIntoTheAcceleration) {
  const Snapshot s = without_events(2, 0).last();
  EXPECT_NEAR(s.U[0], 0.0126, 1E-12);
  EXPECT_NEAR(s.R[0], 1.026, 1E-12);
  EXPECT_NEAR(s.UB, 0.234, 1E-12);
  EXPECT_NEAR(s.ACC[0], 0.474, 1E-12);
  EXPECT_NEAR(without_events(3, 0).last().U[0], 0.027790244, 0.51E-9);
}

TEST(Dyn1AccelerationCorrection, MayBeSuppressed) {
  const Snapshot s = without_events(2, 1).last();
  EXPECT_NEAR(s.UB, 0.234, 1E-12);
  EXPECT_NEAR(s.ACC[0], 0.240, 1E-12);
  EXPECT_NEAR(without_events(3, 1).last().U[0], 0.027219512, 0.51E-9);
}

TEST(Dyn1AccelerationCorrection, ChangesNothingWhereTheStructureIsLinear) {
  Dyn1CardValues cards = chosen_steps(3, 5);
  cards.ERRUP = 1.0E10;
  const Snapshot corrected = run_one(oscillator(), cards).last();
  cards.KACC = 1;
  const Snapshot as_it_is = run_one(oscillator(), cards).last();
  EXPECT_NEAR(corrected.ACC[0], as_it_is.ACC[0], 1E-11);
  EXPECT_NEAR(corrected.U[0], as_it_is.U[0], 1E-15);
}

Dyn1CardValues local_steps(int count, double ERRUP, double ERRLO) {
  Dyn1CardValues cards = chosen_steps(4, count);
  cards.REDF = cards.INCF = 0.0;
  cards.ERRUP = ERRUP;
  cards.ERRLO = ERRLO;
  return cards;
}

TEST(Dyn1LocalError, IsTheChangeOfAccelerationTimesItsScale) {
  const std::vector<double> expected{6.600660066E-5, 6.339247786E-5, 5.826776188E-5};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const MacroRun run = run_one(oscillator(), local_steps(static_cast<int>(i) + 1, 1.0E-4, 1.0E-5));
    EXPECT_NEAR(run.last().ERR, expected[i], 0.51E-14) << i;
    EXPECT_NEAR(run.last().TIME, 0.02 * static_cast<double>(i + 1), 1E-15);
  }
}

TEST(Dyn1LocalError, ChoosesASmallerStepByItsCubeRoot) {
  const MacroRun run = run_one(oscillator(), local_steps(1, 1.0E-5, 1.0E-6));
  ASSERT_GE(run.lines.size(), 2U);
  EXPECT_EQ(run.lines[0].type, 4);
  EXPECT_NEAR(run.lines[0].DT, 0.02, 1E-4);
  EXPECT_NEAR(run.last().TIME, 0.00726386126, 0.51E-11) << "the first step starts anew";
}

TEST(Dyn1LocalError, DoesNotSeeEquationsWithoutMass) {
  Dyn1Deck deck;
  deck.bar(600.0, 0.0);
  deck.bar(400.0, 1.0);
  Dyn1CardValues cards = local_steps(3, 1.0E10, 0.0);
  cards.commands = initial_card(3, 1.0);
  // The node between the springs has no mass: an oscillator of 240 on mass 1.
  Dyn1Deck one;
  one.bar(240.0, 1.0);
  Dyn1CardValues same = cards;
  same.commands = initial_card(2, 1.0);
  EXPECT_NEAR(run_one(deck, cards).last().ERR, run_one(one, same).last().ERR, 1E-12);
}

// From rest the change of acceleration is the acceleration at the end: ERR = (1/4 - 1/6) DT^2 sqrt(a2^2 + a3^2).
TEST(Dyn1LocalError, IsAEuclideanNorm) {
  Dyn1Deck deck;
  deck.bar(600.0, 2.0);
  deck.bar(400.0, 1.0);
  Dyn1CardValues cards = local_steps(1, 1.0E10, 0.0);
  cards.commands = initial_card(3, 1.0);
  const Snapshot s = run_one(deck, cards).last();
  EXPECT_NE(s.ACC[0], 0.0);
  EXPECT_NEAR(s.ERR, 0.0004 / 12.0 * std::hypot(s.ACC[0], s.ACC[1]), 1E-14);
}

/// The oscillator with a rotational mass of 2 at its node that nothing holds, turned by a moment of 5 from 0.02 s on
/// and thrown with an angular acceleration of 3.
MacroRun run_with_rotation(int KMOMENT) {
  Dyn1CardValues cards = local_steps(1, 1.0E10, 0.0);
  cards.KMOMENT = KMOMENT;
  cards.NFORCE = 1;
  cards.commands = "    6" + ten(0.0) + ten(3.0) + "    2\n    1    6" + ten(0.0) + ten(1.0) + "    2\n";
  Dyn1Deck deck = oscillator();
  deck.force_record({{0.0, 0.0}, {0.015, 0.0}, {0.02, 5.0}, {9.0, 5.0}});
  deck.macro(dyn1_text(cards));
  std::string text = deck.text();
  const std::string code = "    2    011111", mass = "    2" + ten(4.0);
  text.replace(text.find(code), code.size(), "    2    011110");
  text.replace(text.find(mass), mass.size(), mass + ten(0.0) + ten(0.0) + ten(0.0) + ten(0.0) + ten(2.0));
  return run_macros(text);
}

// From 3 to 5/2 in the first step.
TEST(Dyn1LocalError, HasRotationsWhenTheyAreAskedFor) {
  EXPECT_EQ(run_with_rotation(0).last().ERR, 0.0);
  EXPECT_NEAR(run_with_rotation(1).last().ERR, 0.5 * 0.0004 / 12.0, 1E-15);
}

TEST(Dyn1Norms, HaveMomentsWhenTheyAreAskedFor) {
  EXPECT_EQ(run_with_rotation(0).lines.at(0).applied, 0.0);
  EXPECT_EQ(run_with_rotation(1).lines.at(0).applied, 5.0);
}

TEST(Dyn1Unbalance, AboveItsUpperToleranceShortensTheNextStepAlone) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues cards;
  cards.KSOL = 3;
  cards.NSMAX = 3;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  cards.UBUP = 0.2;
  const MacroRun run = run_one(deck, cards);
  ASSERT_EQ(run.lines.size(), 3U);
  EXPECT_NEAR(run.lines[1].time, 0.2, 1E-12) << "unbalance 0.234";
  EXPECT_EQ(run.lines[1].type, 1) << "its line type stays";
  EXPECT_NEAR(run.lines[1].DT, 0.05, 1E-12) << "the line shows the step that comes";
  EXPECT_NEAR(run.lines[2].time, 0.25, 1E-12);
}

TEST(Dyn1Unbalance, BelowItsLowerToleranceLengthensTheNextStepOnceMore) {
  Dyn1CardValues cards = chosen_steps(3, 2);
  cards.ERRUP = 1.0E10;
  cards.ERRLO = 1.0E9;
  cards.NBELOW = 1;
  cards.UBLO = 1.0;
  const MacroRun run = run_one(oscillator(), cards);
  ASSERT_EQ(run.lines.size(), 2U);
  EXPECT_EQ(run.lines[0].type, 2);
  EXPECT_NEAR(run.lines[0].DT, 0.08, 1E-12) << "twice by the error, twice by the unbalance";
  EXPECT_NEAR(run.lines[1].time, 0.10, 1E-12);
}

TEST(Dyn1Unbalance, DoesNotTouchConstantSteps) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues cards;
  cards.NSMAX = 4;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  cards.UBUP = 0.0011;
  cards.UBLO = 1.0E9;
  EXPECT_NEAR(run_one(deck, cards).last().TIME, 0.4, 1E-14);
}

}  // namespace
}  // namespace tidearc::test
