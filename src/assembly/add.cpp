// One element matrix into the profile.
#include "assembly/add.h"

#include <algorithm>
#include <cstddef>

namespace tidearc {

namespace {

// `entry(i, j)` is the element's entry for row freedom i and column freedom j.
template <class Entry>
bool add_pairs(ConstIntegers LM, const Profile<double>& K, Entry&& entry) {
  const int ND = LM.size();
  for (int j = 1; j <= ND; ++j) {
    const int b = LM(j);
    if (b < 1 || b > K.NEQ) continue;
    const int top = K.top(b);
    const Reals column = K.column(b);
    for (int i = 1; i <= ND; ++i) {
      const int a = LM(i);
      if (a < 1 || a > b) continue;
      if (a < top) return false;
      column(a) += entry(i, j);
    }
  }
  return true;
}

}  // namespace

int lowest_equation(ConstIntegers LM, int NEQ) {
  int lowest = NEQ + 1;
  for (const int e : LM) {
    if (e >= 1) lowest = std::min(lowest, e);
  }
  return lowest;
}

bool ADDSYM(ConstIntegers LM, const double* EMAT, const Profile<double>& K) {
  const std::ptrdiff_t ND = LM.size();
  return add_pairs(LM, K, [EMAT, ND](int i, int j) { return EMAT[(j - 1) * ND + i - 1]; });
}

bool ADDSYP(ConstIntegers LM, const double* EMAT, const Profile<double>& K) {
  const int ND = LM.size();
  const int NDT = ND * (ND + 1) / 2;
  return add_pairs(LM, K, [EMAT, ND, NDT](int i, int j) {
    const int v = ND + 1 - std::min(i, j);
    const int position = std::max(i, j) - std::min(i, j) + NDT + 1 - v * (v + 1) / 2;
    return EMAT[position - 1];
  });
}

}  // namespace tidearc
