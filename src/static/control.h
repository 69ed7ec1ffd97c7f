// When an iteration forms the stiffness and when it takes over the state: the decisions, without blocks.
#pragma once

namespace tidearc {

/// The private counters of the decisions; back to 0 at the start of every macro.
struct UpdateCounters {
  int stiffness_iteration = 0;
  int stiffness_step = 0;
  int state_iteration = 0;
};

/// What the segment's cards ask for.
struct UpdateRules {
  int KISTF;  ///< form at every KISTF-th iteration; 0: by steps
  int KSSTF;  ///< form at every KSSTF-th count of the phase code
  int KISTA;  ///< take over at every KISTA-th iteration; 1: always
  int KBFGS;  ///< 1: update vectors between stiffness updates
};

/// Stiffness decision at iteration NI: 1 form and factorise, 0 keep, -1 update vectors. Advances its counter.
/// In a static macro the phase code KFORM runs 0, -1, -2, ..: with KISTF 0 the stiffness is formed where KFORM meets
/// the counter, that is in the first step, and afterwards only at events.
int stiffness_decision(int NI, int KFORM, bool event, const UpdateRules& rules, UpdateCounters& counters);

/// State decision at iteration NI: 1 take over, 0 not; `KSTA` as it stands when KISTA is 1.
int state_decision(int NI, bool event, int KSTA, const UpdateRules& rules, UpdateCounters& counters);

/// Step factor after a converged step that took NI iterations (restepping on): the factor to multiply with.
/// ITDES above 0 asks for sqrt(ITDES / (NI - 1)), sqrt(ITDES) when NI is 1; else IFAC when NI is below ITLOW; else 0.0,
/// which means that no factor is applied.
double step_growth(int NI, int ITDES, int ITLOW, double IFAC);

/// A step factor against STEP0: the factor itself when STEP0 is 0.
inline double relative_step(double factor, double STEP0) { return STEP0 == 0.0 ? factor : factor / STEP0; }

}  // namespace tidearc
