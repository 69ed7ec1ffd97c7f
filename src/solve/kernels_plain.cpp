// The loops of the profile solver for any machine: std::fma and eight lanes one by one.
#include <cmath>

#include "solve/kernel_table.h"

namespace tidearc {

namespace {

constexpr int tile_groups = 1;

struct Lanes {
  double lane[group_lanes];
};

template <class Act>
Lanes each(Act&& act) {
  Lanes x;
  for (int i = 0; i < group_lanes; ++i) x.lane[i] = act(i);
  return x;
}

double fused(double x, double y, double s) { return std::fma(x, y, s); }
Lanes fused(const Lanes& x, const Lanes& y, const Lanes& s) {
  return each([&](int i) { return std::fma(x.lane[i], y.lane[i], s.lane[i]); });
}
Lanes load(const double* p) {
  return each([&](int i) { return p[i]; });
}
void store(double* p, const Lanes& x) {
  for (int i = 0; i < group_lanes; ++i) p[i] = x.lane[i];
}
Lanes broadcast(double x) {
  return each([&](int) { return x; });
}
Lanes minus(const Lanes& a, const Lanes& b) {
  return each([&](int i) { return a.lane[i] - b.lane[i]; });
}
Lanes times(const Lanes& a, const Lanes& b) {
  return each([&](int i) { return a.lane[i] * b.lane[i]; });
}
// Division is not worth avoiding here.
Lanes quick_quotient(const Lanes& g, double pivot, double) {
  return each([&](int i) { return g.lane[i] / pivot; });
}
struct Sizes {
  void add(const Lanes&) {}
  bool safe() const { return true; }
};

#include "solve/kernel_lanes.h"

void pack_rows(const LaneGroup& group, int k, double* to) { pack_lanes(group, k, to); }
template <int R>
void store_rows(const Lanes* x, const LaneGroup& group, int k) {
  store_lanes<R>(x, group, k);
}

#include "solve/kernel_runs.h"
#include "solve/kernel_tiles.h"
// Behind the tiles.
#include "solve/kernel_solves.h"

constexpr Kernels table{"plain",
                        product_of,
                        product_pivot_of,
                        product_profile_pivot_of,
                        subtract_from,
                        divide_by,
                        divide_by_profile,
                        panel_products_of,
                        pack_of,
                        scale_of,
                        sum_strip_of,

                        factor_strip_of,
                        finish_strip_of,
                        column_sums_of,
                        forward_triangle_of,
                        back_triangle_of,
                        subtract_columns_of,
                        column_sums_many_of,
                        subtract_columns_many_of};

}  // namespace

const Kernels* kernels_plain() { return &table; }

}  // namespace tidearc
