// How a macro of variable steps ends, what it says then, and what it prints and saves on the way.
#include <gtest/gtest.h>

#include "dyn1_deck.h"
#include "run_deck.h"
#include "scratch.h"

namespace tidearc::test {
namespace {

Dyn1Deck oscillator() {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  return deck;
}

Dyn1CardValues swinging(int KSOL = 2) {
  Dyn1CardValues cards;
  cards.KSOL = KSOL;
  cards.DT = 0.02;
  cards.NSMAX = 50;
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  return cards;
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// The lines of the load level history behind its head.
std::vector<std::string> saves(const std::string& levels) {
  std::vector<std::string> lines = lines_of(levels);
  if (!lines.empty()) lines.erase(lines.begin());
  return lines;
}

const std::string box_head = "\n ****  EXECUTION TERMINATED                   ****\n";
const std::string box_foot = "\n ****  PROCEED WITH NEXT PROBLEM (IF ANY)     ****\n";

TEST(Dyn1End, AtTheStepLimit) {
  Dyn1CardValues cards = swinging();
  cards.NSMAX = 3;
  const MacroRun run = run_one(oscillator(), cards);
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(has(run.progress, "\n     DYN1 MACRO NUMBER  1 COMPLETED: MAXIMUM NUMBER OF STEPS REACHED\n"));
  EXPECT_EQ(run.lines.size(), 3U);
  EXPECT_FALSE(has(run.report, "EXECUTION TERMINATED"));
}

TEST(Dyn1End, AtTheTimeLimitWithoutCuttingTheStep) {
  Dyn1CardValues cards = swinging();
  cards.TMAX = 0.05;
  const MacroRun run = run_one(oscillator(), cards);
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 COMPLETED: MAXIMUM ANALYSIS TIME REACHED\n"));
  EXPECT_NEAR(run.last().TIME, 0.06, 1E-15);
}

TEST(Dyn1End, AtATimeThatCountsFromTheStartOfTheMacro) {
  Dyn1CardValues cards = swinging();
  cards.DT = 0.25;
  cards.TMAX = 0.5;
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards) + dyn1_text(cards));
  const MacroRun run = run_macros(deck.text());
  EXPECT_EQ(run.behind[0].TIME, 0.5) << "reached exactly";
  EXPECT_EQ(run.behind[1].TIME, 1.0);
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  2 COMPLETED:"));
}

TEST(Dyn1End, OfBlankLimitsIsTheFirstStep) {
  Dyn1CardValues cards = swinging();
  cards.NSMAX = 0;
  EXPECT_EQ(run_one(oscillator(), cards).lines.size(), 1U);
  cards = swinging();
  cards.TMAX = 0.0;
  EXPECT_EQ(run_one(oscillator(), cards).lines.size(), 1U);
}

TEST(Dyn1End, AtALimitOfTheUnbalance) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues cards;
  cards.KSOL = 3;
  cards.NSMAX = 9;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  cards.UBMAX = 0.2;  // without events the second step leaves 0.234
  const MacroRun run = run_one(deck, cards);
  EXPECT_EQ(run.status, 4);
  EXPECT_EQ(run.lines.size(), 2U);
  EXPECT_TRUE(
      has(run.progress, "     DYN1 MACRO NUMBER  1 TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE\n"));
  EXPECT_TRUE(has(run.report, box_head + " **** UNBALANCE FORCE EXCEEDS TOLERANCE       ****" + box_foot))
      << run.report;
  EXPECT_EQ(run.last().runmod, 1);
  EXPECT_TRUE(has(run.errors, "unbalance")) << run.errors;
}

TEST(Dyn1End, OfABlankLimitOfTheUnbalanceIsTheFirstStep) {
  Dyn1CardValues cards = swinging();
  cards.UBMAX = 0.0;
  const MacroRun run = run_one(oscillator(), cards);
  EXPECT_EQ(run.lines.size(), 1U);
  EXPECT_TRUE(has(run.progress, " EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE"));
}

TEST(Dyn1End, AtALimitOfTheDisplacementIsACompletionAndStillEndsTheAnalyses) {
  Dyn1CardValues cards = swinging();
  cards.DISMAX = 0.05;  // of an amplitude of 0.1
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards) + dyn1_text(swinging()));
  const MacroRun run = run_macros(deck.text());
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 COMPLETED: EXCEEDING MAXIMUM DISPLACEMENT LIMIT\n"));
  EXPECT_TRUE(has(run.report, box_head + " **** MAX. DISPL. EXCEEDS ALLOWABLE VALUE     ****" + box_foot))
      << run.report;
  EXPECT_EQ(run.behind[0].runmod, 1);
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  2 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO\n"));
  EXPECT_EQ(run.behind[1].U, run.behind[0].U);
  EXPECT_EQ(run.status, 4) << "for the second macro";
  EXPECT_EQ(run_one(oscillator(), cards).status, 0) << "the first alone is good";
}

