// Cards of the grid wave, the head of its file, and its groups as an analysis steps through time.
#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

#include "run/binary_file.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/grid.h"
#include "sea/sea_report.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

struct GridCard {
  double d = 0.0;
  std::array<double, 3> direction{};
  double highest = 0.0;
  double lowest = 0.0;
  int print_code = 0;
  int position_code = 0;
  double shift = 0.0;
};

GridCard read_grid_card() {
  GridCard card;
  read(units.NDIN, "6F10.0,2I5,F10.0", card.d, card.direction, card.highest, card.lowest, card.print_code,
       card.position_code, card.shift);
  if (!(card.d > 0.0)) {
    sea_error("WATER DEPTH IS NOT POSITIVE", {1, 10});
    card.d = 1.0;
  }
  make_unit(card.direction, {11, 40});
  if (card.position_code < 1) card.position_code = 1;
  return card;
}

std::string read_file_name() {
  std::array<char, 80> text{};
  read(units.NDIN, "A80", text);
  std::string_view name(text.data(), text.size());
  name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
  name.remove_suffix(name.size() - (name.find_last_not_of(' ') + 1));
  return std::string(name);
}

void open_grid(const std::string& name) {
  grid_wave.file = open_binary(name);
  if (grid_wave.file != 0) return;
  write(units.NDOUT, "/,5X,'FAIL TO OPEN GRID FILE',/,5X,A80", name);
  complain(whole_line, "fail to open grid file " + name);
  CLOSUP();
}

int next_integer() {
  int value = 0;
  read_binary(grid_wave.file, grid_wave.position, std::span(&value, 1));
  return value;
}

/// Counts of the file that the tables cannot hold end the run.
void check_counts(int NH, int NV) {
  if (NH >= 1 && NH <= most_grid_columns && NV >= 1 && NV <= most_grid_rows) return;
  write(units.NDOUT, "/,5X,2I10,' SHOULD NOT BE 0 OR GREATER THAH ',2I5", NH, NV, most_grid_columns, most_grid_rows);
  complain(not_on_deck, "grid file " + file_of_binary(grid_wave.file) + ": " + std::to_string(NH) + " columns and " +
                            std::to_string(NV) + " rows, at least 1 and at most " + std::to_string(most_grid_columns) +
                            " and " + std::to_string(most_grid_rows) + " are allowed");
  CLOSUP();
}

/// Cells need coordinates that ascend.
void check_ascending(std::span<const double> coordinates, std::string_view words) {
  const auto falls = [](double a, double b) { return !(a < b); };
  const bool finite = std::ranges::all_of(coordinates, [](double x) { return std::isfinite(x); });
  if (finite && std::ranges::adjacent_find(coordinates, falls) == coordinates.end()) return;
  write(units.NDOUT, "/,5X,A10,' COORDINATES OF THE GRID ARE NOT IN ASCENDING ORDER'", words);
  complain(not_on_deck, "grid file " + file_of_binary(grid_wave.file) + ": " + std::string(words) +
                            " coordinates are not in ascending order");
  CLOSUP();
}

/// NH, NV and both rows of coordinates; what the program does not use of the head is read over.
void read_grid_head(double shift) {
  next_integer();
  const int NH = next_integer();
  const int NV = next_integer();
  check_counts(NH, NV);
  next_integer();
  double unused = 0.0;
  read_binary(grid_wave.file, grid_wave.position, std::span(&unused, 1));
  grid_wave.NH = NH;
  grid_wave.NV = NV;
  const std::span X = std::span(grid_wave.X).first(static_cast<std::size_t>(NH));
  const std::span Z = std::span(grid_wave.Z).first(static_cast<std::size_t>(NV));
  read_binary(grid_wave.file, grid_wave.position, X);
  for (double& x : X) x -= shift;
  read_binary(grid_wave.file, grid_wave.position, Z);
  check_ascending(X, "HORIZONTAL");
  check_ascending(Z, "VERTICAL");
}

