// Stream function waves: the iteration and what it says on the report.
#pragma once

#include "sea/stream_function.h"

namespace tidearc {

enum class StreamStatus : int {
  solved = 0,      ///< within the tolerance, or all iterations done without divergence
  restart = 1,     ///< diverging; to be started again with the damping that was lowered
  impossible = 2,  ///< diverging with the least damping
};

/// Up to `iterations` damped steps from the start of an attempt, then one evaluation without a step; ends when the sum
/// of the errors is within H / 10000, unless `force_all`. A sum above that of the first pass is divergence: the
/// damping, kept in tenths so that five times one tenth leaves nothing, falls by one.
StreamStatus SFITER(StreamWave& solved, int iterations, bool force_all, int& damping_tenths);

/// Length of a linear wave; writes the line with the count of Newton steps.
void SFLEN(double tolerance, int iterations, double T, double d, double g, double& length);

}  // namespace tidearc
