// The beams in water: their place and section as the sea sees them, the loads that it gives to their nodes, and what it
// leaves of their end forces.
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "elements/beam/local_axes.h"
#include "elements/beam/record.h"
#include "sea/members/member.h"

namespace tidearc {

/// What the sea asks of a beam, of whatever record; refers to the record.
struct BeamInSea {
  int NODEI, NODEJ;
  EndOffsets ECC;
  std::span<const double, 9> axes;  ///< local axes as they stand
  const BeamWater& water;
  const GeneralCoefficients& general;
  int KWAVE, NGAUSS;  ///< wave integration points of the element and of the group
  int KBUOY;
  bool end_moments;
  bool frame_turns;  ///< the record keeps its loads in master axes
};
/// Of a record in which the names are those of all beam records.
template <class Record>
BeamInSea in_sea(const Record& beam, const BeamWater& water, int NGAUSS, bool frame_turns = false) {
  return {beam.NODEI, beam.NODEJ, beam.ECC,   beam.TELEM,     water,      beam.general,
          beam.KWAVE, NGAUSS,     beam.KBUOY, beam.KFEM == 1, frame_turns};
}
inline BeamInSea in_sea(const LinearBeamRecord& beam) { return in_sea(beam, beam.water, beam.NGAUSS); }
inline BeamInSea in_sea(const WaveBeamRecord& beam) { return in_sea(beam, beam.water, beam.NGAUSS); }
inline BeamInSea in_sea(const LargeBeam& beam) { return in_sea(beam, beam.section.water, beam.NSUB, true); }

/// At input: loads of buoyancy and static current into their pattern vectors and into `kept` of the record (null where
/// it keeps none), added mass into the masses.
void take_still_water(const BeamInSea& beam, BeamSea* kept);

/// End forces as reports tell them, local axes: the internal ones less the equivalent loads of the sea at the factors
/// at which they act, so that the ends stand in equilibrium with what the member carries. `sea` in local axes.
std::array<double, 12> reported_forces(std::span<const double, 12> internal, const BeamSea& sea);
/// The same of a member whose frame turns: `sea` in master axes, `axes` the frame as it stands.
std::array<double, 12> reported_forces(std::span<const double, 12> internal, const BeamSea& sea,
                                       std::span<const double, 9> axes);

}  // namespace tidearc
