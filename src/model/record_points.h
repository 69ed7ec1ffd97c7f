// Functions of time: points with straight lines between them, and the sine function of sine records. No blocks.
#pragma once

#include <cstddef>

namespace tidearc {

/// Points of one record, `stride` reals apart, in rising order of time (equal times are a jump).
struct RecordPoints {
  const double* time = nullptr;
  const double* value = nullptr;
  std::ptrdiff_t stride = 1;
  int count = 0;

  double t(int i) const { return time[(i - 1) * stride]; }  ///< 1-based
  double v(int i) const { return value[(i - 1) * stride]; }
};

enum class OutsideSpan { zero, held };
/// Value at time t, see record_value.
double value_at(const RecordPoints& points, double t, OutsideSpan outside);

/// mean + amplitude sin(2 pi t / period + phase); before the end of the ramp the oscillation, not the mean, is
/// multiplied by t / ramp.
struct SineWave {
  double period = 0.0;     ///< not 0                  [s]
  double phase = 0.0;      ///< lead                   [degrees]
  double amplitude = 0.0;  ///< [model units]
  double mean = 0.0;       ///< [model units]
  double ramp = 0.0;       ///< duration, 0: none      [s]
};
double sine_value(const SineWave& wave, double t);

}  // namespace tidearc
