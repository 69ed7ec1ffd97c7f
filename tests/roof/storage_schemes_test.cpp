// Storage schemes at their edges, from deck to report: equations below all elements, singular structures, renumbered
// jobs in blocks, limits of the storage card.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <utility>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// A deck with line `number` (from 0) replaced.
std::string with_line(const std::string& deck, int number, const std::string& card) {
  std::size_t at = 0;
  for (int line = 0; line < number; ++line) at = deck.find('\n', at) + 1;
  return deck.substr(0, at) + card + deck.substr(deck.find('\n', at));
}

std::string stored(const std::string& deck, const std::string& scheme, int words = 0) {
  char card[32];
  std::snprintf(card, sizeof card, " %-9s%10d", scheme.c_str(), words);
  return with_line(deck, 3, card);
}

/// The deck with a renumbering code in columns 71-75 of its size card.
std::string renumbered(const std::string& deck, int code) {
  std::string card = lines_of(deck)[4];
  card.resize(70, ' ');
  char field[8];
  std::snprintf(field, sizeof field, "%5d", code);
  return with_line(deck, 4, card + field);
}

int blocks(const std::string& report) {
  const std::string label = "NUMBER OF MATRIX BLOCKS .................... =";
  const std::size_t at = report.find(label);
  return at == std::string::npos ? -1 : std::stoi(report.substr(at + label.size(), 6));
}

/// Lines of a text between two others, without those about stand-ins, which a job in blocks does not print.
std::string without_findings(const std::string& text, const std::string& from, const std::string& to) {
  std::string kept;
  bool on = from.empty();
  for (const std::string& line : lines_of(text)) {
    if (!to.empty() && has(line, to)) break;
    if (on && !has(line, "HAS ZERO STIFFNESS")) kept += line + "\n";
    if (!on && has(line, from)) on = true;
  }
  return kept;
}
std::string macros(const RunResult& run) {
  return without_findings(run.report, "STORAGE FOR STRUCTURE STIFFNESS MATRIX", "E X E C U T I O N   T I M E   L O G");
}
std::string progress(const RunResult& run) { return without_findings(run.progress, "TIDEARC Version", ""); }

