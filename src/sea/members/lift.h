// Lift of a member that sheds vortices: an alternating force across the flow, added to the wave load of its first
// segment, and what drag grows by where the member vibrates.
#pragma once

#include "sea/members/member.h"
#include "sea/members/wake.h"

namespace tidearc {

/// Adds the load of the member's wakes to the wave load that WAVLDV has just formed for it; reads what that left in
/// `wave_member`. Force limits, ramp and magnification are those of the wave load; load lines do not have it.
/// @param D       diameter in water                                              [length]
/// @param stream  a number of the member's own, for its random numbers
/// @param time    that of the wave load                                               [s]
/// @param wake    state of the wakes, all zero before the first call; belongs to no generation of states
/// @param lift    gets the load of the wakes, as in `load`
/// @param load    of the waves, in local axes; gets the load of the wakes added
void add_vortex_load(const WakeLaw& law, double D, int stream, double time, WakeState& wake, MemberLoad& lift,
                     MemberLoad& load);

/// Kinematic viscosity of sea water in the deck's units of length, of which `g` is told; time in seconds.
double water_viscosity(double g);

}  // namespace tidearc
