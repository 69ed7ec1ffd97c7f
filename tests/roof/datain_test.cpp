// Reading a problem: the control cards, their echo, their limits, and the sections that a deck can ask for.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "run_deck.h"
#include "scratch.h"
#include "sea/wave_state.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

constexpr int line_data_file = 1;
constexpr int line_post = 2;
constexpr int line_storage = 3;
constexpr int line_sizes = 4;

/// Two nodes, one elastic bar, one load, one segment.
TrussDeck bar_deck() {
  TrussDeck deck = loaded_bar(1);
  deck.stat({{}});
  return deck;
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

/// Nodes on a line from two control nodes; the components of node 1 in `codes` are constrained.
std::string line_deck(int count, const std::string& codes, int systems = 0) {
  char card[80];
  std::snprintf(card, sizeof card, "%5d    2    0    0%5d    0    1    0    0    0\n", count, systems);
  std::string t = std::string(" STAR   P4.314  LARGEST\n\n\n\n") + card;
  std::snprintf(card, sizeof card, "%5d%10.1f       0.0       0.0\n", count, count - 1.0);
  t += std::string("    1       0.0       0.0       0.0\n") + card;
  t += "    1    " + codes + "\n";
  t += "\n\n    0    0    0\nNONE\n STOP\n";
  return t;
}

std::string largest_deck(const std::string& codes) { return line_deck(63000, codes); }

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

TEST(Datain, RenumberingStandsBetweenElementsAndMassSummary) {
  const RunResult run = run_deck(with_size(15, 3));
  EXPECT_EQ(run.status, 0) << run.errors;
  const std::string report = trimmed(run.report);
  const auto elements = report.find("ELEMENT DATA INPUT DIRECTLY");
  const auto renumbering = report.find(" BAND-WIDTH REDUCTION COMMANDS\n");
  const auto masses = report.find(" LUMPED MASS SUMMARY\n");
  EXPECT_LT(elements, renumbering);
  EXPECT_LT(renumbering, masses);
  EXPECT_NE(masses, std::string::npos);
}

/// The bar deck with one field (1..8) of the dynamic load control card set.
std::string with_dynamic(int field, int value) {
  std::vector<std::string> lines = lines_of(bar_deck().text());
  // The card stands before the response output card of the bar deck.
  std::size_t at = 0;
  while (lines[at] != "   -1   -1   -1") ++at;
  std::string& card = lines[at - 1];
  card.assign(static_cast<std::size_t>(5 * field), ' ');
  card.replace(card.size() - 1, 1, std::to_string(value));
  return joined(lines);
}

/// The bar deck with a wave section: the size card asks for a gravity card of that direction word, the dynamic load
/// control card for waves; `section` are the cards behind it.
std::string with_wave(const std::string& section, const std::string& WDIR = "-Z") {
  std::vector<std::string> lines = lines_of(with_dynamic(7, 1));
  std::size_t at = 0;
  while (lines[at] != "   -1   -1   -1") ++at;
  lines.insert(lines.begin() + static_cast<std::ptrdiff_t>(at), section);
  std::string& sizes = lines[line_sizes];
  sizes.resize(std::max<std::size_t>(sizes.size(), 55), ' ');
  sizes.replace(50, 5, "    1");
  lines.insert(lines.begin() + line_sizes + 1,
               "   " + WDIR + "             0.   10.0553     1.025                9.81");
  return joined(lines);
}

const std::string airy_section = "    1\n       12.       12.        1.        0.        0.        0.       50.\n";

TEST(Datain, ReadsTheWaveSectionBetweenDynamicLoadsAndOutputLists) {
  const RunResult run = run_deck(with_wave(airy_section));
  EXPECT_EQ(run.status, 0) << run.report << run.errors;
  EXPECT_LT(run.report.find("IMPOSED DISPLACEMENT HISTORIES"), run.report.find(" WAVE CONTROL DATA"));
  EXPECT_LT(run.report.find(" WAVE CONTROL DATA"), run.report.find(" RESPONSE OUTPUT CONTROL INFORMATION"));
  EXPECT_TRUE(has(run.report, "        WAVE CELERITY                                   17.069\n"));
}

TEST(Datain, StopsInAWaveSectionThatCannotBeWorkedWith) {
  const RunResult run = run_deck(with_wave("    9"));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.report, "WAVE TYPE MUST BE BETWEEN 0 AND 7"));
  EXPECT_FALSE(has(run.report, " RESPONSE OUTPUT CONTROL INFORMATION"));
}

