// Airy waves: surface, kinematics, pressure, surface cut.
#include "sea/airy_field.h"

#include <cmath>

#include "sea/stretching.h"
#include "sea/surface_cut.h"

namespace tidearc {

namespace {

/// The wave number belongs to the period in the water, the frequency to the period at a fixed point: with a current
/// the crest passes there sooner or later than in the water.
double airy_phase(double time, double x) {
  return wave_constants.airy.k * (wave.crest_distance + x) - wave_constants.omega * time;
}

/// Height over the bed at which the series is taken.
double series_height(double h, double eta) {
  const double s = wave.d - h;
  return wave.ISTRCH == 1 ? stretched_height(s, wave.d, eta) : s;
}

}  // namespace

PlaneMotion airy_motion(const AiryConstants& c, double s, double cosine, double sine) {
  double Ch, Sh;
  if (c.deep) {
    Ch = Sh = std::exp(c.k * (s - c.d));
  } else {
    const double growth = std::exp(c.k * s);
    const double decay = 1.0 / growth;
    Ch = 0.5 * (growth + decay) * c.over_sinh;
    Sh = 0.5 * (growth - decay) * c.over_sinh;
  }
  return {c.A * Ch * cosine, c.A * Sh * sine, c.B * Ch * sine, -(c.B * Sh * cosine)};
}

double airy_pressure_ratio(const AiryConstants& c, double s) {
  if (c.deep) return std::exp(c.k * (s - c.d)) + std::exp(-(c.k * (s + c.d)));
  const double growth = std::exp(c.k * s);
  return 0.5 * (growth + 1.0 / growth) * c.over_cosh;
}

double airy_elevation(double time, double x) { return wave_constants.airy.amplitude * std::cos(airy_phase(time, x)); }

double AIRETA(double time, const Point& at) { return global_elevation(airy_elevation(time, along_wave(at))); }

void AIRVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  const AiryConstants& c = wave_constants.airy;
  const double elevation = elevation_of(at);
  const double h = depth_of(elevation);
  const double theta = airy_phase(time, along_wave(at));
  const double cosine = std::cos(theta), sine = std::sin(theta);
  const double eta = c.amplitude * cosine;
  motion = {};
  if (!parts.current_only) write_motion(airy_motion(c, series_height(h, eta), cosine, sine), motion);
  add_current(h, eta, elevation, lower_current, parts, motion.velocity);
}

WavePressure AIRPRS(double surface, const Point& at, double time) {
  if (is_above(at, surface)) return {};
  const AiryConstants& c = wave_constants.airy;
  const double h = depth_of(elevation_of(at));
  const double eta = airy_elevation(time, along_wave(at));
  const double dynamic = wave.rho * wave.g * airy_pressure_ratio(c, series_height(h, eta)) * eta;
  return {static_pressure(h) + dynamic, dynamic};
}

Point AIRCUT(const Point& A, const Point& B, double time) { return surface_cut(AIRETA, A, B, time); }

}  // namespace tidearc
