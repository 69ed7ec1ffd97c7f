// The head of the wave section: what the gravity card says of the sea, and the wave control card.
#pragma once

namespace tidearc {

/// Copies gravity and water into `wave`: axes, gravity sign, mean water level, densities, acceleration of gravity.
void take_gravity();

/// Reads and echoes the wave control card and checks it. A wave type outside 0 to 8 ends the run; a code above 1 is
/// told and acts as 0, as everything but 1 does.
void read_wave_control();

/// Gravity without a direction (a misspelled word on its card): no load of the sea can be formed, so the problem is
/// only checked from now on.
void check_gravity();

}  // namespace tidearc
