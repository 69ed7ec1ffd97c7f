// The operations on TapeFiles, in memory and on disk.
#include "run/tapefile.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "../support/scratch.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {
namespace {

using test::Scratch;
using test::stop_of;

constexpr int unit = 19;

/// Both places in which a scratch file may live: every operation must do the same there.
class Tape : public testing::TestWithParam<bool> {
 protected:
  void SetUp() override { keep_scratch_in_memory(GetParam()); }
  void TearDown() override { close_all_tapes(); }

  static void write_record(const std::vector<int>& words) {
    FILE(unit, "WRIT", static_cast<int>(words.size()), words.data());
  }
  /// Three records: 1 word, 2 words, 3 words.
  static void write_three() {
    write_record({11});
    write_record({21, 22});
    write_record({31, 32, 33});
  }
  static int first_word() {
    int word = 0;
    FILE(unit, "READ", 1, &word);
    return word;
  }
  Scratch scratch_;
};
INSTANTIATE_TEST_SUITE_P(Forms, Tape, testing::Bool(),
                         [](const auto& form) { return form.param ? "InMemory" : "OnDisk"; });

TEST_P(Tape, RecordsComeBackInTheirOrder) {
  write_three();
  FILE(unit, "REWI");
  std::array<int, 3> words{};
  FILE(unit, "READ", 1, words.data());
  EXPECT_EQ(words[0], 11);
  FILE(unit, "READ", 2, words.data());
  EXPECT_EQ(words[1], 22);
  FILE(unit, "READ", 3, words.data());
  EXPECT_EQ(words, (std::array<int, 3>{31, 32, 33}));
}

TEST_P(Tape, RecordsMixIntegersAndReals) {
  struct Mixed {
    int number;
    int pad;
    double value;
  };
  const Mixed out{7, 0, 0.1};
  FILE(unit, "WRIT", words(sizeof out), &out);
  FILE(unit, "REWI");
  Mixed in{};
  FILE(unit, "READ", words(sizeof in), &in);
  EXPECT_EQ(in.number, 7);
  EXPECT_EQ(in.value, 0.1);
}

TEST_P(Tape, AShorterReadTakesTheFirstWordsAndMovesOn) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 1);
  EXPECT_EQ(first_word(), 21);
  EXPECT_EQ(first_word(), 31);
}

TEST_P(Tape, AReadOfNothingMovesOverOneRecord) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "READ", 0, static_cast<void*>(nullptr));
  EXPECT_EQ(first_word(), 21);
}

TEST_P(Tape, AReadWithANegativeCountMovesOverOneRecord) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "READ", -4, static_cast<void*>(nullptr));
  EXPECT_EQ(first_word(), 21);
}

TEST_P(Tape, SkipsOfNothingDoNothing) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 0);
  FILE(unit, "SKIP", -1);
  EXPECT_EQ(first_word(), 11);
}

TEST_P(Tape, StepsBackOfNothingDoNothing) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 2);
  FILE(unit, "BACK", 0);
  FILE(unit, "BACK", -1);
  EXPECT_EQ(first_word(), 31);
}

TEST_P(Tape, StepsBackComeBeforeTheRecordsMovedOver) {
  write_three();
  FILE(unit, "BACK", 1);
  EXPECT_EQ(first_word(), 31);
  FILE(unit, "BACK", 2);
  EXPECT_EQ(first_word(), 21);
}

TEST_P(Tape, StepsBackEndAtTheStart) {
  write_three();
  FILE(unit, "BACK", 99);
  EXPECT_EQ(first_word(), 11);
}

TEST_P(Tape, StepsBackOnAFileWithoutRecordsDoNothing) {
  FILE(unit, "BACK", 1);
  write_three();
  FILE(unit, "REWI");
  EXPECT_EQ(first_word(), 11);
}

TEST_P(Tape, AWriteCutsWhatFollows) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 1);
  write_record({99, 98, 97, 96});
  FILE(unit, "REWI");
  EXPECT_EQ(first_word(), 11);
  EXPECT_EQ(first_word(), 99);
  EXPECT_EQ(stop_of([] { first_word(); }), status_io);
}

