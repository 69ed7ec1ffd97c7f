// Element matrices into a matrix that stands in blocks on disk.
#pragma once

#include "assembly/diagonals.h"

namespace tidearc {

/// Adds the element matrices on NT9 to the symmetric blocks on NT3 and leaves the sums on NT7; the two files exchange
/// their roles. Blocks below KFIRST go over unchanged. With KRESET every block starts from zero. Keeps the assembled
/// diagonal in the DIAG vector. Uses both block buffers, EMAT of the work block, and NT8.
/// @param diagonals  how they end; nothing is printed. The masses of equations in blocks below KFIRST are not added
void BLKASM(Diagonals diagonals);
/// The same for both triangles, two records a block: upper, lower.
void BLKASU(Diagonals diagonals);

}  // namespace tidearc
