// Stops, message boxes, and the lines on the error stream that go with them.
#include "run/stops.h"

#include <gtest/gtest.h>

#include "../support/scratch.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {
namespace {

using test::Scratch;
using test::stop_of;
using test::trimmed;

class Stops : public testing::Test {
 protected:
  void SetUp() override { run = {}; }
  void TearDown() override { run = {}; }
};

TEST_F(Stops, FatalMessagePadsTheNameToSixColumns) {
  Scratch scratch;
  EXPECT_EQ(stop_of([] { FATERR("MAIN"); }), status_fatal);
  EXPECT_EQ(scratch.report(), "FATAL ERROR DETECTED IN MAIN   - JOB ABORTED\n");
}

TEST_F(Stops, FatalMessageKeepsSixColumnsOfALongName) {
  Scratch scratch;
  stop_of([] { FATERR("ELDATAXX"); });
  EXPECT_EQ(scratch.report(), "FATAL ERROR DETECTED IN ELDATA - JOB ABORTED\n");
}

TEST_F(Stops, FatalMessageTellsHowFarTheDeckWasReadOnTheErrorStream) {
  Scratch scratch("first\nsecond\n");
  std::string line;
  next_line(units.NDIN, line);
  next_line(units.NDIN, line);
  stop_of([] { FATERR("MAIN"); });
  EXPECT_EQ(scratch.errors(), "fatal error detected in MAIN, job aborted; last deck line read: 2\n");
}

TEST_F(Stops, ErrorMessageEndsBeforeTheFirstDollar) {
  Scratch scratch;
  ERRMSG("NO SUCH GROUP$ AND MORE$", units.NDOUT);
  EXPECT_EQ(scratch.report(), " ***ERROR - NO SUCH GROUP\n");
}

TEST_F(Stops, ErrorMessageIsCutAtSixtyCharacters) {
  Scratch scratch;
  ERRMSG(std::string(60, 'A'), units.NDOUT);
  ERRMSG(std::string(61, 'B'), units.NDOUT);
  EXPECT_EQ(scratch.report(), " ***ERROR - " + std::string(60, 'A') + "\n ***ERROR - " + std::string(60, 'B') + "\n");
}

TEST_F(Stops, ErrorMessageOfADollarAloneIsEmptyAndTheRunGoesOn) {
  Scratch scratch;
  EXPECT_FALSE(stop_of([] { ERRMSG("$", units.NDOUT); }).has_value());
  EXPECT_EQ(scratch.report(), " ***ERROR - \n");
}

TEST_F(Stops, DataErrorIsPrintedCountedAndReadingGoesOn) {
  Scratch scratch("a card\n");
  std::string line;
  next_line(units.NDIN, line);
  EXPECT_FALSE(stop_of([] { data_error(Columns{1, 5}, "' NODE',I6,'  OUT OF RANGE'", 7); }).has_value());
  EXPECT_EQ(scratch.report(), "\n\n ***** DATA ERROR *****      NODE     7  OUT OF RANGE\n");
  EXPECT_EQ(scratch.errors(), "TAModel.inp line 1, columns 1-5: NODE 7 OUT OF RANGE\n");
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(run.had_data_error);
}

TEST_F(Stops, DataErrorOfSeveralLinesIsOneLineOnTheErrorStream) {
  Scratch scratch;
  data_error(not_on_deck, "' ONE',/,'  TWO'");
  EXPECT_EQ(scratch.report(), "\n\n ***** DATA ERROR *****      ONE\n  TWO\n");
  EXPECT_EQ(scratch.errors(), "ONE TWO\n");
}

TEST_F(Stops, DataErrorDoesNotTakeBackARequestedStop) {
  Scratch scratch;
  run.RUNMOD = 3;
  data_error(not_on_deck, "' TEXT'");
  EXPECT_EQ(run.RUNMOD, 3);
}

TEST_F(Stops, NodeNumbersFromOneToTheLastAreInRange) {
  Scratch scratch;
  EXPECT_TRUE(node_in_range(1, 4, whole_line));
  EXPECT_TRUE(node_in_range(4, 4, whole_line));
  EXPECT_EQ(scratch.report(), "");
  EXPECT_FALSE(node_in_range(0, 4, whole_line));
  EXPECT_FALSE(node_in_range(5, 4, whole_line));
  EXPECT_FALSE(node_in_range(-7, 4, whole_line));
  EXPECT_EQ(scratch.report(),
            "\n\n ***** DATA ERROR *****      NODE     0  OUT OF RANGE, ENTERING CHEC MODE\n"
            "\n\n ***** DATA ERROR *****      NODE     5  OUT OF RANGE, ENTERING CHEC MODE\n"
            "\n\n ***** DATA ERROR *****      NODE    -7  OUT OF RANGE, ENTERING CHEC MODE\n");
}

TEST_F(Stops, ComponentsFromOneToSixAreInRange) {
  Scratch scratch;
  EXPECT_TRUE(component_in_range(1, whole_line));
  EXPECT_TRUE(component_in_range(6, whole_line));
  EXPECT_FALSE(component_in_range(0, whole_line));
  EXPECT_FALSE(component_in_range(7, whole_line));
  EXPECT_EQ(scratch.report(),
            "\n\n ***** DATA ERROR *****      DOF     0  OUT OF RANGE, ENTERING CHEC MODE\n"
            "\n\n ***** DATA ERROR *****      DOF     7  OUT OF RANGE, ENTERING CHEC MODE\n");
}

TEST_F(Stops, BoxesFrameTheTextWithRowsOf130Characters) {
  Scratch scratch;
  warning_box(" ONE LINE");
  fatal_box(" TWO\n LINES");
  const std::string w = " " + std::string(130, 'W') + "\n";
  const std::string f = " " + std::string(130, 'F') + "\n";
  EXPECT_EQ(scratch.report(), w + " ONE LINE\n" + w + f + " TWO\n LINES\n" + f);
}

TEST_F(Stops, AComplaintMayBeAboutADeckLineReadEarlier) {
  Scratch scratch("first\nsecond\nthird\n");
  std::string line;
  for (int i = 0; i < 3; ++i) next_line(units.NDIN, line);
  complain(DeckPlace(1, {6, 10}), "columns of the first");
  complain(DeckPlace(2, whole_line), "the second as a whole");
  complain({2, {1, 5}}, "columns of the second");
  complain({1, 5}, "columns of the third");
  EXPECT_EQ(scratch.errors(),
            "TAModel.inp line 1, columns 6-10: columns of the first\n"
            "TAModel.inp line 2: the second as a whole\n"
            "TAModel.inp line 2, columns 1-5: columns of the second\n"
            "TAModel.inp line 3, columns 1-5: columns of the third\n");
}

TEST_F(Stops, AComplaintAboutNoDeckLineTellsNone) {
  Scratch scratch("first\n");
  std::string line;
  complain(DeckPlace(0, {1, 5}), "before the first line");
  next_line(units.NDIN, line);
  complain(DeckPlace(1, not_on_deck), "not on the deck");
  EXPECT_EQ(scratch.errors(), "before the first line\nnot on the deck\n");
}

TEST_F(Stops, ControlCharactersOfADeckAreShownAsQuestionMarks) {
  Scratch scratch;
  using namespace std::string_literals;
  complain(not_on_deck, "'\0\x01\x1B[2J\v\f\x1F\x7F'"s);
  EXPECT_EQ(scratch.errors(), "'" + std::string(3, '?') + "[2J" + std::string(4, '?') + "'\n");
}

TEST_F(Stops, BytesAboveTheControlCharactersAreShownAsTheyStand) {
  Scratch scratch;
  complain(not_on_deck, "~!\xC3\x9F\x80\xFF");
  EXPECT_EQ(scratch.errors(), "~!\xC3\x9F\x80\xFF\n");
}

TEST_F(Stops, AFieldWithControlCharactersIsToldWithoutThem) {
  Scratch scratch(std::string("1\0002\n", 4));
  int value = 0;
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "I5", value); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 5, file TAModel.inp, record 1: columns 1-5: '1?2' is not an integer (item 1, layout I5)\n");
}

