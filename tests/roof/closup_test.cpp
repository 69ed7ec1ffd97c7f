// The close-down and the exit status it ends with.
#include "roof/closup.h"

#include <gtest/gtest.h>

#include <string>

#include "process_fixture.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc::test {
namespace {

RunBlock ended(int mode, bool data_error, bool terminated) {
  RunBlock block;
  block.RUNMOD = mode;
  block.had_data_error = data_error;
  block.had_terminated_macro = terminated;
  return block;
}

TEST(ExitStatus, IsGoodOnlyBehindTheStopCard) {
  EXPECT_EQ(exit_status(ended(3, false, false)), status_good);
  EXPECT_EQ(exit_status(ended(0, false, false)), status_fatal);
  EXPECT_EQ(exit_status(ended(1, false, false)), status_fatal);
}

TEST(ExitStatus, TellsDataErrorsBeforeTerminatedMacros) {
  EXPECT_EQ(exit_status(ended(3, true, false)), status_data_error);
  EXPECT_EQ(exit_status(ended(3, false, true)), status_terminated);
  EXPECT_EQ(exit_status(ended(3, true, true)), status_data_error);
}

TEST(ExitStatus, OfAFatalStopIsFatalWhateverCameBefore) { EXPECT_EQ(exit_status(ended(1, true, true)), status_fatal); }

class CloseDown : public testing::Test {
 protected:
  CloseDown() : process_(" STOP\n") { start_process("0M"); }
  static int close_down() {
    return stop_of([] { CLOSUP(); }).value_or(-1);
  }
  ProcessRun process_;
};

TEST_F(CloseDown, DeletesTheScratchFilesOfItsUnitVariables) {
  keep_scratch_in_memory(false);
  const int word = 1;
  for (const int unit : {1, 18, 19, 21, 2, 20, 22}) FILE(unit, "WRIT", 1, &word);
  EXPECT_EQ(close_down(), status_fatal);
  for (const char* gone : {"fort.1", "TAP5", "TAP10", "fort.19", "fort.21", "fort.18"})
    EXPECT_FALSE(ProcessRun::exists(gone)) << gone;
  for (const char* kept : {"fort.2", "fort.20", "fort.22", "TAP3", "TAP4", "TAP6", "TAP7", "TAP8", "TAP9", "TAP11"})
    EXPECT_TRUE(ProcessRun::exists(kept)) << kept;
}

TEST_F(CloseDown, FollowsUnitVariablesThatHaveExchangedTheirRoles) {
  keep_scratch_in_memory(false);
  const int word = 1;
  for (const int unit : {19, 2}) FILE(unit, "WRIT", 1, &word);
  std::swap(units.NT13, units.NT2);
  close_down();
  EXPECT_FALSE(ProcessRun::exists("fort.2"));
  EXPECT_TRUE(ProcessRun::exists("fort.19"));
}

TEST_F(CloseDown, ClosesEveryUnit) {
  close_down();
  for (const int unit : {0, 5, 6, 25, 36, 53, 54, 76}) EXPECT_FALSE(is_open_formatted(unit)) << unit;
  for (const int unit : {3, 17, 23, 72, 77}) EXPECT_FALSE(is_open_tape(unit)) << unit;
}

TEST_F(CloseDown, WritesTheCountOfWaveNumbersWhenThereAreAny) {
  tidearc::run.NWAVNO = 12;
  close_down();
  EXPECT_EQ(process_.contents("TAModel.wavno"), "   12\n");
}

TEST_F(CloseDown, MakesNoWaveFileWithoutWaveNumbers) {
  close_down();
  EXPECT_FALSE(ProcessRun::exists("TAModel.wavno"));
}

TEST_F(CloseDown, ClosesTheMemberForceFileWhenItIsOpen) {
  open_tape(UNIT_MEMBER, "MEMBER.FRC", false);
  const int word = 5;
  FILE(UNIT_MEMBER, "WRIT", 1, &word);
  units.TAPFRC = UNIT_MEMBER;
  close_down();
  EXPECT_EQ(process_.contents("MEMBER.FRC").size(), 12U);
  EXPECT_EQ(units.TAPFRC, 0);
}

TEST_F(CloseDown, EndsInTheIoLayerWhenTheReportCannotBeFinished) {
  open_formatted(6, "/dev/full", OpenMode::position);
  put_text(6, "the end of the report\n");
  tidearc::run.RUNMOD = 3;
  EXPECT_EQ(close_down(), status_io);
  EXPECT_TRUE(contains(process_.errors(), "unit 6, file /dev/full")) << process_.errors();
}

TEST_F(CloseDown, MakesNoSign) {
  tidearc::run.RUNMOD = 3;
  EXPECT_EQ(close_down(), status_good);
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
}

}  // namespace
}  // namespace tidearc::test
