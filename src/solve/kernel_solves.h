// Substitution loops for many loads over the columns of a strip side by side, compiled once for each kind of vector
// unit. To be included by solve/kernels_*.cpp alone, behind solve/kernel_tiles.h.

// Many loads, those of one equation side by side: W vectors of eight from `x` on, and a rest one by one.
constexpr int load_vectors = tile_groups > 1 ? 2 : 1;

template <int N, int W>
void add_sums_of_loads(const double* const* a, const double* x, int loads, int r1, int r2, double* s) {
  Lanes sum[N][W];
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) sum[n][w] = load(s + most_loads * n + group_lanes * w);
  }
  for (long i = r1; i <= r2; ++i) {
    Lanes v[W];
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) v[w] = load(x + loads * i + group_lanes * w);
#pragma GCC unroll 8
    for (int n = 0; n < N; ++n) {
      const Lanes l = broadcast(a[n][i]);
#pragma GCC unroll 2
      for (int w = 0; w < W; ++w) sum[n][w] = fused(v[w], l, sum[n][w]);
    }
  }
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) store(s + most_loads * n + group_lanes * w, sum[n][w]);
  }
}

template <int N>
void sums_of_loads(const double* const* a, const double* x, int loads, int r1, int r2, double* s) {
  int j = 0;
  for (; j + group_lanes * load_vectors <= loads; j += group_lanes * load_vectors) {
    add_sums_of_loads<N, load_vectors>(a, x + j, loads, r1, r2, s + j);
  }
  for (; j + group_lanes <= loads; j += group_lanes) add_sums_of_loads<N, 1>(a, x + j, loads, r1, r2, s + j);
  for (; j < loads; ++j) {
    for (int n = 0; n < N; ++n) {
      double sum = s[most_loads * n + j];
      for (long i = r1; i <= r2; ++i) sum = fused(x[loads * i + j], a[n][i], sum);
      s[most_loads * n + j] = sum;
    }
  }
}

void column_sums_many_of(const double* const* a, int count, const double* x, int loads, int r1, int r2, double* s) {
  if (r2 < r1) return;
  with_columns(count, [&]<int N>(Columns<N>) { sums_of_loads<N>(a, x, loads, r1, r2, s); });
}

template <int N, int W>
void take_columns_of_loads(double* r, const double* const* a, const double* x, int loads, int r1, int r2) {
  Lanes factor[N][W];
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) {
      factor[n][w] = times(load(x + most_loads * n + group_lanes * w), broadcast(-1.0));
    }
  }
  const double* column[N];  // of its own: a store of lanes may be to anything, `a` included
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) column[n] = a[n];
  for (long i = r1; i <= r2; ++i) {
    Lanes v[W];
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) v[w] = load(r + loads * i + group_lanes * w);
#pragma GCC unroll 8
    for (int n = N - 1; n >= 0; --n) {
      const Lanes l = broadcast(column[n][i]);
#pragma GCC unroll 2
      for (int w = 0; w < W; ++w) v[w] = fused(factor[n][w], l, v[w]);
    }
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) store(r + loads * i + group_lanes * w, v[w]);
  }
}

template <int N>
void take_from_loads(double* r, const double* const* a, const double* x, int loads, int r1, int r2) {
  int j = 0;
  for (; j + group_lanes * load_vectors <= loads; j += group_lanes * load_vectors) {
    take_columns_of_loads<N, load_vectors>(r + j, a, x + j, loads, r1, r2);
  }
  for (; j + group_lanes <= loads; j += group_lanes) {
    take_columns_of_loads<N, 1>(r + j, a, x + j, loads, r1, r2);
  }
  for (; j < loads; ++j) {
    for (int n = N - 1; n >= 0; --n) {
      for (long i = r1; i <= r2; ++i) r[loads * i + j] = fused(-x[most_loads * n + j], a[n][i], r[loads * i + j]);
    }
  }
}

void subtract_columns_many_of(double* r, const double* const* a, int count, const double* x, int loads, int r1,
                              int r2) {
  if (r2 < r1) return;
  with_columns(count, [&]<int N>(Columns<N>) { take_from_loads<N>(r, a, x, loads, r1, r2); });
}

