// Nodal load patterns: commands that load nodes or runs of nodes.
#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

struct LoadCommand {
  int first = 0;
  NodeValues load{};
  int last = 0;
  int difference = 0;
};

LoadCommand read_command() {
  LoadCommand command;
  read(units.NDIN, "I5,6F10.0,2I5", command.first, command.load, command.last, command.difference);
  write(units.NDOUT, "I10,6F12.3,2I10", command.first, command.load, command.last, command.difference);
  return command;
}

/// A command whose span does not fit its difference ends the run, in a data check too; a node out of range only skips
/// it.
bool can_be_followed(const NodeRange& range) {
  if (range.last > sizes.NUMNP) return node_in_range(range.last, sizes.NUMNP, {66, 70});
  if (!is_even(range)) {
    write(units.NDOUT, "' ERROR IN GRAVITY LOAD INPUT'");
    stop_on_load_command({66, 75}, "load command: last node less first node is not a whole multiple of the difference");
  }
  return node_in_range(range.first, sizes.NUMNP, {1, 5});
}

void add_loads(int node, const NodeValues& load, Reals vector) {
  for (int c = 1; c <= 6; ++c) {
    const double value = load[static_cast<std::size_t>(c - 1)];
    if (value != 0.0) vector(equation_of(node, c)) += value;
  }
}

/// Table of the nodes with a load, read back from the vector, and the six sums.
NodeValues print_loads(ConstReals vector) {
  write(units.NDOUT, "/,' NODAL LOADS',/,/,6X,'NODE',10X,'FX',10X,'FY',10X,'FZ',10X,'MX',10X,'MY',10X,'MZ',/");
  NodeValues total{};
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    const NodeValues load = values_at_node(node, vector);
    if (!any_nonzero(load)) continue;
    write(units.NDOUT, "I10,6F12.3", node, load);
    add_to(total, load);
  }
  write(units.NDOUT,
        "/,5X,'TOTAL FORCES AND MOMENTS:',/,/,20X,'FX',10X,'FY',10X,'FZ',10X,'MX',10X,'MY',10X,'MZ',/,10X,6F12.3",
        total);
  return total;
}

}  // namespace

void read_nodal_pattern() {
  int commands = 0;
  PatternTitle title{};
  read(units.NDIN, "I5,10A4", commands, title);
  write(units.NDOUT,
        "/,/,5X,'LOAD PATTERN NO.',I5,' - NODAL LOAD',/,1X,65('-'),/,5X,10A4,/,1X,65('-'),/,/,5X,"
        "'NO. OF STATIC LOAD GENERATING COMMANDS =',I5,/,/,5X,'FIRST',6X,'X-LOAD',6X,'Y-LOAD',6X,'Z-LOAD',6X,"
        "'X-MOMT',6X,'Y-MOMT',6X,'Z-MOMT',6X,'LAST',6X,'NODE',/,6X,'NODE',78X,'NODE',6X,'DIFF',/",
        pattern_number(), title, commands);
  write_header(pattern_nodal, ITWO * NEQ1(), title);

  const Reals vector = pattern_vector();
  RZERO(vector.data(), vector.size());
  for (int i = 1; i <= commands; ++i) {
    const LoadCommand command = read_command();
    const NodeRange range = node_range(command.first, command.last, command.difference);
    if (!can_be_followed(range)) continue;
    for (int node = range.first; node <= range.last; node += range.difference) add_loads(node, command.load, vector);
  }
  FILE(units.NT10, "WRIT", ITWO * NEQ1(), vector.data());
  count_pattern(pattern_nodal, print_loads(vector));
}

}  // namespace tidearc
