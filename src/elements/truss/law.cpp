// The truss's force law from its material, section, length and initial force.
#include "elements/truss/law.h"

#include <cmath>

#include "elements/truss/curve.h"

namespace tidearc {

void form_truss_law(TrussRecord& truss) {
  const TrussMaterial& m = truss.material;
  const double A = truss.section.area;
  const double K = m.EMOD * A / truss.XL;
  truss.SK1 = (1.0 - m.ratio) * K;
  truss.SK2 = m.ratio * K;
  const bool yields = m.yield_tension > 0.0;
  truss.FYT = yields ? (1.0 - m.ratio) * A * m.yield_tension : no_yield;
  truss.FYC = m.yield_compression != 0.0 ? -(1.0 - m.ratio) * A * std::abs(m.yield_compression) : -no_yield;
  // As the strain at yield, so that it holds where the first branch has no stiffness; infinite without modulus. A curve
  // without yield stress is read in extensions and in units of E A / L.
  truss.DY = yields ? m.yield_tension * truss.XL / m.EMOD : truss.KBUCK == law_curve ? 1.0 : 0.0;
  // Not as (SK1 + SK2) DY, which lies beside it by rounding and is no number without modulus.
  truss.FCURVE = yields ? A * m.yield_tension : K;
  truss.DUCTL = m.ductility > 0.0 ? m.ductility * truss.DY : 0.0;
  truss.OVTOL[0] = m.overshoot_yield * truss.XL;
  truss.OVTOL[1] = m.overshoot_unload * truss.XL;
}

bool set_initial_state(TrussRecord& truss, double force) {
  const double K = truss.SK1 + truss.SK2;
  truss.FREP = force;
  if (truss.KBUCK != law_curve) {
    truss.KYLD = truss_elastic;
    truss.F1 = force;
    truss.EXT = K == 0.0 ? 0.0 : force / K;
    return true;
  }
  const CurvePoint start = walk_curve(truss.CURVE, 0.0);
  truss.F2 = start.value * truss.FCURVE;
  truss.KYLD = start.code;
  if (force == 0.0) return true;
  const double ratio = force_at_ordinate(truss.CURVE, force / truss.FCURVE);
  const std::optional<CurvePoint> found = find_deformation(truss.CURVE, ratio, ratio);
  if (!found) return false;
  truss.F2 = force;
  truss.KYLD = found->code;
  truss.EXT = found->value == 0.0 ? 0.0 : found->value * truss.DY;
  return std::isfinite(truss.EXT);
}

}  // namespace tidearc
