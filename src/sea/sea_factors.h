// At what factors the loads of the sea act on the elements now: what reported member forces leave out of end forces.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

namespace tidearc {

/// Set by whoever forms the applied load (LODLVL, RDYNAM); read by state determinations and prints.
struct SeaFactors {
  double wave = 0.0;      ///< of the wave loads that stand in the element records; 0 outside dynamic analyses   [-]
  double buoyancy = 0.0;  ///< total factor of the buoyancy pattern                                               [-]
  double current = 0.0;   ///< total factor of the static current pattern                                         [-]
};
inline SeaFactors sea_factors;
static_assert(std::is_trivially_copyable_v<SeaFactors>);

/// The wave loads of an element at the factor at which they act.
template <std::size_t N>
std::array<double, N> acting_loads(const double (&FWAVE)[N]) {
  std::array<double, N> loads;
  for (std::size_t i = 0; i < N; ++i) loads[i] = sea_factors.wave * FWAVE[i];
  return loads;
}
/// The same with buoyancy and static current, given at factor 1.
template <std::size_t N>
std::array<double, N> acting_loads(const double (&FWAVE)[N], const double (&FBUOY)[N], const double (&FCURR)[N]) {
  std::array<double, N> loads = acting_loads(FWAVE);
  for (std::size_t i = 0; i < N; ++i)
    loads[i] = loads[i] + sea_factors.buoyancy * FBUOY[i] + sea_factors.current * FCURR[i];
  return loads;
}

}  // namespace tidearc
