// One step of an analysis with variable steps: attempts until one of them is accepted, and in each the substeps from
// event to event. There is no iteration; a substep is one solution, and what it leaves out of balance goes into the
// next one.
#include <cmath>

#include "dynamic/dyn1.h"
#include "dynamic/sea_loads.h"
#include "dynamic/step.h"
#include "elements/contract/event_scan.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

/// How a substep went.
enum class SubstepEnd {
  event,     ///< cut at an event, the next substep takes the rest
  accepted,  ///< the step has ended
  repeat,    ///< the step is to be taken anew from its start, with another size
  dropped,   ///< no smaller step is allowed
  lost,      ///< not finite
};

/// The element states are kept where the step may have to be taken anew.
void keep_step_start() {
  dyn1.start_time = response.TIME;
  dyn1.start_level = dynamics.ULTLVL;
  dyn1.start_unbalance = response.RNORM;
  dyn1.start_applied = dynamics.APPLIED;
  SDUP();
  dyn1.kept = chooses_steps(dyn1.cards.KSOL);
  if (dyn1.kept) save_states();
}

/// The same before the first substep of a constant step overwrites the reference generation; only a state that is not
/// finite leads back from there.
void keep_before_update() {
  if (!dyn1.kept) save_states();
  dyn1.kept = true;
}

/// Displacements and element states of the step's start. Velocities and accelerations of free equations have not left
/// it; those of prescribed equations are set by the right-hand side of each attempt.
void return_to_step_start() {
  if (dyn1.kept) recover_states();
  dynamics.taken_over = false;
  copy_vector(arrays.U, arrays.UN);
  copy_vector(arrays.U0, arrays.UN);
}

/// The accepted state stands again, as if the step had not been tried.
void drop_step() {
  return_to_step_start();
  // Of a constant step only the reference generation is that of its start.
  if (!chooses_steps(dyn1.cards.KSOL)) determine_states();
  response.TIME = dyn1.start_time;
  return_wave_loads();
  dynamics.ULTLVL = dynamics.level = dyn1.start_level;
  response.RNORM = dyn1.start_unbalance;
  dynamics.APPLIED = dyn1.start_applied;
  copy_vector(arrays.R, arrays.RN);
  copy_vector(arrays.P, arrays.PN);
  copy_vector(arrays.D, arrays.DN);
  copy_vector(arrays.XI, arrays.XIN);
}

/// The step from its start on, with another size.
SubstepEnd take_anew(LineType why, double DT) {
  write_dyn1_line(why);
  return_to_step_start();
  response.TIME = dyn1.start_time + DT;
  integration.DT = DT;
  return SubstepEnd::repeat;
}

SubstepEnd give_up(LineType why) {
  write_dyn1_line(why);
  return SubstepEnd::dropped;
}

/// A structure at rest takes the next level, once in a step.
void raise_level() {
  const Dyn1Cards& c = dyn1.cards;
  if (level_rises(dyn1.peak.velocity, c.limits.cutoff, c.PRECF, dyn1.last_line)) dynamics.ULTLVL += c.PRECF;
  dynamics.level = dynamics.ULTLVL;
}

/// The start of an attempt: constants of its size, its loads, its first right-hand side.
void begin_attempt() {
  dyn1.NSUB = 0;
  dyn1.counts.KEEP = dyn1.cards.KSOL == SolutionType::events_constant;
  clear_vector(arrays.DSTEP);
  dyn1.scale = local_error_scale(integration.BETA, integration.DT);
  if (integration.DT != dyn1.DTC) INTCON(Constants::rescaled, dyn1.DTC);
  dyn1.DTC = integration.DT;
  raise_level();
  RDYNAM();
  EFFLOD();
}

/// Part of the increment that is taken.
double find_event() {
  const TimedPhase timed("EVNTEL");
  event_found = {};
  if (cuts_at_events(dyn1.cards.KSOL) && dyn1.NSUB <= most_events_of_a_step) EVSCAN(arrays.RU, dyn1.cards.EVMAX);
  return event_found.EFAC;
}

void take_increment(double part) {
  const Reals d = equation_vector(arrays.DSTEP);
  const Reals du = equation_vector(arrays.RU);
  for (int e = 1; e <= sizes.NEQ; ++e) d(e) += part * du(e);
  RESPD1();
  UNBALN();
}

/// The limit of substeps, before one is taken.
SubstepEnd check_substeps() {
  const Dyn1Cards& c = dyn1.cards;
  if (dyn1.NSUB <= c.NSUBMX || !chooses_steps(c.KSOL)) return SubstepEnd::event;
  const Judgement judgement = refuse_step(integration.DT, dyn1.ERR, c.rules);
  if (judgement.verdict == Verdict::repeat) return take_anew(LineType::substeps, judgement.DT);
  return judgement.verdict == Verdict::stop ? give_up(LineType::substeps) : SubstepEnd::event;
}

