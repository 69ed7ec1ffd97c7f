// The records of energies that are asked for on the problem size card: TAP41 to TAP46.
//
// TAP42 holds the resisting forces of each group at the last step, one record of NEQ reals a group, TAP44 the damping
// forces of its elements; TAP41 and TAP43 are their partners, with which they exchange their roles in each step, so
// that a step reads the forces at its start while it writes those at its end. TAP45 gets one record a step:
// elastic-plastic and viscous energy of each group. TAP46 gets the line of the step.
#include "dynamic/energy_files.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "dynamic/parts.h"
#include "dynamic/step.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/tapefile.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

constexpr int unit_groups = 45;
constexpr int unit_lines = 46;

/// Work of a group's force over the step: the force at its start is the next record of `before`, that at its end goes
/// to `after`.
double group_work(int before, int after, Reals force) {
  const Reals first = equation_vector(arrays.WORK);
  const Reals d = equation_vector(arrays.DSTEP);
  FILE(before, "READ", ITWO * sizes.NEQ, first.data());
  FILE(after, "WRIT", ITWO * sizes.NEQ, force.data());
  double sum = ZERO;
  for (int e = 1; e <= sizes.NEQ; ++e) sum += (first(e) + force(e)) * d(e);
  return 0.5 * sum;
}

void rewind_force_files() {
  for (const int unit :
       {energy_files.forces, energy_files.next_forces, energy_files.damping, energy_files.next_damping})
    FILE(unit, "REWI");
}

/// Energies of each group over the step, and the forces at its end on the partners.
void advance_groups() {
  EnergyFileBlock& files = energy_files;
  rewind_force_files();
  // The vectors of update pairs are free in a dynamic analysis.
  sum_forces_by_group(arrays.VD, arrays.BFGS1, arrays.BFGS2, [](int group) {
    const auto g = static_cast<std::size_t>(2 * (group - 1));
    energy_files.energy[g] += group_work(energy_files.forces, energy_files.next_forces, equation_vector(arrays.BFGS1));
    energy_files.energy[g + 1] +=
        group_work(energy_files.damping, energy_files.next_damping, equation_vector(arrays.BFGS2));
  });
  std::swap(files.forces, files.next_forces);
  std::swap(files.damping, files.next_damping);
}

}  // namespace

void start_energy_files() {
  if (sizes.IENRGY != 1) return;
  rewind_force_files();
  sum_forces_by_group(arrays.VEL, arrays.BFGS1, arrays.BFGS2, [](int) {
    FILE(energy_files.forces, "WRIT", ITWO * sizes.NEQ, equation_vector(arrays.BFGS1).data());
    FILE(energy_files.damping, "WRIT", ITWO * sizes.NEQ, equation_vector(arrays.BFGS2).data());
  });
}

void write_energy_files() {
  if (sizes.IENRGY != 1) return;
  advance_groups();
  FILE(unit_groups, "WRIT", 2 * ITWO * sizes.NELGR, energy_files.energy.data());
  const Energies& energy = dynamics.energy;
  write_list(unit_lines, response.TIME, energy.external, energy.kinetic, energy.elastic, energy.viscous,
             energy.unbalance());
}

}  // namespace tidearc
