// The value of a record at a time, and of a sine function.
#include "model/record_points.h"

#include <cmath>

#include "model/control.h"
#include "model/records.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

/// A time that was summed up step by step may miss the last point by rounding: part of the last interval that is let
/// through.
constexpr double end_tolerance = 1.0e-6;
constexpr double two_pi = 6.283185307179586;
constexpr double full_circle = 360.0;  // degrees

/// The last point whose time is not above t, 0 when there is none.
int last_not_above(const RecordPoints& points, double t) {
  int low = 0;
  int high = points.count + 1;
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    (points.t(middle) <= t ? low : high) = middle;
  }
  return low;
}

bool counts_as_last(const RecordPoints& points, double t) {
  const int n = points.count;
  const double interval = n > 1 ? points.t(n) - points.t(n - 1) : 0.0;
  return t - points.t(n) <= end_tolerance * interval;
}

}  // namespace

double value_at(const RecordPoints& points, double t, OutsideSpan outside) {
  const int n = points.count;
  if (n < 1) return 0.0;
  const bool held = outside == OutsideSpan::held;
  const int i = last_not_above(points, t);
  if (i == 0) return held ? points.v(1) : 0.0;
  if (i == n) return held || counts_as_last(points, t) ? points.v(n) : 0.0;
  const double part = (t - points.t(i)) / (points.t(i + 1) - points.t(i));
  return points.v(i) + (points.v(i + 1) - points.v(i)) * part;
}

double sine_value(const SineWave& wave, double t) {
  const double phase = wave.phase / full_circle * two_pi;
  const double oscillation = std::sin(two_pi * t / wave.period + phase);
  if (t < wave.ramp) return wave.amplitude * t * oscillation / wave.ramp + wave.mean;
  return wave.amplitude * oscillation + wave.mean;
}

double record_value(RecordKind kind, int number, double record_time) {
  if (!record_exists(kind, number)) return 0.0;
  constexpr int first_column = 3;
  const RecordTable& table = record_table(kind);
  const int filled = pool.integers(table.points, table.rows)(number);
  if (filled < first_column) return 0.0;
  const int columns = dynamic_loads.MXPNT;
  const RealTable times = pool.reals(table.time, table.rows, columns);
  const RealTable values = pool.reals(table.value, table.rows, columns);
  const RecordPoints points{&times(number, first_column), &values(number, first_column), table.rows,
                            filled - (first_column - 1)};
  const bool held = kind == RecordKind::displacement;
  return value_at(points, record_time, held ? OutsideSpan::held : OutsideSpan::zero);
}

}  // namespace tidearc