TEST_P(Tape, ARecordCanBeRewrittenAfterAStepBack) {
  write_three();
  FILE(unit, "BACK", 1);
  write_record({41});
  write_record({51});
  FILE(unit, "BACK", 2);
  EXPECT_EQ(first_word(), 41);
  EXPECT_EQ(first_word(), 51);
}

TEST_P(Tape, WritingGoesOnBehindARecordThatWasRead) {
  write_three();
  FILE(unit, "REWI");
  EXPECT_EQ(first_word(), 11);
  write_record({77});
  FILE(unit, "BACK", 1);
  EXPECT_EQ(first_word(), 77);
}

TEST_P(Tape, ARecordWithoutWordsIsARecord) {
  FILE(unit, "WRIT", 0, static_cast<const void*>(nullptr));
  FILE(unit, "WRIT", -3, static_cast<const void*>(nullptr));
  write_record({5});
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 2);
  EXPECT_EQ(first_word(), 5);
  FILE(unit, "BACK", 2);
  EXPECT_EQ(next_record(unit).size(), 0U);
}

TEST_P(Tape, AReadPastTheEndEndsInTheIoLayer) {
  write_three();
  EXPECT_EQ(stop_of([] { first_word(); }), status_io);
  EXPECT_EQ(scratch_.errors(), "unit 19, file fort.19, record 4: end of file\n");
}

TEST_P(Tape, ASkipPastTheEndEndsInTheIoLayer) {
  write_three();
  FILE(unit, "REWI");
  EXPECT_EQ(stop_of([] { FILE(unit, "SKIP", 4); }), status_io);
}

TEST_P(Tape, AReadOfTheWholeRecordPasses) {
  write_record({1, 2, 3});
  FILE(unit, "REWI");
  std::array<int, 3> words{};
  EXPECT_FALSE(stop_of([&] { FILE(unit, "READ", 3, words.data()); }).has_value());
}

TEST_P(Tape, AReadOfOneWordMoreThanTheRecordHoldsEndsInTheIoLayer) {
  write_record({1, 2, 3});
  FILE(unit, "REWI");
  std::array<int, 4> words{};
  EXPECT_EQ(stop_of([&] { FILE(unit, "READ", 4, words.data()); }), status_io);
  EXPECT_EQ(scratch_.errors(), "unit 19, file fort.19, record 1: the record holds 3 words, 4 were asked for\n");
}

TEST_P(Tape, AnUnknownOperationPrintsALineAndHasNoEffect) {
  write_three();
  FILE(unit, "REWI");
  int word = 0;
  EXPECT_FALSE(stop_of([&] {
                 FILE(unit, "read", 1, &word);
                 FILE(unit, "RE", 1, &word);
                 FILE(unit, "READS");
               }).has_value());
  const std::string line = " ERROR IN CALL TO FILE; OPERATION SPECIFIED INCORRECTLY\n";
  EXPECT_EQ(scratch_.report(), line + line + line);
  EXPECT_EQ(first_word(), 11);
}

TEST_P(Tape, TheNextRecordIsSeenWithoutACopyBuffer) {
  write_three();
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 1);
  const std::span<const Word> record = next_record(unit);
  ASSERT_EQ(record.size(), 2U);
  EXPECT_EQ(record[1], 22);
  EXPECT_EQ(first_word(), 31);
  EXPECT_EQ(stop_of([] { next_record(unit); }), status_io);
}

TEST_P(Tape, LongAndShortRecordsKeepTheirWordsInPlace) {
  std::vector<int> longest(300000);
  for (std::size_t i = 0; i < longest.size(); ++i) longest[i] = static_cast<int>(i);
  for (int pass = 0; pass < 2; ++pass) {
    FILE(unit, "REWI");
    write_record({1});
    write_record(longest);
    write_record({2, 3});
    write_record(longest);
  }
  FILE(unit, "REWI");
  FILE(unit, "SKIP", 1);
  EXPECT_EQ(next_record(unit).back(), 299999);
  EXPECT_EQ(first_word(), 2);
  std::vector<int> back(longest.size());
  FILE(unit, "READ", static_cast<int>(back.size()), back.data());
  EXPECT_EQ(back, longest);
}

