// Kernels of the subspace iteration: start, projection, rotation, residuals. The small problem: eigen_small.cpp.
#include "solve/eigen.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "run/vectors.h"

namespace tidearc {

namespace {

/// The entry of largest magnitude with its sign, the first of equal ones.
double largest_entry(ConstReals vector) {
  double largest = 0.0;
  for (const double value : vector) {
    if (std::abs(value) > std::abs(largest)) largest = value;
  }
  return largest;
}

/// Divides by the entry of largest magnitude; false when all are zero.
bool scale_to_unit(Reals vector) {
  const double largest = largest_entry(vector);
  if (largest == 0.0) return false;
  for (double& value : vector) value /= largest;
  return true;
}

/// Equations with a mass by falling ratio of mass to stiffness, the lower number first where ratios are equal. They
/// stand in `scratch`, as reals.
Reals by_falling_ratio(const Profile<const double>& K, ConstReals M, Reals scratch) {
  int count = 0;
  for (int e = 1; e <= K.NEQ; ++e) {
    if (M(e) != 0.0) scratch(++count) = e;
  }
  const auto ratio = [&](double equation) {
    const int e = static_cast<int>(equation);
    const double r = std::abs(M(e) / K.diagonal(e));
    return r > 0.0 ? r : 0.0;  // what is no number stands last
  };
  std::sort(scratch.begin(), scratch.begin() + count, [&](double a, double b) {
    const double ratio_a = ratio(a);
    const double ratio_b = ratio(b);
    return ratio_a != ratio_b ? ratio_a > ratio_b : a < b;
  });
  return {scratch.data(), count};
}

/// 1 and -1 without order, the same on every machine: the top bit of a linear congruential sequence.
class Signs {
 public:
  double next() {
    state_ = state_ * 1664525U + 1013904223U;
    return state_ < 0x80000000U ? -1.0 : 1.0;
  }

 private:
  std::uint32_t state_ = 42U;
};

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

constexpr int columns_together = 8;  ///< whose sums run side by side, each in its order
constexpr int rows_together = 16;
constexpr int block_rows = 64;  ///< that stay in the nearest cache

/// Up to eight columns of X, some rows of them, with what stands in one row side by side.
struct RowBlock {
  int first = 1, rows = 0;  ///< rows of X
  int column = 1, columns = 0;
  double x[block_rows][columns_together];
};

void fill_block(ConstRealTable X, RowBlock& block) {
  block.columns = std::min(columns_together, X.columns() - block.column + 1);
  for (int e = 0; e < block.rows; ++e) {
    for (int r = 0; r < columns_together; ++r)
      block.x[e][r] = r < block.columns ? X(block.first + e, block.column + r) : 0.0;
  }
}

/// Goes on with the products of the block's columns with column j of Y and, weighed, of X.
void add_products(const RowBlock& block, ConstRealTable X, ConstRealTable Y, ConstReals M, int j, RealTable stiffness,
                  RealTable mass) {
  double k[columns_together] = {};
  double m[columns_together] = {};
  for (int r = 0; r < block.columns; ++r) {
    k[r] = stiffness(block.column + r, j);
    m[r] = mass(block.column + r, j);
  }
  for (int e = 0; e < block.rows; ++e) {
    const double y = Y(block.first + e, j);
    const double w = M(block.first + e) * X(block.first + e, j);
    const double* x = block.x[e];
#pragma GCC unroll 8
    for (int r = 0; r < columns_together; ++r) {
      k[r] += x[r] * y;
      m[r] += x[r] * w;
    }
  }
  for (int r = 0; r < block.columns; ++r) {
    stiffness(block.column + r, j) = k[r];
    mass(block.column + r, j) = m[r];
  }
}

void mirror_upper_triangle(RealTable T) {
  for (int j = 2; j <= T.columns(); ++j) {
    for (int i = 1; i < j; ++i) T(j, i) = T(i, j);
  }
}

/// Rows of X Z from `first` on, so many together.
template <int rows>
void rotate_rows(ConstRealTable X, ConstRealTable Z, int first, RealTable rotated) {
  for (int j = 1; j <= Z.columns(); ++j) {
    double sum[rows] = {};
    for (int k = 1; k <= X.columns(); ++k) {
      const double* x = &X(first, k);
      const double z = Z(k, j);
#pragma GCC unroll 16
      for (int r = 0; r < rows; ++r) sum[r] += x[r] * z;
    }
    for (int r = 0; r < rows; ++r) rotated(first + r, j) = sum[r];
  }
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
  for (int e = 1; e <= K.NEQ; ++e) {
    if (M(e) != 0.0) K.diagonal(e) -= shift * M(e);  // an infinite shift leaves equations without mass alone
  }
}

void starting_loads(const Profile<const double>& K, ConstReals M, RealTable Y, Reals scratch) {
  const int q = Y.columns();
  for (int j = 1; j <= q; ++j) {
    for (int e = 1; e <= Y.rows(); ++e) Y(e, j) = j == 1 ? M(e) : 0.0;
  }
  const Reals order = by_falling_ratio(K, M, scratch);
  const int others = q - 1;
  // one equation at least is left to the first vector, which would else be a sum of the others
  const int dealt = others > 0 ? (order.size() - 1) / others * others : 0;
  Signs sign;
  for (int p = 0; p < dealt; ++p) Y(static_cast<int>(order(p + 1)), 2 + p % others) = sign.next();
  for (int j = 1; j <= q; ++j) {
    if (scale_to_unit(Y.column(j))) continue;
    for (double& value : Y.column(j)) value = sign.next();
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

void project(ConstRealTable X, ConstRealTable Y, ConstReals M, RealTable stiffness, RealTable mass) {
  const int q = X.columns();
  for (const RealTable T : {stiffness, mass}) {
    for (int j = 1; j <= q; ++j) std::fill(T.column(j).begin(), T.column(j).end(), 0.0);
  }
  RowBlock block;
  for (block.first = 1; block.first <= X.rows(); block.first += block_rows) {
    block.rows = std::min(block_rows, X.rows() - block.first + 1);
    for (block.column = 1; block.column <= q; block.column += columns_together) {
      fill_block(X, block);
      for (int j = block.column; j <= q; ++j) add_products(block, X, Y, M, j, stiffness, mass);
    }
  }
  mirror_upper_triangle(stiffness);
  mirror_upper_triangle(mass);
}

void rotate(ConstRealTable X, ConstRealTable Z, RealTable rotated) {
  int e = 1;
  for (; e + rows_together - 1 <= X.rows(); e += rows_together) rotate_rows<rows_together>(X, Z, e, rotated);
  for (; e <= X.rows(); ++e) rotate_rows<1>(X, Z, e, rotated);
}

void mass_weighted(ConstRealTable X, ConstReals M, RealTable Y) {
  for (int j = 1; j <= X.columns(); ++j) weigh(X.column(j), M, Y.column(j));
}

void relative_changes(ConstReals now, ConstReals last, Reals residuals) {
  for (int i = 1; i <= residuals.size(); ++i) {
    const double change = std::abs(now(i) - last(i));
    residuals(i) = change == 0.0 ? 0.0 : change / std::abs(now(i));
  }
}

bool all_within(ConstReals residuals, int count, double tolerance) {
  for (int i = 1; i <= count; ++i) {
    if (!(residuals(i) <= tolerance)) return false;
  }
  return true;
}

void make_largest_positive(Reals vector) {
  if (largest_entry(vector) >= 0.0) return;
  for (double& value : vector) value = value == 0.0 ? 0.0 : -value;
}

}  // namespace tidearc
