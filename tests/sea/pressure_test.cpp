// Pressures under a wave: Bernoulli and the linear form, the surface as a line of no pressure.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "test_sea.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

// H 12, T 12, d 50 at z -5, 1 s before the crest: kPa.

TEST(Pressure, OfAnAiryWave) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  set_airy_number(0.03067471);
  const WavePressure is = pressure_at(0, -5, -1);
  EXPECT_NEAR(is.dynamic, 45.535, 1.0e-3);
  EXPECT_NEAR(is.total - is.dynamic, 50.276, 1.0e-3);
}

TEST(Pressure, OfAStokesWave) {
  const Sea sea(wave_stokes, 12.0, 12.0, 50.0);
  const WavePressure is = pressure_at(0, -5, -1);
  EXPECT_NEAR(is.dynamic, 42.733, 1.0e-3);
  EXPECT_NEAR(is.total - is.dynamic, 50.276, 1.0e-3);
}

TEST(Pressure, OfAStreamFunctionWave) {
  const Sea sea(wave_stream, 12.0, 12.0, 50.0);
  const WavePressure is = pressure_at(0, -5, -1);
  EXPECT_NEAR(is.dynamic, 42.72, 0.01);
  EXPECT_NEAR(is.total - is.dynamic, 50.276, 1.0e-3);
}

TEST(Pressure, IsZeroAboveTheSurfaceAndNotInIt) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream, wave_current_only}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    const auto pressure = wave_family(wave.IWTY).pressure;
    EXPECT_EQ(pressure(-3.0, place(0, -2.999), 0.4).total, 0.0);
    EXPECT_EQ(pressure(-3.0, place(0, -2.999), 0.4).dynamic, 0.0);
    EXPECT_GT(pressure(-3.0, place(0, -3.0), 0.4).total, 0.0);
  }
}

// rho g (H/2) cosh(k s)/cosh(k d), and its stretched form: cosh(k d)/cosh(k d) in the surface.
TEST(Pressure, AiryIsLinearAndStretches) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  const double full = 1.025 * 9.81 * 6.0;
  EXPECT_NEAR(pressure_at(0, -20, 0).dynamic, full * std::cosh(30 * wave.k) / std::cosh(50 * wave.k), 1.0e-11);
  EXPECT_NEAR(pressure_at(0, 6, 0).dynamic, full * std::cosh(56 * wave.k) / std::cosh(50 * wave.k), 1.0e-11);
  wave.ISTRCH = 1;
  EXPECT_NEAR(pressure_at(0, 6, 0).dynamic, full, 1.0e-11);
  EXPECT_NEAR(pressure_at(0, 6, 0).total, 0.0, 1.0e-11);
  EXPECT_NEAR(pressure_at(0, -20, 0).dynamic, full * std::cosh(30 * 50.0 / 56.0 * wave.k) / std::cosh(50 * wave.k),
              1.0e-11);
}

TEST(Pressure, AiryInVeryDeepWaterTakesExponentials) {
  const Sea sea(wave_airy, 1.0, 2.8298, 200.0);
  ASSERT_GT(wave.k * wave.d, 100.0);
  EXPECT_NEAR(pressure_at(0, -3, 0).dynamic, 1.025 * 9.81 * 0.5 * std::exp(-3.0 * wave.k), 1.0e-12);
}

TEST(Pressure, OfTheTheoriesWithBernoulliGrowsWithTheRamp) {
  for (const WaveType type : {wave_stokes, wave_stream}) {
    const Sea sea(type, 12.0, 12.0, 50.0);
    const WavePressure full = pressure_at(0, -5, 3.0);
    wave.ramp_time = 12.0;
    EXPECT_NEAR(pressure_at(0, -5, 3.0).dynamic, 0.25 * full.dynamic, 1.0e-12);
    EXPECT_NEAR(pressure_at(0, -5, 3.0).total, full.total - 0.75 * full.dynamic, 1.0e-12);
  }
}

TEST(Pressure, OfAnAiryWaveKnowsNoRamp) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  const double full = pressure_at(0, -5, 3.0).dynamic;
  wave.ramp_time = 12.0;
  EXPECT_EQ(pressure_at(0, -5, 3.0).dynamic, full);
}

TEST(Pressure, OfACurrentAloneIsThatOfWaterAtRest) {
  Sea sea;
  wave.IWTY = wave_current_only;
  wave.d = 50.0;
  set_current({{0.0, 1.0}, {50.0, 0.0}});
  EXPECT_NEAR(pressure_at(0, -5, 3.0).total, 1.025 * 9.81 * 5.0, 1.0e-12);
  EXPECT_EQ(pressure_at(0, -5, 3.0).dynamic, 0.0);
  EXPECT_EQ(eta_at(12.0, 3.0), 0.0);
}

TEST(RampFactor, GrowsToOneOverTheRampTime) {
  Sea sea;
  EXPECT_EQ(ramp_factor(0.0), 1.0);
  wave.ramp_time = 8.0;
  EXPECT_EQ(ramp_factor(0.0), 0.0);
  EXPECT_EQ(ramp_factor(2.0), 0.25);
  EXPECT_EQ(ramp_factor(8.0), 1.0);
  EXPECT_EQ(ramp_factor(9.0), 1.0);
  wave.ramp_time = -1.0;
  EXPECT_EQ(ramp_factor(2.0), 1.0);
}

