// Renumbering of a model: its graph from ties and elements, the order, and what changes with the equation numbers.
#include "elements/contract/renumber.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <span>

#include "elements/contract/input.h"
#include "elements/contract/walk.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/ordering.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "solve/profile.h"

namespace tidearc {

namespace {

constexpr int node_phase = 1;  // storage phase as which the work arrays count
constexpr int row_length = 8;  // nodes in a row of the connection table

enum Method : int { by_height = 2, by_total_distance = 3, by_largest_distance = 4 };

/// What came of the search for an order.
enum class Outcome {
  none,  ///< there is no new order
  kept,  ///< the old order is the new one
  made,  ///< equations get new numbers
};

/// action(type, LM) for every element, in the order of the deck, from the records as element input wrote them.
template <class Action>
void for_each_location(Action&& action) {
  FILE(units.NT1, "REWI");
  for_each_group([&](const ElementType& type) {
    for (int i = 0; i < group.NUMEL; ++i) {
      const std::span<const Word> record = next_record(units.NT1);
      action(type, record.subspan(2, static_cast<std::size_t>(group.NDOF)));
    }
  });
}

/// The connection table IEN: one row for each pair of tied nodes and for each element, its nodes first, then zeros.
struct ConnectionTable {
  int index = 1;          ///< in the pool
  std::int64_t rows = 0;  ///< NELCON

