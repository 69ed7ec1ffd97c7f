// The force-deformation curve of a truss: walk, slope and search.
#include "elements/truss/curve.h"

#include <algorithm>
#include <cmath>

namespace tidearc {

namespace {

double deformation(CurvePairs pairs, int k) { return pairs[static_cast<std::size_t>(2 * (k - 1))]; }
double force(CurvePairs pairs, int k) { return pairs[static_cast<std::size_t>(2 * (k - 1) + 1)]; }

constexpr double same_force = 1.0E-12;  ///< difference over the ordinate  [-]

/// Deformation nearest to `wanted` at which segment k bears the force.
std::optional<double> on_segment(CurvePairs pairs, int k, double wanted_force, double wanted) {
  const double D1 = deformation(pairs, k), D2 = deformation(pairs, k + 1);
  const double P1 = force(pairs, k), P2 = force(pairs, k + 1);
  if (!(D1 < D2)) return std::nullopt;
  if (wanted_force < std::min(P1, P2) || wanted_force > std::max(P1, P2)) return std::nullopt;
  if (P1 == P2) return std::clamp(wanted, D1, D2);
  if (wanted_force == P2) return D2;  // exactly the ordinate, where the next segment begins
  return D1 + (wanted_force - P1) / (P2 - P1) * (D2 - D1);
}

}  // namespace

void complete_curve(std::span<double, 2 * curve_pairs> pairs) {
  int last = curve_pairs;
  while (last > 0 && deformation(pairs, last) == 0.0 && force(pairs, last) == 0.0) --last;
  if (last < 1) return;
  const double D = deformation(pairs, last);
  const double P = force(pairs, last);
  for (std::size_t k = static_cast<std::size_t>(last); k < curve_pairs; ++k) {
    pairs[2 * k] = D;
    pairs[2 * k + 1] = P;
  }
}

CurvePoint walk_curve(CurvePairs pairs, double ratio) {
  int i = 1;
  while (i <= curve_ordinates && !(deformation(pairs, i) > ratio)) ++i;
  if (i == 1) return {truss_curve, force(pairs, 1)};
  if (i > curve_ordinates) return {truss_curve + curve_ordinates, force(pairs, curve_ordinates)};
  const double D1 = deformation(pairs, i - 1), D2 = deformation(pairs, i);
  const double P1 = force(pairs, i - 1), P2 = force(pairs, i);
  return {truss_curve + i - 1, P1 + (P2 - P1) * ((ratio - D1) / (D2 - D1))};
}

double curve_slope(CurvePairs pairs, int code) {
  const int k = code - truss_curve;
  if (k < 1 || k >= curve_ordinates) return 0.0;
  const double length = deformation(pairs, k + 1) - deformation(pairs, k);
  return length == 0.0 ? 0.0 : (force(pairs, k + 1) - force(pairs, k)) / length;
}

double force_at_ordinate(CurvePairs pairs, double ratio) {
  for (int k = 1; k <= curve_ordinates; ++k) {
    const double P = force(pairs, k);
    if (std::abs(ratio - P) <= same_force * std::abs(P)) return P;
  }
  return ratio;
}

std::optional<CurvePoint> find_deformation(CurvePairs pairs, double force, double wanted) {
  std::optional<CurvePoint> found;
  for (int k = 1; k < curve_ordinates; ++k) {
    const std::optional<double> here = on_segment(pairs, k, force, wanted);
    if (!here) continue;
    if (!found || std::abs(*here - wanted) <= std::abs(found->value - wanted)) found = {truss_curve + k, *here};
  }
  return found;
}

std::optional<double> next_ordinate(CurvePairs pairs, double ratio, bool upward) {
  std::optional<double> below;
  for (int k = 1; k <= curve_ordinates; ++k) {
    const double D = deformation(pairs, k);
    if (D > ratio) return upward ? std::optional(D) : below;
    below = D;
  }
  return upward ? std::nullopt : below;
}

}  // namespace tidearc
