// The event scan over all elements, and the limit on the increment itself.
#include "elements/contract/event_scan.h"

#include <algorithm>
#include <cmath>

#include "elements/contract/pass.h"
#include "model/control.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

double largest_entry(Reals x) {
  double largest = 0.0;
  for (int e = 1; e <= sizes.NEQ; ++e) largest = std::max(largest, std::abs(x(e)));
  return largest;
}

}  // namespace

void EVSCAN(int increment, double limit) {
  event_found = {};
  const FirstEvent first = first_event(increment);
  event_found = {first.EFAC, first.IEVT, first.IGRP, first.IMEM};
  if (limit == 0.0) return;
  const double most = largest_entry(equation_vector(increment));
  if (most > limit && limit / most < event_found.EFAC) event_found = {limit / most, event_of_limit, 0, 0};
}

}  // namespace tidearc
