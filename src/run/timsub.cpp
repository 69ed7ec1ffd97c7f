// The timer of the dynamic inner loops.
#include "run/timsub.h"

#include <algorithm>
#include <string>

#include "run/clocks.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr double seconds_per_hour = 3600.0;

constexpr std::array<std::string_view, timed_activities> activity_names{
    "DYNMIT", "DYNINI", "RDYNAM", "EFFLOD", "RZERO",  "IUPDAT", "FSTIF",  "SDUP",   "ENVUP",
    "DISSOL", "RESPD1", "UNBALN", "ENERGY", "PRTSET", "PRINDY", "ENVOUT", "RSTRT6", "STIFUP",
    "ASMSTA", "FACTOR", "SOLVE",  "ELMSTA", "ELMFRC", "ELMDMP", "EVNTEL", "BFGSUP", "LINSCH",
    "GRDACC", "DYNFRC", "IMPDSP", "WAVLOD", "PREDCT", "POSTWR", "STPCTL"};

std::array<char, activity_name_width> padded(std::string_view name) {
  std::array<char, activity_name_width> result;
  result.fill(' ');
  std::copy_n(name.begin(), std::min(name.size(), result.size()), result.begin());
  return result;
}

double wall_seconds() { return HOURS() * seconds_per_hour; }

/// The entry of a name, null when there is none. Activities mostly come in the order of the table.
TimerEntry* find(TimerBlock& times, std::string_view name) {
  const auto wanted = padded(name);
  for (int tried = 0; tried < timed_activities; ++tried) {
    TimerEntry& entry = times.entries[static_cast<std::size_t>(times.found)];
    if (entry.name == wanted) return &entry;
    times.found = (times.found + 1) % timed_activities;
  }
  return nullptr;
}

/// The processor clock costs a call of the system, more than a phase of a small model: for a short while after a
/// reading the process counts as busy all the time, and the next reading puts that right.
void look_at_clocks(TimerBlock& times) {
  constexpr double short_while = 5.0E-5;
  times.wall_look = wall_seconds();
  const double since = times.wall_look - times.wall_read;
  if (since < short_while) {
    times.cpu_look = times.cpu_read + since;
    return;
  }
  times.cpu_look = times.cpu_read = CPUTIM();
  times.wall_read = times.wall_look;
}

void start(TimerEntry& entry, const TimerBlock& times) {
  entry.cpu_start = times.cpu_look;
  entry.wall_start = times.wall_look;
}

void stop(TimerEntry& entry, const TimerBlock& times) {
  entry.cpu += times.cpu_look - entry.cpu_start;
  entry.wall += times.wall_look - entry.wall_start;
  ++entry.calls;
}

void clear(TimerBlock& times) {
  times = {};
  times.cpu_look = times.cpu_read = CPUTIM();
  times.wall_look = times.wall_read = wall_seconds();
  for (std::size_t i = 0; i < activity_names.size(); ++i) times.entries[i].name = padded(activity_names[i]);
}

void write_summary(const TimerBlock& times) {
  write(UNIT_TIMER, "' EXECUTION TIME SUMMARY'");
  write(UNIT_TIMER, "5X,'SUBROUTINE',6X,'CPU',6X,'WALL CLOCK',4X,'NO. OF'");
  for (const TimerEntry& entry : times.entries)
    write(UNIT_TIMER, "5X,A7,2X,F10.2,6X,F10.2,1X,I9", entry.name, entry.cpu, entry.wall, entry.calls);
}

}  // namespace

void TIMSUB(std::string_view name, int code, TimerBlock& times) {
  const bool with_clocks = code == timer_start || code == timer_stop;
  TimerEntry* const entry = with_clocks ? find(times, name) : nullptr;
  if (entry != nullptr) look_at_clocks(times);
  if (code == timer_start && entry != nullptr) start(*entry, times);
  if (code == timer_stop && entry != nullptr) stop(*entry, times);
  if (code == timer_clear) clear(times);
  if (code == timer_summary) write_summary(times);
}

void start_next_activity(std::string_view name, TimerBlock& times) {
  if (TimerEntry* const entry = find(times, name)) start(*entry, times);
}

}  // namespace tidearc
