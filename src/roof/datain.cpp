// Reading a problem: the order of the deck, front to back in one pass.
//
// Nothing in the deck is free-form and no card bears a section name, so the order below is the format. Arrays are laid
// down in the work pool as the counts become known; each is checked against the pool before it is touched.
#include "roof/datain.h"

#include <string>
#include <string_view>

#include "dynamic/commands.h"
#include "dynamic/energy_files.h"
#include "dynamic/step.h"
#include "eigen/eigen.h"
#include "elements/contract/event_scan.h"
#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/renumber.h"
#include "elements/contract/state_log.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "model/records.h"
#include "results/reports.h"
#include "roof/macros.h"
#include "run/clocks.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "sea/field.h"
#include "sea/grid.h"
#include "sea/members/member.h"
#include "sea/sea_factors.h"
#include "sea/wave_constants.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"
#include "solve/arrays.h"
#include "solve/bfgs.h"
#include "solve/integration.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "solve/stiffness_area.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

/// Storage phases of the checks that are made here.
constexpr int phase_nodes = 1;
constexpr int phase_systems = 2;

constexpr int most_energy_equations = 60000;
constexpr int most_energy_groups = 1000;

/// Record files go back to the roles of a start, of which analyses exchange some; the report and the deck stay.
void restore_file_roles() {
  if (units.TAPFRC > 0) close_tape(units.TAPFRC);
  const UnitBlock before = units;
  units = {};
  units.NDIN = before.NDIN;
  units.NDOUT = before.NDOUT;
}

/// Components and rows of the wave force scale are as many as `wave` counts, so those large tables need no clearing.
void forget_sea() {
  wave = {};
  wave_constants = {};
  force_scale.index = 0;
  current_now = {};
  grid_wave = {};
  sea_factors = {};
  load_files.last_time = -ONE;  // the load files go on, but no time of a problem is one of the problem before
}

/// What the problem before left behind and this one must not see.
void forget_last_problem() {
  restore_file_roles();
  storage.NEXT = 1;
  run.LASTMA = {'N', 'O', 'N', 'E'};
  sizes = {};
  static_loads = {};
  dynamic_loads = {};
  output = {};
  patterns = {};
  catenaries.count = 0;
  solver = {};
  release_outside_factor();
  response = {};
  segment = {};
  statics = {};
  step = {};
  scaling = {};
  bfgs = {};
  event_found = {};
  eigen = {};
  integration = {};
  commands = {};
  dynamics = {};
  energy_files = {};
  reset_gravity();
  forget_sea();
  if (is_open_tape(UNIT_STATE_LOG)) close_tape(UNIT_STATE_LOG);
  state_log = {};
}

/// Deck lines of the cards whose codes ask for sections that come later in the deck.
struct CardLines {
  std::int64_t data_file = 0;
  std::int64_t post_processor = 0;
};

[[noreturn]] void stop_section(const std::string& section, const DeckPlace& place, std::string_view routine) {
  fatal_box(' ' + section + " IS NOT AVAILABLE IN THIS VERSION");
  complain(place, section + " is not available in this version");
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
  carve_mass_vectors();
  MASSIN();
}

void read_elements() {
  if (sizes.IEIGN == 1) EIGNIN();
  ELDATA();
  if (sizes.IBANDW != 0) RENUMB();
  MASSUM();
}

void read_static_loads() {
  read_static_load_card();
  PATTIN();
  PDISIN();
}

void read_dynamic_loads() {
  DYNCTL();
  const std::int64_t line = deck_line();
  RECRIN();
  write(UNIT_POST_TEXT, "18A4", run.TITLE);
  write_list(UNIT_POST_TEXT, dynamic_loads.IWAVE);
  if (dynamic_loads.IWAVE == 1) WAVEIN();
  if (dynamic_loads.IVESSL == 1) stop_section("VESSEL MOTION INPUT", {line, {36, 40}}, "VESSEL");
}

bool post_code_is(std::string_view code) { return std::string_view(output.POSTF.data(), output.POSTF.size()) == code; }

/// The member force history, when its times or its code ask for it.
void open_member_forces() {
  if (!(output.TSPFR2 > output.TSPFR1 || output.ISPFRC == 1)) return;
  constexpr std::string_view heading = "TIME HISTORY FORCE  ";  // whole words
  units.TAPFRC = UNIT_MEMBER;
  open_tape(units.TAPFRC, "MEMBER.FRC", false);
  FILE(units.TAPFRC, "REWI");
  FILE(units.TAPFRC, "WRIT", words(heading.size()), static_cast<const void*>(heading.data()));
}

void read_output_lists() {
  read_response_card();
  PRLIST();
  if (!post_code_is("NEWF")) return;
  read_post_output_card();
  open_member_forces();
  POLIST();
}

/// Analysis vectors, stiffness, element data. False when the matrix cannot be cut into blocks.
bool lay_out_analysis() {
  carve_analysis_arrays(dynamic_macro_ahead() ? Analyses::all : Analyses::all_but_dynamic);
  const bool matrix_stands = carve_stiffness(element_counts.MAXLEI + 1);
  LODELM();
  if (sizes.IEIGN == 1) RSAOUT();
  return matrix_stands;
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
  write_list(UNIT_PROGRESS, "TIDEARC Version: ", VERSION, " Date: ", now.month, "-", now.day, "-", now.year, now.time);
}

/// Headers of the post-processing and save files. A data check writes none.
void start_result_files(const CardLines& lines) {
  if (!executing()) return;
  if (post_code_is("OLDF")) stop_section("POST-PROCESSOR FILE CODE OLDF", {lines.post_processor, {2, 5}}, "RSTPST");
  if (post_code_is("NEWF")) stop_section("POST-PROCESSOR FILE CODE NEWF", {lines.post_processor, {2, 5}}, "RSTRT6");
  if (std::string_view(output.DATF.data(), output.DATF.size()) == "NEWF")
    stop_section("DATA FILE CODE NEWF", {lines.data_file, {2, 5}}, "RSTRT1");
}

}  // namespace

void DATAIN() {
  forget_last_problem();
  FIRSTC();
  if (run.RUNMOD == 3) return;
  CardLines lines;
  read_data_file_card();
  lines.data_file = deck_line();
  write_list(UNIT_LEVELS, "SEQ_NO  TIME  LOAD_LEVEL UNBALANCED_FORCE MACRO MACRO_SEQ");
  ++output.NLEVELS;
  read_post_processor_card();
  lines.post_processor = deck_line();
  read_storage_card();
  read_size_card();
  if (sizes.IGRAV == 1) GRAVIN();
  read_nodes();
  read_masses();
  carve_element_vectors();
  read_elements();
  read_static_loads();
  read_dynamic_loads();
  read_output_lists();
  const bool matrix_stands = lay_out_analysis();
  open_energy_files();
  write_version_line();
  start_result_files(lines);
  if (!matrix_stands) CLOSUP();
}

}  // namespace tidearc
