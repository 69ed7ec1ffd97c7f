// Static load patterns and prescribed displacement patterns, kept on TapeFile NT10.
//
// A pattern is a header of 12 words (type; a word by type; 40 characters of title) and its data:
//   1 nodal load, 5 self weight, 6 buoyancy, 7 current: word 2 is 2*NEQ1; one record, load vector of NEQ1 reals
//   2 follower force: word 2 is the number of cards; a 4-word record per card: NODA, NODD, force as a real
//   3 temperature and pressure: word 2 is 2*NUMNP; two records of NUMNP reals: temperature, pressure
//   4 surface pressure: word 2 is surfaces + 1; one word KPRS, the pressure data, a record per surface
//   (pattern_records.h)
// A prescribed displacement pattern: header (running number; 2*NEQ1; title), vector of NEQ1 reals in which 1.0E10 marks
// an equation that it leaves free.
#pragma once

#include <array>
#include <type_traits>

#include "run/views.h"

namespace tidearc {

enum PatternType : int {
  pattern_nodal = 1,
  pattern_follower = 2,
  pattern_temperature = 3,
  pattern_surface = 4,
  pattern_self_weight = 5,
  pattern_buoyancy = 6,
  pattern_current = 7,
};
inline constexpr double unprescribed = 1.0E10;  ///< entry of a prescribed pattern that leaves its equation free

/// Pool indices. KSELFW, KBUOYV and KCURRV are carved by DATAIN before element input, which fills the first. PATTIN
/// carves KTEMP and KPRES, which serve as node vectors only when a temperature pattern exists (have_temperatures); else
/// KPRES has no room of its own once the patterns are read.
struct PatternBlock {
  int KSELFW = 1;  ///< self weight vector, reals, NEQ1      [force]
  int KBUOYV = 1;  ///< buoyancy vector, reals, NEQ1         [force]
  int KCURRV = 1;  ///< static current vector, reals, NEQ1   [force]
  int KTEMP = 1;   ///< nodal temperatures, reals, NUMNP     [temperature]
  int KPRES = 1;   ///< nodal pressures, reals, NUMNP        [force/area]
  int KZDISP = 1;  ///< prescribed displacement vector while patterns are read, reals, NEQ1  [length]
  bool have_temperatures = false;
  /// Sums over all nodes of FX, FY, FZ, MX, MY, MZ of each force pattern, in the order of NT10: type 1 in the nodes'
  /// own axes, types 5 to 7 in global axes, 0 for types 2 to 4.
  std::array<std::array<double, 6>, 500> resultant{};
  std::array<int, 500> type{};  ///< PatternType of each force pattern
};
inline PatternBlock patterns;
static_assert(std::is_trivially_copyable_v<PatternBlock>);

/// Reads all force patterns in the order of the deck and writes them on NT10 (rewound first). Carves the temperature
/// vectors (storage phase 5). A load command that cannot be followed ends the run in CLOSUP; a node out of range is a
/// data error; more than MAXPAT patterns end the process with status 1.
void PATTIN();
/// Prescribed displacement patterns (storage phase 6), behind the force patterns on NT10.
void PDISIN();

/// Temperature and pressure of a node: 0 when no temperature pattern exists.
double node_temperature(int node);
double node_pressure(int node);

/// Reads the next force pattern of NT10, its header included, and adds `factor` times its loads at the displacements U
/// (NEQ1 reals) to `load` (NEQ1 reals). Follower forces and surface pressures act on the displaced geometry. A
/// temperature pattern is passed over. `row` is scratch of NEQ1 reals. Returns the pattern's type.
PatternType add_next_pattern(double factor, ConstReals U, Reals row, Reals load);
/// As add_next_pattern, but adds a temperature pattern's records to the node vectors (and passes every other kind
/// over).
void add_next_temperature(double factor);

}  // namespace tidearc
