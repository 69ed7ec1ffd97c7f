// Tiles of six rows by lane groups of eight columns, compiled once for each kind of vector unit. To be included by
// solve/kernels_*.cpp alone, each with its own
//   Lanes                                  eight doubles
//   tile_groups                            lane groups of one tile: as many as its registers hold accumulators for
//   load, store, broadcast, fused(x, y, s) = x * y + s rounded once, minus, times
//   quick_quotient(g, d, y)                g / d from y = 1 / d, right to the last bit where sizes are safe
//   Sizes                                  collects dividends; safe() when a reciprocal serves all of them
//   pack_rows(group, k, to)                rows k..k+7 of the eight columns, zero where a column has none
//   store_rows<R>(x, group, k)             packed rows k..k+R-1 to the rows that each column has

int larger(int a, int b) { return a > b ? a : b; }
int smaller(int a, int b) { return a < b ? a : b; }
long larger(long a, long b) { return a > b ? a : b; }
long smaller(long a, long b) { return a < b ? a : b; }

// Calls act with the number of columns of a strip as a constant that the compiler knows.
template <int N>
struct Columns {};
template <class Act>
[[gnu::always_inline]] inline void with_columns(int count, Act&& act) {
  switch (count) {
    case 1:
      return act(Columns<1>{});
    case 2:
      return act(Columns<2>{});
    case 3:
      return act(Columns<3>{});
    case 4:
      return act(Columns<4>{});
    case 5:
      return act(Columns<5>{});
    default:
      return act(Columns<strip_rows>{});
  }
}

double* packed_row(const LaneGroup& group, int k) {
  return group.values + static_cast<long>(group_lanes) * (k - group.first_row);
}

// Sums over `count` rows of R columns of a strip by G lane groups. The sums of the first `begun` groups go on from
// those in memory, the others begin at zero.
template <int R, int G>
void run_tile(const double* const* column, const double* const* group, int count, double* sums, int begun) {
  Lanes s[R][G];
#pragma GCC unroll 8
  for (int v = 0; v < G; ++v) {
    if (v < begun) {
#pragma GCC unroll 8
      for (int r = 0; r < R; ++r) s[r][v] = load(sums + tile_size * v + group_lanes * r);
    } else {
#pragma GCC unroll 8
      for (int r = 0; r < R; ++r) s[r][v] = broadcast(0.0);
    }
  }
#pragma GCC unroll 2
  for (long k = 0; k < count; ++k) {
    Lanes x[G];
#pragma GCC unroll 8
    for (int v = 0; v < G; ++v) x[v] = load(group[v] + group_lanes * k);
#pragma GCC unroll 8
    for (int r = 0; r < R; ++r) {
      const Lanes l = broadcast(column[r][k]);
#pragma GCC unroll 8
      for (int v = 0; v < G; ++v) s[r][v] = fused(x[v], l, s[r][v]);
    }
  }
#pragma GCC unroll 8
  for (int r = 0; r < R; ++r) {
#pragma GCC unroll 8
    for (int v = 0; v < G; ++v) store(sums + tile_size * v + group_lanes * r, s[r][v]);
  }
}

template <int G>
void run_rows(int rows, const double* const* column, const double* const* group, int count, double* sums, int begun) {
  with_columns(rows, [&]<int N>(Columns<N>) { run_tile<N, G>(column, group, count, sums, begun); });
}

// Rows from..to of a strip's columns by the first G groups of a tile. Returns how many of its groups have begun.
template <int G>
int run_segment(const Strip& strip, const LaneGroup* const* groups, int from, int to, double* sums, int begun) {
  if (to < from) return begun;
  const double* column[strip_rows];
  for (int r = 0; r < strip.count; ++r) column[r] = strip.column[r] + from;
  const double* packed[G];
  for (int v = 0; v < G; ++v) packed[v] = packed_row(*groups[v], from);
  run_rows<G>(strip.count, column, packed, to - from + 1, sums, begun);
  return larger(begun, G);
}

void clear_sums(double* sums, int groups) {
  for (int i = 0; i < tile_size * groups; i += group_lanes) store(sums + i, broadcast(0.0));
}

// Columns of a strip that start above the others run alone until all have joined.
void sum_ragged_rows(const Strip& strip, const LaneGroup* const* groups, int count, double* sums) {
  clear_sums(sums, count);
  for (int r = 0; r < strip.count; ++r) {
    for (int v = 0; v < count; ++v) {
      const int from = larger(strip.top[r], groups[v]->join);
      if (from >= strip.common) continue;
      const double* const column = strip.column[r] + from;
      const double* const packed = packed_row(*groups[v], from);
      run_tile<1, 1>(&column, &packed, strip.common - from, sums + tile_size * v + group_lanes * r, 1);
    }
  }
}

// One tile: each lane group joins at its own first row, the groups being in the order of these.
void sum_tile(const Strip& strip, const LaneGroup* const* groups, int count, double* sums) {
  const int last = strip.first - 1;
  if (!strip.ragged && count == tile_groups && groups[tile_groups - 1]->join <= strip.common && strip.common <= last) {
    run_segment<tile_groups>(strip, groups, strip.common, last, sums, 0);
    return;
  }
  int begun = 0;
  if (strip.ragged) {
    sum_ragged_rows(strip, groups, count, sums);
    begun = count;
  }
  int from[tile_groups + 1];
  for (int v = 0; v < count; ++v) from[v] = larger(strip.common, groups[v]->join);
  from[count] = strip.first;
  begun = run_segment<1>(strip, groups, from[0], smaller(from[1] - 1, last), sums, begun);
  if constexpr (tile_groups > 1) {
    if (count > 1) begun = run_segment<2>(strip, groups, from[1], smaller(from[2] - 1, last), sums, begun);
  }
  if constexpr (tile_groups > 2) {
    if (count > 2) begun = run_segment<3>(strip, groups, from[2], last, sums, begun);
  }
  if (begun < count) clear_sums(sums + tile_size * begun, count - begun);
}

