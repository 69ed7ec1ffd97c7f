// Records written under a layout: groups, reversion, places, texts, scale, list-directed records; number fields by
// hand. Expected columns follow from the rules of the notation; fields in bulk are compared in layout_oracle_test.cpp.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>
#if defined(__SSE__)
#include <xmmintrin.h>
#endif

#include "../support/scratch.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {
namespace {
using test::Scratch;
using test::stop_of;

TEST(LayoutWrite, FieldsStandRightJustifiedSideBySide) {
  EXPECT_EQ(format("I5,F8.3,2I3", 12, 1.5, 7, -7), "   12   1.500  7 -7");
}

TEST(LayoutWrite, AValueThatDoesNotFitFillsTheFieldWithAsterisks) {
  EXPECT_EQ(format("I3,I3", 999, 1000), "999***");
  EXPECT_EQ(format("I3,I3", -99, -100), "-99***");
  EXPECT_EQ(format("F5.2,F5.2", 99.99, 100.0), "99.99*****");
  EXPECT_EQ(format("E9.3,E7.3", -0.5, 0.5), "-.500E+00*******");
}

TEST(LayoutWrite, TheZeroBeforeThePointIsDroppedOnlyWhenTheFieldIsTight) {
  EXPECT_EQ(format("F5.3,F4.3,F3.3", 0.25, 0.25, 0.25), "0.250.250***");
  EXPECT_EQ(format("F6.3,F5.3,F4.3", -0.25, -0.25, -0.25), "-0.250-.250****");
  EXPECT_EQ(format("E9.3,E8.3", 123.0, 123.0), "0.123E+03.123E+03");
}

TEST(LayoutWrite, AnExponentOfThreeDigitsTakesThePlaceOfItsLetter) {
  EXPECT_EQ(format("E12.4,E12.4", 1e99, 1e98), "  0.1000+100  0.1000E+99");
  EXPECT_EQ(format("1P,E12.4,D12.4", 1e-99, 1e-100), "  1.0000E-99  1.0000-100");
  EXPECT_EQ(format("D12.4", 2.5), "  0.2500D+01");
}

TEST(LayoutWrite, MinusIsKeptOnWhatRoundsToZeroAndOnNegativeZero) {
  EXPECT_EQ(format("F5.1,F5.1,E10.2,G11.3", -0.01, -0.0, -0.0, -0.0), " -0.0 -0.0 -0.00E+00  -0.00    ");
}

TEST(LayoutWrite, TiesOfTheExactBinaryValueGoToTheEvenDigit) {
  EXPECT_EQ(format("4F4.0", 0.5, 1.5, 2.5, 3.5), "  0.  2.  2.  4.");
  EXPECT_EQ(format("2F6.2", 0.125, 0.375), "  0.12  0.38");
  EXPECT_EQ(format("F6.2", 1.005), "  1.00");  // the real next to 1.005 lies below it
}

TEST(LayoutWrite, GeneralFieldsSwitchToFixedBetweenATenthAndTheNumberOfDigits) {
  EXPECT_EQ(format("G11.3", 0.1), "  0.100    ");
  EXPECT_EQ(format("G11.3", 0.0999), "  0.999E-01");
  EXPECT_EQ(format("G11.3", 0.09996), "  0.100    ");  // rounds to a tenth
  EXPECT_EQ(format("G11.3", 999.4), "   999.    ");
  EXPECT_EQ(format("G11.3", 999.6), "  0.100E+04");  // rounds to a thousand
  EXPECT_EQ(format("G11.3", 0.0), "   0.00    ");
  EXPECT_EQ(format("1P,G11.3,G11.3", 5.0, 5e7), "   5.00      5.000E+07");  // P acts on the E form only
}

TEST(LayoutWrite, InfinityAndNaNAreThreeLettersInEveryRealField) {
  const double inf = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  EXPECT_EQ(format("F12.3,E5.1,G4.1", inf, inf, -inf), "         Inf  Inf-Inf");
  EXPECT_EQ(format("F3.1,F3.1,D2.1", nan, -inf, nan), "NaN*****");
}

TEST(LayoutWrite, AScaleFactorStaysInForceUntilItIsChanged) {
  EXPECT_EQ(format("1P,E11.3,E11.3,0P,E11.3", 12.0, 12.0, 12.0), "  1.200E+01  1.200E+01  0.120E+02");
  EXPECT_EQ(format("1PE11.3/F6.1", 12.0, 1.5), "  1.200E+01\n  15.0");  // it multiplies an F field by ten
  EXPECT_EQ(format("I2,1P,(E10.2)", 1, 5.0, 6.0), " 1  5.00E+00\n  6.00E+00");
}

TEST(LayoutWrite, AFieldThatLeavesNoDigitsIsFilledWithAsterisks) {
  EXPECT_EQ(format("E8.0", 1.0), "********");
  EXPECT_EQ(format("G8.0", 1.0), "********");
  EXPECT_EQ(format("3P,E10.1", 1.0), "**********");
  EXPECT_EQ(format("-2P,E10.2", 1.0), "**********");
}

TEST(LayoutWrite, DenormalNumbersPrintInFull) {
  EXPECT_EQ(format("E24.16", 4.9406564584124654e-324), "  0.4940656458412465-323");
#if defined(__SSE__)
  const unsigned before = _mm_getcsr();
  _mm_setcsr(before | 0x8040);  // as the program runs: denormal results flushed, denormal inputs taken as zero
  const std::string text = format("E24.16,F5.1,G9.2", 4.9406564584124654e-324, -1e-310, 1e-310);
  double value = 1.0;
  const bool read_back = scan("0.4940656458412465-323", "E22.0", value);
  _mm_setcsr(before);
  EXPECT_EQ(text, "  0.4940656458412465-323 -0.0 0.10-309");
  EXPECT_TRUE(read_back);
  EXPECT_EQ(value, 4.9406564584124654e-324);
#endif
}

TEST(LayoutWrite, GroupsRepeatAndNest) {
  EXPECT_EQ(format("2(I2,2('<',I2,'>'))", std::array<int, 6>{1, 2, 3, 4, 5, 6}), " 1< 2>< 3> 4< 5>< 6>");
  EXPECT_EQ(format("2(I2,2('<',I2,'>'))", std::array<int, 2>{1, 2}), " 1< 2><");  // goes on up to the next field
}

TEST(LayoutWrite, ItemsLeftOverGoBackToTheLastOuterGroupOnANewRecord) {
  EXPECT_EQ(format("I2,(I3),1(5X,I4)", std::array<int, 4>{1, 2, 3, 4}), " 1  2        3\n        4");
  EXPECT_EQ(format("I2,2(I3,(I4))", std::array<int, 9>{1, 2, 3, 4, 5, 6, 7, 8, 9}),
            " 1  2   3  4   5\n  6   7  8   9");                               // the outer group, with its count
  EXPECT_EQ(format("I2,I3", std::array<int, 4>{1, 2, 3, 4}), " 1  2\n 3  4");  // no group: the start
}

TEST(LayoutWrite, TextsBehindTheLastItemAreWrittenUpToTheNextField) {
  EXPECT_EQ(format("I2,' and',I3,' never'", 1), " 1 and");
  EXPECT_EQ(format("I2,' end'", 1), " 1 end");
}

TEST(LayoutWrite, ASlashBehindTheLastItemEndsOneMoreRecord) {
  std::array<int, 14> rows{};
  const std::string one = format("I3,/,1(2X,14I2)", 5);
  EXPECT_EQ(one, "  5\n");
  EXPECT_EQ(format("14I2,/,1(57X,14I5)", rows), " 0 0 0 0 0 0 0 0 0 0 0 0 0 0\n");
}

TEST(LayoutWrite, SlashesEndRecordsEvenWhenNothingStandsOnThem) {
  EXPECT_EQ(format("/,/,I2,/", 1), "\n\n 1\n");
  EXPECT_EQ(format("'1',18A4,/,/,/", "TITLE"), "1TITLE" + std::string(67, ' ') + "\n\n\n");
  EXPECT_EQ(format("I1,3(/)", 2), "2\n\n\n");
}

TEST(LayoutWrite, ColumnsThatAreSkippedAtTheEndOfARecordAreNotWritten) {
  EXPECT_EQ(format("I2,5X", 1), " 1");
  EXPECT_EQ(format("I2,5X,'.'", 1), " 1     .");
}

TEST(LayoutWrite, TabGoesToAColumnForwardsAndBackwards) {
  EXPECT_EQ(format("T5,I2,T1,I2,T9,'x'", 1, 2), " 2   1  x");
  EXPECT_EQ(format("'abcdef',T3,'XY'"), "abXYef");
  EXPECT_EQ(format("'abcdef',T2,2X,'Z'"), "abcZef");
}

TEST(LayoutWrite, ADoubledQuoteIsOneQuote) {
  EXPECT_EQ(format("'it''s'"), "it's");
  EXPECT_EQ(format("''''"), "'");
  EXPECT_EQ(format("'a''''b'"), "a''b");
  EXPECT_EQ(format("\"say \"\"so\"\", it's\""), "say \"so\", it's");
  EXPECT_EQ(format("21('*'),'|'"), std::string(21, '*') + "|");
}

TEST(LayoutWrite, TextsAreLeftJustifiedAndCutAtTheFieldWidth) {
  EXPECT_EQ(format("A6,'|'", "ab"), "ab    |");
  EXPECT_EQ(format("A6,'|'", "abcdefgh"), "abcdef|");
  EXPECT_EQ(format("3A4,'|'", std::string("abcdefg")), "abcdefg     |");
  EXPECT_EQ(format("A3,'|'", std::array<char, 2>{'x', 'y'}), "xy |");
  EXPECT_EQ(format("2A2,A2,'|'", "abcd", "ef"), "abcdef|");
  EXPECT_EQ(format("18A4,I3", "x", 7), "x" + std::string(71, ' ') + "  7");
}

TEST(LayoutWrite, ViewsStandForAsManyItemsAsTheyHave) {
  std::vector<double> values{1.0, 2.0, 3.0};
  EXPECT_EQ(format("I3,(2F5.1)", 9, std::span<const double>(values)), "  9  1.0  2.0\n  3.0");
  EXPECT_EQ(format("F5.1", Vector<double>(values.data(), 2)), "  1.0\n  2.0");
  EXPECT_EQ(format("'a',F5.1,'b'", std::span<const double>()), "a");
}

TEST(LayoutWrite, AKindThatIsKnownOnlyInTheRunAndDoesNotFitEndsTheProcess) {
  Scratch scratch;
  const std::vector<double> values{1.0, 2.0};
  EXPECT_EQ(stop_of([&] { write(units.NDOUT, "F5.1,F5.1,A4", std::span<const double>(values), 1); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 6, file TAModel.out, record 1: layout F5.1,F5.1,A4: a field does not fit its item\n");
}

TEST(LayoutWrite, ALayoutWithoutFieldsForTheItemsEndsTheProcess) {
  Scratch scratch;
  const int value = 1;
  const OutItem item(value);
  EXPECT_EQ(stop_of([&] { write_items(units.NDOUT, "5X,/", {&item, 1}); }), status_io);
  EXPECT_EQ(stop_of([&] { write_items(units.NDOUT, "I5,5(", {&item, 1}); }), status_io);
  EXPECT_EQ(scratch.errors(),
            "unit 6, file TAModel.out, record 1: layout 5X,/: no field for an item\n"
            "unit 6, file TAModel.out, record 1: layout I5,5(: a group is not closed\n");
}

TEST(LayoutWrite, EveryWriteIsOneRecordAtLeast) {
  Scratch scratch;
  write(units.NDOUT, "");
  write(units.NDOUT, "I3", 1);
  write(units.NDOUT, "/");
  EXPECT_EQ(scratch.report(), "\n  1\n\n\n");
  EXPECT_EQ(record_of_unit(units.NDOUT), 4);
}

TEST(ListDirected, RecordsBeginWithOneBlankAndHaveOneBetweenItems) {
  Scratch scratch;
  write_list(units.NDOUT, " NSTO,LAVSST", 12, -3);
  write_list(units.NDOUT, 0.25, 0.0, -1e-200, std::array<int, 2>{4, 5});
  write_list(units.NDOUT, "1");
  EXPECT_EQ(scratch.report(),
            "  NSTO,LAVSST 12 -3\n"
            " 2.500000000000000E-01 0.000000000000000E+00 -1.000000000000000-200 4 5\n"
            " 1\n");
}

TEST(LayoutWrite, AGeneralFieldWithMoreDigitsThanColumnsIsAsterisks) {
  EXPECT_EQ(format("G30.5145", 1.5), std::string(30, '*'));
  EXPECT_EQ(format("G30.5145", 0.0), std::string(30, '*'));
  EXPECT_EQ(format("G12.13", 1.0e-30), std::string(12, '*'));
}

TEST(ListDirected, WhatIsNotFiniteIsAWord) {
  Scratch scratch;
  write_list(units.NDOUT, std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity(),
             std::nan(""));
  EXPECT_EQ(scratch.report(), " Inf -Inf NaN\n");
}

}  // namespace
}  // namespace tidearc
