// Element matrices into a matrix that stands in blocks on disk.
#pragma once

namespace tidearc {

/// Adds the element matrices on NT9 to the symmetric blocks on NT3 and leaves the sums on NT7; the two files exchange
/// their roles. Blocks below KFIRST go over unchanged. With KRESET every block starts from zero. Keeps the assembled
/// diagonal in the DIAG vector. Uses both block buffers, EMAT of the work block, and NT8.
/// @param stand_ins  diagonals of exactly zero get their stand-in, which lowers KFIRST; nothing is printed
void BLKASM(bool stand_ins);
/// The same for both triangles, two records a block: upper, lower.
void BLKASU(bool stand_ins);

}  // namespace tidearc
