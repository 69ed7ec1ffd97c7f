// Sloan's order (1989) for profile and wavefront.
//
// For each component of the graph a pseudo-diameter is found, a pair of nodes far apart, by level structures: the
// levels rooted at a node are the sets of nodes at distance 0, 1, 2, .. from it. The nodes are then numbered from one
// end by a queue: a node is inactive at first, preactive when it is in the queue, active when a neighbour has been
// numbered, and numbered in the end. Its priority is high when it is far from the other end and when few nodes would
// become active with it.
#include <algorithm>
#include <array>
#include <limits>
#include <numeric>

#include "model/ordering.h"

namespace tidearc {

namespace {

constexpr int unnumbered = 0;  // as long as the component has not been reached
constexpr int seen = 1;        // in passing, while levels grow
constexpr int inactive = -2;   // while the component is being numbered; a node that has been numbered has its position
constexpr int preactive = -1;
constexpr int active = 0;

// Weights of the distance to the other end and of the current degree. Priorities are kept in integers but formed in
// single precision, as the published program does; whole numbers of this size are exact there.
constexpr float W1 = 1.0F;
constexpr float W2 = 2.0F;

int first_priority(int distance, int degree) {
  return static_cast<int>(W1 * static_cast<float>(distance) - W2 * static_cast<float>(degree + 1));
}
int raised(int priority) { return static_cast<int>(static_cast<float>(priority) + W2); }

/// Level structure of a component: level l is list(ends(l-1)+1) .. list(ends(l)).
struct Levels {
  Integers list;
  Integers ends;
  int root = 0;
  int depth = 0;  ///< number of levels
  int width = 0;  ///< nodes in the widest level

  int first_of(int level) const { return level == 1 ? 1 : ends(level - 1) + 1; }
  int nodes() const { return ends(depth); }
};

/// Forms the levels rooted at a node among the nodes whose status is `unnumbered`, which all have it again afterwards.
/// Given up when a level has `limit` nodes or more: `width` then is not below `limit`.
void grow(const NodeGraph& graph, int root, int limit, Integers status, Levels& levels) {
  levels.root = root;
  levels.depth = 0;
  levels.width = 1;
  levels.list(1) = root;
  status(root) = seen;
  int known = 1;
  for (int from = 1; from <= known;) {
    const int to = known;
    levels.ends(++levels.depth) = to;
    for (int i = from; i <= to; ++i) {
      for (const int neighbour : graph.neighbours(levels.list(i))) {
        if (status(neighbour) != unnumbered) continue;
        status(neighbour) = seen;
        levels.list(++known) = neighbour;
      }
    }
    levels.width = std::max(levels.width, known - to);
    if (levels.width >= limit) break;
    from = to + 1;
  }
  for (int i = 1; i <= known; ++i) status(levels.list(i)) = unnumbered;
}

/// Finds the unnumbered node of least degree, the lowest of equal ones. Nodes only become numbered, so each degree goes
/// on where it stopped.
class LeastDegree {
 public:
  explicit LeastDegree(const NodeGraph& graph) : graph_(graph) { next_.fill(1); }
  int find(ConstIntegers status) {
    for (int degree = 0; degree <= most_neighbours; ++degree) {
      int& node = next_[static_cast<std::size_t>(degree)];
      while (node <= graph_.size() && (status(node) != unnumbered || graph_.NDEG(node) != degree)) ++node;
      if (node <= graph_.size()) return node;
    }
    return 0;
  }

