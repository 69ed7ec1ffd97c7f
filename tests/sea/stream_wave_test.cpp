// Stream function waves as they are solved: against the exact steady wave, on a current, order by order, and the signs
// of the series.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "regular_waves.h"
#include "scratch.h"
#include "sea/stream_function.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double tolerance = 1e-6;
constexpr int iterations = 20;

struct Iteration {
  int order = 9;
  int coefficient_iterations = 15;
  int points = 37;
  int force_all = 0;
};

// Solves into `wave` as the wave section does; the report goes to a scratch folder.
void solve(const test::SeaCase& sea, double U = 0.0, const Iteration& with = {}) {
  const test::Scratch scratch;
  wave = {};
  wave.IWTY = wave_stream;
  wave.H = sea.H;
  wave.T_structure = sea.T;
  wave.d = sea.d;
  wave.g = sea.g;
  wave.U = U;
  wave.NPTS = with.points;
  SFSOLVE(tolerance, iterations, with.coefficient_iterations, with.order, with.force_all);
}

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// Stream function at height s over the bed, with the sign of its series, from the unknowns alone.
double stream(double theta, double s, double sign = 1.0) {
  double psi = (wave.X[0] / wave.T_structure - wave.U) * (s - wave.d);
  for (int n = 1; n < wave.NN; ++n) {
    psi += sign * wave.X[at(n)] * std::sinh(n * wave.k * s) * std::cos(n * theta);
  }
  return psi;
}
// Wave part of the horizontal velocity, from the same series.
double velocity(double theta, double s) {
  double u = 0.0;
  for (int n = 1; n < wave.NN; ++n) u -= wave.X[at(n)] * n * wave.k * std::cosh(n * wave.k * s) * std::cos(n * theta);
  return u;
}
double crest_velocity() { return velocity(0.0, wave.d + wave.eta[0]); }
double eta_at(int point) { return wave.eta[at(point)]; }

TEST(StreamFunction, AgreesWithTheExactSteadyWaveFromDeepToShallow) {
  for (const auto& of : test::steady_references) {
    const test::SeaCase& sea = of.sea;
    solve(sea);
    constexpr double end = 1.5e-4;  // the iteration ends with errors of 1E-4 of the height
    EXPECT_NEAR(wave.L / of.L, 1.0, 2e-5) << sea;
    EXPECT_NEAR(wave.C / of.C, 1.0, 2e-5) << sea;
    EXPECT_NEAR(wave.eta[0] / of.crest, 1.0, end) << sea;
    EXPECT_NEAR(eta_at(36) / of.trough, 1.0, end) << sea;
    EXPECT_NEAR(crest_velocity() / of.u, 1.0, end) << sea;
    EXPECT_NEAR(velocity(0.0, sea.d) / of.u_mean, 1.0, end) << sea;
    EXPECT_NEAR(velocity(0.0, 0.0) / of.u_bed, 1.0, 2.0 * end) << sea;
    EXPECT_NEAR(velocity(pi, sea.d + eta_at(36)) / of.u_trough, 1.0, end) << sea;
    EXPECT_NEAR(wave.Q / of.Q, 1.0, end) << sea;
    EXPECT_NEAR(wave.k, 2.0 * pi / of.L, 2e-5 * wave.k) << sea;
  }
}

// An independent Fourier solution of 20 terms gives these within 1E-4; g 9.81: L, crest, u at the crest, Q.
TEST(StreamFunction, SolvesTheSixStormWaves) {
  struct {
    double H, T, d, L, crest, u, Q;
  } const known[] = {
      {6, 8, 100, 103.305, 3.2867, 2.8005, 8.4990},    {12, 12, 50, 211.428, 6.8274, 4.2969, 15.8732},
      {18, 14, 75, 294.887, 10.2459, 5.4451, 22.6787}, {24, 15.5, 120, 377.542, 13.4653, 6.1940, 30.2807},
      {8, 9, 25, 117.592, 4.7657, 4.2208, 8.7532},     {5, 10, 12, 106.161, 3.4153, 3.7566, 5.8135}};
  for (const auto& of : known) {
    solve({"", of.H, of.T, of.d, 9.81});
    EXPECT_NEAR(wave.L / of.L, 1.0, 2e-4) << of.H;
    EXPECT_NEAR(wave.eta[0] / of.crest, 1.0, 2e-4) << of.H;
    EXPECT_NEAR(crest_velocity() / of.u, 1.0, 2e-4) << of.H;
    EXPECT_NEAR(wave.Q / of.Q, 1.0, 2e-4) << of.H;
  }
  solve({"feet", 40.0, 12.0, 160.0, 32.2});
  EXPECT_NEAR(wave.L / 691.11, 1.0, 2e-4);
  EXPECT_NEAR(wave.eta[0] / 22.886, 1.0, 2e-4);
  EXPECT_NEAR(crest_velocity() / 14.524, 1.0, 2e-4);
  EXPECT_NEAR(wave.Q / 51.688, 1.0, 2e-4);
}

