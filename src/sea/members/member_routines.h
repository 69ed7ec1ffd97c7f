// The member routines of the wave types. They differ in nothing but the kinematics, surface and surface cut that they
// call, so they are one routine over a family.
#pragma once

#include "sea/members/wave_member.h"

namespace tidearc {

/// Wave and current load on the member as WAVLD left it: wet part, limits, segments between current levels,
/// integration. Leaves the end-wet flags and the cut for the pass over dry parts, and the first and the number of
/// segments.
/// @param lines  writes the load lines of the member
/// @param load   equivalent loads are added, the correction of added mass over the wet part included; not a number
///               under a surface that is not finite
void member_waves(const WaveFamily& family, WaveMember& member, double time, bool lines, MemberLoad& load);

inline void WLAIRY(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_airy), member, time, lines, load);
}
inline void WLSTOK(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_stokes), member, time, lines, load);
}
inline void WLCURR(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_current_only), member, time, lines, load);
}
inline void WLIRR(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_irregular), member, time, lines, load);
}
inline void WLSF(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_stream), member, time, lines, load);
}
inline void WLGRID(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_grid), member, time, lines, load);
}
inline void WLLEG(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_legendre), member, time, lines, load);
}
inline void WLBLEND(WaveMember& member, double time, bool lines, MemberLoad& load) {
  member_waves(wave_family(wave_embedded), member, time, lines, load);
}

/// The routine of the wave type; of an embedded wave by its weight at the time: the irregular sea alone, the stream
/// function alone, or both.
using MemberRoutine = void (*)(WaveMember& member, double time, bool lines, MemberLoad& load);
MemberRoutine member_routine(int IWTY, double time);

/// What the mass matrix counts too much, over the dry part of the member at or below mean water level and above the
/// lower limit: one segment. Uses the flags and the cut that the member routine left.
void dry_added_mass(const WaveMember& member, MemberLoad& load);

}  // namespace tidearc
