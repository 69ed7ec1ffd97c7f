// The truss's matrices as pure formulas.
//
// Sources: any text on the nonlinear analysis of bars, e.g. M. A. Crisfield, Non-linear Finite Element Analysis of
// Solids and Structures, vol. 1, ch. 3: K = Kt d d^T + (N/L) (I - d d^T), the derivative of the force N d.
#pragma once

#include <span>

namespace tidearc {

/// EMAT (6 by 6, column by column) = K DIR DIR^T.
void axial_matrix(double K, std::span<const double, 6> DIR, std::span<double, 36> EMAT);

/// Adds the geometric matrix of an axial force: N_per_length (I - d d^T) on the diagonal blocks, its negative on the
/// others; N_per_length is the force over the length, tension positive.
void add_geometric_matrix(double N_per_length, std::span<const double, 6> DIR, std::span<double, 36> EMAT);

/// Damping force per unit axial velocity, or a matrix factor: b0 of the initial, bt of the tangent stiffness.
inline double combined_stiffness(double b0, double K0, double bt, double Kt) { return b0 * K0 + bt * Kt; }

}  // namespace tidearc
