// Linear wave lengths.
#include "sea/airy.h"

#include <cmath>
#include <numbers>

#include "sea/hyperbolic.h"

namespace tidearc {

namespace {

constexpr double two_pi = 2.0 * std::numbers::pi;
constexpr double deep_argument = 100.0;  ///< above it the hyperbolic tangent is 1

double tangent(double y) {
  if (y > deep_argument) return 1.0;
  const SinhCosh of = SINCSH(y);
  return of.sinh / of.cosh;
}

}  // namespace

double deep_water_length(double T, double g) { return g * T * T / two_pi; }

AiryWave solve_airy(double T, double d, double g, double tolerance, int iterations) {
  const double r = d / deep_water_length(T, g);
  AiryWave wave;
  double b = r;
  while (wave.passes < iterations && !wave.converged) {
    const double next = r / tangent(two_pi * b);
    wave.converged = std::abs(next - b) <= tolerance;
    b = next;
    ++wave.passes;
  }
  wave.L = d / b;
  wave.k = two_pi / wave.L;
  wave.C = wave.L / T;
  return wave;
}

LinearLength linear_length(double T, double d, double g, double tolerance, int iterations) {
  const double x0 = (two_pi / T) * (two_pi / T) * d / g;
  if (x0 >= two_pi) return {two_pi * d / x0, 0};
  LinearLength length;
  double y = std::sqrt(x0);
  for (bool going = true; going && length.steps < iterations; ++length.steps) {
    const SinhCosh of = SINCSH(y);
    const double t = of.sinh / of.cosh;
    const double correction = (x0 - y * t) / (t + y / (of.cosh * of.cosh));
    y += correction;
    going = !(std::abs(correction / y) <= tolerance);
  }
  length.L = two_pi * d / y;
  return length;
}

}  // namespace tidearc
