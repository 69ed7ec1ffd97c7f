// One load step: iterations to equilibrium at constant load, and the restep when they do not get there.
//
// Trial states are always determined from the state at the last state update, with the whole increment since then, so
// that neither the number nor the order of iterations in between leaves a trace in the elements.
#include <algorithm>
#include <cmath>

#include "assembly/assembly.h"
#include "elements/contract/pass.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/vectors.h"
#include "solve/arrays.h"
#include "solve/prediction.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

constexpr int print_each_iteration = 3;
constexpr std::array<char, 3> yes{'Y', 'E', 'S'};
constexpr std::array<char, 3> no{'N', 'O', ' '};

/// With KTERM other than 0 the state at the step start is needed only when state updates within the step would
/// overwrite the reference generation; it then serves the way back from a state that is not finite.
bool keeps_step_start() { return segment.KTERM == 0 || segment.KISTA < segment.MAXIT; }

/// State at the step start on NT15: element states, then U, DDIS, LEVEL and R.
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

/// Goes back to the state at the step start. The unbalance is that of the recovered state.
void recover_step_start() {
  const Reals U = equation_vector(arrays.U);
  const Reals U0 = equation_vector(arrays.U0);
  if (keeps_step_start()) {
    FILE(units.NT15, "REWI");
    recover_states();
    FILE(units.NT15, "READ", 2 * NEQ1(), U.data());
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.DDIS).data());
    FILE(units.NT15, "READ", ITWO, &response.LEVEL);
    FILE(units.NT15, "READ", 2 * NEQ1(), equation_vector(arrays.R).data());
  } else {  // the reference generation still is the step start
    RCOPY(U.data(), U0.data(), NEQ1());
    RZERO(equation_vector(arrays.DDIS).data(), NEQ1());
    response.LEVEL = step.LEVEL0;
    LODLVL(response.LEVEL);  // node pressures of that level, which reported forces contain
    determine_states();
  }
  RCOPY(U0.data(), U.data(), NEQ1());
  RZERO(equation_vector(arrays.DDIS).data(), NEQ1());
  step.LEVEL0 = response.LEVEL;
  step.DLACC = ZERO;
  step.NEVT = 0;
  step.NBFGS = 0;
  step.taken_over = true;
  LODLVL(response.LEVEL);
  form_unbalance();
}

void decide_updates() {
  const UpdateRules rules{segment.KISTF, segment.KSSTF, segment.KISTA, segment.KBFGS};
  step.KSTF = stiffness_decision(step.NI, solver.KFORM, false, rules, step.counters);
  step.KSTA = state_decision(step.NI, false, step.KSTA, rules, step.counters);
  // A solve with a new set of prescribed equations and an old factor would be wrong.
  if (solver.KSTCHG != 0) step.KSTF = 1;
  if (step.KSTF == 1) step.NBFGS = 0;
}

/// Step load on the unbalance: the increment of level that is left to take, and its imposed displacements.
void STPLOD() {
  step.DL = std::min(ONE - response.LEVEL, step.STEPT);
  const Reals RU = equation_vector(arrays.RU);
  const Reals RINC = equation_vector(arrays.RINC);
  const Reals XP = equation_vector(arrays.XP);
  for (int e = 1; e <= sizes.NEQ; ++e) RU(e) = prescribed(e) ? step.DL * XP(e) : RU(e) + step.DL * RINC(e);
  write(units.NDOUT, "5X,'STEP LOAD FORMED'");
}

void form_load() {
  step.DL = ZERO;
  if (step.NI == 1) STPLOD();
}

void update_state_when_due() {
  const bool due = step.KSTA == 1 || segment.KISTA == 1;
  step.STACOD = due ? yes : no;
  if (!due) return;
  update_state();
  write(units.NDOUT, "5X,'STATE UPDATED'");
}

void update_stiffness_when_due() {
  const bool due = step.KSTF == 1;
  step.STFCOD = due ? yes : no;
  if (due) STIFUP();
}

void print_vectors(int first, int second) {
  if (segment.MACPR != 1) return;
  write(units.NDOUT, "1X,' *NS,NI,RU,RA= ',2I3,6D13.5,/,1(22X,6D13.5)", step.NS, step.NI, pool.reals(first, sizes.NEQ),
        pool.reals(second, sizes.NEQ));
}

