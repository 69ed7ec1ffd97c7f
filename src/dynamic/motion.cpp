// Motion of the trial, state determination, and what makes a trial the accepted state.
#include "assembly/assembly.h"
#include "dynamic/parts.h"
#include "dynamic/scheme.h"
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/masses.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

/// U, v', a', w' of the trial, always anew from the increment and the accepted state.
void form_motion() {
  const IntegrationBlock c = integration;
  const Reals d = equation_vector(arrays.DSTEP);
  const Reals UN = equation_vector(arrays.UN);
  const Reals VEL = equation_vector(arrays.VEL);
  const Reals ACC = equation_vector(arrays.ACC);
  const Reals U = equation_vector(arrays.U);
  const Reals VT = equation_vector(arrays.VT);
  const Reals AT = equation_vector(arrays.AT);
  const Reals VD = equation_vector(arrays.VD);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    U(e) = UN(e) + d(e);
    VT(e) = new_velocity(c, d(e), VEL(e), ACC(e));
    AT(e) = new_acceleration(c, d(e), VEL(e), ACC(e));
    VD(e) = damped_velocity(c, VT(e), ACC(e));
  }
}

/// Without mass nothing ties the acceleration, and without damping nothing the velocity: they are those of the
/// displacements. Prescribed equations keep the velocity of the step.
void set_massless_motion() {
  const Reals d = equation_vector(arrays.DSTEP);
  const Reals VEL = equation_vector(arrays.VEL);
  const Reals VT = equation_vector(arrays.VT);
  const Reals AT = equation_vector(arrays.AT);
  const Reals M = pool.reals(masses.AMASS, NEQ1());
  const double DT = integration.DT;
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (prescribed(e)) {
      VT(e) = VEL(e);
      AT(e) = ZERO;
    } else if (M(e) == ZERO) {
      if (!dynamics.has_damping) VT(e) = d(e) / DT;
      AT(e) = (VT(e) - VEL(e)) / DT;
    }
  }
}

}  // namespace

void form_damping_forces(int velocity) {
  const Reals D = equation_vector(arrays.D);
  const Reals DAMP = equation_vector(arrays.DAMP);
  const Reals v = equation_vector(velocity);
  const Reals M = pool.reals(masses.AMASS, NEQ1());
  for (int e = 1; e <= sizes.NEQ; ++e) D(e) = integration.DMASS * M(e) * v(e) + DAMP(e);
}

void DYNINI() {
  const TimedPhase timed("DYNINI");
  response.TIME += integration.DT;
  ++solver.KFORM;
}

void FSTIF() {
  const TimedPhase timed("FSTIF");
  STIFUP();
}

void DISSOL() {
  const TimedPhase timed("DISSOL");
  SOLVE(arrays.RU);
}

void SDUP() {
  const TimedPhase timed("SDUP");
  if (!dynamics.taken_over) take_over_states();
  dynamics.taken_over = true;
  copy_vector(arrays.U0, arrays.U);
}

void RESPD1() {
  const TimedPhase timed("RESPD1");
  form_motion();
  determine_states({arrays.VT, arrays.AT, arrays.VD, dynamics.has_damping ? arrays.DAMP : 0});
  dynamics.taken_over = false;
}

void accept_step() {
  set_massless_motion();
  copy_vector(arrays.VEL, arrays.VT);
  copy_vector(arrays.ACC, arrays.AT);
  copy_vector(arrays.UN, arrays.U);
  copy_vector(arrays.PN, arrays.P);
  copy_vector(arrays.RN, arrays.R);
  copy_vector(arrays.DN, arrays.D);
  copy_vector(arrays.XIN, arrays.XI);
}

}  // namespace tidearc
