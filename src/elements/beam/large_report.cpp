// Result and envelope lines of the large displacement beams, types 2 and 27.
#include <array>

#include "elements/beam/natural.h"
#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/beam/report.h"
#include "elements/beam/sea.h"

namespace tidearc {

namespace {

void print_envelope(const char* title) {
  const LargeBeam& beam = current_record<LargeBeam>();
  print_beam_envelope(title, beam.head.number, beam.NODEI, beam.NODEJ, beam.envelope);
}

}  // namespace

void PRNT02() {
  const LargeBeam& beam = current_record<LargeBeam>();
  std::array<double, 12> forces;
  natural_to_local(beam.QNAT, beam.XL, forces);
  print_beam_result(" (NONLINEAR ELASTIC BEAM-COLUMN ELEMENTS) TIME =", beam.head.number, beam.NODEI, beam.NODEJ,
                    reported_forces(forces, beam.sea, beam.TELEM), shown_deformations(beam.ENAT));
}

void ENVO02() { print_envelope("  LARGE DISPLACEMENT BEAM ELEMENTS "); }
void ENVO27() { print_envelope("  3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS "); }

}  // namespace tidearc
