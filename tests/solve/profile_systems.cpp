// Random profile systems and plain dense arithmetic.
#include "profile_systems.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tidearc::test {

namespace {
std::size_t at(int i) { return static_cast<std::size_t>(i); }
}  // namespace

int ProfileSystem::top(int c) const { return c == 1 ? 1 : c - (IDIAG[at(c - 1)] - IDIAG[at(c - 2)]) + 1; }

double& ProfileSystem::entry(int i, int j) { return A[at(IDIAG[at(j - 1)] + i - j - 1)]; }

double ProfileSystem::operator()(int i, int j) const {
  if (i > j) std::swap(i, j);
  return i < top(j) ? 0.0 : A[at(IDIAG[at(j - 1)] + i - j - 1)];
}

double TestMatrix::operator()(int i, int j) const {
  if (symmetric() || i <= j) return upper(i, j);
  return j < upper.top(i) ? 0.0 : lower[at(upper.IDIAG[at(i - 1)] + j - i - 1)];
}

ProfileSystem random_profile(Random& random, int n, int tallest, int lowest) {
  ProfileSystem system;
  system.n = n;
  int address = 0;
  for (int c = 1; c <= n; ++c) {
    address += std::min(c, random_int(random, lowest, tallest));
    system.IDIAG.push_back(address);
  }
  system.A.assign(at(address), 0.0);
  return system;
}

void fill_definite(ProfileSystem& system, Random& random) {
  ProfileSystem L = system;
  std::vector<long double> D;
  for (int c = 1; c <= system.n; ++c) {
    const double size = 1.0 / std::sqrt(c - L.top(c) + 1.0);
    for (int r = L.top(c); r < c; ++r) L.entry(r, c) = random_real(random, -size, size);
    L.entry(c, c) = 1.0;
    D.push_back(random_real(random, 0.1, 10.0));
  }
  for (int c = 1; c <= system.n; ++c) {
    for (int r = system.top(c); r <= c; ++r) {
      long double sum = 0.0L;
      for (int k = std::max(L.top(r), L.top(c)); k <= r; ++k) sum += D[at(k - 1)] * L.entry(k, r) * L.entry(k, c);
      system.entry(r, c) = static_cast<double>(sum);
    }
  }
}

void fill_dominant(ProfileSystem& system, Random& random, double negative) {
  std::vector<double> row_sum(at(system.n + 1), 0.0);
  for (int c = 1; c <= system.n; ++c) {
    for (int r = system.top(c); r < c; ++r) {
      const double value = random_int(random, 1, 5) == 1 ? 0.0 : random_real(random, -1.0, 1.0);
      system.entry(r, c) = value;
      row_sum[at(r)] += std::abs(value);
      row_sum[at(c)] += std::abs(value);
    }
  }
  for (int e = 1; e <= system.n; ++e) {
    const double sign = random_real(random, 0.0, 1.0) < negative ? -1.0 : 1.0;
    system.entry(e, e) = sign * (row_sum[at(e)] * random_real(random, 1.05, 2.0) + random_real(random, 0.1, 1.0));
  }
}

std::vector<int> random_status(Random& random, int n, int pattern) {
  std::vector<int> status(at(n), 0);
  const auto prescribe = [&](int from, int to) {
    for (int e = std::max(from, 1); e <= std::min(to, n); ++e) status[at(e - 1)] = 1;
  };
  if (pattern & 1) prescribe(1, random_int(random, 1, std::max(1, n / 4)));
  if (pattern & 2) prescribe(n - random_int(random, 0, n / 4), n);
  if (pattern & 4) {
    for (int runs = random_int(random, 1, 4); runs > 0; --runs) {
      const int from = random_int(random, 1, n);
      prescribe(from, from + random_int(random, 0, 5));
    }
  }
  return status;
}

std::vector<int> links_by_definition(const std::vector<int>& status) {
  const int n = static_cast<int>(status.size());
  std::vector<int> links;
  for (int e = 1; e <= n; ++e) {
    int last = e;
    while (last < n && status[at(last)] == status[at(e - 1)]) ++last;
    links.push_back(status[at(e - 1)] == 0 ? -last : last + 1);
  }
  return links;
}

double scaled_residual(const TestMatrix& matrix, const std::vector<int>& status, const std::vector<double>& given,
                       const std::vector<double>& x) {
  const int n = matrix.n();
  const auto is_free = [&](int e) { return status[at(e - 1)] == 0; };
  std::vector<long double> residual(given.begin(), given.end());
  std::vector<double> column_sum(at(n), 0.0);
  double norm_coupling = 0.0;
  const auto subtract = [&](int i, int j, double k) {
    if (!is_free(i)) return;
    residual[at(i - 1)] -= static_cast<long double>(k) * x[at(j - 1)];
    if (is_free(j)) {
      column_sum[at(j - 1)] += std::abs(k);
    } else {
      norm_coupling += std::abs(k * x[at(j - 1)]);
    }
  };
  for (int c = 1; c <= n; ++c) {
    for (int r = matrix.upper.top(c); r <= c; ++r) {
      const std::size_t a = at(matrix.upper.IDIAG[at(c - 1)] + r - c - 1);
      subtract(r, c, matrix.upper.A[a]);
      if (r != c) subtract(c, r, matrix.symmetric() ? matrix.upper.A[a] : matrix.lower[a]);
    }
  }
  double norm_residual = 0.0, norm_x = 0.0, norm_K = 0.0;
  for (int e = 1; e <= n; ++e) {
    if (!std::isfinite(x[at(e - 1)])) return std::numeric_limits<double>::infinity();
    if (!is_free(e)) continue;
    norm_residual += static_cast<double>(std::abs(residual[at(e - 1)]));
    norm_x += std::abs(x[at(e - 1)]);
    norm_K = std::max(norm_K, column_sum[at(e - 1)]);
  }
  return norm_residual == 0.0 ? 0.0 : norm_residual / (0x1p-53 * (norm_K * norm_x + norm_coupling));
}

std::vector<double> dense_solution(const ProfileSystem& system, const std::vector<int>& status,
                                   const std::vector<double>& given) {
  std::vector<int> free;
  for (int e = 1; e <= system.n; ++e) {
    if (status[at(e - 1)] == 0) free.push_back(e);
  }
  const std::size_t m = free.size();
  std::vector<std::vector<long double>> T(m, std::vector<long double>(m + 1, 0.0L));
  for (std::size_t i = 0; i < m; ++i) {
    T[i][m] = given[at(free[i] - 1)];
    for (std::size_t j = 0; j < m; ++j) T[i][j] = system(free[i], free[j]);
    for (int p = 1; p <= system.n; ++p) {
      if (status[at(p - 1)] != 0) T[i][m] -= static_cast<long double>(system(free[i], p)) * given[at(p - 1)];
    }
  }
  for (std::size_t k = 0; k < m; ++k) {
    std::size_t pivot = k;
    for (std::size_t i = k + 1; i < m; ++i) {
      if (std::abs(T[i][k]) > std::abs(T[pivot][k])) pivot = i;
    }
    std::swap(T[k], T[pivot]);
    for (std::size_t i = 0; i < m; ++i) {
      if (i == k) continue;
      const long double factor = T[i][k] / T[k][k];
      for (std::size_t j = k; j <= m; ++j) T[i][j] -= factor * T[k][j];
    }
  }
  std::vector<double> x = given;
  for (std::size_t i = 0; i < m; ++i) x[at(free[i] - 1)] = static_cast<double>(T[i][m] / T[i][i]);
  return x;
}

}  // namespace tidearc::test
