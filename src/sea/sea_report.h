// Lines and boxes that the pages of the sea share.
#pragma once

#include <array>
#include <cmath>
#include <string>
#include <string_view>

#include "model/card_errors.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

/// A title of spaced capitals.
inline void write_sea_title(std::string_view title) {
  put_text(units.NDOUT, "\n\n        " + std::string(title) + "\n\n");
}

// One line of a wave page: a label of 44 columns and its value.
inline void write_sea_count(std::string_view label, int value) { write(units.NDOUT, "8X,A44,I10", label, value); }
inline void write_sea_value(std::string_view label, double value) { write(units.NDOUT, "8X,A44,F10.2", label, value); }
/// The same with three decimals, as for components of a direction.
inline void write_sea_component(std::string_view label, double value) {
  write(units.NDOUT, "8X,A44,F10.3", label, value);
}
inline void write_sea_tolerance(std::string_view label, double value) {
  write(units.NDOUT, "8X,A44,E10.3", label, value);
}
/// What a code means, below its line.
inline void write_sea_code(std::string_view words) {
  put_text(units.NDOUT, std::string(12, ' ') + std::string(words) + '\n');
}

/// Wave direction and its three components.
inline void write_sea_direction(const std::array<double, 3>& direction) {
  write(units.NDOUT, "8X,'WAVE DIRECTION VECTOR'");
  write_sea_component("X-COMPONENT", direction[0]);
  write_sea_component("Y-COMPONENT", direction[1]);
  write_sea_component("Z-COMPONENT", direction[2]);
}

/// Error box with the words behind "ERROR -----", and a line on the error stream; the run goes on.
inline void sea_error(std::string_view words, Columns where = whole_line) { card_error(words, where); }

/// Makes a direction unit; a zero vector stays, and the error box tells it.
inline void make_unit(std::array<double, 3>& direction, const DeckPlace& where) {
  const double length = std::hypot(direction[0], direction[1], direction[2]);
  if (!(length > 0.0)) {
    card_error("WAVE DIRECTION IS NOT SPECIFIED", where);
    return;
  }
  for (double& component : direction) component /= length;
}
inline void make_unit(std::array<double, 3>& direction, Columns where = whole_line) {
  make_unit(direction, DeckPlace(deck_line(), where));
}

}  // namespace tidearc
