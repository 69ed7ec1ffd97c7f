// Collins' order against its steps written out on lists, and on graphs whose best order is known.
#include <gtest/gtest.h>

#include <cstdlib>
#include <deque>
#include <optional>
#include <vector>

#include "model/ordering.h"
#include "ordering_graph.h"

namespace tidearc::test {
namespace {

struct Found {
  std::int64_t measure;
  std::vector<int> order;
  bool operator==(const Found&) const = default;
};
std::ostream& operator<<(std::ostream& out, const Found& found) {
  out << found.measure << ":";
  for (const int node : found.order) out << ' ' << node;
  return out;
}

Found collins(OwnedGraph& graph, CollinsMeasure measure) {
  const int n = graph.size();
  std::vector<int> order(static_cast<std::size_t>(n)), scratch(2 * static_cast<std::size_t>(n));
  const std::int64_t value = order_by_collins(graph.graph(), measure, {order.data(), n}, {scratch.data(), 2 * n});
  return {value, order};
}

/// One complete walk from a node: every node with the place it gets, breadth first, the lowest one left when the walk
/// has come to an end. Nothing is dropped early.
Found walk(OwnedGraph& graph, int start, bool total) {
  std::vector<int> row{start};
  const auto place_of = [&](int node) {
    return std::find(row.begin(), row.end(), node) - row.begin();  // row.size(): none
  };
  std::int64_t measure = 0;
  for (std::size_t p = 0; row.size() < static_cast<std::size_t>(graph.size()); ++p) {
    if (p == row.size()) {
      int lowest = 1;
      while (place_of(lowest) < std::ssize(row)) ++lowest;
      row.push_back(lowest);
    }
    for (const int other : graph.neighbours(row[p])) {
      if (place_of(other) < std::ssize(row)) continue;
      row.push_back(other);
      const auto distance = static_cast<std::int64_t>(row.size() - 1 - p);
      measure = total ? measure + distance : std::max(measure, distance);
    }
  }
  return {measure, row};
}

Found best_walk(OwnedGraph& graph, bool total) {
  const std::int64_t n = graph.size(), bound = total ? n * n - n : n;
  std::optional<Found> best;
  for (int start = 1; start <= graph.size(); ++start) {
    if (graph.neighbours(start).empty()) continue;
    const Found found = walk(graph, start, total);
    if (found.measure < (best ? best->measure : bound)) best = found;
  }
  return best.value_or(Found{bound, identity(graph.size())});
}

TEST(Collins, IsTheFirstOfTheBestWalks) {
  for (unsigned seed = 1; seed <= 400; ++seed) {
    const int n = 1 + static_cast<int>(seed % 14);
    OwnedGraph graph(n, random_edges(n, static_cast<int>(seed % 23), seed));
    ASSERT_EQ(collins(graph, CollinsMeasure::total), best_walk(graph, true)) << "seed " << seed;
    ASSERT_EQ(collins(graph, CollinsMeasure::largest), best_walk(graph, false)) << "seed " << seed;
  }
}

TEST(Collins, AChainComesOutLinkByLinkFromItsLowerEnd) {
  OwnedGraph chain(5, {{4, 1}, {1, 5}, {5, 2}, {2, 3}});  // 4 - 1 - 5 - 2 - 3
  EXPECT_EQ(collins(chain, CollinsMeasure::largest), (Found{1, {3, 2, 5, 1, 4}}));
  EXPECT_EQ(collins(chain, CollinsMeasure::total), (Found{4, {3, 2, 5, 1, 4}})) << "node 4 gives the same, later";
}

TEST(Collins, AStarCannotBeNarrowerThanItsRays) {
  OwnedGraph star(5, {{1, 2}, {1, 3}, {1, 4}, {1, 5}});
  EXPECT_EQ(collins(star, CollinsMeasure::largest), (Found{3, {2, 1, 3, 4, 5}}));
  EXPECT_EQ(collins(star, CollinsMeasure::total), (Found{1 + 1 + 2 + 3, {2, 1, 3, 4, 5}}));
}

TEST(Collins, SeparatePartsFollowFromTheirLowestNodes) {
  OwnedGraph graph(6, {{2, 6}, {3, 5}});
  EXPECT_EQ(collins(graph, CollinsMeasure::largest), (Found{1, {2, 6, 1, 3, 5, 4}})) << "nodes 1 and 4 stand alone";
}

TEST(Collins, WithoutConnectionsTheOrderStaysAndTheBoundIsTold) {
  OwnedGraph graph(3);
  EXPECT_EQ(collins(graph, CollinsMeasure::largest), (Found{3, {1, 2, 3}}));
  EXPECT_EQ(collins(graph, CollinsMeasure::total), (Found{3 * 3 - 3, {1, 2, 3}}));
  OwnedGraph nothing(0);
  EXPECT_EQ(collins(nothing, CollinsMeasure::total), (Found{0, {}}));
}

TEST(Collins, AGridIsAsWideAsItsShortSide) {
  // Breadth first from a corner the walk runs along diagonals, each of at most 4 nodes.
  OwnedGraph grid(4 * 9, grid_edges(4, 9, shuffled(4 * 9, 3)));
  const Found found = collins(grid, CollinsMeasure::largest);
  EXPECT_EQ(found.measure, 4);
  EXPECT_TRUE(is_order(found.order));
}

}  // namespace
}  // namespace tidearc::test