/// A tower of four levels behind `idle` nodes that belong to no element, pushed by a load and a moving support whose
/// factors change from segment to segment, until bars yield and steps are cut.
TrussDeck tower_behind_idle_nodes(int idle) {
  TrussDeck deck;
  for (int i = 0; i < idle; ++i) deck.node(100.0 + i, 0, 0);
  const double corner[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  constexpr int levels = 4;
  for (int level = 0; level <= levels; ++level)
    for (const auto& at : corner) deck.node(at[0] + 0.1 * level, at[1], 10.0 * level);
  for (int k = 1; k <= 4 * (levels + 1); ++k) deck.fix(idle + k, k <= 4 ? "111111" : "000111");
  deck.material(1000, 0.02, 1.0, 1.0);
  deck.section(1);
  for (int level = 1; level <= levels; ++level) {
    const int below = idle + 4 * (level - 1), above = below + 4;
    for (int k = 0; k < 4; ++k) {
      deck.bar(below + k + 1, above + k + 1);
      deck.bar(above + k + 1, above + (k + 1) % 4 + 1);
      deck.bar(below + k + 1, above + (k + 1) % 4 + 1);
    }
  }
  deck.pattern(idle + 4 * levels + 1, 0.4, 0.1, -0.2);
  deck.prescribe(idle + 11, 1, 0.05);
  deck.prescribe(idle + 14, 3, -0.05);
  SegmentCards push;
  push.STEP0 = 0.5;
  push.NSTEPS = 30;
  push.MAXIT = 3;
  push.KTERM = 0;
  push.NTOP = 3;
  push.card4 = "       0.5     0.001   10    2       1.5       1.0";
  push.pfactors = {1.0, 0.0};
  SegmentCards back = push;
  back.factors = {-0.5};
  back.pfactors = {-2.0, 1.0};
  SegmentCards hold = push;
  hold.factors = {0.0};
  hold.pfactors = {0.0, -2.0};
  deck.stat({push, back, hold});
  deck.stat({back});
  return deck;
}

TEST(IdleNodes, BelowAllElementsDoNotDisturbAJobInBlocks) {
  for (const int idle : {1, 6}) {  // six rows of six fill blocks of their own
    const std::string deck = tower_behind_idle_nodes(idle).text();
    for (const std::string type : {"SYMM", "USYM"}) {
      const RunResult core = run_deck(stored(deck, "CORE " + type));
      ASSERT_EQ(core.status, 0) << core.errors;
      ASSERT_TRUE(has(core.report, "STATE AT BEGINNING OF STEP RECOVERED"));
      ASSERT_TRUE(has(core.report, "D. O. F.     1 HAS ZERO STIFFNESS"));
      for (const int words : {220, 500}) {
        const RunResult disk = run_deck(stored(deck, "DISK " + type, words));
        EXPECT_GT(blocks(disk.report), 3);
        EXPECT_EQ(disk.status, 0) << disk.errors;
        EXPECT_TRUE(macros(disk) == macros(core)) << type << " " << words;
        EXPECT_TRUE(progress(disk) == progress(core)) << type << " " << words;
        EXPECT_EQ(disk.top, core.top);
      }
    }
  }
}

TEST(RenumberedBlocks, HaveTheBytesOfTheRenumberedCoreJob) {
  const std::string deck = tower_behind_idle_nodes(2).text();
  for (const int code : {1, 2, 3, 4}) {
    const RunResult core = run_deck(renumbered(deck, code));
    const RunResult disk = run_deck(stored(renumbered(deck, code), "DISK", 300));
    ASSERT_EQ(core.status, 0) << core.errors;
    EXPECT_GT(blocks(disk.report), 3);
    EXPECT_TRUE(macros(disk) == macros(core)) << code;
    EXPECT_TRUE(progress(disk) == progress(core)) << code;
  }
}

/// Nodes 1 and 2 slide along X, joined by one bar and held by nothing: the pivot of equation 2 is k - k*k/k = 0. The
/// bar along Y at node 2 lets column 3 reach it. Bars to nodes of their own make further equations.
TrussDeck sliding_pair(int further) {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.node(10, 10, 0);
  deck.fix(1, "011111");
  deck.fix(2, "001111");
  deck.fix(3, "111111");
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 2);
  deck.bar(2, 3);
  for (int i = 0; i < further; ++i) {
    const int node = deck.node(20.0 + 10.0 * i, 10, 0);
    deck.fix(node, "011111");
    deck.bar(node - 1, node);
  }
  deck.pattern(2, 0.4, 0.1, 0);
  deck.stat({{}});
  return deck;
}

struct Scheme {
  const char* card;
  int words;
};
constexpr std::array<Scheme, 2> one_piece{{{"CORE SYMM", 0}, {"DISK SYMM", 0}}};
constexpr std::array<Scheme, 2> in_blocks{{{"DISK SYMM", 16}, {"DISK SYMM", 24}}};
constexpr std::array<Scheme, 4> two_triangles{
    {{"CORE USYM", 0}, {"DISK USYM", 0}, {"DISK USYM", 16}, {"DISK USYM", 24}}};

const std::string zero_pivot = " IS ENCOUNTERED AT POSITION";

TEST(ZeroPivot, InOnePieceIsToldWithItsAddressAndEquation) {
  for (const Scheme& scheme : one_piece) {
    const RunResult run = run_deck(stored(sliding_pair(12).text(), scheme.card, scheme.words));
    EXPECT_EQ(run.status, 1);
    EXPECT_FALSE(run.ended);
    EXPECT_TRUE(has(run.report, zero_pivot + "     3. CHECK D.O.F.     2\n " + std::string(130, 'W') + "\n"));
    EXPECT_TRUE(has(run.errors, "equation 2, node 2 direction X")) << run.errors;
  }
}

TEST(ZeroPivot, InBlocksIsToldWithItsPositionAlone) {
  for (const Scheme& scheme : in_blocks) {
    const RunResult run = run_deck(stored(sliding_pair(12).text(), scheme.card, scheme.words));
    EXPECT_GT(blocks(run.report), 1);
    EXPECT_EQ(run.status, 1);
    EXPECT_FALSE(run.ended);
    EXPECT_TRUE(has(run.report, zero_pivot + "     2\n " + std::string(130, 'W') + "\n"));
    EXPECT_TRUE(has(run.errors, "equation 2, node 2 direction X")) << run.errors;
  }
}

