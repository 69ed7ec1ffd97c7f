// What the machine can do, measured beside the solver: multiply-adds a second, and reading an array.
#pragma once

#include <cstddef>
#include <cstring>
#include <ctime>

#if defined(__x86_64__)
#include <immintrin.h>
#endif

#include "solve/kernels.h"

namespace tidearc::bench {

/// Processor time, so that a busy machine does not spoil a ratio.
template <class Act>
double timed(Act&& act) {
  timespec t0{}, t1{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t0);
  act();
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t1);
  return static_cast<double>(t1.tv_sec - t0.tv_sec) + 1.0E-9 * static_cast<double>(t1.tv_nsec - t0.tv_nsec);
}

/// Best of several.
template <class Act>
double best_of(int times, Act&& act) {
  double best = timed(act);
  for (int i = 1; i < times; ++i) best = std::min(best, timed(act));
  return best;
}

#if defined(__x86_64__)
__attribute__((target("avx512f"), noinline)) inline double spin_avx512(long count) {
  __m512d s[16];
  for (__m512d& x : s) x = _mm512_set1_pd(1.0);
  const __m512d a = _mm512_set1_pd(0.999), b = _mm512_set1_pd(0.001);
  for (long i = 0; i < count; ++i) {
#pragma GCC unroll 16
    for (int k = 0; k < 16; ++k) s[k] = _mm512_fmadd_pd(s[k], a, b);
  }
  double sum[8], total = 0.0;
  for (const __m512d& x : s) {
    _mm512_storeu_pd(sum, x);
    total += sum[0];
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
  double sum[4], total = 0.0;
  for (const __m256d& x : s) {
    _mm256_storeu_pd(sum, x);
    total += sum[0];
  }
  return total;
}
#endif

inline double sink = 0.0;  // keeps results that nobody reads

/// Multiply-adds a second of this core with the vector width that the solver uses.
inline double multiply_add_peak() {
  constexpr long count = 4000000;
#if defined(__x86_64__)
  if (std::strcmp(kernels->name, "AVX-512") == 0) {
    return 16.0 * 8.0 * count / best_of(5, [] { sink = spin_avx512(count); });
  }
  if (std::strcmp(kernels->name, "AVX2") == 0) {
    return 12.0 * 4.0 * count / best_of(5, [] { sink = spin_avx2(count); });
  }
#endif
  double s[16] = {};
  return 16.0 * count / best_of(5, [&] {
    for (long i = 0; i < count; ++i) {
      for (double& x : s) x = __builtin_fma(x, 0.999, 0.001);
    }
    sink = s[0];
  });
}

#if defined(__x86_64__)
__attribute__((target("avx512f"), noinline)) inline double sum_avx512(const double* p, std::size_t n) {
  __m512d s[4] = {};
  for (; n >= 32; n -= 32, p += 32) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) s[k] = _mm512_add_pd(s[k], _mm512_loadu_pd(p + 8 * k));
  }
  double lanes[8], total = 0.0;
  _mm512_storeu_pd(lanes, _mm512_add_pd(_mm512_add_pd(s[0], s[1]), _mm512_add_pd(s[2], s[3])));
  for (const double x : lanes) total += x;
  for (; n > 0; --n) total += *p++;
  return total;
}
__attribute__((target("avx2"), noinline)) inline double sum_avx2(const double* p, std::size_t n) {
  __m256d s[4] = {};
  for (; n >= 16; n -= 16, p += 16) {
#pragma GCC unroll 4
    for (int k = 0; k < 4; ++k) s[k] = _mm256_add_pd(s[k], _mm256_loadu_pd(p + 4 * k));
  }
  double lanes[4], total = 0.0;
  _mm256_storeu_pd(lanes, _mm256_add_pd(_mm256_add_pd(s[0], s[1]), _mm256_add_pd(s[2], s[3])));
  for (const double x : lanes) total += x;
  for (; n > 0; --n) total += *p++;
  return total;
}
__attribute__((target("avx2"), noinline)) inline double sum_simple(const double* p, std::size_t n) {
  __m256d s = {};
  for (; n >= 4; n -= 4, p += 4) s = _mm256_add_pd(s, _mm256_loadu_pd(p));
  double lanes[4], total = 0.0;
  _mm256_storeu_pd(lanes, s);
  for (const double x : lanes) total += x;
  for (; n > 0; --n) total += *p++;
  return total;
}
#endif

}  // namespace tidearc::bench
