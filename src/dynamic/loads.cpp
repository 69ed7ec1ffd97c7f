// The applied load of a dynamic step: what static analyses have left, and the records.
#include <algorithm>

#include "dynamic/commands.h"
#include "dynamic/parts.h"
#include "dynamic/sea_loads.h"
#include "dynamic/step.h"
#include "model/patterns.h"
#include "solve/arrays.h"
#include "static/segment.h"

namespace tidearc {

namespace {

double elapsed() { return response.TIME - dynamics.TSTART; }

/// P of all patterns at their accumulated factors, at the displacements U, becomes the static part PS.
void form_static_part() {
  LODLVL(ZERO);
  copy_vector(arrays.PS, arrays.P);
}

}  // namespace

bool static_loads_move() {
  for (int p = 0; p < static_loads.NMADE; ++p) {
    const auto i = static_cast<std::size_t>(p);
    const bool moves = patterns.type[i] == pattern_follower || patterns.type[i] == pattern_surface;
    if (moves && statics.accumulated[i] != ZERO) return true;
  }
  return false;
}

void form_first_load() {
  form_static_part();
  form_applied_load();
}

void form_applied_load() {
  if (dynamics.moving_loads) form_static_part();
  copy_vector(arrays.P, arrays.PS);
  add_wave_loads(dynamics.level, equation_vector(arrays.P));
  if (has_record_loads()) add_record_loads(elapsed(), dynamics.level, equation_vector(arrays.P));
}

void RDYNAM() {
  const TimedPhase timed("RDYNAM");
  form_applied_load();
  if (has_imposed()) form_imposed(elapsed(), equation_vector(arrays.XI));
}

}  // namespace tidearc
