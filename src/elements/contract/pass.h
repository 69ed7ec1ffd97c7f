// Passes over all elements: what analyses ask of the element library.
// One element at a time is current in the work block; groups and elements come in the order of the deck.
#pragma once

#include <string_view>

namespace tidearc {

/// Element input, all NELGR groups: records, location vectors, column heights, element masses and self weight.
void ELDATA();
/// Loads element records above KEDAT in a core job and prints the storage report; stops when they do not fit.
void LODELM();

/// State determination of every element from the reference generation with the increment U - U0 (pool vectors of NEQ1),
/// and the resisting forces of the new states summed into R. Sets NELCHK to the last element with a changed matrix.
/// Records on the element-state log that are not committed are dropped first.
void determine_states();
/// The current generation becomes the reference; log records so far are committed.
void take_over_states();
/// Both generations of the element states, and log bookkeeping, to and from TapeFile NT15, at its present position.
void save_states();
void recover_states();

/// Envelope values of every element back to zero, in both generations (a macro starts).
void clear_element_envelopes();
/// Results of every element of every group on the report (ELMPRT), and their envelopes (ELMENV).
void print_elements();
void print_element_envelopes();

}  // namespace tidearc
