// The start of the process: command line, files, floating-point control, and starting over.
#include "roof/startup.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cfenv>
#include <limits>
#include <string>

#include "process_fixture.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc::test {
namespace {

std::string bytes_of(std::initializer_list<int> words) {
  std::string bytes;
  for (const int word : words) bytes.append(reinterpret_cast<const char*>(&word), sizeof word);
  return bytes;
}

TEST(PoolWords, AreMillionsUpToFifteenHundred) {
  EXPECT_EQ(pool_words("800M"), 800000000);
  EXPECT_EQ(pool_words("1M"), 1000000);
  EXPECT_EQ(pool_words("0M"), 0);
  EXPECT_EQ(pool_words("1499M"), 1499000000);
  EXPECT_EQ(pool_words("1500M"), 1500000000);
  EXPECT_EQ(pool_words("1501M"), 1500000000);
  EXPECT_EQ(pool_words("1600M"), 1500000000);
  EXPECT_EQ(pool_words("99999M"), 1500000000) << "six characters count";
}

TEST(PoolWords, KeepTheirDefaultForEveryOtherArgument) {
  for (const char* argument : {"", "M", "800", "800m", "800M ", "123456M", "1234567M", "M800", "8.0M", "abcM", "8-0M",
                               "800000000000000000000M"})
    EXPECT_EQ(pool_words(argument), 1500000000) << argument;
}

TEST(PoolWords, AreReadFromSixCharactersAndNotFromSeven) {
  EXPECT_EQ(pool_words("00005M"), 5000000);
  EXPECT_EQ(pool_words("000005M"), 1500000000);
}

TEST(PoolWords, BlanksInTheNumberDoNotCount) {
  EXPECT_EQ(pool_words(" 8 M"), 8000000);
  EXPECT_EQ(pool_words(" M"), 0) << "a blank number is zero";
}

TEST(PoolWords, OfANegativeNumberAreNone) { EXPECT_EQ(pool_words("-5M"), 0); }

TEST(Startup, DenormalsAreZeroOnBothSides) {
  set_denormals_to_zero();
  volatile double smallest = std::numeric_limits<double>::min();
  volatile double half = smallest * 0.5;
  EXPECT_EQ(half, 0.0) << "a denormal result";
  volatile double denormal = std::numeric_limits<double>::denorm_min();
  volatile double large = denormal * 1e300;
  EXPECT_EQ(large, 0.0) << "a denormal input";
}

TEST(Startup, TheWholeRunHasDenormalsAtZero) {
  ProcessRun process(" STOP\n");
  std::fesetenv(FE_DFL_ENV);
  volatile double smallest = std::numeric_limits<double>::min();
  ASSERT_NE(smallest * 0.5, 0.0) << "the machine's own setting";
  process.run();
  EXPECT_EQ(smallest * 0.5, 0.0);
}

TEST(Startup, AMissingDeckEndsInTheIoLayerAndMakesNoFile) {
  ProcessRun process("");
  std::filesystem::remove("TAModel.inp");
  testing::internal::CaptureStderr();
  EXPECT_EQ(process.run(), status_io);
  EXPECT_TRUE(contains(testing::internal::GetCapturedStderr(), "TAModel.inp"));
  EXPECT_TRUE(std::filesystem::is_empty("."));
}

TEST(Startup, TheSignOfAnEarlierRunIsRemovedEvenWithoutADeck) {
  ProcessRun process("");
  std::filesystem::remove("TAModel.inp");
  ProcessRun::put("TAP.OK", "");
  testing::internal::CaptureStderr();
  process.run();
  testing::internal::GetCapturedStderr();
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
}

TEST(Startup, ReportAndErrorsOfAnEarlierRunAreEmptied) {
  ProcessRun process(" STOP\n");
  ProcessRun::put("TAModel.out", "an old report that looks whole\n");
  ProcessRun::put("TAP.err", "an old error\n");
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.report(), "");
  EXPECT_EQ(process.errors(), "");
}

TEST(Startup, TextFilesBeginWithTheirFirstRecords) {
  ProcessRun process(" STOP\n");
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.contents("TAP25"), " 1\n");
  EXPECT_EQ(process.contents("CompForces.bc1"), " 2\n");
  EXPECT_EQ(process.contents("CompForces.bc2"), bytes_of({4, 2, 4}));
}

TEST(Startup, AFileThatBeginsWithItsFirstRecordIsOnlyPositionedBehindIt) {
  ProcessRun process(" STOP\n");
  const std::string records = bytes_of({4, 2, 4, 4, 77, 4});
  ProcessRun::put("TAP25", " 1\n kept\n");
  ProcessRun::put("CompForces.bc1", " 2\n kept\n");
  ProcessRun::put("CompForces.bc2", records);
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.contents("TAP25"), " 1\n kept\n");
  EXPECT_EQ(process.contents("CompForces.bc1"), " 2\n kept\n");
  EXPECT_EQ(process.contents("CompForces.bc2"), records);
}

