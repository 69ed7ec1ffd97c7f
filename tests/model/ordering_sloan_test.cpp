// Sloan's order: worked by hand, against the method written out on lists, and on graphs whose profile is known.
#include <gtest/gtest.h>

#include <algorithm>
#include <numeric>
#include <vector>

#include "model/ordering.h"
#include "ordering_graph.h"

namespace tidearc::test {
namespace {

using Lists = std::vector<std::vector<int>>;

// The method written out: levels are lists of lists, states are words, nothing is stopped early.

struct Reference {
  OwnedGraph& graph;
  std::vector<bool> numbered;
  std::vector<int> order;

  explicit Reference(OwnedGraph& of) : graph(of), numbered(static_cast<std::size_t>(of.size()) + 1) {}
  int degree(int node) { return static_cast<int>(graph.neighbours(node).size()); }

  Lists levels_from(int root) {
    Lists levels{{root}};
    std::vector<bool> known = numbered;
    known[static_cast<std::size_t>(root)] = true;
    for (;;) {
      std::vector<int> next;
      for (const int node : levels.back()) {
        for (const int other : graph.neighbours(node)) {
          if (known[static_cast<std::size_t>(other)]) continue;
          known[static_cast<std::size_t>(other)] = true;
          next.push_back(other);
        }
      }
      if (next.empty()) return levels;
      levels.push_back(next);
    }
  }
  static std::size_t width(const Lists& levels) {
    return std::ranges::max_element(levels, {}, &std::vector<int>::size)->size();
  }

  /// Start and end of a pseudo-diameter of the component of `start`.
  std::pair<int, int> diameter(int start) {
    for (;;) {
      const Lists levels = levels_from(start);
      std::vector<int> last = levels.back();
      std::stable_sort(last.begin(), last.end(), [&](int a, int b) { return degree(a) < degree(b); });
      last.erase(std::unique(last.begin(), last.end(), [&](int a, int b) { return degree(a) == degree(b); }),
                 last.end());
      int deeper = 0, end = 0;
      std::size_t narrowest = numbered.size();
      for (const int node : last) {
        const Lists other = levels_from(node);
        if (width(other) >= narrowest) continue;
        if (other.size() > levels.size()) {
          deeper = node;
          break;
        }
        end = node;
        narrowest = width(other);
      }
      if (deeper == 0) return {start, end};
      start = deeper;
    }
  }

  enum class State { inactive, preactive, active, done };

  void number(int start, int end) {
    std::vector<State> state(numbered.size(), State::inactive);
    std::vector<int> priority(numbered.size());
    const Lists levels = levels_from(end);
    for (std::size_t distance = 0; distance < levels.size(); ++distance) {
      for (const int node : levels[distance])
        priority[static_cast<std::size_t>(node)] = static_cast<int>(distance) - 2 * (degree(node) + 1);
    }
    std::vector<int> queue{start};
    state[static_cast<std::size_t>(start)] = State::preactive;
    const auto raise = [&](int node) {
      for (const int other : graph.neighbours(node)) {
        priority[static_cast<std::size_t>(other)] += 2;
        if (state[static_cast<std::size_t>(other)] != State::inactive) continue;
        state[static_cast<std::size_t>(other)] = State::preactive;
        queue.push_back(other);
      }
    };
    while (!queue.empty()) {
      const auto best = std::ranges::max_element(queue, [&](int a, int b) {
        return priority[static_cast<std::size_t>(a)] < priority[static_cast<std::size_t>(b)];
      });
      const int next = *best;
      *best = queue.back();
      queue.pop_back();
      if (state[static_cast<std::size_t>(next)] == State::preactive) raise(next);
      state[static_cast<std::size_t>(next)] = State::done;
      numbered[static_cast<std::size_t>(next)] = true;
      order.push_back(next);
      for (const int other : graph.neighbours(next)) {
        if (state[static_cast<std::size_t>(other)] != State::preactive) continue;
        priority[static_cast<std::size_t>(other)] += 2;
        state[static_cast<std::size_t>(other)] = State::active;
        raise(other);
      }
    }
  }

