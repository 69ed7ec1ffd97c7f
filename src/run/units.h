// Numbered units: the formatted files of a run, and the shared unit variables by which record files are named.
// Every write, flush and close is checked: a full disk ends the run in the I/O layer, with the file's name.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <type_traits>

namespace tidearc {

/// Unit numbers. Record files are addressed through these variables, because some exchange their roles during a run.
/// Written by the entry of the process and by whoever exchanges two roles.
struct UnitBlock {
  int NDIN = 5;    ///< the deck
  int NDOUT = 6;   ///< the report
  int NT1 = 1;     ///< element records, first portions as read in; reference generation of a disk job
  int NT2 = 2;     ///< next element tails of a disk job; surfaces while a pressure pattern is read
  int NT3 = 3;     ///< stiffness blocks
  int NT4 = 4;     ///< factored blocks
  int NT5 = 7;     ///< element group headers
  int NT6 = 8;     ///< dynamic solution scratch
  int NT7 = 13;    ///< solver scratch
  int NT8 = 14;    ///< solver scratch
  int NT9 = 15;    ///< solver scratch
  int NT10 = 16;   ///< static force patterns, then prescribed displacement patterns
  int NT11 = 17;   ///< save file
  int NT12 = 18;   ///< reference generation of a core job, current generation of a disk job
  int NT13 = 19;   ///< element records, second portions (tails)
  int NT14 = 20;   ///< update vectors
  int NT15 = 21;   ///< state at the start of a load step
  int NT16 = 22;   ///< fourth file of first portions in a disk job
  int TAPFRC = 0;  ///< MEMBER.FRC when it is open, else 0
};
inline UnitBlock units;
static_assert(std::is_trivially_copyable_v<UnitBlock>);

inline constexpr int UNIT_ERROR = 0;        ///< TAP.err, the error stream
inline constexpr int UNIT_TIMER = 12;       ///< timer summary
inline constexpr int UNIT_EIGEN = 24;       ///< TAP24, element records for the eigenvalue analysis
inline constexpr int UNIT_POST_TEXT = 25;   ///< TAP25
inline constexpr int UNIT_LOADS_TEXT = 27;  ///< TAModel.sac, load lines of the waves
inline constexpr int UNIT_LOADS = 30;       ///< TAModel.rlo, end forces of members
inline constexpr int UNIT_TOP = 32;         ///< TAP32, largest unbalances
inline constexpr int UNIT_STATE_LOG = 33;   ///< OVRLOAD, changes of element states
inline constexpr int UNIT_MEMBER = 34;      ///< MEMBER.FRC
inline constexpr int UNIT_LEVELS = 36;      ///< TAP.ULTFAC, load level history
inline constexpr int UNIT_WAVES = 37;       ///< TAModel.wavno
inline constexpr int UNIT_DONE = 50;        ///< TAP.OK
inline constexpr int UNIT_PROGRESS = 53;    ///< TAP53

/// How an open file begins.
enum class OpenMode {
  existing,  ///< must exist; read from its start
  position,  ///< made when missing, not cut: the first write at a position cuts what follows
  fresh,     ///< made or emptied
};

/// Opens a formatted file on a unit, 0 to 999; a unit that is open is closed first. A failure ends the process in the
/// I/O layer. A unit that is read or written without a file gets fort.<unit>. (The table of open files is the file
/// layer's own and stands in units.cpp.)
void open_formatted(int unit, const std::string& file, OpenMode mode);
/// Closes a formatted unit (no effect when it is not open); flushes and checks.
void close_formatted(int unit);
bool is_open_formatted(int unit);
void rewind_formatted(int unit);
/// Name of the file on a unit, formatted or record file; "unit n" when it has none.
std::string file_of_unit(int unit);
/// Flushes and closes every formatted unit and record file, as the last act of a process.
void flush_all_units();
/// Writes what a formatted unit still holds in its buffer, for those who follow the file while the job runs.
void flush_formatted(int unit);
/// The same for every formatted unit.
void flush_formatted_units();

/// Number (1-based) of the deck line that was read last, 0 before the first; and that line's text.
std::int64_t deck_line();
std::string_view deck_text();

/// Reads the next line of a formatted unit without its line end and without a carriage return before it; tabs are
/// returned as blanks. Of a line longer than `longest_line` columns the rest is read over. False at the end of the
/// file.
inline constexpr int longest_line = 65536;
bool next_line(int unit, std::string& line);

/// The same as a view of the unit's own copy, valid until the next record is read from the unit.
bool next_line(int unit, std::string_view& line);

/// Shows the lines of a formatted unit behind the one that was read last to `go_on`, until it returns false or the file
/// ends. Then the unit stands where it stood before: what was looked at is still to be read, and its own copy of the
/// last line holds that again (in another place, perhaps: no view of it lives on). False, with nothing looked at, for a
/// file in which there is no way back, as in a pipe.
bool look_ahead(int unit, const std::function<bool(std::string_view)>& go_on);
/// Number (1-based) of the record that was read or written last on a unit; 0 before the first.
std::int64_t record_of_unit(int unit);

/// Writes characters on a formatted unit as they stand; whole records with their line ends.
void put_text(int unit, std::string_view text);
/// What put_text is made of, for those who form a record in place: the text that a unit still holds, to which whole
/// records are appended, and then the number of records that were. Nothing else may use the unit in between.
std::string& begin_output(int unit);
void end_output(int unit, int records);

}  // namespace tidearc
