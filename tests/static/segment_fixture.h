// A small model behind the cards of a load segment, and those cards in the making.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "../support/scratch.h"
#include "model/control.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "static/segment.h"

namespace tidearc::test {

/// Three nodes. Node 1 is fixed; nodes 2 and 3 are free in X, Y, Z: equations 1 to 3 and 4 to 6; 7 is the sink.
inline void three_node_model() {
  run = RunBlock{};
  sizes = SizeBlock{};
  static_loads = StaticLoadBlock{};
  output = OutputBlock{};
  storage = StorageBlock{};
  nodes = NodeBlock{};
  patterns = PatternBlock{};
  arrays = ArrayBlock{};
  response = ResponseBlock{};
  segment = SegmentBlock{};
  statics = StaticBlock{};
  pool.allocate(20000);
  sizes.NUMNP = 3;
  sizes.NEQ = 6;
  nodes.ID = carve_integers(6 * sizes.NUMNP);
  nodes.X = carve_reals(sizes.NUMNP);
  nodes.Y = carve_reals(sizes.NUMNP);
  nodes.Z = carve_reals(sizes.NUMNP);
  for (int node = 1; node <= 3; ++node) {
    for (int component = 1; component <= 6; ++component) {
      const bool is_free = node > 1 && component <= 3;
      node_ID()(node, component) = is_free ? 3 * (node - 2) + component : 7;
    }
  }
}

/// The control cards of a segment with the items that its tests change; every other field is blank or harmless.
struct Cards {
  int KSTEP = 1, KNMS = 0, NSVEC = 0, KDIR = 1, NSTEPS = 1, KEVENT = 0, KITER = 1, KIPAR = 0, MAXIT = 10, KTERM = 1;
  double SEGVAL = 0.0, STEP0 = 1.0, FQUIT = 0.0;
  std::string vectors;
  int KSSTF = 1, KISTF = 1, KBFGS = 0, KISTA = 0;
  double ARCL = 0.0, STEPSZI = 0.0;
  double TOLU = 0.5, TOLL = 0.0;
  int NLS = 0, NTOP = 0;
  std::string restep;                          ///< card 4 with its line end
  std::string participation = "\n\n\n\n\n\n";  ///< one card per group

  std::string solution_card() const {
    return format("2I5,F10.5,2I5,F10.5,6I5,F10.5", KSTEP, KNMS, SEGVAL, NSVEC, KDIR, STEP0, NSTEPS, KEVENT, KITER,
                  KIPAR, MAXIT, KTERM, FQUIT) +
           "\n";
  }
  std::string control_card() const {
    return format("9I5,F10.5,I5,I5,2F10.5", KSSTF, KISTF, KBFGS, KISTA, 0, 0, 0, 0, 0, 0.0, 0, 0, ARCL, STEPSZI) + "\n";
  }
  std::string convergence_card() const {
    return format("2I5,3F10.5,I5,3F10.5,I5", 0, 0, TOLU, TOLL, 0.0, NLS, 0.0, 0.0, 0.0, NTOP) + "\n";
  }
  std::string text() const {
    return solution_card() + vectors + control_card() + convergence_card() + restep + participation;
  }
};

/// Number of lines of a text that equal `line`.
inline int count_line(const std::string& text, const std::string& line) {
  int count = 0;
  for (const std::string& each : lines_of(text)) count += each == line ? 1 : 0;
  return count;
}
inline bool has_line(const std::string& text, const std::string& line) { return count_line(text, line) > 0; }

/// True when the lines stand in the text one behind another, with nothing between.
inline bool has_block(const std::string& text, const std::vector<std::string>& block) {
  const std::vector<std::string> lines = lines_of(text);
  for (std::size_t i = 0; i + block.size() <= lines.size(); ++i) {
    std::size_t k = 0;
    while (k < block.size() && lines[i + k] == block[k]) ++k;
    if (k == block.size()) return true;
  }
  return false;
}

inline const std::string row_of_W = " " + std::string(130, 'W');
inline const std::string row_of_F = " " + std::string(130, 'F');

/// The next card of the deck, to see where reading stands.
inline std::string next_card() {
  std::string line;
  return next_line(units.NDIN, line) ? line : "END OF DECK";
}

/// Reads a segment from a deck of its own, in front of the three node model.
class SegmentRun {
 public:
  explicit SegmentRun(const std::string& deck) : scratch(deck) {
    three_node_model();
    carve_analysis_arrays();
    segment.NSEG = 1;
    segment.ISEG = 1;
  }
  Scratch scratch;
};

/// Reads a segment in data check mode.
inline std::string echo_of(const Cards& cards) {
  SegmentRun deck(cards.text() + "NEXT\n");
  run.RUNMOD = 1;
  SEGIN();
  EXPECT_EQ(next_card(), "NEXT");
  return deck.scratch.report();
}

}  // namespace tidearc::test
