// Graphs for tests of node orders, and how good an order is.
#pragma once

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <utility>
#include <vector>

#include "model/ordering.h"

namespace tidearc::test {

/// A graph of n nodes whose arrays it owns.
class OwnedGraph {
 public:
  explicit OwnedGraph(int n) : lists_(at(most_neighbours) * at(n)), degrees_(at(n)), n_(n) {}
  OwnedGraph(int n, const std::vector<std::pair<int, int>>& edges) : OwnedGraph(n) {
    for (const auto& [a, b] : edges) connect(graph(), a, b);
  }
  OwnedGraph(const OwnedGraph&) = delete;
  OwnedGraph& operator=(const OwnedGraph&) = delete;

  NodeGraph graph() { return {{lists_.data(), most_neighbours, n_}, {degrees_.data(), n_}}; }
  int size() const { return n_; }
  std::vector<int> neighbours(int node) {
    const auto list = graph().neighbours(node);
    return {list.begin(), list.end()};
  }

 private:
  static std::size_t at(int i) { return static_cast<std::size_t>(i); }
  std::vector<int> lists_, degrees_;
  int n_;
};

inline std::vector<int> identity(int n) {
  std::vector<int> order(static_cast<std::size_t>(n));
  std::iota(order.begin(), order.end(), 1);
  return order;
}

/// 1..n in a fixed but irregular row.
inline std::vector<int> shuffled(int n, unsigned seed) {
  std::vector<int> order = identity(n);
  std::mt19937 random(seed);
  for (std::size_t i = order.size(); i > 1; --i) std::swap(order[i - 1], order[random() % i]);
  return order;
}

inline bool is_order(std::vector<int> order) {
  std::sort(order.begin(), order.end());
  return order == identity(static_cast<int>(order.size()));
}

/// Position of each node, [node - 1], counted from 1.
inline std::vector<int> positions(const std::vector<int>& order) {
  std::vector<int> position(order.size());
  for (std::size_t p = 0; p < order.size(); ++p)
    position[static_cast<std::size_t>(order[p] - 1)] = static_cast<int>(p) + 1;
  return position;
}

/// Entries of the lower triangle between the first of each row and the diagonal, counted one row after the other.
inline std::int64_t profile_by_rows(OwnedGraph& graph, const std::vector<int>& order) {
  const std::vector<int> position = positions(order);
  std::int64_t entries = 0;
  for (int row = 1; row <= graph.size(); ++row) {
    int first = row;
    for (const int other : graph.neighbours(order[static_cast<std::size_t>(row - 1)]))
      first = std::min(first, position[static_cast<std::size_t>(other - 1)]);
    entries += row - first + 1;
  }
  return entries;
}

struct Ordered {
  bool changed;
  std::vector<int> order;
};
inline Ordered sloan(OwnedGraph& graph) {
  const int n = graph.size();
  std::vector<int> order(static_cast<std::size_t>(n)), scratch(3 * static_cast<std::size_t>(n));
  const bool changed = order_by_sloan(graph.graph(), {order.data(), n}, {scratch.data(), 3 * n});
  return {changed, order};
}

/// m by n grid; node i (from 0) of column j is names[i + m j]. Neighbours along both axes, and along both diagonals.
inline std::vector<std::pair<int, int>> grid_edges(int m, int n, const std::vector<int>& names,
                                                   bool diagonals = false) {
  const auto name = [&](int i, int j) { return names[static_cast<std::size_t>(i + m * j)]; };
  std::vector<std::pair<int, int>> edges;
  for (int j = 0; j < n; ++j) {
    for (int i = 0; i < m; ++i) {
      if (i + 1 < m) edges.emplace_back(name(i, j), name(i + 1, j));
      if (j + 1 < n) edges.emplace_back(name(i, j), name(i, j + 1));
      if (diagonals && i + 1 < m && j + 1 < n) {
        edges.emplace_back(name(i, j), name(i + 1, j + 1));
        edges.emplace_back(name(i + 1, j), name(i, j + 1));
      }
    }
  }
  return edges;
}

/// `count` pairs of different nodes, some of them more than once.
inline std::vector<std::pair<int, int>> random_edges(int n, int count, unsigned seed) {
  std::mt19937 random(seed);
  const auto node = [&] { return static_cast<int>(random() % static_cast<unsigned>(n)) + 1; };
  std::vector<std::pair<int, int>> edges;
  for (int k = 0; k < count; ++k) {
    const int a = node();
    const int b = node();
    if (a != b) edges.emplace_back(a, b);
  }
  return edges;
}

}  // namespace tidearc::test
