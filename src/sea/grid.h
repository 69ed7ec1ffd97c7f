// The two-dimensional grid wave (type 6): water motion that another program computed, on a vertical grid along the wave
// direction, one group of values for each step in time.
//
// A binary file brings it, as a stream without record marks, little-endian: integer (not used), NH, NV, integer and
// real (not used), NH horizontal coordinates along the wave, NV global elevations, and then for each step NH global
// elevations of the surface and NH*NV groups U, V, UU, VV, P: horizontal and vertical velocity, horizontal and vertical
// acceleration, pressure; the group of column i in row j stands at i + (j-1) NH.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "run/views.h"

namespace tidearc {

inline constexpr int most_grid_columns = 100;
inline constexpr int most_grid_rows = 200;
inline constexpr int grid_reals = 5;  ///< U, V, UU, VV, P [-]

/// Written by read_grid_wave() at the cards; KGRID by whoever carves the analysis arrays; the rest moves with the steps
/// of dynamic analyses. Reset at the start of a problem.
struct GridWave {
  int NH = 0;                                 ///< columns                                                     [-]
  int NV = 0;                                 ///< rows                                                        [-]
  int KGRID = 0;                              ///< pool index of the group in force, 5 NH NV reals; 0 none
  int file = 0;                               ///< its number among the open binary files; 0 none
  int groups = 0;                             ///< groups read from the file, dropped ones included            [-]
  int step = 0;                               ///< step of the macro that the group belongs to; 0 none yet     [-]
  int print_code = 0;                         ///< step whose group is printed; 0 none
  int position_code = 1;                      ///< N: the first N-1 groups are dropped at the next macro start
  int standing = 0;                           ///< 1: a group stands at KGRID; 0: still water
  std::int64_t position = 0;                  ///< byte of the file at which the next group begins              [-]
  std::array<double, most_grid_columns> X{};  ///< along the wave, less the origin shift, ascending        [length]
  std::array<double, most_grid_rows> Z{};     ///< global elevations, ascending                            [length]
  std::array<double, most_grid_columns> surface{};  ///< global elevations of the surface over the columns    [length]
};
inline GridWave grid_wave;
static_assert(std::is_trivially_copyable_v<GridWave>);

/// Start of a dynamic analysis: no step has come yet, and the groups before the positioning code are dropped, once.
void start_grid_steps();
/// The sea of a step: reads the next group when `step` (1, 2, ...) is not the one before, so that a step that is done
/// again keeps its group; prints the group of the step that the print code names. No effect without a grid wave. A file
/// that has no further group ends the run in the I/O layer.
void next_grid_group(int step);

/// Where a point lies in the grid: lower column and row, 0-based, and local coordinates -1 to 1. With one column or row
/// the local coordinate is -1 and the neighbour is itself.
struct GridCell {
  std::size_t column = 0, row = 0;
  double r = -1.0, s = -1.0;
  bool inside = false;  ///< within the first and the last column
};
/// Cell of the position p along the wave and the elevation z: the first pair of columns whose upper one exceeds p, the
/// last pair for a point on the last column; rows alike, with a point beyond the rows on their edge.
GridCell grid_cell(std::span<const double> X, std::span<const double> Z, double p, double z);
/// Bilinear value of real `item` (0 to 4) of a group in a cell.
double grid_value(const GridCell& cell, std::span<const double> group, std::size_t NH, std::size_t NV,
                  std::size_t item);

}  // namespace tidearc
