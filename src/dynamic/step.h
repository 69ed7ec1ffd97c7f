// A step of a dynamic analysis: what both integrators share.
//
// The equation that is solved, with M lumped masses, C = DMASS M + sum(BETAO K0 + BETAT Kt), R resisting forces, P
// applied loads, n the start and ' the end of the step:
//   M a' + C w' + (1-AB) R' + AB R_n = (1-AB) P' + AB P_n,   w' = v' - AB DT a_n.
// Vectors (pool, NEQ1, solve/arrays.h): VEL, ACC are v, a of the accepted state n; VT, AT, VD are v', a', w' of the
// trial; UN, PN, RN, DN, XIN are U, P, R, D, XI of n; U, P, R, D, XI those of the trial; DSTEP is the increment d of
// the step so far; UTS is U at the macro's start. U0 is U at the last state update, as everywhere.
//
//   dyn2.cpp, dyn2_cards.cpp, dyn2_step.cpp, dyn2_output.cpp   constant steps: macro, cards, one step, lines
//   dyn1*.cpp        variable steps
//   scheme.h         the formulas, values to values
//   start.cpp        what comes before the first step
//   loads.cpp        RDYNAM: applied loads and imposed displacements of a time; sea_loads.cpp: of waves
//   effective.cpp    EFFLOD: the right-hand side at the start of a step
//   motion.cpp       velocities and accelerations; state determination; what makes a trial the accepted state
//   unbalance.cpp    UNBALN; the way out of a state that is not finite
//   energy.cpp       ENERGY; energy_files.cpp: the records of it by groups
//   prints.cpp       what both tell of a step, and the envelopes (ENVUP)
//   cards.cpp        what the control cards of both share; commands.cpp, initial.cpp: what drives a macro
#pragma once

#include <string_view>
#include <type_traits>

#include "run/timsub.h"

namespace tidearc {

struct Energies {
  double external = 0.0;  ///< work of the applied loads and of the supports that move     [force*length]
  double kinetic = 0.0;   ///< at TIME                                                     [force*length]
  double elastic = 0.0;   ///< work of the resisting forces: elastic and plastic           [force*length]
  double viscous = 0.0;   ///< work of the damping forces                                  [force*length]
  double unbalance() const { return external - kinetic - elastic - viscous; }
};

/// Where a dynamic macro stands. The energies run from problem start over all dynamic macros.
struct DynamicBlock {
  int NDYN1 = 0;              ///< DYN1 macros of the problem                                 [-]
  int NDYN2 = 0;              ///< DYN2 macros of the problem                                 [-]
  double TSTART = 0.0;        ///< TIME at the macro's start                                  [s]
  double ULTLVL = 0.0;        ///< load level of record loads; only DYN1 changes it           [-]
  double level = 1.0;         ///< level of the record loads in this macro: ULTLVL or 1.0     [-]
  int NS = 0;                 ///< step                                                       [-]
  int NI = 0;                 ///< iteration of the step                                      [-]
  int KUTYPE = 0;             ///< unbalance norm: 0 maximum, 1 Euclidean, else weighted
  int KUMOM = 0;              ///< 1: moments count in the norm
  int NTOP = 0;               ///< largest unbalances on TAP32                                [-]
  double APPLIED = 0.0;       ///< norm of the applied load                                   [force]
  bool has_damping = false;   ///< some group damps
  bool moving_loads = false;  ///< some static load that acts depends on the displacements
  bool taken_over = true;     ///< no determination since the last state update
  bool wave_formed = false;   ///< arrays.WAVE holds the wave load of wave_time
  int bad_wave_equation = 0;  ///< first one whose wave load at hand is not finite, NEQ+1 for constrained components
  double wave_time = 0.0;     ///< time of the wave loads at hand                             [s]
  Energies energy;
};
inline DynamicBlock dynamics;
static_assert(std::is_trivially_copyable_v<DynamicBlock>);

/// Counts the time of a phase under its name in the timer, from the end of the phase before to the end of the scope.
class TimedPhase {
 public:
  explicit TimedPhase(std::string_view name) : name_(name) { start_next_activity(name_, timers); }
  ~TimedPhase() { TIMSUB(name_, timer_stop, timers); }
  TimedPhase(const TimedPhase&) = delete;
  TimedPhase& operator=(const TimedPhase&) = delete;

 private:
  std::string_view name_;
};

/// What both macros do before their first step, when their cards, initial conditions and commands have been read and
/// INTCON has been called: log of element states, prescribed equations, full assembly, starting loads and forces (one
/// determination at zero increment), node envelopes. `restart_envelopes`: node and element extremes take the present
/// values. dynamics.level is set before, and begin_wave_loads has been called.
void start_dynamics(bool restart_envelopes);
/// The state at hand becomes the one from which later analyses go on.
void end_dynamics();

// The phases of a step. Each counts its own time.

/// TIME += DT, KFORM counts up.
void DYNINI();
/// P = static loads at the displacements at hand + level times wave and record loads at TIME; XI at TIME.
void RDYNAM();
/// RU = effective load of the step at increment 0 for free equations; for prescribed ones the way that is left to their
/// imposed displacement. Velocities and accelerations of prescribed equations are set for the step before.
void EFFLOD();
/// A current factor of the effective matrix (STIFUP).
void FSTIF();
/// RU becomes the displacement increment that belongs to it.
void DISSOL();
/// The current generation becomes the reference, U0 = U. No effect on a state that has been taken over already.
void SDUP();
/// U, VT, AT, VD from UN, DSTEP, VEL, ACC by the constants; then the determination of all elements with their resisting
/// forces R and damping forces DAMP.
void RESPD1();
/// D and RU of the trial (RU is 0 at prescribed equations) and the norms RNORM and APPLIED. Static loads that depend on
/// the displacements are formed again.
void UNBALN();
/// Energies of the step that is about to be accepted.
void ENERGY();
/// Node envelopes with the displacements at hand.
void ENVUP();

// Parts of them.

/// RU of prescribed equations = the way that is left to the imposed displacement of TIME.
void set_remaining_ways();
/// The trial becomes the accepted state: VEL, ACC, PN, RN, DN, UN, XIN. Equations without mass get the velocity and the
/// acceleration of their displacements, prescribed ones keep the velocity of the step. Comes behind ENERGY.
void accept_step();
/// True when displacements, velocities and accelerations of the trial, its norm and its wave load are finite.
bool trial_is_finite();
/// Names node and direction (or the element, or nothing) where the trial is not finite, on the report and TAP.err.
void tell_lost_trial();

// Output.

/// TIME and the largest unbalances of the trial on TAP32, when they are asked for.
void write_dynamic_top();
/// The line that every accepted step has on the report.
void print_dynamic_step(int iterations);
/// Node and element responses on the report.
void PRINDY(bool with_nodes, bool with_elements);
/// Node and element envelopes on the report.
void ENVOUT(bool wanted);
/// The line on the load level history; NLSTEP grows by 1.
void save_dynamic_results(std::string_view macro, int number, double level);

}  // namespace tidearc
