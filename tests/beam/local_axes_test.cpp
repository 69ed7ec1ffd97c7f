// Local axes of members: conventions, third nodes, offsets, angle, and the limits at which a member counts as vertical.
#include "elements/beam/local_axes.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace tidearc::test {
namespace {

using Point = std::array<double, 3>;
constexpr std::array<double, 6> none{};

LocalAxes axes_of(const Point& to, AxisConvention convention, const double* K = nullptr, double angle = 0.0) {
  return local_axes(Point{0, 0, 0}, to, none, K, convention, angle);
}

void expect_axes(const LocalAxes& found, const Point& x, const Point& y, const Point& z) {
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(found.axes[i], x[i], 1e-15);
    EXPECT_NEAR(found.axes[i + 3], y[i], 1e-15);
    EXPECT_NEAR(found.axes[i + 6], z[i], 1e-15);
  }
}

/// A unit vector whose component `axis` is `cosine`, the rest along `other`.
Point direction(std::size_t axis, double cosine, std::size_t other) {
  Point p{};
  p[axis] = cosine;
  p[other] = std::sqrt(1.0 - cosine * cosine);
  return p;
}

void expect_right_handed(const LocalAxes& found) {
  const double* x = found.axes;
  const double* y = x + 3;
  const double* z = x + 6;
  for (int k = 0; k < 3; ++k) {
    const int i = (k + 1) % 3;
    const int j = (k + 2) % 3;
    EXPECT_NEAR(x[i] * y[j] - x[j] * y[i], z[k], 1e-14);
  }
  EXPECT_NEAR(y[0] * y[0] + y[1] * y[1] + y[2] * y[2], 1.0, 1e-14);
  EXPECT_NEAR(x[0] * y[0] + x[1] * y[1] + x[2] * y[2], 0.0, 1e-14);
}

