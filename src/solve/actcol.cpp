// The active column solver of the eigenvalue analysis.
#include "solve/actcol.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "run/layout.h"
#include "run/units.h"
#include "solve/factor.h"
#include "solve/kernel_table.h"
#include "solve/profile.h"
#include "solve/runs.h"

namespace tidearc {

namespace {

/// Columns that are reduced together at the rows above all of them. The rows among them are left to one column after
/// the other: more columns, more of these; fewer, and the packed panels of the reduction work for less.
constexpr int columns_together = 48;

/// Columns first.. of a group, at the rows above the group. Every entry has one sum, from its lowest row to its
/// highest, whichever way it is formed.
void reduce_above_group(const Profile<double>& K, ConstIntegers all_free, int first) {
  const int last = std::min(first + columns_together - 1, K.NEQ);
  const Profile<double> group{K.A, K.IDIAG, last};
  const Profile<const double> above{K.A, K.IDIAG, first - 1};
  if (first > 1) reduce_against(group, above, {all_free, {}, first, 1});
}

// Entries of column j but the first and the diagonal, reduced by the columns from `first` on that stand before it.
void reduce_inner(const Profile<double>& K, int j, int first) {
  const Reals column = K.column(j);
  for (int r = std::max(K.top(j) + 1, first); r < j; ++r) {
    double s = 0.0;
    VECOP(product, {column, K.column(r)}, s, std::max(K.top(r), K.top(j)), r - 1);
    column(r) -= s;
  }
}

// Divides column j by the pivots of its rows; returns its own pivot.
double divide(const Profile<double>& K, int j) {
  const Reals column = K.column(j);
  double d = column(j);
  for (int r = K.top(j); r < j; ++r) {
    const double t = column(r);
    const double g = t * K.diagonal(r);
    column(r) = g;
    d = std::fma(-t, g, d);
  }
  return d;
}

void invert_pivot(const Profile<double>& K, int j, double d) {
  if (d != 0.0) K.diagonal(j) = 1.0 / d;
}

void substitute(const Profile<double>& K, Reals V, int j) {
  double s = 0.0;
  VECOP(product, {V, K.column(j)}, s, K.top(j), j - 1);
  V(j) -= s;
}

double multiply_by_pivots(const Profile<double>& K, Reals V) {
  double energy = 0.0;
  for (int e = 1; e <= K.NEQ; ++e) {
    const double before = V(e);
    V(e) = before * K.diagonal(e);
    energy = std::fma(before, V(e), energy);
  }
  return energy;
}

void substitute_back(const Profile<double>& K, Reals V) {
  for (int j = K.NEQ; j >= 2; --j) {
    double x = V(j);
    VECOP(subtract, {V, K.column(j)}, x, K.top(j), j - 1);
  }
}

/// One chain of free equations, for the loops that mind prescribed ones.
std::vector<int> free_links(int N) { return std::vector<int>(static_cast<std::size_t>(N), -N); }

/// Solves for columns first.. of V, `count` of them, which lie side by side in `rows`: entry e of the j-th at
/// rows(count * (e - 1) + j).
void solve_together(const Profile<double>& K, ConstIntegers all_free, RealTable V, int first, Reals rows,
                    Reals energy) {
  const int count = energy.size();
  for (int e = 1; e <= K.NEQ; ++e) {
    for (int j = 1; j <= count; ++j) rows(count * (e - 1) + j) = V(e, first + j - 1);
  }
  forward_substitute_many(K, all_free, rows, count, 1);
  for (int e = 1; e <= K.NEQ; ++e) {
    for (int j = 1; j <= count; ++j) {
      double& value = rows(count * (e - 1) + j);
      const double before = value;
      value = before * K.diagonal(e);
      energy(j) = std::fma(before, value, energy(j));
    }
  }
  back_substitute_many(K, all_free, rows, count);
  for (int e = 1; e <= K.NEQ; ++e) {
    for (int j = 1; j <= count; ++j) V(e, first + j - 1) = rows(count * (e - 1) + j);
  }
}

void print_energy(double energy) { write(units.NDOUT, "/,/,' *** ENERGY COMPUTED IN ACTCOL IS',E18.10", energy); }

}  // namespace

ActiveColumnResult active_column_solver(Reals A, Reals V, ConstIntegers IDIAG, int N, bool reduce, bool solve) {
  const Profile<double> K{A, IDIAG, N};
  ActiveColumnResult result;
  const std::vector<int> links = free_links(reduce ? N : 0);
  const ConstIntegers all_free(links.data(), N);
  int first = 1;
  for (int j = 1; j <= N; ++j) {
    if (reduce && (j - 1) % columns_together == 0) reduce_above_group(K, all_free, first = j);
    double d = K.diagonal(j);
    if (K.height(j) > 1) {
      if (reduce) {
        reduce_inner(K, j, first);
        d = divide(K, j);
        if (!(d * K.diagonal(j) < 0.0)) ++result.count;
      }
      if (solve) substitute(K, V, j);
    }
    if (reduce) {
      invert_pivot(K, j, d);
      result.last_pivot = d;
      if (d == 0.0 && result.zero_pivot == 0) result.zero_pivot = j;
    }
  }
  if (result.count > 0) ++result.count;
  if (solve) {
    result.energy = multiply_by_pivots(K, V);
    substitute_back(K, V);
  }
  return result;
}

int together(int vectors) { return std::min(vectors, most_loads); }

void active_column_solutions(Reals A, RealTable V, ConstIntegers IDIAG, Reals scratch, Reals energy) {
  const int N = V.rows();
  const std::vector<int> links = free_links(N);
  std::fill(energy.begin(), energy.end(), 0.0);
  for (int first = 1; first <= V.columns(); first += most_loads) {
    const int count = together(V.columns() - first + 1);
    solve_together({A, IDIAG, N}, {links.data(), N}, V, first, {scratch.data(), N * count},
                   {energy.data() + first - 1, count});
  }
}

int ACTCOL(Reals A, Reals V, ConstIntegers IDIAG, int N, bool reduce, bool solve) {
  const ActiveColumnResult result = active_column_solver(A, V, IDIAG, N, reduce, solve);
  if (solve) print_energy(result.energy);
  return result.count;
}

void ACTCOL(Reals A, RealTable V, ConstIntegers IDIAG, Reals scratch, Reals energy) {
  active_column_solutions(A, V, IDIAG, scratch, energy);
  for (const double value : energy) print_energy(value);
}

}  // namespace tidearc
