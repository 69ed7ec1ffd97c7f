// What the machine can do, measured beside the solver: multiply-adds a second, and reading an array.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <ctime>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "solve/kernels.h"

namespace tidearc::bench {

/// Processor time of this thread, so that a busy machine does not spoil a ratio.
template <class Act>
double timed(Act&& act) {
  timespec t0{}, t1{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t0);
  act();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t1);
  return static_cast<double>(t1.tv_sec - t0.tv_sec) + 1.0E-9 * static_cast<double>(t1.tv_nsec - t0.tv_nsec);
}

/// Best of several; `prepare` is not timed.
template <class Prepare, class Act>
double best_of(int times, Prepare&& prepare, Act&& act) {
  double best = 1.0E30;
  for (int i = 0; i < times; ++i) {
    prepare();
    best = std::min(best, timed(act));
  }
  return best;
}
inline void nothing() {}

inline double sink = 0.0;  // keeps results that nobody reads

#if defined(__x86_64__)
__attribute__((target("avx512f"), noinline)) inline double spin_avx512(long count) {
  __m512d s[16];
  for (__m512d& x : s) x = _mm512_set1_pd(1.0);
  const __m512d a = _mm512_set1_pd(0.999), b = _mm512_set1_pd(0.001);
  for (long i = 0; i < count; ++i) {
#pragma GCC unroll 16
    for (int k = 0; k < 16; ++k) s[k] = _mm512_fmadd_pd(s[k], a, b);
  }
  double lanes[8], total = 0.0;
  for (const __m512d& x : s) {
    _mm512_storeu_pd(lanes, x);
    total += lanes[0];
  }
  return total;
}
__attribute__((target("avx2,fma"), noinline)) inline double spin_avx2(long count) {
  __m256d s[12];
  for (__m256d& x : s) x = _mm256_set1_pd(1.0);
  const __m256d a = _mm256_set1_pd(0.999), b = _mm256_set1_pd(0.001);
  for (long i = 0; i < count; ++i) {
#pragma GCC unroll 12
    for (int k = 0; k < 12; ++k) s[k] = _mm256_fmadd_pd(s[k], a, b);
  }
  double lanes[4], total = 0.0;
  for (const __m256d& x : s) {
    _mm256_storeu_pd(lanes, x);
    total += lanes[0];
  }
  return total;
}
// Sums an array with one vector accumulator, as a compiler that may re-associate vectorises the plain loop.
__attribute__((target("avx2"), noinline)) inline double sum_avx2(const double* p, std::size_t n) {
  __m256d s = _mm256_setzero_pd();
  for (; n >= 4; n -= 4, p += 4) s = _mm256_add_pd(s, _mm256_loadu_pd(p));
  double lanes[4], total = 0.0;
  _mm256_storeu_pd(lanes, s);
  for (const double x : lanes) total += x;
  for (; n > 0; --n) total += *p++;
  return total;
}
// Reads an array up and down again as fast as the memory gives it: from four adjacent pages in turn, one number of
// each cache line.
__attribute__((target("avx2"), noinline)) inline double up_and_down_avx2(const double* p, std::size_t n) {
  constexpr std::size_t page = 512, pages = 4, block = pages * page;
  __m256d s[4] = {};
  const auto add_line = [&](std::size_t i, std::size_t k) __attribute__((target("avx2"), always_inline)) {
#pragma GCC unroll 4
    for (std::size_t j = 0; j < pages; ++j) s[j] = _mm256_add_pd(s[j], _mm256_loadu_pd(p + i + j * page + k));
  };
  const std::size_t blocks = n / block;
  for (std::size_t i = 0; i < blocks * block; i += block) {
    for (std::size_t k = 0; k < page; k += 8) add_line(i, k);
  }
  for (std::size_t i = blocks * block; i > 0; i -= block) {
    for (std::size_t k = page; k > 0; k -= 8) add_line(i - block, k - 8);
  }
  double lanes[4];
  _mm256_storeu_pd(lanes, _mm256_add_pd(_mm256_add_pd(s[0], s[1]), _mm256_add_pd(s[2], s[3])));
  return lanes[0] + lanes[1] + lanes[2] + lanes[3];
}
#endif

inline bool uses(const char* table) { return std::strcmp(kernels->name, table) == 0; }

/// One read of an array: the plain loop that adds its values, one sum in order as all sums of this program are.
__attribute__((noinline)) inline double sum_in_order(const double* p, std::size_t n) {
  double s = 0.0;
  for (std::size_t i = 0; i < n; ++i) s += p[i];
  return s;
}
/// The same re-associated, four sums side by side: what a compiler makes of the loop that may do so.
inline double sum_in_lanes(const double* p, std::size_t n) {
#if defined(__x86_64__)
  if (uses("AVX-512") || uses("AVX2")) return sum_avx2(p, n);
#endif
  double s[4] = {};
  for (; n >= 4; n -= 4, p += 4) {
    for (int k = 0; k < 4; ++k) s[k] += p[k];
  }
  for (; n > 0; --n) s[0] += *p++;
  return s[0] + s[1] + s[2] + s[3];
}
/// What no solution goes below: its two passes over the array without any arithmetic.
inline double up_and_down(const double* p, std::size_t n) {
#if defined(__x86_64__)
  if (uses("AVX-512") || uses("AVX2")) return up_and_down_avx2(p, n);
#endif
  double s = 0.0;
  for (std::size_t i = 0; i < n; i += 8) s += p[i];
  for (std::size_t i = n; i > 8; i -= 8) s += p[i - 1];
  return s;
}

/// Multiply-adds a second of this core with the vectors that the solver uses.
inline double multiply_add_peak() {
  constexpr long count = 2000000;
#if defined(__x86_64__)
  if (uses("AVX-512")) return 128.0 * count / best_of(9, nothing, [] { sink = spin_avx512(count); });
  if (uses("AVX2")) return 48.0 * count / best_of(9, nothing, [] { sink = spin_avx2(count); });
#endif
  double s[16] = {};
  return 16.0 * count / best_of(9, nothing, [&] {
           for (long i = 0; i < count; ++i) {
             for (double& x : s) x = __builtin_fma(x, 0.999, 0.001);
           }
           sink = s[0];
         });
}

}  // namespace tidearc::bench
