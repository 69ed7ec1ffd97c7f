// Cards of a deck: what is read, what is taken instead of nothing, what is echoed, what is an error.
#include <gtest/gtest.h>

#include <cstring>

#include "deck_text.h"
#include "elements/deck/record.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "solve/solver.h"
#include "support/run_deck.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& words) { return text.find(words) != std::string::npos; }

const std::string full_cards =
    "    1    4    3    2    1    6      -1.5      -2.5       3.5      12.5    7\n"
    "    3    5       4.5      30.5      20.5      0.75       1.1       1.2       1.3\n"
    "       2.1       2.2       2.3       3.1       3.2       3.3     100.5     200.5\n"
    "       5.1       5.2       5.3\n";

/// The record of the deck behind a run with a static macro: it follows those of the four columns.
DeckRecord kept_record(DeckOfDeck deck) {
  deck.load = 1.0;
  deck.stat();
  const RunResult run = run_static(deck.text());
  EXPECT_EQ(run.status, status_good) << run.report;
  DeckRecord record{};
  std::memcpy(&record, pool.words(storage.KEDAT + 4 * (688 + 1), 122), sizeof(record));
  return record;
}

TEST(DeckCards, KeepEveryField) {
  DeckOfDeck deck;
  deck.cards = full_cards;
  const DeckRecord r = kept_record(deck);
  EXPECT_EQ(r.head.number, 1);
  EXPECT_EQ(r.head.KSTIF, 0);
  for (int n = 0; n < 4; ++n) EXPECT_EQ(r.NODE[n], 4 - n);
  EXPECT_EQ(r.NODEC, 6);
  EXPECT_EQ(r.OUTPUT, 7);
  EXPECT_EQ(r.Nx, 3);
  EXPECT_EQ(r.Ny, 5);
  EXPECT_EQ(r.PHI, 0.75);
  const double corner[4] = {-1.5, -2.5, 3.5, 12.5}, size[3] = {4.5, 30.5, 20.5}, R[3] = {1.1, 1.2, 1.3},
               CD[3] = {2.1, 2.2, 2.3}, KI[3] = {3.1, 3.2, 3.3}, F0[2] = {100.5, 200.5}, KS[3] = {5.1, 5.2, 5.3},
               centre[3] = {0.0, 0.0, 12.0};
  for (int i = 0; i < 4; ++i) EXPECT_EQ(r.corner[i], corner[i]);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(r.size[i], size[i]);
    EXPECT_EQ(r.R[i], R[i]);
    EXPECT_EQ(r.CD[i], CD[i]);
    EXPECT_EQ(r.KI[i], KI[i]);
    EXPECT_EQ(r.KS[i], KS[i]);
    EXPECT_EQ(r.centre[i], centre[i]);
  }
  EXPECT_EQ(r.F0[0], F0[0]);
  EXPECT_EQ(r.F0[1], F0[1]);
}

TEST(DeckCards, TakeOneForNothing) {
  const DeckRecord r = kept_record({});
  EXPECT_EQ(r.PHI, 1.0);
  for (const double factor : r.R) EXPECT_EQ(factor, 1.0);
  EXPECT_EQ(r.Nx, 1);
  EXPECT_EQ(r.Ny, 1);
  EXPECT_EQ(r.CD[1], 0.0);
}

TEST(DeckCards, TakeOneStripForANegativeNumberAndAThousandAtMost) {
  DeckOfDeck deck;
  deck.cards.replace(deck.cards.find('\n') + 1, 10, "   -3 1001");
  DeckRecord r = kept_record(deck);
  EXPECT_EQ(r.Nx, 1);
  EXPECT_EQ(r.Ny, 1000);
}

