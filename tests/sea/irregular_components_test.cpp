// Components of an irregular sea: generated from spectra, given one by one, solved with and without a current.
#include "irregular_section.h"

namespace tidearc::test {
namespace {

struct ReadSea : WaveSection {
  explicit ReadSea(const IrregularCards& cards) : WaveSection(cards.section()) { WAVEIN(); }
};

const SeaComponent& component(int number) { return components.of[static_cast<std::size_t>(number - 1)]; }
double degrees(double radians) { return radians * 180.0 / std::numbers::pi; }

// Independent figures of the Pierson-Moskowitz sea of 20 m/s between 0.04 and 0.30 Hz: 27 components, significant
// height 8.51876, sum of amplitudes 11.2238, height 2.75291 at 0.07 Hz.
TEST(GeneratedComponents, HaveTheHeightsOfTheSpectrum) {
  const ReadSea m({.rest = wind_sea()});
  EXPECT_EQ(wave.NCOMP, 27);
  EXPECT_NEAR(2.0 * component(4).amplitude, 2.75291, 5e-6);
  EXPECT_NEAR(component(4).omega, 2.0 * std::numbers::pi * 0.07, 1e-14);
  EXPECT_NEAR(wave.upper_force, 11.2238, 5e-5);
  EXPECT_NEAR(wave.H, 8.51876, 5e-6);
  EXPECT_TRUE(m.reports("        SIGNIFICANT WAVE HEIGHT  =       8.51876\n")) << m.report();
}

TEST(GeneratedComponents, HaveThePhasesOfTheirSequence) {
  const ReadSea m({.rest = wind_sea()});
  EXPECT_NEAR(degrees(component(1).phase), 50.1420, 5e-5);
  EXPECT_NEAR(degrees(component(2).phase), -120.2160, 5e-5);
  EXPECT_NEAR(degrees(component(3).phase), 111.9253, 5e-5);
}

TEST(GeneratedComponents, SkipNumbersBeforeEachPhase) {
  const ReadSea m({.rest = wind_sea("20.", {"1.", "", ""}, "2")});
  // The second pair of the sequence stands behind two skipped numbers, the fourth behind six.
  EXPECT_NEAR(degrees(component(1).phase), -120.2160, 5e-5);
  EXPECT_GT(std::abs(degrees(component(2).phase) - 111.9253), 1.0);
}

TEST(GeneratedComponents, StartTheirSequenceAnewAtEachRead) {
  WaveSection m(IrregularCards{.rest = wind_sea()}.section() + IrregularCards{.rest = wind_sea()}.cards());
  WAVEIN();
  const double first = component(1).phase;
  IRRSEA(0, 0.0, 10.0);
  EXPECT_EQ(component(1).phase, first);
}

// Case W08 of the project's verification cases, g 9.80665: 8.53485134 over all frequencies; what lies above 1 Hz is
// 1 - exp(-B) = 2.745e-5 of the energy, half of that of the height.
TEST(GeneratedComponents, FourThousandHaveTheSignificantHeightOfTheSpectrum) {
  WaveSection m(
      IrregularCards{.d = "5000.", .rest = wind_sea("20.", {"1.", "", ""}, "", "0.", "0.9999", "0.00025")}.section());
  gravity.GRAV = 9.80665;
  WAVEIN();
  EXPECT_EQ(wave.NCOMP, 4000);
  EXPECT_NEAR(wave.H, 8.53485134 * (1.0 - 1.3723e-5), 1e-6);
  double square = 0.0;
  for (int i = 1; i <= wave.NCOMP; ++i) square += 0.5 * component(i).amplitude * component(i).amplitude;
  EXPECT_NEAR(4.0 * std::sqrt(square), wave.H, 1e-9);
}

TEST(GeneratedComponents, TakeAMinimumFrequencyOfZeroAsATenMillionth) {
  const ReadSea m({.rest = wind_sea("20.", {"1.", "", ""}, "", "", "0.2", "0.1")});
  EXPECT_EQ(wave.NCOMP, 2);  // (0.2 - 1e-7)/0.1 is below 2
  EXPECT_NEAR(component(1).omega, 2.0 * std::numbers::pi * 1e-7, 1e-20);
  EXPECT_EQ(component(1).amplitude, 0.0);
  EXPECT_NEAR(component(2).omega, 2.0 * std::numbers::pi * (0.1 + 1e-7), 1e-14);
}

TEST(GeneratedComponents, OfWhichThereAreTooManyAreCutAtFourThousand) {
  const std::string text = "NUMBER OF FREQUENCIES CAN NOT BE LARGER THAN 100";
  const ReadSea at_limit({.d = "5000.", .rest = wind_sea("20.", {"1.", "", ""}, "", "0.1", "0.49995", "0.0001")});
  EXPECT_EQ(wave.NCOMP, 4000);
  EXPECT_FALSE(at_limit.reports(text));
  const ReadSea above({.d = "5000.", .rest = wind_sea("20.", {"1.", "", ""}, "", "0.1", "0.50005", "0.0001")});
  EXPECT_EQ(wave.NCOMP, 4000);
  EXPECT_TRUE(above.reports(error_box(text)));
}

TEST(GeneratedComponents, OfAnEmptyBandAreNone) {
  const ReadSea m({.rest = wind_sea("20.", {"1.", "", ""}, "", "0.3", "0.1", "0.01")});
  EXPECT_EQ(wave.NCOMP, 0);
  EXPECT_EQ(wave.H, 0.0);
  EXPECT_EQ(wave.upper_force, 0.0);
  EXPECT_EQ(IRRETA(1.0, {1.0, 2.0, 3.0}), 0.0);
}

TEST(GeneratedComponents, OfANegativeStepHaveNoHeight) {
  const ReadSea m({.rest = wind_sea("20.", {"1.", "", ""}, "", "0.1", "0.1", "-0.01")});
  EXPECT_EQ(wave.NCOMP, 1);
  EXPECT_EQ(component(1).amplitude, 0.0);
}

// --- a spectrum by points -------------------------------------------------------------------------------------------

std::string spectrum_head(const std::string& points, const std::string& skip = "") {
  return fields(5, {points}) + fields(10, {"1.", "", ""}) + fields(5, {skip}) + "\n";
}

TEST(SpectrumCards, GiveHeightsBetweenTheirPoints) {
  const ReadSea m({.spectrum = "1",
                   .rest = spectrum_head("5") + tens({"0.05", "0.", "0.10", "8.", "0.15", "4.", "0.20", "2."}) +
                           tens({"0.25", "0."}) + tens({"0.075", "0.225", "0.05"})});
  EXPECT_EQ(wave.NCOMP, 4);
  // S = 4, 6, 3, 1 at 0.075, 0.125, 0.175, 0.225; height 2 sqrt(2 S df).
  EXPECT_NEAR(2.0 * component(1).amplitude, 2.0 * std::sqrt(0.4), 1e-12);
  EXPECT_NEAR(2.0 * component(2).amplitude, 2.0 * std::sqrt(0.6), 1e-12);
  EXPECT_NEAR(2.0 * component(3).amplitude, 2.0 * std::sqrt(0.3), 1e-12);
  EXPECT_NEAR(2.0 * component(4).amplitude, 2.0 * std::sqrt(0.1), 1e-12);
  EXPECT_NEAR(wave.H, 4.0 * std::sqrt(0.7), 1e-12);
  EXPECT_FALSE(m.reports("FREQUENCY RANGE"));
}

TEST(SpectrumCards, AreToldWhenAFrequencyLiesBeyondThem) {
  const ReadSea m(
      {.spectrum = "1",
       .rest = spectrum_head("3") + tens({"0.10", "0.", "0.15", "4.", "0.20", "3."}) + tens({"0.125", "0.43", "0.1"})});
  EXPECT_EQ(wave.NCOMP, 4);
  EXPECT_EQ(m.times_reported(error_box("FREQUENCY RANGE SPECIFIED IS BEYOND THE SPECTRUM")), 3);
  // Continued: 3 - 20 (f - 0.2) = 2.5 at 0.225, 0.5 at 0.325, below zero at 0.425.
  EXPECT_NEAR(component(2).amplitude, std::sqrt(2.0 * 2.5 * 0.1), 1e-12);
  EXPECT_NEAR(component(3).amplitude, std::sqrt(2.0 * 0.5 * 0.1), 1e-12);
  EXPECT_EQ(component(4).amplitude, 0.0);
}

/// `count` points (0.01 i, i^2) on their cards.
std::string many_points(int count) {
  std::string cards;
  std::vector<std::string> card;
  for (int i = 1; i <= count; ++i) {
    card.push_back("0." + std::string(i < 10 ? "0" : "") + std::to_string(i));
    card.push_back(std::to_string(i * i) + ".");
    if (card.size() == 8 || i == count) {
      cards += tens(card);
      card.clear();
    }
  }
  return cards;
}

TEST(SpectrumCards, HoldTwentyPointsAndReadOverMore) {
  const std::string text = "NUMBER OF POINTS IN SPECTRA CAN NOT BE LARGER THAN 20,";
  const ReadSea twenty({.spectrum = "1", .rest = spectrum_head("20") + many_points(20) + tens({"0.1", "0.1", "0.1"})});
  EXPECT_FALSE(twenty.reports(text));
  EXPECT_NEAR(component(1).amplitude, std::sqrt(2.0 * 100.0 * 0.1), 1e-12);
  // The point at 0.23 is not kept: 400 + 3900 (0.23 - 0.20) comes out of the last interval.
  const ReadSea more({.spectrum = "1", .rest = spectrum_head("25") + many_points(25) + tens({"0.23", "0.23", "0.1"})});
  EXPECT_TRUE(more.reports(error_box(text)));
  EXPECT_TRUE(more.reports("FREQUENCY RANGE SPECIFIED IS BEYOND THE SPECTRUM"));
  EXPECT_EQ(wave.NCOMP, 1);
  EXPECT_NEAR(component(1).amplitude, std::sqrt(2.0 * 517.0 * 0.1), 1e-9);
}

TEST(SpectrumCards, WithoutPointsGiveStillWater) {
  const ReadSea m({.spectrum = "1", .rest = spectrum_head("0") + tens({"0.1", "0.1", "0.1"})});
  EXPECT_EQ(wave.NCOMP, 1);
  EXPECT_EQ(component(1).amplitude, 0.0);
}

// --- given by the user ----------------------------------------------------------------------------------------------

TEST(UserComponents, HaveAmplitudesOfHalfTheirHeightsAndTheirSum) {
  const ReadSea m(
      {.generation = "1", .rest = user_head("2") + tens({"10.", "2.", "90."}) + tens({"8.", "3.", "-45."})});
  EXPECT_EQ(wave.NCOMP, 2);
  EXPECT_EQ(component(1).amplitude, 1.0);
  EXPECT_EQ(component(2).amplitude, 1.5);
  EXPECT_NEAR(degrees(component(1).phase), 90.0, 1e-12);
  EXPECT_NEAR(degrees(component(2).phase), -45.0, 1e-12);
  EXPECT_NEAR(wave.H, 5.09902, 5e-6);  // the square root of 2 (4 + 9)
  EXPECT_TRUE(m.reports("SIGNIFICANT WAVE HEIGHT  =       5.09902\n"));
  EXPECT_EQ(wave.upper_force, 2.5);
}

TEST(UserComponents, RunEachItsOwnWayWithCodeTwo) {
  const ReadSea m({.generation = "2",
                   .rest = user_head("3", {"", "", ""}) + tens({"10.", "2.", "", "3.", "4.", ""}) +
                           tens({"8.", "3.", "", "", "-2.", ""}) + tens({"9.", "1."})});
  EXPECT_NEAR(component(1).cosine, 0.6, 1e-15);
  EXPECT_NEAR(component(1).sine, 0.8, 1e-15);
  EXPECT_EQ(component(2).cosine, 0.0);
  EXPECT_EQ(component(2).sine, -1.0);
  EXPECT_EQ(component(3).cosine, 0.0);
  EXPECT_EQ(component(3).sine, 0.0);
  EXPECT_EQ(m.times_reported(error_box("WAVE DIRECTION IS NOT SPECIFIED")), 1);
}

TEST(UserComponents, MeasureTheirDirectionOnTheHorizontalAxes) {
  WaveSection m(
      IrregularCards{.generation = "1", .rest = user_head("1", {"", "0.6", "0.8"}) + tens({"10.", "2."})}.section());
  gravity.direction = {-1.0, 0.0, 0.0};  // horizontal axes Y and Z
  WAVEIN();
  EXPECT_NEAR(component(1).cosine, 0.6, 1e-15);
  EXPECT_NEAR(component(1).sine, 0.8, 1e-15);
}

std::string many_components(int count) {
  std::string cards;
  for (int i = 0; i < count; ++i) cards += tens({"5.", "0.01"});
  return cards;
}

TEST(UserComponents, OfWhichThereAreTooManyAreCutAtFourThousand) {
  const std::string text = "NUMBER OF COMPONENTS EXCEEDS 4000, SET = 4000";
  const ReadSea at_limit({.generation = "1", .rest = user_head(" 4000") + many_components(4000)});
  EXPECT_FALSE(at_limit.reports(text));
  EXPECT_EQ(wave.NCOMP, 4000);
  const ReadSea above({.generation = "1", .rest = user_head(" 4001") + many_components(4000)});
  EXPECT_TRUE(above.reports(error_box(text)));
  EXPECT_EQ(wave.NCOMP, 4000);
}

TEST(UserComponents, OfANegativeCountAreNone) {
  const ReadSea m({.generation = "1", .rest = user_head("-3")});
  EXPECT_EQ(wave.NCOMP, 0);
}

TEST(UserComponents, WithoutAPeriodEndTheRun) {
  for (const std::string T : {"0.", "-5."}) {
    WaveSection m(IrregularCards{.generation = "1", .rest = user_head("1") + tens({T, "2."})}.section());
    EXPECT_EQ(stop_of([] { WAVEIN(); }), status_fatal);
    EXPECT_TRUE(m.reports(framed('F', "     ERROR-----  WAVE PERIOD IS NOT POSITIVE.")));
    EXPECT_TRUE(m.complains("line 5, columns 1-10"));
  }
}

// --- solution -------------------------------------------------------------------------------------------------------

TEST(ComponentSolution, SatisfiesTheDispersionRelation) {
  const ReadSea m({.iterations = "900", .tolerance = "1.E-13", .rest = wind_sea()});
  for (int i = 1; i <= wave.NCOMP; ++i) {
    const SeaComponent& c = component(i);
    EXPECT_NEAR(c.omega * c.omega, 9.81 * c.k * std::tanh(c.k * 50.0), 1e-10 * c.omega * c.omega);
    EXPECT_NEAR(c.omega_water, c.omega, 1e-15);
  }
}

TEST(ComponentSolution, ThatDoesNotConvergeIsToldForEachLongComponent) {
  const ReadSea m(
      {.generation = "1", .rest = user_head("3") + tens({"25.", "1."}) + tens({"20.", "1."}) + tens({"5.", "1."})});
  EXPECT_EQ(m.times_reported("WAVE SOLUTION FAILED AFTER    20 ITERATIONS WITH TOLERANCE OF "), 2);
}

// Closed form in deep water: L = g T^2/(2 pi) = 156.1 for 10 s. The printed angle takes 3.14 for the circle's number:
// acos(0.6) 180/3.14 = 53.157, taken from 360 for a direction with a negative second component.
TEST(ComponentSolution, PrintsALineForEachComponent) {
  const ReadSea m({.d = "900.",
                   .generation = "2",
                   .rest = user_head("2", {"", "", ""}) + tens({"10.", "2.", "30.", "1.", "", ""}) +
                           tens({"5.", "3.", "-60.", "0.6", "-0.8", ""})});
  const std::string gap = "       ";  // four blanks of a field, three between fields
  EXPECT_TRUE(m.reports("\n\n               1             0.1000" + gap + " 10.00" + gap + " 2.000" + gap + " 30.00" +
                        gap + "0.1000" + gap + " 10.00" + gap + " 156.1" + gap + " 0.000\n"))
      << m.report();
  EXPECT_TRUE(m.reports("\n\n               2             0.2000" + gap + " 5.000" + gap + " 3.000" + gap + "-60.00" +
                        gap + "0.2000" + gap + " 5.000" + gap + " 39.03" + gap + " 306.8\n"));
}

/// A sea of components on a uniform current of 1 m/s along X, g 9.80665.
struct SeaOnCurrent : WaveSection {
  explicit SeaOnCurrent(const std::string& period_code, const std::string& type = "4")
      : WaveSection(WaveControl{.IWTY = type, .current = "1"}.card() + current_header("1", "2", period_code, "1.E-13") +
                    tens({"0."}) + tens({"0.", "1.", "0.", "0.", "1."}) + tens({"50.", "1.", "0.", "0.", "1."}) +
                    (type == "8" ? RegularWave{}.cards() : "") +
                    IrregularCards{.generation = "2",
                                   .iterations = "900",
                                   .tolerance = "1.E-14",
                                   .rest = user_head("3", {"", "", ""}) + tens({"10.", "8.", "", "1.", "", ""}) +
                                           tens({"10.", "8.", "", "-0.5", "0.8660254", ""}) +
                                           tens({"10.", "8.", "", "", "1.", ""})}
                        .cards()) {
    gravity.GRAV = 9.80665;
    WAVEIN();
  }
};

double water_period(int number) { return 2.0 * std::numbers::pi / component(number).omega_water; }
double length(int number) { return 2.0 * std::numbers::pi / component(number).k; }

// Doppler-shifted linear waves of 10 s in 50 m: 10.6320813 s and 168.207484 m along the current, 9.66029434 s and
// 142.186243 m against half of it (from (omega - k U)^2 = g k tanh kd); across it nothing changes.
TEST(ComponentSolution, TakesTheCurrentAlongEachComponent) {
  const SeaOnCurrent m("90");
  EXPECT_NEAR(water_period(1), 10.6320813, 1e-6);
  EXPECT_NEAR(length(1), 168.207484, 1e-4);
  EXPECT_NEAR(water_period(2), 9.66029434, 1e-6);
  EXPECT_NEAR(length(2), 142.186243, 1e-4);
  EXPECT_NEAR(water_period(3), 10.0, 1e-12);
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(component(i).omega, 2.0 * std::numbers::pi / 10.0, 1e-14);
}

TEST(ComponentSolution, LeavesThePeriodAloneWithoutAPeriodCode) {
  const SeaOnCurrent m("");
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(water_period(i), 10.0, 1e-12);
}

TEST(ComponentSolution, LeavesThePeriodAloneInAnEmbeddedSea) {
  const SeaOnCurrent m("20", "8");
  for (int i = 1; i <= 3; ++i) EXPECT_NEAR(water_period(i), 10.0, 1e-12);
}

TEST(ComponentSolution, WarnsOnceOfACurrentBelowTheBed) {
  const std::string current = current_header("1", "2", "3") + tens({"0."}) + tens({"0.", "1.", "0.", "0.", "1."}) +
                              tens({"60.", "1.", "0.", "0.", "1."});
  WaveSection m(WaveControl{.IWTY = "4", .current = "1"}.card() + current + IrregularCards{.rest = wind_sea()}.cards());
  WAVEIN();
  EXPECT_EQ(m.times_reported("CURRENT WAS DEFINED BELOW THE MUD LINE"), 1);
}

// --- what stays in force --------------------------------------------------------------------------------------------

TEST(IrregularSea, LeavesTheLastComponentInForce) {
  const ReadSea m({.d = "900.", .generation = "1", .rest = user_head("2") + tens({"10.", "2."}) + tens({"5.", "3."})});
  EXPECT_EQ(wave.T_water, 5.0);
  EXPECT_NEAR(wave.L, 9.81 * 25.0 / (2.0 * std::numbers::pi), 1e-9);
  EXPECT_NEAR(wave.k, 2.0 * std::numbers::pi / wave.L, 1e-12);
  EXPECT_NEAR(wave.H, std::sqrt(26.0), 1e-12);
}

TEST(IrregularSea, SolvesTheApparentPeakPeriodAtTheEnd) {
  const ReadSea m({.d = "900.", .apparent = "12.", .generation = "1", .rest = user_head("1") + tens({"5.", "3."})});
  EXPECT_EQ(wave.T_water, 12.0);
  EXPECT_NEAR(wave.L, 9.81 * 144.0 / (2.0 * std::numbers::pi), 1e-9);
  EXPECT_NEAR(wave.C, 9.81 * 12.0 / (2.0 * std::numbers::pi), 1e-9);
  EXPECT_NEAR(component(1).omega, 2.0 * std::numbers::pi / 5.0, 1e-14);
  const ReadSea n({.d = "900.", .apparent = "-12.", .generation = "1", .rest = user_head("1") + tens({"5.", "3."})});
  EXPECT_EQ(wave.T_water, 5.0);
}

TEST(IrregularSea, LeavesOneRecordForThePostProcessing) {
  const ReadSea m({.d = "900.",
                   .apparent = "12.",
                   .generation = "1",
                   .rest = user_head("1", {"3.", "4.", ""}) + tens({"5.", "3."})});
  EXPECT_EQ(output.NTAP25, 2);
  EXPECT_EQ(lines_of(m.scratch.contents("fort.25")).size(), 1U);
  // T 12, H = sqrt(18), direction 0.6, 0.8.
  EXPECT_EQ(lines_of(m.scratch.contents("fort.25"))[0], "  12.000       4.2426      0.60000      0.80000");
}

/// A stream function wave with a sea of other depth, direction, codes and limits.
struct EmbeddedSea : WaveSection {
  EmbeddedSea()
      : WaveSection(WaveControl{.IWTY = "8"}.card() +
                    RegularWave{.peak_time = "33.", .upper = "9.", .lower = "-31.", .current_stretching = "3"}.cards() +
                    IrregularCards{.d = "40.",
                                   .limit = "20.",
                                   .ISTRCH = "1",
                                   .time_block = "1",
                                   .current_stretching = "2",
                                   .apparent = "7.",
                                   .generation = "1",
                                   .rest = user_head("1", {"", "1.", ""}) + tens({"5.", "3."})}
                        .cards()) {
    WAVEIN();
  }
};

TEST(SeaBesideAStreamFunction, LeavesTheStreamFunctionWaveInForce) {
  const EmbeddedSea m;
  EXPECT_EQ(wave.H, 12.0);
  EXPECT_EQ(wave.T_water, 12.0);
  EXPECT_EQ(wave.T_structure, 12.0);
  EXPECT_EQ(wave.d, 50.0);
  EXPECT_EQ(wave.mudline, -50.0);
  EXPECT_EQ(wave.upper_force, 9.0);
  EXPECT_EQ(wave.lower_force, -31.0);
  EXPECT_EQ(wave.lower_current, -31.0);
  EXPECT_EQ(wave.peak_time, 33.0);
  EXPECT_EQ(wave.direction[0], 1.0);
  EXPECT_EQ(wave.direction[1], 0.0);
  // Length of the steady wave by an independent solution (see the stream function's tests): 211.43.
  EXPECT_NEAR(wave.L, 211.43, 0.05);
  EXPECT_NEAR(wave.C * wave.T_water, wave.L, 1e-12 * wave.L);
  EXPECT_NEAR(wave.k * wave.L, 2.0 * std::numbers::pi, 1e-9);
}

TEST(SeaBesideAStreamFunction, KeepsTheSeaBesideIt) {
  const EmbeddedSea m;
  EXPECT_EQ(wave.NCOMP, 1);
  EXPECT_EQ(wave.d_irregular, 40.0);
  EXPECT_EQ(wave.ISTRCH, 1);
  EXPECT_EQ(wave.current_stretching, 2);
  EXPECT_EQ(wave.time_block, 1);
  EXPECT_EQ(component(1).cosine, 0.0);
  EXPECT_EQ(component(1).sine, 1.0);
  EXPECT_NEAR(2.0 * std::numbers::pi / component(1).k, 39.03, 0.01);
}

}  // namespace
}  // namespace tidearc::test
