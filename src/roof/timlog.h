// The run time table and the log that is printed from it.
#pragma once

#include <array>

namespace tidearc {

/// Activities of a run. Slot 2a of the table is disk time, slot 2a + 1 processor time; those of `miscellaneous` hold
/// the clocks at the start, because what is miscellaneous is only known as the rest.
enum Activity : int {
  miscellaneous = 0,
  data_input,
  static_analysis,
  visco_static_analysis,
  dynamic_analysis,
  eigen_analysis
};
inline constexpr int activities = 6;
inline constexpr int disk_slot(Activity activity) { return 2 * activity; }
inline constexpr int cpu_slot(Activity activity) { return 2 * activity + 1; }
inline constexpr int hours_slot = 12;
using TimeTable = std::array<double, 13>;  ///< [s]; the last slot is the base of the elapsed time [h]

/// A table without times but for the clocks at the start.
TimeTable started_time_table(double disk, double cpu, double hours);

/// Times of the log, by activity: the rest first, then the five activities.
struct TimeLog {
  std::array<double, activities> disk{};  ///< [s]
  std::array<double, activities> cpu{};   ///< [s]
  double total_disk = 0.0;                ///< [s]
  double total_cpu = 0.0;                 ///< [s]
  double minutes = 0.0;                   ///< elapsed
};

/// The log at the present clocks. The base of the elapsed time is overwritten by the difference, in the table: from the
/// second problem on the elapsed time counts from there.
TimeLog time_log(TimeTable& table, double disk, double cpu, double hours);

/// Measures one activity: its time so far is added to the run's table when it ends.
class Stopwatch {
 public:
  explicit Stopwatch(Activity activity);
  void stop() const;

 private:
  Activity activity_;
  double disk_;
  double cpu_;
};

/// Prints the log on a new page and makes TAP.OK, the sign that a problem ran to its end.
void TIMLOG();

}  // namespace tidearc
