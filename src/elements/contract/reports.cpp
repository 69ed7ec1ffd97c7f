// Report pages of element results and envelopes: the walk over the groups and the frames around a type's own lines.
#include "elements/contract/pass.h"
#include "elements/contract/walk.h"
#include "run/layout.h"
#include "solve/arrays.h"

namespace tidearc {

void print_elements(int print_code) {
  element.KPRINT = print_code;
  for_each_element(Pass::reading, [](const ElementType& type, const Word* record, int) {
    if (type.operations.print == nullptr) return;
    load_record(record);
    type.operations.print();
  });
  element.KPRINT = 1;
}

void print_element_envelopes() {
  int titled = 0;
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    if (type.operations.envelope == nullptr) return;
    load_record(record);
    if (titled != element.IGRP) {
      write(units.NDOUT, "/,'1',54('*'),/,' RESPONSE ENVELOPES, ELEMENT GROUP',I3,' TIME =',E11.4,/,55('*'),/,/",
            element.IGRP, print_time());
      titled = element.IGRP;
    }
    type.operations.envelope();
  });
}

}  // namespace tidearc
