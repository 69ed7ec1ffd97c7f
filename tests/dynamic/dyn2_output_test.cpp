// What a DYN2 macro tells of its steps: the table, prints and saves at their intervals, the largest unbalances,
// envelopes, and the files of energies.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <cstring>
#include <sstream>
#include <string>

#include "dynamic_run.h"
#include "row_deck.h"

namespace tidearc::test {
namespace {

/// Of a mass of 4 on a spring of 400, thrown with velocity 1: u_n = sin(n theta) / 10 with theta = 2 atan(0.1).
Dyn2Cards thrown(int NSTEP) {
  Dyn2Cards cards;
  cards.DT = 0.02;
  cards.NSTEP = NSTEP;
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  return cards;
}
RunResult run(const Dyn2Cards& cards, RowDeck deck = one_mass(400, 4)) {
  deck.dyn2(cards);
  return run_deck(deck.text());
}
bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Largest and smallest displacement of node 2 in the last envelope print, and the times of them.
std::array<double, 4> node_envelope(const std::string& report) {
  std::istringstream lines(report.substr(report.rfind("        2  POSITIVE")));
  std::array<double, 4> values{};
  std::string line;
  for (double& value : values) {
    std::getline(lines, line);
    value = std::stod(line.substr(19, 18));
  }
  return values;
}

TEST(Dyn2Table, HasItsLegendAndHeads) {
  Dyn2Cards cards = thrown(12);
  cards.MAXIT = 7;
  cards.TOL = 0.25;
  EXPECT_TRUE(
      has(trimmed(run(cards).progress),
          "     DYN2 MACRO OUTPUT INFORMATION:\n"
          "     (1) - CURRENT STEP NUMBER (MAX=     12)\n"
          "     (2) - ITERATION NUMBER (MAX= 7)\n"
          "     (3) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)\n"
          "     (4) - TOTAL NUMBER OF STIFFNESS REFORMULATIONS\n"
          "     (5) - CURRENT ANALYSIS TIME\n"
          "     (6) - NORM OF APPLIED LOAD\n"
          "     (7) - NORM OF OUT-OF-BALANCE LOAD (MAX=.250E+00)\n"
          "\n" +
              std::string(58, ' ') + "---------ENERGY---------------------\n" +
              "  STEP ITR LOAD STIF   CURRENT  APPLIED UNBALANC UNBALANCE EXTERNAL  KINETIC  ELASTIC  VISCOUS\n" +
              std::string(32, ' ') + "---LOAD(NORM)---" + std::string(30, ' ') + "PLASTIC  DAMPING\n"));
}

TEST(Dyn2Table, ARowHasTheStepItsNormsAndItsEnergies) {
  RowDeck deck = one_mass(400, 4);
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 2.0}, {9.0, 2.0}}, true);
  Dyn2Cards cards = thrown(1);
  cards.NFORCE = 1;
  cards.commands += command_card(2, 1, 1.5);
  const RunResult result = run(cards, deck);
  // The effective load is A1 M v = 800 and the force of 3, which acts from the start.
  const double u = 803.0 / 40400.0;
  EXPECT_TRUE(has(result.progress, "      1  1    1    1    0.0200 .300E+01")) << result.progress;
  const std::vector<Dyn2Row> rows = dyn2_rows(result.progress);
  ASSERT_EQ(rows.size(), 1U);
  EXPECT_NEAR(rows[0].external, 2.0 + 3.0 * u, 0.05);
  EXPECT_NEAR(rows[0].elastic, 200.0 * u * u, 0.0005);
  EXPECT_EQ(rows[0].viscous, 0.0);
  EXPECT_LT(rows[0].unbalance, 1e-10);
}

TEST(Dyn2Report, EveryStepHasItsLine) {
  const RunResult result = run(thrown(3));
  EXPECT_TRUE(has(result.report, "\n\n RESPONSE AT TIME STEP     1     TIME =  0.2000E-01     ITERATIONS    1\n"));
  EXPECT_TRUE(has(result.report, "\n RESPONSE AT TIME STEP     3     TIME =  0.6000E-01     ITERATIONS    1\n"));
  EXPECT_EQ(count_of(result.report, "RESPONSE AT TIME STEP"), 3);
  EXPECT_FALSE(has(result.report, "RESPONSE UNDER DYNAMIC LOADS"));
  EXPECT_FALSE(has(result.report, "DISPLACEMENT ENVELOPES"));
}

