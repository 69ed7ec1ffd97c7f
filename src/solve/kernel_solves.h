// Substitution loops over the columns of a strip side by side, for one load and for many, compiled once for each kind
// of vector unit. To be included by solve/kernels_*.cpp alone, behind solve/kernel_tiles.h.

// The values that the next strip will ask for, one cache line of each column.
template <int N>
void fetch_ahead(const double* const* a, long i) {
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) __builtin_prefetch(a[n] + i, 0, 2);
}

template <int N>
void add_column_sums(const double* const* a, const double* x, int r1, int r2, double* s, long ahead) {
  double sum[N];
  for (int n = 0; n < N; ++n) sum[n] = s[n];
  long i = r1;
  for (; i + group_lanes <= r2 + 1; i += group_lanes) {
    fetch_ahead<N>(a, i + ahead);
#pragma GCC unroll 8
    for (int k = 0; k < group_lanes; ++k) {
      const double v = x[i + k];
#pragma GCC unroll 8
      for (int n = 0; n < N; ++n) sum[n] = fused(a[n][i + k], v, sum[n]);
    }
  }
  for (; i <= r2; ++i) {
    const double v = x[i];
#pragma GCC unroll 8
    for (int n = 0; n < N; ++n) sum[n] = fused(a[n][i], v, sum[n]);
  }
  for (int n = 0; n < N; ++n) s[n] = sum[n];
}

void column_sums_of(const Strip& strip, const double* x, int r1, int r2, double* s, long ahead) {
  with_columns(strip.count, [&]<int N>(Columns<N>) { add_column_sums<N>(strip.column, x, r1, r2, s, ahead); });
}

// A column of the strip starts below the strip's first row.
bool has_gaps(const Strip& strip) {
  int highest = strip.top[0];
  for (int n = 1; n < strip.count; ++n) highest = larger(highest, strip.top[n]);
  return highest > strip.first;
}

// The triangle of a whole strip in registers: what an equation gives to those behind it is added as soon as it is
// known.
void forward_whole_triangle(const double* const* a, int first, double* x, double* s) {
  double sum[strip_rows];
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) sum[n] = s[n];
#pragma GCC unroll 8
  for (int k = 0; k < strip_rows; ++k) {
    const double v = x[first + k] - sum[k];
    x[first + k] = v;
#pragma GCC unroll 8
    for (int n = k + 1; n < strip_rows; ++n) sum[n] = fused(a[n][first + k], v, sum[n]);
  }
}

void forward_triangle_of(const Strip& strip, double* x, double* s) {
  if (strip.count == strip_rows && !has_gaps(strip)) return forward_whole_triangle(strip.column, strip.first, x, s);
  for (int n = 0; n < strip.count; ++n) {
    const double* const a = strip.column[n];
    double sum = s[n];
    for (int k = larger(strip.top[n], strip.first); k < strip.first + n; ++k) sum = fused(a[k], x[k], sum);
    x[strip.first + n] -= sum;
  }
}

void back_whole_triangle(const double* const* a, int first, double* r, double* x) {
  double v[strip_rows];
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) v[n] = r[first + n];
#pragma GCC unroll 8
  for (int n = strip_rows - 1; n > 0; --n) {
#pragma GCC unroll 8
    for (int k = 0; k < n; ++k) v[k] = fused(-v[n], a[n][first + k], v[k]);
  }
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) x[n] = r[first + n] = v[n];
}

void back_triangle_of(const Strip& strip, double* r, double* x) {
  if (strip.count == strip_rows && !has_gaps(strip)) return back_whole_triangle(strip.column, strip.first, r, x);
  for (int n = strip.count - 1; n >= 0; --n) {
    const double* const a = strip.column[n];
    x[n] = r[strip.first + n];
    for (int k = larger(strip.top[n], strip.first); k < strip.first + n; ++k) r[k] = fused(-x[n], a[k], r[k]);
  }
}

template <int N>
void take_columns(const double* const* a, double* r, const double* x, int r1, int r2, long ahead) {
  Lanes factor[N];
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) factor[n] = broadcast(-x[n]);
  const auto take_row = [&](long k) {
    double v = r[k];
#pragma GCC unroll 8
    for (int n = N - 1; n >= 0; --n) v = fused(-x[n], a[n][k], v);
    r[k] = v;
  };
  // Eights of rows begin where those of every other strip begin: what one has stored as a whole the next can load as a
  // whole.
  long i = r1;
  for (; i <= r2 && (i - 1) % group_lanes != 0; ++i) take_row(i);
  for (; i + group_lanes <= r2 + 1; i += group_lanes) {
    fetch_ahead<N>(a, i + ahead);
    Lanes v = load(r + i);
#pragma GCC unroll 8
    for (int n = N - 1; n >= 0; --n) v = fused(factor[n], load(a[n] + i), v);
    store(r + i, v);
  }
  for (; i <= r2; ++i) take_row(i);
}

void subtract_columns_of(const Strip& strip, double* r, const double* x, int r1, int r2, long ahead) {
  with_columns(strip.count, [&]<int N>(Columns<N>) { take_columns<N>(strip.column, r, x, r1, r2, ahead); });
}

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
  for (long i = r1; i <= r2; ++i) {
    Lanes v[W];
#pragma GCC unroll 2
    for (int w = 0; w < W; ++w) v[w] = load(r + loads * i + group_lanes * w);
#pragma GCC unroll 8
    for (int n = N - 1; n >= 0; --n) {
      const Lanes l = broadcast(a[n][i]);
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
          column_sums_of,
          forward_triangle_of,
          back_triangle_of,
          subtract_columns_of,
          column_sums_many_of,
          subtract_columns_many_of};
}
