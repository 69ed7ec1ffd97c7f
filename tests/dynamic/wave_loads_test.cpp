// Waves in dynamic macros: when their load is formed, at what level it acts, and what the cards ask for.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "dyn1_deck.h"
#include "dynamic_run.h"
#include "pile_deck.h"
#include "row_deck.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "sea/sea_factors.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Steps of 0.1 s.
Dyn2Cards steps(int NSTEP) {
  Dyn2Cards cards;
  cards.DT = 0.1;
  cards.NSTEP = NSTEP;
  cards.NINIT = -1;
  cards.TOL = 1.0E6;
  return cards;
}
std::string dyn2(const Dyn2Cards& cards) { return "DYN2    WAVES\n" + dyn2_text(cards); }

DynamicResult run(const Dyn2Cards& cards, PileDeck deck = {}) {
  deck.macros = dyn2(cards);
  return run_dynamic(deck.text());
}

TEST(WaveLoads, MoveAStructureThatStaysAtRestWithoutWaves) {
  PileDeck still;
  still.IWTY = 0;
  still.wave_cards = "";
  EXPECT_EQ(run(steps(20), still).U[0], 0.0);
  EXPECT_GT(std::abs(run(steps(20)).U[0]), 0.01);
}

// Iterations that formed the drag anew from their trial velocities would end elsewhere.
TEST(WaveLoads, AreFormedOnceForAllIterationsOfAStep) {
  Dyn2Cards iterated = steps(40);
  iterated.MAXIT = 4;
  iterated.TOL = 0.0;
  const double once = run(steps(40)).U[0];
  EXPECT_NEAR(run(iterated).U[0], once, 1.0E-12 * std::abs(once));
}

TEST(WaveLoads, WithRelativeVelocityConvergeWithTheStepToOneMotion) {
  const auto end = [](double DT) {
    Dyn2Cards cards = steps(static_cast<int>(8.0 / DT + 0.5));
    cards.DT = DT;
    return run(cards).U[0];
  };
  const double coarse = end(0.1), middle = end(0.05), fine = end(0.025);
  EXPECT_NEAR((coarse - middle) / (middle - fine), 2.0, 0.5);  // the drag lags by one step: first order
}

TEST(WaveLoads, OfConstantStepsAreThoseOfVariableOnesWithoutEvents) {
  Dyn1CardValues variable;
  variable.DT = 0.1;
  variable.NSMAX = 40;
  variable.NINIT = -1;
  variable.KACC = 1;
  PileDeck deck;
  deck.macros = dyn1_text(variable);
  const double u = run(steps(40)).U[0];
  EXPECT_NEAR(run_dynamic(deck.text()).U[0], u, 1.0E-9 * std::abs(u));
}

// The level of a search that starts at 0 and has risen once is PRECF: half the load, absolute velocities, half the way.
TEST(WaveLoads, OfACapacitySearchStandAtItsLoadLevel) {
  Dyn1CardValues search;
  search.KSOL = 3;
  search.DT = search.DTMIN = search.DTMAX = 0.1;
  search.INCF = 1.0;
  search.NSMAX = 1;
  search.NINIT = -1;
  search.KACC = 1;
  search.VCUT = 1.0E6;
  PileDeck deck;
  deck.relative_velocity = 0;
  const auto after_one_step = [&](double PRECF, double PRECMX) {
    search.PRECF = PRECF;
    search.PRECMX = PRECMX;
    PileDeck with = deck;
    with.macros = dyn1_text(search);
    return run_dynamic(with.text()).U[0];
  };
  const double full = after_one_step(1.0, 9.0);
  EXPECT_NE(full, 0.0);
  EXPECT_NEAR(after_one_step(0.5, 9.0), 0.5 * full, 1.0E-12 * std::abs(full));
  EXPECT_EQ(sea_factors.wave, 0.5);
}

TEST(WaveLoads, GrowOverTheRampTime) {
  PileDeck ramped;
  ramped.relative_velocity = 0;
  PileDeck full = ramped;
  ramped.ramp = 1000.0;
  // Absolute velocities: one step of 0.1 s under a ten thousandth of the load.
  const double u = run(steps(1), full).U[0];
  EXPECT_LT(std::abs(run(steps(1), ramped).U[0]), 2.0E-4 * std::abs(u));
}

