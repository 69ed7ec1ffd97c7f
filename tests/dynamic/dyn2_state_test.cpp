// What a DYN2 macro takes over and leaves behind: time, loads, held and moved equations, the way out of values that are
// not finite, and the same digits in every storage scheme.
#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "dynamic/parts.h"
#include "dynamic_run.h"
#include "model/patterns.h"
#include "row_deck.h"
#include "static/segment.h"
#include "support/truss_deck.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

RowDeck two_springs() {
  RowDeck deck;
  deck.springs = {600, 400};
  deck.masses = {2, 1};
  return deck;
}
Dyn2Cards steps(int NSTEP, double ALPHA = 0.0) {
  Dyn2Cards cards;
  cards.DT = 0.02;
  cards.NSTEP = NSTEP;
  cards.ALPHA = ALPHA;
  return cards;
}
Dyn2Cards thrown(int NSTEP, int node) {
  Dyn2Cards cards = steps(NSTEP);
  cards.NINIT = 1;
  cards.commands = initial_card(node, 1.0);
  return cards;
}

/// A STAT of one segment in one step; factors of nodal, follower and prescribed patterns.
std::string stat(const std::string& nodal, const std::string& follower = "", const std::string& prescribed = "") {
  return "STAT    LOADS\n    1   LOADS\n"
         "    1    0              0    1        1.    1    0    1    0   20    1\n"
         "    1    1    0    0    0\n"
         "    0    0     1.E-9\n" +
         nodal + "\n" + follower + "\n\n\n\n" + prescribed + "\n";
}
/// A force on the last node, 12, as pattern 1.
void add_force(RowDeck& deck) {
  deck.static_card = "    1    0    0    0    0    0    0    0";
  deck.patterns = "    1PULL\n    3       12.\n";
}

TEST(Time, GoesOnFromOneDynamicMacroToTheNextAndStartsAnewBehindAStaticOne) {
  RowDeck deck = two_springs();
  add_force(deck);
  deck.dyn2(steps(5));
  deck.dyn2(steps(3));
  EXPECT_NEAR(run_dynamic(deck.text()).TIME, 0.16, 1e-15);
  deck.macros += stat("        1.");
  EXPECT_EQ(run_dynamic(deck.text()).TIME, 0.0);
  deck.dyn2(steps(2));
  EXPECT_NEAR(run_dynamic(deck.text()).TIME, 0.04, 1e-16);
}

TEST(Time, TwoMacrosInARowGiveTheStateOfOne) {
  RowDeck one = two_springs(), two = two_springs();
  one.dyn2(thrown(8, 3));
  two.dyn2(thrown(5, 3));
  two.dyn2(steps(3));
  const DynamicResult whole = run_dynamic(one.text()), parts = run_dynamic(two.text());
  for (std::size_t e = 0; e < 2; ++e) {
    EXPECT_NEAR(parts.U[e], whole.U[e], 1e-15);
    EXPECT_NEAR(parts.VEL[e], whole.VEL[e], 1e-14);
    EXPECT_NEAR(parts.ACC[e], whole.ACC[e], 1e-12);
  }
  EXPECT_NEAR(parts.energy.external, whole.energy.external, 1e-15) << "the sums go on";
}

TEST(StaticLoads, KeepTheirStateExactlyUnderAnyDissipation) {
  for (const double ALPHA : {0.0, -0.1, -0.3}) {
    RowDeck deck = two_springs();
    add_force(deck);
    deck.macros += stat("        1.");
    const DynamicResult rest = run_dynamic(deck.text());
    deck.dyn2(steps(50, ALPHA));
    const DynamicResult result = run_dynamic(deck.text());
    EXPECT_NEAR(rest.U[1], 12.0 / 600 + 12.0 / 400, 1e-15);
    for (std::size_t e = 0; e < 2; ++e) {
      EXPECT_NEAR(result.U[e], rest.U[e], 1e-16);
      EXPECT_NEAR(result.VEL[e], 0.0, 1e-15);
    }
    EXPECT_TRUE(has(result.files.progress, " .120E+02 ")) << "norm of the applied load";
  }
}

TEST(StaticLoads, ThatNoStaticAnalysisHasAppliedDoNotAct) {
  RowDeck deck = two_springs();
  add_force(deck);
  deck.dyn2(steps(5));
  EXPECT_EQ(run_dynamic(deck.text()).U, (std::vector<double>{0.0, 0.0}));
}

