// The wave force magnification cards.
#pragma once

namespace tidearc {

/// Reads and prints `NORAMP` rows of time and multiplier into force_scale; none for a count below 1. More than the
/// table holds ends the run.
void read_force_scale(int NORAMP);

}  // namespace tidearc
