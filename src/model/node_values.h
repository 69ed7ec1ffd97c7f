// What an equation-length vector (masses, loads) holds for one node.
#pragma once

#include <array>

#include "model/nodes.h"

namespace tidearc {

using NodeValues = std::array<double, 6>;

/// The six entries of a node, in the node's own axes. A constrained component reads as 0: the sink is not looked at. An
/// equation that several nodes share reads alike at each of them.
inline NodeValues values_at_node(int node, ConstReals vector) {
  const IntegerTable ID = node_ID();
  NodeValues values{};
  for (int c = 1; c <= 6; ++c) {
    const int e = ID(node, c);
    if (e <= sizes.NEQ) values[static_cast<std::size_t>(c - 1)] = vector(e);
  }
  return values;
}

inline bool any_nonzero(const NodeValues& values) {
  for (const double value : values) {
    if (value != 0.0) return true;
  }
  return false;
}

inline void add_to(NodeValues& sum, const NodeValues& values) {
  for (std::size_t c = 0; c < values.size(); ++c) sum[c] += values[c];
}

/// The values of those components whose equation no entry before has held, so that an equation that several nodes share
/// counts once in a total. `seen` has NEQ1 reals and starts at zero.
inline NodeValues not_yet_counted(int node, const NodeValues& values, Reals seen) {
  const IntegerTable ID = node_ID();
  NodeValues counted{};
  for (int c = 1; c <= 6; ++c) {
    double& mark = seen(ID(node, c));
    if (mark == 0.0) counted[static_cast<std::size_t>(c - 1)] = values[static_cast<std::size_t>(c - 1)];
    mark = 1.0;
  }
  return counted;
}

}  // namespace tidearc
