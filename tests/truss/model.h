// A small model for tests of the truss: nodes with their free components, and the cards of the element section.
#pragma once

#include <string>
#include <vector>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/truss/record.h"
#include "support/scratch.h"

namespace tidearc::test {

struct ModelNode {
  double x = 0.0, y = 0.0, z = 0.0;
  std::string free = "";  ///< letters X, Y, Z of the translations that are free
  int system = 0;         ///< local system, 0 master
};

/// Cards of a truss group with one material and one section.
struct TrussGroupText {
  double EMOD = 1000.0, ratio = 0.0, tension = 0.0, compression = 0.0, poisson = 0.0, ductility = 0.0;
  double weight = 0.0, mass = 0.0, fluid_weight = 0.0, fluid_mass = 0.0, pressure = 0.0;
  double overshoot_yield = 0.0, overshoot_unload = 0.0;
  double area = 1.0, thickness = 0.0, inside = 0.0, growth = 0.0;
  int ITYPE = 1, NUMEL = 1, NFIRST = 1;
  double BETAO = 0.0, BETAT = 0.0;
  int NGAUSS = 2;
  double water_diameter = 0.0, CD = 0.0, CM = 0.0, CKM = 0.0, CDS = 0.0, Db = 0.0;
  int ICA = 0, JCA = 0;
  std::string general;   ///< cards of load code 7
  std::string elements;  ///< element cards, line by line

  std::string header() const;
  std::string properties() const;
  std::string cards() const { return header() + properties() + elements; }
};
/// One element card with its line end.
struct ElementText {
  int number = 1, I = 1, J = 2, MAT = 0, SEC = 0;
  double force = 0.0;
  int KGEOM = 0, KHIST = 0, KBUCK = 0, KCAT = 0, KWAVE = 0, KBUOY = 0, increment = 0;
  std::string card() const;
};

/// The model in the work array, as the reading of a deck leaves it before element input.
class Model {
 public:
  Model(const std::vector<ModelNode>& model_nodes, const std::string& cards, int groups = 1,
        const std::vector<std::vector<double>>& axes = {}, int pool_words = 400000);
  ~Model();
  /// Element input, the analysis arrays, and the loading of the records.
  void build();
  void lay_down_arrays();

  int equation(int node, int component) const;
  void set_displacement(int node, int component, double value) const;
  double resisting_force(int node, int component) const;
  /// U0 takes U and the reference generation the current one.
  void update_state() const;
  /// The record of a truss in the pool, by its running number.
  TrussRecord record(int running) const;
  std::string report() const { return scratch_.report(); }
  std::string errors() const { return scratch_.errors(); }
  const Scratch& scratch() const { return scratch_; }

 private:
  Scratch scratch_;
};

/// A single bar along X from node 1 (free in X, Y and Z) at x = length to node 2 (held) at the origin: the extension is
/// the displacement of node 1 in X.
std::vector<ModelNode> bar_nodes(double length = 10.0);

}  // namespace tidearc::test
