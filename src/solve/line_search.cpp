// The rule of trial lengths of a line search.
#include "solve/line_search.h"

#include <cmath>

namespace tidearc {

void keep_best_trial(LineSearch& search, double r) {
  if (!(std::abs(r) <= std::abs(search.RBEST))) return;
  search.SBEST = search.SLEN;
  search.RBEST = r;
}

bool next_trial_length(LineSearch& search, int t, double r, double SLOW, double SUP) {
  if (t == 1) {
    search.SLEN = SLOW;
    search.r1 = r;
    search.s1 = SLOW;
    return true;
  }
  if (t == 2) {
    search.SLEN = SUP;
    return true;
  }
  const double s0 = search.s0;
  const double s1 = search.s1;
  search.SLEN = 0.5 * ((r - search.r1) * s1 * s1 - r * s0 * s0) / ((search.r1 - r) * s1 + r * s0);
  search.s0 = s1;
  search.r1 = 0.0;
  search.s1 = 0.0;
  return SLOW <= search.SLEN && search.SLEN <= SUP;
}

}  // namespace tidearc
