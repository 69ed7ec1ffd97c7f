// The look ahead at the macros of a problem, and what it does to the storage of whole decks.
#include "roof/macros.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <string>
#include <vector>

#include "process_fixture.h"
#include "run/units.h"
#include "run_deck.h"

namespace tidearc::test {
namespace {

bool ahead(const std::string& deck) {
  const Scratch scratch(deck);
  const bool found = dynamic_macro_ahead();
  EXPECT_EQ(deck_line(), 0) << "nothing is read off";
  return found;
}

TEST(MacroAhead, IsADynamicOneByItsKeywordToTheLetter) {
  EXPECT_TRUE(ahead("DYN1    ONE\nNONE\n STOP\n"));
  EXPECT_TRUE(ahead("DYN2\r\nNONE\r\n STOP\r\n"));
  EXPECT_TRUE(ahead("STAT\n    1\n\n\nEIGN\nDYN2SOON")) << "columns 1 to 4 alone count";
  for (const std::string line :
       {"STAT", "EIGN", "VISC", "SAVE", "REST", "DYN3", "DYN", " DYN1", "dyn2", "NONEDYN1", ""})
    EXPECT_FALSE(ahead(line + "\nNONE\n STOP\n")) << line;
  EXPECT_FALSE(ahead(""));
}

TEST(MacroAhead, OfTheNextProblemIsNotOfThisOne) {
  for (const std::string first : {" STAR   P4.314  NEXT", " CHECK", "CSTOP"}) {
    EXPECT_FALSE(ahead("STAT\nNONE\n" + first + "\nDYN2\nNONE\n STOP\n")) << first;
    EXPECT_FALSE(ahead("NONE\nA HEAD\n\nX\n" + first + "\nDYN2\n")) << first;
    EXPECT_TRUE(ahead("STAT\n" + first + "\nDYN2\n")) << first << " ends nothing without a NONE before it";
  }
  EXPECT_TRUE(ahead("NONE\nSTAR\nDYN2\n")) << "a first card begins in column 2";
}

TEST(MacroAhead, IsFoundBehindACardThatSaysNone) {
  EXPECT_TRUE(ahead("STAT\nNONE\n\n       1.0\nDYN2\nNONE\n STOP\n"));
}

TEST(MacroAhead, IsLookedForFromTheLineThatIsNextToBeRead) {
  const Scratch scratch("DYN1\nNONE\n STAR\nSTAT\nNONE\n STOP\n");
  std::string line;
  EXPECT_TRUE(dynamic_macro_ahead());
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_FALSE(dynamic_macro_ahead());
  ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, "STAT");
}

TEST(MacroAhead, IsTakenForGrantedWhereThereIsNoWayBack) {
  const Scratch scratch;
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int writer = open("pipe", O_RDWR);
  ASSERT_EQ(::write(writer, "NONE\n STOP\n", 11), 11);
  open_formatted(units.NDIN, "pipe", OpenMode::existing);
  close(writer);
  EXPECT_TRUE(dynamic_macro_ahead());
}

// Two steps of a tenth of a second.
const char constant_steps[] = "DYN2    CONSTANT STEPS\n       0.1\n     2   0\n    1    1    0    1    0     1.E-6";
// Its cards are missing: these decks are looked at for their data input.
const char variable_steps[] = "DYN1    VARIABLE STEPS";

/// The bar deck, which takes 168 words (see the storage report's own test), with a macro behind its STAT.
TrussDeck bar_deck(const std::string& macro = "") {
  TrussDeck deck = bar_without_macros();
  deck.stat({{}});
  if (!macro.empty()) deck.macro(macro);
  return deck;
}

/// The storage without element data that each problem of a report takes.
std::vector<int> storage_figures(const std::string& report) {
  const std::string label = "STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =";
  std::vector<int> found;
  for (std::size_t at = report.find(label); at != std::string::npos; at = report.find(label, at + 1))
    found.push_back(std::stoi(report.substr(at + label.size(), 12)));
  return found;
}

/// What the report tells of the dynamic macro.
std::string dynamic_pages(const std::string& report) {
  const std::size_t begin = report.find("CONSTANT STEPS");
  return report.substr(begin, report.find("E X E C U T I O N", begin) - begin);
}

// 13 vectors of two equations' room, the sink one of them: 13 times 4 words.
constexpr int dynamic_words = 52;

TEST(StorageOfDynamics, IsTakenWhereADynamicMacroIsToCome) {
  EXPECT_EQ(storage_figures(run_deck(bar_deck().text()).report), std::vector<int>{168});
  EXPECT_EQ(storage_figures(run_deck(bar_deck("EIGN").text()).report), std::vector<int>{168});
  EXPECT_EQ(storage_figures(run_deck(bar_deck(variable_steps).text()).report), std::vector<int>{168 + dynamic_words});
  const RunResult run = run_deck(bar_deck(constant_steps).text());
  EXPECT_EQ(storage_figures(run.report), std::vector<int>{168 + dynamic_words});
  EXPECT_EQ(run.status, 0) << run.report << run.errors;
}

TEST(StorageOfDynamics, IsThatOfTheExecutionInADataCheck) {
  for (const char* macro : {"", constant_steps}) {
    TrussDeck deck = bar_deck(macro);
    const std::vector<int> executed = storage_figures(run_deck(deck.text()).report);
    deck.command = "CHEC";
    const RunResult checked = run_deck(deck.text());
    EXPECT_EQ(checked.status, 0) << checked.errors;
    EXPECT_EQ(storage_figures(checked.report), executed);
  }
}

TEST(StorageOfDynamics, IsEachProblemsOwn) {
  const std::string still = bar_deck().problem(), moving = bar_deck(constant_steps).problem();
  const RunResult alone = run_deck(moving + " STOP\n");
  const RunResult run = run_deck(still + "A HEAD OF THE SECOND\n" + moving + still + " STOP\n");
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(storage_figures(run.report), (std::vector<int>{168, 168 + dynamic_words, 168}));
  EXPECT_EQ(dynamic_pages(run.report), dynamic_pages(alone.report));
}

/// A segment has one card for each of its six groups, of any text where the group has no patterns: two such cards.
std::string with_text_on_factor_cards(const std::string& deck, const std::string& first, const std::string& second) {
  const std::size_t at = deck.find("\n\n\n", deck.find("STAT"));
  return deck.substr(0, at) + "\n" + first + "\n" + second + "\n" + deck.substr(at + 3);
}

TEST(StorageOfDynamics, IsTakenBehindAFactorCardThatSaysNone) {
  const std::string deck = bar_deck(constant_steps).text();
  const RunResult run = run_deck(with_text_on_factor_cards(deck, "NONE", "NONE"));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_EQ(storage_figures(run.report), std::vector<int>{168 + dynamic_words});
  EXPECT_EQ(dynamic_pages(run.report), dynamic_pages(run_deck(deck).report));
}

// Both texts that end a problem, on cards that do not: the one way past the look ahead.
TEST(StorageOfDynamics, ThatWasNotTakenStopsTheMacro) {
  for (const char* macro : {constant_steps, variable_steps}) {
    const std::string keyword = std::string(macro).substr(0, 4);
    const RunResult run = run_deck(with_text_on_factor_cards(bar_deck(macro).text(), "NONE", " STOP"));
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(storage_figures(run.report), std::vector<int>{168});
    EXPECT_TRUE(contains(run.report, " NO STORAGE WAS LAID DOWN FOR THE MACRO " + keyword + "\n"));
    EXPECT_TRUE(contains(run.report, "FATAL ERROR DETECTED IN " + keyword + "   - JOB ABORTED\n"));
    EXPECT_TRUE(contains(run.errors, "columns 1-4: no storage was laid down for " + keyword + ": a line that begins"))
        << run.errors;
    EXPECT_FALSE(run.ended);
  }
}

}  // namespace
}  // namespace tidearc::test
