// Linear wave lengths: the fixed-point iteration, where it ends and where it does not; Newton's iteration; sinh and
// cosh.
#include "sea/airy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "regular_waves.h"
#include "sea/hyperbolic.h"

namespace tidearc {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double tolerance = 1e-6;
constexpr int iterations = 20;
constexpr double nine_digits = 5e-9;  // of a number that is printed with them

// A wave of T 10 in the depth that gives it this d/L.
struct Known {
  double d, L;
};
Known of_relative_depth(double b) {
  const double L = 9.81 * 100.0 / (2.0 * pi) * std::tanh(2.0 * pi * b);
  return {b * L, L};
}

TEST(Sincsh, GivesBothFunctionsWithinTheRange) {
  EXPECT_NEAR(SINCSH(1.0).sinh, 1.1752011936438014, 4e-16);  // published values
  EXPECT_NEAR(SINCSH(1.0).cosh, 1.5430806348152437, 4e-16);
  EXPECT_NEAR(SINCSH(-1.0).sinh, -1.1752011936438014, 4e-16);
  EXPECT_EQ(SINCSH(0.0).sinh, 0.0);
  EXPECT_EQ(SINCSH(0.0).cosh, 1.0);
  EXPECT_NEAR(SINCSH(400.0).sinh / 2.610734844882072e173, 1.0, 1e-10) << "400 itself is inside";
  EXPECT_NEAR(SINCSH(-400.0).sinh / -2.610734844882072e173, 1.0, 1e-10);
}

TEST(Sincsh, BeyondTheRangeSinhIsNegativeOnBothSides) {
  for (const double x : {400.0001, 1e6, -400.0001, -1e6}) {
    EXPECT_EQ(SINCSH(x).sinh, -9.99e199) << x;
    EXPECT_EQ(SINCSH(x).cosh, 9.99e199) << x;
  }
}

TEST(Airy, SolvesTheDispersionRelationFromDeepToShallow) {
  for (const auto& [sea, L, C, kd, crest, u, u_bed, a] : test::linear_references) {
    const AiryWave solved = solve_airy(sea.T, sea.d, sea.g, 1e-13, 1000);
    EXPECT_TRUE(solved.converged) << sea;
    EXPECT_NEAR(solved.L / L, 1.0, nine_digits) << sea;
    EXPECT_NEAR(solved.C / C, 1.0, nine_digits) << sea;
    EXPECT_NEAR(solved.k * sea.d / kd, 1.0, nine_digits) << sea;
  }
}

// Lengths and passes from the same fixed-point walk done by hand in another language, 20 passes, 1E-6, g 9.81.
TEST(Airy, EndsAfterTheKnownNumberOfPasses) {
  struct {
    double T, d, L;
    int passes;
  } const known[] = {
      {8, 100, 99.923, 2}, {12, 50, 204.833, 10}, {14, 75, 284.510, 9}, {15.5, 120, 363.451, 6}, {9, 25, 112.026, 11}};
  for (const auto& of : known) {
    const AiryWave solved = solve_airy(of.T, of.d, 9.81, tolerance, iterations);
    EXPECT_TRUE(solved.converged);
    EXPECT_EQ(solved.passes, of.passes) << of.T;
    EXPECT_NEAR(solved.L, of.L, 0.001) << of.T;
  }
  const AiryWave feet = solve_airy(12.0, 160.0, 32.2, tolerance, iterations);
  EXPECT_EQ(feet.passes, 10);
  EXPECT_NEAR(feet.L, 668.486, 0.001);
}

TEST(Airy, OnALongWaveTheLastIterateIsLeft) {
  const AiryWave solved = solve_airy(10.0, 12.0, 9.81, tolerance, iterations);
  EXPECT_FALSE(solved.converged);
  EXPECT_EQ(solved.passes, 20);
  EXPECT_NEAR(solved.L, 99.764, 0.001);
  EXPECT_NEAR(solved.k, 2.0 * pi / solved.L, 1e-15);
  EXPECT_DOUBLE_EQ(solved.C, solved.L / 10.0);
  const AiryWave longer = solve_airy(10.0, 12.0, 9.81, tolerance, 200);
  EXPECT_TRUE(longer.converged) << "the iteration field is the remedy";
  EXPECT_NEAR(longer.L, 99.727, 0.001);
}

// The derivative of r / tanh(2 pi b) at its fixed point is -4 pi b / sinh(4 pi b).
TEST(Airy, TheErrorShrinksByTheSlopeOfTheIterationAndChangesItsSign) {
  for (const double b : {0.05, 0.10, 0.16, 0.20}) {
    const Known of = of_relative_depth(b);
    const auto error = [&](int passes) { return of.d / solve_airy(10.0, of.d, 9.81, 0.0, passes).L - b; };
    const double slope = -4.0 * pi * b / std::sinh(4.0 * pi * b);
    const int passes =
        static_cast<int>(std::log(1e-5) / std::log(-slope));  // an error small against b, far from rounding
    EXPECT_NEAR(error(passes + 1) / error(passes), slope, 0.001 * std::abs(slope)) << b;
  }
}

TEST(Airy, WithTheDefaultsTheBorderLiesNearARelativeDepthOf016) {
  const auto converges = [](double b) {
    return solve_airy(10.0, of_relative_depth(b).d, 9.81, tolerance, iterations).converged;
  };
  EXPECT_TRUE(converges(0.17));
  EXPECT_FALSE(converges(0.15));
  EXPECT_TRUE(solve_airy(10.0, of_relative_depth(0.05).d, 9.81, tolerance, 200).converged);
}

TEST(Airy, BeyondThatBorderTheLengthIsOffByTheseShares) {
  struct {
    double b, share, within;
  } const known[] = {{0.13, 1e-4, 0.5e-4}, {0.10, 0.004, 0.0006}, {0.08, 0.026, 0.001}, {0.05, 0.26, 0.01}};
  for (const auto& of : known) {
    const Known exact = of_relative_depth(of.b);
    const double L = solve_airy(10.0, exact.d, 9.81, tolerance, iterations).L;
    EXPECT_NEAR(std::abs(L / exact.L - 1.0), of.share, of.within) << of.b;
  }
}

TEST(Airy, InVeryDeepWaterTheTangentIsOne) {
  const double L0 = deep_water_length(8.0, 9.81);
  EXPECT_NEAR(L0, 9.81 * 64.0 / (2.0 * pi), 1e-12);
  // kd of 99, 101 and 500; the last lies beyond the range of SINCSH, which would turn the wave around.
  for (const double kd : {99.0, 101.0, 500.0}) {
    const AiryWave solved = solve_airy(8.0, kd / (2.0 * pi) * L0, 9.81, tolerance, iterations);
    EXPECT_TRUE(solved.converged) << kd;
    EXPECT_NEAR(solved.L / L0, 1.0, 1e-15) << kd;
  }
}

TEST(Airy, WithoutAPassTheWaveIsThatOfDeepWater) {
  const AiryWave solved = solve_airy(10.0, 12.0, 9.81, tolerance, -1);
  EXPECT_FALSE(solved.converged);
  EXPECT_EQ(solved.passes, 0);
  EXPECT_NEAR(solved.L, deep_water_length(10.0, 9.81), 1e-12);
}

TEST(LinearLength, NewtonSolvesTheDispersionRelationFromDeepToShallow) {
  for (const auto& [sea, L, C, kd, crest, u, u_bed, a] : test::linear_references) {
    const LinearLength solved = linear_length(sea.T, sea.d, sea.g, 1e-12, iterations);
    const bool deep = sea.d >= deep_water_length(sea.T, sea.g);
    EXPECT_NEAR(solved.L / (deep ? deep_water_length(sea.T, sea.g) : L), 1.0, nine_digits) << sea;
    EXPECT_EQ(solved.steps == 0, deep) << sea;
  }
}

TEST(LinearLength, InWaterDeeperThanTheDeepWaterLengthNoStepIsDone) {
  const double L0 = deep_water_length(8.0, 9.81);
  const LinearLength deeper = linear_length(8.0, 1.001 * L0, 9.81, tolerance, iterations);
  EXPECT_EQ(deeper.steps, 0);
  EXPECT_NEAR(deeper.L, L0, 1e-10);
  const LinearLength less = linear_length(8.0, 0.999 * L0, 9.81, tolerance, iterations);
  EXPECT_GE(less.steps, 1);
  EXPECT_LT(less.L, L0) << "by two times exp(-4 pi)";
  EXPECT_NEAR(less.L / L0, std::tanh(2.0 * pi * 0.999), 1e-9);
}

TEST(LinearLength, StopsAtTheToleranceOrAtTheLimit) {
  EXPECT_EQ(linear_length(12.0, 50.0, 9.81, tolerance, 1).steps, 1);
  EXPECT_EQ(linear_length(12.0, 50.0, 9.81, 1e9, 20).steps, 1) << "the first step meets a tolerance without limit";
  EXPECT_EQ(linear_length(12.0, 50.0, 9.81, 0.0, 3).steps, 3);
  EXPECT_EQ(linear_length(12.0, 50.0, 9.81, tolerance, -1).steps, 0);
  EXPECT_EQ(linear_length(12.0, 50.0, 9.81, tolerance, 20).steps, 3) << "quadratic convergence from sqrt(x0)";
}

}  // namespace
}  // namespace tidearc