TEST(StaticAnalysis, BehindADynamicOneSeesStaticLoadsAloneAndClearsTheMotion) {
  RowDeck deck = two_springs();
  add_force(deck);
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 100.0}, {9.0, 100.0}}, true);
  deck.NIDSP = 1;
  deck.displacements = table_record({{0.0, 0.0}, {1.0, 1.0}}, true);
  Dyn2Cards cards = steps(7);
  cards.NFORCE = cards.NIMPOS = 1;
  cards.commands = command_card(3, 1) + command_card(2, 1);
  deck.dyn2(cards);
  EXPECT_NE(run_dynamic(deck.text()).VEL[1], 0.0);
  deck.macros += stat("        1.");
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_EQ(result.files.status, 0) << result.files.errors;
  EXPECT_NEAR(result.U[0], 12.0 / 600, 1e-15) << "no record holds it any more";
  EXPECT_NEAR(result.U[1], 12.0 / 600 + 12.0 / 400, 1e-15);
  EXPECT_EQ(result.VEL, (std::vector<double>{0.0, 0.0}));
  EXPECT_EQ(result.ACC, (std::vector<double>{0.0, 0.0}));
}

TEST(StaticAnalysis, LeavesAStructureThatStartsFromRest) {
  RowDeck deck = two_springs();
  add_force(deck);
  deck.dyn2(thrown(5, 3));
  deck.macros += stat("        1.");
  deck.dyn2(steps(20));
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_NEAR(result.U[1], 0.05, 1e-15);
  EXPECT_NEAR(result.energy.external, result.energy.elastic + result.energy.unbalance(), 1e-12)
      << "the energy of motion is gone, and counted as work from outside";
}

TEST(EigenAnalysis, LeavesTheMotionAsItIs) {
  RowDeck with = two_springs(), without = two_springs();
  with.dyn2(thrown(5, 3));
  without.dyn2(thrown(5, 3));
  with.macros += "EIGN    MODES\n    0    0    0\n";
  std::string text = with.text();
  const std::size_t at = text.find("    3    3    0    0    0    0    3    0    2    1    0    0    0\n");
  ASSERT_NE(at, std::string::npos);
  text.replace(at, 66, "    3    3    0    0    0    0    3    0    2    1    0    1    0\n");
  const std::size_t groups = text.find("    1    2    1        0.        0.     SPRINGS");
  ASSERT_NE(groups, std::string::npos);
  text.insert(groups, "    1\n");
  const DynamicResult result = run_dynamic(text);
  EXPECT_EQ(result.files.status, 0) << result.files.errors;
  EXPECT_TRUE(has(result.files.report, "STRUCTURE FREQUENCIES"));
  EXPECT_EQ(result.VEL, run_dynamic(without.text()).VEL);
  EXPECT_NEAR(result.TIME, 0.1, 1e-15);
}

/// Node 2 moved by a static pattern to 0.1.
RowDeck moved_support() {
  RowDeck deck = two_springs();
  deck.static_card = "    0    0    0    0    0    0    0    1";
  deck.patterns = "    1   SUPPORT\n    2    1       0.1\n";
  deck.macros += stat("", "", "        1.");
  return deck;
}

TEST(Supports, ThatAStaticPatternHasMovedAreHeldWhereTheyStand) {
  RowDeck deck = moved_support();
  deck.dyn2(thrown(10, 3));
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_EQ(result.U[0], 0.1);
  EXPECT_EQ(result.VEL[0], 0.0);
  // The mass of 1 swings on the spring of 400 about 0.1: theta = 2 atan(0.2), u = sin(10 theta) / 20.
  EXPECT_NEAR(result.U[1], 0.1 + std::sin(20 * std::atan(0.2)) / 20, 1e-14);
}

