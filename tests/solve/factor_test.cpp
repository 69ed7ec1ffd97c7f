// Factorisation and solution of random profile systems, judged by residuals, by dense arithmetic and by a plain loop.
#include "solve/factor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

#include "plain_factor.h"
#include "profile_systems.h"

namespace tidearc {
namespace {

using test::ProfileSystem;
using test::Random;
using test::random_int;
using test::random_real;
using test::residual_limit;

std::size_t at(int i) { return static_cast<std::size_t>(i); }
ConstIntegers view(const std::vector<int>& v) { return {v.data(), static_cast<int>(v.size())}; }
Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }

// A system under test with its loads.
struct Case {
  ProfileSystem system;
  std::vector<int> status;
  std::vector<int> MSTAT;
  std::vector<double> given;  // loads of free equations, displacements of prescribed ones
};

Case make_case(Random& random, int n, int tallest, int pattern, bool indefinite) {
  Case c;
  c.system = test::random_profile(random, n, tallest);
  if (indefinite) {
    test::fill_dominant(c.system, random, 0.4);
  } else {
    test::fill_definite(c.system, random);
  }
  c.status = test::random_status(random, n, pattern);
  c.MSTAT = test::links_by_definition(c.status);
  const int first_loaded = random_int(random, 1, 3) == 1 ? random_int(random, 1, n) : 1;
  for (int e = 1; e <= n; ++e) c.given.push_back(e < first_loaded ? 0.0 : random_real(random, -1.0, 1.0));
  return c;
}

std::vector<double> full_factor(const ProfileSystem& system, const std::vector<int>& MSTAT) {
  std::vector<double> values = system.A;
  EXPECT_EQ(reduce_symmetric(system.view(values), view(MSTAT), 1, 1).equation, 0);
  return values;
}

std::vector<double> solution(const Case& c, std::vector<double> factor) {
  std::vector<double> x = c.given;
  solve_symmetric(c.system.view(factor), view(c.MSTAT), view(x));
  return x;
}

double residual(const Case& c, const std::vector<double>& x) {
  return test::scaled_residual(c.system, c.status, c.given, x);
}

// Some 5000 systems: most of them small, every tenth up to 300 equations.
TEST(Factor, SolvesRandomProfileSystemsToRoundOff) {
  Random random(11);
  double worst = 0.0;
  for (int trial = 0; trial < 5000; ++trial) {
    const int n = random_int(random, 1, trial % 10 == 0 ? 300 : 40);
    const int tallest = trial % 3 == 0 ? n : random_int(random, 1, std::min(n, 25));
    const Case c = make_case(random, n, tallest, trial % 8, (trial / 8) % 2 == 0);
    const std::vector<double> x = solution(c, full_factor(c.system, c.MSTAT));
    const double r = residual(c, x);
    ASSERT_LT(r, residual_limit) << "n " << n << " trial " << trial;
    worst = std::max(worst, r);
    for (int e = 1; e <= n; ++e) {
      if (c.status[at(e - 1)] == 0) continue;
      ASSERT_EQ(x[at(e - 1)], c.given[at(e - 1)]) << "equation " << e;
    }
  }
  RecordProperty("worst_residual_thousandths", static_cast<int>(1000.0 * worst));
}

TEST(Factor, CouplesPrescribedValuesAsADensePartitionDoes) {
  Random random(12);
  for (int trial = 0; trial < 600; ++trial) {
    const int n = random_int(random, 1, 30);
    const Case c = make_case(random, n, random_int(random, 1, n), 1 + trial % 7, trial % 2 == 0);
    const std::vector<double> x = solution(c, full_factor(c.system, c.MSTAT));
    const std::vector<double> exact = test::dense_solution(c.system, c.status, c.given);
    double largest = 0.0;
    for (const double value : exact) largest = std::max(largest, std::abs(value));
    // The definite systems have condition numbers below 1E4, so 1E-10 leaves two decades of room.
    for (int e = 0; e < n; ++e) ASSERT_NEAR(x[at(e)], exact[at(e)], 1.0E-10 * largest) << "trial " << trial;
  }
}

TEST(Factor, PrescribedRowsAndColumnsKeepTheirAssembledCoefficients) {
  Random random(13);
  for (int trial = 0; trial < 200; ++trial) {
    const int n = random_int(random, 2, 40);
    const Case c = make_case(random, n, n, 1 + trial % 7, false);
    std::vector<double> values = full_factor(c.system, c.MSTAT);
    const Profile<double> factor = c.system.view(values);
    for (int j = 1; j <= n; ++j) {
      for (int i = factor.top(j); i <= j; ++i) {
        if (c.status[at(i - 1)] == 0 && c.status[at(j - 1)] == 0) continue;
        ASSERT_EQ(factor.column(j)(i), c.system(i, j));
      }
    }
  }
}

TEST(Factor, HasTheDigitsOfThePlainColumnLoop) {
  Random random(14);
  for (int trial = 0; trial < 400; ++trial) {
    const int n = random_int(random, 1, 80);
    const Case c = make_case(random, n, random_int(random, 1, n), trial % 8, trial % 2 == 0);
    ProfileSystem plain = c.system;
    test::plain_factor(plain, c.status, 1, 1);
    ASSERT_EQ(full_factor(c.system, c.MSTAT), plain.A) << "n " << n;
  }
}

// Changes columns from KFIRST on in rows from KROW0 on: what is added beside a diagonal is added to it too, and entries
// of rows above KFIRST only shrink, so that a dominant matrix stays dominant (a definite one too when KROW0 is KFIRST).
void change_tail(ProfileSystem& system, Random& random, int KFIRST, int KROW0) {
  for (int c = KFIRST; c <= system.n; ++c) {
    for (int r = std::max(system.top(c), KROW0); r < c; ++r) {
      if (random_int(random, 1, 3) != 1) continue;
      if (r < KFIRST) {
        system.entry(r, c) *= random_real(random, 0.0, 1.0);
        continue;
      }
      const double value = random_real(random, -0.5, 0.5);
      system.entry(r, c) += value;
      system.entry(r, r) += std::copysign(std::abs(value), system.entry(r, r));
      system.entry(c, c) += std::copysign(std::abs(value), system.entry(c, c));
    }
  }
}

// Another matrix is reduced in between: all that a tail needs of the reduction before it stands in the factor.
TEST(TailFactor, SolvesToRoundOffForEveryFirstColumnAndRow) {
  Random random(15);
  const Case stranger = make_case(random, 14, 14, 0, true);
  for (int trial = 0; trial < 150; ++trial) {
    const int n = random_int(random, 1, 14);
    const Case before = make_case(random, n, random_int(random, 1, n), trial % 8, true);
    const std::vector<double> old_factor = full_factor(before.system, before.MSTAT);
    for (int KFIRST = 1; KFIRST <= n; ++KFIRST) {
      for (int KROW0 = 1; KROW0 <= KFIRST; ++KROW0) {
        Case after = before;
        change_tail(after.system, random, KFIRST, KROW0);
        std::vector<double> factor = old_factor;
        full_factor(stranger.system, stranger.MSTAT);
        copy_changed_rows(after.system.view(), view(factor), KFIRST, KROW0);
        ASSERT_EQ(reduce_symmetric(after.system.view(factor), view(after.MSTAT), KFIRST, KROW0).equation, 0);
        ASSERT_LT(residual(after, solution(after, factor)), residual_limit)
            << "n " << n << " KFIRST " << KFIRST << " KROW0 " << KROW0;
      }
    }
  }
}

TEST(TailFactor, OfLargeSystemsSolvesToRoundOff) {
  Random random(16);
  for (int trial = 0; trial < 60; ++trial) {
    const int n = random_int(random, 50, 300);
    Case c = make_case(random, n, trial % 2 == 0 ? n : 30, trial % 8, trial % 3 == 0);
    std::vector<double> factor = full_factor(c.system, c.MSTAT);
    const int KFIRST = random_int(random, 1, n);
    change_tail(c.system, random, KFIRST, KFIRST);
    copy_changed_rows(c.system.view(), view(factor), KFIRST, KFIRST);
    ASSERT_EQ(reduce_symmetric(c.system.view(factor), view(c.MSTAT), KFIRST, KFIRST).equation, 0);
    ASSERT_LT(residual(c, solution(c, factor)), residual_limit);
  }
}

// With KROW0 1 no sum runs over divided rows, so a tail has the digits of a full reduction.
TEST(TailFactor, FromRowOneHasTheDigitsOfAFullFactor) {
  Random random(17);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = random_int(random, 1, 60);
    Case c = make_case(random, n, random_int(random, 1, n), trial % 8, trial % 2 == 0);
    std::vector<double> factor = full_factor(c.system, c.MSTAT);
    const int KFIRST = random_int(random, 1, n);
    change_tail(c.system, random, KFIRST, KFIRST);
    copy_changed_rows(c.system.view(), view(factor), KFIRST, 1);
    reduce_symmetric(c.system.view(factor), view(c.MSTAT), KFIRST, 1);
    ASSERT_EQ(factor, full_factor(c.system, c.MSTAT)) << "n " << n << " KFIRST " << KFIRST;
  }
}

