// Strips of a profile: the handful of adjacent columns that start at one row, or near it, such as those of a node.
#pragma once

#include <algorithm>
#include <cstdlib>

#include "solve/kernel_table.h"
#include "solve/profile.h"

namespace tidearc {

/// Columns that start within so many rows of each other are of one strip.
inline constexpr int strip_slack = 16;

/// Pointer p such that p[k] is entry (k, c).
template <class T>
T* rows_of(const Profile<T>& K, int c) {
  return K.column(c).data() - 1;
}

/// Sets first, count, common, ragged, top and column of the strip of columns first..last.
inline void place_strip(Strip& strip, const Profile<const double>& K, int first, int last) {
  strip.first = first;
  strip.count = last - first + 1;
  int common = 1, highest = first;
  for (int r = 0; r < strip.count; ++r) {
    const int top = K.top(first + r);
    strip.top[r] = top;
    strip.column[r] = rows_of(K, first + r);
    common = std::max(common, top);
    highest = std::min(highest, top);
  }
  strip.common = std::min(common, first);
  strip.ragged = highest < strip.common;
}

/// The longest strip from column c on, none behind `last`.
inline void begin_strip(Strip& strip, const Profile<const double>& K, int c, int last) {
  const int top = K.top(c);
  int end = c;
  while (end < last && end < c + strip_rows - 1 && std::abs(K.top(end + 1) - top) <= strip_slack) ++end;
  place_strip(strip, K, c, end);
}

/// The longest strip that ends with column c, none before `first`.
inline void end_strip(Strip& strip, const Profile<const double>& K, int c, int first) {
  const int top = K.top(c);
  int begin = c;
  while (begin > first && begin > c - strip_rows + 1 && std::abs(K.top(begin - 1) - top) <= strip_slack) --begin;
  place_strip(strip, K, begin, c);
}

}  // namespace tidearc
