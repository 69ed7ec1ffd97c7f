// The unsymmetric reduction and solution on small matrices with known factors, and against a plain loop.
#include "solve/unsymmetric.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "matrix_job.h"
#include "random_matrix.h"
#include "solve/factor.h"

namespace tidearc::test {
namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }
ConstIntegers view(const std::vector<int>& v) { return {v.data(), static_cast<int>(v.size())}; }
Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }

// A matrix with its status, reduced and solved with in place.
struct Work {
  TestMatrix matrix;
  std::vector<int> MSTAT;

  Work(const TestMatrix& assembled, const std::vector<int>& status)
      : matrix(assembled), MSTAT(links_by_definition(status)) {}
  Profile<double> upper() { return matrix.upper.view(matrix.upper.A); }
  Profile<double> lower() { return matrix.upper.view(matrix.lower); }
  void reduce(int KFIRST, int KROW0) { reduce_triangles_within(upper(), lower(), {view(MSTAT), KFIRST, KROW0}); }
  std::vector<double> solve(std::vector<double> R) {
    solve_unsymmetric(upper(), lower(), view(MSTAT), view(R));
    return R;
  }
};

TestMatrix matrix_of(const std::vector<int>& IDIAG, const std::vector<double>& upper,
                     const std::vector<double>& lower) {
  TestMatrix matrix;
  matrix.upper.n = static_cast<int>(IDIAG.size());
  matrix.upper.IDIAG = IDIAG;
  matrix.upper.A = upper;
  matrix.lower = lower;
  return matrix;
}

// [2 1 0; 4 5 3; 0 6 9] = [2 0 0; 4 3 0; 0 6 3] [1 1/2 0; 0 1 1; 0 0 1]
TestMatrix three_by_three() { return matrix_of({1, 3, 5}, {2, 1, 5, 3, 9}, {2, 4, 5, 6, 9}); }

TEST(Unsymmetric, ScalesTheUpperTriangleAndKeepsPivotsOnTheLowerDiagonal) {
  Work work(three_by_three(), {0, 0, 0});
  work.reduce(1, 1);
  EXPECT_EQ(work.matrix.upper.A, (std::vector<double>{2, 0.5, 5, 1, 9})) << "its diagonal stays as assembled";
  EXPECT_EQ(work.matrix.lower, (std::vector<double>{2, 4, 3, 6, 3}));
}

TEST(Unsymmetric, SolvesWithBothTriangles) {
  Work work(three_by_three(), {0, 0, 0});
  work.reduce(1, 1);
  EXPECT_EQ(work.solve({4, 23, 39}), (std::vector<double>{1, 2, 3}));
  EXPECT_EQ(work.solve({0, 3, 9}), (std::vector<double>{0, 0, 1})) << "a load that begins later";
}

TEST(Unsymmetric, OfOneEquationDividesByIt) {
  Work work(matrix_of({1}, {4}, {4}), {0});
  work.reduce(1, 1);
  EXPECT_EQ(work.solve({6}), (std::vector<double>{1.5}));
  Work held(matrix_of({1}, {4}, {4}), {1});
  held.reduce(1, 1);
  EXPECT_EQ(held.solve({6}), (std::vector<double>{6}));
}

TEST(Unsymmetric, TestsNoPivot) {
  Work work(matrix_of({1, 3}, {0, 2, 1}, {0, 3, 1}), {0, 0});
  work.reduce(1, 1);
  EXPECT_TRUE(std::isinf(work.matrix.upper.A[1]));
  EXPECT_FALSE(std::isfinite(work.solve({1, 1})[0]));
}

TEST(Unsymmetric, CouplesPrescribedEquationsFromBothSides) {
  // Equation 2 is held at 10: the others see 4*10 and 6*10, not the entries of row 2.
  Work work(matrix_of({1, 3, 6}, {2, 4, 99, 0, 77, 5}, {2, 55, 99, 0, 6, 5}), {0, 1, 0});
  work.reduce(1, 1);
  EXPECT_EQ(work.matrix.upper.A, (std::vector<double>{2, 4, 99, 0, 77, 5})) << "prescribed entries stay as assembled";
  EXPECT_EQ(work.matrix.lower, (std::vector<double>{2, 55, 99, 0, 6, 5}));
  EXPECT_EQ(work.solve({42, 10, 65}), (std::vector<double>{1, 10, 1}));
}

