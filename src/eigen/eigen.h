// The eigenvalue analysis: the EIGN macro, its input card and the element records that go with it.
#pragma once

#include <cstdint>
#include <type_traits>

namespace tidearc {

/// What the eigensolution control card asks for, and the arrays that its vectors need.
/// Written by EIGNIN; reset by DATAIN at the start of a problem.
struct EigenBlock {
  int NFREQ = 0;          ///< frequencies and mode shapes wanted                                [-]
  double FCUT = 0.0;      ///< top cut-off frequency, 0 none                                     [1/s]
  double FSHIFT = 0.0;    ///< shift; its square counts, so that the sign does not               [1/s]
  std::int64_t line = 0;  ///< deck line of the card
  int room = 0;           ///< vectors that find room, 0 when more modes are wanted than equations  [-]
  int LOADS = 1;          ///< pool index of the mass-weighted vectors, NEQ by `room` reals
  int SHAPES = 1;         ///< the same of the vectors themselves, in the end the mode shapes
  int TOGETHER = 1;       ///< scratch of their solution, NEQ by together(room) reals
  int STIFFNESS = 1;      ///< small stiffness matrix, room by room reals
  int MASS = 1;           ///< small mass matrix, likewise
  int ROTATION = 1;       ///< its eigenvectors, likewise
  int VALUES = 1;         ///< eigenvalues of the cycle at hand, `room` reals                    [rad2/s2]
  int LAST = 1;           ///< those of the cycle before, likewise                               [rad2/s2]
  int RESIDUALS = 1;      ///< their relative changes, likewise                                  [-]
  int ENERGY = 1;         ///< energies of the solutions of the cycle, likewise                  [force length]
};
inline EigenBlock eigen;
static_assert(std::is_trivially_copyable_v<EigenBlock>);

/// Reads and echoes the eigensolution control card and lays its arrays down. A count below 0 reads as 0.
void EIGNIN();

/// Copies the element records as they were read in onto the eigenvalue file: for each group its header and one record
/// of LEI words for each element. A problem with errors, whose records may be missing, gets the trace lines alone.
void RSAOUT();

/// The macro: reads its card and finds the lowest modes of the structure as it stands. Supports are constraints: an
/// equation with a prescribed displacement is free here. Errors of its input, a diagonal that is not positive and a
/// rigid body without a shift end the run; without an eigensolution card the fatal flag is set.
/// Afterwards the factor is used up and the next STIFUP forms everything anew.
void EIGN();

}  // namespace tidearc
