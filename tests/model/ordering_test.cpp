// The graph of a model, its profile, the order by height, and the equation numbers that follow from an order.
#include "model/ordering.h"

#include <gtest/gtest.h>

#include <array>
#include <set>
#include <utility>
#include <vector>

#include "ordering_graph.h"

namespace tidearc::test {
namespace {

using Pairs = std::vector<std::pair<int, int>>;

TEST(NodeGraph, KeepsNeighboursInTheOrderOfTheirFirstConnection) {
  OwnedGraph graph(4, {{3, 1}, {1, 4}, {1, 3}, {2, 1}, {4, 1}});
  EXPECT_EQ(graph.neighbours(1), (std::vector<int>{3, 4, 2}));
  EXPECT_EQ(graph.neighbours(2), (std::vector<int>{1}));
  EXPECT_EQ(graph.neighbours(3), (std::vector<int>{1}));
}

TEST(NodeGraph, ANodeHasRoomForFiftyNeighbours) {
  OwnedGraph graph(60);
  for (int other = 2; other <= 51; ++other) EXPECT_EQ(connect(graph.graph(), 1, other), 0) << other;
  EXPECT_EQ(connect(graph.graph(), 1, 51), 0) << "a known neighbour takes no room";
  EXPECT_EQ(connect(graph.graph(), 1, 52), 1);
  EXPECT_EQ(connect(graph.graph(), 53, 1), 1) << "the full list is that of node 1, whichever comes first";
}

TEST(NodeGraph, ConnectedNodesAreTheFirstDifferentOnesOfALocationVector) {
  std::array<int, 2> two{9, 9};
  connected_nodes(std::array{3, 13, 23, 7, 17, 27}, 10, two);  // three translations of nodes 3 and 7 of ten
  EXPECT_EQ(two, (std::array{3, 7}));
  connected_nodes(std::array{0, 13, 0, 0, 0, 0}, 10, two);
  EXPECT_EQ(two, (std::array{3, 0})) << "freedoms that are not connected are passed over";
  connected_nodes(std::array{60, 50, 51}, 10, two);
  EXPECT_EQ(two, (std::array{10, 1}));
  std::array<int, 1> one{};
  connected_nodes(std::array{3, 13, 23, 7, 17, 27}, 10, one);
  EXPECT_EQ(one, (std::array{3}));
  std::array<int, 8> eight{};
  connected_nodes(std::array{4, 14, 5, 15, 6, 16, 4, 14}, 10, eight);
  EXPECT_EQ(eight, (std::array{4, 5, 6, 0, 0, 0, 0, 0}));
  connected_nodes(std::array{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}, 10, eight);
  EXPECT_EQ(eight, (std::array{1, 2, 3, 4, 5, 6, 7, 8}));
  connected_nodes(std::array{1, 2}, 10, {});
}

/// An ID table of n nodes whose entries are 1..NEQ or the sink.
struct RandomID {
  int n, NEQ;
  std::vector<int> values;
  RandomID(int nodes, int equations, unsigned seed)
      : n(nodes), NEQ(equations), values(6 * static_cast<std::size_t>(n)) {
    std::mt19937 random(seed);
    for (int& e : values) e = static_cast<int>(random() % static_cast<unsigned>(NEQ + 1)) + 1;
  }
  IntegerTable table() { return {values.data(), n, 6}; }
};

TEST(TiedPairs, AreThoseOfTheComparisonOfAllNodesWithAllOthers) {
  for (unsigned seed = 1; seed <= 60; ++seed) {
    RandomID ID(12, 10 + 2 * static_cast<int>(seed), seed);
    Pairs expected;
    for (int i = 1; i <= ID.n; ++i) {
      for (int j = i + 1; j <= ID.n; ++j) {
        std::set<int> of_i;
        for (int c = 1; c <= 6; ++c) of_i.insert(ID.table()(i, c));
        of_i.erase(ID.NEQ + 1);
        bool shared = false;
        for (int c = 1; c <= 6; ++c) shared = shared || of_i.contains(ID.table()(j, c));
        if (shared) expected.emplace_back(i, j);
      }
    }
    std::vector<int> next(6 * 12), last(static_cast<std::size_t>(ID.NEQ));
    link_shared_equations(ID.table(), ID.NEQ, {next.data(), 6 * 12}, {last.data(), ID.NEQ});
    Pairs found;
    for_each_tied_pair({next.data(), 6 * 12}, 12, [&](int i, int j) {
      found.emplace_back(i, j);
      return true;
    });
    ASSERT_EQ(found, expected) << "seed " << seed;
  }
}

TEST(TiedPairs, AreNoLongerSoughtWhenThatIsAsked) {
  std::vector<int> ID(18, 1), next(18), last(1);  // three nodes, one equation
  link_shared_equations({ID.data(), 3, 6}, 1, {next.data(), 18}, {last.data(), 1});
  int calls = 0;
  for_each_tied_pair({next.data(), 18}, 3, [&](int, int) { return ++calls < 2; });
  EXPECT_EQ(calls, 2);
}

TEST(NodalProfile, SumsTheDistancesDownToTheLowestNeighbours) {
  OwnedGraph graph(5, {{1, 4}, {2, 3}, {4, 2}});
  const std::vector<int> order = identity(5);
  // Node 3 reaches down to 2, node 4 to 1; nodes 1, 2 and 5 to nobody below them.
  EXPECT_EQ(profile_of(graph.graph(), {const_cast<int*>(order.data()), 5}), 5 + 1 + 3);
  std::vector<int> position{3, 1, 2, 4, 5};  // 2, 3, 1, 4, 5
  EXPECT_EQ(profile_of(graph.graph(), {position.data(), 5}), 5 + 1 + 3);
}

TEST(NodalProfile, ANodeWithoutNeighboursCountsOnce) {
  OwnedGraph graph(3);
  std::vector<int> position{3, 1, 2};
  EXPECT_EQ(profile_of(graph.graph(), {position.data(), 3}), 3);
}

std::vector<int> by_height(std::vector<double> Z) {
  const int n = static_cast<int>(Z.size());
  std::vector<int> order(Z.size());
  order_by_height({Z.data(), n}, {order.data(), n});
  return order;
}

TEST(HeightOrder, IsDescending) {
  EXPECT_EQ(by_height({1.0, 5.0, -2.0, 3.0}), (std::vector<int>{2, 4, 1, 3}));
  EXPECT_EQ(by_height({4.0}), (std::vector<int>{1}));
  EXPECT_EQ(by_height({}), (std::vector<int>{}));
}

TEST(HeightOrder, EqualHeightsComeOutReversed) {
  EXPECT_EQ(by_height({7.0, 7.0, 7.0, 7.0}), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(by_height({0.0, 0.0, 5.0, 5.0}), (std::vector<int>{4, 3, 2, 1}));
  EXPECT_EQ(by_height({10.0, 0.0, 0.0, 0.0}), (std::vector<int>{1, 4, 3, 2}));
}

TEST(HeightOrder, EachFurtherPassExchangesEqualHeightsAgain) {
  // Pass 1 exchanges nodes 1 and 2 and leaves node 3 last; pass 2 exchanges 2 and 1 again.
  EXPECT_EQ(by_height({5.0, 5.0, 3.0}), (std::vector<int>{1, 2, 3}));
}

TEST(HeightOrder, IsThatOfThePassesWrittenOut) {
  for (unsigned seed = 1; seed <= 200; ++seed) {
    std::mt19937 random(seed);
    std::vector<double> Z(1 + random() % 12);
    for (double& z : Z) z = static_cast<double>(random() % 5);
    std::vector<int> order = identity(static_cast<int>(Z.size()));
    for (std::size_t pass = 1; pass < Z.size(); ++pass) {
      for (std::size_t p = 0; p + pass < Z.size(); ++p) {
        const double a = Z[static_cast<std::size_t>(order[p] - 1)];
        const double b = Z[static_cast<std::size_t>(order[p + 1] - 1)];
        if (b >= a) std::swap(order[p], order[p + 1]);
      }
    }
    ASSERT_EQ(by_height(Z), order) << "seed " << seed;
  }
}

/// New numbers of an ID table given node by node; empty when they cannot be given.
std::vector<int> new_numbers(const std::vector<int>& order, const std::vector<std::array<int, 6>>& rows, int NEQ) {
  const int n = static_cast<int>(rows.size());
  std::vector<int> ID(6 * rows.size()), numbers(static_cast<std::size_t>(NEQ) + 1);
  const IntegerTable table(ID.data(), n, 6);
  for (int node = 1; node <= n; ++node) {
    for (int c = 1; c <= 6; ++c)
      table(node, c) = rows[static_cast<std::size_t>(node - 1)][static_cast<std::size_t>(c - 1)];
  }
  std::vector<int> positions_of = order;
  const bool sound = number_equations({positions_of.data(), n}, table, NEQ, {numbers.data(), NEQ + 1});
  return sound ? numbers : std::vector<int>{};
}

TEST(NewEquations, RunNodeByNodeInTheNewOrder) {
  EXPECT_EQ(new_numbers({2, 1}, {{1, 2, 5, 5, 5, 5}, {5, 5, 5, 3, 4, 5}}, 4), (std::vector<int>{3, 4, 1, 2, 5}));
}

TEST(NewEquations, ATiedEquationIsNumberedAtTheFirstOfItsNodes) {
  // Equation 1 is held by all three nodes.
  EXPECT_EQ(new_numbers({3, 2, 1}, {{1, 2, 5, 5, 5, 5}, {1, 5, 3, 5, 5, 5}, {5, 4, 5, 1, 5, 5}}, 4),
            (std::vector<int>{2, 4, 3, 1, 5}));
}

TEST(NewEquations, WhatIsNoEquationIsFound) {
  const std::array<int, 6> all{3, 3, 3, 3, 3, 3};
  EXPECT_TRUE(new_numbers({1}, {{1, 2, 4, 3, 3, 3}}, 2).empty()) << "above the sink";
  EXPECT_TRUE(new_numbers({1}, {{1, 2, 0, 3, 3, 3}}, 2).empty());
  EXPECT_TRUE(new_numbers({1, 2}, {{1, 3, 3, 3, 3, 3}, all}, 2).empty()) << "equation 2 has no node";
  EXPECT_EQ(new_numbers({1, 2}, {{1, 3, 3, 3, 3, 2}, all}, 2), (std::vector<int>{1, 2, 3}));
}

TEST(NewEquations, VectorsFollowAndTheSinkStays) {
  std::vector<int> numbers{3, 1, 2, 4};
  std::vector<double> values{10.0, 20.0, 30.0, 99.0}, scratch(4);
  reorder({numbers.data(), 4}, {values.data(), 4}, {scratch.data(), 4});
  EXPECT_EQ(values, (std::vector<double>{20.0, 30.0, 10.0, 99.0}));
}

}  // namespace
}  // namespace tidearc::test
