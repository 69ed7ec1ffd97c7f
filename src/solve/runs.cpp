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

template <class Pivot>
int divide(double* a, double& s, int r1, int r2, Pivot&& pivot) {
  for (int i = r1; i <= r2; ++i) {
    const double d = pivot(i);
    if (d == 0.0) return i;
    const double t = a[i] / d;
    s += a[i] * t;
    a[i] = t;
  }
  return 0;
}

template <class Term>
void add_terms(double& s, int r1, int r2, Term&& term) {
  double sum = s;
  for (int i = r1; i <= r2; ++i) sum += term(i);
  s = sum;
}

}  // namespace

int VECOP(RunOperation op, const RunVectors& v, double& s, int r1, int r2) {
  if (r2 < r1) return 0;
  const auto [a, b, c, IDIAG] = row_pointers(v);
  switch (op) {
    case product_profile_pivot:
      add_terms(s, r1, r2, [a = a, b = b, c = c, IDIAG = IDIAG](int i) { return a[i] * b[i] * c[IDIAG[i]]; });
      return 0;
    case product:
    case product_prescribed:
      add_terms(s, r1, r2, [a = a, b = b](int i) { return a[i] * b[i]; });
      return 0;
    case subtract: {
      const double factor = s;
      for (int i = r1; i <= r2; ++i) a[i] -= factor * b[i];
      return 0;
    }
    case product_pivot:
      add_terms(s, r1, r2, [a = a, b = b, c = c](int i) { return a[i] * b[i] * c[i]; });
      return 0;
    case divide_pivot:
      return divide(a, s, r1, r2, [b = b](int i) { return b[i]; });
    case divide_profile_pivot:
      return divide(a, s, r1, r2, [b = b, IDIAG = IDIAG](int i) { return b[IDIAG[i]]; });
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
  const double *a0 = a[0].data() - 1, *a1 = a[1].data() - 1, *a2 = a[2].data() - 1, *a3 = a[3].data() - 1;
  const double* row = b.data() - 1;
  double s0 = s[0], s1 = s[1], s2 = s[2], s3 = s[3];
  for_free_runs(MSTAT, r1, r2, [&](int lo, int hi) {
    for (int i = lo; i <= hi; ++i) {
      const double x = row[i];
      s0 += a0[i] * x;
      s1 += a1[i] * x;
      s2 += a2[i] * x;
      s3 += a3[i] * x;
    }
  });
  s = {s0, s1, s2, s3};
}

void panel_products_profile_pivot(const Panel& a, const RunVectors& v, ConstIntegers MSTAT, PanelSums& s, int r1,
                                  int r2) {
  const double *a0 = a[0].data() - 1, *a1 = a[1].data() - 1, *a2 = a[2].data() - 1, *a3 = a[3].data() - 1;
  const RowPointers p = row_pointers(v);
  double s0 = s[0], s1 = s[1], s2 = s[2], s3 = s[3];
  for_free_runs(MSTAT, r1, r2, [&](int lo, int hi) {
    for (int i = lo; i <= hi; ++i) {
      const double x = p.b[i];
      const double pivot = p.c[p.IDIAG[i]];
      s0 += a0[i] * x * pivot;
      s1 += a1[i] * x * pivot;
      s2 += a2[i] * x * pivot;
      s3 += a3[i] * x * pivot;
    }
  });
  s = {s0, s1, s2, s3};
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
