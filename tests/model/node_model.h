// The node section of a problem for tests: sizes as a size card gives them, arrays carved in the problem's order, and
// the deck that the section under test reads.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/scratch.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc::test {

class NodeModel {
 public:
  NodeModel(const std::string& deck, const SizeBlock& wanted) : scratch(deck) {
    units = {};
    run = {};
    nodes = {};
    storage = {};
    sizes = wanted;
    reset_gravity();
    pool.allocate(2000000);
    nodes.ID = carve_integers(6LL * sizes.NUMNP);
    nodes.X = carve_reals(sizes.NUMNP);
    nodes.Y = carve_reals(sizes.NUMNP);
    nodes.Z = carve_reals(sizes.NUMNP);
    nodes.NCODE = carve_integers(sizes.NUMNP);
    if (sizes.NCSYS >= 1) {
      nodes.ICS = carve_integers(sizes.NUMNP);
      nodes.AXES = carve_reals(9LL * sizes.NCSYS);
    }
  }
  ~NodeModel() {
    pool.release();
    sizes = {};
    run = {};
    reset_gravity();
  }
  NodeModel(const NodeModel&) = delete;
  NodeModel& operator=(const NodeModel&) = delete;

  /// The report, trailing blanks removed.
  std::string report() const { return trimmed(scratch.report()); }
  bool reports(const std::string& text) const { return report().find(text) != std::string::npos; }
  /// How often a text stands in the report.
  int times_reported(const std::string& text) const { return count_of(report(), text); }
  int data_errors() const { return times_reported(" ***** DATA ERROR *****"); }
  int code(int node) const { return pool.integers(nodes.NCODE, sizes.NUMNP)(node); }

  static int count_of(const std::string& where, const std::string& text) {
    int count = 0;
    for (auto at = where.find(text); at != std::string::npos; at = where.find(text, at + 1)) ++count;
    return count;
  }

  Scratch scratch;
};

/// A text right-justified in a field.
inline std::string field(const std::string& text, std::size_t width) {
  return std::string(width > text.size() ? width - text.size() : 0, ' ') + text;
}
/// Integers in fields of five columns.
inline std::string fives(const std::vector<int>& values) {
  std::string card;
  for (const int value : values) card += field(std::to_string(value), 5);
  return card;
}
/// Texts of numbers in fields of ten columns.
inline std::string tens(const std::vector<std::string>& values) {
  std::string card;
  for (const std::string& value : values) card += field(value, 10);
  return card;
}
/// A control node card.
inline std::string control(int node, const std::string& x, const std::string& y, const std::string& z) {
  return fives({node}) + tens({x, y, z}) + "\n";
}

}  // namespace tidearc::test
