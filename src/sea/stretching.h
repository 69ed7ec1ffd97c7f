// Current profiles carried up and down with the surface: from the depth of a point to the level of the table that holds
// there.
#pragma once

#include "sea/field.h"
#include "sea/wave_state.h"

namespace tidearc {

/// Straight stretching: the surface takes level 0, the bed level d, in proportion between.
inline double linear_level(double h, double eta, double d) { return d - (d - h) * d / (eta + d); }

struct StretchedLevel {
  double level;    ///< depth in the table                                                        [length]
  bool converged;  ///< only a point exactly in the surface is: the search is not left before its tenth pass otherwise
};

/// Stretching that decays with depth like the orbits of a wave of length L: the level -z with
/// z + h + eta sinh(2 pi (d + z)/L)/sinh(2 pi d/L) = 0, by ten passes of false position over -d .. 0.
StretchedLevel nonlinear_level(double h, double eta, double d, double L);

/// Whether the current asks for the elevation of the surface at all.
inline bool current_follows_surface(MotionParts parts) {
  return !parts.wave_only && wave.current_code == 1 && (wave.current_stretching == 2 || wave.current_stretching == 3);
}

}  // namespace tidearc
