// What a DYN2 macro tells: the table on the progress file, prints and saves at their intervals, a step that fails.
#include "dynamic/dyn2.h"
#include "elements/contract/pass.h"
#include "run/layout.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

bool due(int interval) { return interval > 0 && dynamics.NS % interval == 0; }

struct Prints {
  bool nodes = false;
  bool elements = false;
  bool envelopes = false;
};

Prints PRTSET(const ConstantSteps& job) {
  const TimedPhase timed("PRTSET");
  return {due(job.KPNOD), due(job.KPELM), due(job.KPENV)};
}

/// Saves at their intervals. The files of results for a restart (KRST) and for the post-processor (KPOST) get their
/// records here when there are such files; the load level history gets its line in any case.
void RSTRT6(const ConstantSteps& job) {
  const TimedPhase timed("RSTRT6");
  if (due(job.KRST) || due(job.KPOST)) SDUP();
  if (due(job.KPOST)) save_dynamic_results("DYN2", dynamics.NDYN2, ONE);
}

void write_dyn2_row() {
  const Energies& energy = dynamics.energy;
  write(UNIT_PROGRESS, "I7,I3,I5,I5,1X,F9.4,2(1X,E8.3),1(1X,E9.3),4(1X,E8.2)", dynamics.NS, dynamics.NI,
        response.NLSTEP, solver.NSTUPD, response.TIME, dynamics.APPLIED, response.RNORM, energy.unbalance(),
        energy.external, energy.kinetic, energy.elastic, energy.viscous);
  flush_formatted(UNIT_PROGRESS);  // whoever follows the run sees each step
}

}  // namespace

void write_dyn2_legend(const ConstantSteps& job) {
  const int unit = UNIT_PROGRESS;
  write(unit, "/,5X,'DYN2 MACRO OUTPUT INFORMATION:'");
  write(unit, "5X,'(1) - CURRENT STEP NUMBER (MAX=',I7,')'", job.NSTEP);
  write(unit, "5X,'(2) - ITERATION NUMBER (MAX=',I2,')'", job.MAXIT);
  write(unit, "5X,'(3) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)'");
  write(unit, "5X,'(4) - TOTAL NUMBER OF STIFFNESS REFORMULATIONS'");
  write(unit, "5X,'(5) - CURRENT ANALYSIS TIME'");
  write(unit, "5X,'(6) - NORM OF APPLIED LOAD'");
  write(unit, "5X,'(7) - NORM OF OUT-OF-BALANCE LOAD (MAX=',E8.3,')'", job.TOL);
  write(unit, "/,T59,'---------ENERGY---------------------'");
  write(unit,
        "'  STEP ITR LOAD STIF   CURRENT  APPLIED UNBALANC UNBALANCE',"
        "' EXTERNAL  KINETIC  ELASTIC  VISCOUS'");
  write(unit, "T33,'---LOAD(NORM)---',T79,'PLASTIC',T88,'DAMPING'");
}

void report_constant_step(const ConstantSteps& job) {
  print_dynamic_step(dynamics.NI);
  const Prints wanted = PRTSET(job);
  PRINDY(wanted.nodes, wanted.elements);
  if (job.KRISAV == 1) print_elements(-1);  // member loads
  ENVOUT(wanted.envelopes);
  RSTRT6(job);
  write_dyn2_row();
}

void report_no_convergence(const ConstantSteps& job) {
  write(units.NDOUT, "' ****  EXECUTION TERMINATED, NO CONVERGENCE  ****'");
  write(units.NDOUT, "' ****  PROCEED WITH NEXT PROBLEM (IF ANY)    ****'");
  if (job.KTERM == 0) return;
  PRINDY(true, true);
  ENVOUT(true);
}

}  // namespace tidearc
