// Step control: the load increment as an unknown of displacement stepping and of iteration at a constant scalar
// displacement.
//
//   STEPVEC   keeps what such a step or iteration is to reach, and what is left of it
//   SCALE0    finds the load increment that reaches it
//
// The conditions themselves are formulas of constraint.h.
#pragma once

#include <array>
#include <type_traits>

#include "run/views.h"
#include "static/segment.h"

namespace tidearc {

/// Targets, what of them has been reached, and what remains. Written by STEPVEC and SCALE0, cleared at the start of a
/// macro; everybody else reads.
struct ScaleBlock {
  double SB = 0.0;    ///< step base: the arc of a step of STEP0                                [length]
  double SARC = 0.0;  ///< arc length of the step, also as printed                              [length]
  double AARC = 0.0;  ///< of it taken so far                                                   [length]
  double SMAX = 0.0;  ///< largest entry of the step (KNMS 2)                                   [length, rad]
  double AMAX = 0.0;  ///< of it taken so far                                                   [length, rad]
  std::array<double, most_stepping_vectors> SVEC{};  ///< target of each stepping vector
  std::array<double, most_stepping_vectors> SACC{};  ///< of it taken so far
  std::array<double, most_stepping_vectors> SREM{};  ///< what remains
  double sign = 1.0;  ///< of the trial that was taken last in this step: -1 against the targets  [-]
  int KCRIT = 0;      ///< critical stepping vector, from 1; 0 none yet                         [-]
  double WTGT = 0.0;  ///< work of an iteration (KIPAR 1), what of it is done, what remains     [force length]
  double WACC = 0.0;
  double WREM = 0.0;
  double ITGT = 0.0;  ///< the same of the iteration vector (KIPAR 4)
  double IACC = 0.0;
  double IREM = 0.0;
  double CSP0 = 0.0;  ///< stiffness parameter of the first step, not related                  [force/length]
  double CSP = 0.0;   ///< current stiffness parameter, related to it                          [-]
};
inline ScaleBlock scaling;
static_assert(std::is_trivially_copyable_v<ScaleBlock>);

/// What a displacement step measures, what an iteration holds, and which way a step goes: the codes of the segment as
/// they act.
enum class StepMeasure { norm, maximum, vectors };
enum class IterationMeasure { work, arc_length, critical_vector, iteration_vector };
enum class StepDirection { load, critical_vector, direction_vector, stiffness };
StepMeasure step_measure();
IterationMeasure iteration_measure();
StepDirection step_direction();

/// True when iteration NI has a load increment to find, and so a reference load to solve for.
bool finds_load(int NI);

enum class TargetMode {
  set,   ///< before the first solve of iteration NI: targets anew
  take,  ///< after a change x: what remains of them
};
/// Targets of the step (NI 1, displacement stepping) or of the iteration (NI above 1, constant scalar displacement);
/// no effect in other iterations. `x` is the change that has been accepted, NEQ entries; for `set` it is the step's
/// increment so far.
void STEPVEC(int NI, ConstReals x, TargetMode mode);

/// Finds step.DL of iteration NI and adds DL * da to du, vectors of NEQ; 0 and no change when the iteration has no load
/// increment to find. False when there is no such increment: the reason stands on the report, and the step cannot go
/// on. Uses the vectors RINC, DSTEP and WORK.
bool SCALE0(ConstReals da, Reals du, int NI);

}  // namespace tidearc
