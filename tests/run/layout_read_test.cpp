// Records read under a layout: columns, blanks, texts, several records, and what a reading that fails tells.
#include <gtest/gtest.h>

#include <array>
#include <limits>
#include <string>
#include <vector>

#include "../support/scratch.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {
namespace {
using test::Scratch;
using test::stop_of;

std::string text_of(const auto& characters) { return {characters.begin(), characters.end()}; }

/// An I field of the text's width; nothing when it does not read.
std::string integer_of(const std::string& text) {
  int value = 99;
  return scan(text, "I20", value) ? std::to_string(value) : "refused";
}

double real_of(const std::string& text) {
  double value = 99.0;
  return scan(text, "F30.0", value) ? value : std::numeric_limits<double>::quiet_NaN();
}

bool is_refused(const std::string& text) {
  double value = 0.0;
  return !scan(text, "E30.0", value);
}

TEST(LayoutRead, BlanksInANumberAreIgnored) {
  int i = 0;
  int j = 0;
  double x = 0.0;
  ASSERT_TRUE(scan("5     1 2 - 1 . 5", "2I5,F10.0", i, j, x));
  EXPECT_EQ(i, 5);  // not 50000
  EXPECT_EQ(j, 12);
  EXPECT_EQ(x, -1.5);
}

TEST(LayoutRead, ABlankFieldIsZero) {
  int i = 7;
  double x = 7.0;
  double y = 7.0;
  ASSERT_TRUE(scan("               ", "I5,F10.0,E10.0", i, x, y));
  EXPECT_EQ(i, 0);
  EXPECT_EQ(x, 0.0);
  EXPECT_EQ(y, 0.0);
}

TEST(LayoutRead, AShortRecordReadsAsIfBlanksFollowed) {
  int i = 0;
  int j = 7;
  double x = 7.0;
  std::array<char, 4> word{};
  ASSERT_TRUE(scan("  12", "I5,I5,F10.0,A4", i, j, x, word));
  EXPECT_EQ(i, 12);
  EXPECT_EQ(j, 0);
  EXPECT_EQ(x, 0.0);
  EXPECT_EQ(text_of(word), "    ");
}

TEST(LayoutRead, CharactersBehindTheLayoutAreIgnored) {
  int i = 0;
  EXPECT_TRUE(scan("   12 anything", "I5", i));
  EXPECT_EQ(i, 12);
}

TEST(LayoutRead, NothingIsCutAtColumnEighty) {
  double x = 0.0;
  ASSERT_TRUE(scan(std::string(210, ' ') + "     12.50", "210X,F10.0", x));
  EXPECT_EQ(x, 12.5);
}

TEST(LayoutRead, IntegersHaveThirtyTwoBits) {
  EXPECT_EQ(integer_of("2147483647"), "2147483647");
  EXPECT_EQ(integer_of("-2147483648"), "-2147483648");
  EXPECT_EQ(integer_of("+0012"), "12");
  EXPECT_EQ(integer_of("2147483648"), "refused");
  EXPECT_EQ(integer_of("-2147483649"), "refused");
  EXPECT_EQ(integer_of("99999999999999999999"), "refused");
}

TEST(LayoutRead, WhatIsNoIntegerIsRefused) {
  for (const char* const text : {"1.", "1E2", "A", "+", "-", "+-1", "1-", "0x1", "1,", "\t1"}) {
    EXPECT_EQ(integer_of(text), "refused") << text;
  }
}

TEST(LayoutRead, ThereIsNoImpliedDecimalPoint) {
  double x = 0.0;
  double y = 0.0;
  ASSERT_TRUE(scan("   12  1.25", "F5.2,F6.4", x, y));
  EXPECT_EQ(x, 12.0);
  EXPECT_EQ(y, 1.25);
}

TEST(LayoutRead, ExponentsAreLedInByALetterOrASignAlone) {
  for (const char* const text :
       {"1500.", "1.5E3", "1.5e+3", "1.5D03", "1.5d3", "1.5+3", "15000-1", "1 . 5 E 0 3", "+.15E4", "1500"}) {
    EXPECT_EQ(real_of(text), 1500.0) << text;
  }
  EXPECT_EQ(real_of("-1.5-3"), -0.0015);
}

TEST(LayoutRead, WhatIsNoRealIsRefused) {
  for (const char* const text : {"1.5E", "1.5+", "E5", ".", "+", "-.", "1..5", "1,5", "--5", "1E5.", "1E5E1", "inf",
                                 "NaN", "0x1p3", "12ABC", "1.5Q2", "1.5F2", "*****", "1E+-5"}) {
    EXPECT_TRUE(is_refused(text)) << text;
  }
}

TEST(LayoutRead, RealsBeyondTheRangeAreRefusedAndBelowItAreZero) {
  EXPECT_EQ(real_of("1.7976931348623157E308"), std::numeric_limits<double>::max());
  EXPECT_TRUE(is_refused("1.7976931348623159E308"));
  EXPECT_TRUE(is_refused("1E309"));
  EXPECT_TRUE(is_refused("-1E999999999999999999"));
  EXPECT_EQ(real_of("4.9406564584124654E-324"), std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(real_of("1E-330"), 0.0);
  EXPECT_EQ(real_of("1E-99999999999999999999"), 0.0);
  EXPECT_EQ(real_of("0E99999999999999999999"), 0.0);
  EXPECT_EQ(real_of("0.000000000000000001E+320"), 1e302);
}

TEST(LayoutRead, AScaleFactorActsOnlyWhereThereIsNoExponent) {
  double x = 0.0;
  double y = 0.0;
  ASSERT_TRUE(scan("  15.0 15.0E0", "2P,F6.0,F7.0", x, y));
  EXPECT_EQ(x, 0.15);
  EXPECT_EQ(y, 15.0);
}

TEST(LayoutRead, TextsAreTakenFromTheLeftAndFilledWithBlanks) {
  std::array<char, 4> word{};
  std::array<char, 8> longer{};
  char two[2];
  ASSERT_TRUE(scan(" STAT  abcdef", "A4,4X,A3,T9,A5", word, longer, two));
  EXPECT_EQ(text_of(word), " STA");
  EXPECT_EQ(text_of(longer), "bcd     ");
  EXPECT_EQ(std::string(two, 2), "bc");
}

TEST(LayoutRead, BytesAboveAsciiAreOrdinary) {
  std::array<char, 4> word{};
  ASSERT_TRUE(scan("\xC3\xA9\xFFx", "A4", word));
  EXPECT_EQ(text_of(word), "\xC3\xA9\xFFx");
}

TEST(LayoutRead, ColumnsMayBeReadTwice) {
  int i = 0;
  std::array<char, 5> word{};
  ASSERT_TRUE(scan("   12", "I5,T1,A5", i, word));
  EXPECT_EQ(i, 12);
  EXPECT_EQ(text_of(word), "   12");
}

TEST(LayoutRead, ItemsLeftOverGoOnInTheNextRecord) {
  Scratch scratch("    1    2\n    3    4\n    5\n   99\n");
  std::array<int, 5> values{};
  read(units.NDIN, "2I5", values);
  EXPECT_EQ(values, (std::array<int, 5>{1, 2, 3, 4, 5}));
  EXPECT_EQ(deck_line(), 3);
  EXPECT_EQ(deck_text(), "    5");
}

TEST(LayoutRead, GroupsGoBackToTheLastOuterGroup) {
  Scratch scratch("    7\n  1.0    1  2.0    2\n  3.0    3\n");
  int count = 0;
  std::array<double, 3> x{};
  std::array<int, 3> n{};
  read(units.NDIN, "I5,/,2(F5.0,I5)", count, x[0], n[0], x[1], n[1], x[2], n[2]);
  EXPECT_EQ(count, 7);
  EXPECT_EQ(x[2], 3.0);
  EXPECT_EQ(n, (std::array<int, 3>{1, 2, 3}));
}

TEST(LayoutRead, SlashesReadOverRecords) {
  Scratch scratch("1\n2\n3\n4\n5\n");
  int i = 0;
  int j = 0;
  read(units.NDIN, "I1,/,/,I1", i, j);
  EXPECT_EQ(i, 1);
  EXPECT_EQ(j, 3);
  read(units.NDIN, "");  // a record without items is read over
  read(units.NDIN, "I1", i);
  EXPECT_EQ(i, 5);
}

TEST(LayoutRead, ABadFieldTellsUnitFileLineColumnsTextAndItem) {
  Scratch scratch("    1\n    2      12X4    \n");
  int i = 0;
  double x = 0.0;
  double y = 0.0;
  read(units.NDIN, "I5", i);
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "I5,2F10.0", i, x, y); }), status_io);
  EXPECT_EQ(
      scratch.errors(),
      "unit 5, file TAModel.inp, record 2: columns 6-15: ' 12X4' is not a real number (item 2, layout I5,2F10.0)\n");
}

