// The local stiffness of a straight beam as its four uncoupled parts, and the 12 by 12 matrix that they make.
//
// Local freedoms (u,v,w,rx,ry,rz) of end I, then of J, right-handed, forces likewise as they act on the element.
// Axial: u_I, u_J. Torsion: rx_I, rx_J. Plane 1-2: v_I, rz_I, v_J, rz_J. Plane 1-3: w_I, ry_I, w_J, ry_J.
//
// Source: any text on matrix structural analysis, e.g. J. S. Przemieniecki, Theory of Matrix Structural Analysis,
// sec. 5.6 (shear deformation included).
#pragma once

#include <span>
#include <type_traits>

namespace tidearc {

/// Symmetric parts, upper triangle by rows.
struct BeamStiffness {
  double axial[3];
  double torsion[3];
  double plane12[10];
  double plane13[10];
};
static_assert(std::is_trivially_copyable_v<BeamStiffness> && sizeof(BeamStiffness) == 26 * sizeof(double));

/// Bending of one plane between the rotations of both ends against the chord: moment = own * e + other * e_other.
struct EndBending {
  double own;    ///< 4EI/L without shear deformation and axial force   [moment]
  double other;  ///< 2EI/L                                              [moment]
};
/// With shear deformation; shear area 0: none. G shear modulus.
EndBending end_bending(double EI, double G, double shear_area, double L);
/// What an axial force P (tension positive) adds: 2PL/15 and -PL/30.
EndBending end_bending_of_force(double P, double L);
inline EndBending operator+(const EndBending& a, const EndBending& b) { return {a.own + b.own, a.other + b.other}; }

/// The parts of a beam of length L from EA/L, GJ/L, and bending about axis 2 (plane 1-3) and axis 3 (plane 1-2).
BeamStiffness beam_stiffness(double EA_L, double GJ_L, const EndBending& about2, const EndBending& about3, double L);

/// Condenses the released freedoms out, one by one. A code holds decimal digits: thousands axial, hundreds torsion,
/// tens rotation about axis 2, units rotation about axis 3; 1 released, 0 fixed.
void release_hinges(int code_I, int code_J, BeamStiffness& K);
bool is_hinge_code(int code);

/// f = K u in local freedoms.
void local_forces(const BeamStiffness& K, std::span<const double, 12> u, std::span<double, 12> f);

/// The matrix in master axes, 12 by 12, column by column; `axes` column by column (local_axes.h).
void global_matrix(const BeamStiffness& K, std::span<const double, 9> axes, std::span<double, 144> matrix);
/// Adds the string matrix of an axial force: P_L (I - x x^T) between the translations of both ends.
void add_string_matrix(double P_L, std::span<const double, 9> axes, std::span<double, 144> matrix);
/// Adds that matrix times u to f, without the matrix.
void add_string_forces(double P_L, std::span<const double, 9> axes, std::span<const double, 12> u,
                       std::span<double, 12> f);

/// Components in local axes: translations and rotations of both ends, v_local = axes^T v.
void to_member_axes(std::span<const double, 9> axes, std::span<const double, 12> global, std::span<double, 12> local);
/// Forces back: F = axes F_local.
void to_master_axes(std::span<const double, 9> axes, std::span<const double, 12> local, std::span<double, 12> global);

}  // namespace tidearc
