// The start of the process: floating-point control, command line, files.
#pragma once

#include <string_view>

namespace tidearc {

/// Everything that happens before the first problem: an old TAP.OK is removed, denormals are set to zero, the command
/// line's pool size is read, deck and report are opened, the clocks' bases are stored, the work files are opened. A
/// missing deck ends the process in the I/O layer before any file is made.
/// @param argument  first argument of the command line, empty when there is none
void start_process(std::string_view argument);

/// Denormal results are flushed to zero and denormal inputs count as zero, for this thread from now on.
void set_denormals_to_zero();

/// Words of the work array that an argument asks for.
/// @return millions of words times 1000000 for "800M" (at most 1500), else the default of 1500 million words; a
/// negative
///         number gives no words
int pool_words(std::string_view argument);

void STDOPN();  ///< opens the deck, which must exist, and the report, emptied
void FILOPN();  ///< redirects the error stream to TAP.err, emptied, and opens the work files

/// Closes every file, gives the work array back and sets every shared block to its first state, so that a process (a
/// test, a fuzz target) can run another deck as if it were the first.
void reset_process();

}  // namespace tidearc
