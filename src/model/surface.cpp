// Pressure on a four-node surface and force along a moving line: formulas only.
#include "model/surface.h"

#include <cmath>
#include <cstddef>

namespace tidearc {

namespace {

/// Corner k of the square -1..1: its natural coordinates.
constexpr std::array<double, 4> corner_xi{-1.0, 1.0, 1.0, -1.0};
constexpr std::array<double, 4> corner_eta{-1.0, -1.0, 1.0, 1.0};
constexpr double gauss = 0.57735026918962576451;  // 1/sqrt(3), both weights 1

Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace

Corners pressure_forces(const Corners& x, const std::array<double, 4>& p) {
  Corners force{};
  for (std::size_t g = 0; g < 4; ++g) {
    const double xi = gauss * corner_xi[g];
    const double eta = gauss * corner_eta[g];
    std::array<double, 4> N{};
    Point along_xi{};
    Point along_eta{};
    double pressure = 0.0;
    for (std::size_t k = 0; k < 4; ++k) {
      N[k] = 0.25 * (1.0 + xi * corner_xi[k]) * (1.0 + eta * corner_eta[k]);
      pressure += N[k] * p[k];
      for (std::size_t i = 0; i < 3; ++i) {
        along_xi[i] += 0.25 * corner_xi[k] * (1.0 + eta * corner_eta[k]) * x[k][i];
        along_eta[i] += 0.25 * corner_eta[k] * (1.0 + xi * corner_xi[k]) * x[k][i];
      }
    }
    const Point normal_area = cross(along_xi, along_eta);
    for (std::size_t k = 0; k < 4; ++k) {
      for (std::size_t i = 0; i < 3; ++i) force[k][i] -= N[k] * pressure * normal_area[i];
    }
  }
  return force;
}

double fluid_pressure(double density, const Point& up, const Point& level, const Point& x) {
  const double height = (x[0] - level[0]) * up[0] + (x[1] - level[1]) * up[1] + (x[2] - level[2]) * up[2];
  const double pressure = -density * height;
  return pressure > 0.0 ? pressure : 0.0;
}

Point force_along_line(double f, const Point& a, const Point& d) {
  const Point line{d[0] - a[0], d[1] - a[1], d[2] - a[2]};
  const double length = std::sqrt(line[0] * line[0] + line[1] * line[1] + line[2] * line[2]);
  if (length == 0.0) return {};
  return {f * line[0] / length, f * line[1] / length, f * line[2] / length};
}

}  // namespace tidearc
