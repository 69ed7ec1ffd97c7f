#include "water.h"

#include <algorithm>

namespace tidearc::test {

namespace {

double plane_surface(double, const Point& at) { return sea.level + sea.slope_x * at[0] + sea.slope_y * at[1]; }

void plane_motion(const Point& at, double time, double lower_current, MotionParts parts, WaterMotion& motion) {
  motion = {sea.u, sea.a};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) motion.velocity[i] += sea.du[i][j] * at[j];
  }
  sea.highest_above = std::max(sea.highest_above, at[2] - plane_surface(time, at));
  sea.last_time = time;
  sea.last_lower_current = lower_current;
  sea.parts_left_out = sea.parts_left_out || parts.wave_only || parts.current_only;
}

}  // namespace

const WaveFamily plane_water{plane_surface, plane_motion, nullptr, nullptr};

DeckBox plain_box() {
  DeckBox box{};
  box.X0 = -15.0;
  box.Y0 = -10.0;
  box.Z0 = 5.0;
  box.HIGH = 4.0;
  box.LENGTH = 30.0;
  box.WIDTH = 20.0;
  box.PHI = 1.0;
  for (double& factor : box.R) factor = 1.0;
  box.Nx = box.Ny = 1;
  return box;
}

DeckWater plain_water(double time) {
  sea = {};
  sea.level = 7.0;
  return {&plane_water, time, -50.0, 1.025, 1.025 * 9.81};
}

}  // namespace tidearc::test
