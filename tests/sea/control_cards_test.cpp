// The wave control card: echo, checks, what the gravity card gives the sea, and where the section ends.
#include "wave_section.h"

namespace tidearc::test {
namespace {

/// A current of two levels at one time.
std::string two_levels() {
  return current_header("1", "2") + tens({"0."}) + tens({"0.", "1.", "0.", "0.", "1."}) +
         tens({"50.", "1.", "0.", "0.", "0.5"});
}

TEST(WaveControl, IsEchoedWithAllWaveTypes) {
  WaveControl card{"0", "1", "1", "0", "12.5", "1", "0.9", "0.25", "7", "3"};
  WaveSection m(card.card());
  WAVEIN();
  const std::string row = "\n " + std::string(18, '*') + "\n";
  const std::string echo = row + " WAVE CONTROL DATA" + row +
                           "\n     WAVE TYPE ...................................... =    0\n"
                           "            EQ.0 = THERE IS NO WAVE EFFECT\n"
                           "            EQ.1 = AIRY WAVE\n"
                           "            EQ.2 = STOKES 5TH ORDER WAVE\n"
                           "            EQ.3 = CURRENT EFFECT ONLY\n"
                           "            EQ.4 = IRREGULAR SEA\n"
                           "            EQ.5 = STREAM FUNCTION WAVE\n"
                           "            EQ.6 = 2D GRID WAVE LOADER\n"
                           "            EQ.7 = LEGENDRE POLYNOMIAL APPROXIMATIONS\n"
                           "            EQ.8 = IRREGULAR SEA EMBEDDED WITH SF WAVE\n"
                           "     CURRENT CODE ................................... =    1\n"
                           "     LARGE DISPLACEMENT CODE ........................ =    1\n"
                           "     RELATIVE VELOCITY CODE ......................... =    0\n"
                           "     RAMP TIME ...................................... =     12.5000\n"
                           "     VARIABLE ADDED MASS CODE ....................... =    1\n"
                           "     WAVE KINEMATIC FACTOR .......................... =      0.9000\n"
                           "     CUTOFF DIAMETER ................................ =      0.2500\n"
                           "     NO. OF WAVE FORCE SCALE POINTS ................. =    7\n"
                           "     SPECIAL DEBUG CODE ............................. =    3\n";
  EXPECT_TRUE(m.reports(echo)) << m.report();
}

TEST(WaveControl, OfTypeZeroReadsNothingMoreAndChecksNothing) {
  WaveSection m(WaveControl{"0", "2", "", "", "", "", "", "", "3"}.card() + tens({"1.", "2."}));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(deck_line(), 1);
  EXPECT_EQ(wave.IWTY, wave_none);
  EXPECT_FALSE(m.reports("ERROR"));
  EXPECT_EQ(output.NTAP25, 0);
}

TEST(WaveControl, StopsOutsideTheWaveTypes) {
  for (const std::string IWTY : {"9", "-1", "99"}) {
    WaveSection m(WaveControl{IWTY}.card() + RegularWave{}.cards());
    EXPECT_EQ(stop_of(WAVEIN), status_fatal) << IWTY;
    EXPECT_TRUE(m.reports(error_box("WAVE TYPE MUST BE BETWEEN 0 AND 7"))) << m.report();
    EXPECT_TRUE(m.complains("line 1, columns 1-5: WAVE TYPE MUST BE BETWEEN 0 AND 7"));
    EXPECT_EQ(deck_line(), 1);
  }
}

TEST(WaveControl, HasTypeEightInsideAlthoughItsMessageSaysSeven) {
  WaveSection m(WaveControl{"8"}.card() + RegularWave{.H = "0."}.cards());
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);  // at the height, not at the type
  EXPECT_FALSE(m.reports("WAVE TYPE MUST BE"));
  EXPECT_TRUE(m.reports("WAVE HEIGHT IS NOT POSITIVE."));
}

TEST(WaveControl, OfTypeSevenStopsAsNotAvailable) {
  WaveSection m(WaveControl{"7", "1"}.card() + two_levels());
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
  EXPECT_TRUE(m.reports(framed('F', " LEGENDRE POLYNOMIAL WAVE DATA INPUT IS NOT AVAILABLE IN THIS VERSION")))
      << m.report();
  EXPECT_TRUE(m.reports("FATAL ERROR DETECTED IN LEGIN  - JOB ABORTED"));
  EXPECT_TRUE(m.reports("GENERATED CURRENT TABLE AT TIME"));  // its current is read before
}

struct CodeOfCard {
  std::string words;
  WaveControl card;
  const int* kept;
};

TEST(WaveControl, TellsCodesAboveOneAndTakesThemAsZero) {
  const std::vector<CodeOfCard> codes{
      {"CURRENT CODE MUST BE EITHER 0 OR 1", {"1", "2"}, &wave.current_code},
      {"KINEMATICS CODE MUST BE EITHER 0 OR 1", {"1", "", "2"}, &wave.large_displacement},
      {"RELATIVE VELOCITY CODE MUST BE EITHER 0 OR 1", {"1", "", "", "2"}, &wave.relative_velocity},
      {"VARIABLE ADDED MASS CODE MUST BE EITHER 0 OR 1", {"1", "", "", "", "", "2"}, &wave.added_mass_code}};
  for (const CodeOfCard& code : codes) {
    WaveSection m(code.card.card() + RegularWave{}.cards());
    WAVEIN();
    EXPECT_EQ(m.times_reported(error_box(code.words)), 1) << m.report();
    EXPECT_EQ(m.times_reported("ERROR"), 1);
    EXPECT_EQ(*code.kept, 0);
    EXPECT_EQ(run.RUNMOD, 0);  // the run analyses
    EXPECT_NEAR(wave.L, 204.833, 5e-4);
  }
}

TEST(WaveControl, TakesCodesOfOneAndPassesThoseBelowZero) {
  WaveSection one(WaveControl{"1", "1", "1", "1", "", "1"}.card() + two_levels() + RegularWave{}.cards());
  WAVEIN();
  EXPECT_FALSE(one.reports("ERROR"));
  EXPECT_EQ(wave.current_code + wave.large_displacement + wave.relative_velocity + wave.added_mass_code, 4);
  WaveSection below(WaveControl{"1", "-1", "-1", "-1", "", "-1"}.card() + RegularWave{}.cards());
  WAVEIN();
  EXPECT_FALSE(below.reports("ERROR"));
  EXPECT_EQ(wave.current_code, 0);
  EXPECT_EQ(wave.large_displacement, 0);
  EXPECT_EQ(wave.relative_velocity, 0);
  EXPECT_EQ(wave.added_mass_code, 0);
}

TEST(WaveControl, OfCurrentAloneMissesItsCurrent) {
  const std::string words = "FOR IWTY = 5 or 8,  CURRENT CODE SHOULD BE EQUAL TO 1";
  WaveSection without(WaveControl{"3"}.card());
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(without.times_reported(error_box(words)), 1) << without.report();
  WaveSection with(WaveControl{"3", "1"}.card() + two_levels());
  WAVEIN();
  EXPECT_FALSE(with.reports(words));
  WaveSection stream(WaveControl{"5"}.card() + RegularWave{}.cards());
  WAVEIN();
  EXPECT_FALSE(stream.reports(words));  // the types that the words name are not meant
}

TEST(WaveControl, TakesAKinematicFactorThatIsNotPositiveAsOne) {
  for (const std::string factor : {"", "0.", "-0.5"}) {
    WaveSection m(WaveControl{"0", "", "", "", "", "", factor}.card());
    WAVEIN();
    EXPECT_EQ(wave.kinematic_factor, 1.0);
    EXPECT_TRUE(m.reports("WAVE KINEMATIC FACTOR .......................... =      1.0000\n"));
  }
  WaveSection m(WaveControl{"0", "", "", "", "", "", "0.001"}.card());
  WAVEIN();
  EXPECT_EQ(wave.kinematic_factor, 0.001);
}

TEST(WaveControl, GivesRampTimeCutoffAndDebugCode) {
  WaveSection m(WaveControl{"1", "", "", "", "8.", "", "", "0.5", "", "4"}.card() + RegularWave{}.cards());
  WAVEIN();
  EXPECT_EQ(wave.ramp_time, 8.0);
  EXPECT_EQ(wave.cutoff_diameter, 0.5);
  EXPECT_EQ(wave.debug_code, 4);
}

TEST(WaveGravity, GivesAxesAndSign) {
  const std::vector<std::array<double, 3>> directions{{0, 0, -1}, {0, 0, 1}, {0, -1, 0}, {1, 0, 0}};
  const std::vector<int> vertical{3, 3, 2, 1};
  const std::vector<std::array<int, 2>> horizontal{{1, 2}, {1, 2}, {3, 1}, {2, 3}};
  const std::vector<double> sign{-1.0, 1.0, -1.0, 1.0};
  for (std::size_t i = 0; i < directions.size(); ++i) {
    WaveSection m(WaveControl{"3", ""}.card());
    gravity.direction = directions[i];
    WAVEIN();
    EXPECT_EQ(wave.vertical, vertical[i]);
    EXPECT_EQ(wave.horizontal, horizontal[i]);
    EXPECT_EQ(wave.sg, sign[i]);
    EXPECT_EQ(wave.gravity, directions[i]);
  }
}

TEST(WaveGravity, ComesFromTheGravityCardAndNotFromTheWaveCard) {
  WaveSection m(WaveControl{}.card() + RegularWave{.g = "32.2"}.cards());
  gravity.water_level = 3.0;
  WAVEIN();
  EXPECT_EQ(wave.g, 9.81);
  EXPECT_EQ(wave.MWL, 3.0);
  EXPECT_EQ(wave.rho, 1.025);
  EXPECT_EQ(wave.weight, 1.025 * 9.81);
  EXPECT_TRUE(m.reports("        ACCELERATION OF GRAVITY                           9.81\n")) << m.report();
}

TEST(WaveGravity, WithoutItsCardIsThatOfFeetAndWaterWithoutDensity) {
  WaveSection m(WaveControl{}.card() + RegularWave{.H = "40.", .d = "160.", .g = "9.81"}.cards());
  sizes.IGRAV = 0;
  reset_gravity();
  WAVEIN();
  EXPECT_EQ(wave.g, 32.2);
  EXPECT_EQ(wave.MWL, 0.0);
  EXPECT_EQ(wave.rho, 0.0);
  EXPECT_EQ(wave.weight, 0.0);
  EXPECT_NEAR(wave.L, 668.486, 5e-4);  // feet: closed form, tanh solved with pencil and table
  EXPECT_TRUE(
      m.reports(warning_text("NO GRAVITY AND WATER CARD: WATER HAS NO DENSITY, ACCELERATION OF GRAVITY IS 32.2")))
      << m.report();
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(WaveGravity, WithoutADirectionTurnsTheProblemIntoACheck) {
  for (const bool check : {false, true}) {
    WaveSection m(WaveControl{}.card() + RegularWave{.direction = {"0.", "0.", "1."}}.cards());
    gravity.direction = {};  // what a misspelled word leaves
    run.check_run = check;
    run.RUNMOD = check ? 1 : 0;
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);  // no plane to be off
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_EQ(run.had_data_error, check);
    EXPECT_EQ(wave.vertical, 3);
    EXPECT_EQ(wave.sg, 0.0);
    EXPECT_TRUE(m.complains("no loads of the sea without a direction of gravity"));
  }
}

TEST(WaveSectionOfADataCheck, IsSolvedAllTheSame) {
  WaveSection m(WaveControl{}.card() + RegularWave{}.cards());
  run.RUNMOD = 1;
  run.check_run = true;
  WAVEIN();
  EXPECT_NEAR(wave.L, 204.833, 5e-4);
  EXPECT_EQ(output.NTAP25, 2);
}

}  // namespace
}  // namespace tidearc::test