TEST(DeckCards, AreEchoed) {
  DeckOfDeck deck;
  deck.cards = full_cards;
  deck.load = 1.0;
  deck.stat();
  const std::string report = trimmed(run_deck(deck.text()).report);
  EXPECT_TRUE(has(report, "DECK INUNDATION ELEMENT"));
  EXPECT_TRUE(has(report,
                  "     NUMBER OF DEGREES OF FREEDOM PER ELEMENT ....... =   24\n"
                  "     LENGTH OF ELEMENT INFORMATION .................. =  122\n"));
  EXPECT_TRUE(has(
      report,
      " ELEMENT INFORMATION\n\n"
      " KEY ELEM  NODE1  NODE2  NODE3  NODE4  NODEC           X0           Y0           Z0        THETA OUTPUT\n"
      "       NX     NY         HIGH       LENGTH        WIDTH          PHI           RX           RY           RZ\n"
      "                CDX          CDY          CDZ          KIX          KIY          KIZ          FX0          FY0\n"
      "                KSX          KSY          KSZ\n\n"
      "        1      4      3      2      1      6  -1.5000      -2.5000       3.5000       12.500          7\n"
      "        3      5   4.5000       30.500       20.500      0.75000       1.1000       1.2000       1.3000\n"
      "         2.1000       2.2000       2.3000       3.1000       3.2000       3.3000       100.50       200.50\n"
      "         5.1000       5.2000       5.3000\n"))
      << report;
  EXPECT_TRUE(has(report, "ELEMENT CARD OUT OF SEQUENCE"));
}

void expect_end(const DeckOfDeck& deck, int status, const std::string& words, const std::string& place) {
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, status) << words;
  EXPECT_TRUE(has(run.report, words)) << run.report;
  EXPECT_TRUE(has(run.errors, place)) << run.errors;
}

TEST(DeckErrors, GravityMustActAlongGlobalMinusZ) {
  for (const char* direction : {" Z", "-X", " X", "-Y", " Y"}) {
    DeckOfDeck deck;
    deck.gravity.replace(3, 2, direction);
    expect_end(deck, status_fatal, "\n ERROR! ELEMENT ASSUMES GRAVITY IS IN GLOBAL -Z D\n", "gravity along -Z");
  }
}

TEST(DeckErrors, BlankDirectionAndNoGravityCardAreMinusZ) {
  DeckOfDeck deck;
  deck.gravity.replace(3, 2, "  ");
  EXPECT_EQ(run_deck(deck.text()).status, status_good);
  deck.with_gravity = false;
  EXPECT_FALSE(has(run_deck(deck.text()).report, "ELEMENT ASSUMES GRAVITY"));
}

TEST(DeckErrors, NodesMustStandInTheModel) {
  const std::string columns[4] = {"columns 6-10", "columns 11-15", "columns 16-20", "columns 21-25"};
  for (std::size_t n = 0; n < 4; ++n) {
    for (const char* node : {"    0", "    9", "   -1"}) {
      DeckOfDeck deck;
      deck.cards.replace(5 + 5 * n, 5, node);
      expect_end(deck, status_data_error,
                 std::string(" ***** DATA ERROR *****      NODE ") + node + "  OUT OF RANGE, ENTERING CHEC MODE",
                 columns[n]);
    }
  }
}

TEST(DeckErrors, TheCentreNodeIsNotLookedAt) {
  DeckOfDeck deck;
  deck.cards.replace(25, 5, "  999");
  EXPECT_EQ(run_deck(deck.text()).status, status_good);
}

TEST(DeckErrors, SizesMustNotBeNegative) {
  for (const std::size_t column : {10u, 20u, 30u}) {
    DeckOfDeck deck;
    deck.cards.replace(deck.cards.find('\n') + 1 + column, 10, "     -0.01");
    expect_end(deck, status_data_error, " ELEMENT     1  HAS A NEGATIVE SIZE, ENTERING CHEC MODE", "columns 11-40");
    deck.cards.replace(deck.cards.find('\n') + 1 + column, 10, "      0.00");
    EXPECT_EQ(run_deck(deck.text()).status, status_good);
  }
}

TEST(DeckErrors, CardsStandInTheirOrderWithoutGaps) {
  for (const char* number : {"    0", "    2", "   -1"}) {
    DeckOfDeck deck;
    deck.cards.replace(0, 5, number);
    expect_end(deck, status_fatal, std::string("\n ** ") + number + "      1      2", "out of sequence");
  }
  DeckOfDeck deck;  // the second of three must be 2: nothing is generated
  deck.header.replace(5, 5, "    3");
  std::string third = deck.cards;
  third.replace(0, 5, "    3");
  deck.cards += third;
  expect_end(deck, status_fatal, "\n **     3      1      2", "the next element of the group is 2");
}

}  // namespace
}  // namespace tidearc::test