void print_increments() {
  if (segment.MACPR != 1) return;
  write(units.NDOUT, "1X,' *NS,NI,RINC,DDIS= ',2I3,6D13.5,1(26X,6D13.5)", step.NS, step.NI,
        pool.reals(arrays.RINC, sizes.NEQ), pool.reals(arrays.DDIS, sizes.NEQ));
}

/// Drops the unbalance of free equations when the segment asks for it in the first iteration.
void drop_first_unbalance() {
  if (step.NI != 1 || segment.IROB != 1) return;
  const Reals RU = equation_vector(arrays.RU);
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (!prescribed(e)) RU(e) = ZERO;
}

/// du for the unbalance at hand, in the vector BFGS2; the unbalance itself stays for the residual change.
void solve_increment() {
  RCOPY(equation_vector(arrays.BFGS2).data(), equation_vector(arrays.RU).data(), NEQ1());
  SOLVE(arrays.BFGS2);
  step.DLACC += step.DL;
}

/// Internal forces and unbalance of the trial U0 + (DDIS + du) at its level.
void determine_trial() {
  const Reals U = equation_vector(arrays.U);
  const Reals U0 = equation_vector(arrays.U0);
  const Reals DDIS = equation_vector(arrays.DDIS);
  const Reals du = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) U(e) = U0(e) + (DDIS(e) + du(e));
  response.LEVEL = step.LEVEL0 + step.DLACC;
  LODLVL(response.LEVEL);
  determine_states();
  step.taken_over = false;
  write(units.NDOUT, "5X,'STATE DETERMINATION'");
  form_unbalance();
  measure_unbalance();
}

/// The search along the first increment of a step, of which one trial is allowed: it either accepts the full length by
/// its own tolerance, or ends with it as the best one, determined anew.
void search_first_increment() {
  if (step.NI != 1 || segment.USCALE == ZERO || response.RNORM < step.TOL) return;
  const double search_tolerance = segment.TOLS * response.RNORM;
  if (!(std::abs(search_tolerance) < std::abs(response.RNORM))) {
    write(units.NDOUT, "5X,'LINE SEARCH CONVERGED',5X,'END LINE SEARCH - STEP SIZE =',F10.4", ONE);
    return;
  }
  constexpr int tries = 1;
  write(units.NDOUT, "5X,'LINE SEARCH DID NOT CONVERGE AFTER ',I3,' TRIES'", tries);
  if (segment.SLOW > segment.SUP) {  // the second length would be the lower limit itself
    write(units.NDOUT, "5X,'PREDICTED LINE SEARCH LENGTH OF ',D13.4,' IS BEYOND SPECIFIED LIMITS'", segment.SLOW);
  }
  determine_trial();
  write(units.NDOUT, "5X,'SOLUTION CONTINUED WITH STEP SIZE =',F10.5,5X,'AND UNBALANCED NORM   =',D15.4", ONE,
        response.RNORM);
}

void accept_trial() {
  const Reals DDIS = equation_vector(arrays.DDIS);
  const Reals du = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) DDIS(e) += du(e);
  if (segment.KPRINT == print_each_iteration) {
    write(units.NDOUT, "/,5X,'ITERATION NO.            ..........=',I5", step.NI);
    write(units.NDOUT, "5X,'APPLIED LOAD LEVEL  ...............=',F10.5", response.LEVEL);
    print_results();
  }
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
Outcome leave_lost_state() {
  int equation = 0;
  state_is_finite(equation);
  write_box_of_lost_state(equation);
  recover_step_start();
  measure_unbalance();
  segment.KPRINT = 2;
  set_fatal_flag();
  step.end = EndCode::iterations_used;
  return Outcome::lost;
}

