// The constant parts of a solved regular wave: what its formulas take at every point and every time alike.
#pragma once

#include <array>
#include <type_traits>

#include "sea/wave_state.h"

namespace tidearc {

struct AiryConstants {
  double amplitude = 0.0;  ///< H / 2                                                             [length]
  double k = 0.0;          ///< wave number                                                     [1/length]
  double d = 0.0;          ///< depth                                                             [length]
  double A = 0.0;          ///< pi H / T_water: amplitude of the orbital velocity               [length/s]
  double B = 0.0;          ///< 2 pi A / T_water: of the orbital acceleration                  [length/s2]
  double over_sinh = 0.0;  ///< 1 / sinh(k d)                                                          [-]
  double over_cosh = 0.0;  ///< 1 / cosh(k d)                                                          [-]
  bool deep = false;       ///< k d above 100: hyperbolic quotients become one exponential
};

struct StokesConstants {
  double k = 0.0;                         ///< wave number                                      [1/length]
  double kC = 0.0;                        ///< k C, the frequency in the water                       [1/s]
  std::array<double, stokes_terms> F{};   ///< elevation coefficients                                  [-]
  std::array<double, stokes_terms> G{};   ///< G(n)                                             [length/s]
  std::array<double, stokes_terms> nG{};  ///< n G(n)                                           [length/s]
};

struct StreamConstants {
  int harmonics = 0;                          ///< order of the theory                                 [-]
  double k = 0.0;                             ///< wave number                                  [1/length]
  double C = 0.0;                             ///< speed of the crest over the ground           [length/s]
  std::array<double, most_wave_order> Xk{};   ///< X(n+1) n k                                   [length/s]
  std::array<double, most_wave_order> Xk2{};  ///< X(n+1) (n k)^2                                    [1/s]
};

/// Written by prepare_wave_constants from `wave`; read by the field routines of types 1, 2, 5 and 8.
struct WaveConstants {
  double omega = 0.0;  ///< 2 pi / T_structure                                                       [1/s]
  AiryConstants airy;
  StokesConstants stokes;
  StreamConstants stream;
};
inline WaveConstants wave_constants;
static_assert(std::is_trivially_copyable_v<WaveConstants>);

/// Linear wave of height H and period T (related to the water) with wave number k in depth d.
AiryConstants airy_constants(double H, double T, double k, double d);

/// To be called whenever the regular wave of `wave` has been solved or changed, before any field routine is asked.
void prepare_wave_constants();

}  // namespace tidearc
