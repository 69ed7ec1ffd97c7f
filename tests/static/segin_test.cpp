// The control cards of a load segment: fields, rules, defaults, echo, stops.
#include <gtest/gtest.h>

#include "segment_fixture.h"

namespace tidearc::test {
namespace {

TEST(SegmentHeading, StandsBetweenRowsOf25Asterisks) {
  SegmentRun deck(Cards{}.text());
  segment.NSEG = 4;
  segment.ISEG = 3;
  EXPECT_TRUE(SEGIN());
  const std::string row = " " + std::string(25, '*');
  EXPECT_TRUE(has_block(deck.scratch.report(), {row, "     LOAD SEGMENT NO.    3", row}));
  EXPECT_EQ(segment.NSEG, 4);
  EXPECT_EQ(segment.ISEG, 3);
}

TEST(SegmentHeading, TheIncrementVectorIsClearedAtEachSegment) {
  SegmentRun deck(Cards{}.text());
  for (double& value : equation_vector(arrays.RINC)) value = 3.0;
  SEGIN();
  for (const double value : equation_vector(arrays.RINC)) EXPECT_EQ(value, 0.0);
}

TEST(SolutionCard, ReadsItsFieldsByTheirColumns) {
  const std::string card = "    1    2     3.5    4    1      0.25   12    0    1    0   30    2     -1.25";
  SegmentRun deck(card + "\n\n\n" + Cards{}.participation);
  SEGIN();
  EXPECT_EQ(segment.KSTEP, 1);
  EXPECT_EQ(segment.KDIR, 1);
  EXPECT_EQ(segment.STEP0, 0.25);
  EXPECT_EQ(segment.NSTEPS, 12);
  EXPECT_EQ(segment.KEVENT, 0);
  EXPECT_EQ(segment.KITER, 1);
  EXPECT_EQ(segment.MAXIT, 30);
  EXPECT_EQ(segment.KTERM, 2);
  EXPECT_EQ(segment.FQUIT, -1.25);
}

TEST(SolutionCard, EchoGivesEveryItemWithItsCodes) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 2;
  cards.SEGVAL = 12.5;
  cards.NSVEC = 0;
  cards.KDIR = 4;
  cards.STEP0 = 0.0625;
  cards.NSTEPS = 16;
  cards.KEVENT = 7;
  cards.KITER = 2;
  cards.KIPAR = 3;
  cards.MAXIT = 25;
  cards.KTERM = 2;
  cards.FQUIT = 0.5;
  EXPECT_TRUE(
      has_block(echo_of(cards), {"     *** SOLUTION SPECIFICATION ***",
                                 "",
                                 "     STEP TYPE            ........................... =    2",
                                 "     1: LOAD STEPPING.",
                                 "     2: DISPLACEMENT STEPPING",
                                 "     STEPPING PARAMETER ............................. =    2",
                                 "     1: EUCLIDEAN NORM.",
                                 "     2: MAXIMUM VALUE.",
                                 "     3: SPECIFIED STEPPING VECTOR(S).",
                                 "     SEGMENT VALUE .................................. =  0.1250E+02",
                                 "     NO. OF STEPPING VECTORS ........................ =    0",
                                 "     STEP DIRECTION CODE ............................ =    4",
                                 "     1: INCREASE LOAD MAGNITUDE EACH STEP.",
                                 "     2: INCREASE SCALAR DISPLACEMENT USING (CRITICAL) STEP VECTOR.",
                                 "     3: INCREASE SCALAR DISPLACEMENT USING DIRECTION VECTOR.",
                                 "     4: DETERMINE SIGN OF LOAD INCREMENT USING BERGANS CURRENT STIFFNESS PARAMETER.",
                                 "     INITIAL STEP FACTOR FOR SEGMENT   .............. =  0.6250E-01",
                                 "     MAXIMUM NUMBER OF STEPS ........................ =   16",
                                 "     ELEMENT EVENT CODE ............................. =    7",
                                 "     0: NO EVENT CHECK.",
                                 "     1: EVENT CHECK, NO LIMIT ON NUMBER OF EVENTS.",
                                 " N .GT.1: CHECK EVENTS, UP TO N EVENTS IN ANY STEP.",
                                 "     ITERATION TYPE ................................. =    2",
                                 "     1: CONSTANT LOAD.",
                                 "     2: CONSTANT SCALAR DISPLACEMENT.",
                                 "     ITERATION PARAMETER ............................ =    3",
                                 "     1: CONSTANT WORK.",
                                 "     2: CONSTANT \"ARC LENGTH\".",
                                 "     3: CRITICAL STEPPING VECTOR.",
                                 "     4: ITERATION VECTOR.",
                                 "     MAX. NO. OF ITERATIONS PER STEP ................ =   25",
                                 "     TERMINATION CODE ............................... =    2",
                                 "     0: IF MAXIT IS EXCEEDED, RESTEP.",
                                 "     1: IF MAXIT IS EXCEEDED, STOP.",
                                 "     2: IF MAXIT IS EXCEEDED, CONTINUE.",
                                 "     TERMINATION LOAD FACTOR......................... =  0.5000E+00",
                                 "     : STOP IF MACRO LOAD FACTOR LE FQUIT"}));
}

TEST(SolutionCard, LoadSteppingDropsTheItemsOfDisplacementSteppingBeforeTheEcho) {
  Cards cards;
  cards.KSTEP = 1;
  cards.KNMS = 3;
  cards.SEGVAL = 2.0;
  cards.NSVEC = 2;
  const std::string echo = echo_of(cards);  // no vector cards stand in the deck
  EXPECT_TRUE(has_line(echo, "     STEPPING PARAMETER ............................. =    0"));
  EXPECT_TRUE(has_line(echo, "     SEGMENT VALUE .................................. =  0.0000E+00"));
  EXPECT_TRUE(has_line(echo, "     NO. OF STEPPING VECTORS ........................ =    0"));
}

TEST(SolutionCard, AnyStepTypeButTwoIsLoadStepping) {
  Cards cards;
  cards.KSTEP = 7;
  cards.KNMS = 1;
  echo_of(cards);
  EXPECT_EQ(segment.KSTEP, 7);
  EXPECT_EQ(segment.KNMS, 0);
}

TEST(SolutionCard, SegmentValueIsKeptForNormAndMaximumOnly) {
  Cards cards;
  cards.KSTEP = 2;
  cards.SEGVAL = 1.5;
  for (const int KNMS : {1, 2}) {
    cards.KNMS = KNMS;
    echo_of(cards);
    EXPECT_EQ(segment.SEGVAL, 1.5);
    EXPECT_EQ(segment.NSVEC, 0);
  }
  cards.KNMS = 3;
  cards.vectors = "    0\n";
  echo_of(cards);
  EXPECT_EQ(segment.SEGVAL, 0.0);
}

TEST(SolutionCard, NumberOfSteppingVectorsIsKeptForSpecifiedVectorsOnly) {
  Cards cards;
  cards.KSTEP = 2;
  cards.NSVEC = 2;
  cards.KNMS = 1;
  echo_of(cards);
  EXPECT_EQ(segment.NSVEC, 0);
  cards.KNMS = 3;
  cards.vectors = "    0\n    0\n";
  echo_of(cards);
  EXPECT_EQ(segment.NSVEC, 2);
}

TEST(SolutionCard, SpecifiedVectorsWithoutANumberAreOneVector) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 3;
  cards.vectors = "    0\n";
  for (const int NSVEC : {0, -4}) {
    cards.NSVEC = NSVEC;
    const std::string echo = echo_of(cards);
    EXPECT_TRUE(has_line(echo, "     NO. OF STEPPING VECTORS ........................ =    1"));
  }
}

