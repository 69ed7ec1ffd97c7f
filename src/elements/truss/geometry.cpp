// Where a truss stands: length, force directions, and the local axes for wave loading.
#include "elements/truss/geometry.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "run/vectors.h"

namespace tidearc {

namespace {

constexpr double parallel_limit = 0.999999;
using Vector3 = std::array<double, 3>;

Vector3 cross(std::span<const double, 3> a, std::span<const double, 3> b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector3 unit(const Vector3& v) {
  const double length = std::sqrt(DOT3(v.data(), v.data()));
  if (length == 0.0) return v;
  return {v[0] / length, v[1] / length, v[2] / length};
}

}  // namespace

TrussGeometry truss_geometry(std::span<const double, 3> xI, std::span<const double, 3> xJ) {
  TrussGeometry geometry;
  const Vector3 apart = {xI[0] - xJ[0], xI[1] - xJ[1], xI[2] - xJ[2]};
  geometry.length = std::sqrt(DOT3(apart.data(), apart.data()));
  for (std::size_t i = 0; i < 3; ++i) {
    geometry.DIR[i] = apart[i] / geometry.length;
    geometry.DIR[i + 3] = -geometry.DIR[i];
  }
  return geometry;
}

void wave_axes(std::span<const double, 3> along, std::span<double, 9> axes) {
  Vector3 reference = {0.0, 0.0, 1.0};
  if (std::abs(DOT3(along.data(), reference.data())) > parallel_limit) reference = {0.0, 1.0, 0.0};
  const Vector3 second = unit(cross(reference, along));
  const Vector3 third = unit(cross(along, second));
  for (std::size_t i = 0; i < 3; ++i) {
    axes[i] = along[i];
    axes[i + 3] = second[i];
    axes[i + 6] = third[i];
  }
}

double EndMotion::extension(double t) const {
  const double change = t * (2.0 * along + t * squared);
  const double moved = std::sqrt(std::max(length * length + change, 0.0));
  return change == 0.0 ? 0.0 : change / (moved + length);
}

double EndMotion::fraction_to(double extension) const {
  const double change = extension * (2.0 * length + extension);
  const double root = std::sqrt(along * along + squared * change);
  return along > 0.0 ? change / (along + root) : (root - along) / squared;  // without a difference of equal numbers
}

EndMotion end_motion(std::span<const double, 3> xI, std::span<const double, 3> xJ, std::span<const double, 3> uI,
                     std::span<const double, 3> uJ) {
  const Vector3 apart = {xI[0] - xJ[0], xI[1] - xJ[1], xI[2] - xJ[2]};
  const Vector3 motion = {uI[0] - uJ[0], uI[1] - uJ[1], uI[2] - uJ[2]};
  return {std::sqrt(DOT3(apart.data(), apart.data())), DOT3(apart.data(), motion.data()),
          DOT3(motion.data(), motion.data())};
}

}  // namespace tidearc
