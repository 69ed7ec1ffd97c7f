// Where a truss stands: length, force directions, and the local axes for wave loading.
#pragma once

#include <span>

namespace tidearc {

struct TrussGeometry {
  double length;  ///< 0 when the ends coincide           [length]
  double DIR[6];  ///< (xI-xJ)/L and its negative; undefined when the length is 0  [-]
};

/// Length and directions between two end points in master axes.
TrussGeometry truss_geometry(std::span<const double, 3> xI, std::span<const double, 3> xJ);

/// Local axes of a member whose unit vector from I to J is `along`, column by column: first `along`, then the unit
/// vectors z x along and along x (z x along) with z = (0,0,1), or (0,1,0) for a member within 0.999999 of vertical.
void wave_axes(std::span<const double, 3> along, std::span<double, 9> axes);

/// Extension per unit displacement of the six freedoms: DIR . e, positive when the ends move apart.
inline double extension(std::span<const double, 6> DIR, const double* e) {
  double sum = 0.0;
  for (std::size_t i = 0; i < 6; ++i) sum += DIR[i] * e[i];
  return sum;
}

/// Ends that move apart: a length, and its course over the fraction t of an increment. The length is a convex function
/// of t: an element may shorten at first and still be longer at the end.
struct EndMotion {
  double length = 0.0;   ///< between the ends at t = 0                              [length]
  double along = 0.0;    ///< relative motion of an increment times the vector between the ends  [area]
  double squared = 0.0;  ///< relative motion times itself                           [area]

  /// Extension at fraction t.
  double extension(double t) const;
  /// The only positive fraction with this positive extension; not finite when the ends do not move.
  double fraction_to(double extension) const;
};
/// Motion of ends at xI and xJ by the translations uI and uJ.
EndMotion end_motion(std::span<const double, 3> xI, std::span<const double, 3> xJ, std::span<const double, 3> uI,
                     std::span<const double, 3> uJ);

}  // namespace tidearc
