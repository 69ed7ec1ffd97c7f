#include "lattice.h"

#include "../support/element_model.h"
#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"
#include "elements/contract/work.h"
#include "fake_types.h"
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

namespace {

void turn_first_node() {
  pool.integers(nodes.ICS, sizes.NUMNP)(1) = 1;
  const RealTable axes = axes_of(1);
  axes(2, 1) = 1.0;
  axes(1, 2) = -1.0;
  axes(3, 3) = 1.0;
}

}  // namespace

void EveryScheme::SetUp() { Line::scheme = GetParam(); }
void EveryScheme::TearDown() { Line::scheme = Scheme::core; }

std::string scheme_name(const testing::TestParamInfo<Scheme>& info) {
  constexpr const char* names[] = {"core", "stream", "disk"};
  return names[static_cast<int>(info.param)];
}

std::vector<std::vector<Word>> records_at_hand() {
  std::vector<std::vector<Word>> records;
  for_each_element(Pass::reading, [&](const ElementType&, const Word* record, int) {
    records.emplace_back(record, record + group.LEI);
  });
  return records;
}

Line::Line(int node_count, const std::string& cards, int groups, bool turned, int pool_words) : scratch_(cards) {
  reset_model();
  calls.clear();
  factors.clear();
  solver.KSTOR = scheme == Scheme::core ? 1 : 2;
  keep_scratch_in_memory(scheme != Scheme::disk);
  pool.allocate(pool_words);
  sizes.NUMNP = node_count;
  sizes.NELGR = groups;
  sizes.NCSYS = turned ? 1 : 0;
  sizes.NEQ = 3 * (node_count - 1);
  nodes.ID = carve_integers(6 * node_count);
  nodes.X = carve_reals(node_count);
  nodes.Y = carve_reals(node_count);
  nodes.Z = carve_reals(node_count);
  nodes.ICS = carve_integers(turned ? node_count : 0);
  nodes.AXES = carve_reals(turned ? 9 : 0);
  for (int n = 1; n <= node_count; ++n) {
    pool.reals(nodes.X, node_count)(n) = n;
    for (int c = 1; c <= 6; ++c) node_ID()(n, c) = n < node_count && c <= 3 ? 3 * (n - 1) + c : NEQ1();
  }
  if (turned) turn_first_node();
  carve_mass_vectors();
  carve_element_vectors();
}

Line::~Line() { reset_model(); }

void Line::lay_down_arrays() {
  carve_analysis_arrays();
  storage.KEDAT = storage.NEXT;
}

void Line::build() {
  ELDATA();
  lay_down_arrays();
  LODELM();
  calls.clear();
}

void Line::displace(int node, int component, double value) const {
  equation_vector(arrays.U)(equation_of(node, component)) = value;
}
double Line::force(int node, int component) const { return equation_vector(arrays.R)(equation_of(node, component)); }

void Line::update_state() const {
  for (int e = 1; e <= sizes.NEQ; ++e) equation_vector(arrays.U0)(e) = equation_vector(arrays.U)(e);
  take_over_states();
}

std::string group_card(int ITYPE, int NUMEL, int NFIRST, const std::string& title) {
  return format("3I5,2F10.2,5X,A40", ITYPE, NUMEL, NFIRST, 0.5, 0.25, title) + "\n";
}
std::string undamped_group_card(int ITYPE, int NUMEL, int NFIRST) { return format("3I5", ITYPE, NUMEL, NFIRST) + "\n"; }
std::string node_card(int node) { return format("I5", node) + "\n"; }
std::string spring_card(int number, int I, int J, double stiffness) {
  return format("3I5,F10.2", number, I, J, stiffness) + "\n";
}

}  // namespace tidearc::test
