// Assembly on demand: what is formed, what is refactorised, what is said, on models of a few bars.
#include "assembly/assembly.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "assembly/add.h"
#include "bars.h"
#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "model/control.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc {
namespace {

using test::Bar;
using test::BarModel;
using test::BarNode;

// Three nodes in a row on the X axis at 10 m, free along X, on a wall: E A / L = 100 for each bar.
std::vector<BarNode> chain_nodes() { return {{10, 0, 0, "1"}, {20, 0, 0, "1"}, {30, 0, 0, "1"}, {0, 0, 0, ""}}; }
const std::vector<Bar> chain_bars{{4, 1}, {1, 2}, {2, 3}};

double solve_for(int equation, double load, int wanted) {
  const Reals RU = equation_vector(arrays.RU);
  std::fill(RU.begin(), RU.end(), 0.0);
  RU(equation) = load;
  SOLVE(arrays.RU);
  return RU(wanted);
}

void expect_chain(const BarModel& model) {
  EXPECT_DOUBLE_EQ(model.stiffness(1, 1), 200.0);
  EXPECT_DOUBLE_EQ(model.stiffness(1, 2), -100.0);
  EXPECT_DOUBLE_EQ(model.stiffness(2, 2), 200.0);
  EXPECT_DOUBLE_EQ(model.stiffness(1, 3), 0.0);
  EXPECT_DOUBLE_EQ(model.stiffness(2, 3), -100.0);
  EXPECT_DOUBLE_EQ(model.stiffness(3, 3), 100.0);
}

TEST(FullAssembly, OfAChainOfBarsIsItsSpringMatrix) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  expect_chain(model);
  EXPECT_EQ(solver.KFIRST, 1);
  EXPECT_EQ(solver.NSTUPD, 1);
  EXPECT_EQ(solver.KRESET, 0);
  EXPECT_EQ(solver.NELCHK, 0);
  EXPECT_NE(model.report().find("     STIFFNESS FORMED\n"), std::string::npos);
  EXPECT_NEAR(solve_for(3, 50.0, 3), 1.5, 1e-14);  // three springs of 100 in series
}

TEST(FullAssembly, ClearsWhatStoodBefore) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  model.begin_macro();
  STIFUP();
  expect_chain(model);
  EXPECT_EQ(solver.NSTUPD, 2);
}

TEST(FullAssembly, FormsEveryElementWhateverTheLastChanged) {
  const BarModel model(chain_nodes(), chain_bars);
  solver.KRESET = 1;
  solver.NELCHK = 0;
  STIFUP();
  expect_chain(model);
}

TEST(Assembly, WithoutWorkReturnsAtOnce) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  const std::size_t written = model.report_size();
  pool.reals(solver.KFAC, solver.NSTO)(1) = 12345.0;
  STIFUP();
  EXPECT_EQ(model.factor(1, 1), 12345.0) << "the old factor serves";
  EXPECT_EQ(solver.NSTUPD, 1);
  EXPECT_EQ(model.report_size(), written);
}

// A bar that turns with its geometry: with KGEOM its matrix changes with the axial force, the other bars' do not.
std::vector<Bar> last_bar_moves() { return {{4, 1}, {1, 2}, {2, 3, 0.0, 1}}; }
std::vector<BarNode> chain_in_plane() { return {{10, 0, 0, "1"}, {20, 0, 0, "1"}, {30, 0, 0, "12"}, {0, 0, 0, ""}}; }

TEST(PartialAssembly, AddsTheChangeAndRefactorisesFromTheLowestEquationTouched) {
  const BarModel model(chain_in_plane(), last_bar_moves());
  model.begin_macro();
  STIFUP();
  equation_vector(arrays.U)(3) = 0.01;  // the last bar is stretched: N = 1
  determine_states();
  EXPECT_EQ(solver.NELCHK, 3);
  solver.KFORM = -1;
  STIFUP();
  EXPECT_EQ(solver.KFIRST, 2);
  EXPECT_EQ(solver.KROW0, 2);
  EXPECT_EQ(solver.NSTUPD, 2);
  const std::vector<double> kept(pool.reals(solver.KASM, solver.NSTO).begin(),
                                 pool.reals(solver.KASM, solver.NSTO).end());
  // N / L of the stretched bar beside the stand-in of the first step, which an update by difference keeps. Coordinates
  // near 30 round at 4E-15, which is 4E-13 of the extension.
  EXPECT_NEAR(model.stiffness(4, 4), 1.0 / 10.01 + 1.0e-8, 4e-14);

  solver.KRESET = 1;  // all of it anew gives the same matrix but for that stand-in and the rounding of differences
  STIFUP();
  const Reals anew = pool.reals(solver.KASM, solver.NSTO);
  for (int i = 1; i <= solver.NSTO; ++i) EXPECT_NEAR(kept[static_cast<std::size_t>(i - 1)], anew(i), 1.1e-8);
}

