// A step that is taken anew, or given up, leaves no trace: element states, log, displacements and time are those of its
// start, bit by bit, in core and on disk.
#include <gtest/gtest.h>

#include "dyn1_deck.h"

namespace tidearc::test {
namespace {

/// Three masses in a row whose bars yield one after the other.
Dyn1Deck yielding_row() {
  Dyn1Deck deck;
  deck.bar(600.0, 2.0, 0.05, 3.0);
  deck.bar(400.0, 1.0, 0.1, 2.0);
  deck.bar(300.0, 1.5, 0.02, 1.5);
  deck.force_record({{0.0, 0.0}, {0.5, 6.0}, {1.0, -6.0}, {2.0, 4.0}, {100.0, 4.0}});
  return deck;
}

Dyn1CardValues pulled(int KSOL, int count, double DT = 0.0625) {
  Dyn1CardValues cards;
  cards.KSOL = KSOL;
  cards.DT = DT;
  cards.NSMAX = count;
  cards.NFORCE = 1;
  cards.commands = command_card(4, 1);
  return cards;
}

/// The same, going on at the record time that four steps have reached.
Dyn1CardValues going_on(Dyn1CardValues cards) {
  cards.commands = command_card(4, 1, 1.0, 0.25);
  return cards;
}

MacroRun run_both(const Dyn1CardValues& first, const Dyn1CardValues& second, const std::string& storage) {
  Dyn1Deck deck = yielding_row();
  deck.storage = storage;
  deck.macro(dyn1_text(first) + dyn1_text(second));
  return run_macros(deck.text());
}

void expect_same_state(const Snapshot& a, const Snapshot& b) {
  EXPECT_EQ(a.TIME, b.TIME);
  EXPECT_EQ(a.U, b.U);
  EXPECT_EQ(a.VEL, b.VEL);
  EXPECT_EQ(a.ACC, b.ACC);
  EXPECT_EQ(a.R, b.R);
  EXPECT_EQ(a.records, b.records);
  EXPECT_EQ(a.logged, b.logged);
  EXPECT_EQ(a.level, b.level);
  EXPECT_EQ(a.energy.elastic, b.energy.elastic);
}

class Dyn1Restore : public testing::TestWithParam<const char*> {};

// The fifth step has an event; a second substep is not allowed, and neither is a smaller step.
TEST_P(Dyn1Restore, AStepThatIsGivenUpStandsAtItsStart) {
  Dyn1CardValues second = going_on(pulled(1, 3));
  second.NSUBMX = 1;
  second.DTMIN = -0.0625;
  const MacroRun run = run_both(pulled(1, 4), second, GetParam());
  ASSERT_EQ(run.behind.size(), 2U);
  ASSERT_EQ(run.lines.back().type, 5) << run.progress;
  EXPECT_NE(run.progress.find("DYN1 MACRO NUMBER  2 TERMINATED: STEP SIZE BELOW MINIMUM ALLOWABLE"), std::string::npos);
  int substeps = 0;
  for (const Dyn1Line& line : run.lines) substeps += line.type == 3 && line.formations > 1;
  EXPECT_GT(substeps, 0) << "an element had changed its state when the step was given up";
  const int accepted = run.lines.back().step - 1;
  Dyn1CardValues without = going_on(pulled(1, accepted));
  if (accepted == 0) {
    expect_same_state(run.behind[1], run.behind[0]);
  } else {
    expect_same_state(run.behind[1], run_both(pulled(1, 4), without, GetParam()).behind[1]);
  }
}

// The step is halved because of its substeps, so the constants are those of a macro that begins with half of it.
TEST_P(Dyn1Restore, AStepThatIsTakenAnewIsThatOfAMacroThatBeginsWithItsSize) {
  Dyn1CardValues anew = going_on(pulled(1, 40));
  anew.NSUBMX = 1;
  anew.DTMIN = 1.0E-6;
  const MacroRun run = run_both(pulled(1, 4), anew, GetParam());
  std::size_t refused = 4;
  while (refused < run.lines.size() && run.lines[refused].type != 5) ++refused;
  ASSERT_LT(refused, run.lines.size());
  const int step = run.lines[refused].step;
  anew.NSMAX = step;
  const MacroRun repeated = run_both(pulled(1, 4), anew, GetParam());
  const double half = repeated.last().DT;
  ASSERT_LT(half, 0.0625);
  Dyn1CardValues before = anew;
  before.NSMAX = step - 1;
  Dyn1Deck deck = yielding_row();
  deck.storage = GetParam();
  Dyn1CardValues with_half = anew;
  with_half.DT = half;
  with_half.NSMAX = 1;
  with_half.commands = command_card(4, 1, 1.0, 0.25 + 0.0625 * (step - 1));
  deck.macro(dyn1_text(pulled(1, 4)) + (step > 1 ? dyn1_text(before) : "") + dyn1_text(with_half));
  const Snapshot direct = run_macros(deck.text()).last();
  EXPECT_EQ(direct.TIME, repeated.last().TIME);
  EXPECT_EQ(direct.U, repeated.last().U);
  EXPECT_EQ(direct.VEL, repeated.last().VEL);
  EXPECT_EQ(direct.R, repeated.last().R);
  EXPECT_EQ(direct.records, repeated.last().records);
  EXPECT_EQ(direct.logged, repeated.last().logged);
}

INSTANTIATE_TEST_SUITE_P(Storage, Dyn1Restore, testing::Values(" CORE SYMM", " DISK SYMM", " DISK USYM"),
                         [](const auto& scheme) {
                           std::string name(scheme.param);
                           std::erase(name, ' ');
                           return name;
                         });

TEST(Dyn1Storage, DiskHasTheDigitsOfTheCore) {
  for (const int KSOL : {1, 2, 3, 4}) {
    Dyn1CardValues cards = pulled(KSOL, 30, 0.05);
    cards.ERRUP = KSOL == 4 ? 1.0E-3 : 0.4;
    cards.ERRLO = KSOL == 4 ? 1.0E-4 : 0.1;
    cards.DTMAX = 0.2;
    Dyn1Deck deck = yielding_row();
    deck.macro(dyn1_text(cards));
    const MacroRun core = run_macros(deck.text());
    deck.storage = " DISK SYMM";
    const MacroRun disk = run_macros(deck.text());
    ASSERT_EQ(core.status, 0) << core.errors;
    expect_same_state(core.last(), disk.last());
    const auto table = [](const std::string& progress) { return progress.substr(progress.find('\n')); };
    EXPECT_TRUE(table(core.progress) == table(disk.progress)) << KSOL;
    EXPECT_EQ(core.last().energy.unbalance(), disk.last().energy.unbalance());
  }
}

// Refusals do not count: a run of accepted steps has the envelopes, energies and levels of those alone.
TEST(Dyn1Refusals, LeaveEnergiesAlone) {
  Dyn1CardValues cards = pulled(1, 60, 0.1);
  cards.ERRUP = 0.3;
  cards.ERRLO = 0.05;
  cards.DTMAX = 0.2;
  const MacroRun run = run_one(yielding_row(), cards);
  int refused = 0;
  for (const Dyn1Line& line : run.lines) refused += line.type >= 4;
  ASSERT_GT(refused, 2);
  EXPECT_NEAR(run.last().energy.unbalance(), 0.0, 1E-9);
}

}  // namespace
}  // namespace tidearc::test