// A change of status at equation e leaves the columns before e as they are: again the digits of a full reduction.
TEST(TailFactor, AfterAChangeOfStatusHasTheDigitsOfAFullFactor) {
  Random random(18);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = random_int(random, 2, 60);
    Case c = make_case(random, n, random_int(random, 1, n), trial % 8, trial % 2 == 0);
    std::vector<double> factor = full_factor(c.system, c.MSTAT);
    const int changed = random_int(random, 1, n);
    c.status[at(changed - 1)] = 1 - c.status[at(changed - 1)];
    c.MSTAT = test::links_by_definition(c.status);
    copy_changed_rows(c.system.view(), view(factor), changed, 1);
    reduce_symmetric(c.system.view(factor), view(c.MSTAT), changed, 1);
    ASSERT_EQ(factor, full_factor(c.system, c.MSTAT)) << "n " << n << " changed " << changed;
  }
}

// A tail that is not connected to the rows above it meets no divided row either.
TEST(TailFactor, ThatReachesNoFinalRowHasTheDigitsOfAFullFactor) {
  Random random(19);
  for (int trial = 0; trial < 200; ++trial) {
    const int n = random_int(random, 2, 60);
    const int KFIRST = random_int(random, 2, n);
    Case c;
    int address = 0;
    for (int e = 1; e <= n; ++e) {
      address += random_int(random, 1, e < KFIRST ? e : e - KFIRST + 1);
      c.system.IDIAG.push_back(address);
    }
    c.system.n = n;
    c.system.A.assign(at(address), 0.0);
    test::fill_definite(c.system, random);
    c.status.assign(at(n), 0);
    c.MSTAT = test::links_by_definition(c.status);
    std::vector<double> factor = full_factor(c.system, c.MSTAT);
    change_tail(c.system, random, KFIRST, KFIRST);
    copy_changed_rows(c.system.view(), view(factor), KFIRST, KFIRST);
    reduce_symmetric(c.system.view(factor), view(c.MSTAT), KFIRST, KFIRST);
    ASSERT_EQ(factor, full_factor(c.system, c.MSTAT)) << "n " << n << " KFIRST " << KFIRST;
  }
}