TEST(SolutionCard, AnUnknownSteppingParameterActsAsTheNorm) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 9;
  cards.SEGVAL = 1.5;
  cards.NSVEC = 3;
  echo_of(cards);
  EXPECT_EQ(segment.SEGVAL, 1.5);
  EXPECT_EQ(segment.NSVEC, 0);
}

TEST(SolutionCard, ANegativeNumberOfStepsAsksForTheEndReportAndLosesItsSign) {
  Cards cards;
  cards.NSTEPS = -8;
  const std::string echo = echo_of(cards);
  EXPECT_EQ(segment.NSTEPS, 8);
  EXPECT_TRUE(segment.end_report);
  EXPECT_TRUE(has_line(echo, "     MAXIMUM NUMBER OF STEPS ........................ =    8"));
  cards.NSTEPS = 8;
  echo_of(cards);
  EXPECT_FALSE(segment.end_report);
}

TEST(SolutionCard, IterationParameterBelongsToConstantDisplacement) {
  Cards cards;
  cards.KIPAR = 2;
  for (const int KITER : {0, 1, 3}) {
    cards.KITER = KITER;
    EXPECT_TRUE(has_line(echo_of(cards), "     ITERATION PARAMETER ............................ =    0"));
  }
  cards.KITER = 2;
  EXPECT_TRUE(has_line(echo_of(cards), "     ITERATION PARAMETER ............................ =    2"));
}

