// Read layouts of records: every item, nesting, going back, limits, and what is refused. Where a comment says so, the
// numbers are those that gfortran's run-time library reads under the same layout.
#include "model/record_layout.h"

#include <gtest/gtest.h>

#include "load_model.h"

namespace tidearc::test {
namespace {

using Outcome = RecordReader::Outcome;

struct Reading {
  std::vector<double> numbers;
  Outcome outcome = Outcome::number;  ///< what came behind the last number, when the count was not reached
  bool missed_point = false;
  FieldPlace place;
  std::size_t lines = 0;  ///< taken, the trailing ones of the layout included
};

Reading read_under(const std::string& text, const std::vector<std::string>& lines, int count) {
  const RecordLayout layout(text);
  EXPECT_EQ(layout.error(), "") << text;
  Reading reading;
  RecordReader reader(layout, [&](std::string_view& line) {
    if (reading.lines == lines.size()) return false;
    line = lines[reading.lines++];
    return true;
  });
  for (int i = 0; i < count && reading.outcome == Outcome::number; ++i) {
    double value = 0.0;
    reading.outcome = reader.next(value);
    if (reading.outcome == Outcome::number) reading.numbers.push_back(value);
  }
  reader.finish();
  reading.missed_point = reader.missed_point();
  reading.place = reader.place();
  return reading;
}

std::vector<double> numbers_under(const std::string& text, const std::vector<std::string>& lines, int count) {
  return read_under(text, lines, count).numbers;
}

std::string error_of(const std::string& text) { return std::string(RecordLayout(text).error()); }

using Numbers = std::vector<double>;

TEST(ReadLayout, FieldsTakeTheirColumnsOneBehindTheOther) {
  EXPECT_EQ(numbers_under("(3F5.0)", {"  1.5 -2.0 30."}, 3), (Numbers{1.5, -2.0, 30.0}));
}

TEST(ReadLayout, AllNumberFieldsReadAlike) {
  for (const char* letter : {"F", "E", "D", "G"}) {
    const std::string layout = std::string("(4") + letter + "8.2)";
    EXPECT_EQ(numbers_under(layout, {"   12.50 1.25E+1125.D-1 1.25+01"}, 4), (Numbers{12.5, 12.5, 12.5, 12.5}))
        << layout;
  }
}

TEST(ReadLayout, IntegerFieldMayHoldAReal) {
  EXPECT_EQ(numbers_under("(I4,I6,I6)", {"  12  2.50 1E+02"}, 3), (Numbers{12.0, 2.5, 100.0}));
}

TEST(ReadLayout, BlankFieldIsZeroAndBlanksInAFieldMeanNothing) {
  EXPECT_EQ(numbers_under("(4F6.0)", {"       1 2.5- 4.0 "}, 4), (Numbers{0.0, 12.5, -4.0, 0.0}));
}

TEST(ReadLayout, NoPointIsImplied) {
  EXPECT_EQ(numbers_under("(2F6.2)", {"  1234  12.5"}, 2), (Numbers{1234.0, 12.5}));
}

TEST(ReadLayout, MissedPointIsNoticedOnlyUnderDecimals) {
  EXPECT_TRUE(read_under("(2F6.2)", {"  12.5  1234"}, 2).missed_point);
  EXPECT_TRUE(read_under("(E8.2)", {"    12E3"}, 1).missed_point);
  EXPECT_FALSE(read_under("(2F6.0)", {"  12.5  1234"}, 2).missed_point);
  EXPECT_FALSE(read_under("(2F6.2)", {"  12.5      "}, 2).missed_point) << "an empty field has no point to miss";
  EXPECT_FALSE(read_under("(I6)", {"  1234"}, 1).missed_point);
}

TEST(ReadLayout, SkippedColumnsAreNotLookedAt) {
  EXPECT_EQ(numbers_under("(3X,F4.0,X,F4.0)", {"abc 1.0# 2.0"}, 2), (Numbers{1.0, 2.0}));
}

TEST(ReadLayout, ColumnsBehindTheEndOfALineAreBlank) {
  EXPECT_EQ(numbers_under("(3F5.0)", {"   1", "  2.", ""}, 9), (Numbers{1, 0, 0, 2, 0, 0, 0, 0, 0}));
  EXPECT_EQ(numbers_under("(20X,F5.0)", {"1"}, 1), (Numbers{0.0}));
}

TEST(ReadLayout, SlashGoesToTheNextLine) {
  EXPECT_EQ(numbers_under("(F4.0,/,F4.0)", {"  1.  9.", "  2.  9."}, 2), (Numbers{1.0, 2.0}));
  EXPECT_EQ(numbers_under("(F4.0//F4.0)", {"  1.", "  9.", "  2."}, 2), (Numbers{1.0, 2.0}));
  EXPECT_EQ(numbers_under("(2/F4.0)", {"  8.", "  9.", "  2."}, 1), (Numbers{2.0}));
}

TEST(ReadLayout, SlashBehindTheLastNumberPassesALineOver) {
  EXPECT_EQ(read_under("(2F4.0/)", {"  1.  2.", "passed over", "next"}, 2).lines, 2U);
  EXPECT_EQ(read_under("(2F4.0/2F4.0)", {"  1.  2.", "  3.  4.", "next"}, 2).lines, 2U);
  EXPECT_EQ(read_under("(2F4.0/2F4.0)", {"  1.  2.", "  3.  4.", "next"}, 1).lines, 1U);
  EXPECT_EQ(read_under("(2F4.0/)", {"  1.  2."}, 2).outcome, Outcome::number) << "nothing is missing at the end";
}

TEST(ReadLayout, ScaleDividesFieldsWithoutExponentThatFollow) {
  EXPECT_EQ(numbers_under("(F5.0,2P,2F5.0,0P,F5.0)", {"  1.5  1.5  1E2  1.5"}, 4), (Numbers{1.5, 0.015, 100.0, 1.5}));
  EXPECT_EQ(numbers_under("(-1P,F5.0,I5)", {"  1.5   15"}, 2), (Numbers{15.0, 15.0}));
}

TEST(ReadLayout, ScaleStaysWhenTheLayoutStartsAgain) {
  EXPECT_EQ(numbers_under("(F5.0,1P)", {"  1.5", "  1.5"}, 2), (Numbers{1.5, 0.15}));
  EXPECT_EQ(numbers_under("(1P2F5.0)", {"  20.  30."}, 2), (Numbers{2.0, 3.0})) << "no comma is needed behind P";
}

TEST(ReadLayout, WithoutGroupsItStartsAgainAtTheFront) {
  EXPECT_EQ(numbers_under("(2F4.0)", {"  1.  2.  9.", "  3.  4.  9.", "  5."}, 5), (Numbers{1, 2, 3, 4, 5}));
}

// The next two as gfortran reads them.
TEST(ReadLayout, StartsAgainAtItsLastInnerGroupWithTheCountOfThatGroup) {
  EXPECT_EQ(numbers_under("(F2.0,2(F3.0),F2.0,3(F1.0,X))", {" 1  2  3 44 5 6 7", "8 9 1 2", "3"}, 12),
            (Numbers{1, 2, 3, 4, 4, 5, 6, 8, 9, 1, 3, 0}));
}

TEST(ReadLayout, StartsAgainAtTheGroupThatStandsDirectlyInTheLayout) {
  EXPECT_EQ(numbers_under("(F2.0,2(F1.0,2(F2.0)),F3.0)", {" 1 2 3 4 5 6 7", "8 91 2 3 4 5", " 6"}, 16),
            (Numbers{1, 0, 2, 3, 4, 5, 6, 7, 8, 9, 1, 2, 3, 4, 5, 0}));
}

TEST(ReadLayout, NestedGroupsRepeatWithinEachOther) {
  EXPECT_EQ(numbers_under("(2(F1.0,2(F2.0,X),/))", {"112 13 ", "221 22 "}, 6), (Numbers{1, 12, 13, 2, 21, 22}));
}

TEST(ReadLayout, RecordMayEndInTheMiddleOfALine) {
  const Reading reading = read_under("(8F5.0)", {"   1.   2.   3.   4.", "next"}, 3);
  EXPECT_EQ(reading.numbers, (Numbers{1, 2, 3}));
  EXPECT_EQ(reading.lines, 1U);
}

TEST(ReadLayout, RecordWithoutNumbersTakesNoLine) { EXPECT_EQ(read_under("(8F5.0)", {"next"}, 0).lines, 0U); }

TEST(ReadLayout, CaseAndBlanksMeanNothing) {
  const std::vector<std::string> lines{"abc  1.5   2   3.0"};
  const Numbers numbers = numbers_under("(3X,F5.0,I4,E6.1)", lines, 3);
  EXPECT_EQ(numbers_under("( 3 x , f 5 . 0 , i 4 , e6.1 )   ", lines, 3), numbers);
  EXPECT_EQ(numbers_under("(1 0F2.0)", {" 1 2 3 4 5 6 7 8 910"}, 10), (Numbers{1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

TEST(ReadLayout, EndOfTheLinesIsToldAsSuch) {
  const Reading reading = read_under("(2F5.0)", {"   1.   2.", "   3."}, 5);
  EXPECT_EQ(reading.outcome, Outcome::end_of_file);
  EXPECT_EQ(reading.numbers, (Numbers{1, 2, 3, 0}));
  EXPECT_EQ(read_under("(F5.0)", {}, 1).outcome, Outcome::end_of_file);
}

TEST(ReadLayout, FieldThatIsNoNumberIsToldWithItsPlace) {
  const Reading reading = read_under("(2X,2F5.0)", {"--   1. 2.X3 "}, 2);
  EXPECT_EQ(reading.outcome, Outcome::bad_field);
  EXPECT_EQ(reading.numbers, (Numbers{1.0}));
  EXPECT_EQ(reading.place.column, 7U);
  EXPECT_EQ(reading.place.width, 5U);
  EXPECT_EQ(reading.place.text, " 2.X3");
}

TEST(ReadLayout, NumberBeyondTheLargestRealIsNone) {
  EXPECT_EQ(read_under("(F8.0)", {"   1E308"}, 1).numbers, (Numbers{1e308}));
  EXPECT_EQ(read_under("(F8.0)", {"   1E309"}, 1).outcome, Outcome::bad_field);
  EXPECT_EQ(read_under("(-9P,F8.0)", {"   1E308"}, 1).numbers, (Numbers{1e308})) << "an exponent turns the scale off";
}

TEST(ReadLayout, LineAsLongAsALineIsReadToHasNoColumnsBehindIt) {
  const std::string line(static_cast<std::size_t>(longest_line), '1');
  const std::string layout = "(6(9999X),5541X,2F1.0)";  // the first field is the last column
  EXPECT_EQ(read_under(layout, {line}, 1).numbers, (Numbers{1.0}));
  EXPECT_EQ(read_under(layout, {line}, 2).outcome, Outcome::line_too_long);
}

TEST(ReadLayout, GroupWithoutNumberFieldServesNoFurtherNumbers) {
  EXPECT_EQ(read_under("(2F5.0,(5X))", {"   1.   2."}, 2).outcome, Outcome::number);
  EXPECT_EQ(read_under("(2F5.0,(5X))", {"   1.   2.", "   3."}, 3).outcome, Outcome::no_field);
  EXPECT_EQ(numbers_under("((5X),F5.0)", {"xxxxx   1.", "xxxxx   2."}, 2), (Numbers{1.0, 2.0}));
}

TEST(ReadLayoutLimits, RepeatCountsGoTo9999) {
  EXPECT_EQ(error_of("(9999F1.0)"), "");
  EXPECT_EQ(error_of("(10000F1.0)"), "a number is too large");
  EXPECT_EQ(error_of("(9999(F1.0))"), "");
  EXPECT_EQ(error_of("(10000(F1.0))"), "a number is too large");
  EXPECT_EQ(error_of("(9999X,F1.0)"), "");
  EXPECT_EQ(error_of("(10000X,F1.0)"), "a number is too large");
  EXPECT_EQ(error_of("(99999999999999999999F1.0)"), "a number is too large");
}

TEST(ReadLayoutLimits, GroupsNestToEight) {
  EXPECT_EQ(numbers_under("(((((((((I5)))))))))", {"    7"}, 1), (Numbers{7.0}));
  EXPECT_EQ(error_of("((((((((((I5))))))))))"), "groups are nested too deep");
}

TEST(ReadLayoutLimits, LineHas100000FieldsAtMost) {
  EXPECT_EQ(error_of("(10(9999F1.0),10F1.0)"), "");
  EXPECT_EQ(error_of("(10(9999F1.0),11F1.0)"), "more than 100000 fields on a line");
  EXPECT_EQ(error_of("(9999(9999(9999(9999(9999(9999(9999F1.0)))))))"), "more than 100000 fields on a line");
  EXPECT_EQ(error_of("(9999(9999(9999X)),F1.0)"), "more than 100000 fields on a line") << "skips count too";
}

TEST(ReadLayoutLimits, FieldsOfOtherLinesDoNotCount) {
  EXPECT_EQ(error_of("(9999(10F1.0,/,F1.0))"), "");
  EXPECT_EQ(error_of("(2(5(9999F1.0),/,5(9999F1.0)))"), "") << "99990 from one pass into the next";
  EXPECT_EQ(error_of("(2(6(9999F1.0),/,6(9999F1.0)))"), "more than 100000 fields on a line");
  EXPECT_EQ(error_of("(6(9999F1.0),/,6(9999F1.0))"), "");
  EXPECT_EQ(error_of("(6(9999F1.0),2(5(9999F1.0),/))"), "more than 100000 fields on a line");
  EXPECT_EQ(error_of("(/,6(9999F1.0),2(5(9999F1.0),/))"), "more than 100000 fields on a line");
  EXPECT_EQ(error_of("(/,5(9999F1.0),2(5(9999F1.0),/))"), "");
}

TEST(ReadLayoutLimits, FieldHas256ColumnsAtMost) {
  EXPECT_EQ(error_of("(F256.0)"), "");
  EXPECT_EQ(error_of("(F257.0)"), "a field is too wide");
  EXPECT_EQ(numbers_under("(F256.0)", {std::string(253, ' ') + "1.5"}, 1), (Numbers{1.5}));
}

TEST(ReadLayoutLimits, ScaleGoesTo99) {
  EXPECT_EQ(error_of("(99PF5.0)"), "");
  EXPECT_EQ(error_of("(-99P,F5.0)"), "");
  EXPECT_EQ(error_of("(100P,F5.0)"), "a scale factor is too large");
}

TEST(ReadLayoutErrors, LayoutStandsInBrackets) {
  EXPECT_EQ(error_of(""), "it does not begin with a bracket");
  EXPECT_EQ(error_of("8F10.0"), "it does not begin with a bracket");
  EXPECT_EQ(error_of("(8F10.0"), "a bracket is not closed");
  EXPECT_EQ(error_of("(8F10.0,"), "a bracket is not closed");
  EXPECT_EQ(error_of("(2(F10.0)"), "a bracket is not closed");
  EXPECT_EQ(error_of("(8"), "a bracket is not closed");
  EXPECT_EQ(error_of("(8F10.0))"), "something stands behind its closing bracket");
  EXPECT_EQ(error_of("(8F10.0) EL CENTRO"), "something stands behind its closing bracket");
}

TEST(ReadLayoutErrors, NumberFieldIsNeeded) {
  EXPECT_EQ(error_of("()"), "it has no number field");
  EXPECT_EQ(error_of("(5X,/)"), "it has no number field");
  EXPECT_EQ(error_of("(F5.0,())"), "a group is empty");
}

TEST(ReadLayoutErrors, OtherLettersAreRefused) {
  for (const char letter : std::string("ABCHJKLMNOQRSTUVWYZ")) {
    EXPECT_EQ(error_of(std::string("(") + letter + "5,F5.0)"), "an unknown letter") << letter;
  }
  EXPECT_EQ(error_of("(F5.0,'text')"), "an unknown letter");
  EXPECT_EQ(error_of("(*)"), "an unknown letter");
}

TEST(ReadLayoutErrors, ItemsAreWhole) {
  EXPECT_EQ(error_of("(F.0)"), "a field has no width");
  EXPECT_EQ(error_of("(F0.0)"), "a field has no width");
  EXPECT_EQ(error_of("(F10)"), "a real field has no decimals");
  EXPECT_EQ(error_of("(F10.)"), "a real field has no decimals");
  EXPECT_EQ(error_of("(I)"), "a field has no width");
  EXPECT_EQ(error_of("(0F5.0)"), "a count is zero");
  EXPECT_EQ(error_of("(0(F5.0))"), "a count is zero");
  EXPECT_EQ(error_of("(P,F5.0)"), "P stands without a number");
  EXPECT_EQ(error_of("(-F5.0)"), "a sign stands before something that is no scale factor");
  EXPECT_EQ(error_of("(-1X,F5.0)"), "a sign stands before something that is no scale factor");
}

}  // namespace
}  // namespace tidearc::test
