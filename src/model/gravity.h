// Gravity and water control: the direction of gravity, the water, and the static current profile.
#pragma once

#include <array>
#include <type_traits>

namespace tidearc {

inline constexpr int most_current_levels = 50;

/// Written by GRAVIN at the gravity and water card; reset by DATAIN at the start of a problem.
struct GravityBlock {
  double GRAV = 32.2;                               ///< acceleration of gravity                       [length/s2]
  std::array<double, 3> direction{0.0, 0.0, -1.0};  ///< unit vector along which weight acts           [-]
  double water_level = 0.0;                         ///< coordinate of the mean water surface          [length]
  double water_weight = 0.0;                        ///< weight density of water                       [force/volume]
  double water_mass = 0.0;                          ///< mass density of water                         [mass/volume]
  int KBUOY = 0;                                    ///< buoyancy generation code                      [-]
  int KCURR = 0;                                    ///< static current: 0 none, 1 small, 2 large displacement  [-]
  int NCLEV = 0;                                    ///< static current levels                         [-]
  std::array<double, most_current_levels> CLEVI{};  ///< levels relative to mean water             [length]
  std::array<double, 3 * most_current_levels> CVELI{};  ///< current vectors, three per level          [length/s]
};
inline GravityBlock gravity;
static_assert(std::is_trivially_copyable_v<GravityBlock>);

/// Back to the state of a problem without a gravity card: weight acts along -Z, GRAV 32.2, no water.
void reset_gravity();
/// Reads and echoes the gravity and water card and its static current cards.
void GRAVIN();

/// Signed axis of gravity: 1, 2, 3 for X, Y, Z, negative when the component is negative; 0 for a zero vector.
int gravity_axis();

/// Whether a direction of any length has no more than a millionth of it along gravity; a zero one is horizontal.
bool is_horizontal(const std::array<double, 3>& direction);

}  // namespace tidearc
