// Load stepping: the state of one segment's walk, and the procedures that make up a step.
//
//   stat.cpp       the macro: its card, its segments, its end
//   walk.cpp       one segment: start, step loop, end
//   step.cpp       one step: its iterations, one pass after the other
//   increment.cpp  one pass up to its increment: load, updates, solution, load increment
//   trial.cpp      the state of a trial: events, line search, acceptance
//   restep.cpp     steps that do not come to rest: smaller steps, and the ways out
//   step_end.cpp   what follows an accepted step: prints, envelopes, saves, the next step size
//   scale.cpp      the load increment as an unknown; stepvec.cpp its targets, constraint.cpp its formulas
//   control.cpp    when to form the stiffness and when to take over the state
//   norm.cpp       the unbalance norm and the largest unbalances
//   progress.cpp   the table on the progress file
#pragma once

#include <array>
#include <type_traits>

#include "run/views.h"
#include "static/control.h"

namespace tidearc {

/// How a segment ended; the numbers stand on the progress file's messages.
enum class EndCode : int {
  none = 0,
  input_errors = 1,
  level_reached = 2,
  steps_used = 3,
  iterations_used = 4,
  attempts_used = 5,
};

/// Where the walk through a segment stands. All increments count from the last state update.
struct StepBlock {
  int NS = 0;            ///< current step                                                   [-]
  int NI = 0;            ///< current iteration                                              [-]
  double LEVEL0 = 0.0;   ///< level at the last state update                                 [-]
  double DLACC = 0.0;    ///< level added since                                              [-]
  double DL = 0.0;       ///< load increment of this solve                                   [-]
  double STEPT = 0.0;    ///< step factor still to be taken in this step                     [-]
  double TOL = 0.0;      ///< tolerance in force                                             [force]
  double APPLIED = 0.0;  ///< norm of the applied load                                       [force]
  int KSTF = 0;          ///< stiffness decision: 1 form, 0 keep, -1 update vectors
  int KSTA = 0;          ///< state decision: 1 take over, 0 no
  int NATTS = 0;         ///< attempts to go below the smallest step in this segment         [-]
  int NEVT = 0;          ///< events in this step                                            [-]
  UpdateCounters counters{};
  std::array<char, 3> STACOD{'N', 'O', ' '};  ///< "YES" when the last iteration took over the state
  std::array<char, 3> STFCOD{'N', 'O', ' '};  ///< "YES" when it formed the stiffness
  bool formed = false;                        ///< the stiffness has been formed in this macro
  bool taken_over = false;                    ///< no determination since the last state update
  bool forces_known = false;  ///< R belongs to the state at hand (set by a STAT, taken back by other analyses)
  EndCode end = EndCode::none;
  int since_save = 0;        ///< steps since the last step-level save                      [-]
  double LMAX = 0.0;         ///< largest level of the segment, or that before a turn above 1  [-]
  double saved_level = 0.0;  ///< level at the last save                                    [-]
  double last_level = 0.0;   ///< level of the step before                                  [-]
  double last_change = 0.0;  ///< change of level in the step before                        [-]
};
inline StepBlock step;
static_assert(std::is_trivially_copyable_v<StepBlock>);

/// How a step or a pass of it ended.
enum class Outcome {
  iterate,    ///< go on with the next iteration
  converged,  ///< accepted in equilibrium
  accepted,   ///< accepted out of equilibrium
  restep,     ///< the state at the step start stands again; take the step anew
  fatal,      ///< the segment ends; step.end tells why
  lost,       ///< not finite: the state of the last accepted step stands again; the segment ends
  stopped,    ///< no load increment was found: the state last determined stands; the segment ends without a word
};

/// Takes one step from begin to acceptance.
Outcome take_step();
/// What follows a step. True when the segment goes on.
bool finish_step(Outcome outcome);
/// One segment from its start to its end, after its cards have been read.
void walk_segment();

/// Takes over the state at hand: U0 = U, increments to zero, current element states become the reference.
void update_state();
/// RU = P - R for free equations, 0 for prescribed ones.
void form_unbalance();

/// Norms of the unbalance (into response.RNORM) and of the applied load (into step.APPLIED).
void measure_unbalance();
/// The largest unbalances of the step on TAP32.
void write_top_unbalances();
/// True when displacements, internal forces, unbalance, norm and level are finite; else names the first bad equation,
/// displacements first (0 when it is the norm or the level).
bool state_is_finite(int& bad_equation);

/// Legend of the progress table, once a segment; one row per iteration end.
void write_progress_legend();
void write_progress_row();
/// The message of an end code on the progress file.
void write_segment_end(EndCode end);

/// One line on the load level history, and the count of saved steps.
void save_step_results(double level);

}  // namespace tidearc
