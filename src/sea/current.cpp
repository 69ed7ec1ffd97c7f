// The current table in time and over depth.
#include <algorithm>
#include <cstddef>

#include "run/workpool.h"
#include "sea/field.h"

namespace tidearc {

namespace {

/// The table as the wave section laid it into the work array: times, then levels, then vectors, slice by slice.
struct CurrentTable {
  Vector<double> time;
  RealTable level;   ///< (NLEVEL, NTIME)
  RealTable vector;  ///< (3 NLEVEL, NTIME)
};

CurrentTable current_table() {
  const int NTIME = wave.NTIME, NLEVEL = wave.NLEVEL;
  const int levels = wave.KCURT + 2 * NTIME;
  return {pool.reals(wave.KCURT, NTIME), pool.reals(levels, NLEVEL, NTIME),
          pool.reals(levels + 2 * NLEVEL * NTIME, 3 * NLEVEL, NTIME)};
}

/// out = first + r (last - first).
void interpolate(const Vector<double>& first, const Vector<double>& last, double r, int count, std::span<double> out) {
  for (int i = 1; i <= count; ++i) out[static_cast<std::size_t>(i - 1)] = first(i) + r * (last(i) - first(i));
}

void take_slices(const CurrentTable& table, int first, int last, double r) {
  interpolate(table.level.column(first), table.level.column(last), r, current_now.NLEVEL, current_now.level);
  interpolate(table.vector.column(first), table.vector.column(last), r, 3 * current_now.NLEVEL, current_now.vector);
}

}  // namespace

void CURNOW(double time) {
  if (wave.current_code != 1 || wave.NTIME < 1 || wave.NLEVEL < 1) return;
  const CurrentTable table = current_table();
  current_now.time = time;
  current_now.NLEVEL = std::min(wave.NLEVEL, most_now_levels);
  int above = 1;
  while (above <= wave.NTIME && !(table.time(above) > time)) ++above;
  if (above == 1 || above > wave.NTIME) {
    const int slice = above == 1 ? 1 : wave.NTIME;
    take_slices(table, slice, slice, 0.0);
    return;
  }
  const double before = table.time(above - 1);
  take_slices(table, above - 1, above, (time - before) / (table.time(above) - before));
}

void CURADD(std::span<const double> levels, std::span<const double> vectors, double level, Point& velocity) {
  if (levels.size() < 2) return;
  std::size_t i = 1;
  while (i + 1 < levels.size() && levels[i] < level) ++i;
  const double thickness = levels[i] - levels[i - 1];
  const double r = thickness == 0.0 ? 1.0 : (level - levels[i - 1]) / thickness;
  for (std::size_t c = 0; c < 3; ++c) {
    const double above = vectors[3 * (i - 1) + c];
    velocity[c] += above + r * (vectors[3 * i + c] - above);
  }
}

void CURADD(double level, Point& velocity) {
  const auto n = static_cast<std::size_t>(current_now.NLEVEL);
  CURADD(std::span(current_now.level).first(n), std::span(current_now.vector).first(3 * n), level, velocity);
}

}  // namespace tidearc