TEST(Dyn2Report, PrintsComeBehindTheStepsOfTheirIntervals) {
  Dyn2Cards cards = thrown(7);
  cards.KPNOD = 3;
  cards.KPELM = 2;
  cards.KPENV = 5;
  const RunResult result = run(cards);
  EXPECT_EQ(count_of(result.report, " RESPONSE UNDER DYNAMIC LOADS\n"), 4) << "steps 2, 3, 4 and 6";
  EXPECT_EQ(count_of(result.report, "DISPLACEMENT RESPONSE AT NODES"), 2) << "steps 3 and 6";
  EXPECT_EQ(count_of(result.report, "RESULTS FOR GROUP"), 3) << "steps 2, 4 and 6";
  EXPECT_EQ(count_of(result.report, "NODAL DISPLACEMENT ENVELOPES, TIME = 0.1000E+00"), 1) << "step 5 alone";
  EXPECT_EQ(count_of(result.report, "NODAL DISPLACEMENT ENVELOPES"), 1) << "not at the end";
  const double theta = 2.0 * std::atan(0.1);
  EXPECT_NEAR(displacement(result.report, " X", 2, 0), std::sin(3 * theta) / 10, 1e-6);
  EXPECT_NEAR(displacement(result.report, " X", 2, 1), std::sin(6 * theta) / 10, 1e-6);
  EXPECT_NEAR(truss_rows(result.report, 0)[0].force, 40 * std::sin(2 * theta), 1e-3);
  EXPECT_TRUE(has(result.report, "DISPLACEMENT RESPONSE AT NODES, TIME = 0.6000E-01"));
}

TEST(Dyn2Report, ANodePrintHasVelocityAndAcceleration) {
  Dyn2Cards cards = thrown(1);
  cards.KPNOD = 1;
  const std::string report = run(cards).report;
  // v_1 = 2 u_1 / DT - 1, a_1 = -100 u_1 of the trapezoidal rule; u_1 = 2/101.
  EXPECT_TRUE(has(report, "      DISPLACEMENT         0.00000E+00  0.19802E-01\n"));
  EXPECT_TRUE(has(report, "      VELOCITY             0.00000E+00  0.98020E+00\n"));
  EXPECT_TRUE(has(report, "      ACCELERATION         0.00000E+00 -0.19802E+01\n"));
}

TEST(Dyn2Report, EnvelopesHaveTheTimesOfTheExtremes) {
  Dyn2Cards cards = thrown(50);
  cards.KPENV = 50;
  const std::string report = run(cards).report;
  // theta = 0.19933730: step 8 is nearest to a quarter of the period, step 24 to three quarters.
  const double theta = 2.0 * std::atan(0.1);
  const std::array<double, 4> envelope = node_envelope(report);
  EXPECT_NEAR(envelope[0], std::sin(8 * theta) / 10, 1e-6);
  EXPECT_NEAR(envelope[1], 0.16, 1e-12);
  EXPECT_NEAR(envelope[2], std::sin(24 * theta) / 10, 1e-6);
  EXPECT_NEAR(envelope[3], 0.48, 1e-12);
}

TEST(Dyn2Envelopes, StartAtZeroInEachMacroOrAtTheStateAtHand) {
  const double theta = 2.0 * std::atan(0.1);
  for (const int KENV : {0, 1}) {
    RowDeck deck = one_mass(400, 4);
    deck.dyn2(thrown(6));
    Dyn2Cards cards = thrown(1);
    cards.NINIT = 0;
    cards.commands = "";
    cards.KENV = KENV;
    cards.KPENV = 1;
    deck.dyn2(cards);
    const std::string report = run_deck(deck.text()).report;
    const std::array<double, 4> envelope = node_envelope(report);
    EXPECT_NEAR(envelope[0], std::sin(7 * theta) / 10, 1e-6);
    EXPECT_NEAR(envelope[1], 0.14, 1e-9);
    EXPECT_NEAR(envelope[2], KENV == 0 ? 0.0 : std::sin(6 * theta) / 10, 1e-6);
    EXPECT_NEAR(envelope[3], KENV == 0 ? 0.0 : 0.12, 1e-9);
    // Element extremes go on from the first macro, or begin at its last state: minimum force and its time.
    std::istringstream row(report.substr(report.rfind("    1      1      2")));
    double number = 0, maximum = 0, time = 0, minimum = 0, minimum_time = 0;
    row >> number >> number >> number >> maximum >> time >> minimum >> minimum_time;
    EXPECT_NEAR(maximum, 40 * std::sin(7 * theta), 1e-2);
    EXPECT_NEAR(minimum, KENV == 0 ? 0.0 : 40 * std::sin(6 * theta), 1e-2);
    EXPECT_NEAR(minimum_time, KENV == 0 ? 0.0 : 0.12, 1e-9);
  }
}

TEST(Dyn2Saves, EveryOneThatFallsDueHasALineOnTheLoadLevelHistory) {
  Dyn2Cards cards = thrown(7);
  cards.KPOST = 3;
  cards.KRST = 2;
  const RunResult result = run(cards);
  const std::vector<std::string> lines = lines_of(result.levels);
  ASSERT_EQ(lines.size(), 3U) << result.levels;
  EXPECT_EQ(lines[1].substr(0, 52), " 0 6.000000000000000E-02 1.000000000000000E+00 " + lines[1].substr(47, 5));
  EXPECT_TRUE(has(lines[1], " DYN2 1"));
  EXPECT_EQ(lines[2].substr(0, 47), " 1 1.200000000000000E-01 1.000000000000000E+00 ");
  const std::vector<Dyn2Row> rows = dyn2_rows(result.progress);
  ASSERT_EQ(rows.size(), 7U);
  EXPECT_EQ(rows[1].sequence, 1);
  EXPECT_EQ(rows[2].sequence, 2) << "behind the save";
  EXPECT_EQ(rows[6].sequence, 3);
}

