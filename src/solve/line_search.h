// A search along the increment of an iteration for the length with the smallest unbalance: the rule of trial lengths.
//
// Trial lengths are 1.0, the lower limit, the upper limit, and then the extremum of the parabola through the last
// unbalances. Values in, values out; whoever searches determines the states.
#pragma once

namespace tidearc {

/// Memory of one search. The unbalance of a trial is `r`.
struct LineSearch {
  double SLEN = 1.0;        ///< length of the trial at hand                            [-]
  double SBEST = 1.0;       ///< length of the best trial                               [-]
  double RBEST = 1.0E20;    ///< its unbalance                                          [force]
  double tolerance = 0.0;   ///< unbalance at which the search ends                     [force]
  double s0 = 1.0;          ///< length before the one of r1                            [-]
  double s1 = 0.0, r1 = 0;  ///< lower limit, and the unbalance of the trial at 1.0     [-, force]
};

/// Keeps the trial at hand when its unbalance is not above the best one; of equal ones the later stays. A value that is
/// not a number is never kept.
void keep_best_trial(LineSearch& search, double r);

/// Length of the trial after number t (from 1, the trial at length 1.0), whose unbalance is r. False when a length that
/// had to be calculated lies outside SLOW .. SUP; a zero denominator counts as outside.
bool next_trial_length(LineSearch& search, int t, double r, double SLOW, double SUP);

}  // namespace tidearc
