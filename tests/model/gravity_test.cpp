// Gravity and water control, static current.
#include "model/gravity.h"

#include "node_model.h"

namespace tidearc::test {
namespace {

/// The card: direction word, level, weight density, mass density, buoyancy code, current code, gravity.
std::string card(const std::string& WDIR, const std::string& level = "", const std::string& weight = "",
                 const std::string& mass = "", int KBUOY = 0, int KCURR = 0, const std::string& GRAV = "") {
  return "   " + WDIR + "     " + tens({level, weight, mass}) + fives({KBUOY, KCURR}) + field(GRAV, 10) + "\n";
}
std::string level_card(const std::string& level, const std::string& x, const std::string& y, const std::string& z,
                       const std::string& scale = "") {
  return tens({level, x, y, z, scale}) + "\n";
}

using Direction = std::array<double, 3>;

TEST(GravityCard, TakesTheDirectionWord) {
  const std::vector<std::pair<std::string, Direction>> words{
      {" X", {1.0, 0.0, 0.0}}, {"-X", {-1.0, 0.0, 0.0}}, {" Y", {0.0, 1.0, 0.0}}, {"-Y", {0.0, -1.0, 0.0}},
      {" Z", {0.0, 0.0, 1.0}}, {"-Z", {0.0, 0.0, -1.0}}, {"  ", {0.0, 0.0, -1.0}}};
  const std::vector<int> axes{1, -1, 2, -2, 3, -3, -3};
  for (std::size_t i = 0; i < words.size(); ++i) {
    NodeModel m(card(words[i].first), SizeBlock{});
    GRAVIN();
    EXPECT_EQ(gravity.direction, words[i].second) << words[i].first;
    EXPECT_EQ(gravity_axis(), axes[i]);
    EXPECT_FALSE(m.reports("ERROR IN SPELLING"));
  }
}

TEST(GravityCard, WarnsOfAnyOtherDirectionWordAndLeavesGravityWithoutDirection) {
  for (const std::string word : {"Z ", "+Z", "-W", "z ", " z", "X ", "--"}) {
    NodeModel m(card(word), SizeBlock{});
    GRAVIN();
    EXPECT_EQ(gravity.direction, Direction{}) << word;
    EXPECT_EQ(gravity_axis(), 0);
    const std::string row = " " + std::string(130, 'W') + "\n";
    const std::string text = "     ERROR IN SPELLING OF WATER DIRECTION, WDIR =" + word;
    EXPECT_TRUE(m.reports(trimmed(row + text + "\n" + row))) << m.report();
    EXPECT_EQ(run.RUNMOD, 0);
  }
}

TEST(GravityCard, GivesWaterAndCodes) {
  NodeModel m(card("-Z", "12.5", "64.", "2.", 1, 0, "32."), SizeBlock{});
  GRAVIN();
  EXPECT_EQ(gravity.water_level, 12.5);
  EXPECT_EQ(gravity.water_weight, 64.0);
  EXPECT_EQ(gravity.water_mass, 2.0);
  EXPECT_EQ(gravity.KBUOY, 1);
  EXPECT_EQ(gravity.KCURR, 0);
  EXPECT_EQ(gravity.GRAV, 32.0);
  EXPECT_EQ(gravity.NCLEV, 0);
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(GravityCard, TakesANonPositiveAccelerationAsTheUsualOne) {
  for (const std::string GRAV : {"", "0.", "-9.81"}) {
    NodeModel m(card("-Z", "", "", "", 0, 0, GRAV), SizeBlock{});
    GRAVIN();
    EXPECT_EQ(gravity.GRAV, 32.2);
  }
}

TEST(GravityCard, DerivesANonPositiveMassDensityFromTheWeightDensity) {
  for (const std::string mass : {"", "0.", "-1."}) {
    NodeModel m(card("-Z", "", "10.", mass, 0, 0, "4."), SizeBlock{});
    GRAVIN();
    EXPECT_EQ(gravity.water_mass, 2.5);
  }
  NodeModel m(card("-Z", "", "64.4"), SizeBlock{});
  GRAVIN();
  EXPECT_DOUBLE_EQ(gravity.water_mass, 2.0);  // 64.4 / 32.2
}

TEST(GravityCard, IsEchoedUnderItsHeading) {
  NodeModel m(card(" Y", "12.5", "64.", "2.", 3, 0, "9.81"), SizeBlock{});
  GRAVIN();
  const std::string row = "\n " + std::string(26, '*') + "\n";
  EXPECT_TRUE(m.reports(row + " GRAVITY AND WATER CONTROL" + row)) << m.report();
  EXPECT_TRUE(m.reports("     DIRECTION NORMAL TO WATER SURFACE .............. =    Y\n")) << m.report();
  EXPECT_TRUE(m.reports("     COORDINATE OF WATER SURFACE .................... =     12.5000\n"));
  EXPECT_TRUE(m.reports("     WATER WEIGHT DENSITY ........................... =     64.0000\n"));
  EXPECT_TRUE(m.reports("     WATER MASS DENSITY ............................. =      2.0000\n"));
  EXPECT_TRUE(m.reports("     BUOYANCY GENERATION CODE ....................... =    3\n"));
  EXPECT_TRUE(m.reports("     STATIC CURRENT GENERATION CODE ................. =    0\n"));
  EXPECT_TRUE(m.reports("     ACCELERATION OF GRAVITY ........................ =      9.8100\n"));
}

TEST(GravityCard, IsEchoedWithWhatReplacesItsBlanks) {
  NodeModel m(card("-Z", "", "64.4"), SizeBlock{});
  GRAVIN();
  EXPECT_TRUE(m.reports("WATER MASS DENSITY ............................. =      2.0000\n")) << m.report();
  EXPECT_TRUE(m.reports("ACCELERATION OF GRAVITY ........................ =     32.2000\n"));
}

TEST(GravityBlock, WithoutACardActsAlongMinusZ) {
  gravity.direction = {1.0, 0.0, 0.0};
  gravity.GRAV = 1.0;
  gravity.NCLEV = 7;
  reset_gravity();
  EXPECT_EQ(gravity.direction, (Direction{0.0, 0.0, -1.0}));
  EXPECT_EQ(gravity.GRAV, 32.2);
  EXPECT_EQ(gravity.NCLEV, 0);
  EXPECT_EQ(gravity_axis(), -3);
}

TEST(StaticCurrent, IsReadForACodeOfOneAndMore) {
  for (const int KCURR : {0, 1, 2, 3, -1}) {
    NodeModel m(card("-Z", "", "", "", 0, KCURR) + "    2    0\n" + level_card("0.", "1.", "0.", "0.", "2.") +
                    level_card("50.", "0.", "3.", "0.", "0.5"),
                SizeBlock{});
    GRAVIN();
    EXPECT_EQ(gravity.NCLEV, KCURR >= 1 ? 2 : 0) << KCURR;
    EXPECT_EQ(gravity.KCURR, KCURR);
  }
}

TEST(StaticCurrent, IsAUnitDirectionTimesItsScale) {
  NodeModel m(card("-Z", "", "", "", 0, 1) + "    3    0\n" + level_card("0.", "3.", "4.", "0.", "10.") +
                  level_card("20.", "0.", "5.", "0.", "0.") + level_card("50.", "0.", "0.", "0.", "7."),
              SizeBlock{});
  GRAVIN();
  EXPECT_EQ(run.RUNMOD, 0);
  EXPECT_EQ(gravity.CLEVI[1], 20.0);
  EXPECT_EQ(gravity.CLEVI[2], 50.0);
  const std::array<double, 9> expected{6.0, 8.0, 0.0, 0.0, 1.0, 0.0, 0.0, 0.0, 0.0};
  for (std::size_t i = 0; i < 9; ++i) EXPECT_DOUBLE_EQ(gravity.CVELI[i], expected[i]) << i;
  EXPECT_FALSE(m.reports("ERROR -----"));
}

TEST(StaticCurrent, IsEchoedWithItsScaleWrittenBackAndListed) {
  NodeModel m(card("-Z", "", "", "", 0, 1) + "    2    0\n" + level_card("0.", "3.", "4.", "0.", "10.") +
                  level_card("20.", "0.", "5.", "0.", ""),
              SizeBlock{});
  GRAVIN();
  EXPECT_TRUE(m.reports("               0.000        3.000        4.000        0.000       10.000\n")) << m.report();
  EXPECT_TRUE(m.reports("              20.000        0.000        5.000        0.000        1.000\n"));
  EXPECT_TRUE(m.reports("GENERATED STATIC CURRENT TABLE\n"));
  EXPECT_TRUE(m.reports("               0.000        6.000        8.000        0.000\n"));
  EXPECT_TRUE(m.reports("              20.000        0.000        1.000        0.000\n"));
}

TEST(StaticCurrent, IsNotListedWithPrintCodeOne) {
  for (const int print : {0, 1, 2}) {
    NodeModel m(card("-Z", "", "", "", 0, 1) + fives({2, print}) + "\n" + level_card("0.", "3.", "4.", "0.") +
                    level_card("20.", "0.", "5.", "0."),
                SizeBlock{});
    GRAVIN();
    EXPECT_EQ(m.reports("GENERATED STATIC CURRENT TABLE"), print != 1);
  }
}

/// The boxed error on the report.
std::string box(const std::string& words) {
  const std::string row = " " + std::string(130, 'F') + "\n";
  return row + "     ERROR -----" + words + "\n" + row;
}

TEST(StaticCurrent, NeedsTwoLevels) {
  for (const int levels : {1, 0, -5}) {
    NodeModel m(card("-Z", "", "", "", 0, 1) + fives({levels, 0}) + "\n", SizeBlock{});
    EXPECT_EQ(stop_of(GRAVIN), status_fatal);
    EXPECT_TRUE(m.reports(box("NUMBER OF CURRENT LEVEL IS LESS THAN 2"))) << m.report();
  }
}

TEST(StaticCurrent, HasRoomForFiftyLevels) {
  std::string levels;
  for (int i = 0; i < 51; ++i) levels += level_card(std::to_string(i) + ".", "1.", "0.", "0.");
  NodeModel fits(card("-Z", "", "", "", 0, 1) + "   50    0\n" + levels, SizeBlock{});
  GRAVIN();
  EXPECT_EQ(gravity.NCLEV, 50);
  EXPECT_EQ(gravity.CLEVI[49], 49.0);
  NodeModel over(card("-Z", "", "", "", 0, 1) + "   51    0\n" + levels, SizeBlock{});
  EXPECT_EQ(stop_of(GRAVIN), status_fatal);
  const std::string row = " " + std::string(130, 'X') + "\n";
  EXPECT_TRUE(over.reports(row +
                           " TOTAL NUMBER OF ELEVATIONS FOR CURRENT DEF. IS GREATER THAN 50\n"
                           " CHANGE ARRAY CLEVI AND CVELI IN COMMON/INCUR/\n" +
                           row))
      << over.report();
}

TEST(StaticCurrent, ReportsADirectionOffTheHorizontalPlane) {
  NodeModel m(card(" Y", "", "", "", 0, 1) + "    2    0\n" + level_card("0.", "1.", "0.", "1.") +
                  level_card("20.", "1.", "0.1", "0."),
              SizeBlock{});
  GRAVIN();
  EXPECT_EQ(m.times_reported(box("CURRENT VELOCITY DIRECTION DOES NOT LIE ON HORIZONTAL PLANE")), 1);
  EXPECT_NE(m.scratch.errors().find("line 4, columns 11-40: CURRENT VELOCITY"), std::string::npos);
  EXPECT_EQ(gravity.NCLEV, 2);  // and goes on
}

TEST(StaticCurrent, TakesAMillionthOffTheHorizontalPlaneAsHorizontal) {
  const std::vector<std::pair<std::string, int>> slopes{{"0.9E-6", 0}, {"-0.9E-6", 0}, {"1.1E-6", 1}, {"-1.1E-6", 1}};
  for (const auto& [slope, told] : slopes) {
    NodeModel m(card("-Z", "", "", "", 0, 1) + "    2    0\n" + level_card("0.", "1.", "0.", slope) +
                    level_card("20.", "1.", "0.", "0."),
                SizeBlock{});
    GRAVIN();
    EXPECT_EQ(m.times_reported(box("CURRENT VELOCITY DIRECTION DOES NOT LIE ON HORIZONTAL PLANE")), told) << slope;
  }
}

TEST(StaticCurrent, ReportsAFirstLevelThatIsNotZero) {
  NodeModel m(card("-Z", "", "", "", 0, 1) + "    2    0\n" + level_card("1.", "1.", "0.", "0.") +
                  level_card("20.", "1.", "0.", "0."),
              SizeBlock{});
  GRAVIN();
  EXPECT_EQ(m.times_reported(box("FIRST LEVEL FOR CURRENT DEFINITION SHOULD BE EQUAL TO ZERO")), 1);
  EXPECT_EQ(gravity.CLEVI[0], 1.0);
}

TEST(StaticCurrent, ReportsLevelsThatDoNotRise) {
  NodeModel m(card("-Z", "", "", "", 0, 1) + "    4    0\n" + level_card("0.", "1.", "0.", "0.") +
                  level_card("20.", "1.", "0.", "0.") + level_card("20.", "1.", "0.", "0.") +
                  level_card("10.", "1.", "0.", "0."),
              SizeBlock{});
  GRAVIN();
  EXPECT_EQ(m.times_reported(box("CURRENT LEVELS ARE NOT IN ASCENDING ORDER")), 2);
}

TEST(StaticCurrent, OfAMissingCardEndsInTheInputLayer) {
  NodeModel m(card("-Z", "", "", "", 0, 1) + "    2    0\n" + level_card("0.", "1.", "0.", "0."), SizeBlock{});
  EXPECT_EQ(stop_of(GRAVIN), status_io);
}

}  // namespace
}  // namespace tidearc::test