/// A smaller step from the step start when that is allowed; else the trial is taken as it stands, or given up.
Outcome restep(bool finite, bool trial_is_accepted) {
  write_progress_row();
  const double smaller = segment.RFAC * statics.STEPF;
  // A reduction that does not reduce (a factor of 1 and more, a step that has run out of digits) would go on for ever.
  const bool reduces = std::abs(smaller) < std::abs(statics.STEPF);
  if (reduces && relative_step(smaller, segment.STEP0) >= segment.STEPMIN) {
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
  if (!finite) return leave_lost_state();
  if (!trial_is_accepted) accept_trial();
  ++step.NATTS;
  if (segment.NATT >= 1 && step.NATTS >= segment.NATT) {
    write(units.NDOUT, "5X,I5,' ATTEMPTS TO REDUCE STEP SIZE BELOW',D15.5,5X,'ANALYSIS SUSPENDED'", step.NATTS,
          segment.STEPMIN);
    if (segment.KIPAR == 2) {
      statics.STEPF = segment.STEP0;
      return Outcome::accepted;
    }
    set_fatal_flag();
    step.end = EndCode::attempts_used;
    return Outcome::fatal;
  }
  statics.STEPF = (segment.STEP0 == ZERO ? ONE : segment.STEP0) * segment.STEPMIN;
  write_progress_row();
  return Outcome::iterate;
}

/// One pass of the iteration: update, solve, determine, accept, test.
Outcome iterate() {
  decide_updates();
  form_load();
  update_state_when_due();
  update_stiffness_when_due();
  print_vectors(arrays.RU, arrays.RA);
  drop_first_unbalance();
  solve_increment();
  print_vectors(arrays.BFGS2, arrays.RA);
  print_increments();
  determine_trial();
  write_top_unbalances();
  if (step.NI == 1) begin_prediction(response.RNORM, segment.MAXIT);
  int bad_equation = 0;
  if (!state_is_finite(bad_equation)) {
    if (segment.KTERM == 0) return restep(false, false);
    write_progress_row();
    return leave_lost_state();
  }
  if (segment.KTERM == 0 && response.RNORM > segment.UMAX) {
    write(units.NDOUT, "' RESTEPPING DUE TO LARGE UNBALANCE FORCE '");
    return restep(true, false);
  }
  search_first_increment();
  accept_trial();
  if (response.RNORM <= step.TOL) {
    write_progress_row();
    return Outcome::converged;
  }
  if (segment.KTERM == 0) {
    const PredictionRules rules{segment.MAXIT, segment.KPRED, segment.WPRED, segment.GRACE};
    if (predict_nonconvergence(step.NI, response.RNORM, step.TOL, rules)) return restep(true, true);
  }
  write_progress_row();
  return Outcome::iterate;
}

/// NI has run past MAXIT.
Outcome leave_unconverged() {
  if (segment.KTERM == 1) {
    write(units.NDOUT, "5X,'SOLUTION HAS NOT CONVERGED AFTER',I6,' ITERATIONS-',' ANALYSIS STOPPED'", segment.MAXIT);
    segment.KPRINT = 2;
    set_fatal_flag();
    step.end = EndCode::iterations_used;
    return Outcome::fatal;
  }
  write(units.NDOUT, "5X,'SOLUTION HAS NOT CONVERGED AFTER',I6,' ITERATIONS-',' ANALYSIS CONTINUED'", segment.MAXIT);
  if (segment.KIPAR == 2) statics.STEPF = segment.STEP0;
  return Outcome::accepted;
}

/// Iterations of the step, from NI 1.
Outcome run_iterations() {
  for (step.NI = 1; step.NI <= segment.MAXIT; ++step.NI) {
    write(units.NDOUT, "1X,50('-'),/,5X,'BEGIN ITERATION NO.',I3,/,1X,50('-')", step.NI);
    const Outcome outcome = iterate();
    if (outcome != Outcome::iterate) return outcome;
  }
  step.NI = std::max(segment.MAXIT, 0);
  return leave_unconverged();
}

}  // namespace

void update_state() {
  if (!step.taken_over) take_over_states();
  step.taken_over = true;
  RCOPY(equation_vector(arrays.U0).data(), equation_vector(arrays.U).data(), NEQ1());
  RZERO(equation_vector(arrays.DDIS).data(), NEQ1());
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
    if (statics.moving_loads && step.NS > 1) LODSEG();
    outcome = run_iterations();
  } while (outcome == Outcome::restep);
  return outcome;
}

}  // namespace tidearc
