// The scalar conditions of step control, with vectors of two or three entries whose geometry can be drawn.
#include "static/constraint.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

namespace tidearc {
namespace {

using Values = std::vector<double>;

ConstReals view(const Values& v) { return {v.data(), static_cast<int>(v.size())}; }

TermVector vector_of(std::initializer_list<std::pair<int, double>> terms, double scale = 1.0) {
  TermVector g;
  g.scale = scale;
  for (const auto& [equation, factor] : terms) {
    g.equation[static_cast<std::size_t>(g.count)] = equation;
    g.factor[static_cast<std::size_t>(g.count++)] = factor;
  }
  return g;
}

TEST(TermProduct, SumsItsTermsAndLeavesTheSinkOut) {
  const Values x{1.0, 2.0, 4.0};
  EXPECT_EQ(product(vector_of({{1, 3.0}, {3, -0.5}}), view(x)), 1.0);
  EXPECT_EQ(product(vector_of({{2, 1.0}, {4, 100.0}}), view(x)), 2.0) << "entry 4 is the sink of three equations";
  EXPECT_EQ(product(vector_of({}), view(x)), 0.0);
}

TEST(FactorOf, ADivisionByZeroIsNoFactor) {
  EXPECT_EQ(factor_of(3.0, 2.0), 1.5);
  EXPECT_EQ(factor_of(3.0, 0.0), 0.0);
}

TEST(ArcEquationOf, HasTheLengthsAsItsCoefficients) {
  const Values da{3.0, 4.0}, w{1.0, 0.0};
  const ArcEquation q = arc_equation(view(da), view(w), 2.0);
  EXPECT_EQ(q.A, 25.0);
  EXPECT_EQ(q.B, 6.0);
  EXPECT_EQ(q.C, -3.0);
  EXPECT_EQ(q.discriminant(), 336.0);
}

TEST(Shortening, BringsTheIncrementToTouchTheArc) {
  // du = (1, 2) along da = (1, 0) passes the origin at distance 2; an arc of 1 is met by half of it.
  const Values da{1.0, 0.0}, du{1.0, 2.0};
  const ArcEquation q = arc_equation(view(da), view(du), 1.0);
  EXPECT_LT(q.discriminant(), 0.0);
  EXPECT_NEAR(shortening(q, 1.0), 0.5, 1e-15);
}

TEST(FactorToMaximum, TakesTheSmallestMagnitudeOfTheEntriesThatMove) {
  const Values da{2.0, -1.0, 0.0}, du{1.0, 0.0, 9.0};
  EXPECT_EQ(factor_to_maximum(view(da), view(du), 3.0), 1.0) << "entry 1: (3 - 1) / 2; entry 2 would need -3";
  EXPECT_EQ(factor_to_maximum(view(da), view(du), -1.0), -1.0) << "entry 1: (-1 - 1) / 2; entry 2: 1, later";
  EXPECT_EQ(factor_to_maximum(view(da), view(du), 0.25), -0.25) << "entry 2 is nearer";
}

TEST(FactorToMaximum, WithoutMotionKeepsItsStart) {
  const Values da{0.0, 0.0}, du{1.0, 0.0};
  EXPECT_EQ(factor_to_maximum(view(da), view(du), 3.0), 1.0E10);
}

TEST(CriticalVectorOf, IsTheOneThatMovesMostForItsScale) {
  const Values da{1.0, 3.0}, du{0.5, 0.25};
  const std::vector<TermVector> vectors{vector_of({{1, 1.0}}), vector_of({{2, 1.0}}, 10.0),
                                        vector_of({{2, -2.0}}, 4.0)};
  const CriticalVector critical = critical_vector(vectors, view(da), view(du));
  EXPECT_EQ(critical.number, 3) << "1, 0.3, 1.5";
  EXPECT_EQ(critical.p, -6.0);
  EXPECT_EQ(critical.q, -0.5);
}

TEST(CriticalVectorOf, OfEqualOnesIsTheFirst) {
  const Values da{1.0, -1.0}, du{0.0, 0.0};
  const std::vector<TermVector> vectors{vector_of({{1, 1.0}}), vector_of({{2, 1.0}})};
  EXPECT_EQ(critical_vector(vectors, view(da), view(du)).number, 1);
}

TEST(CriticalVectorOf, NothingThatMovesIsNone) {
  const Values da{0.0, 1.0}, du{1.0, 0.0};
  const std::vector<TermVector> vectors{vector_of({{1, 1.0}})};
  EXPECT_EQ(critical_vector(vectors, view(da), view(du)).number, 0);
}

TEST(CriticalVectorOf, AMotionThatIsNoNumberIsNotNone) {
  const Values da{std::numeric_limits<double>::quiet_NaN(), 1.0}, du{1.0, 0.0};
  const std::vector<TermVector> vectors{vector_of({{1, 1.0}})};
  EXPECT_EQ(critical_vector(vectors, view(da), view(du)).number, 1);
}

TEST(StiffnessParameter, IsTheWorkOfTheLoadOverTheSquareOfTheMotion) {
  const Values RINC{10.0, 0.0}, da{2.0, 1.0}, none{0.0, 0.0};
  EXPECT_EQ(stiffness_parameter(view(RINC), view(da)), 4.0);
  EXPECT_EQ(stiffness_parameter(view(RINC), view(none)), 0.0);
}

TEST(StiffnessParameter, IsSaturatedWhereItVanishes) {
  EXPECT_EQ(relative_parameter(3.0, 4.0), 0.75);
  EXPECT_EQ(relative_parameter(1.0E-6, 1.0), 1.0E-6) << "the limit itself is not small";
  EXPECT_EQ(relative_parameter(0.99E-6, 1.0), 999999.0);
  EXPECT_EQ(relative_parameter(-0.99E-6, 1.0), -999999.0);
  EXPECT_EQ(relative_parameter(-1.0E-6, 1.0), -1.0E-6);
  EXPECT_EQ(relative_parameter(-3.0, 0.0), -999999.0) << "nothing to relate it to";
}

/// Roots for an arc of 1.
ArcRoots roots_of(const Values& da, const Values& w, const Values& increment) {
  return arc_roots(arc_equation(view(da), view(w), 1.0), view(da), view(w), view(increment));
}

TEST(ArcRootsOf, TheOneThatTurnsBackIsLeft) {
  // w = (1, 0.5) along (1, 0) meets the circle at (0.866, 0.5) and (-0.866, 0.5).
  const ArcRoots ahead = roots_of({1.0, 0.0}, {1.0, 0.5}, {1.0, 0.0});
  EXPECT_EQ(ahead.choice, RootChoice::first);
  EXPECT_NEAR(ahead.root(), -1.0 + std::sqrt(0.75), 1e-15);
  EXPECT_NEAR(ahead.cosine1, std::sqrt(0.75), 1e-15);
  EXPECT_NEAR(ahead.cosine2, -std::sqrt(0.75), 1e-15);
  const ArcRoots against = roots_of({-1.0, 0.0}, {1.0, 0.5}, {1.0, 0.0});
  EXPECT_EQ(against.choice, RootChoice::second);
  EXPECT_NEAR(against.root(), 1.0 - std::sqrt(0.75), 1e-15);
}

TEST(ArcRootsOf, OfTwoThatGoOnTheOneNearerToTheLinearSolution) {
  // w = (0.9, 0.3) along (0, 1): heights +-0.436; linear solution 1/6.
  EXPECT_EQ(roots_of({0.0, 1.0}, {0.9, 0.3}, {1.0, 0.0}).choice, RootChoice::first);
  const ArcRoots below = roots_of({0.0, 1.0}, {0.9, -0.3}, {1.0, 0.0});
  EXPECT_EQ(below.choice, RootChoice::second);
  EXPECT_NEAR(below.root(), 0.3 - std::sqrt(0.19), 1e-15);
}

TEST(ArcRootsOf, EquallyNearTheFirstIsTaken) {
  EXPECT_EQ(roots_of({0.0, 1.0}, {0.9, 0.0}, {1.0, 0.0}).choice, RootChoice::first);
}

TEST(ArcRootsOf, BothMayTurnBack) {
  EXPECT_EQ(roots_of({0.0, 1.0}, {-0.9, 0.3}, {1.0, 0.0}).choice, RootChoice::backward);
}

TEST(ArcRootsOf, ARightAngleDoesNotTurnBack) {
  EXPECT_EQ(roots_of({1.0, 0.0}, {0.5, 0.0}, {0.0, 1.0}).choice, RootChoice::first);
}

TEST(ArcRootsOf, WithoutAnIncrementThereIsNoAngle) {
  EXPECT_EQ(roots_of({1.0, 0.0}, {0.5, 0.0}, {0.0, 0.0}).choice, RootChoice::no_length);
}

}  // namespace
}  // namespace tidearc
