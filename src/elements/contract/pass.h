// Passes over all elements: what analyses ask of the element library.
// One element at a time is current in the work block; groups and elements come in the order of the deck.
#pragma once

#include <string_view>

namespace tidearc {

/// Element input, all NELGR groups: records, location vectors, column heights, element masses and self weight, and the
/// profile, unless nodes are to be renumbered (IBANDW not 0), which RENUMB (renumber.h) does and then the profile.
void ELDATA();
/// Makes the element records ready for the passes and prints the storage report. A core job loads them above KEDAT, and
/// stops when they do not fit; those of a disk job stay on files.
void LODELM();

/// State determination of every element from the reference generation with the increment U - U0 (pool vectors of NEQ1),
/// and the resisting forces of the new states summed into R. Sets NELCHK to the last element with a changed matrix.
/// Records on the element-state log that are not committed are dropped first.
void determine_states();
/// The current generation becomes the reference; log records so far are committed.
void take_over_states();
/// Both generations of the element states, and log bookkeeping, kept from the start of TapeFile NT15 on; records that a
/// caller writes next follow behind them. In a disk job NT15 may have become another file.
void save_states();
/// Goes back to them; NT15 then stands where the caller's records begin. May be repeated.
void recover_states();

/// First event of all elements under a displacement increment.
struct FirstEvent {
  double EFAC = 1.0;  ///< part of the increment up to the event, 1.0: none on the way      [-]
  int IEVT = 0;       ///< type of the event, as the element's type numbers it; 0 none      [-]
  int IGRP = 0;       ///< group of the element                                             [-]
  int IMEM = 0;       ///< number of the element                                            [-]
};
/// The event pass, over the states at hand, which stay as they are: the smallest factor below 1.0 for the increment in
/// pool vector `increment` (NEQ1); of equal ones the first in the order of the deck.
FirstEvent first_event(int increment);

/// Resisting forces of the states at hand, which stay as they are, summed into pool vector `resisting` (NEQ1).
void sum_resisting_forces(int resisting);

/// Pool vectors (NEQ1) of the dynamic force pass; 0: not asked for.
struct DynamicForces {
  int effective = 0;  ///< dynamic effective forces (EDYNF)                                 [force]
  int resisting = 0;  ///< resisting forces (ERES)                                          [force]
  int damping = 0;    ///< damping forces (EDAMP)                                           [force]
};
/// The dynamic force pass (RDYNAM), over the states at hand, which stay as they are: stiffness-proportional damping
/// applied to (1+c1) v + c2 a with the pool vectors VEL and ACC (NEQ1), and, when asked for, resisting and damping
/// forces. Each vector asked for is summed from zero.
void sum_dynamic_forces(double c1, double c2, int VEL, int ACC, const DynamicForces& into);

/// Results of every element of every group on the report (ELMPRT), and their envelopes (ELMENV).
void print_elements();
void print_element_envelopes();

}  // namespace tidearc
