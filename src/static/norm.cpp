// The unbalance of a load step: its norm, its largest entries, and whether its state is finite.
#include "solve/norm.h"

#include <cmath>

#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

void measure_unbalance() {
  const UnbalanceNorm norm = unbalance_norm({segment.KUTYPE, segment.KUMOM});
  response.RNORM = norm.unbalance;
  step.APPLIED = norm.applied;
}

void write_top_unbalances() {
  if (segment.NTOP < 1) return;
  write(UNIT_TOP, "I5", step.NS);
  write_largest_unbalances(segment.NTOP);
}

bool state_is_finite(int& bad_equation) {
  // A displacement that is lost spoils the forces of its neighbours, so displacements are looked at first.
  bad_equation = first_bad_equation({arrays.U, arrays.R, arrays.RU});
  return bad_equation == 0 && std::isfinite(response.RNORM) && std::isfinite(response.LEVEL);
}

}  // namespace tidearc
