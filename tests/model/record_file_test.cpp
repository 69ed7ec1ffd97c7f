// Records whose points stand in a file of their own, and files that are none.
#include <filesystem>
#include <fstream>

#include "record_deck.h"

namespace tidearc::test {
namespace {

void put_file(const std::string& name, const std::string& text) { std::ofstream(name, std::ios::binary) << text; }

/// A ground acceleration record of three points 1 second apart, in the file named.
std::string filed(const std::string& file, int flag = 1) {
  return heading("(2F5.0)") + Control{.points = 3, .interval = "1.0", .flag = flag, .file = file}.card();
}

TEST(RecordFile, BringsThePointsInItsOwnLayout) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  put_file("quake.dat", "  1.0  2.0\n  3.0\n");
  RECRIN();
  EXPECT_EQ(model.at(0.0), 1.0);
  EXPECT_EQ(model.at(2.0), 3.0);
  EXPECT_FALSE(is_open_formatted(63)) << "it is closed behind its record";
}

TEST(RecordFile, MayHaveAHeadThatTheLayoutPassesOver) {
  RecordModel model(
      RecordKind::ground,
      heading("(4/(2F5.0))") + Control{.points = 3, .interval = "1.0", .flag = 1, .file = "quake.dat"}.card(), 3);
  put_file("quake.dat", "PEER\nSTATION\nACCELERATION\nNPTS= 3\n  1.0  2.0\n  3.0\n");
  RECRIN();
  EXPECT_EQ(model.at(0.0), 1.0);
  EXPECT_EQ(model.at(2.0), 3.0);
}

TEST(RecordFile, IsReadFromItsStartForEachRecord) {
  RecordModel model(RecordKind::ground, filed("quake.dat") + filed("quake.dat"), 3, 2);
  put_file("quake.dat", "  1.0  2.0\n  3.0  4.0\n  5.0\n");
  RECRIN();
  EXPECT_EQ(model.at(0.0, 2), 1.0);
}

TEST(RecordFile, NameLosesItsLeadingBlanks) {
  RecordModel model(RecordKind::ground, filed("    my quake.dat"), 3);
  put_file("my quake.dat", "  1.0  2.0\n  3.0\n");
  RECRIN();
  EXPECT_EQ(model.at(1.0), 2.0);
}

TEST(RecordFile, NameHasFortyColumns) {
  const std::string name(40, 'q');
  RecordModel model(RecordKind::force, "    1\n" + filed(name), 3);
  put_file(name, "  1.0  2.0\n  3.0\n");
  RECRIN();
  EXPECT_EQ(model.at(1.0), 2.0);
}

TEST(RecordFile, LineEndsMayBeThoseOfOtherSystems) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  put_file("quake.dat", "  1.0  2.0\r\n  3.0");
  RECRIN();
  EXPECT_EQ(model.at(2.0), 3.0);
}

TEST(RecordFile, FlagOtherThanOneReadsTheDeck) {
  for (const int flag : {-1, 0, 2}) {
    RecordModel model(RecordKind::ground, filed("quake.dat", flag) + "  7.0  8.0\n  9.0\n", 3);
    put_file("quake.dat", "  1.0  2.0\n  3.0\n");
    RECRIN();
    EXPECT_EQ(model.at(0.0), 7.0);
  }
}

TEST(RecordFile, ThatIsMissingIsToldAndTheDeckIsReadInstead) {
  RecordModel model(RecordKind::ground, filed("quake.dat") + "  7.0  8.0\n  9.0\n", 3);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  EXPECT_TRUE(has_line(model.report(), " ERROR! CAN NOT OPEN FILE, quake.dat"));
  EXPECT_LT(model.report().find("CAN NOT OPEN FILE"), model.report().find("NUMBER OF INPUT DATA POINTS"))
      << "before the echo";
  EXPECT_TRUE(model.complains("line 2, columns 41-80: there is no file 'quake.dat'")) << model.scratch.errors();
  EXPECT_EQ(model.at(2.0), 9.0);
}

