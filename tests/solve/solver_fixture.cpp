// A problem without elements for the tests of the solver.
#include "solver_fixture.h"

#include <array>

#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/profile.h"
#include "solve/solver.h"

namespace tidearc::test {

namespace {
constexpr int pool_words = 200000;

void reset_blocks() {
  sizes = {};
  static_loads = {};
  output = {};
  nodes = {};
  masses = {};
  patterns = {};
  solver = {};
  arrays = {};
  storage = {};
}
}  // namespace

SolverProblem::SolverProblem() {
  reset_blocks();
  keep_scratch_in_memory(true);
  open_tape(units.NT10, "TAP16", true);
  pool.allocate(pool_words);
}

SolverProblem::~SolverProblem() {
  close_tape(units.NT10, true);
  pool.release();
  reset_blocks();
}

void SolverProblem::number_nodes(int NUMNP, int NEQ) {
  sizes.NUMNP = NUMNP;
  sizes.NEQ = NEQ;
  storage.NEXT = 1;
  nodes.ID = carve_integers(6LL * NUMNP);
  masses.MARKS = carve_integers(NEQ1());
  const IntegerTable ID = node_ID();
  int equation = 0;
  for (int node = 1; node <= NUMNP; ++node) {
    for (int c = 1; c <= 6; ++c) ID(node, c) = equation < NEQ ? ++equation : NEQ1();
  }
}

void SolverProblem::make_full_profile() {
  const Integers marks = pool.integers(masses.MARKS, NEQ1());
  for (int e = 1; e <= NEQ1(); ++e) marks(e) = 1;
  finish_profile();
  carve_analysis_arrays();
  solver.KASM = carve_reals(solver.NSTO);
  solver.KFAC = carve_reals(solver.NSTO);
}

void SolverProblem::write_patterns(int force_patterns, const std::vector<std::vector<double>>& prescribed) {
  FILE(units.NT10, "REWI");
  const int count = 2 * NEQ1();
  for (int p = 1; p <= force_patterns; ++p) {
    const std::array<Word, 12> header{pattern_nodal, count};
    const std::vector<double> loads(static_cast<std::size_t>(NEQ1()), 1.0);
    FILE(units.NT10, "WRIT", 12, static_cast<const void*>(header.data()));
    FILE(units.NT10, "WRIT", count, static_cast<const void*>(loads.data()));
  }
  for (std::size_t p = 0; p < prescribed.size(); ++p) {
    const std::array<Word, 12> header{static_cast<Word>(p + 1), count};
    std::vector<double> entries = prescribed[p];
    entries.resize(static_cast<std::size_t>(NEQ1()), unprescribed);
    FILE(units.NT10, "WRIT", 12, static_cast<const void*>(header.data()));
    FILE(units.NT10, "WRIT", count, static_cast<const void*>(entries.data()));
  }
  static_loads.NFPAT = static_loads.NPAT = static_loads.NMADE = force_patterns;
  static_loads.NZDISP = static_cast<int>(prescribed.size());
}

void set_entry(int i, int j, double value) {
  const int address = pool.integers(solver.IDIAG, NEQ1())(j) + i - j;
  pool.reals(solver.KASM, solver.NSTO)(address) = value;
}

}  // namespace tidearc::test
