// The storage card acted on: core and disk, one triangle and two, one block and more, from deck to report.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>
#include <vector>

#include "process_fixture.h"
#include "run/units.h"
#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// A deck with its storage card (the fourth line) replaced.
std::string stored(const std::string& deck, const std::string& scheme, int words = 0) {
  std::size_t at = 0;
  for (int line = 0; line < 3; ++line) at = deck.find('\n', at) + 1;
  char card[32];
  std::snprintf(card, sizeof card, " %-9s%10d", scheme.c_str(), words);
  return deck.substr(0, at) + card + deck.substr(deck.find('\n', at));
}

/// Two nodes, one elastic bar, one load, one segment.
TrussDeck bar_deck() {
  TrussDeck deck = loaded_bar(1);
  deck.stat({{}});
  return deck;
}

/// The macros of a report, from the storage report on, without clock times and without lines about stand-ins.
std::string macros(const std::string& report) {
  std::string text;
  bool on = false;
  for (const std::string& line : lines_of(report)) {
    if (has(line, "STORAGE FOR STRUCTURE STIFFNESS MATRIX")) {
      on = true;
    } else if (has(line, "E X E C U T I O N   T I M E   L O G")) {
      on = false;
    } else if (on && !has(line, "HAS ZERO STIFFNESS")) {
      text += line + "\n";
    }
  }
  return text;
}

/// The first line in which two texts differ, empty when they are the same.
std::string first_difference(const std::string& a, const std::string& b) {
  const std::vector<std::string> left = lines_of(a), right = lines_of(b);
  for (std::size_t i = 0; i < std::max(left.size(), right.size()); ++i) {
    const std::string l = i < left.size() ? left[i] : "(end)", r = i < right.size() ? right[i] : "(end)";
    if (l != r) return "line " + std::to_string(i + 1) + ": " + l + " | " + r;
  }
  return "";
}

int number(const std::string& report, const std::string& label) {
  const std::size_t at = report.find(label);
  return at == std::string::npos ? -1 : std::stoi(report.substr(at + label.size(), 12));
}
int blocks(const std::string& report) {
  const std::string label = "NUMBER OF MATRIX BLOCKS .................... =";
  const std::size_t at = report.find(label);
  return at == std::string::npos ? -1 : std::stoi(report.substr(at + label.size(), 6));
}

const char without_elements[] = "STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =";
const char least_total[] = "MINIMUM TOTAL STORAGE REQUIRED ................. =";
const char matrix_length[] = "STORAGE FOR STRUCTURE STIFFNESS MATRIX ......... =";

// In core and symmetric the bar deck takes 164 words before its matrix of one real (see the storage report's own test).
TEST(StorageCard, UnsymmetricInCoreTakesTwoTrianglesTwice) {
  const RunResult run = run_deck(stored(bar_deck().text(), "CORE USYM"));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(has(run.report, "STIFFNESS TYPE ................................. = USYM\n"));
  EXPECT_TRUE(has(run.report, " NSTO,LAVSST,KEDAT,MSTOR 2 4 173 4000000\n"));
  EXPECT_EQ(number(run.report, matrix_length), 2);
  EXPECT_EQ(number(run.report, without_elements), 172);
  EXPECT_EQ(number(run.report, least_total), 172 + 359);
}

TEST(StorageCard, OnDiskTakesTheDirectoriesAndOneRecord) {
  const RunResult run = run_deck(stored(bar_deck().text(), "DISK"));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(has(run.report, "OVERALL STORAGE SCHEME ......................... = DISK\n"));
  EXPECT_TRUE(has(run.report, " STIFFNESS MATRIX BLOCKING INFORMATION\n"));
  EXPECT_EQ(blocks(run.report), 1);
  EXPECT_FALSE(has(run.report, "NSTO,LAVSST"));
  EXPECT_EQ(number(run.report, matrix_length), 1);
  EXPECT_EQ(number(run.report, without_elements), 164 + 40 + 4);
  EXPECT_EQ(number(run.report, least_total), 208 + 359) << "the longest record, and not all of them";
}

TEST(StorageCard, OnDiskAndUnsymmetricLikewise) {
  const RunResult run = run_deck(stored(bar_deck().text(), "DISK USYM"));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(number(run.report, matrix_length), 2);
  EXPECT_EQ(number(run.report, without_elements), 164 + 40 + 8);
}

