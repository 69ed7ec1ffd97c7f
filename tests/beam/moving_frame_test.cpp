// The frame of a beam in large displacement.
#include "elements/beam/moving_frame.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "elements/beam/local_axes.h"
#include "elements/beam/natural.h"

namespace tidearc::test {
namespace {

using Vector3 = std::array<double, 3>;
constexpr BeamAxes master = {1, 0, 0, 0, 1, 0, 0, 0, 1};
constexpr Vector3 zero{};

void expect_orthonormal(const BeamAxes& axes, double tolerance = 1e-14) {
  for (std::size_t a = 0; a < 9; a += 3) {
    for (std::size_t b = a; b < 9; b += 3) {
      double sum = 0;
      for (std::size_t i = 0; i < 3; ++i) sum += axes[a + i] * axes[b + i];
      EXPECT_NEAR(sum, a == b ? 1.0 : 0.0, tolerance);
    }
  }
}

TEST(MovingFrame, TurnsByTheLeastRotation) {
  // From x to a direction in the plane of x and y: the rotation about z, which stays.
  const double a = 1.1;
  const BeamAxes turned = turn_to_chord(master, Vector3{3 * std::cos(a), 3 * std::sin(a), 0});
  const BeamAxes expected = {std::cos(a), std::sin(a), 0, -std::sin(a), std::cos(a), 0, 0, 0, 1};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(turned[i], expected[i], 1e-15);
  // About the normal of old and new direction nothing moves: here (0, -1, 1)/sqrt 2 for x to (0, 1, 1).
  const BeamAxes skew = turn_to_chord(master, Vector3{0, 1, 1});
  expect_orthonormal(skew);
  const Vector3 normal = {0, -1, 1};
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(skew[6 + i] - skew[3 + i], normal[i], 1e-15);
}

TEST(MovingFrame, TurnsAFullReversalAndKeepsAFrameWithoutChord) {
  const BeamAxes back = turn_to_chord(master, Vector3{-2, 0, 0});
  const BeamAxes expected = {-1, 0, 0, 0, 1, 0, 0, 0, -1};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_EQ(back[i], expected[i]);
  EXPECT_EQ(turn_to_chord(master, zero), master);
  // The sum of directions that are nearly opposite keeps few digits.
  expect_orthonormal(turn_to_chord(master, Vector3{-1, 1e-2, 0}), 1e-12);
}

/// Ends of a unit beam along x that turns as a rigid body by `a` about z.
struct RigidTurn {
  Vector3 dI{}, r, dJ;
  explicit RigidTurn(double a) : r{0, 0, a}, dJ{std::cos(a) - 1, std::sin(a), 0} {}
  EndMotion motion() const { return {dI, r, dJ, r}; }
};

std::array<double, 6> deformations(int code, double a) {
  const RigidTurn turn(a);
  const HalfStep step = deformation_frame(code, master, Vector3{1, 0, 0}, turn.motion());
  EXPECT_TRUE(step.converged);
  const std::array<double, 12> u = {0, 0, 0, 0, 0, a, turn.dJ[0], turn.dJ[1], 0, 0, 0, a};
  std::array<double, 12> local;
  to_member_axes(step.axes, u, local);
  std::array<double, 6> e;
  natural_deformations(local, 1.0, e);
  return e;
}

TEST(MovingFrame, HalfStepsGiveNoAxialStrainInARigidRotation) {
  for (const double a : {0.01, 0.3, 1.5}) {
    for (const int code : {2, 3}) {
      const std::array<double, 6> e = deformations(code, a);
      EXPECT_NEAR(e[5], 0.0, 1e-15) << a;
      // What is left is the rotation less the chord of the arc: a - 2 sin(a/2), a^3/24.
      EXPECT_NEAR(e[2], a - 2 * std::sin(a / 2), 1e-14);
      EXPECT_NEAR(e[3], a - 2 * std::sin(a / 2), 1e-14);
    }
  }
}

TEST(MovingFrame, TheStartFrameGivesHalfTheSquareOfTheRotation) {
  for (const int code : {1, 0, 4, -1}) {
    EXPECT_NEAR(deformations(code, 0.01)[5], std::cos(0.01) - 1, 1e-16) << code;
    EXPECT_NEAR(deformations(code, 0.01)[5], -0.5e-4, 1e-9) << code;
  }
}

TEST(MovingFrame, TheEndFrameFollowsChordAndMeanTwist) {
  const Vector3 rI = {0.1, 0, 0}, rJ = {0.3, 0, 0};
  const BeamAxes end = end_frame(2, master, Vector3{1, 0, 0}, {zero, rI, zero, rJ});
  const BeamAxes expected = {1, 0, 0, 0, std::cos(0.2), std::sin(0.2), 0, -std::sin(0.2), std::cos(0.2)};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(end[i], expected[i], 1e-15);
  const RigidTurn turn(1.2);
  const BeamAxes turned = end_frame(2, master, Vector3{std::cos(1.2), std::sin(1.2), 0}, turn.motion());
  EXPECT_NEAR(turned[0], std::cos(1.2), 1e-15);
  EXPECT_NEAR(turned[8], 1.0, 1e-15);
}

TEST(MovingFrame, AHalfStepTwistsByAQuarterOfTheSum) {
  const Vector3 rI = {0.1, 0, 0}, rJ = {0.3, 0, 0};
  for (const int code : {2, 3}) {
    const HalfStep step = deformation_frame(code, master, Vector3{1, 0, 0}, {zero, rI, zero, rJ});
    EXPECT_NEAR(step.axes[5], std::sin(0.1), 1e-15);
  }
}

TEST(MovingFrame, ATwistWithinTheLimitIsNotApplied) {
  // The limit 1.0E-6 is on the quarter of the sum in a half-step, and in code 1 on the half of it at the end.
  const auto twist = [](double sum) { return Vector3{sum, 0, 0}; };
  const Vector3 chord = {1, 0, 0};
  EXPECT_EQ(deformation_frame(2, master, chord, {zero, twist(4e-6), zero, zero}).axes, master);
  EXPECT_NE(deformation_frame(2, master, chord, {zero, twist(4.01e-6), zero, zero}).axes, master);
  for (const int code : {1, 0, 4}) {
    EXPECT_EQ(end_frame(code, master, chord, {zero, twist(2e-6), zero, zero}), master);
    EXPECT_NE(end_frame(code, master, chord, {zero, twist(2.01e-6), zero, zero}), master);
  }
}

TEST(MovingFrame, HalfStepsLoseNoTwistAtTheEnd) {
  // A shaft that turns by 0.001 in ten thousand increments of 1.0E-7.
  const Vector3 chord = {1, 0, 0}, r = {1e-7, 0, 0};
  for (const int code : {2, 3}) {
    BeamAxes axes = master;
    for (int k = 0; k < 10000; ++k) axes = end_frame(code, axes, chord, {zero, r, zero, r});
    EXPECT_NEAR(axes[5], std::sin(0.001), 1e-14) << code;
    EXPECT_NEAR(axes[4], std::cos(0.001), 1e-12) << code;
  }
}

TEST(MovingFrame, AnIncrementThatMovesBothEndsAlikeChangesNoDigitOfTheFrame) {
  // A frame whose x differs in its last digits from what its chord gives anew.
  const LocalAxes local =
      local_axes(Vector3{0.1, 0.7, 0.3}, Vector3{1.4, 2.8, 1.9}, std::array<double, 6>{}, nullptr, axes_SACS, 0.2);
  BeamAxes frame;
  std::copy_n(local.axes, 9, frame.begin());
  frame[0] = std::nextafter(frame[0], 2.0);
  const Vector3 chord = {1.3, 2.1, 1.6};
  for (const Vector3& d : {zero, Vector3{0.3, -0.2, 7.0}}) {
    for (const int code : {1, 2, 3}) {
      const EndMotion motion{d, zero, d, zero};
      EXPECT_EQ(deformation_frame(code, frame, chord, motion).axes, frame);
      EXPECT_EQ(end_frame(code, frame, chord, motion), frame);
    }
  }
}

TEST(MovingFrame, TestingTheTwistItselfWouldNeverEnd) {
  // A constant twist of 0.01 stands in every frame that turns about the same axis: each pass would find it again.
  const Vector3 r = {0.02, 0, 0};
  BeamAxes axes = master;
  for (int pass = 1; pass <= 20; ++pass) {
    axes = turn_to_chord(axes, Vector3{1, 0, 0});
    const double found = 0.25 * (axes[0] * r[0] + axes[1] * r[1] + axes[2] * r[2]) * 2;
    EXPECT_NEAR(found, 0.01, 1e-15);
    EXPECT_GT(std::abs(found), twist_limit);
  }
  EXPECT_TRUE(deformation_frame(3, master, Vector3{1, 0, 0}, {zero, r, zero, r}).converged);
}

TEST(MovingFrame, RepeatedHalfStepsEndAtTheSecondPassWhateverTheRotation) {
  for (const double size : {1e-5, 1.0, 1e15}) {
    const Vector3 r = {size, 3 * size, -2 * size};
    const Vector3 dJ = {0.1, 0.7, 0.2};
    const HalfStep once = deformation_frame(2, master, Vector3{1, 0, 0}, {zero, r, dJ, r});
    const HalfStep repeated = deformation_frame(3, master, Vector3{1, 0, 0}, {zero, r, dJ, r});
    EXPECT_TRUE(repeated.converged);
    for (std::size_t i = 0; i < 9; ++i) EXPECT_NEAR(repeated.axes[i], once.axes[i], 1e-15);
  }
}

TEST(MovingFrame, ARotationThatIsNoNumberEndsThePasses) {
  const Vector3 r = {std::nan(""), 0, 0};
  EXPECT_TRUE(deformation_frame(3, master, Vector3{1, 0, 0}, {zero, r, zero, r}).converged);
}

}  // namespace
}  // namespace tidearc::test
