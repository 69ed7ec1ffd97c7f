// The wave force scale table: a factor on all wave loads of a time.
#pragma once

#include <span>

namespace tidearc {

/// Multiplier of a time: linear between two rows, 1 before the first row and from the last row's time on. The moving
/// index is the row before the last time asked for, so a time that goes back stays on its pair of rows.
/// @param index  0 before the first row, times.size() + 1 past the last one, where it stays
double force_multiplier(std::span<const double> times, std::span<const double> multipliers, double time, int& index);

}  // namespace tidearc
