// The cards of the eigenvalue analysis, its checks, its messages and its tables.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "../roof/process_fixture.h"
#include "spring_deck.h"
#include "support/run_deck.h"

namespace tidearc {
namespace {

using namespace test;
using std::numbers::pi;

constexpr const char* frequencies_heading = " STRUCTURE FREQUENCIES\n";
const std::string rows_of_F = " " + std::string(130, 'F') + "\n";

RunResult run_of(const SpringDeck& deck, const std::string& pool = "4M") {
  RunResult run = run_deck(deck.text(), pool);
  run.report = trimmed(run.report);
  return run;
}
bool boxed(const std::string& report, const std::string& text) {
  return contains(report, rows_of_F + text + "\n" + rows_of_F);
}
double cycles_per_second(double squared_circular) { return std::sqrt(squared_circular) / (2 * pi); }

TEST(EigenCards, AreEchoed) {
  SpringDeck deck = spring_chain(4, 1.0, 1.0);
  deck.want(2, 12.5, 0.001);
  deck.eign(3, 25, 2, -7.5);
  const std::string report = run_of(deck).report;
  EXPECT_TRUE(contains(report,
                       "1\n EIGENSOLUTION CONTROL\n\n"
                       " NUMBER OF FREQUENCIES AND MODE SHAPES =    2\n"
                       " TOP CUT-OFF FREQUENCY                 =  0.1250E+02\n"
                       " SHIFT FOR EIGENVALUE SOLUTION         =  0.1000E-02\n"));
  EXPECT_TRUE(contains(report,
                       " CONTROL INFORMATION\n\n"
                       "     FLAG FOR ADDITIONAL PRINTING  =    1\n"
                       "     MAXIMUM ITERATION CYCLES (*)  =   25\n"
                       "     FLAG FOR STURM SEQUENCE CHECK =    2\n"
                       "     CONVERGENCE TOLERANCE (*)     =  0.1000E-04\n"
                       "     CUT-OFF FREQUENCY (CPS)       =  0.1250E+02\n"
                       "     SHIFT FOR EIGNSOLUTION (CPS)  =  0.1000E-02\n"
                       "     NO OF FREQUENCY REQUIRED      =    2\n"
                       "     SIZE OF THE SUBSPACE          =    4\n"
                       "     MODAL FORCE CUT ELEVATION     = -0.7500E+01\n"));
}

TEST(EigenCards, SixteenCyclesAndNoCutOffAreTheDefaults) {
  for (const int NITEM : {0, -3}) {
    SpringDeck deck = oscillator();
    deck.eign(0, NITEM);
    const std::string report = run_of(deck).report;
    EXPECT_TRUE(contains(report, "MAXIMUM ITERATION CYCLES (*)  =   16\n")) << NITEM;
    EXPECT_TRUE(contains(report, " TOP CUT-OFF FREQUENCY                 =  0.0000E+00\n"));
    EXPECT_TRUE(contains(report, "CUT-OFF FREQUENCY (CPS)       =  0.1000E+07\n"));
  }
}

TEST(EigenCards, CodesBelowZeroStandAsTheyAre) {
  SpringDeck deck = spring_chain(2, 1.0, 1.0);
  deck.want(1, 1.0);
  deck.eign(-2, 0, -7);
  const std::string report = run_of(deck).report;
  EXPECT_TRUE(contains(report, "FLAG FOR ADDITIONAL PRINTING  =   -2\n"));
  EXPECT_FALSE(contains(report, "CURRENT EIGENVALUES")) << "additional printing is for codes above 0";
  EXPECT_TRUE(contains(report, "FLAG FOR STURM SEQUENCE CHECK =   -7\n"));
  EXPECT_TRUE(contains(report, "S T U R M")) << "any code but 0 asks for the check";
  EXPECT_TRUE(contains(report, frequencies_heading)) << "1 alone ends behind it";
}

TEST(EigenCards, OneModeTakesTwoVectorsAtMost) {
  SpringDeck deck = spring_chain(4, 1.0, 1.0);
  deck.want(1);
  EXPECT_TRUE(contains(run_of(deck).report, "SIZE OF THE SUBSPACE          =    2\n"));
}

TEST(EigenCards, ACountBelowZeroCountsAsZeroAndNothingIsSolved) {
  for (const int NFREQ : {-4, 0}) {
    SpringDeck deck = oscillator();
    deck.want(NFREQ);
    const RunResult run = run_of(deck);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(contains(run.report, " NUMBER OF FREQUENCIES AND MODE SHAPES =    0\n"));
    EXPECT_TRUE(contains(run.report, " NO FREQUENCIES AND MODE SHAPES ARE SOLVED\n"));
    EXPECT_TRUE(contains(run.errors, "TAModel.inp line 11, columns 1-5: no modes are wanted")) << run.errors;
    EXPECT_FALSE(contains(run.report, frequencies_heading));
    EXPECT_TRUE(run.ended);
  }
}

TEST(EigenCards, TheMacroNeedsTheControlCard) {
  SpringDeck deck = oscillator();
  deck.IEIGN = 0;
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(boxed(run.report, " EIGENSOLUTION CONTROL DATA NOT INPUT"));
  EXPECT_FALSE(contains(run.report, " CONTROL INFORMATION\n\n     FLAG"));
  EXPECT_TRUE(run.ended) << "the macro ends behind its card, NONE follows";
  deck.command = "CHEC";
  EXPECT_EQ(run_of(deck).status, 3);
}

TEST(EigenCards, WithoutItLaterAnalysesOnlyReadTheirCards) {
  SpringDeck deck = oscillator();
  deck.IEIGN = 0;
  deck.patterns = "    1PULL\n    2" + ten(1.0) + "\n";
  deck.NFPAT = 1;
  deck.macros = "EIGN\n\nSTAT\n    1\n" + segment_text(SegmentCards{});
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(contains(run.progress, "FATAL ERRORS FOUND BEFORE THIS STATIC ANALYSIS MACRO"));
}

TEST(EigenCards, ADataCheckEchoesThemAndSolvesNothing) {
  SpringDeck deck = oscillator();
  deck.command = "CHEC";
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(contains(run.report, "     NO OF FREQUENCY REQUIRED      =    1\n"));
  EXPECT_FALSE(contains(run.report, "STIFFNESS FORMED"));
  EXPECT_FALSE(contains(run.report, frequencies_heading));
}

TEST(EigenErrors, AShiftMustBeBelowHalfOfTheCutOff) {
  const std::string text =
      " THE SHIFT FOR THE SUBSPACE ITERATION METHOD HAS TO BE LESS THAN HALF OF, THE CUT-OFF FREQUENCY";
  SpringDeck deck = oscillator();
  deck.want(1, 0.5, 0.25);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(boxed(run.report, text));
  EXPECT_TRUE(contains(run.errors, "TAModel.inp line 11, columns 21-30: the shift")) << run.errors;
  EXPECT_FALSE(run.ended);
  deck.want(1, 0.5, 0.2499999);
  EXPECT_EQ(run_of(deck).status, 0);
  deck.want(1, 0.0, 500000.0);  // without a cut-off half of 1.0E6
  EXPECT_TRUE(boxed(run_of(deck).report, text));
  deck.want(1, 0.0, 0.1);
  EXPECT_EQ(run_of(deck).status, 0);
}

TEST(EigenErrors, AShiftBelowZeroActsAsThePositiveOneOfItsSize) {
  SpringDeck deck = spring_chain(4, 1.0, 1.0, false);
  deck.want(2, 1.0, 0.01);
  const RunResult positive = run_of(deck);
  deck.want(2, 1.0, -0.01);
  const RunResult negative = run_of(deck);
  ASSERT_EQ(negative.status, 0) << negative.errors;
  EXPECT_TRUE(contains(negative.report, "SHIFT FOR EIGNSOLUTION (CPS)  = -0.1000E-01\n"));
  EXPECT_TRUE(contains(negative.errors, "columns 21-30: a negative shift")) << negative.errors;
  const auto tables = [](const std::string& report) {
    const auto from = report.find(frequencies_heading);
    return report.substr(from, report.find("E X E C U T I O N") - from);
  };
  EXPECT_EQ(tables(negative.report), tables(positive.report));
  deck.want(2, 1.0, -0.5);
  const RunResult refused = run_of(deck);
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(contains(refused.report, " HALF OF, THE CUT-OFF FREQUENCY\n")) << "the limit holds for its size";
}

TEST(EigenErrors, ACutOffBelowZeroIsAboveNoShift) {
  SpringDeck deck = oscillator();
  deck.want(1, -5.0);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(contains(run.report, " HALF OF, THE CUT-OFF FREQUENCY\n"));
}

TEST(EigenErrors, ASturmCheckAloneNeedsACutOff) {
  SpringDeck deck = oscillator();
  deck.eign(0, 0, 1);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(boxed(run.report, " TO REQUEST STURM SEQUENCE CHECK ONLY, CUT-OFF FREQUENCY HAS TO BE INPUT"));
  deck.eign(0, 0, 2);
  const RunResult other = run_of(deck);
  EXPECT_EQ(other.status, 0) << "any other code goes on without the check";
  EXPECT_FALSE(contains(other.report, "S T U R M"));
}

TEST(EigenErrors, MoreModesThanMassesAreRefusedBeforeAnySolve) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.want(3);
  EXPECT_EQ(run_of(deck).status, 0) << "as many are found";
  for (const int NFREQ : {4, 99999}) {  // equations are three
    deck.want(NFREQ);
    const RunResult run = run_of(deck);
    EXPECT_EQ(run.status, 1);
    EXPECT_TRUE(boxed(run.report,
                      " NUMBER OF FREQUENCIES IS GREATER THAN THE NUMBER OF MASSES\n"
                      "     NUMBER OF NON-ZERO MASSES REQUIRED     =" +
                          std::string(NFREQ == 4 ? "    4" : "99999") +
                          "\n     NUMBER OF EXISTING MASSES IN THE MODEL =    3"));
    EXPECT_FALSE(contains(run.report, "STIFFNESS FORMED"));
  }
}

TEST(EigenErrors, MoreModesThanEquationsNeedNoRoom) {
  SpringDeck deck = spring_chain(800, 1.0, 1.0);
  deck.want(801);
  const RunResult refused = run_of(deck, "4M");
  EXPECT_TRUE(contains(refused.report, " NUMBER OF FREQUENCIES IS GREATER THAN THE NUMBER OF MASSES\n"));
  deck.want(800);
  const RunResult full = run_of(deck, "4M");
  EXPECT_EQ(full.status, 1);
  EXPECT_TRUE(contains(full.report, "     INPUT PHASE - ELEM. DATA INPUT")) << "800 vectors do not fit";
}

TEST(EigenErrors, AllThatApplyAreToldTogether) {
  SpringDeck deck = oscillator();
  deck.want(2, 0.0, 1.0E6);
  deck.eign(0, 0, 1);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(count(run.report, rows_of_F), 6);
}

TEST(EigenErrors, AStiffnessInBlocksIsRefused) {
  SpringDeck deck = spring_chain(60, 1.0, 1.0);
  deck.storage = " DISK SYMM        70";
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(contains(run.report, " EIGENVALUE ANALYSIS CAN NOT BE PERFORMED,     STIFFNESS IS OUT OF CORE\n"))
      << run.errors;
}

TEST(EigenErrors, ADataCheckTellsThemToo) {
  SpringDeck deck = oscillator();
  deck.command = "CHEC";
  deck.want(2);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(contains(run.report, " NUMBER OF FREQUENCIES IS GREATER THAN THE NUMBER OF MASSES\n"));
}

TEST(EigenErrors, NegativeStiffnessStopsBeforeTheReduction) {
  SpringDeck deck = oscillator();
  std::string text = deck.text();
  const std::string area = ten(4.0);
  text.replace(text.find(area), area.size(), ten(-4.0));
  const RunResult run = run_deck(text);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(
      contains(trimmed(run.report), " NEG OR ZERO DIAGONAL ELEMENT A(   1) = -0.4000E+01BEFORE DECOMPOSITION\n"))
      << run.errors;
  EXPECT_TRUE(contains(run.errors, "equation 1, node 2, direction X")) << run.errors;
}

TEST(EigenErrors, NegativeStiffnessStopsBeforeTheSturmCheckToo) {
  SpringDeck deck = oscillator();
  deck.want(1, 1.0);
  deck.eign(0, 0, 1);
  std::string text = deck.text();
  const std::string area = ten(4.0);
  text.replace(text.find(area), area.size(), ten(-4.0));
  const RunResult run = run_deck(text);
  EXPECT_EQ(run.status, 1);
  EXPECT_FALSE(contains(run.report, "S T U R M"));
}

TEST(EigenErrors, SoDoesAShiftBeyondADiagonal) {
  SpringDeck deck = oscillator();
  deck.want(1, 0.0, cycles_per_second(5.0));
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(contains(run.report, " NEG OR ZERO DIAGONAL ELEMENT A(   1) = -0.1000E+01BEFORE DECOMPOSITION\n"));
}

TEST(EigenErrors, APivotOfZeroInsideIsWarnedOf) {
  // A free pair in front of a chain that is held: the second pivot is exactly zero, the last one is not.
  SpringDeck deck;
  const int a = deck.point(0, 0, 0, "011111"), b = deck.point(1, 0, 0, "011111"), c = deck.point(2, 0, 0, "011111"),
            wall = deck.point(3, 0, 0, "111111");
  deck.spring(a, b, 1.0);
  deck.spring(c, wall, 1.0);
  for (const int node : {a, b, c}) deck.mass(node, 1.0);
  const RunResult run = run_of(deck);
  EXPECT_TRUE(contains(run.report,
                       " PIVOT OF EQUATION      2 IS ZERO: THE FREQUENCIES BELOW ARE NOT THOSE OF THE STRUCTURE\n"));
  EXPECT_TRUE(contains(run.errors, "equation 2, node 2, direction X")) << run.errors;
}

TEST(EigenErrors, AnUnstableStructureCountsAsARigidBody) {
  // Springs of -1 to walls and of 2 between two points: K = (1, -2; -2, 1), whose last pivot is -3.
  SpringDeck deck;
  const int left = deck.point(0, 0, 0, "111111"), a = deck.point(1, 0, 0, "011111"), b = deck.point(2, 0, 0, "011111"),
            right = deck.point(3, 0, 0, "111111");
  deck.spring(left, a, 7.0);
  deck.spring(a, b, 2.0);
  deck.spring(b, right, 7.0);
  for (const int node : {a, b}) deck.mass(node, 1.0);
  std::string text = deck.text();
  const std::string stiffness = ten(7.0);
  text.replace(text.find(stiffness), stiffness.size(), ten(-1.0));
  const RunResult stopped = run_deck(text);
  EXPECT_EQ(stopped.status, 1);
  EXPECT_TRUE(contains(trimmed(stopped.report), " SOLUTION TERMINATED IN SUBSP*,\n     RIGID BODY MODE(S) FOUND.\n"));
  EXPECT_TRUE(contains(stopped.errors, "equation 2, node 3, direction X")) << stopped.errors;
}

TEST(EigenErrors, MassesBelowZeroAreNotDefinite) {
  SpringDeck deck = spring_chain(2, 1.0, -1.0);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(contains(run.report, " SOLUTION TERMINATED IN SUBSP*,\n     PROJECTED MATRICES ARE NOT DEFINITE.\n"));
}

TEST(SturmCheck, AloneEndsTheMacro) {
  // Two springs and two masses of 1: eigenvalues 0.38 and 2.62. The number told is 2 whatever the cut-off.
  SpringDeck deck;
  const int wall = deck.point(0, 0, 0, "111111"), a = deck.point(1, 0, 0, "011111"), b = deck.point(2, 0, 0, "011111");
  deck.spring(wall, a, 1.0);
  deck.spring(a, b, 1.0);
  for (const int node : {a, b}) deck.mass(node, 1.0);
  for (const double squared_cut : {0.1, 1.5, 5.0}) {
    deck.want(1, cycles_per_second(squared_cut));
    deck.eign(0, 0, 1);
    const RunResult run = run_of(deck);
    EXPECT_EQ(run.status, 0) << run.errors;
    EXPECT_TRUE(
        contains(run.report, "0 S T U R M  S E Q U E N C E  C H E C K\n\n CUT-OFF FREQUENCY                 =  0."));
    EXPECT_TRUE(
        contains(run.report, " NO. OF EIGENVALUE EXISTING        =    2\n NO. OF FREQUENCIES REQUIRED       =    1\n"));
    EXPECT_FALSE(contains(run.report, " NO. OF FREQUENCIES WILL BE SOLVED ="));
    EXPECT_FALSE(contains(run.report, frequencies_heading));
    EXPECT_FALSE(contains(run.report, "ENERGY COMPUTED IN ACTCOL")) << "nothing is solved";
  }
}

TEST(SturmCheck, LowersWhatIsSolvedWhenFewerAreTold) {
  // tridiag(-1, 2, -1) of three, cut at 2.5: pivots -0.5, 1.5, -7/6; one of the two counted keeps its sign: told 2.
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.want(3, cycles_per_second(2.5));
  deck.eign(0, 0, 2);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(contains(run.report,
                       " NO. OF EIGENVALUE EXISTING        =    2\n NO. OF FREQUENCIES REQUIRED       =    3\n"
                       " NO. OF FREQUENCIES WILL BE SOLVED =    2\n NEW SIZE OF THE SUBSPACE          =    3\n"));
  EXPECT_EQ(printed_modes(run.report).size(), 2U);
  deck.macros += "EIGN\n    0    0    2\n";
  EXPECT_EQ(count_of(run_of(deck).report, "NO OF FREQUENCY REQUIRED      =    3"), 2)
      << "the card stands for each macro";
}

TEST(SturmCheck, LowersNothingWhenAsManyAreToldAsWanted) {
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.want(2, cycles_per_second(2.5));
  deck.eign(0, 0, 2);
  const RunResult run = run_of(deck);
  EXPECT_TRUE(contains(run.report, " NO. OF EIGENVALUE EXISTING        =    2\n"));
  EXPECT_FALSE(contains(run.report, " NO. OF FREQUENCIES WILL BE SOLVED ="));
}

TEST(SturmCheck, BelowACutOffThatIsTooLargeToBeSquaredTellsAllColumns) {
  // Of three coupled columns the second and the third count; the middle point has no mass, to which no cut-off matters.
  SpringDeck deck = spring_chain(3, 1.0, 1.0);
  deck.want(1, 1.0E200);
  deck.eign(0, 0, 1);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(contains(run.report, " NO. OF EIGENVALUE EXISTING        =    3\n"));
}

TEST(SturmCheck, OfADiagonalMatrixTellsNone) {
  SpringDeck deck = oscillator();
  deck.want(1, 1.0);
  deck.eign(0, 0, 2);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(
      contains(run.report, " NO. OF FREQUENCIES WILL BE SOLVED =    0\n NEW SIZE OF THE SUBSPACE          =    0\n"));
  EXPECT_TRUE(contains(run.report, " " + std::string(130, 'W') + "\n NO FREQUENCIES AND MODE SHAPES ARE SOLVED\n"));
  EXPECT_TRUE(contains(run.errors, "the Sturm check tells no mode")) << run.errors;
  EXPECT_FALSE(contains(run.report, frequencies_heading));
}

TEST(Cycles, EndWhenTheWantedModesHaveSettledAndTellEachSolve) {
  SpringDeck deck = spring_chain(30, 1.0, 1.0);
  deck.want(2);
  deck.eign(1, 40);
  const RunResult run = run_of(deck);
  ASSERT_EQ(run.status, 0) << run.errors;
  const int cycles = cycles_of(run.report);
  EXPECT_GT(cycles, 2);
  EXPECT_LT(cycles, 40);
  EXPECT_EQ(count_of(run.report, " *** ENERGY COMPUTED IN ACTCOL IS"), 4 * cycles) << "one line for each vector solved";
  const auto residuals = last_values(run.report, "RESIDUALS");
  ASSERT_EQ(residuals.size(), 4U);
  EXPECT_LE(residuals[0], 1e-5);
  EXPECT_LE(residuals[1], 1e-5);
  EXPECT_GT(residuals[3], 1e-5) << "the vectors behind the wanted modes need not settle";
  EXPECT_TRUE(contains(run.report, "     CURRENT EIGENVALUES, ITERATION   1\n"));
  EXPECT_TRUE(
      contains(run.report, "     CURRENT RESIDUALS,   ITERATION   1\n      0.10000000E+01      0.10000000E+01"));
  EXPECT_FALSE(contains(run.report, "PRE-MATURE"));
  EXPECT_EQ(run.errors, "");
  deck.eign(0, 40);
  EXPECT_EQ(cycles_of(run_of(deck).report), 0) << "only with additional printing";
}

TEST(Cycles, OfASecondMacroBeginAnew) {
  SpringDeck deck = spring_chain(30, 1.0, 1.0);
  deck.want(2);
  deck.eign(1, 40);
  const int once = cycles_of(run_of(deck).report);
  deck.macros += deck.macros;
  const std::string report = run_of(deck).report;
  EXPECT_EQ(cycles_of(report), 2 * once);
  EXPECT_EQ(count_of(report, "CURRENT RESIDUALS,   ITERATION   1\n      0.10000000E+01      0.10000000E+01"), 2);
}

TEST(Cycles, ThatAreTooFewAreToldAndTheLastValuesPrinted) {
  SpringDeck deck = spring_chain(30, 1.0, 1.0);
  deck.want(2);
  deck.eign(0, 3);
  const RunResult run = run_of(deck);
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(contains(run.report, " PRE-MATURE EXIT FROM *SUBSP*\n     NUMBER OF ITERATIONS PERFORMED      =   3\n"));
  EXPECT_EQ(printed_modes(run.report).size(), 2U);
  EXPECT_TRUE(contains(run.errors, "3 cycles have passed")) << run.errors;
}

TEST(ModeTables, TellAnEndlessPeriodForAFrequencyOfZero) {
  SpringDeck deck = spring_chain(2, 1.0, 1.0, false);  // a rigid body; with this shift its frequency is exactly zero
  deck.want(1, 0.0, 0.1);
  EXPECT_TRUE(contains(run_of(deck).report, "0   1      0.0000E+00  0.0000E+00         Inf\n"));
}

TEST(ModeTables, HaveTheirHeadingsAndRows) {
  SpringDeck deck = oscillator();
  const std::string report = run_of(deck).report;
  EXPECT_TRUE(contains(report,
                       " STRUCTURE FREQUENCIES\n\n MODE      CIRCULAR\n"
                       "           FREQUENCY   FREQUENCY   PERIOD\n"
                       "           (RAD/SEC)   (CYCLES/SEC) (SEC)\n"
                       "0   1      0.2000E+01  0.3183E+00  0.3142E+01\n"));
  EXPECT_TRUE(contains(report,
                       " STRUCTURE MODE SHAPES\n\n M O D E  S H A P E  -  N O .    1\n\n"
                       "         1    0.000000    0.000000    0.000000    0.000000    0.000000    0.000000\n"
                       "         2    1.000000    0.000000    0.000000    0.000000    0.000000    0.000000\n"));
  EXPECT_TRUE(contains(report, " MODAL CUT FORCES/MOMENTS\n"));
  EXPECT_TRUE(contains(report, "     1    0.00000E+00    0.00000E+00    0.00000E+00    0.00000E+00\n"));
}

}  // namespace
}  // namespace tidearc
