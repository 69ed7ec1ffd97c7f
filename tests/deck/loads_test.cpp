// A deck in a whole run: its nodal loads, its report, and that it is no part of the stiffness.
#include <gtest/gtest.h>

#include <cmath>

#include "deck_text.h"
#include "elements/contract/types.h"
#include "elements/deck/record.h"
#include "run/stops.h"
#include "support/run_deck.h"
#include "support/scratch.h"

namespace tidearc::test {
namespace {

RunResult run_steps(DeckOfDeck deck, int steps = 1) {
  deck.dyn2(steps);
  RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, status_good) << run.report;
  return run;
}

std::vector<std::string> page_of(const std::string& report, const std::string& words, std::size_t count) {
  const std::vector<std::string> all = lines_of(trimmed(report));
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (all[i].find(words) == std::string::npos) continue;
    return {all.begin() + static_cast<std::ptrdiff_t>(i),
            all.begin() + static_cast<std::ptrdiff_t>(std::min(i + count, all.size()))};
  }
  return {};
}

// Loads of a node: 369/4, 12066.3/4 and a moment of -2214/4 about Y. Column of length 10, EI 1e6, EA 1e6.
constexpr double FX = 92.25, FZ = 3016.575, MY = -553.5, L = 10.0, EI = 1.0e6;

TEST(DeckLoads, AQuarterOfForceAndMomentGoesToEachNode) {
  const RunResult run = run_steps({});
  for (int node = 1; node <= 4; ++node) {
    const double tip = FX * L * L * L / (3.0 * EI) + MY * L * L / (2.0 * EI);
    const double slope = FX * L * L / (2.0 * EI) + MY * L / EI;
    EXPECT_NEAR(displacement(run.report, " X", node), tip, 1e-5 * std::abs(tip)) << node;
    EXPECT_NEAR(displacement(run.report, "YR", node), slope, 1e-5 * std::abs(slope)) << node;
    EXPECT_NEAR(displacement(run.report, " Z", node), FZ * L / EI, 1e-5 * FZ * L / EI) << node;
    EXPECT_NEAR(displacement(run.report, " Y", node), 0.0, 1e-12) << node;
  }
}

TEST(DeckLoads, AreTurnedToTheAxesOfANode) {
  DeckOfDeck deck;  // X of node 1 along Y, its Y along -X
  deck.system_count = 1;
  deck.systems = "    1        0.        1.        0.         2       -1.        0.        0.\n";
  deck.assignment_count = 1;
  deck.assignments = "    1    1\n";
  const RunResult run = run_steps(deck);
  const double tip = FX * L * L * L / (3.0 * EI) + MY * L * L / (2.0 * EI);
  EXPECT_NEAR(displacement(run.report, " Y", 1), -tip, 1e-5 * std::abs(tip));
  EXPECT_NEAR(displacement(run.report, " X", 1), 0.0, 1e-12);
  EXPECT_NEAR(displacement(run.report, " X", 2), tip, 1e-5 * std::abs(tip));
}

TEST(DeckReport, HasATitleAndARowForEachNode) {
  const std::vector<std::string> found =
      page_of(run_steps({}).report, " RESULTS FOR GROUP  2 (DECK INUNDATION ELEMENTS)", 9);
  const std::vector<std::string> expected = {
      "      RESULTS FOR GROUP  2 (DECK INUNDATION ELEMENTS) TIME =  0.1000E+01",
      "",
      "     TOP SIDE",
      "",
      " ELEM   NODE      FX           FY           FZ           MX           MY           MZ",
      "    1      1   92.250       0.0000       3016.6       0.0000      -553.50       0.0000",
      "           2   92.250       0.0000       3016.6       0.0000      -553.50       0.0000",
      "           3   92.250       0.0000       3016.6       0.0000      -553.50       0.0000",
      "           4   92.250       0.0000       3016.6       0.0000      -553.50       0.0000"};
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i) EXPECT_EQ(found[i], expected[i]);
}

TEST(DeckReport, TitlesTheFirstDeckOfAGroupAlone) {
  DeckOfDeck deck;
  deck.header = "   20    2    7        0.        0.     TWO\n";
  std::string second = deck.cards;
  second.replace(0, 5, "    8");
  deck.cards.replace(0, 5, "    7");
  deck.cards += second;
  const std::string report = run_steps(deck).report;
  EXPECT_EQ(count_of(report, "(DECK INUNDATION ELEMENTS) TIME ="), 1);
  EXPECT_EQ(deck_rows(report, 0).size(), 8u);
  EXPECT_EQ(count_of(report, "\n    8      1   92.250"), 1);
}

