// Constant steps with equilibrium iteration: what the cards of a DYN2 macro say, and the files that make it up.
#pragma once

#include "dynamic/step.h"

namespace tidearc {

/// The second and third card of a DYN2 macro, defaults filled in. (The first one and the rules of the norm go into the
/// blocks that the shared phases of a step read.)
struct ConstantSteps {
  int NSTEP = 0;     ///< steps                                                                    [-]
  int NINIT = 0;     ///< initial condition cards; -1 start from rest, 0 from the state at hand    [-]
  int KGRND = 0;     ///< not 0: ground acceleration card
  int NFORCE = 0;    ///< force commands                                                           [-]
  int NIMPOS = 0;    ///< imposed displacement commands                                            [-]
  int KPNOD = 0;     ///< node responses on the report after every so many steps, 0 never          [-]
  int KPELM = 0;     ///< element responses likewise                                               [-]
  int KPENV = 0;     ///< envelopes likewise                                                       [-]
  int KRST = 0;      ///< results on the restart file likewise                                     [-]
  int KENV = 0;      ///< 1: envelopes begin at the state at hand
  int KDUMP = 0;     ///< code to dump beam envelopes: stored, echoed
  int KPOST = 0;     ///< results for the post-processor after every so many steps, 0 never        [-]
  int KRISAV = 0;    ///< 1: wave and inertia loads are written
  int MAXIT = 1;     ///< most iterations of a step                                                [-]
  int KSSTF = 1;     ///< step control for stiffness update
  int KISTF = 0;     ///< iteration control for stiffness update, 0: by steps
  int KISTA = 1;     ///< iteration control for state update
  int KTERM = 0;     ///< 0: a step that does not converge is accepted, else it ends the macro
  double TOL = 0.0;  ///< an unbalance norm not above it has converged                           [force]
  int ISLULT = 0;    ///< 1: wave loads are recorded, nothing is solved
};

// dyn2_cards.cpp

/// Reads, defaults and echoes the three control cards. A value that cannot be worked with sets the fatal flag; output
/// of wave loads in a problem without waves ends the run.
ConstantSteps read_constant_steps();

// dyn2_step.cpp

/// True when an update is due in iteration NI of step NS: with an iteration control c at NI 1, 1 + c, 1 + 2c, .. of
/// every step; else with a step control c at NI 1 of the steps 1, 1 + c, ..
bool update_is_due(int NS, int NI, int step_control, int iteration_control);

enum class StepOutcome {
  accepted,
  unconverged,  ///< the last trial stands
  lost,         ///< not finite: the state at the start of the step stands again
};
/// One step, dynamics.NS, up to its acceptance.
StepOutcome take_constant_step(const ConstantSteps& job);

// dyn2_output.cpp

void write_dyn2_legend(const ConstantSteps& job);
/// What follows an accepted step: prints, saves and lines.
void report_constant_step(const ConstantSteps& job);
/// The words of a step without convergence on the report, and with them, when the termination code asks for it, node
/// and element responses and envelopes of the state at hand.
void report_no_convergence(const ConstantSteps& job);

}  // namespace tidearc
