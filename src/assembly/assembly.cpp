// The element loop of a static analysis, and the one entry for a current factor.
#include "assembly/assembly.h"

#include <algorithm>

#include "assembly/add.h"
#include "elements/contract/stiffness.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/profile.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

/// What stands in place of a diagonal that no element stiffens: small beside any structure, so that the equation
/// solves.
constexpr double stand_in_diagonal = 1.0E-8;

Profile<double> assembled() {
  return {pool.reals(solver.KASM, solver.NSTO), pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ};
}

// KFIRST goes down before anything is added, prescribed equations included.
void add_element(const ElementMatrix& element) {
  const ConstIntegers LM(element.LM, element.ND);
  const Profile<double> K = assembled();
  solver.KFIRST = std::min(solver.KFIRST, lowest_equation(LM, sizes.NEQ));
  const bool inside = element.packed ? ADDSYP(LM, element.EMAT, K) : ADDSYM(LM, element.EMAT, K);
  if (!inside) {
    complain(not_on_deck, "an element matrix reaches outside the profile of the structure matrix");
    FATERR(element.packed ? "ADDSYP" : "ADDSYM");
  }
}

// An equation that gets its stand-in has changed, so the factor must take it up as well.
void sweep_zero_diagonals() {
  const Profile<double> K = assembled();
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (K.diagonal(e) != 0.0) continue;
    K.diagonal(e) = stand_in_diagonal;
    solver.KFIRST = std::min(solver.KFIRST, e);
    write(units.NDOUT, "5X,'WWWWW D. O. F. ',I5,' HAS ZERO STIFFNESS WWWWW'", e);
  }
}

void take_pending_status() {
  if (solver.KSTCHG == 1) {
    solver.KSTCHG = 0;
    solver.KROW0 = 1;
    solver.KFIRST = std::min(solver.KFIRST, solver.KSTEQ);
  } else {
    solver.KROW0 = solver.KFIRST;
  }
}

}  // namespace

void ASMSTA() {
  const bool reset = solver.KRESET == 1;
  if (reset) RZERO(pool.reals(solver.KASM, solver.NSTO).data(), solver.NSTO);
  solver.KFIRST = sizes.NEQ;
  form_element_matrices(solver.KFORM, reset, solver.NELCHK, add_element);
  // A cleared matrix has lost the stand-ins of the first step, whatever the phase of the analysis.
  if (solver.KFORM == 0 || reset) sweep_zero_diagonals();
  solver.NELCHK = 0;
  write(units.NDOUT, "5X,'STIFFNESS FORMED'");
}

void STIFUP() {
  if (solver.NELCHK != 0 || solver.KRESET == 1) {
    ASMSTA();
    ++solver.NSTUPD;
    solver.KRESET = 0;
  } else if (solver.KSTCHG == 0) {
    return;
  } else {
    solver.KFIRST = sizes.NEQ;
  }
  do {
    take_pending_status();
    factorise();
  } while (solver.KSTCHG == 1);
}

}  // namespace tidearc
