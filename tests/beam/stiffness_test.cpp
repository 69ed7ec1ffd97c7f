// Stiffness of the straight beam against matrices that are made by other ways: the flexibility of a cantilever and the
// equilibrium of its ends; elimination in the full matrix.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

#include "elements/beam/delivery.h"
#include "elements/beam/local_axes.h"
#include "elements/beam/natural.h"
#include "elements/beam/offsets.h"
#include "elements/beam/stiffness_parts.h"

namespace tidearc::test {
namespace {

using Matrix = std::array<std::array<double, 12>, 12>;
using Full = std::array<double, 144>;

struct Beam {
  double EA = 700.0, GJ = 90.0, EI2 = 340.0, EI3 = 510.0, L = 2.5;
  double GA2 = 0.0, GA3 = 0.0;  ///< shear stiffnesses, 0: rigid in shear
};

/// Stiffness of one plane from the flexibility of the cantilever held at I: tip translation and rotation under a
/// transverse force and a moment, inverted; the forces at I by equilibrium. `sign` is that of the moment of a force at
/// J about I: +1 for (v, rz), -1 for (w, ry).
void plane_from_flexibility(double EI, double GA, double L, double sign, double (&k)[4][4]) {
  const double shear = GA == 0.0 ? 0.0 : L / GA;
  const double f11 = L * L * L / (3 * EI) + shear;
  const double f12 = sign * L * L / (2 * EI);
  const double f22 = L / EI;
  const double det = f11 * f22 - f12 * f12;
  const double kJ[2][2] = {{f22 / det, -f12 / det}, {-f12 / det, f11 / det}};
  // Forces at I of forces (V, M) at J: -V and -M - sign L V.
  const double H[2][2] = {{-1, 0}, {-sign * L, -1}};
  double kIJ[2][2], kII[2][2];
  for (int a = 0; a < 2; ++a) {
    for (int b = 0; b < 2; ++b) kIJ[a][b] = H[a][0] * kJ[0][b] + H[a][1] * kJ[1][b];
  }
  for (int a = 0; a < 2; ++a) {
    for (int b = 0; b < 2; ++b) kII[a][b] = kIJ[a][0] * H[b][0] + kIJ[a][1] * H[b][1];
  }
  for (int a = 0; a < 2; ++a) {
    for (int b = 0; b < 2; ++b) {
      k[a][b] = kII[a][b];
      k[a][b + 2] = kIJ[a][b];
      k[b + 2][a] = kIJ[a][b];
      k[a + 2][b + 2] = kJ[a][b];
    }
  }
}

Matrix local_matrix(const Beam& b) {
  Matrix K{};
  for (const auto& [k, i, j] : {std::tuple{b.EA / b.L, 0, 6}, std::tuple{b.GJ / b.L, 3, 9}}) {
    const auto p = static_cast<std::size_t>(i);
    const auto q = static_cast<std::size_t>(j);
    K[p][p] = K[q][q] = k;
    K[p][q] = K[q][p] = -k;
  }
  double plane[4][4];
  const auto place = [&](const std::array<std::size_t, 4>& at) {
    for (std::size_t a = 0; a < 4; ++a) {
      for (std::size_t c = 0; c < 4; ++c) K[at[a]][at[c]] = plane[a][c];
    }
  };
  plane_from_flexibility(b.EI3, b.GA2, b.L, 1.0, plane);
  place({1, 5, 7, 11});
  plane_from_flexibility(b.EI2, b.GA3, b.L, -1.0, plane);
  place({2, 4, 8, 10});
  return K;
}

BeamStiffness parts_of(const Beam& b) {
  // The modulus of shear is taken as 1, so that shear areas are shear stiffnesses.
  return beam_stiffness(b.EA / b.L, b.GJ / b.L, end_bending(b.EI2, 1.0, b.GA3, b.L),
                        end_bending(b.EI3, 1.0, b.GA2, b.L), b.L);
}

/// Rows of the local axes as a rotation of all twelve freedoms.
Matrix turned(const Matrix& local, const double (&axes)[9]) {
  Matrix T{};
  for (std::size_t triple = 0; triple < 12; triple += 3) {
    for (std::size_t k = 0; k < 3; ++k) {
      for (std::size_t i = 0; i < 3; ++i) T[triple + k][triple + i] = axes[3 * k + i];
    }
  }
  Matrix K{};
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = 0; j < 12; ++j) {
      for (std::size_t p = 0; p < 12; ++p) {
        for (std::size_t q = 0; q < 12; ++q) K[i][j] += T[p][i] * local[p][q] * T[q][j];
      }
    }
  }
  return K;
}

