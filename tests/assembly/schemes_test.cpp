// Assembly on demand in every storage scheme: core and disk, one block and several, one triangle and two.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "assembly/assembly.h"
#include "bars.h"
#include "elements/contract/pass.h"
#include "model/control.h"
#include "model/nodes.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/runs.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {
namespace {

using test::Bar;
using test::BarModel;
using test::BarNode;

struct Scheme {
  int KSTOR;
  int NWDBLK;
  int blocks;  // of the cantilever below
};

// A plane cantilever truss of six bays, its lower chord's free nodes at equations 1 to 12, the upper chord's at 13 to
// 24. The bars from node 4 on have geometric stiffness, so that a move changes their matrices.
std::vector<BarNode> cantilever_nodes() {
  std::vector<BarNode> nodes;
  for (int row = 0; row < 2; ++row) {
    for (int i = 1; i <= 6; ++i) nodes.push_back({10.0 * i, 10.0 * row, 0, "12"});
  }
  nodes.push_back({0, 0, 0, ""});
  nodes.push_back({0, 10, 0, ""});
  return nodes;
}
std::vector<Bar> cantilever_bars() {
  std::vector<Bar> bars{{13, 1}, {14, 7}, {13, 7}};
  for (int i = 1; i <= 6; ++i) {
    const int KGEOM = i >= 4 ? 1 : 0;
    bars.push_back({i, i + 6, 0.0, KGEOM});
    if (i == 6) break;
    bars.push_back({i, i + 1, 0.0, KGEOM});
    bars.push_back({i + 6, i + 7, 0.0, KGEOM});
    bars.push_back({i, i + 7, 0.0, KGEOM});
  }
  return bars;
}
// Heights: 1, 2, then 3 and 4 along the lower chord; 13, 14, then 15 and 16 along the upper. With a slot each, blocks
// of 100 reals end at equations 15, 21 and 24, of 50 at 12, 15, 18, 21 and 24; blocks of 17 take three or four lower
// columns or one upper column.
const std::vector<Scheme> schemes{{1, 0, 1},  {2, 0, 1},  {2, 400, 3},  {2, 200, 5}, {2, 68, 16},
                                  {-1, 0, 1}, {-2, 0, 1}, {-2, 400, 3}, {-2, 68, 16}};

std::vector<double> loaded_displacements() {
  const Reals RU = equation_vector(arrays.RU);
  std::fill(RU.begin(), RU.end(), 0.0);
  RU(24) = -1.0;
  RU(11) = 0.25;
  SOLVE(arrays.RU);
  return {RU.begin(), RU.begin() + sizes.NEQ};
}

/// The outer lower node held at 0.1 in its second direction, by a change of status alone.
std::vector<double> held_displacements() {
  const Integers MSTAT = pool.integers(arrays.MSTAT, NEQ1());
  std::fill(MSTAT.begin(), MSTAT.end(), 0);
  MSTAT(12) = 1;
  link_status(MSTAT, MSTAT, sizes.NEQ);
  solver.KSTCHG = 1;
  solver.KSTEQ = 12;
  STIFUP();
  EXPECT_EQ(solver.KSTCHG, 0);
  EXPECT_EQ(solver.KFIRST, 12);
  EXPECT_EQ(solver.KROW0, 1);
  const Reals RU = equation_vector(arrays.RU);
  std::fill(RU.begin(), RU.end(), 0.0);
  RU(12) = 0.1;
  SOLVE(arrays.RU);
  EXPECT_EQ(RU(12), 0.1);
  return {RU.begin(), RU.begin() + sizes.NEQ};
}

/// What one job of a scheme finds: displacements from the first factor, from an update, from a reset behind it, and
/// with a held node.
struct Answers {
  std::vector<double> first, updated, reset, held;
  int KFIRST = 0, KROW0 = 0;
  double diagonal = 0.0;
};

Answers run_job(const Scheme& scheme) {
  const BarModel model(cantilever_nodes(), cantilever_bars(), scheme.KSTOR, scheme.NWDBLK);
  EXPECT_EQ(solver.NBLOCK, scheme.blocks);
  Answers answers;
  model.begin_macro();
  STIFUP();
  answers.first = loaded_displacements();
  // The outer end moves: bars of the last two bays change.
  equation_vector(arrays.U)(24) = -0.3;
  equation_vector(arrays.U)(11) = 0.2;
  determine_states();
  solver.KFORM = -1;
  STIFUP();
  answers.KFIRST = solver.KFIRST;
  answers.KROW0 = solver.KROW0;
  answers.diagonal = assembled_diagonal(24);
  answers.updated = loaded_displacements();
  solver.KRESET = 1;
  solver.NELCHK = 1;
  STIFUP();
  answers.reset = loaded_displacements();
  answers.held = held_displacements();
  EXPECT_EQ(solver.NSTUPD, 3);
  EXPECT_EQ(solver.NELCHK, 0);
  EXPECT_EQ(solver.KRESET, 0);
  return answers;
}

double largest_difference(const std::vector<double>& a, const std::vector<double>& b) {
  double most = 0.0, size = 0.0;
  for (std::size_t i = 0; i < a.size(); ++i) {
    most = std::max(most, std::abs(a[i] - b[i]));
    size = std::max(size, std::abs(a[i]));
  }
  return most / size;
}

TEST(Schemes, OnDiskGiveTheDigitsOfTheCore) {
  for (const int sign : {1, -1}) {
    const Answers core = run_job({sign, 0, 1});
    for (const Scheme& scheme : schemes) {
      if (scheme.KSTOR != 2 * sign) continue;
      const Answers disk = run_job(scheme);
      EXPECT_EQ(disk.first, core.first) << scheme.KSTOR << " " << scheme.blocks;
      EXPECT_EQ(disk.updated, core.updated) << scheme.KSTOR << " " << scheme.blocks;
      EXPECT_EQ(disk.reset, core.reset) << scheme.KSTOR << " " << scheme.blocks;
      EXPECT_EQ(disk.held, core.held) << scheme.KSTOR << " " << scheme.blocks;
      EXPECT_EQ(disk.diagonal, core.diagonal);
      EXPECT_EQ(disk.KFIRST, core.KFIRST);
      EXPECT_EQ(disk.KROW0, core.KROW0);
    }
  }
}

TEST(Schemes, OfTwoTrianglesAgreeWithTheSymmetric) {
  const Answers symmetric = run_job({1, 0, 1});
  const Answers unsymmetric = run_job({-1, 0, 1});
  // Both lose what the condition of the truss takes from the last digits.
  EXPECT_LT(largest_difference(symmetric.first, unsymmetric.first), 1e-10);
  EXPECT_LT(largest_difference(symmetric.updated, unsymmetric.updated), 1e-10);
  EXPECT_LT(largest_difference(symmetric.held, unsymmetric.held), 1e-10);
}

TEST(Schemes, UpdatedByDifferenceAgreeWithAReset) {
  for (const Scheme& scheme : schemes) {
    const Answers answers = run_job(scheme);
    EXPECT_GT(largest_difference(answers.first, answers.updated), 1e-4) << "the update must matter";
    EXPECT_LT(largest_difference(answers.updated, answers.reset), 1e-10) << scheme.KSTOR << " " << scheme.blocks;
    EXPECT_EQ(answers.KFIRST, 7) << "node 4 is the first that a changed bar ends at";
  }
}

TEST(Schemes, WithoutWorkReturnAtOnce) {
  for (const Scheme& scheme : schemes) {
    const BarModel model(cantilever_nodes(), cantilever_bars(), scheme.KSTOR, scheme.NWDBLK);
    model.begin_macro();
    STIFUP();
    const std::size_t written = model.report_size();
    const UnitBlock before = units;
    STIFUP();
    EXPECT_EQ(model.report_size(), written);
    EXPECT_EQ(units.NT3, before.NT3) << "no block was touched";
    EXPECT_EQ(units.NT4, before.NT4);
    EXPECT_EQ(solver.NSTUPD, 1);
  }
}

// Nodes with free rotations, which no bar stiffens: equations 1 to 3 at node 1 and 5 at node 2. The bar holds 4.
std::vector<BarNode> with_rotations() { return {{0, 0, 0, "456"}, {10, 0, 0, "15"}, {20, 0, 0, ""}}; }
const std::vector<Bar> one_bar{{2, 3}};

int count_of(const std::string& text, const std::string& part) {
  int count = 0;
  for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) ++count;
  return count;
}

