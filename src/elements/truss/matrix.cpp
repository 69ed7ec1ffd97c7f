// The truss's matrices as pure formulas.
#include "elements/truss/matrix.h"

#include <cstddef>

namespace tidearc {

void axial_matrix(double K, std::span<const double, 6> DIR, std::span<double, 36> EMAT) {
  for (std::size_t j = 0; j < 6; ++j) {
    for (std::size_t i = 0; i <= j; ++i) {
      const double value = K * (DIR[i] * DIR[j]);
      EMAT[i + 6 * j] = value;
      EMAT[j + 6 * i] = value;
    }
  }
}

void add_geometric_matrix(double N_per_length, std::span<const double, 6> DIR, std::span<double, 36> EMAT) {
  for (std::size_t j = 0; j < 3; ++j) {
    for (std::size_t i = 0; i < 3; ++i) {
      const double value = N_per_length * ((i == j ? 1.0 : 0.0) - DIR[i] * DIR[j]);
      EMAT[i + 6 * j] += value;
      EMAT[i + 3 + 6 * (j + 3)] += value;
      EMAT[i + 3 + 6 * j] -= value;
      EMAT[i + 6 * (j + 3)] -= value;
    }
  }
}

}  // namespace tidearc
