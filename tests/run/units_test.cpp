// Numbered units: lines of every shape, positions, and each failure of a file.
#include "run/units.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "../support/scratch.h"
#include "run/layout.h"
#include "run/stops.h"

namespace tidearc {
namespace {
using test::Scratch;
using test::stop_of;

/// Lines of the deck, each in brackets.
std::string lines_of_deck() {
  std::string all;
  for (std::string line; next_line(units.NDIN, line);) all += "[" + line + "]";
  return all;
}

void make_file(const std::string& name, const std::string& contents) {
  std::ofstream(name, std::ios::binary) << contents;
}

TEST(DeckLines, CarriageReturnsAreRemovedAndTabsAreBlanks) {
  Scratch scratch("one\r\ntwo\tcolumns\r\n\r\n\tx\ny\rz\r\r\n");
  EXPECT_EQ(lines_of_deck(), "[one][two columns][][ x][y\rz\r]");
}

TEST(DeckLines, TheLastLineNeedsNoLineEnd) {
  {
    Scratch scratch("one\ntwo");
    EXPECT_EQ(lines_of_deck(), "[one][two]");
    EXPECT_EQ(deck_line(), 2);
    EXPECT_EQ(lines_of_deck(), "");  // and again
  }
  {
    Scratch scratch("one\ntwo\r");
    EXPECT_EQ(lines_of_deck(), "[one][two]");
  }
  {
    Scratch scratch("one\n\n");
    EXPECT_EQ(lines_of_deck(), "[one][]");
  }
}

/// The lines that a look ahead shows, in brackets, up to the first that is `last`.
std::string lines_ahead(const std::string& last = "no line") {
  std::string all;
  EXPECT_TRUE(look_ahead(units.NDIN, [&](std::string_view line) {
    all += "[" + std::string(line) + "]";
    return line != last;
  }));
  return all;
}

TEST(LookAhead, ShowsTheLinesToComeAndReadsNoneOff) {
  Scratch scratch("one\ntwo\r\n\tthree\nfour");
  EXPECT_EQ(lines_ahead(), "[one][two][ three][four]");
  EXPECT_EQ(deck_line(), 0);
  std::string line;
  ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(lines_ahead(), "[two][ three][four]");
  EXPECT_EQ(lines_ahead(" three"), "[two][ three]") << "no further than asked for";
  EXPECT_EQ(deck_line(), 1);
  EXPECT_EQ(deck_text(), "one");
  EXPECT_EQ(lines_of_deck(), "[two][ three][four]");
  EXPECT_EQ(deck_line(), 4);
  EXPECT_EQ(lines_ahead(), "") << "at the end";
  EXPECT_EQ(lines_of_deck(), "");
}

TEST(LookAhead, GoesBackOverMoreThanABuffer) {
  std::string deck;
  for (int i = 0; i < 30000; ++i) deck += format("I10", i) + "\n";
  Scratch scratch(deck);
  std::string line;
  for (int i = 0; i < 7000; ++i) ASSERT_TRUE(next_line(units.NDIN, line));
  std::string_view last;
  int shown = 0;
  ASSERT_TRUE(look_ahead(units.NDIN, [&](std::string_view) { return ++shown > 0; }));
  EXPECT_EQ(shown, 23000);
  for (int i = 7000; i < 30000; ++i) {
    ASSERT_TRUE(next_line(units.NDIN, last));
    ASSERT_EQ(last, format("I10", i));
  }
  EXPECT_FALSE(next_line(units.NDIN, last));
}

TEST(LookAhead, IsRefusedWhereThereIsNoWayBack) {
  Scratch scratch;
  ASSERT_EQ(mkfifo("pipe", 0600), 0);
  const int writer = open("pipe", O_RDWR);  // so that opening the pipe to read does not wait
  ASSERT_EQ(::write(writer, "one\ntwo\n", 8), 8);
  open_formatted(40, "pipe", OpenMode::existing);
  close(writer);
  EXPECT_FALSE(look_ahead(40, [](std::string_view) { return true; }));
  std::string line;
  ASSERT_TRUE(next_line(40, line));
  EXPECT_EQ(line, "one");
}

TEST(LookAhead, OfAFileThatIsWrittenIsRefused) {
  Scratch scratch;
  open_formatted(40, "f", OpenMode::fresh);
  put_text(40, "one\n");
  EXPECT_FALSE(look_ahead(40, [](std::string_view) { return true; }));
  put_text(40, "two\n");
  flush_formatted(40);
  EXPECT_EQ(scratch.contents("f"), "one\ntwo\n");
}

TEST(DeckLines, AreNumberedFromOne) {
  Scratch scratch("a\nb\n");
  EXPECT_EQ(deck_line(), 0);
  std::string line;
  next_line(units.NDIN, line);
  EXPECT_EQ(deck_line(), 1);
  EXPECT_EQ(deck_text(), "a");
  next_line(units.NDIN, line);
  EXPECT_EQ(deck_line(), 2);
  EXPECT_EQ(deck_text(), "b");
}

TEST(DeckLines, OfALineThatIsTooLongTheRestIsReadOver) {
  const auto columns = static_cast<std::size_t>(longest_line);
  for (const std::size_t length : {columns - 1, columns, columns + 1, 5 * columns}) {
    Scratch scratch(std::string(length, 'x') + "\r\nnext\n");
    std::string line;
    ASSERT_TRUE(next_line(units.NDIN, line));
    EXPECT_EQ(line.size(), std::min(length, columns));
    EXPECT_EQ(line.back(), 'x');
    ASSERT_TRUE(next_line(units.NDIN, line));
    EXPECT_EQ(line, "next");
  }
}

TEST(DeckLines, ACarriageReturnInsideALineThatIsCutIsNotItsEnd) {
  const std::string first = std::string(static_cast<std::size_t>(longest_line) - 1, 'x') + '\r';
  Scratch scratch(first + "more\n");
  std::string line;
  ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, first);
}

TEST(DeckLines, ManyLinesOfAllLengthsAcrossTheEndsOfBuffers) {
  std::string deck;
  for (std::size_t i = 0; i < 3000; ++i) deck += std::string(i % 131, static_cast<char>('a' + i % 26)) + "\n";
  Scratch scratch(deck);
  std::string line;
  for (std::size_t i = 0; i < 3000; ++i) {
    ASSERT_TRUE(next_line(units.NDIN, line));
    ASSERT_EQ(line, std::string(i % 131, static_cast<char>('a' + i % 26)));
  }
  EXPECT_FALSE(next_line(units.NDIN, line));
}

TEST(DeckLines, AGigabyteOfZeroBytesIsOneLineInBoundedMemory) {
  Scratch scratch;
  make_file("zeros", "");
  std::filesystem::resize_file("zeros", std::uintmax_t{1} << 30);  // takes no room on the disk
  open_formatted(units.NDIN, "zeros", OpenMode::existing);
  std::string line;
  ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, std::string(static_cast<std::size_t>(longest_line), '\0'));
  EXPECT_FALSE(next_line(units.NDIN, line));
}

