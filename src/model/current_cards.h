// Level cards of a current profile: what the static current and each time of a wave's current table share.
//
// Levels are depths, positive downward from the mean water level. A vector points where the water goes.
#pragma once

#include <span>

#include "run/stops.h"

namespace tidearc {

/// Fewer than two levels end the run.
void check_current_levels(int levels, Columns where);

/// Reads, echoes and checks the cards of one profile, one for each entry of `levels`; `vectors` gets three components
/// per level: the direction made unit times the scale (blank is 1.0), or a zero direction as it stands. What is wrong
/// is told in a box and taken as it is.
void read_current_levels(std::span<double> levels, std::span<double> vectors);

/// The profile as it was generated: a line for each level.
void print_current_levels(std::span<const double> levels, std::span<const double> vectors);

}  // namespace tidearc
