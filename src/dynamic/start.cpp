// The start of a dynamic macro, and what it leaves behind.
#include <span>

#include "dynamic/commands.h"
#include "dynamic/parts.h"
#include "dynamic/step.h"
#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "model/control.h"
#include "results/reports.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "static/stepping.h"

namespace tidearc {

namespace {

/// Everything is formed anew in the first step, with the mass term; the macro begins at the time at hand.
void begin_counts() {
  dynamics.TSTART = response.TIME;
  dynamics.NS = 0;
  dynamics.NI = 0;
  if (response.NLSTEP == 0) response.NLSTEP = 1;
  response.RNORM = ZERO;
  solver.KFORM = 0;
  solver.KRESET = 1;
  solver.NELCHK = element_counts.NELTOT;
  integration.NEWCON = 0;
  dynamics.has_damping = elements_damp();
  dynamics.moving_loads = static_loads_move();
  step.forces_known = false;  // a static analysis behind this one forms its forces anew
}

/// Equations that static patterns hold stay where they are; those of displacement commands follow their records.
void hold_prescribed_equations() {
  const CommandList& list = commands.displacements;
  const Integers moved = pool.integers(list.equation, list.count);
  PRESTAT({}, std::span<const int>(moved.data(), static_cast<std::size_t>(list.count)));
}

void begin_displacements() {
  for (const int copy : {arrays.U0, arrays.UN, arrays.UTS}) copy_vector(copy, arrays.U);
  for (const int vector : {arrays.DSTEP, arrays.XI, arrays.XIN, arrays.DAMP}) clear_vector(vector);
}

/// Loads, resisting and damping forces of the state at hand, from one determination at zero increment.
void form_starting_forces() {
  form_first_load();
  determine_states({arrays.VEL, arrays.ACC, arrays.VEL, arrays.DAMP});
  dynamics.taken_over = false;
  form_damping_forces(arrays.VEL);
  copy_vector(arrays.PN, arrays.P);
  copy_vector(arrays.RN, arrays.R);
  copy_vector(arrays.DN, arrays.D);
  // A step that solves nothing ends with the motion that it begins with.
  copy_vector(arrays.VT, arrays.VEL);
  copy_vector(arrays.AT, arrays.ACC);
}

/// Node extremes begin at the displacements at hand, element extremes at the state at hand.
void restart_all_envelopes() {
  for (const int vector : {arrays.ENVMAX, arrays.ENVMIN}) copy_vector(vector, arrays.U);
  for (const int vector : {arrays.TMAX, arrays.TMIN}) {
    const Reals times = equation_vector(vector);
    for (int e = 1; e <= sizes.NEQ; ++e) times(e) = response.TIME;
  }
  restart_element_envelopes();
}

}  // namespace

void start_dynamics(bool restart_envelopes) {
  open_state_log();
  begin_counts();
  hold_prescribed_equations();
  begin_displacements();
  form_starting_forces();
  start_energies();
  clear_node_envelopes();
  if (restart_envelopes) restart_all_envelopes();
}

void end_dynamics() { SDUP(); }

}  // namespace tidearc
