// Packing and storing one lane after the other, for vector units without a transposition of their own. To be included
// by solve/kernels_*.cpp alone.

void pack_lanes(const LaneGroup& group, int k, double* to) {
  for (int row = 0; row < group_lanes; ++row) {
    for (int lane = 0; lane < group_lanes; ++lane) {
      const bool held = k + row >= group.top[lane] && k + row < group.equation[lane];
      to[group_lanes * row + lane] = held ? group.column[lane][k + row] : 0.0;
    }
  }
}

template <int R>
void store_lanes(const Lanes* x, const LaneGroup& group, int k) {
  double rows[R * group_lanes];
  for (int row = 0; row < R; ++row) store(rows + group_lanes * row, x[row]);
  for (int lane = 0; lane < group_lanes; ++lane) {
    const int below = group.top[lane] - k, above = group.equation[lane] - k;
    for (int row = below > 0 ? below : 0; row < (above < R ? above : R); ++row) {
      group.column[lane][k + row] = rows[group_lanes * row + lane];
    }
  }
}
