// Wave height spectra of irregular seas and the random numbers of the phases. Values in, values out.
#pragma once

#include <cstdint>
#include <span>

namespace tidearc {

/// Pierson-Moskowitz spectrum S(f) = A/f^5 exp(-B/f^4), f in cycles per second, S in length^2 s.
/// Source: Pierson and Moskowitz, J. Geophysical Research 69 (1964), with 0.0081 and 0.74.
struct PiersonMoskowitz {
  double A;
  double B;
};
/// @param g     acceleration of gravity                                                   [length/s2]
/// @param wind  mean wind velocity at 64 ft above the sea level                            [length/s]
PiersonMoskowitz pierson_moskowitz(double g, double wind);
/// Its value at a frequency above zero.
double spectrum_value(const PiersonMoskowitz& spectrum, double f);

/// Value of a spectrum given by points.
struct TableValue {
  double S;
  bool outside;  ///< no pair of points brackets the frequency: S continues the last interval, not below zero
};
/// Straight line between the first pair of neighbours with f(i) <= f <= f(i+1). Fewer than two points have no interval:
/// zero, outside.
TableValue spectrum_value(std::span<const double> frequencies, std::span<const double> values, double f);

/// Number of components from fmin to fmax in steps of df: the whole part of (fmax - fmin)/df in plain double
/// arithmetic, plus 1; 0 when that is negative, `limit` + 1 when it is above the limit. A step of zero over no width
/// gives 1.
int component_count(double fmin, double fmax, double df, int limit);

/// Uniform random numbers in 0 to 1, the same on every machine: the linear congruential sequence
/// j = (1664525 j + 1013904223) mod 2^32, value j/2^32, that starts from j = 0.
/// Source: constants of Knuth and Lewis (Press et al., Numerical Recipes, 2nd edition, section 7.1).
class PhaseNumbers {
 public:
  /// The next number.
  double draw();
  /// Draws `n` numbers that nobody wants (none when negative), in a time that grows with the digits of n only.
  void skip(int n);
  /// Skips, then draws a and b: the phase is 180 b degrees, negative when a is at least 0.5.
  double phase(int skipped);

 private:
  std::uint32_t j_ = 0;
};

}  // namespace tidearc
