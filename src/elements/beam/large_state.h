// What input and state determination of the large displacement beam share.
#pragma once

#include "elements/beam/record.h"

namespace tidearc {

/// What stands at the two nodes of a beam.
struct NodeSurroundings {
  double temperature_I, temperature_J;
  double pressure_I, pressure_J;  ///< [force/area]
};

/// End pressures, effective axial force and natural forces of the deformations as they stand.
void recover_forces(const NodeSurroundings& at, LargeBeam& beam);

}  // namespace tidearc
