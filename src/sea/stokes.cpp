// Stokes waves of the fifth order: coefficients and the solution for lambda and d/L.
#include "sea/stokes.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "sea/airy.h"
#include "sea/hyperbolic.h"

namespace tidearc {

namespace {

constexpr double pi = std::numbers::pi;
constexpr double two_pi = 2.0 * pi;
constexpr double deep_argument = 100.0;  ///< kd above which cosh kd counts as infinite in the deep form

/// A value and its derivative by b = d/L.
struct Rated {
  double value;
  double slope;
};
constexpr Rated operator+(Rated a, double b) { return {a.value + b, a.slope}; }
constexpr Rated operator+(Rated a, Rated b) { return {a.value + b.value, a.slope + b.slope}; }
constexpr Rated operator*(double a, Rated b) { return {a * b.value, a * b.slope}; }
constexpr Rated operator*(Rated a, Rated b) { return {a.value * b.value, a.slope * b.value + a.value * b.slope}; }
constexpr Rated operator/(Rated a, Rated b) {
  const double ratio = a.value / b.value;
  return {ratio, (a.slope - ratio * b.slope) / b.value};
}

Rated power(Rated x, int n) {
  Rated result{1.0, 0.0};
  for (int i = 0; i < std::abs(n); ++i) result = result * x;
  return n < 0 ? Rated{1.0, 0.0} / result : result;
}

/// A coefficient: a polynomial in e = cosh^2 kd times a power of cosh kd, over the divisor and powers of sinh kd,
/// P = 6e - 1 and R = 8e^2 - 11e + 3.
struct Coefficient {
  std::array<double, 9> polynomial;  ///< the highest power first
  int degree;
  double divisor;
  int s, c, P, R;  ///< powers of sinh, cosh, P, R
};

constexpr Coefficient A11{{1}, 0, 1, 1, 0, 0, 0};
constexpr Coefficient A13{{-5, -1, 0}, 2, 8, 5, 0, 0, 0};
constexpr Coefficient A15{{-1184, 1440, 1992, -2641, 249, -18}, 5, 1536, 11, 0, 0, 0};
constexpr Coefficient A22{{3}, 0, 8, 4, 0, 0, 0};
constexpr Coefficient A24{{192, -424, -312, 480, -17}, 4, 768, 10, 0, 0, 0};
constexpr Coefficient A33{{-4, 13}, 1, 64, 7, 0, 0, 0};
constexpr Coefficient A35{{512, 4224, -6800, -12808, 16704, -3154, 107}, 6, 4096, 13, 0, 1, 0};
constexpr Coefficient A44{{80, -816, 1338, -197}, 3, 1536, 10, 0, 1, 0};
constexpr Coefficient A55{{-2880, 72480, -324000, 432000, -163470, 16245}, 5, 61440, 11, 0, 1, 1};
constexpr Coefficient B22{{2, 1}, 1, 4, 3, 1, 0, 0};
constexpr Coefficient B24{{272, -504, -192, 322, 21}, 4, 384, 9, 1, 0, 0};
constexpr Coefficient B33{{24, 0, 0, 3}, 3, 64, 6, 0, 0, 0};
constexpr Coefficient B35{{88128, -208224, 70848, 54000, -21816, 6264, -54, -81}, 7, 12288, 12, 0, 1, 0};
constexpr Coefficient B44{{768, -448, -48, 48, 106, -21}, 5, 384, 9, 1, 1, 0};
constexpr Coefficient B55{{192000, -262720, 83680, 20160, -7280, 7160, -1800, -1050, 225}, 8, 12288, 10, 0, 1, 1};
constexpr Coefficient C1{{8, -8, 9}, 2, 8, 4, 0, 0, 0};
constexpr Coefficient C2{{3840, -4096, -2592, -1008, 5944, -1830, 147}, 6, 512, 10, 0, 1, 0};  // -2592: see stokes.h
constexpr Coefficient C3{{-1}, 0, 4, 1, -1, 0, 0};
constexpr Coefficient C4{{12, 36, -162, 141, -27}, 4, 192, 9, -1, 0, 0};

Rated polynomial(const Coefficient& of, Rated e) {
  Rated sum{of.polynomial[0], 0.0};
  for (int i = 1; i <= of.degree; ++i) sum = sum * e + of.polynomial[static_cast<std::size_t>(i)];
  return sum;
}

/// The same divided by e^degree, in q = 1/e.
Rated divided_polynomial(const Coefficient& of, Rated q) {
  Rated sum{0.0, 0.0};
  for (int i = of.degree; i >= 0; --i) sum = sum * q + of.polynomial[static_cast<std::size_t>(i)];
  return sum;
}

/// The functions of the relative depth that coefficients are made of.
class Depth {
 public:
  Depth(double b, StokesForm form) : form_(form) {
    const double y = two_pi * b;
    if (form == StokesForm::deep && y > deep_argument) {
      inverse_ = {0.0, 0.0};
      tangent_ = {1.0, 0.0};
      return;
    }
    const SinhCosh of = SINCSH(y);
    sinh_ = {of.sinh, two_pi * of.cosh};
    cosh_ = {of.cosh, two_pi * of.sinh};
    inverse_ = Rated{1.0, 0.0} / cosh_;
    tangent_ = sinh_ / cosh_;
  }

  Rated tangent() const { return tangent_; }
  Rated operator()(const Coefficient& of) const { return form_ == StokesForm::plain ? plain(of) : deep(of); }

