// The current table: header card, one profile for each time, and what the limits and the wave period ask of it.
#include "sea/current_input.h"

#include <algorithm>
#include <cmath>

#include "model/card_errors.h"
#include "model/current_cards.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/wave_state.h"

namespace tidearc {

namespace {

constexpr int phase_records = 7;  // the storage check of the dynamic load sections
constexpr double usual_period_tolerance = 1e-4;
constexpr Columns levels_columns{6, 10};
constexpr Columns period_columns{11, 15};

void echo_header(int print_code) {
  write(units.NDOUT, "/,8X,'CURRENT DATA'");
  write_count("NUMBER OF TIMES DEFINING CURRENT", wave.NTIME);
  write_count("NUMBER OF CURRENT LEVELS", wave.NLEVEL);
  write_count("WAVE PERIOD CODE", wave.period_code);
  write(units.NDOUT, "5X,A50,E12.4", dotted("TOLERANCE FOR WAVE PERIOD COMPUTATION"), wave.period_tolerance);
  write_count("PRINT CODE FOR CURRENT TABLE", print_code);
  write(units.NDOUT, "8X,'1:  GENERATED TABLE IS NOT PRINTED'");
}

/// What CurrentNow cannot hold ends the run.
void check_level_count() {
  check_current_levels(wave.NLEVEL, levels_columns);
  if (wave.NLEVEL <= most_now_levels) return;
  card_error(format("'NUMBER OF CURRENT LEVELS CANNOT EXCEED',I5", most_now_levels), levels_columns);
  CLOSUP();
}

/// Number of the stream function wave's own period computation: it knows the current itself.
void settle_period_code() {
  if (wave.period_code < 0) {
    card_error("WAVE PERIOD CODE SHOULD BE POSITIVE", period_columns);
    wave.period_code = 0;
  }
  if (has_stream_function()) wave.period_code = 0;
}

/// Returns the print code.
int read_header() {
  int print_code = 0;
  read(units.NDIN, "3I5,F10.0,50X,I5", wave.NTIME, wave.NLEVEL, wave.period_code, wave.period_tolerance, print_code);
  wave.NTIME = std::max(wave.NTIME, 1);
  if (wave.period_tolerance == 0.0) wave.period_tolerance = usual_period_tolerance;
  check_level_count();
  settle_period_code();
  echo_header(print_code);
  return print_code;
}

void read_time(Reals times, int slice) {
  read(units.NDIN, "F10.0", times(slice));
  write(units.NDOUT, "/,8X,'CURRENT AT TIME',F13.3", times(slice));
  if (slice > 1 && !(times(slice) > times(slice - 1)))
    card_error("CURRENT TIMES NOT IN INCREASING ORDER", Columns{1, 10});
}

void print_generated(const CurrentTable& table) {
  for (int slice = 1; slice <= wave.NTIME; ++slice) {
    write(units.NDOUT, "/,8X,'GENERATED CURRENT TABLE AT TIME',F13.3", table.times(slice));
    print_current_levels(table.levels.column(slice).span(), table.vectors.column(slice).span());
  }
}

/// The time with the largest speed at any level.
int slice_of_largest_speed(const CurrentTable& table) {
  int found = 1;
  double largest = -1.0;
  for (int slice = 1; slice <= wave.NTIME; ++slice) {
    const Reals v = table.vectors.column(slice);
    for (int i = 1; i <= wave.NLEVEL; ++i) {
      const double speed = std::hypot(v(3 * i - 2), v(3 * i - 1), v(3 * i));
      if (!(speed > largest)) continue;
      largest = speed;
      found = slice;
    }
  }
  return found;
}

}  // namespace

CurrentTable current_table() {
  const int levels = wave.KCURT + 2 * wave.NTIME;
  const int vectors = levels + 2 * wave.NTIME * wave.NLEVEL;
  return {pool.reals(wave.KCURT, wave.NTIME), pool.reals(levels, wave.NLEVEL, wave.NTIME),
          pool.reals(vectors, 3 * wave.NLEVEL, wave.NTIME)};
}

void read_current_section() {
  const int print_code = read_header();
  wave.KCURT = carve_reals(std::int64_t{wave.NTIME} * (1 + std::int64_t{4} * wave.NLEVEL));
  check_storage(phase_records);
  const CurrentTable table = current_table();
  for (int slice = 1; slice <= wave.NTIME; ++slice) {
    read_time(table.times, slice);
    read_current_levels(table.levels.column(slice).span(), table.vectors.column(slice).span());
  }
  if (print_code != 1) print_generated(table);
  const Reals v = table.vectors.column(slice_of_largest_speed(table));
  wave.surface_current = {v(1), v(2), v(3)};
  wave.lower_current = wave.MWL + wave.sg * deepest_current_level();
}

double deepest_current_level() {
  if (wave.current_code != 1 || wave.NTIME < 1 || wave.NLEVEL < 1) return 0.0;
  const CurrentTable table = current_table();
  double deepest = table.levels(1, 1);
  for (int slice = 1; slice <= wave.NTIME; ++slice)
    for (int i = 1; i <= wave.NLEVEL; ++i) deepest = std::max(deepest, table.levels(i, slice));
  return deepest;
}

}  // namespace tidearc
