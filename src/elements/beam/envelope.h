// Extremes of a beam's end forces and deformations, each component by itself, with their times.
#pragma once

#include <cstddef>
#include <span>
#include <type_traits>

namespace tidearc {

inline constexpr std::size_t beam_freedoms = 12;

/// Largest and smallest of one set of twelve values since the start of the problem, or since a macro has started them
/// anew. All start at zero.
struct Extremes {
  double largest[beam_freedoms], largest_time[beam_freedoms];
  double smallest[beam_freedoms], smallest_time[beam_freedoms];
};
struct BeamEnvelope {
  Extremes forces;        ///< local end forces as they act on the element, as reports tell them
  Extremes deformations;  ///< what the result print shows beside them
};
static_assert(std::is_trivially_copyable_v<BeamEnvelope> && sizeof(BeamEnvelope) == 96 * sizeof(double));

/// Both extremes become the values at hand.
inline void restart_extremes(std::span<const double, beam_freedoms> values, double time, Extremes& extremes) {
  for (std::size_t i = 0; i < beam_freedoms; ++i) {
    extremes.largest[i] = extremes.smallest[i] = values[i];
    extremes.largest_time[i] = extremes.smallest_time[i] = time;
  }
}

inline void update_extremes(std::span<const double, beam_freedoms> values, double time, Extremes& extremes) {
  for (std::size_t i = 0; i < beam_freedoms; ++i) {
    if (values[i] > extremes.largest[i]) {
      extremes.largest[i] = values[i];
      extremes.largest_time[i] = time;
    }
    if (values[i] < extremes.smallest[i]) {
      extremes.smallest[i] = values[i];
      extremes.smallest_time[i] = time;
    }
  }
}

}  // namespace tidearc
