// The solvers of a matrix that stands in blocks on disk (solve/blocking.h). Two blocks stand in memory at a time, in
// the buffers KASM and KFAC; a factor of an earlier call streams from one file while the new one goes to another.
//
//   NT3       assembled blocks; unsymmetric: two records a block, upper triangle then lower
//   NT4, NT8  symmetric factor, and the file that its next generation is written on
//   NT4, NT6  unsymmetric factor, upper and lower; its next generation is written on NT7 and NT8
//
// After a reduction the two generations exchange their roles. Every number is formed by the sums of the solvers in
// core, so it has their digits.
#pragma once

#include "solve/solve.h"

namespace tidearc {

/// The symmetric solver in blocks: reduces columns from KFIRST and rows from KROW0 (blocks before KFIRST are copied),
/// solves for one right-hand side (pool index of NEQ1 reals), or both. Pivots stand in the vector PIVOT. A pivot of
/// exactly zero stops the run and names its equation, and on the error stream its node and direction.
void SOLVDS(int rhs, SolveMode mode);

/// The same for the unsymmetric matrix; no pivot is tested.
void SOLVDU(int rhs, SolveMode mode);

}  // namespace tidearc
