// Stream function waves: surface, kinematics, pressure, surface cut.
#include "sea/stream_field.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "sea/harmonics.h"
#include "sea/stretching.h"
#include "sea/surface_cut.h"

namespace tidearc {

namespace {

/// Periods since the crest; C is the speed of the crest over the ground, current included.
double period_fraction(double time, double x) { return (wave.crest_distance + x - wave.C * time) / wave.L; }

/// The phase with its sign, whole periods dropped.
double signed_phase(double time, double x) {
  const double f = period_fraction(time, x);
  return 2.0 * std::numbers::pi * (f - std::trunc(f));
}

/// Current at level 1 along the wave, now: with it the crest frame's velocity is that of the water. Zero without one.
double surface_current() {
  if (wave.current_code != 1) return 0.0;
  return dot({current_now.vector[0], current_now.vector[1], current_now.vector[2]}, wave.direction);
}

}  // namespace

PlaneMotion stream_motion(const StreamConstants& c, double s, double phi) {
  double U = 0.0, W = 0.0, Ux = 0.0, Uz = 0.0;
  for_harmonics(c.harmonics, c.k * s, phi, [&](std::size_t i, const Harmonic& n) {
    U -= c.Xk[i] * n.cosh * n.cosine;
    W -= c.Xk[i] * n.sinh * n.sine;
    Ux += c.Xk2[i] * n.cosh * n.sine;
    Uz -= c.Xk2[i] * n.sinh * n.cosine;
  });
  const double relative = U - c.C;
  return {U, W, Uz * W + relative * Ux, relative * Uz - Ux * W};
}

double folded_fraction(double f) {
  f -= std::trunc(f);
  if (f < -0.5) return f + 1.0;
  const double size = std::abs(f);
  return size <= 0.5 ? size : 1.0 - size;
}

std::optional<double> table_elevation(std::span<const double> eta, double f) {
  constexpr double overlap = 1.0E-7;  // an interval reaches this far beyond its end
  if (eta.size() < 2) return std::nullopt;
  const int intervals = static_cast<int>(eta.size()) - 1;
  const double width = 0.5 / intervals;
  if (!(f >= 0.0 && f <= 0.5 + overlap)) return std::nullopt;
  int i = std::min(static_cast<int>(f / width), intervals - 1);
  if (i > 0 && f <= i * width + overlap) --i;  // the first interval that holds it
  const std::size_t at = static_cast<std::size_t>(i);
  return eta[at] + (f - i * width) / width * (eta[at + 1] - eta[at]);
}

double stream_elevation(double time, double x) {
  const double f = folded_fraction(period_fraction(time, x));
  const auto points = static_cast<std::size_t>(std::clamp(wave.NPTS, 0, static_cast<int>(most_wave_points)));
  const std::optional<double> eta = table_elevation(std::span(wave.eta).first(points), f);
  if (eta) return *eta;
  write(units.NDOUT, "' FREE SURFACE ELEVATION CANNOT BE FOUND.'");
  complain(not_on_deck,
           format("'stream function wave: no surface at time',G13.5,', distance',G13.5,', period fraction',G13.5", time,
                  x, f));
  CLOSUP();
}

double SFNETA(double time, const Point& at) { return global_elevation(stream_elevation(time, along_wave(at))); }

void SFNVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  const double elevation = elevation_of(at);
  const double h = depth_of(elevation);
  const double x = along_wave(at);
  motion = {};
  if (!parts.current_only)
    write_motion(stream_motion(wave_constants.stream, wave.d - h, signed_phase(time, x)), motion);
  const double eta = current_follows_surface(parts) ? stream_elevation(time, x) : 0.0;
  add_current(h, eta, elevation, lower_current, parts, motion.velocity);
}

/// The celerity is that over the ground, so the current belongs to the velocity of the water in the crest's frame.
WavePressure SFNPRS(double surface, const Point& at, double time) {
  if (is_above(at, surface)) return {};
  const double h = depth_of(elevation_of(at));
  const PlaneMotion motion = stream_motion(wave_constants.stream, wave.d - h, signed_phase(time, along_wave(at)));
  return bernoulli_pressure(h, motion.u - wave.C + surface_current(), motion.w, time);
}

Point SFNCUT(const Point& A, const Point& B, double time) { return surface_cut(SFNETA, A, B, time); }

}  // namespace tidearc
