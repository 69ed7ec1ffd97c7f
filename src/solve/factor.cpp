// Factorisation and solution of a symmetric profile matrix.
#include "solve/factor.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "solve/runs.h"

namespace tidearc {

namespace {

bool is_free(ConstIntegers MSTAT, int e) { return MSTAT(e) < 1; }

bool all_free(ConstIntegers MSTAT, int NEQ) { return NEQ < 1 || MSTAT(1) == -NEQ; }

// What the procedures of one reduction share.
struct Reduction {
  Profile<double> K;
  ConstIntegers MSTAT;
  int KROW0;

  int first_row(int c) const { return std::max(K.top(c) + 1, KROW0); }
  bool has_work(int c) const { return is_free(MSTAT, c) && K.height(c) > 1; }
};

// s += L(., r) . column c over the free rows lo..hi. Final rows hold L, so their terms need the pivot; the others are
// not yet divided.
void add_column_products(const Reduction& f, int c, int r, double& s, int lo, int hi) {
  const RunVectors v{f.K.column(c), f.K.column(r), f.K.A, f.K.IDIAG};
  RUNOP(product_profile_pivot, v, f.MSTAT, s, lo, std::min(hi, f.KROW0 - 1));
  RUNOP(product, v, f.MSTAT, s, std::max(lo, f.KROW0), hi);
}

void reduce_row(const Reduction& f, int c, int r) {
  if (f.K.height(r) == 1) return;
  double s = 0.0;
  add_column_products(f, c, r, s, std::max(f.K.top(r), f.K.top(c)), r - 1);
  f.K.column(c)(r) -= s;
}

void reduce_rows(const Reduction& f, int c, int from, int to) {
  for_free_runs(f.MSTAT, from, to, [&](int lo, int hi) {
    for (int r = lo; r <= hi; ++r) reduce_row(f, c, r);
  });
}

// Divides column c by the pivots of its rows and reduces its own. Returns the row of a zero pivot, or 0.
int finish_column(const Reduction& f, int c) {
  const Reals column = f.K.column(c);
  double s = 0.0;
  RUNOP(product_profile_pivot, {column, column, f.K.A, f.K.IDIAG}, f.MSTAT, s, f.K.top(c), std::min(c, f.KROW0) - 1);
  const int row =
      RUNOP(divide_profile_pivot, {column, f.K.A, {}, f.K.IDIAG}, f.MSTAT, s, std::max(f.K.top(c), f.KROW0), c - 1);
  if (row == 0) column(c) -= s;
  return row;
}

// The four columns from c on, and their tops.
struct PanelColumns {
  int c;
  Panel column;
  std::array<int, panel_width> top;
  int common_top;  // lowest row that all four reach

