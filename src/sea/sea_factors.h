// At what factors the loads of the sea act on the elements now: what reported member forces leave out of end forces.
#pragma once

#include <type_traits>

namespace tidearc {

/// Set by whoever forms the applied load (LODLVL, RDYNAM); read by state determinations and prints.
struct SeaFactors {
  double wave = 0.0;      ///< of the wave loads that stand in the element records; 0 outside dynamic analyses   [-]
  double buoyancy = 0.0;  ///< total factor of the buoyancy pattern                                               [-]
  double current = 0.0;   ///< total factor of the static current pattern                                         [-]
};
inline SeaFactors sea_factors;
static_assert(std::is_trivially_copyable_v<SeaFactors>);

}  // namespace tidearc
