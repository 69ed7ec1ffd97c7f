// A model of nodes only, laid down in the work array as far as the mass and load sections need it.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "../support/scratch.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc::test {

using Position = std::array<double, 3>;

/// Nodes at the given positions, all components free until fix() or tie(); then number() lays the arrays down.
/// Equations run node by node, component by component. The deck is what the section under test will read.
class LoadModel {
 public:
  LoadModel(const std::string& deck, const std::vector<Position>& positions)
      : scratch(deck), positions_(positions), code_(positions.size()), system_(positions.size(), 0) {
    units = {};
    run = {};
    sizes = {};
    static_loads = {};
    dynamic_loads = {};
    nodes = {};
    masses = {};
    patterns = {};
    storage = {};
    pool.allocate(200000);
    sizes.NUMNP = static_cast<int>(positions.size());
  }

  LoadModel& fix(int node, const std::vector<int>& components) {
    for (const int c : components) code(node, c) = -1;
    return *this;
  }
  /// The component of a node shares the equation of a lower master node.
  LoadModel& tie(int node, int component, int master) {
    code(node, component) = master;
    return *this;
  }
  /// Puts a node in a system of its own, whose local directions are given in the master system.
  LoadModel& turn(int node, const std::array<Position, 3>& directions) {
    axes_.push_back(directions);
    sizes.NCSYS = static_cast<int>(axes_.size());
    system_[static_cast<std::size_t>(node - 1)] = sizes.NCSYS;
    return *this;
  }

  LoadModel& number() {
    lay_nodes_down();
    lay_axes_down();
    number_equations();
    carve_mass_vectors();
    carve_element_vectors();
    return *this;
  }

  Reals vector(int index) const { return pool.reals(index, NEQ1()); }
  double at(int index, int node, int component) const { return vector(index)(equation_of(node, component)); }

  Scratch scratch;

 private:
  int& code(int node, int component) {
    return code_[static_cast<std::size_t>(node - 1)][static_cast<std::size_t>(component - 1)];
  }

  void lay_nodes_down() {
    nodes.ID = carve_integers(6 * sizes.NUMNP);
    nodes.X = carve_reals(sizes.NUMNP);
    nodes.Y = carve_reals(sizes.NUMNP);
    nodes.Z = carve_reals(sizes.NUMNP);
    for (int n = 1; n <= sizes.NUMNP; ++n) {
      const Position& x = positions_[static_cast<std::size_t>(n - 1)];
      pool.reals(nodes.X, sizes.NUMNP)(n) = x[0];
      pool.reals(nodes.Y, sizes.NUMNP)(n) = x[1];
      pool.reals(nodes.Z, sizes.NUMNP)(n) = x[2];
    }
  }

  void lay_axes_down() {
    nodes.ICS = carve_integers(sizes.NCSYS < 1 ? 0 : sizes.NUMNP);
    nodes.AXES = carve_reals(9 * sizes.NCSYS);
    for (int n = 1; n <= sizes.NUMNP && sizes.NCSYS > 0; ++n) {
      pool.integers(nodes.ICS, sizes.NUMNP)(n) = system_[static_cast<std::size_t>(n - 1)];
    }
    for (int s = 1; s <= sizes.NCSYS; ++s) {
      for (int k = 1; k <= 3; ++k) {
        for (int i = 1; i <= 3; ++i) {
          axes_of(s)(i, k) =
              axes_[static_cast<std::size_t>(s - 1)][static_cast<std::size_t>(k - 1)][static_cast<std::size_t>(i - 1)];
        }
      }
    }
  }

  void number_equations() {
    const IntegerTable ID = node_ID();
    for (int n = 1; n <= sizes.NUMNP; ++n) {
      for (int c = 1; c <= 6; ++c) {
        if (code(n, c) == 0) ID(n, c) = ++sizes.NEQ;
        if (code(n, c) > 0) ID(n, c) = ID(code(n, c), c);
      }
    }
    for (int n = 1; n <= sizes.NUMNP; ++n) {
      for (int c = 1; c <= 6; ++c) {
        if (code(n, c) < 0) ID(n, c) = NEQ1();
      }
    }
  }

  std::vector<Position> positions_;
  std::vector<std::array<int, 6>> code_;
  std::vector<int> system_;
  std::vector<std::array<Position, 3>> axes_;
};

/// `n` nodes in a row along X, one length apart.
inline std::vector<Position> row_of_nodes(int n) {
  std::vector<Position> positions;
  for (int i = 0; i < n; ++i) positions.push_back({static_cast<double>(i), 0.0, 0.0});
  return positions;
}

/// A line of the text, trailing blanks aside.
inline bool has_line(const std::string& text, const std::string& line) {
  return ("\n" + trimmed(text)).find("\n" + line + "\n") != std::string::npos;
}

inline int count_of_text(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

}  // namespace tidearc::test
