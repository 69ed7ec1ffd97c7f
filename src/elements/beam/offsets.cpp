// Rigid offsets between the nodes of a member and its ends.
#include "elements/beam/offsets.h"

#include <algorithm>
#include <cstddef>

namespace tidearc {

namespace {

struct Offset {
  double x, y, z;
};
Offset offset_of(EndOffsets ECC, std::size_t end) { return {ECC[end], ECC[2 + end], ECC[4 + end]}; }

}  // namespace

void move_to_ends(EndOffsets ECC, std::span<double, 12> u) {
  for (std::size_t end = 0; end < 2; ++end) {
    const Offset e = offset_of(ECC, end);
    double* at = u.data() + 6 * end;
    const double* r = at + 3;
    at[0] += r[1] * e.z - r[2] * e.y;
    at[1] += r[2] * e.x - r[0] * e.z;
    at[2] += r[0] * e.y - r[1] * e.x;
  }
}

void move_to_nodes(EndOffsets ECC, std::span<double, 12> f) {
  for (std::size_t end = 0; end < 2; ++end) {
    const Offset e = offset_of(ECC, end);
    const double* F = f.data() + 6 * end;
    double* M = f.data() + 6 * end + 3;
    M[0] += e.y * F[2] - e.z * F[1];
    M[1] += e.z * F[0] - e.x * F[2];
    M[2] += e.x * F[1] - e.y * F[0];
  }
}

void move_matrix_to_nodes(EndOffsets ECC, std::span<double, 144> K) {
  // Each column is a set of end forces; behind that each row is one, since the matrix is symmetric.
  for (std::size_t j = 0; j < 12; ++j) move_to_nodes(ECC, std::span<double, 12>(K.data() + 12 * j, 12));
  for (std::size_t i = 0; i < 12; ++i) {
    double row[12];
    for (std::size_t j = 0; j < 12; ++j) row[j] = K[i + 12 * j];
    move_to_nodes(ECC, row);
    for (std::size_t j = 0; j < 12; ++j) K[i + 12 * j] = row[j];
  }
  // Both orders of summation gave the same value but for rounding: the upper triangle decides.
  for (std::size_t j = 0; j < 12; ++j) {
    for (std::size_t i = 0; i < j; ++i) K[j + 12 * i] = K[i + 12 * j];
  }
}

}  // namespace tidearc
