// Steps that do not come to rest: the state at the step start and the way back to it, smaller steps, and the ways out.
#include <algorithm>
#include <cmath>
#include <string>

#include "elements/contract/pass.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/segment.h"
#include "static/step_parts.h"

namespace tidearc {

namespace {

/// With KTERM other than 0 the state at the step start is needed only when state updates within the step would
/// overwrite the reference generation; it then serves the way back from a state that is not finite.
bool keeps_step_start() { return segment.KTERM == 0 || segment.KISTA < segment.MAXIT || segment.KEVENT > 0; }

/// Goes back to the state at the step start. The unbalance is that of the recovered state.
void recover_step_start() {
  if (keeps_step_start()) {
    FILE(units.NT15, "REWI");
    recover_states();
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.U).data());
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.DDIS).data());
    FILE(units.NT15, "READ", ITWO, &response.LEVEL);
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.R).data());
  } else {  // the reference generation still is the step start
    copy_vector(arrays.U, arrays.U0);
    clear_vector(arrays.DDIS);
    response.LEVEL = step.LEVEL0;
    LODLVL(response.LEVEL);  // node pressures of that level, which reported forces contain
    determine_states();
  }
  copy_vector(arrays.U0, arrays.U);
  clear_vector(arrays.DDIS);
  step.LEVEL0 = response.LEVEL;
  step.DLACC = ZERO;
  step.NEVT = 0;
  forget_pairs();
  step.taken_over = true;
  LODLVL(response.LEVEL);
  form_unbalance();
}

void write_box_of_lost_state(int equation) {
  std::string place = "THE NORM OR THE LOAD LEVEL";
  if (equation != 0) {
    const NodeDirection holder = holder_of(equation);
    place = format("'NODE',I6,'  DIRECTION',I2", holder.node, holder.component);
  }
  const std::string words = format("'  STEP',I5,'  ITERATION',I5,'  AT '", step.NS, step.NI) + place;
  fatal_box(" SOLUTION IS NOT FINITE" + words);
  complain(not_on_deck, "solution is not finite:" + words);
}

/// The way out of a state that is not finite when no smaller step is left: the last accepted state stands.
Outcome leave_lost_state(int bad_equation) {
  write_box_of_lost_state(bad_equation);
  recover_step_start();
  measure_unbalance();
  segment.KPRINT = 2;
  set_fatal_flag();
  step.end = EndCode::iterations_used;
  return Outcome::lost;
}

/// The smallest step factor. A negative limit is none: the step that follows is empty, not one backwards, from which
/// reductions would begin again without end.
double smallest_step() { return (segment.STEP0 == ZERO ? ONE : segment.STEP0) * std::max(segment.STEPMIN, ZERO); }

Outcome take_step_anew(double smaller) {
  statics.STEPF = smaller;
  solver.KRESET = 1;
  solver.NELCHK = std::max(solver.NELCHK, 1);
  write(units.NDOUT, "5X,'PREDICTED NONCONVERGENCE - RESTART STEP ',I3,' WITH STEP SIZE =',D13.4", step.NS,
        statics.STEPF);
  recover_step_start();
  write(units.NDOUT, "5X,'STATE AT BEGINNING OF STEP RECOVERED'");
  step.STEPT = statics.STEPF;
  LODSEG();
  return Outcome::restep;
}

/// The step is accepted as it stands.
Outcome continue_unconverged() {
  write(units.NDOUT, "5X,'SOLUTION HAS NOT CONVERGED AFTER',I6,' ITERATIONS-',' ANALYSIS CONTINUED'", step.NI);
  if (segment.KIPAR == 2) statics.STEPF = segment.STEP0;
  return Outcome::accepted;
}

Outcome suspend() {
  write(units.NDOUT, "5X,I5,' ATTEMPTS TO REDUCE STEP SIZE BELOW',D15.5,5X,'ANALYSIS SUSPENDED'", step.NATTS,
        segment.STEPMIN);
  if (segment.KIPAR == 2) return continue_unconverged();
  set_fatal_flag();
  step.end = EndCode::attempts_used;
  return Outcome::fatal;
}

}  // namespace

void save_step_start() {
  if (!keeps_step_start()) return;
  FILE(units.NT15, "REWI");
  save_states();
  FILE(units.NT15, "WRIT", 2 * NEQ1(), equation_vector(arrays.U).data());
  FILE(units.NT15, "WRIT", 2 * NEQ1(), equation_vector(arrays.DDIS).data());
  FILE(units.NT15, "WRIT", ITWO, &response.LEVEL);
  FILE(units.NT15, "WRIT", 2 * NEQ1(), equation_vector(arrays.R).data());
  if (segment.KTERM == 0) write(units.NDOUT, "5X,'STATE SAVED FOR POSSIBLE RESTEP'");
}

Outcome restep(Trial& trial) {
  write_progress_row();
  const double smaller = segment.RFAC * statics.STEPF;
  // A reduction that does not reduce (a factor of 1 and more, a step that has run out of digits) would go on for ever.
  const bool reduces = std::abs(smaller) < std::abs(statics.STEPF);
  if (reduces && relative_step(smaller, segment.STEP0) >= segment.STEPMIN) return take_step_anew(smaller);
  int bad_equation = 0;
  if (!state_is_finite(bad_equation)) return leave_lost_state(bad_equation);
  if (!trial.accepted) accept_trial(trial);
  ++step.NATTS;
  if (segment.NATT >= 1 && step.NATTS >= segment.NATT) return suspend();
  statics.STEPF = smallest_step();
  write_progress_row();
  return Outcome::iterate;
}

Outcome leave_refused(Trial& trial) {
  int bad_equation = 0;
  const bool finite = state_is_finite(bad_equation);
  if (finite) write(units.NDOUT, "' RESTEPPING DUE TO LARGE UNBALANCE FORCE '");
  if (segment.KTERM == 0) return restep(trial);
  write_progress_row();
  return leave_lost_state(bad_equation);
}

Outcome leave_unconverged() {
  step.NI = std::max(segment.MAXIT, 0);
  if (segment.KTERM != 1) return continue_unconverged();
  write(units.NDOUT, "5X,'SOLUTION HAS NOT CONVERGED AFTER',I6,' ITERATIONS-',' ANALYSIS STOPPED'", step.NI);
  segment.KPRINT = 2;
  set_fatal_flag();
  step.end = EndCode::iterations_used;
  return Outcome::fatal;
}

Outcome leave_without_increment() {
  complain(not_on_deck, format("'no load increment is found: segment',I5,', step',I5,', iteration',I5", segment.ISEG,
                               step.NS, step.NI));
  set_fatal_flag();
  return Outcome::stopped;
}

}  // namespace tidearc