TEST(LocalAxes, AHorizontalMemberStandsAlikeUnderBothConventions) {
  for (const AxisConvention convention : {axes_SACS, axes_STRUDL}) {
    const LocalAxes found = axes_of({4, 0, 0}, convention);
    EXPECT_DOUBLE_EQ(found.length, 4.0);
    expect_axes(found, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
  }
}

TEST(LocalAxes, SACSKeepsYHorizontalAndZUpward) {
  const LocalAxes found = axes_of({3, 4, 12}, axes_SACS);
  expect_axes(found, {3.0 / 13, 4.0 / 13, 12.0 / 13}, {-0.8, 0.6, 0}, {-0.6 * 12 / 13, -0.8 * 12 / 13, 5.0 / 13});
  expect_right_handed(found);
}

TEST(LocalAxes, STRUDLKeepsZHorizontalAndYUpward) {
  const LocalAxes found = axes_of({3, 12, 4}, axes_STRUDL);
  expect_axes(found, {3.0 / 13, 12.0 / 13, 4.0 / 13}, {-0.6 * 12 / 13, 5.0 / 13, -0.8 * 12 / 13}, {-0.8, 0, 0.6});
  expect_right_handed(found);
}

TEST(LocalAxes, AVerticalMemberUnderSACSTakesXAndY) {
  expect_axes(axes_of({0, 0, 5}, axes_SACS), {0, 0, 1}, {1, 0, 0}, {0, 1, 0});
  expect_axes(axes_of({0, 0, -5}, axes_SACS), {0, 0, -1}, {-1, 0, 0}, {0, 1, 0});
}

TEST(LocalAxes, AMemberAlongYUnderSTRUDLTakesXAndZ) {
  expect_axes(axes_of({0, 5, 0}, axes_STRUDL), {0, 1, 0}, {-1, 0, 0}, {0, 0, 1});
  expect_axes(axes_of({0, -5, 0}, axes_STRUDL), {0, -1, 0}, {1, 0, 0}, {0, 0, 1});
}

TEST(LocalAxes, TheVerticalLimitIsACosineOf0999) {
  // At 0.9995 the axes are those of a vertical member, scaled by the cosine and not normal to the member.
  const LocalAxes inside = axes_of(direction(2, 0.9995, 0), axes_SACS);
  expect_axes(inside, direction(2, 0.9995, 0), {inside.axes[2], 0, 0}, {0, 1, 0});
  EXPECT_NEAR(inside.axes[3], 0.9995, 1e-15);
  const LocalAxes outside = axes_of(direction(2, 0.99899, 0), axes_SACS);
  expect_right_handed(outside);
  EXPECT_NEAR(outside.axes[4], 1.0, 1e-15);  // y is horizontal
  const LocalAxes just_inside = axes_of(direction(2, 0.99901, 0), axes_SACS);
  EXPECT_NEAR(just_inside.axes[3], 0.99901, 1e-14);
}

TEST(LocalAxes, ANearlyVerticalMemberFollowsTheGeneralRuleOfSTRUDL) {
  const LocalAxes found = axes_of(direction(2, 0.9995, 0), axes_STRUDL);
  expect_right_handed(found);
  EXPECT_NEAR(found.axes[4], 1.0, 1e-15);
}

TEST(LocalAxes, TheLimitOfSTRUDLIsOnY) {
  const LocalAxes inside = axes_of(direction(1, 0.9995, 2), axes_STRUDL);
  EXPECT_NEAR(inside.axes[3], -0.9995, 1e-15);
  EXPECT_NEAR(inside.axes[8], 1.0, 1e-15);
  expect_right_handed(axes_of(direction(1, 0.99899, 2), axes_STRUDL));
  expect_right_handed(axes_of(direction(1, 0.9995, 2), axes_SACS));
}

TEST(LocalAxes, AThirdNodeLiesInThePlaneOfXAndY) {
  const double K[3] = {7, 2, 0};
  expect_axes(axes_of({5, 0, 0}, axes_STRUDL, K), {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
  const double below[3] = {1, 0, -3};
  expect_axes(axes_of({5, 0, 0}, axes_SACS, below), {1, 0, 0}, {0, 0, -1}, {0, 1, 0});
}

TEST(LocalAxes, AThirdNodeOnTheLineFallsBackToSACS) {
  for (const double along : {-3.0, 0.5, 1.0, 7.0}) {
    const double K[3] = {0.3 * along, 0.4 * along, 1.2 * along};
    const LocalAxes found = axes_of({0.3, 0.4, 1.2}, axes_STRUDL, K);
    EXPECT_TRUE(found.K_on_axis) << along;
    const LocalAxes SACS = axes_of({0.3, 0.4, 1.2}, axes_SACS);
    for (int i = 0; i < 9; ++i) EXPECT_DOUBLE_EQ(found.axes[i], SACS.axes[i]);
  }
  const double beside[3] = {0.3 + 1e-8, 0.4, 1.2};
  EXPECT_FALSE(axes_of({0.3, 0.4, 1.2}, axes_SACS, beside).K_on_axis);
}

TEST(LocalAxes, OffsetsMoveTheEndsAndTheOriginOfTheThirdNode) {
  const std::array<double, 6> ECC = {1, -1, 0, 0, 2, 2};  // I by (1,0,2), J by (-1,0,2)
  const double K[3] = {5, 3, 2};
  const LocalAxes found = local_axes(Point{0, 0, 0}, Point{10, 0, 0}, ECC, K, axes_SACS, 0.0);
  EXPECT_DOUBLE_EQ(found.length, 8.0);
  expect_axes(found, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
}

TEST(LocalAxes, AnAngleTurnsYTowardsZ) {
  const LocalAxes found = axes_of({4, 0, 0}, axes_SACS, nullptr, 0.5);
  expect_axes(found, {1, 0, 0}, {0, std::cos(0.5), std::sin(0.5)}, {0, -std::sin(0.5), std::cos(0.5)});
}

TEST(LocalAxes, EndsThatMeetHaveNoLength) {
  EXPECT_EQ(axes_of({0, 0, 0}, axes_SACS).length, 0.0);
  const std::array<double, 6> ECC = {1, 0, 0, 0, 0, 0};
  EXPECT_EQ(local_axes(Point{0, 0, 0}, Point{1, 0, 0}, ECC, nullptr, axes_SACS, 0.0).length, 0.0);
}

}  // namespace
}  // namespace tidearc::test
