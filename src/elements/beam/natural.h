// Natural deformations and forces of a beam: what is left of its twelve end freedoms when it moves as a rigid body.
//
// Order: moment about axis 2 at I and at J, about axis 3 at I and at J, torque, axial force. Moments act on the element
// by the right-hand rule at both ends; torque and axial force those at end J. Deformations go with them: rotation of an
// end against the chord, twist, extension:
//   e1, e2 = ry + (w_J - w_I)/L     e3, e4 = rz - (v_J - v_I)/L     e5 = rx_J - rx_I     e6 = u_J - u_I
//
// Both planes of bending are uncoupled, since the axes 2 and 3 are those of the section.
//
// Source: J. H. Argyris et al., Comput. Methods Appl. Mech. Eng. 20 (1979), "natural modes".
#pragma once

#include <array>
#include <cstddef>
#include <span>

#include "elements/beam/stiffness_parts.h"

namespace tidearc {

inline constexpr std::size_t natural_count = 6;

/// Constants of the natural stiffness, divided by the length.
struct NaturalConstants {
  double EI2L, EI3L, GJL, EAL;
  double XL;  ///< [length]
};

/// Deformations of local end displacements.
void natural_deformations(std::span<const double, 12> local, double L, std::span<double, 6> e);
/// Local end forces, as they act on the element, of natural forces: the transpose of the above.
void natural_to_local(std::span<const double, 6> q, double L, std::span<double, 12> f);

/// Deformations in the twelve columns of the reports, six of either end: axial, 0, 0, torsion, rotation about 2 and 3.
inline std::array<double, 12> shown_deformations(std::span<const double, 6> e) {
  return {e[5], 0.0, 0.0, e[4], e[0], e[2], e[5], 0.0, 0.0, e[4], e[1], e[3]};
}

/// The 6 by 12 matrix from end displacements in master axes to natural deformations, column by column.
void natural_transformation(std::span<const double, 9> axes, double L, std::span<double, 72> TGLOB);
/// f = TGLOB^T q.
void natural_to_master(std::span<const double, 72> TGLOB, std::span<const double, 6> q, std::span<double, 12> f);

/// Natural forces of deformations under an axial force P; `with_P`: its terms are in the bending stiffness.
void natural_forces(const NaturalConstants& k, double P, bool with_P, std::span<const double, 6> e,
                    std::span<double, 6> q);
/// The parts of the element's matrix from the same natural stiffness.
BeamStiffness natural_parts(const NaturalConstants& k, double P, bool with_P);

}  // namespace tidearc
