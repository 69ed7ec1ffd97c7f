// Result and envelope lines of the truss.
#include "elements/contract/group.h"
#include "elements/truss/operations.h"
#include "elements/truss/record.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

bool first_of_group(const TrussRecord& truss) { return truss.head.number == group.NFIRST; }

void print_result_heading() {
  write(units.NDOUT,
        "/,/,/,5X,' RESULTS FOR GROUP',I3,' (THREE DIMENSIONAL TRUSS ELEMENTS), TIME =',E12.4,/,/,5X,10A4,/",
        element.IGRP, print_time(), group.TITLE);
  write(units.NDOUT,
        "1X,'ELEM',2X,'NODE-I',2X,'NODE-J',2X,'YLD',6X,'AXIAL FORCE',8X,'EXTENSION',4X,'ACC.PLAST POS',4X,"
        "'ACC.PLAST NEG'");
}

void print_envelope_heading() {
  write(units.NDOUT, "'  THREE DIMENSIONAL TRUSS ELEMENTS ',/,/,5X,10A4,/", group.TITLE);
  write(units.NDOUT,
        "1X,'ELEM',3X,'NODE',3X,'NODE',12X,'MAXIMUM AXIAL FORCES',23X,'MAXIMUM EXTENSIONS',13X,"
        "'ACCUM. PLASTIC EXTENSIONS'");
  write(units.NDOUT, "11X,'I',6X,'J',2(4X,'POSITIVE',5X,'TIME',4X,'NEGATIVE',5X,'TIME'),2(4X,A8)", "POSITIVE",
        "NEGATIVE");
}

}  // namespace

void PRNT01() {
  if (element.KPRINT < 0) return;  // the load file takes beams alone
  const TrussRecord& truss = current_record<TrussRecord>();
  if (first_of_group(truss)) print_result_heading();
  write(units.NDOUT, "I5,2I8,I5,4(1X,E16.5)", truss.head.number, truss.NODEI, truss.NODEJ, truss.KYLD, truss.FREP,
        truss.EXT, truss.PLPOS, truss.PLNEG);
}

void ENVO01() {
  const TrussRecord& truss = current_record<TrussRecord>();
  if (first_of_group(truss)) print_envelope_heading();
  write(units.NDOUT, "I5,2I7,4(E12.4,F9.3),2E12.4", truss.head.number, truss.NODEI, truss.NODEJ, truss.FMAX,
        truss.TFMAX, truss.FMIN, truss.TFMIN, truss.EXTMAX, truss.TEMAX, truss.EXTMIN, truss.TEMIN, truss.PLPOS,
        truss.PLNEG);
}

}  // namespace tidearc