  PanelColumns(const Profile<const double>& K, int first)
      : c(first),
        column{K.column(c), K.column(c + 1), K.column(c + 2), K.column(c + 3)},
        top{K.top(c), K.top(c + 1), K.top(c + 2), K.top(c + 3)},
        common_top(*std::max_element(top.begin(), top.end())) {}
  int number(std::size_t k) const { return c + static_cast<int>(k); }
};

// Row r of a panel, r above all of its columns: four sums that share column r.
void reduce_row_of_panel(const Reduction& f, const PanelColumns& panel, int r) {
  const int row_top = f.K.top(r);
  if (row_top == r) return;
  const int common = std::max(panel.common_top, row_top);
  PanelSums s{};
  for (std::size_t k = 0; k < panel_width; ++k) {
    const int from = std::max(panel.top[k], row_top);
    if (from < common) add_column_products(f, panel.number(k), r, s[k], from, std::min(common, r) - 1);
  }
  const Reals column_r = f.K.column(r);
  if (common < f.KROW0) {
    panel_products_profile_pivot(panel.column, {column_r, column_r, f.K.A, f.K.IDIAG}, f.MSTAT, s, common,
                                 std::min(r, f.KROW0) - 1);
  }
  panel_products(panel.column, column_r, f.MSTAT, s, std::max(common, f.KROW0), r - 1);
  for (std::size_t k = 0; k < panel_width; ++k) f.K.column(panel.number(k))(r) -= s[k];
}

// Columns c..c+3 together: rows that only some of them reach, then the rows above c side by side, then the triangle
// between the four.
int reduce_panel(const Reduction& f, int c) {
  const PanelColumns panel(f.K, c);
  const int common = std::min(c, std::max(panel.common_top + 1, f.KROW0));
  for (int k = c; k < c + panel_width; ++k) reduce_rows(f, k, f.first_row(k), common - 1);
  for_free_runs(f.MSTAT, common, c - 1, [&](int lo, int hi) {
    for (int r = lo; r <= hi; ++r) reduce_row_of_panel(f, panel, r);
  });
  for (int k = c; k < c + panel_width; ++k) {
    reduce_rows(f, k, std::max(c, f.first_row(k)), k - 1);
    if (const int row = finish_column(f, k)) return row;
  }
  return 0;
}

bool is_panel(const Reduction& f, int c) {
  if (c + panel_width - 1 > f.K.NEQ) return false;
  for (int k = 0; k < panel_width; ++k) {
    if (!f.has_work(c + k)) return false;
  }
  return true;
}

// R(c) -= L(., c) . R for one column, its sum begun by the caller over the rows before `from`.
void substitute_column(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int c, double s, int from) {
  RUNOP(product, {R, K.column(c)}, MSTAT, s, from, c - 1);
  R(c) -= s;
}

// Four free columns in a row: their sums over the rows above c side by side, then the triangle between them.
void substitute_panel(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int c, int f) {
  const PanelColumns panel(K, c);
  const int common = std::min(c, std::max(panel.common_top, f));
  PanelSums s{};
  for (std::size_t k = 0; k < panel_width; ++k) {
    RUNOP(product, {R, panel.column[k]}, MSTAT, s[k], std::max(panel.top[k], f), common - 1);
  }
  panel_products(panel.column, R, MSTAT, s, common, c - 1);
  for (std::size_t k = 0; k < panel_width; ++k) {
    substitute_column(K, MSTAT, R, panel.number(k), s[k], std::max({panel.top[k], f, c}));
  }
}

}  // namespace

void copy_changed_rows(const Profile<const double>& assembled, Reals factor, int KFIRST, int KROW0) {
  if (KFIRST < 2) {
    std::copy(assembled.A.begin(), assembled.A.end(), factor.begin());
    return;
  }
  for (int c = KFIRST; c <= assembled.NEQ; ++c) {
    const int count = std::min(c - KROW0 + 1, assembled.height(c));
    const int last = assembled.IDIAG(c);
    std::copy(assembled.A.begin() + (last - count), assembled.A.begin() + last, factor.begin() + (last - count));
  }
}

ZeroPivot reduce_symmetric(const Profile<double>& K, ConstIntegers MSTAT, int KFIRST, int KROW0) {
  const Reduction f{K, MSTAT, KROW0};
  for (int c = std::max(KFIRST, 2); c <= K.NEQ;) {
    int row = 0;
    if (is_panel(f, c)) {
      row = reduce_panel(f, c);
      c += panel_width;
    } else {
      if (f.has_work(c)) {
        reduce_rows(f, c, f.first_row(c), c - 1);
        row = finish_column(f, c);
      }
      ++c;
    }
    if (row != 0) return {K.IDIAG(row), row};
  }
  return {};
}

// One column after the other; stretches of a matrix that stands in blocks.
namespace {

double row_sum(const Profile<double>& K, const Profile<const double>& rows, const ReductionRange& range, int c, int r) {
  double s = 0.0;
  const Reals column = K.column(c);
  const ConstReals above = rows.column(r);
  const int from = std::max(K.top(c), rows.top(r));
  RUNOP(product_pivot, {column, above, range.D, {}}, range.MSTAT, s, from, std::min(r, range.KROW0) - 1);
  RUNOP(product, {column, above, {}, {}}, range.MSTAT, s, std::max(from, range.KROW0), r - 1);
  return s;
}

void reduce_column(const Profile<double>& K, const Profile<const double>& rows, const ReductionRange& range, int c,
                   int lo, int hi) {
  for_free_runs(range.MSTAT, std::max({lo, K.top(c) + 1, range.KROW0}), hi, [&](int r1, int r2) {
    for (int r = r1; r <= r2; ++r) {
      if (rows.height(r) > 1) K.column(c)(r) -= row_sum(K, rows, range, c, r);
    }
  });
}

int divide_column(const Profile<double>& K, const ReductionRange& range, int c) {
  const Reals column = K.column(c);
  double s = 0.0;
  RUNOP(product_pivot, {column, column, range.D, {}}, range.MSTAT, s, K.top(c), std::min(c, range.KROW0) - 1);
  const int row =
      RUNOP(divide_pivot, {column, range.D, {}, {}}, range.MSTAT, s, std::max(K.top(c), range.KROW0), c - 1);
  if (row == 0) column(c) -= s;
  return row;
}

}  // namespace

void reduce_against(const Profile<double>& target, const Profile<const double>& source, const ReductionRange& range) {
  for (int c = std::max(target.first, range.KFIRST); c <= target.NEQ; ++c) {
    if (is_free(range.MSTAT, c)) reduce_column(target, source, range, c, source.first, source.NEQ);
  }
}

ZeroPivot reduce_within(const Profile<double>& K, const ReductionRange& range) {
  for (int c = K.first; c <= K.NEQ; ++c) {
    if (c >= std::max(range.KFIRST, 2) && is_free(range.MSTAT, c) && K.height(c) > 1) {
      reduce_column(K, K, range, c, K.first, c - 1);
      if (const int row = divide_column(K, range, c)) return {row >= K.first ? K.IDIAG(row) : 0, row};
    }
    range.D(c) = K.diagonal(c);
  }
  return {};
}

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
  for_free_runs(MSTAT, std::max(f + 1, K.first), K.NEQ, [&](int lo, int hi) {
    int c = lo;
    for (; c + panel_width - 1 <= hi; c += panel_width) substitute_panel(K, MSTAT, R, c, f);
    for (; c <= hi; ++c) substitute_column(K, MSTAT, R, c, 0.0, std::max(K.top(c), f));
  });
}

