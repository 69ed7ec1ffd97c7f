// The small problem of the subspace iteration: generalised Jacobi iteration on a pair of symmetric matrices.
#include <algorithm>
#include <cmath>
#include <utility>

#include "solve/eigen.h"

namespace tidearc {

namespace {

constexpr double small_enough = 1.0E-13;  ///< coupling beside the diagonals that is left
constexpr int most_sweeps = 40;           ///< a few are needed; rounding may keep a coupling alive

/// Columns i and j of the transformation that uncouples the pair: 1 on the diagonal, alpha at (i, j), gamma at (j, i).
struct PairRotation {
  double alpha, gamma;
};

PairRotation rotation_of(ConstRealTable A, ConstRealTable B, int i, int j) {
  const double ai = A(i, i) * B(i, j) - B(i, i) * A(i, j);
  const double aj = A(j, j) * B(i, j) - B(j, j) * A(i, j);
  const double a = A(i, i) * B(j, j) - A(j, j) * B(i, i);
  const double radicand = std::max(0.25 * a * a + ai * aj, 0.0);  // below zero by rounding alone
  const double x = 0.5 * a + std::copysign(std::sqrt(radicand), a);
  if (x == 0.0) return {0.0, -B(i, j) / B(j, j)};  // A is a multiple of B here: only B couples
  return {aj / x, -ai / x};
}

void combine_columns(RealTable T, int i, int j, const PairRotation& p) {
  for (int r = 1; r <= T.rows(); ++r) {
    const double ti = T(r, i);
    const double tj = T(r, j);
    T(r, i) = ti + p.gamma * tj;
    T(r, j) = tj + p.alpha * ti;
  }
}

void combine_rows(RealTable T, int i, int j, const PairRotation& p) {
  for (int c = 1; c <= T.columns(); ++c) {
    const double ti = T(i, c);
    const double tj = T(j, c);
    T(i, c) = ti + p.gamma * tj;
    T(j, c) = tj + p.alpha * ti;
  }
  T(i, j) = T(j, i) = 0.0;
}

bool coupled(ConstRealTable T, int i, int j) {
  return std::abs(T(i, j)) > small_enough * std::sqrt(std::abs(T(i, i))) * std::sqrt(std::abs(T(j, j)));
}

/// Scales the vectors so that B has a unit diagonal, without which repeated rotations could let it grow. False when a
/// diagonal of B is not above zero or a number is not finite.
bool normalise(RealTable A, RealTable B, RealTable Z) {
  const int q = A.rows();
  for (int i = 1; i <= q; ++i) {
    const double s = 1.0 / std::sqrt(B(i, i));  // no number for a negative one, infinite for zero
    if (!(s > 0.0) || !std::isfinite(s) || !std::isfinite(s * A(i, i) * s)) return false;
    for (int k = 1; k <= q; ++k) {
      A(k, i) *= s;
      B(k, i) *= s;
      Z(k, i) *= s;
    }
    for (int k = 1; k <= q; ++k) {
      A(i, k) *= s;
      B(i, k) *= s;
    }
  }
  return true;
}

/// One rotation for each pair that is coupled; false when none was.
bool sweep(RealTable A, RealTable B, RealTable Z) {
  bool rotated = false;
  for (int j = 2; j <= A.rows(); ++j) {
    for (int i = 1; i < j; ++i) {
      if (!coupled(A, i, j) && !coupled(B, i, j)) continue;
      const PairRotation p = rotation_of(A, B, i, j);
      for (const RealTable T : {A, B}) {
        combine_columns(T, i, j, p);
        combine_rows(T, i, j, p);
      }
      combine_columns(Z, i, j, p);
      rotated = true;
    }
  }
  return rotated;
}

void unit_matrix(RealTable Z) {
  for (int j = 1; j <= Z.columns(); ++j) {
    for (int i = 1; i <= Z.rows(); ++i) Z(i, j) = i == j ? 1.0 : 0.0;
  }
}

void sort_ascending(Reals values, RealTable Z) {
  for (int i = 1; i <= values.size(); ++i) {
    int lowest = i;
    for (int k = i + 1; k <= values.size(); ++k) {
      if (values(k) < values(lowest)) lowest = k;
    }
    for (int at = lowest; at > i; --at) {  // a shift, so that equal values keep their order
      std::swap(values(at), values(at - 1));
      for (int r = 1; r <= Z.rows(); ++r) std::swap(Z(r, at), Z(r, at - 1));
    }
  }
}

}  // namespace

bool solve_small_problem(RealTable A, RealTable B, RealTable Z, Reals values) {
  unit_matrix(Z);
  if (!normalise(A, B, Z)) return false;
  for (int s = 0; s < most_sweeps && sweep(A, B, Z); ++s) {
    if (!normalise(A, B, Z)) return false;
  }
  for (int i = 1; i <= values.size(); ++i) values(i) = A(i, i) / B(i, i);
  sort_ascending(values, Z);
  return true;
}

}  // namespace tidearc