TEST(Startup, TheNextWriteBehindAFirstRecordCuts) {
  ProcessRun process(" STOP\n");
  ProcessRun::put("TAP25", " 1\n old\n older\n");
  start_process("");
  put_text(UNIT_POST_TEXT, " new\n");
  reset_process();
  EXPECT_EQ(process.contents("TAP25"), " 1\n new\n");
}

TEST(Startup, AFileThatBeginsOtherwiseIsWrittenAnew) {
  ProcessRun process(" STOP\n");
  ProcessRun::put("TAP25", " 7\n other\n");
  ProcessRun::put("CompForces.bc1", " 22\n");
  ProcessRun::put("CompForces.bc2", bytes_of({4, 3, 4}));
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.contents("TAP25"), " 1\n");
  EXPECT_EQ(process.contents("CompForces.bc1"), " 2\n");
  EXPECT_EQ(process.contents("CompForces.bc2"), bytes_of({4, 2, 4}));
}

TEST(Startup, AFileThatEndsWithinItsFirstRecordIsWrittenAnew) {
  ProcessRun process(" STOP\n");
  ProcessRun::put("TAP25", " ");
  ProcessRun::put("CompForces.bc1", "");
  ProcessRun::put("CompForces.bc2", bytes_of({4, 2}));
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.contents("TAP25"), " 1\n");
  EXPECT_EQ(process.contents("CompForces.bc1"), " 2\n");
  EXPECT_EQ(process.contents("CompForces.bc2"), bytes_of({4, 2, 4}));
}

TEST(Startup, AFirstRecordIsNotLookedForInADevice) {
  // Zeros without end and without a line end: whoever reads a line there reads for ever.
  ProcessRun process(" STOP\n");
  for (const char* name : {"TAP25", "CompForces.bc1", "CompForces.bc2"})
    std::filesystem::create_symlink("/dev/zero", name);
  EXPECT_EQ(process.run(), status_good);
}

TEST(Startup, AFirstRecordThatHasNoRoomEndsInTheIoLayerWithItsName) {
  for (const char* name : {"TAP25", "CompForces.bc1", "CompForces.bc2"}) {
    ProcessRun process(" STOP\n");
    std::filesystem::create_symlink("/dev/full", name);
    EXPECT_EQ(process.run(), status_io);
    EXPECT_TRUE(contains(process.errors(), "file " + std::string(name))) << process.errors();
  }
}

TEST(Startup, APipeInPlaceOfAResultFileIsNotWaitedFor) {
  ProcessRun process(" STOP\n");
  for (const char* name : {"TAP25", "CompForces.bc1"}) ASSERT_EQ(mkfifo(name, 0600), 0);
  EXPECT_EQ(process.run(), status_good);
}

TEST(Startup, OpeningDoesNotCutResultFiles) {
  ProcessRun process(" STOP\n");
  ProcessRun::put("TAP53", "old progress\n");
  ProcessRun::put("TAP11", bytes_of({4, 1, 4}));
  EXPECT_EQ(process.run(), status_good);
  EXPECT_EQ(process.contents("TAP53"), "old progress\n");
  EXPECT_EQ(process.contents("TAP11"), bytes_of({4, 1, 4}));
}

TEST(Startup, AFileThatCannotBeOpenedEndsInTheIoLayerWithItsName) {
  ProcessRun process(" STOP\n");
  std::filesystem::create_directory("TAP8");
  EXPECT_EQ(process.run(), status_io);
  EXPECT_TRUE(contains(process.errors(), "unit 14, file TAP8")) << process.errors();
}

TEST(Startup, AReportThatCannotBeOpenedEndsInTheIoLayer) {
  ProcessRun process(" STOP\n");
  std::filesystem::create_directory("TAModel.out");
  testing::internal::CaptureStderr();
  EXPECT_EQ(process.run(), status_io);
  EXPECT_TRUE(contains(testing::internal::GetCapturedStderr(), "TAModel.out"));
}

TEST(Startup, StartingOverForgetsEverything) {
  ProcessRun process(" STOP\n");
  start_process("800M");
  EXPECT_EQ(tidearc::run.MTOT, 800000000);
  pool.allocate(100);
  tidearc::run.had_data_error = true;
  units.NT1 = 99;
  const int word = 1;
  FILE(2, "WRIT", 1, &word);
  reset_process();
  EXPECT_FALSE(tidearc::run.had_data_error);
  EXPECT_EQ(units.NT1, 1);
  EXPECT_EQ(storage.MSTOR, 0);
  EXPECT_FALSE(is_open_tape(2));
  EXPECT_FALSE(is_open_formatted(6));
}

}  // namespace
}  // namespace tidearc::test
