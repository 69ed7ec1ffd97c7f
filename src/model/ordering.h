// New orders of the nodes, and the equation numbers that follow from them.
//
// A column of the structure matrix reaches up to the lowest equation that its equation is connected to. Equations
// follow nodes, so an order in which connected nodes stand close together makes a short profile. All of this is values
// in, values out: graphs and orders, without blocks; elements/contract/renumber.h applies it to a model.
//
// Sources: S. W. Sloan, A FORTRAN program for profile and wavefront reduction, Int. J. Num. Meth. Eng. 28 (1989),
// 2651-2679; R. J. Collins, Bandwidth reduction by automatic renumbering, Int. J. Num. Meth. Eng. 6 (1973), 345-356.
#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "run/views.h"

namespace tidearc {

inline constexpr int most_neighbours = 50;  ///< neighbours that a node can have in the graph   [-]

/// The graph of a model: nodes 1..n, neighbours in the order in which they were entered. Both arrays belong to somebody
/// else.
struct NodeGraph {
  IntegerTable NADJ;  ///< neighbour k of node n at NADJ(k, n), most_neighbours by n
  Integers NDEG;      ///< number of neighbours of each node, n; all zero: no connections yet

  int size() const { return NDEG.size(); }
  std::span<const int> neighbours(int node) const {
    return NADJ.column(node).span().first(static_cast<std::size_t>(NDEG(node)));
  }
};

/// Makes two different nodes neighbours of each other, once however often they are connected. Returns 0, or the node
/// whose list is full; what was entered before stays.
int connect(const NodeGraph& graph, int a, int b);

/// The first different nodes of an element's location vector (slots (c-1)*NUMNP + n, 0 none), as many as `row` holds;
/// the rest of the row becomes 0.
void connected_nodes(std::span<const int> LM, int NUMNP, std::span<int> row);

/// Links the slots of ID (NUMNP by 6) that hold the same equation: next(s) is the slot of the next node that shares the
/// equation of slot s, 0 none or constrained (entry NEQ + 1). `next` has 6*NUMNP entries, `last` is scratch of NEQ.
void link_shared_equations(IntegerTable ID, int NEQ, Integers next, Integers last);

/// Calls action(i, j) once for each pair of nodes i < j that share an equation, i slow, until it returns false.
template <class Action>
void for_each_tied_pair(ConstIntegers next, int NUMNP, Action&& action) {
  const auto node_of = [NUMNP](int slot) { return (slot - 1) % NUMNP + 1; };
  for (int i = 1; i <= NUMNP; ++i) {
    std::array<int, 6> ahead{};  // per component of node i, the next slot with its equation
    for (int c = 0; c < 6; ++c) ahead[static_cast<std::size_t>(c)] = next(c * NUMNP + i);
    for (;;) {
      int j = 0;
      for (const int slot : ahead) {
        if (slot > 0 && (j == 0 || node_of(slot) < j)) j = node_of(slot);
      }
      if (j == 0) break;
      if (j > i && !action(i, j)) return;
      for (int& slot : ahead) {
        while (slot > 0 && node_of(slot) <= j) slot = next(slot);
      }
    }
  }
}

/// Profile of the graph when node n stands in position(n): the sum of the distances down to each node's lowest
/// neighbour, plus the number of nodes.
std::int64_t profile_of(const NodeGraph& graph, ConstIntegers position);

// Orders. order(p) is the node in position p of the new order.

/// By falling height, in exchanging passes: neighbours in the row change places unless the second is strictly lower, so
/// nodes of equal height change places at each pass in which they meet. The number of steps is quadratic.
void order_by_height(ConstReals Z, Integers order);

/// What Collins' method makes small over neighbours in the new order.
enum class CollinsMeasure {
  total,    ///< the sum of their distances
  largest,  ///< the largest distance
};
/// Collins' order: from every node with neighbours the graph is walked breadth first, and the best walk is taken, the
/// first of equal ones. Returns its measure; that which a walk has to stay below, n or n*n - n, with the order 1, 2, ..
/// when there is not one neighbour. `scratch` has 2*n entries. Quadratic in the number of nodes at worst; a walk that
/// is no better than the best is dropped early.
std::int64_t order_by_collins(const NodeGraph& graph, CollinsMeasure measure, Integers order, Integers scratch);

/// Sloan's order, component by component: from one end of a pseudo-diameter, nodes that are far from the other end and
/// close few open connections go first. False when the profile of the graph does not become smaller: the order is then
/// 1, 2, .. . `scratch` has 3*n entries.
bool order_by_sloan(const NodeGraph& graph, Integers order, Integers scratch);

// Equation numbers.

/// The new number of each old equation, and of the sink NEQ + 1 that of itself: nodes in their new order, components in
/// theirs, each equation when it is first met. False when ID (NUMNP by 6) holds what is no equation, or not all of
/// them.
bool number_equations(ConstIntegers order, IntegerTable ID, int NEQ, Integers new_number);
/// Brings an equation-length vector into the new numbering; the sink keeps its value. `scratch` has its length.
void reorder(ConstIntegers new_number, Reals vector, Reals scratch);

}  // namespace tidearc