// Otherwise divided rows enter as L * L * D in place of (L * D) * L: the same value, rounded elsewhere.
TEST(TailFactor, ThatReachesFinalRowsMayDifferInTheLastDigits) {
  Random random(20);
  int different = 0;
  for (int trial = 0; trial < 100; ++trial) {
    const Case c = make_case(random, 30, 30, 0, false);
    const std::vector<double> full = full_factor(c.system, c.MSTAT);
    std::vector<double> tail = full;
    copy_changed_rows(c.system.view(), view(tail), 15, 15);
    reduce_symmetric(c.system.view(tail), view(c.MSTAT), 15, 15);
    if (tail != full) ++different;
    for (std::size_t i = 0; i < full.size(); ++i) ASSERT_NEAR(tail[i], full[i], 1.0E-11 * (1.0 + std::abs(full[i])));
  }
  EXPECT_GT(different, 0);
}

TEST(ChangedRows, CopyTheBottomOfEveryColumnFromTheFirst) {
  // Full columns of 4 equations; KFIRST 3, KROW0 2: column 3 takes rows 2..3, column 4 rows 2..4.
  const std::vector<int> IDIAG{1, 3, 6, 10};
  const std::vector<double> assembled(10, 5.0);
  std::vector<double> factor(10, 1.0);
  const Profile<const double> K{{assembled.data(), 10}, view(IDIAG), 4};
  copy_changed_rows(K, view(factor), 3, 2);
  EXPECT_EQ(factor, (std::vector<double>{1, 1, 1, 1, 5, 5, 1, 5, 5, 5}));
  copy_changed_rows(K, view(factor), 1, 1);
  EXPECT_EQ(factor, assembled);
}

