// Whole decks with records and commands: what is wrong is marked, nothing is analysed, and the cards behind it are met.
#include "row_deck.h"
#include "support/run_deck.h"

namespace tidearc::test {
namespace {

/// A spring of stiffness 100 with mass 1, a force record and a displacement record, and a second macro behind the
/// first.
RowDeck one_spring(const std::string& commands, int initial, int forces, int displacements) {
  RowDeck deck;
  deck.springs = {100.0};
  deck.masses = {1.0};
  deck.NDFRC = deck.NIDSP = 1;
  deck.forces = table_record({{0.0, 1.0}, {10.0, 1.0}}, true);
  deck.displacements = table_record({{0.0, 0.0}, {10.0, 1.0}}, true);
  Dyn2Cards cards;
  cards.DT = 0.01;
  cards.NSTEP = 3;
  cards.NINIT = initial;
  cards.NFORCE = forces;
  cards.NIMPOS = displacements;
  cards.commands = commands;
  deck.dyn2(cards);
  Dyn2Cards second;
  second.DT = 0.02;
  second.NSTEP = 2;
  deck.dyn2(second);
  return deck;
}

void expect_no_analysis(const RunResult& run) {
  EXPECT_EQ(run.status, 3);
  EXPECT_EQ(count_of(run.progress, "DYN2 MACRO NUMBER  1 TERMINATED: FATAL ERRORS ENCOUNTERED IN INPUT CARDS"), 1)
      << run.progress;
  EXPECT_EQ(count_of(run.progress, "DYN2 MACRO NUMBER  2 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO"), 1)
      << run.progress;
  EXPECT_EQ(count_of(run.report, "RESPONSE AT TIME STEP"), 0);
  EXPECT_TRUE(run.ended) << "the cards behind the wrong ones were met";
}

TEST(CommandsInADeck, ThatAreRightAreFollowed) {
  const RunResult run = run_deck(one_spring(initial_card(2, 1.0) + command_card(2, 1), 1, 1, 0).text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(count_of(run.progress, "COMPLETED: MAXIMUM NUMBER OF STEPS REACHED"), 2) << run.progress;
}

TEST(CommandsInADeck, WrongNodeIsMarkedAndNothingIsAnalysed) {
  const RunResult run = run_deck(one_spring(command_card(3, 1), 0, 1, 0).text());
  expect_no_analysis(run);
  EXPECT_EQ(count_of(run.report, "   *    3      X           1"), 1);
  EXPECT_EQ(count_of(run.report, "INCORRECT NODE NUMBER INPUT"), 1);
}

TEST(CommandsInADeck, WrongRecordIsMarkedAndNothingIsAnalysed) {
  const RunResult run = run_deck(one_spring(command_card(2, 2), 0, 0, 1).text());
  expect_no_analysis(run);
  EXPECT_EQ(count_of(run.report, "        2      X    **     2"), 1);
}

TEST(CommandsInADeck, WrongInitialConditionDoesNotLoseTheCommandsBehindIt) {
  const RunResult run = run_deck(
      one_spring("    9       1.0       0.0    2\n" + command_card(3, 1) + command_card(2, 1), 1, 1, 1).text());
  expect_no_analysis(run);
  EXPECT_EQ(count_of(run.report, "ERROR MESSAGES - NONFATAL DATA ERRORS"), 2);
  EXPECT_EQ(count_of(run.report, " IMPOSED DISPLACEMENT SPECIFICATION COMMANDS"), 2);
}

TEST(CommandsInADeck, InADataCheckAreEchoedAndTheEndIsMet) {
  const RunResult run = run_deck(one_spring(initial_card(2, 1.0) + command_card(2, 1), 1, 1, 0).text("CHEC"));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(run.ended);
  EXPECT_EQ(count_of(run.report, "        2      X           1      0.000E+00   0.100E+01"), 1);
  EXPECT_EQ(count_of(run.report, "         X        0.10000E+01    0.00000E+00     2"), 1);
  EXPECT_EQ(count_of(run.report, "INITIAL CONDITIONS FOR DYNAMIC ANALYSIS"), 0);
}

}  // namespace
}  // namespace tidearc::test