TEST_F(Stops, IoFailureTellsUnitFileRecordAndCauseAndEndsWithStatusTwo) {
  Scratch scratch;
  EXPECT_EQ(stop_of([] { io_failure(units.NDIN, 12, "the field 'abc'\n is no number"); }), status_io);
  EXPECT_EQ(scratch.errors(), "unit 5, file TAModel.inp, record 12: the field 'abc' is no number\n");
}

TEST_F(Stops, IoFailureOfAUnitWithoutAFileNamesTheUnitAlone) {
  Scratch scratch;
  stop_of([] { io_failure(44, 0, "TAModel.inp cannot be opened"); });
  EXPECT_EQ(scratch.errors(), "unit 44: TAModel.inp cannot be opened\n");
}

TEST_F(Stops, IoFailureFlushesTheReport) {
  Scratch scratch;
  write(units.NDOUT, "' SO FAR'");
  stop_of([] { io_failure(units.NDIN, 0, "cause"); });
  EXPECT_EQ(scratch.report(), " SO FAR\n");
  EXPECT_EQ(scratch.errors(), "unit 5, file TAModel.inp: cause\n");
}

TEST_F(Stops, EndOfTheDeckIsAnIoFailure) {
  Scratch scratch("only\n");
  std::array<char, 4> text{};
  read(units.NDIN, "A4", text);
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "A4", text); }), status_io);
  EXPECT_NE(scratch.errors().find("unit 5, file TAModel.inp, record 2"), std::string::npos) << scratch.errors();
}

TEST_F(Stops, WithoutAnErrorFileComplaintsGoToTheProcessesOwnErrorStream) {
  Scratch scratch;
  close_formatted(UNIT_ERROR);
  testing::internal::CaptureStderr();
  complain(not_on_deck, "something   is\nwrong ");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "something is wrong\n");
}

TEST_F(Stops, AFullDiskEndsInTheIoLayerWithTheFilesName) {
  Scratch scratch;
  open_formatted(40, "/dev/full", OpenMode::position);
  put_text(40, "lost\n");
  EXPECT_EQ(stop_of([] { flush_formatted_units(); }), status_io);
  EXPECT_NE(scratch.errors().find("unit 40, file /dev/full"), std::string::npos) << scratch.errors();
  stop_of([] { close_formatted(40); });
}

TEST_F(Stops, AFullDiskThatTakesTheErrorFileAlongStillTellsTheFirstFailure) {
  Scratch scratch;
  open_formatted(UNIT_ERROR, "/dev/full", OpenMode::position);
  testing::internal::CaptureStderr();
  EXPECT_EQ(stop_of([] { io_failure(units.NDOUT, 3, "no room"); }), status_io);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "unit 6, file TAModel.out, record 3: no room\n");
  stop_of([] { close_formatted(UNIT_ERROR); });
  EXPECT_EQ(stop_of([] { io_failure(units.NDOUT, 4, "again"); }), status_io) << "the first failure is not kept";
}

using StopsDeathTest = Stops;

TEST_F(StopsDeathTest, TheProcessEndsWithTheStatusWhenNobodyElseEndsIt) {
  stop_process = nullptr;
  EXPECT_EXIT(end_process(status_terminated), testing::ExitedWithCode(4), "");
}

}  // namespace
}  // namespace tidearc
