// Limits of the loaded part of a member.
#include "sea/members/wet_part.h"

#include <algorithm>

namespace tidearc {

namespace {

bool above(double level, double limit, double sg) { return (level - limit) * sg < 0.0; }
bool below(double level, double limit, double sg) { return (level - limit) * sg > 0.0; }

}  // namespace

Inside LIMTEST(double zA, double zB, double upper, double lower, double sg) {
  const bool A_above = above(zA, upper, sg), B_above = above(zB, upper, sg);
  const bool A_below = below(zA, lower, sg), B_below = below(zB, lower, sg);
  if ((A_above && B_above) || (A_below && B_below)) return Inside::none;
  return A_above || B_above || A_below || B_below ? Inside::part : Inside::whole;
}

Inside CLIP(double zA, double zB, double upper, double lower, double sg, Stretch& kept) {
  kept = {0.0, 1.0};
  if (zA == zB) return above(zA, upper, sg) || below(zA, lower, sg) ? Inside::none : Inside::whole;
  const double at_upper = (upper - zA) / (zB - zA);
  const double at_lower = (lower - zA) / (zB - zA);
  const bool downward = (zB - zA) * sg > 0.0;
  kept.from = std::clamp(downward ? at_upper : at_lower, 0.0, 1.0);
  kept.to = std::clamp(downward ? at_lower : at_upper, 0.0, 1.0);
  if (kept.to <= kept.from) return Inside::none;
  return kept.from == 0.0 && kept.to == 1.0 ? Inside::whole : Inside::part;
}

int LEVELS(std::span<const double> levels, double hA, double hB, std::span<double> parts) {
  // The splits are gathered in `parts` first and then replaced by their differences.
  const double lower = std::min(hA, hB), upper = std::max(hA, hB);
  std::size_t splits = 0;
  for (const double level : levels) {
    if (level > lower && level < upper && splits + 1 < parts.size()) parts[splits++] = (level - hA) / (hB - hA);
  }
  std::sort(parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(splits));
  double before = 0.0;
  for (std::size_t i = 0; i < splits; ++i) {
    const double split = parts[i];
    parts[i] = split - before;
    before = split;
  }
  parts[splits] = 1.0 - before;
  return static_cast<int>(splits) + 1;
}

}  // namespace tidearc
