// Stokes waves of the fifth order.
//
// Source: L. Skjelbreia and J. Hendrickson, "Fifth order gravity wave theory", Proc. 7th Conf. Coastal Engineering
// (1960), ch. 10, with the notation of that paper, e.g. F1 = lambda for the amplitude of the first harmonic times k.
// Deviation: the term 2592 cosh^8 of C2 is negative here, the later correction (H. Nishimura, M. Isobe and K. Horikawa,
// J. Fac. Eng. Univ. Tokyo B 34 (1977); J. D. Fenton, J. Waterway, Port, Coastal and Ocean Eng. 111 (1985)); with the
// printed sign the dynamic condition at the surface is met to the fourth order only.
#pragma once

#include <array>

#include "sea/wave_state.h"

namespace tidearc {

/// The coefficients at a relative depth b = d/L.
struct StokesCoefficients {
  double A11, A13, A15, A22, A24, A33, A35, A44, A55;
  double B22, B24, B33, B35, B44, B55;
  double C1, C2, C3, C4;
  double tangent;  ///< tanh(2 pi b)
};

/// One expansion in two writings: polynomials in cosh^2 kd, or in its inverse, which forms no large powers.
enum class StokesForm { plain, deep };

/// Above this d/L0 the deep form is used (1.1 in single precision).
inline constexpr double deep_form_ratio = 1.100000023841858;
/// Above this d/L0 the message about the ratio is due.
inline constexpr double largest_depth_ratio = 3.0;

/// In the deep form cosh kd counts as infinite when kd is above 100.
StokesCoefficients stokes_coefficients(double b, StokesForm form);

struct StokesWave {
  double lambda = 0.0;                   ///< expansion parameter                                        [-]
  double b = 0.0;                        ///< d/L                                                        [-]
  double k = 0.0;                        ///< wave number                                         [1/length]
  double C = 0.0;                        ///< celerity                                            [length/s]
  double L = 0.0;                        ///< length                                                [length]
  std::array<double, stokes_terms> F{};  ///< eta = sum F(n) cos(n theta) / k                            [-]
  std::array<double, stokes_terms> G{};  ///< u = sum G(n) cosh(n k s) cos(n theta)               [length/s]
  double Q = 0.0;                        ///< Bernoulli constant in the frame of the crest          [length]
  StokesForm form = StokesForm::plain;   ///< in which it was computed
  double depth_ratio = 0.0;              ///< d/L0                                                       [-]
  int passes = 0;                        ///< Newton steps done                                          [-]
  bool converged = false;                ///< the last step was within the tolerance
};

/// The wave of given lambda, b and coefficients in water of depth d: k, C, L, F, G, Q.
StokesWave stokes_wave(double lambda, double b, const StokesCoefficients& of, double d, double g);

/// Newton's method in lambda and b from lambda = pi H / L0 and b = d / L0, until the root of the sum of both squared
/// relative changes is at most `tolerance`, at most `iterations` steps; then the wave of the last iterate. In long
/// waves (d/L0 below about 0.03) it may fail, or end on a negative length.
StokesWave solve_stokes(double H, double T, double d, double g, double tolerance, int iterations);

}  // namespace tidearc
