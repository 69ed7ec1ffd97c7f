// Fifth-order Stokes waves: coefficients, the two writings of the expansion, the iteration, how well the solved wave
// meets the conditions at its surface.
#include "sea/stokes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>

#include "regular_waves.h"
#include "sea/airy.h"

namespace tidearc {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double g = 9.81;
constexpr double tolerance = 1e-6;
constexpr int iterations = 20;

double elevation(const StokesWave& of, double theta) {
  double sum = 0.0;
  for (std::size_t n = 0; n < 5; ++n) sum += of.F[n] * std::cos(static_cast<double>(n + 1) * theta);
  return sum / of.k;
}

// Velocities at height s over the bed, and the stream function of the motion relative to the crest.
struct Field {
  double u, w, psi;
};
Field field(const StokesWave& of, double theta, double s) {
  Field at{0.0, 0.0, -of.C * s};
  for (std::size_t n = 0; n < 5; ++n) {
    const double m = static_cast<double>(n + 1);
    at.u += of.G[n] * std::cosh(m * of.k * s) * std::cos(m * theta);
    at.w += of.G[n] * std::sinh(m * of.k * s) * std::sin(m * theta);
    at.psi += of.G[n] / (m * of.k) * std::sinh(m * of.k * s) * std::cos(m * theta);
  }
  return at;
}

// Largest deviations at the surface, times k: of the stream function over C from its mean, of Bernoulli's sum from Q.
struct Residual {
  double kinematic = 0.0, dynamic = 0.0, mean = 0.0;
};
Residual residual(const StokesWave& of, double d) {
  constexpr int points = 64;
  std::array<double, points + 1> psi{};
  Residual result;
  double mean_psi = 0.0;
  for (int i = 0; i <= points; ++i) {
    const double theta = pi * i / points;
    const double eta = elevation(of, theta);
    const Field at = field(of, theta, d + eta);
    const double sum = eta + ((at.u - of.C) * (at.u - of.C) + at.w * at.w) / (2.0 * g);
    const double weight = (i == 0 || i == points ? 0.5 : 1.0) / points;
    psi[static_cast<std::size_t>(i)] = at.psi;
    mean_psi += weight * at.psi;
    result.mean += weight * of.k * (sum - of.Q);
    result.dynamic = std::max(result.dynamic, of.k * std::abs(sum - of.Q));
  }
  for (const double value : psi)
    result.kinematic = std::max(result.kinematic, of.k * std::abs(value - mean_psi) / of.C);
  result.mean = std::abs(result.mean);
  return result;
}

// The wave of lambda and kd in water of depth 1; `sign` of the term 2592 cosh^8 in C2.
StokesWave wave_of(double lambda, double kd, StokesForm form, double sign = -1.0) {
  StokesCoefficients of = stokes_coefficients(kd / (2.0 * pi), form);
  const double e = std::cosh(kd) * std::cosh(kd);
  of.C2 += (sign + 1.0) * 2592.0 * std::pow(e, 4) / (512.0 * std::pow(std::sinh(kd), 10) * (6.0 * e - 1.0));
  return stokes_wave(lambda, kd / (2.0 * pi), of, 1.0, g);
}

struct Order {
  double kinematic, dynamic, mean;
};
Order order_of(double kd, double lambda, StokesForm form, double sign = -1.0) {
  const Residual coarse = residual(wave_of(lambda, kd, form, sign), 1.0);
  const Residual fine = residual(wave_of(lambda / 2.0, kd, form, sign), 1.0);
  return {std::log2(coarse.kinematic / fine.kinematic), std::log2(coarse.dynamic / fine.dynamic),
          std::log2(coarse.mean / fine.mean)};
}

TEST(StokesResiduals, AllThreeFallWithTheSixthPowerOfLambda) {
  struct {
    double kd, lambda;
    StokesForm form;
  } const seas[] = {{0.8, 0.014, StokesForm::plain}, {1.2, 0.03, StokesForm::plain}, {2.0, 0.06, StokesForm::plain},
                    {3.5, 0.06, StokesForm::plain},  {6.0, 0.06, StokesForm::plain}, {8.0, 0.06, StokesForm::deep}};
  for (const auto& sea : seas) {
    const Order order = order_of(sea.kd, sea.lambda, sea.form);
    EXPECT_NEAR(order.kinematic, 6.0, 0.1) << sea.kd;
    EXPECT_NEAR(order.dynamic, 6.0, 0.1) << sea.kd;
    EXPECT_GT(order.mean, 5.6) << "Q; the factor of its sixth order changes sign between kd 2 and 6";
  }
}

TEST(StokesResiduals, ThePrintedSignOfTheTerm2592WouldCostAnOrderInTheDynamicCondition) {
  const Order printed = order_of(0.8, 0.014, StokesForm::plain, +1.0);
  EXPECT_NEAR(printed.dynamic, 5.0, 0.1);
  EXPECT_NEAR(printed.kinematic, 6.0, 0.1) << "the kinematic condition does not see C2";
  // Evaluated by an independent program: 6.0E-10 against 9.2E-12 at lambda 0.007.
  EXPECT_NEAR(residual(wave_of(0.007, 0.8, StokesForm::plain, +1.0), 1.0).dynamic, 6.0e-10, 0.3e-10);
  EXPECT_NEAR(residual(wave_of(0.007, 0.8, StokesForm::plain), 1.0).dynamic, 9.2e-12, 0.3e-12);
}

TEST(StokesResiduals, OfASolvedWaveAreSmall) {
  for (const auto& of : test::stokes_references) {
    const test::SeaCase& sea = of.sea;
    if (sea.g > 10.0) continue;
    const StokesWave solved = solve_stokes(sea.H, sea.T, sea.d, g, tolerance, iterations);
    const Residual left = residual(solved, sea.d);
    // The first terms left out are of order lambda^6, with factors that grow in shallow water.
    const double scale = std::pow(solved.lambda / std::pow(std::tanh(solved.k * sea.d), 3.0), 6.0);
    EXPECT_LT(left.kinematic, 20.0 * scale) << sea;
    EXPECT_LT(left.dynamic, 20.0 * scale) << sea;
  }
}

TEST(Stokes, AgreesWithAnIndependentProgramFromDeepToShallow) {
  for (const auto& of : test::stokes_references) {
    const test::SeaCase& sea = of.sea;
    const StokesWave solved = solve_stokes(sea.H, sea.T, sea.d, sea.g, tolerance, iterations);
    ASSERT_TRUE(solved.converged) << sea;
    const double crest = elevation(solved, 0.0);
    constexpr double digits = 1e-8;  // nine digits are known; Newton's last step is far below the tolerance
    EXPECT_NEAR(solved.L / of.L, 1.0, digits) << sea;
    EXPECT_NEAR(solved.C / of.C, 1.0, digits) << sea;
    EXPECT_NEAR(solved.lambda / of.lambda, 1.0, digits) << sea;
    EXPECT_NEAR(crest / of.crest, 1.0, digits) << sea;
    EXPECT_NEAR(elevation(solved, pi) / of.trough, 1.0, digits) << sea;
    EXPECT_NEAR(field(solved, 0.0, sea.d + crest).u / of.u, 1.0, digits) << sea;
    EXPECT_NEAR(field(solved, 0.0, sea.d).u / of.u_mean, 1.0, digits) << sea;
    EXPECT_NEAR(field(solved, 0.0, 0.0).u / of.u_bed, 1.0, digits) << sea;
    EXPECT_NEAR(solved.Q / of.Q, 1.0, digits) << sea;
    EXPECT_NEAR(crest - elevation(solved, pi), sea.H, 1e-6 * sea.H) << sea << ": the first equation is the height";
    EXPECT_NEAR(solved.C * sea.T, solved.L, 1e-6 * solved.L) << sea << ": the second is the celerity";
  }
}

// Computed by an independent program, g 9.81: L, C, lambda, crest, u at the crest, Q.
TEST(Stokes, SolvesTheSixStormWaves) {
  struct {
    double H, T, d, L, C, lambda, crest, u, Q;
  } const known[] = {{6, 8, 100, 103.292, 12.9115, 0.180013, 3.2844, 2.7998, 8.4968},
                     {12, 12, 50, 211.372, 17.6144, 0.174138, 6.8169, 4.2951, 15.8651},
                     {18, 14, 75, 294.789, 21.0563, 0.187138, 10.2270, 5.4422, 22.6638},
                     {24, 15.5, 120, 377.433, 24.3505, 0.195674, 13.4447, 6.1908, 30.2633},
                     {8, 9, 25, 117.480, 13.0533, 0.204895, 4.7425, 4.2135, 8.7369},
                     {5, 10, 12, 105.987, 10.5987, 0.130432, 3.3827, 3.7125, 5.7968}};
  for (const auto& of : known) {
    const StokesWave solved = solve_stokes(of.H, of.T, of.d, g, tolerance, iterations);
    const double crest = elevation(solved, 0.0);
    EXPECT_NEAR(solved.L, of.L, 0.001);
    EXPECT_NEAR(solved.C, of.C, 0.0001);
    EXPECT_NEAR(solved.lambda, of.lambda, 1e-6);
    EXPECT_NEAR(crest, of.crest, 0.0001);
    EXPECT_NEAR(field(solved, 0.0, of.d + crest).u, of.u, 0.0001);
    EXPECT_NEAR(solved.Q, of.Q, 0.0001);
    EXPECT_GT(solved.Q, solved.C * solved.C / (2.0 * g)) << "the series is negative";
  }
  const StokesWave feet = solve_stokes(40.0, 12.0, 160.0, 32.2, tolerance, iterations);
  const double crest = elevation(feet, 0.0);
  EXPECT_NEAR(feet.L, 690.894, 0.001);
  EXPECT_NEAR(crest, 22.845, 0.001);
  EXPECT_NEAR(field(feet, 0.0, 160.0 + crest).u, 14.517, 0.001);
}

TEST(Stokes, WalksThroughTheKnownIterates) {
  const StokesWave first = solve_stokes(12.0, 12.0, 50.0, g, tolerance, 1);
  const StokesWave second = solve_stokes(12.0, 12.0, 50.0, g, tolerance, 2);
  const StokesWave third = solve_stokes(12.0, 12.0, 50.0, g, tolerance, 20);
  EXPECT_NEAR(first.lambda, 0.174164, 1e-6);
  EXPECT_NEAR(first.b, 0.236536, 1e-6);
  EXPECT_FALSE(first.converged);
  EXPECT_NEAR(second.lambda, 0.174138, 1e-6);
  EXPECT_NEAR(second.b, 0.236549, 1e-6);
  EXPECT_FALSE(second.converged);
  EXPECT_EQ(third.passes, 3);
  EXPECT_TRUE(third.converged);
  EXPECT_NEAR(third.G[0], 1.417165, 1e-6);
  EXPECT_NEAR(third.G[1], 0.0230107, 1e-7);
  EXPECT_NEAR(third.G[2], -1.02830e-4, 1e-9);
  EXPECT_NEAR(third.G[3], -3.4031e-6, 1e-10);
  EXPECT_NEAR(third.G[4], 1.0909e-7, 1e-11);
}

// A Jacobian that is not the derivative would converge linearly.
TEST(Stokes, NewtonsErrorsAreSquared) {
  for (const test::SeaCase& sea : {test::shallow, test::extreme, test::steep_deep}) {
    const StokesWave end = solve_stokes(sea.H, sea.T, sea.d, sea.g, 1e-14, 20);
    const auto error = [&](int passes) {
      const StokesWave at = solve_stokes(sea.H, sea.T, sea.d, sea.g, 0.0, passes);
      return std::hypot(at.lambda / end.lambda - 1.0, at.b / end.b - 1.0);
    };
    EXPECT_LT(error(2), 30.0 * error(1) * error(1)) << sea;
    EXPECT_LT(error(3), 30.0 * error(2) * error(2) + 1e-14) << sea;
  }
}

TEST(Stokes, InWaterWithoutBottomTheLeadingCoefficientsAreThePublishedLimits) {
  // kd of 101, where cosh counts as infinite: Fenton (1985), table 1, for kd without limit.
  const StokesCoefficients of = stokes_coefficients(101.0 / (2.0 * pi), StokesForm::deep);
  EXPECT_DOUBLE_EQ(of.B22, 1.0 / 2.0);
  EXPECT_DOUBLE_EQ(of.B33, 3.0 / 8.0);
  EXPECT_DOUBLE_EQ(of.B44, 1.0 / 3.0);
  EXPECT_DOUBLE_EQ(of.B55, 125.0 / 384.0);
  EXPECT_DOUBLE_EQ(of.C1, 1.0);
  EXPECT_EQ(of.tangent, 1.0);
  EXPECT_EQ(of.A11, 0.0) << "1 / sinh kd";
  EXPECT_NEAR(stokes_coefficients(99.0 / (2.0 * pi), StokesForm::deep).B44, 1.0 / 3.0, 1e-15);
}

TEST(Stokes, BothFormsAreOneExpansion) {
  for (const double b : {0.8, 1.1, 1.4}) {
    const StokesWave plain = stokes_wave(0.2, b, stokes_coefficients(b, StokesForm::plain), 100.0, g);
    const StokesWave deep = stokes_wave(0.2, b, stokes_coefficients(b, StokesForm::deep), 100.0, g);
    for (std::size_t n = 0; n < 5; ++n) {
      EXPECT_NEAR(plain.F[n], deep.F[n], 1e-15) << n;
      EXPECT_NEAR(plain.G[n] / deep.G[n], 1.0, 3e-15) << n;
    }
    EXPECT_NEAR(plain.C, deep.C, 1e-14);
    EXPECT_NEAR(plain.Q, deep.Q, 1e-13);
  }
}

TEST(Stokes, TheSeamLiesAtTheSinglePrecisionValueOf11) {
  const auto at = [](double ratio) {
    return solve_stokes(3.0, 5.0, ratio * deep_water_length(5.0, g), g, 1e-12, iterations);
  };
  EXPECT_EQ(at(1.10000001).form, StokesForm::plain) << "above 1.1, yet below 1.1 in single precision";
  EXPECT_EQ(at(1.10000004).form, StokesForm::deep);
  EXPECT_NEAR(at(1.10000001).L, at(1.10000004).L, 1e-9);
}

// Computed by an independent program: H 3, T 5, d 3.1 times L0.
TEST(Stokes, InVeryDeepWaterTheWaveIsThatWithoutBottom) {
  const StokesWave solved = solve_stokes(3.0, 5.0, 121.0015, g, tolerance, iterations);
  EXPECT_EQ(solved.form, StokesForm::deep);
  EXPECT_GT(solved.depth_ratio, largest_depth_ratio);
  EXPECT_TRUE(solved.converged);
  const double crest = elevation(solved, 0.0);
  EXPECT_NEAR(solved.L, 41.1168, 0.0001);
  EXPECT_NEAR(solved.C, 8.22336, 0.00001);
  EXPECT_NEAR(crest, 1.68158, 0.00001);
  EXPECT_NEAR(field(solved, 0.0, 121.0015 + crest).u, 2.34095, 0.00001);
  // At kd beyond 100 and beyond the range of SINCSH, which would turn k around.
  for (const double d : {700.0, 3000.0}) {
    const StokesWave deeper = solve_stokes(3.0, 5.0, d, g, tolerance, iterations);
    EXPECT_TRUE(deeper.converged) << d;
    EXPECT_NEAR(deeper.L, solved.L, 1e-6) << d;
    EXPECT_NEAR(elevation(deeper, 0.0), crest, 1e-7) << d;
  }
}

TEST(Stokes, OfAVeryLongWaveTheLastIterateIsLeft) {
  const StokesWave solved = solve_stokes(0.5, 15.0, 5.0, g, tolerance, iterations);
  EXPECT_FALSE(solved.converged);
  EXPECT_EQ(solved.passes, 20);
  EXPECT_NEAR(solved.L, -104.9, 0.05) << "out of the theory's range: a negative length";
  const StokesWave start = solve_stokes(12.0, 12.0, 50.0, g, tolerance, -1);
  EXPECT_EQ(start.passes, 0);
  EXPECT_FALSE(start.converged);
  EXPECT_NEAR(start.lambda, pi * 12.0 / (g * 144.0 / (2.0 * pi)), 1e-12);
}

}  // namespace
}  // namespace tidearc
