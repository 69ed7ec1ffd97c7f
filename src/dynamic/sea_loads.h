// The loads of waves and moving currents in a dynamic analysis: once for each analysis time.
#pragma once

#include "run/views.h"

namespace tidearc {

/// At the start of a macro: the wave load of its first time is formed anew; `lines`: load lines and member loads are
/// written (KRISAV).
void begin_wave_loads(bool lines);

/// Adds level times the wave load of TIME to P (NEQ1). The load is formed at the first call for a time, from the motion
/// of the accepted state (U, VEL, ACC); later calls for the same time add the same load. No effect without waves.
void add_wave_loads(double level, Reals P);

/// A step has been dropped: TIME is that of the accepted state again, and so are the wave loads of the elements.
void return_wave_loads();

/// True when the deck has a wave or a moving current.
bool waves_act();

}  // namespace tidearc