 private:
  Rated plain(const Coefficient& of) const {
    const Rated e = cosh_ * cosh_;
    const Rated P = 6.0 * e + -1.0;
    const Rated R = 8.0 * (e * e) + -11.0 * e + 3.0;
    return polynomial(of, e) * power(cosh_, of.c) /
           (of.divisor * (power(sinh_, of.s) * power(P, of.P) * power(R, of.R)));
  }

  /// With q = 1/e: the polynomial divided by e^degree, s by c, P by e, R by e^2; a power of 1/c is left over.
  Rated deep(const Coefficient& of) const {
    const Rated q = inverse_ * inverse_;
    const Rated P = -1.0 * q + 6.0;
    const Rated R = 3.0 * (q * q) + -11.0 * q + 8.0;
    const int left = of.s - of.c + 2 * of.P + 4 * of.R - 2 * of.degree;
    return divided_polynomial(of, q) * power(inverse_, left) /
           (of.divisor * (power(tangent_, of.s) * power(P, of.P) * power(R, of.R)));
  }

  StokesForm form_;
  Rated sinh_{}, cosh_{};
  Rated inverse_{}, tangent_{};  ///< 1 / cosh, tanh
};

/// Corrections of lambda and b.
struct Step {
  double lambda, b;
};

/// One Newton step on
///   f1 = lambda + B33 lambda^3 + (B35 + B55) lambda^5 - pi (H/d) b
///   f2 = b tanh(2 pi b) (1 + C1 lambda^2 + C2 lambda^4) - d/L0
/// with the analytic Jacobian, by Cramer's rule.
Step newton_step(double lambda, double b, double steepness, double depth_ratio, StokesForm form) {
  const Depth depth(b, form);
  const Rated third = depth(B33);
  const Rated fifth = depth(B35) + depth(B55);
  const Rated c1 = depth(C1);
  const Rated c2 = depth(C2);
  const double l2 = lambda * lambda;
  const double l4 = l2 * l2;
  const Rated speed = Rated{b, 1.0} * depth.tangent();
  const Rated series = l2 * c1 + l4 * c2 + 1.0;

  const double f1 = lambda * (1.0 + third.value * l2 + fifth.value * l4) - steepness * b;
  const Rated f2 = speed * series + -depth_ratio;
  const double J11 = 1.0 + 3.0 * third.value * l2 + 5.0 * fifth.value * l4;
  const double J12 = lambda * (third.slope * l2 + fifth.slope * l4) - steepness;
  const double J21 = speed.value * lambda * (2.0 * c1.value + 4.0 * c2.value * l2);
  const double J22 = f2.slope;
  const double determinant = J11 * J22 - J12 * J21;
  return {(J12 * f2.value - J22 * f1) / determinant, (J21 * f1 - J11 * f2.value) / determinant};
}

}  // namespace

StokesCoefficients stokes_coefficients(double b, StokesForm form) {
  const Depth depth(b, form);
  const auto at = [&](const Coefficient& of) { return depth(of).value; };
  return {.A11 = at(A11),
          .A13 = at(A13),
          .A15 = at(A15),
          .A22 = at(A22),
          .A24 = at(A24),
          .A33 = at(A33),
          .A35 = at(A35),
          .A44 = at(A44),
          .A55 = at(A55),
          .B22 = at(B22),
          .B24 = at(B24),
          .B33 = at(B33),
          .B35 = at(B35),
          .B44 = at(B44),
          .B55 = at(B55),
          .C1 = at(C1),
          .C2 = at(C2),
          .C3 = at(C3),
          .C4 = at(C4),
          .tangent = depth.tangent().value};
}

StokesWave stokes_wave(double lambda, double b, const StokesCoefficients& of, double d, double g) {
  const double l2 = lambda * lambda;
  const double l3 = lambda * l2;
  const double l4 = l2 * l2;
  const double l5 = lambda * l4;
  StokesWave solved;
  solved.lambda = lambda;
  solved.b = b;
  solved.L = d / b;
  solved.k = two_pi / solved.L;
  const double C = std::sqrt(g * of.tangent * (1.0 + of.C1 * l2 + of.C2 * l4) / solved.k);
  solved.C = C;
  solved.F = {lambda, l2 * of.B22 + l4 * of.B24, l3 * of.B33 + l5 * of.B35, l4 * of.B44, l5 * of.B55};
  solved.G = {C * (lambda * of.A11 + l3 * of.A13 + l5 * of.A15), 2.0 * C * (l2 * of.A22 + l4 * of.A24),
              3.0 * C * (l3 * of.A33 + l5 * of.A35), 4.0 * C * l4 * of.A44, 5.0 * C * l5 * of.A55};
  solved.Q = C * C / (2.0 * g) - (l2 * of.C3 + l4 * of.C4) / solved.k;
  return solved;
}

StokesWave solve_stokes(double H, double T, double d, double g, double tolerance, int iterations) {
  const double L0 = deep_water_length(T, g);
  const double depth_ratio = d / L0;
  const StokesForm form = depth_ratio > deep_form_ratio ? StokesForm::deep : StokesForm::plain;
  double lambda = pi * H / L0;
  double b = depth_ratio;
  int passes = 0;
  bool converged = false;
  while (passes < iterations && !converged) {
    const Step step = newton_step(lambda, b, pi * (H / d), depth_ratio, form);
    const double dl = step.lambda / lambda;
    const double db = step.b / b;
    converged = std::sqrt(dl * dl + db * db) <= tolerance;
    lambda += step.lambda;
    b += step.b;
    ++passes;
  }
  StokesWave solved = stokes_wave(lambda, b, stokes_coefficients(b, form), d, g);
  solved.form = form;
  solved.depth_ratio = depth_ratio;
  solved.passes = passes;
  solved.converged = converged;
  return solved;
}

}  // namespace tidearc
