// Hyperbolic functions from one exponential.
#pragma once

#include <cmath>

namespace tidearc {

/// Beyond this k d the hyperbolic functions of a depth profile are one exponential.
inline constexpr double deepest_kd = 100.0;

struct SinhCosh {
  double sinh, cosh;
};

/// sinh and cosh of x. Beyond 400 on either side the range ends: sinh is then -9.99E199, negative on both sides on
/// purpose, and cosh 9.99E199; who may get there looks at the argument first. (The exponential of -400 is 1.9E-174, so
/// inside of the range its inverse is always a number.)
inline SinhCosh SINCSH(double x) {
  constexpr double range = 400.0;
  constexpr double out_of_range = 9.99E199;
  if (x > range || x < -range) return {-out_of_range, out_of_range};
  const double e = std::exp(x);
  return {0.5 * (e - 1.0 / e), 0.5 * (e + 1.0 / e)};
}

}  // namespace tidearc
