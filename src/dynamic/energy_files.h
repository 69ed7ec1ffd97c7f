// The records of energies by groups.
#pragma once

#include <array>
#include <type_traits>

namespace tidearc {

inline constexpr int most_energy_groups = 1000;

/// Written by ENERGY and at the start of a dynamic macro. The sums run from problem start.
struct EnergyFileBlock {
  int forces = 42;                                      ///< unit of the resisting forces of each group at the last step
  int next_forces = 41;                                 ///< its partner, which gets those of the step at hand
  int damping = 44;                                     ///< unit of the damping forces of each group at the last step
  int next_damping = 43;                                ///< its partner
  std::array<double, 2 * most_energy_groups> energy{};  ///< elastic-plastic and viscous of each group  [force*length]
};
inline EnergyFileBlock energy_files;
static_assert(std::is_trivially_copyable_v<EnergyFileBlock>);

}  // namespace tidearc
