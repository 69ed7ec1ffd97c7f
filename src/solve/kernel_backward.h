// Back-substitution of one load, compiled once for each kind of vector unit. To be included by solve/kernels_*.cpp
// alone, behind solve/kernel_columns.h, each with its own
//   Rows                                   which of eight rows are meant: Rows(from, to), those from..to-1
//   load_rows(p, rows)                     eight rows, zero where they are not meant; those are not read
//   keep_rows(old, x, rows)                x where rows are meant, else what was there
//
// Two nodes are worked off at once: a row above both is brought and stored once for the twelve of them.

// The columns of one node or of two, from the last to the first.
template <int N>
struct Taken {
  const double* column[N];
  double x[N];
};

// r(i) -= x[n] * column[n][i] for rows from..end-1, in eights that begin where those of every other node begin: what
// one has stored as a whole the next can load as a whole. Rows beside them in the same eights are stored as they stand.
// From the last row up: the nodes that follow wait for the rows next to this one first.
template <int N>
void take_rows(const Taken<N>& taken, double* r, long from, long end, Ahead<-1>& ahead) {
  if (from >= end) return;
  Lanes factor[N];
#pragma GCC unroll 12
  for (int n = 0; n < N; ++n) factor[n] = broadcast(-taken.x[n]);
  const auto take_some = [&](long i) {
    ahead.fetch<(N + 2) / 3>();
    const Rows rows(static_cast<int>(from - i), static_cast<int>(end - i));
    const Lanes old = load(r + i);
    Lanes v = old;
#pragma GCC unroll 12
    for (int n = 0; n < N; ++n) v = fused(factor[n], load_rows(taken.column[n] + i, rows), v);
    store(r + i, keep_rows(old, v, rows));
  };
  const long first = ((from - 1) & -group_lanes) + 1;
  long i = ((end - 2) & -group_lanes) + 1;
  take_some(i);
  if (i == first) return;
  for (i -= group_lanes; i > first; i -= group_lanes) {
    ahead.fetch<(N + 2) / 3>();
    Lanes v = load(r + i);
#pragma GCC unroll 12
    for (int n = 0; n < N; ++n) v = fused(factor[n], load(taken.column[n] + i), v);
    store(r + i, v);
  }
  take_some(i);
}

// The node's own rows once the columns behind it are subtracted.
[[gnu::always_inline]] inline void back_triangle(const Node& a, int na, double* v) {
#pragma GCC unroll 8
  for (int n = na - 1; n > 0; --n) {
#pragma GCC unroll 8
    for (int k = 0; k < n; ++k) v[k] = fused(-v[n], a.column[n][a.first + k], v[k]);
  }
}

// The columns of a whole node and what is taken, behind those that are there.
template <int N>
[[gnu::always_inline]] inline void add_columns(Taken<N>& to, int behind, const Node& a, int na, const double* v) {
#pragma GCC unroll 8
  for (int n = 0; n < na; ++n) {
    to.column[behind + n] = a.column[na - 1 - n];
    to.x[behind + n] = v[na - 1 - n];
  }
}

// Nodes of six equations: a and, behind it, b.
void back_two(const Node& a, const Node& b, double* r, Ahead<-1>& ahead) {
  double v[strip_rows], w[strip_rows];
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) v[n] = r[b.first + n], w[n] = r[a.first + n];
  back_triangle(b, strip_rows, v);
#pragma GCC unroll 8
  for (int n = strip_rows - 1; n >= 0; --n) {
#pragma GCC unroll 8
    for (int k = 0; k < strip_rows; ++k) w[k] = fused(-v[n], b.column[n][a.first + k], w[k]);
  }
  back_triangle(a, strip_rows, w);
  Taken<2 * strip_rows> both;
  add_columns(both, 0, b, strip_rows, v);
  add_columns(both, strip_rows, a, strip_rows, w);
  Taken<strip_rows> longer;
  a.top < b.top ? add_columns(longer, 0, a, strip_rows, w) : add_columns(longer, 0, b, strip_rows, v);
  const long joint = larger(a.top, b.top);
  take_rows(both, r, joint, a.first, ahead);
  take_rows(longer, r, smaller(a.top, b.top), joint, ahead);
