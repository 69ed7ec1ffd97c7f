// End pressures of a truss: what fluid inside it does to its reported force and its geometric stiffness.
#pragma once

#include "elements/truss/record.h"
#include "model/patterns.h"

namespace tidearc {

inline constexpr double fluid_factor = 1.0;  ///< share of the end pressures that counts  [-]

/// Mean of the two end pressures as a force: internal pressure plus node pressure, times the section's area.
inline double mean_end_pressure(const TrussRecord& truss) {
  double pressure = truss.material.pressure;
  if (patterns.have_temperatures) {
    pressure = 0.5 * ((pressure + node_pressure(truss.NODEI)) + (pressure + node_pressure(truss.NODEJ)));
  }
  return pressure * truss.section.area;
}

}  // namespace tidearc
