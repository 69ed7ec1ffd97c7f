// Reading of one dynamic load record.
#pragma once

#include "model/records.h"

namespace tidearc {

/// Reads the cards of record `number` (1-based) of a kind, echoes them, fills its row of the tables from the deck or
/// from the file that the cards name, and prints the points when they ask for it. `most_points` is the limit as the
/// control card of the problem has it. Closes the run down when the points cannot be read.
void read_load_record(RecordKind kind, int number, int most_points);

}  // namespace tidearc
