// The echo of the cards of an analysis with variable steps, one block per card, of the values in force.
#include <string>
#include <string_view>

#include "dynamic/dyn1.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/units.h"
#include "run/words.h"
#include "solve/integration.h"

namespace tidearc {

namespace {

/// A line that belongs to the one above it.
void remark(std::string_view text) { put_text(units.NDOUT, "           " + std::string(text) + '\n'); }

void begin_block(std::string_view heading, int width) {
  put_text(units.NDOUT, "\n\n");
  write_framed(heading, '*', width);
  put_text(units.NDOUT, "\n");
}

void echo_interval(std::string_view what, const OutputInterval& interval) {
  write(units.NDOUT, "5X,A50,I5,E12.4", dotted(what), interval.steps, interval.time);
}

std::string_view text_of(SolutionType type) {
  switch (type) {
    case SolutionType::events_variable:
      return "EVENT-TO-EVENT WITH VARIABLE DELTA-T";
    case SolutionType::events_constant:
      return "EVENT-TO-EVENT WITH CONSTANT DELTA-T";
    case SolutionType::midstep_error:
    case SolutionType::local_error:
      return "VARIABLE DELTA-T W/O EVENT CALCULATION";
  }
  return "";
}

void echo_solution(const Dyn1Cards& c, int out) {
  const int type = static_cast<int>(c.KSOL);
  write(out, "5X,'SOLUTION TYPE .................................. =',I5,5X,A38", type, text_of(c.KSOL));
  if (c.KSOL == SolutionType::midstep_error) remark("USING MIDSTEP ERROR");
  if (c.KSOL == SolutionType::local_error) remark("USING DISPL. LOCAL ERROR");
  write(out, "5X,'ACCELERATION CORRECTION CODE ................... =',I5,5X,A32", c.KACC,
        c.KACC == 0 ? "APPLY ACCELERATION CORRECTION" : "SUPPRESS ACCELERATION CORRECTION");
  write(out, "5X,'STEP SIZE (INITIAL STEP FOR VARIABLE DELTA-T) .. =',E12.4", integration.DT);
  write(out, "5X,'INTEGRATION PARAMETER, ALPHA ................... =',E12.4", ZERO - integration.AB);
  write(out, "5X,'INTEGRATION PARAMETER, BETA  ................... =',E12.4", integration.BETA);
  write(out, "5X,'MASS PROPORTIONAL DAMPING FACTOR ........... =',E12.4", integration.DMASS);
}

std::string_view initial_text(int NINIT) {
  if (NINIT < 0) return "ZERO INITIAL VEL AND ACC CONDITIONS";
  return NINIT == 0 ? "INIT. COND FROM CURRENT RESULTS SEQ." : "INITIAL COND. INPUT THRU CARDS";
}

void echo_commands(const Dyn1Cards& c, int out) {
  write(out, "5X,'NUMBER OF INITIAL CONDITIONS GENERATION COMMANDS =',I5,5X,A36", c.NINIT, initial_text(c.NINIT));
  write(out, "5X,'CODE FOR APPLYING GROUND ACC RECORDS ........... =',I5", c.KGROUND);
  write(out, "5X,'NUMBER OF FORCE-TH APPLICATION COMMANDS ........ =',I5", c.NFORCE);
  write(out, "5X,'NUMBER OF IMPOSED DIS-TH APPLICATION COMMANDS .. =',I5", c.NIMPOSED);
  write(out, "5X,'ELEMENT ENVELOPE INITIALIZATION CODE ........... =',I5,5X,A28", c.KENVELOPE,
        c.KENVELOPE == 1 ? "INITIALIZED TO CURRENT STATE" : "");
  write(out, "5X,'CODE TO DUMP BEAM ELEMENT ENVELOPES TO TAPE .... =',I5", c.KDUMP);
}

}  // namespace

void echo_dyn1_control() {
  begin_block(" DYNAMIC ANALYSIS CONTROL INFORMATION", 37);
  echo_solution(dyn1.cards, units.NDOUT);
  echo_commands(dyn1.cards, units.NDOUT);
}

void echo_dyn1_steps() {
  const Dyn1Cards& c = dyn1.cards;
  const int out = units.NDOUT;
  begin_block(" TIME STEP SELECTION CONTROL PARAMETERS", 39);
  write(out, "5X,'MINIMUM ALLOWABLE STEP SIZE DELTA-T ............ =',E12.4", c.rules.DTMIN);
  remark("IF POSITIVE CONTINUE ANALYSIS WITH MIN. DELTA-T");
  remark("IF NEGATIVE STOP ANALYSIS IF EXCEEDED");
  write(out, "5X,'MAXIMUM ALLOWABLE STEP SIZE DELTA-T ............ =',E12.4", c.rules.DTMAX);
  write(out, "5X,'STEP SIZE REDUCTION FACTOR ..................... =',E12.4", c.rules.REDF);
  write(out, "5X,'STEP SIZE INCREASE FACTOR ...................... =',E12.4", c.rules.INCF);
  write(out, "5X,'UPPER TOLERANCE ON MIDSTEP ERROR ............... =',E12.4", c.rules.ERRUP);
  write(out, "5X,'LOWER TOLERANCE ON MIDSTEP ERROR ............... =',E12.4", c.rules.ERRLO);
  write(out, "5X,'NUMBER OF STEPS BELOW TOLERANCE FOR RESTEPPING.. =',I5", c.rules.NBELOW);
  write(out, "5X,'MOMENT CODE FOR MIDSTEP ERROR .................. =',I5", c.KMOMENT);
  write(out, "5X,'CAPACITY PRECISION FACTOR ...................... =',E12.4", c.continues ? -c.PRECF : c.PRECF);
  write(out, "5X,'MAXIMUM ACCUMULATED PRECISION FACTOR............ =',E12.4", c.limits.PRECMX);
}

void echo_dyn1_limits() {
  const Dyn1Cards& c = dyn1.cards;
  const int out = units.NDOUT;
  begin_block(" DYNAMIC ANALYSIS TERMINATION CONTROL", 37);
  write(out, "5X,'MAX. NO. OF TIME STEPS FOR THIS ANALYSIS ....... =',I5", c.limits.NSMAX);
  write(out, "5X,'MAX. TIME INCREMENT FOR THIS ANALYSIS .......... =',E12.4", c.limits.TMAX);
  write(out, "5X,'MAX. ALLOWABLE UNBALANCE FORCE ................. =',E12.4", c.UBMAX);
  write(out, "5X,'MAX. ALLOWABLE TOTAL DISPLACEMENT .............. =',E12.4", c.DISMAX);
  write(out, "5X,'MAX. DISPLACEMENT INCREMENT FOR EVENT CONTROL .. =',E12.4", c.EVMAX);
  write(out, "5X,'MAX. ALLOWABLE NUMBER OF SUBSTEPS .............. =',I5", c.NSUBMX);
  write(out, "5X,'MAX. CUTOFF VELOCITY ........................... =',E12.4", c.limits.cutoff);
  write(out, "5X,'NUMBER OF NODE DOF''s WITH LARGEST UNBALANCED F.. =',I5", c.NTOP);
  write(out, "5X,'UPPER TOLERANCE OF UNBALANCED F. FOR RESTEPPING. =',E12.4", c.UBUP);
  write(out, "5X,'LOWER TOLERANCE OF UNBALANCED F. FOR RESTEPPING. =',E12.4", c.UBLO);
}

void echo_dyn1_outputs() {
  const Dyn1Cards& c = dyn1.cards;
  begin_block(" DYNAMIC ANALYSIS OUTPUT CONTROL", 32);
  put_text(units.NDOUT, "     RESPONSE IS PRINTED EVERY TIME STEP INTERVAL OR\n");
  put_text(units.NDOUT, "     TIME INTERVAL SPECIFIED WHICHEVER OCCURS FIRST\n");
  echo_interval("NODAL RESPONSES", c.nodal);
  echo_interval("ELEMENT RESPONSES", c.elements);
  echo_interval("NODAL AND ELEMENT PEAK RESPONSES", c.envelopes);
  echo_interval("SAVE RESULTS ON RESTART FILE", c.restart);
  echo_interval("SAVE RESULTS ON POST-PROC FILE", c.post);
}

}  // namespace tidearc
