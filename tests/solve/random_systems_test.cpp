// Random profile systems over all four solvers, with tails and changes of prescribed equations in between, judged by
// the scaled residual of LAPACK's tests; a matrix in blocks has the bits of the same matrix in core.
//
// Elimination without pivoting is stable only where leading minors stay away from zero. So indefinite matrices are
// built either with a dominant diagonal of both signs or as L D U of bounded triangles and pivots of both signs between
// 0.1 and 10 (random_matrix.h).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "matrix_job.h"
#include "random_matrix.h"

namespace tidearc::test {
namespace {

// Systems of each kind of symmetry. 1100 of each are enough for every size; instrumented, fewer do.
#ifdef TIDEARC_SANITIZED
constexpr int systems = 300;
#elif defined(TIDEARC_CHECK_INDEX)
constexpr int systems = 1100;
#else
constexpr int systems = 50000;
#endif

std::size_t at(int i) { return static_cast<std::size_t>(i); }

bool same_bits(const std::vector<double>& a, const std::vector<double>& b) {
  return a.size() == b.size() && std::memcmp(a.data(), b.data(), a.size() * sizeof(double)) == 0;
}

// First equation whose status differs, n + 1 when none does.
int first_difference(const std::vector<int>& a, const std::vector<int>& b) {
  const auto place = std::mismatch(a.begin(), a.end(), b.begin()).first;
  return static_cast<int>(place - a.begin()) + 1;
}

// Equations of a trial: of ten trials in a row one has 81 to 300, two have 21 to 80, the others up to 20. The strides
// have no divisor in common with the 220, 60 and 20 sizes, so that they come to each of them.
int size_of(int trial) {
  switch (trial % 10) {
    case 0:
      return 81 + trial / 10 * 89 % 220;
    case 3:
    case 7:
      return 21 + (trial / 10 * 2 + trial % 10 / 5) * 23 % 60;
    default:
      return 1 + (trial / 10 * 7 + trial % 10) % 20;
  }
}

// The unsymmetric systems go on where the symmetric ones end.
int trial_of(bool symmetric, int trial) { return symmetric ? trial : systems + trial; }

// A reduction: the values and the status that it finds, and where it begins.
struct Stage {
  TestMatrix matrix;
  std::vector<int> status;
  int KFIRST;
  int KROW0;
};
using History = std::vector<Stage>;

// A matrix of full columns, of low ones, or of heights up to some limit.
RandomMatrix random_matrix(Random& random, int n, bool symmetric, Stable stable) {
  const double negative = random_int(random, 0, 1) == 0 ? 0.0 : 0.4;
  switch (random_int(random, 1, 10)) {
    case 1:
      return {random, n, n, symmetric, stable, negative, n};
    case 2:
      return {random, n, random_int(random, 1, 2), symmetric, stable, negative};
    case 3:
    case 4:
    case 5:
      return {random, n, random_int(random, 1, std::min(n, 25)), symmetric, stable, negative};
    case 6:
    case 7:
      return {random, n, random_int(random, 1, n), symmetric, stable, negative};
    default:
      return {random, n, n, symmetric, stable, negative};
  }
}

// A first reduction and up to three tails of it.
History random_history(Random& random, int n, bool symmetric) {
  const Stable stable = random_int(random, 0, 1) == 0 ? Stable::dominant : Stable::factored;
  RandomMatrix made = random_matrix(random, n, symmetric, stable);
  std::vector<int> status = random_status(random, n, random_int(random, 0, 7));
  made.set_status(status);
  made.change(random, 1);
  History history{{made.matrix(), status, 1, 1}};
  for (int tails = n > 80 ? random_int(random, 0, 1) : random_int(random, 0, 3); tails > 0; --tails) {
    int KFIRST = random_int(random, 1, n);
    int KROW0 = random_int(random, 1, 3) == 1 ? random_int(random, 1, KFIRST) : KFIRST;
    made.change(random, KFIRST);
    if (stable == Stable::dominant && random_int(random, 0, 1) == 0) {
      const std::vector<int> before = std::exchange(status, random_status(random, n, random_int(random, 0, 7)));
      if (const int changed = first_difference(before, status); changed <= n) {
        KFIRST = std::min(KFIRST, changed);
        KROW0 = 1;
      }
    }
    history.push_back({made.matrix(), status, KFIRST, KROW0});
  }
  return history;
}

// A first reduction, and the tail of one that changes all rows from KROW0 on of all columns from KFIRST on: entries
// beside the diagonal shrink and diagonals grow, so that a dominant matrix stays dominant.
History history_of_pair(Random& random, int n, bool symmetric, int KFIRST, int KROW0) {
  RandomMatrix made(random, n, random_int(random, 1, n), symmetric, Stable::dominant, 0.4);
  made.change(random, 1);
  const std::vector<int> status = random_status(random, n, random_int(random, 0, 7));
  TestMatrix after = made.matrix();
  for (int c = KFIRST; c <= n; ++c) {
    for (int r = std::max(KROW0, after.upper.top(c)); r <= c; ++r) {
      const std::size_t a = at(after.upper.IDIAG[at(c - 1)] + r - c - 1);
      after.upper.A[a] *= r == c ? random_real(random, 1.0, 1.5) : random_real(random, -1.0, 1.0);
      if (symmetric) continue;
      after.lower[a] = r == c ? after.upper.A[a] : after.lower[a] * random_real(random, -1.0, 1.0);
    }
  }
  return {{made.matrix(), status, 1, 1}, {after, status, KFIRST, KROW0}};
}

std::vector<double> random_loads(Random& random, int n) {
  const int first_loaded = random_int(random, 1, 3) == 1 ? random_int(random, 1, n) : 1;
  std::vector<double> given(at(n), 0.0);
  for (int e = first_loaded; e <= n; ++e) {
    given[at(e - 1)] = random_int(random, 1, 10) == 1 ? 0.0 : random_real(random, -1.0, 1.0);
  }
  return given;
}

void run_history(MatrixJob& job, const History& history, const std::vector<int>& counts) {
  job.lay_out(history.front().matrix, counts);
  for (const Stage& stage : history) {
    job.assemble(stage.matrix);
    job.set_status(stage.status);
    job.reduce(stage.KFIRST, stage.KROW0);
  }
}

// What a history came to in core.
struct Solved {
  std::vector<double> factor;
  std::vector<double> x;
  double residual = 0.0;
};

Solved solve_in_core(MatrixJob& job, const History& history, const std::vector<double>& given) {
  const Stage& last = history.back();
  run_history(job, history, {last.matrix.n()});
  Solved solved;
  solved.x = job.solve(given);
  solved.factor = job.factor();
  solved.residual = scaled_residual(last.matrix, last.status, given, solved.x);
  EXPECT_LT(solved.residual, residual_limit);
  for (std::size_t e = 0; e < given.size(); ++e) {
    if (last.status[e] != 0) {
      EXPECT_EQ(solved.x[e], given[e]) << "prescribed equation " << e + 1;
    }
  }
  return solved;
}

void expect_in_blocks(MatrixJob& job, const History& history, const std::vector<double>& given,
                      const std::vector<int>& counts, const Solved& core) {
  run_history(job, history, counts);
  EXPECT_TRUE(same_bits(job.factor(), core.factor)) << "factor in " << counts.size() << " blocks";
  EXPECT_TRUE(same_bits(job.solve(given), core.x)) << "solution in " << counts.size() << " blocks";
  EXPECT_TRUE(same_bits(job.solve(given), core.x)) << "solved once more in " << counts.size() << " blocks";
}

// How many systems had what the solvers have to cope with.
struct Coverage {
  int large = 0, full = 0, low = 0, first = 0, last = 0, inside = 0, indefinite = 0, tails = 0;
  std::vector<int> blocks = std::vector<int>(21, 0);

