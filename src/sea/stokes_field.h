// The fifth-order Stokes wave at a point (Skjelbreia and Hendrickson, Proc. 7th Conf. Coastal Engineering, 1960).
#pragma once

#include "sea/water_frame.h"
#include "sea/wave_constants.h"

namespace tidearc {

/// Motion at height s over the bed: local accelerations, so without the convective terms.
PlaneMotion stokes_motion(const StokesConstants& c, double s, double theta);

/// Elevation above mean water level.
double stokes_elevation(const StokesConstants& c, double theta);

}  // namespace tidearc
