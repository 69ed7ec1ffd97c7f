// A static macro behind a dynamic one: equations that displacement records had moved are free again, with the unbalance
// of the state at hand.
#include <gtest/gtest.h>

#include "dynamic_run.h"
#include "row_deck.h"
#include "support/truss_deck.h"

namespace tidearc::test {
namespace {

/// Springs of 100 and 50 in a row with masses of 1; a record moves the last node to 0.3 in ten steps. The static load
/// of 2 on that node is applied by the macros behind them.
RowDeck moved_row() {
  RowDeck deck;
  deck.springs = {100.0, 50.0};
  deck.masses = {1.0, 1.0};
  deck.NIDSP = 1;
  deck.displacements = table_record({{0.0, 0.0}, {0.1, 0.3}, {10.0, 0.3}}, true);
  deck.static_card = "    1    0    0    0    0    0    0    0";
  deck.patterns = "    1LOAD\n    3       2.0\n";
  Dyn2Cards cards;
  cards.DT = 0.01;
  cards.NSTEP = 10;
  cards.NIMPOS = 1;
  cards.commands = command_card(3, 1);
  deck.dyn2(cards);
  return deck;
}

/// One step of one iteration, which ends the macro as terminated when it leaves an unbalance.
SegmentCards single_solve() {
  SegmentCards cards;
  cards.MAXIT = 1;
  cards.TOLU = 1e-9;
  cards.KPRINT = 0;
  return cards;
}

void add_static(RowDeck& deck, const SegmentCards& cards) {
  deck.macros += "STAT    BEHIND IT\n    1   ONE SEGMENT\n" + segment_text(cards);
}

TEST(StaticBehindDynamic, TakesTheForcesOfFreedEquationsAtOnce) {
  RowDeck deck = moved_row();
  add_static(deck, single_solve());
  const DynamicResult run = run_dynamic(deck.text());
  EXPECT_EQ(run.files.status, 0) << run.files.errors;
  ASSERT_EQ(run.U.size(), 2U);
  EXPECT_NEAR(run.U[0], 2.0 / 100.0, 1e-14) << "statics alone";
  EXPECT_NEAR(run.U[1], 2.0 / 100.0 + 2.0 / 50.0, 1e-14);
}

TEST(StaticBehindDynamic, TheRecordHadMovedTheLastNode) {
  const DynamicResult run = run_dynamic(moved_row().text());
  EXPECT_EQ(run.files.status, 0) << run.files.errors;
  EXPECT_NEAR(run.U.at(1), 0.3, 1e-14);
  EXPECT_NE(run.U.at(0), 0.2);
}

TEST(StaticBehindDynamic, FreesThemInDisplacementStepsToo) {
  // The step is as long as the way back to equilibrium under the whole load, measured on the last node.
  RowDeck deck = moved_row();
  SegmentCards cards = single_solve();
  cards.KSTEP = 2;
  cards.KNMS = 3;
  cards.KDIR = 3;
  cards.NSVEC = 1;
  cards.vectors = vector_cards(3, 1, 1.0, -0.24) + vector_cards(3, 1, -1.0);
  add_static(deck, cards);
  const DynamicResult run = run_dynamic(deck.text());
  EXPECT_EQ(run.files.status, 0) << run.files.errors;
  EXPECT_NEAR(run.U.at(0), 0.02, 1e-14);
  EXPECT_NEAR(run.U.at(1), 0.06, 1e-14);
}

}  // namespace
}  // namespace tidearc::test
