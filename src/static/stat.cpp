// The STAT macro: its card, its load segments one after the other, its end.
#include <array>

#include "elements/contract/state_log.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/units.h"
#include "sea/sea_factors.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/solver.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

/// Everything is formed anew: full assembly, phase code 1, counters at 0, node envelopes at zero. Elements keep
/// theirs. The structure is at rest.
void start_analysis() {
  response.TIME = ZERO;
  response.RNORM = ZERO;
  for (const int motion : {arrays.VEL, arrays.ACC}) clear_vector(motion);
  sea_factors.wave = ZERO;  // waves belong to dynamic analyses
  solver.KFORM = 1;
  solver.KRESET = 1;
  solver.NELCHK = 1;  // the assembly takes all elements while KRESET is set
  statics.ARC = ZERO;
  scaling = {};
  step.counters = {};
  step.formed = false;
  forget_pairs();
  clear_node_envelopes();
}

void read_macro_card() {
  std::array<char, 72> label{};
  read(units.NDIN, "I5,3X,18A4", segment.NSEG, label);
  put_text(units.NDOUT, "\n");
  write_framed(" STATIC ANALYSIS CONTROL INFORMATION", '*', 35);
  write(units.NDOUT, "/,5X,'NUMBER OF ANALYSIS SEGMENTS .................... =',I5", segment.NSEG);
  write(units.NDOUT, "5X,'ANALYSIS LABEL ...........................',1X,18A4", label);
  ++response.NMACRO;
  write(UNIT_PROGRESS, "1X,18A4,' - STATIC ANALYSIS'", label);
  write(UNIT_PROGRESS, "5X,'START OF STATIC MACRO: NUMBER = ',I2", response.NMACRO);
}

void end_macro() {
  if (executing()) {
    write(UNIT_PROGRESS, "5X,'STATIC MACRO NUMBER ',I2,' COMPLETED:',' MAXIMUM NUMBER OF SEGMENTS REACHED'",
          response.NMACRO);
    return;
  }
  write(UNIT_PROGRESS, "5X,'STATIC MACRO NUMBER ',I2,' TERMINATED:',' FATAL ERRORS DETECTED'", response.NMACRO);
  if (!run.check_run) run.had_terminated_macro = true;
}

}  // namespace

void STAT() {
  if (executing()) {
    open_state_log();
    start_analysis();
  }
  read_macro_card();
  if (!executing()) write(UNIT_PROGRESS, "5X,'FATAL ERRORS FOUND BEFORE THIS STATIC ANALYSIS MACRO'");
  for (segment.ISEG = 1; segment.ISEG <= segment.NSEG; ++segment.ISEG) {
    const bool was_executing = executing();
    const bool sound = SEGIN();
    if (!sound && was_executing) write_segment_end(EndCode::input_errors);
    if (executing()) walk_segment();
  }
  end_macro();
}

}  // namespace tidearc
