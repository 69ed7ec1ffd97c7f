// The compacted column profile: where entry (row, column) of the structure matrix stands, and how long the profile is.
//
// Column c stands at addresses IDIAG(c-1)+1 .. IDIAG(c), rows ascending, diagonal last; entry (r, c), r not above c, is
// at IDIAG(c) + r - c. A matrix that does not fit in memory stands in blocks: stretches of whole columns, each with
// addresses of its own that begin at 1. Not for values: assembly/ adds them, solve/factor.h reduces them.
#pragma once

#include <cstddef>
#include <cstdint>

#include "run/views.h"

namespace tidearc {

/// Columns first..NEQ of a profile matrix: values and diagonal addresses (1-based), both owned by somebody else. A
/// whole matrix is the stretch from column 1 to the last equation; a block begins at `first`, and its IDIAG(c) counts
/// from the start of the block. Rows are equation numbers in either case.
template <class T>
struct Profile {
  Vector<T> A;          ///< values of these columns
  ConstIntegers IDIAG;  ///< diagonal addresses by equation; only those of columns first..NEQ belong to A
  int NEQ = 0;          ///< last column
  int first = 1;        ///< first column

  int height(int c) const { return c == first ? IDIAG(c) : IDIAG(c) - IDIAG(c - 1); }
  int top(int c) const { return c - height(c) + 1; }
  /// Column c addressed by row: entry (r, c) is column(c)(r) for r from top(c) to c. Lower r belong to other columns.
  Vector<T> column(int c) const { return {A.data() + (IDIAG(c) - c), c}; }
  T& diagonal(int c) const { return A(IDIAG(c)); }
  operator Profile<const T>() const requires(!std::is_const_v<T>) { return {A, IDIAG, NEQ, first}; }
};

/// Length of a profile and its largest column.
struct ProfileSize {
  std::int64_t length = 0;  ///< reals  [-]
  int tallest = 0;          ///< largest column height, its diagonal included  [-]
};

/// Turns, in place, the smallest equation connected to each of NEQ equations (1..e for equation e, itself included)
/// into cumulative diagonal addresses. When the length does not fit a 32-bit address the array is left as it stands.
ProfileSize diagonal_addresses(Integers first_rows, int NEQ);

/// Turns the marks that element input left in masses.MARKS into the diagonal addresses, and sets solver.IDIAG, NHBW and
/// NSTO (of one triangle). A profile that no pool can hold, or in a disk job one whose entries no 32-bit count can
/// tell, ends in the storage check of the stiffness matrix.
void finish_profile();

}  // namespace tidearc
