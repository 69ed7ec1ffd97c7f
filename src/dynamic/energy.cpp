// ENERGY: where the work of the loads goes.
//
// Relative energies after C.-M. Uang and V. V. Bertero, Earthquake Eng. Struct. Dyn. 19 (1990) 77-90: displacements and
// velocities are those relative to the ground, whose acceleration is a load. Work is summed by the trapezoidal rule
// over each step, the order of the scheme; with AB 0, and equilibrium at both ends, the sums balance to rounding.
#include "dynamic/parts.h"
#include "dynamic/step.h"
#include "model/masses.h"
#include "solve/arrays.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

/// Of the free equations.
double kinetic_energy(int velocity) {
  const Reals v = equation_vector(velocity);
  const Reals M = pool.reals(masses.AMASS, NEQ1());
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e)
    if (!prescribed(e)) sum += M(e) * v(e) * v(e);
  return 0.5 * sum;
}

/// Work of a force that goes from `start` to `end` over the step's increment.
double work(int start, int end) {
  const Reals first = equation_vector(start);
  const Reals last = equation_vector(end);
  const Reals d = equation_vector(arrays.DSTEP);
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e) sum += (first(e) + last(e)) * d(e);
  return 0.5 * sum;
}

/// Work of the loads on free equations, and of what the supports bear on prescribed ones.
double external_work() {
  const Reals P = equation_vector(arrays.P);
  const Reals PN = equation_vector(arrays.PN);
  const Reals R = equation_vector(arrays.R);
  const Reals RN = equation_vector(arrays.RN);
  const Reals D = equation_vector(arrays.D);
  const Reals DN = equation_vector(arrays.DN);
  const Reals d = equation_vector(arrays.DSTEP);
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e) sum += (prescribed(e) ? (RN(e) + DN(e)) + (R(e) + D(e)) : PN(e) + P(e)) * d(e);
  return 0.5 * sum;
}

}  // namespace

void start_energies() {
  Energies& energy = dynamics.energy;
  const double now = kinetic_energy(arrays.VEL);
  energy.external += now - energy.kinetic;
  energy.kinetic = now;
  start_energy_files();
}

void ENERGY() {
  const TimedPhase timed("ENERGY");
  Energies& energy = dynamics.energy;
  energy.external += external_work();
  energy.kinetic = kinetic_energy(arrays.VT);
  energy.elastic += work(arrays.RN, arrays.R);
  energy.viscous += work(arrays.DN, arrays.D);
  write_energy_files();
}

}  // namespace tidearc
