// Record files in the folder: names, the form on disk, damage, full disks, long records in pieces.
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
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {
namespace {

namespace fs = std::filesystem;
using test::Scratch;
using test::stop_of;

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
