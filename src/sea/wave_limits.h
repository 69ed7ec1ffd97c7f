// Elevations between which the sea acts on members.
#pragma once

namespace tidearc {

/// Limits of a regular wave from what its card gave: an upper limit of zero is one height above mean water level, a
/// lower limit of zero or under the mudline is the mudline. Sets the mudline, and the current's limit without a
/// current.
void set_regular_limits();

/// Current alone (type 3): the depth is the deepest current level, the surface rests at mean water level. Without a
/// current all limits meet there.
void set_current_limits();

}  // namespace tidearc
