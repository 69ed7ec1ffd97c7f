// WAVSOL on the wave of the run, its failure box on report and progress file, and the period of a wave on a current.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

#include "regular_waves.h"
#include "run/units.h"
#include "run/workpool.h"
#include "scratch.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

constexpr double pi = std::numbers::pi;
constexpr double tolerance = 1e-6;
constexpr int iterations = 20;
const std::string row = " " + std::string(130, 'F') + "\n";
const std::string warning_row = " " + std::string(130, 'W') + "\n";

void set_wave(WaveType type, double H, double T, double d, double g = 9.81) {
  wave = {};
  wave.IWTY = type;
  wave.H = H;
  wave.T_structure = wave.T_water = T;
  wave.d = d;
  wave.g = g;
}

// A solution with the current U: rounds of the period at most, and the tolerance of the change.
void solve_on_current(double U, int rounds = 20, double change = 1e-4) {
  wave.current_code = 1;
  wave.period_code = rounds;
  wave.period_tolerance = change;
  WAVSOL(tolerance, iterations);
  solve_period_with_current(U, tolerance, iterations);
}

// A scratch folder with the progress file in it.
struct Folder : test::Scratch {
  Folder() { open_formatted(UNIT_PROGRESS, "TAP53", OpenMode::fresh); }
  std::string progress() const { return contents("TAP53"); }
};

TEST(Wavsol, LeavesALinearWave) {
  const Folder folder;
  set_wave(wave_airy, 12.0, 12.0, 50.0);
  WAVSOL(tolerance, iterations);
  EXPECT_NEAR(wave.L, 204.833, 0.001);
  EXPECT_DOUBLE_EQ(wave.k, 2.0 * pi / wave.L);
  EXPECT_DOUBLE_EQ(wave.C, wave.L / 12.0);
  EXPECT_EQ(wave.F[0], 0.0);
  EXPECT_EQ(folder.report() + folder.progress(), "");
}

TEST(Wavsol, ComponentsOfAnIrregularSeaAreLinearWaves) {
  const Folder folder;
  for (const WaveType type : {wave_irregular, wave_embedded}) {
    set_wave(type, 12.0, 12.0, 50.0);
    WAVSOL(tolerance, iterations);
    EXPECT_NEAR(wave.L, 204.833, 0.001);
    EXPECT_EQ(wave.F[0], 0.0);
  }
}

TEST(Wavsol, LeavesAStokesWaveForThePeriodInTheWater) {
  const Folder folder;
  set_wave(wave_stokes, 12.0, 12.0, 50.0);
  wave.T_structure = 99.0;
  WAVSOL(tolerance, iterations);
  EXPECT_NEAR(wave.L, 211.372, 0.001);
  EXPECT_NEAR(wave.C, 17.6144, 0.0001);
  EXPECT_NEAR(wave.F[0], 0.174138, 1e-6);
  EXPECT_NEAR(wave.G[0], 1.417165, 1e-6);
  EXPECT_NEAR(wave.Q, 15.8651, 0.0001);
  EXPECT_NEAR((wave.F[0] + wave.F[1] + wave.F[2] + wave.F[3] + wave.F[4]) / wave.k, 6.8169, 0.0001);
  EXPECT_EQ(folder.report() + folder.progress(), "");
}

TEST(Wavsol, TellsAnIterationThatDidNotEndOnReportAndProgressFileAndGoesOn) {
  const Folder folder;
  set_wave(wave_airy, 5.0, 10.0, 12.0);
  WAVSOL(tolerance, iterations);
  const std::string box =
      row + "     ERROR -----WAVE SOLUTION FAILED AFTER    20 ITERATIONS WITH TOLERANCE OF     0.10000E-05\n" + row;
  EXPECT_EQ(folder.report(), box);
  EXPECT_EQ(folder.progress(), box);
  EXPECT_NEAR(wave.L, 99.764, 0.001) << "the last iterate";
  WAVSOL(tolerance, 200);
  EXPECT_EQ(folder.report(), box) << "200 iterations end without a word";
  EXPECT_NEAR(wave.L, 99.727, 0.001);
}

