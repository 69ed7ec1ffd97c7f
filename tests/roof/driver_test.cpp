// The problem loop, the macro loop and the exit statuses, on whole decks.
#include "roof/driver.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <string>

#include "process_fixture.h"
#include "roof/timlog.h"
#include "run/run_block.h"

namespace tidearc::test {
namespace {

std::string keyword_of_last_macro() { return {tidearc::run.LASTMA.data(), tidearc::run.LASTMA.size()}; }

/// The bar deck with macro cards before its NONE.
std::string deck_with(const std::string& macros) {
  TrussDeck deck = bar_without_macros();
  if (!macros.empty()) deck.macro(macros);
  return deck.text();
}
std::string checked_deck_with(const std::string& macros) {
  TrussDeck deck = bar_without_macros();
  deck.command = "CHEC";
  if (!macros.empty()) deck.macro(macros);
  return deck.text();
}

/// A bar whose second node does not exist: a data error.
TrussDeck deck_in_error() {
  TrussDeck deck = bar_without_macros();
  deck.pattern(99, 1, 0, 0);
  return deck;
}

/// A bar whose load it cannot carry: the macro ends as TERMINATED.
TrussDeck deck_that_terminates() {
  TrussDeck deck = bar_without_macros();
  SegmentCards segment;
  segment.MAXIT = 1;
  segment.TOLU = 1e-30;
  segment.KTERM = 1;
  segment.IROB = 1;  // the only iteration moves nothing, so the load stays out of balance
  deck.stat({segment});
  return deck;
}

TEST(Driver, AStopCardAloneLeavesAnEmptyReportAndNoSign) {
  ProcessRun process(" STOP\n");
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.report(), "");
  EXPECT_EQ(process.errors(), "");
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
  EXPECT_FALSE(ProcessRun::exists("TAP5"));
  EXPECT_FALSE(ProcessRun::exists("TAP10"));
  for (const char* kept : {"TAP3", "TAP4", "TAP6", "TAP7", "TAP8", "TAP9", "TAP11", "TAP23", "TAP24", "TAP25", "TAP26",
                           "TAP31", "TAP.ULTFAC", "TAP53", "TAP.SFORCE", "TAP202", "CompForces.bc1", "CompForces.bc2"})
    EXPECT_TRUE(ProcessRun::exists(kept)) << kept;
}

TEST(Driver, AProblemThatRunsToItsNoneLeavesTheSignAndTheTimeLog) {
  ProcessRun process(deck_with(""));
  EXPECT_EQ(process.run(), status_good) << process.errors();
  EXPECT_TRUE(ProcessRun::exists("TAP.OK"));
  EXPECT_EQ(std::filesystem::file_size("TAP.OK"), 0U);
  EXPECT_TRUE(contains(process.report(), " E X E C U T I O N   T I M E   L O G\n"));
  EXPECT_EQ(keyword_of_last_macro(), "NONE") << "stored when the model was read";
}

TEST(Driver, TheMacroTitleStartsANewPageForNoneToo) {
  ProcessRun process(deck_with("VISC    A VISCOUS TITLE\nNONE    THE END"));
  EXPECT_EQ(process.run(), status_good) << process.errors();
  EXPECT_TRUE(contains(process.report(), "\n1A VISCOUS TITLE\n\n\n"));
  EXPECT_TRUE(contains(process.report(), "\n1THE END\n\n\n"));
}

TEST(Driver, ViscIsAcceptedAndStoredAsTheLastMacro) {
  ProcessRun process(deck_with("VISC"));
  EXPECT_EQ(process.run(), status_good) << process.errors();
  ProcessRun stopped(deck_with("VISC\nPUSH"));  // the next problem's reading does not overwrite it
  stopped.run();
  EXPECT_EQ(keyword_of_last_macro(), "VISC");
}

TEST(Driver, AStaticMacroIsStoredAsTheLastMacro) {
  TrussDeck deck = bar_without_macros();
  deck.stat({{}});
  deck.macro("PUSH");
  ProcessRun process(deck.text());
  process.run();
  EXPECT_EQ(keyword_of_last_macro(), "STAT");
}

TEST(Driver, AnUnknownMacroStopsWithoutTimeLogAndSign) {
  ProcessRun process(deck_with("PUSH    OVER THE EDGE"));
  EXPECT_EQ(process.run(), status_fatal);
  EXPECT_TRUE(contains(process.report(),
                       "\n\n\n **** EXECUTION TERMINATED ****      INCORRECT ANALYSIS CONTROL CARD\n"
                       "FATAL ERROR DETECTED IN MAIN   - JOB ABORTED\n"))
      << process.report();
  EXPECT_FALSE(contains(process.report(), "OVER THE EDGE")) << "no title page";
  EXPECT_FALSE(contains(process.report(), "T I M E   L O G"));
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
  EXPECT_FALSE(ProcessRun::exists("TAP5")) << "scratch files vanish";
  EXPECT_TRUE(contains(process.errors(), "columns 1-4: 'PUSH' is no analysis")) << process.errors();
}

TEST(Driver, MacroKeywordsAreComparedExactly) {
  for (const char* card : {"visc", " VISC", "VIS", "Visc", ""}) {
    ProcessRun process(deck_with(std::string(card) + " "));
    EXPECT_EQ(process.run(), status_fatal) << card;
    EXPECT_TRUE(contains(process.report(), "INCORRECT ANALYSIS CONTROL CARD")) << card;
  }
  ProcessRun process(deck_with("VISCOUS"));  // only columns 1 to 4 count
  EXPECT_EQ(process.run(), status_good) << process.errors();
}

TEST(Driver, SaveIsSkippedWithoutAWordInACheckRun) {
  ProcessRun process(checked_deck_with("SAVE"));
  EXPECT_EQ(process.run(), status_good) << process.errors();
  EXPECT_EQ(process.errors(), "");
  EXPECT_EQ(keyword_of_last_macro(), "NONE") << "what was skipped has not been completed";
}

TEST(Driver, SaveInAnExecutionRunStopsByItsName) {
  ProcessRun process(deck_with("SAVE"));
  EXPECT_EQ(process.run(), status_fatal);
  EXPECT_TRUE(contains(process.report(), "FATAL ERROR DETECTED IN SAVRST - JOB ABORTED\n"));
  EXPECT_TRUE(contains(process.errors(), "THE MACRO SAVE IS NOT AVAILABLE")) << process.errors();
}

TEST(Driver, RestIsHonouredInACheckRunToo) {
  for (const std::string& deck : {checked_deck_with("REST"), deck_with("REST")}) {
    ProcessRun process(deck);
    EXPECT_EQ(process.run(), status_fatal);
    EXPECT_TRUE(contains(process.report(), "FATAL ERROR DETECTED IN SAVRST - JOB ABORTED\n"));
  }
}

TEST(Driver, TwoProblemsRunOneAfterTheOther) {
  TrussDeck first = bar_without_macros();
  first.title = "P4.314  FIRST";
  TrussDeck second = bar_without_macros();
  second.title = "P4.314  SECOND";
  ProcessRun process(first.problem() + "A COMMENT BETWEEN PROBLEMS\n" + second.text());
  EXPECT_EQ(process.run(), status_good) << process.errors();
  EXPECT_EQ(count(process.report(), "T I M E   L O G"), 2);
  EXPECT_EQ(count(process.report(), "OPERATION COMMAND ="), 2);
  EXPECT_TRUE(contains(process.report(), "        SECOND\n"));
}

TEST(Driver, TheVersionIsCheckedForEachProblem) {
  TrussDeck second = bar_without_macros();
  second.title = "P3.314  SECOND";
  ProcessRun process(bar_without_macros().problem() + second.text());
  testing::internal::CaptureStdout();
  EXPECT_EQ(process.run(), status_fatal);
  testing::internal::GetCapturedStdout();
  EXPECT_TRUE(ProcessRun::exists("TAP.OK")) << "of the first problem";
}

TEST(Driver, DataErrorsAndTerminatedMacrosShowInTheExitStatus) {
  TrussDeck terminated = deck_that_terminates();
  {
    ProcessRun process(terminated.text());
    EXPECT_EQ(process.run(), status_terminated) << process.errors();
    EXPECT_TRUE(ProcessRun::exists("TAP.OK"));
  }
  {
    ProcessRun process(deck_in_error().text());
    EXPECT_EQ(process.run(), status_data_error);
    EXPECT_TRUE(ProcessRun::exists("TAP.OK")) << "the problem was read to its NONE";
  }
  ProcessRun process(terminated.problem() + deck_in_error().text());
  EXPECT_EQ(process.run(), status_data_error) << "data errors go before terminated macros";
}

TEST(Driver, ADataErrorInAnExecutionRunIsClearedByTheNextFirstCard) {
  TrussDeck second = bar_without_macros();
  second.stat({{}});
  ProcessRun process(deck_in_error().problem() + second.text());
  EXPECT_EQ(process.run(), status_data_error) << "the run remembers";
  EXPECT_TRUE(contains(process.contents("TAP53"), "COMPLETED")) << process.contents("TAP53");
}

TEST(Driver, ACleanCheckRunIsGoodAlthoughItsMacrosPrintTerminatedLines) {
  TrussDeck deck = bar_without_macros();
  deck.command = "CHEC";
  deck.stat({{}});
  ProcessRun process(deck.text());
  EXPECT_EQ(process.run(), status_good) << process.errors();
  EXPECT_TRUE(contains(process.contents("TAP53"), "TERMINATED"));
}

TEST(Driver, DataErrorsOfACheckRunShowInTheExitStatus) {
  TrussDeck deck = deck_in_error();
  deck.command = "CHEC";
  ProcessRun process(deck.text());
  EXPECT_EQ(process.run(), status_data_error);
}

TEST(Driver, ADeckWithoutItsStopCardEndsInTheIoLayerWithoutCloseDown) {
  ProcessRun process(bar_without_macros().problem());
  EXPECT_EQ(process.run(), status_io);
  EXPECT_TRUE(contains(process.errors(), "unit 5, file TAModel.inp, record ")) << process.errors();
  EXPECT_TRUE(ProcessRun::exists("TAP5")) << "nothing is deleted";
  EXPECT_TRUE(ProcessRun::exists("TAP.OK")) << "the problem itself ran to its end";
  EXPECT_TRUE(contains(process.report(), "T I M E   L O G")) << "the report is flushed";
}

TEST(Driver, ADeckThatEndsBeforeItsMacrosLeavesNoSign) {
  std::string deck = bar_without_macros().problem();
  deck.erase(deck.rfind("NONE"));
  ProcessRun process(deck);
  EXPECT_EQ(process.run(), status_io);
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
}

TEST(Driver, AnEmptyDeckEndsInTheIoLayer) {
  ProcessRun process("");
  EXPECT_EQ(process.run(), status_io);
}

TEST(Driver, APoolOfNoWordsFailsTheFirstStorageCheck) {
  ProcessRun process(deck_with(""));
  EXPECT_EQ(process.run("0M"), status_fatal);
  EXPECT_TRUE(
      contains(process.report(), " **** STORAGE CHECK ****\n\n     INPUT PHASE - NODAL COORD/DOF CONSTRAINTS\n"));
  EXPECT_TRUE(contains(process.report(), "     STORAGE PROVIDED                  =          0\n"));
  EXPECT_FALSE(ProcessRun::exists("TAP5"));
}

TEST(Driver, TheTimeOfAnActivityIsAddedToItsSlots) {
  ProcessRun process(deck_with("VISC"));
  process.run();
  const TimeTable& table = tidearc::run.TIMTAB;
  EXPECT_GE(table[cpu_slot(data_input)], 0.0);
  EXPECT_EQ(table[cpu_slot(dynamic_analysis)], 0.0);
  EXPECT_EQ(table[cpu_slot(eigen_analysis)], 0.0);
}

TEST(Driver, TheSameProcessCanRunADeckAgainAndPrintsTheSame) {
  TrussDeck deck = bar_without_macros();
  deck.stat({{}});
  const auto body = [](const std::string& report) {  // without the date and the times
    const std::size_t from = report.find("KESTRA");
    return report.substr(from, report.find("T I M E   L O G") - from);
  };
  ProcessRun process(deck.text());
  EXPECT_EQ(process.run(), status_good) << process.errors();
  const std::string first = process.report();
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(body(process.report()), body(first));
}

TEST(DriverDeathTest, APoolThatTheMachineCannotGiveIsToldAndClosedDown) {
#if defined(TIDEARC_SANITIZED)
  GTEST_SKIP() << "the address sanitizer ends the process itself when memory runs out";
#endif
  ProcessRun process(bar_without_macros().text());
  const auto run_in_a_gigabyte = [] {
    constexpr rlim_t gigabyte = 1ULL << 30;
    const rlimit limit{gigabyte, gigabyte};
    setrlimit(RLIMIT_AS, &limit);
    stop_process = nullptr;
    start_process("1500M");
    DRIVER();
  };
  EXPECT_EXIT(run_in_a_gigabyte(), testing::ExitedWithCode(status_fatal), "");
  EXPECT_EQ(process.errors(), "the work array of 1500000000 words cannot be allocated\n");
  EXPECT_FALSE(ProcessRun::exists("TAP5")) << "scratch files vanish";
}

}  // namespace
}  // namespace tidearc::test
