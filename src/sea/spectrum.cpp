// Spectra, component counts and random phases of irregular seas.
#include "sea/spectrum.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace tidearc {
namespace {

constexpr double pm_alpha = 0.0081;  ///< constants of the Pierson-Moskowitz spectrum [-]
constexpr double pm_beta = 0.74;
constexpr double two_pi = 2.0 * std::numbers::pi;

constexpr std::uint32_t multiplier = 1664525U;
constexpr std::uint32_t increment = 1013904223U;
constexpr double full_range = 4294967296.0;  ///< 2^32

double power4(double x) { return x * x * x * x; }

}  // namespace

PiersonMoskowitz pierson_moskowitz(double g, double wind) {
  return {pm_alpha * g * g / power4(two_pi), pm_beta * power4(g / (two_pi * wind))};
}

double spectrum_value(const PiersonMoskowitz& spectrum, double f) {
  const double f4 = power4(f);
  const double decay = std::exp(-spectrum.B / f4);
  return decay > 0.0 ? spectrum.A / (f4 * f) * decay : 0.0;
}

TableValue spectrum_value(std::span<const double> frequencies, std::span<const double> values, double f) {
  const std::size_t points = std::min(frequencies.size(), values.size());
  if (points < 2) return {0.0, true};
  std::size_t i = 0;
  while (i + 1 < points && !(frequencies[i] <= f && f <= frequencies[i + 1])) ++i;
  const bool outside = i + 1 == points;
  if (outside) i = points - 2;
  const double width = frequencies[i + 1] - frequencies[i];
  const double part = width != 0.0 ? (f - frequencies[i]) / width : 1.0;
  const double S = values[i] + part * (values[i + 1] - values[i]);
  return {outside ? std::max(0.0, S) : S, outside};
}

int component_count(double fmin, double fmax, double df, int limit) {
  const double intervals = (fmax - fmin) / df;
  if (std::isnan(intervals)) return 1;
  if (intervals >= static_cast<double>(limit)) return limit + 1;
  return std::max(0, static_cast<int>(std::max(intervals, -2.0)) + 1);
}

double PhaseNumbers::draw() {
  j_ = multiplier * j_ + increment;
  return static_cast<double>(j_) / full_range;
}

void PhaseNumbers::skip(int n) {
  // j -> m j + c, done 1, 2, 4, ... times.
  std::uint32_t m = multiplier;
  std::uint32_t c = increment;
  for (int left = std::max(n, 0); left > 0; left /= 2) {
    if (left % 2 == 1) j_ = m * j_ + c;
    c = m * c + c;
    m = m * m;
  }
}

double PhaseNumbers::phase(int skipped) {
  skip(skipped);
  const double a = draw();
  const double b = draw();
  constexpr double half_circle = 180.0;
  return a >= 0.5 ? -half_circle * b : half_circle * b;
}

}  // namespace tidearc
