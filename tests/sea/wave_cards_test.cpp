// The cards of a regular wave: defaults, checks with both sides of each limit and what the run does after them, limits
// of forces, the page on the report, the record for the post-processing.
#include <cmath>

#include "wave_section.h"

namespace tidearc::test {
namespace {

std::string deck(const RegularWave& card, const std::string& IWTY = "1") {
  return WaveControl{IWTY}.card() + card.cards();
}

/// A line of the page: label in 44 columns behind eight blanks, value in ten.
std::string line(const std::string& label, const std::string& value) {
  return "        " + label + std::string(44 - label.size(), ' ') + fields(10, {value}) + "\n";
}

std::string last_line_of(const std::string& text) { return lines_of(text).back(); }

TEST(RegularWavePage, OfAnAiryWave) {
  RegularWave card;
  card.crest_distance = "-7.5";
  card.direction = {"3.", "4.", "0."};
  card.peak_time = "2.5";
  WaveSection m(deck(card));
  WAVEIN();
  const std::string page =
      "\n\n        A I R Y   W A V E   D A T A\n\n" + line("WAVE HEIGHT", "12.00") +
      line("WAVE PERIOD RELATED TO STRUCTURE", "12.00") + "        WAVE DIRECTION VECTOR\n" +
      line("X-COMPONENT", "0.600") + line("Y-COMPONENT", "0.800") + line("Z-COMPONENT", "0.000") +
      line("DISTANCE BETWEEN WAVE CREST AND THE ORIGIN", "-7.50") +
      "            GT.0 = CREST IS MOVING TOWARD ORIGIN\n            LT.0 = CREST IS MOVING AWAY FROM ORIGIN\n" +
      line("MEAN WATER DEPTH", "50.00") + line("ACCELERATION OF GRAVITY", "9.81") +
      line("DISTANCE ABOVE MWL TO CALCULATE WAVE FORCE", "12.00") +
      line("DISTANCE BELOW MWL TO CALCULATE WAVE FORCE", "-50.00") +
      line("LOWEST ELEVATION TO CALCULATE CURRENT FORCE", "-50.00") +
      line("TOLERANCE FOR WAVE LENGTH COMPUTATION", "0.100E-05") +
      line("PEAK OCCURENCE TIME FOR EMBEDDED WAVE", "0.250E+01") + line("CURRENT STRETCHING CODE", "1") +
      line("WAVE KINEMATICS STRETCHING CODE", "0") +
      "            EQ.0 = NOT USED (EXP. EXTRAPOLATION)\n            EQ.1 = WHEELER STRETCHING USED\n" +
      line("WAVE PERIOD RELATED TO WATER", "12.000") + line("WAVE CELERITY", "17.069");  // 204.833 / 12
  EXPECT_TRUE(m.reports(page)) << m.report();
  EXPECT_FALSE(m.reports("MAX NO OF ITERATIONS"));
  EXPECT_FALSE(m.reports("BERNOULLI"));
}

TEST(RegularWavePage, OfAStokesWave) {
  WaveSection m(deck(RegularWave{}, "2"));
  WAVEIN();
  EXPECT_TRUE(
      m.reports("\n\n        S T O K E S   5 T H   O R D E R   W A V E   D A T A\n\n" + line("WAVE HEIGHT", "12.00")))
      << m.report();
  // Celerity and constant of an independent solution by Fourier series.
  EXPECT_TRUE(m.reports(line("CURRENT STRETCHING CODE", "1") + line("MAX NO OF ITERATIONS FOR WAVE SOLUTION", "20") +
                        line("WAVE PERIOD RELATED TO WATER", "12.000") + line("WAVE CELERITY", "17.614") +
                        line("BERNOULLI CONST. (REF. MOVING WITH CREST)", "15.865")));
  EXPECT_FALSE(m.reports("WAVE KINEMATICS STRETCHING CODE"));
  EXPECT_FALSE(m.reports("ORDER OF STREAM FUNCTION"));
}

TEST(RegularWavePage, OfAStreamFunctionWave) {
  WaveSection m(deck(RegularWave{}, "5"));
  WAVEIN();
  EXPECT_TRUE(
      m.reports("\n\n        S T R E A M   F U N C T I O N   W A V E   D A T A\n\n" + line("WAVE HEIGHT", "12.00")))
      << m.report();
  EXPECT_TRUE(m.reports(line("MAX NO OF ITERATIONS FOR WAVE SOLUTION", "20") +
                        line("ORDER OF STREAM FUNCTION WAVE THEORY", "9") +
                        line("NO. OF PTS. ALONG WAVE FOR ERROR EVALUATION", "37") +
                        line("MAX. NO. OF ITERATIONS FOR WAVE COEFF.", "15")));
  EXPECT_TRUE(m.reports(line("WAVE PERIOD RELATED TO WATER", "12.000") + line("WAVE CELERITY", "17.619") +
                        line("BERNOULLI CONST. (REF. MOVING WITH CREST)", "15.873")))
      << m.report();
  EXPECT_FALSE(m.reports("KINEMATICS STRETCHING"));
}

TEST(RegularWavePage, PrintsWhatIsInForceAfterCorrections) {
  RegularWave card{.H = "30.", .T = "25.", .d = "-5."};
  card.order = "40";
  card.NPTS = "99";
  card.upper = "4.";
  card.lower = "-99.";
  WaveSection m(deck(card, "2"));
  WAVEIN();
  EXPECT_TRUE(m.reports(line("MEAN WATER DEPTH", "1.00"))) << m.report();
  EXPECT_TRUE(m.reports(line("DISTANCE ABOVE MWL TO CALCULATE WAVE FORCE", "4.00") +
                        line("DISTANCE BELOW MWL TO CALCULATE WAVE FORCE", "-1.00")));
}

TEST(RegularWaveDefaults, StandForBlankFields) {
  WaveSection m(deck(RegularWave{}, "5"));
  WAVEIN();
  EXPECT_EQ(wave.NPTS, 37);
  EXPECT_EQ(wave.NN, 10);
  EXPECT_EQ(wave.current_stretching, 1);
  EXPECT_EQ(wave.ISTRCH, 0);
  EXPECT_TRUE(m.reports(line("TOLERANCE FOR WAVE LENGTH COMPUTATION", "0.100E-05")));
}

TEST(RegularWaveDefaults, StandForAnOrderOrCountThatIsNegativeAndForTooFewPoints) {
  RegularWave card;
  card.order = "-3";
  card.coefficient_iterations = "-1";
  card.NPTS = "2";
  WaveSection m(deck(card, "5"));
  WAVEIN();
  EXPECT_FALSE(m.reports("ERROR -----"));
  EXPECT_TRUE(m.reports(line("ORDER OF STREAM FUNCTION WAVE THEORY", "9")));
  EXPECT_TRUE(m.reports(line("NO. OF PTS. ALONG WAVE FOR ERROR EVALUATION", "37")));
  EXPECT_TRUE(m.reports(line("MAX. NO. OF ITERATIONS FOR WAVE COEFF.", "15")));
  RegularWave three = card;
  three.NPTS = "3";
  three.order = "1";
  WaveSection few(deck(three, "5"));
  stop_of(WAVEIN);
  EXPECT_TRUE(few.reports(line("NO. OF PTS. ALONG WAVE FOR ERROR EVALUATION", "3"))) << few.report();
}

TEST(RegularWaveDefaults, GiveWayToTheCard) {
  RegularWave card;
  card.tolerance = "1.E-4";
  card.iterations = "50";
  card.order = "7";
  card.NPTS = "31";
  card.coefficient_iterations = "25";
  card.current_stretching = "3";
  WaveSection m(deck(card, "5"));
  WAVEIN();
  EXPECT_EQ(wave.NN, 8);
  EXPECT_EQ(wave.NPTS, 31);
  EXPECT_EQ(wave.current_stretching, 3);
  EXPECT_TRUE(m.reports(line("TOLERANCE FOR WAVE LENGTH COMPUTATION", "0.100E-03")));
  EXPECT_TRUE(m.reports(line("MAX NO OF ITERATIONS FOR WAVE SOLUTION", "50")));
  EXPECT_TRUE(m.reports(line("MAX. NO. OF ITERATIONS FOR WAVE COEFF.", "25")));
  EXPECT_TRUE(m.reports(line("CURRENT STRETCHING CODE", "3")));
}

TEST(RegularWaveChecks, StopAtOnceAtAHeightThatIsNotPositive) {
  for (const std::string IWTY : {"1", "2", "5", "8"})
    for (const std::string H : {"", "0.", "-1."}) {
      RegularWave card{.H = H, .T = "-1."};
      card.direction = {"0.", "0.", "0."};
      WaveSection m(deck(card, IWTY));
      EXPECT_EQ(stop_of(WAVEIN), status_fatal);
      EXPECT_TRUE(m.reports(framed('F', "     ERROR-----  WAVE HEIGHT IS NOT POSITIVE."))) << m.report();
      EXPECT_TRUE(m.complains("line 2, columns 1-10: WAVE HEIGHT IS NOT POSITIVE."));
      EXPECT_EQ(m.times_reported("ERROR"), 1);
    }
  WaveSection m(deck(RegularWave{.H = "1.E-6"}));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
}

TEST(RegularWaveChecks, StopAtOnceAtAPeriodThatIsNotPositive) {
  for (const std::string T : {"", "0.", "-12."}) {
    WaveSection m(deck(RegularWave{.T = T}));
    EXPECT_EQ(stop_of(WAVEIN), status_fatal);
    EXPECT_TRUE(m.reports(framed('F', "     ERROR-----  WAVE PERIOD IS NOT POSITIVE."))) << m.report();
    EXPECT_TRUE(m.complains("line 2, columns 11-20: WAVE PERIOD"));
    EXPECT_FALSE(m.reports("A I R Y"));
  }
  WaveSection m(deck(RegularWave{.T = "0.01"}));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
}

TEST(RegularWaveChecks, SetAStretchCodeAboveOneToZeroForAiryAlone) {
  const std::string words = "STRETCH CODE MUST BE EITHER 0 OR 1";
  for (const auto& [code, kept, told] :
       std::vector<std::tuple<std::string, int, int>>{{"2", 0, 1}, {"1", 1, 0}, {"0", 0, 0}, {"-1", -1, 0}}) {
    WaveSection m(deck(RegularWave{.ISTRCH = code}));
    WAVEIN();
    EXPECT_EQ(m.times_reported(error_box(words)), told) << code;
    EXPECT_EQ(wave.ISTRCH, kept);
    EXPECT_EQ(run.RUNMOD, 0);
  }
  for (const std::string IWTY : {"2", "5"}) {
    WaveSection m(deck(RegularWave{.ISTRCH = "2"}, IWTY));
    WAVEIN();
    EXPECT_FALSE(m.reports(words));
  }
}

TEST(RegularWaveChecks, TellAnIterationCountBelowOneAndKeepIt) {
  for (const std::string count : {"-1", "-20"}) {
    WaveSection m(deck(RegularWave{.iterations = count}));
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
    EXPECT_EQ(m.times_reported(error_box("TOTAL NUMBER OF ITERATION MUST BE POSITIVE")), 1) << m.report();
    EXPECT_NEAR(wave.L, 224.8286, 1e-4);  // g T^2 / 2 pi, where the iteration would have begun
  }
  WaveSection m(deck(RegularWave{.iterations = "1"}));
  WAVEIN();
  EXPECT_FALSE(m.reports("TOTAL NUMBER OF ITERATION"));
}

TEST(RegularWaveChecks, CutTheOrderAtFifteen) {
  const std::string words = "ORDER OF WAVE THEORY SET TO    15";
  WaveSection above(deck(RegularWave{.order = "16"}, "5"));
  WAVEIN();
  EXPECT_EQ(above.times_reported(warning_text(words)), 1) << above.report();
  EXPECT_EQ(wave.NN, 16);
  EXPECT_TRUE(above.reports(line("ORDER OF STREAM FUNCTION WAVE THEORY", "15")));
  WaveSection at(deck(RegularWave{.order = "15"}, "5"));
  WAVEIN();
  EXPECT_FALSE(at.reports(words));
  EXPECT_EQ(wave.NN, 16);
}

TEST(RegularWaveChecks, CutThePointsAtThirtySeven) {
  const std::string words = "NO. OF POINTS ACROSS WAVE FOR ERROR EVALUATION SET TO    37";
  WaveSection above(deck(RegularWave{.NPTS = "38"}, "5"));
  WAVEIN();
  EXPECT_EQ(above.times_reported(warning_text(words)), 1) << above.report();
  EXPECT_EQ(wave.NPTS, 37);
  WaveSection at(deck(RegularWave{.NPTS = "37"}, "5"));
  WAVEIN();
  EXPECT_FALSE(at.reports(words));
  WaveSection even(deck(RegularWave{.NPTS = "36"}, "5"));
  WAVEIN();
  EXPECT_EQ(wave.NPTS, 36);  // accepted
}

TEST(RegularWaveChecks, SetADepthThatIsNotPositiveToOne) {
  for (const std::string d : {"", "0.", "-50."}) {
    WaveSection m(deck(RegularWave{.H = "0.1", .T = "2.", .d = d}));
    WAVEIN();
    EXPECT_EQ(m.times_reported(error_box("WATER DEPTH IS NOT POSITIVE")), 1) << m.report();
    EXPECT_TRUE(m.complains("line 2, columns 61-70: WATER DEPTH"));
    EXPECT_EQ(wave.d, 1.0);
    EXPECT_EQ(wave.mudline, -1.0);
  }
  WaveSection m(deck(RegularWave{.H = "0.1", .T = "2.", .d = "0.9"}));
  WAVEIN();
  EXPECT_FALSE(m.reports("WATER DEPTH IS NOT"));
  EXPECT_EQ(wave.d, 0.9);
}

TEST(RegularWaveChecks, LowerAHeightOfTwiceTheDepthForStreamFunctionsAlone) {
  const std::string words = "UNREALISTIC WAVE DEFINED, CHECK WAVE HEIGHT";
  for (const std::string H : {"20.", "20.1"}) {
    WaveSection m(deck(RegularWave{.H = H, .d = "10."}, "5"));
    EXPECT_EQ(stop_of(WAVEIN), status_fatal);  // what is left of the height is still beyond breaking
    EXPECT_EQ(m.times_reported(error_box(words)), 1) << m.report();
    EXPECT_DOUBLE_EQ(wave.H, 19.9);
    EXPECT_TRUE(m.reports(line("WAVE HEIGHT", "19.90")));
    EXPECT_TRUE(m.reports("WAVE HEIGHT EXCEEDS BREAKING WAVE HEIGHT OF APPROXIMATETELY    0.00 UNITS LENGTH."));
  }
  WaveSection below(deck(RegularWave{.H = "19.99", .d = "10."}, "5"));
  stop_of(WAVEIN);
  EXPECT_FALSE(below.reports(words));
  EXPECT_EQ(wave.H, 19.99);
  for (const std::string IWTY : {"1", "2"}) {
    WaveSection m(deck(RegularWave{.H = "21.", .d = "10."}, IWTY));
    WAVEIN();
    EXPECT_FALSE(m.reports(words));
    EXPECT_EQ(wave.H, 21.0);
  }
}

TEST(RegularWaveChecks, ReplaceAnAccelerationThatIsNotPositive) {
  for (const double g : {0.0, -9.81}) {
    WaveSection m(deck(RegularWave{}));
    gravity.GRAV = g;
    WAVEIN();
    EXPECT_EQ(m.times_reported(error_box("ACCELERATION OF GRAVITY IS NOT POSITIVE")), 1) << m.report();
    EXPECT_EQ(wave.g, 0.1);
  }
}

TEST(RegularWaveChecks, LeaveADirectionOfZeroAtZero) {
  RegularWave card;
  card.direction = {"", "", ""};
  WaveSection m(deck(card));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(m.times_reported(error_box("WAVE DIRECTION IS NOT SPECIFIED")), 1) << m.report();
  EXPECT_TRUE(m.complains("line 2, columns 21-50: WAVE DIRECTION IS NOT SPECIFIED"));
  EXPECT_EQ(wave.direction, (std::array<double, 3>{0.0, 0.0, 0.0}));
  EXPECT_FALSE(m.reports("HORIZONTAL PLANE"));
  EXPECT_NEAR(wave.L, 204.833, 5e-4);
}

TEST(RegularWaveChecks, StopBehindTheScaleCardsAtADirectionOffTheHorizontalPlane) {
  RegularWave card;
  card.direction = {"1.", "0.", "0.01"};
  WaveControl control{"1"};
  control.NORAMP = "2";
  WaveSection m(control.card() + card.cards() + tens({"0.", "1."}) + tens({"5.", "2."}) + "next\n");
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
  EXPECT_EQ(m.times_reported(error_box("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE")), 1) << m.report();
  EXPECT_TRUE(m.reports("WAVE CELERITY"));    // solved
  EXPECT_EQ(force_scale.multiplier[1], 2.0);  // and read to its end
  EXPECT_EQ(deck_line(), 5);
  EXPECT_LT(m.report().find("HORIZONTAL PLANE"), m.report().find("MAGNIFICATION"));
}

TEST(RegularWaveChecks, TakeAMillionthOffTheHorizontalPlaneAsHorizontal) {
  for (const auto& [slope, stop] : std::vector<std::pair<std::string, bool>>{
           {"0.9E-6", false}, {"-0.9E-6", false}, {"1.1E-6", true}, {"-1.1E-6", true}}) {
    RegularWave card;
    card.direction = {"1.", "0.", slope};
    WaveSection m(deck(card));
    EXPECT_EQ(stop_of(WAVEIN).has_value(), stop) << slope;
  }
  RegularWave along_y;  // gravity along X leaves Y and Z
  along_y.direction = {"0.", "1.", "1."};
  WaveSection m(deck(along_y));
  gravity.direction = {-1.0, 0.0, 0.0};
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
}

TEST(RegularWaveChecks, ComeInTheirOrderAndAllAtOnce) {
  RegularWave card{.H = "5.", .d = "0."};
  card.iterations = "-1";
  card.order = "20";
  card.NPTS = "50";
  card.direction = {"0.", "0.", "1."};
  WaveSection m(deck(card, "5"));
  gravity.GRAV = -1.0;
  stop_of(WAVEIN);
  const std::string report = m.report();
  std::size_t at = 0;
  for (const std::string words :
       {"TOTAL NUMBER OF ITERATION", "ORDER OF WAVE THEORY", "NO. OF POINTS ACROSS", "WATER DEPTH IS NOT",
        "UNREALISTIC WAVE", "ACCELERATION OF GRAVITY IS NOT", "HORIZONTAL PLANE", "S T R E A M"}) {
    const std::size_t next = report.find(words, at);
    ASSERT_NE(next, std::string::npos) << words << report;
    at = next;
  }
}

TEST(RegularWaveDirection, IsMadeUnit) {
  RegularWave card;
  card.direction = {"-3.", "4.", "0."};
  WaveSection m(deck(card));
  WAVEIN();
  EXPECT_DOUBLE_EQ(wave.direction[0], -0.6);
  EXPECT_DOUBLE_EQ(wave.direction[1], 0.8);
}

TEST(RegularWaveRecord, IsWrittenOnceAndCounted) {
  for (const std::string IWTY : {"1", "2", "5"}) {
    RegularWave card;
    card.direction = {"3.", "-4.", "0."};
    WaveSection m(deck(card, IWTY));
    open_formatted(UNIT_POST_TEXT, "TAP25", OpenMode::fresh);
    WAVEIN();
    EXPECT_EQ(m.scratch.contents("TAP25"), "  12.000       12.000      0.60000     -0.80000    \n");
    EXPECT_EQ(output.NTAP25, 2);
  }
}

TEST(RegularWaveRecord, OfAnEmbeddedWaveIsThatOfTheRegularWaveAndStandsOnce) {
  const std::string sea = fields(10, {"80.", "", ""}) + fields(5, {"", "", ""}) + fields(10, {"", ""}) + "\n" +
                          fields(5, {"1", "", "50"}) + "\n" + fields(5, {"1"}) + fields(10, {"0.", "1.", "0."}) + "\n" +
                          tens({"9.", "2.", "0."});
  WaveSection m(deck(RegularWave{}, "8") + sea);
  open_formatted(UNIT_POST_TEXT, "TAP25", OpenMode::fresh);
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(m.scratch.contents("TAP25"), "  12.000       12.000       1.0000       0.0000    \n");
  EXPECT_EQ(output.NTAP25, 2);
  EXPECT_EQ(wave.d, 50.0);
  EXPECT_EQ(wave.upper_force, 12.0);
  EXPECT_EQ(wave.lower_force, -50.0);
}

TEST(RegularWaveRecord, IsNotWrittenForCurrentAlone) {
  WaveSection m(WaveControl{"3"}.card());
  open_formatted(UNIT_POST_TEXT, "TAP25", OpenMode::fresh);
  WAVEIN();
  EXPECT_EQ(m.scratch.contents("TAP25"), "");
  EXPECT_EQ(output.NTAP25, 0);
}

TEST(RegularWaveCards, ThatAreMissingEndInTheInputLayer) {
  WaveSection none(WaveControl{"1"}.card());
  EXPECT_EQ(stop_of(WAVEIN), status_io);
  WaveSection one(WaveControl{"1"}.card() + tens({"12.", "12.", "1."}));
  EXPECT_EQ(stop_of(WAVEIN), status_io);
  EXPECT_EQ(last_line_of(one.scratch.errors()).find("TAModel.inp") == std::string::npos, false);
}

}  // namespace
}  // namespace tidearc::test
