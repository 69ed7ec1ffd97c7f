// The harmonics of a wave at a point: cosine and sine of n times the phase, hyperbolic cosine and sine of n times k s.
//
// One exponential and one pair of sine and cosine serve all of them: powers of exp(k s) and angle addition carry them
// from one harmonic to the next, with an error that grows by a rounding or two per harmonic.
#pragma once

#include <cmath>
#include <cstddef>

#include "sea/hyperbolic.h"

namespace tidearc {

struct Harmonic {
  double cosine, sine;  ///< of n theta
  double cosh, sinh;    ///< of n k s
};

/// Largest argument that SINCSH takes; beyond it every harmonic asks SINCSH itself, which tells what happens there.
inline constexpr double largest_hyperbolic_argument = 400.0;

/// Calls add(i, harmonic) for the harmonics n = i + 1 = 1 .. count, in this order.
template <class Add>
inline void for_harmonics(int count, double ks, double theta, Add&& add) {
  const double cosine = std::cos(theta), sine = std::sin(theta);
  const bool in_range = std::abs(count * ks) <= largest_hyperbolic_argument;
  const double growth = in_range ? std::exp(ks) : 1.0;
  const double decay = 1.0 / growth;
  Harmonic now{cosine, sine, 0.0, 0.0};
  double grown = growth, decayed = decay;
  for (int i = 0; i < count; ++i) {
    if (in_range) {
      now.cosh = 0.5 * (grown + decayed);
      now.sinh = 0.5 * (grown - decayed);
    } else {
      const SinhCosh end = SINCSH((i + 1) * ks);
      now.cosh = end.cosh;
      now.sinh = end.sinh;
    }
    add(static_cast<std::size_t>(i), now);
    const double next = now.cosine * cosine - now.sine * sine;
    now.sine = now.sine * cosine + now.cosine * sine;
    now.cosine = next;
    grown *= growth;
    decayed *= decay;
  }
}

}  // namespace tidearc
