// Where the free surface cuts a member: halving of the chord, the same for every family.
#pragma once

#include <cstddef>

#include "sea/field.h"

namespace tidearc {

/// The point on the chord from A to B where the surface cuts it, on A's side of the surface and within 1/128 of the
/// chord. surface(time, point) is the global elevation of the surface over a point.
///
/// An end A that lies in the surface is the cut. (The signs of the differences cannot tell: every product with a zero
/// is zero, and the point would walk to the far end.)
template <class Surface>
Point surface_cut(Surface&& surface, const Point& A, const Point& B, double time) {
  constexpr int passes = 8;
  constexpr double finest = 0.01;  // of the chord
  const std::size_t vertical = static_cast<std::size_t>(wave.vertical - 1);
  const double f0 = surface(time, A) - A[vertical];
  Point P = A;
  if (f0 == 0.0) return P;
  double step = 1.0;
  for (int pass = 1; pass <= passes; ++pass) {
    step *= 0.5;
    Point trial;
    for (std::size_t i = 0; i < 3; ++i) trial[i] = P[i] + step * (B[i] - A[i]);
    const double f = surface(time, trial) - trial[vertical];
    if (f0 * f >= 0.0) P = trial;
    if (step < finest || f == 0.0) break;
  }
  return P;
}

}  // namespace tidearc
