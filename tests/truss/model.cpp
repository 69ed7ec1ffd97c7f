#include "model.h"

#include <cstring>

#include "../support/element_model.h"
#include "elements/contract/state_log.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {

std::string TrussGroupText::header() const {
  return format("3I5,2F10.4,5X,A8", ITYPE, NUMEL, NFIRST, BETAO, BETAT, "MY GROUP") + "\n";
}

std::string TrussGroupText::properties() const {
  return format("3I5", 1, 1, NGAUSS) + "\n" +
         format("I5,6F10.4,I5", 1, EMOD, ratio, tension, compression, poisson, weight, 0) + "\n" +
         format("5F10.4,I5,2F10.6", mass, fluid_weight, fluid_mass, pressure, ductility, 0, overshoot_yield,
                overshoot_unload) +
         "\n" + format("I5,10F10.5", 1, area, thickness, inside, water_diameter, CD, CM, CKM, CDS, growth, Db) + "\n" +
         format("4F10.4,2I5", 0.0, 0.0, 0.0, 0.0, ICA, JCA) + "\n" + general;
}

std::string ElementText::card() const {
  return format("5I5,F10.4,7I5", number, I, J, MAT, SEC, force, KGEOM, KHIST, KBUCK, KCAT, KWAVE, KBUOY, increment) +
         "\n";
}

namespace {

void place_nodes(const std::vector<ModelNode>& model_nodes) {
  const int n = sizes.NUMNP;
  nodes.ID = carve_integers(6 * n);
  nodes.X = carve_reals(n);
  nodes.Y = carve_reals(n);
  nodes.Z = carve_reals(n);
  nodes.ICS = carve_integers(sizes.NCSYS > 0 ? n : 0);
  nodes.AXES = carve_reals(9 * sizes.NCSYS);
  for (int i = 1; i <= n; ++i) {
    const ModelNode& node = model_nodes[static_cast<std::size_t>(i - 1)];
    pool.reals(nodes.X, n)(i) = node.x;
    pool.reals(nodes.Y, n)(i) = node.y;
    pool.reals(nodes.Z, n)(i) = node.z;
    if (sizes.NCSYS > 0) pool.integers(nodes.ICS, n)(i) = node.system;
  }
}

void number_equations(const std::vector<ModelNode>& model_nodes) {
  const IntegerTable ID = node_ID();
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    for (int c = 1; c <= 3; ++c) {
      const bool free = model_nodes[static_cast<std::size_t>(n - 1)].free.find("XYZ"[c - 1]) != std::string::npos;
      ID(n, c) = free ? ++sizes.NEQ : 0;
    }
  }
  for (int n = 1; n <= sizes.NUMNP; ++n) {
    for (int c = 1; c <= 6; ++c) {
      if (ID(n, c) == 0) ID(n, c) = NEQ1();
    }
  }
}

}  // namespace

Model::Model(const std::vector<ModelNode>& model_nodes, const std::string& cards, int groups,
             const std::vector<std::vector<double>>& axes, int pool_words)
    : scratch_(cards) {
  reset_model();
  pool.allocate(pool_words);
  sizes.NUMNP = static_cast<int>(model_nodes.size());
  sizes.NELGR = groups;
  sizes.NCSYS = static_cast<int>(axes.size());
  place_nodes(model_nodes);
  for (int s = 1; s <= sizes.NCSYS; ++s) {
    std::memcpy(axes_of(s).data(), axes[static_cast<std::size_t>(s - 1)].data(), 9 * sizeof(double));
  }
  number_equations(model_nodes);
  carve_mass_vectors();
  carve_element_vectors();
}

Model::~Model() { reset_model(); }

void Model::lay_down_arrays() {
  carve_analysis_arrays();
  solver.KASM = carve_reals(solver.NSTO);
  solver.KFAC = carve_reals(solver.NSTO);
  storage.KEDAT = storage.NEXT;
}

void Model::build() {
  ELDATA();
  lay_down_arrays();
  LODELM();
}

int Model::equation(int node, int component) const { return equation_of(node, component); }
void Model::set_displacement(int node, int component, double value) const {
  equation_vector(arrays.U)(equation_of(node, component)) = value;
}
double Model::resisting_force(int node, int component) const {
  return equation_vector(arrays.R)(equation_of(node, component));
}

void Model::update_state() const {
  for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U0)(e) = equation_vector(arrays.U)(e);
  take_over_states();
}

TrussRecord Model::record(int running) const {
  TrussRecord truss;
  std::memcpy(&truss, pool.words(storage.KEDAT + 359 * (running - 1), 358), sizeof(truss));
  return truss;
}

std::vector<ModelNode> bar_nodes(double length) { return {{length, 0.0, 0.0, "XYZ"}, {0.0, 0.0, 0.0, ""}}; }

}  // namespace tidearc::test
