// Collins' order (1973): the best of the breadth-first walks from every node.
#include <algorithm>
#include <numeric>

#include "model/ordering.h"

namespace tidearc {

namespace {

struct Walk {
  Integers order;     ///< node in each position
  Integers position;  ///< position of each node, 0 none yet
  int placed = 0;
  std::int64_t measure = 0;

  void place(int node) {
    order(++placed) = node;
    position(node) = placed;
  }
  void clear() {
    for (int p = 1; p <= placed; ++p) position(order(p)) = 0;
    placed = 0;
    measure = 0;
  }
};

/// Walks the graph from a node; false as soon as the measure reaches `best`. Parts of the model that the walk does not
/// reach follow, each from its lowest node.
bool walk_from(const NodeGraph& graph, int start, CollinsMeasure what, std::int64_t best, Walk& walk) {
  walk.place(start);
  int lowest = 1;  // no node below it is without a position
  for (int p = 1; walk.placed < graph.size(); ++p) {
    if (p > walk.placed) {
      while (walk.position(lowest) > 0) ++lowest;
      walk.place(lowest);
    }
    for (const int neighbour : graph.neighbours(walk.order(p))) {
      if (walk.position(neighbour) > 0) continue;
      walk.place(neighbour);
      const std::int64_t distance = walk.placed - p;
      walk.measure = what == CollinsMeasure::total ? walk.measure + distance : std::max(walk.measure, distance);
      if (walk.measure >= best) return false;
    }
  }
  return true;
}

}  // namespace

std::int64_t order_by_collins(const NodeGraph& graph, CollinsMeasure measure, Integers order, Integers scratch) {
  const int n = graph.size();
  std::iota(order.begin(), order.end(), 1);
  std::fill(scratch.begin(), scratch.end(), 0);
  Walk walk{{scratch.data(), n}, {scratch.data() + n, n}};
  std::int64_t best = measure == CollinsMeasure::total ? std::int64_t{n} * n - n : n;
  for (int start = 1; start <= n; ++start) {
    if (graph.NDEG(start) < 1) continue;
    if (walk_from(graph, start, measure, best, walk)) {
      best = walk.measure;
      std::copy(walk.order.begin(), walk.order.end(), order.begin());
    }
    walk.clear();
  }
  return best;
}

}  // namespace tidearc