// All six columns of the strip reach its first row.
bool is_whole(const Strip& strip) {
  if (strip.common < strip.first) return strip.count == strip_rows;
  int highest = strip.top[0];
  for (int n = 1; n < strip.count; ++n) highest = larger(highest, strip.top[n]);
  return strip.count == strip_rows && highest <= strip.first;
}

template <int W>
void forward_triangle_of_loads(const double* const* a, long first, double* x, int loads, const double* s) {
  Lanes sum[strip_rows][W];
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) sum[n][w] = load(s + most_loads * n + group_lanes * w);
  }
#pragma GCC unroll 8
  for (int k = 0; k < strip_rows; ++k) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) {
      double* const row = x + loads * (first + k) + group_lanes * w;
      const Lanes v = minus(load(row), sum[k][w]);
      store(row, v);
#pragma GCC unroll 8
      for (int n = k + 1; n < strip_rows; ++n) sum[n][w] = fused(v, broadcast(a[n][first + k]), sum[n][w]);
    }
  }
}

void forward_triangle_many_of(const Strip& strip, double* x, int loads, double* s) {
  int j = 0;
  if (is_whole(strip)) {
    for (; j + group_lanes * load_vectors <= loads; j += group_lanes * load_vectors) {
      forward_triangle_of_loads<load_vectors>(strip.column, strip.first, x + j, loads, s + j);
    }
  }
  for (int n = 0; j < loads && n < strip.count; ++n) {
    const int c = strip.first + n;
    const double* const a = strip.column[n];
    for (int i = j; i < loads; ++i) {
      double sum = s[most_loads * n + i];
      for (long k = larger(strip.top[n], strip.first); k < c; ++k) sum = fused(x[loads * k + i], a[k], sum);
      x[static_cast<long>(loads) * c + i] -= sum;
    }
  }
}

template <int W>
void back_triangle_of_loads(const double* const* a, long first, double* r, int loads, double* x) {
  Lanes v[strip_rows][W];
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) v[n][w] = load(r + loads * (first + n) + group_lanes * w);
  }
#pragma GCC unroll 8
  for (int n = strip_rows - 1; n >= 0; --n) {
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) {
      store(x + most_loads * n + group_lanes * w, v[n][w]);
      store(r + loads * (first + n) + group_lanes * w, v[n][w]);
      const Lanes factor = times(v[n][w], broadcast(-1.0));
#pragma GCC unroll 8
      for (int k = 0; k < n; ++k) v[k][w] = fused(factor, broadcast(a[n][first + k]), v[k][w]);
    }
  }
}

void back_triangle_many_of(const Strip& strip, double* r, int loads, double* x) {
  int j = 0;
  if (is_whole(strip)) {
    for (; j + group_lanes * load_vectors <= loads; j += group_lanes * load_vectors) {
      back_triangle_of_loads<load_vectors>(strip.column, strip.first, r + j, loads, x + j);
    }
  }
  for (int n = strip.count - 1; j < loads && n >= 0; --n) {
    const long c = strip.first + n;
    const double* const a = strip.column[n];
    for (int i = j; i < loads; ++i) {
      const double v = x[most_loads * n + i] = r[loads * c + i];
      for (long k = larger(strip.top[n], strip.first); k < c; ++k) r[loads * k + i] = fused(-v, a[k], r[loads * k + i]);
    }
  }
}

Lanes divided(Lanes x, Lanes pivots, double pivot, double reciprocal) {
  Sizes sizes;
  sizes.add(x);
  return sizes.safe() ? quick_quotient(x, pivot, reciprocal) : quotient(x, pivots);
}

void divide_many_of(double* x, int loads, double pivot) {
  const double size = __builtin_fabs(pivot);
  const bool quick = size >= smallest_divisor && size <= largest_divisor;
  const double reciprocal = 1.0 / pivot;
  const Lanes d = broadcast(pivot);
  int j = 0;
  for (; j + group_lanes <= loads; j += group_lanes) {
    const Lanes row = load(x + j);
    store(x + j, quick ? divided(row, d, pivot, reciprocal) : quotient(row, d));
  }
  for (; j < loads; ++j) x[j] /= pivot;
}

// The table of this kind of vector unit.
constexpr Kernels table_of(const char* name) {
  return {name,
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
          forward_of,
          divide_by_diagonal_of,
          backward_of,
          column_sums_many_of,
          forward_triangle_many_of,
          divide_many_of,
          back_triangle_many_of,
          subtract_columns_many_of};
}
