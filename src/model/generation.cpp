// Node coordinate generation along straight lines: by command, and between specified nodes.
#include <algorithm>
#include <cmath>
#include <vector>

#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"

namespace tidearc {
namespace {

struct GenerationCommand {
  int first = 0;
  int last = 0;
  int count = 0;       ///< nodes to generate
  int difference = 0;  ///< of their numbers; 0 when the card lists them
  double spacing = 0.0;
  std::array<int, 10> list{};
};

/// Nodes of a command. A row of numbers ends with the first one outside the model, since all that follow are outside
/// too.
std::vector<int> nodes_of(const GenerationCommand& command) {
  std::vector<int> list;
  if (command.difference != 0 && command.count >= 1) {
    long long node = command.first;
    for (int k = 1; k <= command.count; ++k) {
      node += command.difference;
      list.push_back(static_cast<int>(node));
      if (node < 1 || node > sizes.NUMNP) break;
    }
    return list;
  }
  const int most = std::clamp(command.count, 0, static_cast<int>(command.list.size()));
  for (int k = 0; k < most && command.list[static_cast<std::size_t>(k)] >= 1; ++k) {
    list.push_back(command.list[static_cast<std::size_t>(k)]);
  }
  return list;
}

bool end_is_usable(int node, Columns where) {
  if (!node_in_range(node, sizes.NUMNP, where)) return false;
  if (is_specified(node)) return true;
  data_error(where, "' NODE',I6,'  COORDINATES NOT YET DEFINED, ENTERING CHEC MODE'", node);
  return false;
}

std::array<double, 3> difference_of(int from, int to) {
  const std::array<double, 3> a = coordinates(from);
  const std::array<double, 3> b = coordinates(to);
  return {b[0] - a[0], b[1] - a[1], b[2] - a[2]};
}

/// The spacing as a part of the span. A spacing of 1.0 or more is a length; without a span all nodes fall on the first.
double part_of_span(double spacing, int count, const std::array<double, 3>& D) {
  if (spacing == 0.0) return 1.0 / (count + 1.0);
  if (spacing < 1.0) return spacing;
  const double L = std::hypot(D[0], D[1], D[2]);
  return L > 0.0 ? spacing / L : 0.0;
}

void move_by(std::array<double, 3>& at, double s, const std::array<double, 3>& D) {
  for (std::size_t i = 0; i < at.size(); ++i) at[i] += s * D[i];
}

void follow(const GenerationCommand& command, const std::vector<int>& list) {
  // Both ends are looked at, so that one run tells about both.
  const bool first_usable = end_is_usable(command.first, {1, 5});
  const bool last_usable = end_is_usable(command.last, {6, 10});
  if (!first_usable || !last_usable) return;
  const std::array<double, 3> D = difference_of(command.first, command.last);
  const double s = part_of_span(command.spacing, command.count, D);
  std::array<double, 3> at = coordinates(command.first);
  Columns where = command.difference == 0 ? Columns{31, 35} : whole_line;
  for (const int node : list) {
    move_by(at, s, D);
    if (node_in_range(node, sizes.NUMNP, where)) place_node(node, at, node_generated);
    if (command.difference == 0) where = {where.first + 5, where.last + 5};
  }
}

/// Fills the unspecified nodes between two specified ones.
void fill_gap(int from, int to) {
  const std::array<double, 3> D = difference_of(from, to);
  const double s = 1.0 / (to - from);
  std::array<double, 3> at = coordinates(from);
  for (int node = from + 1; node < to; ++node) {
    move_by(at, s, D);
    place_node(node, at, node_generated);
  }
}

}  // namespace

void GENIN() {
  write(units.NDOUT, "/,/,' NODE COORDINATE GENERATION COMMANDS'");
  if (sizes.NGEN < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  write(units.NDOUT,
        "/,4X,'FIRST',6X,'LAST',5X,'NO.OF',5X,'NODE',6X,'SPACING',5X,'LIST OF NODES',/,4X,' NODE',6X,'NODE',5X,'NODES',"
        "6X,'DIFF',/");
  for (int i = 1; i <= sizes.NGEN; ++i) {
    GenerationCommand command;
    read(units.NDIN, "4I5,F10.0,10I5", command.first, command.last, command.count, command.difference, command.spacing,
         command.list);
    const std::vector<int> list = nodes_of(command);
    write(units.NDOUT, "4(I9,1X),F12.3,5X,14I5,/,1(57X,14I5)", command.first, command.last, command.count,
          command.difference, command.spacing, std::span<const int>(list));
    follow(command, list);
  }
}

void fill_gaps() {
  int specified = 0;  // the last specified node, 0 before the first
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    if (!is_specified(node)) continue;
    if (specified > 0 && node > specified + 1) fill_gap(specified, node);
    specified = node;
  }
}

}  // namespace tidearc
