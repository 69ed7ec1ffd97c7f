// Dynamic load records as the deck has them: cards, echo, points from the deck and from files, what stops the run.
#include <filesystem>
#include <fstream>

#include "record_deck.h"

namespace tidearc::test {
namespace {

/// A ground acceleration record of four points by pairs.
std::string four_pairs(const Control& control) {
  return heading("(8F10.0)") + control.card() +
         "       0.0       0.0       1.0       2.0       1.0       5.0       3.0       5.0\n";
}

TEST(RecordTable, PairsAreTimeThenValueInOnePass) {
  RecordModel model(RecordKind::ground, four_pairs({.points = 4}), 4);
  RECRIN();
  EXPECT_EQ(model.at(0.5), 1.0);
  EXPECT_EQ(model.at(1.0), 5.0);
  EXPECT_EQ(model.at(3.0), 5.0);
  EXPECT_EQ(model.at(3.1), 0.0);
  EXPECT_EQ(model.at(-0.1), 0.0);
}

TEST(RecordTable, KeepsItsLastValueForDisplacementsOnly) {
  for (const RecordKind kind : all_kinds) {
    RecordModel model(kind, kind_card(kind) + four_pairs({.points = 4}), 4);
    RECRIN();
    EXPECT_EQ(model.at(3.1), kind == RecordKind::displacement ? 5.0 : 0.0);
  }
}

TEST(RecordTable, WithAnIntervalTheCardsHaveValuesAlone) {
  RecordModel model(RecordKind::ground,
                    heading("(3F5.0)") + Control{.points = 4, .interval = "0.1"}.card() + "  1.0  2.0  3.0\n  4.0\n",
                    4);
  RECRIN();
  EXPECT_EQ(model.at(0.0), 1.0);
  EXPECT_EQ(model.at(0.1), 2.0);
  EXPECT_NEAR(model.at(0.25), 3.5, 1e-14);
  EXPECT_EQ(model.at(0.1 + 0.1 + 0.1), 4.0) << "times are summed up";
}

TEST(RecordTable, ValuesAreScaledAndTimesAreNot) {
  RecordModel model(RecordKind::ground, four_pairs({.points = 4, .scale = "-2.0"}), 4);
  RECRIN();
  EXPECT_EQ(model.at(0.5), -2.0);
  EXPECT_EQ(model.at(3.0), -10.0);
}

TEST(RecordTable, ScaleOfZeroIsOne) {
  RecordModel model(
      RecordKind::ground,
      heading("(2F5.0)") + Control{.points = 2, .interval = "1.0", .scale = "0.0"}.card() + "  1.0  2.0\n", 2);
  RECRIN();
  EXPECT_EQ(model.at(0.0), 1.0);
  EXPECT_EQ(model.at(1.0), 2.0);
  EXPECT_TRUE(model.reports("     SCALE FACTOR ................................... =  0.1000E+01\n"));
}

TEST(RecordTable, RecordsOfAKindKeepApart) {
  std::string deck;
  for (int i = 1; i <= 3; ++i)
    deck += heading("(2F5.0)") + Control{.points = i == 2 ? 1 : 2, .interval = "1.0"}.card() + "  " +
            std::to_string(i) + ".0  9.0\n";
  RecordModel model(RecordKind::ground, deck, 2, 3);
  RECRIN();
  for (int i = 1; i <= 3; ++i) EXPECT_EQ(model.at(0.0, i), i);
  EXPECT_EQ(model.at(1.0, 1), 9.0);
  EXPECT_EQ(model.at(1.0, 2), 0.0) << "it has one point";
  for (const int number : {-1, 0, 4}) EXPECT_EQ(model.at(0.0, number), 0.0) << "no record " << number;
}

TEST(RecordTable, NextRecordStartsANewCard) {
  RecordModel model(RecordKind::ground,
                    heading("(8F5.0)") + Control{.points = 2, .interval = "1.0"}.card() + "  1.0  2.0  7.0  8.0\n" +
                        heading("(8F5.0)") + Control{.points = 1, .interval = "1.0"}.card() + "  3.0\n",
                    2, 2);
  RECRIN();
  EXPECT_EQ(model.at(0.0, 2), 3.0);
}

TEST(RecordTable, LineThatItsLayoutPassesOverIsNotTheNextRecord) {
  RecordModel model(RecordKind::ground,
                    heading("(2F5.0/)") + Control{.points = 2, .interval = "1.0"}.card() + "  1.0  2.0\npassed over\n" +
                        heading("(8F5.0)") + Control{.points = 1, .interval = "1.0"}.card() + "  3.0\n",
                    2, 2);
  RECRIN();
  EXPECT_EQ(model.at(1.0, 1), 2.0);
  EXPECT_EQ(model.at(0.0, 2), 3.0);
}

TEST(RecordTable, FirstTwoEntriesOfARowStayFree) {
  RecordModel model(RecordKind::ground, four_pairs({.points = 4}), 5);
  RECRIN();
  EXPECT_EQ(dynamic_loads.MXPNT, 7);
  const RecordTable& table = record_table(RecordKind::ground);
  EXPECT_EQ(pool.integers(table.points, 1)(1), 6);
  EXPECT_EQ(pool.reals(table.time, 1, 7)(1, 6), 3.0);
  EXPECT_EQ(pool.reals(table.value, 1, 7)(1, 4), 2.0);
  EXPECT_EQ(pool.reals(table.value, 1, 7)(1, 2), 0.0);
}

TEST(RecordTable, WithoutPointsIsZeroAndTakesNoCard) {
  for (const int points : {0, -3}) {
    RecordModel model(RecordKind::ground, heading("") + Control{.points = points}.card() + four_pairs({.points = 4}), 4,
                      2);
    RECRIN();
    EXPECT_EQ(model.at(0.0, 1), 0.0);
    EXPECT_EQ(pool.integers(record_table(RecordKind::ground).points, 2)(1), 2);
    EXPECT_EQ(model.at(0.5, 2), 1.0);
  }
}

TEST(RecordTable, FurtherIntegerOfAForceRecordIsKept) {
  RecordModel model(
      RecordKind::force,
      "    1\n" + heading("(F5.0)") + Control{.points = 1, .interval = "1.0", .further = "17"}.card() + "  1.0\n", 1);
  RECRIN();
  EXPECT_EQ(pool.integers(record_table(RecordKind::force).further, 1)(1), 17);
}

TEST(RecordTable, KindCardOtherThanTwoIsATable) {
  for (const char* kind : {"    0", "    1", "    3", "   -2", ""}) {
    RecordModel model(RecordKind::force,
                      std::string(kind) + " JUNK IS NOT READ\n" + heading("(F5.0)") +
                          Control{.points = 1, .interval = "1.0"}.card() + "  4.0\n",
                      1);
    if (std::string(kind).empty()) continue;
    RECRIN();
    EXPECT_EQ(model.at(0.0), 4.0) << kind;
  }
}

TEST(RecordEcho, HasTitleAndBlock) {
  RecordModel model(RecordKind::ground,
                    heading("(2F5.0)", "IMPERIAL VALLEY") +
                        Control{.points = 2, .interval = "0.02", .scale = "386.4"}.card() + "  1.0  2.0\n",
                    2);
  RECRIN();
  EXPECT_TRUE(
      model.reports("1\n GROUND ACCELERATION RECORDS\n\n\n     GROUND ACCELERATION RECORD    1\n"
                    "     IMPERIAL VALLEY\n\n"
                    "     NUMBER OF INPUT DATA POINTS .................... =    2\n"
                    "     RECORD PRINT INDICATOR ......................... =    0\n"
                    "          IF EQ. 0  RECORD NOT PRINTED\n"
                    "          IF EQ. 1  PRINTED AS INPUT AND SCALED\n"
                    "     INPUT TIME INTERVAL ............................ =  0.2000E-01\n"
                    "     SCALE FACTOR ................................... =  0.3864E+03\n"
                    "     FORMAT TO READ INPUT DATA POINTS ............... = (2F5.0)\n"))
      << model.report();
  EXPECT_FALSE(model.reports("AS INPUT AND SCALED\n\n"));
}

TEST(RecordEcho, NamesTheKind) {
  const std::array<std::string, 3> names{"     GROUND ACCELERATION RECORD    1\n", "     DYNAMIC FORCE RECORD    1\n",
                                         "     IMPOSED DISPLACEMENT HISTORY RECORD    1\n"};
  const std::array<std::string, 3> headings{"1\n GROUND ACCELERATION RECORDS\n", "1\n DYNAMIC FORCE RECORDS\n",
                                            "1\n IMPOSED DISPLACEMENT HISTORIES\n"};
  for (std::size_t i = 0; i < 3; ++i) {
    RecordModel model(all_kinds[i], kind_card(all_kinds[i]) + four_pairs({.points = 4}), 4);
    RECRIN();
    EXPECT_TRUE(model.reports(headings[i] + "\n\n" + names[i]));
    EXPECT_EQ(count_of_text(model.report(), " (NONE)"), 2);
  }
}

TEST(RecordEcho, ListHasFivePairsToALineAsScaled) {
  const std::array<std::string, 3> heads{"     GROUND ACCELERATIONS AS INPUT AND SCALED\n",
                                         "     RECORD AS INPUT AND SCALED\n", "     RECORD AS INPUT AND SCALED\n"};
  const std::array<std::string, 3> columns{"ACCEL", "FORCE", "VALUE"};
  for (std::size_t i = 0; i < 3; ++i) {
    RecordModel model(all_kinds[i],
                      kind_card(all_kinds[i]) + heading("(6F5.0)") +
                          Control{.points = 6, .print = 1, .interval = "0.5", .scale = "2.0"}.card() +
                          "  1.0  2.0  3.0  4.0  5.0  6.0\n",
                      6);
    RECRIN();
    const std::string column = "      TIME       " + columns[i];
    EXPECT_TRUE(model.reports("\n" + heads[i] + "\n" + column + "   " + column)) << model.report();
    EXPECT_TRUE(
        model.reports("\n 0.000E+00  0.2000E+01    0.500E+00  0.4000E+01    0.100E+01  0.6000E+01    0.150E+01  "
                      "0.8000E+01    0.200E+01  0.1000E+02\n 0.250E+01  0.1200E+02\n"))
        << model.report();
  }
}

TEST(RecordEcho, ListIsPrintedForIndicatorOneOnly) {
  for (const int print : {-1, 0, 2}) {
    RecordModel model(RecordKind::ground, four_pairs({.points = 4, .print = print}), 4);
    RECRIN();
    EXPECT_FALSE(model.reports("GROUND ACCELERATIONS AS INPUT"));
  }
}

TEST(RecordEcho, NumberWithoutPointUnderDecimalsGivesOneWarningBox) {
  RecordModel model(RecordKind::ground,
                    heading("(2F5.2)") + Control{.points = 4, .interval = "1.0"}.card() + "  100  200\n  3.0  400\n",
                    4);
  RECRIN();
  EXPECT_EQ(model.at(0.0), 100.0);
  EXPECT_EQ(count_of_text(model.report(), " " + std::string(130, 'W') + "\n"), 2);
  EXPECT_EQ(count_of_text(model.report(), " WARNING! NUMBERS WITHOUT A DECIMAL POINT ARE READ AS WHOLE NUMBERS"), 1);
}

TEST(RecordEcho, NumbersWithPointsGiveNoWarning) {
  RecordModel model(RecordKind::ground,
                    heading("(2F5.2)") + Control{.points = 2, .interval = "1.0"}.card() + " 1.00 2.00\n", 2);
  RECRIN();
  EXPECT_FALSE(model.reports("WARNING!"));
}

// --- sine records ---------------------------------------------------------------------------------------------------

/// A sine record: number of points, interval, scale, ramp; period, phase, amplitude, mean.
std::string sine(int points, const std::string& interval, const std::string& scale, const std::string& ramp,
                 const std::array<std::string, 4>& data, int print = 0) {
  std::string deck = "    2    9     junk      junk\n" + heading("NOT READ") + right(std::to_string(points), 5) +
                     right(std::to_string(print), 5) + right(interval, 10) + right(scale, 10) + right(ramp, 10) + "\n";
  for (const std::string& item : data) deck += right(item, 10);
  return deck + "\n";
}

TEST(SineRecord, FormsItsPoints) {
  // (3 t sin(pi t + pi/6)) + 0.5 up to the ramp's end at 1, by hand.
  for (const RecordKind kind : {RecordKind::force, RecordKind::displacement}) {
    RecordModel model(kind, sine(6, "0.25", "", "1.0", {"2.0", "30.0", "3.0", "0.5"}), 6);
    RECRIN();
    const std::vector<double> expected{0.5, 1.224444370, 1.799038106, 1.082342851, -1.0, -2.397777479};
    for (std::size_t i = 0; i < expected.size(); ++i) {
      EXPECT_NEAR(model.at(0.25 * static_cast<double>(i)), expected[i], 5e-10) << i;
    }
    EXPECT_NEAR(model.at(0.125), (0.5 + 1.224444370) / 2, 5e-10) << "straight between its points";
    EXPECT_NEAR(model.at(1.3), kind == RecordKind::displacement ? -2.397777479 : 0.0, 5e-10);
  }
}

TEST(SineRecord, ScaleMultipliesTheMeanToo) {
  RecordModel model(RecordKind::force, sine(2, "0.5", "10.0", "0.0", {"2.0", "0.0", "3.0", "0.5"}), 2);
  RECRIN();
  EXPECT_EQ(model.at(0.0), 5.0);
  EXPECT_NEAR(model.at(0.5), 35.0, 1e-13);
}

TEST(SineRecord, EchoesItsDataBehindTheBlock) {
  RecordModel model(RecordKind::force, sine(2, "0.5", "10.0", "1.5", {"2.0", "30.0", "3.0", "0.5"}, 1), 2);
  RECRIN();
  EXPECT_TRUE(
      model.reports("     SCALE FACTOR ................................... =  0.1000E+02\n"
                    "     FORMAT TO READ INPUT DATA POINTS ............... = NOT READ\n"
                    "     RAMP-UP DURATION ............................... =  0.1500E+01\n"
                    "     SINE FUNCTION PERIOD ........................... =  0.2000E+01\n"
                    "     PHASE ANGLE LEAD IN DEGREES .................... =  0.3000E+02\n"
                    "     AMPLITUDE OF SINE FUNCTION ..................... =  0.3000E+01\n"
                    "     MEAN VALUE OF SINE FUNCTION .................... =  0.5000E+00\n"))
      << model.report();
  EXPECT_TRUE(model.reports("     RECORD AS INPUT AND SCALED\n"));
}

TEST(SineRecord, NeedsAnIntervalAboveZeroAndAPeriod) {
  const std::string told = "     PROGRAM STOPS DUE TO DATA ERROR IN READING DYNAMIC FORCE RECORD\n";
  for (const char* interval : {"0.0", "-0.1", ""}) {
    RecordModel model(RecordKind::force, sine(2, interval, "", "", {"2.0", "", "3.0", ""}), 2);
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    EXPECT_TRUE(model.reports(told + "     DYNAMIC FORCE RECORD    1, CARD      4\n")) << model.report();
    EXPECT_TRUE(model.complains("the time interval is not above 0"));
  }
  RecordModel model(RecordKind::force, sine(2, "0.1", "", "", {"0.0", "", "3.0", ""}), 2);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(model.reports(told));
  EXPECT_TRUE(model.complains("the period is 0"));
}

TEST(SineRecord, NegativePeriodIsAPeriod) {
  RecordModel model(RecordKind::force, sine(2, "0.5", "", "", {"-2.0", "", "3.0", ""}), 2);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  EXPECT_NEAR(model.at(0.5), -3.0, 1e-14);
}

TEST(SineRecord, HasTheSameLimitOfPoints) {
  RecordModel good(RecordKind::force, sine(5, "0.5", "", "", {"2.0", "", "3.0", ""}), 5);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  RecordModel bad(RecordKind::force, sine(6, "0.5", "", "", {"2.0", "", "3.0", ""}), 5);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(bad.reports(" NUMBER OF RECORD VALUES EXCEEDS THE MAXIMUM ALLOWABLE NUMBER.\n"));
}

// --- limits and errors ----------------------------------------------------------------------------------------------

TEST(RecordLimits, AsManyPointsAsTheControlCardAllows) {
  RecordModel model(RecordKind::ground, four_pairs({.points = 4}), 4);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
}

TEST(RecordLimits, OnePointMoreStops) {
  for (const RecordKind kind : all_kinds) {
    RecordModel model(kind, kind_card(kind) + four_pairs({.points = 4}), 3);
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    EXPECT_TRUE(
        model.reports("     INPUT ERROR! PROGRAM STOPS\n"
                      " NUMBER OF RECORD VALUES EXCEEDS THE MAXIMUM ALLOWABLE NUMBER.\n"))
        << model.report();
    EXPECT_TRUE(model.complains("columns 1-5: "));
    EXPECT_TRUE(model.complains("4 points, at most 3 are allowed"));
  }
}

const std::array<std::string, 3> read_errors{"     PROGRAM STOPS DUE TO DATA ERROR IN READING GROUND MOTION RECORD\n",
                                             "     PROGRAM STOPS DUE TO DATA ERROR IN READING DYNAMIC FORCE RECORD\n",
                                             "     PROGRAM STOPS DUE TO DATA ERROR IN READING DISPLACEMENT RECORD\n"};
const std::array<std::string, 3> record_names{"     GROUND ACCELERATION RECORD    1, ",
                                              "     DYNAMIC FORCE RECORD    1, ",
                                              "     IMPOSED DISPLACEMENT HISTORY RECORD    1, "};

TEST(RecordErrors, FieldThatIsNoNumberStops) {
  for (std::size_t i = 0; i < 3; ++i) {
    RecordModel model(all_kinds[i],
                      kind_card(all_kinds[i]) + heading("(2F5.0)") + Control{.points = 4, .interval = "1.0"}.card() +
                          "  1.0  2.0\n  3.0  4.O\n",
                      4);
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    const int card = i == 0 ? 4 : 5;
    EXPECT_TRUE(model.report().ends_with(read_errors[i] + record_names[i] + "CARD      " + std::to_string(card) + "\n"))
        << model.report();
    EXPECT_TRUE(model.complains("line " + std::to_string(card) + ", columns 6-10: ")) << model.scratch.errors();
    EXPECT_TRUE(model.complains("' 4.O' is no number (number 4 of the record)")) << model.scratch.errors();
  }
}

TEST(RecordErrors, EndOfTheDeckStops) {
  for (std::size_t i = 0; i < 3; ++i) {
    RecordModel model(
        all_kinds[i],
        kind_card(all_kinds[i]) + heading("(2F5.0)") + Control{.points = 4, .interval = "1.0"}.card() + "  1.0  2.0\n",
        4);
    EXPECT_EQ(stop_of(RECRIN), status_fatal);
    EXPECT_TRUE(model.report().ends_with("     PROGRAM STOPS DUE TO THE END OF FILE ERROR\n" + record_names[i] +
                                         "CARD      " + (i == 0 ? "3" : "4") + "\n"))
        << model.report();
  }
}

TEST(RecordErrors, LayoutsThatAreNoneStopAtTheirCard) {
  for (const char* layout : {"", "8F10.0", "(8A4)", "(5X)", "(8F10.0", "(10000F1.0)"}) {
    RecordModel model(RecordKind::displacement,
                      "    1\n" + heading(layout) + Control{.points = 1, .interval = "1.0"}.card() + "  1.0\n", 4);
    EXPECT_EQ(stop_of(RECRIN), status_fatal) << layout;
    EXPECT_TRUE(model.report().ends_with(read_errors[2] + record_names[2] + "CARD      2\n")) << model.report();
    EXPECT_TRUE(model.complains("line 2, columns 61-80: ")) << model.scratch.errors();
  }
}

TEST(RecordErrors, GroupWithoutNumberFieldStops) {
  RecordModel model(RecordKind::ground,
                    heading("(F5.0,(5X))") + Control{.points = 2, .interval = "1."}.card() + "  1.\n", 4);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(model.reports(read_errors[0]));
}

TEST(RecordErrors, TimesThatFallStop) {
  const std::string pairs = heading("(4F5.0)") + Control{.points = 3}.card();
  RecordModel equal(RecordKind::ground, pairs + "  0.0  1.0  1.0  1.0\n  1.0  2.0\n", 4);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  RecordModel falling(RecordKind::ground, pairs + "  0.0  1.0  1.0  1.0\n 0.99  2.0\n", 4);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(falling.report().ends_with(read_errors[0] + record_names[0] + "CARD      4\n"));
  EXPECT_TRUE(falling.complains("point 3: the time falls"));
}

TEST(RecordErrors, NegativeIntervalMakesTimesFall) {
  RecordModel one(RecordKind::ground, heading("(F5.0)") + Control{.points = 1, .interval = "-1."}.card() + "  1.0\n",
                  4);
  EXPECT_EQ(stop_of(RECRIN), std::nullopt);
  RecordModel two(RecordKind::ground,
                  heading("(2F5.0)") + Control{.points = 2, .interval = "-1."}.card() + "  1.0  2.\n", 4);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(two.complains("point 2: the time falls"));
}

TEST(RecordErrors, ValueThatTheScaleMakesEndlessStops) {
  RecordModel model(RecordKind::ground,
                    heading("(F8.0)") + Control{.points = 1, .interval = "1.", .scale = "1E10"}.card() + "   1E300\n",
                    4);
  EXPECT_EQ(stop_of(RECRIN), status_fatal);
  EXPECT_TRUE(model.complains("point 1 is beyond the largest number"));
}

TEST(RecordErrors, LettersOnTheControlCardAreAFailureOfTheDeck) {
  RecordModel model(RecordKind::ground, heading("(F8.0)") + "    X\n", 4);
  EXPECT_EQ(stop_of(RECRIN), status_io);
}

}  // namespace
}  // namespace tidearc::test
