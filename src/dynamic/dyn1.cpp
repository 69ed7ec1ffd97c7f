// The DYN1 macro: time integration with steps that the program chooses, cut at events or judged by their error, and
// with load levels that rise whenever the structure has come to rest.
#include "dynamic/dyn1.h"

#include <optional>
#include <string>

#include "dynamic/commands.h"
#include "dynamic/dynamic.h"
#include "dynamic/sea_loads.h"
#include "dynamic/step.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/integration.h"

namespace tidearc {

namespace {

/// All cards of the macro, whatever is wrong with some of them, so that the next macro card is met.
void read_macro() {
  read_dyn1_cards();
  if (executing()) INTCON(Constants::computed);
  read_initial_conditions(dyn1.cards.NINIT);
  DYNCMD(dyn1.cards.KGROUND, dyn1.cards.NFORCE, dyn1.cards.NIMPOSED);
}

/// Without a capacity search the level is 1.0 for good, for later macros too.
void begin_level() {
  if (dyn1.cards.PRECF == ZERO) {
    dynamics.ULTLVL = ONE;
  } else if (!dyn1.cards.continues) {
    dynamics.ULTLVL = ZERO;
  }
  dynamics.level = dynamics.ULTLVL;
}

void start_macro() {
  dynamics.KUTYPE = 0;
  dynamics.KUMOM = dyn1.cards.KMOMENT;
  dynamics.NTOP = dyn1.cards.NTOP;
  dynamics.APPLIED = ZERO;
  begin_level();
  begin_wave_loads(false);
  start_dynamics(dyn1.cards.KENVELOPE == 1);
  dyn1.last_line = LineType::none;
  dyn1.DTC = integration.DT;
  dyn1.NSUB = 0;
  dyn1.counts = {};
  dyn1.ERR = ZERO;
  dyn1.peak = find_peak_motion();
  start_dyn1_outputs();
  write_dyn1_legend();
}

bool is_failure(Dyn1End end) { return end == Dyn1End::unbalance || end == Dyn1End::step_size; }

void complain_about(Dyn1End end) {
  const std::string place = format("'DYN1 macro',I3,', step',I7,': '", dynamics.NDYN1, dynamics.NS);
  if (end == Dyn1End::step_size)
    complain(not_on_deck, place + format("'the step size',E12.4,' cannot be reduced further'", integration.DT));
  if (end == Dyn1End::unbalance)
    complain(not_on_deck,
             place + format("'the unbalance',E12.4,' is not below',E12.4", response.RNORM, dyn1.cards.UBMAX));
}

/// A limit that is left ends the analyses of the problem. A step that is not finite has been told by itself.
void leave_at_limit(Dyn1End end, bool finite) {
  write_dyn1_box(end);
  if (finite) complain_about(end);
  set_fatal_flag();
}

Dyn1End run_steps() {
  const Dyn1Cards& c = dyn1.cards;
  for (dynamics.NS = 1;; ++dynamics.NS) {
    const StepResult step_result = take_dyn1_step();
    std::optional<Dyn1End> end = step_result.end;
    if (end) leave_at_limit(*end, step_result.finite);
    if (step_result.accepted) put_out_dyn1_step();
    if (!end)
      end = reached_end(dynamics.NS, response.TIME - dynamics.TSTART, dynamics.ULTLVL, dyn1.peak.velocity, c.limits);
    if (!end) continue;
    if (step_result.finite) put_out_dyn1_end(*end);
    return *end;
  }
}

void run_macro() {
  const TimedPhase timed("DYNMIT");
  ++dynamics.NDYN1;
  write(UNIT_PROGRESS, "5X,'START OF DYN1 MACRO: NUMBER = ',I2", dynamics.NDYN1);
  Dyn1End end = executing() ? Dyn1End::bad_cards : Dyn1End::not_executing;
  read_macro();
  bool failed = true;
  if (executing()) {
    start_macro();
    end = run_steps();
    end_dynamics();
    failed = is_failure(end);
  }
  write_dyn1_end(end);
  if (failed && !run.check_run) run.had_terminated_macro = true;
}

}  // namespace

void DYN1() {
  TIMSUB("", timer_clear, timers);
  run_macro();
  TIMSUB("", timer_summary, timers);
}

}  // namespace tidearc
