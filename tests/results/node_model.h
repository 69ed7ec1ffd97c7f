// A model of free nodes, and readings of the report, for the tests of node results.
#pragma once

#include <string>
#include <vector>

#include "../support/scratch.h"
#include "model/control.h"
#include "model/nodes.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "solve/arrays.h"

namespace tidearc::test {

/// NUMNP nodes whose components are all free: component c of node n is equation 6*(n-1) + c.
inline void free_nodes(int NUMNP, int words_of_pool = 200000) {
  run = RunBlock{};
  sizes = SizeBlock{};
  static_loads = StaticLoadBlock{};
  output = OutputBlock{};
  storage = StorageBlock{};
  nodes = NodeBlock{};
  arrays = ArrayBlock{};
  response = ResponseBlock{};
  pool.allocate(words_of_pool);
  sizes.NUMNP = NUMNP;
  sizes.NEQ = 6 * NUMNP;
  nodes.ID = carve_integers(6 * NUMNP);
  for (int node = 1; node <= NUMNP; ++node) {
    for (int component = 1; component <= 6; ++component) node_ID()(node, component) = 6 * (node - 1) + component;
  }
}

/// The line that follows the first one equal to `line`, at a distance; empty when there is none.
inline std::string line_after(const std::string& text, const std::string& line, std::size_t distance = 1) {
  const std::vector<std::string> lines = lines_of(text);
  for (std::size_t i = 0; i + distance < lines.size(); ++i) {
    if (lines[i] == line) return lines[i + distance];
  }
  return {};
}

inline int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

}  // namespace tidearc::test
