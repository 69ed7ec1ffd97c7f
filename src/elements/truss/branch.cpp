// The two parallel branches of a truss: the walk through an increment, failure, and the tangent.
#include "elements/truss/branch.h"

#include <algorithm>
#include <cmath>

namespace tidearc {

namespace {

constexpr double end_of_walk = 0.9999999;
/// A walk passes at most unloading, take-up and yield. The limit is for laws that no material has (negative stiffness).
constexpr int most_legs = 8;

/// Elastic leg from fraction t on; returns the fraction used.
double walk_elastic(const BranchLaw& law, double dE, double t, BranchState& state) {
  const double full = dE * law.SK1;
  const double trial = state.F1 + full * (1.0 - t);
  const bool upward = full > 0.0;
  const double level = upward ? law.FYT : law.FYC;
  const bool reached = full != 0.0 && (upward ? trial >= level : trial <= level);
  if (!reached) {
    state.F1 = trial;
    return 1.0 - t;
  }
  // A force that stood beyond the level, as an initial force may, comes back to it without motion.
  const double used = std::max(0.0, (level - state.F1) / full);
  state.F1 = level;
  state.code = truss_yielded;
  if (!upward) state.PLBUCK = 0.0;
  return used;
}

/// Leg of a yielded branch that is loaded further: all the rest is plastic.
double walk_plastic(double dE, double t, BranchState& state) {
  const double plastic = (1.0 - t) * dE;
  (dE > 0.0 ? state.PLPOS : state.PLNEG) += plastic;
  state.PLBUCK -= plastic;
  return 1.0 - t;
}

/// Leg of a buckled strut that extends: at constant force while its shortening lasts.
double take_up(double dE, double t, BranchState& state) {
  const double fraction = state.PLBUCK / dE;
  if (fraction <= 1.0 - t) {
    state.PLBUCK = 0.0;
    state.code = truss_elastic;
    return std::max(0.0, fraction);
  }
  state.PLBUCK -= (1.0 - t) * dE;
  return 1.0 - t;
}

double walk_yielded(const BranchLaw& law, double dE, double t, BranchState& state) {
  if (!(state.F1 * dE < 0.0)) return walk_plastic(dE, t, state);
  if (law.KBUCK != law_symmetric && state.F1 < 0.0) return take_up(dE, t, state);
  state.code = truss_elastic;
  return 0.0;
}

}  // namespace

double walk_branches(const BranchLaw& law, double dE, BranchState& state) {
  state.F2 += dE * law.SK2;
  double t = 0.0;
  for (int leg = 0; t < end_of_walk && leg < most_legs; ++leg) {
    t += state.code == truss_elastic ? walk_elastic(law, dE, t, state) : walk_yielded(law, dE, t, state);
  }
  return t;
}

void walk_failed(double dE, FailingState& state) {
  if (state.code == truss_gone || dE == 0.0) return;
  const double step = std::abs(dE * state.SK2);
  const bool pulled = state.F1 > 0.0;
  const double left = pulled ? state.F1 - step : state.F1 + step;
  state.code = pulled == (dE > 0.0) ? truss_failed_outward : truss_failed_inward;
  state.SK2 = state.code == truss_failed_outward ? -std::abs(state.SK2) : std::abs(state.SK2);
  state.F1 = left;
  if (pulled ? left <= 0.0 : left >= 0.0) state = {0.0, gone_stiffness, truss_gone};
}

FailingState begin_failure(double F1, double F2, double SK1, double SK2, double dE) {
  const double force = F1 + F2;
  const double slope = 0.5 * (SK1 + SK2);
  if (force * dE < 0.0) return {force, slope, truss_failed_inward};
  return {force, -slope, truss_failed_outward};
}

double branch_tangent(int code, double SK1, double SK2) {
  switch (code) {
    case truss_elastic:
      return SK1 + SK2;
    case truss_yielded:
      return SK2;
    case truss_failed_outward:
    case truss_failed_inward:
      return std::abs(SK2);
    default:
      return gone_stiffness;
  }
}

}  // namespace tidearc