TEST(Dyn1End, WhereNoSmallerStepIsAllowed) {
  Dyn1CardValues cards = swinging(3);
  cards.ERRUP = 1.0E-3;
  for (const double smallest : {-0.015, -0.02}) {
    cards.DTMIN = smallest;
    const MacroRun run = run_one(oscillator(), cards);
    EXPECT_EQ(run.status, 4);
    ASSERT_EQ(run.lines.size(), 1U);
    EXPECT_EQ(run.lines[0].type, 4);
    EXPECT_EQ(run.last().TIME, 0.0) << "the step is dropped";
    EXPECT_EQ(run.last().U[0], 0.0);
    EXPECT_EQ(run.last().VEL[0], 1.0);
    EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 TERMINATED: STEP SIZE BELOW MINIMUM ALLOWABLE\n"));
    EXPECT_TRUE(has(run.report, box_head + " **** STEP SIZE SMALLER THAN ALLOWABLE VALUE  ****" + box_foot))
        << run.report;
  }
}

// The second step is dropped behind a substep up to the yielding of the bar, which leaves an unbalance of its own.
TEST(Dyn1End, WhereNoSmallerStepIsAllowedLeavesTheNormsOfTheAcceptedState) {
  Dyn1Deck deck = bilinear_oscillator();
  Dyn1CardValues cards;
  cards.KSOL = 1;
  cards.NSUBMX = 1;
  cards.DTMIN = -0.1;
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);
  const MacroRun first = run_one(deck, cards);
  cards.NSMAX = 2;
  const MacroRun run = run_one(deck, cards);
  ASSERT_EQ(run.lines.size(), 3U) << run.progress;
  EXPECT_EQ(run.lines[1].type, 3);
  EXPECT_GT(run.lines[1].unbalance, 0.1);
  EXPECT_EQ(run.lines[2].type, 5);
  EXPECT_EQ(run.last().U, first.last().U);
  EXPECT_EQ(run.last().UB, first.last().UB);
}

TEST(Dyn1End, IsNotReachedWithAPositiveSmallestStep) {
  Dyn1CardValues cards = swinging(3);
  cards.ERRUP = 1.0E-3;
  cards.DTMIN = 0.015;
  cards.NSMAX = 4;
  const MacroRun run = run_one(oscillator(), cards);
  EXPECT_EQ(run.status, 0);
  ASSERT_EQ(run.lines.size(), 4U);
  for (const Dyn1Line& line : run.lines) EXPECT_EQ(line.type, 1) << "accepted as they are, and they do not grow";
  EXPECT_NEAR(run.last().TIME, 0.08, 1E-15);
}

TEST(Dyn1End, OfAStepThatShrinksToNothingComesToo) {
  Dyn1CardValues cards = swinging(3);
  cards.ERRUP = 1.0E-300;
  cards.ERRLO = 0.0;
  cards.DTMIN = 0.0;
  cards.REDF = 1.0E-30;
  const MacroRun run = run_one(oscillator(), cards);
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.progress, " STEP SIZE BELOW MINIMUM ALLOWABLE")) << run.progress;
  EXPECT_LT(run.lines.size(), 20U);
}

TEST(Dyn1End, OfAStepThatIsNotFiniteDropsIt) {
  Dyn1Deck deck = oscillator();
  deck.force_record({{0.0, 0.0}, {0.03, 0.0}, {0.04, 1.0E300}, {1.0, 1.0E300}});
  for (const int KSOL : {1, 2, 3, 4}) {
    Dyn1CardValues cards = swinging(KSOL);
    cards.NFORCE = 1;
    cards.commands += command_card(2, 1, 1.0E9);
    cards.ERRUP = 1.0E308;
    const MacroRun run = run_one(deck, cards);
    EXPECT_EQ(run.status, 4) << KSOL;
    EXPECT_TRUE(has(run.progress, " EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE")) << KSOL << run.progress;
    EXPECT_TRUE(has(run.report, " SOLUTION IS NOT FINITE")) << KSOL;
    EXPECT_TRUE(has(run.errors, "NODE     2 DIRECTION 1") || has(run.errors, "NODE 2 DIRECTION 1")) << run.errors;
    EXPECT_EQ(run.last().TIME, 0.02) << KSOL;
    const Snapshot good = run_one(oscillator(),
                                  [&] {
                                    Dyn1CardValues one = swinging(KSOL);
                                    one.NSMAX = 1;
                                    return one;
                                  }())
                              .last();
    EXPECT_EQ(run.last().U, good.U);
    EXPECT_EQ(run.last().VEL, good.VEL);
    EXPECT_TRUE(saves(run.levels).empty()) << "nothing of it is saved";
  }
}

