// The active column solver against its plain description on a full matrix, its count, and its line on the report.
#include "solve/actcol.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "profile_systems.h"
#include "support/scratch.h"

namespace tidearc {
namespace {

using test::ProfileSystem;
using test::Random;
using test::random_int;
using test::random_real;

std::size_t at(int i) { return static_cast<std::size_t>(i); }
Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }

// Full columns: the upper triangle column by column.
ProfileSystem full_system(int n, const std::vector<double>& upper) {
  ProfileSystem system;
  system.n = n;
  for (int c = 1; c <= n; ++c) system.IDIAG.push_back(c * (c + 1) / 2);
  system.A = upper;
  return system;
}

int count_of(ProfileSystem system) {
  std::vector<double> none;
  return active_column_solver(view(system.A), view(none), system.diagonals(), system.n, true, false).count;
}

// Reduction as told, column by column and entry by entry, pivots as reciprocals: the inner entries, then the division,
// then the count and the pivot.
struct Described {
  ProfileSystem A;
  int count = 0;

  explicit Described(const ProfileSystem& system) : A(system) {
    for (int j = 1; j <= A.n; ++j) reduce(j);
    if (count > 0) ++count;
  }
  void reduce(int j) {
    double d = A(j, j);
    if (A.top(j) < j) {
      for (int r = A.top(j) + 1; r <= j - 1; ++r) {
        double s = 0.0;
        for (int k = std::max(A.top(r), A.top(j)); k < r; ++k) s = std::fma(A(k, j), A(k, r), s);
        A.entry(r, j) -= s;
      }
      for (int r = A.top(j); r <= j - 1; ++r) {
        const double t = A(r, j);
        A.entry(r, j) = t * A(r, r);
        d = std::fma(-t, A(r, j), d);
      }
      if (d * A(j, j) >= 0.0) ++count;
    }
    if (d != 0.0) A.entry(j, j) = 1.0 / d;
  }
};

TEST(ActiveColumns, ReduceAsDescribed) {
  Random random(5);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = random_int(random, 1, 40);
    ProfileSystem system = test::random_profile(random, n, random_int(random, 1, n));
    test::fill_dominant(system, random, 0.4);
    const Described described(system);
    std::vector<double> none;
    const ActiveColumnResult result =
        active_column_solver(view(system.A), view(none), system.diagonals(), n, true, false);
    ASSERT_EQ(system.A, described.A.A) << "trial " << trial;
    ASSERT_EQ(result.count, described.count);
  }
}

TEST(ActiveColumns, ReduceManyColumnsTogetherAsDescribed) {
  Random random(8);
  for (int trial = 0; trial < 30; ++trial) {
    const int n = random_int(random, 44, 260);  // several groups of columns, ragged at the end
    ProfileSystem system = test::random_profile(random, n, random_int(random, 2, n));
    test::fill_dominant(system, random, 0.3);
    const Described described(system);
    const ActiveColumnResult result = active_column_solver(view(system.A), {}, system.diagonals(), n, true, false);
    ASSERT_EQ(system.A, described.A.A) << "trial " << trial;
    ASSERT_EQ(result.count, described.count);
  }
}

TEST(ActiveColumns, SolveToRoundOff) {
  Random random(6);
  for (int trial = 0; trial < 1000; ++trial) {
    const int n = random_int(random, 1, 60);
    ProfileSystem system = test::random_profile(random, n, random_int(random, 1, n));
    if (trial % 2 == 0) {
      test::fill_dominant(system, random, 0.4);
    } else {
      test::fill_definite(system, random);
    }
    const ProfileSystem assembled = system;
    std::vector<double> V;
    for (int e = 1; e <= n; ++e) V.push_back(random_real(random, -1.0, 1.0));
    const std::vector<double> loads = V;
    const ActiveColumnResult result = active_column_solver(view(system.A), view(V), system.diagonals(), n, true, true);
    const std::vector<int> all_free(at(n), 0);
    ASSERT_LT(test::scaled_residual(assembled, all_free, loads, V), test::residual_limit);
    double work = 0.0, size = 0.0;
    for (std::size_t e = 0; e < V.size(); ++e) {
      work += loads[e] * V[e];
      size += std::abs(loads[e] * V[e]);
    }
    ASSERT_NEAR(result.energy, work, 1e-11 * size) << "the energy of a solve is loads times displacements";
  }
}