TEST(PartialAssembly, LeavesElementsBehindTheLastChangedAlone) {
  const BarModel model(chain_nodes(), {{4, 1, 0.0, 1}, {1, 2, 0.0, 1}, {2, 3, 0.0, 1}});
  model.begin_macro();
  STIFUP();
  equation_vector(arrays.U)(1) = 0.5;  // bars 1 and 2 change length, both are flagged
  determine_states();
  solver.NELCHK = 1;
  solver.KFORM = -1;
  STIFUP();
  EXPECT_EQ(solver.NELCHK, 0);
  EXPECT_NE(pool.words(storage.KEDAT + 359, 2)[1], 0) << "the second bar still waits to be formed";
}

TEST(PartialAssembly, OfNothingRefactorisesTheLastColumn) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  solver.NELCHK = 3;  // no bar's matrix has changed
  solver.KFORM = -1;
  pool.reals(solver.KFAC, solver.NSTO)(solver.NSTO) = 0.0;
  STIFUP();
  EXPECT_EQ(solver.KFIRST, 3);
  EXPECT_NEAR(solve_for(3, 50.0, 3), 1.5, 1e-14);
}

TEST(StatusChange, AloneRefactorisesWithoutAssembly) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  const std::size_t written = model.report_size();
  const Integers MSTAT = pool.integers(arrays.MSTAT, 3);
  MSTAT(1) = -1;
  MSTAT(2) = 3;  // the second node is held
  MSTAT(3) = -3;
  solver.KSTCHG = 1;
  solver.KSTEQ = 2;
  STIFUP();
  EXPECT_EQ(solver.KFIRST, 2);
  EXPECT_EQ(solver.KROW0, 1);
  EXPECT_EQ(solver.KSTCHG, 0);
  EXPECT_EQ(solver.NSTUPD, 1);
  EXPECT_EQ(model.report_size(), written);
  EXPECT_NEAR(solve_for(3, 50.0, 3), 0.5, 1e-15);   // one bar from the held node
  EXPECT_NEAR(solve_for(1, 50.0, 1), 0.25, 1e-15);  // between two held ends
  EXPECT_NEAR(solve_for(2, 0.3, 1), 0.15, 1e-15);   // the held node moves by 0.3
}

TEST(StatusChange, WithAnAssemblyLowersTheFirstColumn) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  solver.KSTCHG = 1;
  solver.KSTEQ = 2;
  solver.NELCHK = 3;
  solver.KFORM = -1;
  STIFUP();
  EXPECT_EQ(solver.KFIRST, 2);
  EXPECT_EQ(solver.KROW0, 1);
  EXPECT_EQ(solver.NSTUPD, 2);
  EXPECT_EQ(solver.KSTCHG, 0);
}

TEST(FirstColumn, CountsPrescribedEquations) {
  const BarModel model(chain_nodes(), chain_bars);
  const Integers MSTAT = pool.integers(arrays.MSTAT, 3);
  MSTAT(1) = 2;
  model.begin_macro();
  ASMSTA();
  EXPECT_EQ(solver.KFIRST, 1);
}

// Nodes with free rotations, which no bar stiffens: equations 1 to 3 at node 1 and 5 at node 2. The bar holds 4.
std::vector<BarNode> with_rotations() { return {{0, 0, 0, "456"}, {10, 0, 0, "15"}, {20, 0, 0, ""}}; }
const std::vector<Bar> one_bar{{2, 3}};

TEST(ZeroDiagonal, GetsAStandInAndALineInTheFirstStep) {
  const BarModel model(with_rotations(), one_bar);
  model.begin_macro();
  STIFUP();
  for (const int e : {1, 2, 3, 5}) EXPECT_EQ(model.stiffness(e, e), 1.0e-8) << e;
  EXPECT_DOUBLE_EQ(model.stiffness(4, 4), 100.0);
  const std::string report = model.report();
  EXPECT_NE(report.find("     WWWWW D. O. F.     1 HAS ZERO STIFFNESS WWWWW\n"), std::string::npos) << report;
  EXPECT_NE(report.find("     WWWWW D. O. F.     5 HAS ZERO STIFFNESS WWWWW\n"), std::string::npos) << report;
  EXPECT_EQ(report.find("     4 HAS ZERO STIFFNESS"), std::string::npos);
}

