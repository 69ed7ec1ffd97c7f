// Reading and echo of the node lists for output.
#include "results/node_lists.h"

#include <algorithm>
#include <array>
#include <string>

#include "model/control.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"
#include "run/workpool.h"

namespace tidearc {
namespace {

constexpr int nodes_on_card = 16;
constexpr int phase_print_lists = 8;
constexpr int phase_post_lists = 11;

/// Takes entries of list cards one by one, keeps the nodes, and tells what is wrong with the others. Zeros at the end
/// of a list are no error, so a zero waits until another entry follows it.
class ListReader {
 public:
  explicit ListReader(Integers list) : list_(list) {}

  void take(int entry, Columns where) {
    if (entry == 0) {
      if (!zero_waits_) zero_at_ = where;
      zero_waits_ = true;
      return;
    }
    if (zero_waits_) node_in_range(0, sizes.NUMNP, zero_at_);
    zero_waits_ = false;
    if (node_in_range(entry, sizes.NUMNP, where)) list_(++kept_) = entry;
  }
  /// The waiting zero no longer stands on the line that was read last.
  void end_card() { zero_at_ = whole_line; }
  int kept() const { return kept_; }

 private:
  Integers list_;
  int kept_ = 0;
  bool zero_waits_ = false;
  Columns zero_at_;
};

/// Reads the cards of one list into its room; returns the number of nodes kept.
int read_list(Integers list) {
  ListReader reader(list);
  std::array<int, nodes_on_card> card{};
  for (int first = 1; first <= list.size(); first += nodes_on_card) {
    read(units.NDIN, "16I5", card);
    const int entries = std::min(nodes_on_card, list.size() - first + 1);
    for (int k = 0; k < entries; ++k) {
      reader.take(card[static_cast<std::size_t>(k)], Columns{5 * k + 1, 5 * k + 5});
    }
    reader.end_card();
  }
  return reader.kept();
}

void echo_list(std::string_view direction, const NodeList& list) {
  if (list.count() == 0) {
    write(units.NDOUT, "/,5X,A2,' DISPLACEMENT RESPONSE - NONE'", direction);
    return;
  }
  write(units.NDOUT, "/,5X,A2,' DISPLACEMENT RESPONSE',/", direction);
  std::array<int, nodes_on_card> row{};
  for (int first = 1; first <= list.count(); first += nodes_on_card) {
    const int entries = std::min(nodes_on_card, list.count() - first + 1);
    for (int k = 0; k < entries; ++k) row[static_cast<std::size_t>(k)] = list.node(first + k);
    write(units.NDOUT, "5X,16I6", std::span<const int>(row).first(static_cast<std::size_t>(entries)));
  }
}

/// Lays down the three lists, then reads and echoes them in the order X, Y, Z.
void read_lists(std::string_view heading, int phase, std::array<int, 3>& lengths, std::array<int, 3>& indices) {
  for (std::size_t axis = 0; axis < 3; ++axis) {
    indices[axis] = lengths[axis] > 0 ? carve_integers(lengths[axis]) : storage.NEXT;
  }
  check_storage(phase);
  put_text(units.NDOUT, "\n\n");
  write_framed("     " + std::string(heading), '*', static_cast<int>(heading.size()));
  for (std::size_t axis = 0; axis < 3; ++axis) {
    if (lengths[axis] > 0) lengths[axis] = read_list(pool.integers(indices[axis], lengths[axis]));
    echo_list(direction_text[axis], NodeList{lengths[axis], indices[axis]});
  }
}

}  // namespace

int NodeList::count() const { return length < 0 ? sizes.NUMNP : length; }

int NodeList::node(int i) const { return length < 0 ? i : pool.integers(index, length)(i); }

NodeList print_list(int axis) {
  const auto k = static_cast<std::size_t>(axis - 1);
  return {output.NPR[k], output.KPR[k]};
}

NodeList post_list(int axis) {
  const auto k = static_cast<std::size_t>(axis - 1);
  return {output.NPS[k], output.KPS[k]};
}

void PRLIST() { read_lists("LIST OF NODES FOR DISPLACEMENT PRINT OUTPUT", phase_print_lists, output.NPR, output.KPR); }

void POLIST() {
  read_lists("LIST OF NODES FOR DISPLACEMENT POST-PROCESSING", phase_post_lists, output.NPS, output.KPS);
}

}  // namespace tidearc