TEST(Datain, OnlyChecksAWaveProblemWhoseGravityHasNoDirection) {
  const RunResult run = run_deck(with_wave(airy_section, "+Z"));
  EXPECT_EQ(run.status, 4);  // the macro does not run
  EXPECT_TRUE(has(run.report, "ERROR IN SPELLING OF WATER DIRECTION, WDIR =+Z"));
  EXPECT_TRUE(has(run.report, "WAVE CELERITY"));
}

TEST(Datain, ForgetsTheSeaOfTheProblemBefore) {
  std::string first = with_wave(airy_section);
  first.erase(first.rfind(" STOP"));
  const RunResult run = run_deck(first + bar_deck().text());
  EXPECT_EQ(run.status, 0) << run.report << run.errors;
  EXPECT_EQ(wave.IWTY, wave_none);
  EXPECT_EQ(wave.H, 0.0);
}

// An embedded sea on a current with two magnification rows, then a linear wave by itself.
TEST(Datain, SolvesAWaveBehindAnotherSeaAsItDoesAlone) {
  const std::string embedded_section =
      "    8    1" + std::string(45, ' ') +
      "    2\n    1    2    5\n        0.\n        0.        1.        0.        0.       2.\n" +
      "       50.        1.        0.        0.       1.\n" +
      "       12.       12.        1.        0.        0.        0.       50.\n" + std::string(60, ' ') + "    3\n" +
      "       40.\n    1\n    1        0.        1.        0.\n        8.        2.       30.\n" +
      "        0.        2.\n        9.        3.";
  std::string first = with_wave(embedded_section);
  first.erase(first.rfind(" STOP"));
  const auto page = [](const std::string& report) {
    const std::size_t begin = report.rfind(" WAVE CONTROL DATA");
    return report.substr(begin, report.find(" RESPONSE OUTPUT CONTROL INFORMATION", begin) - begin);
  };
  const auto storage_line = [](const std::string& report) {
    return report.substr(report.rfind("STORAGE REQUIRED EXCLUDING ELEMENT DATA"), 63);
  };
  const RunResult alone = run_deck(with_wave(airy_section));
  const RunResult behind = run_deck(first + with_wave(airy_section));
  EXPECT_EQ(behind.status, 0) << behind.report << behind.errors;
  EXPECT_EQ(page(behind.report), page(alone.report));
  EXPECT_EQ(storage_line(behind.report), storage_line(alone.report)) << "the current table has gone";
  EXPECT_EQ(wave.NCOMP, 0);
  EXPECT_EQ(wave.NORAMP, 0);
  EXPECT_EQ(wave.NTIME, 0);
  EXPECT_EQ(wave.surface_current, (std::array<double, 3>{}));
  EXPECT_EQ(wave.NN, 0);
}

TEST(Datain, VesselsStopByTheNameOfTheirReader) {
  EXPECT_TRUE(has(run_deck(with_dynamic(8, 1)).report, "FATAL ERROR DETECTED IN VESSEL - JOB ABORTED"));
  EXPECT_EQ(run_deck(with_dynamic(7, 2)).status, 0) << "only the code 1 counts";
  EXPECT_EQ(run_deck(with_dynamic(8, 2)).status, 0);
}

TEST(Datain, RigidBodyOutputStops) {
  std::vector<std::string> lines = lines_of(bar_deck().text());
  for (std::string& line : lines)
    if (line == "   -1   -1   -1") line += "    1";
  EXPECT_TRUE(has(run_deck(joined(lines)).report, "FATAL ERROR DETECTED IN RIGID  - JOB ABORTED"));
}

TEST(Datain, DataFilesThatAreNotAvailableStopTheRun) {
  for (const std::string code : {" OLDF", " NEWF"}) {
    const RunResult run = run_deck(with_line(line_data_file, code));
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.report, "FATAL ERROR DETECTED IN RSTRT1 - JOB ABORTED"));
    EXPECT_TRUE(has(run.errors, "TAModel.inp line 2, columns 2-5: DATA FILE CODE " + code.substr(1)));
  }
}

/// The bar deck with post-processing to a new file: the code, and the output card with its lists.
std::string post_deck(const std::string& output_card, bool check) {
  std::vector<std::string> lines = lines_of(bar_deck().text());
  if (check) lines[0].replace(1, 4, "CHEC");
  lines[line_post] = " NEWF    2";
  for (std::string& line : lines)
    if (line == "   -1   -1   -1") line += "\n" + output_card;
  return joined(lines);
}