TEST(Supports, FollowTheirRecordsFromWhereTheyStandAtTheMacrosStart) {
  RowDeck deck = moved_support();
  deck.NIDSP = 1;
  deck.displacements = table_record({{0.0, 3.0}, {10.0, 13.0}}, true);
  Dyn2Cards cards = steps(25);
  cards.NIMPOS = 1;
  cards.commands = command_card(2, 1, 0.5, 2.0);
  deck.dyn2(cards);
  const DynamicResult once = run_dynamic(deck.text());
  EXPECT_NEAR(once.U[0], 0.1 + 0.5 * 0.5, 1e-15) << "0.5 times the change of the record in 0.5 s";
  EXPECT_NEAR(once.VEL[0], 0.5, 1e-13);
  deck.dyn2(cards);
  EXPECT_NEAR(run_dynamic(deck.text()).U[0], 0.1 + 1.0 * 0.5, 1e-15) << "a second macro starts where the first ended";
}

TEST(Supports, ThatMoveTogetherCauseNoForce) {
  RowDeck deck;
  deck.springs = {600, 400};
  deck.masses = {0, 2};
  deck.NIDSP = 1;
  deck.displacements = table_record({{0.0, 0.0}, {1.0, 0.3}, {2.0, -0.2}}, true);
  std::string text;
  Dyn2Cards cards = steps(80);
  cards.NIMPOS = 1;
  cards.commands = "    1    1        0.        1.    2    3\n";
  deck.dyn2(cards);
  const DynamicResult result = run_dynamic(deck.text());
  EXPECT_NEAR(result.R[1], 0.0, 1e-12) << "spring 2 is not stretched";
  EXPECT_NEAR(result.U[1], result.U[0], 1e-15);
}

TEST(MovingLoads, CountOnlyWhenTheyAct) {
  static_loads.NMADE = 2;
  patterns.type[0] = pattern_nodal;
  patterns.type[1] = pattern_follower;
  statics.accumulated[0] = 1.0;
  statics.accumulated[1] = 0.0;
  EXPECT_FALSE(static_loads_move());
  statics.accumulated[1] = 0.5;
  EXPECT_TRUE(static_loads_move());
  patterns.type[1] = pattern_surface;
  EXPECT_TRUE(static_loads_move());
  patterns.type[1] = pattern_temperature;
  EXPECT_FALSE(static_loads_move());
  static_loads = {};
  patterns = {};
  statics = {};
}

TEST(MovingLoads, AreThoseOfTheTrialDisplacements) {
  // A follower force on the mass, towards a fixed node 5 beside it, pulls back the more the mass is away.
  const double k = 40.0, m = 1.0, F = 50.0, DT = 0.02;
  RowDeck deck;
  deck.springs = {k, 1e-9};
  deck.masses = {m};
  deck.static_card = "    0    1    0    0    0    0    0    0";
  deck.patterns = "    1FOLLOWER\n    2    3       50.\n";
  deck.macros += stat("", "        1.");
  Dyn2Cards cards = thrown(30, 2);
  cards.MAXIT = 60;
  cards.KTERM = 1;
  cards.TOL = 1e-12;
  deck.dyn2(cards);
  std::string text = deck.text();
  const std::string far = "    3       20.        0.        0.\n", free = "    3    011111\n";
  text.replace(text.find(far), far.size(), "    3       10.        5.        0.\n");
  text.replace(text.find(free), free.size(), "    3    111111\n");
  const DynamicResult result = run_dynamic(text);
  ASSERT_EQ(result.files.status, 0) << result.files.errors;
  // The trapezoidal rule for m a + k u + F u / sqrt(u^2 + 25) = 0, each step by bisection.
  double u = 0.0, v = 1.0, a = 0.0;
  for (int n = 0; n < 30; ++n) {
    const auto acceleration = [&](double x) { return 4.0 / DT / DT * (x - u) - 4.0 / DT * v - a; };
    const auto residual = [&](double x) { return m * acceleration(x) + k * x + F * x / std::sqrt(x * x + 25.0); };
    double low = u - 0.1, high = u + 0.1;
    for (int i = 0; i < 100; ++i) (residual(0.5 * (low + high)) > 0.0 ? high : low) = 0.5 * (low + high);
    const double next_a = acceleration(low), next_v = 2.0 / DT * (low - u) - v;
    u = low;
    v = next_v;
    a = next_a;
  }
  EXPECT_NEAR(result.U[0], u, 1e-12);
  EXPECT_NEAR(result.VEL[0], v, 1e-11);
}

