// Factorisation and solution of an unsymmetric matrix with a symmetric profile.
#include "solve/unsymmetric.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "solve/factor.h"
#include "solve/runs.h"

namespace tidearc {

namespace {

bool is_free(ConstIntegers MSTAT, int e) { return MSTAT(e) < 1; }

// One triangle that is being reduced, and the final rows of the other one that it is reduced against. Upper entries are
// divided by the pivot of their row, which stands on the diagonal of the lower triangle; lower entries are not.
struct Sweep {
  Profile<double> target;
  Profile<const double> other;
  ConstIntegers MSTAT;
  int KROW0;
  bool divided;

  int first_row(int c) const { return std::max(target.top(c), KROW0); }
  void store(int c, int r, double sum) const {
    double& entry = target.column(c)(r);
    entry -= sum;
    if (divided) entry /= other.diagonal(r);
  }
};

void reduce_entries(const Sweep& sweep, int c, int from, int to) {
  const Reals column = sweep.target.column(c);
  for_free_runs(sweep.MSTAT, std::max(from, sweep.first_row(c)), to, [&](int lo, int hi) {
    for (int r = lo; r <= hi; ++r) {
      double s = 0.0;
      RUNOP(product, {column, sweep.other.column(r)}, sweep.MSTAT, s, std::max(sweep.target.top(c), sweep.other.top(r)),
            r - 1);
      sweep.store(c, r, s);
    }
  });
}

// Four columns side by side, from the first row that all of them reach. Each sum keeps its order.
struct PanelOfColumns {
  int c;  // the first of the four
  Panel column;
  std::array<int, panel_width> top;
  int common;  // lowest row that all four reach and that is not final