LocalAxes some_axes(double L) {
  const double s = L / std::sqrt(14.0);
  return local_axes(std::array<double, 3>{0, 0, 0}, std::array<double, 3>{s, 2 * s, 3 * s}, std::array<double, 6>{},
                    nullptr, axes_SACS, 0.3);
}

void expect_equal(const Full& found, const Matrix& expected, double scale) {
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = 0; j < 12; ++j) EXPECT_NEAR(found[i + 12 * j], expected[i][j], 1e-12 * scale) << i << ',' << j;
  }
}

constexpr std::array<double, 9> identity = {1, 0, 0, 0, 1, 0, 0, 0, 1};

TEST(BeamStiffness, EqualsTheMatrixFromTheFlexibilityOfACantilever) {
  Full K;
  global_matrix(parts_of({}), identity, K);
  expect_equal(K, local_matrix({}), 1000);
}

TEST(BeamStiffness, ShearFlexibilityActsOnItsOwnAxisAlone) {
  for (const auto& [GA2, GA3] : {std::pair{60.0, 0.0}, std::pair{0.0, 60.0}, std::pair{40.0, 75.0}}) {
    Beam beam;
    beam.GA2 = GA2;
    beam.GA3 = GA3;
    Full K;
    global_matrix(parts_of(beam), identity, K);
    expect_equal(K, local_matrix(beam), 1000);
  }
}

TEST(BeamStiffness, IsTurnedWithTheAxes) {
  Beam beam;
  beam.GA2 = 50;
  const LocalAxes local = some_axes(beam.L);
  Full K;
  global_matrix(parts_of(beam), local.axes, K);
  expect_equal(K, turned(local_matrix(beam), local.axes), 1000);
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = 0; j < 12; ++j) EXPECT_EQ(K[i + 12 * j], K[j + 12 * i]);
  }
}

TEST(BeamStiffness, LocalForcesAreTheMatrixTimesTheDisplacements) {
  const Matrix K = local_matrix({});
  std::mt19937 random(7);
  std::uniform_real_distribution<double> any(-1, 1);
  std::array<double, 12> u, f;
  for (double& value : u) value = any(random);
  local_forces(parts_of({}), u, f);
  for (std::size_t i = 0; i < 12; ++i) {
    double sum = 0;
    for (std::size_t j = 0; j < 12; ++j) sum += K[i][j] * u[j];
    EXPECT_NEAR(f[i], sum, 1e-11);
  }
}

TEST(BeamStiffness, RigidMotionGivesNoForce) {
  // Translation t and rotation r of everything: u = t + r x X.
  const LocalAxes local = some_axes(2.5);
  Full K;
  global_matrix(parts_of({}), local.axes, K);
  const double t[3] = {0.3, -0.2, 0.7}, r[3] = {0.5, 0.1, -0.4};
  std::array<double, 12> u{};
  for (std::size_t end = 0; end < 2; ++end) {
    double X[3];
    for (std::size_t i = 0; i < 3; ++i) X[i] = end == 0 ? 0.0 : local.length * local.axes[i];
    double* at = u.data() + 6 * end;
    at[0] = t[0] + r[1] * X[2] - r[2] * X[1];
    at[1] = t[1] + r[2] * X[0] - r[0] * X[2];
    at[2] = t[2] + r[0] * X[1] - r[1] * X[0];
    for (std::size_t i = 0; i < 3; ++i) at[3 + i] = r[i];
  }
  double largest = 0;
  for (const double value : K) largest = std::max(largest, std::abs(value));
  for (std::size_t i = 0; i < 12; ++i) {
    double sum = 0;
    for (std::size_t j = 0; j < 12; ++j) sum += K[i + 12 * j] * u[j];
    EXPECT_NEAR(sum, 0.0, 1e-14 * largest);
  }
}

