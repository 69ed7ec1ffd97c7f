// Stiffness-proportional damping of the beams: its forces, the matrix of a time step that belongs to them, and what it
// must leave alone.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

#include "beam_block.h"

namespace tidearc::test {
namespace {

class Damping : public Beams {
 protected:
  void damp(double BETAO, double BETAT) {
    group.BETAO = BETAO;
    group.BETAT = BETAT;
  }
  static Vector12 sum(double a, const Vector12& x, double b, const Vector12& y) {
    Vector12 z;
    for (std::size_t i = 0; i < 12; ++i) z[i] = a * x[i] + b * y[i];
    return z;
  }
  static void expect_near(const Vector12& found, const Vector12& expected, double tolerance) {
    for (std::size_t i = 0; i < 12; ++i) EXPECT_NEAR(found[i], expected[i], tolerance) << i;
  }
  static Full tangent_of_large() {
    STIF02(0, 0, 0, true);
    return unpacked();
  }
  /// The tangent that the beam would have in its frame without axial force.
  static Full initial_of_large(LargeBeam& beam) {
    const double P = beam.P;
    beam.P = 0.0;
    const Full K = tangent_of_large();
    beam.P = P;
    return K;
  }
};

TEST_F(Damping, OfTheLinearBeamIsItsMatrixTimesVelocity) {
  linear();
  STIF03(0, 0, 0, true);
  const Full K = unpacked();
  damp(0.2, 0.3);
  set(element.EVEL, some);
  set(element.EACC, other);
  RESP03();
  DYNF03(0.5, 2.0);
  expect_near(of(element.EDAMP), times(K, sum(0.5, some, 0, other)), 1e-12);
  expect_near(of(element.EDYNF), times(K, sum(0.5 * 1.5, some, 0.5 * 2.0, other)), 1e-12);
}

TEST_F(Damping, OfTheLargeBeamHasItsTangentAndItsMatrixWithoutAxialForce) {
  for (const int KGE : {0, 1}) {
    SetUp();
    LargeBeam& beam = large();
    beam.KGE = KGE;
    set(element.EDISP, some);
    SDET02();
    EXPECT_GT(std::abs(beam.P), 1.0);
    const Full tangent = tangent_of_large(), initial = initial_of_large(beam);
    STIF02(1, 0.25, 0.5, true);
    const Full both = unpacked();
    for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(both[i], 0.25 * initial[i] + 1.5 * tangent[i], 1e-12);
    damp(0.2, 0.3);
    set(element.EVEL, some);
    set(element.EACC, other);
    RESP02();
    DYNF02(0.5, 2.0);
    const Vector12 rate = sum(1.5, some, 2.0, other);
    expect_near(of(element.EDAMP), sum(0.2, times(initial, some), 0.3, times(tangent, some)), 1e-11);
    expect_near(of(element.EDYNF), sum(0.2, times(initial, rate), 0.3, times(tangent, rate)), 1e-11);
  }
}

TEST_F(Damping, TheInitialMatrixOfTheLargeBeamTakesNoAxialForceFromInput) {
  // Before any determination, with an axial force that the first matrix is told to have.
  LargeBeam& beam = large();
  const Full plain = tangent_of_large();
  beam.P = 30.0;
  damp(1.0, 0.0);
  set(element.EVEL, some);
  RESP02();
  expect_near(of(element.EDAMP), times(plain, some), 1e-11);
}

/// Components of both ends' vectors turned by `a` about z.
Vector12 turned(const Vector12& v, double a) {
  Vector12 t = v;
  for (std::size_t k = 0; k < 12; k += 3) {
    t[k] = std::cos(a) * v[k] - std::sin(a) * v[k + 1];
    t[k + 1] = std::sin(a) * v[k] + std::cos(a) * v[k + 1];
  }
  return t;
}

/// A member without offsets, turned as a rigid body about z at its end I, in the state behind the determination.
LargeBeam& turn_rigidly(LargeBeam& beam, double a) {
  beam.KECC = 0;
  const double* c = beam.CHORD;
  const Vector12 motion = {
      0, 0, 0, 0, 0, a, std::cos(a) * c[0] - std::sin(a) * c[1] - c[0], std::sin(a) * c[0] + std::cos(a) * c[1] - c[1],
      0, 0, 0, a};
  std::ranges::copy(motion, element.EDISP.begin());
  SDET02();
  return beam;
}

TEST_F(Damping, TheInitialMatrixOfTheLargeBeamTurnsWithIt) {
  // Bending alike about axes 2 and 3, so that only the member's line counts.
  const double a = 1.2;
  damp(0.7, 0.0);
  LargeBeam& beam = large();
  beam.EI2L = beam.EI3L;
  beam.KECC = 0;
  set(element.EVEL, some);
  RESP02();
  const Vector12 before = of(element.EDAMP);
  turn_rigidly(beam, a);
  set(element.EVEL, turned(some, a));
  RESP02();
  expect_near(of(element.EDAMP), turned(before, a), 1e-12);
  EXPECT_GT(std::abs(before[0]), 0.1);
}

/// Velocities of nodes at xI and xJ that turn about the origin with w and move with t.
Vector12 rigid_velocity(const std::array<double, 3>& xI, const std::array<double, 3>& xJ,
                        const std::array<double, 3>& t, const std::array<double, 3>& w) {
  Vector12 v;
  std::size_t at = 0;
  for (const auto& x : {xI, xJ}) {
    v[at++] = t[0] + w[1] * x[2] - w[2] * x[1];
    v[at++] = t[1] + w[2] * x[0] - w[0] * x[2];
    v[at++] = t[2] + w[0] * x[1] - w[1] * x[0];
    for (const double component : w) v[at++] = component;
  }
  return v;
}

constexpr std::array<double, 3> nodeI = {0, 0, 0}, nodeJ = {1.3, 2.1, 1.6}, t = {0.3, -0.2, 0.7}, w = {0.5, 0.1, -0.4};

TEST_F(Damping, ARigidVelocityMeetsNone) {
  const Vector12 v = rigid_velocity(nodeI, nodeJ, t, w);
  damp(0.7, 0.9);
  linear();
  set(element.EVEL, v);
  RESP03();
  DYNF03(0.5, 0.0);
  expect_near(of(element.EDAMP), Vector12{}, 1e-13 * 50);
  expect_near(of(element.EDYNF), Vector12{}, 1e-13 * 50);
  large();
  set(element.EVEL, v);
  RESP02();
  DYNF02(0.5, 0.0);
  expect_near(of(element.EDAMP), Vector12{}, 1e-13 * 50);
  expect_near(of(element.EDYNF), Vector12{}, 1e-13 * 50);
}

TEST_F(Damping, ARigidVelocityMeetsNoneWhereTheMemberHasTurned) {
  LargeBeam& beam = turn_rigidly(large(), 1.2);
  std::array<double, 3> xJ;
  for (std::size_t i = 0; i < 3; ++i) xJ[i] = beam.XL * beam.TELEM[i];
  damp(0.7, 0.0);
  set(element.EVEL, rigid_velocity(nodeI, xJ, t, w));
  RESP02();
  expect_near(of(element.EDAMP), Vector12{}, 1e-13 * 50);
}

TEST_F(Damping, OnTheTangentMeetsARotationWithTheAxialForceAlone) {
  // The tangent turns the force P: P/L times the part of w x c normal to the member, the natural part has nothing.
  LargeBeam& beam = large();
  beam.KECC = 0;
  beam.P = 20.0;
  std::array<double, 3> xJ;
  for (std::size_t i = 0; i < 3; ++i) xJ[i] = beam.XL * beam.TELEM[i];
  damp(0.0, 0.5);
  set(element.EVEL, rigid_velocity(nodeI, xJ, t, {}));
  RESP02();
  expect_near(of(element.EDAMP), Vector12{}, 1e-12);
  set(element.EVEL, rigid_velocity(nodeI, xJ, t, w));
  RESP02();
  const double* x = beam.TELEM;
  const double turn[3] = {w[1] * x[2] - w[2] * x[1], w[2] * x[0] - w[0] * x[2], w[0] * x[1] - w[1] * x[0]};
  Vector12 expected{};
  for (std::size_t i = 0; i < 3; ++i) {
    expected[i] = -0.5 * 20.0 * turn[i];
    expected[i + 6] = -expected[i];
  }
  expect_near(of(element.EDAMP), expected, 1e-12);
}

/// Derivatives of force(d) at d = 0, column by column, from central differences of step h.
Full derivative(const std::function<Vector12(const Vector12&)>& force, double h) {
  Full K;
  for (std::size_t j = 0; j < 12; ++j) {
    Vector12 d{};
    d[j] = h;
    const Vector12 forth = force(d);
    d[j] = -h;
    const Vector12 back = force(d);
    for (std::size_t i = 0; i < 12; ++i) K[i + 12 * j] = (forth[i] - back[i]) / (2 * h);
  }
  return K;
}

constexpr double A2 = 40.0, AB = 0.1, BETAO = 0.02, BETAT = 0.03;

TEST_F(Damping, TheMatrixOfATimeStepIsTheDerivativeOfItsForces) {
  // (1-AB) R(d) + D(A2 d), the forces of a step from rest; the matrix is that of c1 = BETAO A2 and c2 = BETAT A2 - AB.
  damp(BETAO, BETAT);
  const LinearBeamRecord start = linear();
  const auto force = [&](const Vector12& d) {
    current_record<LinearBeamRecord>() = start;
    set(element.EDISP, d);
    SDET03();
    set(element.EVEL, sum(A2, d, 0, d));
    RESP03();
    return sum(1 - AB, of(element.ERES), 1, of(element.EDAMP));
  };
  const Full expected = derivative(force, 1.0);
  STIF03(1, BETAO * A2, BETAT * A2 - AB, true);
  const Full K = unpacked();
  for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(K[i], expected[i], 1e-12 * 150);
}

TEST_F(Damping, TheMatrixOfATimeStepIsTheDerivativeInAMemberThatIsPulled) {
  // The tangent is exact where the member is straight and bears an axial force alone.
  for (const int KSD : {1, 2, 3}) {
    for (const int KGE : {0, 1}) {
      SetUp();
      damp(BETAO, BETAT);
      LargeBeam& beam = large(KSD);
      beam.KGE = KGE;
      beam.ENAT[5] = 0.1;
      SDET02();
      EXPECT_NEAR(beam.P, 5.0, 1e-12);
      const LargeBeam start = beam;
      const auto force = [&](const Vector12& d) {
        current_record<LargeBeam>() = start;
        set(element.EDISP, d);
        SDET02();
        set(element.EVEL, sum(A2, d, 0, d));
        RESP02();
        return sum(1 - AB, of(element.ERES), 1, of(element.EDAMP));
      };
      const Full expected = derivative(force, 1e-5);
      current_record<LargeBeam>() = start;
      STIF02(1, BETAO * A2, BETAT * A2 - AB, true);
      const Full K = unpacked();
      for (std::size_t i = 0; i < 144; ++i) EXPECT_NEAR(K[i], expected[i], 1e-7 * 150) << KSD << KGE;
    }
  }
}

TEST_F(Damping, AGroupWithoutCoefficientsHasNoDampingForces) {
  linear();
  set(element.EVEL, some);
  element.EDAMP.fill(1.0);
  RESP03();
  expect_near(of(element.EDAMP), Vector12{}, 0.0);
  large();
  element.EDAMP.fill(1.0);
  RESP02();
  expect_near(of(element.EDAMP), Vector12{}, 0.0);
}

TEST_F(Damping, AStaticMatrixTakesNoFactors) {
  large();
  set(element.EDISP, some);
  SDET02();
  const Full K = tangent_of_large();
  STIF02(0, 5.0, 7.0, true);
  EXPECT_EQ(unpacked(), K);
  linear();
  STIF03(0, 0, 0, true);
  const Full L = unpacked();
  STIF03(-1, 5.0, 7.0, true);
  EXPECT_EQ(unpacked(), L);
}

}  // namespace
}  // namespace tidearc::test
