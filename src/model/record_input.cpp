// One dynamic load record: heading and control cards, echo, points of a table or of a sine function, list.
#include "model/record_input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <system_error>

#include "model/control.h"
#include "model/record_layout.h"
#include "model/record_points.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

constexpr int UNIT_RECORD = 63;  ///< the file of a record's points, while they are read
constexpr int first_column = 3;  ///< of the tables: the first point

/// What differs between the kinds in words.
struct KindWords {
  std::string_view name;
  std::string_view read_error;
  std::string_view list_heading;
  std::string_view column;
};
constexpr std::array<KindWords, 3> kind_words{
    {{"GROUND ACCELERATION RECORD", "     PROGRAM STOPS DUE TO DATA ERROR IN READING GROUND MOTION RECORD",
      "GROUND ACCELERATIONS AS INPUT AND SCALED", "ACCEL"},
     {"DYNAMIC FORCE RECORD", "     PROGRAM STOPS DUE TO DATA ERROR IN READING DYNAMIC FORCE RECORD",
      "RECORD AS INPUT AND SCALED", "FORCE"},
     {"IMPOSED DISPLACEMENT HISTORY RECORD", "     PROGRAM STOPS DUE TO DATA ERROR IN READING DISPLACEMENT RECORD",
      "RECORD AS INPUT AND SCALED", "VALUE"}}};

/// A record on its way into the tables.
struct LoadRecord {
  RecordKind kind = RecordKind::ground;
  int number = 0;
  std::array<char, 60> title{};
  std::array<char, 20> layout{};
  std::int64_t heading_line = 0;  ///< of the deck
  std::int64_t control_line = 0;
  int points = 0;
  int print = 0;
  double interval = 0.0;  ///< 0: the points bring their times       [s]
  double scale = 1.0;     ///< [-]
  int file_flag = 0;      ///< 1: the points stand in a file
  std::string file = {};  ///< its name, empty when the points are on the deck
  int further = 0;
  SineWave sine{};

  const KindWords& words() const { return kind_words[static_cast<std::size_t>(kind)]; }
  RealTable table(int index) const { return pool.reals(index, record_table(kind).rows, dynamic_loads.MXPNT); }
  double& time(int point) const { return table(record_table(kind).time)(number, point + first_column - 1); }
  double& value(int point) const { return table(record_table(kind).value)(number, point + first_column - 1); }
};

std::string_view without_blanks_behind(std::string_view text) {
  const std::size_t last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string_view() : text.substr(0, last + 1);
}

/// The told line, the line that says which record and where, and the close-down.
[[noreturn]] void stop_record(const LoadRecord& record, std::string_view told, const std::string& where) {
  put_text(units.NDOUT, "\n" + std::string(told) + "\n     " + std::string(record.words().name) +
                            format("I5", record.number) + ", " + where + "\n");
  CLOSUP();
}

/// The same for something on a card.
[[noreturn]] void stop_on_card(const LoadRecord& record, std::string_view told, const DeckPlace& place,
                               const std::string& cause) {
  complain(place, std::string(record.words().name) + " " + std::to_string(record.number) + ": " + cause);
  stop_record(record, told, "CARD" + format("I7", static_cast<int>(place.line)));
}

/// The same for something among the points, at the line read last.
[[noreturn]] void stop_at_points(const LoadRecord& record, std::string_view told, Columns columns,
                                 const std::string& cause) {
  if (record.file.empty()) stop_on_card(record, told, DeckPlace(deck_line(), columns), cause);
  const std::int64_t line = record_of_unit(UNIT_RECORD);
  std::string place = "file " + record.file + " line " + std::to_string(line);
  if (columns.first > 0) place += ", columns " + std::to_string(columns.first) + "-" + std::to_string(columns.last);
  complain(not_on_deck,
           place + ": " + std::string(record.words().name) + " " + std::to_string(record.number) + ": " + cause);
  stop_record(record, told, "FILE " + record.file + ", LINE" + format("I7", static_cast<int>(line)));
}

[[noreturn]] void stop_on_points(const LoadRecord& record, const std::string& cause) {
  stop_at_points(record, record.words().read_error, whole_line, cause);
}

// --- cards ----------------------------------------------------------------------------------------------------------

void read_heading(LoadRecord& record) {
  read(units.NDIN, "A60,A20", record.title, record.layout);
  record.heading_line = deck_line();
}

void check_count(LoadRecord& record, int most_points) {
  record.control_line = deck_line();
  if (record.points < 0) record.points = 0;
  if (record.points <= most_points) return;
  stop_on_card(record,
               "     INPUT ERROR! PROGRAM STOPS\n NUMBER OF RECORD VALUES EXCEEDS THE MAXIMUM ALLOWABLE NUMBER.",
               {deck_line(), {1, 5}},
               std::to_string(record.points) + " points, at most " + std::to_string(most_points) + " are allowed");
}

