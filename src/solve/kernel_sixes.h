// Sums of four columns side by side for x86-64. To be included by solve/kernels_avx*.cpp alone.

using Four = __m256d;
[[gnu::always_inline]] inline Four four_zeros() { return _mm256_setzero_pd(); }
[[gnu::always_inline]] inline void store(double* s, Four sum) { _mm256_storeu_pd(s, sum); }
[[gnu::always_inline]] inline Four first_halves(Four a, Four b) { return _mm256_permute2f128_pd(a, b, 0x20); }

[[gnu::always_inline]] inline Four add_row(Four sum, const double* a, const double* b, const double* c, const double* d,
                                           const double* x) {
  return _mm256_fmadd_pd(_mm256_setr_pd(*a, *b, *c, *d), _mm256_broadcast_sd(x), sum);
}

// Pairs of rows of a and c, of b and d, are turned into one row of the four and the next. The integer form of that runs
// on two units of current processors, the floating-point form on one.
[[gnu::always_inline]] inline Four add_two_rows(Four sum, const double* a, const double* b, const double* c,
                                                const double* d, const double* x) {
  const __m256i ac =
      _mm256_castpd_si256(_mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(a)), _mm_loadu_pd(c), 1));
  const __m256i bd =
      _mm256_castpd_si256(_mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(b)), _mm_loadu_pd(d), 1));
  sum = _mm256_fmadd_pd(_mm256_castsi256_pd(_mm256_unpacklo_epi64(ac, bd)), _mm256_broadcast_sd(x), sum);
  return _mm256_fmadd_pd(_mm256_castsi256_pd(_mm256_unpackhi_epi64(ac, bd)), _mm256_broadcast_sd(x + 1), sum);
}
