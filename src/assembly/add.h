// One element matrix into the profile. Pure functions of views: no block, no element type.
//
// LM holds the equation of each of the ND degrees of freedom of the element; entries below 1 or above NEQ drop. An
// equation may stand in LM more than once (tied freedoms): every pair whose row is not above its column is added, so
// that both off-diagonal pairs of a repeated equation reach its diagonal.
#pragma once

#include "run/views.h"
#include "solve/profile.h"

namespace tidearc {

/// Smallest equation in LM that is inside 1..NEQ, or NEQ + 1 when there is none.
int lowest_equation(ConstIntegers LM, int NEQ);

/// Full matrix, ND by ND, column by column: entry (i, j) at EMAT((j-1)*ND + i). Only entries whose row equation is not
/// above their column equation are read. False when an entry falls outside the profile: nothing of it is added, and the
/// rest of the matrix is left out.
bool ADDSYM(ConstIntegers LM, const double* EMAT, const Profile<double>& K);

/// Packed upper triangle by rows: entry (i, j), i not above j, at (j-i) + NDT + 1 - v(v+1)/2 with v = ND + 1 - i and
/// NDT = ND(ND+1)/2. Otherwise as ADDSYM.
bool ADDSYP(ConstIntegers LM, const double* EMAT, const Profile<double>& K);

}  // namespace tidearc
