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
Lanes quotient(const Lanes& a, const Lanes& b) {
  return each([&](int i) { return a.lane[i] / b.lane[i]; });
}
// Division is not worth avoiding here.
Lanes quick_quotient(const Lanes& g, double pivot, double) {
  return each([&](int i) { return g.lane[i] / pivot; });
}

#include "solve/kernel_narrow.h"
#include "solve/kernel_runs.h"
#include "solve/kernel_tiles.h"
// Behind the tiles.
#include "solve/kernel_columns.h"
// Behind the columns.
#include "solve/kernel_backward.h"
#include "solve/kernel_forward.h"
// Behind all of them.
#include "solve/kernel_solves.h"

constexpr Kernels table = table_of("plain");

}  // namespace

const Kernels* kernels_plain() { return &table; }

}  // namespace tidearc