TEST(StreamFunction, AUniformCurrentIsPartOfTheSolution) {
  for (const auto& of : test::current_references) {
    solve({"storm", 15.0, 14.0, 100.0, 9.80665}, of.U);
    EXPECT_NEAR(wave.L / of.L, 1.0, 2e-5) << of.U;
    EXPECT_NEAR(wave.C / of.C, 1.0, 2e-5) << "the speed of the crest over the ground";
    EXPECT_NEAR(wave.eta[0] / of.crest, 1.0, 1e-4) << of.U;
    EXPECT_NEAR(eta_at(36) / of.trough, 1.0, 1e-4) << of.U;
    EXPECT_NEAR((of.U + crest_velocity()) / of.u, 1.0, 1e-4) << of.U;
    EXPECT_NEAR((of.U + velocity(0.0, 0.0)) / of.u_bed, 1.0, 1e-4) << of.U;
    EXPECT_NEAR(wave.Q / of.Q, 1.0, 1e-4) << of.U;
    EXPECT_EQ(wave.T_water, 14.0) << "the period is that of the fixed observer";
  }
}

// From the same independent solution, g 9.81, with the wave and against it; u is the wave's part.
TEST(StreamFunction, FollowsAndOpposesACurrent) {
  const test::SeaCase sea{"", 18.0, 14.0, 75.0, 9.81};
  solve(sea, 1.5);
  EXPECT_NEAR(wave.L / 325.695, 1.0, 2e-4);
  EXPECT_NEAR(wave.C / 23.2639, 1.0, 2e-4);
  EXPECT_NEAR(wave.eta[0] / 10.243, 1.0, 2e-4);
  EXPECT_NEAR(crest_velocity() / 5.2022, 1.0, 2e-4);
  EXPECT_NEAR(wave.Q / 24.223, 1.0, 2e-4);
  solve(sea, -1.0);
  EXPECT_NEAR(wave.L / 273.140, 1.0, 2e-4);
  EXPECT_NEAR(wave.eta[0] / 10.267, 1.0, 2e-4);
  EXPECT_NEAR(crest_velocity() / 5.6676, 1.0, 2e-4);
}

TEST(StreamFunction, LeavesItsUnknownsAndItsSurfaceTable) {
  solve({"", 12.0, 12.0, 50.0, 9.81});
  EXPECT_EQ(wave.NN, 10);
  EXPECT_EQ(wave.NPTS, 37);
  const double known[] = {211.428, -47.663, -0.38988, 9.505e-4, 1.935e-5};
  for (int l = 0; l < 5; ++l) EXPECT_NEAR(wave.X[at(l)] / known[l], 1.0, l == 4 ? 2e-3 : 1e-3) << l;
  EXPECT_NEAR(wave.X[10] / -9.9266, 1.0, 2e-4) << "the stream function on the surface stands last";
  EXPECT_EQ(wave.X[11], 0.0);
  const double eta[] = {6.827, 4.008, -0.769, -4.066, -5.172};
  for (int i = 0; i < 5; ++i) {
    EXPECT_NEAR(eta_at(9 * i), eta[i], 0.0015) << i;
    EXPECT_NEAR(wave.theta[at(9 * i)], i * pi / 4.0, 1e-15) << i;
  }
  EXPECT_NEAR(wave.L, wave.X[0], 1e-12 * wave.L);
  EXPECT_NEAR(wave.C * 12.0, wave.L, 1e-12 * wave.L);
}

TEST(StreamFunction, WithTheSeriesAddedTheSurfaceIsAStreamline) {
  solve({"", 12.0, 12.0, 50.0, 9.81}, 0.7, {.coefficient_iterations = 60, .force_all = 1});
  for (const double sign : {1.0, -1.0}) {
    double off = 0.0;
    for (int i = 0; i < wave.NPTS; ++i) {
      off = std::max(off, std::abs(stream(wave.theta[at(i)], wave.d + eta_at(i), sign) - wave.X[at(wave.NN)]));
    }
    if (sign > 0.0) {
      EXPECT_LT(off, 1e-9) << "psi = (L/T - U) z + series is the value X(NN) all along the surface";
    } else {
      EXPECT_GT(off, 50.0) << "with the series subtracted nothing of that is left";
    }
  }
}

