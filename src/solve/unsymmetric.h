// Factorisation and solution of an unsymmetric matrix with a symmetric profile: column by column K = L U, U with a unit
// diagonal, after Crout, with the two additions of the symmetric solver (solve/factor.h): only the columns from KFIRST
// and the rows from KROW0 are reduced, and equations of prescribed displacement are stepped over along their run links.
//
// Two triangles share one profile. `upper` holds entry (r, c) and `lower` holds entry (c, r) at the address of (r, c),
// r not above c, so that row c of the lower triangle lies where column c of the upper one does. After the reduction
// the upper triangle holds U (its diagonal is left as assembled), the lower one holds L, which is not scaled, with the
// pivots on its diagonal. Prescribed rows and columns keep assembled values. No pivot is tested: a zero one gives
// infinities.
//
// Pure functions of views; they allocate nothing and know no block. Every sum runs from low row to high.
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

/// What the stretches of one reduction share.
struct TriangleRange {
  ConstIntegers MSTAT;  ///< status with run links, all equations
  int KFIRST;           ///< first column to reduce
  int KROW0;            ///< first row whose values are not final, 1..KFIRST
};

/// Reduces the free upper columns from KFIRST of `upper` at the rows of `lower_source`, final rows of the lower
/// triangle that stand before it: U(r, c) = (K(r, c) - sum over the free i above r of L(r, i) U(i, c)) / L(r, r).
/// Stretches must come in rising order.
void reduce_upper_against(const Profile<double>& upper, const Profile<const double>& lower_source,
                          const TriangleRange& range);
/// The same for the lower triangle: L(c, r) = K(c, r) - sum over the free i above r of L(c, i) U(i, r).
void reduce_lower_against(const Profile<double>& lower, const Profile<const double>& upper_source,
                          const TriangleRange& range);
/// Reduces the columns and rows of a stretch against each other and forms its pivots. Everything before the stretch has
/// been reduced against.
void reduce_triangles_within(const Profile<double>& upper, const Profile<double>& lower, const TriangleRange& range);

/// The pieces of a solution, each for the rows or columns of one stretch. Every entry of R gets its loads in the same
/// order whatever the stretches.
/// Loads that prescribed equations put on free equations below them.
void couple_lower(const Profile<const double>& lower, ConstIntegers MSTAT, Reals R);
/// Loads that prescribed equations put on free equations above them; behind couple_lower of the same stretch.
void couple_upper(const Profile<const double>& upper, ConstIntegers MSTAT, Reals R);
/// Forward substitution on rows from f, each divided by its pivot at once; stretches come in rising order.
void forward_substitute_lower(const Profile<const double>& lower, ConstIntegers MSTAT, Reals R, int f);
// Back-substitution is that of the symmetric solver on the upper triangle.

/// Solves with a whole reduced matrix. R has NEQ entries or more: loads of free equations in, their displacements out;
/// entries of prescribed equations hold their displacements and stay.
void solve_unsymmetric(const Profile<const double>& upper, const Profile<const double>& lower, ConstIntegers MSTAT,
                       Reals R);

}  // namespace tidearc
