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

}  // namespace tidearc