TEST(ZeroDiagonal, BelowAllElementsReachesTheFactorToo) {
  const BarModel model(with_rotations(), one_bar);
  model.begin_macro();
  STIFUP();
  // Bars begin at equation 4; a moment on equation 1 must meet the stand-in and not an empty factor.
  EXPECT_DOUBLE_EQ(solve_for(1, 1.0, 1), 1.0e8);
}

TEST(ZeroDiagonal, IsSweptByEveryAssemblyOfTheFirstStep) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  pool.reals(solver.KASM, solver.NSTO)(1) = 0.0;
  solver.NELCHK = 3;  // nothing is reset, and no bar has changed
  ASMSTA();
  EXPECT_EQ(model.stiffness(1, 1), 1.0e-8);
  EXPECT_EQ(solver.KFIRST, 1);
  EXPECT_NE(model.report().find("D. O. F.     1 HAS ZERO STIFFNESS"), std::string::npos);
}

TEST(ZeroDiagonal, IsLeftAloneLaterWithoutAReset) {
  const BarModel model(chain_nodes(), chain_bars);
  model.begin_macro();
  STIFUP();
  pool.reals(solver.KASM, solver.NSTO)(1) = 0.0;
  solver.KFORM = -1;
  solver.NELCHK = 3;
  ASMSTA();
  EXPECT_EQ(model.stiffness(1, 1), 0.0);
  EXPECT_EQ(model.report().find("HAS ZERO STIFFNESS"), std::string::npos);
}

// What a restep in a later step would leave behind if only the first step swept: the matrix is cleared, the elements
// come back, the stand-ins do not.
void assemble_without_sweep() {
  const Reals K = pool.reals(solver.KASM, solver.NSTO);
  std::fill(K.begin(), K.end(), 0.0);
  form_element_matrices(-1, true, 0, [&](const ElementMatrix& element) {
    ADDSYM({element.LM, element.ND}, element.EMAT, {K, pool.integers(solver.IDIAG, NEQ1()), sizes.NEQ});
  });
  solver.KFIRST = solver.KROW0 = 1;
}

TEST(ResetInALaterStep, WithoutASweepGivesNoNumber) {
  const BarModel model(with_rotations(), one_bar);
  model.begin_macro();
  STIFUP();
  assemble_without_sweep();
  factorise();
  EXPECT_TRUE(std::isnan(solve_for(4, 50.0, 5))) << "0/0 at an equation without stiffness";
}

TEST(ResetInALaterStep, WithoutASweepStopsAtTheZeroPivotThatAColumnReaches) {
  // A bar along X whose inner node may move sideways too: the column of the next node reaches that equation.
  const BarModel model({{0, 0, 0, "12"}, {10, 0, 0, "1"}, {-10, 0, 0, ""}}, {{1, 2}, {1, 3}});
  model.begin_macro();
  STIFUP();
  assemble_without_sweep();
  EXPECT_EQ(test::stop_of(factorise), 1);
  EXPECT_NE(model.errors().find("equation 2, node 1 direction Y"), std::string::npos) << model.errors();
}

TEST(ResetInALaterStep, SweepsAgainAndSolves) {
  const BarModel model(with_rotations(), one_bar);
  model.begin_macro();
  STIFUP();
  solver.KFORM = -1;
  solver.KRESET = 1;
  solver.NELCHK = 1;
  STIFUP();
  EXPECT_EQ(model.stiffness(5, 5), 1.0e-8);
  EXPECT_EQ(solve_for(4, 50.0, 5), 0.0);
  EXPECT_EQ(solve_for(4, 50.0, 4), 0.5);
  const std::string line = "D. O. F.     5 HAS ZERO STIFFNESS";
  const std::string report = model.report();
  EXPECT_NE(report.find(line, report.find(line) + 1), std::string::npos) << "the line prints each time";
}

TEST(ModelWithoutElements, IsAllStandIns) {
  const BarModel model({{0, 0, 0, "123"}}, {});
  model.begin_macro();
  STIFUP();
  for (int e = 1; e <= 3; ++e) EXPECT_EQ(solve_for(e, 1.0e-8, e), 1.0);
}

TEST(ElementOutsideTheProfile, StopsTheRunAndIsNamed) {
  const BarModel model(chain_nodes(), chain_bars);
  const Integers IDIAG = pool.integers(solver.IDIAG, 3);
  for (int e = 1; e <= 3; ++e) IDIAG(e) = e;  // as if no equation were joined to another
  model.begin_macro();
  EXPECT_EQ(test::stop_of(ASMSTA), 1);
  EXPECT_NE(model.report().find("FATAL ERROR DETECTED IN ADDSYM - JOB ABORTED"), std::string::npos);
  EXPECT_NE(model.errors().find("outside the profile"), std::string::npos);
}

}  // namespace
}  // namespace tidearc
