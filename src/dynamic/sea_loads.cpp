// The loads of waves and moving currents in a dynamic analysis: once for each analysis time.
//
// The load of a time belongs to the motion of the state from which the step starts; iterations and substeps use it
// again. An analysis that does not move the structure (ISLULT) so keeps the motion of its start.
#include "dynamic/sea_loads.h"

#include <cmath>

#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "run/vectors.h"
#include "sea/field.h"
#include "sea/grid.h"
#include "sea/members/member.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

/// The first equation whose wave load is not finite, the one of constrained components included; 0: none.
int find_bad_equation() {
  const Reals W = equation_vector(arrays.WAVE);
  for (int e = 1; e <= NEQ1(); ++e)
    if (!std::isfinite(W(e))) return e;
  return 0;
}

void form_wave_load(bool lines) {
  CURNOW(response.TIME);
  if (dynamics.NS > 0) next_grid_group(dynamics.NS);
  form_wave_loads(response.TIME, lines, arrays.WAVE);
  dynamics.bad_wave_equation = find_bad_equation();
  dynamics.wave_time = response.TIME;
  dynamics.wave_formed = true;
}

}  // namespace

bool waves_act() { return wave.IWTY != wave_none; }

void begin_wave_loads(bool lines) {
  dynamics.wave_formed = false;
  dynamics.bad_wave_equation = 0;
  load_files.wanted = lines;
  if (waves_act()) start_grid_steps();
}

void add_wave_loads(double level, Reals P) {
  if (!waves_act()) return;
  sea_factors.wave = level;
  if (!dynamics.wave_formed || dynamics.wave_time != response.TIME) form_wave_load(load_lines_due(response.TIME));
  const Reals W = equation_vector(arrays.WAVE);
  for (int e = 1; e <= NEQ1(); ++e) P(e) += level * W(e);
}

void return_wave_loads() {
  if (waves_act() && dynamics.wave_time != response.TIME) form_wave_load(false);
}

}  // namespace tidearc
