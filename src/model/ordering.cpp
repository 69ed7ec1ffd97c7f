// The graph of a model, its profile, and the order by height.
#include "model/ordering.h"

#include <algorithm>
#include <numeric>

namespace tidearc {

namespace {

/// False when the list has no room.
bool enter(const NodeGraph& graph, int node, int neighbour) {
  const std::span<const int> list = graph.neighbours(node);
  if (std::find(list.begin(), list.end(), neighbour) != list.end()) return true;
  if (graph.NDEG(node) == graph.NADJ.rows()) return false;
  graph.NADJ(++graph.NDEG(node), node) = neighbour;
  return true;
}

}  // namespace

int connect(const NodeGraph& graph, int a, int b) {
  if (!enter(graph, a, b)) return a;
  return enter(graph, b, a) ? 0 : b;
}

void connected_nodes(std::span<const int> LM, int NUMNP, std::span<int> row) {
  std::size_t found = 0;
  for (const int slot : LM) {
    if (slot < 1 || found == row.size()) continue;
    const int node = (slot - 1) % NUMNP + 1;
    const auto known = row.first(found);
    if (std::find(known.begin(), known.end(), node) == known.end()) row[found++] = node;
  }
  std::fill(row.begin() + static_cast<std::ptrdiff_t>(found), row.end(), 0);
}

void link_shared_equations(IntegerTable ID, int NEQ, Integers next, Integers last) {
  const int NUMNP = ID.rows();
  std::fill(next.begin(), next.end(), 0);
  std::fill(last.begin(), last.end(), 0);
  for (int node = 1; node <= NUMNP; ++node) {
    for (int c = 1; c <= 6; ++c) {
      const int e = ID(node, c);
      if (e < 1 || e > NEQ) continue;
      const int slot = (c - 1) * NUMNP + node;
      if (last(e) > 0) next(last(e)) = slot;
      last(e) = slot;
    }
  }
}

std::int64_t profile_of(const NodeGraph& graph, ConstIntegers position) {
  std::int64_t profile = graph.size();
  for (int node = 1; node <= graph.size(); ++node) {
    int lowest = position(node);
    for (const int neighbour : graph.neighbours(node)) lowest = std::min(lowest, position(neighbour));
    profile += position(node) - lowest;
  }
  return profile;
}

void order_by_height(ConstReals Z, Integers order) {
  std::iota(order.begin(), order.end(), 1);
  for (int last = order.size(); last > 1; --last) {
    // The node that a pass carries along: the lowest so far, the first of equal ones.
    int carried = order(1);
    for (int p = 2; p <= last; ++p) {
      const int next = order(p);
      const bool exchange = Z(next) >= Z(carried);
      order(p - 1) = exchange ? next : carried;
      if (!exchange) carried = next;
    }
    order(last) = carried;
  }
}

}  // namespace tidearc
