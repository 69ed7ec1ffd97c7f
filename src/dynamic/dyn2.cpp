// The DYN2 macro: time integration at a constant step.
#include "dynamic/dyn2.h"

#include "dynamic/commands.h"
#include "dynamic/dynamic.h"
#include "dynamic/sea_loads.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "sea/members/member.h"
#include "sea/wavein.h"
#include "solve/arrays.h"
#include "solve/integration.h"

namespace tidearc {

namespace {

enum class MacroEnd {
  steps_done,
  no_convergence,
  bad_cards,
  fatal_before,
};

void write_end(MacroEnd end) {
  const int n = dynamics.NDYN2;
  const int unit = UNIT_PROGRESS;
  switch (end) {
    case MacroEnd::steps_done:
      write(unit, "5X,'DYN2 MACRO NUMBER ',I2,' COMPLETED:',' MAXIMUM NUMBER OF STEPS REACHED'", n);
      break;
    case MacroEnd::no_convergence:
      write(unit,
            "5X,'DYN2 MACRO NUMBER ',I2,' TERMINATED:',"
            "' EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE'",
            n);
      break;
    case MacroEnd::bad_cards:
      write(unit, "5X,'DYN2 MACRO NUMBER ',I2,' TERMINATED:',' FATAL ERRORS ENCOUNTERED IN INPUT CARDS'", n);
      break;
    case MacroEnd::fatal_before:
      write(unit, "5X,'DYN2 MACRO NUMBER ',I2,' TERMINATED:','FATAL ERRORS FOUND BEFORE THIS MACRO'", n);
      break;
  }
}

/// An irregular sea that is defined anew for each macro brings its cards behind those of the step.
void read_next_time_block() {
  if (dynamics.NDYN2 == 1 || !has_components() || wave.time_block != 1) return;
  if (!IRRSEA(wave.period_code, wave.period_tolerance, response.TIME)) CLOSUP();
}

/// All cards of the macro, whatever is wrong with some of them, so that the next macro card is met.
ConstantSteps read_macro() {
  const ConstantSteps job = read_constant_steps();
  read_next_time_block();
  if (executing()) INTCON(Constants::computed);
  read_initial_conditions(job.NINIT);
  DYNCMD(job.KGRND, job.NFORCE, job.NIMPOS);
  return job;
}

/// The fatal end: the state stays as it is, for prints with the motion that belongs to it.
void leave_unconverged(const ConstantSteps& job, StepOutcome outcome) {
  if (outcome == StepOutcome::unconverged) {
    copy_vector(arrays.VEL, arrays.VT);
    copy_vector(arrays.ACC, arrays.AT);
  }
  report_no_convergence(job);
  set_fatal_flag();
}

MacroEnd run_steps(const ConstantSteps& job) {
  dynamics.level = ONE;  // waves and records act in full
  begin_wave_loads(job.KRISAV == 1);
  if (job.KRISAV == 1) open_load_files(job.NSTEP, integration.DT);
  start_dynamics(job.KENV == 1);
  write_dyn2_legend(job);
  for (dynamics.NS = 1; dynamics.NS <= job.NSTEP; ++dynamics.NS) {
    const StepOutcome outcome = take_constant_step(job);
    if (outcome != StepOutcome::accepted) {
      leave_unconverged(job, outcome);
      return MacroEnd::no_convergence;
    }
    report_constant_step(job);
  }
  return MacroEnd::steps_done;
}

void run_macro() {
  const TimedPhase timed("DYNMIT");
  ++dynamics.NDYN2;
  write(UNIT_PROGRESS, "5X,'START OF DYN2 MACRO: NUMBER = ',I2", dynamics.NDYN2);
  const bool was_executing = executing();
  const ConstantSteps job = read_macro();
  MacroEnd end = was_executing ? MacroEnd::bad_cards : MacroEnd::fatal_before;
  if (executing()) {
    end = run_steps(job);
    end_dynamics();
  }
  write_end(end);
  if (end != MacroEnd::steps_done && !run.check_run) run.had_terminated_macro = true;
}

}  // namespace

void DYN2() {
  TIMSUB("", timer_clear, timers);
  run_macro();
  TIMSUB("", timer_summary, timers);
}

}  // namespace tidearc
