// The small problem of the subspace iteration against closed forms, and whole iterations on random pencils against
// bisection on inertia counts of the dense pencil.
#include "solve/eigen.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <vector>

#include "eigen_tables.h"
#include "solve/actcol.h"

namespace tidearc {
namespace {

using std::numbers::pi;
using test::at;
using test::chain;
using test::ProfileSystem;
using test::Random;
using test::random_int;
using test::random_real;
using test::Table;
using test::view;

double chain_eigenvalue(int n, int mode) { return 4.0 * std::pow(std::sin(mode * pi / (2.0 * (n + 1))), 2); }

/// The iteration as the macro runs it, on owned arrays; with `unit_loads` from one unit entry in each vector.
struct Iteration {
  Iteration(const ProfileSystem& system, std::vector<double> masses, int wanted, double shift = 0.0,
            double tolerance = 1e-5, int most = 16, const std::vector<int>& unit_loads = {})
      : M(std::move(masses)),
        q(subspace_size(wanted, count_masses(view(M)))),
        X(system.n, q),
        Y(system.n, q),
        values(at(q)),
        residuals(at(q)) {
    ProfileSystem factor = system;
    const Profile<double> K = factor.view(factor.A);
    subtract_mass(K, view(M), shift);
    std::vector<double> scratch(at(system.n)), last(at(q));
    starting_loads(K, view(M), Y, view(scratch));
    if (!unit_loads.empty()) start_with(unit_loads);
    active_column_solver(K.A, {}, K.IDIAG, K.NEQ, true, false);
    Table stiffness(q, q), mass(q, q), Z(q, q);
    while (!converged && cycles < most) {
      ++cycles;
      X.values = Y.values;
      for (int j = 1; j <= q; ++j) active_column_solver(K.A, RealTable(X).column(j), K.IDIAG, K.NEQ, false, true);
      project(X, Y, view(M), stiffness, mass);
      last = values;
      EXPECT_TRUE(solve_small_problem(stiffness, mass, Z, view(values)));
      rotate(X, Z, Y);
      X.values.swap(Y.values);
      relative_changes(view(values), view(last), view(residuals));
      converged = all_within(view(residuals), wanted, tolerance);
      mass_weighted(X, view(M), Y);
    }
    for (double& value : values) value += shift;
  }
  /// One unit entry in each vector behind the first.
  void start_with(const std::vector<int>& unit_loads) {
    for (int j = 2; j <= q; ++j)
      for (int e = 1; e <= X.r; ++e) Y(e, j) = e == unit_loads.at(at(j - 2)) ? 1.0 : 0.0;
  }
  std::vector<double> M;
  int q;
  Table X, Y;
  std::vector<double> values, residuals;
  int cycles = 0;
  bool converged = false;
};

/// Eigenvalues of K - s M below zero, by Gauss elimination with symmetric (diagonal) pivoting on the dense matrix in
/// extended precision: by Sylvester's law the negative pivots are as many.
int count_below(const ProfileSystem& K, const std::vector<double>& M, long double s) {
  const int n = K.n;
  std::vector<long double> A(at(n * n));
  for (int i = 0; i < n; ++i)
    for (int j = 0; j < n; ++j) A[at(i * n + j)] = K(i + 1, j + 1) - (i == j ? s * M[at(i)] : 0.0L);
  std::vector<int> left;
  for (int i = 0; i < n; ++i) left.push_back(i);
  int negative = 0;
  while (!left.empty()) {
    const auto p = std::max_element(left.begin(), left.end(), [&](int a, int b) {
      return std::abs(A[at(a * n + a)]) < std::abs(A[at(b * n + b)]);
    });
    const int k = *p;
    left.erase(p);
    if (A[at(k * n + k)] < 0.0L) ++negative;
    for (const int i : left)
      for (const int j : left) A[at(i * n + j)] -= A[at(i * n + k)] / A[at(k * n + k)] * A[at(k * n + j)];
  }
  return negative;
}

/// The i-th eigenvalue (from 1) by bisection on those counts.
double bisected(const ProfileSystem& K, const std::vector<double>& M, int i) {
  long double low = 0.0L, high = 1.0L;
  while (count_below(K, M, high) < i) high *= 2.0L;
  for (int k = 0; k < 80; ++k) {
    const long double middle = 0.5L * (low + high);
    (count_below(K, M, middle) < i ? low : high) = middle;
  }
  return static_cast<double>(0.5L * (low + high));
}

TEST(SmallProblem, OfTwoSpringsIsSolved) {
  Table A(2, 2, {2.0, 1.0, 1.0, 3.0}), B(2, 2, {2.0, 0.5, 0.5, 1.0}), Z(2, 2);
  std::vector<double> values(2);
  ASSERT_TRUE(solve_small_problem(A, B, Z, view(values)));
  const double a = 1.75, b = -7.0, c = 5.0;  // det(A - l B) = 1.75 l^2 - 7 l + 5
  const double root = std::sqrt(b * b - 4.0 * a * c);
  EXPECT_NEAR(values[0], (-b - root) / (2.0 * a), 1e-14);
  EXPECT_NEAR(values[1], (-b + root) / (2.0 * a), 1e-14);
}

TEST(SmallProblem, GivesVectorsThatUncoupleBothMatrices) {
  Random random(11);
  for (int trial = 0; trial < 200; ++trial) {
    const int q = random_int(random, 1, 24);
    Table A(q, q), B(q, q), Z(q, q), L(q, q);
    for (double& value : L.values) value = random_real(random, -1.0, 1.0);
    for (int i = 1; i <= q; ++i)
      for (int j = 1; j <= i; ++j) {
        A(i, j) = A(j, i) = random_real(random, -3.0, 3.0);  // indefinite
        double b = i == j ? 0.5 : 0.0;
        for (int k = 1; k <= q; ++k) b += L(i, k) * L(j, k);
        B(i, j) = B(j, i) = b;
      }
    const Table A0 = A, B0 = B;
    std::vector<double> values(at(q));
    ASSERT_TRUE(solve_small_problem(A, B, Z, view(values)));
    EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    const double largest = std::max(std::abs(values.front()), std::abs(values.back()));
    for (int i = 1; i <= q; ++i)
      for (int j = 1; j <= q; ++j) {
        double a = 0.0, b = 0.0;
        for (int k = 1; k <= q; ++k)
          for (int l = 1; l <= q; ++l) {
            a += Z(k, i) * A0(k, l) * Z(l, j);
            b += Z(k, i) * B0(k, l) * Z(l, j);
          }
        ASSERT_NEAR(b, i == j ? 1.0 : 0.0, 1e-11) << trial;
        ASSERT_NEAR(a, i == j ? values[at(i - 1)] : 0.0, 1e-10 * std::max(1.0, largest)) << trial;
      }
  }
}

TEST(SmallProblem, OfMultiplesHasOneEigenvalue) {
  Table A(3, 3, {4.0, 1.0, 0.0, 1.0, 6.0, 2.0, 0.0, 2.0, 8.0}), B(3, 3), Z(3, 3);
  for (std::size_t k = 0; k < 9; ++k) B.values[k] = 0.5 * A.values[k];
  std::vector<double> values(3);
  ASSERT_TRUE(solve_small_problem(A, B, Z, view(values)));
  for (const double value : values) EXPECT_NEAR(value, 2.0, 1e-14);
}

TEST(SmallProblem, KeepsSmallEigenvaluesBesideLargeOnes) {
  // diag(1e-8, 1, 1e8) seen through a shear: relative accuracy of each
  const double d[3] = {1e-8, 1.0, 1e8};
  Table A(3, 3), B(3, 3), Z(3, 3);
  const double T[3][3] = {{1.0, 0.5, 0.0}, {0.0, 1.0, 0.25}, {0.0, 0.0, 1.0}};
  for (int i = 0; i < 3; ++i)
    for (int j = 0; j < 3; ++j)
      for (int k = 0; k < 3; ++k) {
        B(i + 1, j + 1) += T[k][i] * T[k][j];
        A(i + 1, j + 1) += T[k][i] * d[k] * T[k][j];
      }
  std::vector<double> values(3);
  ASSERT_TRUE(solve_small_problem(A, B, Z, view(values)));
  EXPECT_NEAR(values[0] / d[0], 1.0, 1e-7);
  EXPECT_NEAR(values[1] / d[1], 1.0, 1e-7);
  EXPECT_NEAR(values[2] / d[2], 1.0, 1e-12);
}

TEST(SmallProblem, IsRefusedWhenTheMassIsNotDefiniteOrNotFinite) {
  for (const double bad : {0.0, -1.0, std::nan(""), std::numeric_limits<double>::infinity()}) {
    Table A(2, 2, {1.0, 0.0, 0.0, 1.0}), B(2, 2, {1.0, 0.0, 0.0, bad}), Z(2, 2);
    std::vector<double> values(2);
    EXPECT_FALSE(solve_small_problem(A, B, Z, view(values))) << bad;
  }
  Table A(2, 2, {1.0, 0.0, 0.0, std::nan("")}), B(2, 2, {1.0, 0.0, 0.0, 1.0}), Z(2, 2);
  std::vector<double> values(2);
  EXPECT_FALSE(solve_small_problem(A, B, Z, view(values)));
}

TEST(SubspaceIteration, FindsTheFrequenciesAndShapesOfAChain) {
  constexpr int n = 60, wanted = 5;
  const Iteration run(chain(n), std::vector<double>(n, 2.0), wanted, 0.0, 1e-10, 60);
  ASSERT_TRUE(run.converged);
  for (int mode = 1; mode <= wanted; ++mode) {
    EXPECT_NEAR(run.values[at(mode - 1)] / (0.5 * chain_eigenvalue(n, mode)), 1.0, 1e-9) << mode;
    // mass-normalised: sum 2 phi^2 = 1
    const double scale = std::sqrt(1.0 / (n + 1));
    const double sign = run.X(1, mode) < 0.0 ? -1.0 : 1.0;
    for (int e = 1; e <= n; ++e)
      ASSERT_NEAR(sign * run.X(e, mode), scale * std::sin(mode * e * pi / (n + 1)), 2e-5) << mode << ' ' << e;
  }
}

TEST(SubspaceIteration, OfAllMassesNeedsTwoCycles) {
  const Iteration run(chain(6), std::vector<double>(6, 1.0), 6);
  EXPECT_EQ(run.q, 6);
  EXPECT_LE(run.cycles, 3) << "the space is the whole one: the second cycle can only confirm the first";
  for (int mode = 1; mode <= 6; ++mode) EXPECT_NEAR(run.values[at(mode - 1)], chain_eigenvalue(6, mode), 1e-12);
}

TEST(SubspaceIteration, SeesMassesOnlyWhereTheyAre) {
  // Every other point of a chain of 2n + 1 bears a mass: springs of 1/2 between n masses.
  constexpr int n = 7;
  std::vector<double> M(2 * n + 1, 0.0);
  for (std::size_t k = 1; k < M.size(); k += 2) M[k] = 1.0;
  const Iteration run(chain(2 * n + 1), M, n);
  EXPECT_EQ(run.q, n);
  for (int mode = 1; mode <= n; ++mode)
    EXPECT_NEAR(run.values[at(mode - 1)], 0.5 * chain_eigenvalue(n, mode), 1e-11) << mode;
}

TEST(SubspaceIteration, FindsRepeatedEigenvaluesAsOftenAsTheyAre) {
  // Three equal chains side by side.
  constexpr int n = 8;
  ProfileSystem three = chain(3 * n);
  three.entry(n, n + 1) = three.entry(2 * n, 2 * n + 1) = 0.0;
  const Iteration run(three, std::vector<double>(3 * n, 1.0), 6, 0.0, 1e-9, 40);
  ASSERT_TRUE(run.converged);
  for (int i = 0; i < 6; ++i) EXPECT_NEAR(run.values[at(i)], chain_eigenvalue(n, i / 3 + 1), 1e-7) << i;
}

/// Two stiff pairs, nearly free, mirror each other about three heavy points in the plane of symmetry. These have the
/// largest ratios of mass to stiffness; the second mode moves the pairs against each other and leaves them at rest.
struct MirroredPairs {
  ProfileSystem K;
  std::vector<double> M{1.0, 1.0, 20.0, 21.0, 22.0, 1.0, 1.0};
  MirroredPairs() {
    K.n = 7;
    for (int c = 1; c <= K.n; ++c) K.IDIAG.push_back(c * (c + 1) / 2);
    K.A.assign(28, 0.0);
    for (int e = 1; e <= K.n; ++e) K.entry(e, e) = 10.0;
    for (const int e : {1, 2, 6, 7}) K.entry(e, e) += 0.01;
    K.entry(1, 2) = K.entry(6, 7) = -10.0;
    for (const int heavy : {3, 4, 5}) K.entry(2, heavy) = K.entry(heavy, 6) = -0.001;
  }
};

TEST(SubspaceIteration, FindsModesThatMoveAgainstTheSymmetryOfTheLargestRatios) {
  const MirroredPairs pairs;
  const Iteration run(pairs.K, pairs.M, 2);
  EXPECT_EQ(run.q, 4);
  ASSERT_TRUE(run.converged);
  for (int i = 1; i <= 2; ++i) EXPECT_NEAR(run.values[at(i - 1)] / bisected(pairs.K, pairs.M, i), 1.0, 1e-6) << i;
  EXPECT_LT(run.X(1, 2) * run.X(7, 2), 0.0) << "the second mode is antisymmetric";
}

TEST(SubspaceIteration, FromOneUnitLoadToAVectorMissesThem) {
  // Why the starting vectors have more than one unit entry: masses and heavy points are symmetric, and so is all that
  // the iteration makes of them. It settles, on other modes.
  const MirroredPairs pairs;
  const Iteration run(pairs.K, pairs.M, 2, 0.0, 1e-5, 16, {5, 4, 3});
  ASSERT_TRUE(run.converged);
  EXPECT_NEAR(run.values[0] / bisected(pairs.K, pairs.M, 1), 1.0, 1e-6);
  EXPECT_GT(run.values[1] / bisected(pairs.K, pairs.M, 2), 10.0) << "the second mode is passed over";
}

TEST(SubspaceIteration, FindsARigidBodyWithAShift) {
  constexpr int n = 12;
  ProfileSystem free = chain(n);
  free.entry(1, 1) = free.entry(n, n) = 1.0;
  const Iteration run(free, std::vector<double>(n, 1.0), 4, 0.01, 1e-9, 40);
  ASSERT_TRUE(run.converged);
  for (int mode = 0; mode < 4; ++mode)
    EXPECT_NEAR(run.values[at(mode)], 4.0 * std::pow(std::sin(mode * pi / (2.0 * n)), 2), 1e-9) << mode;
}

TEST(SubspaceIteration, OfRandomPencilsAgreesWithBisectionOnInertiaCounts) {
  Random random(3);
  for (int trial = 0; trial < 12; ++trial) {
    const int n = random_int(random, 12, 40);
    ProfileSystem K = test::random_profile(random, n, random_int(random, 3, n));
    test::fill_definite(K, random);
    std::vector<double> M;
    for (int e = 0; e < n; ++e) M.push_back(e % 5 == 4 ? 0.0 : random_real(random, 0.1, 3.0));
    const int wanted = random_int(random, 1, 5);
    const Iteration run(K, M, wanted, 0.0, 1e-12, 400);
    ASSERT_TRUE(run.converged) << trial;
    for (int i = 1; i <= wanted; ++i) {
      const double exact = bisected(K, M, i);
      EXPECT_NEAR(run.values[at(i - 1)] / exact, 1.0, 1e-8) << trial << ' ' << i;
    }
  }
}

}  // namespace
}  // namespace tidearc