 private:
  const NodeGraph& graph_;
  std::array<int, most_neighbours + 1> next_{};
};

/// The first node of each degree in the last level, 0 where a degree does not occur.
std::array<int, most_neighbours + 1> one_of_each_degree(const NodeGraph& graph, const Levels& levels) {
  std::array<int, most_neighbours + 1> nodes{};
  for (int i = levels.first_of(levels.depth); i <= levels.nodes(); ++i) {
    const int node = levels.list(i);
    int& kept = nodes[static_cast<std::size_t>(graph.NDEG(node))];
    if (kept == 0) kept = node;
  }
  return nodes;
}

/// Finds the ends of a pseudo-diameter of the component of `guess`. Returns the start; `levels` is rooted at the end.
int find_diameter(const NodeGraph& graph, int guess, Integers status, Levels& levels) {
  int start = guess;
  grow(graph, start, std::numeric_limits<int>::max(), status, levels);
  const int nodes = levels.nodes();
  for (bool deeper = true; deeper;) {
    deeper = false;
    const int depth = levels.depth;
    int end = 0;
    int narrowest = nodes + 1;
    for (const int node : one_of_each_degree(graph, levels)) {
      if (node == 0) continue;
      grow(graph, node, narrowest, status, levels);
      if (levels.width >= narrowest) continue;
      if (levels.depth > depth) {
        start = node;
        deeper = true;
        break;
      }
      end = node;
      narrowest = levels.width;
    }
    if (!deeper && levels.root != end) grow(graph, end, nodes + 1, status, levels);
  }
  return start;
}

/// The queue by which the nodes of a component are numbered.
struct Queue {
  const NodeGraph& graph;
  Integers status;
  Integers priority;
  Integers waiting;  ///< nodes in the queue
  int size = 0;
  int numbered = 0;  ///< nodes of all components that have a position

  void add(int node) {
    waiting(++size) = node;
    status(node) = preactive;
  }
  /// Takes the node of highest priority out, the first found of equal ones; the last one takes its place.
  int take() {
    int at = 1;
    for (int i = 2; i <= size; ++i) {
      if (priority(waiting(i)) > priority(waiting(at))) at = i;
    }
    const int node = waiting(at);
    waiting(at) = waiting(size--);
    return node;
  }
  /// Raises the priority of all neighbours of a node that becomes active, and puts the inactive ones into the queue.
  void raise_neighbours(int node) {
    for (const int neighbour : graph.neighbours(node)) {
      priority(neighbour) = raised(priority(neighbour));
      if (status(neighbour) == inactive) add(neighbour);
    }
  }
};

/// Numbers the component whose levels, rooted at the end node, are given. The queue takes the place of their list.
void number_component(int start, const Levels& levels, Queue& queue) {
  for (int level = 1; level <= levels.depth; ++level) {
    for (int i = levels.first_of(level); i <= levels.ends(level); ++i) {
      const int node = levels.list(i);
      queue.priority(node) = first_priority(level - 1, queue.graph.NDEG(node));
      queue.status(node) = inactive;
    }
  }
  queue.add(start);
  while (queue.size > 0) {
    const int next = queue.take();
    if (queue.status(next) == preactive) queue.raise_neighbours(next);
    queue.status(next) = ++queue.numbered;
    for (const int neighbour : queue.graph.neighbours(next)) {
      if (queue.status(neighbour) != preactive) continue;
      queue.priority(neighbour) = raised(queue.priority(neighbour));
      queue.status(neighbour) = active;
      queue.raise_neighbours(neighbour);
    }
  }
}

}  // namespace

bool order_by_sloan(const NodeGraph& graph, Integers order, Integers scratch) {
  const int n = graph.size();
  const Integers first(scratch.data(), n);
  const Integers second(scratch.data() + n, n);
  const Integers third(scratch.data() + 2 * static_cast<std::ptrdiff_t>(n), n);

  const Integers status = order;  // in the end the position of each node
  std::fill(status.begin(), status.end(), unnumbered);
  Queue queue{graph, status, third, first};
  LeastDegree least(graph);
  for (int guess = least.find(status); guess > 0; guess = least.find(status)) {
    Levels levels{first, second};
    const int start = find_diameter(graph, guess, status, levels);
    number_component(start, levels, queue);
  }

  std::iota(first.begin(), first.end(), 1);
  const bool smaller = profile_of(graph, status) < profile_of(graph, first);
  if (smaller) {
    for (int node = 1; node <= n; ++node) first(status(node)) = node;
  }
  std::copy(first.begin(), first.end(), order.begin());
  return smaller;
}

}  // namespace tidearc