TEST(WaveOutput, WithoutASolutionLeavesTheStructureAtRestAndWritesItsLoads) {
  Dyn2Cards cards = steps(5);
  cards.KRISAV = 1;
  cards.ISLULT = 1;
  const DynamicResult result = run(cards);
  EXPECT_EQ(result.U[0], 0.0);
  EXPECT_EQ(result.TIME, 0.5);
  EXPECT_TRUE(has(result.files.progress, " COMPLETED: MAXIMUM NUMBER OF STEPS REACHED"));
}

/// An Airy wave whose drag is beyond all numbers.
PileDeck endless_wave() {
  PileDeck deck;
  deck.relative_velocity = 0;
  deck.wave_cards.replace(0, 10, "    1.E200");
  return deck;
}

TEST(WaveLoads, ThatAreNotFiniteEndTheMacroAndNameTheNode) {
  const DynamicResult result = run(steps(3), endless_wave());
  EXPECT_TRUE(
      has(result.files.report, " SOLUTION IS NOT FINITE  STEP     1  TIME  0.1000E+00  AT THE WAVE LOAD OF NODE"))
      << result.files.report;
  EXPECT_TRUE(has(result.files.progress, " TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE"));
}

// Of constrained components no equation would ever tell.
TEST(WaveLoads, ThatAreNotFiniteAtASupportLoseTheStepToo) {
  PileDeck deck = endless_wave();
  deck.supports =
      "    1    111111    2\n"
      "    3    011111\n"
      "000000\n";
  const DynamicResult result = run(steps(3), deck);
  EXPECT_TRUE(
      has(result.files.report, " SOLUTION IS NOT FINITE  STEP     1  TIME  0.1000E+00  AT THE WAVE LOAD OF A SUPPORT"))
      << result.files.report;
  EXPECT_TRUE(has(result.files.progress, " TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE"));
}

// Reported forces take the wave loads that stand in the elements off: they are those of the state that is left.
TEST(WaveLoads, ComeBackToTheStateThatADroppedStepLeaves) {
  const DynamicResult lost = run(steps(3), endless_wave());
  EXPECT_EQ(lost.TIME, 0.0);
  EXPECT_EQ(dynamics.wave_time, 0.0);
  Dyn1CardValues variable;
  variable.KSOL = 3;
  variable.DT = 0.1;
  variable.DTMIN = -0.05;
  variable.ERRUP = 1.0E-9;
  variable.NSMAX = 3;
  variable.NINIT = -1;
  PileDeck deck;
  deck.macros = dyn2(steps(2)) + dyn1_text(variable);
  const DynamicResult refused = run_dynamic(deck.text());
  EXPECT_TRUE(has(refused.files.progress, "STEP SIZE BELOW MINIMUM ALLOWABLE"));
  EXPECT_EQ(refused.TIME, 0.2);
  EXPECT_EQ(dynamics.wave_time, 0.2);
}

TEST(WaveLoads, ThatAreNotFiniteEndAnAnalysisOfVariableStepsToo) {
  Dyn1CardValues variable;
  variable.DT = 0.1;
  variable.NSMAX = 3;
  variable.NINIT = -1;
  PileDeck deck = endless_wave();
  deck.macros = dyn1_text(variable);
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_TRUE(has(result.files.report, "  AT THE WAVE LOAD OF NODE")) << result.files.report;
}

// Nothing is solved here that would find them.
TEST(WaveOutput, OfLoadsThatAreNotFiniteTerminates) {
  Dyn2Cards cards = steps(3);
  cards.KRISAV = 1;
  cards.ISLULT = 1;
  const DynamicResult result = run(cards, endless_wave());
  EXPECT_TRUE(has(result.files.report, "  AT THE WAVE LOAD OF NODE")) << result.files.report;
  EXPECT_TRUE(has(result.files.progress, " TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE"));
}

/// Analysis times with load lines.
int times_written(const std::string& macros) {
  PileDeck deck;
  deck.macros = macros;
  run_dynamic(deck.text());
  return tidearc::run.NWAVNO;
}

TEST(WaveOutput, BelongsToTheMacroThatAsksForIt) {
  Dyn2Cards with = steps(2);
  with.KRISAV = 1;
  EXPECT_EQ(times_written(dyn2(with) + dyn2(steps(2))), 3);  // 0, 0.1 and 0.2
  EXPECT_EQ(times_written(dyn2(steps(2)) + dyn2(with)), 3);  // 0.2, which begins the macro, 0.3 and 0.4
}

