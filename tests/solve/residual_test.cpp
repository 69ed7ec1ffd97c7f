// The residual by which solutions are judged, on numbers that can be followed by hand.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "profile_systems.h"

namespace tidearc::test {
namespace {

constexpr double eps = 0x1p-53;

// Rows (4, 1) and (1, 3), x = (1, 2), so b = (6, 7); norm1(K) = 5 and norm1(x) = 3.
const ProfileSystem two{2, {1, 3}, {4.0, 1.0, 3.0}};

TEST(ScaledResidual, IsTheSumOfRestsOverTheNormsAndHalfAUnitOfTheLastPlace) {
  EXPECT_EQ(scaled_residual(two, {0, 0}, {6.0, 7.0}, {1.0, 2.0}), 0.0);
  EXPECT_DOUBLE_EQ(scaled_residual(two, {0, 0}, {6.25, 6.5}, {1.0, 2.0}), 0.75 / (5.0 * 3.0 * eps));
}

TEST(ScaledResidual, OfAnUnsymmetricMatrixTakesItsLargestColumn) {
  // Rows (4, -2) and (8, 3): columns of 12 and 5, rows of 6 and 11; K x = (0, 14).
  const TestMatrix matrix{{2, {1, 3}, {4.0, -2.0, 3.0}}, {4.0, 8.0, 3.0}};
  EXPECT_DOUBLE_EQ(scaled_residual(matrix, {0, 0}, {0.5, 14.0}, {1.0, 2.0}), 0.5 / (12.0 * 3.0 * eps));
}

TEST(ScaledResidual, CountsPrescribedEquationsAmongTheRightHandSide) {
  // Equation 2 is prescribed as 2: the first row is 4 x = 6 - 1 * 2, its scale 4 * 1 and 1 * 2.
  EXPECT_EQ(scaled_residual(two, {0, 1}, {6.0, 2.0}, {1.0, 2.0}), 0.0);
  EXPECT_DOUBLE_EQ(scaled_residual(two, {0, 1}, {6.5, 2.0}, {1.0, 2.0}), 0.5 / ((4.0 + 2.0) * eps));
}

TEST(ScaledResidual, OfASolutionThatIsNotFiniteIsInfinite) {
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(scaled_residual(two, {0, 0}, {6.0, 7.0}, {std::numeric_limits<double>::quiet_NaN(), 2.0}), infinity);
  EXPECT_EQ(scaled_residual(two, {0, 1}, {6.0, infinity}, {1.0, infinity}), infinity);
}

}  // namespace
}  // namespace tidearc::test
