// The scalar conditions that make the load increment an unknown.
#include "static/constraint.h"

#include <cmath>

#include "run/vectors.h"
#include "run/words.h"

namespace tidearc {

namespace {

constexpr double no_factor = 1.0E10;
constexpr double least_parameter = 1.0E-6;
constexpr double saturated_parameter = 999999.0;

double dot(ConstReals a, ConstReals b) { return DOT(a.data(), b.data(), a.size()); }

/// Product of lengths and scalar product of x = w + root da and the increment so far.
struct Angle {
  double lengths = 0.0;
  double scalar = 0.0;
};

Angle angle_to(ConstReals increment, ConstReals w, ConstReals da, double root) {
  double squares = 0.0;
  double scalar = 0.0;
  for (int e = 1; e <= w.size(); ++e) {
    const double x = w(e) + root * da(e);
    squares += x * x;
    scalar += x * increment(e);
  }
  return {std::sqrt(squares) * std::sqrt(dot(increment, increment)), scalar};
}

}  // namespace

double product(const TermVector& g, ConstReals x) {
  double sum = 0.0;
  for (int k = 0; k < g.count; ++k) {
    const auto i = static_cast<std::size_t>(k);
    if (g.equation[i] <= x.size()) sum += g.factor[i] * x(g.equation[i]);
  }
  return sum;
}

double factor_of(double numerator, double divisor) { return divisor == 0.0 ? 0.0 : numerator / divisor; }

ArcEquation arc_equation(ConstReals da, ConstReals w, double arc) {
  return {dot(da, da), 2.0 * dot(w, da), dot(w, w) - arc * arc};
}

double shortening(const ArcEquation& q, double arc) {
  const double square = arc * arc;
  return std::sqrt(-4.0 * q.A * square / (q.B * q.B - 4.0 * q.A * (square + q.C)));
}

double factor_to_maximum(ConstReals da, ConstReals du, double target) {
  double factor = no_factor;
  for (int e = 1; e <= da.size(); ++e) {
    if (da(e) == 0.0) continue;
    const double d = (target - du(e)) / da(e);
    if (std::abs(d) < std::abs(factor)) factor = d;
  }
  return factor;
}

CriticalVector critical_vector(std::span<const TermVector> vectors, ConstReals da, ConstReals du) {
  CriticalVector critical;
  double most = 0.0;
  int number = 0;
  for (const TermVector& g : vectors) {
    ++number;
    const double p = product(g, da);
    const double measure = std::abs(p / g.scale);
    if (measure <= most) continue;  // a value that is not a number is taken: it must not look like no motion
    most = measure;
    critical = {number, p, product(g, du)};
  }
  return critical;
}

double stiffness_parameter(ConstReals RINC, ConstReals da) { return factor_of(dot(RINC, da), dot(da, da)); }

double relative_parameter(double value, double first) {
  if (std::abs(value) < least_parameter || first == 0.0)
    return value < 0.0 ? -saturated_parameter : saturated_parameter;
  return value / first;
}

ArcRoots arc_roots(const ArcEquation& q, ConstReals da, ConstReals w, ConstReals increment) {
  ArcRoots roots;
  const double middle = -q.B / (2.0 * q.A);
  const double half = std::sqrt(q.discriminant()) / (2.0 * q.A);
  roots.r1 = middle + half;
  roots.r2 = middle - half;
  const Angle first = angle_to(increment, w, da, roots.r1);
  const Angle second = angle_to(increment, w, da, roots.r2);
  roots.length1 = first.lengths;
  roots.length2 = second.lengths;
  if (first.lengths == 0.0 || second.lengths == 0.0) {
    roots.choice = RootChoice::no_length;
    return roots;
  }
  roots.cosine1 = first.scalar / first.lengths;
  roots.cosine2 = second.scalar / second.lengths;
  if (roots.cosine1 < 0.0 && roots.cosine2 < 0.0) {
    roots.choice = RootChoice::backward;
  } else if (roots.cosine1 < 0.0) {
    roots.choice = RootChoice::second;
  } else if (!(roots.cosine2 < 0.0)) {
    const double linear = -q.C / q.B;
    if (std::abs(roots.r2 - linear) < std::abs(roots.r1 - linear)) roots.choice = RootChoice::second;
  }
  return roots;
}

}  // namespace tidearc