/// A tower of bars: `levels` times four free nodes, pushed sideways until bars yield and steps fail and are cut.
TrussDeck tower(int levels) {
  TrussDeck deck;
  const double corner[4][2] = {{0, 0}, {10, 0}, {10, 10}, {0, 10}};
  for (int level = 0; level <= levels; ++level)
    for (const auto& at : corner) deck.node(at[0], at[1], 10.0 * level);
  for (int node = 1; node <= 4 * (levels + 1); ++node) deck.fix(node, node <= 4 ? "111111" : "000111");
  deck.material(1000, 0.02, 1.0, 1.0);
  deck.section(1);
  for (int level = 1; level <= levels; ++level) {
    const int below = 4 * (level - 1), above = 4 * level;
    for (int k = 0; k < 4; ++k) {
      deck.bar(below + k + 1, above + k + 1);
      deck.bar(above + k + 1, above + (k + 1) % 4 + 1);
      deck.bar(below + k + 1, above + (k + 1) % 4 + 1);
    }
  }
  deck.pattern(4 * levels + 1, 0.4, 0.1, -0.2);
  SegmentCards push;
  push.STEP0 = 0.5;
  push.NSTEPS = 50;
  push.MAXIT = 3;
  push.KTERM = 0;
  push.KPRINT = 2;
  push.NTOP = 3;
  // Reduction, smallest step, attempts, lower iteration limit, increase factor, largest step.
  push.card4 = "       0.5     0.001   10    2       1.5       1.0";
  SegmentCards back = push;
  back.factors = {-0.5};
  deck.stat({push, back});
  return deck;
}

TEST(StorageScheme, DoesNotShowBehindTheStorageReport) {
  const std::string deck = tower(4).text();
  for (const std::string type : {"SYMM", "USYM"}) {
    const RunResult core = run_deck(stored(deck, "CORE " + type));
    ASSERT_EQ(core.status, 0) << core.errors;
    ASSERT_TRUE(has(core.report, "STATE AT BEGINNING OF STEP RECOVERED")) << "a step must fail on the way";
    std::vector<int> seen;
    for (const int words : {0, 170, 220, 400, 700, 1100}) {
      const RunResult disk = run_deck(stored(deck, "DISK " + type, words));
      seen.push_back(blocks(disk.report));
      EXPECT_EQ(disk.status, core.status) << disk.errors;
      EXPECT_EQ(first_difference(macros(disk.report), macros(core.report)), "") << type << " " << words;
      EXPECT_EQ(first_difference(disk.progress.substr(disk.progress.find("\n")),
                                 core.progress.substr(core.progress.find("\n"))),
                "");
      EXPECT_EQ(disk.levels, core.levels);
      EXPECT_EQ(first_difference(disk.top, core.top), "") << type << " " << words;
    }
    EXPECT_EQ(seen.front(), 1);
    EXPECT_GE(*std::max_element(seen.begin(), seen.end()), 10);
  }
}

TEST(StorageScheme, DoesNotDependOnThePool) {
  const std::string deck = stored(tower(4).text(), "DISK");
  const RunResult large = run_deck(deck, "16M"), small = run_deck(deck, "1M");
  EXPECT_EQ(first_difference(macros(large.report), macros(small.report)), "");
}

TEST(StorageScheme, OfAnEarlierProblemIsForgotten) {
  TrussDeck deck = tower(3);
  const std::string problem = deck.problem();
  std::string alone;
  const std::vector<std::pair<std::string, int>> cards{{"DISK USYM", 300}, {"CORE SYMM", 0}, {"DISK SYMM", 0},
                                                       {"DISK SYMM", 200}, {"CORE USYM", 0}, {"DISK SYMM", 200},
                                                       {"CORE SYMM", 0}};
  std::string together;
  for (const auto& [scheme, words] : cards) {
    together += stored(problem, scheme, words);
    alone += macros(run_deck(stored(problem, scheme, words) + " STOP\n").report);
  }
  const RunResult run = run_deck(together + " STOP\n");
  EXPECT_EQ(run.status, 0) << run.errors;
  // The number of the static macro alone goes on over the problems.
  EXPECT_EQ(first_difference(macros(run.report), alone), "");
}

TEST(StorageScheme, StartsEachProblemWithTheFilesOfAStart) {
  const std::string problem = stored(tower(3).problem(), "DISK", 200);
  ProcessRun run(problem + stored(bar_deck().text(), "CORE"));
  run.run("4M");
  const UnitBlock first;
  EXPECT_EQ(units.NT3, first.NT3) << "assemblies exchange it";
  EXPECT_EQ(units.NT4, first.NT4) << "and factorisations this";
  EXPECT_EQ(units.NT7, first.NT7);
  EXPECT_EQ(units.NT8, first.NT8);
  EXPECT_EQ(units.NT13, first.NT13);
}

// 3000 bars side by side, of 359 words each: more than a pool of a million words holds.
std::string many_bars() {
  TrussDeck deck = bar_along_x();
  for (int i = 1; i < 3000; ++i) deck.bar(1, 2);
  deck.pattern(2, 3000, 0, 0);
  deck.stat({{}});
  return deck.text();
}

