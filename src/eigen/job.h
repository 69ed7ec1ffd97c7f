// What the parts of the EIGN macro share: one run of it.
#pragma once

#include "run/views.h"
#include "solve/eigen.h"
#include "solve/profile.h"

namespace tidearc {

/// The macro's card and what follows from it, in force during one macro.
struct EigenJob {
  int NPRINT = 0;            ///< 1: eigenvalues and residuals of every cycle
  int NITEM = 0;             ///< most cycles
  int KSTURM = 0;            ///< 1: the Sturm sequence check alone; another non-zero value: the check, then the modes
  double ZCUT = 0.0;         ///< elevation at which modal forces are summed               [length]
  double cut_off = 0.0;      ///< cut-off in force                                          [1/s]
  double squared_cut = 0.0;  ///< squared circular frequency of it                          [rad2/s2]
  double squared_shift = 0.0;
  int NMASS = 0;  ///< equations with a mass
  int NFREQ = 0;  ///< modes wanted; the Sturm check may lower it
  int NSUB = 0;   ///< vectors that the iteration carries
};

inline constexpr double eigen_tolerance = 1.0E-5;  ///< of the residuals

/// The structure matrix (upper half of an unsymmetric one) as it was assembled, and the array that is reduced.
Profile<double> assembled_stiffness();
Profile<double> eigen_factor();

/// The first NSUB columns of a table of the eigen arrays.
RealTable eigen_vectors(int index, const EigenJob& job);
RealTable small_matrix(int index, const EigenJob& job);
Reals eigen_values(int index, const EigenJob& job);

/// Ends the run when a diagonal is not above zero, and names the first one.
void stop_unless_positive(const Profile<double>& K);

/// The Sturm check: reduces the matrix shifted by the cut-off, prints, and lowers NFREQ and NSUB when fewer modes are
/// told than wanted.
void check_sturm_sequence(EigenJob& job);

/// Starting vectors, reduction and cycles. Leaves eigenvalues with the shift added back in VALUES and mass-normalised
/// shapes in SHAPES.
void iterate_subspace(const EigenJob& job);

/// Frequencies, mode shapes and modal cut forces of the first NFREQ modes.
void print_modes(const EigenJob& job);

/// Sums of a mode's inertia forces over the nodes above an elevation, about the point of the vertical axis there.
struct CutForces {
  double RX = 0.0, RY = 0.0;  ///< forces along the horizontal axes, which follow the vertical one in cyclic order
  double MX = 0.0, MY = 0.0;  ///< moments about them
};
CutForces modal_cut_forces(ConstReals shape, double eigenvalue, double elevation);

}  // namespace tidearc
