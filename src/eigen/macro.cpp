// The EIGN macro: its card, its errors, and the steps of the analysis.
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

#include "assembly/assembly.h"
#include "eigen/eigen.h"
#include "eigen/job.h"
#include "model/control.h"
#include "model/masses.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr double no_cut_off = 1.0E6;  // [1/s]
constexpr int usual_cycles = 16;

double squared_circular(double frequency) {
  const double omega = 2.0 * std::numbers::pi * frequency;
  return omega * omega;
}

EigenJob read_macro_card() {
  EigenJob job;
  read(units.NDIN, "3I5,F10.0", job.NPRINT, job.NITEM, job.KSTURM, job.ZCUT);
  if (job.NPRINT > 0) job.NPRINT = 1;
  if (job.NITEM <= 0) job.NITEM = usual_cycles;
  job.cut_off = eigen.FCUT == 0.0 ? no_cut_off : eigen.FCUT;
  job.squared_cut = squared_circular(job.cut_off);
  job.squared_shift = squared_circular(eigen.FSHIFT);
  job.NMASS = count_masses(pool.reals(masses.AMASS, sizes.NEQ));
  job.NFREQ = eigen.NFREQ;
  job.NSUB = subspace_size(job.NFREQ, job.NMASS);
  return job;
}

void echo(const EigenJob& job) {
  write(units.NDOUT, "' CONTROL INFORMATION',/");
  write(units.NDOUT, "5X,'FLAG FOR ADDITIONAL PRINTING  =',I5", job.NPRINT);
  write(units.NDOUT, "5X,'MAXIMUM ITERATION CYCLES (*)  =',I5", job.NITEM);
  write(units.NDOUT, "5X,'FLAG FOR STURM SEQUENCE CHECK =',I5", job.KSTURM);
  write(units.NDOUT, "5X,'CONVERGENCE TOLERANCE (*)     =',E12.4", eigen_tolerance);
  write(units.NDOUT, "5X,'CUT-OFF FREQUENCY (CPS)       =',E12.4", job.cut_off);
  write(units.NDOUT, "5X,'SHIFT FOR EIGNSOLUTION (CPS)  =',E12.4", eigen.FSHIFT);
  write(units.NDOUT, "5X,'NO OF FREQUENCY REQUIRED      =',I5", job.NFREQ);
  write(units.NDOUT, "5X,'SIZE OF THE SUBSPACE          =',I5", job.NSUB);
  write(units.NDOUT, "5X,'MODAL FORCE CUT ELEVATION     =',E12.4", job.ZCUT);
}

/// A box around the report's words, and a line that tells the card.
void refuse(std::string_view words, const DeckPlace& where, std::string_view told) {
  fatal_box(words);
  complain(where, told);
}

/// All errors of the input, each told; false when there was one.
bool input_is_sound(const EigenJob& job) {
  const DeckPlace cut_off(eigen.line, {11, 20});
  bool sound = true;
  if (!(std::abs(eigen.FSHIFT) < 0.5 * job.cut_off)) {
    refuse(" THE SHIFT FOR THE SUBSPACE ITERATION METHOD HAS TO BE LESS THAN HALF OF, THE CUT-OFF FREQUENCY",
           {eigen.line, {21, 30}},
           format("'the shift',E12.4,' is not below half of',E12.4", eigen.FSHIFT, job.cut_off));
    sound = false;
  }
  if (job.KSTURM == 1 && eigen.FCUT == 0.0) {
    refuse(" TO REQUEST STURM SEQUENCE CHECK ONLY, CUT-OFF FREQUENCY HAS TO BE INPUT", cut_off,
           "a Sturm sequence check needs a cut-off frequency");
    sound = false;
  }
  if (job.NMASS < job.NFREQ) {
    refuse(format("' NUMBER OF FREQUENCIES IS GREATER THAN THE NUMBER OF MASSES',/,"
                  "5X,'NUMBER OF NON-ZERO MASSES REQUIRED     =',I5,/,5X,'NUMBER OF EXISTING MASSES IN THE MODEL =',I5",
                  job.NFREQ, job.NMASS),
           {eigen.line, {1, 5}}, format("I10,' modes are wanted, the model has',I7,' masses'", job.NFREQ, job.NMASS));
    sound = false;
  }
  if (blocked()) {
    refuse(" EIGENVALUE ANALYSIS CAN NOT BE PERFORMED,     STIFFNESS IS OUT OF CORE ", {0, not_on_deck},
           "the stiffness stands in blocks: a larger pool keeps it in core");
    sound = false;
  }
  return sound;
}

void refuse_without_input() {
  fatal_box(" EIGENSOLUTION CONTROL DATA NOT INPUT");
  complain(whole_line, "an EIGN macro needs an eigensolution card, IEIGN 1 on the problem size card");
  set_fatal_flag();
  (run.check_run ? run.had_data_error : run.had_terminated_macro) = true;
}

/// Neither a card without modes nor a Sturm check that tells none leaves anything to solve.
void tell_nothing_to_solve() {
  warning_box(" NO FREQUENCIES AND MODE SHAPES ARE SOLVED");
  complain({eigen.line, {1, 5}}, eigen.NFREQ == 0 ? "no modes are wanted: none are solved"
                                                  : "the Sturm check tells no mode below the cut-off: none are solved");
}

/// The tangent of the states at hand. The factor's array is about to be used up, so KRESET stays.
void form_stiffness() {
  solver.KRESET = 1;
  solver.KFORM = 0;
  ASMSTA();
}

/// Whether the card is judged: in a data check too, unless the model it speaks of has errors of its own.
bool judging() { return executing() || (run.check_run && !run.had_data_error); }

}  // namespace

void EIGN() {
  EigenJob job = read_macro_card();
  if (sizes.IEIGN != 1) {
    refuse_without_input();
    return;
  }
  echo(job);
  if (judging() && !input_is_sound(job)) CLOSUP();
  if (!executing()) {
    if (!run.check_run)
      complain(not_on_deck, "no eigenvalue analysis: an analysis before it, or the model, has failed");
    return;
  }
  form_stiffness();
  stop_unless_positive(assembled_stiffness());
  if (job.KSTURM != 0 && eigen.FCUT != 0.0) {
    check_sturm_sequence(job);
    if (job.KSTURM == 1) return;
  }
  if (job.NFREQ == 0) {
    tell_nothing_to_solve();
    return;
  }
  iterate_subspace(job);
  print_modes(job);
}

}  // namespace tidearc
