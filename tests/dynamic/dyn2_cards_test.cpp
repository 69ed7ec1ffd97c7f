// The cards of a DYN2 macro: echo, defaults, values that cannot be worked with; the words at its start and its end.
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "dynamic_run.h"
#include "row_deck.h"

namespace tidearc::test {
namespace {

Dyn2Cards still() {
  Dyn2Cards cards;
  cards.DT = 0.02;
  return cards;
}
RunResult run(const Dyn2Cards& cards, const std::string& command = "STAR") {
  RowDeck deck = one_mass(400, 4);
  deck.dyn2(cards);
  return run_deck(deck.text(command));
}
bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Dyn2Echo, HasEveryItemWithItsLabel) {
  Dyn2Cards cards = still();
  cards.ALPHA = -0.1;
  cards.BETA = 0.3;
  cards.DMASS = 0.5;
  cards.NSTEP = 2;
  cards.KPNOD = 3;
  cards.KPELM = 4;
  cards.KPENV = 5;
  cards.KRST = 6;
  cards.KENV = 1;
  cards.KDUMP = 8;
  cards.KPOST = 9;
  cards.MAXIT = 7;
  cards.KSSTF = 11;
  cards.KISTF = 12;
  cards.KISTA = 13;
  cards.KTERM = 1;
  cards.TOL = 0.25;
  cards.KUTYPE = 2;
  cards.KUMOM = 1;
  cards.NTOP = 1;
  const RunResult result = run(cards);
  EXPECT_EQ(result.status, 0) << result.errors;
  const std::string expected =
      " *************************************\n"
      " DYNAMIC ANALYSIS CONTROL INFORMATION\n"
      " *************************************\n"
      "\n"
      "     INTEGRATION STEP SIZE DELTA-T (SECS) ........... =  0.2000E-01\n"
      "     INTEGRATION PARAMETER, ALPHA ................... = -0.1000E+00\n"
      "     INTEGRATION PARAMETER, BETA .................... =  0.3000E+00\n"
      "     MASS PROPORTIONAL DAMPING FACTOR ........... =  0.5000E+00\n"
      "     NUMBER OF INTEGRATION TIME STEPS ............... =     2\n"
      "     NUMBER OF INITIAL CONDITIONS GENERATION COMMANDS =     0     INIT. COND FROM CURRENT RESULTS SEQ.\n"
      "     CODE FOR APPLYING GROUND ACC RECORDS ........... =     0\n"
      "     NUMBER OF FORCE-TH APPLICATION COMMANDS ........ =     0\n"
      "     NUMBER OF IMPOSED DIS-TH APPLICATION COMMANDS .. =     0\n"
      "     NODAL RESPONSES ............................ =     3\n"
      "     ELEMENT RESPONSES .......................... =     4\n"
      "     NODAL AND ELEMENT PEAK RESPONSES ........... =     5\n"
      "     TIME STEP INTERVAL, SAVE RESULTS ON RESTART FILE =     6\n"
      "     ELEMENT ENVELOPE INITIALIZATION CODE ........... =     1     INITIALIZED TO CURRENT STATE\n"
      "     CODE TO DUMP BEAM ELEMENT ENVELOPES TO TAPE .... =     8\n"
      "     TIME STEP INTERVAL,SAVE RESULTS ON POST-PROC FILE=     9\n"
      "     CODE TO OUTPUT WAVE AND INERTIA LOADS .......... =     0\n"
      "\n"
      " DYNAMIC SOLUTION CONTROL PARAMETERS\n"
      "\n"
      "     MAX. NO. OF ITERATIONS IN ANY TIME STEP ........ =    7\n"
      "     TIME STEP CONTROL FOR STIFFNESS UPDATE ......... =   11\n"
      "     ITERATION CONTROL FOR STIFFNESS UPDATE ......... =   12\n"
      "     ITERATION CONTROL FOR STATE UPDATE ............. =   13\n"
      "     EXECUTION TERMINATION CODE ..................... =    1     TERMINATE EXECUTION WITH PRINT\n"
      "     CONVERGENCE TOLERANCE FOR EQUILIBRIUM UNBALANCE  =  0.2500E+00\n"
      "     UNBALANCE TYPE ................................. =    2\n"
      "     MOMENT CODE FOR UNBALANCE ...................... =    1\n"
      "     NUMBER OF D.O.F. TO BE PRINTED WITH LARGEST OUT-OF-BALANCED FORCES ..................... =    1\n"
      "     ULT OPTION FOR CREATING WAVE FORCE PATTERN WITHOUTPERFORMING STRUCTURAL ANALYSIS (YES=1) ..... =    0\n";
  EXPECT_TRUE(has(trimmed(result.report), expected)) << result.report;
}

TEST(Dyn2Echo, TellsTheMeaningOfCodes) {
  Dyn2Cards cards = still();
  cards.NINIT = -1;
  const std::string rest = run(cards).report;
  EXPECT_TRUE(has(rest, "COMMANDS =    -1     ZERO INITIAL VEL AND ACC CONDITIONS"));
  EXPECT_TRUE(has(rest, "     EXECUTION TERMINATION CODE ..................... =    0     PROCEED TO NEXT TIME STEP"));
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  EXPECT_TRUE(has(run(cards).report, "COMMANDS =     1     INITIAL COND. INPUT THRU CARDS"));
}

TEST(Dyn2Defaults, ControlsThatAreNotPositiveTakeTheirDefaults) {
  for (const int value : {0, -3}) {
    Dyn2Cards cards = still();
    cards.MAXIT = cards.KSSTF = cards.KISTF = cards.KISTA = value;
    cards.KPNOD = cards.KPELM = cards.KPENV = cards.KRST = cards.KPOST = value;
    cards.NTOP = value;
    const RunResult result = run(cards);
    for (const char* line :
         {"MAX. NO. OF ITERATIONS IN ANY TIME STEP ........ =    1\n",
          "TIME STEP CONTROL FOR STIFFNESS UPDATE ......... =    1\n",
          "ITERATION CONTROL FOR STIFFNESS UPDATE ......... =    0\n",
          "ITERATION CONTROL FOR STATE UPDATE ............. =    1\n",
          "NODAL RESPONSES ............................ =     0\n",
          "ELEMENT RESPONSES .......................... =     0\n",
          "NODAL AND ELEMENT PEAK RESPONSES ........... =     0\n", "SAVE RESULTS ON RESTART FILE =     0\n",
          "SAVE RESULTS ON POST-PROC FILE=     0\n", "OUT-OF-BALANCED FORCES ..................... =    0\n"})
      EXPECT_TRUE(has(result.report, line)) << line;
    EXPECT_EQ(result.status, 0);
  }
}

TEST(Dyn2Defaults, WithoutAlphaAndBetaTheConstantsAreThoseOfTheTrapezoidalRule) {
  const std::string report = run(still()).report;
  EXPECT_TRUE(has(report, "INTEGRATION PARAMETER, ALPHA ................... =   0.00000\n"));
  EXPECT_TRUE(has(report, "INTEGRATION PARAMETER, BETA .................... =   0.25000\n"));
}

TEST(Dyn2Defaults, APositiveAlphaIsSilentlyZero) {
  Dyn2Cards cards = still();
  cards.ALPHA = 0.1;
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.report, "INTEGRATION PARAMETER, ALPHA ................... =  0.0000E+00\n"));
  EXPECT_FALSE(has(result.report, "WWWWW"));
  EXPECT_EQ(result.errors, "");
  cards.ALPHA = -0.1;
  const std::string report = run(cards).report;
  EXPECT_TRUE(has(report, "INTEGRATION PARAMETER, ALPHA ................... =  -0.10000\n"));
  EXPECT_TRUE(has(report, "INTEGRATION PARAMETER, BETA .................... =   0.30250\n")) << "(1 + 0.1)^2 / 4";
}