TEST(Units, AFreshFileIsEmptied) {
  Scratch scratch;
  make_file("f", "old contents\n");
  open_formatted(40, "f", OpenMode::fresh);
  EXPECT_EQ(scratch.contents("f"), "");
  put_text(40, "new\n");
  EXPECT_EQ(scratch.contents("f"), "new\n");
}

TEST(Units, APositionedFileIsKeptUntilTheFirstWriteCutsWhatFollows) {
  Scratch scratch;
  make_file("f", "one\r\ntwo\nthree\n");
  open_formatted(40, "f", OpenMode::position);
  EXPECT_EQ(scratch.contents("f"), "one\r\ntwo\nthree\n");
  std::string line;
  next_line(40, line);
  EXPECT_EQ(scratch.contents("f"), "one\r\ntwo\nthree\n");
  put_text(40, "2\n");
  EXPECT_EQ(scratch.contents("f"), "one\r\n2\n");
  EXPECT_EQ(record_of_unit(40), 2);
}

TEST(Units, AWriteAtTheStartReplacesAPositionedFile) {
  Scratch scratch;
  make_file("f", "one\ntwo\n");
  open_formatted(40, "f", OpenMode::position);
  put_text(40, "x\n");
  put_text(40, "y\n");
  EXPECT_EQ(scratch.contents("f"), "x\ny\n");
}

TEST(Units, APositionedFileIsMadeWhenItIsMissing) {
  Scratch scratch;
  open_formatted(40, "f", OpenMode::position);
  EXPECT_TRUE(std::filesystem::exists("f"));
  close_formatted(40);
  EXPECT_TRUE(std::filesystem::exists("f"));
  EXPECT_FALSE(is_open_formatted(40));
}

TEST(Units, BehindWhatWasWrittenThereIsNothingAndRewindGoesToItsStart) {
  Scratch scratch;
  open_formatted(40, "f", OpenMode::fresh);
  put_text(40, "one\ntwo\n");
  flush_formatted(40);
  std::string line;
  EXPECT_FALSE(next_line(40, line));
  put_text(40, "more\n");
  EXPECT_EQ(scratch.contents("f"), "one\ntwo\nmore\n");
  rewind_formatted(40);
  EXPECT_EQ(record_of_unit(40), 0);
  ASSERT_TRUE(next_line(40, line));
  EXPECT_EQ(line, "one");
  put_text(40, "three\n");
  EXPECT_EQ(scratch.contents("f"), "one\nthree\n");
}

