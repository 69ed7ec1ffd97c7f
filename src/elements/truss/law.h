// The truss's force law from its material, section, length and initial force: what input computes once.
#pragma once

#include "elements/truss/record.h"

namespace tidearc {

/// Sets SK1, SK2, FYT, FYC, DY, FCURVE, OVTOL and DUCTL of a record from its material, section and length.
void form_truss_law(TrussRecord& truss);

/// State of a record under an initial force (0: none): forces, extension and code. False when the curve bears the force
/// at no finite extension.
bool set_initial_state(TrussRecord& truss, double force);

}  // namespace tidearc
