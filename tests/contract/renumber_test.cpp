// Renumbering of small models: the graph from ties and elements, what changes with the numbers, what is printed.
#include "elements/contract/renumber.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "elements/contract/pass.h"
#include "lattice.h"
#include "model/masses.h"
#include "model/node_values.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/workpool.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

using Pairs = std::vector<std::pair<int, int>>;

/// Cards of a group of springs of a type.
std::string springs(const Pairs& ends, int ITYPE = 1) {
  std::string cards = group_card(ITYPE, static_cast<int>(ends.size()));
  int number = 0;
  for (const auto& [I, J] : ends) cards += spring_card(++number, I, J);
  return cards;
}

/// Reads the elements of a model and renumbers it.
void renumber(int IBANDW) {
  sizes.IBANDW = IBANDW;
  ELDATA();
  RENUMB();
}

/// First equation of each node in turn; that of a held node is the sink.
std::vector<int> first_equations() {
  std::vector<int> first;
  for (int node = 1; node <= sizes.NUMNP; ++node) first.push_back(equation_of(node, 1));
  return first;
}

/// Length of the profile of springs under the numbers that hold, entry by entry.
int profile_length(const Pairs& ends) {
  std::map<int, int> lowest;
  for (int e = 1; e <= sizes.NEQ; ++e) lowest[e] = e;
  for (const auto& [I, J] : ends) {
    std::vector<int> equations;
    for (const int node : {I, J}) {
      for (int c = 1; c <= 3; ++c) equations.push_back(equation_of(node, c));
    }
    std::erase_if(equations, [](int e) { return e > sizes.NEQ; });
    for (const int e : equations) lowest[e] = std::min(lowest[e], *std::ranges::min_element(equations));
  }
  int length = 0;
  for (int e = 1; e <= sizes.NEQ; ++e) length += e - lowest[e] + 1;
  return length;
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Springs along 4 - 1 - 5 - 2 - 3 - 6; node 6 is held.
const Pairs chain{{4, 1}, {1, 5}, {5, 2}, {2, 3}, {6, 3}};
const std::vector<int> chain_order_equations{4, 10, 13, 1, 7, 16};  // nodes in the order 4 1 5 2 3 6

TEST(Renumbering, NumbersAShuffledChainLinkByLink) {
  Line line(6, springs(chain), 1);
  renumber(1);
  EXPECT_EQ(first_equations(), chain_order_equations);
  for (int c = 1; c <= 3; ++c) EXPECT_EQ(equation_of(4, c), c);
  EXPECT_EQ(equation_of(4, 4), sizes.NEQ + 1) << "constrained components stay so";
  EXPECT_EQ(solver.NSTO, 6 + 4 * 15) << "columns of 1, 2, 3, then of 4, 5, 6 for each further node";
  EXPECT_EQ(solver.NSTO, profile_length(chain));
  EXPECT_EQ(solver.NHBW, 6);
  EXPECT_EQ(solver.IDIAG, masses.MARKS);
}

TEST(Renumbering, AnyOtherCodeIsSloan) {
  for (const int code : {1, 5, -1, 99}) {
    Line line(6, springs(chain), 1);
    renumber(code);
    EXPECT_EQ(first_equations(), chain_order_equations) << code;
    EXPECT_TRUE(has(line.report(), "\n     USE OF S.W. SLOAN (1989) ALGORITHM\n")) << code;
  }
}

TEST(Renumbering, PrintsItsHeadingTheMethodAndTheTable) {
  Line line(6, springs(chain), 1);
  renumber(1);
  const std::string report = trimmed(line.report());
  const auto heading =
      report.find("\n *****************************\n BAND-WIDTH REDUCTION COMMANDS\n *****************************\n");
  const auto method = report.find("     USE OF S.W. SLOAN (1989) ALGORITHM\n");
  const auto table = report.find(
      "\n DISPLACEMENT CODES (RENUMBERED)\n\n      NODE     NUMBERS OF DEGREES OF FREEDOM\n"
      "                      X       Y       Z       X       Y       Z\n\n"
      "         1            4       5       6       0       0       0\n"
      "         2           10      11      12       0       0       0\n");
  EXPECT_LT(heading, method);
  EXPECT_LT(method, table);
  EXPECT_NE(table, std::string::npos) << report;
  EXPECT_FALSE(has(report, " DISPLACEMENT CODES\n"));
}

TEST(Renumbering, CollinsPrintsTheDistanceAndItsSource) {
  {
    Line line(6, springs(chain), 1);
    renumber(4);
    EXPECT_TRUE(
        has(line.report(),
            "\n     MAXIMUM DISTANCE BETWEEN RENUMBERED NODES =     1\n     BASED ON COLLINS ALGORITHM (1973)\n"));
    EXPECT_EQ(first_equations(), chain_order_equations) << "node 4 is the lower end";
    EXPECT_EQ(solver.NSTO, 66);
  }
  Line line(6, springs(chain), 1);
  renumber(3);
  EXPECT_TRUE(has(line.report(),
                  "\n     TOTAL DISTANCE BETWEEN RENUMBERED NODES =     5\n     BASED ON COLLINS ALGORITHM (1973)\n"));
  EXPECT_EQ(first_equations(), chain_order_equations);
}

TEST(Renumbering, ByHeightTakesTheHighestNodeFirst) {
  Line line(4, springs({{1, 2}, {2, 3}, {3, 4}}), 1);
  for (int node = 1; node <= 4; ++node) pool.reals(nodes.Z, 4)(node) = node == 4 ? -1.0 : 10.0 * node;
  renumber(2);
  EXPECT_EQ(first_equations(), (std::vector<int>{7, 4, 1, 10}));
  EXPECT_TRUE(has(line.report(), "\n RENUMBER NODES BASED ON Z COORDINATES IN A DESCENDING ORDER.\n"));
  EXPECT_TRUE(has(line.report(), " DISPLACEMENT CODES (RENUMBERED)"));
}

TEST(Renumbering, AnOrderByHeightOrByCollinsIsTakenEvenIfItIsWorse) {
  for (const int code : {2, 4}) {
    Line line(4, springs({{1, 2}, {1, 3}, {1, 4}}), 1);
    renumber(code);
    EXPECT_NE(first_equations(), (std::vector<int>{1, 4, 7, 10})) << code;
    EXPECT_TRUE(has(line.report(), " DISPLACEMENT CODES (RENUMBERED)"));
  }
}

TEST(Renumbering, NumbersThatCannotBeImprovedStay) {
  // Node 2 shares an equation of its master 3: the first pass over the old order would number it before those of 3.
  Line line(5, springs({{1, 2}, {2, 3}, {3, 4}, {4, 5}}), 1);
  node_ID()(2, 1) = equation_of(3, 1);
  node_ID()(5, 1) = 4;  // takes the number that node 2 has given up
  const std::vector<int> before = first_equations();
  renumber(1);
  EXPECT_EQ(first_equations(), before);
  EXPECT_TRUE(has(line.report(), " DISPLACEMENT CODES (RENUMBERED)"));
  EXPECT_TRUE(has(line.report(), "USE OF S.W. SLOAN (1989) ALGORITHM"));
  EXPECT_EQ(solver.NSTO, profile_length({{1, 2}, {2, 3}, {3, 4}, {4, 5}}));
}

TEST(Renumbering, WhatIsKeptByEquationFollowsTheNodes) {
  Line line(6, springs(chain), 1);
  sizes.IBANDW = 1;
  ELDATA();
  const std::array<int, 5> kept{masses.AMASS, masses.KEDATP, patterns.KSELFW, patterns.KBUOYV, patterns.KCURRV};
  double value = 0.0;
  for (const int vector : kept) {
    for (double& entry : pool.reals(vector, NEQ1())) entry += value += 1.0;
  }
  std::vector<NodeValues> before;
  std::vector<double> sinks;
  for (const int vector : kept) {
    for (int node = 1; node <= 6; ++node) before.push_back(values_at_node(node, pool.reals(vector, NEQ1())));
    sinks.push_back(pool.reals(vector, NEQ1())(NEQ1()));
  }
  RENUMB();
  ASSERT_EQ(first_equations(), chain_order_equations);
  std::size_t i = 0;
  for (const int vector : kept) {
    for (int node = 1; node <= 6; ++node) EXPECT_EQ(values_at_node(node, pool.reals(vector, NEQ1())), before[i++]);
  }
  for (std::size_t k = 0; k < kept.size(); ++k) EXPECT_EQ(pool.reals(kept[k], NEQ1())(NEQ1()), sinks[k]);
}

TEST(Renumbering, TiedNodesAreNeighboursAndStayTied) {
  // The chain is cut between 5 and 2; a tie in X takes the place of that spring.
  const Pairs cut{{4, 1}, {1, 5}, {2, 3}, {3, 6}};
  Line line(6, springs(cut), 1);
  node_ID()(6, 1) = equation_of(5, 1);  // keeps all 15 numbers in use
  node_ID()(5, 1) = equation_of(2, 1);
  renumber(1);
  EXPECT_EQ(equation_of(5, 1), equation_of(2, 1));
  EXPECT_EQ(solver.NSTO, profile_length(cut));
  // Along 4 1 5 2 3 6: node 5 brings the shared equation, node 2 its other two.
  EXPECT_EQ(first_equations(), (std::vector<int>{4, 7, 12, 1, 7, 15}));
}

TEST(Renumbering, NodesOfTypesThatEnterNothingStandAloneButTheirColumnsReachRight) {
  // Type 22 makes no connections: nodes 1 and 5 are connected by it alone.
  const Pairs plain{{4, 2}, {2, 3}, {3, 6}}, silent{{1, 5}, {5, 3}};
  Line line(6, springs(plain) + springs(silent, 22), 2);
  renumber(1);
  EXPECT_EQ(first_equations(), (std::vector<int>{1, 10, 13, 7, 4, 16})) << "lone nodes 1 and 5 first, then 4 2 3 6";
  Pairs both = plain;
  both.insert(both.end(), silent.begin(), silent.end());
  EXPECT_EQ(solver.NSTO, profile_length(both));
}

Pairs star(int rays) {
  Pairs ends;
  for (int ray = 2; ray <= rays + 1; ++ray) ends.emplace_back(1, ray);
  return ends;
}

TEST(Renumbering, FiftyNeighboursArePossible) {
  Line line(53, springs(star(50)), 1);
  renumber(1);
  EXPECT_FALSE(has(line.report(), "WARNING!"));
  EXPECT_TRUE(has(line.report(), " DISPLACEMENT CODES (RENUMBERED)"));
}

TEST(Renumbering, WithFiftyOneTheNumbersStayAndTheOldTableIsPrinted) {
  for (const int code : {1, 3, 4}) {
    Line line(53, springs(star(51)), 1);
    const std::vector<int> before = first_equations();
    renumber(code);
    EXPECT_EQ(first_equations(), before);
    const std::string report = trimmed(line.report());
    EXPECT_TRUE(has(report,
                    "\n     WARNING! THE NUMBER OF NODES CONNECTED TO NODE     1 IS MORE THAN MAXIMUM ALLOWABE NUMBER "
                    "50.\n CONTINUE THE ANALYSIS WITHOUT PERFORMING BAND-WIDTH\n REDUCTION PROCESS.\n"))
        << report;
    EXPECT_TRUE(has(report, "\n DISPLACEMENT CODES\n"));
    EXPECT_FALSE(has(report, "RENUMBERED)"));
    EXPECT_FALSE(has(report, "ALGORITHM"));
    EXPECT_EQ(solver.NSTO, profile_length(star(51))) << "the heights of element input hold";
    EXPECT_EQ(run.RUNMOD, 0) << "the run goes on";
  }
}

TEST(Renumbering, ByHeightKnowsNoLimitOfNeighbours) {
  Line line(53, springs(star(51)), 1);
  renumber(2);
  EXPECT_TRUE(has(line.report(), " DISPLACEMENT CODES (RENUMBERED)"));
}

TEST(Renumbering, NodesThatManyShareAnEquationWithCountAsNeighbours) {
  // 52 nodes move together in X: pairs of node 1 come first.
  Line line(53, springs(chain), 1);
  for (int node = 2; node <= 52; ++node) node_ID()(node, 1) = 1;
  renumber(1);
  EXPECT_TRUE(has(line.report(), "CONNECTED TO NODE     1 IS MORE THAN"));
}

TEST(Renumbering, GivesItsWorkArraysBack) {
  Line line(6, springs(chain), 1);
  sizes.IBANDW = 1;
  ELDATA();
  const int before = storage.NEXT;
  RENUMB();
  EXPECT_EQ(storage.NEXT, before);
}

/// Words that a method needs behind what stands when elements have been read.
int first_free_word(int IBANDW) {
  Line line(6, springs(chain), 1);
  renumber(IBANDW);
  return storage.NEXT;
}

TEST(Renumbering, RunsInExactlyTheRoomThatItNeeds) {
  // Order of 6, lists of 50 each, counts of 6, five rows of 8, three vectors of 6; and, smaller, the table of 16 new
  // numbers with a vector of 16 reals behind the order.
  constexpr int graph_words = 6 + 6 * 50 + 6 + 5 * 8 + 3 * 6;
  constexpr int height_words = 6 + 16 + 2 * 16;
  for (const auto& [code, needed] :
       {std::pair{1, graph_words}, std::pair{3, graph_words}, std::pair{2, height_words}}) {
    const int base = first_free_word(code) - 1;
    {
      Line line(6, springs(chain), 1, false, base + needed);
      sizes.IBANDW = code;
      EXPECT_FALSE(stop_of([] {
                     ELDATA();
                     RENUMB();
                   }).has_value())
          << code;
    }
    for (int less = 1; less <= needed; less += code == 2 ? 1 : 7) {
      Line line(6, springs(chain), 1, false, base + needed - less);
      sizes.IBANDW = code;
      ELDATA();
      ASSERT_EQ(stop_of([] { RENUMB(); }), status_fatal) << code << " with " << less << " words less";
      EXPECT_TRUE(has(line.report(), "INPUT PHASE - NODAL COORD/DOF CONSTRAINTS"));
    }
  }
}

TEST(Renumbering, TheStorageCheckTellsTheNeedSoFar) {
  const int base = first_free_word(1) - 1;
  Line line(6, springs(chain), 1, false, base + 369);
  sizes.IBANDW = 1;
  ELDATA();
  EXPECT_EQ(stop_of([] { RENUMB(); }), status_fatal);
  EXPECT_TRUE(has(line.report(), format("'STORAGE REQUIRED UP TO THIS PHASE =',I11", base + 370)));
}

TEST(Renumbering, ReadsRecordsFromDiskAlike) {
  Line line(6, springs(chain), 1);
  keep_scratch_in_memory(false);
  renumber(1);
  EXPECT_EQ(first_equations(), chain_order_equations);
  EXPECT_EQ(solver.NSTO, 66);
}

TEST(Renumbering, IsNotMadeAfterDataErrors) {
  Line line(6, springs(chain), 1);
  const std::vector<int> before = first_equations();
  sizes.IBANDW = 1;
  ELDATA();
  run.had_data_error = true;
  set_fatal_flag();
  RENUMB();
  EXPECT_EQ(first_equations(), before);
  EXPECT_TRUE(has(trimmed(line.report()), "\n DISPLACEMENT CODES\n"));
  EXPECT_EQ(solver.NSTO, profile_length(chain));
}

TEST(Renumbering, IsMadeInADataCheck) {
  Line line(6, springs(chain), 1);
  run.RUNMOD = 1;
  run.check_run = true;
  renumber(1);
  EXPECT_EQ(first_equations(), chain_order_equations);
}

TEST(Renumbering, IsNotMadeInADataCheckThatFoundErrors) {
  Line line(6, springs(chain), 1);
  run.RUNMOD = 1;
  run.check_run = true;
  run.had_data_error = true;
  const std::vector<int> before = first_equations();
  renumber(1);
  EXPECT_EQ(first_equations(), before);
}

TEST(Renumbering, NumbersThatAreNoEquationsStopTheRun) {
  Line line(6, springs(chain), 1);
  sizes.IBANDW = 1;
  ELDATA();
  node_ID()(2, 5) = NEQ1() + 1;
  EXPECT_EQ(stop_of([] { RENUMB(); }), status_fatal);
  EXPECT_TRUE(has(line.report(), "PROGRAMMING ERROR! DO NOT USE BAND_WIDTH REDUCTION OPTION.\n"));
}

TEST(Renumbering, AModelWithoutElementsIsLeftAsItIs) {
  for (const int code : {1, 3, 4}) {
    Line line(4, "", 0);
    renumber(code);
    EXPECT_EQ(first_equations(), (std::vector<int>{1, 4, 7, 10})) << code;
    EXPECT_EQ(solver.NSTO, 9) << "diagonals alone";
  }
}

}  // namespace
}  // namespace tidearc::test
