// Loads of still water and static current, and added mass, by the gravity and water control alone.
#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

#include "model/gravity.h"
#include "sea/members/morison.h"
#include "sea/members/segment_force.h"
#include "sea/members/wet_part.h"

namespace tidearc {

namespace {

constexpr double pi = std::numbers::pi;

/// The vertical axis (0 to 2) and how far a place lies under the mean water level.
struct StillWater {
  std::size_t axis = 2;
  double sg = 0.0;  ///< 0: there is no axis of gravity, hence no water
  double depth(const Point& at) const { return sg * (at[axis] - gravity.water_level); }
};

StillWater still_water() {
  const int axis = gravity_axis();
  if (axis == 0) return {};
  return {static_cast<std::size_t>(std::abs(axis)) - 1, axis > 0 ? 1.0 : -1.0};
}

/// The part at or below mean water level, the water line by straight proportion; `from` = `to` for none.
Stretch submerged(double hI, double hJ) {
  if (hI >= 0.0 && hJ >= 0.0) return {0.0, 1.0};
  if (hI < 0.0 && hJ < 0.0) return {0.0, 0.0};
  const double line = hI / (hI - hJ);
  return hI >= 0.0 ? Stretch{0.0, line} : Stretch{line, 1.0};
}

Point difference(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double length_of(const Point& v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }
Point times(double factor, const Point& v) { return {factor * v[0], factor * v[1], factor * v[2]}; }

/// Equivalent loads on I and J, and moments, of a uniform load of 1 per length over a stretch of a beam of length l:
/// the shares of the force, and the arms of the moments.
struct UniformShares {
  double force_I, force_J, moment_I, moment_J;
};

UniformShares fixed_end_shares(Stretch part, double l) {
  const double a = part.from * l, b = part.to * l;
  const double d1 = b - a, d2 = b * b - a * a, d3 = b * b * b - a * a * a, d4 = b * b * b * b - a * a * a * a;
  return {d1 - d3 / (l * l) + d4 / (2.0 * l * l * l), d3 / (l * l) - d4 / (2.0 * l * l * l),
          d2 / 2.0 - 2.0 * d3 / (3.0 * l) + d4 / (4.0 * l * l), -(d3 / (3.0 * l) - d4 / (4.0 * l * l))};
}

UniformShares lever_shares(Stretch part, double l) {
  const double a = part.from * l, b = part.to * l;
  const double at_J = (b * b - a * a) / (2.0 * l);
  return {b - a - at_J, at_J, 0.0, 0.0};
}

/// Puts a global vector into three entries of the load, in the frame of the member's mode.
void put(const MemberPlace& place, MemberLoad& load, std::size_t at, const Point& v) {
  const Point turned = place.mode == LoadMode::global ? v : to_local(place.axes, v);
  std::copy(turned.begin(), turned.end(), load.begin() + static_cast<std::ptrdiff_t>(at));
}

}  // namespace

void BUOYLD(double Db, const MemberPlace& place, MemberLoad& load) {
  load.fill(0.0);
  const StillWater water = still_water();
  const Point chord = difference(place.J, place.I);
  const double l = length_of(chord);
  if (water.sg == 0.0 || !(l > 0.0)) return;
  const Point e = times(1.0 / l, chord);
  const double hI = water.depth(place.I), hJ = water.depth(place.J);
  const double per_depth = gravity.water_weight * pi / 4.0 * Db * Db;  // weight of water in a unit of length

  // Pressure on the side gives a load normal to the member, e the unit chord and k upward: k - (k.e) e.
  Point k{};
  k[water.axis] = -water.sg;
  const double along_e = k[water.axis] * e[water.axis];
  const Point side = times(per_depth, difference(k, times(along_e, e)));
  const Point e_x_side{e[1] * side[2] - e[2] * side[1], e[2] * side[0] - e[0] * side[2],
                       e[0] * side[1] - e[1] * side[0]};
  const bool moments = place.end_moments && place.mode == LoadMode::local;
  const Stretch wet = submerged(hI, hJ);
  const UniformShares share = moments ? fixed_end_shares(wet, l) : lever_shares(wet, l);

  // Pressure on the end caps acts along the member; at the water line there is none.
  Point FI = times(share.force_I, side), FJ = times(share.force_J, side);
  for (std::size_t i = 0; i < 3; ++i) {
    FI[i] += per_depth * std::max(hI, 0.0) * e[i];
    FJ[i] -= per_depth * std::max(hJ, 0.0) * e[i];
  }
  put(place, load, 0, FI);
  put(place, load, 6, FJ);
  if (!moments) return;
  put(place, load, 3, times(share.moment_I, e_x_side));
  put(place, load, 9, times(share.moment_J, e_x_side));
}

void static_current_load(const WaterSection& section, const MemberPlace& place, MemberLoad& load) {
  load.fill(0.0);
  const StillWater water = still_water();
  WaveMember member;
  member.rule = gauss_rule(place.NGAUSS);
  member.length = length_of(difference(place.J, place.I));
  const bool possible = water.sg != 0.0 && section.D != 0.0 && member.rule.count > 0 && member.length > 0.0;
  if (!possible || gravity.NCLEV < 2) return;
  member.terms = section_terms(section, gravity.water_mass);
  member.mode = place.mode;
  member.end_moments = place.end_moments && place.mode == LoadMode::local;
  member.A = place.I;
  member.B = place.J;

  const auto count = static_cast<std::size_t>(gravity.NCLEV);
  const auto levels = std::span<const double>(gravity.CLEVI).first(count);
  const auto vectors = std::span<const double>(gravity.CVELI).first(3 * count);
  const double hI = water.depth(place.I), hJ = water.depth(place.J);
  Stretch part;
  // Depths grow along gravity as levels do where gravity has sign +1.
  const double deepest = *std::max_element(levels.begin(), levels.end());  // they may be out of order
  if (CLIP(hI, hJ, 0.0, deepest, 1.0, part) == Inside::none) return;
  std::array<double, most_current_levels + 1> lengths;
  const double h_from = hI + part.from * (hJ - hI), h_to = hI + part.to * (hJ - hI);
  const int segments = LEVELS(levels, h_from, h_to, lengths);
  Stretch segment{part.from, part.from};
  for (int i = 0; i < segments; ++i) {
    segment = {segment.to, segment.to + lengths[static_cast<std::size_t>(i)] * (part.to - part.from)};
    integrate(member, segment, load, [&](double at) {
      Point velocity{};
      CURADD(levels, vectors, hI + at * (hJ - hI), velocity);
      return MORISON(member.terms, place.axes, member.mode, velocity, Point{}, 1.0);
    });
  }
}

Point added_mass(const WaterSection& section, const Point& I, const Point& J) {
  const StillWater water = still_water();
  const Point chord = difference(J, I);
  const double l = length_of(chord);
  if (water.sg == 0.0 || !(l > 0.0)) return {};
  const Stretch wet = submerged(water.depth(I), water.depth(J));
  const double mass = section_terms(section, gravity.water_mass).added_mass * (wet.to - wet.from) * l;
  const Point e = times(1.0 / l, chord);
  return {mass * (1.0 - e[0] * e[0]), mass * (1.0 - e[1] * e[1]), mass * (1.0 - e[2] * e[2])};
}

}  // namespace tidearc
