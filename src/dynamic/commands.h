// What drives a dynamic macro: its initial conditions, and the commands that put records on nodes and on the ground.
//
// Records are functions of their own time. A command says at which record time its macro begins, so the record time is
// that value plus the time since the start of the macro (`elapsed`).
#pragma once

#include <array>
#include <type_traits>

#include "run/views.h"

namespace tidearc {

struct GroundCommand {
  int record = 0;      ///< 0: no motion in this direction
  double time = 0.0;   ///< record time at the start of the macro     [s]
  double scale = 0.0;  ///< [-]
};

/// Entries of force or displacement commands that act: one for each node of a command whose component is free, in the
/// order of the cards.
struct CommandList {
  int count = 0;     ///< entries                                                    [-]
  int time = 1;      ///< pool index, reals: record time at the start of the macro   [s]
  int scale = 1;     ///< pool index, reals                                          [-]
  int equation = 1;  ///< pool index, integers; 1..NEQ
  int record = 1;    ///< pool index, integers
};

/// Written by DYNCMD, anew for each macro.
struct CommandBlock {
  std::array<GroundCommand, 3> ground{};  ///< master axes X, Y, Z
  int ground_loads = 0;                   ///< equations in the list of load_records that ground acceleration loads
  CommandList forces;
  CommandList displacements;
};
inline CommandBlock commands;
static_assert(std::is_trivially_copyable_v<CommandBlock>);

/// Reads and echoes the initial condition cards of a dynamic macro and sets VEL and ACC (equations, nodal axes): count
/// below 0: both and DSTEP cleared; 0: all as they are; else cleared and set from so many cards. U stays. Prints the
/// table of initial conditions. A wrong component is marked and sets the fatal flag, a wrong node is a data error. When
/// not executing the cards are read and echoed, nothing is set, and there is no table.
void read_initial_conditions(int count);

/// Reads and echoes the ground acceleration card (when `ground_code` is not 0) and the force and displacement commands
/// of a dynamic macro. Marks set the fatal flag. An entry with a mark, one behind the limit (NDFND, NIDND) and one on a
/// constrained component is not stored. What the macro before has stored is gone.
void DYNCMD(int ground_code, int force_commands, int displacement_commands);

/// Adds level times the loads of all force entries and of the ground acceleration (-mass times acceleration, each
/// translational equation once, in nodal axes) to P (NEQ1).
void add_record_loads(double elapsed, double level, Reals P);
/// XI (NEQ1) = imposed displacement since the start of the macro at every equation that a displacement entry holds, 0
/// elsewhere.
void form_imposed(double elapsed, Reals XI);
/// True when there is something to act: a force entry or a ground acceleration record; a displacement entry.
bool has_record_loads();
bool has_imposed();

}  // namespace tidearc
