// The unbalance norm, the norm of the applied load, the largest unbalances of a step, and the search for values that
// are not finite: what every analysis asks of its vectors before it goes on.
#pragma once

#include <initializer_list>

namespace tidearc {

/// How the unbalance is measured, as cards say.
struct NormKind {
  int KUTYPE = 0;  ///< 0 maximum, 1 Euclidean, else weighted by the diagonal of the assembled matrix
  int KUMOM = 0;   ///< 1: moments count
};
struct UnbalanceNorm {
  double unbalance = 0.0;  ///< of RU                          [force; - when weighted]
  double applied = 0.0;    ///< of P; 0.0 when weighted        [force]
};
/// Norms of the vectors RU and P over the free equations, without moments over those that a translation of some node
/// reaches. Not finite when an entry is not. Uses R (weighted) and WORK.
UnbalanceNorm unbalance_norm(const NormKind& kind);

/// Opens TAP32 when it is not open, at the first analysis of the run that asks for it.
void open_unbalance_list();
/// The NTOP largest entries of RU on TAP32: node, component, value, by falling magnitude. Uses WORK.
void write_largest_unbalances(int NTOP);

/// First equation whose entry in one of the vectors (pool indices, looked through in turn) is not finite; 0 none.
int first_bad_equation(std::initializer_list<int> vectors);

}  // namespace tidearc
