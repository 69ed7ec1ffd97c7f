// Limits of the loaded part of a member. Gravity along -Z (sg -1) unless told.
#include "sea/members/wet_part.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

namespace tidearc::test {
namespace {

constexpr double down = -1.0;

TEST(WetTest, CountsAPointInTheSurfaceAsWet) {
  EXPECT_TRUE(WETTEST(-1e-9, 0.0, down));
  EXPECT_TRUE(WETTEST(0.0, 0.0, down));
  EXPECT_FALSE(WETTEST(1e-9, 0.0, down));
  EXPECT_TRUE(WETTEST(3.0, 2.0, 1.0));  // gravity along +Z: deeper is larger
  EXPECT_FALSE(WETTEST(1.0, 2.0, 1.0));
}

TEST(LimitTest, TellsAllInsideOnePartNoPart) {
  EXPECT_EQ(LIMTEST(-10.0, 5.0, 12.0, -50.0, down), Inside::whole);
  EXPECT_EQ(LIMTEST(-10.0, 15.0, 12.0, -50.0, down), Inside::part);
  EXPECT_EQ(LIMTEST(-60.0, 5.0, 12.0, -50.0, down), Inside::part);
  EXPECT_EQ(LIMTEST(-60.0, 15.0, 12.0, -50.0, down), Inside::part);
  EXPECT_EQ(LIMTEST(15.0, 13.0, 12.0, -50.0, down), Inside::none);
  EXPECT_EQ(LIMTEST(-51.0, -60.0, 12.0, -50.0, down), Inside::none);
  EXPECT_EQ(static_cast<int>(Inside::whole), -1);
  EXPECT_EQ(static_cast<int>(Inside::none), 1);
}

TEST(LimitTest, CountsAnEndOnALimitAsInside) {
  EXPECT_EQ(LIMTEST(-50.0, 12.0, 12.0, -50.0, down), Inside::whole);
  EXPECT_EQ(LIMTEST(12.0, 13.0, 12.0, -50.0, down), Inside::part);
  EXPECT_EQ(LIMTEST(12.0 + 1e-9, 13.0, 12.0, -50.0, down), Inside::none);
  EXPECT_EQ(LIMTEST(-60.0, -50.0, 12.0, -50.0, down), Inside::part);
  EXPECT_EQ(LIMTEST(-60.0, -50.0 - 1e-9, 12.0, -50.0, down), Inside::none);
}

TEST(LimitTest, FollowsTheSignOfGravity) {
  EXPECT_EQ(LIMTEST(10.0, 20.0, 0.0, 50.0, 1.0), Inside::whole);
  EXPECT_EQ(LIMTEST(-10.0, -20.0, 0.0, 50.0, 1.0), Inside::none);
  EXPECT_EQ(LIMTEST(60.0, 70.0, 0.0, 50.0, 1.0), Inside::none);
}

TEST(Clip, KeepsTheWholeBetweenTheLimits) {
  Stretch kept;
  EXPECT_EQ(CLIP(-50.0, 12.0, 12.0, -50.0, down, kept), Inside::whole);
  EXPECT_EQ(kept.from, 0.0);
  EXPECT_EQ(kept.to, 1.0);
}

TEST(Clip, CutsBothEndsInEitherDirection) {
  Stretch kept;
  EXPECT_EQ(CLIP(-60.0, 20.0, 10.0, -50.0, down, kept), Inside::part);
  EXPECT_DOUBLE_EQ(kept.from, 0.125);
  EXPECT_DOUBLE_EQ(kept.to, 0.875);
  EXPECT_EQ(CLIP(20.0, -60.0, 10.0, -40.0, down, kept), Inside::part);
  EXPECT_DOUBLE_EQ(kept.from, 0.125);
  EXPECT_DOUBLE_EQ(kept.to, 0.75);
  EXPECT_EQ(CLIP(60.0, -20.0, -10.0, 50.0, 1.0, kept), Inside::part);  // gravity along +Z
  EXPECT_DOUBLE_EQ(kept.from, 0.125);
  EXPECT_DOUBLE_EQ(kept.to, 0.875);
}

TEST(Clip, TakesAPartWithoutLengthAsNone) {
  Stretch kept;
  EXPECT_EQ(CLIP(12.0, 20.0, 12.0, -50.0, down, kept), Inside::none);
  EXPECT_EQ(CLIP(-60.0, -50.0, 12.0, -50.0, down, kept), Inside::none);
  EXPECT_EQ(CLIP(13.0, 20.0, 12.0, -50.0, down, kept), Inside::none);
  EXPECT_EQ(CLIP(-1.0, 1.0, 0.0, 0.0, down, kept), Inside::none);  // limits that coincide
}

TEST(Clip, JudgesALevelMemberByItsElevation) {
  Stretch kept;
  EXPECT_EQ(CLIP(12.0, 12.0, 12.0, -50.0, down, kept), Inside::whole);
  EXPECT_EQ(CLIP(-50.0, -50.0, 12.0, -50.0, down, kept), Inside::whole);
  EXPECT_EQ(CLIP(12.5, 12.5, 12.0, -50.0, down, kept), Inside::none);
  EXPECT_EQ(CLIP(-50.5, -50.5, 12.0, -50.0, down, kept), Inside::none);
}

std::vector<double> segments(const std::vector<double>& levels, double hA, double hB) {
  std::array<double, 20> parts;
  const int count = LEVELS(levels, hA, hB, parts);
  return {parts.begin(), parts.begin() + count};
}

TEST(Levels, SplitAtLevelsStrictlyBetweenTheEnds) {
  const std::vector<double> levels{0.0, 20.0, 50.0};
  EXPECT_EQ(segments(levels, 0.0, 50.0), (std::vector<double>{0.4, 0.6}));
  EXPECT_EQ(segments(levels, 50.0, 0.0), (std::vector<double>{0.6, 0.4}));
  EXPECT_EQ(segments(levels, -10.0, 70.0), (std::vector<double>{0.125, 0.25, 0.375, 0.25}));
  EXPECT_EQ(segments(levels, 20.0, 50.0), (std::vector<double>{1.0}));
  EXPECT_EQ(segments(levels, 21.0, 49.0), (std::vector<double>{1.0}));
}

TEST(Levels, LeaveALevelMemberWhole) {
  EXPECT_EQ(segments({0.0, 20.0, 50.0}, 20.0, 20.0), (std::vector<double>{1.0}));
  EXPECT_EQ(segments({}, 0.0, 20.0), (std::vector<double>{1.0}));
}

TEST(Levels, AreDepthsSoHeightsAboveTheWaterWouldNeverSplit) {
  // A member under water has negative heights above mean water level and all current levels are zero or more: taken as
  // heights its ends enclose no level; as depths they enclose the one at 20.
  const std::vector<double> levels{0.0, 20.0, 50.0};
  EXPECT_EQ(segments(levels, -40.0, -5.0).size(), 1u);
  EXPECT_EQ(segments(levels, 40.0, 5.0).size(), 2u);
}

TEST(Levels, AddToOneAlsoOutOfOrder) {
  const std::vector<double> parts = segments({0.0, 30.0, 10.0, 50.0, 20.0}, 5.0, 45.0);
  EXPECT_EQ(parts, (std::vector<double>{0.125, 0.25, 0.25, 0.375}));
}

}  // namespace
}  // namespace tidearc::test
