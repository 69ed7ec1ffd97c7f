// The scalar conditions that make the load increment an unknown: formulas on plain vectors, without blocks.
//
// An iteration has two solutions, du for the unbalance and da for the reference load; a condition gives the factor DL
// of du + DL da. Sources: the arc length of E. Riks (1979) and M. A. Crisfield (1981), with the roots chosen as there;
// displacement control after J.-L. Batoz and G. Dhatt (1979); the current stiffness parameter of P. G. Bergan et al.
// (1978). Vectors have one entry for each equation. A division by zero gives a factor of 0.
#pragma once

#include <span>

#include "run/views.h"
#include "static/segment.h"

namespace tidearc {

/// Sum of factor * x(equation) over the terms of g; a term on the sink contributes nothing.
double product(const TermVector& g, ConstReals x);

/// numerator / divisor, 0.0 when the divisor is zero.
double factor_of(double numerator, double divisor);

/// A DL^2 + B DL + C = 0: the length of w + DL da is the arc.
struct ArcEquation {
  double A = 0.0;  ///< da . da
  double B = 0.0;  ///< 2 w . da
  double C = 0.0;  ///< w . w - arc^2
  double discriminant() const { return B * B - 4.0 * A * C; }
};
ArcEquation arc_equation(ConstReals da, ConstReals w, double arc);

/// The factor below 1 that shortens w, when the arc is too short for the equation to have a root, so that it has a
/// double one.
double shortening(const ArcEquation& q, double arc);

/// Step of the largest entry: the factor of smallest magnitude that brings some entry to `target`, over the equations
/// that da moves; 1.0E10 when there is none smaller.
double factor_to_maximum(ConstReals da, ConstReals du, double target);

/// The vector g(k) that da moves most, measured by its scale; of equal ones the first.
struct CriticalVector {
  int number = 0;  ///< from 1; 0: da moves none of them
  double p = 0.0;  ///< da . g
  double q = 0.0;  ///< du . g
};
CriticalVector critical_vector(std::span<const TermVector> vectors, ConstReals da, ConstReals du);

/// Current stiffness parameter before it is related to that of the first step: (RINC . da) / (da . da).
double stiffness_parameter(ConstReals RINC, ConstReals da);
/// Related to the first one; 999999.0 with its sign when the value itself is too small.
double relative_parameter(double value, double first);

/// Which root of an arc equation continues the path.
enum class RootChoice {
  first,
  second,
  no_length,  ///< a vector has no length, so there is no angle
  backward,   ///< both roots turn back
};
struct ArcRoots {
  RootChoice choice = RootChoice::first;
  double r1 = 0.0, r2 = 0.0;            ///< roots, the one of the positive square root first
  double cosine1 = 0.0, cosine2 = 0.0;  ///< of the angles between the new increments and the one so far
  double length1 = 0.0, length2 = 0.0;  ///< products of the lengths in these angles
  double root() const { return choice == RootChoice::second ? r2 : r1; }
};
/// Chooses between the roots of the equation for w = increment + du: the one whose increment does not turn back against
/// `increment`, the step's so far; of two such the one closer to the linear solution -C/B, r1 when equally close. The
/// discriminant must not be negative.
ArcRoots arc_roots(const ArcEquation& q, ConstReals da, ConstReals w, ConstReals increment);

}  // namespace tidearc
