// What the end of a run tells. CLOSUP itself is declared with the stops, because every floor may call it.
#pragma once

#include "run/run_block.h"
#include "run/stops.h"

namespace tidearc {

/// Exit status of a close-down. RUNMOD 3 says that the STOP card was read, the only good way to end: then data errors
/// of any problem count before terminated macros. Every other way to the close-down is a fatal one.
ExitStatus exit_status(const RunBlock& ended);

}  // namespace tidearc
