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

TimerEntry* find(TimerBlock& times, std::string_view name) {
  const auto wanted = padded(name);
  const auto found = std::ranges::find(times.entries, wanted, &TimerEntry::name);
  return found == times.entries.end() ? nullptr : &*found;
}

void start(TimerEntry& entry) {
  entry.cpu_start = CPUTIM();
  entry.wall_start = wall_seconds();
}

void stop(TimerEntry& entry) {
  entry.cpu += CPUTIM() - entry.cpu_start;
  entry.wall += wall_seconds() - entry.wall_start;
  ++entry.calls;
}

void clear(TimerBlock& times) {
  times = {};
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
  TimerEntry* const entry = code == timer_start || code == timer_stop ? find(times, name) : nullptr;
  if (code == timer_start && entry != nullptr) start(*entry);
  if (code == timer_stop && entry != nullptr) stop(*entry);
  if (code == timer_clear) clear(times);
  if (code == timer_summary) write_summary(times);
}

}  // namespace tidearc
