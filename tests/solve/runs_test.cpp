// Run links and the seven operations along runs.
#include "solve/runs.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "profile_systems.h"

namespace tidearc {
namespace {

using test::Random;
using test::random_int;
using test::random_real;

std::vector<double> random_reals(Random& random, int n) {
  std::vector<double> v(static_cast<std::size_t>(n));
  for (double& x : v) x = random_real(random, -2.0, 2.0);
  return v;
}

Reals view(std::vector<double>& v) { return {v.data(), static_cast<int>(v.size())}; }
ConstIntegers view(const std::vector<int>& v) { return {v.data(), static_cast<int>(v.size())}; }

std::vector<int> links_of(const std::vector<int>& status) {
  std::vector<int> links(status.size());
  link_status(view(status), {links.data(), static_cast<int>(links.size())}, static_cast<int>(status.size()));
  return links;
}

TEST(RunLinks, FollowTheDefinitionForEveryPatternOfEightEquations) {
  for (int n = 1; n <= 8; ++n) {
    for (int bits = 0; bits < (1 << n); ++bits) {
      std::vector<int> status;
      for (int e = 0; e < n; ++e) status.push_back((bits >> e) & 1);
      EXPECT_EQ(links_of(status), test::links_by_definition(status)) << "n " << n << " bits " << bits;
    }
  }
}

TEST(RunLinks, TellEndsOfRunsInWords) {
  // Equations 1..2 free, 3..4 prescribed, 5 free, 6 prescribed at the end: NEQ + 1 stands behind the last run.
  EXPECT_EQ(links_of({0, 0, 1, 1, 0, 1}), (std::vector<int>{-2, -2, 5, 5, -5, 7}));
}

TEST(RunLinks, AreBuiltInTheArrayOfTheStatusWords) {
  std::vector<int> words{1, 0, 0, 1};
  const Integers same{words.data(), 4};
  link_status(same, same, 4);
  EXPECT_EQ(words, (std::vector<int>{2, -3, -3, 5}));
}

// What each operation does at one row, written from its definition.
struct ByDefinition {
  std::vector<double> a, b, c;
  std::vector<int> IDIAG;
  double s = 0.0;

