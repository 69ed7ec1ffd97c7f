// The plain loop of factorisation and solution: one column, one sum, one std::fma after the other. It is the oracle of
// the solver's bits; it follows status words equation by equation and knows no runs, panels, blocks or vectors.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "profile_systems.h"

namespace tidearc::test {

/// What a plain reduction met first: the column and the row whose pivot is zero, 0 when none.
struct PlainStop {
  int column = 0;
  int row = 0;
};

/// Reduces columns from KFIRST and rows from KROW0 of `f` in place. Rows below KROW0 hold L, the others values that are
/// not divided until their column is done.
inline PlainStop plain_factor(ProfileSystem& f, const std::vector<int>& status, int KFIRST, int KROW0) {
  const auto is_free = [&](int e) { return status[static_cast<std::size_t>(e - 1)] == 0; };
  // The term of row k in a sum of column c: final rows are multiplied by their pivot first.
  const auto value = [&](int k, int c) { return k < KROW0 ? f.entry(k, c) * f.entry(k, k) : f.entry(k, c); };
  for (int c = std::max(KFIRST, 2); c <= f.n; ++c) {
    if (!is_free(c)) continue;
    const int top = f.top(c);
    for (int r = std::max(top + 1, KROW0); r < c; ++r) {
      if (!is_free(r)) continue;
      double s = 0.0;
      for (int k = std::max(top, f.top(r)); k < r; ++k) {
        if (is_free(k)) s = std::fma(value(k, c), f.entry(k, r), s);
      }
      f.entry(r, c) -= s;
    }
    double s = 0.0;
    for (int k = top; k < c; ++k) {
      if (!is_free(k)) continue;
      if (k < KROW0) {
        s = std::fma(value(k, c), f.entry(k, c), s);
        continue;
      }
      if (f.entry(k, k) == 0.0) return {c, k};
      const double t = f.entry(k, c) / f.entry(k, k);
      s = std::fma(f.entry(k, c), t, s);
      f.entry(k, c) = t;
    }
    f.entry(c, c) -= s;
  }
  return {};
}

/// Solves with a reduced matrix in place.
inline void plain_solve(const ProfileSystem& f, const std::vector<int>& status, std::vector<double>& x) {
  const auto at = [](int e) { return static_cast<std::size_t>(e - 1); };
  const auto is_free = [&](int e) { return status[at(e)] == 0; };
  for (int c = 2; c <= f.n; ++c) {
    double s = 0.0;
    for (int k = f.top(c); k < c; ++k) {
      if (is_free(c) && !is_free(k)) s = std::fma(x[at(k)], f(k, c), s);
      if (!is_free(c) && is_free(k) && x[at(c)] != 0.0) x[at(k)] = std::fma(-x[at(c)], f(k, c), x[at(k)]);
    }
    if (is_free(c) && f.top(c) < c) x[at(c)] -= s;
  }
  int first = 1;
  while (first < f.n - 1 && x[at(first)] == 0.0) ++first;
  for (int c = first + 1; c <= f.n; ++c) {
    if (!is_free(c)) continue;
    double s = 0.0;
    for (int k = std::max(f.top(c), first); k < c; ++k) {
      if (is_free(k)) s = std::fma(x[at(k)], f(k, c), s);
    }
    x[at(c)] -= s;
  }
  for (int e = first; e <= f.n; ++e) {
    if (is_free(e)) x[at(e)] /= f(e, e);
  }
  for (int c = f.n; c >= 2; --c) {
    if (!is_free(c)) continue;
    for (int k = f.top(c); k < c; ++k) {
      if (is_free(k)) x[at(k)] = std::fma(-x[at(c)], f(k, c), x[at(k)]);
    }
  }
}

}  // namespace tidearc::test