TEST(Unsymmetric, LeavesColumnsBeforeTheTailAndRowsAboveItAlone) {
  Random random(3);
  RandomMatrix made(random, 30, 12, false, Stable::dominant, 0.3);
  made.change(random, 1);
  const std::vector<int> all_free(30, 0);
  Work work(made.matrix(), all_free);
  work.reduce(1, 1);
  const TestMatrix first = work.matrix;
  // The tail as assembled, the rest final.
  for (int c = 20; c <= 30; ++c) {
    for (int r = std::max(20, first.upper.top(c)); r <= c; ++r) {
      const std::size_t a = at(first.upper.IDIAG[at(c - 1)] + r - c - 1);
      work.matrix.upper.A[a] = made.matrix().upper.A[a];
      work.matrix.lower[a] = made.matrix().lower[a];
    }
  }
  work.reduce(20, 20);
  EXPECT_EQ(work.matrix.upper.A, first.upper.A) << "the same sums, so the same bits";
  EXPECT_EQ(work.matrix.lower, first.lower);
}

// One entry after the other, as the formulas are written.
void plain_reduction(TestMatrix& K, const std::vector<int>& status, int KFIRST, int KROW0) {
  const auto sum = [&](const std::vector<double>& column, int c, const std::vector<double>& row, int r) {
    double s = 0.0;
    for (int i = std::max(K.upper.top(c), K.upper.top(r)); i < r; ++i) {
      if (status[at(i - 1)] != 0) continue;
      const int a = K.upper.IDIAG[at(c - 1)] + i - c - 1;
      const int b = K.upper.IDIAG[at(r - 1)] + i - r - 1;
      s = std::fma(column[at(a)], row[at(b)], s);
    }
    return s;
  };
  for (int c = std::max(KFIRST, 2); c <= K.n(); ++c) {
    if (status[at(c - 1)] != 0) continue;
    for (int r = std::max(K.upper.top(c), KROW0); r < c; ++r) {
      if (status[at(r - 1)] != 0) continue;
      const std::size_t a = at(K.upper.IDIAG[at(c - 1)] + r - c - 1);
      K.upper.A[a] -= sum(K.upper.A, c, K.lower, r);
      K.upper.A[a] /= K.lower[at(K.upper.IDIAG[at(r - 1)] - 1)];
      K.lower[a] -= sum(K.lower, c, K.upper.A, r);
    }
    K.lower[at(K.upper.IDIAG[at(c - 1)] - 1)] -= sum(K.upper.A, c, K.lower, c);
  }
}

TEST(Unsymmetric, HasTheBitsOfThePlainLoop) {
  Random random(4);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = random_int(random, 1, 60);
    RandomMatrix made(random, n, random_int(random, 1, n), false, Stable::dominant, 0.3);
    made.change(random, 1);
    const std::vector<int> status = random_status(random, n, trial % 8);
    const int KFIRST = random_int(random, 1, n);
    const int KROW0 = random_int(random, 1, KFIRST);
    Work work(made.matrix(), status);
    TestMatrix plain = made.matrix();
    work.reduce(KFIRST, KROW0);
    plain_reduction(plain, status, KFIRST, KROW0);
    ASSERT_EQ(work.matrix.upper.A, plain.upper.A) << "trial " << trial;
    ASSERT_EQ(work.matrix.lower, plain.lower) << "trial " << trial;
  }
}

TEST(Unsymmetric, OfASymmetricMatrixAgreesWithTheSymmetricSolver) {
  Random random(8);
  for (int trial = 0; trial < 200; ++trial) {
    const int n = random_int(random, 1, 60);
    RandomMatrix made(random, n, random_int(random, 1, n), true, Stable::dominant, 0.4);
    made.change(random, 1);
    const std::vector<int> status = random_status(random, n, trial % 8);
    TestMatrix both = made.matrix();
    both.lower = both.upper.A;
    Work work(both, status);
    work.reduce(1, 1);
    std::vector<double> values = both.upper.A;
    const Profile<double> K = both.upper.view(values);
    ASSERT_EQ(reduce_symmetric(K, view(work.MSTAT), 1, 1).equation, 0);
    std::vector<double> loads(at(n), 1.0);
    const std::vector<double> x = work.solve(loads);
    solve_symmetric(K, view(work.MSTAT), view(loads));
    // Dominance by 1.05 or more bounds the inverse by the loads over a tenth.
    for (std::size_t e = 0; e < x.size(); ++e) ASSERT_NEAR(x[e], loads[e], 1e-10) << "trial " << trial;
  }
}

}  // namespace
}  // namespace tidearc::test
