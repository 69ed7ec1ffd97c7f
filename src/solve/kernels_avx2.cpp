// The loops of the profile solver for x86-64 with AVX2 and FMA. This file alone is compiled for those instructions: it
// includes nothing whose inline procedures other files share.
#include "solve/kernel_table.h"

#if defined(__AVX2__) && defined(__FMA__)

#include <immintrin.h>

namespace tidearc {

namespace {

constexpr int tile_groups = 1;

struct Lanes {
  __m256d lo, hi;
};
double fused(double x, double y, double s) { return __builtin_fma(x, y, s); }
Lanes fused(Lanes x, Lanes y, Lanes s) {
  return {_mm256_fmadd_pd(x.lo, y.lo, s.lo), _mm256_fmadd_pd(x.hi, y.hi, s.hi)};
}
Lanes load(const double* p) { return {_mm256_loadu_pd(p), _mm256_loadu_pd(p + 4)}; }
void store(double* p, Lanes x) {
  _mm256_storeu_pd(p, x.lo);
  _mm256_storeu_pd(p + 4, x.hi);
}
Lanes broadcast(double x) { return {_mm256_set1_pd(x), _mm256_set1_pd(x)}; }
Lanes minus(Lanes a, Lanes b) { return {_mm256_sub_pd(a.lo, b.lo), _mm256_sub_pd(a.hi, b.hi)}; }
Lanes quotient(Lanes a, Lanes b) { return {_mm256_div_pd(a.lo, b.lo), _mm256_div_pd(a.hi, b.hi)}; }
Lanes times(Lanes a, Lanes b) { return {_mm256_mul_pd(a.lo, b.lo), _mm256_mul_pd(a.hi, b.hi)}; }

// Two corrections by the fused remainder give the quotient to the last bit (P. Markstein, "Computation of elementary
// functions on the IBM RISC System/6000 processor", 1990) where nothing leaves the range of normal numbers.
__m256d quick_quotient(__m256d g, __m256d d, __m256d y) {
  const __m256d q0 = _mm256_mul_pd(g, y);
  const __m256d q1 = _mm256_fmadd_pd(_mm256_fnmadd_pd(d, q0, g), y, q0);
  return _mm256_fmadd_pd(_mm256_fnmadd_pd(d, q1, g), y, q1);
}
Lanes quick_quotient(Lanes g, double pivot, double reciprocal) {
  const __m256d d = _mm256_set1_pd(pivot), y = _mm256_set1_pd(reciprocal);
  return {quick_quotient(g.lo, d, y), quick_quotient(g.hi, d, y)};
}

// A zero is as good as any size but for its sign, which a remainder loses: it counts as too small only when negative.
struct Sizes {
  __m256d bad = _mm256_setzero_pd();
  void add(__m256d x) {
    const __m256d size = _mm256_andnot_pd(_mm256_set1_pd(-0.0), x);
    const __m256d zero = _mm256_castsi256_pd(_mm256_cmpeq_epi64(_mm256_castpd_si256(x), _mm256_setzero_si256()));
    const __m256d small = _mm256_cmp_pd(size, _mm256_set1_pd(smallest_dividend), _CMP_LT_OQ);
    const __m256d large = _mm256_cmp_pd(size, _mm256_set1_pd(largest_dividend), _CMP_NLE_UQ);
    bad = _mm256_or_pd(bad, _mm256_or_pd(_mm256_andnot_pd(zero, small), large));
  }
  void add(Lanes x) {
    add(x.lo);
    add(x.hi);
  }
  bool safe() const { return _mm256_movemask_pd(bad) == 0; }
};

// x[i] lane j becomes x[j] lane i.
[[gnu::always_inline]] inline void transpose(__m256d* x) {
  const __m256d a0 = _mm256_unpacklo_pd(x[0], x[1]), a1 = _mm256_unpackhi_pd(x[0], x[1]);
  const __m256d a2 = _mm256_unpacklo_pd(x[2], x[3]), a3 = _mm256_unpackhi_pd(x[2], x[3]);
  x[0] = _mm256_permute2f128_pd(a0, a2, 0x20);
  x[1] = _mm256_permute2f128_pd(a1, a3, 0x20);
  x[2] = _mm256_permute2f128_pd(a0, a2, 0x31);
  x[3] = _mm256_permute2f128_pd(a1, a3, 0x31);
}

struct Rows {
  __m256i lo, hi;
  Rows(int from, int to) {
    const __m256i least = _mm256_set1_epi64x(from - 1), most = _mm256_set1_epi64x(to);
    const __m256i i = _mm256_setr_epi64x(0, 1, 2, 3), j = _mm256_setr_epi64x(4, 5, 6, 7);
    lo = _mm256_and_si256(_mm256_cmpgt_epi64(i, least), _mm256_cmpgt_epi64(most, i));
    hi = _mm256_and_si256(_mm256_cmpgt_epi64(j, least), _mm256_cmpgt_epi64(most, j));
  }
};
Lanes load_rows(const double* p, const Rows& rows) {
  return {_mm256_maskload_pd(p, rows.lo), _mm256_maskload_pd(p + 4, rows.hi)};
}
Lanes keep_rows(Lanes old, Lanes x, const Rows& rows) {
  return {_mm256_blendv_pd(old.lo, x.lo, _mm256_castsi256_pd(rows.lo)),
          _mm256_blendv_pd(old.hi, x.hi, _mm256_castsi256_pd(rows.hi))};
}

void pack_all_lanes(const LaneGroup& group, int k, double* to) {
  for (int lane = 0; lane < group_lanes; lane += 4) {
    for (int row = 0; row < group_lanes; row += 4) {
      __m256d x[4];
      for (int i = 0; i < 4; ++i) x[i] = _mm256_loadu_pd(group.column[lane + i] + k + row);
      transpose(x);
      for (int i = 0; i < 4; ++i) _mm256_storeu_pd(to + group_lanes * (row + i) + lane, x[i]);
    }
  }
}

template <int R>
void store_all_lanes(const Lanes* rows, const LaneGroup& group, int k) {
  const __m256i kept =
      _mm256_setr_epi64x(-1, R % 4 != 1 ? -1 : 0, R % 4 != 1 && R % 4 != 2 ? -1 : 0, R % 4 == 0 ? -1 : 0);
  for (int row = 0; row < R; row += 4) {
    for (int half = 0; half < 2; ++half) {
      __m256d x[4];
      for (int i = 0; i < 4; ++i) {
        const Lanes& from = rows[row + i < R ? row + i : R - 1];
        x[i] = half == 0 ? from.lo : from.hi;
      }
      transpose(x);
      for (int i = 0; i < 4; ++i) {
        double* const to = group.column[4 * half + i] + k + row;
        if (row + 4 <= R) {
          _mm256_storeu_pd(to, x[i]);
        } else {
          _mm256_maskstore_pd(to, kept, x[i]);
        }
      }
    }
  }
}

#include "solve/kernel_lanes.h"

void pack_rows(const LaneGroup& group, int k, double* to) {
  const bool all = k >= group.all && k + group_lanes <= group.end;
  all ? pack_all_lanes(group, k, to) : pack_lanes(group, k, to);
}

template <int R>
void store_rows(const Lanes* x, const LaneGroup& group, int k) {
  const bool all = k >= group.all && k + R <= group.end;
  all ? store_all_lanes<R>(x, group, k) : store_lanes<R>(x, group, k);
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

constexpr Kernels table = table_of("AVX2");

}  // namespace

const Kernels* kernels_avx2() { return &table; }

}  // namespace tidearc

#else

const tidearc::Kernels* tidearc::kernels_avx2() { return nullptr; }

#endif
