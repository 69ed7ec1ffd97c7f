// Delivery of a beam's matrix to the assembly: packed, as the change since the last delivery.
#pragma once

#include <cstddef>
#include <span>

namespace tidearc {

/// `packed` (upper triangle by rows, 78) gets what `matrix` (12 by 12, column by column) has changed since `delivered`
/// (packed too), or all of it when `reset`; `delivered` becomes the matrix.
inline void deliver_packed(std::span<const double, 144> matrix, bool reset, double* delivered, double* packed) {
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = i; j < 12; ++j) {
      const double now = matrix[j + 12 * i];  // the lower triangle by columns is the upper one by rows
      *packed++ = reset ? now : now - *delivered;
      *delivered++ = now;
    }
  }
}

}  // namespace tidearc
