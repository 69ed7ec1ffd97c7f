// The run time table and its log.
#include "roof/timlog.h"

#include <gtest/gtest.h>

#include <chrono>
#include <ctime>
#include <string>
#include <thread>

#include "process_fixture.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc::test {
namespace {

TEST(TimeTableOfARun, BeginsWithTheClocksAndNoTimes) {
  const TimeTable table = started_time_table(1.5, 2.5, 3.5);
  EXPECT_EQ(table, (TimeTable{1.5, 2.5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 3.5}));
}

TEST(TimeLogOfARun, TakesTheActivitiesFromTheTotals) {
  TimeTable table = started_time_table(1.0, 2.0, 0.5);
  for (int i = 2; i < 12; ++i) table[static_cast<std::size_t>(i)] = i;  // disk 2 4 6 8 10, processor 3 5 7 9 11
  const TimeLog log = time_log(table, 101.0, 202.0, 0.75);
  EXPECT_EQ(log.total_disk, 100.0);
  EXPECT_EQ(log.total_cpu, 200.0);
  EXPECT_EQ(log.disk, (std::array<double, 6>{70.0, 2.0, 4.0, 6.0, 8.0, 10.0}));
  EXPECT_EQ(log.cpu, (std::array<double, 6>{165.0, 3.0, 5.0, 7.0, 9.0, 11.0}));
  EXPECT_EQ(log.minutes, 15.0);
}

TEST(TimeLogOfARun, OverwritesOnlyTheBaseOfTheHours) {
  TimeTable table = started_time_table(1.0, 2.0, 0.5);
  time_log(table, 3.0, 4.0, 0.75);
  EXPECT_EQ(table, started_time_table(1.0, 2.0, 0.25));
  // The second log counts its hours from that difference.
  EXPECT_EQ(time_log(table, 3.0, 4.0, 1.0).minutes, 45.0);
}

TEST(TimeLogOfARun, PrintsItsTable) {
  ProcessRun process(" STOP\n");
  start_process("0M");
  TIMLOG();
  EXPECT_TRUE(ProcessRun::exists("TAP.OK"));
  const std::string report = process.report();
  const std::string stars(37, '*');
  EXPECT_EQ(report.substr(0, report.find("(SECONDS)")),
            "1" + stars + "\n E X E C U T I O N   T I M E   L O G\n " + stars +
                "\n\n                                 DISK       CPU\n                               ");
  std::size_t at = 0;
  for (const char* label : {"\n MISCELLANEOUS   ", "\n DATA INPUT AND GENERATION   ", "\n STATIC ANALYSIS   ",
                            "\n VISCO-STATIC ANALYSIS   ", "\n DYNAMIC ANALYSIS   ", "\n EIGEN ANALYSIS   ",
                            "\n TOTAL   ", "\n CLOCK TIME IN MINUTES   "}) {
    at = report.find(label, at);
    ASSERT_NE(at, std::string::npos) << label;
  }
  EXPECT_TRUE(contains(report, " EIGEN ANALYSIS                    0.000     0.000\n"));
}

TEST(TimeLogOfARun, MakesNoSignWhenTheReportCannotBeWritten) {
  ProcessRun process(" STOP\n");
  start_process("0M");
  open_formatted(6, "/dev/full", OpenMode::position);
  EXPECT_EQ(stop_of([] { TIMLOG(); }), status_io);
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
}

TEST(TimeLogOfARun, MakesNoSignWhenARecordFileCannotBeWritten) {
  ProcessRun process(" STOP\n");
  start_process("0M");
  open_tape(17, "/dev/full", false);
  const int word = 1;
  FILE(17, "WRIT", 1, &word);
  EXPECT_EQ(stop_of([] { TIMLOG(); }), status_io);
  EXPECT_FALSE(ProcessRun::exists("TAP.OK"));
  stop_of([] { close_tape(17); });
}

TEST(StopwatchOfAnActivity, AddsToItsOwnSlots) {
  tidearc::run.TIMTAB = {};
  tidearc::run.TIMTAB[cpu_slot(static_analysis)] = 100.0;
  tidearc::run.TIMTAB[disk_slot(static_analysis)] = 200.0;
  const Stopwatch watch(static_analysis);
  const std::clock_t start = std::clock();
  while (std::clock() - start < CLOCKS_PER_SEC / 20) {
  }
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  watch.stop();
  // Moments, and not the time of day; the clocks have seven digits.
  const double cpu = tidearc::run.TIMTAB[cpu_slot(static_analysis)];
  EXPECT_GT(cpu, 100.04);
  EXPECT_LT(cpu, 110.0);
  const double disk = tidearc::run.TIMTAB[disk_slot(static_analysis)];
  EXPECT_GT(disk, 200.15) << "what is not processor time";
  EXPECT_LT(disk, 210.0);
  EXPECT_EQ(tidearc::run.TIMTAB[cpu_slot(dynamic_analysis)], 0.0);
  tidearc::run = {};
}

}  // namespace
}  // namespace tidearc::test