TEST(Dyn2Saves, DoNotChangeTheResponse) {
  RowDeck with = one_mass(400, 4), without = one_mass(400, 4);
  Dyn2Cards cards = thrown(20);
  without.dyn2(cards);
  cards.KPOST = cards.KRST = 1;
  with.dyn2(cards);
  EXPECT_EQ(run_dynamic(with.text()).U, run_dynamic(without.text()).U);
}

TEST(Dyn2Top, EachIterationHasItsTimeAndItsLargestUnbalances) {
  RowDeck deck;
  deck.springs = {100, 100};
  deck.masses = {1, 1};
  deck.ratio = 0.1;
  deck.yield = 0.01;
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 1.5}, {9.0, 1.5}}, true);
  Dyn2Cards cards;
  cards.DT = 0.1;
  cards.NSTEP = 3;
  cards.NFORCE = 1;
  cards.MAXIT = 9;
  cards.KISTF = 1;
  cards.KISTA = 9;
  cards.NTOP = 2;
  cards.commands = command_card(3, 1);
  const RunResult result = run(cards, deck);
  const std::vector<Dyn2Row> rows = dyn2_rows(result.progress);
  ASSERT_EQ(rows.size(), 3U);
  int iterations = 0;
  for (const Dyn2Row& row : rows) iterations += row.iteration;
  EXPECT_GT(iterations, 3) << "a bar yields";
  const std::vector<std::string> lines = lines_of(result.top);
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(1 + 3 * iterations)) << result.top;
  EXPECT_EQ(lines[0], " *****  TOP OUT-OF-BALANCE FORCES IN DYN2 ANALYSIS *****");
  EXPECT_EQ(lines[1], " 0.10000");
  EXPECT_EQ(lines[2].size(), 25U);
  EXPECT_EQ(lines[2].substr(5, 5), "    1") << "direction";
}

std::vector<double> reals(const std::string& bytes, std::size_t record, std::size_t count) {
  std::vector<double> values(count);
  std::memcpy(values.data(), bytes.data() + record * (8 * count + 8) + 4, 8 * count);
  return values;
}

TEST(Dyn2EnergyFiles, HoldForcesAndEnergiesOfGroupsAndALinePerStep) {
  RowDeck deck = one_mass(400, 4);
  deck.IENRGY = 1;
  deck.BETAO = 0.01;
  Dyn2Cards cards = thrown(3);
  cards.DMASS = 0.2;
  deck.dyn2(cards);
  const DynamicResult result = run_dynamic(deck.text());
  const std::vector<std::string>& files = result.files.energy;  // TAP41 ..
  // Three steps exchange the roles three times: the last forces stand on TAP41, those before them on TAP42.
  EXPECT_NEAR(reals(files[0], 0, 1)[0], result.R[0], 1e-14);
  EXPECT_NEAR(reals(files[2], 0, 1)[0], 0.01 * 400 * result.VEL[0], 1e-13) << "damping of the elements alone";
  ASSERT_EQ(files[4].size(), 3 * (2 * 8 + 8U)) << "a record of two reals a step";
  const std::vector<double> groups = reals(files[4], 2, 2);
  EXPECT_NEAR(groups[0], result.energy.elastic, 1e-14);
  EXPECT_GT(groups[1], 0.0);
  EXPECT_LT(groups[1], result.energy.viscous) << "masses damp too";
  const std::vector<std::string> lines = lines_of(files[5]);
  ASSERT_EQ(lines.size(), 3U);
  std::istringstream last(lines[2]);
  double time = 0, external = 0, kinetic = 0, elastic = 0, viscous = 0, unbalance = 0;
  last >> time >> external >> kinetic >> elastic >> viscous >> unbalance;
  EXPECT_NEAR(time, 0.06, 1e-15);
  EXPECT_EQ(external, result.energy.external);
  EXPECT_NEAR(kinetic, 2.0 * result.VEL[0] * result.VEL[0], 1e-14);
  EXPECT_NEAR(elastic, 200.0 * result.U[0] * result.U[0], 1e-13);
  EXPECT_NEAR(viscous, result.energy.viscous, 1e-15);
  EXPECT_NEAR(unbalance, external - kinetic - elastic - viscous, 1e-15);
}

TEST(Dyn2EnergyFiles, AreThereOnlyWhenTheyAreAskedForAndChangeNothing) {
  RowDeck with = one_mass(400, 4), without = one_mass(400, 4);
  with.BETAO = without.BETAO = 0.01;
  with.IENRGY = 1;
  with.dyn2(thrown(5));
  without.dyn2(thrown(5));
  const DynamicResult result = run_dynamic(without.text());
  EXPECT_EQ(result.files.energy[5], "");
  EXPECT_EQ(run_dynamic(with.text()).U, result.U);
}

}  // namespace
}  // namespace tidearc::test
