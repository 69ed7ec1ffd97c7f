// The local stiffness of a straight beam as its four uncoupled parts, and the 12 by 12 matrix that they make.
#include "elements/beam/stiffness_parts.h"

#include <cmath>
#include <cstddef>

namespace tidearc {

namespace {

/// What rounding leaves of a stiffness that condensation has taken away.
constexpr double vanished = 1.0E-12;

/// Places of the parts' freedoms among the twelve.
constexpr std::size_t axial_at[2] = {0, 6};
constexpr std::size_t torsion_at[2] = {3, 9};
constexpr std::size_t plane12_at[4] = {1, 5, 7, 11};
constexpr std::size_t plane13_at[4] = {2, 4, 8, 10};

/// Place of (a, b), a not above b, in an upper triangle of n rows.
constexpr std::size_t upper(std::size_t n, std::size_t a, std::size_t b) { return a * n - a * (a + 1) / 2 + b; }
constexpr std::size_t entry(std::size_t n, std::size_t a, std::size_t b) {
  return a <= b ? upper(n, a, b) : upper(n, b, a);
}

/// Plane of the freedoms (t_I, r_I, t_J, r_J) with the rotation against the chord e = r + sign (t_J - t_I)/L.
void form_plane(const EndBending& k, double sign, double L, double* plane) {
  const double gI[4] = {-sign / L, 1.0, sign / L, 0.0};
  const double gJ[4] = {-sign / L, 0.0, sign / L, 1.0};
  for (std::size_t a = 0; a < 4; ++a) {
    for (std::size_t b = a; b < 4; ++b) {
      plane[upper(4, a, b)] = k.own * (gI[a] * gI[b] + gJ[a] * gJ[b]) + k.other * (gI[a] * gJ[b] + gJ[a] * gI[b]);
    }
  }
}

/// Condenses freedom p out of a part of n freedoms.
template <std::size_t n>
void release(std::size_t p, double* part) {
  const double pivot = part[upper(n, p, p)];
  double column[n];
  double diagonal[n];
  for (std::size_t a = 0; a < n; ++a) {
    column[a] = part[entry(n, a, p)];
    diagonal[a] = part[upper(n, a, a)];
  }
  if (pivot == 0.0) return;
  for (std::size_t a = 0; a < n; ++a) {
    for (std::size_t b = a; b < n; ++b) {
      double& value = part[upper(n, a, b)];
      value -= column[a] * column[b] / pivot;
      const bool gone = std::abs(value) <= vanished * std::sqrt(std::abs(diagonal[a] * diagonal[b]));
      if (a == p || b == p || gone) value = 0.0;
    }
  }
}

void release_end(int code, std::size_t end, BeamStiffness& K) {
  if (code / 1000 % 10 == 1) release<2>(end, K.axial);
  if (code / 100 % 10 == 1) release<2>(end, K.torsion);
  if (code / 10 % 10 == 1) release<4>(2 * end + 1, K.plane13);
  if (code % 10 == 1) release<4>(2 * end + 1, K.plane12);
}

template <std::size_t n>
void part_forces(const double* part, const std::size_t (&at)[n], const double* u, double* f) {
  for (std::size_t a = 0; a < n; ++a) {
    double sum = 0.0;
    for (std::size_t b = 0; b < n; ++b) sum += part[entry(n, a, b)] * u[at[b]];
    f[at[a]] = sum;
  }
}

/// Adds k p q^T to a 3 by 3 block.
void add_product(double k, const double* p, const double* q, double (&block)[3][3]) {
  for (std::size_t i = 0; i < 3; ++i) {
    const double row = k * p[i];
    for (std::size_t j = 0; j < 3; ++j) block[i][j] += row * q[j];
  }
}

void put_block(std::size_t a, std::size_t b, const double (&block)[3][3], double* matrix) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      const std::size_t row = 3 * a + i;
      const std::size_t column = 3 * b + j;
      if (row > column) continue;
      matrix[row + 12 * column] = block[i][j];
      matrix[column + 12 * row] = block[i][j];
    }
  }
}

}  // namespace

EndBending end_bending(double EI, double G, double shear_area, double L) {
  const double shear = G * shear_area;
  const double phi = shear_area == 0.0 || shear == 0.0 ? 0.0 : 12.0 * EI / (shear * L * L);
  return {(4.0 + phi) * EI / (L * (1.0 + phi)), (2.0 - phi) * EI / (L * (1.0 + phi))};
}

