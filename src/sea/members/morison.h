// Force of moving water on a slender member, per unit of length.
#pragma once

#include "sea/members/wave_member.h"

namespace tidearc {

/// Morison's equation at a point: drag on the velocity normal to the member, inertia on the acceleration normal to it,
/// and tangential drag along it.
/// @param axes  local axes of the member, column by column; x along it
/// @param V     velocity of the water, relative to the member where that is wanted, global
/// @param A     acceleration of the water, global
/// @param ramp  factor on all terms
/// @return the force per length: in local axes in mode 1, in global axes in mode 2
Point MORISON(const SectionTerms& terms, const std::array<double, 9>& axes, LoadMode mode, const Point& V,
              const Point& A, double ramp);

/// Drag and lift of a section by angle of attack, added to the local force.
/// @param Vy, Vz  normal velocity in local axes
/// @param Vn      its size, above zero
void MORGEN(const SectionTerms& terms, double Vy, double Vz, double Vn, double ramp, Point& force);

/// Correction of the added mass that stands in the mass matrix up to mean water level.
/// @param state         +1 where the wave puts water on, -1 where it takes water away, 0 neither
/// @param acceleration  of the body, global
/// @param chord         unit vector along the member now
/// @param undeformed    the same of the undeformed member
/// @param added_mass    per unit of length
/// @return the force per length, global; zero for state 0
Point MASSADD(int state, const Point& acceleration, const Point& chord, const Point& undeformed, double added_mass);

}  // namespace tidearc
