// The catenary through two points. Written in u = h/(2a) and beta = asinh(v/(2a sinh u)), with t_a = beta - u and
// t_b = beta + u, so that neither a flat line (a large) nor a deep one (a small) loses digits.
#include "model/catenary.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tidearc {
namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();
constexpr double pi = 3.141592653589793;
constexpr double largest_argument = 700.0;  ///< of a hyperbolic function; beyond it the value counts as infinite
constexpr double lower_load = 1.0E-10;
constexpr double upper_load = 1.0E8;
constexpr double load_tolerance = 1.0E-10;
constexpr int most_rounds = 200;
constexpr double least_grounded = 0.001;  ///< a shorter part on the bed is not told apart from a hanging line [length]

double bounded_cosh(double t) { return std::abs(t) > largest_argument ? infinity : std::cosh(t); }

/// sinh(u)/u for u not below zero.
double sinh_ratio(double u) {
  if (u > largest_argument) return infinity;
  return u > 0.0 ? std::sinh(u) / u : 1.0;
}

/// Lower bound, upper bound and result of a bisection.
struct Search {
  double low = lower_load;
  double high = upper_load;
  double at = 0.0;
  int rounds = 0;
  bool found = false;
};

/// Halves the bracket until its middle is a bound to within the tolerance. Without a change of sign it runs into the
/// upper bound and has found nothing.
template <class Function>
Search bisect(Search search, Function f) {
  const bool low_positive = f(search.low) > 0.0;
  const bool changes = low_positive != (f(search.high) > 0.0);
  while (search.rounds < most_rounds) {
    ++search.rounds;
    search.at = 0.5 * (search.low + search.high);
    const double to_bound = std::min(search.at - search.low, search.high - search.at);
    if (to_bound <= load_tolerance) {
      search.found = changes;
      break;
    }
    // The lower bound keeps the sign with which it began.
    if ((f(search.at) > 0.0) != low_positive) {
      search.high = search.at;
    } else {
      search.low = search.at;
    }
  }
  return search;
}

/// Horizontal reach of a line that leaves a level bed with a horizontal tangent and rises by v; infinite when there is
/// no such line.
double lifted_reach(double H, const CatenaryCase& line) {
  if (!(line.v > 0.0) || !(line.w > 0.0)) return infinity;
  const double a = H / line.w;
  return 2.0 * a * std::asinh(std::sqrt(0.5 * line.v / a));
}

/// Length of a line that lies on the bed from A on as far as it does not hang.
double moored_length(const CatenaryCase& line, double H) {
  const double reach = lifted_reach(H, line);
  if (!(reach < line.h)) return catenary_curve(line.h, line.v, line.w, H).length;
  return (line.h - reach) + std::sqrt(line.v * (line.v + 2.0 * H / line.w));
}

/// Value of the condition minus its parameter at horizontal load H. For an angle both are taken as asinh of the slope.
double residual(const CatenaryCase& line, double H) {
  const CatenaryCurve curve = catenary_curve(line.h, line.v, line.w, H);
  switch (line.option) {
    case CatenaryOption::tension_b:
      return curve.tension_b - line.parameter;
    case CatenaryOption::horizontal:
      return H - line.parameter;
    case CatenaryOption::length:
      return curve.length - line.parameter;
    case CatenaryOption::angle_a:
      return curve.t_a - std::asinh(std::tan(line.parameter * (pi / 180.0)));
    case CatenaryOption::angle_b:
      return curve.t_b - std::asinh(std::tan(line.parameter * (pi / 180.0)));
    case CatenaryOption::mooring:
      return moored_length(line, H) - line.parameter;
  }
  return 0.0;
}

Search find_load(const CatenaryCase& line) {
  Search search;
  if (line.option == CatenaryOption::horizontal) {
    search.at = line.parameter;
    search.found = line.parameter > 0.0 && std::isfinite(line.parameter);
    return search;
  }
  if (line.option == CatenaryOption::tension_b) {
    // Two lines have the same tension at B; the least tension parts them.
    const double least = load_of_least_tension(line.h, line.v, line.w);
    (line.straight ? search.low : search.high) = least;
  }
  return bisect(search, [&line](double H) { return residual(line, H); });
}

bool has_shape(const CatenaryCurve& curve) {
  return std::max(std::abs(curve.t_a), std::abs(curve.t_b)) <= largest_argument && std::isfinite(curve.length) &&
         curve.a > 0.0;
}

}  // namespace