TEST(ZeroDiagonal, IsToldByWhatTheSchemeKeepsInCore) {
  const std::string line = "     WWWWW D. O. F.     5 HAS ZERO STIFFNESS WWWWW\n";
  for (const int KSTOR : {1, 2}) {
    const BarModel model(with_rotations(), one_bar, KSTOR);
    model.begin_macro();
    STIFUP();
    EXPECT_EQ(count_of(model.report(), line), 1);
    EXPECT_EQ(count_of(model.progress(), line), 0) << "the progress file is told by unsymmetric jobs";
  }
  for (const int KSTOR : {-1, -2}) {
    const BarModel model(with_rotations(), one_bar, KSTOR);
    model.begin_macro();
    STIFUP();
    EXPECT_EQ(count_of(model.report(), line), 2) << "each triangle by itself";
    EXPECT_EQ(count_of(model.progress(), line), 2);
    EXPECT_EQ(count_of(model.report(), " HAS ZERO STIFFNESS"), 8);
    for (const int e : {1, 2, 3, 5}) EXPECT_EQ(model.stiffness(e, e), 1.0e-8);
  }
}

TEST(ZeroDiagonal, InBlocksIsReplacedAndNotTold) {
  for (const int KSTOR : {2, -2}) {
    const BarModel model(with_rotations(), one_bar, KSTOR, 12);
    ASSERT_GT(solver.NBLOCK, 1);
    model.begin_macro();
    STIFUP();
    EXPECT_EQ(model.report().find("HAS ZERO STIFFNESS"), std::string::npos);
    EXPECT_TRUE(model.progress().empty());
    for (const int e : {1, 2, 3, 5}) EXPECT_EQ(assembled_diagonal(e), 1.0e-8) << e;
    EXPECT_DOUBLE_EQ(assembled_diagonal(4), 100.0);
    EXPECT_NE(model.report().find("     STIFFNESS FORMED\n"), std::string::npos);
  }
}

