// Dynamic load control card, and the place of the dynamic load records in the deck.
#include "model/records.h"

#include <string>

#include "model/control.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/words.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

/// Points at both ends of a record, beside those of the deck.
constexpr int end_points = 2;

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

/// A section without records is its heading; records cannot be passed over, since the deck would be out of step.
void record_section(const std::string& heading, int records) {
  put_text(units.NDOUT, "1\n" + heading + "\n");
  if (records < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  complain(not_on_deck, std::to_string(records) + heading + " asked for: dynamic load records are not available");
  FATERR("RECRIN");
}

/// Room for what the commands of dynamic macros store: two reals, four integers and one more integer per entry.
void carve_command_maps(int entries) {
  carve_reals(2LL * entries);
  carve_integers(4LL * entries);
  carve_integers(entries);
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
  dynamic_loads.MXPNT += end_points;
  record_section(" GROUND ACCELERATION RECORDS", dynamic_loads.NGACC);
  record_section(" DYNAMIC FORCE RECORDS", dynamic_loads.NDFRC);
  record_section(" IMPOSED DISPLACEMENT HISTORIES", dynamic_loads.NIDSP);
  carve_command_maps(dynamic_loads.NDFND);
  carve_command_maps(dynamic_loads.NIDND);
  check_storage(7);
}

}  // namespace tidearc
