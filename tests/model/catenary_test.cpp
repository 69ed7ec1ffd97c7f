// The hanging line: curves against the textbook's low-point form, and the search for the horizontal load.
//
// Expected values are made the other way round: a curve y = a cosh(x/a) is chosen by its parameter a and the two
// abscissae of its ends from the low point, and gives spans, length, tensions (weight times elevation over the
// directrix), slopes and radius of curvature (elevation squared over a) without any search.
#include "model/catenary.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <vector>

namespace tidearc {
namespace {

constexpr double to_degrees = 180.0 / 3.141592653589793;

struct LowPointForm {
  double a, x_a, x_b, w;
  double h() const { return x_b - x_a; }
  double elevation(double x) const { return a * std::cosh(x / a); }
  double v() const { return elevation(x_b) - elevation(x_a); }
  double arc(double x) const { return a * std::sinh(x / a); }
  double length() const { return arc(x_b) - arc(x_a); }
  double tension(double x) const { return w * elevation(x); }
  double angle(double x) const { return std::atan(std::sinh(x / a)) * to_degrees; }
  double H() const { return w * a; }
  CatenaryCase with(CatenaryOption option, double parameter, bool straight = false) const {
    return {option, straight, h(), v(), w, parameter};
  }
};

// Low point between the ends, beyond A, beyond B; level; flat; deep.
const std::vector<LowPointForm> lines{{100.0, -40.0, 90.0, 2.0},   {100.0, 30.0, 150.0, 0.5},
                                      {80.0, -120.0, -10.0, 3.0},  {50.0, -60.0, 60.0, 1.0},
                                      {5.0E4, -100.0, 120.0, 0.1}, {4.0, -30.0, 35.0, 7.0}};

void expect_line(const LowPointForm& line, const CatenarySolution& found) {
  EXPECT_TRUE(found.solved);
  EXPECT_LE(found.rounds, 200);
  // The search stops at 1.0E-10 of the load. What a condition tells about the load of a flat line is less than its own
  // digits: length over chord is 1 + u*u/6, so that a last digit of the length is 3/(u*u) of them in the load.
  const double u = 0.5 * line.h() / line.a;
  const double digits = 4.0 * 2.2e-16 * std::max(10.0, 3.0 / (u * u));
  EXPECT_NEAR(found.curve.H, line.H(), 2e-10 + digits * line.H());
  EXPECT_NEAR(found.curve.length, line.length(), 1e-8 * line.length());
  EXPECT_NEAR(found.curve.tension_a, line.tension(line.x_a), 1e-8 * line.tension(line.x_a));
  EXPECT_NEAR(found.curve.tension_b, line.tension(line.x_b), 1e-8 * line.tension(line.x_b));
  EXPECT_EQ(found.grounded, 0.0);
}

TEST(Catenary, WithItsHorizontalLoadHasTheClosedLengthAndTensions) {
  for (const LowPointForm& line : lines) {
    const CatenarySolution found = solve_catenary(line.with(CatenaryOption::horizontal, line.H()));
    EXPECT_EQ(found.rounds, 0);
    EXPECT_EQ(found.curve.H, line.H());
    expect_line(line, found);
  }
}

TEST(Catenary, IsFoundByItsLength) {
  for (const LowPointForm& line : lines)
    expect_line(line, solve_catenary(line.with(CatenaryOption::length, line.length())));
}

TEST(Catenary, IsFoundByItsAngleAtA) {
  for (const LowPointForm& line : lines) {
    expect_line(line, solve_catenary(line.with(CatenaryOption::angle_a, line.angle(line.x_a))));
  }
}

TEST(Catenary, IsFoundByItsAngleAtB) {
  for (const LowPointForm& line : lines) {
    expect_line(line, solve_catenary(line.with(CatenaryOption::angle_b, line.angle(line.x_b))));
  }
}

TEST(Catenary, IsFoundByItsTensionAtBWithTheShapeThatTellsTheTwoLinesApart) {
  for (const LowPointForm& line : lines) {
    const bool straight = line.H() > load_of_least_tension(line.h(), line.v(), line.w);
    expect_line(line, solve_catenary(line.with(CatenaryOption::tension_b, line.tension(line.x_b), straight)));
  }
}

TEST(Catenary, OfOneTensionAtBComesInASaggingAndAStretchedLine) {
  const LowPointForm line{100.0, -40.0, 90.0, 2.0};
  const double T = 400.0;
  const CatenarySolution sagging = solve_catenary(line.with(CatenaryOption::tension_b, T, false));
  const CatenarySolution stretched = solve_catenary(line.with(CatenaryOption::tension_b, T, true));
  EXPECT_TRUE(sagging.solved && stretched.solved);
  EXPECT_NEAR(sagging.curve.tension_b, T, 1e-7);
  EXPECT_NEAR(stretched.curve.tension_b, T, 1e-7);
  EXPECT_LT(2.0 * sagging.curve.H, stretched.curve.H);
  EXPECT_GT(sagging.curve.length, stretched.curve.length);
}

/// Tension at B for a horizontal load, by a search for the low point that uses nothing of the module: its distance x0
/// from A follows from the difference of elevation, which rises as x0 falls.
double tension_by_low_point(double h, double v, double w, double H) {
  const double a = H / w;
  double low = -1.0E4;
  double high = 1.0E4;
  for (int round = 0; round < 200; ++round) {
    const double x0 = 0.5 * (low + high);
    // 2a sinh(h/2a) sinh((h/2 - x0)/a) = v
    const double rise = 2.0 * a * std::sinh(0.5 * h / a) * std::sinh((0.5 * h - x0) / a);
    (rise > v ? low : high) = x0;
  }
  return H * std::cosh((h - low) / a);
}

TEST(TensionAtB, FallsAndThenRisesWithTheLoadSoThatABisectionOverAllLoadsSeesNoChangeOfSign) {
  const double h = 100.0;
  const double w = 2.0;
  for (const double v : {-80.0, 0.0, 30.0, 150.0}) {
    // Loads from 6 to 6.0E4 in equal ratios.
    std::vector<double> loads;
    for (int i = 0; i <= 400; ++i) loads.push_back(6.0 * std::pow(10.0, i / 100.0));
    std::vector<double> tension;
    for (const double H : loads) tension.push_back(tension_by_low_point(h, v, w, H));
    const auto least = std::min_element(tension.begin(), tension.end());
    ASSERT_NE(least, tension.begin());
    ASSERT_NE(least, tension.end() - 1);
    EXPECT_TRUE(std::is_sorted(tension.begin(), least, std::greater<>())) << v;
    EXPECT_TRUE(std::is_sorted(least, tension.end())) << v;
    // A tension above the least one is met twice, and lies below the tension at both ends of the range.
    const double T = 1.05 * *least;
    EXPECT_GT(tension.front(), T);
    EXPECT_GT(tension.back(), T);
    EXPECT_EQ(
        std::count_if(tension.begin() + 1, tension.end(), [&](const double& t) { return (t > T) != (*(&t - 1) > T); }),
        2);
    // The parting load stands between the neighbours of the smallest sample.
    const double parting = load_of_least_tension(h, v, w);
    const auto at = static_cast<std::size_t>(least - tension.begin());
    EXPECT_GT(parting, loads[at - 1]);
    EXPECT_LT(parting, loads[at + 1]);
  }
}

TEST(TensionAtB, OfALevelLineIsLeastWhereTheHalfParameterTimesItsTanhIsOne) {
  // T = H cosh u with u = wh/2H: dT/dH = cosh u - u sinh u, zero at u = 1.19967864025773 (e.g. the widest catenary of a
  // given tension, or the two-ring soap film).
  EXPECT_NEAR(load_of_least_tension(100.0, 0.0, 2.0), 100.0 / 1.19967864025773, 1e-9);
}

TEST(TensionAtB, BelowTheLeastOneHasNoLineInEitherShape) {
  const double least = 100.0 / 1.19967864025773 * std::cosh(1.19967864025773);
  for (const bool straight : {false, true}) {
    const CatenaryCase below{CatenaryOption::tension_b, straight, 100.0, 0.0, 2.0, least * (1.0 - 1e-9)};
    EXPECT_FALSE(solve_catenary(below).solved);
    const CatenaryCase above{CatenaryOption::tension_b, straight, 100.0, 0.0, 2.0, least * (1.0 + 1e-9)};
    EXPECT_TRUE(solve_catenary(above).solved);
  }
}

TEST(CatenaryNodes, StandAtEqualArcLengthsOnTheCurve) {
  for (const LowPointForm& line : lines) {
    const CatenarySolution found = solve_catenary(line.with(CatenaryOption::horizontal, line.H()));
    const int count = 7;
    for (int k = 0; k <= count + 1; ++k) {
      const CatenaryPoint point = catenary_node(found, count, k);
      const double x = line.x_a + point.x;  // from the low point
      EXPECT_NEAR(line.arc(x) - line.arc(line.x_a), line.length() * k / (count + 1), 1e-11 * line.length());
      EXPECT_NEAR(point.y, line.elevation(x) - line.elevation(line.x_a), 1e-10 * line.length());
      EXPECT_NEAR(point.tension, line.tension(x), 1e-11 * line.tension(x));
      const double y = line.elevation(x);
      EXPECT_NEAR(point.radius, y * y / line.a, 1e-11 * y * y / line.a);
    }
  }
}

TEST(CatenaryNodes, EndAtB) {
  for (const LowPointForm& line : lines) {
    const CatenarySolution found = solve_catenary(line.with(CatenaryOption::horizontal, line.H()));
    EXPECT_NEAR(catenary_node(found, 3, 4).x, line.h(), 1e-12 * line.length());
    EXPECT_NEAR(catenary_node(found, 3, 4).y, line.v(), 1e-12 * line.length());
  }
}

TEST(CatenaryNodes, OfAnAlmostStraightLineKeepTheirDigits) {
  // Sag of a flat line: w s (L - s) / (2H), here 1 * 50 * 50 / (2 * 1.0E8).
  const CatenarySolution found = solve_catenary({CatenaryOption::horizontal, false, 100.0, 0.0, 1.0, 1.0E8});
  EXPECT_NEAR(catenary_node(found, 1, 1).y, -1.25E-5, 1e-16);
  EXPECT_NEAR(catenary_node(found, 1, 1).x, 50.0, 1e-13 * 50.0);
}

TEST(CatenaryNodes, OfALineWithoutWeightStandOnTheChord) {
  const CatenarySolution found = solve_catenary({CatenaryOption::tension_b, true, 30.0, 40.0, 0.0, 10.0});
  EXPECT_TRUE(found.solved);
  EXPECT_NEAR(found.curve.H, 6.0, 1e-9);
  const CatenaryPoint middle = catenary_node(found, 1, 1);
  EXPECT_DOUBLE_EQ(middle.x, 15.0);
  EXPECT_DOUBLE_EQ(middle.y, 20.0);
  EXPECT_NEAR(middle.tension, 10.0, 1e-9);
  EXPECT_TRUE(std::isinf(middle.radius));
}

/// A line that lies on the bed for a length and then rises with a horizontal tangent at the touch-down point.
struct MooredForm {
  double a, grounded, reach, w;
  LowPointForm hanging() const { return {a, 0.0, reach, w}; }
  CatenaryCase of_length(double length) const {
    return {CatenaryOption::mooring, true, grounded + reach, hanging().v(), w, length};
  }
};

TEST(MooringLine, LongerThanItsHangingPartLiesOnTheBed) {
  for (const MooredForm& line :
       {MooredForm{100.0, 60.0, 120.0, 2.0}, MooredForm{700.0, 0.01, 300.0, 1.5}, MooredForm{5.0, 400.0, 20.0, 0.3}}) {
    const CatenarySolution found = solve_catenary(line.of_length(line.grounded + line.hanging().length()));
    EXPECT_TRUE(found.solved);
    EXPECT_NEAR(found.curve.H, line.hanging().H(), 1e-8 * line.hanging().H());
    EXPECT_NEAR(found.grounded, line.grounded, 1e-7);
    EXPECT_NEAR(found.curve.h, line.reach, 1e-7);
    EXPECT_NEAR(found.curve.t_a, 0.0, 1e-9);
    EXPECT_NEAR(found.curve.tension_a, line.hanging().H(), 1e-8 * line.hanging().H());
    EXPECT_NEAR(found.curve.tension_b, line.hanging().tension(line.reach), 1e-7);
  }
}

TEST(MooringLine, ThatIsLiftedFromItsAnchorIsTheLineOfThatLength) {
  const LowPointForm line{100.0, 30.0, 150.0, 0.5};
  expect_line(line, solve_catenary(line.with(CatenaryOption::mooring, line.length(), true)));
}

TEST(MooringLine, IsToldAsGroundedFromAThousandthOfALengthOn) {
  const MooredForm under{100.0, 0.0009, 120.0, 2.0};
  EXPECT_EQ(solve_catenary(under.of_length(under.grounded + under.hanging().length())).grounded, 0.0);
  const MooredForm over{100.0, 0.0011, 120.0, 2.0};
  EXPECT_GT(solve_catenary(over.of_length(over.grounded + over.hanging().length())).grounded, 0.001);
}

TEST(MooringLine, PutsItsTouchDownOnTheNodeOfTheSamePartOfTheRow) {
  const MooredForm line{100.0, 60.0, 120.0, 2.0};
  const CatenarySolution found = solve_catenary(line.of_length(line.grounded + line.hanging().length()));
  const double part = 60.0 / (60.0 + 100.0 * std::sinh(1.2));  // 0.2845
  EXPECT_EQ(touch_down_node(found, 9), static_cast<int>(std::lround(10.0 * part)));
  EXPECT_EQ(touch_down_node(found, 9), 3);
  EXPECT_EQ(touch_down_node(found, 1), 1);  // 0.57 of one interval
  EXPECT_EQ(touch_down_node(found, 0), 0);
}

TEST(MooringLine, KeepsItsTouchDownNodeBetweenTheEnds) {
  const MooredForm little{100.0, 1.0, 120.0, 2.0};
  EXPECT_EQ(touch_down_node(solve_catenary(little.of_length(1.0 + little.hanging().length())), 5), 1);
  const MooredForm most{1.0, 500.0, 2.0, 2.0};
  EXPECT_EQ(touch_down_node(solve_catenary(most.of_length(500.0 + most.hanging().length())), 5), 5);
}

TEST(MooringLine, SpacesItsNodesEquallyOnTheBedAndInArcLengthAbove) {
  const MooredForm line{100.0, 60.0, 120.0, 2.0};
  const LowPointForm hanging = line.hanging();
  const CatenarySolution found = solve_catenary(line.of_length(line.grounded + hanging.length()));
  for (int k = 0; k <= 3; ++k) {
    const CatenaryPoint point = catenary_node(found, 9, k);
    EXPECT_NEAR(point.x, 20.0 * k, 1e-6);
    EXPECT_NEAR(point.y, 0.0, 1e-9);
    EXPECT_NEAR(point.tension, 200.0, 1e-6);
    EXPECT_EQ(std::isinf(point.radius), k < 3);
  }
  for (int k = 3; k <= 10; ++k) {
    const CatenaryPoint point = catenary_node(found, 9, k);
    EXPECT_NEAR(hanging.arc(point.x - 60.0), hanging.length() * (k - 3) / 7.0, 1e-6);
    EXPECT_NEAR(point.y, hanging.elevation(point.x - 60.0) - 100.0, 1e-6);
  }
}

TEST(Catenary, ThatNoLoadMeetsIsToldAndEndsAsTheStraightestLine) {
  const double h = 30.0;
  const double v = 40.0;
  const double chord_angle = std::atan2(v, h) * to_degrees;
  for (const CatenaryCase& line : {CatenaryCase{CatenaryOption::length, false, h, v, 1.0, 49.999},
                                   CatenaryCase{CatenaryOption::length, false, h, v, 1.0, -1.0},
                                   CatenaryCase{CatenaryOption::angle_a, false, h, v, 1.0, chord_angle + 0.01},
                                   CatenaryCase{CatenaryOption::angle_b, false, h, v, 1.0, chord_angle - 0.01},
                                   CatenaryCase{CatenaryOption::mooring, true, h, v, 1.0, 49.999},
                                   CatenaryCase{CatenaryOption::mooring, true, h, v, 1.0, h + v + 0.01}}) {
    const CatenarySolution found = solve_catenary(line);
    EXPECT_FALSE(found.solved) << line.parameter;
    EXPECT_EQ(found.grounded, 0.0);
    EXPECT_NEAR(found.curve.H, 1.0E8, 1.0) << line.parameter;
    EXPECT_NEAR(catenary_node(found, 1, 1).x, 15.0, 1e-4);
  }
}

TEST(Catenary, JustInsideItsLimitsIsFound) {
  const double h = 30.0;
  const double v = 40.0;
  const double chord_angle = std::atan2(v, h) * to_degrees;
  for (const CatenaryCase& line : {CatenaryCase{CatenaryOption::length, false, h, v, 1.0, 50.001},
                                   CatenaryCase{CatenaryOption::angle_a, false, h, v, 1.0, chord_angle - 0.01},
                                   CatenaryCase{CatenaryOption::angle_b, false, h, v, 1.0, chord_angle + 0.01},
                                   CatenaryCase{CatenaryOption::mooring, true, h, v, 1.0, 50.001},
                                   CatenaryCase{CatenaryOption::mooring, true, h, v, 1.0, h + v - 0.01}}) {
    EXPECT_TRUE(solve_catenary(line).solved) << line.parameter;
  }
}

TEST(Catenary, OfALoadSoSmallThatItsFunctionsAreInfiniteIsTheChordUnsolved) {
  // h/2a: 700 is the last argument that counts.
  const CatenarySolution inside = solve_catenary({CatenaryOption::horizontal, false, 2.0, 0.0, 1.0, 1.0 / 699.0});
  EXPECT_TRUE(inside.solved);
  EXPECT_TRUE(std::isfinite(catenary_node(inside, 3, 2).y));
  const CatenarySolution outside = solve_catenary({CatenaryOption::horizontal, false, 2.0, 0.0, 1.0, 1.0 / 701.0});
  EXPECT_FALSE(outside.solved);
  EXPECT_DOUBLE_EQ(catenary_node(outside, 3, 1).x, 0.5);
}

TEST(Catenary, OfExtremeFiguresStaysFinite) {
  for (int option = 1; option <= 6; ++option) {
    for (const double w : {0.0, 1e-300, 1e-8, 1e8, 1e300}) {
      for (const double h : {1e-300, 1e-9, 1e9, 1e150}) {
        for (const double v : {-1e150, -1.0, 0.0, 1e-300, 1e9}) {
          for (const double parameter : {-1e9, 0.0, 1e-9, 90.0, 1e9, 1e200}) {
            const CatenarySolution found =
                solve_catenary({static_cast<CatenaryOption>(option), option % 2 == 0, h, v, w, parameter});
            EXPECT_LE(found.rounds, 200);
            for (int k = 0; k <= 4; ++k) {
              const CatenaryPoint point = catenary_node(found, 3, k);
              EXPECT_TRUE(std::isfinite(point.x) && std::isfinite(point.y))
                  << option << ' ' << h << ' ' << v << ' ' << w << ' ' << parameter << ' ' << k << ' ' << point.x << ' '
                  << point.y;
            }
          }
        }
      }
    }
  }
}

}  // namespace
}  // namespace tidearc