// As a restep in a later step does it.
TEST(ZeroDiagonal, ComesBackInEverySchemeAfterAResetInALaterStep) {
  for (const auto& [KSTOR, NWDBLK] : {std::pair{1, 0}, std::pair{2, 12}, std::pair{-1, 0}, std::pair{-2, 12}}) {
    const BarModel model(with_rotations(), one_bar, KSTOR, NWDBLK);
    model.begin_macro();
    STIFUP();
    solver.KFORM = -1;
    solver.KRESET = 1;
    solver.NELCHK = 1;
    STIFUP();
    EXPECT_EQ(assembled_diagonal(5), 1.0e-8);
    const Reals RU = equation_vector(arrays.RU);
    std::fill(RU.begin(), RU.end(), 0.0);
    RU(4) = 50.0;
    SOLVE(arrays.RU);
    EXPECT_EQ(RU(4), 0.5) << KSTOR;
    EXPECT_EQ(RU(5), 0.0);
  }
}

// A bar of stiffness 100 along the global X axis to a node whose own axes are turned by 30 degrees about Z.
TEST(SkewNode, TurnsItsMatrixInEveryScheme) {
  const double c = std::cos(std::acos(-1.0) / 6), s = 0.5;
  for (const int KSTOR : {1, -1, 2, -2}) {
    const BarModel model({{10, 0, 0, "12"}, {0, 0, 0, ""}}, {{1, 2}}, KSTOR);
    constexpr int behind_records = 390001;
    sizes.NCSYS = 1;
    nodes.ICS = behind_records;
    nodes.AXES = behind_records + 4;
    pool.integers(nodes.ICS, 2)(1) = 1;
    const RealTable axes = pool.reals(nodes.AXES, 3, 3);
    axes(1, 1) = axes(2, 2) = c;
    axes(2, 1) = s;
    axes(1, 2) = -s;
    axes(3, 3) = 1.0;
    model.begin_macro();
    ASMSTA();
    EXPECT_NEAR(model.stiffness(1, 1), 100 * c * c, 1e-13);
    EXPECT_NEAR(model.stiffness(2, 2), 100 * s * s, 1e-13);
    EXPECT_NEAR(model.stiffness(1, 2), -100 * c * s, 1e-13);
    EXPECT_NEAR(model.stiffness(2, 1), -100 * c * s, 1e-13);
  }
}

TEST(ElementOutsideTheProfile, StopsAnUnsymmetricJobToo) {
  const BarModel model({{10, 0, 0, "1"}, {20, 0, 0, "1"}, {0, 0, 0, ""}}, {{3, 1}, {1, 2}}, -1);
  const Integers IDIAG = pool.integers(solver.IDIAG, 2);
  IDIAG(2) = 2;  // as if the two equations were not joined
  model.begin_macro();
  EXPECT_EQ(test::stop_of(ASMSTA), 1);
  EXPECT_NE(model.report().find("FATAL ERROR DETECTED IN ADDUNS - JOB ABORTED"), std::string::npos);
  EXPECT_NE(model.errors().find("the matrix of element 2 of group 1 reaches outside the profile"), std::string::npos);
}

TEST(FactorOutsideThePool, GivesTheSameDigits) {
  // Enough for the matrix of one block and not for its factor: the job still solves, and nobody is told.
  const Answers core = run_job({1, 0, 1});
  const BarModel model(cantilever_nodes(), cantilever_bars(), 2);
  solver.KFAC = 0;
  model.begin_macro();
  STIFUP();
  EXPECT_EQ(loaded_displacements(), core.first);
  release_outside_factor();
}

}  // namespace
}  // namespace tidearc