void read_control(LoadRecord& record, int most_points) {
  std::array<char, 40> name{};
  if (record.kind == RecordKind::force) {
    read(units.NDIN, "2I5,2F10.0,5X,I5,A40,I5", record.points, record.print, record.interval, record.scale,
         record.file_flag, name, record.further);
  } else {
    read(units.NDIN, "2I5,2F10.0,5X,I5,A40", record.points, record.print, record.interval, record.scale,
         record.file_flag, name);
  }
  std::string_view text = without_blanks_behind({name.data(), name.size()});
  text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
  if (record.file_flag == 1) record.file = text;
  check_count(record, most_points);
}

void read_sine(LoadRecord& record, int most_points) {
  read(units.NDIN, "2I5,3F10.0", record.points, record.print, record.interval, record.scale, record.sine.ramp);
  check_count(record, most_points);
  read(units.NDIN, "4F10.0", record.sine.period, record.sine.phase, record.sine.amplitude, record.sine.mean);
}

void echo(const LoadRecord& record) {
  put_text(units.NDOUT, "\n\n     " + std::string(record.words().name) + format("I5", record.number) + "\n");
  write(units.NDOUT, "5X,A60,/", record.title);
  write_count("NUMBER OF INPUT DATA POINTS", record.points);
  write_count("RECORD PRINT INDICATOR", record.print);
  write(units.NDOUT, "10X,'IF EQ. 0  RECORD NOT PRINTED',/,10X,'IF EQ. 1  PRINTED AS INPUT AND SCALED'");
  write(units.NDOUT, "5X,A50,E12.4", dotted("INPUT TIME INTERVAL"), record.interval);
  write(units.NDOUT, "5X,A50,E12.4", dotted("SCALE FACTOR"), record.scale);
  write(units.NDOUT, "5X,A50,1X,A20", dotted("FORMAT TO READ INPUT DATA POINTS"), record.layout);
}

void echo_sine(const LoadRecord& record) {
  const SineWave& sine = record.sine;
  write(units.NDOUT, "5X,A50,E12.4", dotted("RAMP-UP DURATION"), sine.ramp);
  write(units.NDOUT, "5X,A50,E12.4", dotted("SINE FUNCTION PERIOD"), sine.period);
  write(units.NDOUT, "5X,A50,E12.4", dotted("PHASE ANGLE LEAD IN DEGREES"), sine.phase);
  write(units.NDOUT, "5X,A50,E12.4", dotted("AMPLITUDE OF SINE FUNCTION"), sine.amplitude);
  write(units.NDOUT, "5X,A50,E12.4", dotted("MEAN VALUE OF SINE FUNCTION"), sine.mean);
}

// --- points ---------------------------------------------------------------------------------------------------------

/// A file that is there but no readable file of lines would not end, or end in the file layer.
std::string trouble_with_file(const std::string& file) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return "it is no file of lines";
  if (!std::ifstream(file).is_open()) return "it cannot be opened";
  return {};
}

/// Opens the file of a record. One that does not exist is told, and the points are taken from the deck.
void open_points(LoadRecord& record) {
  std::error_code error;
  if (!std::filesystem::exists(record.file, error)) {
    write_list(units.NDOUT, "ERROR! CAN NOT OPEN FILE,", record.file);
    complain({record.control_line, {41, 80}},
             "there is no file '" + record.file + "', the points are read from the deck");
    record.file.clear();
    return;
  }
  if (const std::string trouble = trouble_with_file(record.file); !trouble.empty()) {
    stop_on_card(record, record.words().read_error, {record.control_line, {41, 80}}, record.file + ": " + trouble);
  }
  open_formatted(UNIT_RECORD, record.file, OpenMode::existing);
  rewind_formatted(UNIT_RECORD);
}

/// Ends the run when a number could not be read; `item` is its 1-based number in the record.
void check_outcome(const LoadRecord& record, const RecordReader& reader, RecordReader::Outcome outcome, int item) {
  const FieldPlace& place = reader.place();
  const Columns columns{static_cast<int>(place.column) + 1, static_cast<int>(place.column + place.width)};
  const std::string which = " (number " + std::to_string(item) + " of the record)";
  switch (outcome) {
    case RecordReader::Outcome::number:
      return;
    case RecordReader::Outcome::end_of_file:
      stop_at_points(record, "     PROGRAM STOPS DUE TO THE END OF FILE ERROR", whole_line,
                     "end of file behind this line" + which);
    case RecordReader::Outcome::bad_field:
      stop_at_points(record, record.words().read_error, columns, "'" + place.text + "' is no number" + which);
    case RecordReader::Outcome::no_field:
      stop_on_points(record, "the read layout goes back to a group without a number field" + which);
    case RecordReader::Outcome::line_too_long:
      stop_on_points(record, "the line has " + std::to_string(longest_line) + " columns or more" + which);
  }
}

