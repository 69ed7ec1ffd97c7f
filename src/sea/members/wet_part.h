// Which part of a member the water loads: above and below limits, in the force band, between current levels.
//
// Levels are global elevations on the vertical axis; sg is the component of gravity on it. A level in a limit is inside
// and wet.
#pragma once

#include <span>

#include "sea/members/wave_member.h"

namespace tidearc {

/// How much of a chord lies between two limits.
enum class Inside : int { whole = -1, part = 0, none = 1 };

/// True when `level` is on the wet side of `limit`.
inline bool WETTEST(double level, double limit, double sg) { return (level - limit) * sg >= 0.0; }

/// Compares both ends with the limits: none when both lie above or both below.
Inside LIMTEST(double zA, double zB, double upper, double lower, double sg);

/// The part of a chord from level zA to level zB that lies between the limits, as fractions of that chord. A part
/// without length is none.
Inside CLIP(double zA, double zB, double upper, double lower, double sg, Stretch& kept);

/// Splits a chord between depths hA and hB at the current levels strictly between them.
/// @param levels  depths under mean water level, positive downward
/// @param parts   segment lengths in the order of the chord, as fractions of it that add to 1; room for one more than
///                there are levels
/// @return the number of segments, at least 1
int LEVELS(std::span<const double> levels, double hA, double hB, std::span<double> parts);

}  // namespace tidearc
