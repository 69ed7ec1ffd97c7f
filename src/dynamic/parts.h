// The parts of a dynamic step, between the files that make it up. Nobody but they call them.
#pragma once

namespace tidearc {

// loads.cpp

/// True when some static load that acts depends on the displacements.
bool static_loads_move();
/// P from nothing: the static part, then as below.
void form_first_load();
/// P of TIME at the displacements at hand: static part (formed again when it moves) and records.
void form_applied_load();

// motion.cpp

/// D = damping forces of the elements (DAMP) and of the masses, at the velocities in pool vector `velocity`.
void form_damping_forces(int velocity);

// energy.cpp

/// The kinetic energy of the state at hand: what initial conditions have changed of it is work from outside.
void start_energies();

// energy_files.cpp

/// With energies asked for: the forces of each group at the macro's start, as the step before the first.
void start_energy_files();
/// Energies of the groups over the step, and the line of the step.
void write_energy_files();

}  // namespace tidearc