TEST(Dyn2Defaults, AlphaBelowMinusAThirdIsWarnedAbout) {
  Dyn2Cards cards = still();
  cards.ALPHA = -0.3333333;
  EXPECT_FALSE(has(run(cards).report, "DISSIPATION FALLS OFF"));
  cards.ALPHA = -0.3333334;
  const RunResult result = run(cards);
  EXPECT_TRUE(
      has(result.report, std::string(130, 'W') + "\n ALPHA IS BELOW -1/3: THE NUMERICAL DISSIPATION FALLS OFF"));
  EXPECT_EQ(result.status, 0);
}

TEST(Dyn2Defaults, TheLargestUnbalancesAreAtMostAllEquationsAndTwenty) {
  Dyn2Cards cards = still();
  cards.NTOP = 5;
  EXPECT_TRUE(has(run(cards).report, "OUT-OF-BALANCED FORCES ..................... =    1\n"));
  RowDeck deck;
  deck.springs.assign(25, 100.0);
  deck.masses.assign(25, 1.0);
  cards.NTOP = 24;
  deck.dyn2(cards);
  EXPECT_TRUE(has(run_deck(deck.text()).report, "OUT-OF-BALANCED FORCES ..................... =   20\n"));
}

constexpr const char* completed = "     DYN2 MACRO NUMBER  1 COMPLETED: MAXIMUM NUMBER OF STEPS REACHED\n";
constexpr const char* bad_cards = "     DYN2 MACRO NUMBER  1 TERMINATED: FATAL ERRORS ENCOUNTERED IN INPUT CARDS\n";
constexpr const char* before = "     DYN2 MACRO NUMBER  1 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO\n";
constexpr const char* unbalanced =
    "     DYN2 MACRO NUMBER  1 TERMINATED: EXCEEDING MAX. TOLERANCE OF OUT-OF-BALANCE FORCE\n";