TEST(ZeroPivot, OfTwoTrianglesIsNotTestedAndEndsTheMacro) {
  for (const Scheme& scheme : two_triangles) {
    const RunResult run = run_deck(stored(sliding_pair(12).text(), scheme.card, scheme.words));
    EXPECT_EQ(run.status, 4) << "a macro was terminated";
    EXPECT_TRUE(run.ended);
    EXPECT_FALSE(has(run.report, "ZERO DIAGONAL"));
    EXPECT_TRUE(has(run.report, " SOLUTION IS NOT FINITE"));
    EXPECT_TRUE(has(run.errors, "solution is not finite")) << run.errors;
  }
}

// Bars in a row: columns of one and two reals, so that a block takes three at least, which are twelve words. Three bars
// are one block from 17 words on: two for each of five reals and three equations, and one more.
std::string row_of_bars(int bars) {
  TrussDeck deck = loaded_bar(1);
  for (int i = 2; i <= bars; ++i) {
    const int node = deck.node(10.0 * i, 0, 0);
    deck.fix(node, "011111");
    deck.bar(node - 1, node);
  }
  deck.stat({{}});
  return deck.text();
}

TEST(StorageCard, IsNamedWhenItAllowsTooLittle) {
  for (const auto& [words, told] : {std::pair{11, "allows 11 words"}, {-1, "allows -1 words"}}) {
    const RunResult run = run_deck(stored(row_of_bars(3), "DISK", words));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(blocks(run.report), 0);
    EXPECT_TRUE(has(run.errors, std::string("the storage card ") + told)) << run.errors;
    EXPECT_TRUE(has(run.errors, "a column of 2 reals takes at least 12 words")) << run.errors;
    EXPECT_FALSE(has(run.errors, "words are left")) << run.errors;
  }
  for (const auto& [words, number] : {std::pair{12, 3}, {16, 3}, {17, 1}}) {
    const RunResult run = run_deck(stored(row_of_bars(3), "DISK", words));
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_EQ(blocks(run.report), number) << words;
  }
}

TEST(StorageCard, IsNamedWhenItMakesTooManyBlocks) {
  const RunResult run = run_deck(stored(row_of_bars(21), "DISK", 12));  // a column to each block
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(blocks(run.report), 21);
  EXPECT_TRUE(has(run.errors, "more words on the storage card make larger blocks")) << run.errors;
}

TEST(DataCheck, OfEverySchemeReadsToTheEnd) {
  TrussDeck deck = tower_behind_idle_nodes(2);
  deck.command = "CHEC";
  for (const std::string scheme : {"CORE USYM", "DISK SYMM", "DISK USYM"}) {
    for (const int words : {0, 300}) {
      const RunResult run = run_deck(renumbered(stored(deck.text(), scheme, words), 1));
      EXPECT_EQ(run.status, 0) << scheme << words << run.errors;
      EXPECT_TRUE(run.ended);
      EXPECT_TRUE(has(run.report, " STORAGE REQUIREMENTS\n"));
      EXPECT_FALSE(has(run.report, "STIFFNESS FORMED"));
    }
  }
}

TEST(DataErrors, InEverySchemeLeaveTheDeckInStep) {
  TrussDeck deck = tower_behind_idle_nodes(2);
  deck.bar(1, 999);
  for (const std::string scheme : {"CORE SYMM", "CORE USYM", "DISK SYMM", "DISK USYM"}) {
    for (const int words : {0, 300}) {
      const RunResult run = run_deck(stored(deck.text(), scheme, words));
      EXPECT_EQ(run.status, 3) << scheme << words << run.errors;
      EXPECT_TRUE(run.ended);
      EXPECT_EQ(count_of(run.report, "DATA ERROR"), 1);
      EXPECT_FALSE(has(run.report, "STIFFNESS FORMED"));
    }
  }
}

}  // namespace
}  // namespace tidearc::test
