// Binary files of other programs: bytes, positions, a short file, the table of open files.
#include "run/binary_file.h"

#include <filesystem>
#include <fstream>

#include "../support/scratch.h"
#include "run/stops.h"

namespace tidearc::test {
namespace {

void write_bytes(const std::string& name, const std::string& bytes) { std::ofstream(name, std::ios::binary) << bytes; }

// 1, -2 as 4-byte integers; 1.0 and -2.5 as 8-byte reals, lowest byte first.
const std::string two_integers("\x01\x00\x00\x00\xFE\xFF\xFF\xFF", 8);
const std::string two_reals("\x00\x00\x00\x00\x00\x00\xF0\x3F\x00\x00\x00\x00\x00\x00\x04\xC0", 16);

TEST(BinaryFile, GivesIntegersAndRealsLowestByteFirst) {
  const Scratch scratch;
  write_bytes("grid", two_integers + two_reals);
  const int file = open_binary("grid");
  ASSERT_EQ(file, 1);
  EXPECT_EQ(file_of_binary(file), "grid");
  std::int64_t position = 0;
  std::array<int, 2> integers{};
  read_binary(file, position, integers);
  EXPECT_EQ(integers, (std::array{1, -2}));
  EXPECT_EQ(position, 8);
  std::array<double, 2> reals{};
  read_binary(file, position, reals);
  EXPECT_EQ(reals, (std::array{1.0, -2.5}));
  EXPECT_EQ(position, 24);
}

TEST(BinaryFile, ReadsAgainFromAnEarlierPosition) {
  const Scratch scratch;
  write_bytes("grid", two_integers + two_reals);
  const int file = open_binary("grid");
  std::int64_t position = 16;
  double value = 0.0;
  read_binary(file, position, std::span(&value, 1));
  EXPECT_EQ(value, -2.5);
  position = 8;
  read_binary(file, position, std::span(&value, 1));
  EXPECT_EQ(value, 1.0);
}

TEST(BinaryFile, OfAnotherByteOrderIsTurnedOnThatMachine) {
  const auto* bytes = reinterpret_cast<const unsigned char*>(two_reals.data());
  EXPECT_EQ(from_little_endian<double>(bytes + 8), -2.5);
  EXPECT_EQ(from_little_endian<int>(reinterpret_cast<const unsigned char*>(two_integers.data()) + 4), -2);
}

TEST(BinaryFile, ThatIsShortEndsTheRunWithItsName) {
  const Scratch scratch;
  write_bytes("grid", two_integers + two_reals.substr(0, 15));
  const int file = open_binary("grid");
  std::array<double, 2> reals{};
  std::int64_t position = 8;
  EXPECT_EQ(stop_of([&] { read_binary(file, position, reals); }), status_io);
  EXPECT_NE(scratch.errors().find("grid"), std::string::npos);
  EXPECT_NE(scratch.errors().find("the file ends after 15 of 16 bytes"), std::string::npos) << scratch.errors();
}

TEST(BinaryFile, ThatIsMissingOrAFolderCannotBeOpened) {
  const Scratch scratch;
  std::filesystem::create_directory("folder");
  EXPECT_EQ(open_binary("missing"), 0);
  EXPECT_EQ(open_binary("folder"), 0);
  EXPECT_EQ(open_binary(""), 0);
}

TEST(BinaryFile, HasATableOfTen) {
  const Scratch scratch;
  write_bytes("grid", two_integers);
  for (int i = 1; i <= 10; ++i) EXPECT_EQ(open_binary("grid"), i);
  EXPECT_EQ(open_binary("grid"), 0);
  close_binary_files();
  EXPECT_EQ(open_binary("grid"), 1);
}

TEST(BinaryFile, IsClosedWithAllOthersAtTheEndOfTheProcess) {
  {
    const Scratch scratch;
    write_bytes("grid", two_integers);
    EXPECT_EQ(open_binary("grid"), 1);
  }
  EXPECT_EQ(file_of_binary(1), "");
}

TEST(BinaryFile, ThatIsNotOpenEndsTheRun) {
  const Scratch scratch;
  std::int64_t position = 0;
  int value = 0;
  for (const int number : {0, 1, 11}) {
    EXPECT_EQ(stop_of([&] { read_binary(number, position, std::span(&value, 1)); }), status_io);
  }
}

}  // namespace
}  // namespace tidearc::test
