// Elevations between which the sea acts on members, for regular waves and for current alone.
#include "sea/wave_limits.h"

#include "sea/current_input.h"
#include "sea/wave_state.h"

namespace tidearc {

void set_regular_limits() {
  wave.mudline = wave.MWL + wave.sg * wave.d;
  if (wave.upper_force == 0.0) wave.upper_force = wave.MWL - wave.sg * wave.H;
  const bool below_mudline = wave.sg * (wave.lower_force - wave.mudline) > 0.0;
  if (wave.lower_force == 0.0 || below_mudline) wave.lower_force = wave.mudline;
  if (wave.current_code != 1) wave.lower_current = wave.lower_force;
}

void set_current_limits() {
  wave.d = deepest_current_level();
  wave.current_stretching = 1;
  wave.mudline = wave.MWL + wave.sg * wave.d;
  wave.upper_force = wave.MWL;
  wave.lower_force = wave.mudline;
  wave.lower_current = wave.mudline;
}

}  // namespace tidearc
