// The timer of the dynamic inner loops: processor and wall time of named activities.
#pragma once

#include <array>
#include <string_view>
#include <type_traits>

namespace tidearc {

inline constexpr int timed_activities = 34;
inline constexpr int activity_name_width = 7;

struct TimerEntry {
  std::array<char, activity_name_width> name{};  ///< blank padded
  double cpu = 0.0;                              ///< accumulated processor time     [s]
  double wall = 0.0;                             ///< accumulated wall time          [s]
  int calls = 0;                                 ///< times that the entry was stopped  [-]
  double cpu_start = 0.0;                        ///< clocks at the last start       [s]
  double wall_start = 0.0;
};

/// One entry per activity, in the order of the summary. Cleared and filled by a dynamic macro; advanced inside its
/// loop.
struct TimerBlock {
  std::array<TimerEntry, timed_activities> entries{};
};
inline TimerBlock timers;
static_assert(std::is_trivially_copyable_v<TimerBlock>);

enum TimerCode : int { timer_start = 1, timer_stop = 2, timer_clear = 3, timer_summary = 4 };

/// @param name   activity for start and stop, compared blank padded; a name that the table does not hold has no effect
/// @param code   start, stop (adds the time since the start and counts one call), clear (and fill in the names), or
/// write
///               the summary on unit 12; any other has no effect
/// @param times  the table
void TIMSUB(std::string_view name, int code, TimerBlock& times);

}  // namespace tidearc
