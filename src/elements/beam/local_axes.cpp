// The local axes of a two-node member.
#include "elements/beam/local_axes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "run/vectors.h"

namespace tidearc {

namespace {

constexpr double vertical_cosine = 0.999;
/// A third node whose direction differs from the member's by less than this angle lies on its line. Rounding of
/// coordinates leaves a node that is meant to lie there about 1.0E-13 beside it.
constexpr double on_axis_angle = 1.0E-10;

void set(double* v, double x, double y, double z, double divisor) {
  v[0] = x / divisor;
  v[1] = y / divisor;
  v[2] = z / divisor;
}

void SACS_axes(const double* c, double* y, double* z) {
  if (std::abs(c[2]) >= vertical_cosine) {
    set(y, c[2], 0.0, 0.0, 1.0);
    set(z, 0.0, 1.0, 0.0, 1.0);
    return;
  }
  const double across = c[0] * c[0] + c[1] * c[1];
  set(y, -c[1], c[0], 0.0, std::sqrt(across));
  const double raw[3] = {-c[0] * c[2], -c[1] * c[2], across};
  set(z, raw[0], raw[1], raw[2], std::sqrt(DOT3(raw, raw)));
}

void STRUDL_axes(const double* c, double* y, double* z) {
  if (std::abs(c[1]) >= vertical_cosine) {
    set(y, -c[1], 0.0, 0.0, 1.0);
    set(z, 0.0, 0.0, 1.0, 1.0);
    return;
  }
  const double across = c[0] * c[0] + c[2] * c[2];
  const double raw[3] = {-c[0] * c[1], across, -c[1] * c[2]};
  set(y, raw[0], raw[1], raw[2], std::sqrt(DOT3(raw, raw)));
  set(z, -c[2], 0.0, c[0], std::sqrt(across));
}

/// y is the part of r normal to d. False when r lies along d.
bool K_node_axes(const double* d, const double* r, const double* x, double* y, double* z) {
  const double dd = DOT3(d, d);
  const double dr = DOT3(d, r);
  const double raw[3] = {r[0] * dd - d[0] * dr, r[1] * dd - d[1] * dr, r[2] * dd - d[2] * dr};
  const double size = std::sqrt(DOT3(raw, raw));
  if (!(size > on_axis_angle * dd * std::sqrt(DOT3(r, r)))) return false;
  set(y, raw[0], raw[1], raw[2], size);
  set(z, x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0], 1.0);
  return true;
}

}  // namespace

void twist_axes(std::span<double, 9> axes, double angle) {
  const double c = std::cos(angle);
  const double s = std::sin(angle);
  for (std::size_t i = 0; i < 3; ++i) {
    const double y = axes[i + 3];
    const double z = axes[i + 6];
    axes[i + 3] = y * c + z * s;
    axes[i + 6] = z * c - y * s;
  }
}

LocalAxes local_axes(std::span<const double, 3> xI, std::span<const double, 3> xJ, EndOffsets ECC, const double* xK,
                     AxisConvention convention, double angle) {
  LocalAxes found;
  double d[3];
  for (std::size_t i = 0; i < 3; ++i) d[i] = (xJ[i] - xI[i]) + ECC[2 * i + 1] - ECC[2 * i];
  const double length = std::sqrt(DOT3(d, d));
  if (!(length > 0.0)) return found;
  found.length = length;
  double* x = found.axes;
  double* y = found.axes + 3;
  double* z = found.axes + 6;
  set(x, d[0], d[1], d[2], length);
  if (xK != nullptr) {
    double r[3];
    for (std::size_t i = 0; i < 3; ++i) r[i] = xK[i] - (xI[i] + ECC[2 * i]);
    found.K_on_axis = !K_node_axes(d, r, x, y, z);
    if (found.K_on_axis) convention = axes_SACS;
  }
  if (xK == nullptr || found.K_on_axis) {
    if (convention == axes_STRUDL) {
      STRUDL_axes(x, y, z);
    } else {
      SACS_axes(x, y, z);
    }
  }
  if (angle != 0.0) twist_axes(found.axes, angle);
  return found;
}

}  // namespace tidearc
