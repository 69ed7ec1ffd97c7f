// What both dynamic macros tell of a step on the report and on the load level history, and their envelopes.
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/arrays.h"

namespace tidearc {

void print_dynamic_step(int iterations) {
  write(units.NDOUT, "/,' RESPONSE AT TIME STEP',I6,5X,'TIME =',E12.4,5X,'ITERATIONS',I5", dynamics.NS, response.TIME,
        iterations);
}

void PRINDY(bool with_nodes, bool with_elements) {
  const TimedPhase timed("PRINDY");
  if (!with_nodes && !with_elements) return;
  ++run.NRESPR;
  write(units.NDOUT, "' RESPONSE UNDER DYNAMIC LOADS'");
  if (with_nodes) NODPRT();
  if (with_elements) print_elements();
}

void ENVUP() {
  const TimedPhase timed("ENVUP");
  update_node_envelopes();
}

void ENVOUT(bool wanted) {
  const TimedPhase timed("ENVOUT");
  if (wanted) NODENV();
}

void save_dynamic_results(std::string_view macro, int number, double level) {
  write_list(UNIT_LEVELS, response.NLSTEP - 1, response.TIME, level, response.RNORM, macro, number);
  ++output.NLEVELS;
  ++response.NLSTEP;
}

}  // namespace tidearc
