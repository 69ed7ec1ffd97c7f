// The loops of the profile solver for 64-bit Arm, every one of which has fused multiply-add on two lanes.
#include "solve/kernel_table.h"

#if defined(__aarch64__)

#include <arm_neon.h>

namespace tidearc {

namespace {

constexpr int tile_groups = 1;

struct Lanes {
  float64x2_t pair[4];
};
double fused(double x, double y, double s) { return __builtin_fma(x, y, s); }
Lanes fused(const Lanes& x, const Lanes& y, const Lanes& s) {
  return {{vfmaq_f64(s.pair[0], x.pair[0], y.pair[0]), vfmaq_f64(s.pair[1], x.pair[1], y.pair[1]),
           vfmaq_f64(s.pair[2], x.pair[2], y.pair[2]), vfmaq_f64(s.pair[3], x.pair[3], y.pair[3])}};
}
Lanes load(const double* p) { return {{vld1q_f64(p), vld1q_f64(p + 2), vld1q_f64(p + 4), vld1q_f64(p + 6)}}; }
void store(double* p, const Lanes& x) {
  for (int i = 0; i < 4; ++i) vst1q_f64(p + 2 * i, x.pair[i]);
}
Lanes broadcast(double x) {
  const float64x2_t both = vdupq_n_f64(x);
  return {{both, both, both, both}};
}
Lanes minus(const Lanes& a, const Lanes& b) {
  return {{vsubq_f64(a.pair[0], b.pair[0]), vsubq_f64(a.pair[1], b.pair[1]), vsubq_f64(a.pair[2], b.pair[2]),
           vsubq_f64(a.pair[3], b.pair[3])}};
}
Lanes times(const Lanes& a, const Lanes& b) {
  return {{vmulq_f64(a.pair[0], b.pair[0]), vmulq_f64(a.pair[1], b.pair[1]), vmulq_f64(a.pair[2], b.pair[2]),
           vmulq_f64(a.pair[3], b.pair[3])}};
}
Lanes quotient(const Lanes& a, const Lanes& b) {
  return {{vdivq_f64(a.pair[0], b.pair[0]), vdivq_f64(a.pair[1], b.pair[1]), vdivq_f64(a.pair[2], b.pair[2]),
           vdivq_f64(a.pair[3], b.pair[3])}};
}
// Division is not worth avoiding here.
Lanes quick_quotient(const Lanes& g, double pivot, double) {
  const float64x2_t d = vdupq_n_f64(pivot);
  return {{vdivq_f64(g.pair[0], d), vdivq_f64(g.pair[1], d), vdivq_f64(g.pair[2], d), vdivq_f64(g.pair[3], d)}};
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

constexpr Kernels table = table_of("NEON");

}  // namespace

const Kernels* kernels_neon() { return &table; }

}  // namespace tidearc

#else

const tidearc::Kernels* tidearc::kernels_neon() { return nullptr; }

#endif