/// Expects that a deck with three steps and more loses its state in step `n`, and ends as the deck with the steps
/// before.
void expect_dropped(const std::string& before, const std::string& whole, int n, const std::string& place) {
  const DynamicResult good = run_dynamic(before);
  EXPECT_EQ(good.files.status, 0) << good.files.errors;
  const DynamicResult lost = run_dynamic(whole);
  EXPECT_EQ(lost.files.status, 4);
  EXPECT_EQ(lost.U, good.U);
  EXPECT_EQ(lost.VEL, good.VEL);
  EXPECT_EQ(lost.ACC, good.ACC);
  EXPECT_EQ(lost.R, good.R);
  EXPECT_EQ(lost.TIME, good.TIME);
  EXPECT_EQ(dyn2_rows(lost.files.progress).size(), static_cast<std::size_t>(n - 1));
  EXPECT_EQ(lines_of(lost.files.levels).size(), static_cast<std::size_t>(n)) << "nothing of the step is saved";
  EXPECT_TRUE(has(lost.files.report, std::string(130, 'F') + "\n SOLUTION IS NOT FINITE  STEP")) << lost.files.report;
  EXPECT_TRUE(has(lost.files.errors, place)) << lost.files.errors;
  EXPECT_TRUE(has(lost.files.progress, "TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE"));
  EXPECT_TRUE(has(lost.files.report, " ****  EXECUTION TERMINATED, NO CONVERGENCE  ****"));
}
/// The deck with so many steps of the macro, each of them saved.
std::string with_steps(RowDeck deck, Dyn2Cards cards, int NSTEP) {
  cards.NSTEP = NSTEP;
  cards.KPOST = 1;
  deck.dyn2(cards);
  return deck.text();
}

TEST(NotFinite, AStepIsDroppedWhateverTheTerminationCode) {
  for (const char* storage : {" CORE SYMM         0", " DISK SYMM         0"}) {
    RowDeck deck = two_springs();
    deck.storage = storage;
    deck.NDFRC = 1;
    deck.forces = table_record({{0.0, 1.0}, {0.05, 1.0}, {0.05, 1e300}, {9.0, 1e300}}, true);
    Dyn2Cards cards = steps(1);
    cards.NFORCE = 1;
    cards.KTERM = 0;
    cards.commands = command_card(3, 1, 1e10);
    expect_dropped(with_steps(deck, cards, 2), with_steps(deck, cards, 6), 3,
                   "solution is not finite: STEP 3 TIME 0.6000E-01 AT NODE 2 DIRECTION 1");
  }
}

TEST(NotFinite, AStepWhoseIterationsUpdatedTheStateIsDroppedToo) {
  for (const char* storage : {" CORE SYMM         0", " DISK SYMM         0"}) {
    // A flat toggle: its bars are much stiffer once they have turned, so that with the stiffness of the start every
    // iteration makes the unbalance larger. In a small unit of force its square soon is too large for a number.
    RowDeck deck;
    deck.storage = storage;
    deck.springs = {1e145, 1e145};
    deck.masses = {1e140};
    deck.yield = 1e150;
    Dyn2Cards cards;
    cards.DT = 0.5;
    cards.KSSTF = 100;
    cards.KISTA = 1;
    cards.MAXIT = 1000;
    cards.KUTYPE = 1;
    cards.TOL = 1e137;
    cards.NFORCE = 1;
    deck.NDFRC = 1;
    deck.forces = table_record({{0.0, 1e140}, {1.2, 1e140}, {1.2, 5e143}, {90.0, 5e143}}, true);
    cards.commands = "    1    3        0.        1.    2\n";
    const auto as_toggle = [](std::string text) {
      const auto replace = [&text](const std::string& part, const std::string& other) {
        text.replace(text.find(part), part.size(), other);
      };
      replace("    1        0.        0.        0.\n", "    1      -10.        0.        0.\n");
      replace("    2       10.        0.        0.\n", "    2        0.        0.       0.5\n");
      replace("    3       20.        0.        0.\n", "    3       10.        0.        0.\n");
      replace("    2    011111\n", "    2    110111\n");
      replace("    3    011111\n", "    3    111111\n");
      replace("    2    1e+140\n", "    2    1e+140    1e+140    1e+140\n");
      replace("    1    1    2    1    1\n", "    1    1    2    1    1        0.    1\n");
      replace("    2    2    3    1    2\n", "    2    2    3    1    2        0.    1\n");
      return text;
    };
    expect_dropped(as_toggle(with_steps(deck, cards, 2)), as_toggle(with_steps(deck, cards, 6)), 3,
                   "solution is not finite: STEP 3 TIME 0.1500E+01 AT");
  }
}

