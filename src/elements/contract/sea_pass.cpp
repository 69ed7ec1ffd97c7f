// The pass of the sea: what waves and dynamic current load the elements with at a time.
#include "elements/contract/pass.h"
#include "elements/contract/pass_vectors.h"
#include "elements/contract/walk.h"

namespace tidearc {

void form_wave_loads(double time, bool lines, int into) {
  const Gathering nodal = gathering();
  const double* U = given(arrays.U);
  const double* velocities = given(arrays.VEL);
  const double* accelerations = given(arrays.ACC);
  double* load = cleared(into);
  element.TIME = time;
  for_each_element(Pass::sea, [&](const ElementType& type, Word* record, int) {
    if (type.operations.sea == nullptr) return;
    load_record(record);
    gather_given(nodal, U, element.EDISP);
    gather_given(nodal, velocities, element.EVEL);
    gather_given(nodal, accelerations, element.EACC);
    type.operations.sea(time, lines);
    copy_sea_words(type, record, record_words());
    add_to(nodal, element.ERES, load);
  });
}

}  // namespace tidearc
