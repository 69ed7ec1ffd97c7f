// One load step: its iterations to equilibrium, pass by pass.
#include "elements/contract/pass.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/prediction.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/step_parts.h"

namespace tidearc {

namespace {

/// What the accepted trial means for the step.
Outcome judge(Trial& trial) {
  if (response.RNORM <= step.TOL) {
    write_progress_row();
    return Outcome::converged;
  }
  if (segment.KTERM == 0) {
    const PredictionRules rules{segment.MAXIT, segment.KPRED, segment.WPRED, segment.GRACE};
    if (predict_nonconvergence(step.NI, response.RNORM, step.TOL, rules)) return restep(trial);
  }
  write_progress_row();
  return Outcome::iterate;
}

/// One iteration: passes from event to event, the last of them with a search along its increment, and the test.
Outcome iterate() {
  STEPVEC(step.NI, pool.reals(arrays.DSTEP, sizes.NEQ), TargetMode::set);
  decide_updates();
  Trial trial;
  bool searching = false;
  do {
    if (!form_increment()) return leave_without_increment();
    trial.event = cut_at_event();
    trial.had_event = trial.had_event || trial.event;
    searching = begin_search(trial);
    determine_trial(trial.length);
    if (trial.event) decide_updates_at_event();
    write_top_unbalances();
    if (refused(searching)) return leave_refused(trial);
  } while (trial.event);
  if (searching && !search_along_increment(trial)) return leave_refused(trial);
  accept_trial(trial);
  return judge(trial);
}

/// Iterations of the step, from NI 1.
Outcome run_iterations() {
  for (step.NI = 1; step.NI <= segment.MAXIT; ++step.NI) {
    write(units.NDOUT, "1X,50('-'),/,5X,'BEGIN ITERATION NO.',I3,/,1X,50('-')", step.NI);
    const Outcome outcome = iterate();
    if (outcome != Outcome::iterate) return outcome;
  }
  return leave_unconverged();
}

}  // namespace

void update_state() {
  if (!step.taken_over) take_over_states();
  step.taken_over = true;
  copy_vector(arrays.U0, arrays.U);
  clear_vector(arrays.DDIS);
  step.LEVEL0 = response.LEVEL;
  step.DLACC = ZERO;
}

void form_unbalance() {
  const Reals RU = equation_vector(arrays.RU);
  const Reals P = equation_vector(arrays.P);
  const Reals R = equation_vector(arrays.R);
  for (int e = 1; e <= sizes.NEQ; ++e) RU(e) = prescribed(e) ? ZERO : P(e) - R(e);
}

Outcome take_step() {
  write(units.NDOUT, "1X,50('*'),/,5X,'BEGIN LOAD STEP NO.',I3,/,1X,50('*')", step.NS);
  ++step.since_save;
  --solver.KFORM;
  step.STEPT = statics.STEPF;
  step.NEVT = 0;
  if (step.NS == segment.NSTEPS) step.TOL = segment.TOLL;
  Outcome outcome;
  do {
    save_step_start();
    clear_vector(arrays.DSTEP);
    if (statics.moving_loads && step.NS > 1) LODSEG();
    outcome = run_iterations();
  } while (outcome == Outcome::restep);
  return outcome;
}

}  // namespace tidearc
