// EFFLOD: the right-hand side of a step's first solve.
#include "dynamic/commands.h"
#include "dynamic/scheme.h"
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/masses.h"
#include "solve/arrays.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

/// What stiffness-proportional damping of the elements adds: dynamic effective forces of the last state less its
/// damping forces, in RU.
void form_element_part() {
  if (!dynamics.has_damping) {
    clear_vector(arrays.RU);
    return;
  }
  const IntegrationBlock& c = integration;
  sum_dynamic_forces(c.A4, start_damping_coefficient(c), arrays.VEL, arrays.ACC, {arrays.RU, 0, arrays.DAMP});
  const Reals RU = equation_vector(arrays.RU);
  const Reals DAMP = equation_vector(arrays.DAMP);
  for (int e = 1; e <= sizes.NEQ; ++e) RU(e) -= DAMP(e);
}

/// v = (XI' - XI_n) / DT and a = 0 at prescribed equations. The constants then give v' = v and a' = 0, in accord with
/// the effective matrix; left to the constants, the velocity of a support would swing about its own for ever.
void set_prescribed_motion() {
  const Reals VEL = equation_vector(arrays.VEL);
  const Reals ACC = equation_vector(arrays.ACC);
  const Reals XI = equation_vector(arrays.XI);
  const Reals XIN = equation_vector(arrays.XIN);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (!prescribed(e)) continue;
    VEL(e) = (XI(e) - XIN(e)) / integration.DT;
    ACC(e) = ZERO;
  }
}

}  // namespace

void set_remaining_ways() {
  const Reals RU = equation_vector(arrays.RU);
  const Reals U = equation_vector(arrays.U);
  const Reals UTS = equation_vector(arrays.UTS);
  const Reals XI = equation_vector(arrays.XI);
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (prescribed(e)) RU(e) = (UTS(e) + XI(e)) - U(e);
}

void EFFLOD() {
  const TimedPhase timed("EFFLOD");
  set_prescribed_motion();
  form_element_part();
  const IntegrationBlock c = integration;
  const Reals RU = equation_vector(arrays.RU);
  const Reals P = equation_vector(arrays.P);
  const Reals PN = equation_vector(arrays.PN);
  const Reals RN = equation_vector(arrays.RN);
  const Reals VEL = equation_vector(arrays.VEL);
  const Reals ACC = equation_vector(arrays.ACC);
  const Reals M = pool.reals(masses.AMASS, NEQ1());
  for (int e = 1; e <= sizes.NEQ; ++e)
    RU(e) += weighted(c, P(e), PN(e)) - RN(e) + inertia_load(c, M(e), VEL(e), ACC(e));
  set_remaining_ways();
}

}  // namespace tidearc