TEST(Dyn2Ends, AllStepsDone) {
  const RunResult result = run(still());
  EXPECT_TRUE(has(result.progress, "     START OF DYN2 MACRO: NUMBER =  1\n"));
  EXPECT_TRUE(has(result.progress, completed));
  EXPECT_TRUE(result.ended);
}

TEST(Dyn2Ends, WithoutStepsNothingIsDoneAndTheMacroIsComplete) {
  for (const int NSTEP : {0, -1}) {
    Dyn2Cards cards = still();
    cards.NSTEP = NSTEP;
    const RunResult result = run(cards);
    EXPECT_TRUE(has(result.progress, completed));
    EXPECT_FALSE(has(result.report, "RESPONSE AT TIME STEP"));
  }
}

TEST(Dyn2Ends, AStepSizeThatIsNotPositiveIsABadCard) {
  for (const double DT : {0.0, -0.1}) {
    Dyn2Cards cards = still();
    cards.DT = DT;
    const RunResult result = run(cards);
    EXPECT_TRUE(has(result.progress, bad_cards));
    EXPECT_TRUE(has(result.errors, "columns 1-10: THE STEP SIZE DELTA-T IS NOT POSITIVE")) << result.errors;
    EXPECT_EQ(result.status, 4);
    EXPECT_FALSE(has(result.report, "RESPONSE AT TIME STEP"));
    EXPECT_TRUE(result.ended) << "the run goes on to its end";
  }
}

TEST(Dyn2Ends, ANegativeBetaIsABadCard) {
  Dyn2Cards cards = still();
  cards.BETA = -0.01;
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.progress, bad_cards));
  EXPECT_TRUE(has(result.errors, "columns 21-30: THE INTEGRATION PARAMETER BETA IS NEGATIVE")) << result.errors;
  EXPECT_EQ(result.status, 4);
}

TEST(Dyn2Ends, BehindABadCardAllCommandsAreReadSoThatTheNextMacroIsMet) {
  RowDeck deck = one_mass(400, 4);
  deck.NDFRC = 1;
  deck.forces = table_record({{0.0, 1.0}, {9.0, 1.0}}, true);
  Dyn2Cards cards;  // no step size
  cards.NINIT = 1;
  cards.NFORCE = 2;
  cards.commands = initial_card(2, 1.0) + command_card(2, 1) + command_card(2, 1);
  deck.dyn2(cards);
  deck.dyn2(still());
  const RunResult result = run_deck(deck.text());
  EXPECT_TRUE(has(result.progress, bad_cards)) << result.errors;
  EXPECT_TRUE(has(result.progress, "     START OF DYN2 MACRO: NUMBER =  2\n"));
  EXPECT_TRUE(has(result.progress, "     DYN2 MACRO NUMBER  2 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO\n"));
  EXPECT_TRUE(result.ended);
}

TEST(Dyn2Ends, ACommandThatIsMarkedIsABadCard) {
  Dyn2Cards cards = still();
  cards.NFORCE = 1;
  cards.commands = command_card(2, 1);  // there is no record
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.progress, bad_cards));
  EXPECT_FALSE(has(result.report, "RESPONSE AT TIME STEP"));
}

