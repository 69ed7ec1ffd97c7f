// When an iteration forms the stiffness and when it takes over the state.
#include "static/control.h"

#include <cmath>

namespace tidearc {

namespace {

/// The decision on a count: at 1 it begins anew; at the awaited count, or with an event, it is due again.
bool due(int count, int interval, bool event, int& next) {
  if (count == 1) {
    next = 1 + interval;
    return true;
  }
  if (count == next || event) {
    next += interval;
    return true;
  }
  return false;
}

}  // namespace

int stiffness_decision(int NI, int KFORM, bool event, const UpdateRules& rules, UpdateCounters& counters) {
  const bool form = rules.KISTF != 0 ? due(NI, rules.KISTF, event, counters.stiffness_iteration)
                                     : due(KFORM, rules.KSSTF, event, counters.stiffness_step);
  if (form) return 1;
  return rules.KBFGS == 1 ? -1 : 0;
}

int state_decision(int NI, bool event, int KSTA, const UpdateRules& rules, UpdateCounters& counters) {
  if (rules.KISTA == 1) return KSTA;
  if (event && NI > 1) return 1;
  return due(NI, rules.KISTA, false, counters.state_iteration) ? 1 : 0;
}

double step_growth(int NI, int ITDES, int ITLOW, double IFAC) {
  if (ITDES > 0)
    return NI > 1 ? std::sqrt(static_cast<double>(ITDES) / (NI - 1)) : std::sqrt(static_cast<double>(ITDES));
  return NI < ITLOW ? IFAC : 0.0;
}

}  // namespace tidearc
