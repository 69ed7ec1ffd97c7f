// Gathering element vectors from equation vectors, and scattering them back.
// Freedoms with LM 0 gather as zero and scatter nowhere; a constrained freedom gathers the sink's zero and scatters
// into the sink. Elements work in global directions: the components of a node with a local system are turned on the
// way.
#pragma once

#include "model/nodes.h"
#include "run/views.h"

namespace tidearc {

/// Equation vectors and the ID table as a pass holds them: found once per pass.
struct Gathering {
  const int* ID;  ///< equation of slot s at ID[s - 1]
  bool turning;   ///< some node has a local system
};
inline Gathering gathering() { return {pool.words(nodes.ID, 6LL * sizes.NUMNP), sizes.NCSYS >= 1}; }

/// Calls action(node, first) for each run of three freedoms (first, first+1, first+2; from 0) whose node has a local
/// system. Translations and rotations of a node each stand together in LM.
template <class Action>
void for_each_turned_triple(const int* LM, int NDOF, Action&& action) {
  for (int first = 0; first + 3 <= NDOF; first += 3) {
    int slot = LM[first];
    if (slot < 1) slot = LM[first + 1];
    if (slot < 1) slot = LM[first + 2];
    if (slot < 1) continue;
    const int node = (slot - 1) % sizes.NUMNP + 1;
    if (system_of(node) > 0) action(node, first);
  }
}

/// out = the values value_at(e) of the element's equations e, in global directions.
template <class ValueAt>
void gather_values(const Gathering& from, const int* LM, int NDOF, ValueAt&& value_at, double* out) {
  for (int i = 0; i < NDOF; ++i) out[i] = LM[i] < 1 ? 0.0 : value_at(from.ID[LM[i] - 1]);
  if (from.turning) for_each_turned_triple(LM, NDOF, [&](int node, int first) { to_global(node, out + first); });
}
/// out = gathered u. The vectors here have NEQ1 entries and a zero sink.
inline void gather(const Gathering& from, const int* LM, int NDOF, const double* u, double* out) {
  gather_values(
      from, LM, NDOF, [u](int e) { return u[e - 1]; }, out);
}
/// out = gathered u - u0.
inline void gather_change(const Gathering& from, const int* LM, int NDOF, const double* u, const double* u0,
                          double* out) {
  gather_values(
      from, LM, NDOF, [u, u0](int e) { return u[e - 1] - u0[e - 1]; }, out);
}

/// Adds an element vector in global directions to an equation vector; turns `values` in place.
inline void scatter_add(const Gathering& to, const int* LM, int NDOF, double* values, double* vector) {
  if (to.turning) for_each_turned_triple(LM, NDOF, [&](int node, int first) { to_local(node, values + first); });
  for (int i = 0; i < NDOF; ++i) {
    if (LM[i] > 0) vector[to.ID[LM[i] - 1] - 1] += values[i];
  }
}

}  // namespace tidearc
