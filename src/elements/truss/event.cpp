// How much of an increment a truss takes up to its next change of stiffness.
#include "elements/truss/event.h"

#include <algorithm>
#include <cmath>

namespace tidearc {

namespace {

constexpr double no_event_fraction = 0.999999;
constexpr double outside_bound = -1.0E-9;
constexpr double default_overshoot = 1.0E-6;
constexpr double rounding = 1.0E-9;  ///< part of the way to an event by which a straight cut may seem to miss it

double overshoot_or_default(double given, double yield_extension) {
  return given > 0.0 ? given : default_overshoot * std::abs(yield_extension);
}

/// Any value that is not below 1 is no event.
ElementEvent event_at(double factor, int code) {
  if (!(factor < 1.0)) return {1.0, event_none};
  return {std::max(factor, 0.0), code};
}

ElementEvent yield_event(const BranchLaw& law, const BranchState& state, double dE, double given,
                         EventTrouble& trouble) {
  const bool tension = dE * law.SK1 > 0.0;
  const double bound = tension ? law.FYT : law.FYC;
  const double fraction = (bound - state.F1) / (law.SK1 * dE);
  const double overshoot = overshoot_or_default(given, bound / law.SK1);
  if (fraction < outside_bound) {
    trouble = {true, fraction, bound, overshoot};
    return {1.0, event_none};
  }
  if (!(fraction < no_event_fraction)) return {1.0, event_none};
  return event_at(fraction + overshoot / std::abs(dE), tension ? event_tension : event_compression);
}

ElementEvent unloading_event(const BranchLaw& law, const BranchState& state, double dE, double given) {
  if (!(state.F1 * dE < 0.0)) return {1.0, event_none};
  const double bound = state.F1 > 0.0 ? law.FYT : law.FYC;
  const double passed = overshoot_or_default(given, bound / law.SK1) / std::abs(dE);
  const bool buckled = law.KBUCK != law_symmetric && state.F1 < 0.0;
  return event_at(buckled ? state.PLBUCK / dE + passed : passed, event_unloading);
}

}  // namespace

ElementEvent branch_event(const BranchLaw& law, const BranchState& state, double dE, const double (&overshoot)[2],
                          EventTrouble& trouble) {
  if (dE == 0.0 || law.SK1 == 0.0) return {1.0, event_none};
  if (state.code == truss_elastic) return yield_event(law, state, dE, overshoot[0], trouble);
  if (state.code == truss_yielded) return unloading_event(law, state, dE, overshoot[1]);
  return {1.0, event_none};
}

ElementEvent curve_event(CurvePairs pairs, double DY, double EXT, double dE, double overshoot) {
  if (dE == 0.0) return {1.0, event_none};
  const bool upward = dE > 0.0;
  const std::optional<double> next = next_ordinate(pairs, EXT / DY, upward);
  if (!next) return {1.0, event_none};
  const double fraction = (*next * DY - EXT) / dE;
  if (!(fraction < no_event_fraction)) return {1.0, event_none};
  return event_at(fraction + overshoot_or_default(overshoot, DY) / std::abs(dE),
                  upward ? event_curve_up : event_compression);
}

ElementEvent event_on_course(const ElementEvent& event, double dE, const EndMotion& motion) {
  const double wanted = event.factor * dE;
  if (!(event.factor < 1.0) || !(wanted > 0.0)) return event;  // a shortening element is never short of its bound
  if (!(motion.extension(event.factor) < (1.0 - rounding) * wanted)) return event;
  const double factor = motion.fraction_to(wanted);
  return std::isfinite(factor) ? event_at(factor, event.code) : event;
}

}  // namespace tidearc
