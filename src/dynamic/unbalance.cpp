// UNBALN: what is missing to dynamic equilibrium at the trial, its norm, and the way out of values that are not finite.
#include <cmath>
#include <string>

#include "dynamic/parts.h"
#include "dynamic/scheme.h"
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/masses.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/norm.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

void form_dynamic_unbalance() {
  const IntegrationBlock c = integration;
  const Reals RU = equation_vector(arrays.RU);
  const Reals P = equation_vector(arrays.P);
  const Reals PN = equation_vector(arrays.PN);
  const Reals R = equation_vector(arrays.R);
  const Reals RN = equation_vector(arrays.RN);
  const Reals D = equation_vector(arrays.D);
  const Reals AT = equation_vector(arrays.AT);
  const Reals M = pool.reals(masses.AMASS, NEQ1());
  for (int e = 1; e <= sizes.NEQ; ++e) {
    const double unbalance = weighted(c, P(e), PN(e)) - weighted(c, R(e), RN(e)) - M(e) * AT(e) - D(e);
    RU(e) = prescribed(e) ? ZERO : unbalance;
  }
}

std::string place_of_equation(int equation) {
  const NodeDirection holder = holder_of(equation);
  return format("'NODE',I6,'  DIRECTION',I2", holder.node, holder.component);
}

/// Of a wave load that has met such a sea. Constrained components share one sum.
std::string place_of_wave_load(int equation) {
  return "THE WAVE LOAD OF " + (equation > sizes.NEQ ? std::string("A SUPPORT") : place_of_equation(equation));
}

/// Where the trial is not finite: the wave load of the step, which belongs to the state before it; its motion, since it
/// spoils the forces; then an element, then an equation.
std::string place_of_loss() {
  if (dynamics.bad_wave_equation != 0) return place_of_wave_load(dynamics.bad_wave_equation);
  const int moved = first_bad_equation({arrays.U, arrays.VT, arrays.AT});
  if (moved != 0) return place_of_equation(moved);
  const ElementPlace element_place = first_bad_element();
  if (element_place.group != 0) return format("'GROUP',I5,'  ELEMENT',I5", element_place.group, element_place.number);
  const int unbalanced = first_bad_equation({arrays.RU, arrays.P});
  return unbalanced != 0 ? place_of_equation(unbalanced) : std::string("THE NORM");
}

}  // namespace

void UNBALN() {
  const TimedPhase timed("UNBALN");
  if (dynamics.moving_loads) form_applied_load();
  form_damping_forces(arrays.VD);
  form_dynamic_unbalance();
  const UnbalanceNorm norm = unbalance_norm({dynamics.KUTYPE, dynamics.KUMOM});
  response.RNORM = norm.unbalance;
  dynamics.APPLIED = norm.applied;
}

void write_dynamic_top() {
  if (dynamics.NTOP < 1) return;
  write(UNIT_TOP, "G12.5", response.TIME);
  write_largest_unbalances(dynamics.NTOP);
}

bool trial_is_finite() {
  return std::isfinite(response.RNORM) && first_bad_equation({arrays.U, arrays.VT, arrays.AT}) == 0 &&
         dynamics.bad_wave_equation == 0;
}

void tell_lost_trial() {
  const std::string words = format("'  STEP',I6,'  TIME',E12.4,'  AT '", dynamics.NS, response.TIME) + place_of_loss();
  fatal_box(" SOLUTION IS NOT FINITE" + words);
  complain(not_on_deck, "solution is not finite:" + words);
}

}  // namespace tidearc
