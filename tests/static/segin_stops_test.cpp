// Where the cards of a load segment stop a run.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

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
