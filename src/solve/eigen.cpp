// Kernels of the subspace iteration: start, projection, rotation, residuals. The small problem: eigen_small.cpp.
#include "solve/eigen.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "run/vectors.h"

namespace tidearc {

namespace {

/// Divides by the entry of largest magnitude; false when all are zero.
bool scale_to_unit(Reals vector) {
  double largest = 0.0;
  for (const double value : vector) {
    if (std::abs(value) > std::abs(largest)) largest = value;
  }
  if (largest == 0.0) return false;
  for (double& value : vector) value /= largest;
  return true;
}

/// The largest ratio: the last of equal ones up to `middle`, unless a larger one stands behind. Taking the last one of
/// a shrinking range spreads the choices where many ratios are equal, as in a regular frame.
int choose(ConstReals ratio, int middle) {
  int chosen = 1;
  for (int e = 2; e <= middle; ++e) {
    if (ratio(e) >= ratio(chosen)) chosen = e;
  }
  for (int e = std::max(middle, 1) + 1; e <= ratio.size(); ++e) {
    if (ratio(e) > ratio(chosen)) chosen = e;
  }
  return chosen;
}

/// Numbers between -0.5 and 0.5, the same on every machine: a linear congruential sequence.
class Share {
 public:
  double next() {
    state_ = state_ * 1664525U + 1013904223U;
    return (state_ >> 8) * 0x1p-24 - 0.5;
  }

 private:
  std::uint32_t state_ = 12345U;
};

double largest_magnitude(ConstReals vector) {
  double largest = 0.0;
  for (const double value : vector) largest = std::max(largest, std::abs(value));
  return largest;
}

void scale(Reals x, Reals y, double factor) {
  for (double& value : x) value *= factor;
  for (double& value : y) value *= factor;
}

void subtract(Reals from, ConstReals what, double factor) {
  for (int e = 1; e <= from.size(); ++e) from(e) -= factor * what(e);
}

void weigh(ConstReals x, ConstReals M, Reals weighed) {
  for (int e = 1; e <= x.size(); ++e) weighed(e) = M(e) * x(e);
}

/// Scales a vector to unit mass, and its loads with it; false when it has none.
bool scale_to_unit_mass(Reals x, Reals y, ConstReals M, Reals scratch) {
  weigh(x, M, scratch);
  const double square = DOT(x.data(), scratch.data(), x.size());
  if (!(square > 0.0)) return false;
  scale(x, y, 1.0 / std::sqrt(square));
  return true;
}

}  // namespace

int subspace_size(int NFREQ, int NMASS) {
  const std::int64_t wanted = NFREQ;
  return static_cast<int>(std::max<std::int64_t>(std::min<std::int64_t>({wanted + 8, NMASS, 2 * wanted}), 0));
}

int count_masses(ConstReals M) {
  return static_cast<int>(std::count_if(M.begin(), M.end(), [](double mass) { return mass != 0.0; }));
}

int first_not_positive(const Profile<const double>& K) {
  for (int e = 1; e <= K.NEQ; ++e) {
    if (!(K.diagonal(e) > 0.0) || !std::isfinite(K.diagonal(e))) return e;
  }
  return 0;
}

void subtract_mass(const Profile<double>& K, ConstReals M, double shift) {
  for (int e = 1; e <= K.NEQ; ++e) K.diagonal(e) -= shift * M(e);
}

void starting_loads(const Profile<const double>& K, ConstReals M, RealTable Y, Reals ratio) {
  const int N = Y.rows();
  const int q = Y.columns();
  for (int e = 1; e <= N; ++e) {
    Y(e, 1) = M(e);
    ratio(e) = std::abs(M(e) / K.diagonal(e));
  }
  if (!scale_to_unit(Y.column(1))) std::fill(Y.column(1).begin(), Y.column(1).end(), 1.0);
  const double heaviest = largest_magnitude({M.data(), N});
  const int spacing = N / q;
  int middle = N - spacing;
  Share share;
  for (int j = 2; j <= q; ++j) {
    const Reals column = Y.column(j);
    const int chosen = choose(ratio, middle);
    for (int e = 1; e <= N; ++e) column(e) = heaviest > 0.0 ? M(e) / heaviest * share.next() : 0.0;
    column(chosen) = 1.0;
    ratio(chosen) = -1.0;  // behind all that have not been chosen
    middle -= spacing;
  }
}

void orthonormalise(RealTable X, RealTable Y, ConstReals M, Reals scratch) {
  constexpr int passes = 2;  // the first one leaves the rounding of what it takes away, the second takes that away
  for (int j = 1; j <= X.columns(); ++j) {
    const Reals x = X.column(j);
    const Reals y = Y.column(j);
    bool heavy = scale_to_unit_mass(x, y, M, scratch);
    for (int pass = 1; pass <= passes && heavy; ++pass) {
      for (int i = 1; i < j; ++i) {
        weigh(x, M, scratch);
        const double part = DOT(X.column(i).data(), scratch.data(), x.size());
        subtract(x, X.column(i), part);
        subtract(y, Y.column(i), part);
      }
      heavy = scale_to_unit_mass(x, y, M, scratch);
    }
  }
}

void project(ConstRealTable X, ConstRealTable Y, ConstReals M, RealTable stiffness, RealTable mass, Reals scratch) {
  const int N = X.rows();
  for (int j = 1; j <= X.columns(); ++j) {
    weigh(X.column(j), M, scratch);
    for (int i = 1; i <= j; ++i) {
      const ConstReals xi = X.column(i);
      stiffness(i, j) = stiffness(j, i) = DOT(xi.data(), Y.column(j).data(), N);
      mass(i, j) = mass(j, i) = DOT(xi.data(), scratch.data(), N);
    }
  }
}

void rotate(RealTable X, ConstRealTable Z, Reals row) {
  const int q = X.columns();
  for (int e = 1; e <= X.rows(); ++e) {
    for (int i = 1; i <= q; ++i) row(i) = X(e, i);
    for (int j = 1; j <= q; ++j) X(e, j) = DOT(row.data(), Z.column(j).data(), q);
  }
}

void mass_weighted(ConstRealTable X, ConstReals M, RealTable Y) {
  for (int j = 1; j <= X.columns(); ++j) {
    for (int e = 1; e <= X.rows(); ++e) Y(e, j) = M(e) * X(e, j);
  }
}

void relative_changes(ConstReals now, ConstReals last, Reals residuals) {
  for (int i = 1; i <= residuals.size(); ++i) residuals(i) = std::abs(now(i) - last(i)) / std::abs(now(i));
}

bool all_within(ConstReals residuals, int count, double tolerance) {
  for (int i = 1; i <= count; ++i) {
    if (!(residuals(i) <= tolerance)) return false;
  }
  return true;
}

void make_largest_positive(Reals vector) {
  double largest = 0.0;
  for (const double value : vector) {
    if (std::abs(value) > std::abs(largest)) largest = value;
  }
  if (largest >= 0.0) return;
  for (double& value : vector) value = value == 0.0 ? 0.0 : -value;
}

}  // namespace tidearc
