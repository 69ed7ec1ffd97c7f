// Factorisation and solution of a symmetric profile matrix: column by column L D L^T without pivoting, after the
// skyline (active column) reduction of Bathe, "Finite Element Procedures", ch. 8.2, with two additions: only the
// columns from KFIRST and the rows from KROW0 are reduced, and equations of prescribed displacement stay inside the
// matrix and are stepped over along their run links (solve/runs.h).
//
// Pure functions of views; they allocate nothing and know no block. Every sum runs from low row to high.
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

/// Where a reduction met a pivot of exactly zero: its address in the profile and its equation; 0 when it met none.
struct ZeroPivot {
  int address = 0;
  int equation = 0;
};

/// Brings the rows that are not final from the assembled matrix into the factor: everything when KFIRST is below 2,
/// else the bottom min(c - KROW0 + 1, height) entries of every column c from KFIRST on. 1 <= KROW0 <= KFIRST.
void copy_changed_rows(const Profile<const double>& assembled, Reals factor, int KFIRST, int KROW0);

/// Reduces columns KFIRST..NEQ in place. Rows below KROW0 of those columns, and all columns below KFIRST, hold final
/// factor values; the rest holds assembled values. Afterwards free columns hold L above their pivot, prescribed columns
/// and rows hold assembled values. Stops at the first zero pivot by which a row would be divided; a zero pivot that no
/// later column reaches is not seen.
ZeroPivot reduce_symmetric(const Profile<double>& K, ConstIntegers MSTAT, int KFIRST, int KROW0);

/// Solves with a reduced matrix. R has NEQ entries or more: loads of free equations in, their displacements out;
/// entries of prescribed equations hold their displacements and stay.
void solve_symmetric(const Profile<const double>& K, ConstIntegers MSTAT, Reals R);

/// Diagonal entries below zero, over all equations.
int count_negative_pivots(const Profile<const double>& K);

}  // namespace tidearc
