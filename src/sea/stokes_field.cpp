// Stokes waves: surface, kinematics, pressure, surface cut. The series is what it gives above the surface too.
#include "sea/stokes_field.h"

#include <cmath>

#include "sea/airy_field.h"
#include "sea/harmonics.h"
#include "sea/stretching.h"
#include "sea/surface_cut.h"

namespace tidearc {

namespace {

double stokes_phase(double time, double x) {
  return wave_constants.stokes.k * (wave.crest_distance + x) - wave_constants.omega * time;
}

}  // namespace

PlaneMotion stokes_motion(const StokesConstants& c, double s, double theta) {
  PlaneMotion sum{};
  for_harmonics(static_cast<int>(stokes_terms), c.k * s, theta, [&](std::size_t i, const Harmonic& n) {
    sum.u += c.G[i] * n.cosh * n.cosine;
    sum.w += c.G[i] * n.sinh * n.sine;
    sum.a += c.nG[i] * n.cosh * n.sine;
    sum.b -= c.nG[i] * n.sinh * n.cosine;
  });
  return {sum.u, sum.w, c.kC * sum.a, c.kC * sum.b};
}

double stokes_elevation(const StokesConstants& c, double theta) {
  const double cosine = std::cos(theta), sine = std::sin(theta);
  double cosine_n = cosine, sine_n = sine;
  double sum = 0.0;
  for (const double F : c.F) {
    sum += F * cosine_n;
    const double next = cosine_n * cosine - sine_n * sine;
    sine_n = sine_n * cosine + cosine_n * sine;
    cosine_n = next;
  }
  return sum / c.k;
}

double STKETA(double time, const Point& at) {
  return global_elevation(stokes_elevation(wave_constants.stokes, stokes_phase(time, along_wave(at))));
}

void STKVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  const double elevation = elevation_of(at);
  const double h = depth_of(elevation);
  const double x = along_wave(at);
  motion = {};
  if (!parts.current_only)
    write_motion(stokes_motion(wave_constants.stokes, wave.d - h, stokes_phase(time, x)), motion);
  // The current is stretched to the surface of the first order.
  const double eta = current_follows_surface(parts) ? airy_elevation(time, x) : 0.0;
  add_current(h, eta, elevation, lower_current, parts, motion.velocity);
}

/// A celerity of this theory is relative to the water, so the current has no part in the velocity in the crest's frame.
WavePressure STKPRS(double surface, const Point& at, double time) {
  if (is_above(at, surface)) return {};
  const double h = depth_of(elevation_of(at));
  const PlaneMotion motion = stokes_motion(wave_constants.stokes, wave.d - h, stokes_phase(time, along_wave(at)));
  return bernoulli_pressure(h, motion.u - wave.C, motion.w, time);
}

Point STKCUT(const Point& A, const Point& B, double time) { return surface_cut(STKETA, A, B, time); }

}  // namespace tidearc