void divide_by_pivots(ConstReals D, ConstIntegers MSTAT, Reals R, int f, int NEQ) {
  for_free_runs(MSTAT, f, NEQ, [&](int lo, int hi) {
    for (int e = lo; e <= hi; ++e) R(e) /= D(e);
  });
}

void back_substitute(const Profile<const double>& K, ConstIntegers MSTAT, Reals R) {
  for (int c = K.NEQ; c >= std::max(K.first, 2); --c) {
    if (!is_free(MSTAT, c)) continue;
    double x = R(c);
    RUNOP(subtract, {R, K.column(c)}, MSTAT, x, K.top(c), c - 1);
  }
}

void solve_symmetric(const Profile<const double>& K, ConstIntegers MSTAT, Reals R) {
  couple_prescribed(K, MSTAT, R);
  const int f = first_loaded(R, K.NEQ);
  forward_substitute(K, MSTAT, R, f);
  for_free_runs(MSTAT, f, K.NEQ, [&](int lo, int hi) {
    for (int e = lo; e <= hi; ++e) R(e) /= K.diagonal(e);
  });
  back_substitute(K, MSTAT, R);
}

int count_negative_pivots(const Profile<const double>& K) {
  int count = 0;
  for (int e = 1; e <= K.NEQ; ++e) {
    if (K.diagonal(e) < 0.0) ++count;
  }
  return count;
}

}  // namespace tidearc
