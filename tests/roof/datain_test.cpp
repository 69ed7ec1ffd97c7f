// Reading a problem: the control cards, their echo, their limits, and the sections that a deck can ask for.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "run_deck.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

constexpr int line_data_file = 1;
constexpr int line_post = 2;
constexpr int line_storage = 3;
constexpr int line_sizes = 4;

/// Two nodes, one elastic bar, one load, one segment.
TrussDeck bar_deck() {
  TrussDeck deck;
  deck.node(0, 0, 0);
  deck.node(10, 0, 0);
  deck.fix(1, "111111");
  deck.fix(2, "011111");
  deck.material(1000);
  deck.section(1);
  deck.bar(1, 2);
  deck.pattern(2, 1, 0, 0);
  deck.stat({{}});
  return deck;
}

std::vector<std::string> lines_of(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) lines.push_back(line);
  return lines;
}
std::string joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

/// The bar deck with one line replaced.
std::string with_line(int number, const std::string& text) {
  std::vector<std::string> lines = lines_of(bar_deck().text());
  lines[static_cast<std::size_t>(number)] = text;
  return joined(lines);
}

/// The bar deck with one field (1..15) of the size card replaced.
std::string with_size(int field, int value) {
  std::vector<std::string> lines = lines_of(bar_deck().text());
  std::string& card = lines[line_sizes];
  card.resize(75, ' ');
  std::string text = std::to_string(value);
  card.replace(static_cast<std::size_t>(5 * (field - 1)), 5, std::string(5 - text.size(), ' ') + text);
  return joined(lines);
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Label, blank, dots, blank, '=' in report column 55, then the value in five columns.
std::string count_line(const std::string& label, const std::string& value) {
  std::string line = "     " + label + " ";
  line.append(53 - line.size(), '.');
  return line + " =" + std::string(5 - value.size(), ' ') + value + "\n";
}

TEST(Datain, ABlankStorageCardMeansCoreAndSymmetric) {
  const RunResult run = run_deck(bar_deck().text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(has(run.report, count_line("OVERALL STORAGE SCHEME", "CORE")));
  EXPECT_TRUE(has(run.report, count_line("STIFFNESS TYPE", "SYMM")));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF WORDS IN ONE BLOCK FOR DISK OPTION", "0")));
}

TEST(Datain, AnUnknownSchemeRunsInCoreAndIsEchoedAsItStands) {
  const RunResult run = run_deck(with_line(line_storage, " CORX"));
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(has(run.report, count_line("OVERALL STORAGE SCHEME", "CORX")));
}

TEST(Datain, CodeWordsAreComparedAsTheyStand) {
  EXPECT_EQ(run_deck(with_line(line_storage, "  DISK")).status, 0) << "' DIS' is not 'DISK'";
}

TEST(Datain, DiskAndUnsymmetricJobsStopWithAMessage) {
  const RunResult disk = run_deck(with_line(line_storage, " DISK"));
  EXPECT_EQ(disk.status, 1);
  EXPECT_TRUE(has(disk.report, "STORAGE SCHEME DISK IS NOT AVAILABLE"));
  EXPECT_TRUE(has(disk.errors, "line 4, columns 2-5"));
  const RunResult usym = run_deck(with_line(line_storage, " CORE USYM"));
  EXPECT_EQ(usym.status, 1);
  EXPECT_TRUE(has(usym.report, "STIFFNESS TYPE USYM IS NOT AVAILABLE"));
}

TEST(Datain, EchoesTheSizeCard) {
  const RunResult run = run_deck(bar_deck().text());
  EXPECT_TRUE(has(run.report, " PROBLEM SIZE CONTROL INFORMATION\n"));
  EXPECT_TRUE(has(run.report, count_line("TOTAL NUMBER OF NODES", "2")));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF NODE COORD. GENERATION COMMANDS", "0")));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF DIFFERENT GROUPS OF ELEMENTS", "1")));
  EXPECT_TRUE(has(run.report, count_line("BAND-WIDTH REDUCTION CODE", "0")));
  EXPECT_TRUE(has(run.report, "1:  CONSTANT LBEM GEOMETRIC STIFFNESS"));
}

TEST(Datain, MoreNodesThanAllowedStopTheRun) {
  const RunResult run = run_deck(with_size(1, 63001));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.report, "ERROR! PRGROM STOPS\n"));
  EXPECT_TRUE(has(run.report, " DUE TO THE EXCEEDENCE OF THE ALLOWABLE NUMBER OF NODES."));
  EXPECT_TRUE(has(run.report, " INCREASE THE PARAMETER MAXNOD IN FILE MAXDOF.PAR AND\n RECOMPLIE TIDEARC."));
  EXPECT_TRUE(has(run.errors, "line 5, columns 1-5"));
}

/// 63000 nodes on a line from two control nodes; `fixed` components of node 1 are constrained.
std::string largest_deck(const std::string& codes) {
  std::string t = " STAR   P4.314  LARGEST\n\n\n\n63000    2    0    0    0    0    1    0    0    0\n";
  t += "    1       0.0       0.0       0.0\n63000   62999.0       0.0       0.0\n";
  t += "    1    " + codes + "\n";
  t += "\n\n    0    0    0\nNONE\n STOP\n";
  return t;
}

TEST(Datain, AsManyNodesAsAllowedPass) {
  const RunResult run = run_deck(largest_deck("111111"), "64M");
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(run.ended);
}

