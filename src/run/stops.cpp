// The three kinds of stop, the boxes around messages, and the line on the error stream that goes with each.
#include "run/stops.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "run/tapefile.h"

namespace tidearc {

namespace {

constexpr int box_width = 130;
constexpr std::size_t longest_error_text = 60;
constexpr std::size_t routine_name_width = 6;

/// A control character would spoil the line on a terminal or end it for a reader of texts.
bool is_control(char c) { return (c >= '\0' && c < ' ') || c == '\x7F'; }

/// Runs of blanks and line ends become one blank, with none at the ends; other control characters become '?'.
std::string one_line(std::string_view words) {
  std::string line;
  for (const char c : words) {
    const bool blank = c == ' ' || c == '\n' || c == '\r' || c == '\t';
    if (!blank) {
      line += is_control(c) ? '?' : c;
    } else if (!line.empty() && line.back() != ' ') {
      line += ' ';
    }
  }
  if (!line.empty() && line.back() == ' ') line.pop_back();
  return line;
}

/// "TAModel.inp line 12, columns 1-5: ", or nothing when no deck line is meant.
std::string words_of(const DeckPlace& place) {
  const Columns columns = place.columns;
  if (columns.first < 0 || place.line < 1) return {};
  std::string text = file_of_unit(units.NDIN) + " line " + std::to_string(place.line);
  if (columns.first > 0) text += ", columns " + std::to_string(columns.first) + "-" + std::to_string(columns.last);
  return text + ": ";
}

}  // namespace

void complain(const DeckPlace& where, std::string_view words) {
  const std::string line = words_of(where) + one_line(words) + "\n";
  if (is_open_formatted(UNIT_ERROR)) {
    put_text(UNIT_ERROR, line);
  } else {
    std::fputs(line.c_str(), stderr);
  }
}

void complain(Columns where, std::string_view words) { complain(DeckPlace(deck_line(), where), words); }

void end_process(int status) {
  failure.failing = false;
  if (stop_process != nullptr) stop_process(status);
  std::exit(status);
}

void FATERR(std::string_view name) {
  std::string padded(name.substr(0, routine_name_width));
  padded.resize(routine_name_width, ' ');
  write(units.NDOUT, "'FATAL ERROR DETECTED IN ',A6,' - JOB ABORTED'", padded);
  complain(not_on_deck, "fatal error detected in " + std::string(name) +
                            ", job aborted; last deck line read: " + std::to_string(deck_line()));
  CLOSUP();
}

void ERRMSG(std::string_view text, int unit) {
  const std::string_view shown = text.substr(0, std::min(text.find('$'), longest_error_text));
  put_text(unit, " ***ERROR - " + std::string(shown) + "\n");
}

void io_failure(int unit, std::int64_t record, std::string_view cause) {
  // A second failure, while the first is being flushed, or one of the error stream itself has only stderr left.
  if (!failure.failing) {
    std::string line = "unit " + std::to_string(unit);
    if (const std::string file = file_of_unit(unit); file != line) line += ", file " + file;
    if (record > 0) line += ", record " + std::to_string(record);
    line = one_line(line + ": " + std::string(cause)).substr(0, failure.line.size() - 1);
    std::memcpy(failure.line.data(), line.c_str(), line.size() + 1);
    failure.failing = true;
    if (unit != UNIT_ERROR) {
      complain(not_on_deck, line);
      flush_formatted_units();
      flush_all_tapes();
      end_process(status_io);
    }
  }
  std::fprintf(stderr, "%s\n", failure.line.data());
  end_process(status_io);
}

void message_box(char mark, std::string_view text) {
  const std::string row = " " + std::string(box_width, mark) + "\n";
  put_text(units.NDOUT, row + std::string(text) + "\n" + row);
}

void report_data_error(const DeckPlace& where, std::string_view text) {
  put_text(units.NDOUT, "\n\n ***** DATA ERROR *****     " + std::string(text) + "\n");
  complain(where, text);
  set_fatal_flag();
  run.had_data_error = true;
}

void report_data_error(Columns where, std::string_view text) { report_data_error(DeckPlace(deck_line(), where), text); }

bool node_in_range(int node, int NUMNP, const DeckPlace& where) {
  if (node >= 1 && node <= NUMNP) return true;
  report_data_error(where, format("' NODE',I6,'  OUT OF RANGE, ENTERING CHEC MODE'", node));
  return false;
}

bool node_in_range(int node, int NUMNP, Columns where) {
  return node_in_range(node, NUMNP, DeckPlace(deck_line(), where));
}

bool component_in_range(int component, Columns where) {
  if (component >= 1 && component <= 6) return true;
  data_error(where, "' DOF',I6,'  OUT OF RANGE, ENTERING CHEC MODE'", component);
  return false;
}

}  // namespace tidearc
