// From point loads to end loads.
#include "sea/members/segment_force.h"

#include <gtest/gtest.h>

#include "water.h"

namespace tidearc::test {
namespace {

MemberLoad fixed_ends(const Point& P, double a, double l) {
  MemberLoad load{};
  const std::array<PointLoad, 1> points{{{P, a}}};
  SEGFORCE(load, l, points);
  return load;
}

MemberLoad levers(const Point& P, double a, double l) {
  MemberLoad load{};
  const std::array<PointLoad, 1> points{{{P, a}}};
  SEGFORCE2(load, l, points);
  return load;
}

// Tables of fixed-end beams: P 2 at 3 of 10 gives 1.568, 0.432 and 2.94, 1.26.
TEST(SegmentForce, GivesTheFixedEndLoadsOfATransverseForce) {
  const MemberLoad y = fixed_ends({0.0, 2.0, 0.0}, 3.0, 10.0);
  EXPECT_NEAR(y[1], 1.568, 1e-14);
  EXPECT_NEAR(y[7], 0.432, 1e-14);
  EXPECT_NEAR(y[5], 2.94, 1e-14);
  EXPECT_NEAR(y[11], -1.26, 1e-14);
  const MemberLoad z = fixed_ends({0.0, 0.0, 2.0}, 3.0, 10.0);
  EXPECT_NEAR(z[2], 1.568, 1e-14);
  EXPECT_NEAR(z[8], 0.432, 1e-14);
  EXPECT_NEAR(z[4], -2.94, 1e-14);
  EXPECT_NEAR(z[10], 1.26, 1e-14);
  for (const std::size_t i : {0u, 2u, 3u, 4u, 6u, 8u, 9u, 10u}) EXPECT_EQ(y[i], 0.0);
}

TEST(SegmentForce, SharesAnAxialForceByItsPlace) {
  const MemberLoad load = fixed_ends({2.0, 0.0, 0.0}, 3.0, 10.0);
  EXPECT_NEAR(load[0], 1.4, 1e-14);
  EXPECT_NEAR(load[6], 0.6, 1e-14);
}

TEST(SegmentForce, SharesAllByLeverInItsSecondForm) {
  const MemberLoad load = levers({1.0, 2.0, 3.0}, 3.0, 10.0);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(load[i], 0.7 * static_cast<double>(i + 1), 1e-14);
    EXPECT_NEAR(load[6 + i], 0.3 * static_cast<double>(i + 1), 1e-14);
    EXPECT_EQ(load[3 + i], 0.0);
    EXPECT_EQ(load[9 + i], 0.0);
  }
}

TEST(SegmentForce, KeepsForceAndOverturningInBothForms) {
  for (const double a : {0.0, 0.7, 5.0, 9.9, 10.0}) {
    for (const bool full : {true, false}) {
      const MemberLoad load = full ? fixed_ends({1.0, 2.0, 3.0}, a, 10.0) : levers({1.0, 2.0, 3.0}, a, 10.0);
      EXPECT_NEAR(load[1] + load[7], 2.0, 1e-13);
      EXPECT_NEAR(load[2] + load[8], 3.0, 1e-13);
      EXPECT_NEAR(load[5] + load[11] + 10.0 * load[7], 2.0 * a, 1e-13);   // about z at I: x Fy
      EXPECT_NEAR(load[4] + load[10] - 10.0 * load[8], -3.0 * a, 1e-13);  // about y at I: -x Fz
    }
  }
}

TEST(SegmentForce, OfAUniformLoadHasTheMomentsOfTheTable) {
  const WaveMember member = made_ready(pile(-12.0, 0.0, 2), plain_tube());
  MemberLoad load{};
  integrate(member, {0.0, 1.0}, load, [](double) { return Point{0.0, 5.0, 0.0}; });
  EXPECT_NEAR(load[1], 30.0, 1e-6);  // w L/2
  EXPECT_NEAR(load[5], 60.0, 1e-5);  // w L^2/12
  EXPECT_NEAR(load[11], -60.0, 1e-5);
}

TEST(SegmentForce, OfAPartUsesTheFullLengthOfTheMember) {
  // w over the second half of a member of 10: FI = w L 3/32, FJ = w L 13/32, MI = 5 w L^2/192, MJ = -11 w L^2/192.
  const WaveMember member = made_ready(pile(-10.0, 0.0, 2), plain_tube());
  MemberLoad load{};
  integrate(member, {0.5, 1.0}, load, [](double) { return Point{0.0, 1.0, 0.0}; });
  EXPECT_NEAR(load[1], 30.0 / 32.0, 3e-7);
  EXPECT_NEAR(load[7], 130.0 / 32.0, 3e-7);
  EXPECT_NEAR(load[5], 500.0 / 192.0, 1e-6);  // cubics of the place: two points integrate them
  EXPECT_NEAR(load[11], -1100.0 / 192.0, 1e-6);
}

}  // namespace
}  // namespace tidearc::test
