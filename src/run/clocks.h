// The two clocks of the process and the calendar.
#pragma once

#include <array>
#include <chrono>
#include <type_traits>

namespace tidearc {

/// Where the elapsed time counts from. Written once, at the start of the process.
struct ClockBlock {
  std::chrono::steady_clock::time_point start = std::chrono::steady_clock::now();
};
inline ClockBlock clocks;
static_assert(std::is_trivially_copyable_v<ClockBlock>);

double CPUTIM();  ///< processor time of the process, single precision widened  [s]
double HOURS();   ///< elapsed time since the start of the process              [h]
double DSKTIM();  ///< elapsed less processor time: what the log calls disk time [s]

/// Date and time of day of the report header.
struct CalendarTime {
  int month = 0;
  int day = 0;
  int year = 0;
  std::array<char, 8> time{};  ///< hh:mm:ss
};
CalendarTime calendar_time();

}  // namespace tidearc
