// Random profile systems over all four solvers, with tails and changes of prescribed equations in between, judged by
// the scaled residual of LAPACK's tests; a matrix in blocks has the bits of the same matrix in core.
//
// Elimination without pivoting is stable only where leading minors stay away from zero. So indefinite matrices are
// built either with a dominant diagonal of both signs or as L D U of bounded triangles and pivots of both signs between
// 0.1 and 10 (random_matrix.h).
#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

#include "matrix_job.h"
#include "random_matrix.h"

namespace tidearc::test {
namespace {

constexpr double residual_limit = 30.0;  // of LAPACK's own tests

#ifdef TIDEARC_CHECK_INDEX
constexpr int systems = 1000;  // of each kind of storage and symmetry
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

// A reduction: the values and the status that it finds, and where it begins.
struct Stage {
  TestMatrix matrix;
  std::vector<int> status;
  int KFIRST;
  int KROW0;
};

// A first reduction and up to three tails of it.
std::vector<Stage> random_history(Random& random, bool symmetric) {
  const int n = random_size(random);
  const int tallest = random_int(random, 1, 3) == 1 ? n : random_int(random, 1, std::min(n, 25));
  const Stable stable = random_int(random, 0, 1) == 0 ? Stable::dominant : Stable::factored;
  RandomMatrix made(random, n, tallest, symmetric, stable, random_int(random, 0, 1) == 0 ? 0.0 : 0.4);
  std::vector<int> status = random_status(random, n, random_int(random, 0, 7));
  made.set_status(status);
  made.change(random, 1);
  std::vector<Stage> history{{made.matrix(), status, 1, 1}};
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

void run_history(MatrixJob& job, const std::vector<Stage>& history, const std::vector<int>& counts) {
  job.lay_out(history.front().matrix, counts);
  for (const Stage& stage : history) {
    job.assemble(stage.matrix);
    job.set_status(stage.status);
    job.reduce(stage.KFIRST, stage.KROW0);
  }
}

std::vector<double> random_loads(Random& random, int n) {
  const int first_loaded = random_int(random, 1, 3) == 1 ? random_int(random, 1, n) : 1;
  std::vector<double> given(at(n), 0.0);
  for (int e = first_loaded; e <= n; ++e) {
    given[at(e - 1)] = random_int(random, 1, 10) == 1 ? 0.0 : random_real(random, -1.0, 1.0);
  }
  return given;
}

void check_systems(bool symmetric, unsigned seed) {
  Random random(seed);
  MatrixJob core;
  double worst = 0.0;
  for (int trial = 0; trial < systems; ++trial) {
    const std::vector<Stage> history = random_history(random, symmetric);
    const Stage& last = history.back();
    const int n = last.matrix.n();
    const std::vector<double> given = random_loads(random, n);
    run_history(core, history, {n});
    const std::vector<double> x = core.solve(given);
    const std::vector<double> factor = core.factor();
    const double r = scaled_residual(last.matrix, last.status, given, x);
    ASSERT_LT(r, residual_limit) << "n " << n << " trial " << trial;
    worst = std::max(worst, r);
    for (int e = 1; e <= n; ++e) {
      if (last.status[at(e - 1)] != 0) {
        ASSERT_EQ(x[at(e - 1)], given[at(e - 1)]) << "prescribed equation " << e;
      }
    }
    if (n == 1) continue;
    run_history(core, history, random_counts(random, n, random_int(random, 2, 20)));
    ASSERT_TRUE(same_bits(core.factor(), factor)) << "factor in blocks, n " << n << " trial " << trial;
    ASSERT_TRUE(same_bits(core.solve(given), x)) << "solution in blocks, n " << n << " trial " << trial;
    ASSERT_TRUE(same_bits(core.solve(given), x)) << "solved once more, n " << n << " trial " << trial;
  }
  testing::Test::RecordProperty("worst_scaled_residual", std::to_string(worst));
}

TEST(RandomSystems, SymmetricAreSolvedToRoundOffInCoreAndInBlocks) { check_systems(true, 71); }
TEST(RandomSystems, UnsymmetricAreSolvedToRoundOffInCoreAndInBlocks) { check_systems(false, 72); }

}  // namespace
}  // namespace tidearc::test
