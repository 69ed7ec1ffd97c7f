// The local axes of a two-node member: axis x along it, axis 2 (y) and axis 3 (z) by a third node or by a convention.
//
// Axes stand column by column: x at 0..2, y at 3..5, z at 6..8, each in master components. Pure formulas.
#pragma once

#include <span>

namespace tidearc {

/// What decides the axes when no third node does; stored in element records in place of the third node.
enum AxisConvention : int {
  axes_SACS = -3,    ///< z stands as near to the master Z axis as it can
  axes_STRUDL = -2,  ///< y stands as near to the master Y axis as it can
};

/// Offsets of both member ends from their nodes, master components, in the order I-X, J-X, I-Y, J-Y, I-Z, J-Z.
using EndOffsets = std::span<const double, 6>;

struct LocalAxes {
  double length = 0.0;     ///< between the offset ends; 0: no axes were formed                  [length]
  double axes[9] = {};     ///< columns x, y, z                                                  [-]
  bool K_on_axis = false;  ///< the third node lies on the member's line: the SACS axes were taken
};

/// Axes of a member from xI to xJ with its end offsets. `xK` is the third node (null: none); without one `convention`
/// decides. `angle` turns y and z about x, y towards z [rad].
///
/// A member within 0.999 (cosine) of the master Z axis under SACS, of the Y axis under STRUDL, takes fixed directions
/// for y and z, which are neither exactly normal to it nor of unit length: (cz,0,0) and (0,1,0), or (-cy,0,0) and
/// (0,0,1).
LocalAxes local_axes(std::span<const double, 3> xI, std::span<const double, 3> xJ, EndOffsets ECC, const double* xK,
                     AxisConvention convention, double angle);

/// Turns y and z about x by an angle, y towards z [rad].
void twist_axes(std::span<double, 9> axes, double angle);

}  // namespace tidearc
