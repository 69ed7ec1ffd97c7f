// The solver that analyses call: status from prescribed patterns, factorisation, solution, the stop at a zero pivot.
#include "solve/solve.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <initializer_list>
#include <string>
#include <vector>

#include "model/control.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"
#include "solver_fixture.h"

namespace tidearc {
namespace {

using test::set_entry;

constexpr double free_entry = unprescribed;

class Status : public test::SolverProblem {
 protected:
  // Six equations on one node, `prescribed` patterns behind two force patterns.
  void with_patterns(const std::vector<std::vector<double>>& prescribed) {
    number_nodes(1, 6);
    write_patterns(2, prescribed);
    make_full_profile();
  }
  std::vector<int> links() const {
    const Integers v = pool.integers(arrays.MSTAT, sizes.NEQ);
    return {v.begin(), v.end()};
  }
  std::vector<double> imposed() const {
    const Reals v = equation_vector(arrays.XP);
    return {v.begin(), v.end()};
  }
};

TEST_F(Status, IsFreeEverywhereBeforeTheFirstPatterns) {
  with_patterns({});
  EXPECT_EQ(links(), (std::vector<int>{-6, -6, -6, -6, -6, -6}));
  EXPECT_EQ(solver.KSTCHG, 0);
  EXPECT_EQ(solver.KSTEQ, 6);
  EXPECT_FALSE(prescribed(1));
}

TEST_F(Status, OfThePatternsBehindTheForcePatternsIsLinked) {
  with_patterns({{free_entry, free_entry, 0.5, 2.0, free_entry, free_entry}});
  PRESTAT(std::array{3.0});
  EXPECT_EQ(links(), (std::vector<int>{-2, -2, 5, 5, -6, -6}));
  EXPECT_EQ(imposed(), (std::vector<double>{0, 0, 1.5, 6, 0, 0, 0}));
  EXPECT_EQ(solver.KSTCHG, 1);
  EXPECT_EQ(solver.KSTEQ, 3);
  EXPECT_TRUE(prescribed(3));
  EXPECT_FALSE(prescribed(2));
  EXPECT_FALSE(prescribed(7));
  EXPECT_FALSE(prescribed(0));
}

TEST_F(Status, ImposedValuesAddOverThePatternsThatHoldAnEquation) {
  with_patterns({{1.0, free_entry, 2.0, free_entry, free_entry, free_entry},
                 {free_entry, free_entry, 5.0, 7.0, free_entry, free_entry}});
  PRESTAT(std::array{2.0, -1.0});
  EXPECT_EQ(imposed(), (std::vector<double>{2, 0, -1, -7, 0, 0, 0}));
  PRESTAT(std::array{1.0, 0.0});  // restarts from 0
  EXPECT_EQ(imposed(), (std::vector<double>{1, 0, 2, 0, 0, 0, 0}));
}

// Equations that records move, or a control of another kind: prescribed, and no pattern's factor acts on them.
TEST_F(Status, OfMovedEquationsIsPrescribedWithoutAnImposedValue) {
  with_patterns({{free_entry, free_entry, 0.5, 2.0, free_entry, free_entry}});
  PRESTAT({}, std::array{1, 4, 6});
  EXPECT_EQ(links(), (std::vector<int>{2, -2, 5, 5, -5, 7}));
  EXPECT_EQ(imposed(), (std::vector<double>{0, 0, 0, 0, 0, 0, 0}));
  EXPECT_EQ(solver.KSTCHG, 1);
  EXPECT_EQ(solver.KSTEQ, 1);
  PRESTAT(std::array{3.0}, std::array{4});
  EXPECT_EQ(links(), (std::vector<int>{-2, -2, 5, 5, -6, -6})) << "those of the call before are free again";
  EXPECT_EQ(imposed(), (std::vector<double>{0, 0, 1.5, 6, 0, 0, 0}));
}

TEST_F(Status, MovedEquationsOutsideTheModelAreIgnored) {
  with_patterns({});
  PRESTAT({}, std::array{0, 7, -2, 8});
  EXPECT_EQ(links(), (std::vector<int>{-6, -6, -6, -6, -6, -6}));
  EXPECT_EQ(solver.KSTCHG, 0);
}

TEST_F(Status, APatternWithFactorZeroHoldsItsEquationsWhereTheyStand) {
  with_patterns({{free_entry, 4.0, free_entry, free_entry, free_entry, free_entry}});
  PRESTAT(std::array{0.0});
  EXPECT_TRUE(prescribed(2));
  EXPECT_EQ(imposed()[1], 0.0);
  EXPECT_EQ(solver.KSTCHG, 1);
}

TEST_F(Status, AnEntryOfZeroIsHeldAndOnlyTheExactMarkIsFree) {
  with_patterns({{0.0, free_entry, 0.99999999E10, free_entry, -1.0E10, free_entry}});
  PRESTAT(std::array{1.0});
  EXPECT_TRUE(prescribed(1));
  EXPECT_FALSE(prescribed(2));
  EXPECT_TRUE(prescribed(3));
  EXPECT_TRUE(prescribed(5));
}

TEST_F(Status, WithoutAGivenFactorCountsAsFactorZero) {
  with_patterns({{1.0, free_entry, free_entry, free_entry, free_entry, free_entry}});
  PRESTAT({});
  EXPECT_TRUE(prescribed(1));
  EXPECT_EQ(imposed()[0], 0.0);
}

TEST_F(Status, StaysPendingUntilAFactorisationTookIt) {
  with_patterns({{free_entry, 1.0, free_entry, free_entry, free_entry, free_entry}});
  for (int e = 1; e <= 6; ++e) set_entry(e, e, 2.0);
  PRESTAT(std::array{1.0});
  PRESTAT(std::array{1.0});
  EXPECT_EQ(solver.KSTCHG, 1) << "the factor does not know the new status yet";
  EXPECT_EQ(solver.KSTEQ, 2);
  solver.KFIRST = solver.KROW0 = 1;
  factorise();
  PRESTAT(std::array{5.0});
  EXPECT_EQ(solver.KSTCHG, 0);
  EXPECT_EQ(solver.KSTEQ, 6);
  reset_status();
  EXPECT_EQ(solver.KSTCHG, 1);
  EXPECT_EQ(solver.KSTEQ, 2);
}

class Solver : public test::SolverProblem {
 protected:
  // Two springs in a row on a wall, node 1 between them: [[3, -1], [-1, 1]].
  void two_springs() {
    number_nodes(1, 2);
    make_full_profile();
    set_entry(1, 1, 3.0);
    set_entry(1, 2, -1.0);
    set_entry(2, 2, 1.0);
    solver.KFIRST = solver.KROW0 = 1;
  }
  Reals loads(std::initializer_list<double> values) {
    const Reals RU = equation_vector(arrays.RU);
    std::copy(values.begin(), values.end(), RU.begin());
    return RU;
  }
};

TEST_F(Solver, GivesTheDisplacementsOfTwoSprings) {
  two_springs();
  factorise();
  const Reals RU = loads({0.0, 2.0, 99.0});
  SOLVE(arrays.RU);
  // Flexibility of springs 2 and 1 in series: 2/2 and 2/2 + 2/1.
  EXPECT_DOUBLE_EQ(RU(1), 1.0);
  EXPECT_DOUBLE_EQ(RU(2), 3.0);
  EXPECT_EQ(RU(3), 0.0) << "the sink of constrained components";
}

TEST_F(Solver, LeavesTheAssembledMatrixAsItIs) {
  two_springs();
  factorise();
  const Reals KASM = pool.reals(solver.KASM, 3);
  EXPECT_EQ(std::vector<double>(KASM.begin(), KASM.end()), (std::vector<double>{3, -1, 1}));
}

TEST_F(Solver, ReducesAndSolvesInOneCall) {
  two_springs();
  const Reals KASM = pool.reals(solver.KASM, 3);
  std::copy(KASM.begin(), KASM.end(), pool.reals(solver.KFAC, 3).begin());
  const Reals RU = loads({1.0, 0.0});
  SOLVIS(arrays.RU, reduce_and_solve);
  EXPECT_DOUBLE_EQ(RU(1), 0.5);
  EXPECT_DOUBLE_EQ(RU(2), 0.5);
}

TEST_F(Solver, MovesFreeEquationsWithPrescribedOnes) {
  number_nodes(1, 2);
  write_patterns(0, {{free_entry, 1.0}});
  make_full_profile();
  set_entry(1, 1, 3.0);
  set_entry(1, 2, -1.0);
  set_entry(2, 2, 1.0);
  PRESTAT(std::array{1.0});
  solver.KFIRST = solver.KROW0 = 1;
  factorise();
  const Reals RU = loads({0.0, 6.0});
  SOLVE(arrays.RU);
  EXPECT_EQ(RU(2), 6.0);
  EXPECT_DOUBLE_EQ(RU(1), 2.0);  // 3 u1 = 1 * 6
}

TEST_F(Solver, CountsNegativePivotsOfTheLastFactorisation) {
  two_springs();
  set_entry(2, 2, -1.0);
  factorise();
  EXPECT_EQ(solver.NNEG, 1);
  set_entry(2, 2, 1.0);
  factorise();
  EXPECT_EQ(solver.NNEG, 0);
}

TEST_F(Solver, OfOneEquationDividesByItsPivot) {
  number_nodes(1, 1);
  make_full_profile();
  set_entry(1, 1, 4.0);
  solver.KFIRST = solver.KROW0 = 1;
  factorise();
  const Reals RU = loads({6.0});
  SOLVE(arrays.RU);
  EXPECT_EQ(RU(1), 1.5);
}

TEST_F(Solver, StopsAtAZeroPivotAndNamesItsPlace) {
  number_nodes(2, 9);  // node 1: equations 1..6, node 2: 7..9
  make_full_profile();
  for (int e = 1; e <= 9; ++e) set_entry(e, e, e == 8 ? 0.0 : 2.0);
  set_entry(8, 9, 1.0);
  solver.KFIRST = solver.KROW0 = 1;
  EXPECT_EQ(test::stop_of(factorise), 1);
  const std::string row = " " + std::string(130, 'W') + "\n";
  const std::string line =
      "     PROGRAM STOPS BECAUSE ZERO DIAGONAL ENTERY OF THE STIFFNESS MATRIX  IS ENCOUNTERED AT POSITION    36."
      " CHECK D.O.F.     8\n";
  EXPECT_EQ(scratch.report(), row + line + row);
  EXPECT_NE(scratch.errors().find("zero pivot at address 36 of the stiffness matrix: equation 8, node 2 direction Y"),
            std::string::npos)
      << scratch.errors();
}

TEST_F(Solver, NamesTheFirstNodeThatHoldsASharedEquation) {
  number_nodes(3, 12);
  node_ID()(2, 6) = 5;  // node 2 ZR is tied to node 1 YR
  EXPECT_EQ(holder_of(5).node, 1);
  EXPECT_EQ(holder_of(5).component, 5);
  EXPECT_STREQ(direction_name(5), "YR");
  EXPECT_EQ(holder_of(12).node, 0) << "no node holds it";
  EXPECT_STREQ(direction_name(0), "none");
}

}  // namespace
}  // namespace tidearc
