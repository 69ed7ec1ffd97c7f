// Small vector routines.
#include "run/vectors.h"

#include <gtest/gtest.h>

#include <array>

namespace tidearc {
namespace {

TEST(Vectors, ZeroesAsManyRealsAsAsked) {
  std::array<double, 4> v{1.0, 2.0, 3.0, 4.0};
  RZERO(v.data(), 3);
  EXPECT_EQ(v, (std::array<double, 4>{0.0, 0.0, 0.0, 4.0}));
}

TEST(Vectors, ZeroesNothingForACountThatIsNotPositive) {
  std::array<double, 2> v{1.0, 2.0};
  RZERO(v.data(), 0);
  RZERO(v.data(), -5);
  EXPECT_EQ(v, (std::array<double, 2>{1.0, 2.0}));
}

TEST(Vectors, CopiesIntegersOverAnOverlapUpward) {
  std::array<int, 5> v{1, 2, 3, 4, 5};
  ICOPY(v.data() + 1, v.data(), 4);
  EXPECT_EQ(v, (std::array<int, 5>{1, 1, 2, 3, 4}));
}

TEST(Vectors, CopiesIntegersOverAnOverlapDownward) {
  std::array<int, 5> v{1, 2, 3, 4, 5};
  ICOPY(v.data(), v.data() + 1, 4);
  EXPECT_EQ(v, (std::array<int, 5>{2, 3, 4, 5, 5}));
}

TEST(Vectors, CopiesRealsOverAnOverlap) {
  std::array<double, 4> v{1.0, 2.0, 3.0, 4.0};
  RCOPY(v.data() + 1, v.data(), 3);
  EXPECT_EQ(v, (std::array<double, 4>{1.0, 1.0, 2.0, 3.0}));
}

TEST(Vectors, CopiesNothingForANegativeCount) {
  std::array<double, 2> r{1.0, 2.0};
  std::array<int, 2> i{1, 2};
  RCOPY(r.data(), r.data() + 1, -1);
  ICOPY(i.data(), i.data() + 1, -1);
  EXPECT_EQ(r[0], 1.0);
  EXPECT_EQ(i[0], 1);
}

TEST(Vectors, DotProductOfNothingIsZero) {
  const std::array<double, 1> v{3.0};
  EXPECT_EQ(DOT(v.data(), v.data(), 0), 0.0);
  EXPECT_EQ(DOT(v.data(), v.data(), -1), 0.0);
}

TEST(Vectors, DotProductOfIntegersIsExact) {
  const std::array<double, 3> a{1.0, -2.0, 3.0};
  const std::array<double, 3> b{4.0, 5.0, 6.0};
  EXPECT_EQ(DOT(a.data(), b.data(), 3), 12.0);
  EXPECT_EQ(DOT3(a.data(), b.data()), 12.0);
}

TEST(Vectors, DotProductIsSummedFromLowIndexToHigh) {
  // 1 is lost beside 1E16 when it comes second, and counts when it comes last: the sum shows the order.
  const std::array<double, 3> ones{1.0, 1.0, 1.0};
  const std::array<double, 3> lost{1.0E16, 1.0, -1.0E16};
  const std::array<double, 3> kept{1.0E16, -1.0E16, 1.0};
  EXPECT_EQ(DOT(lost.data(), ones.data(), 3), 0.0);
  EXPECT_EQ(DOT(kept.data(), ones.data(), 3), 1.0);
}

}  // namespace
}  // namespace tidearc