TEST(LayoutRead, APointInAnIntegerFieldIsABadField) {
  Scratch scratch("  1.5\n");
  int i = 0;
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "I5", i); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 5, file TAModel.inp, record 1: columns 1-5: ' 1.5' is not an integer (item 1, layout I5)\n");
}

TEST(LayoutRead, ARecordThatIsMissingIsTheEndOfTheFile) {
  Scratch scratch("    1\n    2");
  int i = 0;
  read(units.NDIN, "I5", i);
  read(units.NDIN, "I5", i);
  EXPECT_EQ(i, 2);  // the last line needs no line end
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "I5", i); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 5, file TAModel.inp, record 3: end of file where a record was expected (item 1, layout I5)\n");
}

TEST(LayoutRead, AnEmptyDeckIsTheEndOfTheFile) {
  Scratch scratch("");
  int i = 0;
  EXPECT_EQ(stop_of([&] { read(units.NDIN, "I5", i); }), status_io);
  EXPECT_NE(scratch.errors().find("record 1: end of file"), std::string::npos);
}

TEST(LayoutRead, ScanTellsAFailureWithoutEndingTheProcess) {
  int i = 0;
  int j = 0;
  EXPECT_FALSE(scan("   1x", "I5", i));
  EXPECT_FALSE(scan("    1", "I5,/,I5", i, j));
  EXPECT_TRUE(scan("    1\n    2", "I5,/,I5", i, j));
  EXPECT_EQ(j, 2);
}

TEST(LayoutRead, ALayoutWithoutFieldsForTheItemsEnds) {
  int i = 0;
  const InItem item(i);
  EXPECT_FALSE(scan_items("1\n2\n3", "5X,/", {&item, 1}));
  EXPECT_FALSE(scan_items("1", "5(", {&item, 1}));
}

}  // namespace
}  // namespace tidearc
