// Wave force magnification in time.
#include "sea/members/magnification.h"

#include <cstddef>

namespace tidearc {

double force_multiplier(std::span<const double> times, std::span<const double> multipliers, double time, int& index) {
  const int rows = static_cast<int>(times.size());
  int next = index + 1;
  while (next <= rows && times[static_cast<std::size_t>(next) - 1] <= time) ++next;
  index = next <= rows ? next - 1 : rows + 1;
  if (index == 0 || index > rows) return 1.0;
  const auto upper = static_cast<std::size_t>(index), lower = upper - 1;
  const double share = (time - times[lower]) / (times[upper] - times[lower]);
  return multipliers[lower] + share * (multipliers[upper] - multipliers[lower]);
}

}  // namespace tidearc