  std::span<int> row(std::int64_t r) const {
    return {pool.words(static_cast<int>(index + row_length * r), row_length), row_length};
  }
};

/// Pairs of tied nodes; no longer counted when no pool could hold their rows.
std::int64_t count_tied_pairs(ConstIntegers next) {
  constexpr std::int64_t enough = std::numeric_limits<int>::max() / row_length;
  std::int64_t pairs = 0;
  for_each_tied_pair(next, sizes.NUMNP, [&](int, int) { return ++pairs <= enough; });
  return pairs;
}

/// Lays IEN down and fills it. `room` is scratch of at least 6*NUMNP + NEQ integers.
ConnectionTable form_connections(int* room) {
  const Integers next(room, 6 * sizes.NUMNP);
  const Integers last(room + next.size(), sizes.NEQ);
  link_shared_equations(node_ID(), sizes.NEQ, next, last);
  ConnectionTable IEN;
  IEN.rows = count_tied_pairs(next) + element_counts.NELTOT;
  IEN.index = carve_integers(row_length * IEN.rows);
  check_storage(node_phase);
  std::int64_t filled = 0;
  const auto empty_row = [&] {
    const std::span<int> row = IEN.row(filled++);
    std::fill(row.begin(), row.end(), 0);
    return row;
  };
  for_each_tied_pair(next, sizes.NUMNP, [&](int i, int j) {
    const std::span<int> row = empty_row();
    row[0] = i;
    row[1] = j;
    return true;
  });
  for_each_location([&](const ElementType& type, std::span<const int> LM) {
    connected_nodes(LM, sizes.NUMNP, empty_row().first(static_cast<std::size_t>(type.graph_nodes)));
  });
  return IEN;
}

/// Every two nodes of a row become neighbours. Returns 0, or the node that has too many.
int connect_row(const NodeGraph& graph, std::span<const int> row) {
  for (std::size_t a = 0; a < row.size() && row[a] > 0; ++a) {
    for (std::size_t b = a + 1; b < row.size() && row[b] > 0; ++b) {
      const int full = connect(graph, row[a], row[b]);
      if (full != 0) return full;
    }
  }
  return 0;
}

/// The graph of the model, laid down at NEXT; false with the warning printed when a node has too many neighbours.
bool form_graph(NodeGraph& graph) {
  const int NADJ = carve_integers(std::int64_t{most_neighbours} * sizes.NUMNP);
  const int NDEG = carve_integers(sizes.NUMNP);
  check_storage(node_phase);
  graph = {pool.integers(NADJ, most_neighbours, sizes.NUMNP), pool.integers(NDEG, sizes.NUMNP)};
  // The lists are empty as yet: their room serves the search for ties.
  const ConnectionTable IEN = form_connections(graph.NADJ.data());
  std::fill(graph.NDEG.begin(), graph.NDEG.end(), 0);
  for (std::int64_t r = 0; r < IEN.rows; ++r) {
    const int full = connect_row(graph, IEN.row(r));
    if (full == 0) continue;
    write(units.NDOUT,
          "/,5X,'WARNING! THE NUMBER OF NODES CONNECTED TO NODE ',I5,' IS MORE THAN MAXIMUM ALLOWABE NUMBER ',I2,'.',/,"
          "' CONTINUE THE ANALYSIS WITHOUT PERFORMING BAND-WIDTH ',/,' REDUCTION PROCESS.'",
          full, most_neighbours);
    return false;
  }
  return true;
}

Outcome take_collins_order(const NodeGraph& graph, Integers NORDER, Integers scratch) {
  const bool total = sizes.IBANDW == by_total_distance;
  const CollinsMeasure measure = total ? CollinsMeasure::total : CollinsMeasure::largest;
  const std::int64_t found = order_by_collins(graph, measure, NORDER, scratch);
  const int value = static_cast<int>(std::min<std::int64_t>(found, std::numeric_limits<int>::max()));
  if (total) {
    write(units.NDOUT, "/,5X,'TOTAL DISTANCE BETWEEN RENUMBERED NODES = ',I5", value);
  } else {
    write(units.NDOUT, "/,5X,'MAXIMUM DISTANCE BETWEEN RENUMBERED NODES = ',I5", value);
  }
  write(units.NDOUT, "5X,'BASED ON COLLINS ALGORITHM (1973)'");
  return Outcome::made;
}

Outcome order_along_graph(Integers NORDER) {
  NodeGraph graph;
  if (!form_graph(graph)) return Outcome::none;
  const int index = carve_integers(3LL * sizes.NUMNP);
  check_storage(node_phase);
  const Integers scratch = pool.integers(index, 3 * sizes.NUMNP);
  if (sizes.IBANDW == by_total_distance || sizes.IBANDW == by_largest_distance)
    return take_collins_order(graph, NORDER, scratch);
  const bool smaller = order_by_sloan(graph, NORDER, scratch);
  write(units.NDOUT, "/,5X,'USE OF S.W. SLOAN (1989) ALGORITHM'");
  return smaller ? Outcome::made : Outcome::kept;
}

Outcome order_nodes(Integers NORDER) {
  if (sizes.IBANDW != by_height) return order_along_graph(NORDER);
  order_by_height(pool.reals(nodes.Z, sizes.NUMNP), NORDER);
  write(units.NDOUT, "/,' RENUMBER NODES BASED ON Z COORDINATES IN A DESCENDING ORDER.'");
  return Outcome::made;
}

/// Gives the equations their new numbers, and brings what is kept by equation into their order.
void renumber_equations(ConstIntegers NORDER) {
  const int table = carve_integers(NEQ1());
  const int vector = carve_reals(NEQ1());
  check_storage(node_phase);
  const Integers new_number = pool.integers(table, NEQ1());
  if (!number_equations(NORDER, node_ID(), sizes.NEQ, new_number)) {
    write(units.NDOUT, "/,5X,'PROGRAMMING ERROR! DO NOT USE BAND_WIDTH REDUCTION OPTION.'");
    complain(not_on_deck, "the equation numbers of the nodes are not those of the model");
    CLOSUP();
  }
  for (int& e : pool.integers(nodes.ID, 6 * sizes.NUMNP)) e = new_number(e);
  const Reals scratch = pool.reals(vector, NEQ1());
  for (const int kept : {masses.AMASS, masses.KEDATP, patterns.KSELFW, patterns.KBUOYV, patterns.KCURRV})
    reorder(new_number, pool.reals(kept, NEQ1()), scratch);
}

/// The column heights of the new numbers.
void rebuild_column_heights() {
  clear_column_heights();
  for_each_location([](const ElementType& type, std::span<const int> LM) {
    if (type.operations.stiffness == nullptr) return;
    lower_column_heights(LM.data(), static_cast<int>(LM.size()));
  });
}

/// After data errors element records may be missing.
bool records_are_complete() { return executing() || (run.check_run && !run.had_data_error); }

}  // namespace

void RENUMB() {
  write(units.NDOUT, "/,/,1X,29('*'),/,1X,'BAND-WIDTH REDUCTION COMMANDS',/,1X,29('*')");
  const int mark = storage.NEXT;
  const int order = carve_integers(sizes.NUMNP);
  check_storage(node_phase);
  const int behind_order = storage.NEXT;
  const Integers NORDER = pool.integers(order, sizes.NUMNP);
  const Outcome outcome = records_are_complete() ? order_nodes(NORDER) : Outcome::none;
  storage.NEXT = behind_order;
  if (outcome == Outcome::made) {
    renumber_equations(NORDER);
    rebuild_column_heights();
  }
  storage.NEXT = mark;
  print_displacement_codes(outcome == Outcome::none ? " DISPLACEMENT CODES" : " DISPLACEMENT CODES (RENUMBERED)");
  finish_profile();
}

}  // namespace tidearc
