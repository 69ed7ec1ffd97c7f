// The operations of the beams on the work block: forces, matrix delivery, flags.
#include "elements/beam/operations.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>

#include "beam_block.h"
#include "elements/contract/types.h"

namespace tidearc::test {
namespace {

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

TEST_F(Beams, ExtremesStartAnewAtThePresentValues) {
  for (const int type : {3, 2, 27}) {
    SetUp();
    LinearBeamRecord& three = linear();
    BeamEnvelope* envelope = &three.envelope;
    if (type != 3) {
      std::fill_n(record_words(), 700, 0);
      envelope = &large().envelope;
    }
    const ElementOperations& operations = element_type(type).operations;
    for (const double factor : {1.0, -0.5}) {
      for (std::size_t i = 0; i < 12; ++i) element.EDISP[i] = (factor - (factor < 0 ? 1.0 : 0.0)) * 0.01 * some[i];
      operations.state();
    }
    EXPECT_GT(envelope->forces.largest[6], envelope->forces.smallest[6]);
    element.TIME = 7.0;
    operations.restart_envelope();
    Vector12 present_forces;
    if (type == 3) {
      std::copy_n(three.F, 12, present_forces.begin());
    } else {
      const LargeBeam& two = current_record<LargeBeam>();
      natural_to_local(two.QNAT, two.XL, present_forces);
    }
    for (std::size_t i = 0; i < 12; ++i) {
      for (const Extremes* of : {&envelope->forces, &envelope->deformations}) {
        EXPECT_EQ(of->largest[i], of->smallest[i]);
        EXPECT_EQ(of->largest_time[i], 7.0);
        EXPECT_EQ(of->smallest_time[i], 7.0);
      }
      EXPECT_EQ(envelope->forces.largest[i], present_forces[i]);
    }
    const double axial = type == 3 ? three.U[6] : current_record<LargeBeam>().ENAT[5];
    EXPECT_EQ(envelope->deformations.largest[6], axial);
    EXPECT_NE(axial, 0.0);
  }
}

TEST_F(Beams, TheEndFrameKeepsASmallTwistInCodes2And3) {
  for (const int KSD : {1, 2, 3}) {
    SetUp();
    LargeBeam& beam = large(KSD);
    beam.KECC = 0;
    const LargeBeam before = beam;
    // Both ends turn by 4E-7 about the member.
    for (std::size_t i = 0; i < 3; ++i) element.EDISP[3 + i] = element.EDISP[9 + i] = 4e-7 * beam.TELEM[i];
    SDET02();
    for (std::size_t i = 0; i < 3; ++i) {
      const double y = before.TELEM[3 + i] + (KSD == 1 ? 0.0 : 4e-7 * before.TELEM[6 + i]);
      EXPECT_NEAR(beam.TELEM[3 + i], y, 1e-12) << KSD;
    }
  }
}

TEST_F(Beams, AnIncrementOfZeroLeavesTheStateOfALargeBeamToItsLastDigit) {
  for (const int KSD : {1, 2, 3}) {
    SetUp();
    LargeBeam& beam = large(KSD);
    set(element.EDISP, some);
    SDET02();
    const LargeBeam before = beam;
    element.EDISP = {};
    SDET02();
    EXPECT_EQ(std::memcmp(&before, &beam, sizeof(LargeBeam)), 0) << KSD;
  }
}

TEST_F(Beams, TypesHaveNoEventsAndTwoNodesInTheGraph) {
  for (const int ITYPE : {2, 3, 27}) EXPECT_EQ(element_type(ITYPE).operations.event, nullptr);
  EXPECT_EQ(element_type(2).graph_nodes, 2);
  EXPECT_EQ(element_type(3).graph_nodes, 2);
  EXPECT_EQ(element_type(27).graph_nodes, 0);
}

}  // namespace
}  // namespace tidearc::test
