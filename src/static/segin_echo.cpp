// The echo of a segment's control cards: one block per card, each item with the meaning of its codes.
#include "run/layout.h"
#include "run/units.h"
#include "static/segment.h"
#include "static/segment_cards.h"

namespace tidearc {
namespace {

void echo_step_items(const SegmentBlock& s, int out) {
  write(out,
        "5X,'STEP TYPE            ........................... =',I5,/,"
        "5X,'1: LOAD STEPPING.',/,"
        "5X,'2: DISPLACEMENT STEPPING'",
        s.KSTEP);
  write(out,
        "5X,'STEPPING PARAMETER ............................. =',I5,/,"
        "5X,'1: EUCLIDEAN NORM.',/,"
        "5X,'2: MAXIMUM VALUE.',/,"
        "5X,'3: SPECIFIED STEPPING VECTOR(S).'",
        s.KNMS);
  write(out, "5X,'SEGMENT VALUE .................................. =',E12.4", s.SEGVAL);
  write(out, "5X,'NO. OF STEPPING VECTORS ........................ =',I5", s.NSVEC);
  write(out,
        "5X,'STEP DIRECTION CODE ............................ =',I5,/,"
        "5X,'1: INCREASE LOAD MAGNITUDE EACH STEP.',/,"
        "5X,'2: INCREASE SCALAR DISPLACEMENT USING (CRITICAL) STEP VECTOR.',/,"
        "5X,'3: INCREASE SCALAR DISPLACEMENT USING DIRECTION VECTOR.',/,"
        "5X,'4: DETERMINE SIGN OF LOAD INCREMENT USING BERGANS CURRENT STIFFNESS PARAMETER.'",
        s.KDIR);
  write(out, "5X,'INITIAL STEP FACTOR FOR SEGMENT   .............. =',E12.4", s.STEP0);
  write(out, "5X,'MAXIMUM NUMBER OF STEPS ........................ =',I5", s.NSTEPS);
  write(out,
        "5X,'ELEMENT EVENT CODE ............................. =',I5,/,"
        "5X,'0: NO EVENT CHECK.',/,"
        "5X,'1: EVENT CHECK, NO LIMIT ON NUMBER OF EVENTS.',/,"
        "' N .GT.1: CHECK EVENTS, UP TO N EVENTS IN ANY STEP.'",
        s.KEVENT);
}

void echo_iteration_items(const SegmentBlock& s, int out) {
  write(out,
        "5X,'ITERATION TYPE ................................. =',I5,/,"
        "5X,'1: CONSTANT LOAD.',/,"
        "5X,'2: CONSTANT SCALAR DISPLACEMENT.'",
        s.KITER);
  write(out,
        "5X,'ITERATION PARAMETER ............................ =',I5,/,"
        "5X,'1: CONSTANT WORK.',/,"
        "5X,'2: CONSTANT \"ARC LENGTH\".',/,"
        "5X,'3: CRITICAL STEPPING VECTOR.',/,"
        "5X,'4: ITERATION VECTOR.'",
        s.KIPAR);
  write(out, "5X,'MAX. NO. OF ITERATIONS PER STEP ................ =',I5", s.MAXIT);
  write(out,
        "5X,'TERMINATION CODE ............................... =',I5,/,"
        "5X,'0: IF MAXIT IS EXCEEDED, RESTEP.',/,"
        "5X,'1: IF MAXIT IS EXCEEDED, STOP.',/,"
        "5X,'2: IF MAXIT IS EXCEEDED, CONTINUE.'",
        s.KTERM);
  write(out,
        "5X,'TERMINATION LOAD FACTOR......................... =',E12.4,/,"
        "5X,': STOP IF MACRO LOAD FACTOR LE FQUIT'",
        s.FQUIT);
}

void echo_update_items(const SegmentBlock& s, int out) {
  write(out, "5X,'STEP CONTROL FOR STIFFNESS UPDATE .............. =',I5", s.KSSTF);
  write(out, "5X,'ITERATION CONTROL FOR STIFFNESS UPDATE ......... =',I5", s.KISTF);
  write(out,
        "5X,'BFGS CODE ...................................... =',I5,/,"
        "5X,'0: NO BFGS.',/,"
        "5X,'1: BFGS BETWEEN STIFFNESS UPDATES.'",
        s.KBFGS);
  write(out, "5X,'ITERATION CONTROL FOR STATE UPDATE ............. =',I5", s.KISTA);
}

void echo_output_items(const SegmentBlock& s, int out) {
  write(out,
        "5X,'RESULTS PRINT CODE ............................. =',I5,/,"
        "5X,'0: NONE.',/,"
        "5X,'1: END OF SEGMENT.',/,"
        "5X,'2: EVERY STEP.',/,"
        "5X,'3: EVERY ITERATION.'",
        s.KPRINT);
  write(out,
        "5X,'RESULTS SAVE CODE .............................. =',I5,/,"
        "5X,'0: NO.',/,"
        "5X,'1: ON RESTART FILE AT END OF SEGMENT.'",
        s.KRST);
  write(out,
        "5X,'POST-PROCESSOR RESULTS SAVE CODE ............... =',I5,/,"
        "5X,'0: NO.',/,"
        "5X,'1: AT END OF SEGMENT.'",
        s.KPOST);
  write(out,
        "5X,'MEMBER STRESS CHECK RESULTS SAVE CODE .......... =',I5,/,"
        "5X,'0: NO.',/,"
        "5X,'1: AT END OF SEGMENT.'",
        s.KMEMB);
  write(out,
        "5X,'POST-PROCESSOR RESULTS SAVE CODE ............... =',I5,/,"
        "5X,'0: DO NOT SAVE IN STEP LEVEL',/,"
        "5X,'N: SAVE RESULTS AT EVERY N STEPS'",
        s.KPOSTN);
  write(out, "5X,'ULT LOAD FACTOR ................................ =',E12.4", s.ULTFAC);
  write(out, "5X,'MACPR,IROB,ARCL,STEPSZI ................ =',2I5,2E12.4", s.MACPR, s.IROB, s.ARCL, s.STEPSZI);
}

}  // namespace

void echo_solution_card() {
  write(units.NDOUT, "/,/,5X,'*** SOLUTION SPECIFICATION ***',/");
  echo_step_items(segment, units.NDOUT);
  echo_iteration_items(segment, units.NDOUT);
}

void echo_control_card() {
  write(units.NDOUT, "/,/,5X,'*** STIFFNESS, STATE AND OUTPUT CONTROL ***',/");
  echo_update_items(segment, units.NDOUT);
  echo_output_items(segment, units.NDOUT);
}

void echo_convergence_card() {
  const SegmentBlock& s = segment;
  const int out = units.NDOUT;
  write(out, "/,/,5X,'*** CONVERGENCE CRITERIA ***',/");
  write(out,
        "5X,'UNBALANCE TYPE ................................. =',I5,/,"
        "5X,'0: MAXIMUM VALUE.',/,"
        "5X,'1: EUCLIDEAN NORM.',/,"
        "5X,'OTHER VALUES: WEIGHTED NORM.'",
        s.KUTYPE);
  write(out,
        "5X,'MOMENT CODE FOR UNBALANCE ...................... =',I5,/,"
        "5X,'0: IGNORE.',/,"
        "5X,'1: INCLUDE.'",
        s.KUMOM);
  write(out, "5X,'UNBALANCE TOLERANCE, FOR ALL EXCEPT LAST STEP .. =',E12.4", s.TOLU);
  write(out, "5X,'UNBALANCE TOLERANCE FOR LAST STEP .............. =',E12.4", s.TOLL);
  write(out,
        "5X,'UNBALANCE FOR STEP MAGNITUDE SCALING ........... =',E12.4,/,"
        "5X,'GT 0.0: LINEAR SCALING UNTIL UNBALANCE LESS THAN VALUE.'",
        s.USCALE);
  write(out, "5X,'MAXIMUM NO. OF LINE SEARCHES IN ITERATION PHASE. =',I5", s.NLS);
  write(out, "5X,'UPPER SEARCH LIMIT ............................. =',E12.4", s.SUP);
  write(out, "5X,'LOWER SEARCH LIMIT ............................. =',E12.4", s.SLOW);
  write(out, "5X,'CONVERGENCE TOLERANCE FOR LINE SEARCH .......... =',E12.4", s.TOLS);
  write(out, "5X,'NTOP ........................................... =',I5", s.NTOP);
}

void echo_restep_card() {
  const SegmentBlock& s = segment;
  const int out = units.NDOUT;
  write(out, "/,/,5X,'*** RESTEPPING CRITERIA ***',/");
  write(out, "5X,'STEP SIZE REDUCTION FACTOR ..................... =',E12.4", s.RFAC);
  write(out, "5X,'MINIMUM ALLOWABLE STEP SIZE .................... =',E12.4", s.STEPMIN);
  // The last sentence stands in the report as one line, its halves run together.
  write(out,
        "5X,'TERMINATION CODE ............................... =',I5,/,"
        "5X,'0: IF MINIMUM STEP IS REACHED CONTINUE.',/,"
        "5X,'N: IF MORE THAN N ATTEMPTS ARE MADE TO REDUCE','STEP SIZE BELOW MINIMUM THEN QUIT.'",
        s.NATT);
  write(out, "5X,'LOWER LIMIT ON NO OF ITERATIONS ................ =',I5", s.ITLOW);
  write(out, "5X,'STEP SIZE INCREASE FACTOR ...................... =',E12.4", s.IFAC);
  write(out, "5X,'MAXIMUM ALLOWABLE STEP SIZE .................... =',E12.4", s.STEPMAX);
  write(out,
        "5X,'CONVERGENCE PREDICTION CODE .................... =',I5,/,"
        "5X,'0: NO PREDICTION.',/,"
        "5X,'N: START PREDICTION AT ITERATION N.'",
        s.KPRED);
  write(out, "5X,'GRACE RATIO .................................... =',E12.4", s.GRACE);
  write(out, "5X,'WEIGHTING FACTOR FOR ITERATION PREDICTION ...... =',E12.4", s.WPRED);
  write(out, "5X,'MAXIMUM ALLOWABLE UNBALANCE FORCE .............. =',E12.4", s.UMAX);
}

}  // namespace tidearc