/// Largest pressure in the surface over half a wave, as a height of water, with the same height of the given wave.
double surface_residual() {
  double largest = 0.0;
  for (int i = 0; i <= 36; ++i) {
    const double x = -wave.L * i / 72.0;
    largest = std::max(largest, std::abs(pressure_at(x, eta_at(x, 0.0), 0.0).total) / (wave.rho * wave.g));
  }
  return largest;
}

// The least squares leave an error in the head of 1/10000 of the height at most in the mean; its largest is below three
// times that. Between the points of the table the chord of the surface lies off it by up to 0.011.
TEST(Pressure, InTheSurfaceOfAStreamFunctionWaveIsZeroWithinItsResidual) {
  struct Case {
    double H, T, d;
  };
  for (const auto& [H, T, d] :
       {Case{6, 8, 100}, Case{12, 12, 50}, Case{18, 14, 75}, Case{24, 15.5, 120}, Case{8, 9, 25}}) {
    const Sea sea(wave_stream, H, T, d);
    EXPECT_LT(surface_residual(), 3.0e-4 * H) << H;
  }
}

// The dynamic surface condition of the fifth-order series is left with terms of the sixth order.
TEST(Pressure, InTheSurfaceOfAStokesWaveFallsWithTheSixthPowerOfTheSteepness) {
  double before = 0.0, lambda_before = 0.0;
  for (const double H : {16.0, 8.0, 4.0}) {
    const Sea sea(wave_stokes, H, 12.0, 50.0);
    const double residual = surface_residual(), lambda = wave.F[0];
    if (H == 16.0) {
      EXPECT_LT(residual, 0.05);
    } else {
      EXPECT_NEAR(std::log(before / residual) / std::log(lambda_before / lambda), 6.0, 0.35) << H;
    }
    before = residual;
    lambda_before = lambda;
  }
}

// The kinematic condition as well: w = d eta/dt + u d eta/dx.
TEST(Stokes, WaterLeavesTheSurfaceAtTheSixthOrderOnly) {
  double before = 0.0, lambda_before = 0.0;
  for (const double H : {8.0, 4.0, 2.0}) {
    const Sea sea(wave_stokes, H, 12.0, 50.0);
    double residual = 0.0;
    for (int i = 1; i < 36; ++i) {
      const double x = -wave.L * i / 72.0, e = 1.0e-3;
      const double slope = (eta_at(x + e, 0.0) - eta_at(x - e, 0.0)) / (2 * e);
      const Seen is = motion_at(x, eta_at(x, 0.0), 0.0);
      residual = std::max(residual, std::abs(is.w - (is.u - wave.C) * slope));
    }
    const double lambda = wave.F[0];
    if (H != 8.0) {
      EXPECT_NEAR(std::log(before / residual) / std::log(lambda_before / lambda), 6.0, 0.35) << H;
    }
    before = residual;
    lambda_before = lambda;
  }
}

// The celerity of the Stokes wave is relative to the water: in the frame of the crest the water has u - C, whatever the
// current. With the current added, the surface would have pressures of metres of water.
TEST(Pressure, OfAStokesWaveTakesNoCurrent) {
  const Sea sea(wave_stokes, 18.0, 14.0, 75.0);
  set_current({{0.0, 1.5}, {75.0, 1.5}});
  wave.period_code = 10;
  wave.period_tolerance = 1.0E-4;
  solve_period_with_current(1.5, 1.0E-10, 50);
  prepare_wave_constants();
  EXPECT_NEAR(wave.C, 21.7583, 1.0e-4);
  const double L = 2 * pi / wave.k;
  const double told[3] = {0.09, 0.02, 0.10}, with_current[3] = {24.0, 33.0, 37.0};
  for (int i = 0; i < 3; ++i) {
    const double x = -0.25 * i * L, eta = eta_at(x, 0.0);
    EXPECT_NEAR(std::abs(pressure_at(x, eta, 0.0).total), told[i], 0.006) << i;
    const Seen is = motion_at(x, eta, 0.0, {.wave_only = true});
    const double u = is.u - wave.C + 1.5;
    const double other = wave.rho * (wave.g * wave.Q - 0.5 * (u * u + is.w * is.w) - wave.g * eta);
    EXPECT_NEAR(other, with_current[i], 0.6) << i;
  }
}

// That of the stream function is over the ground.
TEST(Pressure, OfAStreamFunctionWaveTakesTheCurrent) {
  const Sea sea(wave_stream, 18.0, 14.0, 75.0);
  wave.current_code = 1;
  wave.U = 1.5;
  set_current({{0.0, 1.5}, {75.0, 1.5}});
  Sea::solve();
  EXPECT_NEAR(wave.C, 23.2639, 5.0e-3);
  const double left_over = wave.rho * wave.g * wave.H / 10000.0;  // what the least squares may leave: 0.018
  for (int i = 0; i < 3; ++i) {
    const double x = -0.25 * i * wave.L;
    EXPECT_NEAR(pressure_at(x, eta_at(x, 0.0), 0.0).total, 0.0, left_over) << i;
  }
}

}  // namespace
}  // namespace tidearc::test