const std::string direction_message = "     FATAL ERROR! KDIR = 2 AND KNMS NOT = 3 IS A NO-NO!";

/// Reads a segment of an execution run whose direction code is wrong: every card is read, the flag is set.
void expect_direction_is_fatal(const Cards& cards) {
  SegmentRun deck(cards.text() + "NEXT\n");
  EXPECT_FALSE(SEGIN());
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(has_block(deck.scratch.report(), {row_of_F, direction_message, row_of_F}));
  EXPECT_EQ(deck.scratch.errors(),
            "TAModel.inp line 1, columns 26-30: FATAL ERROR! KDIR = 2 AND KNMS NOT = 3 IS A NO-NO!\n");
  EXPECT_EQ(next_card(), "NEXT");
}

TEST(StepDirection, CriticalVectorWithoutSteppingVectorsIsFatal) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KDIR = 2;
  expect_direction_is_fatal(cards);
}

TEST(StepDirection, CriticalVectorIsFatalInLoadSteppingWhateverTheSteppingParameter) {
  Cards cards;
  cards.KNMS = 3;
  cards.KDIR = 2;
  expect_direction_is_fatal(cards);
}

TEST(StepDirection, AboveFiveIsFatal) {
  Cards cards;
  cards.KDIR = 6;
  expect_direction_is_fatal(cards);
}

TEST(StepDirection, FiveNegativeAndCriticalWithVectorsPass) {
  Cards cards;
  for (const int KDIR : {5, 0, -3}) {
    cards.KDIR = KDIR;
    SegmentRun deck(cards.text());
    EXPECT_TRUE(SEGIN());
    EXPECT_EQ(run.RUNMOD, 0);
  }
  cards.KSTEP = 2;
  cards.KNMS = 3;
  cards.KDIR = 2;
  cards.vectors = "    0\n";
  EXPECT_EQ(echo_of(cards).find("NO-NO"), std::string::npos);
}

TEST(StepDirection, AFatalSegmentIsNotAlsoStoppedForMissingCapabilities) {
  Cards cards;
  cards.KSTEP = 2;
  cards.KNMS = 1;
  cards.KDIR = 6;
  expect_direction_is_fatal(cards);
}

TEST(ControlCard, ReadsAllFourteenFieldsToColumn85) {
  const std::string card = "    2    3    0    4    5    6    7    8    9      0.75   11   12      13.514.2500000";
  ASSERT_EQ(card.size(), 85U);
  Cards cards;
  SegmentRun deck(cards.solution_card() + card + "\n" + cards.convergence_card() + cards.participation);
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.KSSTF, 2);
  EXPECT_EQ(segment.KISTF, 3);
  EXPECT_EQ(segment.KBFGS, 0);
  EXPECT_EQ(segment.KISTA, 4);
  EXPECT_EQ(segment.KPRINT, 5);
  EXPECT_EQ(segment.KRST, 6);
  EXPECT_EQ(segment.KPOST, 7);
  EXPECT_EQ(segment.KMEMB, 8);
  EXPECT_EQ(segment.KPOSTN, 9);
  EXPECT_EQ(segment.ULTFAC, 0.75);
  EXPECT_EQ(segment.MACPR, 11);
  EXPECT_EQ(segment.IROB, 12);
  EXPECT_EQ(segment.ARCL, 13.5);
  EXPECT_EQ(segment.STEPSZI, 14.25);
  EXPECT_TRUE(has_block(deck.scratch.report(),
                        {"     *** STIFFNESS, STATE AND OUTPUT CONTROL ***",
                         "",
                         "     STEP CONTROL FOR STIFFNESS UPDATE .............. =    2",
                         "     ITERATION CONTROL FOR STIFFNESS UPDATE ......... =    3",
                         "     BFGS CODE ...................................... =    0",
                         "     0: NO BFGS.",
                         "     1: BFGS BETWEEN STIFFNESS UPDATES.",
                         "     ITERATION CONTROL FOR STATE UPDATE ............. =    4",
                         "     RESULTS PRINT CODE ............................. =    5",
                         "     0: NONE.",
                         "     1: END OF SEGMENT.",
                         "     2: EVERY STEP.",
                         "     3: EVERY ITERATION.",
                         "     RESULTS SAVE CODE .............................. =    6",
                         "     0: NO.",
                         "     1: ON RESTART FILE AT END OF SEGMENT.",
                         "     POST-PROCESSOR RESULTS SAVE CODE ............... =    7",
                         "     0: NO.",
                         "     1: AT END OF SEGMENT.",
                         "     MEMBER STRESS CHECK RESULTS SAVE CODE .......... =    8",
                         "     0: NO.",
                         "     1: AT END OF SEGMENT.",
                         "     POST-PROCESSOR RESULTS SAVE CODE ............... =    9",
                         "     0: DO NOT SAVE IN STEP LEVEL",
                         "     N: SAVE RESULTS AT EVERY N STEPS",
                         "     ULT LOAD FACTOR ................................ =  0.7500E+00",
                         "     MACPR,IROB,ARCL,STEPSZI ................ =   11   12  0.1350E+02  0.1425E+02"}));
}

