// The solver that analyses call, in each of the four storage schemes: what it selects, what it counts, where the factor
// and the assembled diagonal stand, and prescribed equations that change between reductions.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "matrix_job.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/patterns.h"
#include "random_matrix.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/profile.h"
#include "solve/solve.h"
#include "solve/solver.h"
#include "solve/stiffness_area.h"
#include "solver_fixture.h"

namespace tidearc::test {
namespace {

constexpr int n = 12;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

// Twelve equations of two nodes, each connected to the three before it, in blocks of a few equations in disk schemes.
class Schemes : public SolverProblem, public testing::WithParamInterface<int> {
 protected:
  ~Schemes() override {
    for (const int unit : {3, 4, 8, 13, 14}) close_tape(unit, true);
    units = {};
  }

  void lay_out() {
    solver.KSTOR = GetParam();
    const Integers marks = pool.integers(masses.MARKS, NEQ1());
    for (int e = 1; e <= NEQ1(); ++e) marks(e) = std::max(1, e - 3);
    finish_profile();
    const Integers addresses = pool.integers(solver.IDIAG, n);
    matrix_.upper.n = n;
    matrix_.upper.IDIAG.assign(addresses.begin(), addresses.end());
    matrix_.upper.A.assign(at(solver.NSTO), 0.0);
    for (int c = 1; c <= n; ++c) {
      for (int r = matrix_.upper.top(c); r <= c; ++r) matrix_.upper.entry(r, c) = r == c ? 10.0 + c : -1.0;
    }
    if (GetParam() < 0) {
      for (const double value : matrix_.upper.A) matrix_.lower.push_back(value < 0.0 ? -2.0 : value);
    }
    carve_analysis_arrays();
    solver.NWDBLK = 80;
    ASSERT_TRUE(carve_stiffness(0));
    if (records_on_disk()) {
      write_blocks();
    } else {
      write_matrix();
    }
  }
  void write_matrix() {
    const Reals KASM = pool.reals(solver.KASM, solver.NSTO);
    std::copy(matrix_.lower.begin(), matrix_.lower.end(),
              std::copy(matrix_.upper.A.begin(), matrix_.upper.A.end(), KASM.begin()));
  }
  void write_blocks() {
    ASSERT_GT(solver.NBLOCK, 2);
    const Reals record = pool.reals(solver.KASM, solver.MBLOCK);
    FILE(units.NT3, "REWI");
    auto upper = matrix_.upper.A.begin();
    auto lower = matrix_.lower.begin();
    int last = 0;
    for (int b = 1; b <= solver.NBLOCK; ++b) {
      last += pool.integers(solver.BLKEQ, MAXBLK)(b);
      const int length = pool.integers(solver.IDIAG, n)(last);
      std::copy_n(upper, length, record.begin());
      upper += length;
      FILE(units.NT3, "WRIT", ITWO * solver.MBLOCK, record.data());
      if (GetParam() > 0) continue;
      std::copy_n(lower, length, record.begin());
      lower += length;
      FILE(units.NT3, "WRIT", ITWO * solver.MBLOCK, record.data());
    }
  }
  // A pattern that holds the named equations at their numbers.
  static std::vector<double> pattern(const std::vector<int>& equations) {
    std::vector<double> entries(at(n), unprescribed);
    for (const int e : equations) entries[at(e - 1)] = e;
    return entries;
  }
  // One residual with the status at hand, loads of 1 on free equations.
  double residual() {
    const Reals RU = equation_vector(arrays.RU);
    std::vector<int> status;
    for (int e = 1; e <= n; ++e) {
      status.push_back(prescribed(e) ? 1 : 0);
      RU(e) = prescribed(e) ? equation_vector(arrays.XP)(e) : 1.0;
    }
    const std::vector<double> given(RU.begin(), RU.begin() + n);
    RU(NEQ1()) = 99.0;
    SOLVE(arrays.RU);
    EXPECT_EQ(RU(NEQ1()), 0.0) << "the sink of constrained components";
    const std::vector<double> x(RU.begin(), RU.begin() + n);
    for (std::size_t e = 0; e < x.size(); ++e) {
      if (status[e] != 0) {
        EXPECT_EQ(x[e], given[e]);
      }
    }
    return scaled_residual(matrix_, status, given, x);
  }
  // What STIFUP does when only the status has changed.
  static void factorise_changed_status() {
    solver.KFIRST = std::min(n, solver.KSTEQ);
    solver.KROW0 = 1;
    factorise();
  }

