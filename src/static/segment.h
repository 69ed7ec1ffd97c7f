// One load segment of a STAT macro: what its cards say, after the rules that fill their defaults.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <type_traits>

#include "model/control.h"

namespace tidearc {

inline constexpr int most_vector_terms = 20;
inline constexpr int most_stepping_vectors = 20;

/// A list of (equation, factor) pairs: stepping, direction and iteration vectors.
struct TermVector {
  double scale = 1.0;                             ///< increment scale factor                     [-]
  int count = 0;                                  ///< terms                                      [-]
  std::array<int, most_vector_terms> equation{};  ///< 1..NEQ + 1 (the sink of constrained components)
  std::array<double, most_vector_terms> factor{};
};

/// NSEG and ISEG are set by STAT, all else is written by SEGIN; the stepping reads (and changes KPRINT on a MAXIT stop,
/// and IFAC by ITDES).
struct SegmentBlock {
  int NSEG = 0;             ///< segments of the macro                                            [-]
  int ISEG = 0;             ///< running number of this segment                                   [-]
  int KSTEP = 1;            ///< step type: 2 displacement stepping, else load stepping
  int KNMS = 0;             ///< displacement stepping: 2 maximum, 3 stepping vectors, else norm; 0 in load stepping
  double SEGVAL = 0.0;      ///< segment value
  int NSVEC = 0;            ///< stepping vectors                                                 [-]
  int KDIR = 0;             ///< step direction code: below 1 as 1, 5 as 4
  double STEP0 = 0.0;       ///< initial step factor                                              [-]
  int NSTEPS = 0;           ///< most steps                                                       [-]
  bool end_report = false;  ///< NSTEPS was negative: envelopes at the segment's end
  int KEVENT = 0;           ///< element event code
  int KITER = 1;            ///< iteration type: 2 constant scalar displacement, else constant load
  int KIPAR = 0;  ///< with KITER 2: 1 work, 2 arc length, 3 critical vector (1 without vectors), 4 iteration vector
  int MAXIT = 0;  ///< most iterations of a step                                        [-]
  int KTERM = 0;  ///< 0 restep, 1 stop, 2 continue when MAXIT is exceeded
  double FQUIT = 0.0;       ///< stop when the level is not above it                              [-]
  int KSSTF = 1;            ///< step control for stiffness update
  int KISTF = 0;            ///< iteration control for stiffness update
  int KBFGS = 0;            ///< 1: updates between stiffness updates
  int KISTA = 0;            ///< iteration control for state update
  int KPRINT = 0;           ///< results print code
  int KRST = 0;             ///< 1: results on the restart file at the end of the segment
  int KPOST = 0;            ///< 1: results for the post-processor at the end of the segment
  int KMEMB = 0;            ///< 1: results for member stress checks at the end of the segment
  int KPOSTN = 0;           ///< save at every n-th step, 0 none
  double ULTFAC = 0.0;      ///< save when the level has moved by more than this part of the largest
  int MACPR = 0;            ///< 1: load and displacement vectors of each iteration
  int IROB = 0;             ///< 1: no unbalance in the first iteration of a step
  double ARCL = 0.0;        ///< initial arc length, 0 keeps the current one                      [length]
  double STEPSZI = 0.0;     ///< first step factor with KIPAR 2, 0 keeps the current one          [-]
  int KUTYPE = 0;           ///< unbalance norm: 0 maximum, 1 Euclidean, else weighted
  int KUMOM = 0;            ///< 1: moments count in the norm
  double TOLU = 0.0;        ///< tolerance of all steps but the last                              [force]
  double TOLL = 0.0;        ///< tolerance of the last step                                       [force]
  double USCALE = 0.0;      ///< above 0: step magnitude is scaled in the first iteration          [force]
  int NLS = 1;              ///< most line searches
  double SUP = 0.0;         ///< largest length a line search may take                            [-]
  double SLOW = 0.0;        ///< smallest                                                         [-]
  double TOLS = 0.0;        ///< part of the first unbalance at which a line search ends          [-]
  int NTOP = 0;             ///< largest unbalances on TAP32                                      [-]
  double RFAC = 0.25;       ///< a restep multiplies the step factor with it                  [-]
  double STEPMIN = 0.0156;  ///< smallest step factor, as part of STEP0                       [-]
  int NATT = 0;             ///< attempts to go below it before the analysis is suspended, 0 any
  int ITLOW = 0;            ///< a step of fewer iterations makes the next one larger         [-]
  double IFAC = 4.0;        ///< by this factor                                               [-]
  double STEPMAX = 1.0;     ///< largest step factor, as part of STEP0                        [-]
  int KPRED = 0;            ///< iteration at which convergence prediction starts, 0 none      [-]
  double GRACE = 0.0;       ///< grace ratio of the prediction                                [-]
  double WPRED = 1.0;       ///< weight of the iteration at hand in the prediction            [-]
  double UMAX = 1.0E20;     ///< unbalance at which a step is taken anew                      [force]
  int ITDES = 0;            ///< desired iterations of a step, 0 none                         [-]
  std::array<TermVector, most_stepping_vectors> stepping{};
  TermVector direction{};
  TermVector iteration{};
  std::array<double, 501> factor{};  ///< participation of force pattern p in the order of NT10, factor[p - 1]
};
inline SegmentBlock segment;
static_assert(std::is_trivially_copyable_v<SegmentBlock>);

/// Participation of prescribed displacement pattern p of the segment at hand, value[p - 1]. A block of its own, all
/// zero at the start, since nothing but the five columns of its count field limits the patterns: untouched, it costs
/// nothing. Written by SEGIN.
struct PrescribedFactorBlock {
  std::array<double, 99999> value{};
};
inline PrescribedFactorBlock prescribed_factors;
static_assert(std::is_trivially_copyable_v<PrescribedFactorBlock>);

/// One factor per prescribed displacement pattern of the model.
inline std::span<const double> prescribed_participation() {
  const auto most = static_cast<int>(prescribed_factors.value.size());
  const int count = std::clamp(static_loads.NZDISP, 0, most);
  return std::span<const double>(prescribed_factors.value).first(static_cast<std::size_t>(count));
}

/// What the static macros of a problem carry from segment to segment.
struct StaticBlock {
  double STEPF = 0.0;                     ///< current step factor                                   [-]
  double ARC = 0.0;                       ///< current arc length                                    [length]
  bool moving_loads = false;              ///< some pattern depends on the displacements
  std::array<double, 501> accumulated{};  ///< accumulated factor of each force pattern              [-]
  std::array<double, 3> running_total{};  ///< self weight, buoyancy, current factors over all segments
};
inline StaticBlock statics;
static_assert(std::is_trivially_copyable_v<StaticBlock>);

/// Reads, defaults and echoes all cards of segment ISEG of a STAT; clears RINC; sets STEPF and ARC; opens TAP32 when it
/// is asked for. False when a card of this segment is wrong (the fatal flag is then set): the segment ends with code 1.
bool SEGIN();

/// Rows of `NO.` and factor, six to a line, numbered from 1, under one line of heads; nothing when there is no factor.
void print_factor_rows(std::span<const double> factors);

/// Forms RINC: every pattern at its factor of this segment, at the accepted displacements U. Sets
/// statics.moving_loads when some pattern depends on the displacements, whatever its factor.
void LODSEG();
/// Forms P, the total applied load at a level: each pattern at level * factor + accumulated, at the trial displacements
/// U; sets the node temperatures and pressures of that level.
void LODLVL(double level);

/// The STAT macro.
void STAT();

}  // namespace tidearc
