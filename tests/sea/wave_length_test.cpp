// Waves that have no length: what their theories end on outside of their range, and what the run does with them.
#include <cmath>

#include "irregular_section.h"
#include "sea/stream_solution.h"

namespace tidearc::test {
namespace {

const char no_length[] = "THE WAVE HAS NO FINITE LENGTH: NO LOADS OF THE SEA CAN BE FORMED";
const char not_positive[] = "THE LENGTH OF THE WAVE IS NOT POSITIVE: IT IS OUT OF THE RANGE OF ITS THEORY";

std::string deck(const std::string& IWTY, const RegularWave& card) { return WaveControl{IWTY}.card() + card.cards(); }

TEST(WaveLength, OfAUsualWaveOfAnyTheoryIsNotTold) {
  for (const std::string IWTY : {"1", "2", "5"}) {
    WaveSection m(deck(IWTY, {}));
    WAVEIN();
    EXPECT_FALSE(m.reports(no_length)) << IWTY;
    EXPECT_FALSE(m.reports(not_positive)) << IWTY;
    EXPECT_EQ(run.RUNMOD, 0);
  }
}

// The square of such a period is no number, and nothing of the wave is one then.
TEST(WaveLength, ThatIsNotFiniteLeavesACheckOfTheProblem) {
  for (const bool check : {false, true}) {
    WaveSection m(deck("1", {.T = "1.E200"}));
    run.check_run = check;
    run.RUNMOD = check ? 1 : 0;
    EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
    EXPECT_FALSE(std::isfinite(wave.k));
    EXPECT_TRUE(m.reports(error_box(no_length))) << m.report();
    EXPECT_TRUE(m.complains(no_length));
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_EQ(run.had_data_error, check);
  }
}

// At the breaking limit the fifth order's equations have a root with a negative length, on which Newton's method ends.
TEST(WaveLength, BelowZeroOnWhichAStokesWaveConvergesIsToldAndTheRunGoesOn) {
  WaveSection m(deck("2", {.H = "9.9055", .T = "10.", .d = "13.1209"}));
  WAVEIN();
  EXPECT_LT(wave.L, 0.0);
  EXPECT_FALSE(m.reports("WAVE SOLUTION FAILED"));
  EXPECT_TRUE(m.reports(warning_text(not_positive))) << m.report();
  EXPECT_TRUE(m.complains(not_positive));
  EXPECT_EQ(run.RUNMOD, 0);
}

// A current that is faster than the wave carries the crest away from where it goes.
TEST(WaveLength, BelowZeroOfAStreamFunctionOnAFastCurrentIsTold) {
  WaveSection m(WaveControl{.IWTY = "5", .current = "1"}.card() + current_header("1", "2") + tens({"0."}) +
                tens({"0.", "-1.", "0.", "0.", "20."}) + tens({"5.", "-1.", "0.", "0.", "20."}) +
                RegularWave{.H = "0.5", .T = "15.", .d = "5."}.cards());
  WAVEIN();
  EXPECT_LT(wave.C, 0.0);
  EXPECT_TRUE(m.reports(warning_text(not_positive))) << m.report();
  EXPECT_EQ(run.RUNMOD, 0);
}

// A first wave so small that it meets the tolerance at once, in water so deep that squares of sinh(9 k d) overflow.
TEST(WaveLength, OfATinyWaveInVeryDeepWaterIsNotTakenFromAStepThatOverflows) {
  WaveSection m(deck("5", {.H = "0.001", .T = "8.", .d = "700."}));
  EXPECT_EQ(stop_of(WAVEIN), status_fatal);
  EXPECT_EQ(m.times_reported("PROGRAM IS RESTARTING WITH MORE DAMPING."), 4);
  EXPECT_TRUE(m.reports(" *************** CONVERGENCE IMPOSSIBLE ******\n CHECK INPUT VARIABLES\n"));
  WaveSection lower(deck("5", {.H = "0.001", .T = "8.", .d = "700.", .order = "5"}));
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_NEAR(wave.L, 9.81 * 64.0 / (2.0 * std::numbers::pi), 1e-3) << "deep water";
}

// Frequencies that fall to zero: the component there has no end of a period.
TEST(WaveLength, OfAComponentOfFrequencyZeroLeavesACheckOfTheProblem) {
  WaveSection m(IrregularCards{.rest = wind_sea("20.", {"1.", "", ""}, "", "0.5", "0.", "-0.25")}.section());
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(wave.NCOMP, 3);
  EXPECT_EQ(m.times_reported(error_box(no_length)), 1);
  EXPECT_EQ(run.RUNMOD, 1);
}

TEST(WaveLength, OfAnApparentPeriodOutOfRangeLeavesACheckOfTheProblem) {
  WaveSection m(IrregularCards{.apparent = "1.E200", .rest = wind_sea()}.section());
  EXPECT_EQ(stop_of(WAVEIN), std::nullopt);
  EXPECT_EQ(m.times_reported(error_box(no_length)), 1);
  EXPECT_EQ(run.RUNMOD, 1);
}

}  // namespace
}  // namespace tidearc::test
