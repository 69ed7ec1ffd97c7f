// Dynamic load records: ground acceleration, dynamic force, imposed displacement, as tables of points over time.
//
// A record belongs to no node. The commands of a dynamic macro say what it drives, from which record time on, and with
// what scale (dynamic/commands.h).
//
//   records.cpp         the control card, the tables, the three sections
//   record_input.cpp    one record: its cards, its echo, its points from the deck or from a file
//   record_layout.cpp   the read layout that a record brings along
//   record_points.cpp   the value at a time; the sine function
#pragma once

#include <array>
#include <type_traits>

namespace tidearc {

enum class RecordKind { ground, force, displacement };

/// Where the records of one kind stand. The tables have dynamic_loads.MXPNT columns: a record of n points fills the
/// columns 3 to n + 2 of its row, the first two are kept free.
struct RecordTable {
  int rows = 0;     ///< records, those of a vessel's motion included                              [-]
  int time = 1;     ///< pool index, reals, rows by MXPNT                                          [s]
  int value = 1;    ///< the same: accelerations, forces or displacements, scaled                  [model units]
  int points = 1;   ///< pool index, integers, rows: points of each record, plus 2                 [-]
  int further = 1;  ///< the same: last field of a force record's control card, without effect
};

/// Room for what force or displacement commands store, one entry for each node of a command.
struct CommandMap {
  int entries = 0;    ///< most entries                                                            [-]
  int time = 1;       ///< pool index, reals: record time at the start of the macro                [s]
  int scale = 1;      ///< pool index, reals                                                       [-]
  int equation = 1;   ///< pool index, integers; 1..NEQ
  int record = 1;     ///< pool index, integers
  int node = 1;       ///< pool index, integers
  int component = 1;  ///< pool index, integers; 1..6
  int further = 1;    ///< pool index, integers; free
};

/// Written by RECRIN; everybody else reads.
struct RecordBlock {
  std::array<RecordTable, 3> tables{};  ///< by RecordKind
  CommandMap forces;
  CommandMap displacements;
  /// Room for the equations that ground acceleration loads: pool indices, integers, NEQ each; none without records.
  int ground_equation = 1;
  int ground_axis = 1;
};
inline RecordBlock load_records;
static_assert(std::is_trivially_copyable_v<RecordBlock>);

inline const RecordTable& record_table(RecordKind kind) { return load_records.tables[static_cast<std::size_t>(kind)]; }
inline bool record_exists(RecordKind kind, int number) { return number >= 1 && number <= record_table(kind).rows; }

/// Dynamic load control card with its echo.
void DYNCTL();
/// The three record sections and the room for commands (storage phase 7). Increases MXPNT by 2. A record that cannot be
/// read closes the run down.
void RECRIN();

/// Value of record `number` (1-based) at its own time, linear between its points. Outside the points a ground
/// acceleration or a force is 0, a displacement keeps its first or last value; a time beyond the last point by no more
/// than 1.0E-6 of the last interval is the last point. Of points at one time the last one counts. 0 without points and
/// for a record that does not exist. Searches anew each time: the answer depends on nothing but the arguments.
double record_value(RecordKind kind, int number, double record_time);

}  // namespace tidearc
