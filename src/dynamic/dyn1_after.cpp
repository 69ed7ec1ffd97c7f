// What follows a step of an analysis with variable steps: prints and saves that fall due by steps or by time, and the
// last ones.
#include "dynamic/dyn1.h"
#include "dynamic/step.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

void print_response(bool nodes, bool elements) {
  PRINDY(nodes, elements);
  dyn1.out.nodes = dyn1.out.nodes || nodes;
  dyn1.out.elements = dyn1.out.elements || elements;
}

void print_envelopes(bool wanted) {
  ENVOUT(wanted);
  dyn1.out.envelopes = dyn1.out.envelopes || wanted;
}

void save_response() {
  save_dynamic_results("DYN1", dynamics.NDYN1, dynamics.ULTLVL);
  dyn1.out.saved = true;
}

struct Prints {
  bool nodes = false;
  bool elements = false;
  bool envelopes = false;
};

Prints PRTSET() {
  const TimedPhase timed("PRTSET");
  const Dyn1Cards& c = dyn1.cards;
  return {output_due(c.nodal, response.TIME, dyn1.due.nodal), output_due(c.elements, response.TIME, dyn1.due.elements),
          output_due(c.envelopes, response.TIME, dyn1.due.envelopes)};
}

/// Saves at their intervals. The file of results for a restart gets its records here when there is such a file; the
/// load level history gets its line with a save for the post-processor in any case.
void RSTRT6() {
  const TimedPhase timed("RSTRT6");
  output_due(dyn1.cards.restart, response.TIME, dyn1.due.restart);
  if (output_due(dyn1.cards.post, response.TIME, dyn1.due.post)) save_response();
}

/// The macro has left a limit and the accepted state is to be seen.
bool shows_last_state(Dyn1End end) {
  return end == Dyn1End::unbalance || end == Dyn1End::displacement || end == Dyn1End::step_size;
}

}  // namespace

void start_dyn1_outputs() {
  const OutputCount start{0, response.TIME};
  dyn1.due = {start, start, start, start, start};
  dyn1.out = {};
}

void put_out_dyn1_step() {
  print_dynamic_step(dyn1.NSUB);
  const Prints wanted = PRTSET();
  print_response(wanted.nodes, wanted.elements);
  write_dynamic_top();
  print_envelopes(wanted.envelopes);
  RSTRT6();
}

void put_out_dyn1_end(Dyn1End end) {
  if (shows_last_state(end)) print_response(!dyn1.out.nodes, !dyn1.out.elements);
  print_envelopes(!dyn1.out.envelopes);
  if (shows_last_state(end) && !dyn1.out.saved) save_response();
}

}  // namespace tidearc
