// The current header card and the current table: layout in the work pool, echo, checks, what the table gives the wave.
#include "sea/current_input.h"
#include "wave_section.h"

namespace tidearc::test {
namespace {

/// A deck of current alone: header, then the table's cards.
std::string deck(const std::string& header, const std::string& cards) {
  return WaveControl{"3", "1"}.card() + header + cards;
}
std::string level(const std::string& depth, const std::string& x, const std::string& y, const std::string& z,
                  const std::string& scale = "") {
  return tens({depth, x, y, z, scale});
}
std::string time_card(const std::string& t) { return tens({t}); }
/// A slice of `n` levels, one apart, of a current along X.
std::string slice(const std::string& t, int n, const std::string& speed = "1.") {
  std::string cards = time_card(t);
  for (int i = 0; i < n; ++i) cards += level(std::to_string(i) + ".", "1.", "0.", "0.", speed);
  return cards;
}

/// Two times of three levels.
const std::string two_times = time_card("0.") + level("0.", "3.", "4.", "0.", "1.5") + level("20.", "0.", "-2.", "0.") +
                              level("50.", "0.", "0.", "0.", "9.") + time_card("10.") +
                              level("0.", "1.", "0.", "0.", "2.5") + level("25.", "1.", "0.", "0.", "0.75") +
                              level("60.", "1.", "0.", "0.", "-0.5");

TEST(CurrentTable, StandsInTheWorkPoolTimesLevelsVectors) {
  WaveSection m(deck(current_header("2", "3"), two_times));
  const int before = storage.NEXT;
  WAVEIN();
  EXPECT_FALSE(m.reports("ERROR"));
  EXPECT_EQ(wave.NTIME, 2);
  EXPECT_EQ(wave.NLEVEL, 3);
  EXPECT_EQ(wave.KCURT, before);
  EXPECT_EQ(storage.NEXT - before, 2 * 2 * (1 + 4 * 3));
  const Reals block = pool.reals(wave.KCURT, 26);
  const std::array<double, 26> expected{0.0, 10.0, 0.0, 20.0, 50.0, 0.0, 25.0, 60.0,       //
                                        0.9, 1.2,  0.0, 0.0,  -1.0, 0.0, 0.0,  0.0,  0.0,  //
                                        2.5, 0.0,  0.0, 0.75, 0.0,  0.0, -0.5, 0.0,  0.0};
  for (int i = 1; i <= 26; ++i) EXPECT_DOUBLE_EQ(block(i), expected[static_cast<std::size_t>(i - 1)]) << i;
}

TEST(CurrentTable, TakesNoRoomWithoutACurrent) {
  WaveSection m(WaveControl{"1"}.card() + RegularWave{}.cards());
  const int before = storage.NEXT;
  WAVEIN();
  EXPECT_EQ(storage.NEXT, before);
  EXPECT_EQ(wave.NTIME, 0);
  EXPECT_EQ(deepest_current_level(), 0.0);
}

TEST(CurrentTable, IsEchoedAndListed) {
  WaveSection m(deck(current_header("2", "3", "4", "0.01"), two_times));
  WAVEIN();
  EXPECT_TRUE(
      m.reports("\n        CURRENT DATA\n"
                "     NUMBER OF TIMES DEFINING CURRENT ............... =    2\n"
                "     NUMBER OF CURRENT LEVELS ....................... =    3\n"
                "     WAVE PERIOD CODE ............................... =    4\n"
                "     TOLERANCE FOR WAVE PERIOD COMPUTATION .......... =  0.1000E-01\n"
                "     PRINT CODE FOR CURRENT TABLE ................... =    0\n"
                "        1:  GENERATED TABLE IS NOT PRINTED\n"))
      << m.report();
  EXPECT_TRUE(
      m.reports("\n        CURRENT AT TIME       10.000\n\n"
                "                LEVEL  X-DIRECTION  Y-DIRECTION  Z-DIRECTION        SCALE\n"
                "                0.000        1.000        0.000        0.000        2.500\n"))
      << m.report();
  EXPECT_TRUE(
      m.reports("               20.000        0.000       -2.000        0.000        1.000\n"));  // blank is 1.0
  EXPECT_TRUE(
      m.reports("\n        GENERATED CURRENT TABLE AT TIME        0.000\n"
                "                LEVEL   X-VELOCITY   Y-VELOCITY   Z-VELOCITY\n"
                "                0.000        0.900        1.200        0.000\n"
                "               20.000        0.000       -1.000        0.000\n"
                "               50.000        0.000        0.000        0.000\n"))
      << m.report();
}

TEST(CurrentTable, IsNotListedWithPrintCodeOne) {
  for (const std::string print : {"0", "1", "2"}) {
    WaveSection m(deck(current_header("1", "2", "", "", print), slice("0.", 2)));
    WAVEIN();
    EXPECT_EQ(m.reports("GENERATED CURRENT TABLE AT TIME"), print != "1");
    EXPECT_TRUE(m.reports("CURRENT AT TIME        0.000"));
  }
}

TEST(CurrentTable, OfNoOrFewerTimesHasOne) {
  for (const std::string NTIME : {"", "0", "-3"}) {
    WaveSection m(deck(current_header(NTIME, "2"), slice("0.", 2)));
    WAVEIN();
    EXPECT_EQ(wave.NTIME, 1);
    EXPECT_TRUE(m.reports("NUMBER OF TIMES DEFINING CURRENT ............... =    1\n"));
  }
}

TEST(CurrentTable, NeedsTwoLevels) {
  for (const std::string NLEVEL : {"1", "0", "-4", ""}) {
    WaveSection m(deck(current_header("1", NLEVEL), slice("0.", 2)));
    EXPECT_EQ(stop_of(WAVEIN), status_fatal) << NLEVEL;
    EXPECT_TRUE(m.reports(error_box("NUMBER OF CURRENT LEVEL IS LESS THAN 2"))) << m.report();
    EXPECT_TRUE(m.complains("line 2, columns 6-10: NUMBER OF CURRENT LEVEL"));
    EXPECT_EQ(deck_line(), 2);
  }
  WaveSection two(deck(current_header("1", "2"), slice("0.", 2)));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
}

TEST(CurrentTable, HasRoomForAThousandLevels) {
  WaveSection fits(deck(current_header("1", "1000", "", "", "1"), slice("0.", 1000)));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(deepest_current_level(), 999.0);
  WaveSection over(deck(current_header("1", "1001"), slice("0.", 1001)));
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
  EXPECT_TRUE(over.reports(error_box("NUMBER OF CURRENT LEVELS CANNOT EXCEED 1000"))) << over.report();
}

TEST(CurrentTable, ThatThePoolCannotHoldStopsAtTheStorageCheck) {
  WaveSection m(deck(current_header("99999", "1000"), ""));
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
  EXPECT_TRUE(m.reports(" **** STORAGE CHECK ****")) << m.report();
  // 2 x 99999 x (1 + 4 x 1000)
  EXPECT_TRUE(m.complains("800191998 are needed")) << m.scratch.errors();
  WaveSection fits(deck(current_header("1", "2"), slice("0.", 2)));
  pool.allocate(18);  // 2 x 1 x (1 + 4 x 2)
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  WaveSection short_by_one(deck(current_header("1", "2"), slice("0.", 2)));
  pool.allocate(17);
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
}

TEST(CurrentTable, SetsANegativePeriodCodeToZero) {
  const std::string words = "WAVE PERIOD CODE SHOULD BE POSITIVE";
  WaveSection below(deck(current_header("1", "2", "-1"), slice("0.", 2)));
  WAVEIN();
  EXPECT_EQ(below.times_reported(error_box(words)), 1) << below.report();
  EXPECT_EQ(wave.period_code, 0);
  EXPECT_EQ(run.RUNMOD, 0);
  for (const std::string code : {"", "0", "10"}) {
    WaveSection m(deck(current_header("1", "2", code), slice("0.", 2)));
    WAVEIN();
    EXPECT_FALSE(m.reports(words));
    EXPECT_EQ(wave.period_code, code == "10" ? 10 : 0);
  }
}

TEST(CurrentTable, HasNoPeriodCodeForStreamFunctions) {
  for (const std::string IWTY : {"5", "8"}) {
    WaveSection m(WaveControl{IWTY, "1"}.card() + current_header("1", "2", "10") + slice("0.", 2) +
                  RegularWave{.H = ""}.cards());
    EXPECT_EQ(stop_of(WAVEIN), status_fatal);  // at the height
    EXPECT_EQ(wave.period_code, 0);
    EXPECT_TRUE(m.reports("WAVE PERIOD CODE ............................... =    0\n"));
  }
}

TEST(CurrentTable, HasAToleranceOfItsOwn) {
  WaveSection blank(deck(current_header("1", "2"), slice("0.", 2)));
  WAVEIN();
  EXPECT_EQ(wave.period_tolerance, 1e-4);
  WaveSection given(deck(current_header("1", "2", "", "0.02"), slice("0.", 2)));
  WAVEIN();
  EXPECT_EQ(wave.period_tolerance, 0.02);
}

TEST(CurrentTable, TellsTimesThatDoNotRise) {
  for (const auto& [second, told] : std::vector<std::pair<std::string, int>>{{"5.001", 0}, {"5.", 1}, {"4.9", 1}}) {
    WaveSection m(deck(current_header("2", "2"), slice("5.", 2) + slice(second, 2)));
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
    EXPECT_EQ(m.times_reported(error_box("CURRENT TIMES NOT IN INCREASING ORDER")), told) << second << m.report();
    EXPECT_EQ(m.complains("line 6, columns 1-10: CURRENT TIMES"), told == 1);
  }
  WaveSection negative(deck(current_header("1", "2"), slice("-5.", 2)));
  WAVEIN();
  EXPECT_FALSE(negative.reports("ERROR"));
}

TEST(CurrentTable, TellsLevelsThatDoNotRiseOrBeginAtZero) {
  WaveSection m(deck(current_header("1", "4"), time_card("0.") + level("1.", "1.", "0.", "0.") +
                                                   level("20.", "1.", "0.", "0.") + level("20.", "1.", "0.", "0.") +
                                                   level("19.", "1.", "0.", "0.")));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(m.times_reported(error_box("FIRST LEVEL FOR CURRENT DEFINITION SHOULD BE EQUAL TO ZERO")), 1);
  EXPECT_EQ(m.times_reported(error_box("CURRENT LEVELS ARE NOT IN ASCENDING ORDER")), 2) << m.report();
  EXPECT_EQ(deepest_current_level(), 20.0);
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(CurrentTable, TellsDirectionsOffTheHorizontalPlane) {
  const std::string words = "CURRENT VELOCITY DIRECTION DOES NOT LIE ON HORIZONTAL PLANE";
  for (const auto& [z, told] : std::vector<std::pair<std::string, int>>{{"1.8E-6", 0}, {"2.2E-6", 1}, {"-2.2E-6", 1}}) {
    // Of a direction twice as long a millionth is twice as much.
    WaveSection m(deck(current_header("1", "2"),
                       time_card("0.") + level("0.", "2.", "0.", z, "100.") + level("5.", "0.", "0.", "0.", "3.")));
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
    EXPECT_EQ(m.times_reported(error_box(words)), told) << z;
  }
}

TEST(LargestCurrent, GivesItsLevelOneVector) {
  WaveSection m(deck(current_header("2", "3"), two_times));
  WAVEIN();
  EXPECT_EQ(wave.surface_current, (std::array<double, 3>{2.5, 0.0, 0.0}));
  EXPECT_EQ(deepest_current_level(), 60.0);  // of the second time
  EXPECT_EQ(wave.lower_current, -60.0);
}

TEST(LargestCurrent, IsLookedForAtAllLevels) {
  // The largest speed stands deep at the first time; the surface there is slower than at the second.
  const std::string cards = time_card("0.") + level("0.", "0.", "1.", "0.", "0.5") +
                            level("30.", "1.", "0.", "0.", "-3.") + time_card("5.") +
                            level("0.", "1.", "0.", "0.", "2.") + level("30.", "1.", "0.", "0.", "2.9");
  WaveSection m(deck(current_header("2", "2"), cards));
  WAVEIN();
  EXPECT_EQ(wave.surface_current, (std::array<double, 3>{0.0, 0.5, 0.0}));
}

TEST(LargestCurrent, IsTheFirstOfEqualOnes) {
  const std::string cards = time_card("0.") + level("0.", "0.", "1.", "0.", "2.") + level("30.", "0.", "1.", "0.") +
                            time_card("5.") + level("0.", "1.", "0.", "0.", "2.") + level("30.", "1.", "0.", "0.");
  WaveSection m(deck(current_header("2", "2"), cards));
  WAVEIN();
  EXPECT_EQ(wave.surface_current, (std::array<double, 3>{0.0, 2.0, 0.0}));
}

TEST(LargestCurrent, WorksAlongTheWave) {
  RegularWave card{.H = "18.", .T = "14.", .d = "75."};
  card.direction = {"0.8", "0.6", "0."};
  WaveSection m(WaveControl{"5", "1"}.card() + current_header("1", "2") + time_card("0.") +
                level("0.", "1.", "0.", "0.", "2.5") + level("75.", "1.", "0.", "0.", "1.") + card.cards());
  WAVEIN();
  EXPECT_DOUBLE_EQ(wave.U, 2.0);
}

TEST(WavePeriodWithCurrent, IsSolvedForRegularWaves) {
  const auto section = [](const std::string& IWTY, const std::string& period, const std::string& speed) {
    return WaveControl{IWTY, "1"}.card() + current_header("1", "2", period) + time_card("0.") +
           level("0.", "1.", "0.", "0.", speed) + level("50.", "1.", "0.", "0.", speed) +
           RegularWave{.H = "18.", .T = "14.", .d = "75."}.cards();
  };
  // The speed over the ground is that in the water and the current together: L / T = C + U.
  for (const std::string IWTY : {"1", "2"})
    for (const std::string speed : {"1.5", "-1."}) {
      WaveSection m(section(IWTY, "10", speed));
      WAVEIN();
      EXPECT_NEAR(wave.L / 14.0, wave.C + std::stod(speed), 2e-3) << IWTY << speed;
      EXPECT_EQ(wave.T_structure, 14.0);
      EXPECT_EQ(wave.T_water > 14.0, speed == "1.5");
      EXPECT_FALSE(m.reports("DOES NOT CONVERGE"));
    }
  WaveSection without(section("1", "0", "1.5"));
  WAVEIN();
  EXPECT_EQ(wave.T_water, 14.0);
}

TEST(CurrentBelowTheBed, IsToldWhenThePeriodIsComputed) {
  const auto section = [](const std::string& deepest, const std::string& period) {
    return WaveControl{"1", "1"}.card() + current_header("1", "2", period) + time_card("0.") +
           level("0.", "1.", "0.", "0.") + level(deepest, "1.", "0.", "0.") + RegularWave{}.cards();
  };
  for (const auto& [deepest, period, told] : std::vector<std::tuple<std::string, std::string, bool>>{
           {"50.01", "5", true}, {"50.", "5", false}, {"50.01", "0", false}}) {
    WaveSection m(section(deepest, period));
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
    EXPECT_EQ(m.reports("CURRENT WAS DEFINED BELOW THE MUD LINE"), told) << deepest << period;
  }
}

TEST(CurrentTable, ThatEndsTooEarlyStopsInTheInputLayer) {
  WaveSection m(deck(current_header("2", "2"), slice("0.", 2) + time_card("1.")));
  EXPECT_EQ(stop_of(WAVEIN), status_io);
}

TEST(CurrentTable, OfACurrentCodeOfTwoIsNotRead) {
  WaveSection m(WaveControl{"3", "2"}.card() + "next\n");
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(deck_line(), 1);
}

TEST(CurrentTable, IsReadForEveryType) {
  for (const std::string IWTY : {"1", "2", "3", "4", "5", "6", "8"}) {
    WaveSection m(WaveControl{IWTY, "1"}.card() + current_header("1", "2") + slice("0.", 2));
    stop_of(WAVEIN);
    EXPECT_EQ(wave.NLEVEL, 2) << IWTY;
    EXPECT_TRUE(m.reports("GENERATED CURRENT TABLE AT TIME")) << IWTY;
  }
}

}  // namespace
}  // namespace tidearc::test
