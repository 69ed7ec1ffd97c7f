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
  int found = 0;           ///< place of the entry found last, from which the next search starts  [-]
  double cpu_look = 0.0;   ///< clocks when they were looked at last                              [s]
  double wall_look = 0.0;  ///< likewise                                                          [s]
  double cpu_read = 0.0;   ///< processor clock when it was read last, less often than looked at  [s]
  double wall_read = 0.0;  ///< the other clock at that moment                                    [s]
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

/// Starts an activity from the last look at the clocks on, which was the stop of the one before: in a loop of
/// activities that follow one another one look for each is enough (a look costs more than most of them in a small
/// model). What is done between two of them counts for the second.
void start_next_activity(std::string_view name, TimerBlock& times);

}  // namespace tidearc
