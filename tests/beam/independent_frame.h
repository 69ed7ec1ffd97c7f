// A space frame solved another way than the program does: members by the flexibility of a cantilever and the
// equilibrium of its ends, hinges as openings whose forces vanish, all equations in one full matrix.
#pragma once

#include <array>
#include <vector>

namespace tidearc::test {

using Vector3 = std::array<double, 3>;
using Load6 = std::array<double, 6>;

Vector3 cross(const Vector3& a, const Vector3& b);
Vector3 unit(const Vector3& a);

struct FrameMember {
  std::size_t I, J;                              ///< nodes, from 0
  double EA, GJ, EI2, EI3;                       ///< about axes 2 and 3
  double GA2 = 0, GA3 = 0;                       ///< along axes 2 and 3; 0: rigid in shear
  Vector3 eI{}, eJ{};                            ///< from the nodes to the ends
  Vector3 y{};                                   ///< some vector in the plane of axes 1 and 2, on the side of axis 2
  std::array<bool, 6> releasedI{}, releasedJ{};  ///< of u, v, w, rx, ry, rz
};

struct IndependentFrame {
  std::vector<Vector3> nodes;
  std::vector<bool> held;    ///< nodes that are held in all six freedoms
  std::vector<Load6> loads;  ///< forces and moments on the nodes
  std::vector<FrameMember> members;

  /// Displacements and rotations of the nodes.
  std::vector<Load6> displacements() const;
};

}  // namespace tidearc::test
