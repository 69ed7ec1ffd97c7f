// Equation vectors that a pass gathers from or sums into, some of which may not be asked for.
#pragma once

#include <algorithm>
#include <array>

#include "elements/contract/gather.h"
#include "elements/contract/group.h"
#include "elements/contract/work.h"
#include "solve/arrays.h"

namespace tidearc {

using ElementVector = std::array<double, most_freedoms>;

/// A vector that a pass gathers from; null when it is not given.
inline const double* given(int index) { return index < 1 ? nullptr : equation_vector(index).data(); }

/// A vector that a pass sums into, from zero; null when it is not asked for.
inline double* cleared(int index) {
  if (index < 1) return nullptr;
  clear_vector(index);
  return equation_vector(index).data();
}

/// The current element's part of a vector; zero when that is not given.
inline void gather_given(const Gathering& nodal, const double* vector, ElementVector& values) {
  if (vector == nullptr) {
    std::fill_n(values.begin(), group.NDOF, 0.0);
  } else {
    gather(nodal, location_vector(), group.NDOF, vector, values.data());
  }
}

/// Adds a vector of the current element when the sum is asked for.
inline void add_to(const Gathering& nodal, ElementVector& values, double* vector) {
  if (vector != nullptr) scatter_add(nodal, location_vector(), group.NDOF, values.data(), vector);
}

}  // namespace tidearc
