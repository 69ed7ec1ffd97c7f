// The table of a static analysis on the progress file, and the line of each saved step on the load level history.
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solver.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

void write_progress_legend() {
  const int unit = UNIT_PROGRESS;
  write(unit, "/,5X,'STATIC MACRO OUTPUT INFORMATION FOR SEGMENT ',I2", segment.ISEG);
  write(unit, "5X,'(1) - CURRENT STEP NUMBER'");
  write(unit, "5X,'(2) - CURRENT ITERATION NUMBER (MAX=',I2,')'", segment.MAXIT);
  write(unit, "5X,'(3) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)'");
  write(unit, "5X,'(4) - LOAD LEVEL (NORMALLY ONLY UP TO 1.0)'");
  write(unit, "5X,'(5) - LOAD INCREMENT LEVEL (<= 1.0)'");
  write(unit, "5X,'(6) - NORM OF APPLIED LOAD'");
  write(unit, "5X,'(7) - NORM OF OUT-OF-BALANCE LOAD (MAX=',E8.3,')'", segment.TOLU);
  write(unit, "5X,'(8) - STATE UPDATE CODE'");
  write(unit, "5X,'(9) - STIFFNESS UPDATE CODE'");
  write(unit, "5X,'(10)- TOTAL NUMBER OF STIFFNESS REFORMULATIONS'");
  write(unit, "5X,'(11)- ARC LENGTH'");
  write(unit, "5X,'(12)- CURRENT STIFFNESS PARAMETER'");
  write(unit, "5X,'(13)- NUMBER OF NEGATIVE STIFFNESS DIAGONALS'");
  write(unit, "/,'   (1) (2) (3)    (4)    (5)     (6)     (7)    (8) (9) (10)','     (11)       (12)      (13)'");
  write(unit, "'  STEP ITR LOAD   LOAD  INCRE  APPLIED UNBALANC STA STF STIF','   CURRENT    CURRENT     NEG.'");
  write(unit, "'    #   #  STEP  ----LEVEL--- ---LOAD(NORM)---- UPDATED   # ',' ARC-LENGTH  STIFFNESS    DIAGS.'");
}

void write_progress_row() {
  write(UNIT_PROGRESS, "I7,I3,I5,1X,F7.4,1X,F7.5,1X,E8.3,1X,E8.3,1X,A3,1X,A3,I5,2G13.5,I5", step.NS, step.NI,
        response.NLSTEP, response.LEVEL, statics.STEPF, step.APPLIED, response.RNORM, step.STACOD, step.STFCOD,
        solver.NSTUPD, scaling.SARC, scaling.CSP, solver.NNEG);
  flush_formatted(UNIT_PROGRESS);  // whoever follows the run sees each iteration
}

void write_segment_end(EndCode end) {
  const int n = segment.ISEG;
  const int unit = UNIT_PROGRESS;
  switch (end) {
    case EndCode::none:
      break;
    case EndCode::input_errors:
      write(unit, "5X,'SEGMENT ',I2,' OF CURRENT STATIC MACRO TERMINATED:',' FATAL ERRORS FOUND IN INPUT CARDS'", n);
      break;
    case EndCode::level_reached:
      write(unit, "5X,'SEGMENT ',I2,' OF CURRENT STATIC MACRO COMPLETED:',' MAXIMUM LOAD LEVEL REACHED'", n);
      break;
    case EndCode::steps_used:
      write(unit, "5X,'SEGMENT ',I2,' OF CURRENT STATIC MACRO COMPLETED:',' MAXIMUM ALLOWABLE NUMBER OF STEPS REACHED'",
            n);
      break;
    case EndCode::iterations_used:
      write(unit,
            "5X,'SEGMENT ',I2,' OF CURRENT STATIC MACRO TERMINATED:',' MAX. ALLOWABLE NUMBER OF ITERATIONS REACHED'",
            n);
      break;
    case EndCode::attempts_used:
      write(unit,
            "5X,'SEGMENT ',I2,' OF CURRENT STATIC MACRO TERMINATED:',"
            "' REACHING MAX. ALLOWABLE NO. OF ATTEMPTS IN REDUCING STEP SIZE BELOW THE SMALLEST ALLOWABLE)'",
            n);
      break;
  }
}

void save_step_results(double level) {
  write_list(UNIT_LEVELS, response.NLSTEP - 1, response.TIME, level, response.RNORM, "STAT", response.NMACRO);
  ++output.NLEVELS;
  ++response.NLSTEP;
  step.since_save = 0;
}

}  // namespace tidearc