TEST(ElementRecords, ThatDoNotFitStopACoreJobAndStreamOnDisk) {
  const RunResult core = run_deck(many_bars(), "1M");
  EXPECT_EQ(core.status, 1);
  EXPECT_TRUE(has(core.report, "FATAL ERROR DETECTED IN ELDATA - JOB ABORTED"));
  const RunResult disk = run_deck(stored(many_bars(), "DISK"), "1M");
  EXPECT_EQ(disk.status, 0) << disk.errors;
  EXPECT_NEAR(truss_rows(disk.report)[2999].force, 1.0, 1e-12);
}

TEST(ElementRecords, OfADiskJobStandInFilesAndOfACoreJobDoNot) {
  for (const bool on_disk : {true, false}) {
    ProcessRun run(stored(tower(3).text(), on_disk ? "DISK" : "CORE", 200));
    run.run();
    // What the close-down leaves of the scratch files.
    for (const char* file : {"TAP3", "TAP7", "TAP8", "TAP9"}) EXPECT_EQ(!run.contents(file).empty(), on_disk) << file;
    for (const char* file : {"TAP5", "TAP10", "fort.1", "fort.18"}) EXPECT_FALSE(ProcessRun::exists(file)) << file;
  }
}

TEST(Blocking, WithoutRoomStopsTheJobAfterItsDataInput) {
  for (const int words : {1, 4, -1, -200000000}) {
    const RunResult run = run_deck(stored(tower(3).text(), "DISK", words));
    EXPECT_EQ(run.status, 1) << words;
    EXPECT_TRUE(has(run.report, "\n\n\n\n     **** PROGRAM ERROR ****   INSUFFICIENT STORAGE\n\n\n"));
    EXPECT_EQ(blocks(run.report), 0);
    EXPECT_TRUE(has(run.report, " STORAGE REQUIREMENTS\n")) << "data input goes to its end";
    EXPECT_TRUE(has(run.progress, "TIDEARC Version"));
    EXPECT_FALSE(has(run.report, "STATIC ANALYSIS CONTROL INFORMATION"));
    EXPECT_FALSE(run.ended);
    EXPECT_TRUE(has(run.errors, "insufficient storage")) << run.errors;
  }
}

TEST(Blocking, IntoMoreThanTwentyBlocksStopsTheJobLikewise) {
  // Blocks of 13 reals and more are possible; 36 columns of up to 24 entries.
  const RunResult run = run_deck(stored(tower(6).text(), "DISK", 104));
  EXPECT_EQ(run.status, 1);
  EXPECT_GT(blocks(run.report), 20);
  EXPECT_TRUE(has(run.report, "**** PROGRAM ERROR ****   NUMBER OF MATRIX BLOCKS MORE THAN LIMIT OF    20\n"));
  EXPECT_TRUE(has(run.report, " STORAGE REQUIREMENTS\n"));
  EXPECT_FALSE(run.ended);
}

TEST(Blocking, IsRefusedInADataCheckToo) {
  TrussDeck deck = tower(3);
  deck.command = "CHEC";
  EXPECT_EQ(run_deck(stored(deck.text(), "DISK", 200)).status, 0);
  EXPECT_EQ(run_deck(stored(deck.text(), "DISK", 1)).status, 1);
}

TEST(StorageCard, ThatCannotBeReadStops) {
  const RunResult run =
      run_deck(stored(bar_deck().text(), "DISK")
                   .replace(stored(bar_deck().text(), "DISK").find("         0\n"), 10, "       1.5"));
  EXPECT_EQ(run.status, 2);
  EXPECT_TRUE(has(run.errors, "record 4")) << run.errors;
}

TEST(StorageCard, WithMoreWordsThanThereAreMeansAll) {
  const RunResult run = run_deck(stored(bar_deck().text(), "DISK", 2147483647));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(blocks(run.report), 1);
}

TEST(MemberForces, OfAnEarlierProblemAreForgotten) {
  std::vector<std::string> lines = lines_of(bar_deck().problem());
  lines[0].replace(1, 4, "CHEC");
  lines[2] = " NEWF    2";
  std::string first;
  for (const std::string& line : lines) {
    first += line + "\n";
    if (line == "   -1   -1   -1") first += "    0    0    0    1\n";
  }
  ProcessRun run(first + bar_deck().text());
  EXPECT_EQ(run.run(), 0) << run.errors();
  EXPECT_EQ(units.TAPFRC, 0);
  EXPECT_EQ(run.contents("MEMBER.FRC").size(), 28u) << "its first record stays";
}

}  // namespace
}  // namespace tidearc::test
