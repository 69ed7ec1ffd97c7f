// How much of an increment a truss takes up to its next change of stiffness: pure formulas.
#pragma once

#include "elements/contract/types.h"
#include "elements/truss/branch.h"
#include "elements/truss/curve.h"
#include "elements/truss/geometry.h"

namespace tidearc {

enum TrussEvent : int {
  event_none = 0,
  event_tension = 2,      ///< yield in tension
  event_curve_up = 3,     ///< next ordinate of the curve, extending
  event_compression = 4,  ///< yield in compression, or the next ordinate of the curve, shortening
  event_unloading = 5,    ///< unloading, or a buckled strut that is straight again
};

/// Values of an elastic state outside its bounds, for the message of the named operation.
struct EventTrouble {
  bool found = false;
  double fraction = 0.0;   ///< of dE up to the bound: negative
  double bound = 0.0;      ///< yield force of the direction of motion
  double overshoot = 0.0;  ///< overshoot extension
};

/// Event of an element on its two branches for the extension increment dE. `overshoot` holds the extensions by which an
/// event at yield and at unloading is passed, so that the state lands behind it; one that is not above 0 becomes 1E-6
/// of the bound's yield extension. A yield at a fraction of 0.999999 or more is no event.
ElementEvent branch_event(const BranchLaw& law, const BranchState& state, double dE, const double (&overshoot)[2],
                          EventTrouble& trouble);

/// Event of an element on its curve, from extension EXT. An ordinate at a fraction of 0.999999 or more is no event.
ElementEvent curve_event(CurvePairs pairs, double DY, double EXT, double dE, double overshoot);

/// Event of an element that follows its nodes, found as above from its whole extension increment dE. Its length is not
/// linear in the fraction: an element that lengthens is short of its bound behind such a cut (it may even shorten at
/// first), and scans would crawl or stand still. The event is then where the length reaches the same extension.
ElementEvent event_on_course(const ElementEvent& event, double dE, const EndMotion& motion);

}  // namespace tidearc
