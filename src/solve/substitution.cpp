// Solution with a reduced symmetric profile matrix, for one right-hand side and for many.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

#include "solve/factor.h"
#include "solve/kernels.h"
#include "solve/runs.h"
#include "solve/strips.h"

namespace tidearc {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

bool is_free(ConstIntegers MSTAT, int e) { return MSTAT(e) < 1; }

bool all_free(ConstIntegers MSTAT, int NEQ) { return NEQ < 1 || MSTAT(1) == -NEQ; }

// The free columns first..last in strips, from the first to the last, or back.
template <class Act>
void for_each_strip(const Profile<const double>& K, ConstIntegers MSTAT, int first, Act&& act) {
  for_free_runs(MSTAT, first, K.NEQ, [&](int lo, int hi) {
    Strip strip;
    for (int c = lo; c <= hi; c += strip.count) {
      begin_strip(strip, K, c, hi);
      act(strip);
    }
  });
}

template <class Act>
void for_each_strip_back(const Profile<const double>& K, ConstIntegers MSTAT, int first, Act&& act) {
  Strip strip;
  for (int c = K.NEQ; c >= first;) {
    int lo = c;  // the free columns that end with c: a run ends where its first column's link says
    if (!is_free(MSTAT, c)) {
      --c;
      continue;
    }
    while (lo > first && lo > c - strip_rows + 1 && is_free(MSTAT, lo - 1)) --lo;
    end_strip(strip, K, c, lo);
    act(strip);
    c = strip.first - 1;
  }
}

ProfileColumns columns_of(const Profile<const double>& K, ConstIntegers MSTAT) {
  return {K.A.data() - 1, K.IDIAG.data() - 1, MSTAT.data() - 1, K.first};
}

}  // namespace

// Through the unreduced coefficients that prescribed columns and rows keep.
void couple_prescribed(const Profile<const double>& K, ConstIntegers MSTAT, Reals R) {
  if (all_free(MSTAT, K.NEQ)) return;
  for (int c = std::max(K.first, 2); c <= K.NEQ; ++c) {
    if (K.height(c) == 1) continue;
    if (is_free(MSTAT, c)) {
      double s = 0.0;
      RUNOP(product_prescribed, {R, K.column(c)}, MSTAT, s, K.top(c), c - 1);
      R(c) -= s;
    } else if (R(c) != 0.0) {
      double x = R(c);
      RUNOP(subtract, {R, K.column(c)}, MSTAT, x, K.top(c), c - 1);
    }
  }
}

int first_loaded(ConstReals R, int NEQ) {
  int f = 1;
  while (f < NEQ - 1 && R(f) == 0.0) ++f;
  return f;
}

void forward_substitute(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int f) {
  const ProfileColumns columns = columns_of(K, MSTAT);
  for_free_runs(MSTAT, std::max(f + 1, K.first), K.NEQ,
                [&](int lo, int hi) { kernels->forward(columns, lo, hi, f, R.data() - 1); });
}

void divide_by_pivots(ConstReals D, ConstIntegers MSTAT, Reals R, int f, int NEQ) {
  for_free_runs(MSTAT, f, NEQ, [&](int lo, int hi) {
    for (int e = lo; e <= hi; ++e) R(e) /= D(e);
  });
}

void back_substitute(const Profile<const double>& K, ConstIntegers MSTAT, Reals R) {
  const ProfileColumns columns = columns_of(K, MSTAT);
  const int first = std::max(K.first, 2);
  for (int c = K.NEQ; c >= first; --c) {
    if (!is_free(MSTAT, c)) continue;
    const int last = c;
    while (c > first && is_free(MSTAT, c - 1)) --c;
    kernels->backward(columns, c, last, last + 1, R.data() - 1);
  }
}

void solve_symmetric(const Profile<const double>& K, ConstIntegers MSTAT, Reals R) {
  couple_prescribed(K, MSTAT, R);
  const int f = first_loaded(R, K.NEQ);
  forward_substitute(K, MSTAT, R, f);
  const ProfileColumns columns = columns_of(K, MSTAT);
  if (K.NEQ > 1 && K.first == 1 && all_free(MSTAT, K.NEQ)) {  // one run: divided on the way back
    return kernels->backward(columns, 2, K.NEQ, f, R.data() - 1);
  }
  for_free_runs(MSTAT, f, K.NEQ, [&](int lo, int hi) { kernels->divide_by_diagonal(columns, lo, hi, R.data() - 1); });
  back_substitute(K, MSTAT, R);
}