// The bar has yielded in the first substep when the second one is lost: half of the acceleration of node 3 is a number,
// all of it, 2.4E308, is not.
TEST(Dyn1End, OfAStepThatIsNotFiniteBehindAnEventDropsItToo) {
  for (const std::string storage : {" CORE SYMM", " DISK SYMM"}) {
    Dyn1Deck deck = bilinear_oscillator();
    deck.bar(1.0E-305, 0.5);
    deck.storage = storage;
    deck.force_record({{0.0, 0.0}, {0.15, 0.0}, {0.2, 1.2E308}, {9.0, 1.2E308}});
    Dyn1CardValues cards;
    cards.EVMAX = 1.0E307;
    cards.NFORCE = 2;
    cards.commands = command_card(2, 1) + command_card(3, 2);
    Dyn1CardValues second = cards;
    second.commands = command_card(2, 1, 1.0, 0.1) + command_card(3, 2, 1.0, 0.1);
    deck.macro(dyn1_text(cards) + dyn1_text(second));
    const MacroRun run = run_macros(deck.text());
    ASSERT_EQ(run.behind.size(), 2U);
    EXPECT_TRUE(has(run.progress, " EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE")) << run.progress;
    EXPECT_TRUE(has(run.progress, "\n3      1  1    1    2 ")) << "a substep was taken" << run.progress;
    EXPECT_EQ(run.behind[1].TIME, run.behind[0].TIME);
    EXPECT_EQ(run.behind[1].U, run.behind[0].U);
    EXPECT_EQ(run.behind[1].records, run.behind[0].records);
    EXPECT_EQ(run.behind[1].R, run.behind[0].R);
    EXPECT_EQ(run.behind[1].logged, run.behind[0].logged);
  }
}

TEST(Dyn1Check, ReadsAllCardsAndDoesNothingElse) {
  Dyn1Deck deck = oscillator();
  deck.command = "CHEC";
  deck.force_record({{0.0, 0.0}, {1.0, 1.0}});
  Dyn1CardValues cards = swinging(1);
  cards.NFORCE = 1;
  cards.commands += command_card(2, 1);
  deck.macro(dyn1_text(cards) + dyn1_text(cards));
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(count_of(run.progress, " TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO"), 2);
  EXPECT_EQ(count_of(run.progress, "     START OF DYN1 MACRO: NUMBER = "), 2);
  EXPECT_FALSE(has(run.progress, "DYN1 MACRO OUTPUT INFORMATION:"));
  EXPECT_EQ(count_of(run.report, " DYNAMIC ANALYSIS OUTPUT CONTROL"), 2);
  EXPECT_TRUE(run.ended);
}

TEST(Dyn1Outputs, FallDueByStepsAndByTime) {
  Dyn1CardValues cards = swinging();
  cards.NSMAX = 10;
  // nodes every 4 steps, elements every 0.05 s, no envelopes, no restart, saves every 3 steps
  cards.outputs = "    4        0.    0      0.05    0        0.    0        0.    3        0.";
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards));
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(count_of(run.report, " RESPONSE AT TIME STEP"), 10);
  EXPECT_EQ(count_of(run.report, "      X DISPLACEMENT RESPONSE AT NODES"), 2) << "steps 4, 8";
  EXPECT_EQ(count_of(run.report, "AXIAL FORCE        EXTENSION"), 3) << "0.06, 0.12, 0.18";
  EXPECT_EQ(count_of(run.report, " RESPONSE UNDER DYNAMIC LOADS"), 5);
  EXPECT_EQ(count_of(run.report, " NODAL DISPLACEMENT ENVELOPES"), 1) << "at the end";
  const std::vector<std::string> saved = saves(run.levels);
  ASSERT_EQ(saved.size(), 3U);
  EXPECT_EQ(saved[0].substr(0, 27), " 0 6.000000000000000E-02 1.");
  EXPECT_NE(saved[0].find(" DYN1 1"), std::string::npos);
}

