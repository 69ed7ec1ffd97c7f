// One element matrix into the profile.
#include "assembly/add.h"

#include <algorithm>
#include <cstddef>

namespace tidearc {

namespace {

// The one rule of which entry goes where: calls add(i, j, a, b) for every pair of freedoms whose row equation a is not
// above its column equation b, column by column.
template <class Add>
bool add_pairs(ConstIntegers LM, const Profile<double>& K, Add&& add) {
  const int ND = LM.size();
  for (int j = 1; j <= ND; ++j) {
    const int b = LM(j);
    if (b < K.first || b > K.NEQ) continue;
    const int top = K.top(b);
    for (int i = 1; i <= ND; ++i) {
      const int a = LM(i);
      if (a < 1 || a > b) continue;
      if (a < top) return false;
      add(i, j, a, b);
    }
  }
  return true;
}

// The two forms in which an element delivers its matrix.
struct FullMatrix {
  const double* EMAT;
  std::ptrdiff_t ND;
  double operator()(int i, int j) const { return EMAT[(j - 1) * ND + i - 1]; }
};

struct PackedMatrix {
  const double* EMAT;
  int ND;
  double operator()(int i, int j) const {
    const int NDT = ND * (ND + 1) / 2;
    const int v = ND + 1 - std::min(i, j);
    const int position = std::max(i, j) - std::min(i, j) + NDT + 1 - v * (v + 1) / 2;
    return EMAT[position - 1];
  }
};

template <class Entry>
bool add_to_one(ConstIntegers LM, const Entry& entry, const Profile<double>& K) {
  return add_pairs(LM, K, [&](int i, int j, int a, int b) { K.column(b)(a) += entry(i, j); });
}

template <class Entry>
bool add_to_both(ConstIntegers LM, const Entry& entry, const Triangles& K) {
  return add_pairs(LM, K.upper, [&](int i, int j, int a, int b) {
    K.upper.column(b)(a) += entry(i, j);
    K.lower.column(b)(a) += a == b ? entry(i, j) : entry(j, i);
  });
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
  return add_to_one(LM, FullMatrix{EMAT, LM.size()}, K);
}

bool ADDSYP(ConstIntegers LM, const double* EMAT, const Profile<double>& K) {
  return add_to_one(LM, PackedMatrix{EMAT, LM.size()}, K);
}

bool ADDUNS(ConstIntegers LM, const double* EMAT, const Triangles& K) {
  return add_to_both(LM, FullMatrix{EMAT, LM.size()}, K);
}

bool ADDUNP(ConstIntegers LM, const double* EMAT, const Triangles& K) {
  return add_to_both(LM, PackedMatrix{EMAT, LM.size()}, K);
}

}  // namespace tidearc
