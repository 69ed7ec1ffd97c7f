// TapeFiles: the operations, in memory and on disk, and the form on disk.
#include "run/tapefile.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "../support/scratch.h"
#include "run/stops.h"
#include "run/tape_forms.h"
#include "run/units.h"

namespace tidearc {
namespace {

namespace fs = std::filesystem;
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

class TapeFolder : public testing::Test {
 protected:
  void TearDown() override { close_all_tapes(); }
  static std::string bytes_of(const std::vector<int>& words) {
    std::string bytes(words.size() * sizeof(int), ' ');
    std::memcpy(bytes.data(), words.data(), bytes.size());
    return bytes;
  }
  static void put_file(const char* name, const std::string& bytes) { std::ofstream(name, std::ios::binary) << bytes; }
  Scratch scratch_;
};

TEST_F(TapeFolder, ARecordStandsBetweenTwoEqualLengths) {
  open_tape(17, "TAP11", false);
  const std::array<int, 2> words{5, 6};
  FILE(17, "WRIT", 2, words.data());
  FILE(17, "WRIT", 0, words.data());
  close_tape(17);
  EXPECT_EQ(scratch_.contents("TAP11"), bytes_of({8, 5, 6, 8, 0, 0}));
}

TEST_F(TapeFolder, AnImplicitUnitOfADiskJobIsAFileNamedAfterItsUnit) {
  keep_scratch_in_memory(false);
  const int word = 3;
  FILE(2, "WRIT", 1, &word);
  flush_all_tapes();
  EXPECT_EQ(scratch_.contents("fort.2"), bytes_of({4, 3, 4}));
}

TEST_F(TapeFolder, AnImplicitUnitOfACoreJobLeavesNoFile) {
  const int word = 3;
  FILE(2, "WRIT", 1, &word);
  flush_all_tapes();
  EXPECT_FALSE(fs::exists("fort.2"));
}

TEST_F(TapeFolder, ANamedScratchFileStandsInTheFolderEmptyWhileItsRecordsAreInMemory) {
  open_tape(3, "TAP3", true);
  const int word = 3;
  FILE(3, "WRIT", 1, &word);
  flush_all_tapes();
  EXPECT_TRUE(fs::exists("TAP3"));
  EXPECT_EQ(fs::file_size("TAP3"), 0U);
}

TEST_F(TapeFolder, WhatAnEarlierRunLeftInAScratchFileIsNeverRead) {
  for (const bool in_memory : {true, false}) {
    put_file("TAP3", bytes_of({4, 9, 4}));
    open_tape(3, "TAP3", true);
    keep_scratch_in_memory(in_memory);
    EXPECT_EQ(stop_of([] { FILE(3, "SKIP", 1); }), status_io) << in_memory;
    const int word = 3;
    FILE(3, "WRIT", 1, &word);
    close_tape(3);
    EXPECT_EQ(scratch_.contents("TAP3"), in_memory ? "" : bytes_of({4, 3, 4}));
  }
}

TEST_F(TapeFolder, OpeningDoesNotCutAndTheFirstWriteDoes) {
  put_file("TAP11", bytes_of({4, 1, 4, 4, 2, 4}));
  open_tape(17, "TAP11", false);
  EXPECT_EQ(fs::file_size("TAP11"), 24U);
  int word = 0;
  FILE(17, "READ", 1, &word);
  EXPECT_EQ(word, 1);
  FILE(17, "WRIT", 1, &word);
  FILE(17, "BACK", 1);
  close_tape(17);
  EXPECT_EQ(scratch_.contents("TAP11"), bytes_of({4, 1, 4, 4, 1, 4}));
}

TEST_F(TapeFolder, AWriteCutsTheFileItself) {
  put_file("TAP11", bytes_of({8, 1, 2, 8, 4, 3, 4}));
  open_tape(17, "TAP11", false);
  const int word = 9;
  FILE(17, "WRIT", 1, &word);
  close_tape(17);
  EXPECT_EQ(scratch_.contents("TAP11"), bytes_of({4, 9, 4}));
}

TEST_F(TapeFolder, RecordsInMemoryBeginWhereRealsMayStand) {
  const std::array<int, 3> words{};
  for (const int count : {1, 3, 2}) FILE(2, "WRIT", count, words.data());
  FILE(2, "REWI");
  for (int record = 0; record < 3; ++record)
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(next_record(2).data()) % sizeof(double), 0U) << record;
}

TEST_F(TapeFolder, AFileIsClosedByTheHookOfItsUnitAndOpenedAgainAtItsStart) {
  for (const int closed : {17, 23}) {
    const std::string name = "TAP" + std::to_string(closed);
    open_tape(closed, name, false);
    const int word = closed;
    FILE(closed, "WRIT", 1, &word);
    FOPEN(closed);
    FCLOS(closed);
    EXPECT_EQ(scratch_.contents(name), bytes_of({4, closed, 4})) << "closing writes what was held";
    int back = 0;
    FILE(closed, "READ", 1, &back);
    EXPECT_EQ(back, closed);
  }
}

TEST_F(TapeFolder, TheHookOfAScratchFileInMemoryKeepsItsRecords) {
  open_tape(24, "TAP24", true);
  const int word = 9;
  FILE(24, "WRIT", 1, &word);
  FCLOS(24);
  int back = 0;
  FILE(24, "READ", 1, &back);
  EXPECT_EQ(back, 9);
}

TEST_F(TapeFolder, TheHookClosesTheTextFileOfUnit25) {
  open_formatted(25, "TAP25", OpenMode::position);
  FCLOS(25);
  EXPECT_FALSE(is_open_formatted(25));
}

TEST_F(TapeFolder, TheHookHasNoEffectOnOtherUnits) {
  open_tape(26, "TAP26", false);
  const int word = 9;
  FILE(26, "WRIT", 1, &word);
  FCLOS(26);
  EXPECT_EQ(stop_of([] { FILE(26, "SKIP", 1); }), status_io) << "still behind its record";
}

TEST_F(TapeFolder, AFileThatCannotBeOpenedEndsInTheIoLayer) {
  fs::create_directory("TAP9");
  EXPECT_EQ(stop_of([] { open_tape(15, "TAP9", true); }), status_io);
  EXPECT_NE(scratch_.errors().find("unit 15, file TAP9: the file cannot be opened"), std::string::npos)
      << scratch_.errors();
}

TEST_F(TapeFolder, AFullDiskEndsInTheIoLayer) {
  open_tape(17, "/dev/full", false);
  const int word = 1;
  FILE(17, "WRIT", 1, &word);
  EXPECT_EQ(stop_of([] { flush_all_tapes(); }), status_io);
  EXPECT_NE(scratch_.errors().find("unit 17, file /dev/full"), std::string::npos) << scratch_.errors();
}

TEST_F(TapeFolder, AFullDiskIsSeenAtTheCloseToo) {
  open_tape(17, "/dev/full", false);
  const int word = 1;
  FILE(17, "WRIT", 1, &word);
  EXPECT_EQ(stop_of([] { close_tape(17); }), status_io);
}

TEST_F(TapeFolder, ATruncatedFileIsFoundDamaged) {
  const std::string whole = bytes_of({8, 1, 2, 8});
  for (std::size_t length = 1; length < whole.size(); ++length) {
    put_file("TAP11", whole.substr(0, length));
    open_tape(17, "TAP11", false);
    EXPECT_EQ(stop_of([] { FILE(17, "SKIP", 1); }), status_io) << length;
    close_tape(17);
  }
  EXPECT_NE(scratch_.errors().find("unit 17, file TAP11, record 1: the record is damaged"), std::string::npos);
}

TEST_F(TapeFolder, ATrailingLengthThatDiffersIsFoundDamaged) {
  put_file("TAP11", bytes_of({4, 1, 8}));
  open_tape(17, "TAP11", false);
  EXPECT_EQ(stop_of([] { FILE(17, "SKIP", 1); }), status_io);
}

TEST_F(TapeFolder, RemovingClosesAndDeletes) {
  open_tape(7, "TAP5", true);
  close_tape(7, true);
  EXPECT_FALSE(fs::exists("TAP5"));
  EXPECT_FALSE(is_open_tape(7));
  EXPECT_FALSE(stop_of([] { close_tape(7, true); }).has_value()) << "a unit without a file";
}

TEST_F(TapeFolder, RemovingAUnitThatWasNeverOpenedLeavesTheFolderAlone) {
  put_file("fort.1", "mine");
  close_tape(1, true);
  EXPECT_TRUE(fs::exists("fort.1"));
}

/// Pieces of 10 bytes, so that the rules of records of more than 2147483639 bytes show in small ones.
class Pieces : public TapeFolder {
 protected:
  DiskTape tape_{10};
};

TEST_F(Pieces, EveryPieceButTheLastHasNegativeLengths) {
  ASSERT_EQ(tape_.open("F", true), "");
  const std::array<Word, 6> words{1, 2, 3, 4, 5, 6};
  ASSERT_EQ(tape_.write(words.data(), 6), "");
  ASSERT_EQ(tape_.close(), "");
  const std::string data = bytes_of({1, 2, 3, 4, 5, 6});
  EXPECT_EQ(scratch_.contents("F"), bytes_of({-10}) + data.substr(0, 10) + bytes_of({-10, -10}) + data.substr(10, 10) +
                                        bytes_of({-10, 4}) + data.substr(20) + bytes_of({4}));
}

TEST_F(Pieces, ARecordOfExactlyOnePieceHasNoSign) {
  DiskTape tape{8};
  ASSERT_EQ(tape.open("F", true), "");
  const std::array<Word, 2> words{1, 2};
  ASSERT_EQ(tape.write(words.data(), 2), "");
  ASSERT_EQ(tape.close(), "");
  EXPECT_EQ(scratch_.contents("F"), bytes_of({8, 1, 2, 8}));
}

TEST_F(Pieces, AreJoinedByEveryOperation) {
  ASSERT_EQ(tape_.open("F", true), "");
  const std::array<Word, 6> longer{1, 2, 3, 4, 5, 6};
  const std::array<Word, 1> shorter{9};
  ASSERT_EQ(tape_.write(longer.data(), 6), "");
  ASSERT_EQ(tape_.write(longer.data(), 6), "");
  ASSERT_EQ(tape_.write(shorter.data(), 1), "");
  EXPECT_EQ(tape_.back(), "");
  EXPECT_EQ(tape_.back(), "");
  EXPECT_EQ(tape_.at(), 2);
  std::array<Word, 6> in{};
  EXPECT_EQ(tape_.read(in.data(), 6), "");
  EXPECT_EQ(in, longer);
  EXPECT_EQ(tape_.back(), "");
  EXPECT_EQ(tape_.back(), "");
  EXPECT_EQ(tape_.at(), 1);
  EXPECT_EQ(tape_.skip(), "");
  in = {};
  EXPECT_EQ(tape_.read(in.data(), 3), "");
  EXPECT_EQ(in, (std::array<Word, 6>{1, 2, 3, 0, 0, 0}));
  tape_.rewind();
  std::span<const Word> record;
  EXPECT_EQ(tape_.next(record), "");
  EXPECT_EQ(std::vector<Word>(record.begin(), record.end()), std::vector<Word>(longer.begin(), longer.end()));
  EXPECT_EQ(tape_.skip(), "");
  EXPECT_EQ(tape_.next(record), "");
  ASSERT_EQ(record.size(), 1U);
  EXPECT_EQ(record[0], 9);
  EXPECT_EQ(tape_.skip(), "end of file");
}

TEST_F(Pieces, ARecordWithoutItsLastPieceIsDamaged) {
  put_file("F", bytes_of({-4, 1, -4}));
  ASSERT_EQ(tape_.open("F", false), "");
  EXPECT_EQ(tape_.skip(), "the record is damaged");
}

TEST_F(Pieces, TheLargestPieceLeavesRoomForItsLengthsIn31Bits) { EXPECT_EQ(largest_piece, 2147483647LL - 8); }

}  // namespace
}  // namespace tidearc
