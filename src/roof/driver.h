// The run: problems one after the other, and in each the macro cards in the order of the deck.
#pragma once

namespace tidearc {

/// Allocates the work array, runs every problem of the deck to its NONE card, and releases the array. Returns when the
/// STOP card has been read.
void DRIVER();

}  // namespace tidearc
