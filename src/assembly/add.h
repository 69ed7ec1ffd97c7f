// One element matrix into the profile. Pure functions of views: no block, no element type.
//
// LM holds the equation of each of the ND degrees of freedom of the element; entries below 1 or above NEQ drop. An
// equation may stand in LM more than once (tied freedoms): every pair whose row is not above its column is added, so
// that both off-diagonal pairs of a repeated equation reach its diagonal.
//
// The profile may be a stretch of columns. Pairs whose column stands elsewhere drop then, so that an element is added
// stretch by stretch, each entry once, with the same digits as in one piece.
//
// Each procedure returns false when an entry falls outside the profile: nothing of it is added, and the rest of the
// matrix is left out.
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

/// Smallest equation in LM that is inside 1..NEQ, or NEQ + 1 when there is none.
int lowest_equation(ConstIntegers LM, int NEQ);

/// Full matrix, ND by ND, column by column: entry (i, j) at EMAT((j-1)*ND + i). Of each off-diagonal pair of different
/// equations only the entry whose row equation is above its column equation is read.
bool ADDSYM(ConstIntegers LM, const double* EMAT, const Profile<double>& K);

/// Packed upper triangle by rows: entry (i, j), i not above j, at (j-i) + NDT + 1 - v(v+1)/2 with v = ND + 1 - i and
/// NDT = ND(ND+1)/2. Otherwise as ADDSYM.
bool ADDSYP(ConstIntegers LM, const double* EMAT, const Profile<double>& K);

/// An unsymmetric matrix in two triangles that share their addresses: K(r, c) of the upper one, K(c, r) of the lower
/// one stand at the address of (r, c); both hold the diagonal.
struct Triangles {
  Profile<double> upper;
  Profile<double> lower;
};

/// Full matrix, every entry of which is read, into both triangles; the diagonal of both gets the same digits.
bool ADDUNS(ConstIntegers LM, const double* EMAT, const Triangles& K);

/// Packed matrix: the symmetric value goes to the same address in both triangles.
bool ADDUNP(ConstIntegers LM, const double* EMAT, const Triangles& K);

}  // namespace tidearc