  void count(const History& history, const std::vector<double>& factor) {
    const TestMatrix& matrix = history.back().matrix;
    const std::vector<int>& status = history.back().status;
    const int n = matrix.n();
    if (n <= 20) return;
    const int profile = static_cast<int>(matrix.upper.A.size());
    large += n > 80 ? 1 : 0;
    full += profile == n * (n + 1) / 2 ? 1 : 0;
    low += profile == n ? 1 : 0;
    tails += history.size() > 1 ? 1 : 0;
    first += status.front();
    last += status.back();
    const auto begin = std::find(status.begin(), status.end(), 0);
    const auto run = std::find(begin, status.end(), 1);
    inside += std::find(run, status.end(), 0) != status.end() ? 1 : 0;
    int negative = 0, free = 0;
    for (int e = 1; e <= n; ++e) {
      if (status[at(e - 1)] != 0) continue;
      ++free;
      negative += factor[at(matrix.upper.IDIAG[at(e - 1)] - 1)] < 0.0 ? 1 : 0;
    }
    indefinite += negative > 0 && negative < free ? 1 : 0;
  }

  // Three systems of ten are counted; full and low profiles are a tenth and a twentieth of these.
  void expect_all_kinds() const {
    EXPECT_GE(large, systems / 10);
    for (const int kind : {full, low}) EXPECT_GE(kind, systems / 150);
    for (const int kind : {first, last, inside, indefinite, tails}) EXPECT_GE(kind, systems / 20);
    for (int count = 2; count <= 20; ++count) EXPECT_GT(blocks[at(count)], 0) << count << " blocks";
  }
};

void check_systems(bool symmetric, unsigned seed) {
  Random random(seed);
  MatrixJob job;
  Coverage coverage;
  double worst = 0.0;
  for (int trial = 0; trial < systems; ++trial) {
    const int n = size_of(trial_of(symmetric, trial));
    const History history = random_history(random, n, symmetric);
    const std::vector<double> given = random_loads(random, n);
    const Solved core = solve_in_core(job, history, given);
    worst = std::max(worst, core.residual);
    coverage.count(history, core.factor);
    if (n > 1) {
      const std::vector<int> counts = random_counts(random, n, random_int(random, 2, 20));
      ++coverage.blocks[counts.size()];
      expect_in_blocks(job, history, given, counts, core);
    }
    ASSERT_FALSE(testing::Test::HasFailure()) << "n " << n << " trial " << trial;
  }
  coverage.expect_all_kinds();
  testing::Test::RecordProperty("worst_scaled_residual", std::to_string(worst));
}

TEST(RandomSystems, SymmetricAreSolvedToRoundOffInCoreAndInBlocks) { check_systems(true, 71); }
TEST(RandomSystems, UnsymmetricAreSolvedToRoundOffInCoreAndInBlocks) { check_systems(false, 72); }

#ifndef TIDEARC_SANITIZED
TEST(RandomSystems, HaveEverySizeUpTo300) {
  std::set<int> sizes;
  for (const bool symmetric : {true, false}) {
    for (int trial = 0; trial < systems; ++trial) sizes.insert(size_of(trial_of(symmetric, trial)));
  }
  EXPECT_EQ(sizes.size(), 300U);
  EXPECT_EQ(*sizes.begin(), 1);
  EXPECT_EQ(*sizes.rbegin(), 300);
}
#endif

// All pairs of first column and first row of up to 14 equations, twice, in one block, in three and in one for each
// equation: 3,360 systems of each kind of symmetry.
void check_pairs(bool symmetric, unsigned seed) {
  constexpr int largest = 14;
  Random random(seed);
  MatrixJob job;
  double worst = 0.0;
  for (int n = 1; n <= largest; ++n) {
    for (int k = 0; k < 2 * n * n; ++k) {
      const int KFIRST = 1 + k / 2 / n, KROW0 = 1 + k / 2 % n;
      if (KROW0 > KFIRST) continue;
      const History history = history_of_pair(random, n, symmetric, KFIRST, KROW0);
      const std::vector<double> given = random_loads(random, n);
      const Solved core = solve_in_core(job, history, given);
      worst = std::max(worst, core.residual);
      for (const int blocks : {3, 20}) {
        if (n > 1) expect_in_blocks(job, history, given, random_counts(random, n, blocks), core);
      }
      ASSERT_FALSE(testing::Test::HasFailure()) << "n " << n << " KFIRST " << KFIRST << " KROW0 " << KROW0;
    }
  }
  testing::Test::RecordProperty("worst_scaled_residual", std::to_string(worst));
}

TEST(RandomSystems, SymmetricTailsBeginAtEveryColumnAndRow) { check_pairs(true, 73); }
TEST(RandomSystems, UnsymmetricTailsBeginAtEveryColumnAndRow) { check_pairs(false, 74); }

}  // namespace
}  // namespace tidearc::test
