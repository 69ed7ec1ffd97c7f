// What an assembly does to the diagonals when all elements have been added: masses and stand-ins.
#pragma once

#include <algorithm>

#include "assembly/stand_ins.h"
#include "model/control.h"
#include "model/masses.h"
#include "run/workpool.h"
#include "solve/integration.h"
#include "solve/profile.h"
#include "solve/solver.h"

namespace tidearc {

/// How the diagonals end.
enum class Diagonals {
  as_added,     ///< as the elements leave them
  stand_ins,    ///< every diagonal of exactly zero gets its stand-in
  with_masses,  ///< equations with mass get the mass term, the others their stand-in
};

inline ConstReals lumped_masses() { return pool.reals(masses.AMASS, sizes.NEQ); }

/// KFIRST goes down to the first equation with mass.
inline void take_up_masses() {
  const ConstReals M = lumped_masses();
  for (int e = 1; e < solver.KFIRST; ++e) {
    if (M(e) != 0.0) solver.KFIRST = e;
  }
}

/// The mass term on every diagonal with mass, the stand-in on every other one of exactly zero; lowers KFIRST to both.
inline void add_masses(const Profile<double>& K) {
  const ConstReals M = lumped_masses();
  const double coefficient = mass_coefficient();
  for (int e = K.first; e <= K.NEQ; ++e) {
    if (M(e) != 0.0) {
      K.diagonal(e) += M(e) * coefficient;
    } else if (K.diagonal(e) == 0.0) {
      K.diagonal(e) = stand_in_diagonal;
    } else {
      continue;
    }
    solver.KFIRST = std::min(solver.KFIRST, e);
  }
}

/// Ends the diagonals of a triangle, or of a stretch of it, silently.
inline void finish_diagonals(const Profile<double>& K, Diagonals how) {
  switch (how) {
    case Diagonals::as_added:
      break;
    case Diagonals::stand_ins:
      give_stand_ins(K, [](int) {});
      break;
    case Diagonals::with_masses:
      add_masses(K);
      break;
  }
}

}  // namespace tidearc