TEST(DeckReport, HasNoEnvelope) { EXPECT_EQ(element_type(20).operations.envelope, nullptr); }

TEST(DeckLoads, GrowOverTheRampTime) {
  DeckOfDeck deck;
  deck.wave.replace(20, 10, "        4.");
  const RunResult run = run_steps(deck, 5);
  const double factor[5] = {0.25, 0.5, 0.75, 1.0, 1.0};
  for (int step = 0; step < 5; ++step) {
    const std::vector<DeckRow> rows = deck_rows(run.report, step);
    ASSERT_EQ(rows.size(), 4u) << step;
    EXPECT_NEAR(rows[0].force[0], factor[step] * FX, 1e-3) << step;
    EXPECT_NEAR(rows[0].force[2], factor[step] * FZ, 0.1) << step;
    EXPECT_NEAR(rows[0].force[4], factor[step] * MY, 1e-2) << step;
    EXPECT_NEAR(displacement(run.report, " Z", 1, step), factor[step] * FZ * L / EI, 1e-6) << step;
  }
}

TEST(DeckLoads, DoNotActInStaticAnalyses) {
  DeckOfDeck deck;
  deck.load = 5.0;
  deck.stat();
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, status_good);
  EXPECT_NEAR(displacement(run.report, " Z", 1), 0.0, 1e-15);
  const std::vector<DeckRow> rows = deck_rows(run.report, 0);
  ASSERT_EQ(rows.size(), 4u);
  for (const DeckRow& row : rows)
    for (const double force : row.force) EXPECT_EQ(force, 0.0);
}

TEST(Deck, IsNoPartOfTheMatrix) {
  DeckOfDeck deck;
  deck.load = 5.0;
  deck.stat();
  const RunResult with = run_static(deck.text());
  deck.with_deck = false;
  const RunResult without = run_static(deck.text());
  EXPECT_EQ(with.status, status_good);
  ASSERT_EQ(with.U.size(), 24u);
  EXPECT_EQ(with.U, without.U) << "bit by bit";
  for (const char* words : {"TOTAL NUMBER OF EQUILIBRIUM EQUATIONS", "MAXIMUM BAND WIDTH OF STRUCTURE MATRIX",
                            "STORAGE FOR STRUCTURE STIFFNESS MATRIX"}) {
    EXPECT_EQ(page_of(with.report, words, 1), page_of(without.report, words, 1));
    EXPECT_EQ(page_of(with.report, words, 1).size(), 1u) << words;
  }
}

TEST(Deck, IsTheSameInCoreAndOnDisk) {
  DeckOfDeck deck;
  deck.storage = " CORE SYMM         0";
  const RunResult core = run_steps(deck, 3);
  deck.storage = " DISK SYMM        64";
  const RunResult disk = run_steps(deck, 3);
  for (int step = 0; step < 3; ++step) {
    EXPECT_EQ(deck_rows(core.report, step).size(), 4u);
    for (int node = 1; node <= 4; ++node) {
      EXPECT_EQ(displacement(core.report, " X", node, step), displacement(disk.report, " X", node, step));
      EXPECT_EQ(displacement(core.report, " Z", node, step), displacement(disk.report, " Z", node, step));
    }
  }
}

TEST(Deck, StandsInItsRowOfTheTable) {
  const ElementType& type = element_type(20);
  EXPECT_STREQ(type.title, "DECK INUNDATION ELEMENT");
  EXPECT_EQ(type.NDOF, 24);
  EXPECT_EQ(type.LFIX, 118);
  EXPECT_EQ(type.LTAN + type.LAUX, 4);
  EXPECT_EQ(type.operations.stiffness, nullptr);
  EXPECT_EQ(type.operations.dynamic, nullptr);
  EXPECT_EQ(type.graph_nodes, 0);
  EXPECT_LE(type.sea_word - 1 + type.sea_words, type.LFIX);
}

TEST(Deck, DampingOfItsGroupHasNoEffect) {
  DeckOfDeck deck;
  const RunResult without = run_steps(deck, 2);
  deck.header = "   20    1    1        5.        5.     TOP SIDE\n";
  const RunResult with = run_steps(deck, 2);
  EXPECT_EQ(displacement(with.report, " X", 1), displacement(without.report, " X", 1));
}

}  // namespace
}  // namespace tidearc::test
