// The analysis vectors: equation-length arrays of the work pool that all analyses share, laid down once per problem.
#pragma once

#include <array>
#include <type_traits>

#include "model/control.h"
#include "run/vectors.h"
#include "run/views.h"
#include "run/workpool.h"

namespace tidearc {

/// Pool indices, in the order in which the arrays stand. Every vector has NEQ1 entries; entry NEQ1 is the sink: zero in
/// displacement-type vectors, unread in load-type vectors. Written by carve_analysis_arrays; everybody else reads.
struct ArrayBlock {
  int U = 1;        ///< total displacements, trial or accepted                          [length, rad]
  int VEL = 1;      ///< velocities                                                      [1/s]
  int ACC = 1;      ///< accelerations                                                   [1/s2]
  int R = 1;        ///< internal (resisting) forces of the state at hand                [force]
  int RU = 1;       ///< unbalance; du after a solve                                     [force; length]
  int RA = 1;       ///< reference load; da after a solve                                [force; length]
  int RINC = 1;     ///< increment load vector of the segment                            [force]
  int U0 = 1;       ///< displacements at the last state update                          [length, rad]
  int MSTAT = 1;    ///< integers: equation status with run links
  int XP = 1;       ///< imposed displacement of prescribed equations per unit level     [length, rad]
  int PATTERN = 1;  ///< NPAT vectors: rows into which pattern records are read          [force]
  int DDIS = 1;     ///< displacement increment since the last state update              [length, rad]
  int P = 1;        ///< total applied load at the level at hand                         [force]
  int ENVMAX = 1;   ///< largest displacements of the macro, and the times of them       [length, rad; s]
  int TMAX = 1;
  int ENVMIN = 1;  ///< smallest displacements of the macro, and the times of them
  int TMIN = 1;
  int WORK = 1;    ///< scratch of the routine at hand
  int ZDISP = 1;   ///< NZDISP prescribed displacement vectors                          [length, rad]
  int DSTEP = 1;   ///< displacement increment of the step, as far as it is accepted    [length, rad]
  int WAVE = 1;    ///< wave loads                                                      [force]
  int BFGS1 = 1;   ///< internal forces before a trial; then their change, for update vectors  [force]
  int BFGS2 = 1;   ///< increment of an iteration, kept for update vectors              [length]
  int STATUS = 1;  ///< integers: status words of the last factorisation
  int PIVOT = 1;   ///< pivots of a blocked factor
  int DIAG = 1;    ///< assembled diagonal of a blocked matrix
  // From here to XIN only where a dynamic analysis is to come.
  int UN = 1;    ///< displacements at the start of a dynamic step                    [length, rad]
  int UTS = 1;   ///< displacements at the start of a dynamic macro                   [length, rad]
  int VT = 1;    ///< velocities of the trial state of a dynamic step                 [1/s]
  int AT = 1;    ///< its accelerations                                               [1/s2]
  int VD = 1;    ///< velocities to which its damping forces belong                   [1/s]
  int PS = 1;    ///< static part of the applied load of a dynamic step               [force]
  int PN = 1;    ///< applied load of the accepted dynamic state                      [force]
  int RN = 1;    ///< its internal forces                                             [force]
  int D = 1;     ///< damping forces of the trial state, masses included              [force]
  int DN = 1;    ///< those of the accepted dynamic state                             [force]
  int DAMP = 1;  ///< damping forces of the elements, summed by a pass                [force]
  int XI = 1;    ///< displacements that records impose, since the macro's start      [length, rad]
  int XIN = 1;   ///< the same at the start of the step                               [length, rad]
  /// Response history of the degrees of freedom on the print lists X, Y, Z, one real each      [length, rad]
  std::array<int, 3> HISTORY{1, 1, 1};
};
inline ArrayBlock arrays;
static_assert(std::is_trivially_copyable_v<ArrayBlock>);

/// Which analyses the vectors are to serve.
enum class Analyses { all, all_but_dynamic };

/// Advances NEXT to an odd word index, zeroes the pool from there to its end, lays the vectors down, checks storage
/// (phase 9) and makes all equations free. storage.KSTART is the first of them. Vectors that are not wanted take no
/// room and stand where the next one does.
void carve_analysis_arrays(Analyses wanted = Analyses::all);

/// Whether the vectors of dynamic analyses were laid down.
inline bool dynamic_arrays_stand() { return arrays.UN != arrays.XIN; }

inline Reals equation_vector(int index) { return pool.reals(index, NEQ1()); }

/// All NEQ1 entries of the vectors at these pool indices, the sink included.
inline void copy_vector(int to, int from) { RCOPY(equation_vector(to).data(), equation_vector(from).data(), NEQ1()); }
inline void clear_vector(int index) { RZERO(equation_vector(index).data(), NEQ1()); }

/// The run's time and load level, as prints and save files tell them.
struct ResponseBlock {
  double TIME = 0.0;    ///< analysis time, 0.0 in a STAT                         [s]
  double PRTIME = 0.0;  ///< report time when it is set positive                  [s]
  double LEVEL = 0.0;   ///< load level of the segment                            [-]
  double RNORM = 0.0;   ///< unbalance norm of the last iteration                 [force]
  int NLSTEP = 0;       ///< load step sequence number, 0 before the first        [-]
  int NMACRO = 0;       ///< static macros of the problem                         [-]
};
inline ResponseBlock response;
static_assert(std::is_trivially_copyable_v<ResponseBlock>);

/// Time that prints show: the report time when positive, else the analysis time.
inline double print_time() { return response.PRTIME > 0.0 ? response.PRTIME : response.TIME; }

}  // namespace tidearc
