// The timer of the dynamic inner loops, the clocks and the calendar.
#include "run/timsub.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <set>
#include <string>

#include "../support/scratch.h"
#include "run/clocks.h"
#include "run/units.h"

namespace tidearc {
namespace {

using test::Scratch;

std::string name_of(const TimerEntry& entry) { return {entry.name.data(), entry.name.size()}; }

const TimerEntry* entry_of(const TimerBlock& times, const std::string& name) {
  for (const TimerEntry& entry : times.entries)
    if (name_of(entry) == name) return &entry;
  return nullptr;
}

TEST(Timer, HasThirtyFourNamesOfSevenCharactersEachOnce) {
  TimerBlock times;
  TIMSUB("", timer_clear, times);
  std::set<std::string> names;
  for (const TimerEntry& entry : times.entries) names.insert(name_of(entry));
  EXPECT_EQ(names.size(), 34U);
  for (const char* name :
       {"DYNMIT ", "DYNINI ", "RDYNAM ", "EFFLOD ", "RZERO  ", "IUPDAT ", "FSTIF  ", "SDUP   ", "ENVUP  ", "DISSOL ",
        "RESPD1 ", "UNBALN ", "ENERGY ", "PRTSET ", "PRINDY ", "ENVOUT ", "RSTRT6 "})
    EXPECT_TRUE(names.contains(name)) << name;
}

TEST(Timer, AStopCountsOneCallAndAddsTheTimeSinceTheStart) {
  TimerBlock times;
  TIMSUB("", timer_clear, times);
  TIMSUB("ENERGY", timer_start, times);
  const std::clock_t start = std::clock();
  while (std::clock() - start < CLOCKS_PER_SEC / 20) {
  }
  TIMSUB("ENERGY ", timer_stop, times);  // blank padded compare
  const TimerEntry* entry = entry_of(times, "ENERGY ");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->calls, 1);
  EXPECT_GE(entry->cpu, 0.049) << "single precision clocks";
  EXPECT_GE(entry->wall, 0.049);
  TIMSUB("", timer_clear, times);
  EXPECT_EQ(entry->calls, 0);
  EXPECT_EQ(entry->cpu, 0.0);
}

TEST(Timer, AnActivityThatFollowsAnotherBeginsWhereThatOneEnded) {
  TimerBlock times;
  TIMSUB("", timer_clear, times);
  TIMSUB("DYNINI", timer_start, times);
  TIMSUB("DYNINI", timer_stop, times);
  const double ended = times.cpu_look;
  const std::clock_t start = std::clock();
  while (std::clock() - start < CLOCKS_PER_SEC / 20) {
  }
  start_next_activity("RDYNAM", times);
  TIMSUB("RDYNAM", timer_stop, times);
  const TimerEntry* entry = entry_of(times, "RDYNAM ");
  ASSERT_NE(entry, nullptr);
  EXPECT_EQ(entry->cpu_start, ended);
  EXPECT_EQ(entry->calls, 1);
  EXPECT_GE(entry->cpu, 0.049) << "what was done in between counts";
  start_next_activity("NOSUCH", times);
  EXPECT_EQ(entry->calls, 1);
}

TEST(Timer, AnUnknownNameOrCodeHasNoEffect) {
  TimerBlock times;
  TIMSUB("", timer_clear, times);
  TIMSUB("NOSUCH", timer_start, times);
  TIMSUB("NOSUCH", timer_stop, times);
  TIMSUB("ENERGY", 9, times);
  for (const TimerEntry& entry : times.entries) EXPECT_EQ(entry.calls, 0);
}

TEST(Timer, TheSummaryHasALinePerEntryOnUnit12) {
  Scratch scratch;
  TimerBlock times;
  TIMSUB("", timer_clear, times);
  times.entries[0].cpu = 1.25;
  times.entries[0].wall = 2.5;
  times.entries[0].calls = 3;
  TIMSUB("", timer_summary, times);
  const std::string text = scratch.contents("fort.12");
  EXPECT_EQ(text.substr(0, 24), " EXECUTION TIME SUMMARY\n");
  for (const char* heading : {"SUBROUTINE", "CPU", "WALL CLOCK", "NO. OF"})
    EXPECT_NE(text.find(heading), std::string::npos) << heading;
  EXPECT_NE(text.find("     DYNMIT         1.25            2.50         3\n"), std::string::npos) << text;
  EXPECT_EQ(std::ranges::count(text, '\n'), 36);
}

TEST(Clocks, AreSinglePrecisionWidened) {
  const double cpu = CPUTIM();
  EXPECT_EQ(cpu, static_cast<double>(static_cast<float>(cpu)));
  EXPECT_GE(cpu, 0.0);
}

TEST(Clocks, HoursAreElapsedSecondsAndDiskTimeIsElapsedLessProcessorTime) {
  const double before = HOURS() * 3600.0 - CPUTIM();
  const double disk = DSKTIM();
  const double after = HOURS() * 3600.0 - CPUTIM();
  // The three calls are moments apart; each clock has seven digits.
  EXPECT_NEAR(disk, 0.5 * (before + after), 0.05);
}

TEST(Clocks, TheCalendarTellsMonthDayYearAndEightCharactersOfTime) {
  const CalendarTime now = calendar_time();
  EXPECT_TRUE(now.month >= 1 && now.month <= 12);
  EXPECT_TRUE(now.day >= 1 && now.day <= 31);
  EXPECT_GE(now.year, 2020);
  EXPECT_EQ(now.time[2], ':');
  EXPECT_EQ(now.time[5], ':');
}

}  // namespace
}  // namespace tidearc
