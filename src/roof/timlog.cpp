// The run time table and the log that is printed from it.
#include "roof/timlog.h"

#include <cmath>
#include <string_view>

#include "run/clocks.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr double minutes_per_hour = 60.0;

double& slot(TimeTable& table, int index) { return table[static_cast<std::size_t>(index)]; }

/// Differences of clock readings may fall short of zero by a rounding, which would be printed as -0.000.
double shown(double seconds) { return std::abs(seconds) < 0.5E-3 ? 0.0 : seconds; }

/// One label with its two times.
void write_row(std::string_view label, double disk, double cpu) {
  write(units.NDOUT, "A26,4X,2F10.3", label, shown(disk), shown(cpu));
}

void write_log(const TimeLog& log) {
  constexpr std::array<std::string_view, activities> labels{" MISCELLANEOUS            ", " DATA INPUT AND GENERATION",
                                                            " STATIC ANALYSIS          ", " VISCO-STATIC ANALYSIS    ",
                                                            " DYNAMIC ANALYSIS         ", " EIGEN ANALYSIS           "};
  write(units.NDOUT, "'1',37('*'),/,' E X E C U T I O N   T I M E   L O G',/,' ',37('*'),/");
  write(units.NDOUT, "30X,'   DISK   ','    CPU   ',/,30X,' (SECONDS)',' (SECONDS)',/");
  for (std::size_t i = 0; i < labels.size(); ++i) write_row(labels[i], log.disk[i], log.cpu[i]);
  write_row(" TOTAL                    ", log.total_disk, log.total_cpu);
  write(units.NDOUT, "/,' CLOCK TIME IN MINUTES',8X,F10.3", log.minutes);
}

}  // namespace

TimeTable started_time_table(double disk, double cpu, double hours) {
  TimeTable table{};
  slot(table, disk_slot(miscellaneous)) = disk;
  slot(table, cpu_slot(miscellaneous)) = cpu;
  slot(table, hours_slot) = hours;
  return table;
}

TimeLog time_log(TimeTable& table, double disk, double cpu, double hours) {
  TimeLog log;
  log.total_disk = disk - slot(table, disk_slot(miscellaneous));
  log.total_cpu = cpu - slot(table, cpu_slot(miscellaneous));
  slot(table, hours_slot) = hours - slot(table, hours_slot);
  log.minutes = minutes_per_hour * slot(table, hours_slot);
  log.disk[miscellaneous] = log.total_disk;
  log.cpu[miscellaneous] = log.total_cpu;
  for (const Activity activity :
       {data_input, static_analysis, visco_static_analysis, dynamic_analysis, eigen_analysis}) {
    const auto row = static_cast<std::size_t>(activity);
    log.disk[row] = slot(table, disk_slot(activity));
    log.cpu[row] = slot(table, cpu_slot(activity));
    log.disk[miscellaneous] -= log.disk[row];
    log.cpu[miscellaneous] -= log.cpu[row];
  }
  return log;
}

Stopwatch::Stopwatch(Activity activity) : activity_(activity), disk_(DSKTIM()), cpu_(CPUTIM()) {}

void Stopwatch::stop() const {
  double& disk = slot(run.TIMTAB, disk_slot(activity_));
  double& cpu = slot(run.TIMTAB, cpu_slot(activity_));
  disk = disk - disk_ + DSKTIM();
  cpu = cpu - cpu_ + CPUTIM();
}

void TIMLOG() {
  const double disk = DSKTIM();
  const double cpu = CPUTIM();
  write_log(time_log(run.TIMTAB, disk, cpu, HOURS()));
  // The sign must not appear beside results that could not be written.
  flush_formatted_units();
  flush_all_tapes();
  open_formatted(UNIT_DONE, "TAP.OK", OpenMode::fresh);
  close_formatted(UNIT_DONE);
}

}  // namespace tidearc
