// The solvers in blocks: the bits of the core solvers, files that exchange their roles, tails, and the zero pivot.
#include "solve/blocked.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <string>
#include <vector>

#include "matrix_job.h"
#include "model/control.h"
#include "model/nodes.h"
#include "random_matrix.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/factor.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// n equations in `blocks` blocks of nearly equal numbers.
std::vector<int> even_counts(int n, int blocks) {
  std::vector<int> counts;
  for (int b = 0; b < blocks; ++b) counts.push_back((b + 1) * n / blocks - b * n / blocks);
  return counts;
}

std::vector<double> ramp(int n) {
  std::vector<double> loads;
  for (int e = 1; e <= n; ++e) loads.push_back(std::sin(0.7 * e));
  return loads;
}

// Prescribed at both ends and inside.
std::vector<int> some_prescribed(int n) {
  std::vector<int> status(at(n), 0);
  for (const int e : {1, 2, n / 3, n / 3 + 1, n / 3 + 2, n / 2, n - 1, n}) status[at(e - 1)] = 1;
  return status;
}

class Blocked : public testing::TestWithParam<bool> {
 protected:
  bool symmetric() const { return GetParam(); }
  RandomMatrix random_matrix(Random& random, int n, int tallest) const {
    RandomMatrix made(random, n, tallest, symmetric(), Stable::dominant, 0.3);
    made.change(random, 1);
    return made;
  }
  MatrixJob job;
};

TEST_P(Blocked, HasTheBitsOfTheCoreForOneToTwentyBlocks) {
  Random random(21);
  for (const int tallest : {8, 60, 300}) {
    const RandomMatrix made = random_matrix(random, 300, tallest);
    const std::vector<double> loads = ramp(300);
    for (const std::vector<int>& status : {std::vector<int>(300, 0), some_prescribed(300)}) {
      std::vector<double> factor, x;
      for (int blocks = 1; blocks <= 20; ++blocks) {
        job.lay_out(made.matrix(), even_counts(300, blocks));
        job.set_status(status);
        job.reduce(1, 1);
        if (blocks == 1) {
          factor = job.factor();
          x = job.solve(loads);
          continue;
        }
        EXPECT_TRUE(same_bits(job.factor(), factor)) << blocks << " blocks, heights to " << tallest;
        EXPECT_TRUE(same_bits(job.solve(loads), x)) << blocks << " blocks, heights to " << tallest;
      }
    }
  }
}

TEST_P(Blocked, RepeatedTailsOnRealFilesHaveTheBitsOfTheCore) {
  Random random(22);
  constexpr int n = 120;
  RandomMatrix made = random_matrix(random, n, 40);
  std::vector<TestMatrix> values{made.matrix()};
  const std::vector<int> tails{90, 1, 61, 120, 40, 41, 80, 2, 119};
  for (const int tail : tails) {
    made.change(random, tail);
    values.push_back(made.matrix());
  }
  std::vector<std::vector<double>> expected;
  job.lay_out(values[0], {n});
  job.reduce(1, 1);
  for (std::size_t i = 0; i < tails.size(); ++i) {
    job.assemble(values[i + 1]);
    job.reduce(tails[i], tails[i]);
    expected.push_back(job.factor());
    expected.push_back(job.solve(ramp(n)));
  }
  keep_scratch_in_memory(false);
  job.lay_out(values[0], even_counts(n, 3));  // equations 1..40, 41..80, 81..120
  job.reduce(1, 1);
  for (std::size_t i = 0; i < tails.size(); ++i) {
    job.assemble(values[i + 1]);
    job.reduce(tails[i], tails[i]);
    EXPECT_TRUE(same_bits(job.factor(), expected[2 * i])) << "factor after tail " << i;
    EXPECT_TRUE(same_bits(job.solve(ramp(n)), expected[2 * i + 1])) << "solution after tail " << i;
    EXPECT_TRUE(same_bits(job.solve(ramp(n)), expected[2 * i + 1])) << "solved again after tail " << i;
  }
}