  PanelOfColumns(const Sweep& sweep, int first)
      : c(first),
        column{sweep.target.column(c), sweep.target.column(c + 1), sweep.target.column(c + 2),
               sweep.target.column(c + 3)},
        top{sweep.target.top(c), sweep.target.top(c + 1), sweep.target.top(c + 2), sweep.target.top(c + 3)},
        common(std::max(*std::max_element(top.begin(), top.end()), sweep.KROW0)) {}
};

void reduce_row_of_panel(const Sweep& sweep, const PanelOfColumns& panel, int r) {
  const int row_top = sweep.other.top(r);
  const ConstReals row = sweep.other.column(r);
  const int together = std::min(r, std::max(*std::max_element(panel.top.begin(), panel.top.end()), row_top));
  PanelSums s{};
  for (std::size_t k = 0; k < panel_width; ++k) {
    RUNOP(product, {sweep.target.column(panel.c + static_cast<int>(k)), row}, sweep.MSTAT, s[k],
          std::max(panel.top[k], row_top), together - 1);
  }
  panel_products(panel.column, row, sweep.MSTAT, s, together, r - 1);
  for (std::size_t k = 0; k < panel_width; ++k) sweep.store(panel.c + static_cast<int>(k), r, s[k]);
}

// Rows from..to, all above column c, of columns c..c+3.
void reduce_panel_rows(const Sweep& sweep, int c, int from, int to) {
  const PanelOfColumns panel(sweep, c);
  const int common = std::clamp(panel.common, from, to + 1);
  for (int k = c; k < c + panel_width; ++k) reduce_entries(sweep, k, from, common - 1);
  for_free_runs(sweep.MSTAT, common, to, [&](int lo, int hi) {
    for (int r = lo; r <= hi; ++r) reduce_row_of_panel(sweep, panel, r);
  });
}

// True when columns c..c+3 are free and end no later than `last`.
bool is_panel(ConstIntegers MSTAT, int c, int last) {
  const int end = c + panel_width - 1;
  return end <= last && is_free(MSTAT, c) && -MSTAT(c) >= end;
}

void reduce_against_other(const Sweep& sweep, int KFIRST) {
  const int from = sweep.other.first;
  const int to = sweep.other.NEQ;
  const int last = sweep.target.NEQ;
  for (int c = std::max({sweep.target.first, KFIRST, 2}); c <= last;) {
    if (is_panel(sweep.MSTAT, c, last)) {
      reduce_panel_rows(sweep, c, from, to);
      c += panel_width;
    } else {
      if (is_free(sweep.MSTAT, c)) reduce_entries(sweep, c, from, to);
      ++c;
    }
  }
}

void form_pivot(const Profile<double>& upper, const Profile<double>& lower, ConstIntegers MSTAT, int c) {
  double s = 0.0;
  RUNOP(product, {upper.column(c), lower.column(c)}, MSTAT, s, upper.top(c), c - 1);
  lower.diagonal(c) -= s;
}

}  // namespace

void reduce_upper_against(const Profile<double>& upper, const Profile<const double>& lower_source,
                          const TriangleRange& range) {
  reduce_against_other({upper, lower_source, range.MSTAT, range.KROW0, true}, range.KFIRST);
}

void reduce_lower_against(const Profile<double>& lower, const Profile<const double>& upper_source,
                          const TriangleRange& range) {
  reduce_against_other({lower, upper_source, range.MSTAT, range.KROW0, false}, range.KFIRST);
}

void reduce_triangles_within(const Profile<double>& upper, const Profile<double>& lower, const TriangleRange& range) {
  const std::array<Sweep, 2> sweeps{Sweep{upper, lower, range.MSTAT, range.KROW0, true},
                                    Sweep{lower, upper, range.MSTAT, range.KROW0, false}};
  const int first = upper.first;
  for (int c = std::max({first, range.KFIRST, 2}); c <= upper.NEQ;) {
    int width = 1;
    if (is_panel(range.MSTAT, c, upper.NEQ)) {
      width = panel_width;
      for (const Sweep& sweep : sweeps) reduce_panel_rows(sweep, c, first, c - 1);
    } else if (is_free(range.MSTAT, c)) {
      for (const Sweep& sweep : sweeps) reduce_entries(sweep, c, first, c - 1);
    }
    for (int k = c; k < c + width && is_free(range.MSTAT, k); ++k) {
      for (const Sweep& sweep : sweeps) reduce_entries(sweep, k, c, k - 1);
      form_pivot(upper, lower, range.MSTAT, k);
    }
    c += width;
  }
}

void couple_lower(const Profile<const double>& lower, ConstIntegers MSTAT, Reals R) {
  for_free_runs(MSTAT, std::max(lower.first, 2), lower.NEQ, [&](int lo, int hi) {
    for (int c = lo; c <= hi; ++c) {
      double s = 0.0;
      RUNOP(product_prescribed, {R, lower.column(c)}, MSTAT, s, lower.top(c), c - 1);
      R(c) -= s;
    }
  });
}

void couple_upper(const Profile<const double>& upper, ConstIntegers MSTAT, Reals R) {
  for (int c = std::max(upper.first, 2); c <= upper.NEQ; ++c) {
    if (is_free(MSTAT, c) || R(c) == 0.0) continue;
    double x = R(c);
    RUNOP(subtract, {R, upper.column(c)}, MSTAT, x, upper.top(c), c - 1);
  }
}

void forward_substitute_lower(const Profile<const double>& lower, ConstIntegers MSTAT, Reals R, int f) {
  for_free_runs(MSTAT, std::max(f, lower.first), lower.NEQ, [&](int lo, int hi) {
    for (int c = lo; c <= hi; ++c) {
      double s = 0.0;
      RUNOP(product, {R, lower.column(c)}, MSTAT, s, std::max(lower.top(c), f), c - 1);
      R(c) = (R(c) - s) / lower.diagonal(c);
    }
  });
}

void solve_unsymmetric(const Profile<const double>& upper, const Profile<const double>& lower, ConstIntegers MSTAT,
                       Reals R) {
  couple_lower(lower, MSTAT, R);
  couple_upper(upper, MSTAT, R);
  const int f = first_loaded(R, upper.NEQ);
  forward_substitute_lower(lower, MSTAT, R, f);
  back_substitute(upper, MSTAT, R);
}

}  // namespace tidearc
