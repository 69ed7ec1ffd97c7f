// Stepping, direction and iteration vectors of a segment.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

Cards stepping_cards(int NSVEC, const std::string& vectors) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 3;
  cards.NSVEC = NSVEC;
  cards.vectors = vectors;
  return cards;
}

/// Vectors belong to capabilities that stop an execution run, so they are read in data check mode.
bool read_in_check_mode() {
  run.RUNMOD = 1;
  const bool sound = SEGIN();
  EXPECT_EQ(next_card(), "NEXT");
  return sound;
}

std::string terms(int count) {
  std::string text;
  for (int k = 1; k <= count; ++k) text += format("2I5,F10.3", 2 + k % 2, 1 + k % 3, 1.0 * k) + "\n";
  return text;
}

TEST(SteppingVector, KeepsEquationsAndFactors) {
  SegmentRun deck(stepping_cards(1, "    2      0.25TOP SWAY\n    2    1      1.50\n    3    2     -2.00\n").text() +
                  "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  const TermVector& vector = segment.stepping[0];
  EXPECT_EQ(vector.scale, 0.25);
  EXPECT_EQ(vector.count, 2);
  EXPECT_EQ(vector.equation[0], 1);
  EXPECT_EQ(vector.factor[0], 1.5);
  EXPECT_EQ(vector.equation[1], 5);
  EXPECT_EQ(vector.factor[1], -2.0);
}

TEST(SteppingVector, EchoShowsHeadAndTerms) {
  const std::string description = "SWAY OF THE TOP, " + std::string(42, '.') + "X";  // 60 characters
  SegmentRun deck(stepping_cards(1, "    1      0.25" + description + "CUT\n    3    2     -2.00\n").text() + "NEXT\n");
  read_in_check_mode();
  EXPECT_TRUE(
      has_block(deck.scratch.report(),
                {"     STEPPING VECTOR NUMBER    1", "     NUMBER OF VECTOR GENERATING COMMANDS =    1",
                 "     INCREMENT SCALE FACTOR               =  0.2500E+00", "     DESCRIPTION     " + description, "",
                 "     NODE    DOF     FACTOR", "        3      2  -0.200D+01"}));
}

TEST(SteppingVector, ABlankScaleIsOne) {
  SegmentRun deck(stepping_cards(1, "    0\n").text() + "NEXT\n");
  read_in_check_mode();
  EXPECT_EQ(segment.stepping[0].scale, 1.0);
  EXPECT_TRUE(has_line(deck.scratch.report(), "     INCREMENT SCALE FACTOR               =  0.1000E+01"));
}

TEST(SteppingVector, ATermOnAConstrainedComponentPointsAtTheSink) {
  SegmentRun deck(stepping_cards(1, "    1\n    1    1      1.00\n").text() + "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  EXPECT_EQ(segment.stepping[0].equation[0], sizes.NEQ + 1);
}

TEST(SteppingVector, TwentyTermsPass) {
  SegmentRun deck(stepping_cards(1, "   20\n" + terms(20)).text() + "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  EXPECT_EQ(segment.stepping[0].count, 20);
  EXPECT_EQ(segment.stepping[0].factor[19], 20.0);
}

TEST(SteppingVector, TwentyOneTermsAreFatalAndAllOfThemAreRead) {
  SegmentRun deck(stepping_cards(1, "   21\n" + terms(21)).text() + "NEXT\n");
  run.RUNMOD = 0;
  EXPECT_FALSE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(segment.stepping[0].count, 0);
  EXPECT_TRUE(has_block(deck.scratch.report(), {row_of_F, "     MAX. NO. OF VECTOR TERMS IS 20", row_of_F}));
  EXPECT_EQ(deck.scratch.errors(), "TAModel.inp line 2, columns 1-5: MAX. NO. OF VECTOR TERMS IS 20\n");
}

TEST(SteppingVector, ANegativeNumberOfTermsIsNone) {
  SegmentRun deck(stepping_cards(1, "   -3\n").text() + "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  EXPECT_EQ(segment.stepping[0].count, 0);
}

TEST(SteppingVector, ANodeOutOfRangeDropsTheTerm) {
  for (const std::string node : {"    0", "    4", "   -1"}) {
    SegmentRun deck(stepping_cards(1, "    2\n" + node + "    1      5.00\n    3    1      7.00\n").text() + "NEXT\n");
    EXPECT_FALSE(read_in_check_mode());
    EXPECT_EQ(segment.stepping[0].count, 1);
    EXPECT_EQ(segment.stepping[0].factor[0], 7.0);
    EXPECT_TRUE(has_line(deck.scratch.report(),
                         " ***** DATA ERROR *****      NODE " + node + "  OUT OF RANGE, ENTERING CHEC MODE"));
    EXPECT_NE(deck.scratch.errors().find("TAModel.inp line 3, columns 1-5: NODE"), std::string::npos);
  }
}

TEST(SteppingVector, AComponentOutOfRangeDropsTheTermAndSetsCheckMode) {
  for (const std::string component : {"    0", "    7"}) {
    SegmentRun deck(stepping_cards(1, "    1\n    2" + component + "      5.00\n").text() + "NEXT\n");
    EXPECT_FALSE(SEGIN());
    EXPECT_EQ(segment.stepping[0].count, 0);
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_TRUE(run.had_data_error);
    EXPECT_TRUE(has_line(deck.scratch.report(),
                         " ***** DATA ERROR *****      DOF " + component + "  OUT OF RANGE, ENTERING CHEC MODE"));
    EXPECT_NE(deck.scratch.errors().find("TAModel.inp line 3, columns 6-10: DOF"), std::string::npos);
  }
}

std::string many_vectors(int count) {
  std::string text;
  for (int k = 1; k <= count; ++k) text += "    1\n    2    1" + format("F10.1", 1.0 * k) + "\n";
  return text;
}

TEST(SteppingVector, TwentyVectorsAreKept) {
  SegmentRun deck(stepping_cards(20, many_vectors(20)).text() + "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  EXPECT_EQ(segment.stepping[19].factor[0], 20.0);
}

TEST(SteppingVector, MoreThanTwentyVectorsAreFatalAndAllOfThemAreRead) {
  SegmentRun deck(stepping_cards(22, many_vectors(22)).text() + "NEXT\n");
  EXPECT_FALSE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(segment.stepping[19].factor[0], 20.0);
  EXPECT_EQ(count_line(deck.scratch.report(), "     MAX. NO. OF STEPPING VECTORS IS 20"), 1);
}

TEST(VectorCards, StandInTheOrderSteppingDirectionIteration) {
  Cards cards = stepping_cards(2,
                               "    1\n    2    1      1.00\n"
                               "    1\n    2    2      2.00\n"
                               "    1\n    2    3      3.00\n"
                               "    1\n    3    1      4.00\n");
  cards.KDIR = 3;
  cards.KITER = 2;
  cards.KIPAR = 4;
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_TRUE(read_in_check_mode());
  EXPECT_EQ(segment.stepping[0].factor[0], 1.0);
  EXPECT_EQ(segment.stepping[1].factor[0], 2.0);
  EXPECT_EQ(segment.direction.factor[0], 3.0);
  EXPECT_EQ(segment.iteration.factor[0], 4.0);
  const std::string report = deck.scratch.report();
  const auto at = [&](const std::string& text) { return report.find(text); };
  EXPECT_LT(at("STEPPING VECTOR NUMBER    2"), at("     DIRECTION VECTOR\n"));
  EXPECT_LT(at("     DIRECTION VECTOR\n"), at("     ITERATION VECTOR\n"));
  EXPECT_NE(at("     ITERATION VECTOR\n"), std::string::npos);
}

TEST(VectorCards, DirectionVectorIsReadInLoadSteppingToo) {
  Cards cards;
  cards.KDIR = 3;
  cards.vectors = "    1\n    3    3      3.00\n";
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
  EXPECT_EQ(segment.direction.equation[0], 6);
}

TEST(VectorCards, IterationVectorNeedsConstantDisplacementIteration) {
  Cards cards;
  cards.KITER = 1;
  cards.KIPAR = 4;
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
}

TEST(VectorCards, ABlankScaleStaysZeroOutsideSteppingVectors) {
  Cards cards;
  cards.KDIR = 3;
  cards.vectors = "    0\n";
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.direction.scale, 0.0);
}

TEST(VectorCards, DirectionVectorOfTooManyTermsIsFatal) {
  Cards cards;
  cards.KDIR = 3;
  cards.vectors = "   25\n" + terms(25);
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_FALSE(SEGIN());
  EXPECT_EQ(next_card(), "NEXT");
  EXPECT_EQ(run.RUNMOD, 1);
}

TEST(VectorCards, TablesOfAnEarlierSegmentAreCleared) {
  Cards first;
  first.KDIR = 3;
  first.vectors = "    1\n    3    3      3.00\n";
  SegmentRun deck(first.text() + Cards{}.text());
  SEGIN();
  SEGIN();
  EXPECT_EQ(segment.direction.count, 0);
}

}  // namespace
}  // namespace tidearc::test