TEST(Dyn2Ends, InADataCheckTheCardsAreReadAndNothingIsAnalysed) {
  Dyn2Cards cards = still();
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  const RunResult result = run(cards, "CHEC");
  EXPECT_EQ(result.status, 0) << result.errors;
  EXPECT_TRUE(has(result.progress, before));
  EXPECT_TRUE(has(result.report, "INTEGRATION STEP SIZE DELTA-T"));
  EXPECT_FALSE(has(result.report, "RESPONSE AT TIME STEP"));
  EXPECT_FALSE(has(result.progress, "OUTPUT INFORMATION"));
  cards.DT = 0.0;
  EXPECT_EQ(run(cards, "CHEC").status, 3) << "an error of the data";
}

TEST(Dyn2Ends, AStepThatDoesNotConvergeEndsTheMacroWithPrintWhenTheCardAsksForIt) {
  Dyn2Cards cards = still();
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  cards.NSTEP = 3;
  cards.KTERM = 1;
  cards.TOL = -1.0;  // nothing is good enough
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.progress, unbalanced));
  EXPECT_EQ(result.status, 4);
  EXPECT_TRUE(
      has(result.report,
          " ****  EXECUTION TERMINATED, NO CONVERGENCE  ****\n ****  PROCEED WITH NEXT PROBLEM (IF ANY)    ****\n"
          " RESPONSE UNDER DYNAMIC LOADS\n"))
      << result.report;
  EXPECT_NEAR(displacement(result.report, " X", 2), 0.019802, 1e-6) << "the state at hand";
  EXPECT_TRUE(has(result.report, "      VELOCITY             0.00000E+00  0.98020E+00\n")) << "with its motion";
  EXPECT_TRUE(has(result.report, "RESULTS FOR GROUP"));
  EXPECT_TRUE(has(result.report, "NODAL DISPLACEMENT ENVELOPES"));
  EXPECT_FALSE(has(result.report, "RESPONSE AT TIME STEP")) << "no step was accepted";
  EXPECT_TRUE(dyn2_rows(result.progress).empty());
}

TEST(Dyn2Ends, AStepThatDoesNotConvergeIsAcceptedWithTerminationCodeZero) {
  Dyn2Cards cards = still();
  cards.NSTEP = 3;
  cards.MAXIT = 4;
  cards.TOL = -1.0;
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.progress, completed));
  const std::vector<Dyn2Row> rows = dyn2_rows(result.progress);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_EQ(rows[2].iteration, 4) << "of the last solution";
}

TEST(Dyn2Ends, AFailedMacroKeepsTheNextOnesFromRunning) {
  RowDeck deck = one_mass(400, 4);
  Dyn2Cards cards = still();
  cards.KTERM = 1;
  cards.TOL = -1.0;
  deck.dyn2(cards);
  deck.dyn2(still());
  const RunResult result = run_deck(deck.text());
  EXPECT_TRUE(has(result.progress, "     DYN2 MACRO NUMBER  2 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO\n"));
  EXPECT_EQ(result.status, 4);
}

TEST(Dyn2WaveOutput, IsRefusedWhileThereAreNoWaveLoads) {
  Dyn2Cards cards = still();
  cards.KRISAV = 1;
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.report, "\n ***ERROR*** NODAL WAVE OUTPUT PARAMETERS INCONSISTENT (SEG H & SEG L)\n"));
  EXPECT_EQ(result.status, 1);
  EXPECT_FALSE(result.ended);
}

TEST(Dyn2WaveOutput, LoadsAloneNeedTheirOutput) {
  Dyn2Cards cards = still();
  cards.ISLULT = 1;
  const RunResult result = run(cards);
  EXPECT_TRUE(has(result.report,
                  "\n **** INPUT ERROR, EXECUTATION TO BE TERMINATED ****\n"
                  "     TO SET \"ISLULT = 1\", \"KRISAV = 1\" SHOULD BE SET AS WELL.\n"));
  EXPECT_TRUE(has(result.progress, bad_cards));
  EXPECT_EQ(result.status, 4);
}

}  // namespace
}  // namespace tidearc::test
