// Participation cards of a segment.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

std::string report_of(const std::string& participation, const StaticLoadBlock& loads) {
  Cards cards;
  cards.participation = participation;
  SegmentRun deck(cards.text() + "NEXT\n");
  static_loads = loads;
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
  return deck.scratch.report();
}

TEST(ParticipationCards, EmptyGroupsPrintTheirHeadingAndConsumeACard) {
  const std::string report = report_of("\n\n\n\n\n\n", {});
  EXPECT_TRUE(has_block(
      report,
      {" STATIC NODAL FORCE PATTERN PARTICIPATION FACTORS", "", " STATIC FOLLOWER FORCE PATTERN PARTICIPATION FACTORS",
       "", " NODAL TEMPERATURE PATTERN PARTICIPATION FACTORS", "",
       " 4-NODE SURFACE PRESSURE PATTERN PARTICIPATION FACTORS", "", " STATIC FORCE PATTERN PARTICIPATION FACTORS",
       "  NO.      FACTOR  NO.      FACTOR  NO.      FACTOR", "    1     0.00000    2     0.00000    3     0.00000", "",
       " PRESCRIBED DISPLACEMENT PATTERN PARTICIPATION FACTORS", "", " STATIC FORCE PATTERN PARTICIPATION FACTORS"}));
}

TEST(ParticipationCards, TheCardOfAnEmptyGroupIsNotLookedAt) { report_of("NO PATTERNS\nNOR FOLLOWERS\n\n\n\n\n", {}); }

TEST(ParticipationCards, EachGroupHasItsOwnCardsAndARunningNumberOverAllPatterns) {
  StaticLoadBlock loads;
  loads.NFPAT = 2;
  loads.NFOLL = 1;
  loads.NTPAT = 1;
  loads.NPPAT = 1;
  loads.ISELFW = 1;
  loads.IBUOY = 1;
  loads.ICURR = 1;
  loads.NZDISP = 1;
  const std::string report = report_of(
      "       1.5       2.5\n"
      "       3.5\n"
      "       4.5\n"
      "       5.5\n"
      "       6.5       7.5       8.5\n"
      "       9.5\n",
      loads);
  for (std::size_t p = 0; p < 8; ++p) EXPECT_EQ(segment.factor[p], static_cast<double>(p) + 1.5);
  EXPECT_EQ(segment.factor[8], 0.0);
  ASSERT_EQ(prescribed_participation().size(), 1U);
  EXPECT_EQ(prescribed_participation()[0], 9.5);
  EXPECT_TRUE(has_block(report, {" STATIC FORCE PATTERN PARTICIPATION FACTORS",
                                 "  NO.      FACTOR  NO.      FACTOR  NO.      FACTOR  NO.      FACTOR  NO.      FACTOR"
                                 "  NO.      FACTOR",
                                 "    1     1.50000    2     2.50000    3     3.50000    4     4.50000    5     5.50000"
                                 "    6     6.50000",
                                 "    7     7.50000    8     8.50000"}));
  EXPECT_TRUE(has_block(
      report, {" PRESCRIBED DISPLACEMENT PATTERN PARTICIPATION FACTORS", "  NO.      FACTOR", "    1     9.50000"}));
}

TEST(ParticipationCards, EightFactorsFillACardAndNineNeedTwo) {
  StaticLoadBlock loads;
  loads.NFPAT = 8;
  const std::string card = "       1.0       2.0       3.0       4.0       5.0       6.0       7.0       8.0\n";
  report_of(card + "\n\n\n\n\n", loads);
  EXPECT_EQ(segment.factor[7], 8.0);
  loads.NFPAT = 9;
  report_of(card + "       9.0\n\n\n\n\n\n", loads);
  EXPECT_EQ(segment.factor[8], 9.0);
}

TEST(ParticipationCards, AGeneratedLoadTakesTheNextRunningNumber) {
  StaticLoadBlock loads;
  loads.NFPAT = 1;
  loads.ICURR = 1;
  report_of("       1.0\n\n\n\n                           3.0\n\n", loads);
  EXPECT_EQ(segment.factor[0], 1.0);
  EXPECT_EQ(segment.factor[1], 3.0);
  EXPECT_EQ(segment.factor[2], 0.0);
}

TEST(ParticipationCards, AFactorOfALoadThatWasNotGeneratedIsIgnoredWithAWarning) {
  const std::string report = report_of("\n\n\n\n       1.0       2.0       3.0\n\n", {});
  EXPECT_TRUE(
      has_block(report, {row_of_W, " WARNING - SELF WEIGHT HAS NOT BEEN GENERATED, FACTOR IGNORED.", row_of_W, row_of_W,
                         " WARNING - BUOYANCY HAS NOT BEEN GENERATED, FACTOR IGNORED.", row_of_W, row_of_W,
                         " WARNING - STATIC CURRENT HAS NOT BEEN GENERATED, FACTOR IGNORED.", row_of_W}));
  EXPECT_EQ(segment.factor[0], 0.0);
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(ParticipationCards, NoWarningForAZeroFactorNorForAGeneratedLoad) {
  StaticLoadBlock loads;
  loads.ISELFW = 1;
  EXPECT_EQ(report_of("\n\n\n\n       1.0\n\n", loads).find("WARNING"), std::string::npos);
}

TEST(ParticipationCards, GeneratedFactorsAddToTheRunningTotalsOverSegments) {
  Cards cards;
  cards.participation = "\n\n\n\n       1.0       0.5      0.25\n\n";
  SegmentRun deck(cards.text() + cards.text());
  static_loads.ISELFW = 1;
  SEGIN();
  SEGIN();
  EXPECT_EQ(statics.running_total[0], 2.0);
  EXPECT_EQ(statics.running_total[1], 1.0);
  EXPECT_EQ(statics.running_total[2], 0.5);
  EXPECT_EQ(segment.factor[0], 1.0);
}

TEST(ParticipationCards, PrescribedPatternsAreNotLimitedToTheNumberOfForcePatterns) {
  StaticLoadBlock loads;
  loads.NZDISP = 1201;
  std::string cards = "\n\n\n\n\n";
  for (int card = 1; card <= 151; ++card) {
    for (int k = 1; k <= 8 && 8 * (card - 1) + k <= 1201; ++k) cards += format("F10.0", 8.0 * (card - 1) + k);
    cards += "\n";
  }
  report_of(cards, loads);
  ASSERT_EQ(prescribed_participation().size(), 1201U);
  EXPECT_EQ(prescribed_participation()[0], 1.0);
  EXPECT_EQ(prescribed_participation()[1200], 1201.0);
}

TEST(ParticipationCards, NonsenseCountsReachNoFurtherThanTheTables) {
  StaticLoadBlock loads;
  loads.NFPAT = -5;
  loads.NZDISP = -1;
  report_of("\n\n\n\n\n\n", loads);
  EXPECT_TRUE(prescribed_participation().empty());
}

}  // namespace
}  // namespace tidearc::test
