// The operations of the beams on the work block: damping, dynamic forces, matrix delivery, flags.
#include "elements/beam/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "elements/beam/local_axes.h"
#include "elements/beam/natural.h"
#include "elements/beam/offsets.h"
#include "elements/beam/record.h"
#include "elements/contract/group.h"
#include "elements/contract/types.h"
#include "model/patterns.h"

namespace tidearc::test {
namespace {

using Vector12 = std::array<double, 12>;
using Full = std::array<double, 144>;

/// A member along (1,2,2)/3 of length 3 with offsets, in the work block.
template <class Beam>
void place(Beam& beam) {
  const double ECC[6] = {0.1, -0.2, 0.3, 0.2, 0.0, 0.4};
  std::ranges::copy(ECC, beam.ECC);
  beam.KECC = 1;
  const LocalAxes local =
      local_axes(std::array<double, 3>{0, 0, 0}, std::array<double, 3>{1.3, 2.1, 1.6}, ECC, nullptr, axes_SACS, 0.2);
  beam.XL = local.length;
  std::ranges::copy(local.axes, beam.TELEM);
}

class Beams : public ::testing::Test {
 protected:
  void SetUp() override {
    group = {};
    element = {};
    patterns.have_temperatures = false;
  }
  LinearBeamRecord& linear() {
    group.ITYPE = 3;
    group.LFIX = 530;
    LinearBeamRecord& beam = current_record<LinearBeamRecord>();
    place(beam);
    beam.K = beam_stiffness(50, 7, {4, 2}, {9, 4.5}, beam.XL);
    beam.head.KSTIF = 1;
    return beam;
  }
  LargeBeam& large(int KSD = 2) {
    group.ITYPE = 2;
    group.LFIX = 668;
    LargeBeam& beam = current_record<LargeBeam>();
    place(beam);
    std::ranges::copy(beam.TELEM, beam.START);
    for (std::size_t i = 0; i < 3; ++i) beam.CHORD[i] = beam.XL * beam.TELEM[i];
    natural_transformation(beam.TELEM, beam.XL, beam.TGLOB);
    beam.EI2L = 1;
    beam.EI3L = 2.25;
    beam.GJL = 7;
    beam.EAL = 50;
    beam.KSD = KSD;
    return beam;
  }
  static Full unpacked() {
    Full K{};
    std::size_t at = 0;
    for (std::size_t i = 0; i < 12; ++i) {
      for (std::size_t j = i; j < 12; ++j) K[i + 12 * j] = K[j + 12 * i] = element.EMAT[at++];
    }
    return K;
  }
  static Vector12 times(const Full& K, const Vector12& v) {
    Vector12 f{};
    for (std::size_t j = 0; j < 12; ++j) {
      for (std::size_t i = 0; i < 12; ++i) f[i] += K[i + 12 * j] * v[j];
    }
    return f;
  }
  static void set(std::array<double, most_freedoms>& to, const Vector12& v) { std::ranges::copy(v, to.begin()); }
};

constexpr Vector12 some = {0.1, 0.2, -0.3, 0.4, 0.5, -0.6, 0.7, 1.0, 0.5, 0.1, 0.2, 0.3};
constexpr Vector12 other = {0.3, -0.1, 0.2, -0.2, 0.1, 0.4, 0.2, -0.3, 0.6, 0.5, -0.7, 0.1};

TEST_F(Beams, ForcesOfTheLinearBeamAreItsMatrixTimesItsDisplacements) {
  LinearBeamRecord& beam = linear();
  EXPECT_EQ(STIF03(0, 0, 0, true), MatrixForm::packed);
  const Full K = unpacked();
  EXPECT_EQ(beam.head.KSTIF, 0);
  set(element.EDISP, some);
  SDET03();
  EXPECT_EQ(beam.head.KSTIF, 0);  // its matrix never changes
  SDET03();
  RESP03();
  const Vector12 f = times(K, some);
  for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(element.ERES[i], 2 * f[i], 1e-12);
}

TEST_F(Beams, TheLinearBeamDeliversChangesAndScalesForDamping) {
  linear();
  STIF03(0, 0, 0, true);
  const Full K = unpacked();
  STIF03(0, 0, 0, false);
  for (std::size_t i = 0; i < 78; ++i) EXPECT_EQ(element.EMAT[i], 0.0);
  STIF03(1, 0.25, 0.5, false);
  Full change = unpacked();
  for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(change[i], 0.75 * K[i], 1e-13);
}

TEST_F(Beams, DampingOfTheLinearBeamIsItsMatrixTimesVelocity) {
  linear();
  STIF03(0, 0, 0, true);
  const Full K = unpacked();
  group.BETAO = 0.2;
  group.BETAT = 0.3;
  set(element.EVEL, some);
  set(element.EACC, other);
  RESP03();
  DYNF03(0.5, 2.0);
  Vector12 rate;
  for (std::size_t i = 0; i < 12; ++i) rate[i] = 1.5 * some[i] + 2.0 * other[i];
  const Vector12 f = times(K, some), g = times(K, rate);
  for (std::size_t i = 0; i < 12; ++i) {
    EXPECT_NEAR(element.EDAMP[i], 0.5 * f[i], 1e-12);
    EXPECT_NEAR(element.EDYNF[i], 0.5 * g[i], 1e-12);
  }
}

TEST_F(Beams, ASmallMotionOfTheLargeBeamGivesItsMatrixTimesTheMotion) {
  for (const int KSD : {1, 2, 3}) {
    SetUp();
    LargeBeam& beam = large(KSD);
    EXPECT_EQ(STIF02(0, 0, 0, true), MatrixForm::packed);
    const Full K = unpacked();
    Vector12 small;
    for (std::size_t i = 0; i < 12; ++i) small[i] = 1e-7 * some[i];
    set(element.EDISP, small);
    SDET02();
    EXPECT_EQ(beam.head.KSTIF, 1);
    RESP02();
    const Vector12 f = times(K, small);
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(element.ERES[i], f[i], 1e-11);
  }
}

TEST_F(Beams, TheLargeBeamsMatrixIsSymmetricUnderForceAndFollowsItsFrame) {
  LargeBeam& beam = large();
  set(element.EDISP, some);
  SDET02();
  STIF02(0, 0, 0, true);
  EXPECT_EQ(beam.head.KSTIF, 0);
  // In the frame and under the force that the determination has left: TGLOB^T k TGLOB + P/L (I - x x^T).
  const Full found = unpacked();
  Full K;
  global_matrix(natural_parts({beam.EI2L, beam.EI3L, beam.GJL, beam.EAL, beam.XL}, beam.P, true), beam.TELEM, K);
  add_string_matrix(beam.P / beam.XL, beam.TELEM, K);
  move_matrix_to_nodes(beam.ECC, K);
  for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(found[i], K[i], 1e-12);
  EXPECT_GT(std::abs(beam.P), 1.0);
}

TEST_F(Beams, DampingOfTheLargeBeamHasItsInitialAndItsTangentMatrix) {
  LargeBeam& beam = large();
  STIF02(0, 0, 0, true);
  const Full initial = unpacked();  // no force yet, the frame of input
  set(element.EDISP, some);
  SDET02();
  STIF02(0, 0, 0, true);
  const Full tangent = unpacked();
  STIF02(1, 0.25, 0.5, true);
  const Full both = unpacked();
  for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(both[i], 0.25 * initial[i] + 1.5 * tangent[i], 1e-12);
  group.BETAO = 0.2;
  group.BETAT = 0.3;
  set(element.EVEL, some);
  set(element.EACC, other);
  RESP02();
  DYNF02(0.5, 2.0);
  Vector12 rate;
  for (std::size_t i = 0; i < 12; ++i) rate[i] = 1.5 * some[i] + 2.0 * other[i];
  const Vector12 f0 = times(initial, some), f1 = times(tangent, some), g0 = times(initial, rate),
                 g1 = times(tangent, rate);
  for (std::size_t i = 0; i < 12; ++i) {
    EXPECT_NEAR(element.EDAMP[i], 0.2 * f0[i] + 0.3 * f1[i], 1e-11);
    EXPECT_NEAR(element.EDYNF[i], 0.2 * g0[i] + 0.3 * g1[i], 1e-11);
  }
  EXPECT_EQ(beam.KSD, 2);
}

TEST_F(Beams, ASmallRigidMotionGivesTheLargeBeamNoForce) {
  for (const int KSD : {1, 2, 3}) {
    SetUp();
    LargeBeam& beam = large(KSD);
    // u = t + r x X about the origin, nodes at 0 and (1.3, 2.1, 1.6).
    const double t[3] = {0.3, -0.2, 0.7}, r[3] = {5e-7, 1e-7, -4e-7};
    const double X[2][3] = {{0, 0, 0}, {1.3, 2.1, 1.6}};
    for (std::size_t end = 0; end < 2; ++end) {
      double* at = element.EDISP.data() + 6 * end;
      const double* x = X[end];
      at[0] = t[0] + r[1] * x[2] - r[2] * x[1];
      at[1] = t[1] + r[2] * x[0] - r[0] * x[2];
      at[2] = t[2] + r[0] * x[1] - r[1] * x[0];
      std::copy_n(r, 3, at + 3);
    }
    SDET02();
    RESP02();
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(element.ERES[i], 0.0, 1e-10 * beam.EAL);
  }
}

TEST_F(Beams, NoAxialTermsLeaveTheBendingStiffnessAlone) {
  LargeBeam& beam = large();
  beam.KGE = 1;
  set(element.EDISP, some);
  SDET02();
  EXPECT_GT(std::abs(beam.P), 1.0);
  EXPECT_DOUBLE_EQ(beam.QNAT[0], 4 * beam.EI2L * beam.ENAT[0] + 2 * beam.EI2L * beam.ENAT[1]);
  beam.KGE = 0;
  element.EDISP = {};
  SDET02();
  const double own = 4 * beam.EI2L + beam.P * beam.XL / 7.5, across = 2 * beam.EI2L - 0.25 * beam.P * beam.XL / 7.5;
  EXPECT_NEAR(beam.QNAT[0], own * beam.ENAT[0] + across * beam.ENAT[1], 1e-13);
}

TEST_F(Beams, TypesHaveNoEventsAndTwoNodesInTheGraph) {
  for (const int ITYPE : {2, 3, 27}) EXPECT_EQ(element_type(ITYPE).operations.event, nullptr);
  EXPECT_EQ(element_type(2).graph_nodes, 2);
  EXPECT_EQ(element_type(3).graph_nodes, 2);
  EXPECT_EQ(element_type(27).graph_nodes, 0);
}

}  // namespace
}  // namespace tidearc::test
