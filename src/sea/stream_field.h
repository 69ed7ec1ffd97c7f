// The stream function wave at a point (Dean, J. Geophysical Research 70, 1965).
//
// In the frame of the crest psi = (C - U) z + sum of X(n+1) sinh(n k (d + z)) cos(n phi), the velocity relative to it
// (-dpsi/dz, dpsi/dx). Kinematics take the phase with its sign; the surface, which is even, is a table over half a
// wave.
#pragma once

#include <optional>
#include <span>

#include "sea/water_frame.h"
#include "sea/wave_constants.h"

namespace tidearc {

/// Motion at height s over the bed: total accelerations, those of the water that passes there.
PlaneMotion stream_motion(const StreamConstants& c, double s, double phi);

/// A fraction of a period folded to 0 .. 0.5, crest to trough.
double folded_fraction(double f);

/// Elevation at a folded fraction by straight lines between the points of the table, which are equally spaced over half
/// a wave; nothing when no interval holds the fraction.
std::optional<double> table_elevation(std::span<const double> eta, double f);

/// Elevation above mean water level over x along the wave. A fraction outside the table ends in the close-down.
double stream_elevation(double time, double x);

}  // namespace tidearc
