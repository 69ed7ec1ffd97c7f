// Forces half-way through a step: a determination from the kept start of the step that leaves no trace.
#include "elements/contract/pass.h"
#include "elements/contract/pass_vectors.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"

namespace tidearc {

namespace {

/// The work block gets the kept state. In core it stands on NT15, behind the reference where that is another one.
void load_kept(const ElementType& type, const Word* record) {
  if (records_on_disk()) {
    load_record(record);
    return;
  }
  if (!generations.kept_alike) FILE(units.NT15, "SKIP", 1);
  load_state(type, next_record(units.NT15).data(), record);
}

}  // namespace

void determine_midstep(int change, int velocity, int resisting, int damping) {
  const Gathering nodal = gathering();
  const double* du = given(change);
  const double* v = given(velocity);
  double* R = cleared(resisting);
  double* D = cleared(damping);
  element.EACC = {};
  element.TIME = response.TIME;
  state_log.silent = true;
  if (!records_on_disk()) FILE(units.NT15, "REWI");
  for_each_element(Pass::kept, [&](const ElementType& type, const Word* record, int) {
    load_kept(type, record);
    gather_given(nodal, du, element.EDISP);
    gather_given(nodal, v, element.EVEL);
    type.operations.state();
    type.operations.resist();
    add_to(nodal, element.ERES, R);
    if (group_damps()) add_to(nodal, element.EDAMP, D);
  });
  state_log.silent = false;
}

}  // namespace tidearc