TEST(ControlCard, BlankStiffnessControlsMeanEveryStepAndEveryIteration) {
  Cards cards;
  cards.KSSTF = 0;
  cards.KISTF = 0;
  const std::string echo = echo_of(cards);
  EXPECT_EQ(segment.KSSTF, 1);
  EXPECT_EQ(segment.KISTF, 1);
  EXPECT_TRUE(has_line(echo, "     STEP CONTROL FOR STIFFNESS UPDATE .............. =    1"));
  EXPECT_TRUE(has_line(echo, "     ITERATION CONTROL FOR STIFFNESS UPDATE ......... =    1"));
}

TEST(ControlCard, StepControlOfTwoKeepsABlankIterationControl) {
  Cards cards;
  cards.KSSTF = 2;
  cards.KISTF = 0;
  echo_of(cards);
  EXPECT_EQ(segment.KSSTF, 2);
  EXPECT_EQ(segment.KISTF, 0);
}

TEST(ControlCard, BlankStateControlTakesTheNumberOfIterations) {
  Cards cards;
  cards.MAXIT = 17;
  EXPECT_TRUE(has_line(echo_of(cards), "     ITERATION CONTROL FOR STATE UPDATE ............. =   17"));
  cards.KISTA = 3;
  echo_of(cards);
  EXPECT_EQ(segment.KISTA, 3);
}

TEST(ConvergenceCard, ReadsAndEchoesItsTenFields) {
  const std::string card = "    1    1      0.25     0.125      12.5    1       4.0      0.25       0.5    3";
  Cards cards;
  SegmentRun deck(cards.solution_card() + "\n" + card + "\n" + cards.participation);
  EXPECT_TRUE(SEGIN());
  EXPECT_EQ(segment.KUTYPE, 1);
  EXPECT_EQ(segment.KUMOM, 1);
  EXPECT_EQ(segment.TOLU, 0.25);
  EXPECT_EQ(segment.TOLL, 0.125);
  EXPECT_EQ(segment.USCALE, 12.5);
  EXPECT_EQ(segment.NLS, 1);
  EXPECT_EQ(segment.SUP, 4.0);
  EXPECT_EQ(segment.SLOW, 0.25);
  EXPECT_EQ(segment.TOLS, 0.5);
  EXPECT_EQ(segment.NTOP, 3);
  EXPECT_TRUE(has_block(
      deck.scratch.report(),
      {"     *** CONVERGENCE CRITERIA ***", "", "     UNBALANCE TYPE ................................. =    1",
       "     0: MAXIMUM VALUE.", "     1: EUCLIDEAN NORM.", "     OTHER VALUES: WEIGHTED NORM.",
       "     MOMENT CODE FOR UNBALANCE ...................... =    1", "     0: IGNORE.", "     1: INCLUDE.",
       "     UNBALANCE TOLERANCE, FOR ALL EXCEPT LAST STEP .. =  0.2500E+00",
       "     UNBALANCE TOLERANCE FOR LAST STEP .............. =  0.1250E+00",
       "     UNBALANCE FOR STEP MAGNITUDE SCALING ........... =  0.1250E+02",
       "     GT 0.0: LINEAR SCALING UNTIL UNBALANCE LESS THAN VALUE.",
       "     MAXIMUM NO. OF LINE SEARCHES IN ITERATION PHASE. =    1",
       "     UPPER SEARCH LIMIT ............................. =  0.4000E+01",
       "     LOWER SEARCH LIMIT ............................. =  0.2500E+00",
       "     CONVERGENCE TOLERANCE FOR LINE SEARCH .......... =  0.5000E+00",
       "     NTOP ........................................... =    3"}));
}

