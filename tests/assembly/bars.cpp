// Bars between a few nodes.
#include "bars.h"

#include <cstring>
#include <stdexcept>

#include "../support/element_model.h"
#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/blocking.h"
#include "solve/integration.h"
#include "solve/solver.h"
#include "solve/stiffness_area.h"

namespace tidearc::test {

namespace {

constexpr int pool_words = 400000;

std::string group_cards(const std::vector<Bar>& bars) {
  if (bars.empty()) return "";
  std::string cards = format("3I5", 1, static_cast<int>(bars.size()), 1) + "\n" + format("3I5", 1, 1, 0) + "\n";
  cards += format("I5,F10.0", 1, 1000.0) + "\n\n" + format("I5,F10.0", 1, 1.0) + "\n\n";
  int number = 0;
  for (const Bar& bar : bars)
    cards += format("5I5,F10.3,I5", ++number, bar.I, bar.J, 1, 1, bar.force, bar.KGEOM) + "\n";
  return cards;
}

void place_nodes(const std::vector<BarNode>& model_nodes) {
  const int n = sizes.NUMNP = static_cast<int>(model_nodes.size());
  nodes.ID = carve_integers(6LL * n);
  nodes.X = carve_reals(n);
  nodes.Y = carve_reals(n);
  nodes.Z = carve_reals(n);
  const IntegerTable ID = node_ID();
  for (int i = 1; i <= n; ++i) {
    const BarNode& node = model_nodes[static_cast<std::size_t>(i - 1)];
    pool.reals(nodes.X, n)(i) = node.x;
    pool.reals(nodes.Y, n)(i) = node.y;
    pool.reals(nodes.Z, n)(i) = node.z;
    for (int c = 1; c <= 6; ++c)
      ID(i, c) = node.free.find(static_cast<char>('0' + c)) != std::string::npos ? ++sizes.NEQ : 0;
  }
  for (int i = 1; i <= n; ++i) {
    for (int c = 1; c <= 6; ++c) ID(i, c) = ID(i, c) == 0 ? NEQ1() : ID(i, c);
  }
}

/// The record of a block on NT3 that holds column j: 1 the upper one of a block, 2 the lower one. Its reals may begin
/// on an odd word.
const Word* block_of(int j, int triangle) {
  FILE(units.NT3, "REWI");
  int last = 0;
  for (int b = 1; b <= solver.NBLOCK; ++b) {
    last += pool.integers(solver.BLKEQ, MAXBLK)(b);
    for (int t = 1; t <= triangles(); ++t) {
      const Word* A = next_record(units.NT3).data();
      if (j <= last && t == triangle) return A;
    }
  }
  return nullptr;
}
int first_of_block(int j) {
  int first = 1;
  for (int b = 1; b <= solver.NBLOCK; ++b) {
    const int next = first + pool.integers(solver.BLKEQ, MAXBLK)(b);
    if (j < next) break;
    first = next;
  }
  return first;
}
double entry_in_blocks(int triangle, int i, int j) {
  const Integers IDIAG = pool.integers(solver.IDIAG, NEQ1());
  const int address = IDIAG(j) + i - j;
  if (address <= (j == first_of_block(j) ? 0 : IDIAG(j - 1))) return 0.0;
  double value = 0.0;
  std::memcpy(&value, block_of(j, triangle) + 2 * (address - 1), sizeof value);
  return value;
}

double entry(int matrix, int i, int j) {
  const Integers IDIAG = pool.integers(solver.IDIAG, NEQ1());
  const int address = IDIAG(j) + i - j;
  return address <= (j == 1 ? 0 : IDIAG(j - 1)) ? 0.0 : pool.reals(matrix, triangle_length())(address);
}

}  // namespace

BarModel::BarModel(const std::vector<BarNode>& model_nodes, const std::vector<Bar>& bars, int KSTOR, int NWDBLK)
    : BarModel(model_nodes, group_cards(bars), bars.empty() ? 0 : 1, KSTOR, NWDBLK) {}

BarModel::BarModel(const std::vector<BarNode>& model_nodes, const std::string& cards, int groups, int KSTOR, int NWDBLK)
    : scratch_(cards) {
  reset_model();
  solver.KSTOR = KSTOR;
  solver.NWDBLK = NWDBLK;
  keep_scratch_in_memory(!records_on_disk());
  open_formatted(UNIT_PROGRESS, "TAP53", OpenMode::fresh);
  pool.allocate(pool_words);
  sizes.NELGR = groups;
  place_nodes(model_nodes);
  carve_mass_vectors();
  carve_element_vectors();
  ELDATA();
  carve_analysis_arrays();
  if (!carve_stiffness(element_counts.MAXLEI + 1)) throw std::runtime_error("no blocks");
  LODELM();
}

BarModel::~BarModel() { reset_model(); }

double BarModel::stiffness(int i, int j) const {
  if (blocked()) return i <= j ? entry_in_blocks(1, i, j) : entry_in_blocks(triangles(), j, i);
  if (i <= j) return entry(solver.KASM, i, j);
  return entry(solver.KASM + (triangles() - 1) * ITWO * triangle_length(), j, i);
}
double BarModel::factor(int i, int j) const { return entry(solver.KFAC, i, j); }

void BarModel::begin_macro() const {
  solver.KRESET = 1;
  solver.NELCHK = 1;
  solver.KFORM = 0;
}

void BarModel::begin_dynamics(double DT, double AB, double DMASS) const {
  integration = {};
  integration.DT = DT;
  integration.AB = AB;
  integration.DMASS = DMASS;
  INTCON(Constants::computed);
  response.TIME = DT;
  solver.KRESET = 1;
  solver.NELCHK = 1;
  solver.KFORM = 1;
}

void BarModel::put_mass(int equation, double mass) const { pool.reals(masses.AMASS, NEQ1())(equation) = mass; }

}  // namespace tidearc::test
