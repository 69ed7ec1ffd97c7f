// What follows a step: prints, envelopes, step-level saves, the next step size, and whether the segment goes on.
#include <cmath>

#include "results/reports.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

constexpr int print_each_step = 2;

/// Step size after a converged step; restepping must be on.
void choose_next_step_size() {
  SegmentBlock& s = segment;
  const double growth = step_growth(step.NI, s.ITDES, s.ITLOW, s.IFAC);
  if (s.ITDES > 0) s.IFAC = growth;  // stays for the rest of the segment
  if (growth != ZERO) {
    statics.STEPF *= growth;
    if (relative_step(statics.STEPF, s.STEP0) < s.STEPMIN)
      statics.STEPF = (s.STEP0 == ZERO ? ONE : s.STEP0) * s.STEPMIN;
    write(units.NDOUT, "5X,'NUMBER OF ITERATIONS TO CONVERGE WAS LESS THAN',I5,5X,'NEW STEP SIZE =',D15.5", s.ITLOW,
          statics.STEPF);
  }
  if (relative_step(statics.STEPF, s.STEP0) > s.STEPMAX) statics.STEPF = (s.STEP0 == ZERO ? ONE : s.STEP0) * s.STEPMAX;
}

/// Keeps the largest level of the segment, with the level before a turning point where it turned above 1.0.
void track_turning_point() {
  const double change = response.LEVEL - step.last_level;
  if (step.LMAX > ONE && change * step.last_change < ZERO) step.LMAX = step.last_level;
  if (std::abs(response.LEVEL) > std::abs(step.LMAX)) step.LMAX = response.LEVEL;
  step.last_change = change;
  step.last_level = response.LEVEL;
}

void save_when_due() {
  const bool by_count = segment.KPOSTN > 0 && step.since_save == segment.KPOSTN;
  const bool by_level =
      segment.ULTFAC > ZERO && std::abs(response.LEVEL - step.saved_level) > segment.ULTFAC * step.LMAX;
  if (!by_count && !by_level) return;
  save_step_results(response.LEVEL);
  step.saved_level = response.LEVEL;
}

/// The tests that end a segment, in their order.
EndCode end_of_walk() {
  if (!executing()) return step.end;
  if (response.LEVEL >= ONE || segment.FQUIT >= response.LEVEL) return EndCode::level_reached;
  if (step.NS + 1 > segment.NSTEPS) return EndCode::steps_used;
  return EndCode::none;
}

}  // namespace

bool finish_step(Outcome outcome) {
  if (outcome == Outcome::stopped) {  // the step has no end: nothing to take over, nothing to save
    --step.since_save;
    return false;
  }
  if (outcome == Outcome::converged && segment.KTERM == 0) choose_next_step_size();
  write(units.NDOUT, "/,' RESPONSE AT LOAD STEP',I5,5X,'ITERATION NO.',I5,5X,'LOAD LEVEL =',F10.5", step.NS, step.NI,
        response.LEVEL);
  if (segment.KPRINT == print_each_step) print_results();
  if (outcome == Outcome::lost) {  // no new state: nothing to take over, nothing to save
    --step.since_save;
    return false;
  }
  write_top_unbalances();
  update_state();
  update_node_envelopes();
  track_turning_point();
  save_when_due();
  step.end = end_of_walk();
  return executing() && step.end == EndCode::none;
}

}  // namespace tidearc
