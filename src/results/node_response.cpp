// The node response print: displacements, and in a dynamic run velocities and accelerations, of the listed nodes.
#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include "elements/contract/pass.h"
#include "model/control.h"
#include "model/nodes.h"
#include "results/node_lists.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"
#include "solve/arrays.h"

namespace tidearc {
namespace {

constexpr int nodes_in_block = 8;

/// Up to eight nodes of a list that stand side by side.
struct NodeColumns {
  int count = 0;
  std::array<int, nodes_in_block> node{};

  std::span<const int> nodes() const { return std::span<const int>(node).first(static_cast<std::size_t>(count)); }
};

/// One component of a vector by equation at each column, 0 where the component is constrained. Values stay in the axes
/// of their node.
std::array<double, nodes_in_block> gather(const NodeColumns& columns, int component, int vector) {
  const Reals by_equation = equation_vector(vector);
  std::array<double, nodes_in_block> values{};
  for (int k = 0; k < columns.count; ++k) {
    const auto at = static_cast<std::size_t>(k);
    const int equation = equation_of(columns.node[at], component);
    values[at] = equation <= sizes.NEQ ? by_equation(equation) : 0.0;
  }
  return values;
}

void print_block(const NodeColumns& columns, int component, bool dynamic) {
  const int out = units.NDOUT;
  const auto n = static_cast<std::size_t>(columns.count);
  const auto values = [&](int vector) { return gather(columns, component, vector); };
  write(out, "/,6X,'NODE NUMBER ',2X,8I13", columns.nodes());
  write(out, "6X,'DISPLACEMENT',7X,8E13.5", std::span<const double>(values(arrays.U)).first(n));
  if (!dynamic) return;
  write(out, "6X,'VELOCITY    ',7X,8E13.5", std::span<const double>(values(arrays.VEL)).first(n));
  write(out, "6X,'ACCELERATION',7X,8E13.5", std::span<const double>(values(arrays.ACC)).first(n));
}

void print_direction(int component, const NodeList& list, double time) {
  const std::string_view direction = direction_text[static_cast<std::size_t>(component - 1)];
  if (component <= 3) {
    write(units.NDOUT, "/,/,5X,A2,' DISPLACEMENT RESPONSE AT NODES, TIME =',E11.4,/", direction, time);
  } else {
    write(units.NDOUT, "/,/,5X,A2,'     ROTATION RESPONSE AT NODES, TIME =',E11.4,/", direction, time);
  }
  for (int first = 1; first <= list.count(); first += nodes_in_block) {
    NodeColumns columns;
    columns.count = std::min(nodes_in_block, list.count() - first + 1);
    for (int k = 0; k < columns.count; ++k) columns.node[static_cast<std::size_t>(k)] = list.node(first + k);
    print_block(columns, component, time > 0.0);
  }
}

}  // namespace

void NODPRT() {
  for (int component = 1; component <= NDF; ++component) {
    const NodeList list = print_list((component - 1) % 3 + 1);
    if (list.count() > 0) print_direction(component, list, print_time());
  }
}

void print_results() {
  ++run.NRESPR;
  NODPRT();
  print_elements();
}

}  // namespace tidearc