TEST(Wavsol, TheCountOfTheBoxIsTheMaximum) {
  const Folder folder;
  set_wave(wave_stokes, 0.5, 15.0, 5.0);
  WAVSOL(1e-7, 12);
  EXPECT_NE(folder.report().find("AFTER    12 ITERATIONS WITH TOLERANCE OF     0.10000E-06\n"), std::string::npos);
  set_wave(wave_stokes, 0.5, 15.0, 5.0);
  WAVSOL(tolerance, iterations);
  EXPECT_NEAR(wave.L, -104.9, 0.05) << "the last iterate, out of the theory's range";
}

const std::string deep_line = "        WAVE SOLUTION BASED ON DEEP WATER STOKES V\n";
const std::string ratio_box = row + "     ERROR -----WAVE SOLUTION FAILED D/LRATIO TOO LARGE\n" + row;

TEST(Wavsol, NamesTheDeepWaterFormAboveItsRatio) {
  const Folder folder;
  const double L0 = 9.81 * 25.0 / (2.0 * pi);
  set_wave(wave_stokes, 3.0, 5.0, 1.09999 * L0);
  WAVSOL(tolerance, iterations);
  EXPECT_EQ(folder.report(), "");
  set_wave(wave_stokes, 3.0, 5.0, 1.10001 * L0);
  WAVSOL(tolerance, iterations);
  EXPECT_EQ(folder.report(), deep_line);
  EXPECT_EQ(folder.progress(), "");
}

TEST(Wavsol, AboveThreeDeepWaterLengthsTheRatioIsToldAndTheSolutionGoesOn) {
  const Folder folder;
  const double L0 = 9.81 * 25.0 / (2.0 * pi);
  set_wave(wave_stokes, 3.0, 5.0, 2.9999 * L0);
  WAVSOL(tolerance, iterations);
  EXPECT_EQ(folder.report(), deep_line);
  set_wave(wave_stokes, 3.0, 5.0, 121.0015);  // 3.1
  WAVSOL(tolerance, iterations);
  EXPECT_EQ(folder.report(), deep_line + deep_line + ratio_box);
  EXPECT_EQ(folder.progress(), ratio_box);
  EXPECT_NEAR(wave.L, 41.1168, 0.0001);
  EXPECT_NEAR(wave.C, 8.22336, 0.00001);
  set_wave(wave_airy, 3.0, 5.0, 121.0015);
  WAVSOL(tolerance, iterations);
  EXPECT_EQ(folder.progress(), ratio_box) << "a linear wave has no such limit";
}

TEST(PeriodWithCurrent, OfALinearWaveIsThatOfTheMovingFrame) {
  const Folder folder;
  for (const auto& of : test::doppler_references) {
    set_wave(wave_airy, of.H, of.T_structure, of.d, 9.80665);
    solve_on_current(of.U, 50, 1e-9);
    EXPECT_NEAR(wave.T_water / of.T_water, 1.0, 1e-6) << of.U;
    EXPECT_NEAR(wave.L / of.L, 1.0, 1e-6) << of.U;
    EXPECT_NEAR(wave.C / of.C, 1.0, 1e-6) << of.U;
    EXPECT_NEAR(wave.L / of.T_structure, wave.C + of.U, 1e-6) << "the crest over the ground";
    EXPECT_EQ(wave.T_structure, of.T_structure);
  }
  EXPECT_EQ(folder.report(), "");
}

