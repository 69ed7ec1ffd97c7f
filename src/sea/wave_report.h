// The page of a regular wave on the report.
#pragma once

#include "sea/regular_cards.h"

namespace tidearc {

/// What was read, after defaults and corrections.
void print_wave_data(const SolutionControl& control);
/// What the solution gave.
void print_wave_solution();

}  // namespace tidearc
