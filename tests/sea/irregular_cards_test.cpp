// Cards of the irregular sea: defaults, checks, echo, limits, and how the run goes on.
#include "irregular_section.h"

namespace tidearc::test {
namespace {

/// A line of a wave page with its value of ten columns.
std::string line(const std::string& label, const std::string& value) {
  std::string text = "        " + label;
  text.resize(8 + 44, ' ');
  return text + std::string(10 - value.size(), ' ') + value + "\n";
}

/// A type 4 section that has been read.
struct ReadSea : WaveSection {
  explicit ReadSea(const IrregularCards& cards) : WaveSection(cards.section()) { WAVEIN(); }
};

TEST(IrregularCards, AreEchoed) {
  const ReadSea m({.d = "50.",
                   .limit = "30.",
                   .ISTRCH = "1",
                   .time_block = "1",
                   .current_stretching = "2",
                   .peak = "14.5",
                   .apparent = "13.",
                   .rest = wind_sea("20.", {"3.", "4.", ""}, "7")});
  EXPECT_TRUE(m.reports("\n\n        I R R E G U L A R   S E A   D A T A\n\n"));
  EXPECT_TRUE(m.reports(line("MEAN WATER DEPTH", "50.00"))) << m.report();
  EXPECT_TRUE(m.reports(line("ACCELERATION OF GRAVITY", "9.81")));
  EXPECT_TRUE(m.reports(line("DISTANCE BELOW MWL TO CALCULATE WAVE FORCE", "30.00")));
  EXPECT_TRUE(m.reports(line("WAVE KINEMATICS STRETCHING CODE", "1")));
  EXPECT_TRUE(m.reports("            EQ. 0 UNSTRETCHED (EXP. EXTRAPOLATION)\n"));
  EXPECT_TRUE(m.reports("            EQ. 1 WHEELER STRETCHING USED\n"));
  EXPECT_TRUE(m.reports(line("CURRENT STRETCHING CODE", "2")));
  EXPECT_TRUE(m.reports(line("TIME BLOCK CODE", "1")));
  EXPECT_TRUE(m.reports("            EQ. 0 SINGLE TIME BLOCK\n"));
  EXPECT_TRUE(m.reports("            EQ. 1 REDEFINE IRREG IN NEXT DYN2 MACRO\n"));
  EXPECT_TRUE(m.reports(line("PEAK WAVE PERIOD fixed observer", "14.50")));
  EXPECT_TRUE(m.reports(line("APPARENT PEAK WAVE PERIOD moving observer", "13.00")));
  EXPECT_TRUE(m.reports(line("WAVE COMPONENT GENERATION CODE", "0")));
  EXPECT_TRUE(m.reports(line("WAVE HEIGHT SPECTRUM DEFINITION CODE", "0")));
  EXPECT_TRUE(m.reports(line("MEAN WIND VELOCITY AT 64 FT ABOVE SEA LEVEL", "20.00")));
  EXPECT_TRUE(m.reports(line("X-COMPONENT", "0.600")));
  EXPECT_TRUE(m.reports(line("Y-COMPONENT", "0.800")));
  EXPECT_TRUE(m.reports(line("NUMBER OF RANDOM NUMBERS TO SKIP", "7")));
}

TEST(IrregularCards, TakeTwentyIterationsAMillionthAndVerticalStretchingWhenBlank) {
  const ReadSea m({.rest = wind_sea()});
  EXPECT_TRUE(m.reports(line("MAX NO OF ITERATIONS FOR WAVE SOLUTION", "20")));
  EXPECT_TRUE(m.reports(line("TOLERANCE FOR WAVE FREQUENCY COMPUTATION", "0.100E-05")));
  EXPECT_TRUE(m.reports(line("CURRENT STRETCHING CODE", "1")));
  EXPECT_EQ(wave.current_stretching, 1);
}

TEST(IrregularCards, TakeGivenIterationsAndTolerance) {
  const ReadSea m({.iterations = "300", .tolerance = "1.E-9", .rest = wind_sea()});
  EXPECT_TRUE(m.reports(line("MAX NO OF ITERATIONS FOR WAVE SOLUTION", "300")));
  EXPECT_TRUE(m.reports(line("TOLERANCE FOR WAVE FREQUENCY COMPUTATION", "0.100E-08")));
  EXPECT_FALSE(m.reports("WAVE SOLUTION FAILED"));
}

TEST(IrregularCards, SetForceLimitsAroundTheMeanWaterLevel) {
  struct Case {
    std::string limit;
    double elevation;
  };
  for (const Case& c : {Case{"", -47.0}, Case{"20.", -17.0}, Case{"50.", -47.0}, Case{"80.", -47.0}}) {
    WaveSection m(IrregularCards{.limit = c.limit, .rest = wind_sea()}.section());
    gravity.water_level = 3.0;
    WAVEIN();
    EXPECT_EQ(wave.lower_force, c.elevation) << c.limit;
    EXPECT_EQ(wave.lower_current, c.elevation) << c.limit;
    EXPECT_EQ(wave.mudline, -47.0);
    // 3 plus the sum of all amplitudes.
    EXPECT_NEAR(wave.upper_force, 14.2238, 5e-5);
  }
}

TEST(IrregularCards, FollowADownwardAxis) {
  WaveSection m(IrregularCards{.limit = "20.", .rest = wind_sea()}.section());
  gravity.direction = {0.0, 0.0, 1.0};
  gravity.water_level = 3.0;
  WAVEIN();
  EXPECT_EQ(wave.lower_force, 23.0);
  EXPECT_EQ(wave.mudline, 53.0);
  EXPECT_NEAR(wave.upper_force, 3.0 - 11.2238, 5e-5);
}

TEST(IrregularCards, LeaveTheCurrentsLimitToTheCurrent) {
  const std::string current = current_header("1", "2") + tens({"0."}) + tens({"0.", "1.", "0.", "0.", "1."}) +
                              tens({"60.", "1.", "0.", "0.", "1."});
  WaveSection m(WaveControl{.IWTY = "4", .current = "1"}.card() + current +
                IrregularCards{.limit = "20.", .rest = wind_sea()}.cards());
  WAVEIN();
  EXPECT_EQ(wave.lower_force, -20.0);
  EXPECT_EQ(wave.lower_current, -60.0);
}

TEST(IrregularCards, TakeStretchingCodesUpToOne) {
  for (const std::string code : {"0", "1"}) {
    const ReadSea m({.ISTRCH = code, .rest = wind_sea()});
    EXPECT_FALSE(m.reports("STRETCH CODE"));
    EXPECT_EQ(std::to_string(wave.ISTRCH), code);
  }
  const ReadSea m({.ISTRCH = "2", .rest = wind_sea()});
  EXPECT_TRUE(m.reports(error_box("STRETCH CODE MUST BE EITHER 0 OR 1")));
  EXPECT_EQ(wave.ISTRCH, 0);
  EXPECT_EQ(wave.NCOMP, 27);
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(IrregularCards, ReplaceADepthThatIsNotPositive) {
  for (const std::string d : {"0.", "-3."}) {
    const ReadSea m({.d = d, .rest = wind_sea()});
    EXPECT_TRUE(m.reports(error_box("WATER DEPTH IS NOT POSITIVE")));
    EXPECT_EQ(wave.d, 1.0);
    EXPECT_EQ(wave.d_irregular, 1.0);
  }
  const ReadSea m({.d = "0.5", .rest = wind_sea()});
  EXPECT_FALSE(m.reports("WATER DEPTH IS NOT POSITIVE"));
}

TEST(IrregularCards, ReplaceAGravityThatIsNotPositive) {
  for (const double g : {0.0, -9.81}) {
    WaveSection m(IrregularCards{.rest = wind_sea()}.cards());
    wave.IWTY = wave_irregular;
    wave.sg = -1.0;
    wave.g = g;
    IRRSEA(0, 0.0);
    EXPECT_TRUE(m.reports(error_box(" ACCELERATION OF GRAVITY IS NOT POSITIVE, IT WILL BE SET TO 32.2")));
    EXPECT_EQ(wave.g, 32.2);
  }
}

TEST(IrregularCards, TellIterationsBelowOneAndGoOn) {
  const ReadSea m({.iterations = "-1", .rest = wind_sea()});
  EXPECT_TRUE(m.reports(error_box("TOTAL NUMBER OF ITERATION MUST BE POSITIVE")));
  EXPECT_EQ(wave.NCOMP, 27);
  const ReadSea n({.iterations = "1", .rest = wind_sea()});
  EXPECT_FALSE(n.reports("TOTAL NUMBER OF ITERATION"));
}

TEST(IrregularCards, WithoutADirectionHaveAMessageAndNoHorizontalMotion) {
  const ReadSea m({.rest = wind_sea("20.", {"", "", ""})});
  EXPECT_TRUE(m.reports(error_box("WAVE DIRECTION IS NOT SPECIFIED")));
  EXPECT_EQ(wave.NCOMP, 27);
  for (int i = 0; i < wave.NCOMP; ++i) {
    EXPECT_EQ(components.of[static_cast<std::size_t>(i)].cosine, 0.0);
    EXPECT_EQ(components.of[static_cast<std::size_t>(i)].sine, 0.0);
  }
}

TEST(IrregularCards, EndTheRunBehindTheSectionWhenTheSeaIsNotOnTheWatersPlane) {
  const std::string section = WaveControl{.IWTY = "4", .NORAMP = "1"}.card() +
                              IrregularCards{.rest = wind_sea("20.", {"1.", "", "0.1"})}.cards() + tens({"0.", "1."});
  WaveSection m(section);
  EXPECT_EQ(stop_of([] { WAVEIN(); }), status_fatal);
  EXPECT_EQ(m.times_reported("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE"), 1);
  EXPECT_TRUE(m.reports("WAVE FROCE MAGNIFICATION DATA"));
  WaveSection n(IrregularCards{.rest = wind_sea("20.", {"1.", "", "1.E-7"})}.section());
  EXPECT_EQ(stop_of([] { WAVEIN(); }), std::nullopt);
}

TEST(IrregularCards, EndTheRunAlsoForTheSeaOfAnEmbeddedWave) {
  WaveSection m(
      WaveControl{.IWTY = "8"}.card() + RegularWave{}.cards() +
      IrregularCards{.generation = "1", .rest = user_head("1", {"0.", "", "1."}) + tens({"10.", "1."})}.cards());
  EXPECT_EQ(stop_of([] { WAVEIN(); }), status_fatal);
  EXPECT_EQ(m.times_reported("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE"), 1);
}

TEST(IrregularCards, SolveInADataCheckToo) {
  WaveSection m(IrregularCards{.rest = wind_sea()}.section());
  set_fatal_flag();
  WAVEIN();
  EXPECT_EQ(wave.NCOMP, 27);
  EXPECT_GT(components.of[26].k, 0.0);
}

// --- time blocks ----------------------------------------------------------------------------------------------------

/// Phase in degrees of one user component of 8 s, 30 degrees on its card, with a start time and a block code.
double phase_of_block(const std::string& code, double start_time) {
  WaveSection m(
      IrregularCards{.time_block = code, .generation = "1", .rest = user_head("1") + tens({"8.", "2.", "30."})}
          .cards());
  wave.IWTY = wave_irregular;
  wave.sg = -1.0;
  wave.g = 9.81;
  IRRSEA(0, 0.0, start_time);
  const double phase = components.of[0].phase * 180.0 / std::numbers::pi;
  EXPECT_EQ(wave.time_block, code == "0" ? 0 : 1);
  return phase;
}

TEST(TimeBlocks, CountPhasesOfUserComponentsFromTheirStart) {
  for (const std::string code : {"0", "1"}) {
    EXPECT_NEAR(phase_of_block(code, 0.0), 30.0, 1e-12);
    EXPECT_NEAR(phase_of_block(code, 2.0), 30.0 - 90.0, 1e-12);
    EXPECT_NEAR(phase_of_block(code, 20.0), 30.0 - 900.0, 1e-10);
  }
}

TEST(TimeBlocks, OfCodeMinusOneLeavePhasesAloneAndBecomeOne) { EXPECT_NEAR(phase_of_block("-1", 20.0), 30.0, 1e-12); }

TEST(TimeBlocks, LeaveGeneratedPhasesAlone) {
  WaveSection m(IrregularCards{.time_block = "1", .rest = wind_sea()}.cards());
  wave.IWTY = wave_irregular;
  wave.sg = -1.0;
  wave.g = 9.81;
  IRRSEA(0, 0.0, 20.0);
  EXPECT_NEAR(components.of[0].phase * 180.0 / std::numbers::pi, 50.1420, 5e-5);
}

TEST(TimeBlocks, ReplaceTheComponentsOfTheBlockBefore) {
  WaveSection m(
      IrregularCards{.time_block = "1", .rest = wind_sea()}.section() +
      IrregularCards{.d = "40.", .generation = "1", .rest = user_head("2") + tens({"8.", "2."}) + tens({"9.", "3."})}
          .cards());
  WAVEIN();
  EXPECT_EQ(wave.NCOMP, 27);
  EXPECT_TRUE(IRRSEA(wave.period_code, wave.period_tolerance, 60.0));
  EXPECT_EQ(wave.NCOMP, 2);
  EXPECT_EQ(wave.time_block, 0);
  EXPECT_EQ(wave.d, 40.0);
  EXPECT_EQ(wave.upper_force, 2.5);
  EXPECT_EQ(wave.lower_force, -40.0);
}

}  // namespace
}  // namespace tidearc::test
