// Cards of an irregular sea for tests, and seas filled by hand.
#pragma once

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

#include "sea/components.h"
#include "test_sea.h"
#include "wave_section.h"

namespace tidearc::test {

/// The two cards that open an irregular sea in 50 m of water, and what follows.
struct IrregularCards {
  std::string d = "50.";
  std::string limit = "";
  std::string ISTRCH = "";
  std::string time_block = "";
  std::string current_stretching = "";
  std::string peak = "";
  std::string apparent = "";
  std::string generation = "";
  std::string spectrum = "";
  std::string iterations = "";
  std::string tolerance = "";
  std::string rest = "";

  std::string cards() const {
    return fields(10, {d, "", limit}) + fields(5, {ISTRCH, time_block, current_stretching}) +
           fields(10, {peak, apparent}) + "\n" + fields(5, {generation, spectrum, iterations}) +
           fields(10, {tolerance}) + "\n" + rest;
  }
  /// The whole section of a type 4.
  std::string section() const { return WaveControl{.IWTY = "4"}.card() + cards(); }
};

/// Behind the two cards: wind 20 m/s along X, components from 0.04 to 0.30 Hz by 0.01 unless told.
inline std::string wind_sea(const std::string& wind = "20.", const std::vector<std::string>& direction = {"1.", "", ""},
                            const std::string& skip = "", const std::string& fmin = "0.04",
                            const std::string& fmax = "0.30", const std::string& df = "0.01") {
  return fields(10, {wind, direction[0], direction[1], direction[2]}) + fields(5, {skip}) + "\n" +
         tens({fmin, fmax, df});
}

/// Count and direction of user components.
inline std::string user_head(const std::string& count, const std::vector<std::string>& direction = {"1.", "", ""}) {
  return fields(5, {count}) + fields(10, direction) + "\n";
}

/// A component in force, its wave number by the dispersion relation of linear waves; direction in degrees from the
/// first horizontal axis.
struct Swell {
  double T, a;
  double phase = 0.0;
  double angle = 0.0;
};

inline double wave_number(double T, double d, double g) {
  const double omega = 2.0 * std::numbers::pi / T;
  double k = omega * omega / g;
  for (int pass = 0; pass < 80; ++pass) k = 0.5 * (k + omega * omega / (g * std::tanh(k * d)));
  return k;
}

/// Puts components into a Sea of depth d.
inline void put_swell(const std::vector<Swell>& swells, double d = 50.0) {
  wave.IWTY = wave_irregular;
  wave.d = wave.d_irregular = d;
  wave.NCOMP = 0;
  for (const Swell& swell : swells) {
    SeaComponent& component = components.of[static_cast<std::size_t>(wave.NCOMP++)];
    component.omega = component.omega_water = 2.0 * std::numbers::pi / swell.T;
    component.amplitude = swell.a;
    component.phase = swell.phase;
    component.k = wave_number(swell.T, d, wave.g);
    component.cosine = std::cos(swell.angle * std::numbers::pi / 180.0);
    component.sine = std::sin(swell.angle * std::numbers::pi / 180.0);
    set_profile(component, d);
  }
}

}  // namespace tidearc::test