TEST(ConvergenceCard, ABlankLastToleranceTakesTheGeneralOne) {
  Cards cards;
  cards.TOLU = 0.75;
  EXPECT_TRUE(has_line(echo_of(cards), "     UNBALANCE TOLERANCE FOR LAST STEP .............. =  0.7500E+00"));
}

TEST(ConvergenceCard, NoLineSearchesMeansOne) {
  Cards cards;
  for (const int NLS : {0, -2}) {
    cards.NLS = NLS;
    EXPECT_TRUE(has_line(echo_of(cards), "     MAXIMUM NO. OF LINE SEARCHES IN ITERATION PHASE. =    1"));
  }
}

TEST(StepFactor, TakesTheInitialFactorUnlessArcLengthIsAskedFor) {
  Cards cards;
  cards.STEP0 = 0.25;
  cards.STEPSZI = 0.5;
  SegmentRun deck(cards.text());
  statics.STEPF = 0.125;
  SEGIN();
  EXPECT_EQ(statics.STEPF, 0.25);
}

TEST(StepFactor, ArcLengthIterationBeginsWithTheCardsSizeOrTheLastOne) {
  Cards cards;
  cards.KITER = 2;
  cards.KIPAR = 2;
  cards.STEP0 = 0.25;
  {
    SegmentRun deck(cards.text());
    run.RUNMOD = 1;
    statics.STEPF = 0.125;
    SEGIN();
    EXPECT_EQ(statics.STEPF, 0.125);
  }
  {
    SegmentRun deck(cards.text());
    run.RUNMOD = 1;
    statics.STEPF = 0.0;
    SEGIN();
    EXPECT_EQ(statics.STEPF, 0.25);
  }
  cards.STEPSZI = 0.5;
  SegmentRun deck(cards.text());
  run.RUNMOD = 1;
  statics.STEPF = 0.125;
  SEGIN();
  EXPECT_EQ(statics.STEPF, 0.5);
}

TEST(ArcLength, APositiveCardValueReplacesTheCurrentOne) {
  Cards cards;
  for (const auto& [card, expected] : {std::pair{2.5, 2.5}, {0.0, 7.0}, {-1.0, 7.0}}) {
    cards.ARCL = card;
    SegmentRun deck(cards.text());
    statics.ARC = 7.0;
    SEGIN();
    EXPECT_EQ(statics.ARC, expected);
  }
}

const std::string top_heading =
    " *****  TOP OUT-OF-BALANCE FORCES IN STATIC ANALYSIS *****\n LOAD STEP\n NODE  DOF   OUT-OF-BALANCE\n";

TEST(TopUnbalances, AreCappedAtTheEquationsAndAtTwenty) {
  Cards cards;
  for (const auto& [NTOP, NEQ, expected] :
       {std::array{4, 6, 4}, {6, 6, 6}, {7, 6, 6}, {20, 40, 20}, {21, 40, 20}, {-3, 6, 0}, {0, 6, 0}}) {
    cards.NTOP = NTOP;
    SegmentRun deck(cards.text());
    sizes.NEQ = NEQ;
    SEGIN();
    EXPECT_EQ(segment.NTOP, expected);
  }
}

TEST(TopUnbalances, TheFileIsOpenedOnceAndEachSegmentWritesTheHeading) {
  Cards cards;
  cards.NTOP = 2;
  SegmentRun deck(cards.text() + cards.text());
  SEGIN();
  EXPECT_EQ(trimmed(deck.scratch.contents("TAP32")), top_heading);
  SEGIN();
  EXPECT_EQ(trimmed(deck.scratch.contents("TAP32")), top_heading + top_heading);
}

TEST(TopUnbalances, NoFileWithoutThemNorInADataCheckRun) {
  Cards cards;
  {
    SegmentRun deck(cards.text());
    SEGIN();
    EXPECT_FALSE(is_open_formatted(UNIT_TOP));
  }
  cards.NTOP = 2;
  SegmentRun deck(cards.text());
  run.RUNMOD = 1;
  SEGIN();
  EXPECT_FALSE(is_open_formatted(UNIT_TOP));
}

}  // namespace
}  // namespace tidearc::test
