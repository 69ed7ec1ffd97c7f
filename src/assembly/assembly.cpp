// The element loops of static and dynamic analyses, and the one entry for a current factor.
#include "assembly/assembly.h"

#include <algorithm>
#include <string>

#include "assembly/add.h"
#include "assembly/blocks.h"
#include "assembly/diagonals.h"
#include "assembly/element_tape.h"
#include "elements/contract/stiffness.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/integration.h"
#include "solve/profile.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

/// A triangle of the assembled matrix in core: 1 the upper one, 2 the lower one of an unsymmetric matrix.
Profile<double> assembled(int triangle) {
  const int index = solver.KASM + (triangle - 1) * ITWO * triangle_length();
  return {pool.reals(index, triangle_length()), pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ};
}

void add_in_core(const ElementMatrix& matrix, ConstIntegers LM) {
  const Profile<double> K = assembled(1);
  bool inside = false;
  if (unsymmetric()) {
    inside = (matrix.packed ? ADDUNP : ADDUNS)(LM, matrix.EMAT, {K, assembled(2)});
  } else {
    inside = (matrix.packed ? ADDSYP : ADDSYM)(LM, matrix.EMAT, K);
  }
  if (inside) return;
  complain(not_on_deck, "the matrix of element " + std::to_string(record_words()[0]) + " of group " +
                            std::to_string(element.IGRP) + " reaches outside the profile of the structure matrix");
  FATERR(unsymmetric() ? (matrix.packed ? "ADDUNP" : "ADDUNS") : (matrix.packed ? "ADDSYP" : "ADDSYM"));
}

// KFIRST goes down before anything is added, prescribed equations included.
void add_element(const ElementMatrix& matrix) {
  const ConstIntegers LM(matrix.LM, matrix.ND);
  solver.KFIRST = std::min(solver.KFIRST, lowest_equation(LM, sizes.NEQ));
  if (blocked()) {
    ADDTAP(LM, matrix.packed, matrix.EMAT);
  } else {
    add_in_core(matrix, LM);
  }
}

/// Each triangle by itself. Those who follow an unsymmetric job are told on the progress file too.
void sweep_zero_diagonals() {
  for (int triangle = 1; triangle <= triangles(); ++triangle) {
    give_stand_ins(assembled(triangle), [](int e) {
      for (const int unit : {units.NDOUT, UNIT_PROGRESS}) {
        if (unit == UNIT_PROGRESS && !unsymmetric()) continue;
        write(unit, "5X,'WWWWW D. O. F. ',I5,' HAS ZERO STIFFNESS WWWWW'", e);
      }
    });
  }
}

void begin_assembly(bool reset) {
  if (blocked()) {
    begin_element_matrices();
  } else if (reset) {
    RZERO(pool.reals(solver.KASM, solver.NSTO).data(), solver.NSTO);
  }
  solver.KFIRST = sizes.NEQ;
}

void finish_assembly(Diagonals diagonals) {
  if (diagonals == Diagonals::with_masses) take_up_masses();
  if (blocked()) {
    (unsymmetric() ? BLKASU : BLKASM)(diagonals);
  } else if (diagonals == Diagonals::stand_ins) {
    sweep_zero_diagonals();
  } else {
    for (int triangle = 1; triangle <= triangles(); ++triangle) finish_diagonals(assembled(triangle), diagonals);
  }
  solver.NELCHK = 0;
}

/// The assembled matrix is not that of the step at hand: everything is due, masses and damping included.
void forget_matrix() {
  solver.KRESET = 1;
  solver.KFORM = 1;
  integration.NEWCON = 0;
}

void assemble(bool dynamic, int code) {
  if (!dynamic) {
    ASMSTA();
  } else if (code == loop_dynamic) {
    ASMDYN();
  } else {
    ASMDY2();
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
  begin_assembly(reset);
  form_element_matrices(solver.KFORM, reset, solver.NELCHK, add_element);
  // A cleared matrix has lost the stand-ins of the first step, whatever the phase of the analysis.
  finish_assembly(solver.KFORM == 0 || reset ? Diagonals::stand_ins : Diagonals::as_added);
  integration.DTK = ZERO;
  integration.NEWCON = 0;
  write(units.NDOUT, "5X,'STIFFNESS FORMED'");
}

void ASMDYN() {
  const bool reset = solver.KRESET == 1;
  // A cleared matrix has lost the masses too.
  const bool without_masses = reset || (solver.KFORM <= 1 && integration.NEWCON == 0);
  begin_assembly(reset);
  form_element_matrices(solver.KFORM, reset, solver.NELCHK, add_element);
  finish_assembly(without_masses ? Diagonals::with_masses : Diagonals::as_added);
  integration.DTK = integration.DT;
  integration.NEWCON = 1;
}

void STIFUP(int code) {
  const bool dynamic = response.TIME != ZERO && code != loop_static;
  if (dynamic && integration.DTK != integration.DT) forget_matrix();
  if (solver.NELCHK != 0 || solver.KRESET == 1) {
    assemble(dynamic, code);
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
