// The truss in water: its place and section as the sea sees them, and what the sea gives to its force and stiffness.
#pragma once

#include <cstddef>

#include "elements/truss/record.h"

namespace tidearc {

/// Loads of still water and static current into the record and their pattern vectors, added mass into the masses.
/// Ends, length and local axes are known.
void take_still_water(TrussRecord& truss);

/// What the equivalent loads of the sea, at the factors at which they act, leave out of the reported force: half of
/// their sum along DIR.
double axial_part_of_sea(const TrussRecord& truss);

/// Stiffness of a member that the surface cuts: of buoyancy against a vertical motion.
struct WaterPlane {
  std::size_t freedom = 0;  ///< of the six, from 0
  double stiffness = 0.0;   ///< 0 unless buoyancy acts on the member and exactly one end is wet  [force/length]
};
WaterPlane water_plane(const TrussRecord& truss);

}  // namespace tidearc
