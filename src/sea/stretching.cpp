// The current at a point of the sea: stretching code, lower limit, table.
#include "sea/stretching.h"

#include <cmath>
#include <numbers>

#include "run/layout.h"
#include "run/units.h"
#include "sea/field.h"
#include "sea/hyperbolic.h"

namespace tidearc {

namespace {

constexpr int search_passes = 10;

/// Decay of the orbits: 1 at mean level (z = 0), to the last bit, and 0 at the bed. A sea without components has no
/// length and no orbits below mean level.
class OrbitDecay {
 public:
  OrbitDecay(double d, double L) : d_(d), k_(2.0 * std::numbers::pi / L), deep_(k_ * d > deepest_kd) {
    if (!deep_) sinh_d_ = std::sinh(k_ * d);
  }
  double operator()(double z) const {
    if (z == 0.0) return 1.0;
    return deep_ ? std::exp(k_ * z) : std::sinh(k_ * (d_ + z)) / sinh_d_;
  }

 private:
  double d_, k_;
  bool deep_;
  double sinh_d_ = 1.0;
};

double searched_level(double h, double eta) {
  const StretchedLevel found = nonlinear_level(h, eta, wave.d, wave.L);
  if (!found.converged)
    write(units.NDOUT, "5X,'*** warning *** nonlinear stretching did not converge ',I5", search_passes);
  return found.level;
}

/// Depth in the table for a point at depth h; eta is the local elevation.
double table_level(double h, double eta) {
  switch (wave.current_stretching) {
    case 0:
    case 1:
      return h >= 0.0 ? h : 0.0;
    case 2:
      return linear_level(h, eta, wave.d);
    case 3:
      return searched_level(h, eta);
    default:
      return h;
  }
}

}  // namespace

StretchedLevel nonlinear_level(double h, double eta, double d, double L) {
  const OrbitDecay decay(d, L);
  const auto f = [&](double z) { return z + h + eta * decay(z); };
  double a = -d, b = 0.0;
  double fa = f(a), fb = f(b);
  double z = b;
  for (int pass = 1; pass <= search_passes; ++pass) {
    // Both ends on one root, as for a point on the bed: there is nothing left to divide.
    if (fb - fa == 0.0) return {-b, false};
    z = (a * fb - fa * b) / (fb - fa);
    // The change from pass to pass is measured against zero, so it is only ever small enough at zero itself.
    if (z == 0.0) return {0.0, true};
    const double fz = f(z);
    if (fz >= 0.0) {
      b = z;
      fb = fz;
    } else {
      a = z;
      fa = fz;
    }
  }
  return {-z, false};
}

void add_current(double h, double eta, double elevation, double lower_current, MotionParts parts, Point& velocity) {
  if (parts.wave_only || wave.current_code != 1) return;
  if ((elevation - lower_current) * wave.sg > 0.0) return;  // below the current
  CURADD(table_level(h, eta), velocity);
}

}  // namespace tidearc
