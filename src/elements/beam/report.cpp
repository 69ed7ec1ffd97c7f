// Result and envelope tables of the beams.
#include "elements/beam/report.h"

#include <array>
#include <string>

#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/beam/sea.h"
#include "elements/contract/group.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

bool first_of_group(int number) { return number == group.NFIRST; }

/// End of a title's line, the group's own title, and a blank line.
std::string group_title() { return format("/,/,5X,10A4,/", group.TITLE) + '\n'; }

void print_result_heading(const char* title) {
  const std::string words =
      format("/,/,/,5X,' RESULTS FOR GROUP',I3", element.IGRP) + title + format("E12.4", print_time());
  put_text(units.NDOUT, words + group_title());
  write(units.NDOUT,
        "1X,'ELEM',3X,'NODE',4X,'--------------------------FORCES------------------------',4X,"
        "'----------------------DISPLACEMENTS---------------------'");
  write(units.NDOUT,
        "1X,'NAME',12X,'AXIAL',3X,'SHEAR-2',3X,'SHEAR-3',3X,'TORSION',2X,'MOMENT-2',2X,'MOMENT-3',5X,'AXIAL',3X,"
        "'SHEAR-2',3X,'SHEAR-3',3X,'TORSION',5X,'ROT-2',5X,'ROT-3'");
}

void print_envelope_heading(const char* title) {
  put_text(units.NDOUT, title + group_title());
  write(units.NDOUT,
        "1X,'ELEM',3X,'NODE',17X,'-----------------FORCES AND DEFORMATIONS---------------',6X,"
        "'-------------RESPECTIVE TIMES-------------'");
  write(units.NDOUT,
        "29X,'AXIAL',3X,'SHEAR-2',3X,'SHEAR-3',3X,'TORSION',2X,'MOMENT-2',2X,'MOMENT-3',6X,'T1',6X,'T2',6X,'T3',6X,"
        "'T4',6X,'T5',6X,'T6'");
}

std::span<const double> six(const double (&values)[12], std::size_t end) { return {values + 6 * end, 6}; }

/// The three lines of an end behind its first one.
void print_deformations(const Extremes& of, std::size_t end) {
  write(units.NDOUT, "13X,'DEFOR     ',1X,6(E10.2),6(F8.3)", six(of.largest, end), six(of.largest_time, end));
}

void print_smallest(const BeamEnvelope& e, std::size_t end) {
  write(units.NDOUT, "13X,'FORCE(MIN)',1X,6(E10.2),6(F8.3)", six(e.forces.smallest, end),
        six(e.forces.smallest_time, end));
  write(units.NDOUT, "13X,'DEFOR     ',1X,6(E10.2),6(F8.3)", six(e.deformations.smallest, end),
        six(e.deformations.smallest_time, end));
}

/// Axial and shear forces of both ends onto the load file.
void write_end_forces(int number, int NODEI, int NODEJ, std::span<const double, 12> forces) {
  const std::array<double, 6> written = {forces[0], forces[1], forces[2], forces[6], forces[7], forces[8]};
  write_member_loads(number, NODEI, NODEJ, written);
}

}  // namespace

void print_beam_result(const char* title, int number, int NODEI, int NODEJ, std::span<const double, 12> forces,
                       std::span<const double, 12> deformations) {
  if (element.KPRINT < 0) {
    if (print_time() > 0.0) write_end_forces(number, NODEI, NODEJ, forces);
    return;
  }
  if (first_of_group(number)) print_result_heading(title);
  write(units.NDOUT, "I5,1X,I6,12(E10.2)", number, NODEI, std::span<const double>(forces.first<6>()),
        std::span<const double>(deformations.first<6>()));
  write(units.NDOUT, "6X,I6,12(E10.2)", NODEJ, std::span<const double>(forces.last<6>()),
        std::span<const double>(deformations.last<6>()));
}

void print_beam_envelope(const char* title, int number, int NODEI, int NODEJ, const BeamEnvelope& envelope) {
  if (first_of_group(number)) print_envelope_heading(title);
  write(units.NDOUT, "I5,1X,I6,1X,'FORCE(MAX)',1X,6(E10.2),6(F8.3)", number, NODEI, six(envelope.forces.largest, 0),
        six(envelope.forces.largest_time, 0));
  print_deformations(envelope.deformations, 0);
  print_smallest(envelope, 0);
  write(units.NDOUT, "5X,1X,I6,1X,'FORCE(MAX)',1X,6(E10.2),6(F8.3)", NODEJ, six(envelope.forces.largest, 1),
        six(envelope.forces.largest_time, 1));
  print_deformations(envelope.deformations, 1);
  print_smallest(envelope, 1);
}

void PRNT03() {
  const LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  print_beam_result(" (LINEAR BEAM ELEMENTS) TIME =", beam.head.number, beam.NODEI, beam.NODEJ,
                    reported_forces(beam.F, beam.sea), beam.U);
}

void ENVO07() {
  const WaveBeamRecord& beam = current_record<WaveBeamRecord>();
  const BeamEnvelope envelope{beam.loads, {}};
  print_beam_envelope("  LINEAR BEAM WAVE ELEMENTS ", beam.head.number, beam.NODEI, beam.NODEJ, envelope);
}

void ENVO03() {
  const LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  print_beam_envelope("  LINEAR BEAM ELEMENTS ", beam.head.number, beam.NODEI, beam.NODEJ, beam.envelope);
}

}  // namespace tidearc
