// The formulas of one step of the implicit integration, equation by equation: values to values.
//
// With d the displacement increment of the step, v and a velocity and acceleration at its start, a prime at its end:
//   a' = A0 d - A1 v - A3 a,   v' = A2 d - A4 v - A5 a                                   (Newmark 1959)
//   M a' + C w' + (1-AB) R' + AB R_n = (1-AB) P' + AB P_n                    (Hilber, Hughes, Taylor 1977)
// Damping has the full weight in the effective matrix (A2 C), so its force has too; the velocity it is taken at is that
// of the time at which the other forces are taken, w' = v' - AB DT a, which keeps second order. At d = 0 the difference
// of both sides is the effective load of the step.
//
// N. M. Newmark, J. Eng. Mech. Div. ASCE 85 (1959) 67-94; H. M. Hilber, T. J. R. Hughes, R. L. Taylor, Earthquake Eng.
// Struct. Dyn. 5 (1977) 283-292. Deviation: the latter have C v' with the weights of the other forces.
#pragma once

#include "solve/integration.h"

namespace tidearc {

inline double new_acceleration(const IntegrationBlock& c, double d, double v, double a) {
  return c.A0 * d - c.A1 * v - c.A3 * a;
}
inline double new_velocity(const IntegrationBlock& c, double d, double v, double a) {
  return c.A2 * d - c.A4 * v - c.A5 * a;
}
/// w' from v' and the acceleration at the start.
inline double damped_velocity(const IntegrationBlock& c, double new_v, double a) { return new_v - c.AB * c.DT * a; }
/// (1-AB) x' + AB x_n.
inline double weighted(const IntegrationBlock& c, double x, double x_n) { return (1.0 - c.AB) * x + c.AB * x_n; }
/// Coefficient of a in -w' at d = 0; that of v is A4.
inline double start_damping_coefficient(const IntegrationBlock& c) { return c.A5 + c.AB * c.DT; }
/// What inertia and mass-proportional damping of the last state add to the effective load.
inline double inertia_load(const IntegrationBlock& c, double mass, double v, double a) {
  return mass * (c.A1 * v + c.A3 * a + c.DMASS * (c.A4 * v + start_damping_coefficient(c) * a));
}

}  // namespace tidearc
