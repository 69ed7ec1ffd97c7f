// The constants of the implicit time integration, shared by the dynamic analyses, the assembly and the elements.
//
// H. M. Hilber, T. J. R. Hughes, R. L. Taylor, Earthquake Eng. Struct. Dyn. 5 (1977) 283-292; with AB 0 the method of
// N. M. Newmark, J. Eng. Mech. Div. ASCE 85 (1959) 67-94. From the displacement increment d of a step:
//   a' = A0 d - A1 v - A3 a,   v' = A2 d - A4 v - A5 a,
// and the element and nodal parts of the effective matrix are
//   KE = A0 M + A2 (DMASS M + sum(BETAO K0 + BETAT Kt)) + (1 - AB) sum Kt.
#pragma once

#include <type_traits>

namespace tidearc {

/// Written by the dynamic macros (INTCON computes and rescales) and, DTK and NEWCON, by the assembly; everybody else
/// reads. All zero before the first dynamic macro.
struct IntegrationBlock {
  double DT = 0.0;     ///< step size                                                              [s]
  double AB = 0.0;     ///< -ALPHA, not negative: weight of the step's start in loads and forces   [-]
  double BETA = 0.0;   ///< [-]
  double GAMMA = 0.0;  ///< AB + 0.5                                                               [-]
  double A0 = 0.0;     ///< 1 / (BETA DT^2)                                                        [1/s2]
  double A1 = 0.0;     ///< 1 / (BETA DT)                                                          [1/s]
  double A2 = 0.0;     ///< GAMMA / (BETA DT)                                                      [1/s]
  double A3 = 0.0;     ///< 0.5 / BETA - 1                                                         [-]
  double A4 = 0.0;     ///< GAMMA / BETA - 1                                                       [-]
  double A5 = 0.0;     ///< (0.5 GAMMA / BETA - 1) DT                                              [s]
  double DMASS = 0.0;  ///< mass-proportional damping                                              [1/s]
  double DTK = 0.0;    ///< step size with which the assembled matrix was formed, 0: by no dynamic analysis  [s]
  int NEWCON = 0;      ///< 1: the assembled matrix holds the mass term and the damping terms of these constants
};
inline IntegrationBlock integration;
static_assert(std::is_trivially_copyable_v<IntegrationBlock>);

enum class Constants { computed, rescaled };
/// Computes the constants from DT, AB and BETA (0: (1 + AB)^2 / 4, which is stored) and prints ALPHA (-AB) and BETA on
/// the report; the assembled matrix is no longer theirs. Or rescales them all from `old_step` to DT, each by the power
/// of the ratio of steps that its dimension needs: A3 and A4 stay.
void INTCON(Constants how, double old_step = 0.0);

/// Factor of the nodal masses in the effective matrix.
inline double mass_coefficient() { return integration.A2 * integration.DMASS + integration.A0; }

}  // namespace tidearc