TEST(Datain, TheEquationLimitIsOnTheEntryBehindTheLast) {
  // 63000 nodes with one constraint: 377999 equations and one entry more are exactly the 378000 that are possible.
  EXPECT_EQ(run_deck(largest_deck("100000"), "64M").status, 0);
  const RunResult run = run_deck(largest_deck("000000"), "64M");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.report,
                  " ERROR! PRGROM STOPS\n DUE TO THE EXCEEDENCE OF THE ALLOWABLE NUMBER OF DOFs.\n"
                  " INCREASE THE PARAMETER MAXDOF IN FILE MAXDOF.PAR AND\n RECOMPLIE TIDEARC.\n"));
}

TEST(Datain, OnlyTheGravityCodeOneReadsAGravityCard) { EXPECT_EQ(run_deck(with_size(11, 2)).status, 0); }

TEST(Datain, SectionsThatAreNotAvailableStopTheRunByTheirName) {
  const RunResult renumbered = run_deck(with_size(15, 3));
  EXPECT_EQ(renumbered.status, 1);
  EXPECT_TRUE(has(renumbered.report, "FATAL ERROR DETECTED IN RENUMB - JOB ABORTED"));
  const RunResult eigen = run_deck(with_size(12, 1));
  EXPECT_EQ(eigen.status, 1);
  EXPECT_TRUE(has(eigen.report, "FATAL ERROR DETECTED IN EIGNIN - JOB ABORTED"));
}

TEST(Datain, DataFilesAndPostFilesThatAreNotAvailableStopTheRun) {
  for (const std::string code : {" OLDF", " NEWF"}) {
    const RunResult run = run_deck(with_line(line_data_file, code));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.report, "FATAL ERROR DETECTED IN RSTRT1 - JOB ABORTED"));
  }
  EXPECT_EQ(run_deck(with_line(line_post, " OLDF")).status, 1);
  EXPECT_EQ(run_deck(with_line(line_post, " NOFL")).status, 0);
}

TEST(Datain, EchoesTheDataFileCardWithItsIdentifier) {
  const RunResult run = run_deck(with_line(line_data_file, " NOFL    3    1JACKET 7, NORTH SEA"));
  EXPECT_TRUE(has(run.report, " PROBLEM INITIATION INFORMATION\n"));
  EXPECT_TRUE(has(run.report, count_line("DATA FILE CODE (DATF)", "NOFL")));
  EXPECT_TRUE(has(run.report, count_line("RESTART RESULTS SEQUENCE NUMBER", "3")));
  EXPECT_TRUE(has(run.report, "D A T A  F I L E  I D E N T I F I E R ..........\n     JACKET 7, NORTH SEA"));
}

TEST(Datain, WritesThePageOfTheStaticLoadCard) {
  const RunResult run = run_deck(bar_deck().text());
  EXPECT_TRUE(has(run.report, " STATIC LOAD SPECIFICATION CONTROL INFORMATION\n"));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF NODAL FORCE PATTERNS", "1")));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF STATIC PRESCRIBED DISP. PATTERNS", "0")));
}

TEST(Datain, StartsTheLevelHistoryAndTheProgressFile) {
  const RunResult run = run_deck(bar_deck().text());
  EXPECT_EQ(run.levels.rfind(" SEQ_NO  TIME  LOAD_LEVEL UNBALANCED_FORCE MACRO MACRO_SEQ\n", 0), 0u) << run.levels;
  EXPECT_EQ(run.progress.rfind(" TIDEARC Version: P4.314 Date: ", 0), 0u) << run.progress;
}

TEST(Datain, ReportsTheStorageThatTheProblemTakes) {
  const RunResult run = run_deck(bar_deck().text());
  // One equation: two rows of the pool hold nodes (2 nodes: 12 + 12 + 2 words), vectors of two reals, and so on; what
  // counts here is that both totals are told and differ by the 359 words of one truss record and its pad word.
  const auto number = [&](const std::string& label) {
    const std::size_t at = run.report.find(label);
    return at == std::string::npos ? -1 : std::stoi(run.report.substr(at + label.size(), 12));
  };
  const int without = number("STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =");
  const int least = number("MINIMUM TOTAL STORAGE REQUIRED ................. =");
  EXPECT_GT(without, 0);
  EXPECT_EQ(least - without, 359);
  EXPECT_EQ(number("TOTAL STORAGE PROVIDED ......................... ="), 4000000);
  EXPECT_EQ(number("TOTAL NUMBER OF EQUILIBRIUM EQUATIONS .......... ="), 1);
  EXPECT_EQ(number("STORAGE FOR STRUCTURE STIFFNESS MATRIX ......... ="), 1);
}

TEST(Datain, ADeckInWindowsLineEndsWithTabsAndWithoutALastLineEndIsTheSameDeck) {
  const std::string plain = bar_deck().text();
  std::string dressed;
  for (const char c : plain) dressed += c == '\n' ? std::string("\r\n") : std::string(1, c);
  dressed.resize(dressed.size() - 2);
  EXPECT_EQ(run_deck(dressed).status, 0);
}

TEST(Datain, TooManyPatternsStopWithoutACloseDown) {
  TrussDeck deck = bar_deck();
  for (int i = 0; i < 500; ++i) deck.pattern(2, 1, 0, 0);
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(
      has(run.report, "ERROR! PROGRAM STOPS BECAUSE NUMBER OF STATIC LOADS 501 EXCEEDING NUMBER OF ALLOWABLES "))
      << run.report.substr(run.report.size() > 300 ? run.report.size() - 300 : 0);
}

TEST(Datain, EnergyFilesAreMadeOnDemand) {
  const RunResult run = run_deck(with_size(13, 1));
  EXPECT_EQ(run.status, 0) << run.errors;
}

}  // namespace
}  // namespace tidearc::test
