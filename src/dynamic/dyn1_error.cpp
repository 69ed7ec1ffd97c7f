// The error of a substep: the residual of the equation of motion at the middle of the step, or the local error of the
// displacements. Both look at the whole increment, also where only a part of it is taken up to an event.
#include <cmath>

#include "dynamic/commands.h"
#include "dynamic/dyn1.h"
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

/// Calls action(e) for the free equations of every node in turn, as often as nodes hold them.
template <class Action>
void for_each_free_component(Action&& action) {
  const IntegerTable ID = node_ID();
  const int last = dyn1.cards.KMOMENT == 1 ? 6 : 3;
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    for (int c = 1; c <= last; ++c) {
      const int e = ID(n, c);
      if (e <= sizes.NEQ && !prescribed(e)) action(e);
    }
  }
}

/// Calls action(e, motion) with the motion of each equation at the middle of the step.
template <class Action>
void for_each_midstep_motion(Action&& action) {
  const Reals taken = equation_vector(arrays.DSTEP);
  const Reals du = equation_vector(arrays.RU);
  const Reals v = equation_vector(arrays.VEL);
  for (int e = 1; e <= sizes.NEQ; ++e) action(e, midstep_motion(taken(e) + du(e), v(e), integration.DT));
}

void form_midstep_motion(Reals change, Reals velocity) {
  for_each_midstep_motion([&](int e, const Midstep& middle) {
    change(e) = middle.displacement;
    velocity(e) = middle.velocity;
  });
  change(NEQ1()) = ZERO;
  velocity(NEQ1()) = ZERO;
}

/// The applied load at the middle of the step, at the level of the step, becomes the pool vector.
void form_midstep_load(int vector) {
  copy_vector(vector, arrays.PS);
  add_record_loads(response.TIME - 0.5 * integration.DT - dynamics.TSTART, dynamics.level, equation_vector(vector));
}

/// Loads less all forces at the middle of the step.
Reals form_midstep_residual() {
  form_midstep_motion(equation_vector(arrays.BFGS1), equation_vector(arrays.BFGS2));
  determine_midstep(arrays.BFGS1, arrays.BFGS2, arrays.RA, arrays.RINC);
  const Reals resisting = equation_vector(arrays.RA);
  const Reals damping = equation_vector(arrays.RINC);
  const Reals mass = pool.reals(masses.AMASS, NEQ1());
  const Reals residual = equation_vector(arrays.BFGS1);
  form_midstep_load(arrays.BFGS1);
  for_each_midstep_motion([&](int e, const Midstep& middle) {
    residual(e) -= resisting(e) + damping(e) + mass(e) * (middle.acceleration + integration.DMASS * middle.velocity);
  });
  return residual;
}

double midstep_error() {
  const Reals residual = form_midstep_residual();
  double largest = ZERO;
  for_each_free_component([&](int e) {
    const double entry = std::abs(residual(e));
    if (!std::isnan(largest) && !(entry <= largest)) largest = entry;  // the first that is not a number stays
  });
  return largest;
}

double norm_of_local_errors() {
  const IntegrationBlock& c = integration;
  const Reals mass = pool.reals(masses.AMASS, NEQ1());
  const Reals taken = equation_vector(arrays.DSTEP);
  const Reals du = equation_vector(arrays.RU);
  const Reals v = equation_vector(arrays.VEL);
  const Reals a = equation_vector(arrays.ACC);
  double sum = ZERO;
  for_each_free_component([&](int e) {
    if (mass(e) == ZERO) return;  // no inertia ties its acceleration
    const double entry = local_error(c.A0, c.A1, c.A3, du(e) + taken(e), v(e), a(e), dyn1.scale);
    sum += entry * entry;
  });
  return std::sqrt(sum);
}

}  // namespace

double measure_error() {
  if (measures_midstep(dyn1.cards.KSOL)) return midstep_error();
  return dyn1.cards.KSOL == SolutionType::local_error ? norm_of_local_errors() : ZERO;
}

}  // namespace tidearc
