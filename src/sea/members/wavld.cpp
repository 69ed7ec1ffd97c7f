// WAVLD: from an element's ends, motion and coefficients to its nodal wave loads.
#include <cmath>

#include "run/layout.h"
#include "run/units.h"
#include "sea/members/magnification.h"
#include "sea/members/member_routines.h"
#include "sea/members/wet_part.h"

namespace tidearc {

namespace {

Point less(const Point& a, const Point& b) { return {a[0] - b[0], a[1] - b[1], a[2] - b[2]}; }
double size_of(const Point& v) { return std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]); }
Point unit(const Point& v, double size) { return {v[0] / size, v[1] / size, v[2] / size}; }

/// Ends, length and chord; false for a member without length.
bool place_ends(WaveMember& member, const MemberPlace& place, const MemberMotion& motion) {
  const Point undeformed = less(place.J, place.I);
  const double undeformed_length = size_of(undeformed);
  member.A = place.I;
  member.B = place.J;
  if (wave.large_displacement == 1) {
    member.A = along(place.I, motion.displacement[0], 1.0);
    member.B = along(place.J, motion.displacement[1], 1.0);
  }
  const Point chord = less(member.B, member.A);
  member.length = size_of(chord);
  if (!(undeformed_length > 0.0 && member.length > 0.0)) return false;
  member.chord = unit(chord, member.length);
  member.undeformed_chord = unit(undeformed, undeformed_length);
  return true;
}

/// Elevations between which waves or current act.
void set_limits(WaveMember& member) {
  member.upper = wave.upper_force;
  member.lower = depth_of(wave.lower_current) > depth_of(wave.lower_force) ? wave.lower_current : wave.lower_force;
}

/// Motion of A and what B has more of it, over the whole member; at time 0 all of it moves with A.
void set_motion(WaveMember& member, const MemberMotion& motion, double time) {
  member.velocity = motion.velocity[0];
  member.acceleration = motion.acceleration[0];
  member.relative = time != 0.0 && wave.relative_velocity == 1;
  if (time == 0.0) return;
  member.velocity_gain = less(motion.velocity[1], motion.velocity[0]);
  member.acceleration_gain = less(motion.acceleration[1], motion.acceleration[0]);
}

/// Prepares `wave_member`; false when no load can arise.
bool prepare(const WaterSection& section, const MemberPlace& place, const MemberMotion& motion, double time) {
  WaveMember& member = wave_member;
  member = WaveMember{};
  member.rule = gauss_rule(place.NGAUSS);
  if (section.D == 0.0) return false;
  if (wave.IWTY == wave_none || wave.sg == 0.0 || member.rule.count == 0) return false;
  if (!place_ends(member, place, motion)) return false;
  set_limits(member);
  const auto v = static_cast<std::size_t>(wave.vertical) - 1;
  if (LIMTEST(member.A[v], member.B[v], member.upper, member.lower, wave.sg) == Inside::none) return false;
  member.terms = section_terms(section, wave.rho);
  member.NODEI = place.NODEI;
  member.NODEJ = place.NODEJ;
  member.mode = place.mode;
  member.end_moments = place.end_moments && place.mode == LoadMode::local;
  member.axes = place.axes;
  member.ramp = ramp_factor(time);
  set_motion(member, motion, time);
  return true;
}

/// The wave force scale table acts on the whole load.
void magnify(double time, MemberLoad& load) {
  if (wave.NORAMP <= 0) return;
  const auto rows = static_cast<std::size_t>(wave.NORAMP);
  const double multiplier =
      force_multiplier(std::span<const double>(force_scale.time).first(rows),
                       std::span<const double>(force_scale.multiplier).first(rows), time, force_scale.index);
  wave_member.magnification = multiplier;
  if (multiplier == 1.0) return;
  for (double& part : load) part *= multiplier;
}

}  // namespace

void WAVLD(const WaterSection& section, const MemberPlace& place, const MemberMotion& motion, double time, bool lines,
           MemberLoad& load) {
  load.fill(0.0);
  if (!prepare(section, place, motion, time)) return;
  const MemberRoutine routine = member_routine(wave.IWTY, time);
  if (routine == nullptr) return;
  routine(wave_member, time, lines, load);
  dry_added_mass(wave_member, load);
  magnify(time, load);
}

void WAVLDV(const WaterSection& section, const MemberPlace& place, const MemberMotion& motion, double time, bool lines,
            MemberLoad& load, int& told) {
  WAVLD(section, place, motion, time, lines, load);
  if (told != 0 || wave_member.segments <= 1) return;
  told = 1;
  write(units.NDOUT,
        "5X,'** warning ** more than one segment but only the first segment is used for viv calculations.'");
}

}  // namespace tidearc
