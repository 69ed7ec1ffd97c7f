// Cards that the beam groups share: axis convention, end offsets, numbers of properties, and the stops of their input.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "elements/beam/local_axes.h"
#include "elements/beam/properties.h"
#include "elements/contract/water_input.h"
#include "run/stops.h"
#include "run/workpool.h"

namespace tidearc {

inline constexpr const char* key_read = "  ";
inline constexpr const char* key_generated = "* ";
inline constexpr const char* key_sequence = "**";

/// Convention of the five columns of a group card: blank, SACS, sacs, STRUD or strud; echoed. Anything else ends the
/// run. `columns` is where they stand.
AxisConvention read_convention(const std::array<char, 5>& KDEF, Columns columns);

/// Ends the run: too many of something. `what` as in "MATERIAL TYPES".
[[noreturn]] void stop_too_many(const std::string& what, int count, int limit, Columns columns);
/// Ends the run: `what` (MATERIAL, SECTION, ECCENTRICITY) is out of sequence.
[[noreturn]] void stop_not_sequential(const std::string& what, int number, int expected);
/// The lines of an element card out of sequence, whose echo with key ** has been printed, and the end of the run.
[[noreturn]] void stop_element_sequence(int number, int expected);
/// Ends the run: initial forces and a catenary on one card.
[[noreturn]] void stop_initial_and_catenary(const DeckPlace& where, int number);

/// Reads and echoes the offset cards of a group into a table carved at the high-water mark (storage phase 4), which the
/// caller puts back.
BeamOffsets* read_offsets(int count);

/// A material or section number of an element card: 0 is 1; outside 1..count it is a data error, and 1 is taken.
int property_number(int number, int count, int element_number, const DeckPlace& where);
/// The same for an offset type, of which 0 is none; a data error takes type 1, or none where the group has no type.
int offset_number(int number, int count, int element_number, const DeckPlace& where);

/// Sections' coefficients of the extended wave force equation, and with load code 7 their tables of general drag and
/// lift behind them; one echo line each behind the heading.
void read_morison(BeamWater& water, GeneralCoefficients& general);
void echo_morison_heading();
void echo_morison(int number, const BeamWater& water);

/// `n` structs of the work array at the high-water mark, for the time of a group's input.
template <class T>
T* carve_table(int n) {
  constexpr int input_phase = 4;
  const long long length = static_cast<long long>(n) * words(sizeof(T));
  const int index = carve_reals((length + 1) / 2);
  check_storage(input_phase);
  return reinterpret_cast<T*>(pool.words(index, length));
}

}  // namespace tidearc
