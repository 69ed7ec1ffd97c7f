// Loads that follow the geometry, as functions of values: pressure on a four-node surface, force along a moving line.
//
// The surface is the bilinear quadrilateral of its corners, flat or not; the integrals over it are the consistent loads
// of O. C. Zienkiewicz, The Finite Element Method, on surface tractions. Corners run counter-clockwise when they are
// looked at from outside, so that the outward normal follows the right-hand rule.
#pragma once

#include <array>

namespace tidearc {

using Point = std::array<double, 3>;   ///< a point, or a vector, in the master system
using Corners = std::array<Point, 4>;  ///< of a triangle the fourth equals the third

/// Consistent corner forces of a pressure on a surface: F(i) = - integral of N(i) p n dA, p interpolated from its
/// corner values. A positive pressure pushes against the outward normal.
/// @param x  corners  [length]
/// @param p  corner pressures  [force/area]
/// @return corner forces in the master system  [force]
/// Two by two Gauss points: the integrand is of third degree in each coordinate, so the integral is exact.
Corners pressure_forces(const Corners& x, const std::array<double, 4>& p);

/// Pressure of a fluid at a point: -density * (x - level) . up, not below 0.
/// @param density  weight per volume; scaled by the length of `up`  [force/volume]
/// @param level    a point of the fluid's surface  [length]
double fluid_pressure(double density, const Point& up, const Point& level, const Point& x);

/// Force of size f at a, along the line to d (positive toward d); none when the points coincide.
Point force_along_line(double f, const Point& a, const Point& d);

}  // namespace tidearc
