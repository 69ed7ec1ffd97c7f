// Reduction of a symmetric profile in packed panels.
//
// The sum that reduces entry (i, j) runs over the rows from the higher of the two columns' starts down to row i - 1, in
// one accumulator. Different entries are independent of each other, so the lanes of a vector and the registers of a
// tile hold different entries and never parts of one sum. A panel is some ninety columns, sorted by their first rows
// into groups of eight lanes and packed row by row; a strip is the handful of adjacent equations whose columns reach a
// panel as rows. For each strip, from the panel's first row down: sums of the strip's rows over the rows above it
// (tiles of six rows by three lane groups), then the strip's own small triangle in the same accumulators, then the
// division by pivots and the way back to the profile. The loops stand in solve/kernel_tiles.h.
#pragma once

#include <array>
#include <vector>

#include "solve/factor.h"
#include "solve/kernel_table.h"

namespace tidearc {

inline constexpr int panel_groups = 12;
inline constexpr int panel_columns = panel_groups * group_lanes;

/// Where panels are packed: memory of no lasting content, kept so that a reduction allocates only when it needs more
/// than any before it.
struct PanelMemory {
  std::array<LaneGroup, panel_groups> groups{};
  alignas(64) std::array<double, panel_groups * tile_size> sums{};
  std::vector<double> values;
  std::vector<double> pivots;  ///< by equation, of a matrix that keeps them on its diagonal
};
inline PanelMemory panel_memory;

/// Free columns of K from KFIRST on against each other, divided, their pivots set in D. Rows above the first column of
/// K are reduced already. Returns the first zero pivot that a column in rising order meets.
ZeroPivot reduce_panels_within(const Profile<double>& K, const ReductionRange& range);

}  // namespace tidearc
