// The solver that analyses call: prescribed status from the patterns, factorisation of what changed, solution.
#include "solve/solve.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string>

#include "model/nodes.h"
#include "model/patterns.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/blocked.h"
#include "solve/factor.h"
#include "solve/profile.h"
#include "solve/runs.h"
#include "solve/solver.h"
#include "solve/unsymmetric.h"

namespace tidearc {

namespace {

constexpr int header_words = 12;

Integers status_links() { return pool.integers(arrays.MSTAT, NEQ1()); }
Integers factored_status() { return pool.integers(arrays.STATUS, NEQ1()); }
ConstIntegers diagonals() { return pool.integers(solver.IDIAG, NEQ1()); }

// One triangle of a matrix in core; the second stands behind the first and shares its addresses.
template <class T>
Profile<T> triangle(Vector<T> values, int number) {
  const int length = triangle_length();
  return {{values.data() + (number - 1) * std::ptrdiff_t{length}, length}, diagonals(), sizes.NEQ};
}
Profile<double> factor(int number = 1) { return triangle(factor_values(), number); }
Profile<const double> assembled(int number = 1) {
  return triangle(ConstReals(pool.reals(solver.KASM, solver.NSTO)), number);
}

/// Memory of the factor of a job whose pool has no room for it.
struct OutsideFactor {
  std::unique_ptr<double[]> values;
  int size = 0;
};
OutsideFactor outside_factor;

Reals outside_values(int n) {
  if (outside_factor.size != n) {
    outside_factor.values.reset(new (std::nothrow) double[static_cast<std::size_t>(n)]());
    outside_factor.size = n;
  }
  if (n > 0 && outside_factor.values == nullptr) {
    release_outside_factor();
    complain(not_on_deck, "no memory for the factor of the stiffness matrix, " + std::to_string(n) + " reals");
    FATERR("SOLVE");
  }
  return {outside_factor.values.get(), n};
}

// Status words in MSTAT (0 free) become run links; what differs from the last factorisation is a pending change.
void take_status() {
  const Integers status = status_links();
  const Integers before = factored_status();
  solver.KSTCHG = 0;
  solver.KSTEQ = sizes.NEQ;
  for (int e = 1; e <= sizes.NEQ && solver.KSTCHG == 0; ++e) {
    if ((status(e) != 0) != (before(e) != 0)) {
      solver.KSTCHG = 1;
      solver.KSTEQ = e;
    }
  }
  link_status(status, status, sizes.NEQ);
}

// Positions NT10 behind the force patterns. Their records differ in number by kind, so the reader of patterns passes
// over them.
void skip_force_patterns() {
  FILE(units.NT10, "REWI");
  for (int p = 1; p <= static_loads.NMADE; ++p) {
    add_next_pattern(0.0, equation_vector(arrays.U), equation_vector(arrays.PATTERN), equation_vector(arrays.WORK));
  }
}

Reals read_prescribed_pattern(int p) {
  std::array<Word, header_words> header{};
  FILE(units.NT10, "READ", header_words, header.data());
  const Reals entries = equation_vector(arrays.ZDISP + ITWO * NEQ1() * (p - 1));
  FILE(units.NT10, "READ", ITWO * NEQ1(), entries.data());
  return entries;
}

// The solver of the storage scheme.
void run_solver(int rhs, SolveMode mode) {
  if (blocked()) {
    unsymmetric() ? SOLVDU(rhs, mode) : SOLVDS(rhs, mode);
  } else {
    unsymmetric() ? SOLVIU(rhs, mode) : SOLVIS(rhs, mode);
  }
}

}  // namespace

NodeDirection holder_of(int equation) {
  const IntegerTable ID = node_ID();
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    for (int component = 1; component <= NDF; ++component) {
      if (ID(node, component) == equation) return {node, component};
    }
  }
  return {};
}

const char* direction_name(int component) {
  constexpr std::array<const char*, NDF + 1> names{"none", "X", "Y", "Z", "XR", "YR", "ZR"};
  return component < 1 || component > NDF ? names[0] : names[static_cast<std::size_t>(component)];
}