TEST_P(Blocked, HasTheBitsOfTheCoreWhereverTheLoadsBegin) {
  Random random(25);
  constexpr int n = 24;
  const RandomMatrix made = random_matrix(random, n, 10);
  std::vector<std::vector<double>> found;
  for (const std::vector<int>& counts : {std::vector<int>{n}, {7, 1, 8, 8}}) {
    job.lay_out(made.matrix(), counts);
    job.reduce(1, 1);
    for (int first = 1; first <= n + 1; ++first) {
      std::vector<double> loads(at(n), 0.0);
      for (int e = first; e <= n; ++e) loads[at(e - 1)] = 1.0 + 0.1 * e;
      found.push_back(job.solve(loads));
    }
  }
  for (std::size_t i = 0; i <= n; ++i) EXPECT_TRUE(same_bits(found[i], found[i + n + 1])) << "loads from " << i + 1;
}

TEST_P(Blocked, FilesExchangeRolesAtEachReductionAndNotAtASolve) {
  Random random(23);
  const RandomMatrix made = random_matrix(random, 30, 8);
  job.lay_out(made.matrix(), {10, 10, 10});
  const auto roles = [] { return std::vector<int>{units.NT4, units.NT6, units.NT7, units.NT8}; };
  const std::vector<int> before = roles();  // the assembly has exchanged NT3 and NT7
  job.reduce(1, 1);
  EXPECT_EQ(roles(), symmetric() ? (std::vector<int>{before[3], before[1], before[2], before[0]})
                                 : (std::vector<int>{before[2], before[3], before[0], before[1]}));
  const std::vector<int> reduced = roles();
  job.solve(ramp(30));
  EXPECT_EQ(roles(), reduced);
  job.reduce(25, 25);
  EXPECT_EQ(roles(), before);
}

TEST_P(Blocked, FactorFileStandsAtItsStartAfterASolve) {
  Random random(24);
  const RandomMatrix made = random_matrix(random, 30, 8);
  job.lay_out(made.matrix(), {10, 10, 10});
  job.reduce(1, 1);
  const double first = job.factor()[0];
  job.solve(ramp(30));
  double value = 0.0;
  FILE(units.NT4, "READ", ITWO, &value);
  EXPECT_EQ(value, first);
}

// A tail from equation 5 in blocks of ten, where column 15 reaches row 7: rows 7 to 10 of that column belong to the
// tail although they stand above its block.
class TailAcrossBlocks : public Blocked {
 protected:
  static constexpr int n = 20;
  static constexpr int tail = 5;
  TailAcrossBlocks() {
    ProfileSystem profile;
    profile.n = n;
    int address = 0;
    for (int c = 1; c <= n; ++c) profile.IDIAG.push_back(address += c == 15 ? 9 : std::min(c, 3));
    profile.A.assign(at(address), 0.0);
    for (int c = 1; c <= n; ++c) {
      for (int r = profile.top(c); r <= c; ++r) profile.entry(r, c) = r == c ? 20.0 + c : 1.0 + 0.1 * r;
    }
    old_values.upper = profile;
    if (!symmetric()) old_values.lower = profile.A;
    new_values = old_values;
    for (std::vector<double>* values : {&new_values.upper.A, &new_values.lower}) {
      for (int c = tail; c <= n && !values->empty(); ++c) {
        for (int r = std::max(tail, profile.top(c)); r <= c; ++r) {
          (*values)[at(profile.IDIAG[at(c - 1)] + r - c - 1)] += r == c ? 3.0 : 0.5;
        }
      }
    }
  }
  TestMatrix old_values, new_values;
};

