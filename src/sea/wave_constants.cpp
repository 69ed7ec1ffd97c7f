// Constant parts of a solved wave.
#include "sea/wave_constants.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "sea/hyperbolic.h"

namespace tidearc {

namespace {

constexpr double two_pi = 2.0 * std::numbers::pi;

StokesConstants stokes_constants() {
  StokesConstants c;
  c.k = wave.k;
  c.kC = wave.k * wave.C;
  c.F = wave.F;
  c.G = wave.G;
  for (std::size_t i = 0; i < stokes_terms; ++i) c.nG[i] = static_cast<double>(i + 1) * wave.G[i];
  return c;
}

StreamConstants stream_constants() {
  StreamConstants c;
  c.harmonics = std::clamp(wave.NN - 1, 0, static_cast<int>(most_wave_order));
  c.k = wave.k;
  c.C = wave.C;
  for (int n = 1; n <= c.harmonics; ++n) {
    const std::size_t i = static_cast<std::size_t>(n - 1);
    const double kn = n * wave.k;
    c.Xk[i] = wave.X[i + 1] * kn;
    c.Xk2[i] = c.Xk[i] * kn;
  }
  return c;
}

}  // namespace

AiryConstants airy_constants(double H, double T, double k, double d) {
  AiryConstants c;
  c.amplitude = 0.5 * H;
  c.k = k;
  c.d = d;
  c.A = std::numbers::pi * H / T;
  c.B = two_pi * c.A / T;
  c.deep = k * d > deepest_kd;
  c.over_sinh = 1.0 / std::sinh(k * d);
  c.over_cosh = 1.0 / std::cosh(k * d);
  return c;
}

void prepare_wave_constants() {
  wave_constants = {};
  if (wave.IWTY == wave_airy || wave.IWTY == wave_stokes) {
    wave_constants.omega = two_pi / wave.T_structure;
    wave_constants.airy = airy_constants(wave.H, wave.T_water, wave.k, wave.d);
  }
  if (wave.IWTY == wave_stokes) wave_constants.stokes = stokes_constants();
  if (has_stream_function()) wave_constants.stream = stream_constants();
}

}  // namespace tidearc
