// Reduction of a symmetric profile in packed panels.
#include "solve/packed.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "solve/kernels.h"
#include "solve/runs.h"
#include "solve/strips.h"

namespace tidearc {

namespace {

// What may be fetched ahead beside the packed columns in a second-level cache.
constexpr std::ptrdiff_t most_values_ahead = 64 * 1024;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// Columns that are reduced together, and where each of them stands.
struct ColumnPanel {
  int first = 0;  // first and last column
  int last = 0;
  int lowest = 0;  // lowest row that one of them reaches
  int groups = 0;
  std::array<int, panel_columns> place{};  // lane of column first + i, counted through all groups; -1 prescribed
};

struct LaneOrder {
  int top;
  int equation;
};

void begin_group(LaneGroup& group, const Profile<double>& K, const LaneOrder* lanes, int count) {
  group = LaneGroup{};
  group.join = lanes[0].top;
  group.all = lanes[count - 1].top;
  group.end = group.last = lanes[0].equation;
  for (int lane = 0; lane < count; ++lane) {
    const int c = lanes[lane].equation;
    group.top[lane] = lanes[lane].top;
    group.equation[lane] = c;
    group.column[lane] = rows_of(K, c);
    group.end = std::min(group.end, c);
    group.last = std::max(group.last, c);
  }
  if (count < group_lanes) group.end = 0;  // lanes without a column: nothing is packed or stored eight at once
  group.first_row = group.join - (strip_rows - 1);
}

// Memory for the packed rows of all groups, on the boundary of a cache line.
void place_groups(std::span<LaneGroup> groups, PanelMemory& memory) {
  std::size_t need = group_lanes;
  const auto length = [](const LaneGroup& group) {
    return at(group_lanes * (group.last + strip_rows + group_lanes - group.first_row));
  };
  for (const LaneGroup& group : groups) need += length(group);
  if (memory.values.size() < need) memory.values.resize(need + need / 4);
  const std::size_t past = reinterpret_cast<std::uintptr_t>(memory.values.data()) / sizeof(double) % group_lanes;
  double* next = memory.values.data() + (group_lanes - past) % group_lanes;
  for (LaneGroup& group : groups) {
    group.values = next;
    next += length(group);
  }
}

// The free columns among c..c + panel_columns - 1, sorted by first row into groups of eight.
ColumnPanel gather_columns(const Profile<double>& K, ConstIntegers MSTAT, int c, PanelMemory& memory) {
  ColumnPanel panel;
  panel.first = c;
  panel.last = std::min(c + panel_columns - 1, K.NEQ);
  panel.place.fill(-1);
  std::array<LaneOrder, panel_columns> order;
  int count = 0;
  for (int e = panel.first; e <= panel.last; ++e) {
    if (MSTAT(e) >= 1) continue;
    const int top = K.top(e);
    int lane = count++;  // columns of one node start at one row: few moves
    for (; lane > 0 && order[at(lane - 1)].top > top; --lane) order[at(lane)] = order[at(lane - 1)];
    order[at(lane)] = {top, e};
  }
  for (int lane = 0; lane < count; ++lane) panel.place[at(order[at(lane)].equation - panel.first)] = lane;
  for (int lane = 0; lane < count; lane += group_lanes) {
    begin_group(memory.groups[at(panel.groups++)], K, &order[at(lane)], std::min(group_lanes, count - lane));
  }
  if (count > 0) panel.lowest = order[0].top;
  place_groups({memory.groups.data(), at(panel.groups)}, memory);
  return panel;
}

// Prescribed rows become zero; rows of final values become values that are not divided.
void prepare_group(LaneGroup& group, const ReductionRange& range) {
  kernels->pack(group);
  for (int k = group.join; k <= group.last;) {
    const int link = range.MSTAT(k);
    const int end = std::min(link < 1 ? -link + 1 : link, group.last + 1);
    if (link >= 1) {
      double* const from = group.values + group_lanes * (k - group.first_row);
      std::fill(from, from + group_lanes * (end - k), 0.0);
    } else if (k < range.KROW0) {
      kernels->scale(group, range.D.data() - 1, k, std::min(end, range.KROW0) - 1);
    }
    k = end;
  }
}

void set_pivot(Strip& strip, int r, double pivot) {
  strip.pivot[r] = pivot;
  strip.reciprocal[r] = 1.0 / pivot;
}
void judge_pivots(Strip& strip) {
  strip.quick = true;
  for (int r = 0; r < strip.count; ++r) {
    const double size = std::abs(strip.pivot[r]);
    if (!(size >= smallest_divisor && size <= largest_divisor)) strip.quick = false;
  }
}

// A strip of final columns: its triangle and pivots come from them.
void fill_strip(Strip& strip) {
  if (strip.count == strip_rows && strip.common < strip.first) {  // a node of a frame
    for (int r = 0; r < strip_rows; ++r) {
      const double* const column = strip.column[r] + strip.first;
      for (int q = 0; q < r; ++q) strip.inner[q][r] = column[q];
      set_pivot(strip, r, column[r]);
    }
  } else {
    for (int r = 0; r < strip.count; ++r) {
      const double* const column = strip.column[r] + strip.first;
      for (int q = 0; q < r; ++q) strip.inner[q][r] = strip.first + q < strip.top[r] ? 0.0 : column[q];
      set_pivot(strip, r, column[r]);
    }
  }
  judge_pivots(strip);
}

// Values of the columns behind a panel, which are asked for while the panel is at work.
struct ComingColumns {
  const double* next = nullptr;
  const double* end = nullptr;
  std::ptrdiff_t step = 0;  // for each strip of this panel

