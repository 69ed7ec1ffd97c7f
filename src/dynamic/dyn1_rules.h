// The decisions of an analysis with variable steps, as functions of values: what becomes of a step, how long the next
// one is, when a load level rises, when the macro ends. All compares are exact: a value that meets a limit counts as
// told at each rule.
#pragma once

#include <optional>
#include <type_traits>

namespace tidearc {

enum class SolutionType : int {
  events_variable = 1,  ///< cut at events, the step chosen by the midstep error
  events_constant = 2,  ///< cut at events, the step as given
  midstep_error = 3,    ///< no events, the step chosen by the midstep error
  local_error = 4,      ///< no events, the step chosen by the local error of the displacements
};
inline bool cuts_at_events(SolutionType type) {
  return type == SolutionType::events_variable || type == SolutionType::events_constant;
}
inline bool measures_midstep(SolutionType type) {
  return type == SolutionType::events_variable || type == SolutionType::midstep_error;
}
/// The step size may change, so a step may have to be taken anew from its start.
inline bool chooses_steps(SolutionType type) { return type != SolutionType::events_constant; }

/// Types of a line on the progress file; a type also says what comes next.
enum class LineType : int {
  none = 0,      ///< no line yet in this macro
  same = 1,      ///< end of a step, the next has the same size
  longer = 2,    ///< end of a step, the next is longer
  substep = 3,   ///< end of a substep
  error = 4,     ///< the error is too large: the step is taken anew
  substeps = 5,  ///< too many substeps: the step is taken anew
};

/// How the macro ended; the numbers are those of its messages.
enum class Dyn1End : int {
  not_executing = 0,
  bad_cards = 1,
  unbalance = 2,
  steps = 3,
  time = 4,
  level = 5,
  displacement = 6,
  step_size = 7,
};

/// What the cards say about the choice of the step.
struct StepRules {
  double DTMIN = 0.0;  ///< smallest step; not positive: the macro ends where a smaller one is wanted   [s]
  double DTMAX = 0.0;  ///< largest step that a growth may reach                                        [s]
  double REDF = 0.0;   ///< a reduction multiplies the step with it; 0: by the error                    [-]
  double INCF = 0.0;   ///< a growth multiplies the step with it; 0: by the error                       [-]
  double ERRUP = 0.0;  ///< an error not below it is too large
  double ERRLO = 0.0;  ///< an error not below it keeps the step from growing
  int NBELOW = 0;      ///< steps in a row below ERRLO before the step grows                            [-]
  double DTMINA() const { return DTMIN < 0.0 ? -DTMIN : DTMIN; }
};
static_assert(std::is_trivially_copyable_v<StepRules>);

/// The step after a reduction from DT, smaller than DT.
double reduced_step(double DT, double ERR, const StepRules& rules);
/// The step that a growth from DT asks for, which may be above DTMAX.
double increased_step(double DT, double ERR, const StepRules& rules);
/// The same when it may be taken: not above DTMAX, and not below DT (a DTMAX below DT is no reason to shrink).
std::optional<double> grown_step(double DT, double ERR, const StepRules& rules);

enum class Verdict {
  take,    ///< go on with the step as it is
  repeat,  ///< take the step anew, with the smaller step
  stop,    ///< the smaller step is not allowed: the macro ends
};
struct Judgement {
  Verdict verdict = Verdict::take;
  double DT = 0.0;  ///< step from now on   [s]
};
/// A smaller step where the present one is refused: not below the magnitude of DTMIN it is taken; else the macro ends,
/// or, with a positive DTMIN, goes on with the step as it is.
Judgement refuse_step(double DT, double ERR, const StepRules& rules);

/// What the test of a substep's error carries along.
struct ErrorCounts {
  int NLOW = 0;       ///< steps in a row with an error below ERRLO     [-]
  bool KEEP = false;  ///< the step may not grow behind this one
};
/// The test of a substep's error. The last substep of a step, alone, counts as a step of low error.
Judgement judge_error(double DT, double ERR, bool last_substep, const StepRules& rules, ErrorCounts& counts);

/// The step size behind a step that ended with the unbalance UB: shorter above `upper`, longer below `lower`.
double step_after_unbalance(double DT, double UB, double upper, double lower, double ERR, bool KEEP,
                            const StepRules& rules);

/// A structure at rest takes the next load level; a step that is taken anew has it already.
inline bool level_rises(double velocity, double cutoff, double PRECF, LineType last) {
  return velocity < cutoff && PRECF != 0.0 && last != LineType::error && last != LineType::substeps;
}

/// Limits of unbalance and displacement, neither of which may be met.
std::optional<Dyn1End> exceeded_limit(double UB, double UBMAX, double displacement, double DISMAX);

struct MacroLimits {
  int NSMAX = 0;        ///< steps                                                              [-]
  double TMAX = 0.0;    ///< time since the macro's start                                       [s]
  double PRECMX = 0.0;  ///< load level, which ends the macro when the structure is at rest      [-]
  double cutoff = 0.0;  ///< largest velocity of a structure at rest
};
/// The end that is reached behind a step, in the order steps, time, load level.
std::optional<Dyn1End> reached_end(int NS, double elapsed, double level, double velocity, const MacroLimits& limits);

/// Results that fall due by steps or by time, whichever comes first.
struct OutputInterval {
  int steps = 0;      ///< below 1: not by steps   [-]
  double time = 0.0;  ///< [s]
};
struct OutputCount {
  int steps = 0;      ///< since the last output, or the macro's start   [-]
  double time = 0.0;  ///< of the last output, or of the macro's start   [s]
};
/// Counts a step that ends at TIME; true when the output is due, and then counts anew.
bool output_due(const OutputInterval& interval, double TIME, OutputCount& count);

/// Scale that makes a change of acceleration over a step into an error of displacement.
double local_error_scale(double BETA, double DT);
/// Error of one equation: change of acceleration over the step from the whole increment d, times the scale. A scale of
/// 0 gives 0, whatever the change.
double local_error(double A0, double A1, double A3, double d, double v, double a, double scale);

/// Half-step residual: the equation of motion at the middle of a step with constant acceleration. H. D. Hibbitt, B. I.
/// Karlsson, ASME paper 79-PVP-122 (1979).
struct Midstep {
  double displacement;  ///< increment from the step's start   [length, rad]
  double velocity;      ///< [1/s]
  double acceleration;  ///< [1/s2]
};
/// Motion at the middle of a step of DT with the increment d and the velocity v at its start.
Midstep midstep_motion(double d, double v, double DT);

}  // namespace tidearc
