// Factorisation and solution of a symmetric profile matrix.
#include "solve/factor.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <vector>

#include "solve/packed.h"
#include "solve/runs.h"

namespace tidearc {

namespace {

bool is_free(ConstIntegers MSTAT, int e) { return MSTAT(e) < 1; }

bool all_free(ConstIntegers MSTAT, int NEQ) { return NEQ < 1 || MSTAT(1) == -NEQ; }

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
  for (int c = std::max(KFIRST, assembled.first); c <= assembled.NEQ; ++c) {
    const int count = std::min(c - KROW0 + 1, assembled.height(c));
    const int last = assembled.IDIAG(c);
    std::copy(assembled.A.begin() + (last - count), assembled.A.begin() + last, factor.begin() + (last - count));
  }
}

ZeroPivot reduce_symmetric(const Profile<double>& K, ConstIntegers MSTAT, int KFIRST, int KROW0) {
  if (K.NEQ < 2) return {};
  std::vector<double>& pivots = panel_memory.pivots;
  if (pivots.size() < static_cast<std::size_t>(K.NEQ)) pivots.resize(static_cast<std::size_t>(K.NEQ));
  const Reals D{pivots.data(), K.NEQ};
  int lowest = KROW0;
  for (int c = KFIRST; c <= K.NEQ; ++c) lowest = std::min(lowest, K.top(c));
  for (int r = lowest; r < KROW0; ++r) D(r) = K.diagonal(r);
  return reduce_panels_within(K, {MSTAT, D, KFIRST, KROW0});
}

void reduce_against(const Profile<double>& target, const Profile<const double>& source, const ReductionRange& range) {
  reduce_panels_against(target, source, range);
}

ZeroPivot reduce_within(const Profile<double>& K, const ReductionRange& range) {
  for (int c = K.first; c <= K.NEQ; ++c) range.D(c) = K.diagonal(c);
  return reduce_panels_within(K, range);
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