  std::vector<int> run() {
    while (std::ssize(order) < graph.size()) {
      int guess = 0;
      for (int node = 1; node <= graph.size(); ++node) {
        if (!numbered[static_cast<std::size_t>(node)] && (guess == 0 || degree(node) < degree(guess))) guess = node;
      }
      const auto [start, end] = diameter(guess);
      number(start, end);
    }
    return order;
  }
};

TEST(Sloan, AForkedChainWorkedByHand) {
  // 4 - 1 - 3, and 3 branches to 2 and 5. Of the nodes of degree 1 node 2 is the lowest; its levels are 2, 3, (1 5), 4,
  // and those of node 4 are as deep: the ends are 2 and 4. Priorities at the start: distance to 4 less twice the degree
  // plus one, -5 -1 -6 -4 -1 for nodes 1 to 5. Node 2 first; then node 5 (1) before 3 (-2) and 1 (-3); 3 (0), 1
  // (-1), 4.
  OwnedGraph graph(5, {{4, 1}, {1, 3}, {3, 2}, {3, 5}});
  const Ordered found = sloan(graph);
  EXPECT_TRUE(found.changed);
  EXPECT_EQ(found.order, (std::vector<int>{2, 5, 3, 1, 4}));
  EXPECT_EQ(profile_by_rows(graph, identity(5)), 12);
  EXPECT_EQ(profile_by_rows(graph, found.order), 9);
}

TEST(Sloan, IsTheMethodWrittenOut) {
  int changed = 0;
  for (unsigned seed = 1; seed <= 600; ++seed) {
    const int n = 2 + static_cast<int>(seed % 40);
    OwnedGraph graph(n, random_edges(n, static_cast<int>(seed % 89), seed));
    Reference reference(graph);
    const std::vector<int> written_out = reference.run();
    const bool better = profile_by_rows(graph, written_out) < profile_by_rows(graph, identity(n));
    const Ordered found = sloan(graph);
    ASSERT_EQ(found.changed, better) << "seed " << seed;
    ASSERT_EQ(found.order, better ? written_out : identity(n)) << "seed " << seed;
    changed += better;
  }
  EXPECT_GT(changed, 300) << "most of these graphs have a better order";
}

TEST(Sloan, IsTheMethodWrittenOutOnGridsAndChains) {
  for (const auto& [m, n] : {std::pair{7, 9}, std::pair{12, 12}, std::pair{1, 60}}) {
    for (const bool diagonals : {false, true}) {
      OwnedGraph grid(m * n, grid_edges(m, n, shuffled(m * n, 11), diagonals));
      EXPECT_EQ(sloan(grid).order, Reference(grid).run()) << m << " by " << n;
    }
  }
}

TEST(Sloan, NeverMakesAProfileLarger) {
  for (unsigned seed = 1; seed <= 300; ++seed) {
    const int n = 1 + static_cast<int>(seed % 60);
    OwnedGraph graph(n, random_edges(n, static_cast<int>(seed % 150), 7 * seed));
    const Ordered found = sloan(graph);
    ASSERT_TRUE(is_order(found.order));
    const std::int64_t before = profile_by_rows(graph, identity(n));
    if (found.changed) {
      ASSERT_LT(profile_by_rows(graph, found.order), before);
    } else {
      ASSERT_EQ(found.order, identity(n));
    }
  }
}

TEST(Sloan, GoesBackWhenTheProfileIsEqual) {
  OwnedGraph chain(4, {{1, 2}, {2, 3}, {3, 4}});
  EXPECT_FALSE(sloan(chain).changed) << "a chain in its order has the smallest profile there is";
  EXPECT_EQ(sloan(chain).order, identity(4));
  OwnedGraph backward(4, {{4, 3}, {3, 2}, {2, 1}});
  EXPECT_FALSE(sloan(backward).changed);
  OwnedGraph complete(4, {{1, 2}, {1, 3}, {1, 4}, {2, 3}, {2, 4}, {3, 4}});
  EXPECT_FALSE(sloan(complete).changed) << "every order of a complete graph has the same";
}

TEST(Sloan, GraphsWithoutConnectionsStayAsTheyAre) {
  for (const int n : {0, 1, 5}) {
    OwnedGraph graph(n);
    EXPECT_FALSE(sloan(graph).changed);
    EXPECT_EQ(sloan(graph).order, identity(n));
  }
}

TEST(Sloan, AShuffledChainGetsTheSmallestProfile) {
  const int n = 200;
  OwnedGraph chain(n, grid_edges(1, n, shuffled(n, 5)));
  EXPECT_EQ(profile_by_rows(chain, sloan(chain).order), 2 * n - 1) << "one entry beside each diagonal but the first";
}

TEST(Sloan, ComponentsFollowOneAnotherTheOneWithTheLeastDegreeFirst) {
  // Triangle 1 5 3, chain 2 - 6, node 4 alone.
  OwnedGraph graph(6, {{1, 5}, {5, 3}, {3, 1}, {2, 6}});
  const Ordered found = sloan(graph);
  EXPECT_TRUE(found.changed);
  EXPECT_EQ(found.order[0], 4);
  EXPECT_EQ((std::vector<int>{found.order[1], found.order[2]}), (std::vector<int>{2, 6}));
  EXPECT_EQ(profile_by_rows(graph, found.order), 1 + 3 + 6);
}

TEST(Sloan, TheFirstFoundWinsATie) {
  // In the square 1 3 4 2 the nodes 3 and 2 are alike; 3 stands first in the list of node 1. The chain 5 8 6 7 comes
  // before it, since its ends have the least degree, and is what makes the profile smaller.
  OwnedGraph graph(8, {{1, 3}, {3, 4}, {4, 2}, {2, 1}, {5, 8}, {8, 6}, {6, 7}});
  const Ordered found = sloan(graph);
  EXPECT_TRUE(found.changed);
  EXPECT_EQ(found.order, (std::vector<int>{5, 8, 6, 7, 1, 3, 2, 4}));
}

/// Profile of a long grid numbered column by column: the first of a column reaches one column back, and so do all the
/// others, but for the first column, where each reaches one back.
std::int64_t column_profile(int m, int n) { return std::int64_t{m} * n + (n - 1) * std::int64_t{m} * m + (m - 1); }

TEST(Sloan, ALongGridIsNumberedAsIfColumnByColumn) {
  for (const auto& [m, n] : {std::pair{4, 50}, std::pair{10, 100}, std::pair{6, 300}}) {
    OwnedGraph grid(m * n, grid_edges(m, n, shuffled(m * n, 7)));
    const auto found = static_cast<double>(profile_by_rows(grid, sloan(grid).order));
    EXPECT_LT(found, 1.001 * static_cast<double>(column_profile(m, n))) << m << " by " << n;
    EXPECT_GT(found, 0.95 * static_cast<double>(column_profile(m, n))) << "no front can be shorter than the side";
  }
}

TEST(Sloan, ASquareGridIsNumberedAsIfAlongItsDiagonals) {
  for (const int m : {10, 30, 60}) {
    const std::vector<int> names = shuffled(m * m, 7);
    OwnedGraph grid(m * m, grid_edges(m, m, names));
    std::vector<int> diagonals;
    for (int d = 0; d <= 2 * (m - 1); ++d) {
      for (int i = std::max(0, d - m + 1); i <= std::min(d, m - 1); ++i)
        diagonals.push_back(names[static_cast<std::size_t>(i + m * (d - i))]);
    }
    const auto by_diagonals = static_cast<double>(profile_by_rows(grid, diagonals));
    EXPECT_LT(static_cast<double>(profile_by_rows(grid, sloan(grid).order)), 1.05 * by_diagonals) << m;
    EXPECT_LT(by_diagonals, 0.85 * static_cast<double>(column_profile(m, m))) << "and that is the better way";
  }
}

TEST(Sloan, ALongStripOfPlatesIsNumberedAsIfColumnByColumn) {
  // With diagonals every node but those of the first column reaches to the neighbour below in the column before it.
  const int m = 10, n = 100;
  const std::vector<int> names = shuffled(m * n, 7);
  OwnedGraph grid(m * n, grid_edges(m, n, names, true));
  EXPECT_LT(static_cast<double>(profile_by_rows(grid, sloan(grid).order)),
            1.01 * static_cast<double>(profile_by_rows(grid, names)));
}

}  // namespace
}  // namespace tidearc::test