CatenaryCurve catenary_curve(double h, double v, double w, double H) {
  CatenaryCurve curve{};
  curve.h = h;
  curve.v = v;
  curve.H = H;
  curve.a = w > 0.0 ? H / w : infinity;
  const double u = 0.5 * h / curve.a;
  const double stretched = h * sinh_ratio(u);  // 2 a sinh u
  const double beta = std::asinh(v / stretched);
  curve.t_a = beta - u;
  curve.t_b = beta + u;
  curve.length = std::hypot(v, stretched);
  curve.tension_a = H * bounded_cosh(curve.t_a);
  curve.tension_b = H * bounded_cosh(curve.t_b);
  return curve;
}

double load_of_least_tension(double h, double v, double w) {
  // d(H cosh t_b)/dH = cosh t_b (1 + tanh t_b * H dt_b/dH), with H du/dH = -u and H dbeta/dH = tanh beta (u coth u -
  // 1).
  const auto slope = [h, v, w](double H) {
    const double u = 0.5 * h * w / H;
    const double beta = std::asinh(v / (h * sinh_ratio(u)));
    const double rest = u > 0.0 ? u / std::tanh(u) - 1.0 : 0.0;
    return 1.0 + std::tanh(beta + u) * (std::tanh(beta) * rest - u);
  };
  Search search;
  if (slope(search.low) > 0.0) return search.low;  // the tension rises all the way
  return bisect(search, slope).at;
}

CatenarySolution solve_catenary(const CatenaryCase& line) {
  const Search search = find_load(line);
  const double H = search.at;
  CatenarySolution solution{};
  solution.rounds = search.rounds;
  solution.solved = search.found;
  double reach = line.h;
  if (line.option == CatenaryOption::mooring && search.found) {
    const double lifted = lifted_reach(H, line);
    if (line.h - lifted > least_grounded) reach = lifted;
  }
  solution.grounded = line.h - reach;
  solution.curve = catenary_curve(reach, line.v, line.w, H);
  if (!has_shape(solution.curve)) {
    solution.solved = false;
    solution.grounded = 0.0;
    solution.curve = catenary_curve(line.h, line.v, 0.0, H);
  }
  return solution;
}

CatenaryPoint catenary_point(const CatenaryCurve& curve, double s) {
  CatenaryPoint point{};
  if (!std::isfinite(curve.a)) {
    const double part = s / curve.length;
    point.x = part * curve.h;
    point.y = part * curve.v;
    point.tension = curve.tension_a;
    point.radius = infinity;
    return point;
  }
  // Slopes q at A and p at s differ by s/a; differences of asinh and of cosh are formed without cancelling.
  const double q = std::sinh(curve.t_a);
  const double p = q + s / curve.a;
  const double cosh_q = std::cosh(curve.t_a);
  const double cosh_p = std::hypot(1.0, p);
  const double dt = p * q > 0.0 ? std::asinh((s / curve.a) / (p / (p + q) * cosh_q + q / (p + q) * cosh_p))
                                : std::asinh(p) - curve.t_a;
  point.x = curve.a * dt;
  point.y = s * ((p + q) / (cosh_p + cosh_q));
  point.tension = curve.H * cosh_p;
  point.radius = curve.a * cosh_p * cosh_p;
  return point;
}

int touch_down_node(const CatenarySolution& line, int count) {
  if (!(line.grounded > 0.0) || count < 1) return 0;
  const double part = line.grounded / (line.grounded + line.curve.length);
  const long rounded = std::lround(part * (count + 1.0));
  return static_cast<int>(std::clamp(rounded, 1L, static_cast<long>(count)));
}

CatenaryPoint catenary_node(const CatenarySolution& line, int count, int k) {
  const int touch_down = touch_down_node(line, count);
  if (line.grounded > 0.0 && (k < touch_down || k == 0)) {
    const double x = touch_down > 0 ? line.grounded * k / touch_down : 0.0;
    return {x, 0.0, line.curve.H, infinity};
  }
  const double spacing = line.curve.length / (count + 1 - touch_down);
  CatenaryPoint point = catenary_point(line.curve, (k - touch_down) * spacing);
  point.x += line.grounded;
  return point;
}

}  // namespace tidearc