  void row(RunOperation op, std::size_t i) {
    const std::size_t d = static_cast<std::size_t>(IDIAG[i] - 1);
    switch (op) {
      case product_profile_pivot:
        s = std::fma(a[i] * c[d], b[i], s);
        break;
      case product:
        s = std::fma(a[i], b[i], s);
        break;
      case subtract:
        a[i] = std::fma(-s, b[i], a[i]);
        break;
      case product_pivot:
        s = std::fma(a[i] * c[i], b[i], s);
        break;
      case divide_pivot:
        divide(i, b[i]);
        break;
      case divide_profile_pivot:
        divide(i, b[d]);
        break;
      case product_prescribed:
        s = std::fma(a[i], b[i], s);
        break;
    }
  }
  void divide(std::size_t i, double pivot) {
    const double t = a[i] / pivot;
    s = std::fma(a[i], t, s);
    a[i] = t;
  }
};

TEST(RunOperations, VisitExactlyTheRowsOfTheirKindInRisingOrder) {
  Random random(1);
  for (int trial = 0; trial < 4000; ++trial) {
    const int n = random_int(random, 1, 40);
    const std::vector<int> status = test::random_status(random, n, trial % 8);
    const std::vector<int> MSTAT = test::links_by_definition(status);
    const auto op = static_cast<RunOperation>(random_int(random, 1, 7));
    ByDefinition plain{random_reals(random, n), random_reals(random, 2 * n), random_reals(random, 2 * n), {}, 0.5};
    for (int i = 0; i < n; ++i) plain.IDIAG.push_back(2 * (i + 1));
    std::vector<double> a = plain.a, b = plain.b, c = plain.c;
    const int r1 = random_int(random, 1, n);
    const int r2 = random_int(random, 0, n);
    double s = plain.s;
    EXPECT_EQ(RUNOP(op, {view(a), view(b), view(c), view(plain.IDIAG)}, view(MSTAT), s, r1, r2), 0);
    for (int i = r1; i <= r2; ++i) {
      const bool is_prescribed = status[static_cast<std::size_t>(i - 1)] != 0;
      if (is_prescribed == (op == product_prescribed)) plain.row(op, static_cast<std::size_t>(i - 1));
    }
    ASSERT_EQ(s, plain.s) << "operation " << op;
    ASSERT_EQ(a, plain.a) << "operation " << op;
  }
}

TEST(RunOperations, OfOneRangeIgnoreStatus) {
  std::vector<double> a{1.0, 2.0, 3.0}, b{10.0, 20.0, 30.0}, c{2.0, 0.5, 1.0};
  double s = 1.0;
  VECOP(product_pivot, {view(a), view(b), view(c), {}}, s, 2, 3);
  EXPECT_EQ(s, 1.0 + 20.0 + 90.0);
  VECOP(product, {view(a), view(b)}, s, 3, 2);
  EXPECT_EQ(s, 111.0);
}

TEST(RunOperations, DivisionStopsAtAZeroPivotAndLeavesItsRow) {
  std::vector<double> a{6.0, 8.0, 9.0}, pivots{2.0, 0.0, 3.0};
  double s = 0.0;
  EXPECT_EQ(VECOP(divide_pivot, {view(a), view(pivots)}, s, 1, 3), 2);
  EXPECT_EQ(a, (std::vector<double>{3.0, 8.0, 9.0}));
  EXPECT_EQ(s, 18.0);

  std::vector<double> profile{2.0, 7.0, 4.0, 7.0, 7.0, 0.0};  // diagonals at 1, 3, 6
  const std::vector<int> IDIAG{1, 3, 6};
  const std::vector<int> MSTAT{-3, -3, -3};
  std::vector<double> x{6.0, 8.0, 9.0};
  s = 0.0;
  EXPECT_EQ(RUNOP(divide_profile_pivot, {view(x), view(profile), {}, view(IDIAG)}, view(MSTAT), s, 1, 3), 3);
  EXPECT_EQ(x, (std::vector<double>{3.0, 2.0, 9.0}));
}

TEST(RunOperations, DivisionStepsOverAZeroPivotOfAPrescribedEquation) {
  std::vector<double> a{6.0, 8.0, 9.0}, pivots{2.0, 0.0, 3.0};
  const std::vector<int> MSTAT{-1, 3, -3};
  double s = 0.0;
  EXPECT_EQ(RUNOP(divide_pivot, {view(a), view(pivots)}, view(MSTAT), s, 1, 3), 0);
  EXPECT_EQ(a, (std::vector<double>{3.0, 8.0, 3.0}));
}

TEST(PanelSums, HaveTheDigitsOfEachColumnAlone) {
  Random random(2);
  for (int trial = 0; trial < 500; ++trial) {
    const int n = random_int(random, 1, 60);
    const std::vector<int> MSTAT = test::links_by_definition(test::random_status(random, n, trial % 8));
    std::array<std::vector<double>, panel_width> columns;
    for (auto& column : columns) column = random_reals(random, n);
    std::vector<double> b = random_reals(random, n);
    const Panel panel{view(columns[0]), view(columns[1]), view(columns[2]), view(columns[3])};
    const int r1 = random_int(random, 1, n), r2 = random_int(random, r1 - 1, n);
    PanelSums s{1.0, 2.0, 3.0, 4.0};
    panel_products(panel, view(b), view(MSTAT), s, r1, r2);
    for (std::size_t k = 0; k < panel_width; ++k) {
      double alone = static_cast<double>(k) + 1.0;
      RUNOP(product, {view(columns[k]), view(b)}, view(MSTAT), alone, r1, r2);
      ASSERT_EQ(s[k], alone);
    }
  }
}

}  // namespace
}  // namespace tidearc
