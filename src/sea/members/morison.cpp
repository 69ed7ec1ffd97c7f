// Morison's equation, its form by angle of attack, and the correction of added mass.
//
// J. R. Morison et al., "The force exerted by surface waves on piles", Petroleum Transactions AIME 189 (1950), on the
// components normal to the member.
#include "sea/members/morison.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace tidearc {

namespace {

/// Entries of the tables at 0, 30, 60 and 90 degrees from the local y axis, in the quadrant of a velocity. Zero counts
/// as positive.
constexpr std::array<std::array<std::size_t, 4>, 4> quadrants{
    {{0, 1, 2, 3}, {6, 5, 4, 3}, {6, 7, 8, 9}, {0, 11, 10, 9}}};

const std::array<std::size_t, 4>& quadrant_of(double Vy, double Vz) {
  if (Vz >= 0.0) return quadrants[Vy >= 0.0 ? 0 : 1];
  return quadrants[Vy >= 0.0 ? 3 : 2];
}

/// Cubic through four values at 0, 1, 2 and 3.
double cubic(const std::array<double, 12>& table, const std::array<std::size_t, 4>& at, double x) {
  const double a = x - 1.0, b = x - 2.0, c = x - 3.0;
  return -a * b * c / 6.0 * table[at[0]] + x * b * c / 2.0 * table[at[1]] - x * a * c / 2.0 * table[at[2]] +
         x * a * b / 6.0 * table[at[3]];
}

Point cross(const Point& a, const Point& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

}  // namespace

SectionTerms section_terms(const WaterSection& section, double rho) {
  constexpr double pi = std::numbers::pi;
  const double D = section.D;
  SectionTerms terms;
  terms.drag = 0.5 * section.CD * D * rho;
  terms.tangential = 0.5 * section.CDS * D * rho * pi;
  terms.added_mass = 0.25 * section.KM * D * D * rho * pi;
  terms.inertia = 0.25 * section.CM * D * D * rho * pi;
  terms.by_angle = section.ICA == 7 && section.general != nullptr;
  if (!terms.by_angle) return terms;
  terms.second_code = section.JCA;
  terms.general_inertia = 0.25 * pi * section.general->inertia * D * D * rho;
  for (std::size_t i = 0; i < terms.general_drag.size(); ++i) {
    terms.general_drag[i] = 0.5 * D * rho * section.general->drag[i];
    terms.general_lift[i] = 0.5 * D * rho * section.general->lift[i];
  }
  return terms;
}

void MORGEN(const SectionTerms& terms, double Vy, double Vz, double Vn, double ramp, Point& force) {
  constexpr double per_radian = 6.0 / std::numbers::pi;  // table steps of 30 degrees
  const double x = std::acos(std::min(std::abs(Vy) / Vn, 1.0)) * per_radian;
  const std::array<std::size_t, 4>& at = quadrant_of(Vy, Vz);
  const double drag = cubic(terms.general_drag, at, x) * Vn * Vn * ramp;
  const double lift = cubic(terms.general_lift, at, x) * Vn * Vn * ramp;
  const double cosine = Vy / Vn, sine = Vz / Vn;
  force[1] += drag * cosine - lift * sine;
  force[2] += drag * sine + lift * cosine;
}

Point MORISON(const SectionTerms& terms, const std::array<double, 9>& axes, LoadMode mode, const Point& V,
              const Point& A, double ramp) {
  const auto [Vx, Vy, Vz] = to_local(axes, V);
  const Point a = to_local(axes, A);
  const double Vn = std::sqrt(Vy * Vy + Vz * Vz);
  const double inertia_z = terms.by_angle ? terms.general_inertia : terms.inertia;
  Point force{terms.tangential * Vx * std::abs(Vx) * ramp, terms.inertia * a[1] * ramp, inertia_z * a[2] * ramp};
  if (terms.by_angle && terms.second_code == 1) {
    if (Vn > 0.0) MORGEN(terms, Vy, Vz, Vn, ramp, force);
  } else {
    force[1] = (terms.inertia * a[1] + terms.drag * Vy * Vn) * ramp;
    force[2] = (inertia_z * a[2] + terms.drag * Vz * Vn) * ramp;
  }
  return mode == LoadMode::global ? to_global(axes, force) : force;
}

Point MASSADD(int state, const Point& acceleration, const Point& chord, const Point& undeformed, double added_mass) {
  if (state == 0 || added_mass == 0.0) return {};
  const Point normal = cross(chord, cross(acceleration, chord));
  const double c = chord[0] * undeformed[0] + chord[1] * undeformed[1] + chord[2] * undeformed[2];
  const double factor = -(state * added_mass) - (1.0 - c * c) * added_mass;
  return {factor * normal[0], factor * normal[1], factor * normal[2]};
}

}  // namespace tidearc
