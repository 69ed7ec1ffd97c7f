// Passes over all elements: what analyses ask of the element library.
// One element at a time is current in the work block; groups and elements come in the order of the deck.
#pragma once

#include <functional>

namespace tidearc {

/// Element input, all NELGR groups: records, location vectors, column heights, element masses and self weight, and the
/// profile, unless nodes are to be renumbered (IBANDW not 0), which RENUMB (renumber.h) does and then the profile.
void ELDATA();
/// Makes the element records ready for the passes and prints the storage report. A core job loads them above KEDAT, and
/// stops when they do not fit; those of a disk job stay on files.
void LODELM();

/// The motion that a determination goes along with, as pool vectors of NEQ1; 0: none.
struct Motion {
  int velocity = 0;      ///< of the trial state, for state determination (EVEL)                     [1/s]
  int acceleration = 0;  ///< likewise (EACC)                                                        [1/s2]
  int damped = 0;        ///< velocities to which the damping forces belong                          [1/s]
  int damping = 0;       ///< gets the damping forces (EDAMP) of the elements, summed from zero      [force]
};
/// State determination of every element from the reference generation with the increment U - U0 (pool vectors of NEQ1),
/// and the resisting forces of the new states summed into R, in one walk with the damping forces that `motion` asks
/// for. Sets NELCHK to the last element with a changed matrix. Records on the element-state log that are not committed
/// are dropped first.
void determine_states(const Motion& motion = {});
/// The current generation becomes the reference; log records so far are committed.
void take_over_states();
/// Takes the states at hand over and starts the extremes of all elements anew: they become the present values, at TIME,
/// in both generations.
void restart_element_envelopes();
/// Both generations of the element states, and log bookkeeping, kept from the start of TapeFile NT15 on; records that a
/// caller writes next follow behind them. Costs least right behind a state update. In a disk job NT15 may have become
/// another file.
void save_states();
/// Goes back to them; NT15 then stands where the caller's records begin. May be repeated.
void recover_states();
/// What the elements would bear if they went from the kept states (current generation of save_states) through a
/// displacement increment: determination of all of them, resisting forces and damping forces at `velocity`, each summed
/// from zero. Arguments are pool vectors of NEQ1. Nothing of the states, of NELCHK and of the log changes; NT15 then
/// stands somewhere, which recovering does not mind.
void determine_midstep(int change, int velocity, int resisting, int damping);

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

/// True when some group has damping, so that damping forces and dynamic forces can differ from zero.
bool elements_damp();

/// An element as messages name it; group 0: none.
struct ElementPlace {
  int group = 0;   ///< running number of the group
  int number = 0;  ///< number of the element
};
/// First element whose resisting forces, of the state at hand, are not finite.
ElementPlace first_bad_element();

/// Pool vectors (NEQ1) of the dynamic force pass; 0: not asked for.
struct DynamicForces {
  int effective = 0;  ///< dynamic effective forces (EDYNF)                                 [force]
  int resisting = 0;  ///< resisting forces (ERES)                                          [force]
  int damping = 0;    ///< damping forces (EDAMP)                                           [force]
};
/// The dynamic force pass (RDYNAM), over the states at hand, which stay as they are: stiffness-proportional damping
/// applied to (1+c1) v + c2 a with the pool vectors VEL and ACC (NEQ1), and, when asked for, resisting and damping
/// forces. Each vector asked for is summed from zero. Groups without damping are passed over but for resisting forces.
void sum_dynamic_forces(double c1, double c2, int VEL, int ACC, const DynamicForces& into);

/// Resisting forces and damping forces (at the velocities `damped`) of the states at hand, which stay as they are,
/// group by group: the two pool vectors (NEQ1) are summed from zero for each group and done(group) is called behind its
/// last element, for groups without elements too.
void sum_forces_by_group(int damped, int resisting, int damping, const std::function<void(int group)>& done);

/// Loads of waves and dynamic current at `time`, summed from zero into pool vector `into` (NEQ1), from the motion in
/// the pool vectors of displacements, velocities and accelerations; with load lines when asked for. The elements keep
/// their own for reports. Nothing of their states changes.
void form_wave_loads(double time, bool lines, int into);

/// Results of every element of every group (ELMPRT): on the report, or with print code -1 the end forces of members on
/// the load file; and their envelopes (ELMENV).
void print_elements(int print_code = 1);
void print_element_envelopes();

}  // namespace tidearc
