// The two parallel branches of a truss: elastic-perfectly-plastic plus hardening, with buckling and failure.
//
// Sources: the parallel model of kinematic hardening after J. F. Besseling (1958); a strut that gives back nothing
// until its shortening is taken up, as the tension-only brace with slack of seismic frame analysis. Tension and
// extension are positive. Pure mechanics: values in, values out.
#pragma once

#include "elements/truss/record.h"

namespace tidearc {

struct BranchLaw {
  double SK1, SK2;  ///< stiffness of the first and of the hardening branch          [force/length]
  double FYT, FYC;  ///< yield forces of the first branch, FYC negative               [force]
  int KBUCK;        ///< 0: yields alike on both sides; else buckles in compression
};

struct BranchState {
  double F1, F2;        ///< forces of the branches                                    [force]
  double PLPOS, PLNEG;  ///< accumulated plastic extension, PLNEG negative              [length]
  double PLBUCK;        ///< plastic shortening not yet taken up                       [length]
  int code;             ///< truss_elastic or truss_yielded
};

/// Moves an element that has not failed through the extension increment dE, from event to event. Returns the sum of the
/// fractions of dE that were walked: 1 within 1E-7.
double walk_branches(const BranchLaw& law, double dE, BranchState& state);

struct FailingState {
  double F1;   ///< the force that is left                                             [force]
  double SK2;  ///< stiffness along which it goes, negative in code 2                  [force/length]
  int code;    ///< truss_failed_outward, truss_failed_inward or truss_gone
};

/// Takes the force of a failed element toward zero by |dE SK2|; where it reaches zero it stays.
void walk_failed(double dE, FailingState& state);

/// What failure makes of an element with forces F1 and F2: the force that is to go, half the initial stiffness to go
/// along, and the code by the direction of the last increment.
FailingState begin_failure(double F1, double F2, double SK1, double SK2, double dE);

/// Tangent of codes 0 to 4; of 2 and 3 its magnitude.
double branch_tangent(int code, double SK1, double SK2);

}  // namespace tidearc
