// A deck in water of the test's own making: a plane surface and a motion that is linear in place.
#pragma once

#include <array>

#include "elements/deck/inundation.h"

namespace tidearc::test {

/// Surface: level + slope . (x, y). Velocity: u + rows of du times the point. Acceleration: a, everywhere.
struct PlaneWater {
  double level = 0.0, slope_x = 0.0, slope_y = 0.0;
  Point u{}, a{};
  std::array<Point, 3> du{};

  // What was asked of it.
  double highest_above = -1.0E30;  ///< of a point of the kinematics above the surface over it
  double last_time = -1.0, last_lower_current = 0.0;
  bool parts_left_out = false;
};
inline PlaneWater sea;
extern const WaveFamily plane_water;

/// The box of the closed forms: 30 along x', 20 along y', 4 high, its lowest corner at (-15, -10, 5), nothing else.
DeckBox plain_box();
inline const Point middle_of_box{0.0, 0.0, 5.0};
/// Water of density 1.025 and weight 1.025 times 9.81; the surface stands at mid height of the box, level.
DeckWater plain_water(double time = 0.0);

}  // namespace tidearc::test