/// The error of the increment, before it is taken.
SubstepEnd check_error(bool last_substep) {
  const TimedPhase timed("STPCTL");
  const Dyn1Cards& c = dyn1.cards;
  dyn1.ERR = measure_error();
  if (!chooses_steps(c.KSOL)) return SubstepEnd::event;
  if (!std::isfinite(dyn1.ERR)) return SubstepEnd::lost;
  const Judgement judgement = judge_error(integration.DT, dyn1.ERR, last_substep, c.rules, dyn1.counts);
  if (judgement.verdict == Verdict::repeat) return take_anew(LineType::error, judgement.DT);
  return judgement.verdict == Verdict::stop ? give_up(LineType::error) : SubstepEnd::event;
}

SubstepEnd take_substep() {
  ++dyn1.NSUB;
  SubstepEnd outcome = check_substeps();
  if (outcome != SubstepEnd::event) return outcome;
  FSTIF();
  DISSOL();
  const double EFAC = find_event();
  outcome = check_error(EFAC == 1.0);
  if (outcome != SubstepEnd::event) return outcome;
  take_increment(EFAC);
  if (!trial_is_finite()) return SubstepEnd::lost;
  if (EFAC != 1.0) keep_before_update();
  SDUP();
  if (EFAC == 1.0) return SubstepEnd::accepted;
  write_dyn1_line(LineType::substep);
  set_remaining_ways();
  return SubstepEnd::event;
}

/// Without iterations the equation of motion holds but for RU: what is left of it goes into the accelerations.
void correct_accelerations() {
  const Reals RU = equation_vector(arrays.RU);
  const Reals AT = equation_vector(arrays.AT);
  const Reals mass = pool.reals(masses.AMASS, NEQ1());
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (mass(e) != ZERO && !prescribed(e)) AT(e) += RU(e) / mass(e);
}

/// The size of the next step; the type of this one's line.
LineType choose_next_step(double UB) {
  const Dyn1Cards& c = dyn1.cards;
  if (!chooses_steps(c.KSOL)) return LineType::same;
  LineType type = LineType::same;
  if (!dyn1.counts.KEEP) {
    if (const auto longer = grown_step(integration.DT, dyn1.ERR, c.rules)) {
      integration.DT = *longer;
      type = LineType::longer;
    }
  }
  integration.DT = step_after_unbalance(integration.DT, UB, c.UBUP, c.UBLO, dyn1.ERR, dyn1.counts.KEEP, c.rules);
  return type;
}

/// The trial becomes the accepted state.
std::optional<Dyn1End> finish_step() {
  const double UB = response.RNORM;
  if (dyn1.cards.KACC == 0) correct_accelerations();
  ENERGY();
  accept_step();
  dyn1.peak = find_peak_motion();
  dyn1.out = {};
  ENVUP();
  write_dyn1_line(choose_next_step(UB));
  return exceeded_limit(UB, dyn1.cards.UBMAX, dyn1.peak.displacement, dyn1.cards.DISMAX);
}

SubstepEnd attempt_step() {
  begin_attempt();
  SubstepEnd outcome = SubstepEnd::event;
  while (outcome == SubstepEnd::event) outcome = take_substep();
  return outcome;
}

}  // namespace

PeakMotion find_peak_motion() {
  const IntegerTable ID = node_ID();
  const Reals U = equation_vector(arrays.U);
  const Reals VEL = equation_vector(arrays.VEL);
  PeakMotion peak;
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    for (int c = 1; c <= 3; ++c) {
      const int e = ID(n, c);
      if (e > sizes.NEQ) continue;
      if (std::abs(U(e)) > peak.displacement) peak.displacement = std::abs(U(e));
      if (prescribed(e) || !(std::abs(VEL(e)) > peak.velocity)) continue;
      peak.velocity = std::abs(VEL(e));
      peak.node = n;
      peak.direction = c;
    }
  }
  return peak;
}

StepResult take_dyn1_step() {
  keep_step_start();
  DYNINI();
  SubstepEnd outcome = SubstepEnd::repeat;
  while (outcome == SubstepEnd::repeat) outcome = attempt_step();
  if (outcome == SubstepEnd::accepted) return {true, true, finish_step()};
  if (outcome == SubstepEnd::dropped) {
    drop_step();
    return {false, true, Dyn1End::step_size};
  }
  tell_lost_trial();
  write_dyn1_line(LineType::error);
  drop_step();
  return {false, false, Dyn1End::unbalance};
}

}  // namespace tidearc
