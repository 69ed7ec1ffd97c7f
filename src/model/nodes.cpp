// Nodes: control nodes, the order of the node section, the coordinate table, and a node's own axes.
// Generation commands stand in generation.cpp, catenaries in catenary_input.cpp.
#include "model/nodes.h"

#include <string_view>

#include "run/layout.h"
#include "run/stops.h"

namespace tidearc {
namespace {

void clear_nodes() {
  for (int node = 1; node <= sizes.NUMNP; ++node) place_node(node, {0.0, 0.0, 0.0}, node_unspecified);
  catenaries.count = 0;
}

void read_control_nodes() {
  write(units.NDOUT,
        "'1',/,' NODE SPECIFICATION',/,/,' CONTROL NODE COORDINATES',/,/,5X,' NODE',7X,'X-COORD',7X,'Y-COORD',7X,"
        "'Z-COORD',/");
  for (int i = 1; i <= sizes.NCONT; ++i) {
    int node = 0;
    std::array<double, 3> at{};
    read(units.NDIN, "I5,3F10.0", node, at);
    write(units.NDOUT, "I10,3F14.3", node, at);
    if (node_in_range(node, sizes.NUMNP, {1, 5})) place_node(node, at, node_control);
  }
  const bool first_defined = sizes.NUMNP >= 1 && pool.integers(nodes.NCODE, sizes.NUMNP)(1) == node_control;
  if (!first_defined) data_error(not_on_deck, "'  NODE 1 MUST BE DEFINED, ENTERING CHEC MODE'");
}

std::string_view word_of(int code) { return code == node_control ? "CONTROL" : "GENERATED"; }

void print_coordinates() {
  write(units.NDOUT,
        "'1',/,' NODE COORDINATES',/,/,5X,' NODE',7X,'X-COORD',7X,'Y-COORD',7X,'Z-COORD',7X,'SPECIFICATION',/");
  const Integers NCODE = pool.integers(nodes.NCODE, sizes.NUMNP);
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    if (is_specified(node)) {
      write(units.NDOUT, "I10,3F14.3,7X,3A4", node, coordinates(node), word_of(NCODE(node)));
      continue;
    }
    write(units.NDOUT, "I10,50X,3A4", node, "UNSPECIFIED");
    data_error(not_on_deck, "' NODE',I6,'  COORDINATES NOT SPECIFIED,   ENTERING CHEC MODE'", node);
  }
}

}  // namespace

void place_node(int node, const std::array<double, 3>& at, NodeCode code) {
  pool.reals(nodes.X, sizes.NUMNP)(node) = at[0];
  pool.reals(nodes.Y, sizes.NUMNP)(node) = at[1];
  pool.reals(nodes.Z, sizes.NUMNP)(node) = at[2];
  pool.integers(nodes.NCODE, sizes.NUMNP)(node) = code;
}

void to_global(int node, double* v) {
  const int system = system_of(node);
  if (system < 1) return;
  const RealTable AXES = axes_of(system);
  const std::array<double, 3> local{v[0], v[1], v[2]};
  for (int i = 1; i <= 3; ++i) v[i - 1] = AXES(i, 1) * local[0] + AXES(i, 2) * local[1] + AXES(i, 3) * local[2];
}

void to_local(int node, double* v) {
  const int system = system_of(node);
  if (system < 1) return;
  const RealTable AXES = axes_of(system);
  const std::array<double, 3> global{v[0], v[1], v[2]};
  for (int k = 1; k <= 3; ++k) v[k - 1] = AXES(1, k) * global[0] + AXES(2, k) * global[1] + AXES(3, k) * global[2];
}

void NODEIN() {
  clear_nodes();
  read_control_nodes();
  GENIN();
  fill_gaps();
  CATIN();
  print_coordinates();
}

}  // namespace tidearc