  ComingColumns(const Profile<double>& K, const ColumnPanel& panel) {
    const double* const values = K.A.data();
    next = values + K.IDIAG(panel.last);
    end = values + K.IDIAG(std::min(panel.last + panel_columns, K.NEQ));
    if (end - next > most_values_ahead) end = next;
    step = (end - next) / ((panel.last - panel.lowest) / strip_rows + 1) + group_lanes;
  }
  void fetch() {
    const double* const stop = end - next < step ? end : next + step;
    for (; next < stop; next += group_lanes) __builtin_prefetch(next, 1, 2);
  }
};

// The reduction of one panel.
struct PanelReduction {
  const ColumnPanel& panel;
  const ReductionRange& range;
  PanelMemory& memory;
  ComingColumns coming;
  ZeroPivot zero{};  // first zero pivot that a column of the panel meets, and that column
  int zero_column = 0;
  int joined = 0;                                 // groups that have begun
  int count = 0;                                  // those of them that are not finished
  std::array<LaneGroup*, panel_groups> active{};  // these, in the order of their first rows

  // Groups that the strip reaches: the first rows rise from group to group.
  void join_groups(const Strip& strip) {
    while (joined < panel.groups && memory.groups[at(joined)].join < strip.first + strip.count) {
      active[at(count++)] = &memory.groups[at(joined++)];
    }
  }
  void drop_finished_groups(const Strip& strip) {
    const auto end = std::remove_if(active.begin(), active.begin() + count,
                                    [&](const LaneGroup* group) { return group->last <= strip.first; });
    count = static_cast<int>(end - active.begin());
  }

  // Notes the first column that is divided by a pivot of zero.
  void note_zero_pivots(const Strip& strip) {
    if (strip.quick) return;
    for (int r = 0; r < strip.count; ++r) {
      if (strip.pivot[r] == 0.0) note_zero_pivot(strip.first + r);
    }
  }
  void note_zero_pivot(int row) {
    for (int v = 0; v < panel.groups; ++v) {
      const LaneGroup& group = memory.groups[at(v)];
      for (int lane = 0; lane < group_lanes; ++lane) {
        const int c = group.equation[lane];
        if (c > row && group.top[lane] <= row && (zero_column == 0 || c < zero_column)) {
          zero_column = c;
          zero.equation = row;
        }
      }
    }
  }

  // Rows r1..r2 of final columns, all above the panel.
  void reduce_rows(const Profile<const double>& rows, int r1, int r2, bool divide) {
    double* const sums = memory.sums.data();
    for_free_runs(range.MSTAT, r1, r2, [&](int lo, int hi) {
      Strip strip;
      for (int r = lo; r <= hi; r += strip.count) {
        begin_strip(strip, rows, r, hi);
        fill_strip(strip);
        join_groups(strip);
        coming.fetch();
        kernels->sum_strip(strip, active.data(), count, sums);
        kernels->finish_strip(strip, active.data(), count, sums, divide);
        if (divide) note_zero_pivots(strip);
      }
    });
  }

