// One member under way: what WAVLD prepares for the routine of the wave type, and the places along a member.
//
// A place on a member is told by its fraction of the member, 0 at end A (node I) and 1 at end B (node J). Body velocity
// and acceleration between the ends follow by that fraction too.
#pragma once

#include <array>
#include <type_traits>

#include "sea/members/member.h"

namespace tidearc {

inline constexpr int most_gauss_points = 4;

/// Points and weights on -1 to 1.
struct GaussRule {
  int count = 0;
  std::array<double, most_gauss_points> point{};
  std::array<double, most_gauss_points> weight{};
};
/// The rule of 1 to 4 points; any other count gives a rule of none. Single-precision values, widened: results depend on
/// that rounding.
GaussRule gauss_rule(int count);

/// A part of a member, in fractions of it.
struct Stretch {
  double from = 0.0;
  double to = 0.0;
};

/// What the water does to a section per unit of length, as factors.
struct SectionTerms {
  double drag = 0.0;                      ///< 0.5 CD D rho
  double tangential = 0.0;                ///< 0.5 CDS D rho pi
  double added_mass = 0.0;                ///< 0.25 KM D^2 rho pi
  double inertia = 0.0;                   ///< 0.25 CM D^2 rho pi
  bool by_angle = false;                  ///< load code 7 with its table
  int second_code = 0;                    ///< of load code 7: 1 takes drag and lift from the table
  double general_inertia = 0.0;           ///< as inertia, with the table's coefficient
  std::array<double, 12> general_drag{};  ///< 0.5 D rho times the coefficient, every 30 degrees
  std::array<double, 12> general_lift{};  ///< the same of lift
};
SectionTerms section_terms(const WaterSection& section, double rho);

/// Written by WAVLD at each call, for the routine of the wave type and the integration.
struct WaveMember {
  SectionTerms terms;
  GaussRule rule;
  int NODEI = 0, NODEJ = 0;                   ///< for load lines
  LoadMode mode = LoadMode::local;            ///< frame of the forces
  bool end_moments = false;                   ///< full set of equivalent loads instead of lever shares
  std::array<double, 9> axes{};               ///< local axes, column by column
  Point A{}, B{};                             ///< ends: undeformed, or displaced by large displacement code 1  [length]
  double length = 0.0;                        ///< distance of A and B                                          [length]
  Point chord{};                              ///< unit vector from A to B                                           [-]
  Point undeformed_chord{};                   ///< the same of the undeformed ends                                   [-]
  double upper = 0.0, lower = 0.0;            ///< elevations between which anything acts                       [length]
  Point velocity{}, velocity_gain{};          ///< body velocity of A, and that of B less that of A           [length/s]
  Point acceleration{}, acceleration_gain{};  ///< the same of the acceleration                          [length/s2]
  bool relative = false;                      ///< the water is met at its velocity relative to the body
  double ramp = 1.0;                          ///< ramp factor of the time                                           [-]
  std::array<bool, 2> wet{};                  ///< end-wet flags, for the pass over dry parts
  double cut = 0.0;                           ///< fraction at which the surface cuts; used when one end is wet      [-]
  int segments = 0;                           ///< segments of the wet part                                          [-]
  Stretch first{};                            ///< the first of them; without length when nothing is wet             [-]
  double magnification = 1.0;                 ///< multiplier of the wave force scale table at this time             [-]
};
inline WaveMember wave_member;
static_assert(std::is_trivially_copyable_v<WaveMember>);

/// Global coordinates of a place on the member.
inline Point place_on(const WaveMember& member, double fraction) {
  return {member.A[0] + fraction * (member.B[0] - member.A[0]), member.A[1] + fraction * (member.B[1] - member.A[1]),
          member.A[2] + fraction * (member.B[2] - member.A[2])};
}
/// Start value plus a fraction of the gain.
inline Point along(const Point& start, const Point& gain, double fraction) {
  return {start[0] + fraction * gain[0], start[1] + fraction * gain[1], start[2] + fraction * gain[2]};
}

/// Turns global components into local ones (axes column by column), and back.
inline Point to_local(const std::array<double, 9>& axes, const Point& v) {
  return {axes[0] * v[0] + axes[1] * v[1] + axes[2] * v[2], axes[3] * v[0] + axes[4] * v[1] + axes[5] * v[2],
          axes[6] * v[0] + axes[7] * v[1] + axes[8] * v[2]};
}
inline Point to_global(const std::array<double, 9>& axes, const Point& v) {
  return {axes[0] * v[0] + axes[3] * v[1] + axes[6] * v[2], axes[1] * v[0] + axes[4] * v[1] + axes[7] * v[2],
          axes[2] * v[0] + axes[5] * v[1] + axes[8] * v[2]};
}

}  // namespace tidearc
