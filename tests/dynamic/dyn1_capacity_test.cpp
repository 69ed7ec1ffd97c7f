// Load levels that rise whenever the structure has come to rest, up to the level at which it no longer does.
#include <gtest/gtest.h>

#include <cmath>

#include "dyn1_deck.h"
#include "run_deck.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

Dyn1CardValues search(int count, double PRECF, double PRECMX) {
  Dyn1CardValues cards;
  cards.KSOL = 3;
  cards.NSMAX = count;
  cards.PRECF = PRECF;
  cards.PRECMX = PRECMX;
  return cards;
}

TEST(Dyn1Capacity, RaisesTheLevelOfAStructureAtRestStepByStep) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  const MacroRun run = run_one(deck, search(50, 0.25, 1.0));
  ASSERT_EQ(run.lines.size(), 4U);
  for (std::size_t i = 0; i < 4; ++i) EXPECT_EQ(run.lines[i].level, 0.25 * static_cast<double>(i + 1));
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 COMPLETED: MAXIMUM ULT LOAD LEVEL REACHED\n"));
  EXPECT_EQ(run.last().level, 1.0);
}

TEST(Dyn1Capacity, GoesOnFromTheLevelReachedWithANegativeFactor) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  deck.macro(dyn1_text(search(2, 0.25, 5.0)) + dyn1_text(search(2, -0.5, 5.0)) + dyn1_text(search(1, 0.25, 5.0)));
  const MacroRun run = run_macros(deck.text());
  EXPECT_EQ(run.behind[0].level, 0.5);
  EXPECT_EQ(run.behind[1].level, 1.5);
  EXPECT_EQ(run.behind[2].level, 0.25) << "a positive factor begins at 0";
}

TEST(Dyn1Capacity, WithoutAFactorIsAtFullLevelForLaterMacrosToo) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  deck.macro(dyn1_text(search(1, 0.0, 0.0)) + dyn1_text(search(1, -0.5, 5.0)));
  const MacroRun run = run_macros(deck.text());
  EXPECT_EQ(run.behind[0].level, 1.0);
  EXPECT_EQ(run.behind[1].level, 1.5);
}

/// A bar that yields at 1 and hardens, under a force of 1 times the level. Damped, so that it comes to rest.
Dyn1Deck loaded_bar_of_yield(double ratio) {
  Dyn1Deck deck;
  deck.bar(100.0, 1.0, ratio, 1.0);
  deck.force_record({{0.0, 1.0}, {1000.0, 1.0}});
  return deck;
}

Dyn1CardValues loaded_search(int KSOL, double PRECF, double PRECMX) {
  Dyn1CardValues cards = search(4000, PRECF, PRECMX);
  cards.KSOL = KSOL;
  cards.DT = 0.05;
  cards.DMASS = 15.0;  // nearly critical
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  cards.DISMAX = 0.2;
  return cards;
}

TEST(Dyn1Capacity, ScalesTheLoadsByTheLevel) {
  Dyn1CardValues cards = loaded_search(3, 0.2, 0.6);
  cards.VCUT = 1.0E-7;
  const MacroRun run = run_one(loaded_bar_of_yield(0.0), cards);
  ASSERT_TRUE(has(run.progress, " MAXIMUM ULT LOAD LEVEL REACHED")) << run.progress;
  EXPECT_NEAR(run.last().level, 0.6, 1E-15);
  EXPECT_NEAR(run.last().U[0], 0.006, 1E-7) << "static displacement at that level";
  EXPECT_NEAR(run.lines.back().applied, 0.6, 0.0005);
}

// Plastic collapse at a force of 1: the levels 0.3, 0.6, 0.9 come to rest, 1.2 does not and runs into the limit.
TEST(Dyn1Capacity, EndsWhereTheStructureNoLongerComesToRest) {
  for (const int KSOL : {1, 3}) {
    const MacroRun run = run_one(loaded_bar_of_yield(1.0E-6), loaded_search(KSOL, 0.3, 5.0));
    EXPECT_TRUE(has(run.progress, " COMPLETED: EXCEEDING MAXIMUM DISPLACEMENT LIMIT")) << KSOL << run.progress;
    EXPECT_NEAR(run.last().level, 1.2, 1E-12) << KSOL;
    EXPECT_GT(run.last().U[0], 0.2);
  }
}

