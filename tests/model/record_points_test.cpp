// The value of a record at a time, and the sine function, by hand.
#include "model/record_points.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "load_model.h"

namespace tidearc::test {
namespace {

constexpr double after(double t) { return t + 1e-12; }

/// Value of the points (t1, v1), (t2, v2), .. at t.
double at(const std::vector<std::array<double, 2>>& points, double t, OutsideSpan outside) {
  const RecordPoints record{points.empty() ? nullptr : points[0].data(),
                            points.empty() ? nullptr : points[0].data() + 1, 2, static_cast<int>(points.size())};
  return value_at(record, t, outside);
}
double force(const std::vector<std::array<double, 2>>& points, double t) { return at(points, t, OutsideSpan::zero); }
double displacement(const std::vector<std::array<double, 2>>& points, double t) {
  return at(points, t, OutsideSpan::held);
}

const std::vector<std::array<double, 2>> with_jump{{0, 0}, {1, 2}, {1, 5}, {3, 5}};

TEST(RecordPoints, AreJoinedByStraightLines) {
  EXPECT_EQ(force(with_jump, 0.5), 1.0);
  EXPECT_EQ(force({{0, 1}, {2, 5}, {3, -1}}, 0.5), 2.0);
  EXPECT_EQ(force({{0, 1}, {2, 5}, {3, -1}}, 2.75), 0.5);
}

TEST(RecordPoints, AreMetExactly) {
  const std::vector<std::array<double, 2>> points{{0.1, 0.3}, {0.7, -1.1}, {0.9, 0.7}};
  for (const auto& [t, v] : points) EXPECT_EQ(force(points, t), v);
}

TEST(RecordPoints, JumpTakesPlaceAtItsTime) {
  EXPECT_EQ(force(with_jump, 1.0), 5.0);
  EXPECT_NEAR(force(with_jump, std::nextafter(1.0, 0.0)), 2.0, 1e-15);
  EXPECT_EQ(force({{0, 1}, {0, 2}, {0, 3}, {1, 4}}, 0.0), 3.0) << "at the start of the span";
  EXPECT_EQ(force({{0, 1}, {1, 2}, {1, 3}}, 1.0), 3.0) << "at its end";
}

TEST(RecordPoints, OutsideTheSpanForcesAreZero) {
  EXPECT_EQ(force(with_jump, -0.1), 0.0);
  EXPECT_EQ(force(with_jump, 3.1), 0.0);
  EXPECT_EQ(force({{1, 7}, {2, 8}}, std::nextafter(1.0, 0.0)), 0.0);
}

TEST(RecordPoints, OutsideTheSpanDisplacementsAreHeld) {
  EXPECT_EQ(displacement(with_jump, -0.1), 0.0);
  EXPECT_EQ(displacement(with_jump, 3.1), 5.0);
  EXPECT_EQ(displacement({{1, 7}, {2, 8}}, -1e30), 7.0);
  EXPECT_EQ(displacement({{1, 7}, {2, 8}}, 1e30), 8.0);
}

TEST(RecordPoints, SpanIsClosed) {
  EXPECT_EQ(force(with_jump, 0.0), 0.0);
  EXPECT_EQ(force(with_jump, 3.0), 5.0);
  EXPECT_EQ(force({{1, 7}, {2, 8}}, 1.0), 7.0);
}

TEST(RecordPoints, TimeJustBehindTheEndIsTheEnd) {
  // 1.0E-6 of the last interval, which is 2.0.
  EXPECT_EQ(force(with_jump, 3.0 + 1.9e-6), 5.0);
  EXPECT_EQ(force(with_jump, 3.0 + 2.1e-6), 0.0);
  EXPECT_EQ(force({{0, 1}, {10, 2}, {10.5, 4}}, 10.5 + 0.49e-6), 4.0) << "not of the whole span";
  EXPECT_EQ(force({{0, 1}, {10, 2}, {10.5, 4}}, 10.5 + 0.51e-6), 0.0);
}

TEST(RecordPoints, SummedUpStepsReachTheLastPoint) {
  std::vector<std::array<double, 2>> points;
  for (int i = 0; i <= 1000; ++i) points.push_back({0.02 * i, 1.0});
  double t = 0.0;
  for (int i = 0; i < 2000; ++i) t += 0.01;
  EXPECT_NE(t, 20.0) << "the sum is not exact";
  EXPECT_EQ(force(points, t), 1.0);
}

TEST(RecordPoints, NoPointsAreZeroEverywhere) {
  EXPECT_EQ(force({}, 0.0), 0.0);
  EXPECT_EQ(displacement({}, 0.0), 0.0);
}

TEST(RecordPoints, OnePointIsItsValueAtItsTimeAndForDisplacementsAlways) {
  EXPECT_EQ(force({{2, 7}}, 2.0), 7.0);
  EXPECT_EQ(force({{2, 7}}, after(2.0)), 0.0);
  EXPECT_EQ(force({{2, 7}}, 1.9), 0.0);
  for (const double t : {-5.0, 2.0, 9.0}) EXPECT_EQ(displacement({{2, 7}}, t), 7.0);
}

TEST(RecordPoints, TimeThatIsNoNumberIsOutside) {
  EXPECT_EQ(force(with_jump, std::numeric_limits<double>::quiet_NaN()), 0.0);
}

TEST(RecordPoints, AnswerDoesNotDependOnTheSearchBefore) {
  std::vector<std::array<double, 2>> points;
  for (int i = 0; i < 257; ++i) points.push_back({i * 0.5, static_cast<double>(i % 7)});
  for (const double t : {0.0, 127.75, 0.25, 128.0, 64.1, 3.3, 127.9}) {
    const double first = force(points, t);
    force(points, 128.0 - t);
    EXPECT_EQ(force(points, t), first);
    const int i = static_cast<int>(t / 0.5);
    if (i == 256) continue;
    EXPECT_NEAR(first, i % 7 + ((i + 1) % 7 - i % 7) * (t - i * 0.5) / 0.5, 1e-12);
  }
}

TEST(RecordPoints, TheirTimesAndValuesMayStandFarApart) {
  // Rows of a table of three records: entries of one record are three apart.
  const std::vector<double> times{0, 9, 9, 1, 9, 9, 2, 9, 9};
  const std::vector<double> values{5, 8, 8, 7, 8, 8, 3, 8, 8};
  EXPECT_EQ(value_at({times.data(), values.data(), 3, 3}, 1.5, OutsideSpan::zero), 5.0);
}

TEST(SineFunction, RisesWithItsRampAndKeepsItsMean) {
  // Period 2, lead 30 degrees, amplitude 3, mean 0.5, ramp 1: (3 t sin(pi t + pi/6) + 0.5) by hand.
  const SineWave wave{2.0, 30.0, 3.0, 0.5, 1.0};
  const std::vector<double> expected{0.5, 1.224444370, 1.799038106, 1.082342851, -1.0, -2.397777479};
  for (std::size_t i = 0; i < expected.size(); ++i) {
    EXPECT_NEAR(sine_value(wave, 0.25 * static_cast<double>(i)), expected[i], 5e-10) << i;
  }
}

TEST(SineFunction, WithoutRampIsPureFromTheStart) {
  const SineWave wave{4.0, 90.0, 2.0, 1.0, 0.0};
  EXPECT_NEAR(sine_value(wave, 0.0), 3.0, 1e-15);
  EXPECT_NEAR(sine_value(wave, 1.0), 1.0, 1e-15);
  EXPECT_NEAR(sine_value(wave, 2.0), -1.0, 1e-15);
}

TEST(SineFunction, RampEndsAtItsDuration) {
  const SineWave wave{4.0, 90.0, 2.0, 0.0, 2.0};
  EXPECT_NEAR(sine_value(wave, 2.0), -2.0, 1e-15) << "from there on in full";
  EXPECT_NEAR(sine_value(wave, std::nextafter(2.0, 0.0)), -2.0, 1e-12);
  EXPECT_EQ(sine_value(wave, 0.0), 0.0);
}

TEST(SineFunction, NegativeRampIsNone) { EXPECT_NEAR(sine_value({4.0, 90.0, 2.0, 0.0, -1.0}, 0.0), 2.0, 1e-15); }

}  // namespace
}  // namespace tidearc::test