TEST(ChangedRows, NeverCopyMoreThanAColumnHas) {
  const std::vector<int> IDIAG{1, 2, 4};
  const std::vector<double> assembled(4, 5.0);
  std::vector<double> factor(4, 1.0);
  copy_changed_rows({{assembled.data(), 4}, view(IDIAG), 3}, view(factor), 3, 1);
  EXPECT_EQ(factor, (std::vector<double>{1, 1, 5, 5}));
}

// Sylvester: the signs of the pivots of a congruent diagonal form are those of the eigenvalues.
TEST(NegativePivots, AreAsManyAsNegativeEigenvalues) {
  Random random(21);
  for (int trial = 0; trial < 300; ++trial) {
    const int n = random_int(random, 1, 60);
    ProfileSystem system = test::random_profile(random, n, random_int(random, 1, n));
    test::fill_dominant(system, random, 0.4);
    // Gershgorin's circles of a dominant matrix do not reach zero, so each diagonal's sign is that of one eigenvalue.
    int negative = 0;
    for (int e = 1; e <= n; ++e) negative += system(e, e) < 0.0 ? 1 : 0;
    std::vector<double> values = full_factor(system, test::links_by_definition(std::vector<int>(at(n), 0)));
    ASSERT_EQ(count_negative_pivots(system.view(values)), negative);
  }
}

// Roots of the characteristic polynomial of a chain of springs of stiffness 2,-1 with sigma taken off the diagonal are
// 2 - 2 cos(k pi / (n+1)) - sigma, so the negative ones can be counted by hand for a matrix that is not dominant.
TEST(NegativePivots, OfAShiftedChainAreTheEigenvaluesBelowTheShift) {
  constexpr double pi = 3.14159265358979323846;
  const int n = 50;
  for (const double shift : {0.001, 0.1, 0.777, 1.9, 2.1, 3.3, 3.999}) {
    std::vector<int> IDIAG;
    std::vector<double> A;
    int below = 0;
    for (int e = 1; e <= n; ++e) {
      if (e > 1) A.push_back(-1.0);
      A.push_back(2.0 - shift);
      IDIAG.push_back(2 * e - 1);
      below += 2.0 - 2.0 * std::cos(e * pi / (n + 1)) < shift ? 1 : 0;
    }
    const ProfileSystem system{n, IDIAG, A};
    std::vector<double> values = full_factor(system, test::links_by_definition(std::vector<int>(at(n), 0)));
    EXPECT_EQ(count_negative_pivots(system.view(values)), below) << "shift " << shift;
  }
}

TEST(NegativePivots, CountPrescribedDiagonalsToo) {
  const ProfileSystem system{2, {1, 3}, {4.0, 0.0, -3.0}};
  std::vector<double> values = full_factor(system, {-1, 3});
  EXPECT_EQ(count_negative_pivots(system.view(values)), 1);
}

TEST(OneEquation, IsDividedByItsPivot) {
  const Case c{{1, {1}, {4.0}}, {0}, {-1}, {6.0}};
  EXPECT_EQ(solution(c, full_factor(c.system, c.MSTAT)), std::vector<double>{1.5});
}

TEST(OneEquation, ThatIsPrescribedKeepsItsValue) {
  const Case c{{1, {1}, {4.0}}, {1}, {2}, {6.0}};
  EXPECT_EQ(solution(c, full_factor(c.system, c.MSTAT)), std::vector<double>{6.0});
}

