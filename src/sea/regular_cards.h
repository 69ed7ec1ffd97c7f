// The two cards of a regular wave (types 1, 2, 5, 8).
#pragma once

namespace tidearc {

/// What the cards say of the solution; everything else goes to `wave`.
struct SolutionControl {
  double tolerance = 0.0;          ///< of the wave length                                               [-]
  int iterations = 0;              ///< of the wave length                                               [-]
  int order = 0;                   ///< of the stream function                                           [-]
  int coefficient_iterations = 0;  ///< of the stream function                                           [-]
  int force_all = 0;               ///< 1: the stream function makes all its iterations
};

/// Reads both cards, puts defaults, checks and corrects, and sets the limits of forces. A height or a period that is
/// not positive ends the run; a direction off the horizontal plane is told.
SolutionControl read_regular_wave();

}  // namespace tidearc
