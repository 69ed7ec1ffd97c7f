// Commands of a dynamic macro: cards, lines, marks, limits.
#include "command_model.h"

namespace tidearc::test {
namespace {

const Records one_of_each{{{1.0, 3.0}}, {{2.0, 4.0}}, {{5.0, 9.0}}};

const std::string ground_none = "1\n GROUND ACCELERATION SPECIFICATION COMMANDS\n\n (NONE)\n";
const std::string force_none =
    "\n ************************************\n DYNAMIC LOAD SPECIFICATION COMMANDS\n"
    " ************************************\n\n (NONE)\n";
const std::string displacement_none = "\n IMPOSED DISPLACEMENT SPECIFICATION COMMANDS\n\n (NONE)\n";

TEST(Commands, NoneOfThemPrintsTheHeadings) {
  CommandModel model(2, one_of_each, "");
  model.ready();
  DYNCMD(0, 0, 0);
  EXPECT_EQ(model.report(), ground_none + force_none + displacement_none);
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_FALSE(has_record_loads());
  EXPECT_FALSE(has_imposed());
}

TEST(Commands, NegativeCountsAreNone) {
  CommandModel model(2, one_of_each, "");
  model.ready();
  DYNCMD(0, -1, -5);
  EXPECT_EQ(model.report(), ground_none + force_none + displacement_none);
}

TEST(GroundCommand, HasARowForEachAxis) {
  CommandModel model(2, one_of_each, "    1      0.50      2.00    0       0.0       0.0    1     -1.00      -.50\n");
  model.ready();
  DYNCMD(1, 0, 0);
  EXPECT_TRUE(
      model.reports("1\n GROUND ACCELERATION SPECIFICATION COMMANDS\n\n"
                    "     GRD. ACC.  ACC. REC       TIME  IN       SCALE\n"
                    "     DIRECTION    NUMBER       RECORD        FACTOR\n\n"
                    "      X                1      0.500E+00   0.200E+01\n"
                    "      Y                0      0.000E+00   0.000E+00\n"
                    "      Z                1     -0.100E+01  -0.500E+00\n" +
                    force_none))
      << model.report();
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(GroundCommand, IsReadForAnyCodeButZero) {
  for (const int code : {-1, 1, 2}) {
    CommandModel model(2, one_of_each, "    1      0.00      2.00\n");
    model.ready().mass(1, 1, 1.0);
    DYNCMD(code, 0, 0);
    EXPECT_EQ(commands.ground[0].record, 1);
    EXPECT_TRUE(has_record_loads());
  }
}

TEST(GroundCommand, RecordThatDoesNotExistIsMarked) {
  for (const int number : {-1, 2, 99999}) {
    CommandModel model(2, one_of_each, right(std::to_string(number), 5) + "      0.00      2.00\n");
    model.ready().mass(1, 1, 1.0);
    DYNCMD(1, 0, 0);
    EXPECT_TRUE(
        model.reports("      X         **" + right(std::to_string(number), 6) + "      0.000E+00   0.200E+01\n"))
        << model.report();
    EXPECT_TRUE(model.reports(" ERROR MESSAGES - NONFATAL DATA ERRORS\n"));
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_TRUE(run.had_data_error);
    EXPECT_TRUE(model.complains("columns 1-5: there is no ground acceleration record " + std::to_string(number)));
    EXPECT_EQ(commands.ground[0].record, 0);
    EXPECT_EQ(model.loads(0.0)(1), 0.0);
  }
}

TEST(GroundCommand, IsGoneInAMacroWithoutIt) {
  CommandModel model(2, one_of_each, "    1      0.00      2.00\n");
  model.ready().mass(1, 1, 1.0);
  DYNCMD(1, 0, 0);
  EXPECT_EQ(model.loads(0.0)(equation_of(1, 1)), -2.0);
  DYNCMD(0, 0, 0);
  EXPECT_EQ(model.loads(0.0)(equation_of(1, 1)), 0.0);
  EXPECT_FALSE(has_record_loads());
}

TEST(GroundCommand, RecordNumberZeroIsNoMotionAndNoMark) {
  CommandModel model(2, one_of_each, "    0      0.00      2.00\n");
  model.ready().mass(1, 1, 1.0);
  DYNCMD(1, 0, 0);
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(model.loads(0.0)(1), 0.0);
  EXPECT_FALSE(has_record_loads());
}

const std::string key_table =
    "\n\n ERROR MESSAGES - NONFATAL DATA ERRORS\n\n     KEY     --------------- MESSAGE --------------\n\n"
    "       *     INCORRECT NODE NUMBER INPUT\n      **     INCORRECT RECORD NUMBER INPUT\n"
    "     ***     INCORRECT DOF NUMBER INPUT\n";

TEST(ForceCommand, HasALineForEachNode) {
  CommandModel model(3, one_of_each, command(1, 2, "0.25", "-3.0", {3, 1}) + command(1, 6, "0.0", "1.0", {2}));
  model.ready();
  DYNCMD(0, 2, 0);
  EXPECT_TRUE(
      model.reports(" DYNAMIC LOAD SPECIFICATION COMMANDS\n ************************************\n\n"
                    "     NODE     DOF     RECORD       TIME  IN       SCALE\n"
                    "                      NUMBER       RECORD        FACTOR\n\n"
                    "        3      Y           1      0.250E+00  -0.300E+01\n"
                    "        1      Y           1      0.250E+00  -0.300E+01\n"
                    "        2     ZR           1      0.000E+00   0.100E+01\n" +
                    displacement_none))
      << model.report();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(commands.forces.count, 3);
}

TEST(ForceCommand, ListEndsAtTheFirstEntryBelowOne) {
  for (const int end : {0, -2}) {
    CommandModel model(3, one_of_each, command(1, 2, "0.0", "1.0", {1, end, 3}));
    model.ready();
    DYNCMD(0, 1, 0);
    EXPECT_EQ(commands.forces.count, 1);
    EXPECT_EQ(run.RUNMOD, 0);
  }
}

TEST(ForceCommand, TakesTenNodes) {
  CommandModel model(11, one_of_each, command(1, 1, "0.0", "1.0", {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_EQ(commands.forces.count, 10) << "columns behind 80 are not read";
}

TEST(ForceCommand, WrongNodeIsMarkedBeforeTheNode) {
  CommandModel model(3, one_of_each, command(1, 1, "0.0", "1.0", {2, 4, 3}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_TRUE(
      model.reports("        2      X           1      0.000E+00   0.100E+01\n"
                    "   *    4      X           1      0.000E+00   0.100E+01\n"
                    "        3      X           1      0.000E+00   0.100E+01\n" +
                    key_table))
      << model.report();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(run.had_data_error);
  EXPECT_TRUE(model.complains("columns 36-40: there is no node 4")) << model.scratch.errors();
  EXPECT_EQ(commands.forces.count, 2) << "the others stand";
}

TEST(ForceCommand, WrongRecordIsMarkedBeforeTheRecord) {
  for (const int number : {-3, 0, 2}) {
    CommandModel model(3, one_of_each, command(number, 1, "0.0", "1.0", {2}));
    model.ready();
    DYNCMD(0, 1, 0);
    EXPECT_TRUE(model.reports("        2      X    **" + right(std::to_string(number), 6) +
                              "      0.000E+00   0.100E+01\n" + key_table))
        << model.report();
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_TRUE(model.complains("columns 1-5: there is no dynamic force record " + std::to_string(number)));
    EXPECT_EQ(commands.forces.count, 0);
  }
}

TEST(ForceCommand, WrongComponentIsMarkedBeforeItsBlanks) {
  for (const int component : {-1, 0, 7, 8}) {
    CommandModel model(3, one_of_each, command(1, component, "0.0", "1.0", {2}));
    model.ready();
    DYNCMD(0, 1, 0);
    EXPECT_TRUE(model.reports("        2   **             1      0.000E+00   0.100E+01\n" + key_table))
        << model.report();
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_TRUE(model.complains("columns 6-10: there is no component " + std::to_string(component)));
    EXPECT_EQ(commands.forces.count, 0);
  }
}

TEST(ForceCommand, MayHaveAllMarks) {
  CommandModel model(3, one_of_each, command(9, 9, "0.0", "1.0", {9}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_TRUE(model.reports("   *    9   **      **     9      0.000E+00   0.100E+01\n" + key_table)) << model.report();
  EXPECT_EQ(count_of_text(model.report(), "ERROR MESSAGES"), 1);
}

TEST(ForceCommand, WithoutNodesIsStillChecked) {
  CommandModel model(3, one_of_each, command(9, 1, "0.0", "1.0", {}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(model.reports(key_table));
}

TEST(ForceCommand, ConstrainedComponentIsMarkedCountedAndIgnored) {
  CommandModel model(3, one_of_each, command(1, 1, "0.0", "1.0", {1, 2}), 2);
  model.fix(1, {1});
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_TRUE(
      model.reports("        1    C X           1      0.000E+00   0.100E+01\n"
                    "        2      X           1      0.000E+00   0.100E+01\n"))
      << model.report();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_FALSE(model.reports("ERROR MESSAGES"));
  EXPECT_EQ(commands.forces.count, 1);
}

TEST(CommandLimits, EntriesCountNotCommands) {
  const std::string cards = command(1, 1, "0.0", "1.0", {1, 2, 3});
  CommandModel good(3, one_of_each, cards, 3);
  good.ready();
  DYNCMD(0, 1, 0);
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_FALSE(good.reports("DATA ERROR"));

  CommandModel bad(3, one_of_each, cards, 2);
  bad.ready();
  DYNCMD(0, 1, 0);
  EXPECT_TRUE(
      bad.reports("        3      X           1      0.000E+00   0.100E+01\n\n     ****  DATA ERROR  ****     "
                  "NUMBER OF NODES WITH DYNAMIC FORCE APPLICATION EXCEED LIMIT OF    2\n"))
      << bad.report();
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_FALSE(bad.reports("ERROR MESSAGES")) << "no mark was set";
  EXPECT_EQ(commands.forces.count, 2) << "what does not fit is not stored";
  EXPECT_TRUE(bad.complains("3 entries in the commands before deck line")) << bad.scratch.errors();
}

TEST(CommandLimits, DisplacementsHaveTheirOwn) {
  CommandModel model(3, one_of_each, command(1, 1, "0.0", "1.0", {1, 2, 3}), 2);
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_TRUE(model.reports(
      "     ****  DATA ERROR  ****     NUMBER OF NODES WITH IMPOSED DISPLACEMENTS EXCEED LIMIT OF    2\n"));
  EXPECT_EQ(commands.displacements.count, 2);
  EXPECT_EQ(run.RUNMOD, 1);
}

TEST(CommandLimits, MarkedAndConstrainedEntriesCount) {
  CommandModel model(3, one_of_each, command(9, 1, "0.0", "1.0", {1}) + command(1, 1, "0.0", "1.0", {9, 2, 3}), 3);
  model.fix(2, {1});
  model.ready();
  DYNCMD(0, 2, 0);
  EXPECT_TRUE(model.reports("EXCEED LIMIT OF    3\n"));
  EXPECT_EQ(commands.forces.count, 0) << "the fourth entry is the only good one, and behind the limit";
}

TEST(CommandLimits, StartAgainWithEveryMacro) {
  CommandModel model(3, one_of_each, command(1, 1, "0.0", "1.0", {1, 2}) + command(1, 1, "0.0", "1.0", {2, 3}), 2);
  model.ready();
  DYNCMD(0, 1, 0);
  DYNCMD(0, 1, 0);
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(commands.forces.count, 2);
  EXPECT_EQ(model.loads(0.0)(equation_of(1, 1)), 0.0) << "the first macro's entries are gone";
}

TEST(CommandLimits, WithoutRoomAnyEntryIsTooMuch) {
  CommandModel model(3, one_of_each, command(1, 1, "0.0", "1.0", {1}), 0);
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_TRUE(model.reports("EXCEED LIMIT OF    0\n"));
  EXPECT_EQ(commands.forces.count, 0);
}

TEST(DisplacementCommand, HasTheSameLines) {
  CommandModel model(3, one_of_each, command(1, 3, "2.0", "1.5", {2}));
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_TRUE(
      model.reports("\n IMPOSED DISPLACEMENT SPECIFICATION COMMANDS\n\n"
                    "     NODE     DOF     RECORD       TIME  IN       SCALE\n"
                    "                      NUMBER       RECORD        FACTOR\n\n"
                    "        2      Z           1      0.200E+01   0.150E+01\n"))
      << model.report();
  EXPECT_TRUE(has_imposed());
}

TEST(DisplacementCommand, TakesTheRecordsOfAVessel) {
  CommandModel model(3, {}, command(6, 3, "0.0", "1.0", {2}) + command(7, 3, "0.0", "1.0", {2}));
  dynamic_loads.IVESSL = 1;
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_EQ(run.RUNMOD, 0);
  DYNCMD(0, 0, 1);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(model.complains("there is no imposed displacement record 7"));
}

TEST(Commands, StandInTheirOrder) {
  CommandModel model(
      3, one_of_each,
      "    1      0.00      1.00\n" + command(1, 1, "0.0", "1.0", {2}) + command(1, 2, "0.0", "1.0", {3}));
  model.ready().mass(1, 1, 1.0);
  DYNCMD(1, 1, 1);
  EXPECT_EQ(commands.ground[0].record, 1);
  EXPECT_EQ(pool.integers(commands.forces.equation, 1)(1), equation_of(2, 1));
  EXPECT_EQ(pool.integers(commands.displacements.equation, 1)(1), equation_of(3, 2));
}

TEST(Commands, InADataCheckAreReadAndEchoed) {
  CommandModel model(
      3, one_of_each,
      "    1      0.00      1.00\n" + command(1, 1, "0.0", "1.0", {2}) + command(1, 2, "0.0", "1.0", {3}) + "next\n");
  model.ready();
  run.RUNMOD = 1;
  DYNCMD(1, 1, 1);
  EXPECT_TRUE(model.reports("        2      X           1"));
  EXPECT_TRUE(model.reports("        3      Y           1"));
  std::string line;
  EXPECT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, "next");
}

TEST(Commands, MissingCardIsAFailureOfTheDeck) {
  CommandModel model(3, one_of_each, "");
  model.ready();
  EXPECT_EQ(stop_of([] { DYNCMD(0, 1, 0); }), status_io);
}

}  // namespace
}  // namespace tidearc::test
