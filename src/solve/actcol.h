// The active column solver of the eigenvalue analysis: L D L^T on a whole profile in core, without prescribed equations
// and without a tail, pivots kept as reciprocals. After Bathe, "Finite Element Procedures", ch. 8.2.
#pragma once

#include "run/views.h"

namespace tidearc {

/// What a call found.
struct ActiveColumnResult {
  int count = 0;            ///< see active_column_solver                                  [-]
  double energy = 0.0;      ///< sum over V of the solve: twice the work of the loads      [force x length]
  double last_pivot = 0.0;  ///< reduced pivot of the last equation; 0 without a reduction
  int zero_pivot = 0;       ///< first equation whose reduced pivot is exactly zero, 0 none            [-]
};

/// Reduces the profile matrix A of N equations (IDIAG: diagonal addresses) in place, solves for V in place, or both; a
/// matrix that comes reduced is solved with as it is.
///
/// `count` is the number of columns taller than 1 whose reduced pivot has the sign of the assembled diagonal (or is
/// zero), plus one when there is such a column. It is 0 for a diagonal matrix, never 1, and no count of negative
/// pivots, although the Sturm check prints it as the number of eigenvalues.
///
/// A reduced pivot of exactly zero leaves the assembled diagonal where its reciprocal should stand; nothing tells.
ActiveColumnResult active_column_solver(Reals A, Reals V, ConstIntegers IDIAG, int N, bool reduce, bool solve);

/// Solves with a reduced matrix for all columns of V in place, some of them together, which read the matrix once. Each
/// gets the digits that a call for it alone would give; its energy goes into `energy`, one entry a column.
/// @param scratch  rows of V times together(columns of V)
void active_column_solutions(Reals A, RealTable V, ConstIntegers IDIAG, Reals scratch, Reals energy);
/// How many of so many vectors are solved for together.
int together(int vectors);

/// active_column_solver, with the energy of a solve on the report. Returns the count.
int ACTCOL(Reals A, Reals V, ConstIntegers IDIAG, int N, bool reduce, bool solve);
/// active_column_solutions, with the energy of each on the report, in their order.
void ACTCOL(Reals A, RealTable V, ConstIntegers IDIAG, Reals scratch, Reals energy);

}  // namespace tidearc
