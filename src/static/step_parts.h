// The parts of a load step, between the files that make it up. Nobody but they call them.
#pragma once

#include "static/stepping.h"

namespace tidearc {

/// The trial of an iteration.
struct Trial {
  double length = 1.0;     ///< part of the increment that free equations take                  [-]
  bool event = false;      ///< the increment was cut at an event; its rest follows in another pass
  bool had_event = false;  ///< some pass of this iteration was cut
  bool accepted = false;   ///< DDIS contains it
};

// increment.cpp

/// Stiffness and state decisions of iteration NI.
void decide_updates();
/// The same with an event in hand: both are due whatever the rules say, and the rules' counters move on.
void decide_updates_at_event();
/// A pass up to its increment, which becomes the vector BFGS2: load, state update, stiffness, solution, load increment.
/// False when no load increment reaches the target.
bool form_increment();

// trial.cpp

/// Cuts the increment, and what is left of the step, at the first event on the way. True when there is one.
bool cut_at_event();
/// Displacements, level, element states, internal forces, unbalance and norm of the trial of this length.
void determine_trial(double length);
/// True when this iteration searches along its increment; announces the search.
bool begin_search(const Trial& trial);
/// Searches along the increment from the trial at hand, which is the first one. Leaves the best, or one that is good
/// enough, as the trial at hand. False when a trial of it is refused.
bool search_along_increment(Trial& trial);
/// True when the trial at hand may not stand: it is not finite, or too far out of balance where restepping is on. A
/// search without restepping goes on from a trial that is not finite.
bool refused(bool searching);
/// Takes the trial over.
void accept_trial(Trial& trial);

// restep.cpp

/// The state at the step start, kept for a restep or for the way back from a state that is not finite.
void save_step_start();
/// What becomes of a trial that is refused.
Outcome leave_refused(Trial& trial);
/// A smaller step from the step start when that is allowed; else the trial is taken as it stands, or given up.
Outcome restep(Trial& trial);
/// NI has run past MAXIT.
Outcome leave_unconverged();
/// No load increment was found in this iteration.
Outcome leave_without_increment();

}  // namespace tidearc
