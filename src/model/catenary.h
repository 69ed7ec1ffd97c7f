// A line that hangs between two points under its own weight: the curve for a given horizontal load, and the search for
// the load that meets a condition. Pure formulas; the deck's commands stand in catenary_input.cpp.
//
// The line runs from A to B in a vertical plane: x horizontal from A toward B, y against gravity, both zero at A. With
// a = H/w, the parameter t = asinh(slope) grows along the line from t_a at A to t_b at B; tension is H cosh t, arc
// length from the low point a sinh t, elevation over the directrix a cosh t (any text on statics; e.g. H. M. Irvine,
// Cable Structures, 1981, chapter 1).
#pragma once

namespace tidearc {

/// Condition that fixes the horizontal load; numbers as on the card.
enum class CatenaryOption : int {
  tension_b = 1,   ///< tension at end B                                               [force]
  horizontal = 2,  ///< horizontal load                                                [force]
  length = 3,      ///< length of the line                                             [length]
  angle_a = 4,     ///< angle of the line at end A from the horizontal, upward from A to B  [degrees]
  angle_b = 5,     ///< the same at end B                                              [degrees]
  mooring = 6,     ///< length of a line that may lie on a level bed at the elevation of A  [length]
};

/// What is known of a line.
struct CatenaryCase {
  CatenaryOption option = CatenaryOption::horizontal;
  bool straight = false;   ///< option 1: the stretched one of the two lines of that tension, else the sagging one
  double h = 0.0;          ///< horizontal span, above zero                       [length]
  double v = 0.0;          ///< vertical span, positive when B is above A         [length]
  double w = 0.0;          ///< weight per unit length, not negative              [force/length]
  double parameter = 0.0;  ///< value of the condition                            [by option]
};

/// A hanging line under a horizontal load. A line without weight is the chord.
struct CatenaryCurve {
  double h, v, H;
  double a;                     ///< H/w, infinite for the chord                    [length]
  double t_a, t_b;              ///< asinh of the slope at A and B                  [-]
  double length;                ///< arc length                                     [length]
  double tension_a, tension_b;  ///< [force]
};

/// The curve for horizontal load H above zero. Hyperbolic functions of arguments above 700 count as infinite.
CatenaryCurve catenary_curve(double h, double v, double w, double H);

/// Horizontal load at which the tension at B is least; below it the tension falls with the load, above it it rises.
/// Sought between the bounds of the bisection.
double load_of_least_tension(double h, double v, double w);

struct CatenarySolution {
  CatenaryCurve curve;    ///< the hanging part: from A, or from the touch-down point
  int rounds = 0;         ///< rounds of the bisection, 0 when the load is given
  bool solved = false;    ///< false: no load meets the condition; the curve is that of the last load tried
  double grounded = 0.0;  ///< length on the bed between A and the touch-down point   [length]
};

/// Finds the horizontal load by bisection between 1.0E-10 and 1.0E8. When the curve of the last load has no finite
/// shape, the result is the chord under that load, unsolved.
CatenarySolution solve_catenary(const CatenaryCase& line);

/// A point of a line: place in the plane from A, tension, and radius of curvature (infinite on a straight part).
struct CatenaryPoint {
  double x, y;     ///< [length]
  double tension;  ///< [force]
  double radius;   ///< [length]
};

/// The point at arc length s from the start of a curve.
CatenaryPoint catenary_point(const CatenaryCurve& curve, double s);

/// Index of the node that takes the touch-down point, 1..count; 0 when no part is grounded or count is below 1.
int touch_down_node(const CatenarySolution& line, int count);

/// Node k of count interior nodes: 0 is A, count + 1 is B. Nodes stand at equal arc lengths on the hanging part and, up
/// to the touch-down node, at equal spacing on the bed.
CatenaryPoint catenary_node(const CatenarySolution& line, int count, int k);

}  // namespace tidearc
