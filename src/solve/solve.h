// The solver that analyses call: prescribed status, and the in-core symmetric path of factorisation and solution.
// Kernels on plain spans stand in solve/factor.h and solve/runs.h.
#pragma once

#include <span>

namespace tidearc {

/// Sets which equations are prescribed and their imposed displacements per unit level, from the prescribed patterns on
/// NT10 and their participation factors (one per pattern). Raises KSTCHG and KSTEQ when a status differs from the last
/// factorisation. Every pattern of the model prescribes its equations, factor 0.0 included; a factor that is not given
/// is 0.0. Leaves NT10 behind its last record; uses WORK.
void PRESTAT(std::span<const double> factors);
/// All equations free: the status before the first PRESTAT.
void reset_status();
/// True when equation e is prescribed.
bool prescribed(int equation);

/// A degree of freedom as an engineer names it: node, and component 1..6; node 0 when no node holds the equation.
struct NodeDirection {
  int node = 0;
  int component = 0;
};
/// First node in node order, and its first component, that hold an equation.
NodeDirection holder_of(int equation);
/// "X", "Y", "Z", "XR", "YR", "ZR".
const char* direction_name(int component);

/// What a call of the solver does.
enum SolveMode : int { reduce_only = 1, solve_only = 2, reduce_and_solve = 3 };
/// The in-core symmetric solver on KFAC: reduces columns from KFIRST and rows from KROW0, solves for one right-hand
/// side (pool index of NEQ1 reals), or both. A pivot of exactly zero stops the run and names its address and equation,
/// and on the error stream its node and direction.
void SOLVIS(int rhs, SolveMode mode);

/// Copies the rows that are not final from KASM to KFAC and reduces the tail from KFIRST; counts negative pivots. From
/// now on the status of the equations is that of the last factorisation.
void factorise();
/// Solves in place for one right-hand side of NEQ1 reals (pool index): free entries become displacements, prescribed
/// entries keep their value. Entry NEQ1 is set to zero.
void SOLVE(int rhs);

}  // namespace tidearc
