// The control cards of a DYN2 macro, their echo, defaults, and values that cannot be worked with.
#include <algorithm>
#include <string_view>

#include "dynamic/cards.h"
#include "dynamic/dyn2.h"
#include "dynamic/sea_loads.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/words.h"
#include "solve/integration.h"
#include "solve/norm.h"

namespace tidearc {

namespace {

constexpr int most_top_unbalances = 20;
constexpr Columns DT_columns{1, 10};
constexpr Columns BETA_columns{21, 30};
constexpr Columns KRISAV_columns{66, 70};
constexpr Columns ISLULT_columns{51, 55};

void read_integration_card() {
  IntegrationBlock& c = integration;
  double ALPHA = 0.0;
  read(units.NDIN, "8F10.0", c.DT, ALPHA, c.BETA, c.DMASS);
  take_alpha(ALPHA);
  put_text(units.NDOUT, "\n");
  write_framed(" DYNAMIC ANALYSIS CONTROL INFORMATION", '*', 37);
  const int out = units.NDOUT;
  write(out, "/,5X,'INTEGRATION STEP SIZE DELTA-T (SECS) ........... =',E12.4", c.DT);
  write(out, "5X,'INTEGRATION PARAMETER, ALPHA ................... =',E12.4", ZERO - c.AB);
  write(out, "5X,'INTEGRATION PARAMETER, BETA .................... =',E12.4", c.BETA);
  write(out, "5X,'MASS PROPORTIONAL DAMPING FACTOR ........... =',E12.4", c.DMASS);
  if (!(c.DT > 0.0)) dynamic_card_error(DT_columns, "THE STEP SIZE DELTA-T IS NOT POSITIVE");
  if (c.BETA < 0.0) dynamic_card_error(BETA_columns, "THE INTEGRATION PARAMETER BETA IS NEGATIVE");
}

std::string_view initial_text(int NINIT) {
  if (NINIT < 0) return "ZERO INITIAL VEL AND ACC CONDITIONS";
  return NINIT == 0 ? "INIT. COND FROM CURRENT RESULTS SEQ." : "INITIAL COND. INPUT THRU CARDS";
}

void echo_command_items(const ConstantSteps& job) {
  const int out = units.NDOUT;
  write(out, "5X,'NUMBER OF INTEGRATION TIME STEPS ............... =',I6", job.NSTEP);
  write(out, "5X,'NUMBER OF INITIAL CONDITIONS GENERATION COMMANDS =',I6,5X,A36", job.NINIT, initial_text(job.NINIT));
  write(out, "5X,'CODE FOR APPLYING GROUND ACC RECORDS ........... =',I6", job.KGRND);
  write(out, "5X,'NUMBER OF FORCE-TH APPLICATION COMMANDS ........ =',I6", job.NFORCE);
  write(out, "5X,'NUMBER OF IMPOSED DIS-TH APPLICATION COMMANDS .. =',I6", job.NIMPOS);
}

void echo_output_items(const ConstantSteps& job) {
  const int out = units.NDOUT;
  write(out, "5X,'NODAL RESPONSES ............................ =',I6", job.KPNOD);
  write(out, "5X,'ELEMENT RESPONSES .......................... =',I6", job.KPELM);
  write(out, "5X,'NODAL AND ELEMENT PEAK RESPONSES ........... =',I6", job.KPENV);
  write(out, "5X,'TIME STEP INTERVAL, SAVE RESULTS ON RESTART FILE =',I6", job.KRST);
  const std::string_view start = job.KENV == 1 ? "INITIALIZED TO CURRENT STATE" : "";
  write(out, "5X,'ELEMENT ENVELOPE INITIALIZATION CODE ........... =',I6,5X,A28", job.KENV, start);
  write(out, "5X,'CODE TO DUMP BEAM ELEMENT ENVELOPES TO TAPE .... =',I6", job.KDUMP);
  write(out, "5X,'TIME STEP INTERVAL,SAVE RESULTS ON POST-PROC FILE=',I6", job.KPOST);
  write(out, "5X,'CODE TO OUTPUT WAVE AND INERTIA LOADS .......... =',I6", job.KRISAV);
}

/// Wave loads would have to be switched on for this output.
void stop_at_wave_output() {
  write(units.NDOUT, "' ***ERROR*** NODAL WAVE OUTPUT PARAMETERS INCONSISTENT (SEG H & SEG L)'");
  complain(KRISAV_columns, "the output of wave and inertia loads needs wave loads");
  CLOSUP();
}

void read_command_card(ConstantSteps& job) {
  read(units.NDIN, "I6,I4,14I5", job.NSTEP, job.NINIT, job.KGRND, job.NFORCE, job.NIMPOS, job.KPNOD, job.KPELM,
       job.KPENV, job.KRST, job.KENV, job.KDUMP, job.KPOST, job.KRISAV);
  for (int* interval : {&job.KPNOD, &job.KPELM, &job.KPENV, &job.KRST, &job.KPOST}) *interval = std::max(*interval, 0);
  echo_command_items(job);
  echo_output_items(job);
  if (job.KRISAV == 1 && !waves_act()) stop_at_wave_output();
}

void echo_solution_items(const ConstantSteps& job) {
  const int out = units.NDOUT;
  write(out, "/,' DYNAMIC SOLUTION CONTROL PARAMETERS',/");
  write(out, "5X,'MAX. NO. OF ITERATIONS IN ANY TIME STEP ........ =',I5", job.MAXIT);
  write(out, "5X,'TIME STEP CONTROL FOR STIFFNESS UPDATE ......... =',I5", job.KSSTF);
  write(out, "5X,'ITERATION CONTROL FOR STIFFNESS UPDATE ......... =',I5", job.KISTF);
  write(out, "5X,'ITERATION CONTROL FOR STATE UPDATE ............. =',I5", job.KISTA);
  const std::string_view end = job.KTERM == 0 ? "PROCEED TO NEXT TIME STEP" : "TERMINATE EXECUTION WITH PRINT";
  write(out, "5X,'EXECUTION TERMINATION CODE ..................... =',I5,5X,A30", job.KTERM, end);
  write(out, "5X,'CONVERGENCE TOLERANCE FOR EQUILIBRIUM UNBALANCE  =',E12.4", job.TOL);
  write(out, "5X,'UNBALANCE TYPE ................................. =',I5", dynamics.KUTYPE);
  write(out, "5X,'MOMENT CODE FOR UNBALANCE ...................... =',I5", dynamics.KUMOM);
  // Both labels of two halves stand in the report as one line, the halves run together.
  write(out,
        "5X,'NUMBER OF D.O.F. TO BE PRINTED WITH LARGEST ',"
        "'OUT-OF-BALANCED FORCES ..................... =',I5",
        dynamics.NTOP);
  write(out,
        "5X,'ULT OPTION FOR CREATING WAVE FORCE PATTERN WITHOUT',"
        "'PERFORMING STRUCTURAL ANALYSIS (YES=1) ..... =',I5",
        job.ISLULT);
}

void refuse_loads_without_output() {
  write(units.NDOUT, "' **** INPUT ERROR, EXECUTATION TO BE TERMINATED ****'");
  write(units.NDOUT, "5X,'TO SET \"ISLULT = 1\", \"KRISAV = 1\" SHOULD BE SET AS WELL.'");
  complain(ISLULT_columns, "wave loads alone are asked for (ISLULT 1), but not their output (KRISAV 1)");
  refuse_dynamic_cards();
}

void read_solution_card(ConstantSteps& job) {
  DynamicBlock& d = dynamics;
  read(units.NDIN, "5I5,F10.0,4I5", job.MAXIT, job.KSSTF, job.KISTF, job.KISTA, job.KTERM, job.TOL, d.KUTYPE, d.KUMOM,
       d.NTOP, job.ISLULT);
  job.MAXIT = std::max(job.MAXIT, 1);
  job.KSSTF = std::max(job.KSSTF, 1);
  job.KISTF = std::max(job.KISTF, 0);
  job.KISTA = std::max(job.KISTA, 1);
  d.NTOP = std::clamp(d.NTOP, 0, std::min(sizes.NEQ, most_top_unbalances));
  echo_solution_items(job);
  if (job.ISLULT == 1 && job.KRISAV != 1) refuse_loads_without_output();
}

}  // namespace

ConstantSteps read_constant_steps() {
  ConstantSteps job;
  read_integration_card();
  read_command_card(job);
  read_solution_card(job);
  if (dynamics.NTOP > 0 && executing()) {
    open_unbalance_list();
    write(UNIT_TOP, "' *****  TOP OUT-OF-BALANCE FORCES IN DYN2 ANALYSIS *****'");
  }
  return job;
}

}  // namespace tidearc
