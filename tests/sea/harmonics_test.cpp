// One exponential and one sine and cosine for all harmonics, beside sums that ask the library for each.
#include "sea/harmonics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "sea/stokes_field.h"
#include "sea/stream_field.h"

namespace tidearc::test {
namespace {

constexpr double bound = 1.0e-13;

// Hyperbolic functions of n k s carry n times the rounding of k s in any arrangement; the bound is relative to the size
// of the terms, growing as exp(n k s).
TEST(Harmonics, AgreeWithDirectEvaluation) {
  for (const double ks : {-3.0, -0.2, 0.0, 1.0e-9, 0.01, 0.5, 2.0, 7.3, 26.0}) {
    for (const double theta : {-6.28, -3.0, -1.0e-8, 0.0, 0.1, 1.5707963, 3.14159265, 5.5, 100.3}) {
      int last = 0;
      for_harmonics(15, ks, theta, [&](std::size_t i, const Harmonic& now) {
        const int n = static_cast<int>(i) + 1;
        EXPECT_EQ(n, ++last);
        EXPECT_NEAR(now.cosine, std::cos(n * theta), bound);
        EXPECT_NEAR(now.sine, std::sin(n * theta), bound);
        EXPECT_NEAR(now.cosh, std::cosh(n * ks), bound * std::cosh(n * ks));
        EXPECT_NEAR(now.sinh, std::sinh(n * ks), bound * std::cosh(n * ks));
      });
      EXPECT_EQ(last, 15);
    }
  }
}

// At 400 the range of the hyperbolic functions ends, for each harmonic by itself.
TEST(Harmonics, BeyondTheRangeEveryHarmonicEndsByItself) {
  for (const double side : {1.0, -1.0}) {
    for_harmonics(5, side * 90.0, 0.3, [&](std::size_t i, const Harmonic& now) {
      const double x = side * 90.0 * static_cast<double>(i + 1);
      if (std::abs(x) > 400.0) {
        EXPECT_EQ(now.cosh, 9.99e199);
        EXPECT_EQ(now.sinh, -9.99e199);
      } else {
        EXPECT_NEAR(now.cosh / std::cosh(x), 1.0, bound);
        EXPECT_NEAR(now.sinh / std::sinh(x), 1.0, bound);
      }
    });
  }
}

TEST(Harmonics, OnTheEdgeOfTheRangeNothingJumps) {
  for_harmonics(5, 80.0, 0.3, [&](std::size_t i, const Harmonic& now) {
    EXPECT_NEAR(now.cosh / std::cosh(80.0 * static_cast<double>(i + 1)), 1.0, 5.0e-13);
  });
}

TEST(Harmonics, TheStokesSumsEqualDirectOnes) {
  StokesConstants c;
  c.k = 0.0297;
  c.kC = 0.523;
  c.F = {0.174, 0.0197, 0.0036, 0.0008, 0.0002};
  c.G = {1.417165, 0.0230107, -1.02830e-4, -3.4031e-6, 1.0909e-7};
  for (std::size_t i = 0; i < 5; ++i) c.nG[i] = static_cast<double>(i + 1) * c.G[i];
  for (const double s : {0.0, 11.0, 45.0, 57.0}) {
    for (double theta = -7.0; theta < 7.0; theta += 0.37) {
      double u = 0, w = 0, a = 0, b = 0, eta = 0;
      for (int n = 1; n <= 5; ++n) {
        const double G = c.G[static_cast<std::size_t>(n - 1)];
        u += G * std::cosh(n * c.k * s) * std::cos(n * theta);
        w += G * std::sinh(n * c.k * s) * std::sin(n * theta);
        a += n * G * std::cosh(n * c.k * s) * std::sin(n * theta);
        b -= n * G * std::sinh(n * c.k * s) * std::cos(n * theta);
        eta += c.F[static_cast<std::size_t>(n - 1)] * std::cos(n * theta);
      }
      const PlaneMotion is = stokes_motion(c, s, theta);
      const double size = c.G[0] * std::cosh(c.k * s);
      EXPECT_NEAR(is.u, u, bound * size);
      EXPECT_NEAR(is.w, w, bound * size);
      EXPECT_NEAR(is.a, c.kC * a, bound * size);
      EXPECT_NEAR(is.b, c.kC * b, bound * size);
      EXPECT_NEAR(stokes_elevation(c, theta), eta / c.k, bound * c.F[0] / c.k);
    }
  }
}

// Order 15 with terms of like size at the crest, harsher than any wave.
TEST(Harmonics, TheStreamFunctionSumsEqualDirectOnes) {
  StreamConstants c;
  c.harmonics = 15;
  c.k = 0.03;
  c.C = 17.0;
  for (int n = 1; n <= 15; ++n) {
    const std::size_t i = static_cast<std::size_t>(n - 1);
    c.Xk[i] = (n % 2 == 0 ? 0.4 : -0.7) / (n * std::cosh(n * c.k * 60.0));
    c.Xk2[i] = c.Xk[i] * n * c.k;
  }
  for (const double s : {0.0, 11.0, 45.0, 60.0}) {
    for (double phi = -6.2; phi < 6.3; phi += 0.37) {
      double U = 0, W = 0, Ux = 0, Uz = 0;
      for (int n = 1; n <= 15; ++n) {
        const std::size_t i = static_cast<std::size_t>(n - 1);
        U -= c.Xk[i] * std::cosh(n * c.k * s) * std::cos(n * phi);
        W -= c.Xk[i] * std::sinh(n * c.k * s) * std::sin(n * phi);
        Ux += c.Xk2[i] * std::cosh(n * c.k * s) * std::sin(n * phi);
        Uz -= c.Xk2[i] * std::sinh(n * c.k * s) * std::cos(n * phi);
      }
      const PlaneMotion is = stream_motion(c, s, phi);
      EXPECT_NEAR(is.u, U, bound);
      EXPECT_NEAR(is.w, W, bound);
      EXPECT_NEAR(is.a, Uz * W + (U - c.C) * Ux, bound * c.C);
      EXPECT_NEAR(is.b, (U - c.C) * Uz - Ux * W, bound * c.C);
    }
  }
}

}  // namespace
}  // namespace tidearc::test
