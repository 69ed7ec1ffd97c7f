// The force-deformation curve: walk, slope, search for the deformation of a force, next ordinates.
#include "elements/truss/curve.h"

#include <gtest/gtest.h>

#include <array>

namespace tidearc {
namespace {

using Curve = std::array<double, 22>;

/// Slope 1 from -1 to 1, slope 0.25 to 5, slope -0.5 to 7.
Curve sample() {
  Curve curve{-1, -1, 0, 0, 1, 1, 5, 2, 7, 1};
  complete_curve(curve);
  return curve;
}

TEST(TrussCurve, PairsBehindTheLastRepeatIt) {
  const Curve curve = sample();
  for (std::size_t k = 5; k < 11; ++k) {
    EXPECT_EQ(curve[2 * k], 7.0);
    EXPECT_EQ(curve[2 * k + 1], 1.0);
  }
}

TEST(TrussCurve, APairOfZerosBetweenOthersCounts) { EXPECT_EQ(walk_curve(sample(), 0.0).code, 102); }

TEST(TrussCurve, ForceIsInterpolatedOnInteriorSegments) {
  const Curve curve = sample();
  EXPECT_DOUBLE_EQ(walk_curve(curve, -0.5).value, -0.5);
  EXPECT_DOUBLE_EQ(walk_curve(curve, 3.0).value, 1.5);
  EXPECT_DOUBLE_EQ(walk_curve(curve, 6.0).value, 1.5);
  EXPECT_EQ(walk_curve(curve, -0.5).code, 101);
  EXPECT_EQ(walk_curve(curve, 3.0).code, 103);
  EXPECT_EQ(walk_curve(curve, 6.0).code, 104);
}

TEST(TrussCurve, ForceIsHeldOutside) {
  const Curve curve = sample();
  EXPECT_EQ(walk_curve(curve, -9.0).value, -1.0);
  EXPECT_EQ(walk_curve(curve, -9.0).code, 100);
  EXPECT_EQ(walk_curve(curve, 9.0).value, 1.0);
  EXPECT_EQ(walk_curve(curve, 9.0).code, 110);
}

TEST(TrussCurve, AnOrdinateBelongsToTheSegmentAboveIt) {
  const Curve curve = sample();
  EXPECT_EQ(walk_curve(curve, -1.0).code, 101);
  EXPECT_EQ(walk_curve(curve, 1.0).code, 103);
  EXPECT_EQ(walk_curve(curve, 1.0).value, 1.0);
  EXPECT_EQ(walk_curve(curve, 7.0).code, 110);
}

TEST(TrussCurve, TheEleventhPairHasNoEffect) {
  Curve curve;
  for (std::size_t k = 0; k < 11; ++k) curve[2 * k] = curve[2 * k + 1] = static_cast<double>(k + 1);
  EXPECT_EQ(walk_curve(curve, 9.5).code, 109);
  EXPECT_EQ(walk_curve(curve, 10.5).code, 110);
  EXPECT_EQ(walk_curve(curve, 10.5).value, 10.0);
  EXPECT_FALSE(find_deformation(curve, 10.5, 10.5).has_value());
}

TEST(TrussCurve, AllZeroBearsNothing) {
  Curve curve{};
  complete_curve(curve);
  EXPECT_EQ(walk_curve(curve, 3.0).value, 0.0);
  EXPECT_EQ(walk_curve(curve, -3.0).value, 0.0);
  EXPECT_EQ(curve_slope(curve, 110), 0.0);
}

TEST(TrussCurve, SlopeIsThatOfTheSegmentAndZeroAtTheEnds) {
  const Curve curve = sample();
  EXPECT_EQ(curve_slope(curve, 100), 0.0);
  EXPECT_EQ(curve_slope(curve, 101), 1.0);
  EXPECT_EQ(curve_slope(curve, 103), 0.25);
  EXPECT_EQ(curve_slope(curve, 104), -0.5);
  EXPECT_EQ(curve_slope(curve, 107), 0.0) << "a repeated pair has no length";
  EXPECT_EQ(curve_slope(curve, 110), 0.0);
}

TEST(TrussCurve, ForceOfOneSegmentHasOneDeformation) {
  const auto found = find_deformation(sample(), 0.5, 0.5);
  ASSERT_TRUE(found.has_value());
  EXPECT_DOUBLE_EQ(found->value, 0.5);
  EXPECT_EQ(found->code, 102);
}

// A force ratio of 1.5 is borne at 3 (rising) and at 6 (falling).
TEST(TrussCurve, OfSeveralDeformationsTheNearestIsTaken) {
  const Curve curve = sample();
  EXPECT_DOUBLE_EQ(find_deformation(curve, 1.5, 1.5)->value, 3.0);
  EXPECT_DOUBLE_EQ(find_deformation(curve, 1.5, 5.0)->value, 6.0);
  EXPECT_EQ(find_deformation(curve, 1.5, 5.0)->code, 104);
}

TEST(TrussCurve, AtEqualDistanceTheLaterOneIsTaken) {
  EXPECT_DOUBLE_EQ(find_deformation(sample(), 1.5, 4.5)->value, 6.0);
}

TEST(TrussCurve, AForceAtAnOrdinateBelongsToTheSegmentAboveIt) {
  EXPECT_EQ(find_deformation(sample(), 0.0, 0.0)->code, 102);
}

TEST(TrussCurve, AForceBeyondTheCurveHasNoDeformation) {
  EXPECT_FALSE(find_deformation(sample(), 2.5, 2.5).has_value());
  EXPECT_FALSE(find_deformation(sample(), -1.5, -1.5).has_value());
}

// A plateau force is not missed by the rounding of a division; what differs by more is another force.
TEST(TrussCurve, AForceWithin1EMinus12OfAnOrdinateIsThatOrdinate) {
  const Curve curve = sample();
  for (const double P : {-1.0, 1.0, 2.0}) {
    for (const double side : {-1.0, 1.0}) {
      const double near = P * (1.0 + side * 0.9e-12);
      EXPECT_EQ(force_at_ordinate(curve, near), P);
      const double off = P * (1.0 + side * 1.1e-12);
      EXPECT_EQ(force_at_ordinate(curve, off), off);
    }
  }
  EXPECT_EQ(force_at_ordinate(curve, 1e-15), 1e-15) << "around zero nothing is near";
  EXPECT_EQ(force_at_ordinate(curve, 1.5), 1.5);
  EXPECT_FALSE(find_deformation(curve, force_at_ordinate(curve, 2.0 * (1.0 + 1.1e-12)), 2.0).has_value());
  EXPECT_TRUE(find_deformation(curve, force_at_ordinate(curve, 2.0 * (1.0 + 0.9e-12)), 2.0).has_value());
}

TEST(TrussCurve, OnAFlatSegmentTheNearestEndIsTaken) {
  Curve curve{0, 0, 1, 1, 4, 1, 5, 2};
  complete_curve(curve);
  EXPECT_DOUBLE_EQ(find_deformation(curve, 1.0, 3.0)->value, 3.0);
  EXPECT_DOUBLE_EQ(find_deformation(curve, 1.0, 0.5)->value, 1.0);
}

TEST(TrussCurve, NextOrdinateLiesInTheDirectionOfMotion) {
  const Curve curve = sample();
  EXPECT_EQ(next_ordinate(curve, 0.5, true), 1.0);
  EXPECT_EQ(next_ordinate(curve, 0.5, false), 0.0);
  EXPECT_EQ(next_ordinate(curve, 1.0, true), 5.0);
  EXPECT_EQ(next_ordinate(curve, 1.0, false), 1.0);
  EXPECT_FALSE(next_ordinate(curve, 8.0, true).has_value());
  EXPECT_FALSE(next_ordinate(curve, -2.0, false).has_value());
}

}  // namespace
}  // namespace tidearc
