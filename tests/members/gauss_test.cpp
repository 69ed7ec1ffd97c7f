// Points of integration.
#include <gtest/gtest.h>

#include <cmath>

#include "water.h"

namespace tidearc::test {
namespace {

TEST(GaussRule, IsExactToItsDegree) {
  for (int count = 1; count <= most_gauss_points; ++count) {
    const GaussRule rule = gauss_rule(count);
    ASSERT_EQ(rule.count, count);
    for (int power = 0; power <= 2 * count - 1; ++power) {
      double sum = 0.0;
      for (std::size_t p = 0; p < static_cast<std::size_t>(count); ++p) {
        sum += rule.weight[p] * std::pow(rule.point[p], power);
      }
      EXPECT_NEAR(sum, power % 2 == 0 ? 2.0 / (power + 1) : 0.0, 2e-7) << count << " points, power " << power;
    }
  }
}

TEST(GaussRule, HoldsSinglePrecisionValuesWidened) {
  // Roots of the Legendre polynomials: 1/sqrt 3, sqrt 3/5, sqrt(3/7 -+ 2/7 sqrt 6/5); weights 5/9, 8/9, (18 +- sqrt
  // 30)/36; all through a float.
  const auto widened = [](double value) { return static_cast<double>(static_cast<float>(value)); };
  EXPECT_EQ(gauss_rule(1).weight[0], 2.0);
  EXPECT_EQ(gauss_rule(2).point[0], widened(1.0 / std::sqrt(3.0)));
  EXPECT_EQ(gauss_rule(3).point[0], widened(std::sqrt(0.6)));
  EXPECT_EQ(gauss_rule(3).weight[0], widened(5.0 / 9.0));
  EXPECT_EQ(gauss_rule(3).weight[1], widened(8.0 / 9.0));
  EXPECT_EQ(gauss_rule(4).point[0], widened(std::sqrt((3.0 + 2.0 * std::sqrt(1.2)) / 7.0)));
  EXPECT_EQ(gauss_rule(4).point[1], widened(std::sqrt((3.0 - 2.0 * std::sqrt(1.2)) / 7.0)));
  EXPECT_EQ(gauss_rule(4).weight[0], widened((18.0 - std::sqrt(30.0)) / 36.0));
  EXPECT_EQ(gauss_rule(4).weight[1], widened((18.0 + std::sqrt(30.0)) / 36.0));
  EXPECT_NE(gauss_rule(2).point[0], 1.0 / std::sqrt(3.0));
}

TEST(GaussRule, IsEmptyForAnyOtherCount) {
  for (const int count : {-1, 0, 5}) EXPECT_EQ(gauss_rule(count).count, 0);
}

TEST(GaussCount, IsTheElementsOwnOrTheGroups) {
  EXPECT_EQ(gauss_count(2, 3), 2);
  EXPECT_EQ(gauss_count(0, 3), 3);
  EXPECT_EQ(gauss_count(-1, 3), 3);
  EXPECT_EQ(gauss_count(4, 0), 4);
}

TEST(GaussCount, IsCutAtFourAndNoneWithoutBoth) {
  EXPECT_EQ(gauss_count(5, 1), 4);
  EXPECT_EQ(gauss_count(0, 9), 4);
  EXPECT_EQ(gauss_count(0, 0), 0);
  EXPECT_EQ(gauss_count(-2, -3), 0);
}

}  // namespace
}  // namespace tidearc::test
