// Frames whose profiles the solver is measured on: node graphs in an order that keeps the profile small, six equations
// a node, and stiffness values of member pieces.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "model/ordering.h"
#include "solve/profile.h"

namespace tidearc::bench {

/// Nodes 0..nodes-1 and the member pieces between them; a node below 0 is the ground.
struct FrameGraph {
  int nodes = 0;
  std::vector<std::pair<int, int>> pieces;
};

inline std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// A frame under construction, whose members are cut into pieces.
struct FrameBuilder {
  FrameGraph graph{};
  int cuts = 1;  // pieces of a member

  int joint() { return graph.nodes++; }
  void member(int a, int b) {
    for (int k = 1; k < cuts; ++k) {
      graph.pieces.emplace_back(a, graph.nodes);
      a = graph.nodes++;
    }
    graph.pieces.emplace_back(a, b);
  }
};

/// A tower of four legs with an X brace and a chord in each face of each bay, every member cut into `cuts` pieces.
inline FrameGraph tower(int bays, int cuts) {
  FrameBuilder frame{{}, cuts};
  int below[4] = {-1, -1, -1, -1};
  for (int bay = 0; bay < bays; ++bay) {
    int top[4], crossing[4];
    for (int& corner : top) corner = frame.joint();
    for (int& node : crossing) node = frame.joint();
    for (int face = 0; face < 4; ++face) {
      const int next = (face + 1) % 4;
      frame.member(below[face], top[face]);
      frame.member(top[face], top[next]);
      for (const int end : {below[face], below[next], top[face], top[next]}) frame.member(end, crossing[face]);
    }
    std::copy(top, top + 4, below);
  }
  return frame.graph;
}

/// A jacket of four legs: an X brace in each face of each bay; at each level chords, a diamond between their middles,
/// and a conductor through the middle of each side of the diamond. Members of the lowest bays, which are to yield, are
/// cut into `cuts` pieces, those above are left in one.
inline FrameGraph jacket(int bays, int lowest, int cuts) {
  FrameBuilder frame;
  int below[4] = {-1, -1, -1, -1}, conductor[4] = {-1, -1, -1, -1};
  for (int bay = 0; bay < bays; ++bay) {
    frame.cuts = bay < lowest ? cuts : 1;
    int leg[4], crossing[4], middle[4], guide[4];
    for (int* const nodes : {leg, crossing, middle, guide}) {
      for (int k = 0; k < 4; ++k) nodes[k] = frame.joint();
    }
    for (int face = 0; face < 4; ++face) {
      const int next = (face + 1) % 4;
      frame.member(below[face], leg[face]);
      for (const int end : {below[face], below[next], leg[face], leg[next]}) frame.member(end, crossing[face]);
      for (const int end : {leg[face], leg[next], guide[face]}) frame.member(middle[face], end);
      frame.member(guide[face], middle[next]);
      frame.member(conductor[face], guide[face]);
    }
    std::copy(leg, leg + 4, below);
    std::copy(guide, guide + 4, conductor);
  }
  return frame.graph;
}

/// A block of columns and beams, nx by ny bays on plan and `storeys` high, members in one piece, held at the ground.
inline FrameGraph block(int nx, int ny, int storeys) {
  FrameGraph graph;
  const auto node = [&](int x, int y, int z) { return z < 0 ? -1 : (z * (ny + 1) + y) * (nx + 1) + x; };
  for (int z = 0; z < storeys; ++z) {
    for (int y = 0; y <= ny; ++y) {
      for (int x = 0; x <= nx; ++x) {
        graph.pieces.emplace_back(node(x, y, z - 1), node(x, y, z));
        if (x > 0) graph.pieces.emplace_back(node(x - 1, y, z), node(x, y, z));
        if (y > 0) graph.pieces.emplace_back(node(x, y - 1, z), node(x, y, z));
      }
    }
  }
  graph.nodes = storeys * (nx + 1) * (ny + 1);
  return graph;
}

/// A frame's matrix as a profile.
struct FrameMatrix {
  int n = 0;               ///< equations
  std::vector<int> IDIAG;  ///< diagonal addresses, 1-based
  std::vector<int> MSTAT;  ///< all free
  std::vector<double> K;   ///< profile
  std::vector<double> loads;

