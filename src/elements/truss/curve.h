// The force-deformation curve of a truss that serves as a multilinear elastic spring.
//
// Ten ordinates count. Deformations are ratios to the yield extension DY, forces ratios to the yield force FCURVE,
// which is (SK1 + SK2) DY but for rounding, so a slope of 1 is the elastic stiffness. No hysteresis: the force follows
// the total extension.
#pragma once

#include <optional>
#include <span>

#include "elements/truss/record.h"

namespace tidearc {

using CurvePairs = std::span<const double, 2 * curve_pairs>;  ///< deformation, force, deformation, force, ...

struct CurvePoint {
  int code;      ///< 100 below the first ordinate, 100 + k between ordinates k and k+1, 110 beyond the last
  double value;  ///< force ratio, or deformation ratio, at the point
};

/// Repeats the last pair that is not zero in all pairs behind it.
void complete_curve(std::span<double, 2 * curve_pairs> pairs);
/// Force ratio at a deformation ratio: interpolated between ordinates, held outside.
CurvePoint walk_curve(CurvePairs pairs, double ratio);
/// Slope of the segment of a code; 0 at both ends and on a segment without length.
double curve_slope(CurvePairs pairs, int code);
/// The force ratio itself, or that of the first ordinate from which it differs by 1E-12 of the ordinate or less: a
/// force that was given as the plateau of a curve is not to miss it by the rounding of a division.
double force_at_ordinate(CurvePairs pairs, double ratio);
/// Deformation ratio at which the curve bears a force ratio: of all segments that reach it the value nearest to
/// `wanted`, the later one of two that are equally near. Nothing when no segment reaches the force.
std::optional<CurvePoint> find_deformation(CurvePairs pairs, double force, double wanted);
/// The next ordinate above a deformation ratio (`upward`), or the last one not above it; nothing beyond the ends.
std::optional<double> next_ordinate(CurvePairs pairs, double ratio, bool upward);

}  // namespace tidearc