TEST(ActiveColumns, GiveTheSameDigitsInOneCallAndInTwo) {
  Random random(7);
  ProfileSystem once = test::random_profile(random, 50, 20);
  test::fill_definite(once, random);
  ProfileSystem twice = once;
  std::vector<double> V1(50, 1.0), V2(50, 1.0);
  const ActiveColumnResult both = active_column_solver(view(once.A), view(V1), once.diagonals(), 50, true, true);
  const ActiveColumnResult first = active_column_solver(view(twice.A), view(V2), twice.diagonals(), 50, true, false);
  EXPECT_EQ(V2, std::vector<double>(50, 1.0)) << "a reduction leaves the loads alone";
  EXPECT_EQ(first.energy, 0.0);
  const std::vector<double> reduced = twice.A;
  const ActiveColumnResult second = active_column_solver(view(twice.A), view(V2), twice.diagonals(), 50, false, true);
  EXPECT_EQ(twice.A, reduced) << "a solve leaves the factor alone";
  EXPECT_EQ(V1, V2);
  EXPECT_EQ(once.A, twice.A);
  EXPECT_EQ(both.energy, second.energy);
  EXPECT_EQ(both.count, first.count);
  EXPECT_EQ(second.count, 0) << "only a reduction counts";
}

// Two springs with unit masses, eigenvalues 0.38 and 2.62: whatever the cut, the count is 2.
TEST(ActiveColumns, CountColumnsThatKeepTheSignOfTheirDiagonalAndOneMore) {
  for (const double cut : {0.1, 1.5, 5.0}) EXPECT_EQ(count_of(full_system(2, {2.0 - cut, -1.0, 1.0 - cut})), 2) << cut;
  EXPECT_EQ(count_of(full_system(2, {1.0, 2.0, 1.0})), 0) << "1 - 4 has lost the sign of 1";
  EXPECT_EQ(count_of(full_system(2, {-1.0, 2.0, -1.0})), 0) << "-1 + 4 has lost the sign of -1";
  EXPECT_EQ(count_of(full_system(2, {-1.0, 2.0, 1.0})), 2);
  EXPECT_EQ(count_of(full_system(3, {4.0, 1.0, 4.0, 1.0, 1.0, 4.0})), 3);
}

TEST(ActiveColumns, OfHeightOneAreNotCounted) {
  ProfileSystem diagonal;
  diagonal.n = 3;
  diagonal.IDIAG = {1, 2, 3};
  diagonal.A = {2.0, -4.0, 0.0};
  EXPECT_EQ(count_of(diagonal), 0);
  std::vector<double> V{6.0, 6.0, 6.0};
  active_column_solver(view(diagonal.A), view(V), diagonal.diagonals(), 3, true, true);
  EXPECT_EQ(diagonal.A, (std::vector<double>{0.5, -0.25, 0.0})) << "a zero stays";
  EXPECT_EQ(V, (std::vector<double>{3.0, -1.5, 0.0}));
}

TEST(ActiveColumns, LeaveTheAssembledDiagonalAtAReducedPivotOfZero) {
  ProfileSystem singular = full_system(2, {1.0, 3.0, 9.0});
  EXPECT_EQ(count_of(singular), 2) << "zero is not negative";
  std::vector<double> none;
  active_column_solver(view(singular.A), view(none), singular.diagonals(), 2, true, false);
  EXPECT_EQ(singular.A, (std::vector<double>{1.0, 3.0, 9.0}));
}

TEST(ActiveColumns, OfNoEquationsAreNothing) {
  std::vector<double> none;
  const ActiveColumnResult result = active_column_solver(view(none), view(none), {}, 0, true, true);
  EXPECT_EQ(result.count, 0);
  EXPECT_EQ(result.energy, 0.0);
}

TEST(Actcol, PrintsTheEnergyOfEachSolve) {
  const test::Scratch scratch;
  ProfileSystem system = full_system(2, {2.0, 0.0, 4.0});
  std::vector<double> V{2.0, 4.0};
  EXPECT_EQ(ACTCOL(view(system.A), view(V), system.diagonals(), 2, true, false), 2);
  EXPECT_EQ(scratch.report(), "") << "a reduction prints nothing";
  EXPECT_EQ(ACTCOL(view(system.A), view(V), system.diagonals(), 2, false, true), 0);
  // 2 * 2 / 2 + 4 * 4 / 4
  EXPECT_EQ(scratch.report(), "\n\n *** ENERGY COMPUTED IN ACTCOL IS  0.6000000000E+01\n");
}

}  // namespace
}  // namespace tidearc
