// What stands in place of a diagonal that no element stiffens: small beside any structure, so that the equation solves.
#pragma once

#include <algorithm>

#include "solve/profile.h"
#include "solve/solver.h"

namespace tidearc {

inline constexpr double stand_in_diagonal = 1.0E-8;

/// Gives every diagonal of exactly zero its stand-in and calls found(equation) for it. An equation that gets one has
/// changed, so KFIRST takes it up and the factor will as well.
template <class Found>
void give_stand_ins(const Profile<double>& K, Found&& found) {
  for (int e = K.first; e <= K.NEQ; ++e) {
    if (K.diagonal(e) != 0.0) continue;
    K.diagonal(e) = stand_in_diagonal;
    solver.KFIRST = std::min(solver.KFIRST, e);
    found(e);
  }
}

}  // namespace tidearc
