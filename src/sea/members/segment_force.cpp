// Equivalent end loads of point loads on a member.
#include "sea/members/segment_force.h"

namespace tidearc {

void SEGFORCE(MemberLoad& load, double length, std::span<const PointLoad> points) {
  for (const auto& [P, distance] : points) {
    const double a = distance / length, b = 1.0 - a;  // shares of the length
    load[0] += P[0] * b;
    load[6] += P[0] * a;
    const double at_I = b * b * (3.0 * a + b), at_J = a * a * (3.0 * b + a);
    const double arm_I = a * b * b * length, arm_J = a * a * b * length;
    load[1] += P[1] * at_I;
    load[2] += P[2] * at_I;
    load[4] -= P[2] * arm_I;
    load[5] += P[1] * arm_I;
    load[7] += P[1] * at_J;
    load[8] += P[2] * at_J;
    load[10] += P[2] * arm_J;
    load[11] -= P[1] * arm_J;
  }
}

void SEGFORCE2(MemberLoad& load, double length, std::span<const PointLoad> points) {
  for (const auto& [P, distance] : points) {
    const double a = distance / length, b = 1.0 - a;
    for (std::size_t i = 0; i < 3; ++i) {
      load[i] += P[i] * b;
      load[6 + i] += P[i] * a;
    }
  }
}

}  // namespace tidearc