/// Condenses freedom p out of the full matrix.
void eliminate(Matrix& K, std::size_t p) {
  if (std::abs(K[p][p]) > 1e-9) {
    const auto row = K[p];
    for (std::size_t i = 0; i < 12; ++i) {
      if (i == p) continue;
      const double factor = K[i][p] / row[p];
      for (std::size_t j = 0; j < 12; ++j) K[i][j] -= factor * row[j];
    }
  }
  for (std::size_t i = 0; i < 12; ++i) K[i][p] = K[p][i] = 0;
}

TEST(Hinges, EveryCombinationEqualsEliminationInTheFullMatrix) {
  const std::size_t freedom[4] = {5, 4, 3, 0};  // units, tens, hundreds, thousands
  for (int I = 0; I < 16; ++I) {
    for (int J = 0; J < 16; ++J) {
      Beam beam;
      beam.GA3 = 70;
      Matrix expected = local_matrix(beam);
      int code_I = 0, code_J = 0, place = 1;
      for (std::size_t bit = 0; bit < 4; ++bit, place *= 10) {
        if (I >> bit & 1) code_I += place, eliminate(expected, freedom[bit]);
        if (J >> bit & 1) code_J += place, eliminate(expected, freedom[bit] + 6);
      }
      BeamStiffness parts = parts_of(beam);
      release_hinges(code_I, code_J, parts);
      Full K;
      global_matrix(parts, identity, K);
      expect_equal(K, expected, 1000);
    }
  }
}

TEST(Hinges, AMemberPinnedAtBothEndsHasNoTransverseStiffnessLeft) {
  for (const double L : {0.7, 3.1, 1234.5}) {
    Beam beam;
    beam.L = L;
    BeamStiffness parts = parts_of(beam);
    release_hinges(111, 11, parts);
    for (const double value : parts.plane12) EXPECT_EQ(value, 0.0);
    for (const double value : parts.plane13) EXPECT_EQ(value, 0.0);
    for (const double value : parts.torsion) EXPECT_EQ(value, 0.0);
    EXPECT_NE(parts.axial[0], 0.0);
  }
}

TEST(Hinges, OnlyDigits0And1AreCodes) {
  for (const int code : {0, 1, 10, 11, 100, 1000, 1111, 1010}) EXPECT_TRUE(is_hinge_code(code)) << code;
  for (const int code : {2, 20, 12, 1112, 2000, -1, 10000, 9}) EXPECT_FALSE(is_hinge_code(code)) << code;
}

TEST(AxialForce, NaturalTermsAndStringMatrixAreTheClassicalGeometricStiffness) {
  // P/(30 L) [36, 3L, -36, 3L; .. 4L^2, -3L, -L^2; ..] in the plane (v, rz), e.g. Przemieniecki, sec. 15.4.
  const double P = 3.7, L = 2.5;
  const NaturalConstants none{0, 0, 0, 0, L};
  Full K;
  global_matrix(natural_parts(none, P, true), identity, K);
  add_string_matrix(P / L, identity, K);
  const double c = P / (30 * L);
  const double plane[4][4] = {{36 * c, 3 * L * c, -36 * c, 3 * L * c},
                              {3 * L * c, 4 * L * L * c, -3 * L * c, -L * L * c},
                              {-36 * c, -3 * L * c, 36 * c, -3 * L * c},
                              {3 * L * c, -L * L * c, -3 * L * c, 4 * L * L * c}};
  const std::size_t v[4] = {1, 5, 7, 11}, w[4] = {2, 4, 8, 10};
  const double turn[4] = {1, -1, 1, -1};  // in the plane (w, ry) a positive rotation slopes down
  for (std::size_t a = 0; a < 4; ++a) {
    for (std::size_t b = 0; b < 4; ++b) {
      EXPECT_NEAR(K[v[a] + 12 * v[b]], plane[a][b], 1e-14);
      EXPECT_NEAR(K[w[a] + 12 * w[b]], turn[a] * turn[b] * plane[a][b], 1e-14);
    }
  }
  EXPECT_EQ(K[0], 0.0);
}

