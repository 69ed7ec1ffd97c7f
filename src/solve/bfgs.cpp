// BFGS updates of the right-hand side between factorisations: pairs on a record file, and the two passes over them.
#include "solve/bfgs.h"

#include <cmath>

#include "run/tapefile.h"
#include "run/units.h"
#include "run/vectors.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

/// Index into the coefficient tables of pair i, from 1.
std::size_t place_of(int i) { return static_cast<std::size_t>(i - 1); }

Reals read_vector() {
  const Reals vector = pool.reals(arrays.WORK, sizes.NEQ);
  FILE(units.NT14, "READ", ITWO * sizes.NEQ, vector.data());
  return vector;
}

}  // namespace

double projection_on(ConstReals s, double rho, ConstReals v) { return rho * DOT(s.data(), v.data(), v.size()); }

void remove_force(ConstReals f, double b, Reals v) {
  for (int e = 1; e <= v.size(); ++e) v(e) -= b * f(e);
}

void add_displacement(ConstReals s, double e, Reals v) {
  for (int i = 1; i <= v.size(); ++i) v(i) += e * s(i);
}

void forget_pairs() {
  bfgs.NBFGS = 0;
  bfgs.pending = false;
}

void store_pair(ConstReals f, ConstReals s) {
  if (bfgs.NBFGS >= most_pairs) return;
  const double rho = 1.0 / DOT(f.data(), s.data(), f.size());
  if (!std::isfinite(rho)) return;
  ++bfgs.NBFGS;
  bfgs.RHO[place_of(bfgs.NBFGS)] = rho;
  FILE(units.NT14, "REWI");
  FILE(units.NT14, "SKIP", 2 * (bfgs.NBFGS - 1));
  FILE(units.NT14, "WRIT", ITWO * f.size(), f.data());
  FILE(units.NT14, "WRIT", ITWO * s.size(), s.data());
}

void update_before_solve(Reals v, UpdateSlot slot) {
  for (int i = bfgs.NBFGS; i >= 1; --i) {
    FILE(units.NT14, "REWI");
    FILE(units.NT14, "SKIP", 2 * i - 1);
    const double b = projection_on(read_vector(), bfgs.RHO[place_of(i)], v);
    bfgs.BETA[place_of(i)][static_cast<std::size_t>(slot)] = b;
    FILE(units.NT14, "BACK", 2);
    remove_force(read_vector(), b, v);
  }
}

void update_after_solve(Reals v, UpdateSlot slot) {
  FILE(units.NT14, "REWI");
  for (int i = 1; i <= bfgs.NBFGS; ++i) {
    const double b = projection_on(read_vector(), bfgs.RHO[place_of(i)], v);
    add_displacement(read_vector(), bfgs.BETA[place_of(i)][static_cast<std::size_t>(slot)] - b, v);
  }
}

}  // namespace tidearc