TEST(Solution, OfZeroLoadsIsZero) {
  Random random(22);
  Case c = make_case(random, 20, 20, 0, false);
  c.given.assign(20, 0.0);
  EXPECT_EQ(solution(c, full_factor(c.system, c.MSTAT)), std::vector<double>(20, 0.0));
}

TEST(Solution, OfALoadAtTheLastEquationAloneIsRight) {
  Random random(23);
  for (int n = 1; n <= 12; ++n) {
    Case c = make_case(random, n, n, 0, false);
    c.given.assign(at(n), 0.0);
    c.given.back() = 1.0;
    EXPECT_LT(residual(c, solution(c, full_factor(c.system, c.MSTAT))), residual_limit);
  }
}

TEST(Solution, WithAllEquationsPrescribedChangesNothing) {
  Random random(24);
  Case c = make_case(random, 10, 10, 0, false);
  c.status.assign(10, 1);
  c.MSTAT = test::links_by_definition(c.status);
  EXPECT_EQ(solution(c, full_factor(c.system, c.MSTAT)), c.given);
}

TEST(ZeroPivot, NamesItsAddressAndEquation) {
  // Two equal rows: the second pivot is 2 - 2*2/2 = 0, and equation 3 would be divided by it.
  const ProfileSystem system{3, {1, 3, 6}, {2.0, 2.0, 2.0, 1.0, 1.0, 5.0}};
  std::vector<double> values = system.A;
  const std::vector<int> MSTAT{-3, -3, -3};
  const ZeroPivot zero = reduce_symmetric(system.view(values), view(MSTAT), 1, 1);
  EXPECT_EQ(zero.address, 3);
  EXPECT_EQ(zero.equation, 2);
}

TEST(ZeroPivot, InsideAPanelIsFoundAtTheFirstColumnThatNeedsIt) {
  // Six full columns of ones: equation 2 loses all its stiffness to equation 1.
  ProfileSystem system{6, {1, 3, 6, 10, 15, 21}, std::vector<double>(21, 1.0)};
  std::vector<double> values = system.A;
  const std::vector<int> MSTAT(6, -6);
  const ZeroPivot zero = reduce_symmetric(system.view(values), view(MSTAT), 1, 1);
  EXPECT_EQ(zero.equation, 2);
  EXPECT_EQ(zero.address, 3);
}

TEST(ZeroPivot, ThatNoColumnReachesIsLeftToTheDivision) {
  // The last pivot, and one that stands alone, are never tested: the division tells, in the numbers' own way.
  const ProfileSystem system{2, {1, 3}, {1.0, 1.0, 1.0}};
  Case c{system, {0, 0}, {-2, -2}, {1.0, 3.0}};
  std::vector<double> factor = full_factor(c.system, c.MSTAT);
  EXPECT_EQ(factor[2], 0.0);
  EXPECT_TRUE(std::isinf(solution(c, factor)[1]));
}

TEST(ZeroPivot, BeforeTheFirstLoadIsNotDividedBy) {
  // Three equations that stand alone. Division begins at the first load, at the last equation but one at the latest.
  const ProfileSystem last_but_one{3, {1, 2, 3}, {1.0, 0.0, 2.0}};
  EXPECT_TRUE(std::isnan(solution({last_but_one, {0, 0, 0}, {-3, -3, -3}, {0.0, 0.0, 4.0}}, last_but_one.A)[1]));
  const ProfileSystem before{3, {1, 2, 3}, {0.0, 1.0, 2.0}};
  EXPECT_EQ(solution({before, {0, 0, 0}, {-3, -3, -3}, {0.0, 0.0, 4.0}}, before.A), (std::vector<double>{0, 0, 2}));
}

TEST(ZeroPivot, OfAPrescribedEquationIsNeverUsed) {
  const ProfileSystem system{3, {1, 3, 6}, {2.0, 1.0, 0.0, 1.0, 1.0, 5.0}};
  const Case c{system, {0, 1, 0}, {-1, 3, -3}, {1.0, 0.5, 1.0}};
  EXPECT_LT(residual(c, solution(c, full_factor(c.system, c.MSTAT))), residual_limit);
}

}  // namespace
}  // namespace tidearc