TEST(NotFinite, NothingIsPrintedWithTerminationCodeZeroAndTheStepsStartElse) {
  RowDeck deck = two_springs();
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 1e300}, {9.0, 1e300}}, true);
  Dyn2Cards cards = steps(3);
  cards.NFORCE = 1;
  cards.commands = command_card(3, 1, 1e10);
  for (const int KTERM : {0, 1}) {
    RowDeck copy = deck;
    cards.KTERM = KTERM;
    copy.dyn2(cards);
    const RunResult result = run_deck(copy.text());
    EXPECT_EQ(count_of(result.report, "RESPONSE UNDER DYNAMIC LOADS"), KTERM);
    EXPECT_EQ(result.status, 4);
    if (KTERM == 1) {
      EXPECT_EQ(displacement(result.report, " X", 3), 0.0);
    }
  }
}

/// Yielding, damped, driven by all kinds of records, with energies: what a run in any storage scheme has to give.
RowDeck everything() {
  RowDeck deck;
  deck.springs = {600, 500, 400};
  deck.masses = {2, 0, 1};
  deck.BETAO = 0.001;
  deck.BETAT = 0.002;
  deck.ratio = 0.1;
  deck.yield = 0.02;
  deck.IENRGY = 1;
  deck.NGACC = deck.NDFRC = deck.NIDSP = 1;
  deck.ground = table_record({{0.0, 5.0}, {0.3, -8.0}, {9.0, 2.0}}, false);
  deck.forces = sine_record(30.0, 0.02, 150);
  deck.displacements = table_record({{0.0, 0.0}, {0.5, 0.02}, {2.0, -0.01}}, true);
  Dyn2Cards cards = steps(100, -0.1);
  cards.DMASS = 0.1;
  cards.MAXIT = 20;
  cards.KISTF = 1;
  cards.KISTA = 3;
  cards.KGRND = cards.NFORCE = cards.NIMPOS = 1;
  cards.KPOST = 10;
  cards.KPNOD = cards.KPELM = cards.KPENV = 25;
  cards.NTOP = 2;
  cards.commands = ground_card(1) + command_card(4, 1) + command_card(2, 1);
  deck.dyn2(cards);
  return deck;
}

TEST(StorageSchemes, CoreAndDiskGiveTheSameDigits) {
  const DynamicResult core = run_dynamic(everything().text());
  RowDeck deck = everything();
  deck.storage = " DISK SYMM         0";
  const DynamicResult disk = run_dynamic(deck.text());
  EXPECT_EQ(core.files.status, 0) << core.files.errors;
  EXPECT_GT(core.formations, 10) << "bars yield and turn back";
  EXPECT_EQ(disk.U, core.U);
  EXPECT_EQ(disk.VEL, core.VEL);
  EXPECT_EQ(disk.ACC, core.ACC);
  EXPECT_EQ(disk.files.levels, core.files.levels);
  EXPECT_EQ(disk.files.top, core.files.top);
  EXPECT_EQ(disk.files.energy, core.files.energy);
  const auto from_table = [](const std::string& progress) { return progress.substr(progress.find("START OF DYN2")); };
  EXPECT_EQ(from_table(disk.files.progress), from_table(core.files.progress));
  const auto from_macro = [](const std::string& report) { return report.substr(report.find("RESPONSE AT TIME STEP")); };
  EXPECT_EQ(from_macro(disk.files.report), from_macro(core.files.report));
}

TEST(StorageSchemes, TheUnsymmetricSolverGivesTheSameResponse) {
  const DynamicResult core = run_dynamic(everything().text());
  RowDeck deck = everything();
  deck.storage = " CORE USYM         0";
  const DynamicResult other = run_dynamic(deck.text());
  ASSERT_EQ(other.files.status, 0) << other.files.errors;
  for (std::size_t e = 0; e < 3; ++e) EXPECT_NEAR(other.U[e], core.U[e], 1e-12);
}

}  // namespace
}  // namespace tidearc::test