  Profile<double> view(std::vector<double>& values) const {
    return {{values.data(), static_cast<int>(values.size())}, {IDIAG.data(), n}, n};
  }
  int top(int c) const { return c == 1 ? 1 : c - (IDIAG[at(c - 1)] - IDIAG[at(c - 2)]) + 1; }
  double& entry(int r, int c) { return K[at(IDIAG[at(c - 1)] + r - c - 1)]; }
  /// Multiply-adds of a reduction: over the rows that both columns reach.
  double work() const {
    double count = 0.0;
    for (int c = 2; c <= n; ++c) {
      for (int r = top(c) + 1; r < c; ++r) count += std::max(0, r - std::max(top(c), top(r)));
      count += c - top(c);
    }
    return count;
  }
};

/// Position of each node in Sloan's order, from 0.
inline std::vector<int> sloan(const FrameGraph& graph) {
  const int n = graph.nodes;
  std::vector<int> lists(at(most_neighbours * n)), degrees(at(n)), order(at(n)), scratch(at(3 * n)), place(at(n));
  const NodeGraph nodes{{lists.data(), most_neighbours, n}, {degrees.data(), n}};
  for (const auto& [a, b] : graph.pieces) {
    if (a >= 0 && b >= 0) connect(nodes, a + 1, b + 1);
  }
  order_by_sloan(nodes, {order.data(), n}, {scratch.data(), 3 * n});
  for (int p = 0; p < n; ++p) place[at(order[at(p)] - 1)] = p;
  return place;
}

/// Entries of the graph's profile, one for each node, when node k stands in position place[k].
inline long profile_of(const FrameGraph& graph, const std::vector<int>& place) {
  std::vector<int> lowest = place;  // by node
  for (const auto& [a, b] : graph.pieces) {
    if (a < 0 || b < 0) continue;
    const int later = place[at(a)] > place[at(b)] ? a : b;
    lowest[at(later)] = std::min({lowest[at(later)], place[at(a)], place[at(b)]});
  }
  long count = 0;
  for (std::size_t k = 0; k < place.size(); ++k) count += place[k] - lowest[k] + 1;
  return count;
}

/// Position of each node in the reverse order of Cuthill and McKee, from 0. Of the two ends of the structure it begins
/// at the one that makes the smaller profile.
inline std::vector<int> reverse_cuthill_mckee(const FrameGraph& graph) {
  const int n = graph.nodes;
  std::vector<std::vector<int>> next(at(n));
  for (const auto& [a, b] : graph.pieces) {
    if (a < 0 || b < 0) continue;
    next[at(a)].push_back(b);
    next[at(b)].push_back(a);
  }
  const auto degree = [&](int node) { return next[at(node)].size(); };
  std::vector<int> order;
  const auto walk = [&](int start) {  // nodes by distance from `start`, those of small degree first
    std::vector<bool> seen(at(n), false);
    order.assign(1, start);
    seen[at(start)] = true;
    for (std::size_t k = 0; k < order.size(); ++k) {
      const std::size_t from = order.size();
      for (const int node : next[at(order[k])]) {
        if (!seen[at(node)]) order.push_back(node);
        seen[at(node)] = true;
      }
      std::stable_sort(order.begin() + static_cast<std::ptrdiff_t>(from), order.end(),
                       [&](int a, int b) { return degree(a) < degree(b); });
    }
  };
  const auto reversed = [&] {
    std::vector<int> place(at(n));
    for (int p = 0; p < n; ++p) place[at(order[at(p)])] = n - 1 - p;
    return place;
  };
  walk(0);
  for (int sweep = 0; sweep < 4; ++sweep) walk(order.back());
  const std::vector<int> one = reversed();
  walk(order.back());
  const std::vector<int> other = reversed();
  return profile_of(graph, other) < profile_of(graph, one) ? other : one;
}

/// Reals in 0..1 from a fixed sequence, so that every run does the same work.
struct Sequence {
  unsigned seed = 12345;
  double next() { return (seed = seed * 1664525u + 1013904223u) / 4294967296.0; }
};

/// Assembles pieces that couple their two ends by a random positive definite S, so that the matrix is that of an
/// elastic structure held at the ground; `place` is the position of each node.
inline FrameMatrix assemble(const FrameGraph& graph, const std::vector<int>& place) {
  FrameMatrix matrix;
  matrix.n = 6 * graph.nodes;
  std::vector<int> lowest(at(graph.nodes));
  for (int node = 0; node < graph.nodes; ++node) lowest[at(node)] = node;
  for (const auto& [a, b] : graph.pieces) {
    if (a < 0 || b < 0) continue;
    const int i = std::min(place[at(a)], place[at(b)]), j = std::max(place[at(a)], place[at(b)]);
    lowest[at(j)] = std::min(lowest[at(j)], i);
  }
  int address = 0;
  for (int e = 1; e <= matrix.n; ++e) matrix.IDIAG.push_back(address += e - 6 * lowest[at((e - 1) / 6)]);
  matrix.MSTAT.assign(at(matrix.n), -matrix.n);
  matrix.K.assign(at(address), 0.0);
  Sequence random;
  for (const auto& [a, b] : graph.pieces) {
    double R[6][6];
    for (auto& row : R) {
      for (double& value : row) value = random.next() - 0.5;
    }
    const int end[2] = {a < 0 ? -1 : place[at(a)], b < 0 ? -1 : place[at(b)]};
    for (int p = 0; p < 36; ++p) {
      const int i = p / 6, j = p % 6;
      double S = i == j ? 0.5 : 0.0;
      for (int k = 0; k < 6; ++k) S += R[i][k] * R[j][k];
      for (int s = 0; s < 4; ++s) {
        if (end[s / 2] < 0 || end[s % 2] < 0) continue;
        const int r = 6 * end[s / 2] + i + 1, c = 6 * end[s % 2] + j + 1;
        if (r <= c) matrix.entry(r, c) += s / 2 == s % 2 ? S : -S;
      }
    }
  }
  for (int e = 0; e < matrix.n; ++e) matrix.loads.push_back(random.next());
  return matrix;
}

}  // namespace tidearc::bench
