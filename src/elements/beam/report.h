// Result and envelope tables that all beam types share.
#pragma once

#include <span>

#include "elements/beam/envelope.h"

namespace tidearc {

/// One element of the result print: end forces as they act on the element and the deformations beside them, local axes,
/// six of end I, then six of end J. The first element of the group brings the heading with the words of its title. With
/// print code -1 nothing goes on the report; at a positive time the forces go onto the load file.
void print_beam_result(const char* title, int number, int NODEI, int NODEJ, std::span<const double, 12> forces,
                       std::span<const double, 12> deformations);

/// One element of the envelope print, eight lines; the first element of the group brings the heading.
void print_beam_envelope(const char* title, int number, int NODEI, int NODEJ, const BeamEnvelope& envelope);

}  // namespace tidearc
