// The loops of the profile solver for x86-64 with AVX-512. This file alone is compiled for those instructions: it
// includes nothing whose inline procedures other files share.
#include "solve/kernel_table.h"

#if defined(__AVX512F__) && defined(__AVX512DQ__)

#include <immintrin.h>

namespace tidearc {

namespace {

constexpr int tile_groups = 3;

using Lanes = __m512d;
double fused(double x, double y, double s) { return __builtin_fma(x, y, s); }
Lanes fused(Lanes x, Lanes y, Lanes s) { return _mm512_fmadd_pd(x, y, s); }
Lanes load(const double* p) { return _mm512_loadu_pd(p); }
void store(double* p, Lanes x) { _mm512_storeu_pd(p, x); }
Lanes broadcast(double x) { return _mm512_set1_pd(x); }
Lanes minus(Lanes a, Lanes b) { return _mm512_sub_pd(a, b); }
Lanes quotient(Lanes a, Lanes b) { return _mm512_div_pd(a, b); }
Lanes times(Lanes a, Lanes b) { return _mm512_mul_pd(a, b); }

// Two corrections by the fused remainder give the quotient to the last bit (P. Markstein, "Computation of elementary
// functions on the IBM RISC System/6000 processor", 1990) where nothing leaves the range of normal numbers.
Lanes quick_quotient(Lanes g, double pivot, double reciprocal) {
  const Lanes d = broadcast(pivot);
  const Lanes y = broadcast(reciprocal);
  const Lanes q0 = times(g, y);
  const Lanes q1 = fused(_mm512_fnmadd_pd(d, q0, g), y, q0);
  return fused(_mm512_fnmadd_pd(d, q1, g), y, q1);
}

// A zero is as good as any size but for its sign, which a remainder loses: it counts as too small only when negative.
struct Sizes {
  Lanes least = broadcast(1.0), most = broadcast(1.0);
  void add(Lanes x) {
    const __mmask8 zero = _mm512_cmpeq_epi64_mask(_mm512_castpd_si512(x), _mm512_setzero_si512());
    least = _mm512_mask_range_pd(least, static_cast<__mmask8>(~zero), least, x, 0b1010);
    most = _mm512_range_pd(most, x, 0b1011);
  }
  bool safe() const {
    return _mm512_cmp_pd_mask(least, broadcast(smallest_dividend), _CMP_LT_OQ) == 0 &&
           _mm512_cmp_pd_mask(most, broadcast(largest_dividend), _CMP_NLE_UQ) == 0;
  }
};

// x[i] lane j becomes x[j] lane i.
[[gnu::always_inline]] inline void transpose(Lanes* x) {
  const Lanes a0 = _mm512_unpacklo_pd(x[0], x[1]), a1 = _mm512_unpackhi_pd(x[0], x[1]);
  const Lanes a2 = _mm512_unpacklo_pd(x[2], x[3]), a3 = _mm512_unpackhi_pd(x[2], x[3]);
  const Lanes a4 = _mm512_unpacklo_pd(x[4], x[5]), a5 = _mm512_unpackhi_pd(x[4], x[5]);
  const Lanes a6 = _mm512_unpacklo_pd(x[6], x[7]), a7 = _mm512_unpackhi_pd(x[6], x[7]);
  const Lanes b0 = _mm512_shuffle_f64x2(a0, a2, 0x88), b1 = _mm512_shuffle_f64x2(a1, a3, 0x88);
  const Lanes b2 = _mm512_shuffle_f64x2(a0, a2, 0xdd), b3 = _mm512_shuffle_f64x2(a1, a3, 0xdd);
  const Lanes b4 = _mm512_shuffle_f64x2(a4, a6, 0x88), b5 = _mm512_shuffle_f64x2(a5, a7, 0x88);
  const Lanes b6 = _mm512_shuffle_f64x2(a4, a6, 0xdd), b7 = _mm512_shuffle_f64x2(a5, a7, 0xdd);
  x[0] = _mm512_shuffle_f64x2(b0, b4, 0x88);
  x[1] = _mm512_shuffle_f64x2(b1, b5, 0x88);
  x[2] = _mm512_shuffle_f64x2(b2, b6, 0x88);
  x[3] = _mm512_shuffle_f64x2(b3, b7, 0x88);
  x[4] = _mm512_shuffle_f64x2(b0, b4, 0xdd);
  x[5] = _mm512_shuffle_f64x2(b1, b5, 0xdd);
  x[6] = _mm512_shuffle_f64x2(b2, b6, 0xdd);
  x[7] = _mm512_shuffle_f64x2(b3, b7, 0xdd);
}

// Bits from..to-1 of eight.
__mmask8 bits(int from, int to) {
  const int below = from <= 0 ? 0 : from >= group_lanes ? 0xff : (1 << from) - 1;
  const int upto = to <= 0 ? 0 : to >= group_lanes ? 0xff : (1 << to) - 1;
  return static_cast<__mmask8>(upto & ~below);
}

struct Rows {
  __mmask8 held;
  Rows(int from, int to) : held(bits(from, to)) {}
};
Lanes load_rows(const double* p, Rows rows) { return _mm512_maskz_loadu_pd(rows.held, p); }
Lanes keep_rows(Lanes old, Lanes x, Rows rows) { return _mm512_mask_mov_pd(old, rows.held, x); }

void pack_rows(const LaneGroup& group, int k, double* to) {
  Lanes x[group_lanes];
  if (k >= group.all && k + group_lanes <= group.end) {
#pragma GCC unroll 8
    for (int lane = 0; lane < group_lanes; ++lane) x[lane] = load(group.column[lane] + k);
  } else {
    for (int lane = 0; lane < group_lanes; ++lane) {
      const __mmask8 held = bits(group.top[lane] - k, group.equation[lane] - k);
      x[lane] = held == 0 ? _mm512_setzero_pd() : _mm512_maskz_loadu_pd(held, group.column[lane] + k);
    }
  }
  transpose(x);
#pragma GCC unroll 8
  for (int row = 0; row < group_lanes; ++row) store(to + group_lanes * row, x[row]);
}

template <int R>
void store_rows(const Lanes* rows, const LaneGroup& group, int k) {
  Lanes x[group_lanes];
#pragma GCC unroll 8
  for (int row = 0; row < group_lanes; ++row) x[row] = row < R ? rows[row] : _mm512_setzero_pd();
  transpose(x);
  if (k >= group.all && k + R <= group.end) {
#pragma GCC unroll 8
    for (int lane = 0; lane < group_lanes; ++lane) {
      __builtin_prefetch(group.column[lane] + k + 2 * group_lanes, 1, 3);  // rows of the next strips
      _mm512_mask_storeu_pd(group.column[lane] + k, (1 << R) - 1, x[lane]);
    }
    return;
  }
#pragma GCC unroll 8
  for (int lane = 0; lane < group_lanes; ++lane) {
    const int end = group.equation[lane] - k;
    const __mmask8 held = bits(group.top[lane] - k, end < R ? end : R);
    if (held != 0) _mm512_mask_storeu_pd(group.column[lane] + k, held, x[lane]);
  }
}

#include "solve/kernel_runs.h"
#include "solve/kernel_tiles.h"
// Behind the tiles.
#include "solve/kernel_columns.h"
#include "solve/kernel_sixes.h"
// Behind the columns.
#include "solve/kernel_backward.h"
#include "solve/kernel_forward.h"
// Behind all of them.
#include "solve/kernel_solves.h"

constexpr Kernels table = table_of("AVX-512");

}  // namespace

const Kernels* kernels_avx512() { return &table; }

}  // namespace tidearc

#else

const tidearc::Kernels* tidearc::kernels_avx512() { return nullptr; }

#endif
