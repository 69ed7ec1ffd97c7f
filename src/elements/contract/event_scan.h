// The event scan: the part of a displacement increment up to the first change of stiffness of any element.
#pragma once

#include <type_traits>

namespace tidearc {

/// Type of an event that no element makes: the increment is larger than its limit.
inline constexpr int event_of_limit = 6;

/// A step whose events do not end: what is left of it is taken without a scan.
inline constexpr int most_events_of_a_step = 1000;

/// Result of the last scan; reset at its start.
struct EventBlock {
  double EFAC = 1.0;  ///< part of the increment that is taken, 1.0: no event                     [-]
  int IEVT = 0;       ///< type of the event, as the element's type numbers it; 0 none            [-]
  int IGRP = 0;       ///< group of the element, 0 none                                           [-]
  int IMEM = 0;       ///< number of the element, 0 none                                          [-]
};
inline EventBlock event_found;
static_assert(std::is_trivially_copyable_v<EventBlock>);

/// Scans all elements, from their states at hand, for the increment in pool vector `increment` (NEQ1), into
/// `event_found`. A `limit` other than 0 also cuts an increment whose largest entry is above it.
void EVSCAN(int increment, double limit);

}  // namespace tidearc
