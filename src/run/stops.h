// The three kinds of stop, and the boxes around messages.
//
//   data error:  printed on the report, RUNMOD becomes 1, reading goes on           -> exit status 3
//   fatal:       message, then CLOSUP, directly or through FATERR                   -> exit status 1
//   I/O failure: one line on the error stream, files flushed, no close-down         -> exit status 2
//
// Beside the words on the report, TAP.err gets one line that a person can act on: deck line, columns, what is wrong.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"

namespace tidearc {

enum ExitStatus : int {
  status_good = 0,        ///< the STOP card was reached, without data errors or terminated macros
  status_fatal = 1,       ///< a fatal message, a limit or a direct stop
  status_io = 2,          ///< a stop of the I/O layer
  status_data_error = 3,  ///< STOP reached, but a problem had data errors
  status_terminated = 4,  ///< STOP reached, but a macro ended as TERMINATED
};

/// Columns of the deck line read last that a message is about; {0, 0} when it is about the line as a whole, {-1, -1}
/// when it is not about a deck line.
struct Columns {
  int first = 0;
  int last = 0;
};
inline constexpr Columns whole_line{0, 0};
inline constexpr Columns not_on_deck{-1, -1};

/// One line on the error stream (unit 0 when it is open as a formatted unit, else the process's own):
/// "TAModel.inp line 12, columns 1-5: words" (runs of blanks and line ends in `words` become one blank, any other
/// control character, which may come from the deck, a question mark).
void complain(Columns where, std::string_view words);

/// A place on a deck line that was read before others, for whoever finds out later that something is wrong there.
struct DeckPlace {
  DeckPlace(std::int64_t number, Columns where) : line(number), columns(where) {}
  std::int64_t line;  ///< number as deck_line() gave it when the line was read, 1-based
  Columns columns;
};
/// The same about that line.
void complain(const DeckPlace& where, std::string_view words);

/// The one way out of the process besides the return of main. Ends it at once through `stop_process`; whoever calls it
/// has flushed or closed the files.
[[noreturn]] void end_process(int status);
/// What ends the process: std::exit, unless a test or a fuzz target puts a procedure here that throws.
inline void (*stop_process)(int status) = nullptr;

/// Message "FATAL ERROR DETECTED IN name - JOB ABORTED" on the report (name in six columns), then CLOSUP. The line on
/// the error stream tells how far the deck was read, not where the error is: that stands in the line before it.
[[noreturn]] void FATERR(std::string_view name);
/// The only close-down path; never returns; exit status 1 unless the STOP card has been read. Defined on the roof.
[[noreturn]] void CLOSUP();
/// " ***ERROR - " and the text up to its first $, at most 60 characters; the run goes on.
void ERRMSG(std::string_view text, int unit);

/// Ends the process in the I/O layer: "unit u, file, record r: cause" on the error stream (without the file when the
/// unit has none, without the record when `record` is below 1); open files are flushed, none is deleted.
[[noreturn]] void io_failure(int unit, std::int64_t record, std::string_view cause);

/// Keeps the words of an I/O failure while files are being flushed, so that a second failure (a full disk that takes
/// TAP.err along) cannot hide the first. Written by io_failure and end_process.
struct FailureBlock {
  bool failing = false;          ///< an I/O failure is being told
  std::array<char, 512> line{};  ///< its words, ended by a zero
};
inline FailureBlock failure;
static_assert(std::is_trivially_copyable_v<FailureBlock>);

/// A row of 130 `mark` characters above and below the lines of `text`, on the report.
void message_box(char mark, std::string_view text);
inline void warning_box(std::string_view text) { message_box('W', text); }
inline void fatal_box(std::string_view text) { message_box('F', text); }

/// The end of data_error, when its text has been formed.
void report_data_error(const DeckPlace& where, std::string_view text);
void report_data_error(Columns where, std::string_view text);

/// ` ***** DATA ERROR *****` with a text on the report, a line on the error stream, and data check mode from now on.
/// The layout gives what stands behind the five blanks, e.g. "' NODE',I6,'  OUT OF RANGE, ENTERING CHEC MODE'".
template <class... Items>
void data_error(Columns where, Layout<Items...> layout, const Items&... items) {
  report_data_error(where, format(layout, items...));
}

/// The shared error of a node number outside 1..NUMNP where a node is required: true when `node` is inside, else the
/// data error is reported and the command (or list entry) is to be skipped.
bool node_in_range(int node, int NUMNP, Columns where);
/// The same for a node of a line that was read before others.
bool node_in_range(int node, int NUMNP, const DeckPlace& where);
/// The same for a component outside 1 to 6.
bool component_in_range(int component, Columns where);

}  // namespace tidearc
