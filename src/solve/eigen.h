// Kernels of the subspace iteration for K phi = lambda M phi with lumped masses: start, projection, the small problem,
// rotation, residuals. After Bathe, "Finite Element Procedures", ch. 11.6; the small problem is solved by the
// generalised Jacobi iteration of Falk and Langemeyer in the form of the same book, ch. 11.3.
//
// Functions of views that know no block and allocate nothing. N equations, q vectors: tables N by q, one vector to a
// column; small matrices q by q, symmetric, both triangles kept. Solutions with K are the caller's (solve/actcol.h).
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

using ConstRealTable = Matrix<const double>;

/// Vectors that an iteration for NFREQ modes carries: min(NFREQ + 8, NMASS, 2 NFREQ), not below 0.
int subspace_size(int NFREQ, int NMASS);
/// Equations with a mass other than zero, of all in M.
int count_masses(ConstReals M);

/// First equation whose diagonal is not above zero (or is no number); 0 when there is none.
int first_not_positive(const Profile<const double>& K);
/// K(i,i) -= shift * M(i) for every equation of K with a mass. M may have more entries.
void subtract_mass(const Profile<double>& K, ConstReals M, double shift);

/// Starting loads (columns of Y), each with a largest entry of 1 by magnitude: the masses in the first one; in the
/// others unit entries, at the equations with the largest ratios of mass to stiffness, which are dealt to them in turn,
/// and with signs without order. A column without length, as of a model without masses, becomes unit entries
/// everywhere.
///
/// One unit entry to a column would not do: where the largest ratios stand in planes of symmetry, as those of brace
/// crossings do, such loads are at right angles to all modes that move against that symmetry, and the iteration would
/// settle without them. So all equations with a mass are dealt, as long as each column gets as many.
/// @param scratch  N entries
void starting_loads(const Profile<const double>& K, ConstReals M, RealTable Y, Reals scratch);

/// Makes the columns of X orthonormal in the masses, each behind those before it; the loads Y = K X take the same
/// combinations. For columns that are nearly one vector, such as the solutions of a structure that hardly resists one
/// motion: what they have beside it would be lost in the products of project. A column without mass is left as it is.
/// @param scratch  N entries
void orthonormalise(RealTable X, RealTable Y, ConstReals M, Reals scratch);

/// Small matrices of the subspace that X = K^-1 Y spans: stiffness X^T Y and mass X^T M X.
void project(ConstRealTable X, ConstRealTable Y, ConstReals M, RealTable stiffness, RealTable mass);

/// All solutions of A z = lambda B z: lambda ascending into `values`, vectors with z^T B z = 1 into the columns of Z.
/// A and B are used up. A may be indefinite. False when B is not positive definite or an entry is not finite.
bool solve_small_problem(RealTable A, RealTable B, RealTable Z, Reals values);

/// rotated = X Z.
void rotate(ConstRealTable X, ConstRealTable Z, RealTable rotated);
/// Y = M X.
void mass_weighted(ConstRealTable X, ConstReals M, RealTable Y);

/// Relative change of each value since the iteration before: |now - last| / |now|, 0 for one that has not moved.
void relative_changes(ConstReals now, ConstReals last, Reals residuals);
/// True when none of the first `count` residuals is above the tolerance (or is no number).
bool all_within(ConstReals residuals, int count, double tolerance);

/// Turns the sign of a vector so that its entry of largest magnitude, the first of equal ones, is positive.
void make_largest_positive(Reals vector);

}  // namespace tidearc
