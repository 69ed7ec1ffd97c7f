// What vector units of one or two lanes have in common: packing lane after lane, and plain division, which is not worth
// avoiding there. To be included by solve/kernels_*.cpp alone, in place of kernel_lanes.h.

#include "solve/kernel_lanes.h"

void pack_rows(const LaneGroup& group, int k, double* to) { pack_lanes(group, k, to); }
template <int R>
void store_rows(const Lanes* x, const LaneGroup& group, int k) {
  store_lanes<R>(x, group, k);
}

struct Rows {
  int from, to;
  Rows(int first, int end) : from(first), to(end) {}
  bool hold(int row) const { return row >= from && row < to; }
};
Lanes load_rows(const double* p, const Rows& rows) {
  double x[group_lanes];
  for (int row = 0; row < group_lanes; ++row) x[row] = rows.hold(row) ? p[row] : 0.0;
  return load(x);
}
Lanes keep_rows(const Lanes& old, const Lanes& x, const Rows& rows) {
  double v[group_lanes], w[group_lanes];
  store(v, old);
  store(w, x);
  for (int row = 0; row < group_lanes; ++row) v[row] = rows.hold(row) ? w[row] : v[row];
  return load(v);
}

struct Four {
  double sum[4];
};
Four four_zeros() { return {}; }
void store(double* s, const Four& four) {
  for (int n = 0; n < 4; ++n) s[n] = four.sum[n];
}
Four first_halves(const Four& a, const Four& b) { return {{a.sum[0], a.sum[1], b.sum[0], b.sum[1]}}; }
Four add_row(const Four& s, const double* a, const double* b, const double* c, const double* d, const double* x) {
  return {{fused(*a, *x, s.sum[0]), fused(*b, *x, s.sum[1]), fused(*c, *x, s.sum[2]), fused(*d, *x, s.sum[3])}};
}
Four add_two_rows(const Four& s, const double* a, const double* b, const double* c, const double* d, const double* x) {
  return add_row(add_row(s, a, b, c, d, x), a + 1, b + 1, c + 1, d + 1, x + 1);
}

struct Sizes {
  void add(const Lanes&) {}
  bool safe() const { return true; }
};