/// Limits are global elevations; zero means the edge of the grid.
void set_limits(const GridCard& card) {
  wave.d = card.d;
  wave.direction = card.direction;
  wave.mudline = wave.MWL + wave.sg * wave.d;
  wave.upper_force = card.highest != 0.0 ? card.highest : grid_wave.Z[static_cast<std::size_t>(grid_wave.NV - 1)];
  wave.lower_force = card.lowest != 0.0 ? card.lowest : grid_wave.Z[0];
  if (wave.current_code != 1) wave.lower_current = wave.lower_force;
}

void echo_grid(const GridCard& card, const std::string& name) {
  write_sea_title("2 D   G R I D   W A V E   D A T A");
  write_sea_value("MEAN WATER DEPTH", wave.d);
  write_sea_direction(wave.direction);
  write_sea_value("HIGHEST ELEVATION TO CALCULATE WAVE FORCE", wave.upper_force);
  write_sea_value("LOWEST ELEVATION TO CALCULATE WAVE FORCE", wave.lower_force);
  write_sea_value("LOWEST ELEVATION TO CALCULATE CURRENT FORCE", wave.lower_current);
  write_sea_count("GRID PRINT CODE", card.print_code);
  write_sea_count("GRID TIME POSITIONING CODE", card.position_code);
  write_sea_value("HORIZONTAL GRID ORIGIN SHIFT", card.shift);
  write(units.NDOUT, "8X,'GRID FILE',3X,A80", name);
  write_sea_count("NUMBER OF HORIZONTAL GRID POINTS", grid_wave.NH);
  write_sea_count("NUMBER OF VERTICAL GRID POINTS", grid_wave.NV);
}

Reals group_reals() { return pool.reals(grid_wave.KGRID, grid_reals * grid_wave.NH * grid_wave.NV); }

/// Reads the next group of the file into its place.
void read_group() {
  read_binary(grid_wave.file, grid_wave.position,
              std::span(grid_wave.surface).first(static_cast<std::size_t>(grid_wave.NH)));
  read_binary(grid_wave.file, grid_wave.position, group_reals().span());
  ++grid_wave.groups;
}

void print_group(int step) {
  write(units.NDOUT, "/,/,5X,'GRID KINEMATICS FOR TIME STEP',I6,/", step);
  write(units.NDOUT, "5X,'COLUMN ROW      XL      ZL     ELEVATION',5X,'U         V         UU        VV         P'");
  const Reals group = group_reals();
  for (int row = 1; row <= grid_wave.NV; ++row) {
    for (int column = 1; column <= grid_wave.NH; ++column) {
      const auto i = static_cast<std::size_t>(column - 1);
      const int first = grid_reals * (column - 1 + (row - 1) * grid_wave.NH);
      write(units.NDOUT, "5X,I6,I4,2F8.2,F14.3,5F10.3", column, row, grid_wave.X[i],
            grid_wave.Z[static_cast<std::size_t>(row - 1)], grid_wave.surface[i],
            std::span<const double>(group.data() + first, static_cast<std::size_t>(grid_reals)));
    }
  }
}

}  // namespace

void read_grid_wave() {
  grid_wave = GridWave{};
  const GridCard card = read_grid_card();
  const std::string name = read_file_name();
  open_grid(name);
  read_grid_head(card.shift);
  grid_wave.print_code = card.print_code;
  grid_wave.position_code = card.position_code;
  set_limits(card);
  echo_grid(card, name);
}

void start_grid_steps() {
  if (wave.IWTY != wave_grid) return;
  for (; grid_wave.position_code > 1; --grid_wave.position_code) read_group();
  grid_wave.step = 0;
}

void next_grid_group(int step) {
  if (wave.IWTY != wave_grid || step == grid_wave.step) return;
  read_group();
  grid_wave.step = step;
  grid_wave.standing = 1;
  if (step == grid_wave.print_code) print_group(step);
}

}  // namespace tidearc
