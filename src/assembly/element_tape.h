// Element matrices of one assembly on TapeFile NT9, on their way into the blocks of a matrix that stands on disk, and
// on NT8 those that later blocks still need.
// Two records an element: a header of 62 words (form, freedoms, equations), then the values.
#pragma once

#include <array>
#include <type_traits>

#include "elements/contract/work.h"
#include "run/views.h"
#include "run/words.h"

namespace tidearc {

/// The header record.
struct MatrixHeader {
  int packed = 0;                          ///< form of the values: 0 full, else packed
  int ND = 0;                              ///< degrees of freedom                                      [-]
  std::array<int, most_freedoms> LM = {};  ///< their equations, then zeros; below 1 or above NEQ: drops

  ConstIntegers equations() const { return {LM.data(), ND}; }
  int value_words() const { return ITWO * (packed != 0 ? ND * (ND + 1) / 2 : ND * ND); }
};
static_assert(std::is_trivially_copyable_v<MatrixHeader> && words(sizeof(MatrixHeader)) == 62);
inline constexpr int matrix_header_words = words(sizeof(MatrixHeader));

/// Before the first element of an assembly: NT9 to its start, NADDED to 0.
void begin_element_matrices();
/// Writes the record pair of one element behind the others on NT9 and counts it in NADDED. LM has at most 60 entries.
void ADDTAP(ConstIntegers LM, bool packed, const double* EMAT);

/// One pair, to and from the position of a unit.
void write_element_matrix(int unit, const MatrixHeader& header, const double* EMAT);
/// The header; the values must be read or skipped next.
MatrixHeader read_matrix_header(int unit);

}  // namespace tidearc
