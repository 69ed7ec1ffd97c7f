// Water motion of an irregular sea: the sum over its components.
//
// Source: linear superposition of Airy waves (any textbook of ocean engineering, e.g. Chakrabarti, Hydrodynamics of
// Offshore Structures, 1987); the phase runs with the period related to the structure, the amplitudes of velocities and
// accelerations take the period in the water. The vertical parts are written on the global vertical axis as they stand,
// so that axis must point upward. A sum runs from the first component to the last.
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "sea/components.h"
#include "sea/field.h"
#include "sea/stretching.h"
#include "sea/surface_cut.h"
#include "sea/water_frame.h"

namespace tidearc {
namespace {

/// Cosines and sines of the phases of all components at a point: only the first wave.NCOMP are ever written or read.
struct Phases {
  std::array<double, most_components> cosine;
  std::array<double, most_components> sine;
};

std::span<const SeaComponent> sea_components() {
  return std::span(components.of).first(static_cast<std::size_t>(wave.NCOMP));
}

std::size_t axis(int number) { return static_cast<std::size_t>(number - 1); }

double phase_at(const SeaComponent& component, const Point& at, double time) {
  return component_phase(component, at[axis(wave.horizontal[0])], at[axis(wave.horizontal[1])], time);
}

/// Elevation over mean water level, upward.
double elevation(const Point& at, double time) {
  double eta = 0.0;
  for (const SeaComponent& component : sea_components()) {
    eta += component.amplitude * std::cos(phase_at(component, at, time));
  }
  return eta;
}

/// The same, with the phases kept.
double elevation(const Point& at, double time, Phases& phases) {
  double eta = 0.0;
  std::size_t i = 0;
  for (const SeaComponent& component : sea_components()) {
    const double theta = phase_at(component, at, time);
    phases.cosine[i] = std::cos(theta);
    phases.sine[i] = std::sin(theta);
    eta += component.amplitude * phases.cosine[i];
    ++i;
  }
  return eta;
}

/// Height over the sea bed at which the profiles are taken: with Wheeler stretching the surface comes to s = d.
double profile_height(double h, double eta) {
  const double s = wave.d_irregular - h;
  return wave.ISTRCH == 1 ? stretched_height(s, wave.d_irregular, eta) : s;
}

/// Velocity and acceleration on the horizontal axes and upward.
struct SeaMotion {
  std::array<double, 3> velocity{};
  std::array<double, 3> acceleration{};
};

SeaMotion sum_motion(double s, const Phases& phases) {
  SeaMotion sum;
  std::size_t i = 0;
  for (const SeaComponent& component : sea_components()) {
    const Profile profile = motion_profile(component, s);
    const double u = component.amplitude * component.omega_water;
    const double a = u * component.omega_water;
    const double along = u * profile.Ch * phases.cosine[i];
    const double gain = a * profile.Ch * phases.sine[i];
    sum.velocity[0] += along * component.cosine;
    sum.velocity[1] += along * component.sine;
    sum.velocity[2] += u * profile.Sh * phases.sine[i];
    sum.acceleration[0] += gain * component.cosine;
    sum.acceleration[1] += gain * component.sine;
    sum.acceleration[2] -= a * profile.Sh * phases.cosine[i];
    ++i;
  }
  return sum;
}

double sum_pressure(double s, const Phases& phases) {
  double sum = 0.0;
  std::size_t i = 0;
  for (const SeaComponent& component : sea_components()) {
    sum += component.amplitude * pressure_profile(component, s) * phases.cosine[i];
    ++i;
  }
  return sum;
}

}  // namespace

double IRRETA(double time, const Point& at) { return global_elevation(elevation(at, time)); }

void IRRVEL(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  motion = {};
  const double level = elevation_of(at);
  const double h = depth_of(level);
  if (parts.current_only) {
    const double eta = current_follows_surface(parts) ? elevation(at, time) : 0.0;
    return add_current(h, eta, level, lower_current, parts, motion.velocity);
  }
  Phases phases;
  const double eta = elevation(at, time, phases);
  const SeaMotion sum = sum_motion(profile_height(h, eta), phases);
  for (std::size_t i = 0; i < 2; ++i) {
    motion.velocity[axis(wave.horizontal[i])] = sum.velocity[i] * wave.kinematic_factor;
    motion.acceleration[axis(wave.horizontal[i])] = sum.acceleration[i] * wave.kinematic_factor;
  }
  motion.velocity[axis(wave.vertical)] = sum.velocity[2];
  motion.acceleration[axis(wave.vertical)] = sum.acceleration[2];
  add_current(h, eta, level, lower_current, parts, motion.velocity);
}

WavePressure IRRPRS(double surface, const Point& at, double time) {
  if (is_above(at, surface)) return {};
  const double h = depth_of(elevation_of(at));
  Phases phases;
  const double eta = elevation(at, time, phases);
  const double dynamic = wave.rho * wave.g * sum_pressure(profile_height(h, eta), phases);
  return {static_pressure(h) + dynamic, dynamic};
}

Point IRRCUT(const Point& A, const Point& B, double time) { return surface_cut(IRRETA, A, B, time); }

}  // namespace tidearc
