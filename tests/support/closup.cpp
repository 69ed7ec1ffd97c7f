// The close-down for tests of the lower floors: it only ends the process.
#include "run/stops.h"

namespace tidearc {
void CLOSUP() { end_process(status_fatal); }
}  // namespace tidearc