TEST(Units, ATextLargerThanTheBufferArrivesWhole) {
  Scratch scratch;
  std::string all;
  for (int i = 0; i < 30000; ++i) {
    write(units.NDOUT, "I10", i);
    all += format("I10", i) + "\n";
  }
  EXPECT_EQ(scratch.report(), all);
}

TEST(Units, OpeningAgainClosesWhatWasOpen) {
  Scratch scratch;
  open_formatted(40, "first", OpenMode::fresh);
  put_text(40, "a\n");
  open_formatted(40, "second", OpenMode::fresh);
  EXPECT_EQ(scratch.contents("first"), "a\n");
  EXPECT_EQ(file_of_unit(40), "second");
}

TEST(Units, HaveAnImplicitFileWhenNoneWasOpened) {
  Scratch scratch;
  EXPECT_EQ(file_of_unit(UNIT_TIMER), "unit 12");
  put_text(UNIT_TIMER, "times\n");
  EXPECT_EQ(file_of_unit(UNIT_TIMER), "fort.12");
  EXPECT_EQ(scratch.contents("fort.12"), "times\n");
}

TEST(Units, AFileThatMustExistAndDoesNotIsAnIoFailure) {
  Scratch scratch;
  EXPECT_EQ(stop_of([] { open_formatted(40, "absent", OpenMode::existing); }), status_io);
  EXPECT_EQ(scratch.errors(), "unit 40: absent cannot be opened: No such file or directory\n");
  EXPECT_FALSE(is_open_formatted(40));
}

TEST(Units, AFileThatCannotBeMadeIsAnIoFailure) {
  Scratch scratch;
  EXPECT_EQ(stop_of([] { open_formatted(40, "no/such/folder/f", OpenMode::fresh); }), status_io);
  EXPECT_EQ(stop_of([] { open_formatted(40, "no/such/folder/f", OpenMode::position); }), status_io);
  EXPECT_EQ(stop_of([] { open_formatted(40, ".", OpenMode::position); }), status_io);
  EXPECT_EQ(stop_of([] { open_formatted(-1, "f", OpenMode::fresh); }), status_io);
  EXPECT_EQ(stop_of([] { open_formatted(1000, "f", OpenMode::fresh); }), status_io);
}

TEST(Units, AFolderInPlaceOfADeckIsAReadFailure) {
  Scratch scratch;
  open_formatted(40, ".", OpenMode::existing);
  std::string line;
  EXPECT_EQ(stop_of([&] { next_line(40, line); }), status_io);
  EXPECT_NE(scratch.errors().find("the file cannot be read"), std::string::npos);
}

TEST(Units, ADeckIsNeverWritten) {
  Scratch scratch("card\n");
  EXPECT_EQ(stop_of([] { put_text(units.NDIN, "x\n"); }), status_io);
  EXPECT_EQ(scratch.contents("TAModel.inp"), "card\n");
}

TEST(Units, AFullDiskIsAnIoFailureAtAFlush) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "SKIPPED: there is no /dev/full";
  Scratch scratch;
  open_formatted(40, "/dev/full", OpenMode::fresh);
  put_text(40, "lost\n");
  EXPECT_EQ(stop_of([] { flush_formatted_units(); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 40, file /dev/full, record 1: the file cannot be written: No space left on device\n");
}

TEST(Units, AFullDiskIsAnIoFailureAtAClose) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "SKIPPED: there is no /dev/full";
  Scratch scratch;
  open_formatted(40, "/dev/full", OpenMode::fresh);
  put_text(40, "lost\n");
  EXPECT_EQ(stop_of([] { close_formatted(40); }), status_io);
}

TEST(Units, AFullDiskIsAnIoFailureWhenTheBufferIsFull) {
  if (!std::filesystem::exists("/dev/full")) GTEST_SKIP() << "SKIPPED: there is no /dev/full";
  Scratch scratch;
  open_formatted(units.NDOUT, "/dev/full", OpenMode::fresh);
  EXPECT_EQ(stop_of([] {
              for (int i = 0; i < 10000; ++i) write(units.NDOUT, "I10", i);
            }),
            status_io);
  EXPECT_NE(scratch.errors().find("/dev/full"), std::string::npos);
}

TEST(Units, AnIoFailureFlushesTheReport) {
  Scratch scratch;
  write(units.NDOUT, "'before'");
  EXPECT_EQ(stop_of([] { io_failure(40, 7, "a cause"); }), status_io);
  std::ifstream report("TAModel.out");
  std::string line;
  std::getline(report, line);
  EXPECT_EQ(line, "before");
}

}  // namespace
}  // namespace tidearc
