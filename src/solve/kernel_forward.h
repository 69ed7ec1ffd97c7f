// Forward substitution of one load, compiled once for each kind of vector unit. To be included by solve/kernels_*.cpp
// alone, behind solve/kernel_columns.h, each with its own
//   Four                                   sums of four columns
//   four_zeros(), store(s, sums), first_halves(a, b)
//   add_row(sums, a, b, c, d, x)           a row of four columns times x, from where the pointers stand
//   add_two_rows(sums, a, b, c, d, x)      two rows
//
// A sum is a chain of steps that wait for each other. Two nodes are worked off at once: the sums of the second one over
// the rows above the first do not depend on it, and the two fill each other's waiting time.

// The sums of a node over the rows above `row`: of its first four columns, of the other two.
struct NodeSums {
  long row;
  Four four = four_zeros(), two = four_zeros();
};

[[gnu::always_inline]] inline Four add_two_rows(Four sums, const double* const* p, const double* x, long k) {
  return add_two_rows(sums, p[0] + k, p[1] + k, p[2] + k, p[3] + k, x + k);
}
[[gnu::always_inline]] inline Four add_two_rows(Four sums, const double* const* p, const double* const* q,
                                                const double* x, long k) {
  return add_two_rows(sums, p[4] + k, p[5] + k, q[4] + k, q[5] + k, x + k);
}

// From the first row on, which goes alone where their number up to row `end` is odd.
[[gnu::always_inline]] inline NodeSums begin_sums(const Node& a, const double* x, long f, long end) {
  NodeSums s{larger(a.top, f)};
  if (s.row < end && (end - s.row) % 2 != 0) {
    const double* const* p = a.column;
    s.four = add_row(s.four, p[0] + s.row, p[1] + s.row, p[2] + s.row, p[3] + s.row, x + s.row);
    s.two = add_row(s.two, p[4] + s.row, p[5] + s.row, p[5] + s.row, p[5] + s.row, x + s.row);
    ++s.row;
  }
  return s;
}

[[gnu::always_inline]] inline void go_on(NodeSums& s, const Node& a, const double* x, long end, Ahead<1>& ahead) {
  for (; s.row < end; s.row += 2) {
    ahead.fetch();
    s.four = add_two_rows(s.four, a.column, x, s.row);
    s.two = add_two_rows(s.two, a.column, a.column, x, s.row);
  }
}

[[gnu::always_inline]] inline void store(double* s, Four four, Four two, int from) {
  double rest[4];
  store(s, four);
  store(rest, two);
  s[4] = rest[from];
  s[5] = rest[from + 1];
}

// Sums s of node a and t of node b over the rows above both.
void sum_above(const Node& a, const Node& b, const double* x, long f, double* s, double* t, Ahead<1>& ahead) {
  const long end = a.first;
  NodeSums sa = begin_sums(a, x, f, end), sb = begin_sums(b, x, f, end);
  go_on(sa, a, x, sb.row, ahead);
  go_on(sb, b, x, sa.row, ahead);
  Four twos = first_halves(sa.two, sb.two);
  for (long k = sa.row; k < end; k += 2) {
    ahead.fetch();
    sa.four = add_two_rows(sa.four, a.column, x, k);
    twos = add_two_rows(twos, a.column, b.column, x, k);
    sb.four = add_two_rows(sb.four, b.column, x, k);
  }
  store(s, sa.four, twos, 0);
  store(t, sb.four, twos, 2);
}

// A node behind its sums: each of its equations is added to those behind it as soon as it is known.
[[gnu::always_inline]] inline void forward_triangle(const Node& a, int na, double* x, double* s) {
#pragma GCC unroll 8
  for (int k = 0; k < na; ++k) {
    const double v = x[a.first + k] - s[k];
    x[a.first + k] = v;
#pragma GCC unroll 8
    for (int n = k + 1; n < na; ++n) s[n] = fused(a.column[n][a.first + k], v, s[n]);
  }
}

// Two nodes behind their sums over the rows above both.
[[gnu::always_inline]] inline void forward_triangles(const Node& a, const Node& b, int na, int nb, double* x, double* s,
                                                     double* t) {
#pragma GCC unroll 8
  for (int k = 0; k < na; ++k) {
    const double v = x[a.first + k] - s[k];
    x[a.first + k] = v;
#pragma GCC unroll 8
    for (int n = k + 1; n < na; ++n) s[n] = fused(a.column[n][a.first + k], v, s[n]);
#pragma GCC unroll 8
    for (int n = 0; n < nb; ++n) t[n] = fused(b.column[n][a.first + k], v, t[n]);
  }
  forward_triangle(b, nb, x, t);
}

void forward_two(const Node& a, const Node& b, long f, double* x, Ahead<1>& ahead) {
  double s[strip_rows], t[strip_rows];
  sum_above(a, b, x, f, s, t, ahead);
  ahead.fetch<3>();  // as fast in the triangles as above them
  if (a.count == strip_rows && b.count == strip_rows) return forward_triangles(a, b, strip_rows, strip_rows, x, s, t);
  forward_triangles(a, b, a.count, b.count, x, s, t);
}

void forward_one(const Node& a, long f, double* x, Ahead<1>& ahead) {
  NodeSums sums = begin_sums(a, x, f, a.first);
  go_on(sums, a, x, a.first, ahead);
  double s[strip_rows];
  store(s, sums.four, sums.two, 0);
  forward_triangle(a, a.count, x, s);
}

// Columns that reach prescribed rows, which are stepped over.
void forward_with_gaps(const ProfileColumns& K, const Node& a, long f, double* x) {
  for (int n = 0; n < a.count; ++n) {
    double s = 0.0;
    for_free_rows(K, larger(a.top, f), a.first + n - 1,
                  [&](int lo, int hi) { s = product_of(x, a.column[n], s, lo, hi); });
    x[a.first + n] -= s;
  }
}

void forward_of(const ProfileColumns& K, int r1, int r2, int f, double* x) {
  Node a, b;
  Ahead<1> ahead(K.values + K.IDIAG[r1], K.values + K.IDIAG[r2]);
  for (long c = r1; c <= r2; c += a.count) {
    node_from(a, K, c, r2);
    ahead.now_at(K.values + K.IDIAG[c], K.values + K.IDIAG[a.first + a.count - 1]);
    if (!all_free(K, a)) {
      forward_with_gaps(K, a, f, x);
      continue;
    }
    if (c + a.count <= r2) {
      node_from(b, K, c + a.count, r2);
      if (b.top <= a.first && all_free(K, b)) {
        ahead.now_at(K.values + K.IDIAG[c], K.values + K.IDIAG[b.first + b.count - 1]);
        forward_two(a, b, f, x, ahead);
        c += b.count;
        continue;
      }
    }
    forward_one(a, f, x, ahead);
  }
}