TEST(StreamFunction, WithTheSeriesAddedTheWaterUnderTheCrestRunsWithTheWave) {
  solve({"", 12.0, 12.0, 50.0, 9.81});
  const auto relative = [](double theta, double s) {  // -d psi / dz by differences
    return -(stream(theta, s + 1e-4) - stream(theta, s - 1e-4)) / 2e-4;
  };
  for (const double theta : {0.0, 1.0, 2.5, pi}) {
    EXPECT_NEAR(relative(theta, 45.0) + wave.C - wave.U, velocity(theta, 45.0), 1e-6) << theta;
  }
  EXPECT_GT(velocity(0.0, 45.0), 0.0);
  EXPECT_LT(velocity(pi, 45.0), 0.0);
  EXPECT_GT(wave.eta[0], 0.0) << "phase 0 is the crest";
  EXPECT_LT(eta_at(36), 0.0);
}

TEST(StreamFunction, BernoullisConditionIsMetToTheOrderOfTheSeries) {
  double before = 0.0;
  for (int order = 1; order <= 8; ++order) {
    solve(test::storm, 0.0, {.order = order, .coefficient_iterations = 80, .force_all = 1});
    // Between the points of the fit, where nothing was asked of the series.
    double largest = 0.0;
    for (int i = 0; i < 36; ++i) {
      const double theta = (i + 0.5) * pi / 36.0;
      double eta = 0.5 * (eta_at(i) + eta_at(i + 1));
      for (int pass = 0; pass < 60; ++pass) eta -= (stream(theta, wave.d + eta) - wave.X[at(wave.NN)]) / wave.C;
      const double u = velocity(theta, wave.d + eta) - wave.C;
      const double w = (stream(theta + 1e-5, wave.d + eta) - stream(theta - 1e-5, wave.d + eta)) / 2e-5 * wave.k;
      largest = std::max(largest, std::abs(eta + (u * u + w * w) / (2.0 * wave.g) - wave.Q) / wave.H);
    }
    if (order > 1) {
      EXPECT_LT(largest, 0.15 * before + 1e-9) << order;
    }
    before = largest;
  }
  EXPECT_LT(before, 1e-8);
}

TEST(StreamFunction, AHigherOrderComesNearerToTheExactShallowWave) {
  const auto& exact = *std::find_if(test::steady_references.begin(), test::steady_references.end(),
                                    [](const auto& of) { return of.sea.d == test::long_shallow.d; });
  std::array<double, 3> off{};
  for (int i = 0; i < 3; ++i) {
    solve(exact.sea, 0.0, {.order = 3 + 6 * i, .coefficient_iterations = 80, .force_all = 1});
    off[at(i)] = std::abs(wave.L / exact.L - 1.0);
  }
  EXPECT_NEAR(off[0], 3.5e-3, 0.5e-3) << "order 3";
  EXPECT_LT(off[1], 2e-5) << "order 9";
  EXPECT_LT(off[2], 2e-7) << "order 15";
}

// Simpson's rule wants an odd number of points; of an even one the last interval, next to the trough, is left out.
TEST(StreamFunction, WithAnEvenNumberOfPointsTheLastIntervalIsMissingFromTheMeanLevel) {
  const test::SeaCase sea{"", 12.0, 12.0, 50.0, 9.81};
  solve(sea, 0.0, {.points = 36});
  EXPECT_EQ(wave.NPTS, 36);
  EXPECT_NEAR(wave.eta[0], 6.678, 0.002) << "the crest is too low by 0.15";
  double mean = 0.5 * (wave.eta[0] + eta_at(34));
  for (int i = 1; i < 34; ++i) mean += eta_at(i);
  EXPECT_NEAR(mean / 35.0, 0.0, 0.003) << "the surface over the points 1 to NPTS-1 has the mean level";
  solve(sea, 0.0, {.points = 35});
  EXPECT_NEAR(wave.eta[0], 6.827, 0.002);
}

TEST(StreamFunction, SmallModelsAreSolvedAsWellDespiteTheCoarseSurfaceLimit) {
  solve({"flume", 0.1, 1.5, 1.0, 9.81});
  EXPECT_NEAR(wave.L, 3.3789, 0.0004);
}

TEST(StreamFunction, NearBreakingTheCountOfIterationsDecides) {
  const test::SeaCase steep{"", 14.0, 8.0, 100.0, 9.81};
  solve(steep);
  EXPECT_NEAR(wave.L, 115.413, 0.001) << "15 damped steps and one evaluation";
  EXPECT_NEAR(crest_velocity(), 8.3256, 0.0002);
  solve(steep, 0.0, {.coefficient_iterations = 30});
  EXPECT_NEAR(wave.L, 115.429, 0.001) << "converged";
  EXPECT_NEAR(crest_velocity(), 8.3445, 0.0002);
}

}  // namespace
}  // namespace tidearc
