// Seas for the tests of member loads: a wave set by hand, or water that moves as a test says.
#pragma once

#include <vector>

#include "sea/field.h"
#include "sea/members/member.h"
#include "sea/members/wave_member.h"

namespace tidearc::test {

/// Metres, seconds, tonnes, kN.
inline constexpr double rho = 1.025;
inline constexpr double weight_density = 10.05525;

/// Sets the blocks of the sea back: no wave, gravity along -Z, mean water level 0, sea bed at -50, force limits +12 and
/// -50; the gravity and water control the same.
void still_sea();
/// H 12, T 12, d 50, along X, crest over the origin at time 0.
void airy_sea(int stretching = 0);
void stokes_sea();
void stream_sea();
/// Current only: a profile of levels and speeds along X.
void current_sea(const std::vector<double>& levels, const std::vector<double>& speeds);
/// Puts a current into the sea at hand.
void set_current(const std::vector<double>& levels, const std::vector<double>& speeds);
/// The same as static current of the gravity and water control.
void set_static_current(const std::vector<double>& levels, const std::vector<double>& speeds);

/// Water that moves as one, under a level surface; it notes the points at which it was asked.
struct FakeSea {
  double surface = 0.0;
  Point velocity{}, acceleration{};
  std::vector<Point> asked;        ///< of the kinematics
  std::vector<bool> current_only;  ///< what was wanted there
  int surfaces = 0;                ///< times that the surface was asked
};
inline FakeSea fake;
const WaveFamily& fake_family();

/// A pile from the elevation `foot` to `head` over a place in the plane: local x upward, local y along global X, local
/// z along global Y.
MemberPlace pile(double foot, double head, int points, bool end_moments = true);
/// The same as a member of six freedoms.
MemberPlace bar_of(MemberPlace place);
/// Any member: local x along it, local z as near to the global vertical as can be.
MemberPlace member_between(const Point& I, const Point& J, int points, bool end_moments = true);

/// Diameter 1, CD 1, CM 2.
WaterSection plain_tube(double D = 1.0);

/// `wave_member` for the routine of a wave type, without limits in the way.
WaveMember made_ready(const MemberPlace& place, const WaterSection& section);

/// Force of nodal loads and their moment about the origin, in global axes.
struct Resultant {
  Point force{};
  Point moment{};
};
Resultant resultant(const MemberPlace& place, const MemberLoad& load);
/// Its three forces and moments at an end in global axes.
Point force_at_I(const MemberPlace& place, const MemberLoad& load);
Point force_at_J(const MemberPlace& place, const MemberLoad& load);
Point moment_at_I(const MemberPlace& place, const MemberLoad& load);
Point moment_at_J(const MemberPlace& place, const MemberLoad& load);

/// WAVLD of a member at rest, without lines.
MemberLoad wave_load(const WaterSection& section, const MemberPlace& place, double time);

}  // namespace tidearc::test