TEST(WaveOutput, WithoutASolutionHasTheStandingStructureInItsEnvelopes) {
  Dyn2Cards loads = steps(1);
  loads.NINIT = 0;
  loads.KRISAV = loads.ISLULT = loads.KPENV = 1;
  PileDeck deck;
  deck.macros = dyn2(steps(10)) + dyn2(loads);
  const DynamicResult result = run_dynamic(deck.text());
  ASSERT_NE(result.U[0], 0.0);
  const std::string& report = result.files.report;
  EXPECT_TRUE(has(report.substr(report.rfind("NODAL DISPLACEMENT ENVELOPES")), format("E12.5", result.U[0]))) << report;
}

TEST(WaveOutput, IsRefusedInAProblemWithoutWaves) {
  PileDeck still;
  still.IWTY = 0;
  still.wave_cards = "";
  Dyn2Cards cards = steps(1);
  cards.KRISAV = 1;
  still.macros = dyn2(cards);
  const RunResult result = run_deck(still.text() + " STOP\n");
  EXPECT_EQ(result.status, 1);
  EXPECT_TRUE(has(result.report, " ***ERROR*** NODAL WAVE OUTPUT PARAMETERS INCONSISTENT (SEG H & SEG L)\n"));
}

TEST(WaveOutput, OfACurrentAloneIsWanted) {
  PileDeck current;
  current.IWTY = 3;
  current.current = 1;
  current.wave_cards =
      "    1    2    0\n"
      "        0.\n"
      "        0.        1.        0.        0.        1.\n"
      "       50.        1.        0.        0.        1.\n";
  Dyn2Cards cards = steps(1);
  cards.KRISAV = 1;
  current.macros = dyn2(cards);
  EXPECT_EQ(run_deck(current.text() + " STOP\n").status, 0);
}

// Uniform current of 1 on the whole pile: drag 0.5 rho CD D V^2 over 25, by moments about the foot half of it on the
// spring side; the static end of a slow analysis is F/k.
TEST(WaveLoads, OfASteadyCurrentEndAtTheirStaticDisplacement) {
  PileDeck current;
  current.IWTY = 3;
  current.current = 1;
  current.relative_velocity = 0;
  current.wave_cards =
      "    1    2    0\n"
      "        0.\n"
      "        0.        1.        0.        0.        1.\n"
      "       50.        1.        0.        0.        1.\n";
  Dyn2Cards cards = steps(4000);
  cards.DT = 0.5;
  cards.DMASS = 1.0;
  const double force = 0.5 * 1.025 * 25.0;
  EXPECT_NEAR(run(cards, current).U[0], force / 98.994, 1.0E-6);
}

TEST(TimeBlocks, OfAnIrregularSeaBringTheirCardsWithEachLaterMacro) {
  const std::string sea =
      "       50.                  0.    0    1    0\n"
      "    1    0    0\n"
      "    1        1.        0.        0.\n"
      "        8.        6.        0.\n";
  const std::string other =
      "       50.                  0.    0    1    0\n"
      "    1    0    0\n"
      "    1        1.        0.        0.\n"
      "        8.        3.        0.\n";
  PileDeck deck;
  deck.IWTY = 4;
  deck.wave_cards = sea;
  Dyn2Cards cards = steps(3);
  const std::string macro = dyn2(cards);
  deck.macros = macro + macro + other;
  const RunResult result = run_deck(deck.text() + " STOP\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(count_of(result.report, "SIGNIFICANT WAVE HEIGHT"), 2);
  EXPECT_EQ(count_of(result.progress, " COMPLETED: MAXIMUM NUMBER OF STEPS REACHED"), 2);
}

TEST(TimeBlocks, AreNotReadWhenTheSeaIsOneBlock) {
  PileDeck deck;
  deck.IWTY = 4;
  deck.wave_cards =
      "       50.                  0.    0    0    0\n"
      "    1    0    0\n"
      "    1        1.        0.        0.\n"
      "        8.        6.        0.\n";
  deck.macros = dyn2(steps(3)) + dyn2(steps(3));
  const RunResult result = run_deck(deck.text() + " STOP\n");
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(count_of(result.report, "SIGNIFICANT WAVE HEIGHT"), 1);
}

TEST(WaveLoads, AreNoPartOfWhatIsReportedOfAStaticAnalysis) {
  PileDeck deck;
  deck.macros = dyn2(steps(10));
  run_dynamic(deck.text());
  EXPECT_EQ(sea_factors.wave, 1.0);
  deck.macros += "STAT    NO SEGMENT\n    0   REST\n";
  run_dynamic(deck.text());
  EXPECT_EQ(sea_factors.wave, 0.0);
}

}  // namespace
}  // namespace tidearc::test