// Many loads: the same pieces, each on rows of numbers side by side.
namespace {

struct Loads {
  Reals R;
  int count;
  double& operator()(int e, int j) const { return R(count * (e - 1) + j); }
  double* rows() const { return R.data() - count; }  // load j of row e at rows()[count * e + j - 1]
};

using LoadSums = std::array<double, strip_rows * most_loads>;

// Loads that a prescribed column puts on the free rows above it; a displacement of zero puts none.
void couple_prescribed_column(const double* column, ConstIntegers MSTAT, const Loads& R, int c, int top) {
  for (int j = 1; j <= R.count; ++j) {
    const double x = R(c, j);
    if (x == 0.0) continue;
    for_free_runs(MSTAT, top, c - 1, [&](int lo, int hi) {
      for (int k = lo; k <= hi; ++k) R(k, j) = std::fma(-x, column[k], R(k, j));
    });
  }
}

void couple_prescribed_rows(const double* column, ConstIntegers MSTAT, const Loads& R, int c, int top) {
  LoadSums s{};
  for (int k = top; k < c; ++k) {
    if (!is_free(MSTAT, k)) kernels->column_sums_many(&column, 1, R.rows(), R.count, k, k, s.data());
  }
  for (int j = 1; j <= R.count; ++j) R(c, j) -= s[at(j - 1)];
}

void couple_prescribed(const Profile<const double>& K, ConstIntegers MSTAT, const Loads& R) {
  if (all_free(MSTAT, K.NEQ)) return;
  for (int c = 2; c <= K.NEQ; ++c) {
    if (K.height(c) == 1) continue;
    const auto couple = is_free(MSTAT, c) ? couple_prescribed_rows : couple_prescribed_column;
    couple(rows_of(K, c), MSTAT, R, c, K.top(c));
  }
}

void substitute_strip(const Strip& strip, ConstIntegers MSTAT, const Loads& R, int f) {
  const int common = std::clamp(strip.common, f, strip.first);
  LoadSums s;
  for (int n = 0; n < strip.count; ++n) {
    for (int j = 0; j < R.count; ++j) s[at(most_loads * n + j)] = 0.0;
  }
  const auto sum = [&](int n, int columns, int lo, int hi) {
    kernels->column_sums_many(strip.column + n, columns, R.rows(), R.count, lo, hi, &s[at(most_loads * n)]);
  };
  for (int n = 0; strip.ragged && n < strip.count; ++n) {
    for_free_runs(MSTAT, std::max(strip.top[n], f), common - 1, [&](int lo, int hi) { sum(n, 1, lo, hi); });
  }
  for_free_runs(MSTAT, common, strip.first - 1, [&](int lo, int hi) { sum(0, strip.count, lo, hi); });
  kernels->forward_triangle_many(strip, R.rows(), R.count, s.data());
}

void take_strip(const Strip& strip, ConstIntegers MSTAT, const Loads& R) {
  LoadSums x;
  const auto take = [&](int n, int columns, int lo, int hi) {
    kernels->subtract_columns_many(R.rows(), strip.column + n, columns, &x[at(most_loads * n)], R.count, lo, hi);
  };
  kernels->back_triangle_many(strip, R.rows(), R.count, x.data());
  for_free_runs(MSTAT, strip.common, strip.first - 1, [&](int lo, int hi) { take(0, strip.count, lo, hi); });
  for (int n = strip.count - 1; strip.ragged && n >= 0; --n) {
    for_free_runs(MSTAT, strip.top[n], strip.common - 1, [&](int lo, int hi) { take(n, 1, lo, hi); });
  }
}

}  // namespace

void forward_substitute_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals values, int count, int f) {
  const Loads R{values, count};
  for_each_strip(K, MSTAT, f + 1, [&](const Strip& strip) { substitute_strip(strip, MSTAT, R, f); });
}

void back_substitute_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals values, int count) {
  const Loads R{values, count};
  for_each_strip_back(K, MSTAT, 2, [&](const Strip& strip) { take_strip(strip, MSTAT, R); });
}

void solve_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals values, int count) {
  const Loads R{values, count};
  couple_prescribed(K, MSTAT, R);
  std::array<int, most_loads> begin{};
  int f = std::max(1, K.NEQ - 1), last = 1;  // the first row of the loads, and that from which all have begun
  for (int j = 1; j <= count; ++j) {
    int& first = begin[at(j - 1)];
    for (first = 1; first < K.NEQ - 1 && R(first, j) == 0.0;) ++first;
    f = std::min(f, first);
    last = std::max(last, first);
  }
  // Where one load has begun and another not, that one's rows are zero and add nothing.
  forward_substitute_many(K, MSTAT, values, count, f);
  for_free_runs(MSTAT, f, K.NEQ, [&](int lo, int hi) {
    for (int e = lo; e <= hi; ++e) {
      if (e >= last) {
        kernels->divide_many(&R(e, 1), count, K.diagonal(e));
        continue;
      }
      for (int j = 1; j <= count; ++j) {
        if (e >= begin[at(j - 1)]) R(e, j) /= K.diagonal(e);
      }
    }
  });
  back_substitute_many(K, MSTAT, values, count);
}

}  // namespace tidearc
