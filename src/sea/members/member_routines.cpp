// The wet part of a member under a wave, its load, and the correction of its added mass.
#include "sea/members/member_routines.h"

#include <cmath>
#include <limits>

#include "sea/members/load_lines.h"
#include "sea/members/morison.h"
#include "sea/members/segment_force.h"
#include "sea/members/wet_part.h"

namespace tidearc {

namespace {

std::size_t vertical_axis() { return static_cast<std::size_t>(wave.vertical) - 1; }

/// Fraction of the member at which a point of its chord lies, by the axis along which the chord is longest.
double fraction_of(const WaveMember& member, const Point& at) {
  std::size_t m = 0;
  for (std::size_t i = 1; i < 3; ++i) {
    if (std::abs(member.chord[i]) > std::abs(member.chord[m])) m = i;
  }
  return (at[m] - member.A[m]) / (member.B[m] - member.A[m]);
}

/// The part under the surface, by the ends alone: a crest between dry ends and a trough between wet ones are not seen.
/// False when both ends are dry.
bool find_wet_part(const WaveFamily& family, WaveMember& member, std::array<double, 2> surface, double time,
                   Stretch& wet) {
  const std::size_t v = vertical_axis();
  member.wet[0] = WETTEST(member.A[v], surface[0], wave.sg);
  member.wet[1] = WETTEST(member.B[v], surface[1], wave.sg);
  wet = {0.0, 1.0};
  if (member.wet[0] == member.wet[1]) return member.wet[0];
  member.cut = fraction_of(member, family.cut(member.A, member.B, time));
  (member.wet[0] ? wet.to : wet.from) = member.cut;
  return true;
}

/// Cuts a stretch of the member at two elevations; false when nothing is left.
bool clip_stretch(const WaveMember& member, double upper, double lower, Stretch& stretch) {
  const std::size_t v = vertical_axis();
  const double l = stretch.to - stretch.from;
  if (!(l > 0.0)) return false;
  Stretch kept;
  if (CLIP(place_on(member, stretch.from)[v], place_on(member, stretch.to)[v], upper, lower, wave.sg, kept) ==
      Inside::none) {
    return false;
  }
  stretch = {stretch.from + kept.from * l, stretch.from + kept.to * l};
  return true;
}

/// Force of the water per length at a place of the member.
Point water_force(const WaveFamily& family, const WaveMember& member, double fraction, double time) {
  const Point at = place_on(member, fraction);
  MotionParts parts;
  parts.current_only = (at[vertical_axis()] - wave.lower_force) * wave.sg > 0.0;
  WaterMotion water;
  family.kinematics(at, time, wave.lower_current, parts, water);
  if (member.relative) {
    const Point body = along(member.velocity, member.velocity_gain, fraction);
    for (std::size_t i = 0; i < 3; ++i) water.velocity[i] -= body[i];
  }
  return MORISON(member.terms, member.axes, member.mode, water.velocity, water.acceleration, member.ramp);
}

/// Correction of added mass per length: the state is +1 above mean water level on a wet part, -1 at or below it on a
/// dry one, else 0.
Point mass_force(const WaveMember& member, double fraction, bool wet) {
  const bool at_or_below = depth_of(place_on(member, fraction)[vertical_axis()]) >= 0.0;
  const int state = wet == at_or_below ? 0 : (wet ? 1 : -1);
  const Point body = along(member.acceleration, member.acceleration_gain, fraction);
  const Point force = MASSADD(state, body, member.chord, member.undeformed_chord, member.terms.added_mass);
  return member.mode == LoadMode::global ? force : to_local(member.axes, force);
}

/// Load lines of a segment: the load at its ends, linear between them.
void segment_lines(const WaveFamily& family, const WaveMember& member, Stretch segment, double time) {
  static constexpr std::array<std::string_view, 3> axes{" X", " Y", " Z"};
  const Point first = water_force(family, member, segment.from, time);
  const Point last = water_force(family, member, segment.to, time);
  const bool global = member.mode == LoadMode::global;
  for (std::size_t i = global ? 0 : 1; i < 3; ++i) {
    const LineLoad line{segment.from * member.length, (segment.to - segment.from) * member.length, first[i], last[i]};
    write_member_line(axes[i], global ? "GLOB" : "MEMB", member.NODEI, member.NODEJ, line, time);
  }
}

/// Lines along a member in its local axes carry no axial load: that goes onto its nodes.
void joint_lines(const WaveMember& member, const MemberLoad& load, double time) {
  if (member.mode == LoadMode::global) return;
  write_joint_line(member.NODEI, to_global(member.axes, {load[0], 0.0, 0.0}), time);
  write_joint_line(member.NODEJ, to_global(member.axes, {load[6], 0.0, 0.0}), time);
}

void add(MemberLoad& load, const MemberLoad& more) {
  for (std::size_t i = 0; i < load.size(); ++i) load[i] += more[i];
}

/// Segment lengths of the wet part as fractions of it: one for each interval of the current table.
int find_segments(const WaveMember& member, Stretch wet, std::span<double> parts) {
  parts[0] = 1.0;
  if (wave.current_code != 1 || current_now.NLEVEL < 1) return 1;
  const std::size_t v = vertical_axis();
  const auto levels = std::span<const double>(current_now.level).first(static_cast<std::size_t>(current_now.NLEVEL));
  return LEVELS(levels, depth_of(place_on(member, wet.from)[v]), depth_of(place_on(member, wet.to)[v]), parts);
}

}  // namespace

void member_waves(const WaveFamily& family, WaveMember& member, double time, bool lines, MemberLoad& load) {
  const std::array<double, 2> surface{family.surface(time, member.A), family.surface(time, member.B)};
  // Such a surface has no wet side, and a dry member would hide it: the analysis is to see it in its loads.
  if (!std::isfinite(surface[0]) || !std::isfinite(surface[1])) {
    load.fill(std::numeric_limits<double>::quiet_NaN());
    return;
  }
  Stretch wet;
  if (!find_wet_part(family, member, surface, time, wet)) return;
  if (!clip_stretch(member, member.upper, member.lower, wet)) return;
  std::array<double, most_now_levels + 1> parts;  // filled as far as it is used
  member.segments = find_segments(member, wet, parts);
  const bool with_mass = wave.added_mass_code == 1 && member.terms.added_mass != 0.0;
  MemberLoad water{}, mass{};
  Stretch segment{wet.from, wet.from};
  for (int i = 0; i < member.segments; ++i) {
    segment.from = segment.to;
    segment.to += parts[static_cast<std::size_t>(i)] * (wet.to - wet.from);
    if (i == 0) member.first = segment;
    integrate(member, segment, water, [&](double at) { return water_force(family, member, at, time); });
    if (with_mass) integrate(member, segment, mass, [&](double at) { return mass_force(member, at, true); });
    if (lines) segment_lines(family, member, segment, time);
  }
  if (lines) joint_lines(member, water, time);
  add(load, water);
  if (with_mass) add(load, mass);
}

void dry_added_mass(const WaveMember& member, MemberLoad& load) {
  if (wave.added_mass_code != 1 || member.terms.added_mass == 0.0) return;
  if (member.wet[0] && member.wet[1]) return;
  Stretch dry{0.0, 1.0};
  if (member.wet[0]) dry.from = member.cut;
  if (member.wet[1]) dry.to = member.cut;
  if (!clip_stretch(member, wave.MWL, member.lower, dry)) return;
  integrate(member, dry, load, [&](double at) { return mass_force(member, at, false); });
}

MemberRoutine member_routine(int IWTY, double time) {
  switch (static_cast<WaveType>(IWTY)) {
    case wave_none:
      return nullptr;
    case wave_airy:
      return WLAIRY;
    case wave_stokes:
      return WLSTOK;
    case wave_current_only:
      return WLCURR;
    case wave_irregular:
      return WLIRR;
    case wave_stream:
      return WLSF;
    case wave_grid:
      return WLGRID;
    case wave_legendre:
      return WLLEG;
    case wave_embedded: {
      const double weight = embedded_weight(time);
      if (weight == 0.0) return WLIRR;
      return weight == 1.0 ? WLSF : WLBLEND;
    }
  }
  return nullptr;
}

}  // namespace tidearc
