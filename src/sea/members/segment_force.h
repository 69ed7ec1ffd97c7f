// From forces at points of a member to equivalent forces and moments at its ends.
#pragma once

#include <span>

#include "sea/members/wave_member.h"

namespace tidearc {

/// A force on a member at a distance from end A.
struct PointLoad {
  Point force{};
  double distance = 0.0;
};

/// Adds the equivalent loads of a straight beam with fixed ends: forces and moments in local axes, in the direction of
/// the load. A transverse force P at a from I and b from J gives P b^2 (3a + b)/l^3 and P a^2 (3b + a)/l^3, with
/// moments P a b^2/l^2 and P a^2 b/l^2; an axial one shares by b/l and a/l.
/// @param length  of the whole member, above zero
void SEGFORCE(MemberLoad& load, double length, std::span<const PointLoad> points);

/// The form without moments: every component shares by b/l and a/l, which keeps force and overturning moment.
void SEGFORCE2(MemberLoad& load, double length, std::span<const PointLoad> points);

/// Integrates a force per length over a stretch of the member with its Gauss rule and adds the equivalent loads.
/// @param force_at  force per length at a fraction of the member, in the frame of the member's mode
template <class ForceAt>
void integrate(const WaveMember& member, Stretch stretch, MemberLoad& load, ForceAt force_at) {
  std::array<PointLoad, most_gauss_points> points;
  const double half = 0.5 * (stretch.to - stretch.from);
  const auto count = static_cast<std::size_t>(member.rule.count);
  for (std::size_t p = 0; p < count; ++p) {
    const double fraction = stretch.from + half * (member.rule.point[p] + 1.0);
    const double length = member.rule.weight[p] * half * member.length;
    const Point force = force_at(fraction);
    points[p] = {{force[0] * length, force[1] * length, force[2] * length}, fraction * member.length};
  }
  const auto used = std::span<const PointLoad>(points).first(count);
  if (member.end_moments) {
    SEGFORCE(load, member.length, used);
  } else {
    SEGFORCE2(load, member.length, used);
  }
}

}  // namespace tidearc
