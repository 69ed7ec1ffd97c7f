// How a structure matrix that does not fit in memory is cut into blocks of whole columns, and the records that hold
// them.
//
// A block record has MBLOCK reals. In front stand the coefficients of the block's columns in profile order; the last n
// slots, one for each of its n equations, hold their block-relative diagonal addresses, each in the second word of its
// slot. What lies between is zero. An unsymmetric block is two such records in a row, upper triangle then lower.
#pragma once

#include <cstdint>

#include "run/views.h"

namespace tidearc {

/// What decides the cut. Lengths in reals but for the two that are words.
struct BlockingInput {
  int NEQ = 0;               ///< equations                                                        [-]
  int NHBW = 0;              ///< tallest column                                                   [-]
  std::int64_t NSTO = 0;     ///< length of the profile, both triangles when there are two         [reals]
  std::int64_t storage = 0;  ///< what there is for the matrix; may be negative                    [words]
  int words_per_block = 0;   ///< limit of the storage card, 0 none                                [words]
  int triangles = 1;         ///< 1 symmetric, 2 unsymmetric                                       [-]
};

/// The cut.
struct Blocking {
  std::int64_t storage = 0;  ///< what is used of the storage                                      [words]
  std::int64_t MBLOCK = 0;   ///< length of a block record                                         [reals]
  int NBLOCK = 0;            ///< blocks; 1 the whole matrix fits, 0 not even two columns do       [-]
  int maxeq = 0;             ///< most equations of a block                                        [-]
};

/// Cuts the profile. Two blocks stand in memory at a time, so a block gets half of the storage; each of its columns
/// takes its height and a slot for its address. `BLKEQ` (MAXBLK entries) gets the number of equations of each block,
/// and `IDIAG` (addresses over the whole profile, NEQ entries or more) becomes block-relative. With more than MAXBLK
/// blocks the count is told, IDIAG stays as it is and BLKEQ means nothing.
Blocking cut_blocks(const BlockingInput& input, Integers IDIAG, Integers BLKEQ);

/// Cuts the structure matrix of a job that may keep it on disk: sets solver.NBLOCK and MBLOCK, the entries of BLKEQ,
/// and with more than one block turns IDIAG into block-relative addresses, prints the page of the blocking, and writes
/// zero blocks with their addresses on NT3. Needs solver.IDIAG, NHBW, NSTO, NWDBLK, KSTOR, BLKEQ.
/// @param storage_words  words from storage.NEXT on that the matrix may take; may be negative. They serve as the buffer
///                       for the records, so nothing may stand there yet.
/// Returns false, with the message on the report and the fatal flag set, when two blocks cannot hold the tallest column
/// or more than MAXBLK blocks would be needed; nothing is written on NT3 then.
bool BLKSET(std::int64_t storage_words);

}  // namespace tidearc