TEST(AxialForce, IsLeftOutWhereItIsExcluded) {
  const NaturalConstants k{3, 4, 5, 6, 2};
  const BeamStiffness with = natural_parts(k, 10.0, false);
  const BeamStiffness without = natural_parts(k, 0.0, true);
  for (std::size_t i = 0; i < 10; ++i) {
    EXPECT_EQ(with.plane12[i], without.plane12[i]);
    EXPECT_EQ(with.plane13[i], without.plane13[i]);
  }
  double e[6] = {0.1, -0.2, 0.3, 0.05, 0.4, 0.5}, q[6], q0[6];
  natural_forces(k, 10.0, false, e, q);
  natural_forces(k, 0.0, true, e, q0);
  for (int i = 0; i < 6; ++i) EXPECT_EQ(q[i], q0[i]);
}

TEST(Natural, DeformationsAreRotationsAgainstTheChordTwistAndExtension) {
  const double L = 4;
  const std::array<double, 12> u = {0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 1.0, 1.5, 1.1, 1.2, 1.3};
  double e[6];
  natural_deformations(u, L, e);
  const double expected[6] = {0.5 + 0.3, 1.2 + 0.3, 0.6 - 0.2, 1.3 - 0.2, 0.7, 0.6};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(e[i], expected[i], 1e-15);
}

TEST(Natural, ForcesAreTheTransposeAndTheTransformationIsBothInMasterAxes) {
  const LocalAxes local = some_axes(2.5);
  double TGLOB[72];
  natural_transformation(local.axes, local.length, TGLOB);
  std::mt19937 random(3);
  std::uniform_real_distribution<double> any(-1, 1);
  std::array<double, 12> u, in_member, f_local, f, f_told;
  double q[6], e[6];
  for (double& value : u) value = any(random);
  for (double& value : q) value = any(random);
  to_member_axes(local.axes, u, in_member);
  natural_deformations(in_member, local.length, e);
  for (std::size_t row = 0; row < 6; ++row) {
    double sum = 0;
    for (std::size_t j = 0; j < 12; ++j) sum += TGLOB[row + 6 * j] * u[j];
    EXPECT_NEAR(sum, e[row], 1e-14);
  }
  natural_to_local(q, local.length, f_local);
  to_master_axes(local.axes, f_local, f);
  natural_to_master(TGLOB, q, f_told);
  double work = 0, natural_work = 0;
  for (std::size_t i = 0; i < 12; ++i) {
    EXPECT_NEAR(f[i], f_told[i], 1e-14);
    work += f[i] * u[i];
  }
  for (std::size_t i = 0; i < 6; ++i) natural_work += q[i] * e[i];
  EXPECT_NEAR(work, natural_work, 1e-13);
}

TEST(Natural, ForcesAndMatrixSpeakOfTheSameStiffness) {
  const NaturalConstants k{30, 40, 50, 60, 2.5};
  double e[6], q[6];
  const std::array<double, 12> u = {0.1, 0.2, -0.3, 0.4, 0.5, -0.6, 0.7, 1.0, 0.5, 0.1, 0.2, 0.3};
  natural_deformations(u, k.XL, e);
  natural_forces(k, -7.0, true, e, q);
  std::array<double, 12> f, f_parts;
  natural_to_local(q, k.XL, f);
  local_forces(natural_parts(k, -7.0, true), u, f_parts);
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(f[i], f_parts[i], 1e-12);
}