TEST(Dyn1Outputs, ShowTheStateBehindALimitOnce) {
  Dyn1CardValues cards = swinging();
  cards.DISMAX = 0.05;
  cards.outputs = "    0        0.    0        0.    0        0.    0        0.    0        0.";
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards));
  RunResult run = run_deck(deck.text());
  EXPECT_EQ(count_of(run.report, " RESPONSE UNDER DYNAMIC LOADS"), 1);
  EXPECT_EQ(count_of(run.report, " NODAL DISPLACEMENT ENVELOPES"), 1);
  EXPECT_EQ(saves(run.levels).size(), 1U);
  cards.outputs = "    1        0.    1        0.    1        0.    0        0.    1        0.";
  deck = oscillator();
  deck.macro(dyn1_text(cards));
  run = run_deck(deck.text());
  const int steps = count_of(run.report, " RESPONSE AT TIME STEP");
  EXPECT_EQ(count_of(run.report, " RESPONSE UNDER DYNAMIC LOADS"), steps) << "not twice";
  EXPECT_EQ(count_of(run.report, " NODAL DISPLACEMENT ENVELOPES"), steps);
  EXPECT_EQ(static_cast<int>(saves(run.levels).size()), steps);
}

// The second of three steps is printed and saved by its interval; the third ends the macro at the displacement limit.
TEST(Dyn1Outputs, ShowTheStateBehindALimitBesideAnEarlierOne) {
  Dyn1CardValues cards = swinging();
  cards.DISMAX = 0.05;
  cards.outputs = "    2        0.    2        0.    2        0.    0        0.    2        0.";
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards));
  const RunResult run = run_deck(deck.text());
  ASSERT_EQ(count_of(run.report, " RESPONSE AT TIME STEP"), 3);
  EXPECT_EQ(count_of(run.report, " RESPONSE UNDER DYNAMIC LOADS"), 2);
  EXPECT_EQ(count_of(run.report, " NODAL DISPLACEMENT ENVELOPES"), 2);
  EXPECT_EQ(saves(run.levels).size(), 2U);
}

// Mass 4, spring 400, from the displacement of a first macro on: node extremes begin at 0 or at that displacement.
TEST(Dyn1Outputs, BeginExtremesWithTheStateAtHandWhenAsked) {
  const auto smallest = [](int KENVELOPE) {
    Dyn1CardValues second = swinging();
    second.NINIT = 0;
    second.commands = "";
    second.NSMAX = 1;
    second.KENVELOPE = KENVELOPE;
    Dyn1CardValues first = swinging();
    first.NSMAX = 1;
    Dyn1Deck deck = oscillator();
    deck.macro(dyn1_text(first) + dyn1_text(second));
    const std::string report = run_deck(deck.text()).report;
    std::size_t at = report.rfind(" NODAL DISPLACEMENT ENVELOPES");
    for (int node = 1; node <= 2; ++node) at = report.find("NEGATIVE", at + 1);
    return std::stod(report.substr(at + 8, 18));
  };
  EXPECT_EQ(smallest(0), 0.0);
  EXPECT_NEAR(smallest(1), 0.0198019802, 1E-6);
}

TEST(Dyn1Outputs, ShowTheStateBeforeAStepThatWasGivenUp) {
  Dyn1CardValues cards = swinging(3);
  cards.ERRUP = 0.05;
  cards.ERRLO = 0.03;
  cards.DTMIN = -0.02;
  Dyn1Deck deck = oscillator();
  deck.macro(dyn1_text(cards));
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(count_of(run.report, " RESPONSE AT TIME STEP"), 1);
  EXPECT_EQ(count_of(run.report, " RESPONSE UNDER DYNAMIC LOADS"), 1);
  EXPECT_NEAR(displacement(run.report, " X", 2), 0.0198019802, 1E-7);
  ASSERT_EQ(saves(run.levels).size(), 1U);
  EXPECT_EQ(saves(run.levels)[0].substr(0, 24), " 0 2.000000000000000E-02");
}

TEST(Dyn1Outputs, TellTheLargestUnbalancesOfEachStep) {
  Dyn1CardValues cards = swinging();
  cards.NSMAX = 2;
  cards.NTOP = 5;
  const MacroRun run = run_one(oscillator(), cards);
  const std::vector<std::string> rows = lines_of(run.top);
  ASSERT_EQ(rows.size(), 5U) << run.top;
  EXPECT_EQ(rows[0], " *****  TOP OUT-OF-BALANCE FORCES IN DYN1 ANALYSIS *****");
  EXPECT_EQ(rows[1], " 0.20000E-01");
  EXPECT_EQ(rows[2].substr(0, 10), "    2    1");
  EXPECT_EQ(rows[3], " 0.40000E-01");
}

}  // namespace
}  // namespace tidearc::test