EndBending end_bending_of_force(double P, double L) {
  const double own = P * L / 7.5;
  return {own, -0.25 * own};
}

BeamStiffness beam_stiffness(double EA_L, double GJ_L, const EndBending& about2, const EndBending& about3, double L) {
  BeamStiffness K{{EA_L, -EA_L, EA_L}, {GJ_L, -GJ_L, GJ_L}, {}, {}};
  form_plane(about3, -1.0, L, K.plane12);
  form_plane(about2, 1.0, L, K.plane13);
  return K;
}

bool is_hinge_code(int code) {
  if (code < 0 || code > 1111) return false;
  for (int rest = code; rest > 0; rest /= 10) {
    if (rest % 10 > 1) return false;
  }
  return true;
}

void release_hinges(int code_I, int code_J, BeamStiffness& K) {
  release_end(code_I, 0, K);
  release_end(code_J, 1, K);
}

void local_forces(const BeamStiffness& K, std::span<const double, 12> u, std::span<double, 12> f) {
  part_forces(K.axial, axial_at, u.data(), f.data());
  part_forces(K.torsion, torsion_at, u.data(), f.data());
  part_forces(K.plane12, plane12_at, u.data(), f.data());
  part_forces(K.plane13, plane13_at, u.data(), f.data());
}

void global_matrix(const BeamStiffness& K, std::span<const double, 9> axes, std::span<double, 144> matrix) {
  const double* x = axes.data();
  const double* y = x + 3;
  const double* z = x + 6;
  // Blocks 0..3: translations of I, rotations of I, translations of J, rotations of J. In plane 1-2 a block moves along
  // y or turns about z, in plane 1-3 it moves along z or turns about y.
  for (std::size_t a = 0; a < 4; ++a) {
    for (std::size_t b = a; b < 4; ++b) {
      double block[3][3] = {};
      const double* part = a % 2 == 0 ? K.axial : K.torsion;
      if (a % 2 == b % 2) add_product(part[upper(2, a / 2, b / 2)], x, x, block);
      add_product(K.plane12[upper(4, a, b)], a % 2 == 0 ? y : z, b % 2 == 0 ? y : z, block);
      add_product(K.plane13[upper(4, a, b)], a % 2 == 0 ? z : y, b % 2 == 0 ? z : y, block);
      put_block(a, b, block, matrix.data());
    }
  }
}

void add_string_matrix(double P_L, std::span<const double, 9> axes, std::span<double, 144> matrix) {
  for (std::size_t j = 0; j < 3; ++j) {
    for (std::size_t i = 0; i < 3; ++i) {
      const double value = P_L * ((i == j ? 1.0 : 0.0) - axes[i] * axes[j]);
      matrix[i + 12 * j] += value;
      matrix[i + 6 + 12 * (j + 6)] += value;
      matrix[i + 6 + 12 * j] -= value;
      matrix[i + 12 * (j + 6)] -= value;
    }
  }
}

void add_string_forces(double P_L, std::span<const double, 9> axes, std::span<const double, 12> u,
                       std::span<double, 12> f) {
  const double apart[3] = {u[0] - u[6], u[1] - u[7], u[2] - u[8]};
  const double along = axes[0] * apart[0] + axes[1] * apart[1] + axes[2] * apart[2];
  for (std::size_t i = 0; i < 3; ++i) {
    const double force = P_L * (apart[i] - along * axes[i]);
    f[i] += force;
    f[i + 6] -= force;
  }
}

void to_member_axes(std::span<const double, 9> axes, std::span<const double, 12> global, std::span<double, 12> local) {
  for (std::size_t triple = 0; triple < 12; triple += 3) {
    const double* v = global.data() + triple;
    for (std::size_t k = 0; k < 3; ++k) {
      local[triple + k] = axes[3 * k] * v[0] + axes[3 * k + 1] * v[1] + axes[3 * k + 2] * v[2];
    }
  }
}

void to_master_axes(std::span<const double, 9> axes, std::span<const double, 12> local, std::span<double, 12> global) {
  for (std::size_t triple = 0; triple < 12; triple += 3) {
    for (std::size_t i = 0; i < 3; ++i) {
      global[triple + i] = axes[i] * local[triple] + axes[i + 3] * local[triple + 1] + axes[i + 6] * local[triple + 2];
    }
  }
}

}  // namespace tidearc