/// Reads times and values, or values alone, in one pass under the record's layout.
void read_points(const LoadRecord& record) {
  const RecordLayout layout(std::string_view(record.layout.data(), record.layout.size()));
  if (!layout.error().empty()) {
    stop_on_card(record, record.words().read_error, {record.heading_line, {61, 80}},
                 "read layout: " + std::string(layout.error()));
  }
  const int unit = record.file.empty() ? units.NDIN : UNIT_RECORD;
  RecordReader reader(layout, [unit](std::string_view& line) { return next_line(unit, line); });
  int item = 0;
  const auto take = [&](double& number) { check_outcome(record, reader, reader.next(number), ++item); };
  for (int i = 1; i <= record.points; ++i) {
    if (record.interval == 0.0) take(record.time(i));
    take(record.value(i));
  }
  reader.finish();
  if (reader.missed_point()) {
    warning_box(
        " WARNING! NUMBERS WITHOUT A DECIMAL POINT ARE READ AS WHOLE NUMBERS, WHATEVER DECIMALS THE FORMAT HAS");
  }
}

/// Times 0, interval, .. by repeated addition.
void space_points(const LoadRecord& record) {
  double t = 0.0;
  for (int i = 1; i <= record.points; ++i, t += record.interval) record.time(i) = t;
}

void scale_points(const LoadRecord& record) {
  for (int i = 1; i <= record.points; ++i) record.value(i) *= record.scale;
}

/// Times must not fall, and nothing may have grown beyond the largest real.
void check_points(const LoadRecord& record) {
  for (int i = 1; i <= record.points; ++i) {
    const std::string which = "point " + std::to_string(i);
    if (i > 1 && record.time(i) < record.time(i - 1)) stop_on_points(record, which + ": the time falls");
    if (!std::isfinite(record.time(i)) || !std::isfinite(record.value(i))) {
      stop_on_points(record, which + " is beyond the largest number");
    }
  }
}

void read_table(const LoadRecord& record) {
  if (record.points > 0) read_points(record);
  if (record.interval != 0.0) space_points(record);
  scale_points(record);
  check_points(record);
  if (!record.file.empty()) close_formatted(UNIT_RECORD);
}

void form_sine(const LoadRecord& record) {
  if (!(record.interval > 0.0) || record.sine.period == 0.0) {
    stop_on_points(record, record.sine.period == 0.0 ? "the period is 0" : "the time interval is not above 0");
  }
  space_points(record);
  for (int i = 1; i <= record.points; ++i) record.value(i) = sine_value(record.sine, record.time(i));
  scale_points(record);
  check_points(record);
}

/// The points, five pairs to a line.
void print_points(const LoadRecord& record) {
  constexpr int pairs_of_line = 5;
  std::string heads = "\n     " + std::string(record.words().list_heading) + "\n\n";
  for (int i = 0; i < pairs_of_line; ++i) heads += "      TIME       " + std::string(record.words().column) + "   ";
  put_text(units.NDOUT, heads + "\n");
  for (int first = 1; first <= record.points; first += pairs_of_line) {
    std::array<double, std::size_t{2} * pairs_of_line> line{};
    std::size_t items = 0;
    for (int i = first; i < first + pairs_of_line && i <= record.points; ++i) {
      line[items++] = record.time(i);
      line[items++] = record.value(i);
    }
    const std::array<OutItem, 1> out{OutItem(std::span<const double>(line).first(items))};
    write_items(units.NDOUT, "5(E10.3,E12.4,3X)", out);
  }
}

/// Code of the kind card: 2 is a sine function, anything else a table. The rest of the card is not looked at.
bool asks_for_sine(RecordKind kind) {
  constexpr int sine_function = 2;
  if (kind == RecordKind::ground) return false;
  int code = 0;
  read(units.NDIN, "I5", code);
  return code == sine_function;
}

}  // namespace

void read_load_record(RecordKind kind, int number, int most_points) {
  LoadRecord record;
  record.kind = kind;
  record.number = number;
  const bool sine = asks_for_sine(kind);
  read_heading(record);
  if (sine) {
    read_sine(record, most_points);
  } else {
    read_control(record, most_points);
    if (record.file_flag == 1) open_points(record);
  }
  if (record.scale == 0.0) record.scale = 1.0;
  echo(record);
  if (sine) {
    echo_sine(record);
    form_sine(record);
  } else {
    read_table(record);
  }
  const RecordTable& table = record_table(kind);
  pool.integers(table.points, table.rows)(number) = record.points + first_column - 1;
  pool.integers(table.further, table.rows)(number) = record.further;
  if (record.print == 1) print_points(record);
}

}  // namespace tidearc
