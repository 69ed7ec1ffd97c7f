// Reading a problem: the order of the deck, front to back in one pass.
//
// Nothing in the deck is free-form and no card bears a section name, so the order below is the format. Arrays are laid
// down in the work pool as the counts become known; each is checked against the pool before it is touched.
#include "roof/datain.h"

#include <array>
#include <string>
#include <vector>

#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "model/records.h"
#include "results/reports.h"
#include "run/clocks.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

/// Storage phases of the checks that are made here.
constexpr int phase_nodes = 1;
constexpr int phase_systems = 2;
constexpr int phase_masses = 3;
constexpr int phase_elements = 4;
constexpr int phase_stiffness = 10;

constexpr int most_energy_equations = 60000;
constexpr int most_energy_groups = 1000;

/// What the problem before left behind and this one must not see.
void forget_last_problem() {
  storage.NEXT = 1;
  run.LASTMA = {'N', 'O', 'N', 'E'};
  sizes = {};
  static_loads = {};
  dynamic_loads = {};
  output = {};
  patterns = {};
  catenaries.count = 0;
  solver = {};
  response = {};
  segment = {};
  statics = {};
  step = {};
  reset_gravity();
  if (is_open_tape(UNIT_STATE_LOG)) close_tape(UNIT_STATE_LOG);
  state_log = {};
}

[[noreturn]] void stop_section(const std::string& section, std::string_view routine) {
  fatal_box(' ' + section + " IS NOT AVAILABLE IN THIS VERSION");
  complain(not_on_deck, section + " is not available in this version");
  FATERR(routine);
}

void read_nodes() {
  const int n = sizes.NUMNP;
  nodes.ID = carve_integers(std::int64_t{NDF} * n);
  nodes.X = carve_reals(n);
  nodes.Y = carve_reals(n);
  nodes.Z = carve_reals(n);
  nodes.NCODE = carve_integers(n);
  check_storage(phase_nodes);
  NODEIN();
  nodes.ICS = sizes.NCSYS >= 1 ? carve_integers(n) : storage.NEXT;
  nodes.AXES = sizes.NCSYS >= 1 ? carve_reals(9LL * sizes.NCSYS) : storage.NEXT;
  check_storage(phase_systems);
  AXESIN();
  DOFIN();
}

void read_masses() {
  if (NEQ1() > MAXDOF) {
    write(units.NDOUT,
          "/,' ERROR! PRGROM STOPS',/,' DUE TO THE EXCEEDENCE OF THE ALLOWABLE NUMBER OF DOFs.',/,"
          "' INCREASE THE PARAMETER MAXDOF IN FILE MAXDOF.PAR AND',/,' RECOMPLIE TIDEARC.'");
    complain(not_on_deck, format("'the model has',I8,' equations, fewer than',I8,' are possible'", sizes.NEQ, MAXDOF));
    CLOSUP();
  }
  masses.AMASS = carve_reals(NEQ1());
  masses.MARKS = carve_integers(NEQ1());
  check_storage(phase_masses);
  MASSIN();
}

void carve_element_vectors() {
  masses.KEDATP = carve_reals(NEQ1());
  patterns.KSELFW = carve_reals(NEQ1());
  patterns.KBUOYV = carve_reals(NEQ1());
  patterns.KCURRV = carve_reals(NEQ1());
  check_storage(phase_elements);
  for (const int vector : {masses.KEDATP, patterns.KSELFW, patterns.KBUOYV, patterns.KCURRV})
    RZERO(pool.reals(vector, NEQ1()).data(), NEQ1());
}

void read_elements() {
  if (sizes.IEIGN == 1) stop_section("EIGENSOLUTION INPUT", "EIGNIN");
  ELDATA();
  if (sizes.IBANDW != 0) stop_section("BAND-WIDTH REDUCTION", "RENUMB");
  MASSUM();
}

void read_loads() {
  read_static_load_card();
  PATTIN();
  PDISIN();
  DYNCTL();
  RECRIN();
}

void read_sea() {
  write(UNIT_POST_TEXT, "18A4", run.TITLE);
  write_list(UNIT_POST_TEXT, dynamic_loads.IWAVE);
  if (dynamic_loads.IWAVE == 1) stop_section("WAVE DATA INPUT", "WAVEIN");
  if (dynamic_loads.IVESSL == 1) stop_section("VESSEL MOTION INPUT", "VESSEL");
}

void read_output_lists() {
  read_response_card();
  PRLIST();
  const std::string_view post(output.POSTF.data(), output.POSTF.size());
  if (post == "OLDF") stop_section("POST-PROCESSOR FILE CODE OLDF", "RSTPST");
  if (post != "NEWF") return;
  read_post_output_card();
  POLIST();
  stop_section("POST-PROCESSOR FILE CODE NEWF", "RSTRT6");
}

/// Analysis vectors, both stiffness arrays, element data.
void lay_out_analysis() {
  carve_analysis_arrays();
  storage.LAVSST = static_cast<int>(std::min<std::int64_t>(std::int64_t{ITWO} * solver.NSTO, 2147483647));
  solver.KASM = carve_reals(solver.NSTO);
  solver.KFAC = carve_reals(solver.NSTO);
  storage.KEDAT = storage.NEXT;
  write_list(units.NDOUT, "NSTO,LAVSST,KEDAT,MSTOR", solver.NSTO, storage.LAVSST, storage.KEDAT, storage.MSTOR);
  check_storage(phase_stiffness);
  LODELM();
}

/// The energy records of the analyses: one file each for five kinds, and a text.
void open_energy_files() {
  if (sizes.IENRGY != 1) return;
  constexpr int first_unit = 41;
  for (int i = 0; i < 5; ++i) open_tape(first_unit + i, "TAP" + std::to_string(first_unit + i), false);
  open_formatted(first_unit + 5, "TAP46", OpenMode::position);
  if (sizes.NEQ > most_energy_equations || sizes.NELGR > most_energy_groups) {
    complain(not_on_deck, "EXCEEDING LIMITS IN RSEGP(*) ARRAY");
    set_fatal_flag();
    CLOSUP();
  }
  const Reals zeros = pool.reals(arrays.WORK, sizes.NEQ);  // clear since the vectors were laid down
  for (int group = 1; group <= sizes.NELGR; ++group)
    for (const int unit : {first_unit + 1, first_unit + 3})
      for (int record = 1; record <= 2; ++record) FILE(unit, "WRIT", ITWO * sizes.NEQ, zeros.data());
}

void write_version_line() {
  const CalendarTime now = calendar_time();
  write_list(UNIT_PROGRESS, "TIDEARC Version:", VERSION, "Date:", now.month, "-", now.day, "-", now.year, now.time);
}

}  // namespace

void DATAIN() {
  forget_last_problem();
  FIRSTC();
  if (run.RUNMOD == 3) return;
  read_data_file_card();
  write_list(UNIT_LEVELS, "SEQ_NO  TIME  LOAD_LEVEL UNBALANCED_FORCE MACRO MACRO_SEQ");
  ++output.NLEVELS;
  read_post_processor_card();
  read_storage_card();
  read_size_card();
  if (sizes.IGRAV == 1) GRAVIN();
  read_nodes();
  read_masses();
  carve_element_vectors();
  read_elements();
  read_loads();
  read_sea();
  read_output_lists();
  lay_out_analysis();
  open_energy_files();
  write_version_line();
}

}  // namespace tidearc
