// The linear wave at a point (Airy; e.g. Dean and Dalrymple, Water Wave Mechanics for Engineers and Scientists, ch. 3).
#pragma once

#include "sea/water_frame.h"
#include "sea/wave_constants.h"

namespace tidearc {

/// Motion at height s over the bed, where the phase has this cosine and sine: local accelerations.
PlaneMotion airy_motion(const AiryConstants& c, double s, double cosine, double sine);

/// Dynamic pressure at height s over that of the surface at mean level: cosh(k s) / cosh(k d).
double airy_pressure_ratio(const AiryConstants& c, double s);

/// Elevation above mean water level over x along the wave; also what Stokes waves stretch the current by.
double airy_elevation(double time, double x);

}  // namespace tidearc
