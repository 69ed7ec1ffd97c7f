// Vector operations along runs of free or prescribed equations.
#include "solve/runs.h"

#include <cstddef>

namespace tidearc {

namespace {

// Pointers such that p[i] is row i.
struct RowPointers {
  double* a;
  const double* b;
  const double* c;
  const int* IDIAG;
};

// A view that is not used has no address to count from.
template <class T>
T* row_pointer(const Vector<T>& v) {
  return v.data() == nullptr ? nullptr : v.data() - 1;
}

RowPointers row_pointers(const RunVectors& v) {
  return {row_pointer(v.a), row_pointer(v.b), row_pointer(v.c), row_pointer(v.IDIAG)};
}

}  // namespace

int VECOP(RunOperation op, const RunVectors& v, double& s, int r1, int r2) {
  if (r2 < r1) return 0;
  const auto [a, b, c, IDIAG] = row_pointers(v);
  switch (op) {
    case product_profile_pivot:
      s = kernels->product_profile_pivot(a, b, c, IDIAG, s, r1, r2);
      return 0;
    case product:
    case product_prescribed:
      s = kernels->product(a, b, s, r1, r2);
      return 0;
    case subtract:
      kernels->subtract(a, b, s, r1, r2);
      return 0;
    case product_pivot:
      s = kernels->product_pivot(a, b, c, s, r1, r2);
      return 0;
    case divide_pivot:
      return kernels->divide(a, b, s, r1, r2);
    case divide_profile_pivot:
      return kernels->divide_profile(a, b, IDIAG, s, r1, r2);
  }
  return 0;
}

int RUNOP(RunOperation op, const RunVectors& v, ConstIntegers MSTAT, double& s, int r1, int r2) {
  for (int i = r1; i <= r2;) {
    const int link = MSTAT(i);
    const bool is_free = link < 1;
    const int last = std::min(is_free ? -link : link - 1, r2);
    if (is_free != (op == product_prescribed)) {
      if (const int row = VECOP(op, v, s, i, last)) return row;
    }
    i = last + 1;
  }
  return 0;
}

void panel_products(const Panel& a, ConstReals b, ConstIntegers MSTAT, PanelSums& s, int r1, int r2) {
  const double* const columns[panel_width] = {row_pointer(a[0]), row_pointer(a[1]), row_pointer(a[2]),
                                              row_pointer(a[3])};
  const double* const row = row_pointer(b);
  for_free_runs(MSTAT, r1, r2, [&](int lo, int hi) { kernels->panel_products(columns, row, s.data(), lo, hi); });
}

void link_status(ConstIntegers status, Integers MSTAT, int NEQ) {
  int run_end = NEQ;  // last equation of the run that is being walked, from the end down
  bool run_prescribed = false;
  for (int e = NEQ; e >= 1; --e) {
    const bool is_prescribed = status(e) != 0;
    if (e == NEQ || is_prescribed != run_prescribed) {
      run_end = e;
      run_prescribed = is_prescribed;
    }
    MSTAT(e) = is_prescribed ? run_end + 1 : -run_end;
  }
}

}  // namespace tidearc
