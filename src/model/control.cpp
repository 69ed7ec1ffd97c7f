// The reading that the control cards of a problem share.
#include "model/control.h"

#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

ControlFields read_control_fields() {
  ControlFields fields{};
  read(units.NDIN, "18I5", fields);
  return fields;
}

}  // namespace tidearc