TEST_P(Tape, TheContentsAreDroppedWhenThePlaceIsChosenAnew) {
  write_three();
  keep_scratch_in_memory(GetParam());
  FILE(unit, "REWI");
  EXPECT_EQ(stop_of([] { first_word(); }), status_io);
}

TEST_P(Tape, LongRecordsAreSplitIntoChunks) {
  std::vector<int> words(2450);
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = static_cast<int>(i) + 1;
  FILEX(unit, "WRIT", 2450, words.data());
  FILEX(unit, "REWI", 0, nullptr);
  const std::span<const Word> first = next_record(unit);
  ASSERT_EQ(first.size(), 2450U);
  EXPECT_EQ(first[0], 2);
  EXPECT_EQ(first[2449], 2449);
  const std::span<const Word> second = next_record(unit);
  ASSERT_EQ(second.size(), 2U);
  EXPECT_EQ(second[0], 2);
  EXPECT_EQ(second[1], 2450);
}

TEST_P(Tape, OneFullChunkIsOneRecord) {
  const std::vector<int> words(2449, 5);
  FILEX(unit, "WRIT", 2449, const_cast<int*>(words.data()));
  FILE(unit, "REWI");
  EXPECT_EQ(next_record(unit)[0], 1);
  EXPECT_EQ(stop_of([] { next_record(unit); }), status_io);
}

TEST_P(Tape, LongRecordsComeBackWholeOrInPart) {
  std::vector<int> words(5000);
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = static_cast<int>(i) + 1;
  int last = -7;
  FILEX(unit, "WRIT", 5000, words.data());
  FILEX(unit, "WRIT", 1, &last);
  FILEX(unit, "REWI", 0, nullptr);
  std::vector<int> back(5000);
  FILEX(unit, "READ", 5000, back.data());
  EXPECT_EQ(back, words);
  FILEX(unit, "REWI", 0, nullptr);
  std::vector<int> part(3, 0);
  FILEX(unit, "READ", 2, part.data());  // reads over the two chunks that were not asked for
  EXPECT_EQ(part, (std::vector<int>{1, 2, 0}));
  FILEX(unit, "READ", 1, part.data());
  EXPECT_EQ(part[0], -7);
}

TEST_P(Tape, LongRecordsAreMovedOverAsWholes) {
  std::vector<int> words(5000, 1);
  int last = -7;
  FILEX(unit, "WRIT", 5000, words.data());
  FILEX(unit, "WRIT", 2449, words.data());
  FILEX(unit, "WRIT", 1, &last);
  FILEX(unit, "REWI", 0, nullptr);
  FILEX(unit, "SKIP", 2, nullptr);
  int word = 0;
  FILEX(unit, "READ", 1, &word);
  EXPECT_EQ(word, -7);
}

TEST_P(Tape, AReadOfMoreChunksThanTheRecordHasEndsInTheIoLayer) {
  std::vector<int> words(2450, 1);
  FILEX(unit, "WRIT", 10, words.data());
  FILEX(unit, "WRIT", 2449, words.data());
  FILEX(unit, "REWI", 0, nullptr);
  FILEX(unit, "SKIP", 1, nullptr);
  EXPECT_EQ(stop_of([&] { FILEX(unit, "READ", 2450, words.data()); }), status_io);
}

TEST_P(Tape, LongRecordsHaveNoStepBack) {
  FILEX(unit, "BACK", 1, nullptr);
  EXPECT_EQ(scratch_.report(), " ERROR IN CALL TO FILE; OPERATION SPECIFIED INCORRECTLY\n");
}

}  // namespace
}  // namespace tidearc