#pragma GCC unroll 8
  for (int n = 0; n < strip_rows; ++n) r[b.first + n] = v[n], r[a.first + n] = w[n];
}

template <int N>
void back_one(const Node& a, double* r, Ahead<-1>& ahead) {
  double v[N];
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) v[n] = r[a.first + n];
  back_triangle(a, N, v);
  Taken<N> taken;
  add_columns(taken, 0, a, N, v);
  take_rows(taken, r, a.top, a.first, ahead);
#pragma GCC unroll 8
  for (int n = 0; n < N; ++n) r[a.first + n] = v[n];
}

// Any columns, one after the other, prescribed rows stepped over.
void back_with_gaps(const ProfileColumns& K, const Node& a, double* r) {
  for (int n = a.count - 1; n >= 0; --n) {
    for_free_rows(K, a.top, a.first + n - 1,
                  [&](int lo, int hi) { subtract_from(r, a.column[n], r[a.first + n], lo, hi); });
  }
}

// x(i) /= the diagonal of column i.
void divide_by_diagonal_of(const ProfileColumns& K, int r1, int r2, double* x) {
  long i = r1;
  for (; i + group_lanes <= r2 + 1; i += group_lanes) {
    double d[group_lanes];
#pragma GCC unroll 8
    for (int k = 0; k < group_lanes; ++k) d[k] = K.values[K.IDIAG[i + k]];
    store(x + i, quotient(load(x + i), load(d)));
  }
  for (; i <= r2; ++i) x[i] /= K.values[K.IDIAG[i]];
}

// How far the division by the pivots has come, from the last row up and ahead of the columns that subtract from its
// rows: it runs beside their work. Pivots, one in a column, are fetched before they are asked for.
struct Division {
  static constexpr long lead = 3 * group_lanes, fetched = 6 * group_lanes;
  long first;
  long done;  // rows from here on are divided

  // Rows from `top` on are about to be subtracted from.
  void reach(const ProfileColumns& K, long top, double* r) {
    if (top >= done || done <= first) return;
    const long from = larger(first, ((top - lead - 1) & -group_lanes) + 1);
    for (long i = larger(from - fetched, first); i < from; ++i) __builtin_prefetch(K.values + K.IDIAG[i], 0, 2);
    divide_by_diagonal_of(K, static_cast<int>(from), static_cast<int>(done - 1), r);
    done = from;
  }
};

void backward_of(const ProfileColumns& K, int r1, int r2, int f, double* r) {
  Node a, b;
  Ahead<-1> ahead(K.values + K.IDIAG[r2], K.values + K.IDIAG[r1]);
  Division division{f, r2 + 1L};
  for (long c = r2; c >= r1; c = b.first - 1) {
    node_to(b, K, c, r1);
    ahead.now_at(K.values + K.IDIAG[c], K.values + K.IDIAG[b.first]);
    division.reach(K, b.top, r);
    if (!all_free(K, b) || b.first + group_lanes > r2 + 2) {  // eights of rows must not end behind the last one
      back_with_gaps(K, b, r);
      continue;
    }
    if (b.count == strip_rows && b.first > r1) {
      node_to(a, K, b.first - 1, r1);
      if (a.count == strip_rows && b.top <= a.first && all_free(K, a)) {
        ahead.now_at(K.values + K.IDIAG[c], K.values + K.IDIAG[a.first]);
        division.reach(K, a.top, r);
        back_two(a, b, r, ahead);
        b.first = a.first;
        continue;
      }
    }
    with_columns(b.count, [&]<int N>(Columns<N>) { back_one<N>(b, r, ahead); });
  }
  division.reach(K, f, r);
}
