// Where the structure matrix stands: two arrays of the work pool, or two block buffers in front of the block files.
// Not for values, and not for the cut into blocks (solve/blocking.h).
#pragma once

namespace tidearc {

/// Lays down what the matrix takes at NEXT by the storage scheme, and sets solver.NSTO (both triangles from now on),
/// NBLOCK, MBLOCK, BLKEQ, BLKFLG, KASM, KFAC, storage.LAVSST and KEDAT. Called once per problem, after finish_profile
/// and the analysis vectors; checks storage.
/// Core: matrix and factor, and a line on the report. Disk: the two block directories, then either matrix and factor
/// (KFAC 0 when only the matrix fits, which nobody is told: the factor then stands outside the pool) or two buffers.
/// @param element_words  words that a disk job keeps for element data behind the matrix: one record and its pad
/// Returns false when the matrix cannot be cut into blocks; that has been told, and the job cannot be analysed.
bool carve_stiffness(int element_words);

}  // namespace tidearc