// In tiles as wide as they go; four groups make two tiles of two.
void sum_strip_of(const Strip& strip, const LaneGroup* const* groups, int count, double* sums) {
  for (int v = 0; v < count;) {
    const int left = count - v;
    const int width = left == 4 && tile_groups == 3 ? 2 : smaller(tile_groups, left);
    sum_tile(strip, groups + v, width, sums + tile_size * v);
    v += width;
  }
}

// The strip's own columns, one entry after the other.
void factor_strip_of(Strip& strip, const OwnLane* own) {
  for (int c = 0; c < strip.count; ++c) {
    LaneGroup& group = *own[c].group;
    const int lane = own[c].lane;
    const double* packed = packed_row(group, strip.first) + lane;
    double* column = group.column[lane] + strip.first;
    double value[strip_rows];
    double diagonal = group.diagonal[lane];
    for (int r = 0; r < c; ++r) {
      value[r] = strip.inner[r][c] = 0.0;
      if (strip.first + r < group.top[lane]) continue;
      double s = own[c].sums[group_lanes * r + lane];
      for (int q = 0; q < r; ++q) s = fused(value[q], strip.inner[q][r], s);
      value[r] = packed[group_lanes * r] - s;
      const double t = value[r] / strip.pivot[r];
      diagonal = fused(value[r], t, diagonal);
      strip.inner[r][c] = t;
      column[r] = t;
    }
    column[c] -= diagonal;
    strip.pivot[c] = column[c];
  }
}

// Any pivot, any size: zero where a column does not reach the row, and so is not divided.
void divide_one_by_one(const Strip& strip, const LaneGroup& group, int q, double* x) {
  for (int lane = 0; lane < group_lanes; ++lane) {
    x[lane] = strip.first + q < group.top[lane] ? 0.0 : x[lane] / strip.pivot[q];
  }
}

// Divides R packed rows by the strip's pivots and counts them in the diagonal sums.
template <int R>
void divide_rows(const Strip& strip, LaneGroup& group, Lanes* x) {
  Sizes sizes;
  Lanes t[R];
#pragma GCC unroll 8
  for (int q = 0; q < R; ++q) {
    sizes.add(x[q]);
    t[q] = quick_quotient(x[q], strip.pivot[q], strip.reciprocal[q]);
  }
  if (!strip.quick || !sizes.safe()) [[unlikely]] {
    for (int q = 0; q < R; ++q) {
      double row[group_lanes];
      store(row, x[q]);
      divide_one_by_one(strip, group, q, row);
      t[q] = load(row);
    }
  }
  Lanes diagonal = load(group.diagonal);
#pragma GCC unroll 8
  for (int q = 0; q < R; ++q) {
    diagonal = fused(x[q], t[q], diagonal);
    x[q] = t[q];
  }
  store(group.diagonal, diagonal);
}

template <int R>
void finish_group(const Strip& strip, LaneGroup& group, const double* sums, bool divide) {
  double* packed = packed_row(group, strip.first);
  Lanes s[R];
  Lanes x[R];
#pragma GCC unroll 8
  for (int r = 0; r < R; ++r) s[r] = load(sums + group_lanes * r);
#pragma GCC unroll 8
  for (int q = 0; q < R; ++q) {
    x[q] = minus(load(packed + group_lanes * q), s[q]);
    store(packed + group_lanes * q, x[q]);
#pragma GCC unroll 8
    for (int r = q + 1; r < R; ++r) s[r] = fused(x[q], broadcast(strip.inner[q][r]), s[r]);
  }
  if (divide) divide_rows<R>(strip, group, x);
  store_rows<R>(x, group, strip.first);
}

template <int R>
void finish_groups(const Strip& strip, LaneGroup* const* groups, int count, const double* sums, bool divide) {
  for (int v = 0; v < count; ++v) finish_group<R>(strip, *groups[v], sums + tile_size * v, divide);
}

void finish_strip_of(const Strip& strip, LaneGroup* const* groups, int count, const double* sums, bool divide) {
  with_columns(strip.count, [&]<int N>(Columns<N>) { finish_groups<N>(strip, groups, count, sums, divide); });
}

// Whole blocks of eight rows: a group has room for them.
void pack_of(LaneGroup& group) {
  for (int k = group.first_row; k < group.last + strip_rows; k += group_lanes) {
    pack_rows(group, k, packed_row(group, k));
  }
}

void scale_of(LaneGroup& group, const double* D, int r1, int r2) {
  Lanes diagonal = load(group.diagonal);
  for (int k = r1; k <= r2; ++k) {
    double* const packed = packed_row(group, k);
    const Lanes L = load(packed);
    const Lanes value = times(L, broadcast(D[k]));
    diagonal = fused(value, L, diagonal);
    store(packed, value);
  }
  store(group.diagonal, diagonal);
}
