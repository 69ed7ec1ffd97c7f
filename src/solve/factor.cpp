// Factorisation of a symmetric profile matrix: its panels stand in solve/packed.h, the solution in
// solve/substitution.cpp.
#include "solve/factor.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "solve/packed.h"

namespace tidearc {

void copy_changed_rows(const Profile<const double>& assembled, Reals factor, int KFIRST, int KROW0) {
  if (KFIRST < 2) {
    std::copy(assembled.A.begin(), assembled.A.end(), factor.begin());
    return;
  }
  for (int c = std::max(KFIRST, assembled.first); c <= assembled.NEQ; ++c) {
    const int count = std::min(c - KROW0 + 1, assembled.height(c));
    const int last = assembled.IDIAG(c);
    std::copy(assembled.A.begin() + (last - count), assembled.A.begin() + last, factor.begin() + (last - count));
  }
}

ZeroPivot reduce_symmetric(const Profile<double>& K, ConstIntegers MSTAT, int KFIRST, int KROW0) {
  if (K.NEQ < 2) return {};
  std::vector<double>& pivots = panel_memory.pivots;
  if (pivots.size() < static_cast<std::size_t>(K.NEQ)) pivots.resize(static_cast<std::size_t>(K.NEQ));
  const Reals D{pivots.data(), K.NEQ};
  int lowest = KROW0;
  for (int c = KFIRST; c <= K.NEQ; ++c) lowest = std::min(lowest, K.top(c));
  for (int r = lowest; r < KROW0; ++r) D(r) = K.diagonal(r);
  return reduce_panels_within(K, {MSTAT, D, KFIRST, KROW0});
}

ZeroPivot reduce_within(const Profile<double>& K, const ReductionRange& range) {
  for (int c = K.first; c <= K.NEQ; ++c) range.D(c) = K.diagonal(c);
  return reduce_panels_within(K, range);
}

int count_negative_pivots(const Profile<const double>& K) {
  int count = 0;
  for (int e = 1; e <= K.NEQ; ++e) {
    if (K.diagonal(e) < 0.0) ++count;
  }
  return count;
}

}  // namespace tidearc