TEST(Datain, PostFilesStopAnExecutionAfterTheWholeDeckHasBeenRead) {
  const RunResult run = run_deck(post_deck("    1    0    0    1       0.5      10.0    1\n    2", false));
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.report, " POST-PROC NODAL OUTPUT CONTROL INFO\n"));
  EXPECT_TRUE(has(run.report, "LIST OF NODES FOR DISPLACEMENT POST-PROCESSING"));
  EXPECT_TRUE(has(run.report, " STORAGE REQUIREMENTS"));
  EXPECT_TRUE(has(run.report, "FATAL ERROR DETECTED IN RSTRT6 - JOB ABORTED"));
  EXPECT_TRUE(has(run.errors, "TAModel.inp line 3, columns 2-5: POST-PROCESSOR FILE CODE NEWF"));
  EXPECT_EQ(run.member.size(), 28u) << "one record of twenty characters between its lengths";
  EXPECT_TRUE(has(run.member, "TIME HISTORY FORCE"));
}

TEST(Datain, PostFilesDoNotStopADataCheck) {
  const RunResult run = run_deck(post_deck("    0    0    0", true));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(run.ended);
  EXPECT_TRUE(run.member.empty()) << "nobody asked for member forces";
}

TEST(Datain, OldPostFilesStopAndNoPostFilesDoNot) {
  EXPECT_TRUE(has(run_deck(with_line(line_post, " OLDF")).report, "FATAL ERROR DETECTED IN RSTPST - JOB ABORTED"));
  EXPECT_EQ(run_deck(with_line(line_post, " NOFL")).status, 0);
}

TEST(Datain, StopsAtTheFirstPhaseThatDoesNotFit) {
  struct Case {
    std::string deck;
    const char* phase;
    const char* words;
  };
  // Words by hand: 1000 nodes and 60000 systems; 60000 and 20000 nodes of which one is fixed.
  const Case cases[] = {{line_deck(1000, "111111", 60000), "LOCAL COORDINATE SYSTEMS", "    1094000"},
                        {line_deck(60000, "111111"), "LUMPED NODAL MASSES", "    1859986"},
                        {line_deck(20000, "111111"), "ELEM. DATA INPUT", "    1579946"}};
  for (const Case& c : cases) {
    const RunResult run = run_deck(c.deck, "1M");
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(has(run.report, std::string("INPUT PHASE - ") + c.phase)) << c.phase;
    EXPECT_TRUE(has(run.report, std::string("STORAGE REQUIRED UP TO THIS PHASE =") + c.words)) << c.phase;
  }
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
  EXPECT_EQ(run.progress.rfind(" TIDEARC Version:  P4.314  Date:  ", 0), 0u) << run.progress;
}

TEST(Datain, ReportsTheStorageThatTheProblemTakes) {
  const RunResult run = run_deck(bar_deck().text());
  // Two nodes, one equation (vectors of 4 words), one pattern, one matrix entry. By hand: ID 12, coordinates 12, codes
  // 2, masses 4 and marks 2, element vector 4, three generated patterns 12, nodal temperatures 4, prescribed vector 4:
  // 56 words. Analysis vectors: 8 of 4, 2, 4, one pattern 4, 7 of 4, 4, 4, 2 of 4, 2, 4, 4: 96; histories of 3 by 2
  // nodes 12; two matrices of 2: 168 in all. A truss record takes 358 words and a pad word.
  const auto number = [&](const std::string& label) {
    const std::size_t at = run.report.find(label);
    return at == std::string::npos ? -1 : std::stoi(run.report.substr(at + label.size(), 12));
  };
  const int without = number("STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =");
  const int least = number("MINIMUM TOTAL STORAGE REQUIRED ................. =");
  EXPECT_EQ(without, 168);
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
  // Two records of one zero real on the second and the fourth file: two times 4 + 8 + 4 bytes. A third and fourth with
  // another group.
  const RunResult run = run_deck(with_size(13, 1));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(run.energy[1].size(), 32u);
  EXPECT_EQ(run.energy[3].size(), 32u);
  EXPECT_TRUE(run.energy[0].empty() && run.energy[2].empty() && run.energy[4].empty());
}

TEST(Datain, EnergyRecordsHaveTheirLimits) {
  const auto energy_deck = [](int nodes) {
    std::string deck = line_deck(nodes, "111111");
    const std::size_t card = deck.find("    2    0    0    0    0    1    0    0    0\n");
    deck.insert(card + 45, "    0    0    1");
    return deck;
  };
  EXPECT_EQ(run_deck(energy_deck(10001), "16M").status, 0) << "60000 equations";
  std::string beyond = energy_deck(10002);
  beyond.replace(beyond.find("    111111"), 10, "    000001");
  const RunResult run = run_deck(beyond, "16M");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.errors, "EXCEEDING LIMITS IN RSEGP(*) ARRAY")) << run.errors;
}

}  // namespace
}  // namespace tidearc::test
