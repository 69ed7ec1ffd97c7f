// The restep card of a load segment.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

TEST(RestepCard, ReadsAllElevenFieldsToColumn90) {
  const std::string card = "       0.5   0.03125    3    4       2.0       8.0    0      0.25      0.75    1000.0    6";
  ASSERT_EQ(card.size(), 90U);
  Cards cards;
  cards.KTERM = 0;
  cards.restep = card + "\n";
  SegmentRun deck(cards.text());
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.RFAC, 0.5);
  EXPECT_EQ(segment.STEPMIN, 0.03125);
  EXPECT_EQ(segment.NATT, 3);
  EXPECT_EQ(segment.ITLOW, 4);
  EXPECT_EQ(segment.IFAC, 2.0);
  EXPECT_EQ(segment.STEPMAX, 8.0);
  EXPECT_EQ(segment.KPRED, 0);
  EXPECT_EQ(segment.GRACE, 0.25);
  EXPECT_EQ(segment.WPRED, 0.75);
  EXPECT_EQ(segment.UMAX, 1000.0);
  EXPECT_EQ(segment.ITDES, 6);
  const std::string report = deck.scratch.report();
  EXPECT_TRUE(has_block(
      report,
      {"     *** RESTEPPING CRITERIA ***", "", "     STEP SIZE REDUCTION FACTOR ..................... =  0.5000E+00",
       "     MINIMUM ALLOWABLE STEP SIZE .................... =  0.3125E-01",
       "     TERMINATION CODE ............................... =    3", "     0: IF MINIMUM STEP IS REACHED CONTINUE.",
       "     N: IF MORE THAN N ATTEMPTS ARE MADE TO REDUCESTEP SIZE BELOW MINIMUM THEN QUIT.",
       "     LOWER LIMIT ON NO OF ITERATIONS ................ =    4",
       "     STEP SIZE INCREASE FACTOR ...................... =  0.2000E+01",
       "     MAXIMUM ALLOWABLE STEP SIZE .................... =  0.8000E+01",
       "     CONVERGENCE PREDICTION CODE .................... =    0", "     0: NO PREDICTION.",
       "     N: START PREDICTION AT ITERATION N.",
       "     GRACE RATIO .................................... =  0.2500E+00",
       "     WEIGHTING FACTOR FOR ITERATION PREDICTION ...... =  0.7500E+00",
       "     MAXIMUM ALLOWABLE UNBALANCE FORCE .............. =  0.1000E+04"}));
}

TEST(RestepCard, BlankFieldsTakeTheirDefaults) {
  Cards cards;
  cards.KTERM = 0;
  cards.restep = "\n";
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.RFAC, 0.25);
  EXPECT_EQ(segment.STEPMIN, 0.0156);
  EXPECT_EQ(segment.NATT, 0);
  EXPECT_EQ(segment.ITLOW, 0);
  EXPECT_EQ(segment.IFAC, 4.0);
  EXPECT_EQ(segment.STEPMAX, 1.0);
  EXPECT_EQ(segment.KPRED, 0);
  EXPECT_EQ(segment.GRACE, 0.0);
  EXPECT_EQ(segment.WPRED, 1.0);
  EXPECT_EQ(segment.UMAX, 1.0E20);
  EXPECT_EQ(segment.ITDES, 0);
  EXPECT_EQ(next_card(), "NEXT");
  EXPECT_TRUE(has_line(deck.scratch.report(), "     MINIMUM ALLOWABLE STEP SIZE .................... =  0.1560E-01"));
  EXPECT_TRUE(has_line(deck.scratch.report(), "     MAXIMUM ALLOWABLE UNBALANCE FORCE .............. =  0.1000E+21"));
}

TEST(RestepCard, TheUnbalanceLimitMustBeAboveTheTolerance) {
  Cards cards;
  cards.KTERM = 0;
  cards.TOLU = 0.5;
  const std::string blank(75, ' ');
  for (const auto& [card, expected] : {std::pair{"       0.6", 0.6}, {"       0.5", 1.0E20}, {"       0.4", 1.0E20}}) {
    cards.restep = blank + card + "\n";
    SegmentRun deck(cards.text());
    SEGIN();
    EXPECT_EQ(segment.UMAX, expected);
  }
}

TEST(RestepCard, ABlankUnbalanceLimitIsNoLimitEvenWithANegativeTolerance) {
  Cards cards;
  cards.KTERM = 0;
  cards.TOLU = -1.0;
  cards.restep = "\n";
  SegmentRun deck(cards.text());
  SEGIN();
  EXPECT_EQ(segment.UMAX, 1.0E20);
}

TEST(RestepCard, PredictionFromIterationOneBeginsAtTwo) {
  Cards cards;
  cards.KTERM = 0;
  for (const auto& [card, expected] : {std::pair{1, 2}, {2, 2}, {3, 3}, {0, 0}}) {
    cards.restep = std::string(50, ' ') + format("I5", card) + "\n";
    echo_of(cards);
    EXPECT_EQ(segment.KPRED, expected);
  }
  cards.restep = std::string(54, ' ') + "1\n";
  EXPECT_TRUE(has_line(echo_of(cards), "     CONVERGENCE PREDICTION CODE .................... =    2"));
}

TEST(RestepCard, IsReadOnlyWithRestepping) {
  Cards cards;
  for (const int KTERM : {1, 2, -1}) {
    cards.KTERM = KTERM;
    const std::string echo = echo_of(cards);
    EXPECT_EQ(echo.find("RESTEPPING CRITERIA"), std::string::npos);
    EXPECT_EQ(segment.STEPMAX, 1.0);
  }
}

TEST(RestepCard, ItemsOfAnEarlierSegmentDoNotLinger) {
  Cards first;
  first.KTERM = 0;
  first.restep = "       0.5                                   8.0\n";
  Cards second;
  SegmentRun deck(first.text() + second.text());
  SEGIN();
  EXPECT_EQ(segment.STEPMAX, 8.0);
  SEGIN();
  EXPECT_EQ(segment.STEPMAX, 1.0);
  EXPECT_EQ(segment.RFAC, 0.25);
}

}  // namespace
}  // namespace tidearc::test
