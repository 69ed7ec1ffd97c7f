// Steps that are cut where a bar yields or unloads. The numbers are those of an independent event-to-event integration
// of the bilinear oscillator: EA/L 100, hardening 0.1, yield force 1, mass 1, force 1.5 from time 0, step 0.1.
#include <gtest/gtest.h>

#include <cmath>

#include "dyn1_deck.h"
#include "elements/contract/event_scan.h"

namespace tidearc::test {
namespace {

Dyn1CardValues steps(int count) {
  Dyn1CardValues cards;
  cards.NSMAX = count;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  return cards;
}

/// One more step, of which only the first substep is allowed: its event stays in event_found.
Dyn1CardValues stopped_behind_an_event() {
  Dyn1CardValues cards = steps(1);
  cards.KSOL = 1;
  cards.NSUBMX = 1;
  cards.DTMIN = -0.1;
  return cards;
}

double factor_of_step(int step, double ALPHA) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues before = steps(step - 1);
  Dyn1CardValues with = stopped_behind_an_event();
  before.ALPHA = with.ALPHA = ALPHA;
  deck.macro(dyn1_text(before) + dyn1_text(with));
  const MacroRun run = run_macros(deck.text());
  EXPECT_NE(run.progress.find(" STEP SIZE BELOW MINIMUM ALLOWABLE"), std::string::npos) << run.progress;
  return run.last().EFAC;
}

struct State {
  double u, v, a, force;
};
void expect_state(const Snapshot& s, double t, const State& expected) {
  EXPECT_NEAR(s.TIME, t, 1E-14);
  EXPECT_NEAR(s.U[0], expected.u, 0.51E-9);
  EXPECT_NEAR(s.VEL[0], expected.v, 0.51E-9);
  EXPECT_NEAR(s.ACC[0], expected.a, 0.51E-9);
  EXPECT_NEAR(s.R[0], expected.force, 0.51E-9);
}

TEST(Dyn1Events, CutTheStepInWhichTheBarYields) {
  EXPECT_NEAR(run_one(bilinear_oscillator(), steps(1)).last().U[0], 0.003, 1E-16);
  const MacroRun run = run_one(bilinear_oscillator(), steps(2));
  ASSERT_EQ(run.status, 0) << run.errors;
  expect_state(run.last(), 0.2, {0.013170732, 0.143414634, 0.468292683, 1.031707317});
  ASSERT_EQ(run.lines.size(), 3U) << run.progress;
  EXPECT_EQ(run.lines[0].type, 1);
  EXPECT_EQ(run.lines[1].type, 3);
  EXPECT_EQ(run.lines[1].substep, 1);
  EXPECT_EQ(run.lines[2].type, 1);
  EXPECT_EQ(run.lines[2].substep, 2);
  EXPECT_EQ(run.lines[2].formations, 2) << "the stiffness of the yielded bar is the second";
  EXPECT_EQ(run.last().logged, 1) << "the bar yields once";
}

TEST(Dyn1Events, TakeThePartOfTheIncrementUpToYield) {
  EXPECT_NEAR(factor_of_step(2, 0.0), 0.729167708, 0.51E-9);
  EXPECT_NEAR(factor_of_step(2, -0.1), 0.636408208, 0.51E-9);
}

TEST(Dyn1Events, CutTheStepInWhichTheBarUnloadsAtItsStart) {
  EXPECT_NEAR(factor_of_step(10, -0.1), 2.7788E-5, 0.51E-9);
}

TEST(Dyn1Events, FollowTheBarThroughYieldingAndUnloading) {
  EXPECT_NEAR(run_one(bilinear_oscillator(), steps(3)).last().U[0], 0.029446758, 0.51E-9);
  const Snapshot s = run_one(bilinear_oscillator(), steps(10)).last();
  EXPECT_NEAR(s.TIME, 1.0, 1E-14);
  EXPECT_NEAR(s.U[0], 0.124580856, 0.51E-9);
  EXPECT_NEAR(s.VEL[0], -0.028119223, 0.51E-9);
  EXPECT_NEAR(s.R[0], 2.145808565, 0.51E-9);
}

// The acceleration is 0 at the start, where the load is 1.5 already: the energy that this first step misses stays.
TEST(Dyn1Events, KeepTheEnergyBalanceThroughEvents) {
  for (const int count : {1, 2, 3, 7, 10})
    EXPECT_NEAR(run_one(bilinear_oscillator(), steps(count)).last().energy.unbalance(), 0.00225, 1E-15) << count;
}

TEST(Dyn1Events, GiveTheStatesOfIteratedConstantSteps) {
  for (const int count : {2, 3, 9, 10}) {
    Dyn1Deck deck = bilinear_oscillator();
    deck.macro(iterated_macro(0.1, count, command_card(2, 1), 0.0, 5));
    const Snapshot constant = run_macros(deck.text()).last();
    const Snapshot variable = run_one(bilinear_oscillator(), steps(count)).last();
    EXPECT_NEAR(constant.U[0], variable.U[0], 1E-12) << count;
    EXPECT_NEAR(constant.VEL[0], variable.VEL[0], 1E-11) << count;
    EXPECT_NEAR(constant.R[0], variable.R[0], 1E-10) << count;
  }
}

TEST(Dyn1Events, StandWithNumericalDissipation) {
  const auto displacement_at = [](int count) {
    Dyn1CardValues cards = steps(count);
    cards.ALPHA = -0.1;
    return run_one(bilinear_oscillator(), cards).last();
  };
  EXPECT_NEAR(displacement_at(2).U[0], 0.014552325, 0.51E-9);
  EXPECT_NEAR(displacement_at(9).U[0], 0.125480502, 0.51E-9);
  EXPECT_NEAR(displacement_at(10).U[0], 0.125189944, 0.51E-9);
  EXPECT_NEAR(displacement_at(10).R[0], 2.125749147, 0.51E-9);
}

// Increment 0.0096, limit 0.002, no yield.
TEST(Dyn1Events, CutAnIncrementThatIsTooLarge) {
  Dyn1Deck deck;
  deck.bar(100.0, 1.0);
  deck.force_record({{0.0, 1.5}, {100.0, 1.5}});
  Dyn1CardValues second = stopped_behind_an_event();
  second.EVMAX = 0.002;
  deck.macro(dyn1_text(steps(1)) + dyn1_text(second));
  EXPECT_NEAR(run_macros(deck.text()).last().EFAC, 0.208333333, 0.51E-9);
}

TEST(Dyn1Events, OfTheLimitLeaveALinearStructureAsItIs) {
  Dyn1Deck deck;
  deck.bar(100.0, 1.0);
  deck.force_record({{0.0, 1.5}, {100.0, 1.5}});
  Dyn1CardValues limited = steps(5);
  limited.EVMAX = 0.002;
  const MacroRun free = run_one(deck, steps(5));
  const MacroRun cut = run_one(deck, limited);
  EXPECT_GT(cut.lines.size(), free.lines.size());
  EXPECT_EQ(cut.lines.back().formations, 1) << "nothing has changed stiffness";
  EXPECT_NEAR(cut.last().U[0], free.last().U[0], 1E-15);
  EXPECT_NEAR(cut.last().VEL[0], free.last().VEL[0], 1E-14);
}

// A limit of 1E-6 would cut the first increment of 0.003 into 3000 substeps: each takes the limit.
TEST(Dyn1Events, StopBeingLookedForAfterAThousand) {
  Dyn1CardValues cards = steps(1);
  cards.EVMAX = 1.0E-6;
  const MacroRun run = run_one(bilinear_oscillator(), cards);
  ASSERT_EQ(run.lines.size(), 1001U);
  EXPECT_EQ(run.lines[999].type, 3);
  EXPECT_EQ(run.lines[1000].type, 1);
  EXPECT_NEAR(run.lines[999].time, 0.1, 1E-12);
  EXPECT_NEAR(run.last().U[0], 0.003, 1E-12);
}

// Three bars that yield and unload, in five steps one behind the other: a bar that yields lets another one unload that
// had been yielding in the substeps before, so each substep has to begin with the states that the one before has left.
// From an independent event-to-event integration of this row.
TEST(Dyn1Events, CarryStatesFromSubstepToSubstep) {
  Dyn1Deck deck;
  deck.bar(300.0, 2.1, 0.05, 1.5);
  deck.bar(900.0, 1.0, 0.1, 1.9);
  deck.bar(800.0, 2.6, 0.02, 3.7);
  deck.force_record({{0.0, 5.0}, {0.55, 5.0}, {0.56, -5.0}, {100.0, -5.0}});
  Dyn1CardValues cards;
  cards.NSMAX = 12;
  cards.NFORCE = 1;
  cards.commands = command_card(4, 1);
  const Snapshot s = run_one(deck, cards).last();
  const std::vector<double> expected{0.0338418139291, 0.017135294179, 0.0118759030376};
  ASSERT_EQ(s.U.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(s.U[i], expected[i], 2E-6) << "overshoot at events";
}

// The support moves by 0.1 per second and its motion is not spoilt by the event in the bar that it pulls.
TEST(Dyn1Events, LeaveASupportOnItsRecord) {
  Dyn1Deck deck;
  deck.bar(600.0, 0.0, 0.1, 0.3);
  deck.bar(400.0, 1.0, 0.1, 1.0);
  deck.displacement_record({{0.0, 0.0}, {100.0, 10.0}});
  Dyn1CardValues cards;
  cards.DT = 0.05;
  cards.NSMAX = 10;
  cards.NIMPOSED = 1;
  cards.commands = command_card(2, 1);
  const MacroRun run = run_one(deck, cards);
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_GT(run.lines.size(), 10U);
  EXPECT_NEAR(run.last().U[0], 0.05, 1E-15);
  EXPECT_NEAR(run.last().VEL[0], 0.1, 1E-14);
  EXPECT_EQ(run.last().ACC[0], 0.0);
  EXPECT_NEAR(run.last().energy.unbalance(), 0.0, 1E-12);
}

}  // namespace
}  // namespace tidearc::test
