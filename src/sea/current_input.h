// The current table of the wave section: its cards, the largest speed, the deepest level.
#pragma once

#include "run/views.h"

namespace tidearc {

/// The table in the work pool (wave.KCURT).
struct CurrentTable {
  Reals times;        ///< (NTIME)                                               [s]
  RealTable levels;   ///< (NLEVEL, NTIME), depths below mean water level   [length]
  RealTable vectors;  ///< (3 NLEVEL, NTIME): three components per level    [length/s]
};
CurrentTable current_table();

/// Reads, echoes and checks the current header card and the table, which it lays into the work pool; sets
/// wave.surface_current, the level-1 vector at the time of the largest speed at any level (the first on ties), and
/// wave.lower_current, the elevation of the deepest level. Fewer than two levels, more than can be held, or a table
/// that does not fit end the run.
void read_current_section();

/// Largest depth in the table over all times; 0 without a current.
double deepest_current_level();

}  // namespace tidearc
