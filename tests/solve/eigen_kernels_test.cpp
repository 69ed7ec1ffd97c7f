// Kernels of the subspace iteration one by one: sizes, starting loads, projection, rotation, solutions, residuals.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "eigen_tables.h"
#include "solve/actcol.h"

namespace tidearc {
namespace {

using test::at;
using test::chain;
using test::ProfileSystem;
using test::Random;
using test::random_int;
using test::some_table;
using test::Table;
using test::view;

TEST(SubspaceSize, IsTheLeastOfThreeNumbers) {
  EXPECT_EQ(subspace_size(1, 100), 2) << "twice the modes";
  EXPECT_EQ(subspace_size(7, 100), 14);
  EXPECT_EQ(subspace_size(8, 100), 16);
  EXPECT_EQ(subspace_size(9, 100), 17) << "eight more than the modes";
  EXPECT_EQ(subspace_size(9, 12), 12) << "the masses";
  EXPECT_EQ(subspace_size(1, 1), 1);
  EXPECT_EQ(subspace_size(0, 5), 0);
  EXPECT_EQ(subspace_size(-3, 5), 0);
  EXPECT_EQ(subspace_size(2147483647, 5), 5);
}

TEST(Masses, AreCountedWhenTheyAreNotZero) {
  EXPECT_EQ(count_masses(view(std::vector<double>{0.0, 1.0, -2.0, 0.0, 1e-300})), 3);
}

TEST(Diagonals, TheFirstThatIsNotPositiveIsFound) {
  ProfileSystem system = chain(4);
  EXPECT_EQ(first_not_positive(system.view()), 0);
  system.entry(4, 4) = -1.0;
  EXPECT_EQ(first_not_positive(system.view()), 4);
  system.entry(3, 3) = 0.0;
  EXPECT_EQ(first_not_positive(system.view()), 3);
  system.entry(2, 2) = std::nan("");
  EXPECT_EQ(first_not_positive(system.view()), 2);
}

TEST(Diagonals, WithoutMassKeepTheirStiffnessWhateverTheShift) {
  ProfileSystem system = chain(3);
  subtract_mass(system.view(system.A), view(std::vector<double>{1.0, 0.0, 2.0}), 3.0);
  EXPECT_EQ(system.entry(1, 1), -1.0);
  EXPECT_EQ(system.entry(2, 2), 2.0);
  EXPECT_EQ(system.entry(3, 3), -4.0);
  const double infinite = std::numeric_limits<double>::infinity();
  subtract_mass(system.view(system.A), view(std::vector<double>{1.0, 0.0, 2.0}), infinite);
  EXPECT_EQ(system.entry(1, 1), -infinite);
  EXPECT_EQ(system.entry(2, 2), 2.0);
}

/// The starting loads of a chain of springs of 1 with these masses.
Table starting_loads_of(const ProfileSystem& system, const std::vector<double>& M, int q) {
  Table Y(system.n, q);
  std::vector<double> scratch(at(system.n));
  starting_loads(system.view(), view(M), Y, view(scratch));
  return Y;
}

TEST(StartingLoads, AreTheMassesAndUnitsAtTheLargestRatios) {
  ProfileSystem system = chain(5);
  system.entry(2, 2) = 8.0;
  const std::vector<double> M{1.0, 4.0, 0.0, 8.0, 2.0};  // ratios 0.5, 0.5, 0, 4, 1
  const Table Y = starting_loads_of(system, M, 3);
  EXPECT_EQ(Y.values, (std::vector<double>{0.125, 0.5, 0.0, 1.0, 0.25,  // four masses, one to a column
                                           0.0, 0.0, 0.0, 1.0, 0.0,     //
                                           0.0, 0.0, 0.0, 0.0, 1.0}));
}

TEST(StartingLoads, DealTheEquationsInTurnByFallingRatio) {
  const ProfileSystem system = chain(9);
  const std::vector<double> M{9.0, 8.0, 7.0, 6.0, 5.0, 4.0, 3.0, 2.0, 1.0};
  const Table Y = starting_loads_of(system, M, 3);  // the ninth is left, though it would make four to a column
  for (int e = 1; e <= 9; ++e) {
    EXPECT_EQ(std::abs(Y(e, 2)), e < 9 && e % 2 == 1 ? 1.0 : 0.0) << e;
    EXPECT_EQ(std::abs(Y(e, 3)), e < 9 && e % 2 == 0 ? 1.0 : 0.0) << e;
  }
}

TEST(StartingLoads, OfEqualRatiosGoByTheNumberOfTheEquation) {
  ProfileSystem equal = chain(8);
  for (int e = 2; e <= 8; ++e) equal.entry(e - 1, e) = 0.0;
  const Table Y = starting_loads_of(equal, std::vector<double>(8, 3.0), 4);
  for (int j = 2; j <= 4; ++j)
    for (int e = 1; e <= 8; ++e) EXPECT_EQ(std::abs(Y(e, j)), e == j - 1 || e == j + 2 ? 1.0 : 0.0) << j << ' ' << e;
}

TEST(StartingLoads, HaveBothSigns) {
  const Table Y = starting_loads_of(chain(400), std::vector<double>(400, 1.0), 4);
  for (int j = 2; j <= 4; ++j) {
    int positive = 0, negative = 0;
    for (int e = 1; e <= 400; ++e) {
      positive += Y(e, j) == 1.0;
      negative += Y(e, j) == -1.0;
    }
    EXPECT_EQ(positive + negative, 133) << j;
    EXPECT_GT(positive, 30) << j;
    EXPECT_GT(negative, 30) << j;
  }
}

TEST(StartingLoads, AreIndependentWhenEveryMassHasAVectorOfItsOwn) {
  const Table Y = starting_loads_of(chain(3), {2.0, 2.0, 2.0}, 3);
  EXPECT_EQ(Y.values, (std::vector<double>{1.0, 1.0, 1.0, 1.0, 0.0, 0.0, 0.0, 1.0, 0.0}));
}

TEST(StartingLoads, AVectorWithoutLengthIsReplaced) {
  const Table Y = starting_loads_of(chain(3), {0.0, 0.0, 0.0}, 2);
  for (const double entry : Y.values) EXPECT_EQ(std::abs(entry), 1.0);
}

TEST(Projection, IsTheTripleProduct) {
  const Table X(2, 2, {1.0, 2.0, 3.0, -1.0});
  const Table Y(2, 2, {5.0, 1.0, 1.0, 4.0});
  const std::vector<double> M{2.0, 3.0};
  Table stiffness(2, 2), mass(2, 2);
  project(X, Y, view(M), stiffness, mass);
  EXPECT_EQ(stiffness.values, (std::vector<double>{7.0, 9.0, 9.0, -1.0}));
  EXPECT_EQ(mass.values, (std::vector<double>{14.0, 0.0, 0.0, 21.0}));
}

TEST(Projection, OfManyColumnsHasOneSumFromLowToHighForEachPair) {
  constexpr int N = 150, q = 11;  // not multiples of what is taken together
  const Table X = some_table(N, q, 1), Y = some_table(N, q, 2), M = some_table(N, 1, 3);
  Table stiffness(q, q), mass(q, q);
  project(X, Y, view(M.values), stiffness, mass);
  for (int j = 1; j <= q; ++j)
    for (int i = 1; i <= j; ++i) {
      double k = 0.0, m = 0.0;
      for (int e = 1; e <= N; ++e) {
        k += X(e, i) * Y(e, j);
        m += X(e, i) * (M(e, 1) * X(e, j));
      }
      ASSERT_EQ(stiffness(i, j), k) << i << ' ' << j;
      ASSERT_EQ(mass(j, i), m) << i << ' ' << j;
      ASSERT_EQ(stiffness(j, i), k);
    }
}

TEST(Rotation, IsTheProductWithOneSumFromLowToHighForEachEntry) {
  constexpr int q = 5;
  for (const int N : {3, 16, 37}) {
    const Table X = some_table(N, q, 4), Z = some_table(q, q, 5);
    Table rotated(N, q);
    rotate(X, Z, rotated);
    for (int e = 1; e <= N; ++e)
      for (int j = 1; j <= q; ++j) {
        double sum = 0.0;
        for (int k = 1; k <= q; ++k) sum += X(e, k) * Z(k, j);
        ASSERT_EQ(rotated(e, j), sum) << N << ' ' << e << ' ' << j;
      }
  }
}

TEST(Residuals, AreRelativeChangesAndOnlyTheWantedOnesCount) {
  const std::vector<double> now{2.0, -4.0, 8.0}, last{1.0, -4.0, 0.0};
  std::vector<double> residuals(3);
  relative_changes(view(now), view(last), view(residuals));
  EXPECT_EQ(residuals, (std::vector<double>{0.5, 0.0, 1.0}));
  EXPECT_TRUE(all_within(view(residuals), 2, 0.5)) << "equal to the tolerance is within";
  EXPECT_FALSE(all_within(view(residuals), 3, 0.5));
  EXPECT_FALSE(all_within(view(residuals), 1, 0.49));
  residuals[0] = std::nan("");
  EXPECT_FALSE(all_within(view(residuals), 1, 1e300));
}

TEST(Residuals, OfAnEigenvalueThatStaysZeroAreZero) {
  const std::vector<double> now{0.0, 0.0}, last{0.0, 1.0};
  std::vector<double> residuals(2);
  relative_changes(view(now), view(last), view(residuals));
  EXPECT_EQ(residuals[0], 0.0);
  EXPECT_TRUE(std::isinf(residuals[1])) << "it has moved by more than any part of itself";
}

TEST(ModeSigns, TheLargestEntryIsPositive) {
  std::vector<double> v{1.0, -3.0, 0.0, 2.0};
  make_largest_positive(view(v));
  EXPECT_EQ(v, (std::vector<double>{-1.0, 3.0, 0.0, -2.0}));
  EXPECT_FALSE(std::signbit(v[2]));
  std::vector<double> tie{-2.0, 2.0};
  make_largest_positive(view(tie));
  EXPECT_EQ(tie, (std::vector<double>{2.0, -2.0})) << "of equal magnitudes the first";
}

TEST(ActiveColumnSolutions, TakenTogetherHaveTheDigitsOfEachAlone) {
  Random random(8);
  for (const int q : {1, 2, 7, 18, 32, 33, 70}) {
    const int n = random_int(random, 1, 60);
    ProfileSystem K = test::random_profile(random, n, random_int(random, 1, n));
    test::fill_definite(K, random);
    const Profile<double> factor = K.view(K.A);
    active_column_solver(factor.A, {}, factor.IDIAG, n, true, false);
    Table V = some_table(n, q, 77), alone = V;
    for (int j = 1; j <= q; j += 3) V(1, j) = alone(1, j) = 0.0;  // loads that begin later
    std::vector<double> scratch(at(n * together(q))), energy(at(q), 5.0);
    active_column_solutions(factor.A, V, factor.IDIAG, view(scratch), view(energy));
    for (int j = 1; j <= q; ++j) {
      const ActiveColumnResult result =
          active_column_solver(factor.A, RealTable(alone).column(j), factor.IDIAG, n, false, true);
      ASSERT_EQ(energy[at(j - 1)], result.energy) << n << ' ' << q << ' ' << j;
    }
    ASSERT_EQ(V.values, alone.values) << n << ' ' << q;
  }
}

TEST(ActiveColumnPivots, TellTheLastOneAndTheFirstZero) {
  ProfileSystem free = chain(3);
  free.entry(1, 1) = free.entry(3, 3) = 1.0;
  const Profile<double> K = free.view(free.A);
  const ActiveColumnResult whole = active_column_solver(K.A, {}, K.IDIAG, 3, true, false);
  EXPECT_EQ(whole.last_pivot, 0.0);
  EXPECT_EQ(whole.zero_pivot, 3);
  ProfileSystem held = chain(2);
  const Profile<double> H = held.view(held.A);
  const ActiveColumnResult sound = active_column_solver(H.A, {}, H.IDIAG, 2, true, false);
  EXPECT_EQ(sound.last_pivot, 1.5);
  EXPECT_EQ(sound.zero_pivot, 0);
}

}  // namespace
}  // namespace tidearc
