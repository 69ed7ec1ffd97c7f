// SEGIN: the cards of one load segment of a STAT, their rules and defaults.
#include <algorithm>
#include <string>

#include "model/control.h"
#include "run/stops.h"
#include "solve/arrays.h"
#include "solve/norm.h"
#include "static/scale.h"
#include "static/segment.h"
#include "static/segment_cards.h"

namespace tidearc {
namespace {

constexpr int most_top_unbalances = 20;
constexpr Columns KDIR_columns{26, 30};

void begin_segment() {
  const int NSEG = segment.NSEG;
  const int ISEG = segment.ISEG;
  segment = SegmentBlock{};
  segment.NSEG = NSEG;
  segment.ISEG = ISEG;
  clear_vector(arrays.RINC);
  write(units.NDOUT, "/,/,1X,25('*'),/,5X,'LOAD SEGMENT NO.',I5,/,1X,25('*')", segment.ISEG);
}

/// Items that the step and iteration types leave without meaning become 0, so that the echo shows what is in force.
void apply_solution_rules() {
  SegmentBlock& s = segment;
  if (s.KSTEP == 2) {
    const bool vectors = s.KNMS == 3;  // any value but 2 and 3 acts as 1
    if (vectors) s.SEGVAL = 0.0;
    s.NSVEC = vectors ? std::max(s.NSVEC, 1) : 0;
  } else {
    s.KNMS = 0;
    s.SEGVAL = 0.0;
    s.NSVEC = 0;
  }
  s.end_report = s.NSTEPS < 0;
  if (s.end_report) s.NSTEPS = -s.NSTEPS;
  if (s.KITER != 2) s.KIPAR = 0;
}

bool read_solution_card() {
  SegmentBlock& s = segment;
  read(units.NDIN, "2I5,F10.0,2I5,F10.0,6I5,F10.0", s.KSTEP, s.KNMS, s.SEGVAL, s.NSVEC, s.KDIR, s.STEP0, s.NSTEPS,
       s.KEVENT, s.KITER, s.KIPAR, s.MAXIT, s.KTERM, s.FQUIT);
  apply_solution_rules();
  echo_solution_card();
  if ((s.KDIR == 2 && s.KNMS != 3) || s.KDIR > 5) {
    segment_error(KDIR_columns, "FATAL ERROR! KDIR = 2 AND KNMS NOT = 3 IS A NO-NO!");
    return false;
  }
  return true;
}

void read_control_card() {
  SegmentBlock& s = segment;
  read(units.NDIN, "9I5,F10.0,I5,I5,2F10.0", s.KSSTF, s.KISTF, s.KBFGS, s.KISTA, s.KPRINT, s.KRST, s.KPOST, s.KMEMB,
       s.KPOSTN, s.ULTFAC, s.MACPR, s.IROB, s.ARCL, s.STEPSZI);
  if (s.KSSTF == 0) s.KSSTF = 1;
  if (s.KSSTF == 1 && s.KISTF == 0) s.KISTF = 1;
  if (s.KISTA == 0) s.KISTA = s.MAXIT;
  echo_control_card();
}

void set_step_factor_and_arc() {
  if (segment.STEPSZI > 0.0) statics.STEPF = segment.STEPSZI;
  if (segment.KIPAR != 2 || !(statics.STEPF > 0.0)) statics.STEPF = segment.STEP0;
  if (segment.ARCL > 0.0) {
    statics.ARC = segment.ARCL;
    scaling.SARC = segment.ARCL;
  }
}

/// TAP32 is opened at the first segment of the run that asks for it; each such segment writes the heading.
void begin_top_list() {
  open_unbalance_list();
  write(UNIT_TOP,
        "' *****  TOP OUT-OF-BALANCE FORCES IN STATIC ANALYSIS *****',/,' LOAD STEP ',/,"
        "' NODE  DOF   OUT-OF-BALANCE '");
}

void read_convergence_card() {
  SegmentBlock& s = segment;
  read(units.NDIN, "2I5,3F10.0,I5,3F10.0,I5", s.KUTYPE, s.KUMOM, s.TOLU, s.TOLL, s.USCALE, s.NLS, s.SUP, s.SLOW, s.TOLS,
       s.NTOP);
  if (s.TOLL == 0.0) s.TOLL = s.TOLU;
  s.NLS = std::max(s.NLS, 1);
  s.NTOP = std::clamp(s.NTOP, 0, std::min(sizes.NEQ, most_top_unbalances));
  echo_convergence_card();
  set_step_factor_and_arc();
  if (s.NTOP > 0 && executing()) begin_top_list();
}

/// A segment without restepping has no such card: the items keep the values of a new segment.
void read_restep_card() {
  constexpr double no_limit = 1.0E20;
  SegmentBlock& s = segment;
  read(units.NDIN, "2F10.0,2I5,2F10.0,I5,3F10.0,I5", s.RFAC, s.STEPMIN, s.NATT, s.ITLOW, s.IFAC, s.STEPMAX, s.KPRED,
       s.GRACE, s.WPRED, s.UMAX, s.ITDES);
  if (s.RFAC == 0.0) s.RFAC = 0.25;
  if (s.STEPMIN == 0.0) s.STEPMIN = 0.0156;
  if (s.IFAC == 0.0) s.IFAC = 4.0;
  if (s.STEPMAX == 0.0) s.STEPMAX = 1.0;
  if (s.KPRED == 1) s.KPRED = 2;
  if (s.WPRED == 0.0) s.WPRED = 1.0;
  if (s.UMAX == 0.0 || !(s.TOLU < s.UMAX)) s.UMAX = no_limit;
  echo_restep_card();
}

}  // namespace

void segment_error(Columns where, std::string_view text) {
  fatal_box("     " + std::string(text));
  complain(where, text);
  set_fatal_flag();
  if (run.check_run) run.had_data_error = true;  // a data check has no analysis whose end would tell
}

bool SEGIN() {
  begin_segment();
  const bool card_is_sound = read_solution_card();
  const bool vectors_are_sound = read_vectors();
  read_control_card();
  read_convergence_card();
  if (segment.KTERM == 0) read_restep_card();
  read_participation();
  return card_is_sound && vectors_are_sound;
}

}  // namespace tidearc
