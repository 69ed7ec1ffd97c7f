// The two clocks of the process and the calendar.
#include "run/clocks.h"

#include <cstdio>
#include <ctime>

namespace tidearc {

namespace {

// Both clocks are single precision: seven digits are what the time log is good for.
float processor_seconds() { return static_cast<float>(std::clock()) / static_cast<float>(CLOCKS_PER_SEC); }

float elapsed_seconds() {
  return std::chrono::duration<float>(std::chrono::steady_clock::now() - clocks.start).count();
}

constexpr double seconds_per_hour = 3600.0;

}  // namespace

double CPUTIM() { return static_cast<double>(processor_seconds()); }

double HOURS() { return static_cast<double>(elapsed_seconds()) / seconds_per_hour; }

double DSKTIM() { return static_cast<double>(elapsed_seconds()) - static_cast<double>(processor_seconds()); }

CalendarTime calendar_time() {
  CalendarTime result;
  const std::time_t now = std::time(nullptr);
  const std::tm* local = std::localtime(&now);
  if (local == nullptr) return result;
  result.month = local->tm_mon + 1;
  result.day = local->tm_mday;
  result.year = local->tm_year + 1900;
  std::array<char, 16> text{};
  std::strftime(text.data(), text.size(), "%H:%M:%S", local);
  for (std::size_t i = 0; i < result.time.size(); ++i) result.time[i] = text[i];
  return result;
}

}  // namespace tidearc
