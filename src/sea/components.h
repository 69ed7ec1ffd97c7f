// One component of an irregular sea at a point: phase, profile over depth. Values in, values out.
//
// A component is a linear wave of small height: with s the height over the sea bed,
// horizontal velocity a omega cosh(k s)/sinh(k d) cos theta, vertical a omega sinh(k s)/sinh(k d) sin theta, dynamic
// pressure rho g a cosh(k s)/cosh(k d) cos theta. Beyond k d = 100 all three ratios are exp(k (s - d)).
#pragma once

#include <cmath>

#include "sea/hyperbolic.h"
#include "sea/wave_state.h"

namespace tidearc {

/// Forms what a point takes of the profile, for a depth d.
inline void set_profile(SeaComponent& component, double d) {
  const double kd = component.k * d;
  const bool deep = kd > deepest_kd;
  component.shift = deep ? kd : 0.0;
  component.growing = deep ? 1.0 : 0.5 / std::sinh(kd);
  component.decaying = deep ? 0.0 : component.growing;
  component.over_cosh = deep ? 1.0 : 0.5 / std::cosh(kd);
}

/// Phase over the horizontal position (x, y) at a time.
inline double component_phase(const SeaComponent& component, double x, double y, double time) {
  return component.k * (x * component.cosine + y * component.sine) - component.omega * time - component.phase;
}

struct Profile {
  double Ch;  ///< cosh(k s)/sinh(k d)
  double Sh;  ///< sinh(k s)/sinh(k d)
};

/// Profile of the motion at a height s over the sea bed.
inline Profile motion_profile(const SeaComponent& component, double s) {
  const double e = std::exp(component.k * s - component.shift);
  const double up = component.growing * e;
  const double down = component.decaying > 0.0 ? component.decaying / e : 0.0;
  return {up + down, up - down};
}

/// Profile of the dynamic pressure, cosh(k s)/cosh(k d).
inline double pressure_profile(const SeaComponent& component, double s) {
  const double ks = component.k * s;
  if (component.shift > 0.0) return std::exp(ks - component.shift) + std::exp(-(ks + component.shift));
  const double e = std::exp(ks);
  return component.over_cosh * (e + 1.0 / e);
}

}  // namespace tidearc
