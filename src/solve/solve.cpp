// The solver that analyses call: prescribed status from the patterns, factorisation of what changed, solution.
#include "solve/solve.h"

#include <algorithm>
#include <array>
#include <string>

#include "model/nodes.h"
#include "model/patterns.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/factor.h"
#include "solve/profile.h"
#include "solve/runs.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr int header_words = 12;

Integers status_links() { return pool.integers(arrays.MSTAT, NEQ1()); }
Integers factored_status() { return pool.integers(arrays.STATUS, NEQ1()); }
ConstIntegers diagonals() { return pool.integers(solver.IDIAG, NEQ1()); }
Profile<double> factor() { return {pool.reals(solver.KFAC, solver.NSTO), diagonals(), sizes.NEQ}; }
Profile<const double> assembled() { return {pool.reals(solver.KASM, solver.NSTO), diagonals(), sizes.NEQ}; }

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

[[noreturn]] void stop_at_zero_pivot(const ZeroPivot& zero) {
  warning_box(
      format("5X,'PROGRAM STOPS BECAUSE ZERO DIAGONAL ENTERY OF THE STIFFNESS MATRIX ',"
             "' IS ENCOUNTERED AT POSITION',I6,'. CHECK D.O.F.',I6",
             zero.address, zero.equation));
  const NodeDirection where = holder_of(zero.equation);
  complain(not_on_deck, "zero pivot at address " + std::to_string(zero.address) +
                            " of the stiffness matrix: equation " + std::to_string(zero.equation) + ", node " +
                            std::to_string(where.node) + " direction " + direction_name(where.component) +
                            " has no stiffness");
  CLOSUP();
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

bool prescribed(int equation) { return equation >= 1 && equation <= sizes.NEQ && status_links()(equation) > 0; }

void PRESTAT(std::span<const double> factors) {
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
  take_status();
}

void SOLVIS(int rhs, SolveMode mode) {
  const Profile<double> K = factor();
  if (mode != solve_only) {
    const ZeroPivot zero = reduce_symmetric(K, status_links(), solver.KFIRST, solver.KROW0);
    if (zero.equation != 0) stop_at_zero_pivot(zero);
  }
  if (mode != reduce_only) {
    const Reals R = equation_vector(rhs);
    solve_symmetric(K, status_links(), R);
    R(NEQ1()) = 0.0;
  }
}

void factorise() {
  copy_changed_rows(assembled(), pool.reals(solver.KFAC, solver.NSTO), solver.KFIRST, solver.KROW0);
  SOLVIS(arrays.WORK, reduce_only);
  solver.NNEG = count_negative_pivots(factor());
  const Integers status = status_links();
  const Integers before = factored_status();
  for (int e = 1; e <= sizes.NEQ; ++e) before(e) = status(e) > 0 ? 1 : 0;
}

void SOLVE(int rhs) { SOLVIS(rhs, solve_only); }

}  // namespace tidearc