void reset_status() {
  const Integers status = status_links();
  std::fill(status.begin(), status.end(), 0);
  take_status();
}

void PRESTAT(std::span<const double> factors, std::span<const int> moved) {
  const Integers status = status_links();
  const Reals XP = equation_vector(arrays.XP);
  std::fill(status.begin(), status.end(), 0);
  std::fill(XP.begin(), XP.end(), 0.0);
  if (static_loads.NZDISP > 0) skip_force_patterns();
  for (int p = 1; p <= static_loads.NZDISP; ++p) {
    const Reals entries = read_prescribed_pattern(p);
    const double factor =
        static_cast<std::size_t>(p) <= factors.size() ? factors[static_cast<std::size_t>(p - 1)] : 0.0;
    for (int e = 1; e <= sizes.NEQ; ++e) {
      if (entries(e) == unprescribed) continue;
      status(e) = 1;
      XP(e) += factor * entries(e);
    }
  }
  for (const int e : moved) {
    if (e >= 1 && e <= sizes.NEQ) status(e) = 1;
  }
  take_status();
}

void stop_at_zero_pivot(int address, int equation, bool tell_equation) {
  std::string text = format(
      "5X,'PROGRAM STOPS BECAUSE ZERO DIAGONAL ENTERY OF THE STIFFNESS MATRIX ',"
      "' IS ENCOUNTERED AT POSITION',I6",
      address);
  if (tell_equation) text += format("'. CHECK D.O.F.',I6", equation);
  warning_box(text);
  const NodeDirection where = holder_of(equation);
  const std::string place = tell_equation ? "at address " + std::to_string(address) + " of the stiffness matrix"
                                          : "in the blocks of the stiffness matrix";
  complain(not_on_deck, "zero pivot " + place + ": equation " + std::to_string(equation) + ", node " +
                            std::to_string(where.node) + " direction " + direction_name(where.component) +
                            " has no stiffness");
  CLOSUP();
}

void SOLVIS(int rhs, SolveMode mode) {
  const Profile<double> K = factor();
  if (mode != solve_only) {
    const ZeroPivot zero = reduce_symmetric(K, status_links(), solver.KFIRST, solver.KROW0);
    if (zero.equation != 0) stop_at_zero_pivot(zero.address, zero.equation, true);
  }
  if (mode != reduce_only) solve_symmetric(K, status_links(), equation_vector(rhs));
}

void SOLVIU(int rhs, SolveMode mode) {
  const Profile<double> upper = factor(1);
  const Profile<double> lower = factor(2);
  if (mode != solve_only) reduce_triangles_within(upper, lower, {status_links(), solver.KFIRST, solver.KROW0});
  if (mode != reduce_only) solve_unsymmetric(upper, lower, status_links(), equation_vector(rhs));
}

Reals factor_values() { return solver.KFAC == 0 ? outside_values(solver.NSTO) : pool.reals(solver.KFAC, solver.NSTO); }

void release_outside_factor() { outside_factor = {}; }

void factorise() {
  if (!blocked()) {
    for (int t = 1; t <= triangles(); ++t) {
      copy_changed_rows(assembled(t), factor(t).A, solver.KFIRST, solver.KROW0);
    }
  }
  run_solver(arrays.WORK, reduce_only);
  if (!blocked() && !unsymmetric()) solver.NNEG = count_negative_pivots(factor());
  const Integers status = status_links();
  const Integers before = factored_status();
  for (int e = 1; e <= sizes.NEQ; ++e) before(e) = status(e) > 0 ? 1 : 0;
}

void SOLVE(int rhs) {
  run_solver(rhs, solve_only);
  equation_vector(rhs)(NEQ1()) = 0.0;
}

double assembled_diagonal(int equation) {
  return blocked() ? equation_vector(arrays.DIAG)(equation) : assembled().diagonal(equation);
}

}  // namespace tidearc
