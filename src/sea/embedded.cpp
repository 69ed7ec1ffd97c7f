// A stream function wave embedded in an irregular sea: around the peak time the sea is the wave, away from it the
// components, and between them a blend of both.
#include "sea/embedded.h"

#include <cmath>
#include <numbers>

#include "sea/stretching.h"
#include "sea/surface_cut.h"
#include "sea/water_frame.h"

namespace tidearc {

namespace {

double blend(double weight, double of_wave, double of_sea) { return weight * of_wave + (1.0 - weight) * of_sea; }

/// Velocity and acceleration of both seas, without the current.
void blend_motions(double weight, const Point& at, double time, double lower_current, WaterMotion& motion) {
  constexpr MotionParts wave_only{.wave_only = true};
  WaterMotion sea;
  SFNVEL(at, time, lower_current, wave_only, motion);
  IRRVEL(at, time, lower_current, wave_only, sea);
  for (std::size_t i = 0; i < 3; ++i) {
    motion.velocity[i] = blend(weight, motion.velocity[i], sea.velocity[i]);
    motion.acceleration[i] = blend(weight, motion.acceleration[i], sea.acceleration[i]);
  }
}

}  // namespace

double blending_weight(double r) {
  if (r <= 0.5) return 1.0;
  if (r < 0.75) return 0.5 + 0.5 * std::cos(4.0 * std::numbers::pi * (r - 0.5));
  return 0.0;
}

double embedded_weight(double time) { return blending_weight(std::abs(time - wave.peak_time) / wave.T_water); }

double embedded_surface(double time, const Point& at) {
  const double weight = embedded_weight(time);
  if (weight == 1.0) return SFNETA(time, at);
  if (weight == 0.0) return IRRETA(time, at);
  return blend(weight, SFNETA(time, at), IRRETA(time, at));
}

void embedded_motion(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  const double weight = embedded_weight(time);
  if (weight == 1.0) return SFNVEL(at, time, lower_current, parts, motion);
  if (weight == 0.0) return IRRVEL(at, time, lower_current, parts, motion);
  motion = {};
  if (!parts.current_only) blend_motions(weight, at, time, lower_current, motion);
  // The current comes once, stretched to the surface of both.
  const double elevation = elevation_of(at);
  const bool stretched = current_follows_surface(parts);
  const double eta = stretched ? -depth_of(embedded_surface(time, at)) : 0.0;
  add_current(depth_of(elevation), eta, elevation, lower_current, parts, motion.velocity);
}

WavePressure embedded_pressure(double surface, const Point& at, double time) {
  const double weight = embedded_weight(time);
  if (weight == 1.0) return SFNPRS(surface, at, time);
  if (weight == 0.0) return IRRPRS(surface, at, time);
  const WavePressure of_wave = SFNPRS(surface, at, time);
  const WavePressure of_sea = IRRPRS(surface, at, time);
  return {blend(weight, of_wave.total, of_sea.total), blend(weight, of_wave.dynamic, of_sea.dynamic)};
}

Point embedded_cut(const Point& A, const Point& B, double time) { return surface_cut(embedded_surface, A, B, time); }

}  // namespace tidearc
