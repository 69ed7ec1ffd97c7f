// Factorisation and solution of a symmetric profile matrix: column by column L D L^T without pivoting, after the
// skyline (active column) reduction of Bathe, "Finite Element Procedures", ch. 8.2, with two additions: only the
// columns from KFIRST and the rows from KROW0 are reduced, and equations of prescribed displacement stay inside the
// matrix and are stepped over along their run links (solve/runs.h).
//
// Pure functions of views that know no block. Every sum begins at +0.0 and runs from low row to high in one accumulator
// whose step is a fused multiply-add, rounded once; a term of a row that is final is (L * pivot) * L, the bracket
// rounded first. So the digits are the same on every machine (solve/kernel_table.h) and in core or in stretches.
// Reductions keep a little memory of their own for packed columns (solve/packed.h); nothing else allocates.
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

/// Where a reduction met a pivot of exactly zero: its address in the profile and its equation; 0 when it met none.
struct ZeroPivot {
  int address = 0;
  int equation = 0;
};

/// What the stretches of one reduction share.
struct ReductionRange {
  ConstIntegers MSTAT;  ///< status with run links, all equations
  Reals D;              ///< pivots by equation, all equations
  int KFIRST;           ///< first column to reduce
  int KROW0;            ///< first row whose values are not final, 1..KFIRST
};

/// Brings the rows that are not final from the assembled matrix into the factor, in the columns that both stretches
/// hold: everything when KFIRST is below 2, else the bottom min(c - KROW0 + 1, height) entries of every column c from
/// KFIRST on.
void copy_changed_rows(const Profile<const double>& assembled, Reals factor, int KFIRST, int KROW0);

/// Reduces the free columns from KFIRST of `target` at the rows of `source`, a stretch of final columns that stands
/// before it: entry (r, c) -= sum over the free rows above r that both columns reach. Stretches must come in rising
/// order, so that the rows above are reduced; D must hold the pivots of all rows up to the end of `source`.
void reduce_against(const Profile<double>& target, const Profile<const double>& source, const ReductionRange& range);

/// Reduces the columns of a stretch against each other, then divides their rows from KROW0 by the pivots and reduces
/// their own; sets D for every column of the stretch. Everything before the stretch has been reduced against. Stops at
/// the first zero pivot by which a row would be divided; a zero pivot that no later column reaches is not seen.
/// Afterwards free columns hold L above their pivot, prescribed columns and rows hold assembled values.
ZeroPivot reduce_within(const Profile<double>& K, const ReductionRange& range);

/// Reduces a whole matrix in place, its pivots on its diagonal.
ZeroPivot reduce_symmetric(const Profile<double>& K, ConstIntegers MSTAT, int KFIRST, int KROW0);

/// The pieces of a solution, each for the columns of one stretch. R has an entry for every equation.
/// Loads that prescribed displacements put on free equations.
void couple_prescribed(const Profile<const double>& K, ConstIntegers MSTAT, Reals R);
/// First equation with a load: 1..NEQ-1 (NEQ - 1 when only the last one has, at least 1).
int first_loaded(ConstReals R, int NEQ);
/// Forward substitution on columns above f; stretches come in rising order.
void forward_substitute(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int f);
/// R(e) /= D(e) for free equations f..NEQ.
void divide_by_pivots(ConstReals D, ConstIntegers MSTAT, Reals R, int f, int NEQ);
/// Back-substitution from the last column of the stretch to its first; stretches come in falling order.
void back_substitute(const Profile<const double>& K, ConstIntegers MSTAT, Reals R);

/// Solves with a whole reduced matrix. R has NEQ entries or more: loads of free equations in, their displacements out;
/// entries of prescribed equations hold their displacements and stay.
void solve_symmetric(const Profile<const double>& K, ConstIntegers MSTAT, Reals R);

/// Solves for `count` right-hand sides together, 1..most_loads (solve/kernel_table.h), which read the factor once:
/// entry e of right-hand side j is R(count * (e - 1) + j). Each gets the digits that solve_symmetric gives it alone.
void solve_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int count);

/// The substitutions of solve_many alone, on its layout: forward on columns above f, back on all.
void forward_substitute_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int count, int f);
void back_substitute_many(const Profile<const double>& K, ConstIntegers MSTAT, Reals R, int count);

/// Diagonal entries below zero, over all equations.
int count_negative_pivots(const Profile<const double>& K);

}  // namespace tidearc