  TestMatrix matrix_;
};

TEST_P(Schemes, FollowPrescribedEquationsThatChangeBetweenReductions) {
  number_nodes(2, n);
  write_patterns(1, {pattern({3, 4}), pattern({11})});
  lay_out();
  PRESTAT(std::array{2.0, -1.0});
  solver.KFIRST = solver.KROW0 = 1;
  factorise();
  EXPECT_LT(residual(), residual_limit);
  const std::vector<std::vector<int>> changes{{4, 9}, {4, 9, 10}, {}, {12}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12},
                                              {6}};
  for (const std::vector<int>& equations : changes) {
    write_patterns(1, {pattern(equations)});
    PRESTAT(std::array{0.5});
    EXPECT_EQ(solver.KSTCHG, 1);
    factorise_changed_status();
    EXPECT_LT(residual(), residual_limit) << equations.size() << " prescribed equations";
    PRESTAT(std::array{-3.0});
    EXPECT_EQ(solver.KSTCHG, 0) << "another factor of the same pattern";
    EXPECT_LT(residual(), residual_limit);
  }
}

TEST_P(Schemes, CountNegativePivotsOnlyInCoreAndSymmetric) {
  number_nodes(2, n);
  lay_out();
  solver.NNEG = 7;
  solver.KFIRST = solver.KROW0 = 1;
  factorise();
  EXPECT_EQ(solver.NNEG, GetParam() == 1 ? 0 : 7);
}

TEST_P(Schemes, TellTheAssembledDiagonal) {
  number_nodes(2, n);
  lay_out();
  const Reals DIAG = equation_vector(arrays.DIAG);
  for (int e = 1; e <= n; ++e) DIAG(e) = blocked() ? 10.0 + e : -1.0;  // kept by the assembly of blocks alone
  for (int e = 1; e <= n; ++e) EXPECT_EQ(assembled_diagonal(e), 10.0 + e);
}

INSTANTIATE_TEST_SUITE_P(Code, Schemes, testing::Values(1, 2, -1, -2), [](const auto& scheme) {
  return std::string(std::abs(scheme.param) == 1 ? "Core" : "Blocks") +
         (scheme.param > 0 ? "Symmetric" : "Unsymmetric");
});

// A factor that does not fit in the pool beside its matrix.
TEST(OutsideFactor, HasTheBitsOfAFactorInThePool) {
  MatrixJob job;
  Random random(31);
  for (const bool symmetric : {true, false}) {
    RandomMatrix made(random, 40, 15, symmetric, Stable::dominant, 0.3);
    made.change(random, 1);
    const TestMatrix first = made.matrix();
    made.change(random, 30);
    const std::vector<double> loads(40, 1.0);
    std::vector<std::vector<double>> found;
    for (const bool outside : {false, true}) {
      job.lay_out(first, {40}, outside);
      job.reduce(1, 1);
      job.assemble(made.matrix());
      job.reduce(30, 30);
      found.push_back(job.factor());
      found.push_back(job.solve(loads));
    }
    EXPECT_EQ(found[0], found[2]);
    EXPECT_EQ(found[1], found[3]);
  }
}

TEST(OutsideFactor, BeginsAnewWhenItsSizeChangesOrItWasReleased) {
  MatrixJob job;
  Random random(32);
  for (const int size : {5, 9, 9, 5}) {
    RandomMatrix made(random, size, 4, true, Stable::dominant, 0.0);
    made.change(random, 1);
    job.lay_out(made.matrix(), {size}, true);
    job.reduce(1, 1);
    EXPECT_EQ(factor_values().size(), solver.NSTO);
    const std::vector<double> loads(at(size), 1.0);
    EXPECT_LT(scaled_residual(made.matrix(), std::vector<int>(at(size), 0), loads, job.solve(loads)), residual_limit);
    release_outside_factor();
    EXPECT_EQ(factor_values()(1), 0.0);
  }
}

}  // namespace
}  // namespace tidearc::test
