// What vector units of one or two lanes have in common: packing lane after lane, and plain division, which is not worth
// avoiding there. To be included by solve/kernels_*.cpp alone, in place of kernel_lanes.h.

#include "solve/kernel_lanes.h"

void pack_rows(const LaneGroup& group, int k, double* to) { pack_lanes(group, k, to); }
template <int R>
void store_rows(const Lanes* x, const LaneGroup& group, int k) {
  store_lanes<R>(x, group, k);
}

struct Sizes {
  void add(const Lanes&) {}
  bool safe() const { return true; }
};
