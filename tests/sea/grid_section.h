// Grid files and the grid cards for tests.
#pragma once

#include <bit>
#include <cstdint>
#include <fstream>

#include "run/binary_file.h"
#include "sea/grid.h"
#include "wave_section.h"

namespace tidearc::test {

/// The bytes of a grid file: integers of 4 bytes, reals of 8, lowest byte first.
class GridBytes {
 public:
  GridBytes& integer(int value) { return put(static_cast<std::uint32_t>(value), 4); }
  GridBytes& real(double value) { return put(std::bit_cast<std::uint64_t>(value), 8); }
  GridBytes& reals(const std::vector<double>& values) {
    for (const double value : values) real(value);
    return *this;
  }
  /// The head with its counts and coordinates.
  GridBytes& head(const std::vector<double>& X, const std::vector<double>& Z) {
    return integer(77)
        .integer(static_cast<int>(X.size()))
        .integer(static_cast<int>(Z.size()))
        .integer(88)
        .real(9.9)
        .reals(X)
        .reals(Z);
  }
  void save(const std::string& name = "grid.bin") const { std::ofstream(name, std::ios::binary) << bytes_; }
  const std::string& bytes() const { return bytes_; }

 private:
  GridBytes& put(std::uint64_t bits, int count) {
    for (int i = 0; i < count; ++i) bytes_ += static_cast<char>((bits >> (8 * i)) & 0xFFU);
    return *this;
  }
  std::string bytes_;
};

/// The grid card and the name card.
struct GridCards {
  std::string d = "50.";
  std::vector<std::string> direction = {"1.", "", ""};
  std::string highest = "";
  std::string lowest = "";
  std::string print = "";
  std::string position = "";
  std::string shift = "";
  std::string name = "grid.bin";

  std::string cards() const {
    return fields(10, {d, direction[0], direction[1], direction[2], highest, lowest}) + fields(5, {print, position}) +
           fields(10, {shift}) + "\n" + name + "\n";
  }
  std::string section() const { return WaveControl{.IWTY = "6"}.card() + cards(); }
};

/// The coordinates of most tests.
inline const std::vector<double> grid_X{-20.0, -5.0, 10.0, 40.0};
inline const std::vector<double> grid_Z{-50.0, -20.0, 10.0};

/// Linear fields over the plane, which bilinear values hold exactly; `scale` tells groups apart.
struct LinearFields {
  double scale = 1.0;
  double surface(double x) const { return scale * (2.0 + 0.1 * x); }
  double U(double x, double z) const { return scale * (3.0 + 0.1 * x - 0.02 * z); }
  double V(double x, double z) const { return scale * (-1.0 + 0.05 * x + 0.01 * z); }
  double UU(double x, double z) const { return scale * (0.5 - 0.03 * x + 0.2 * z); }
  double VV(double x, double z) const { return scale * (0.25 + 0.07 * x - 0.06 * z); }
  double P(double x, double z) const { return scale * (40.0 - 0.5 * x - 10.0 * z); }

  void add_to(GridBytes& bytes, const std::vector<double>& X, const std::vector<double>& Z) const {
    for (const double x : X) bytes.real(surface(x));
    for (const double z : Z)
      for (const double x : X) bytes.reals({U(x, z), V(x, z), UU(x, z), VV(x, z), P(x, z)});
  }
};

/// A file of linear fields with scales 1, 2, 3, ...
inline GridBytes linear_grid(int groups, const std::vector<double>& X = grid_X, const std::vector<double>& Z = grid_Z) {
  GridBytes bytes;
  bytes.head(X, Z);
  for (int i = 1; i <= groups; ++i) LinearFields{static_cast<double>(i)}.add_to(bytes, X, Z);
  return bytes;
}

/// A type 6 section with its file. read() reads it and carves the group.
struct GridSection : WaveSection {
  explicit GridSection(const GridCards& cards = {}, const GridBytes& bytes = linear_grid(4))
      : WaveSection(cards.section()) {
    grid_wave = {};
    bytes.save();
  }
  ~GridSection() { grid_wave = {}; }
  void read() {
    WAVEIN();
    grid_wave.KGRID = carve_reals(grid_reals * grid_wave.NH * grid_wave.NV);
  }
  /// Read, at the first step.
  void start() {
    read();
    start_grid_steps();
    next_grid_group(1);
  }
};

}  // namespace tidearc::test