TEST(RecordFile, WithoutANameIsMissing) {
  RecordModel model(RecordKind::ground, filed("") + "  7.0  8.0\n  9.0\n", 3);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  EXPECT_TRUE(has_line(model.report(), " ERROR! CAN NOT OPEN FILE,"));
}

TEST(RecordFile, ThatIsMissingAndWithoutCardsOnTheDeckEndsAtTheDecksEnd) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(
      model.report().ends_with("     PROGRAM STOPS DUE TO THE END OF FILE ERROR\n"
                               "     GROUND ACCELERATION RECORD    1, CARD      2\n"))
      << model.report();
}

TEST(RecordFile, ThatIsShortEndsWithItsNameAndLine) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  put_file("quake.dat", "  1.0  2.0\n");
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(
      model.report().ends_with("     PROGRAM STOPS DUE TO THE END OF FILE ERROR\n"
                               "     GROUND ACCELERATION RECORD    1, FILE quake.dat, LINE      1\n"))
      << model.report();
  EXPECT_TRUE(model.complains("file quake.dat line 1: ")) << model.scratch.errors();
}

TEST(RecordFile, ThatIsEmptyEndsToo) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  put_file("quake.dat", "");
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(model.reports("     PROGRAM STOPS DUE TO THE END OF FILE ERROR\n"));
}

TEST(RecordFile, WithAFieldThatIsNoNumberStops) {
  RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
  put_file("quake.dat", "  1.0  2.0\nthree\n");
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(
      model.report().ends_with("     PROGRAM STOPS DUE TO DATA ERROR IN READING GROUND MOTION RECORD\n"
                               "     GROUND ACCELERATION RECORD    1, FILE quake.dat, LINE      2\n"))
      << model.report();
  EXPECT_TRUE(model.complains("file quake.dat line 2, columns 1-5: ")) << model.scratch.errors();
}

TEST(RecordFile, ThatIsBinaryStops) {
  std::string bytes;
  for (int i = 0; i < 100000; ++i) bytes += static_cast<char>((i * 7919) % 251);
  for (const std::string& text : {bytes, std::string(1000000, '\0'), std::string("\x7F\x45LF\x02")}) {
    RecordModel model(RecordKind::ground, filed("quake.dat"), 3);
    put_file("quake.dat", text);
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    EXPECT_TRUE(model.reports("     PROGRAM STOPS DUE TO DATA ERROR IN READING GROUND MOTION RECORD\n"));
  }
}

TEST(RecordFile, ThatIsADirectoryStops) {
  RecordModel model(RecordKind::displacement, "    1\n" + filed("quake.dat") + "  7.0  8.0\n  9.0\n", 3);
  std::filesystem::create_directory("quake.dat");
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(
      model.report().ends_with("     PROGRAM STOPS DUE TO DATA ERROR IN READING DISPLACEMENT RECORD\n"
                               "     IMPOSED DISPLACEMENT HISTORY RECORD    1, CARD      3\n"))
      << model.report();
  EXPECT_TRUE(model.complains("quake.dat: it is no file of lines"));
}

TEST(RecordFile, ThatNeverEndsStops) {
  if (!std::filesystem::exists("/dev/zero")) GTEST_SKIP() << "no such device here";
  RecordModel model(RecordKind::ground, filed("/dev/zero"), 3);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(model.complains("/dev/zero: it is no file of lines"));
}

TEST(RecordFile, OfARecordWithoutPointsIsOpenedAndClosed) {
  RecordModel model(RecordKind::ground,
                    heading("") + Control{.points = 0, .interval = "1.0", .flag = 1, .file = "quake.dat"}.card(), 3);
  put_file("quake.dat", "");
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  EXPECT_FALSE(is_open_formatted(63));
}

}  // namespace
}  // namespace tidearc::test
