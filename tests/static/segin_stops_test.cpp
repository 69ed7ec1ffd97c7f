// Where the cards of a load segment stop a run.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

/// An execution run that asks for something this version cannot do yet: all cards are read, then it stops.
void expect_missing(const Cards& cards, const std::string& item, const std::string& place) {
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_EQ(stop_of([] { SEGIN(); }), status_fatal);
  const std::string words = "STAT SEGMENT    1: " + item + " IS NOT AVAILABLE IN THIS VERSION";
  EXPECT_TRUE(has_block(deck.scratch.report(), {row_of_F, "     " + words, row_of_F})) << deck.scratch.report();
  EXPECT_TRUE(has_line(deck.scratch.report(), "FATAL ERROR DETECTED IN STAT   - JOB ABORTED"));
  EXPECT_TRUE(has_line(deck.scratch.report(), " PRESCRIBED DISPLACEMENT PATTERN PARTICIPATION FACTORS"));
  EXPECT_EQ(deck.scratch.errors().rfind("TAModel.inp line " + place + ": STAT SEGMENT 1: ", 0), 0U)
      << deck.scratch.errors();
  EXPECT_EQ(next_card(), "NEXT");
}

TEST(MissingCapability, DisplacementSteppingStops) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  expect_missing(cards, "KSTEP  =    2", "1, columns 1-5");
}

TEST(MissingCapability, EventsStop) {
  Cards cards;
  for (const int KEVENT : {1, 12}) {
    cards.KEVENT = KEVENT;
    expect_missing(cards, "KEVENT =" + format("I5", KEVENT), "1, columns 46-50");
  }
}

TEST(MissingCapability, ConstantDisplacementIterationStops) {
  Cards cards;
  cards.KITER = 2;
  expect_missing(cards, "KITER  =    2", "1, columns 51-55");
}

TEST(MissingCapability, UpdateVectorsStop) {
  Cards cards;
  cards.KBFGS = 1;
  expect_missing(cards, "KBFGS  =    1", "2, columns 11-15");
  cards.KBFGS = 2;
  SegmentRun deck(cards.text());
  EXPECT_TRUE(SEGIN());
}

TEST(MissingCapability, MoreThanOneLineSearchStops) {
  Cards cards;
  cards.NLS = 2;
  expect_missing(cards, "NLS    =    2", "3, columns 41-45");
  cards.NLS = 1;
  SegmentRun deck(cards.text());
  EXPECT_TRUE(SEGIN());
}

TEST(MissingCapability, EachItemIsNamed) {
  Cards cards;
  cards.KITER = 2;
  cards.NLS = 5;
  SegmentRun deck(cards.text());
  EXPECT_EQ(stop_of([] { SEGIN(); }), status_fatal);
  EXPECT_NE(deck.scratch.report().find("KITER  =    2 IS NOT AVAILABLE"), std::string::npos);
  EXPECT_NE(deck.scratch.report().find("NLS    =    5 IS NOT AVAILABLE"), std::string::npos);
}

TEST(MissingCapability, ADataCheckRunReadsOn) {
  Cards cards;
  cards.KITER = 2;
  SegmentRun deck(cards.text());
  run.RUNMOD = 1;
  EXPECT_TRUE(SEGIN());
}

TEST(SegmentCards, ADeckThatEndsTooEarlyStopsInTheInputLayer) {
  Cards cards;
  cards.participation = "\n\n\n\n\n";  // one card short
  SegmentRun deck(cards.text());
  EXPECT_EQ(stop_of([] { SEGIN(); }), status_io);
}

TEST(SegmentCards, LettersInAFieldStopInTheInputLayer) {
  SegmentRun deck("    1    X\n" + Cards{}.text());
  EXPECT_EQ(stop_of([] { SEGIN(); }), status_io);
}

TEST(SegmentCards, BlankControlCardsAreASoundSegment) {
  SegmentRun deck("\n\n\n\n" + Cards{}.participation);
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.KTERM, 0);
  EXPECT_EQ(segment.KISTA, 0);
  EXPECT_EQ(statics.STEPF, 0.0);
}

}  // namespace
}  // namespace tidearc::test
