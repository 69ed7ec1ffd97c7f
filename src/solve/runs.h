// Vector operations along runs of equations: the inner loops of the profile solver.
//
// Equations of prescribed displacement stay inside the matrix. They are stepped over by run links, so that every loop
// below sees contiguous ranges whatever the pattern of prescribed equations:
//   MSTAT(i) = -e  equation i is free, e is the last equation of its run of free equations
//   MSTAT(i) =  p  equation i is prescribed, p is the first equation behind its run (NEQ + 1 at the end)
// Every sum runs from low index to high, its step a fused multiply-add, rounded once (solve/kernels.h). Sums gain speed
// side by side, never by re-association.
#pragma once

#include <algorithm>
#include <array>

#include "run/views.h"
#include "solve/kernels.h"

namespace tidearc {

/// What an operation does at each row i of its range; s is the sum that the caller carries from range to range.
enum RunOperation : int {
  product_profile_pivot = 1,  ///< s += (a(i) * c(IDIAG(i))) * b(i), the bracket rounded
  product = 2,                ///< s += a(i) * b(i)
  subtract = 3,               ///< a(i) -= s * b(i)
  product_pivot = 4,          ///< s += (a(i) * c(i)) * b(i), the bracket rounded
  divide_pivot = 5,           ///< t = a(i) / b(i), s += a(i) * t, a(i) = t; a pivot b(i) of exactly 0 stops
  divide_profile_pivot = 6,   ///< the same with the pivot at b(IDIAG(i))
  product_prescribed = 7,     ///< s += a(i) * b(i) over prescribed rows
};

/// Operands of an operation, each addressed by row; b and c of the profile forms are whole profiles.
struct RunVectors {
  Reals a;
  ConstReals b{};
  ConstReals c{};
  ConstIntegers IDIAG{};
};

/// One operation on the contiguous rows r1..r2 (none when r2 is below r1). Returns 0, or for operations 5 and 6 the row
/// whose pivot is exactly 0: rows before it are done, it and the rows behind it are untouched.
int VECOP(RunOperation op, const RunVectors& v, double& s, int r1, int r2);

/// VECOP on the free rows of r1..r2, or, for operation 7, on the prescribed rows. Returns as VECOP.
int RUNOP(RunOperation op, const RunVectors& v, ConstIntegers MSTAT, double& s, int r1, int r2);

/// Calls act(lo, hi) for each stretch of free rows in r1..r2, in rising order.
template <class Act>
void for_free_runs(ConstIntegers MSTAT, int r1, int r2, Act&& act) {
  for (int i = r1; i <= r2;) {
    const int link = MSTAT(i);
    if (link < 1) {
      const int last = std::min(-link, r2);
      act(i, last);
      i = last + 1;
    } else {
      i = link;
    }
  }
}

using Panel = std::array<ConstReals, panel_width>;
using PanelSums = std::array<double, panel_width>;

/// s[k] += a[k](i) * b(i) over the free rows of r1..r2: operation 2 for the columns of a panel at once. Each sum has
/// the digits of RUNOP on that column alone.
void panel_products(const Panel& a, ConstReals b, ConstIntegers MSTAT, PanelSums& s, int r1, int r2);
/// Builds the run links of NEQ equations from status words: 0 free, anything else prescribed. `MSTAT` and `status` have
/// NEQ entries or more and may be the same array.
void link_status(ConstIntegers status, Integers MSTAT, int NEQ);

}  // namespace tidearc
