// Random matrices on which elimination without pivoting is stable.
#include "random_matrix.h"

#include <algorithm>
#include <cmath>

namespace tidearc::test {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// Calls act(r, c, address counted from 0) for the stored entries with r not below `from`.
template <class Act>
void for_entries(const ProfileSystem& profile, int from, Act&& act) {
  for (int c = from; c <= profile.n; ++c) {
    for (int r = std::max(from, profile.top(c)); r <= c; ++r) act(r, c, at(profile.IDIAG[at(c - 1)] + r - c - 1));
  }
}

double random_sign(Random& random, double negative) { return random_real(random, 0.0, 1.0) < negative ? -1.0 : 1.0; }

// Column c of a triangle times a vector that begins at row `top`.
double product(const ProfileSystem& profile, const std::vector<double>& triangle, int c,
               const std::vector<double>& vector, int top) {
  const int before = profile.IDIAG[at(c - 1)] - c - 1;
  double sum = 0.0;
  for (int k = std::max(profile.top(c), top); k <= c; ++k) sum += triangle[at(before + k)] * vector[at(k - 1)];
  return sum;
}

}  // namespace

RandomMatrix::RandomMatrix(Random& random, int n, int tallest, bool symmetric, Stable stable, double negative,
                           int lowest)
    : stable_(stable), negative_(negative), status_(at(n), 0), D_(at(n), 1.0) {
  matrix_.upper = random_profile(random, n, tallest, lowest);
  if (!symmetric) matrix_.lower = matrix_.upper.A;
  triangles_ = matrix_;
}

void RandomMatrix::change(Random& random, int from) {
  if (stable_ == Stable::dominant) {
    change_dominant(random, from);
  } else {
    change_factored(random, from);
  }
}

void RandomMatrix::change_dominant(Random& random, int from) {
  std::vector<double> sum(at(matrix_.n()), 0.0);
  const auto value = [&] { return random_int(random, 1, 5) == 1 ? 0.0 : random_real(random, -1.0, 1.0); };
  for_entries(matrix_.upper, from, [&](int r, int c, std::size_t a) {
    if (r == c) return;
    matrix_.upper.A[a] = value();
    if (!matrix_.symmetric()) matrix_.lower[a] = value();
  });
  for_entries(matrix_.upper, 1, [&](int r, int c, std::size_t a) {
    if (r == c) return;
    const double size = std::max(std::abs(matrix_.upper.A[a]), matrix_.symmetric() ? 0.0 : std::abs(matrix_.lower[a]));
    sum[at(r - 1)] += size;
    sum[at(c - 1)] += size;
  });
  for (int e = from; e <= matrix_.n(); ++e) {
    const std::size_t a = at(matrix_.upper.IDIAG[at(e - 1)] - 1);
    matrix_.upper.A[a] = random_sign(random, negative_) *
                         (sum[at(e - 1)] * random_real(random, 1.05, 2.0) + random_real(random, 0.1, 1.0));
    if (!matrix_.symmetric()) matrix_.lower[a] = matrix_.upper.A[a];
  }
}

void RandomMatrix::change_factored(Random& random, int from) {
  ProfileSystem& U = triangles_.upper;
  for_entries(U, from, [&](int r, int c, std::size_t a) {
    const double size = 1.0 / std::sqrt(c - U.top(c) + 1.0);
    U.A[a] = r == c ? 1.0 : random_real(random, -size, size);
    if (!matrix_.symmetric()) triangles_.lower[a] = r == c ? 1.0 : random_real(random, -size, size);
  });
  for (int e = from; e <= matrix_.n(); ++e) {
    D_[at(e - 1)] = random_sign(random, negative_) * random_real(random, 0.1, 10.0);
  }
  const std::vector<double>& L = matrix_.symmetric() ? U.A : triangles_.lower;
  for (int c = from; c <= U.n; ++c) {
    const std::vector<double> above = pivoted(U.A, c), below = pivoted(L, c);
    for (int r = std::max(from, U.top(c)); r <= c; ++r) {
      const bool free = status_[at(r - 1)] == 0 && status_[at(c - 1)] == 0;
      const std::size_t a = at(U.IDIAG[at(c - 1)] + r - c - 1);
      matrix_.upper.A[a] = free ? product(U, L, r, above, U.top(c)) : random_real(random, -1.0, 1.0);
      if (matrix_.symmetric()) continue;
      matrix_.lower[a] = r == c ? matrix_.upper.A[a]
                         : free ? product(U, U.A, r, below, U.top(c))
                                : random_real(random, -1.0, 1.0);
    }
  }
}

std::vector<double> RandomMatrix::pivoted(const std::vector<double>& triangle, int c) const {
  const ProfileSystem& U = triangles_.upper;
  std::vector<double> column(at(c), 0.0);
  for (int k = U.top(c); k <= c; ++k) {
    if (status_[at(k - 1)] == 0) column[at(k - 1)] = triangle[at(U.IDIAG[at(c - 1)] + k - c - 1)] * D_[at(k - 1)];
  }
  return column;
}

}  // namespace tidearc::test
