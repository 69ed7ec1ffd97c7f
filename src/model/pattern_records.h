// Records of static load patterns on NT10, and what the readers of the pattern kinds share. For pattern_*.cpp only.
#pragma once

#include <array>
#include <string_view>
#include <type_traits>

#include "model/node_values.h"
#include "model/patterns.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

using PatternTitle = std::array<char, 40>;

struct PatternHeader {
  int kind;    ///< PatternType; of a prescribed displacement pattern its running number
  int length;  ///< a word by type, see patterns.h
  PatternTitle title;
};
inline constexpr int header_words = words(sizeof(PatternHeader));
static_assert(header_words == 12 && std::is_trivially_copyable_v<PatternHeader>);

struct FollowerRecord {
  int NODA, NODD;
  double force;  ///< at NODA, positive toward NODD  [force]
};
inline constexpr int follower_words = words(sizeof(FollowerRecord));
static_assert(follower_words == 4);

enum PressureCode : int { pressure_at_nodes = 1, pressure_of_fluid = 2, pressure_uniform = 3 };

/// Second record of a surface pressure pattern.
struct PressureData {
  double value = 0.0;             ///< fluid density, or uniform pressure     [force/volume; force/area]
  std::array<double, 3> up{};     ///< fluid: upward direction                [-]
  std::array<double, 3> level{};  ///< fluid: a point of its surface          [length]
};
inline constexpr int pressure_words = words(sizeof(PressureData));

/// A surface while the deck is read, on NT2.
using SurfaceNodes = std::array<int, 4>;

/// A surface on NT10. It carries its corner pressures, so that an analysis reads the file once, front to back.
struct SurfaceRecord {
  SurfaceNodes node;               ///< the fourth is 0 in a triangle
  std::array<double, 4> pressure;  ///< at the corners, when the code is pressure_at_nodes  [force/area]
};
inline constexpr int surface_words = words(sizeof(SurfaceRecord));
static_assert(surface_words == 12);

/// Number that the pattern at hand will have.
inline int pattern_number() { return static_loads.NMADE + 1; }
/// Counts a pattern that has been written, and keeps its type and resultant for the first MAXPAT.
void count_pattern(PatternType type, const NodeValues& resultant);

inline void write_header(int kind, int length, const PatternTitle& title) {
  const PatternHeader header{kind, length, title};
  FILE(units.NT10, "WRIT", header_words, &header);
}

/// The load vector of the pattern at hand, NEQ1 reals.
Reals pattern_vector();
/// Nodal temperatures and pressures of the pattern at hand, NUMNP reals each.
Reals pattern_temperatures();
Reals pattern_pressures();

/// A range of nodes, as load commands give it. A last node of 0 is one node, whatever its difference; a difference of 0
/// counts as 1.
struct NodeRange {
  int first, last, difference;
};
inline NodeRange node_range(int first, int last, int difference) {
  if (last == 0) return {first, first, 1};
  return {first, last, difference == 0 ? 1 : difference};
}
/// The span is a whole multiple of the difference, and neither runs backward.
inline bool is_even(const NodeRange& range) {
  return range.last >= range.first && range.difference >= 1 && (range.last - range.first) % range.difference == 0;
}

/// The end of a load command that cannot be followed: a line on the error stream, then CLOSUP.
[[noreturn]] void stop_on_load_command(Columns where, std::string_view words);

// One reader per kind: card by card, echo, records on NT10.
void read_nodal_pattern();
void read_follower_pattern();
void read_temperature_pattern();
void read_surface_pattern();
/// Self weight, buoyancy or static current, from the vector that element input filled.
void write_generated_pattern(PatternType type);
inline void BUOYPAT() { write_generated_pattern(pattern_buoyancy); }
inline void CURRPAT() { write_generated_pattern(pattern_current); }

}  // namespace tidearc
