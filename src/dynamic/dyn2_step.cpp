// One constant step: its load, its iterations to equilibrium, its acceptance.
//
// Iterations determine the elements from the state at the last state update. With an iteration control for state update
// that is not below the number of iterations, that is the state at the start of the step, whatever the iterates.
#include "dynamic/dyn2.h"
#include "dynamic/sea_loads.h"
#include "elements/contract/pass.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

struct UpdateDecision {
  bool stiffness = false;  ///< KSTF
  bool state = false;      ///< KSTA
};

UpdateDecision IUPDAT(const ConstantSteps& job) {
  const TimedPhase timed("IUPDAT");
  const int NS = dynamics.NS;
  const int NI = dynamics.NI;
  // A solve with a new set of prescribed equations and an old factor would be wrong.
  return {update_is_due(NS, NI, job.KSSTF, job.KISTF) || solver.KSTCHG != 0,
          update_is_due(NS, NI, job.KSSTF, job.KISTA)};
}

/// Both generations of the step's start, before an update within the step overwrites them; only a state that is not
/// finite leads back there.
void keep_step_start(bool& kept) {
  if (dynamics.NI > 1 && !kept) {
    save_states();
    kept = true;
  }
}

void add_increment() {
  const Reals d = equation_vector(arrays.DSTEP);
  const Reals du = equation_vector(arrays.RU);
  for (int e = 1; e <= sizes.NEQ; ++e) d(e) += du(e);
}

void iterate_once(const ConstantSteps& job, bool& kept) {
  const UpdateDecision due = IUPDAT(job);
  if (due.stiffness) FSTIF();
  if (due.state) {
    keep_step_start(kept);
    SDUP();  // commits the records of the log; envelopes of elements live in their states
  }
  DISSOL();
  add_increment();
  RESPD1();
  UNBALN();
  write_dynamic_top();
}

StepOutcome run_iterations(const ConstantSteps& job, bool& kept) {
  for (dynamics.NI = 1;; ++dynamics.NI) {
    iterate_once(job, kept);
    if (!trial_is_finite()) return StepOutcome::lost;
    if (response.RNORM <= job.TOL) return StepOutcome::accepted;
    if (dynamics.NI == job.MAXIT) return job.KTERM == 0 ? StepOutcome::accepted : StepOutcome::unconverged;
  }
}

/// The state at the start of the step stands again. Velocities and accelerations of free equations never left it;
/// those of prescribed equations stay as the right-hand side of the dropped step has set them.
void drop_step(bool kept, double start_time) {
  tell_lost_trial();
  if (kept) recover_states();
  copy_vector(arrays.U, arrays.UN);
  copy_vector(arrays.U0, arrays.UN);
  response.TIME = start_time;
  return_wave_loads();
  determine_states({arrays.VEL, arrays.ACC, arrays.VEL, arrays.DAMP});
  dynamics.taken_over = false;
}

void clear_increment() {
  const TimedPhase timed("RZERO");
  clear_vector(arrays.DSTEP);
}

}  // namespace

bool update_is_due(int NS, int NI, int step_control, int iteration_control) {
  if (iteration_control != 0) return (NI - 1) % iteration_control == 0;
  return step_control != 0 && NI == 1 && (NS - 1) % step_control == 0;
}

StepOutcome take_constant_step(const ConstantSteps& job) {
  const double start_time = response.TIME;
  DYNINI();
  RDYNAM();  // with the wave load of the step
  EFFLOD();
  clear_increment();
  bool kept = false;
  if (job.ISLULT == 1) {  // loads alone: the structure stays where it is
    if (dynamics.bad_wave_equation != 0) {
      drop_step(kept, start_time);
      return StepOutcome::lost;
    }
    ENVUP();
    ENERGY();
    return StepOutcome::accepted;
  }
  const StepOutcome outcome = run_iterations(job, kept);
  if (outcome == StepOutcome::lost) drop_step(kept, start_time);
  if (outcome != StepOutcome::accepted) return outcome;
  ENVUP();
  ENERGY();
  accept_step();
  return outcome;
}

}  // namespace tidearc
