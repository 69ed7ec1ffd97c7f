// The length of a linear (Airy) wave, by two iterations: the fixed-point iteration of the wave section, and Newton's
// method, from which the stream function starts. Both solve L = L0 tanh(2 pi d / L) with L0 = g T^2 / 2 pi.
//
// Source: any text on linear waves, e.g. R. G. Dean and R. A. Dalrymple, Water Wave Mechanics for Engineers and
// Scientists, ch. 3. The field of a linear wave stands elsewhere.
#pragma once

namespace tidearc {

/// Length of a linear wave without current, T^2 g / 2 pi, in water of no end.
double deep_water_length(double T, double g);

struct AiryWave {
  double k = 0.0;          ///< wave number                                      [1/length]
  double C = 0.0;          ///< celerity                                         [length/s]
  double L = 0.0;          ///< length                                             [length]
  int passes = 0;          ///< done                                                    [-]
  bool converged = false;  ///< the last change of d/L was within the tolerance
};

/// d/L := (d/L0) / tanh(2 pi d/L) from d/L0 on, until d/L changes by no more than `tolerance`. The error changes its
/// sign in each pass and shrinks by 4 pi b / sinh(4 pi b), b = d/L: by 0.41 at b = 0.2, by 0.78 at 0.1, by 0.94 at
/// 0.05. A wave that has not converged after `iterations` passes is that of the last iterate.
AiryWave solve_airy(double T, double d, double g, double tolerance, int iterations);

struct LinearLength {
  double L = 0.0;  ///< [length]
  int steps = 0;   ///< Newton steps done, 0 in deep water                              [-]
};

/// Newton's method on x0 - y tanh y = 0, y = k d, x0 = (2 pi / T)^2 d / g, from y = sqrt(x0), until a step is no more
/// than `tolerance` of y or `iterations` are done; y = x0 when x0 is at least 2 pi.
LinearLength linear_length(double T, double d, double g, double tolerance, int iterations);

}  // namespace tidearc
