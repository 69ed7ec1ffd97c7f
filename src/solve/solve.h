// The solver that analyses call: prescribed status, factorisation and solution by whichever of four solvers the storage
// scheme asks for: symmetric or unsymmetric, in core or in blocks on disk. Kernels on plain spans stand in
// solve/factor.h, solve/unsymmetric.h and solve/runs.h; the block files in solve/blocked.h.
#pragma once

#include <span>

#include "run/views.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc {

/// Sets which equations are prescribed and their imposed displacements per unit level, from the prescribed patterns on
/// NT10 and their participation factors (one per pattern). Raises KSTCHG and KSTEQ when a status differs from the last
/// factorisation. Every pattern of the model prescribes its equations, factor 0.0 included; a factor that is not given
/// is 0.0. The equations in `moved`, which something else than a pattern moves, are prescribed too; they add nothing to
/// the imposed displacements, and those outside 1..NEQ are ignored. Leaves NT10 behind its last record; uses WORK.
void PRESTAT(std::span<const double> factors, std::span<const int> moved = {});
/// All equations free: the status before the first PRESTAT.
void reset_status();
/// True when equation e is prescribed.
inline bool prescribed(int equation) {
  return equation >= 1 && equation <= sizes.NEQ && pool.integers(arrays.MSTAT, NEQ1())(equation) > 0;
}

/// A degree of freedom as an engineer names it: node, and component 1..6; node 0 when no node holds the equation.
struct NodeDirection {
  int node = 0;
  int component = 0;
};
/// First node in node order, and its first component, that hold an equation.
NodeDirection holder_of(int equation);
/// "X", "Y", "Z", "XR", "YR", "ZR".
const char* direction_name(int component);

/// A pivot of exactly zero: the warning on the report (its position, and with `tell_equation` its equation), equation,
/// node and direction on the error stream, and the end of the run.
[[noreturn]] void stop_at_zero_pivot(int address, int equation, bool tell_equation);

/// What a call of a solver does.
enum SolveMode : int { reduce_only = 1, solve_only = 2, reduce_and_solve = 3 };
/// The symmetric solver in core: reduces columns from KFIRST and rows from KROW0 of the factor array, solves for one
/// right-hand side (pool index of NEQ1 reals), or both. A pivot of exactly zero stops the run and names its address
/// and equation, and on the error stream its node and direction. (The solvers in blocks: solve/blocked.h.)
void SOLVIS(int rhs, SolveMode mode);
/// The unsymmetric solver in core: upper triangle in the first half of the factor array, lower in the second. No pivot
/// is tested: a zero one gives infinities.
void SOLVIU(int rhs, SolveMode mode);

/// Values of the factor in core, NSTO reals: in the pool at KFAC, or with KFAC 0 in memory of its own, for a disk job
/// of one block whose factor does not fit beside its matrix. That memory is held until release_outside_factor.
Reals factor_values();
/// Gives back the memory of a factor outside the pool; no effect without one.
void release_outside_factor();

/// Brings the rows that are not final from the assembled matrix to the factor and reduces the tail from KFIRST. From
/// now on the status of the equations is that of the last factorisation. Negative pivots are counted by the symmetric
/// solver in core only; the others leave NNEG as it was.
void factorise();
/// Solves in place for one right-hand side of NEQ1 reals (pool index): free entries become displacements, prescribed
/// entries keep their value. Entry NEQ1 is set to zero.
void SOLVE(int rhs);

/// Diagonal entry of an equation in the assembled matrix (of the upper triangle when there are two), wherever the
/// matrix stands.
double assembled_diagonal(int equation);

}  // namespace tidearc