TEST(Offsets, ForcesDoTheWorkOfTheEnds) {
  const std::array<double, 6> ECC = {0.5, -0.3, 0.2, 0.7, -0.1, 0.4};
  std::array<double, 12> u = {0.1, 0.2, -0.3, 0.4, 0.5, -0.6, 0.7, 1.0, 0.5, 0.1, 0.2, 0.3};
  std::array<double, 12> f = {3, -2, 5, 1, 7, -4, 2, 2, -6, 3, 1, 1};
  std::array<double, 12> at_ends = u, at_nodes = f;
  move_to_ends(ECC, at_ends);
  move_to_nodes(ECC, at_nodes);
  double ends = 0, nodal = 0;
  for (std::size_t i = 0; i < 12; ++i) {
    ends += f[i] * at_ends[i];
    nodal += at_nodes[i] * u[i];
  }
  EXPECT_NEAR(ends, nodal, 1e-13);
  // u + r x e by hand at I: e = (0.5, 0.2, -0.1), r = (0.4, 0.5, -0.6).
  EXPECT_NEAR(at_ends[0], 0.1 + (0.5 * -0.1 - -0.6 * 0.2), 1e-15);
  EXPECT_NEAR(at_ends[1], 0.2 + (-0.6 * 0.5 - 0.4 * -0.1), 1e-15);
  EXPECT_NEAR(at_ends[2], -0.3 + (0.4 * 0.2 - 0.5 * 0.5), 1e-15);
}

TEST(Offsets, TheMatrixOfTheNodesGivesTheMovedForcesOfTheMovedDisplacements) {
  const std::array<double, 6> ECC = {0.5, -0.3, 0.2, 0.7, -0.1, 0.4};
  Full K, moved;
  global_matrix(parts_of({}), some_axes(2.5).axes, K);
  moved = K;
  move_matrix_to_nodes(ECC, moved);
  std::array<double, 12> u = {0.1, 0.2, -0.3, 0.4, 0.5, -0.6, 0.7, 1.0, 0.5, 0.1, 0.2, 0.3};
  std::array<double, 12> ends = u, f{};
  move_to_ends(ECC, ends);
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = 0; j < 12; ++j) f[i] += K[i + 12 * j] * ends[j];
  }
  move_to_nodes(ECC, f);
  for (std::size_t i = 0; i < 12; ++i) {
    double sum = 0;
    for (std::size_t j = 0; j < 12; ++j) {
      sum += moved[i + 12 * j] * u[j];
      EXPECT_EQ(moved[i + 12 * j], moved[j + 12 * i]);
    }
    EXPECT_NEAR(sum, f[i], 1e-11);
  }
}

TEST(Delivery, IsTheChangeInTheUpperTriangleByRows) {
  Full K;
  for (std::size_t j = 0; j < 12; ++j) {
    for (std::size_t i = 0; i < 12; ++i) K[i + 12 * j] = static_cast<double>(100 * std::min(i, j) + std::max(i, j));
  }
  std::array<double, 78> delivered{}, packed{};
  deliver_packed(K, true, delivered.data(), packed.data());
  std::size_t at = 0;
  for (std::size_t i = 0; i < 12; ++i) {
    for (std::size_t j = i; j < 12; ++j) EXPECT_EQ(packed[at++], static_cast<double>(100 * i + j));
  }
  for (double& value : K) value += 2.0;
  deliver_packed(K, false, delivered.data(), packed.data());
  for (const double value : packed) EXPECT_EQ(value, 2.0);
  deliver_packed(K, false, delivered.data(), packed.data());
  for (const double value : packed) EXPECT_EQ(value, 0.0);
  deliver_packed(K, true, delivered.data(), packed.data());
  EXPECT_EQ(packed[1], 3.0);
}

}  // namespace
}  // namespace tidearc::test
