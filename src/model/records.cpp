// Dynamic load control card, the tables of the dynamic load records, and their sections in the deck.
#include "model/records.h"

#include <cstdint>
#include <string>

#include "model/control.h"
#include "model/record_input.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

constexpr int free_columns = 2;    ///< of a row of the tables, before its points
constexpr int vessel_motions = 6;  ///< displacement records that a vessel's motion fills

int count_of(int field) { return field < 0 ? 0 : field; }

void print_control_card() {
  write_framed(" DYNAMIC LOAD SPECIFICATION CONTROL INFORMATION", '*', 47, true);
  put_text(units.NDOUT, "\n");
  write_count("NUMBER OF GROUND ACCELERATION RECORDS", dynamic_loads.NGACC);
  write_count("NUMBER OF DYNAMIC FORCE RECORDS", dynamic_loads.NDFRC);
  write_count("NUMBER OF IMPOSED DISPLACEMENT HISTORY RECORDS", dynamic_loads.NIDSP);
  write_count("NUMBER OF NODES WITH DYNAMIC FORCE RECORDS", dynamic_loads.NDFND);
  write_count("NUMBER OF NODES WITH IMPOSED DISPLACEMENTS", dynamic_loads.NIDND);
  write_count("MAX NUMBER OF INPUT POINTS FOR ANY RECORD", dynamic_loads.MXPNT);
  write_count("WAVE DATA INPUT CODE", dynamic_loads.IWAVE);
  write_count("VESSEL MOTION INPUT CODE", dynamic_loads.IVESSL);
}

/// Lays the tables of one kind down.
RecordTable carve_table(int rows) {
  RecordTable table;
  table.rows = rows;
  table.time = carve_reals(std::int64_t{rows} * dynamic_loads.MXPNT);
  table.value = carve_reals(std::int64_t{rows} * dynamic_loads.MXPNT);
  table.points = carve_integers(rows);
  table.further = carve_integers(rows);
  return table;
}

CommandMap carve_map(int entries) {
  CommandMap map;
  map.entries = entries;
  map.time = carve_reals(entries);
  map.scale = carve_reals(entries);
  const int integers = carve_integers(4LL * entries);
  map.equation = integers;
  map.record = integers + entries;
  map.node = integers + 2 * entries;
  map.component = integers + 3 * entries;
  map.further = carve_integers(entries);
  return map;
}

void lay_out_records() {
  constexpr int phase = 7;
  const int displacement_rows = dynamic_loads.NIDSP + (dynamic_loads.IVESSL == 1 ? vessel_motions : 0);
  load_records = {};
  load_records.tables = {carve_table(dynamic_loads.NGACC), carve_table(dynamic_loads.NDFRC),
                         carve_table(displacement_rows)};
  load_records.forces = carve_map(dynamic_loads.NDFND);
  load_records.displacements = carve_map(dynamic_loads.NIDND);
  const int loaded = dynamic_loads.NGACC > 0 ? sizes.NEQ : 0;
  load_records.ground_equation = carve_integers(loaded);
  load_records.ground_axis = carve_integers(loaded);
  check_storage(phase);
  for (const RecordTable& table : load_records.tables) {
    for (int& points : pool.integers(table.points, table.rows)) points = free_columns;
    for (int& further : pool.integers(table.further, table.rows)) further = 0;
  }
}

/// The heading of a section on a new page, and its records.
void read_section(const char* heading, RecordKind kind, int records, int most_points) {
  put_text(units.NDOUT, "1\n" + std::string(heading) + "\n");
  if (records < 1) write(units.NDOUT, "/,' (NONE)'");
  for (int number = 1; number <= records; ++number) read_load_record(kind, number, most_points);
}

}  // namespace

void DYNCTL() {
  const ControlFields field = read_control_fields();
  dynamic_loads.NGACC = count_of(field[0]);
  dynamic_loads.NDFRC = count_of(field[1]);
  dynamic_loads.NIDSP = count_of(field[2]);
  dynamic_loads.NDFND = count_of(field[3]);
  dynamic_loads.NIDND = count_of(field[4]);
  dynamic_loads.MXPNT = count_of(field[5]);
  dynamic_loads.IWAVE = field[6];
  dynamic_loads.IVESSL = field[7];
  print_control_card();
}

void RECRIN() {
  const int most_points = dynamic_loads.MXPNT;
  dynamic_loads.MXPNT += free_columns;
  lay_out_records();
  read_section(" GROUND ACCELERATION RECORDS", RecordKind::ground, dynamic_loads.NGACC, most_points);
  read_section(" DYNAMIC FORCE RECORDS", RecordKind::force, dynamic_loads.NDFRC, most_points);
  read_section(" IMPOSED DISPLACEMENT HISTORIES", RecordKind::displacement, dynamic_loads.NIDSP, most_points);
}

}  // namespace tidearc
