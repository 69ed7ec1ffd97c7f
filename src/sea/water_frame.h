// From global points to the plane of the wave and back: what every family does before and behind its sums.
#pragma once

#include "sea/field.h"
#include "sea/wave_state.h"

namespace tidearc {

/// Motion in the vertical plane of the wave: u, a along its direction, w, b upward.
struct PlaneMotion {
  double u;  ///< velocities                                                                   [length/s]
  double w;
  double a;  ///< accelerations                                                                [length/s2]
  double b;
};

inline double elevation_of(const Point& at) { return at[static_cast<std::size_t>(wave.vertical - 1)]; }

inline double dot(const Point& p, const Point& q) { return p[0] * q[0] + p[1] * q[1] + p[2] * q[2]; }

/// x: distance of a point from the origin, along the wave.
inline double along_wave(const Point& at) { return dot(at, wave.direction); }

/// Global elevation of a surface that stands `eta` above mean water level.
inline double global_elevation(double eta) { return wave.MWL - wave.sg * eta; }

/// Wheeler's stretching: the height over the bed at which the series is taken, so that the surface takes the value of
/// the mean level (Wheeler, J. Petroleum Technology, 1970).
inline double stretched_height(double s, double d, double eta) { return s * d / (d + eta); }

/// Pressure of water at rest at depth h.
inline double static_pressure(double h) { return wave.rho * wave.g * h; }

/// Pressure at depth h by Bernoulli's equation in the frame of the crest, in which the water moves with u along the
/// wave and w upward.
inline WavePressure bernoulli_pressure(double h, double u, double w, double time) {
  const double dynamic = ramp_factor(time) * wave.rho * wave.g * (wave.Q - (u * u + w * w) / (2.0 * wave.g));
  return {static_pressure(h) + dynamic, dynamic};
}

/// A point above the surface has no pressure; one in it has.
inline bool is_above(const Point& at, double surface) { return depth_of(elevation_of(at)) < depth_of(surface); }

/// Writes the motion of the wave in global axes. Horizontal parts take the kinematic factor; "upward" is against
/// gravity, whichever axis that is.
inline void write_motion(const PlaneMotion& plane, WaterMotion& motion) {
  const double u = plane.u * wave.kinematic_factor;
  const double a = plane.a * wave.kinematic_factor;
  for (std::size_t i = 0; i < 3; ++i) {
    motion.velocity[i] = u * wave.direction[i] - plane.w * wave.gravity[i];
    motion.acceleration[i] = a * wave.direction[i] - plane.b * wave.gravity[i];
  }
}

}  // namespace tidearc
