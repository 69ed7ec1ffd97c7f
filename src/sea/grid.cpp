// The grid wave at a point: cells, bilinear values, and the operations of the family.
#include "sea/grid.h"

#include <algorithm>

#include "run/layout.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/surface_cut.h"
#include "sea/water_frame.h"

namespace tidearc {
namespace {

std::span<const double> columns() { return std::span(grid_wave.X).first(static_cast<std::size_t>(grid_wave.NH)); }
std::span<const double> rows() { return std::span(grid_wave.Z).first(static_cast<std::size_t>(grid_wave.NV)); }

std::size_t axis(int number) { return static_cast<std::size_t>(number - 1); }

/// Component of the wave direction on a horizontal axis, 0 or 1.
double direction_on(std::size_t horizontal) { return wave.direction[axis(wave.horizontal[horizontal])]; }

double position_along(const Point& at) {
  return at[axis(wave.horizontal[0])] * direction_on(0) + at[axis(wave.horizontal[1])] * direction_on(1);
}

/// The lower one of the pair that holds a value: the first whose upper coordinate exceeds it, else the last pair.
std::size_t lower_of_pair(std::span<const double> coordinates, double value) {
  const std::size_t last = coordinates.size() - 1;
  std::size_t i = 0;
  while (i + 1 < last && !(coordinates[i + 1] > value)) ++i;
  return i;
}

double local_coordinate(std::span<const double> coordinates, std::size_t i, double value) {
  if (coordinates.size() < 2) return -1.0;
  return 2.0 * (value - coordinates[i]) / (coordinates[i + 1] - coordinates[i]) - 1.0;
}

/// The cell of a point; one beyond the columns ends the run.
GridCell cell_of(const Point& at) {
  const double p = position_along(at);
  const double z = elevation_of(at);
  const GridCell cell = grid_cell(columns(), rows(), p, z);
  if (cell.inside) return cell;
  write(units.NDOUT, "/,5X,'FORCE POINT OUTSIDE LIMITS OF GRID'");
  write(units.NDOUT, "5X,'POINT COORDINATES =',3G15.6", at);
  write(units.NDOUT, "5X,'TRANSFORMED COORDINATES =',2G15.6", p, z);
  complain(not_on_deck, "force point outside limits of grid:" +
                            format("' at',3G15.6,', along the wave',G15.6,', columns from',G15.6,' to',G15.6", at, p,
                                   columns().front(), columns().back()));
  CLOSUP();
}

void check_axis() {
  if (wave.sg < 0.0) return;
  write(units.NDOUT, "/,5X,'GLOBAL VERTICAL AXIS IS NOT DIRECTED UP (OPPOSITE GRAVITY)'");
  complain(not_on_deck, "global vertical axis is not directed up (opposite gravity), as a grid wave needs it");
  CLOSUP();
}

std::span<const double> group_in_force() {
  return pool.reals(grid_wave.KGRID, grid_reals * grid_wave.NH * grid_wave.NV).span();
}

/// Global elevation of the surface over a cell.
double surface_over(const GridCell& cell) {
  if (grid_wave.standing == 0) return wave.MWL;
  const double left = grid_wave.surface[cell.column];
  if (grid_wave.NH < 2) return left;
  return 0.5 * (1.0 - cell.r) * left + 0.5 * (1.0 + cell.r) * grid_wave.surface[cell.column + 1];
}

/// The wave part of a motion, from the group in force.
void add_wave(const GridCell& cell, WaterMotion& motion) {
  const std::span<const double> group = group_in_force();
  const auto NH = static_cast<std::size_t>(grid_wave.NH);
  const auto NV = static_cast<std::size_t>(grid_wave.NV);
  const auto value = [&](std::size_t item) { return grid_value(cell, group, NH, NV, item); };
  const double u = value(0) * wave.kinematic_factor;
  const double a = value(2) * wave.kinematic_factor;
  for (std::size_t i = 0; i < 2; ++i) {
    motion.velocity[axis(wave.horizontal[i])] = u * direction_on(i);
    motion.acceleration[axis(wave.horizontal[i])] = a * direction_on(i);
  }
  motion.velocity[axis(wave.vertical)] = value(1);
  motion.acceleration[axis(wave.vertical)] = value(3);
}

}  // namespace

GridCell grid_cell(std::span<const double> X, std::span<const double> Z, double p, double z) {
  GridCell cell;
  cell.inside = p >= X.front() && p <= X.back();
  cell.column = lower_of_pair(X, p);
  cell.row = lower_of_pair(Z, z);
  cell.r = local_coordinate(X, cell.column, p);
  cell.s = std::clamp(local_coordinate(Z, cell.row, z), -1.0, 1.0);
  return cell;
}

double grid_value(const GridCell& cell, std::span<const double> group, std::size_t NH, std::size_t NV,
                  std::size_t item) {
  const std::size_t right = NH > 1 ? cell.column + 1 : cell.column;
  const std::size_t above = NV > 1 ? cell.row + 1 : cell.row;
  const auto at = [&](std::size_t column, std::size_t row) {
    return group[static_cast<std::size_t>(grid_reals) * (column + row * NH) + item];
  };
  return 0.25 *
         ((1.0 - cell.r) * (1.0 - cell.s) * at(cell.column, cell.row) +
          (1.0 + cell.r) * (1.0 - cell.s) * at(right, cell.row) + (1.0 + cell.r) * (1.0 + cell.s) * at(right, above) +
          (1.0 - cell.r) * (1.0 + cell.s) * at(cell.column, above));
}

double GRDETA(double, const Point& at) { return surface_over(cell_of(at)); }

void GRDVEL(const Point& at, double, double lower_current, MotionParts parts, WaterMotion& motion) {
  motion = {};
  check_axis();
  const GridCell cell = cell_of(at);
  const double level = elevation_of(at);
  if (!parts.current_only && grid_wave.standing != 0) add_wave(cell, motion);
  const double eta = -depth_of(surface_over(cell));
  add_current(depth_of(level), eta, level, lower_current, parts, motion.velocity);
}

WavePressure GRDPRS(double surface, const Point& at, double) {
  check_axis();
  if (is_above(at, surface)) return {};
  const GridCell cell = cell_of(at);
  const double still = static_pressure(depth_of(elevation_of(at)));
  if (grid_wave.standing == 0) return {still, 0.0};
  const double total = grid_value(cell, group_in_force(), static_cast<std::size_t>(grid_wave.NH),
                                  static_cast<std::size_t>(grid_wave.NV), 4);
  return {total, total - still};
}

Point GRDCUT(const Point& A, const Point& B, double time) { return surface_cut(GRDETA, A, B, time); }

}  // namespace tidearc
