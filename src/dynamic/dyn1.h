// An analysis with variable steps: its cards, where it stands, and the procedures that make it up.
//
//   dyn1.cpp         the macro: start, step loop, end
//   dyn1_cards.cpp   cards and defaults; dyn1_echo.cpp their echo
//   dyn1_step.cpp    one step: attempts, substeps, the accepted end
//   dyn1_error.cpp   error measures of a substep
//   dyn1_after.cpp   what follows a step: prints, saves, limits
//   dyn1_output.cpp  legend, heads and lines on the progress file, end texts
//   dyn1_rules.cpp   the decisions, without blocks
#pragma once

#include <array>
#include <optional>
#include <type_traits>

#include "dynamic/dyn1_rules.h"

namespace tidearc {

/// What the four cards say, after the rules that fill their defaults; the first step and the constants of the scheme
/// stand in `integration`. Written by read_dyn1_cards.
struct Dyn1Cards {
  SolutionType KSOL = SolutionType::events_constant;
  int KACC = 0;              ///< acceleration correction: 0 applied, other suppressed
  int NINIT = 0;             ///< initial condition commands; -1 none and no motion, 0 none  [-]
  int KGROUND = 0;           ///< other than 0: ground acceleration card
  int NFORCE = 0;            ///< force commands                                             [-]
  int NIMPOSED = 0;          ///< imposed displacement commands                              [-]
  int KENVELOPE = 0;         ///< 1: envelopes begin with the state at the start
  int KDUMP = 0;             ///< beam envelopes to tape
  StepRules rules;           ///< ERRUP and ERRLO are forces, or displacements by KSOL
  int KMOMENT = 0;           ///< 1: rotations count in the error, moments in the unbalance
  double PRECF = 0.0;        ///< rise of the load level, 0 none                             [-]
  bool continues = false;    ///< the level goes on from where the last macro left it
  MacroLimits limits;        ///< cutoff is the velocity below which the structure is at rest
  double UBMAX = 0.0;        ///< unbalance that ends the macro                              [force]
  double DISMAX = 0.0;       ///< displacement that ends the macro                           [length]
  double EVMAX = 0.0;        ///< largest increment that is no event                         [length, rad]
  int NSUBMX = 0;            ///< substeps of a step                                         [-]
  int NTOP = 0;              ///< largest unbalances on TAP32                                [-]
  double UBUP = 0.0;         ///< unbalance above which the next step is shorter             [force]
  double UBLO = 0.0;         ///< unbalance below which it may be longer                     [force]
  OutputInterval nodal;      ///< node print
  OutputInterval elements;   ///< element print
  OutputInterval envelopes;  ///< envelope print
  OutputInterval restart;    ///< restart save
  OutputInterval post;       ///< post-processor save
};

/// Largest values over the nodes, components 1 to 3, in nodal axes.
struct PeakMotion {
  double displacement = 0.0;  ///< [length]
  double velocity = 0.0;      ///< of free equations                                         [length/s]
  int node = 0;               ///< that has the velocity, 0: none moves                       [-]
  int direction = 0;          ///< its component, 1..3
};

struct OutputCounts {
  OutputCount nodal, elements, envelopes, restart, post;
};

/// What the accepted state has been put out to.
struct OutputMarks {
  bool nodes = false;      ///< report
  bool elements = false;   ///< report
  bool envelopes = false;  ///< report
  bool saved = false;      ///< post-processor
};

/// Where the macro stands. Written by the procedures below.
struct Dyn1Block {
  Dyn1Cards cards;
  LineType last_line = LineType::none;  ///< type of the last line on the progress file
  double DTC = 0.0;                     ///< step for which the constants stand                [s]
  int NSUB = 0;                         ///< substep of the step                               [-]
  ErrorCounts counts;                   ///< of the step test
  double ERR = 0.0;                     ///< error measure of the last substep
  double scale = 0.0;                   ///< of the local error                                [s2]
  PeakMotion peak;                      ///< of the accepted state
  double start_time = 0.0;              ///< TIME of the accepted state                        [s]
  double start_level = 0.0;             ///< its load level                                    [-]
  double start_unbalance = 0.0;         ///< its norm                                          [force]
  double start_applied = 0.0;           ///< norm of its applied load                          [force]
  bool kept = false;                    ///< the element states of the step's start are kept
  OutputCounts due;                     ///< outputs since their last
  OutputMarks out;                      ///< of the accepted state
};
inline Dyn1Block dyn1;
static_assert(std::is_trivially_copyable_v<Dyn1Block>);

// dyn1_cards.cpp, dyn1_echo.cpp

/// Reads the four cards, fills defaults and echoes each. A value that no analysis can run with sets the fatal flag.
void read_dyn1_cards();
void echo_dyn1_control();
void echo_dyn1_steps();
void echo_dyn1_limits();
void echo_dyn1_outputs();

// dyn1_step.cpp

/// How a step went.
struct StepResult {
  bool accepted = false;       ///< else it was dropped: the state of its start stands
  bool finite = true;          ///< false: it was dropped because it is not finite
  std::optional<Dyn1End> end;  ///< the macro ends with it
};
/// Takes step NS, in as many attempts as its error asks for, and writes its lines.
StepResult take_dyn1_step();
/// Largest displacement and velocity of the accepted state.
PeakMotion find_peak_motion();

// dyn1_error.cpp

/// Error of the increment du of this substep, which stands in RU, with the increment DSTEP before it: a force with the
/// midstep error, a displacement with the local error. Uses RA, RINC, BFGS1 and BFGS2.
double measure_error();

// dyn1_after.cpp

/// The intervals of outputs begin at the macro's start.
void start_dyn1_outputs();
/// Counts the accepted step and prints and saves what is due.
void put_out_dyn1_step();
/// The last prints of a macro: envelopes, and behind a limit the accepted state as far as it has not been put out.
void put_out_dyn1_end(Dyn1End end);

// dyn1_output.cpp

/// The line types on the report; legend and column heads on the progress file.
void write_dyn1_legend();
/// A line on the progress file.
void write_dyn1_line(LineType type);
/// The box of an end at a limit, on the report.
void write_dyn1_box(Dyn1End end);
/// The message of an end on the progress file.
void write_dyn1_end(Dyn1End end);

}  // namespace tidearc
