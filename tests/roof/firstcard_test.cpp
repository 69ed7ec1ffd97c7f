// The first card of a problem: what is read over, the header, the version tag.
#include <gtest/gtest.h>

#include <string>

#include "../support/scratch.h"
#include "process_fixture.h"
#include "roof/datain.h"
#include "run/run_block.h"

namespace tidearc::test {
namespace {

std::string title() { return {tidearc::run.TITLE.data(), tidearc::run.TITLE.size()}; }

class FirstCard : public testing::Test {
 protected:
  void SetUp() override { tidearc::run = {}; }
  void TearDown() override { tidearc::run = {}; }
  /// Report behind its line of date and time.
  static std::string report_of(const Scratch& scratch) {
    const std::string report = trimmed(scratch.report());
    return report.substr(report.find("KESTRA") - 1);
  }
};

const std::string banner =
    " KESTRA          FINITE ELEMENT STATIC AND DYNAMIC NONLINEAR ANALYSIS PROGRAM - TIDEARC          VERSION P4.314\n";
const std::string stars = " " + std::string(73, '*') + "\n";

TEST_F(FirstCard, StartMeansExecution) {
  Scratch scratch(" START  P4.314  A TITLE\n");
  FIRSTC();
  EXPECT_EQ(tidearc::run.RUNMOD, 0);
  EXPECT_FALSE(tidearc::run.check_run);
  EXPECT_EQ(report_of(scratch),
            banner + stars + "         A TITLE\n" + stars + "     OPERATION COMMAND = STAR     (EXECUTION)\n\n");
}

TEST_F(FirstCard, CheckMeansDataCheckOnly) {
  Scratch scratch(" CHECK  P4.314  A TITLE\n");
  FIRSTC();
  EXPECT_EQ(tidearc::run.RUNMOD, 1);
  EXPECT_TRUE(tidearc::run.check_run);
  EXPECT_TRUE(contains(report_of(scratch), "     OPERATION COMMAND = CHEC     (DATA CHECK ONLY)\n\n"));
}

TEST_F(FirstCard, StopReturnsAtOnceWithoutALine) {
  Scratch scratch(" STOP\n");
  FIRSTC();
  EXPECT_EQ(tidearc::run.RUNMOD, 3);
  EXPECT_EQ(scratch.report(), "");
}

TEST_F(FirstCard, OnlyFourCharactersOfTheCommandCount) {
  Scratch scratch(" STARX  P4.314\n");
  FIRSTC();
  EXPECT_EQ(tidearc::run.RUNMOD, 0);
  EXPECT_EQ(title(), std::string(72, ' '));
}

TEST_F(FirstCard, EverythingElseIsReadOverInSilence) {
  Scratch scratch("START   P4.314  FROM COLUMN ONE\n start  P4.314\n  START\n\n* A COMMENT\n CHECK  P4.314  FOUND\n");
  FIRSTC();
  EXPECT_TRUE(tidearc::run.check_run);
  EXPECT_TRUE(contains(title(), "FOUND"));
  EXPECT_EQ(scratch.errors(), "");
}

TEST_F(FirstCard, AStartClearsTheFatalFlagOfTheProblemBefore) {
  Scratch scratch(" START  P4.314\n");
  set_fatal_flag();
  FIRSTC();
  EXPECT_EQ(tidearc::run.RUNMOD, 0);
}

TEST_F(FirstCard, TheHeaderTellsDateAndTime) {
  Scratch scratch(" START  P4.314\n");
  FIRSTC();
  const std::string report = scratch.report();
  ASSERT_EQ(report.substr(0, 11), "\n1DATE     ");
  const std::string date = report.substr(11, 19);  // mm-dd-yyyy hh:mm:ss
  for (const std::size_t dash : {2U, 5U}) EXPECT_EQ(date[dash], '-') << date;
  EXPECT_EQ(date[10], ' ');
  for (const std::size_t colon : {13U, 16U}) EXPECT_EQ(date[colon], ':') << date;
  EXPECT_EQ(report[30], '\n');
}

TEST_F(FirstCard, TheNumberInTheTagIsTheDecksVersion) {
  Scratch scratch(" START  P4.314\n");
  FIRSTC();
  EXPECT_EQ(tidearc::run.DATVER, 4.31) << "columns 2 to 5 of the tag";
}

TEST_F(FirstCard, AnyTagOfTheSameFirstThreeCharactersFitsAndIsBlanked) {
  for (const char* tag : {"P4.0", "P4.314", "P4.99999", "P4."}) {
    std::string card(tag);
    card.resize(8, ' ');
    Scratch scratch(" START  " + card + "TITLE\n");
    FIRSTC();
    EXPECT_EQ(title(), "        TITLE" + std::string(59, ' ')) << tag;
  }
}

TEST_F(FirstCard, ATagThatIsNoNumberCountsAsVersionZero) {
  Scratch scratch(" START  P4.X14  TITLE\n");
  tidearc::run.DATVER = 9.0;
  EXPECT_FALSE(stop_of([] { FIRSTC(); }).has_value());
  EXPECT_EQ(tidearc::run.DATVER, 0.0);
}

TEST_F(FirstCard, ATagOfAnotherVersionStopsOnTheConsoleWithTheTitleUnchanged) {
  for (const char* tag : {"P5.314", "p4.314", " P4.314", "P3.", "TITLE", ""}) {
    Scratch scratch(" START  " + std::string(tag) + "\n");
    testing::internal::CaptureStdout();
    EXPECT_EQ(stop_of([] { FIRSTC(); }), status_fatal) << tag;
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "PROGRAM STOPS BECAUSE THE DATA FILE DOES NOT MATCH THIS VERSION OF PROGRAM.\n");
    EXPECT_TRUE(contains(report_of(scratch), banner + stars + trimmed(" " + std::string(tag)) + stars +
                                                 "     INPUT DATA INCOMPATIBLE WITH PROGRAM VERSION P4.314"
                                                 "     PROGRAM STOPS.\n"))
        << report_of(scratch);
    EXPECT_TRUE(contains(scratch.errors(), "TAModel.inp line 1, columns 9-16:")) << scratch.errors();
  }
}

TEST_F(FirstCard, AVersionStopLeavesTheScratchFiles) {
  ProcessRun process(" START  P5.000\n");
  testing::internal::CaptureStdout();
  EXPECT_EQ(process.run(), status_fatal);
  testing::internal::GetCapturedStdout();
  EXPECT_TRUE(ProcessRun::exists("TAP5"));
  EXPECT_TRUE(ProcessRun::exists("TAP10"));
}

}  // namespace
}  // namespace tidearc::test