TEST_P(TailAcrossBlocks, TakesAllRowsOfTheTailIntoTheFactor) {
  const std::vector<int> all_free(n, 0);
  job.lay_out(old_values, {10, 10});
  job.reduce(1, 1);
  job.assemble(new_values);
  job.reduce(tail, tail);
  const std::vector<double> x = job.solve(ramp(n));
  const std::vector<double> factor = job.factor();
  EXPECT_LT(scaled_residual(new_values, all_free, ramp(n), x), residual_limit);
  job.lay_out(old_values, {n});
  job.reduce(1, 1);
  job.assemble(new_values);
  job.reduce(tail, tail);
  EXPECT_TRUE(same_bits(job.factor(), factor));
  EXPECT_TRUE(same_bits(job.solve(ramp(n)), x));
}

// Why: were only rows from the block's own first equation taken, rows 7 to 10 of column 15 would keep values that have
// been reduced and divided, and would be reduced and divided once more.
TEST_P(TailAcrossBlocks, WithTheBlocksOwnRowsOnlyWouldReduceRowsTwice) {
  const std::vector<int> all_free(n, 0);
  job.lay_out(old_values, {n});
  job.reduce(1, 1);
  const std::vector<double> final = job.factor();
  TestMatrix told = new_values;
  const std::size_t length = told.upper.A.size();
  for (int r = 7; r <= 10; ++r) {
    const std::size_t a = at(told.upper.IDIAG[14] + r - 15 - 1);
    told.upper.A[a] = final[a];
    if (!symmetric()) told.lower[a] = final[length + a];
  }
  job.assemble(told);
  job.reduce(tail, tail);
  EXPECT_GT(scaled_residual(new_values, all_free, ramp(n), job.solve(ramp(n))), 1e6);
}

INSTANTIATE_TEST_SUITE_P(Scheme, Blocked, testing::Bool(),
                         [](const auto& scheme) { return scheme.param ? "Symmetric" : "Unsymmetric"; });
INSTANTIATE_TEST_SUITE_P(Scheme, TailAcrossBlocks, testing::Bool(),
                         [](const auto& scheme) { return scheme.param ? "Symmetric" : "Unsymmetric"; });

std::vector<int> reach_marks() {
  const Integers flags = pool.integers(solver.BLKFLG, solver.NBLOCK);
  return {flags.begin(), flags.end()};
}

// Twelve equations in blocks of four; columns of height 2 reach one row into the block before.
TestMatrix tridiagonal(int n) {
  TestMatrix matrix;
  matrix.upper.n = n;
  for (int c = 1; c <= n; ++c) matrix.upper.IDIAG.push_back(2 * c - 1);
  matrix.upper.A.assign(at(2 * n - 1), -1.0);
  for (int c = 1; c <= n; ++c) matrix.upper.entry(c, c) = 4.0;
  return matrix;
}

TEST(BlockMarks, NameTheBlocksThatPrescribedEquationsReach) {
  MatrixJob job;
  const auto marks = [&](int prescribed_equation) {
    std::vector<int> status(12, 0);
    if (prescribed_equation > 0) status[at(prescribed_equation - 1)] = 1;
    job.lay_out(tridiagonal(12), {4, 4, 4});
    job.set_status(status);
    job.reduce(1, 1);
    return reach_marks();
  };
  EXPECT_EQ(marks(0), (std::vector<int>{0, 0, 0}));
  EXPECT_EQ(marks(1), (std::vector<int>{1, 0, 0}));
  EXPECT_EQ(marks(3), (std::vector<int>{1, 0, 0}));
  EXPECT_EQ(marks(4), (std::vector<int>{1, 1, 0})) << "column 5 reaches row 4";
  EXPECT_EQ(marks(8), (std::vector<int>{0, 1, 1}));
  EXPECT_EQ(marks(12), (std::vector<int>{0, 0, 1}));
}

