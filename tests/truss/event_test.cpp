// Event factors of the truss. SK1 100, yield forces +1 and -0.5: bounds at extensions 0.01 and -0.005.
#include "elements/truss/event.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <random>

namespace tidearc {
namespace {

constexpr BranchLaw law{100.0, 10.0, 1.0, -0.5, law_symmetric};
constexpr BranchLaw strut{100.0, 10.0, 1.0, -0.5, law_buckling};
constexpr double none[2] = {0.0, 0.0};
constexpr double given[2] = {0.001, 0.002};

BranchState elastic(double F1) { return {F1, 0.0, 0.0, 0.0, 0.0, truss_elastic}; }
BranchState yielded(double F1, double PLBUCK = 0.0) { return {F1, 0.0, 0.0, 0.0, PLBUCK, truss_yielded}; }

ElementEvent event_of(const BranchLaw& l, const BranchState& s, double dE, const double (&overshoot)[2] = none) {
  EventTrouble trouble;
  const ElementEvent event = branch_event(l, s, dE, overshoot, trouble);
  EXPECT_FALSE(trouble.found);
  return event;
}

TEST(TrussEvents, YieldInTensionIsPassedByTheDefaultOvershoot) {
  const ElementEvent event = event_of(law, elastic(0.0), 0.04);
  EXPECT_NEAR(event.factor, 0.25 + 1.0e-6 * 0.01 / 0.04, 1e-15);
  EXPECT_EQ(event.code, event_tension);
}

TEST(TrussEvents, YieldInCompressionHasItsOwnBound) {
  const ElementEvent event = event_of(law, elastic(0.5), -0.04);
  EXPECT_NEAR(event.factor, 0.25 + 1.0e-6 * 0.005 / 0.04, 1e-15);
  EXPECT_EQ(event.code, event_compression);
}

TEST(TrussEvents, AGivenOvershootReplacesTheDefault) {
  EXPECT_NEAR(event_of(law, elastic(0.0), 0.04, given).factor, 0.25 + 0.001 / 0.04, 1e-15);
}

TEST(TrussEvents, AnElasticIncrementHasNone) {
  const ElementEvent event = event_of(law, elastic(0.0), 0.005);
  EXPECT_EQ(event.factor, 1.0);
  EXPECT_EQ(event.code, event_none);
}

TEST(TrussEvents, AFractionOf0999999CountsAsNone) {
  EXPECT_EQ(event_of({1.0, 0.0, 0.999999, -1.0, 0}, elastic(0.0), 1.0).factor, 1.0);
  EXPECT_NEAR(event_of({1.0, 0.0, 0.999998, -1.0, 0}, elastic(0.0), 1.0).factor, 0.999998999998, 1e-14);
  const ElementEvent event = event_of({1.0, 0.0, 0.9, -1.0, 0}, elastic(0.0), 1.0, given);
  EXPECT_NEAR(event.factor, 0.901, 1e-12);
}

TEST(TrussEvents, AnEventBeyondTheIncrementIsNone) {
  const double large[2] = {0.5, 0.5};
  const ElementEvent event = event_of(law, elastic(0.0), 0.0101, large);
  EXPECT_EQ(event.factor, 1.0);
  EXPECT_EQ(event.code, event_none);
}

TEST(TrussEvents, UnloadingIsAnEventAtOnce) {
  const ElementEvent event = event_of(law, yielded(1.0), -0.01);
  EXPECT_NEAR(event.factor, 1.0e-6 * 0.01 / 0.01, 1e-18);
  EXPECT_EQ(event.code, event_unloading);
  EXPECT_NEAR(event_of(law, yielded(1.0), -0.01, given).factor, 0.2, 1e-15);
}

TEST(TrussEvents, LoadingFurtherHasNone) { EXPECT_EQ(event_of(law, yielded(1.0), 0.5).factor, 1.0); }

TEST(TrussEvents, ABuckledStrutHasOneWhereItIsStraightAgain) {
  const ElementEvent event = event_of(strut, yielded(-0.5, 0.03), 0.06);
  EXPECT_NEAR(event.factor, 0.5 + 1.0e-6 * 0.005 / 0.06, 1e-15);
  EXPECT_EQ(event.code, event_unloading);
  EXPECT_EQ(event_of(strut, yielded(-0.5, 0.03), 0.02).factor, 1.0) << "its shortening lasts";
  EXPECT_EQ(event_of(strut, yielded(-0.5, 0.03), -0.02).factor, 1.0) << "buckles on";
  EXPECT_NEAR(event_of(strut, yielded(1.0, 0.03), -0.01, given).factor, 0.2, 1e-15) << "in tension it unloads at once";
}

TEST(TrussEvents, FailedElementsAndBranchesWithoutStiffnessHaveNone) {
  for (const int code : {truss_failed_outward, truss_failed_inward, truss_gone}) {
    EXPECT_EQ(event_of(law, {1.0, 0.0, 0.0, 0.0, 0.0, code}, -0.5).factor, 1.0);
  }
  EXPECT_EQ(event_of({0.0, 100.0, 0.0, 0.0, 0}, elastic(0.0), 0.5).factor, 1.0);
  EXPECT_EQ(event_of(law, elastic(0.0), 0.0).factor, 1.0);
}

TEST(TrussEvents, AStateOutsideItsBoundIsTroubleAndNoEvent) {
  EventTrouble trouble;
  EXPECT_EQ(branch_event(law, elastic(2.0), 0.01, none, trouble).factor, 1.0);
  EXPECT_TRUE(trouble.found);
  EXPECT_DOUBLE_EQ(trouble.fraction, -1.0);
  EXPECT_EQ(trouble.bound, 1.0);
  trouble = {};
  branch_event(law, elastic(1.0 + 1.0e-8), 0.01, none, trouble);
  EXPECT_TRUE(trouble.found) << "more than 1E-9 of the increment outside";
}

TEST(TrussEvents, RoundingOutsideTheBoundIsNoTrouble) {
  EXPECT_LT(event_of(law, elastic(1.0 + 1e-12), 0.01).factor, 1e-5);
  EXPECT_LT(event_of(law, elastic(1.0 + 5.0e-10), 0.01).factor, 1e-5);
  const double small[2] = {1.0e-12, 0.0};
  EXPECT_EQ(event_of(law, elastic(1.0 + 5.0e-10), 0.01, small).factor, 0.0) << "an increment is not turned round";
}

TEST(TrussEvents, AnElementWithoutYieldHasNone) {
  EXPECT_EQ(event_of({100.0, 0.0, no_yield, -no_yield, 0}, elastic(0.0), 1.0e6).factor, 1.0);
}

TEST(TrussEvents, ACurveHasOneAtItsNextOrdinate) {
  std::array<double, 22> curve{-1, -1, 0, 0, 1, 1, 5, 2};
  complete_curve(curve);
  const ElementEvent up = curve_event(curve, 0.01, 0.005, 0.02, 0.0);
  EXPECT_NEAR(up.factor, 0.25 + 1.0e-6 * 0.01 / 0.02, 1e-15);
  EXPECT_EQ(up.code, event_curve_up);
  const ElementEvent down = curve_event(curve, 0.01, 0.005, -0.02, 0.001);
  EXPECT_NEAR(down.factor, 0.25 + 0.05, 1e-15);
  EXPECT_EQ(down.code, event_compression);
  EXPECT_EQ(curve_event(curve, 0.01, 0.06, 0.02, 0.0).factor, 1.0);
  EXPECT_EQ(curve_event(curve, 0.01, 0.0, 0.005, 0.0).factor, 1.0);
  EXPECT_EQ(curve_event(curve, 0.01, 0.0, 0.0, 0.0).factor, 1.0);
}

TEST(TrussEvents, AnOrdinateAtAFractionOf0999999CountsAsNone) {
  std::array<double, 22> curve{-1, -1, 1, 1};
  complete_curve(curve);
  for (const double dE : {1.0, -1.0}) {  // of which the ordinates at DY and -DY are that part
    EXPECT_EQ(curve_event(curve, 0.9999995, 0.0, dE, 1.0e-12).factor, 1.0);
    EXPECT_EQ(curve_event(curve, 0.999999, 0.0, dE, 1.0e-12).factor, 1.0);
    EXPECT_EQ(curve_event(curve, 0.999999, 0.0, dE, 1.0e-12).code, event_none);
    const ElementEvent before = curve_event(curve, 0.999998, 0.0, dE, 1.0e-12);
    EXPECT_NEAR(before.factor, 0.999998000001, 1e-14);
    EXPECT_EQ(before.code, dE > 0.0 ? event_curve_up : event_compression);
  }
}

// ------------------------------------------------------------------------- elements that follow their nodes
// Length 10; an end that moves across by 1 lengthens it by sqrt(101) - 10, at fraction t by nearly t^2 of that.

constexpr EndMotion across{10.0, 0.0, 1.0};
const double across_dE = std::sqrt(101.0) - 10.0;

TEST(EventsOnCourse, StayWhereTheElementKeepsItsDirection) {
  const EndMotion along_the_axis{10.0, 0.5, 0.0025};  // 0.05 apart
  for (const double factor : {0.9, 0.01, 1e-7}) {
    EXPECT_EQ(event_on_course({factor, event_tension}, 0.05, along_the_axis).factor, factor);
  }
}

TEST(EventsOnCourse, MoveToTheSameExtensionWhereItTurns) {
  for (const double factor : {0.99, 0.51, 0.2, 1e-3, 1e-9}) {
    const ElementEvent event = event_on_course({factor, event_unloading}, across_dE, across);
    const double length = 10.0 + factor * across_dE;
    EXPECT_NEAR(event.factor, std::sqrt((length - 10.0) * (length + 10.0)), 1e-7) << factor;
    EXPECT_NEAR(across.extension(event.factor), factor * across_dE, 1e-14 * factor);
    EXPECT_EQ(event.code, event_unloading);
  }
}

TEST(EventsOnCourse, LieBehindTheShorterPartOfTheWay) {
  // From (9.5, 1) to (9.5, -3), seen from the origin: as long as before at one half.
  const EndMotion motion{std::hypot(9.5, 1.0), -4.0, 16.0};
  const double dE = std::hypot(9.5, 3.0) - std::hypot(9.5, 1.0);
  EXPECT_LT(motion.extension(0.01), 0.0);
  EXPECT_NEAR(event_on_course({1e-9, event_unloading}, dE, motion).factor, 0.5, 1e-8);
}

TEST(EventsOnCourse, OfShorteningAndOfNoneAreLeft) {
  const EndMotion motion{10.0, -20.0, 4.0};  // straight toward the other end by 2
  EXPECT_EQ(event_on_course({0.3, event_compression}, -2.0, motion).factor, 0.3);
  EXPECT_EQ(event_on_course({1.0, event_none}, across_dE, across).factor, 1.0);
  EXPECT_EQ(event_on_course({0.0, event_tension}, across_dE, across).factor, 0.0);
}

TEST(EventsOnCourse, AlwaysGainTheWholeWay) {
  std::mt19937 random(20);
  std::uniform_real_distribution<double> part(-1.0, 1.0);
  for (int k = 0; k < 20000; ++k) {
    const std::array<double, 3> xI{part(random), part(random), part(random)}, xJ{part(random), part(random), 2.0};
    const double size = std::pow(10.0, 3.0 * part(random));
    const std::array<double, 3> uI{size * part(random), size * part(random), size * part(random)}, uJ{};
    const EndMotion motion = end_motion(xI, xJ, uI, uJ);
    const double dE = motion.extension(1.0);
    if (!(dE > 0.0)) continue;
    const double factor = std::pow(10.0, 4.0 * (part(random) - 1.0));
    const ElementEvent event = event_on_course({factor, event_tension}, dE, motion);
    EXPECT_GE(event.factor, factor);
    EXPECT_GE(motion.extension(event.factor), (1.0 - 2e-9) * factor * dE - 1e-14 * (1.0 + size)) << size;
  }
}

}  // namespace
}  // namespace tidearc
