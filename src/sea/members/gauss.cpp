// The points of integration along a member, and how many an element takes.
#include <algorithm>

#include "sea/members/wave_member.h"

namespace tidearc {

namespace {

// Gauss-Legendre values held to single precision and widened: loads of earlier runs depend on that rounding.
constexpr std::array<GaussRule, most_gauss_points> rules{{
    {1, {0.0}, {2.0}},
    {2, {0.5773502588272095, -0.5773502588272095}, {1.0, 1.0}},
    {3, {0.7745966911315918, 0.0, -0.7745966911315918}, {0.5555555820465088, 0.8888888955116272, 0.5555555820465088}},
    {4,
     {0.8611363172531128, 0.3399810492992401, -0.3399810492992401, -0.8611363172531128},
     {0.3478548526763916, 0.6521451473236084, 0.6521451473236084, 0.3478548526763916}},
}};

}  // namespace

GaussRule gauss_rule(int count) {
  if (count < 1 || count > most_gauss_points) return {};
  return rules[static_cast<std::size_t>(count) - 1];
}

int gauss_count(int of_element, int of_group) {
  return std::clamp(of_element > 0 ? of_element : of_group, 0, most_gauss_points);
}

}  // namespace tidearc