TEST(BlockMarks, OfBlocksBeforeTheTailStay) {
  MatrixJob job;
  std::vector<int> status(12, 0);
  status[1] = 1;
  job.lay_out(tridiagonal(12), {4, 4, 4});
  job.set_status(status);
  job.reduce(1, 1);
  status[9] = 1;
  job.set_status(status);
  job.reduce(10, 1);
  EXPECT_EQ(reach_marks(), (std::vector<int>{1, 0, 1}));
  std::vector<double> given(12, 1.0);
  EXPECT_LT(scaled_residual(tridiagonal(12), status, given, job.solve(given)), residual_limit);
}

TEST(BlockPivots, StandInTheirVector) {
  MatrixJob job;
  for (const bool symmetric : {true, false}) {
    TestMatrix matrix = tridiagonal(12);
    if (!symmetric) matrix.lower = matrix.upper.A;
    job.lay_out(matrix, {4, 4, 4});
    job.reduce(1, 1);
    // d1 = 4, d2 = 4 - 1/4, d3 = 4 - 1/d2, ..
    double d = 4.0;
    for (int e = 1; e <= 12; ++e) {
      EXPECT_DOUBLE_EQ(equation_vector(arrays.PIVOT)(e), d) << e;
      d = 4.0 - 1.0 / d;
    }
  }
}

class BlockedZeroPivot : public testing::Test {
 protected:
  // Six equations on node 1, six on node 2; equation 8 has no stiffness and carries equation 9.
  BlockedZeroPivot() {
    matrix = tridiagonal(12);
    matrix.upper.entry(7, 8) = 0.0;
    matrix.upper.entry(8, 8) = 0.0;
  }
  void lay_out(const std::vector<int>& counts) {
    job.lay_out(matrix, counts);
    sizes.NUMNP = 2;
    nodes.ID = carve_integers(12);
    for (int e = 0; e < 12; ++e) node_ID()(1 + e / 6, 1 + e % 6) = e + 1;
  }
  MatrixJob job;
  TestMatrix matrix;
};

TEST_F(BlockedZeroPivot, StopsAndNamesItsPositionNodeAndDirection) {
  const std::string row = " " + std::string(130, 'W') + "\n";
  const std::string line =
      "     PROGRAM STOPS BECAUSE ZERO DIAGONAL ENTERY OF THE STIFFNESS MATRIX  IS ENCOUNTERED AT POSITION     8\n";
  std::string expected;
  for (const auto& counts : {std::vector<int>{4, 4, 4}, {8, 4}, {9, 3}}) {  // within a block, and from the next one
    lay_out(counts);
    EXPECT_EQ(stop_of([&] { job.reduce(1, 1); }), 1);
    expected += row + line + row;
    EXPECT_EQ(job.scratch.report(), expected);
  }
  EXPECT_NE(job.scratch.errors().find("equation 8, node 2 direction Y has no stiffness"), std::string::npos)
      << job.scratch.errors();
}

TEST_F(BlockedZeroPivot, OfAnUnsymmetricMatrixIsNotTested) {
  matrix.lower = matrix.upper.A;
  lay_out({4, 4, 4});
  EXPECT_FALSE(stop_of([&] { job.reduce(1, 1); }).has_value());
  EXPECT_FALSE(std::isfinite(job.solve(ramp(12))[8]));
  EXPECT_EQ(job.scratch.report(), "");
}

TEST_F(BlockedZeroPivot, ThatDividesNoRowIsNotSeen) {
  matrix.upper.entry(8, 9) = 0.0;
  matrix.upper.entry(8, 8) = 4.0;
  matrix.upper.entry(12, 12) = 0.25;
  matrix.upper.entry(11, 12) = 1.0;
  matrix.upper.entry(11, 11) = 4.0;
  matrix.upper.entry(10, 11) = 0.0;
  lay_out({4, 4, 4});
  EXPECT_FALSE(stop_of([&] { job.reduce(1, 1); }).has_value()) << "the last pivot is 0.25 - 1/4";
  EXPECT_EQ(equation_vector(arrays.PIVOT)(12), 0.0);
  EXPECT_FALSE(std::isfinite(job.solve(ramp(12))[11]));
}

}  // namespace
}  // namespace tidearc::test