// Computed by an independent program, tolerance 1E-4: period, length, 2 pi / k, celerity.
TEST(PeriodWithCurrent, EndsOnThePeriodOfTheLastRoundAndTheWaveOfTheLastSolution) {
  const Folder folder;
  set_wave(wave_stokes, 18.0, 14.0, 75.0);
  solve_on_current(1.5);
  EXPECT_NEAR(wave.T_water, 14.9652, 0.0001);
  EXPECT_NEAR(wave.L, 325.616, 0.001);
  EXPECT_DOUBLE_EQ(wave.L, wave.C * wave.T_water);
  EXPECT_NEAR(2.0 * pi / wave.k, 325.594, 0.001);
  EXPECT_NEAR(wave.C, 21.7583, 0.0001);
  set_wave(wave_stokes, 18.0, 14.0, 75.0);
  solve_on_current(-1.0);
  EXPECT_NEAR(wave.T_water, 13.3171, 0.0001);
  EXPECT_NEAR(wave.C, 20.5011, 0.0001);
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  solve_on_current(1.5);
  EXPECT_NEAR(wave.T_water, 14.9936, 0.0001);
  EXPECT_NEAR(wave.C, 21.1342, 0.0001);
  EXPECT_EQ(folder.report(), "");
}

std::string not_converged(const std::string& rounds) {
  return warning_row + "     WARNING -----WAVE PERIOD COMPUTATION WITH CURRENT EFFECT DOES NOT CONVERGE AFTER " +
         rounds + " ITERATIONS    \n" + warning_row;
}

// The storm wave needs three rounds, the linear one four.
TEST(PeriodWithCurrent, BothSidesOfTheCountOfRounds) {
  const Folder folder;
  set_wave(wave_stokes, 18.0, 14.0, 75.0);
  solve_on_current(1.5, 3);
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  solve_on_current(1.5, 4);
  EXPECT_EQ(folder.report(), "");
  set_wave(wave_stokes, 18.0, 14.0, 75.0);
  solve_on_current(1.5, 2);
  EXPECT_EQ(folder.report(), not_converged("    2"));
  EXPECT_NEAR(wave.T_water, 14.9652, 0.005) << "the run goes on with the last round";
  EXPECT_NEAR(wave.L * wave.k, 2.0 * pi, 1e-6) << "solved anew for its period";
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  solve_on_current(1.5, 3);
  EXPECT_EQ(folder.report(), not_converged("    2") + not_converged("    3"));
}

TEST(PeriodWithCurrent, IsNotTouchedWithoutCurrentOrWithoutPeriodCode) {
  const Folder folder;
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  solve_on_current(1.5, 0);
  EXPECT_EQ(wave.T_water, 14.0);
  EXPECT_NEAR(wave.L, 284.510, 0.001);
  wave.period_code = 20;
  wave.current_code = 0;
  solve_period_with_current(1.5, tolerance, iterations);
  EXPECT_EQ(wave.T_water, 14.0);
}

// Two times of two levels; the deepest stands at the first time.
void lay_current(double deepest) {
  storage = {};
  pool.allocate(1000);
  wave.NTIME = 2;
  wave.NLEVEL = 2;
  wave.KCURT = carve_reals(2 + 4 + 12);
  const Reals table = pool.reals(wave.KCURT, 18);
  const double head[] = {0.0, 10.0, 0.0, deepest, 0.0, 30.0};
  for (int i = 1; i <= 18; ++i) table(i) = i <= 6 ? head[i - 1] : 0.0;
}

TEST(PeriodWithCurrent, ACurrentLevelUnderTheBedIsTold) {
  const Folder folder;
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  lay_current(75.0);
  solve_on_current(1.5);
  EXPECT_EQ(folder.report(), "") << "the bed itself is no error";
  const std::string box = warning_row + "     WARNING -----CURRENT WAS DEFINED BELOW THE MUD LINE\n" + warning_row;
  set_wave(wave_airy, 18.0, 14.0, 75.0);
  lay_current(75.01);
  solve_on_current(1.5);
  EXPECT_EQ(folder.report(), box);
  EXPECT_NEAR(wave.T_water, 14.9936, 0.0001) << "the run goes on";
  wave.IWTY = wave_irregular;
  wave.T_water = 14.0;
  solve_on_current(1.5);
  EXPECT_EQ(folder.report(), box) << "a component does not tell it again";
  tell_current_below_bed();
  EXPECT_EQ(folder.report(), box + box);
  pool.release();
}

}  // namespace
}  // namespace tidearc
