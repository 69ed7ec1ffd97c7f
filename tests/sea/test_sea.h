// A sea for tests: a solved wave in water of chosen axes, and its motion seen in the plane of the wave.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "scratch.h"
#include "sea/field.h"
#include "sea/wave_constants.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc::test {

/// Water of density 1.025 with its mean level at 0, Z up and a wave along X, until told otherwise. Everything is taken
/// back at the end.
class Sea {
 public:
  Sea() { water(); }
  Sea(WaveType type, double H, double T, double d, double g = 9.81) {
    water();
    wave.IWTY = type;
    wave.H = H;
    wave.T_water = wave.T_structure = T;
    wave.d = d;
    wave.g = g;
    solve();
  }
  ~Sea() {
    wave = {};
    wave_constants = {};
    current_now = {};
  }
  Sea(const Sea&) = delete;
  Sea& operator=(const Sea&) = delete;

  /// The theory of the type, with iterations to spare.
  static void solve(int order = 9) {
    if (wave.IWTY == wave_airy || wave.IWTY == wave_stokes) WAVSOL(1.0E-13, 2000);
    if (has_stream_function()) {
      wave.NPTS = 37;
      SFSOLVE(1.0E-10, 50, 30, order, 0);
    }
    prepare_wave_constants();
  }

  /// Gravity along an axis 1..3 with this sign, the wave along the first horizontal axis, mean level at `MWL`.
  static void turn(int vertical, double sg, double MWL = 0.0) {
    wave.vertical = vertical;
    wave.horizontal = {vertical % 3 + 1, (vertical + 1) % 3 + 1};
    wave.sg = sg;
    wave.gravity = {};
    wave.gravity[axis(vertical)] = sg;
    wave.direction = {};
    wave.direction[axis(wave.horizontal[0])] = 1.0;
    wave.MWL = MWL;
    wave.lower_current = MWL + sg * 1.0E6;
  }

  static std::size_t axis(int number) { return static_cast<std::size_t>(number - 1); }

  Scratch scratch;

 private:
  static void water() {
    wave = {};
    wave.g = 9.81;
    wave.rho = 1.025;
    turn(3, -1.0);
  }
};

/// x along the wave, z upward from mean level.
inline Point place(double x, double z) {
  Point at{};
  for (std::size_t i = 0; i < 3; ++i) at[i] = x * wave.direction[i] - z * wave.gravity[i];
  at[Sea::axis(wave.vertical)] += wave.MWL;
  return at;
}

/// Components of the motion along the wave (u, a), upward (w, b) and across both.
struct Seen {
  double u, w, a, b;
  double across;
};
inline Seen seen(const WaterMotion& motion) {
  Seen s{};
  const std::size_t side = Sea::axis(wave.horizontal[1]);
  for (std::size_t i = 0; i < 3; ++i) {
    s.u += motion.velocity[i] * wave.direction[i];
    s.w -= motion.velocity[i] * wave.gravity[i];
    s.a += motion.acceleration[i] * wave.direction[i];
    s.b -= motion.acceleration[i] * wave.gravity[i];
  }
  s.across = motion.velocity[side];
  return s;
}
inline Seen motion_at(double x, double z, double time, MotionParts parts = {}) {
  WaterMotion motion;
  wave_family(wave.IWTY).kinematics(place(x, z), time, wave.lower_current, parts, motion);
  return seen(motion);
}

/// Elevation above mean level, upward, over x.
inline double eta_at(double x, double time) { return -depth_of(wave_family(wave.IWTY).surface(time, place(x, 0.0))); }

/// Pressures as if the surface stood far above the point.
inline WavePressure pressure_at(double x, double z, double time) {
  return wave_family(wave.IWTY).pressure(wave.MWL - wave.sg * 1.0E3, place(x, z), time);
}

/// The Airy wave of a check table that tells its wave number with few digits.
inline void set_airy_number(double k) {
  wave.k = k;
  prepare_wave_constants();
}

/// A current over depth along the wave: three levels, or any pairs of level and speed.
struct LevelSpeed {
  double level, speed;
};
inline void set_current(std::initializer_list<LevelSpeed> profile, int stretching = 1) {
  wave.current_code = 1;
  wave.current_stretching = stretching;
  current_now = {};
  for (const auto& [level, speed] : profile) {
    const auto n = static_cast<std::size_t>(current_now.NLEVEL++);
    current_now.level[n] = level;
    for (std::size_t c = 0; c < 3; ++c) current_now.vector[3 * n + c] = speed * wave.direction[c];
  }
}

}  // namespace tidearc::test