  // Rows r1..r2 that are reduced and not yet divided.
  void divide_rows(int r1, int r2) {
    for_free_runs(range.MSTAT, r1, r2, [&](int lo, int hi) {
      Strip strip{};
      for (int r = lo; r <= hi; r += strip_rows) {
        strip.first = r;
        strip.count = std::min(strip_rows, hi - r + 1);
        for (int q = 0; q < strip.count; ++q) set_pivot(strip, q, range.D(r + q));
        judge_pivots(strip);
        join_groups(strip);
        memory.sums.fill(0.0);
        kernels->finish_strip(strip, active.data(), count, memory.sums.data(), true);
        note_zero_pivots(strip);
      }
    });
  }

  // The rows of the panel itself: each strip is factored before the columns behind it are divided.
  void reduce_own_rows(const Profile<double>& K) {
    for_free_runs(range.MSTAT, panel.first, panel.last, [&](int lo, int hi) {
      Strip strip;
      for (int r = lo; r <= hi; r += strip.count) {
        begin_strip(strip, K, r, hi);
        join_groups(strip);
        drop_finished_groups(strip);
        coming.fetch();
        reduce_own_strip(strip);
      }
    });
  }
  void reduce_own_strip(Strip& strip) {
    double* const sums = memory.sums.data();
    kernels->sum_strip(strip, active.data(), count, sums);
    std::array<OwnLane, strip_rows> own;
    for (int r = 0; r < strip.count; ++r) {
      const int place = panel.place[at(strip.first + r - panel.first)];
      LaneGroup* const group = &memory.groups[at(place / group_lanes)];
      const auto slot = std::find(active.begin(), active.begin() + count, group) - active.begin();
      own[at(r)] = {group, sums + tile_size * slot, place % group_lanes};
    }
    kernels->factor_strip(strip, own.data());
    for (int r = 0; r < strip.count; ++r) {
      set_pivot(strip, r, strip.pivot[r]);
      range.D(strip.first + r) = strip.pivot[r];
    }
    judge_pivots(strip);
    kernels->finish_strip(strip, active.data(), count, sums, true);
    note_zero_pivots(strip);
  }
};

PanelReduction begin_panel(const Profile<double>& K, const ColumnPanel& panel, const ReductionRange& range,
                           PanelMemory& memory) {
  for (int v = 0; v < panel.groups; ++v) prepare_group(memory.groups[at(v)], range);
  return {panel, range, memory, ComingColumns(K, panel)};
}

}  // namespace

void reduce_against(const Profile<double>& target, const Profile<const double>& source, const ReductionRange& range) {
  PanelMemory& memory = panel_memory;
  for (int c = std::max(target.first, range.KFIRST); c <= target.NEQ; c += panel_columns) {
    const ColumnPanel panel = gather_columns(target, range.MSTAT, c, memory);
    const int r1 = std::max({panel.lowest, range.KROW0, source.first});
    if (panel.groups == 0 || r1 > source.NEQ) continue;
    begin_panel(target, panel, range, memory).reduce_rows(source, r1, source.NEQ, false);
  }
}

ZeroPivot reduce_panels_within(const Profile<double>& K, const ReductionRange& range) {
  PanelMemory& memory = panel_memory;
  for (int c = std::max(K.first, range.KFIRST); c <= K.NEQ; c += panel_columns) {
    const ColumnPanel panel = gather_columns(K, range.MSTAT, c, memory);
    if (panel.groups == 0) continue;
    PanelReduction reduction = begin_panel(K, panel, range, memory);
    const int r1 = std::max(panel.lowest, range.KROW0);
    reduction.divide_rows(r1, K.first - 1);
    reduction.reduce_rows(K, std::max(r1, K.first), panel.first - 1, true);
    reduction.reduce_own_rows(K);
    if (reduction.zero.equation != 0) {
      const int row = reduction.zero.equation;
      return {row >= K.first ? K.IDIAG(row) : 0, row};
    }
  }
  return {};
}

}  // namespace tidearc
