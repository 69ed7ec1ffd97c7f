// The event pass: how much of an increment the elements take up to the first change of stiffness.
#include "elements/contract/gather.h"
#include "elements/contract/pass.h"
#include "elements/contract/walk.h"
#include "solve/arrays.h"

namespace tidearc {

FirstEvent first_event(int increment) {
  FirstEvent first;
  const Gathering nodal = gathering();
  const double* du = equation_vector(increment).data();
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    if (type.operations.event == nullptr) return;
    load_record(record);
    gather(nodal, location_vector(), group.NDOF, du, element.EDISP.data());
    const ElementEvent event = type.operations.event();
    if (event.factor < first.EFAC) first = {event.factor, event.code, element.IGRP, record_words()[0]};
  });
  return first;
}

}  // namespace tidearc
