// The trial of an iteration: where it is cut at an event, its state, the search along it, and its acceptance.
//
// Trial states are always determined from the state at the last state update, with the whole increment since then, so
// that neither the number nor the order of iterations in between leaves a trace in the elements.
#include <cmath>
#include <limits>

#include "elements/contract/event_scan.h"
#include "elements/contract/pass.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/line_search.h"
#include "solve/prediction.h"
#include "solve/solve.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/step_parts.h"

namespace tidearc {

namespace {

constexpr int print_each_iteration = 3;
constexpr int every_event = 1;  ///< KEVENT: no limit

Reals equations(int vector) { return pool.reals(vector, sizes.NEQ); }

bool scan_is_due() {
  if (segment.KEVENT < 1 || step.NEVT >= most_events_of_a_step) return false;
  return segment.KEVENT == every_event || step.NEVT < segment.KEVENT;
}

/// The change x has been taken: it counts for the step and for its targets.
void count_change(ConstReals x) {
  const Reals DSTEP = equation_vector(arrays.DSTEP);
  for (int e = 1; e <= sizes.NEQ; ++e) DSTEP(e) += x(e);
  STEPVEC(step.NI, x, TargetMode::take);
}

/// Unbalance norm of the trial at hand; above every limit when its state is not finite.
double measure_of_trial() {
  int bad_equation = 0;
  return state_is_finite(bad_equation) ? response.RNORM : std::numeric_limits<double>::infinity();
}

/// The search has found nothing better: its best trial is determined again.
bool end_search(Trial& trial, const LineSearch& search, int tries, bool inside) {
  write(units.NDOUT, "5X,'LINE SEARCH DID NOT CONVERGE AFTER ',I3,' TRIES'", tries);
  if (!inside)
    write(units.NDOUT, "5X,'PREDICTED LINE SEARCH LENGTH OF ',D13.4,' IS BEYOND SPECIFIED LIMITS'", search.SLEN);
  trial.length = search.SBEST;
  determine_trial(trial.length);
  write(units.NDOUT, "5X,'SOLUTION CONTINUED WITH STEP SIZE =',F10.5,5X,'AND UNBALANCED NORM   =',D15.4", trial.length,
        response.RNORM);
  return !refused(false);
}

/// Force change over the iteration and its displacement change wait in BFGS1 and BFGS2 for the next update.
void keep_pair() {
  bfgs.pending = segment.KBFGS == 1;
  if (!bfgs.pending) return;
  const Reals R = equation_vector(arrays.R);
  const Reals f = equation_vector(arrays.BFGS1);
  const Reals s = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    f(e) = prescribed(e) ? ZERO : R(e) - f(e);
    if (prescribed(e)) s(e) = ZERO;
  }
}

void print_iteration() {
  if (segment.KPRINT != print_each_iteration) return;
  write(units.NDOUT, "/,5X,'ITERATION NO.            ..........=',I5", step.NI);
  write(units.NDOUT, "5X,'APPLIED LOAD LEVEL  ...............=',F10.5", response.LEVEL);
  print_results();
}

}  // namespace

bool cut_at_event() {
  if (!scan_is_due()) return false;
  constexpr double no_limit = 0.0;
  EVSCAN(arrays.BFGS2, no_limit);
  const double EF = event_found.EFAC;
  if (!(EF < ONE)) return false;
  ++step.NEVT;
  write(units.NDOUT, "5X,'EVENT PREDICTED, EVENT FACTOR =',F10.6,5X,'GROUP',I5,5X,'ELEMENT',I5", EF, event_found.IGRP,
        event_found.IMEM);
  const Reals du = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) du(e) *= EF;
  step.DLACC -= (ONE - EF) * step.DL;  // only this solve's part is taken back
  count_change(equations(arrays.BFGS2));
  step.STEPT *= ONE - EF;
  return true;
}

void determine_trial(double length) {
  const Reals U = equation_vector(arrays.U);
  const Reals U0 = equation_vector(arrays.U0);
  const Reals DDIS = equation_vector(arrays.DDIS);
  const Reals du = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    const double taken = prescribed(e) ? du(e) : length * du(e);  // the level, and what it imposes, is not searched
    U(e) = U0(e) + (DDIS(e) + taken);
  }
  response.LEVEL = step.LEVEL0 + step.DLACC;
  LODLVL(response.LEVEL);
  determine_states();
  step.taken_over = false;
  write(units.NDOUT, "5X,'STATE DETERMINATION'");
  form_unbalance();
  measure_unbalance();
}

bool begin_search(const Trial& trial) {
  if (segment.KBFGS == 1) copy_vector(arrays.BFGS1, arrays.R);
  if (trial.had_event) return false;
  if (step.NI == 1) return segment.USCALE != ZERO;
  if (segment.NLS == 1) return false;
  write(units.NDOUT, "5X,'BEGIN LINE SEARCH NO.1',5X,'SEARCH TOLERANCE =',D13.4", segment.TOLS);
  return true;
}

bool search_along_increment(Trial& trial) {
  LineSearch search;
  for (int t = 1;; ++t) {
    const double r = measure_of_trial();
    if (r < step.TOL) return true;
    if (t == 1) search.tolerance = std::isfinite(r) ? segment.TOLS * r : ZERO;
    keep_best_trial(search, r);
    if (!(std::abs(search.tolerance) < std::abs(r))) {
      write(units.NDOUT, "5X,'LINE SEARCH CONVERGED',5X,'END LINE SEARCH - STEP SIZE =',F10.4", trial.length);
      return true;
    }
    const bool inside = next_trial_length(search, t, r, segment.SLOW, segment.SUP);
    if (!inside || t >= segment.NLS) return end_search(trial, search, t, inside);
    write(units.NDOUT, "5X,'LINE SEARCH NO. ',I5,5X,'STEP SIZE =',D15.3", t + 1, search.SLEN);
    trial.length = search.SLEN;
    determine_trial(trial.length);
    write_top_unbalances();
    if (refused(true)) return false;
  }
}

bool refused(bool searching) {
  int bad_equation = 0;
  if (!state_is_finite(bad_equation)) return segment.KTERM == 0 || !searching;
  return segment.KTERM == 0 && response.RNORM > segment.UMAX;
}

void accept_trial(Trial& trial) {
  const Reals DDIS = equation_vector(arrays.DDIS);
  const Reals du = equation_vector(arrays.BFGS2);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (!prescribed(e)) du(e) *= trial.length;
    DDIS(e) += du(e);
  }
  if (!trial.event) count_change(equations(arrays.BFGS2));
  keep_pair();
  if (step.NI == 1) begin_prediction(response.RNORM, segment.MAXIT);
  trial.accepted = true;
  print_iteration();
}

}  // namespace tidearc