TEST(Dyn1Capacity, DoesNotScaleSupportsThatMove) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  deck.displacement_record({{0.0, 0.0}, {10.0, 1.0}});
  Dyn1CardValues cards = search(1, 0.25, 5.0);
  cards.NIMPOSED = 1;
  cards.commands = command_card(2, 1);
  const MacroRun run = run_one(deck, cards);
  EXPECT_EQ(run.last().level, 0.25);
  EXPECT_NEAR(run.last().U[0], 0.01, 1E-16);
  EXPECT_EQ(run.lines[0].node, 0) << "and they count as at rest";
  EXPECT_NEAR(run.lines[0].displacement, 0.01, 1E-9);
}

TEST(Dyn1Capacity, DoesNotRaiseTheLevelWhileTheStructureMoves) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  Dyn1CardValues cards = search(5, 0.25, 5.0);
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  EXPECT_EQ(run_one(deck, cards).last().level, 0.0);
}

TEST(Dyn1Capacity, StaysAtItsLevelWhenAStepIsGivenUp) {
  Dyn1CardValues cards = loaded_search(3, 0.5, 5.0);
  cards.NSMAX = 1;
  Dyn1CardValues second = loaded_search(3, -0.25, 5.0);
  second.VCUT = 1.0E9;
  second.ERRUP = 1.0E-9;
  second.DTMIN = -0.05;
  Dyn1Deck deck = loaded_bar_of_yield(0.0);
  deck.macro(dyn1_text(cards) + dyn1_text(second));
  const MacroRun run = run_macros(deck.text());
  ASSERT_TRUE(has(run.progress, " STEP SIZE BELOW MINIMUM ALLOWABLE")) << run.progress;
  EXPECT_EQ(run.lines.back().level, 0.75) << "the level of the attempt";
  EXPECT_EQ(run.last().level, 0.5);
  EXPECT_TRUE(has(run.levels, " 5.000000000000000E-01 ")) << run.levels;
}

TEST(Dyn1Capacity, OfAProblemDoesNotDependOnHowTheOneBeforeEnded) {
  Dyn1CardValues refused = loaded_search(3, 0.5, 5.0);
  refused.ERRUP = 1.0E-9;
  refused.DTMIN = -0.05;
  Dyn1Deck first = loaded_bar_of_yield(0.0), second = loaded_bar_of_yield(0.0);
  first.macro(dyn1_text(refused));
  Dyn1CardValues search = loaded_search(3, 0.25, 5.0);
  search.NSMAX = 1;
  second.macro(dyn1_text(search));
  const std::string text = first.text();
  const RunResult run = run_deck(text.substr(0, text.rfind(" STOP")) + second.text());
  EXPECT_EQ(count_of(run.progress, " MAXIMUM NUMBER OF STEPS REACHED"), 1);
  EXPECT_TRUE(has(run.levels, " 0.000000000000000E+00 ")) << "the state before the step that was given up";
  EXPECT_TRUE(has(run.progress, "\n1      1  1    1    1    0.0500  0.0500 .250E+00 ")) << run.progress;
}

// The step is refused until it is short enough; the level has risen in its first attempt alone.
TEST(Dyn1Capacity, RaisesTheLevelOnceInAStepThatIsTakenAnew) {
  Dyn1CardValues cards = loaded_search(3, 0.5, 5.0);
  cards.NSMAX = 1;
  cards.DT = 0.2;
  cards.ERRUP = 0.1;
  cards.ERRLO = 0.01;
  const MacroRun run = run_one(loaded_bar_of_yield(0.0), cards);
  ASSERT_GT(run.lines.size(), 1U);
  EXPECT_EQ(run.last().level, 0.5);
  EXPECT_EQ(run.lines.back().formations, static_cast<int>(run.lines.size())) << "the matrix is built anew each time";
}

}  // namespace
}  // namespace tidearc::test
