// The cards of a macro of variable steps: defaults on both sides of their limits, echo, values that cannot be worked
// with; legend and heads on the progress file.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "dyn1_deck.h"
#include "dynamic/dyn1.h"
#include "model/control.h"
#include "run/run_block.h"
#include "run/units.h"
#include "scratch.h"
#include "solve/integration.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

struct CardRun {
  Dyn1Cards cards;
  IntegrationBlock constants;
  std::string report, errors;
  int runmod = 0;
};

/// Reads cards of a model of 30 equations; `change` sets what the fixture leaves usual.
CardRun read_cards(const Dyn1CardValues& values) {
  const std::string text = dyn1_text(values);
  Scratch scratch(text.substr(text.find('\n') + 1));
  run = {};
  sizes = {};
  sizes.NEQ = 30;
  integration = {};
  read_dyn1_cards();
  return {dyn1.cards, integration, trimmed(scratch.report()), scratch.errors(), run.RUNMOD};
}

Dyn1CardValues usual(int KSOL = 1) {
  Dyn1CardValues values;
  values.KSOL = KSOL;
  return values;
}

template <class Change>
CardRun with(int KSOL, Change&& change) {
  Dyn1CardValues values = usual(KSOL);
  change(values);
  return read_cards(values);
}

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

TEST(Dyn1Cards, TakeAPositiveAlphaAsZeroAndKeepItsNegative) {
  EXPECT_EQ(with(2, [](auto& v) { v.ALPHA = 0.1; }).constants.AB, 0.0);
  EXPECT_EQ(with(2, [](auto& v) { v.ALPHA = -0.1; }).constants.AB, 0.1);
  EXPECT_TRUE(has(with(2, [](auto& v) { v.ALPHA = -0.1; }).report,
                  "     INTEGRATION PARAMETER, ALPHA ................... = -0.1000E+00\n"));
}

TEST(Dyn1Cards, GiveStepFactorsTheirDefaults) {
  for (const int KSOL : {1, 3}) {
    const auto factors = [&](double REDF, double INCF) {
      const StepRules rules = with(KSOL, [&](auto& v) {
                                v.REDF = REDF;
                                v.INCF = INCF;
                              }).cards.rules;
      return std::pair(rules.REDF, rules.INCF);
    };
    EXPECT_EQ(factors(0.0, 0.0), std::pair(0.5, 2.0));
    EXPECT_EQ(factors(-1.0, -3.0), std::pair(0.5, 2.0));
    EXPECT_EQ(factors(1.0, 1.0), std::pair(1.0, 1.0));
    EXPECT_EQ(factors(1.000001, 0.999999), std::pair(0.5, 2.0));
    EXPECT_EQ(factors(0.25, 3.0), std::pair(0.25, 3.0));
  }
}

TEST(Dyn1Cards, LeaveZeroFactorsToTheErrorWithTheLocalError) {
  const CardRun cards = with(4, [](auto& v) { v.REDF = v.INCF = 0.0; });
  EXPECT_EQ(cards.cards.rules.REDF, 0.0);
  EXPECT_EQ(cards.cards.rules.INCF, 0.0);
  EXPECT_EQ(cards.runmod, 0);
}

TEST(Dyn1Cards, GiveCountsAndLimitsTheirDefaults) {
  const auto cards = [](auto&& change) { return with(1, change).cards; };
  EXPECT_EQ(cards([](auto& v) { v.NBELOW = 0; }).rules.NBELOW, 2);
  EXPECT_EQ(cards([](auto& v) { v.NBELOW = 1; }).rules.NBELOW, 1);
  EXPECT_EQ(cards([](auto& v) { v.NSUBMX = 0; }).NSUBMX, 10);
  EXPECT_EQ(cards([](auto& v) { v.NSUBMX = 1; }).NSUBMX, 1);
  EXPECT_EQ(cards([](auto& v) { v.DISMAX = 0.0; }).DISMAX, 1.0E15);
  EXPECT_EQ(cards([](auto& v) { v.DISMAX = -1.0; }).DISMAX, 1.0E15);
  EXPECT_EQ(cards([](auto& v) { v.DISMAX = 1.0E-9; }).DISMAX, 1.0E-9);
  EXPECT_EQ(cards([](auto& v) { v.EVMAX = 0.0; }).EVMAX, 1.0E15);
  EXPECT_EQ(cards([](auto& v) { v.EVMAX = 0.5; }).EVMAX, 0.5);
  EXPECT_EQ(cards([](auto& v) { v.VCUT = 0.0; }).limits.cutoff, 1.0E-4);
  EXPECT_EQ(cards([](auto& v) { v.VCUT = 1.0E-9; }).limits.cutoff, 1.0E-9);
  EXPECT_EQ(cards([](auto& v) { v.UBMAX = 0.0; }).UBMAX, 0.0) << "no default";
  EXPECT_EQ(cards([](auto& v) { v.UBLO = -1.0; }).UBLO, -1.0) << "no default";
}

TEST(Dyn1Cards, CompareTheUpperUnbalanceToleranceInSinglePrecision) {
  const auto upper = [](double UBUP) { return with(1, [&](auto& v) { v.UBUP = UBUP; }).cards.UBUP; };
  EXPECT_EQ(upper(0.0), 1.0E10);
  EXPECT_EQ(upper(0.001), 1.0E10);
  EXPECT_EQ(upper(.00100004), 0.00100004);
  EXPECT_GT(static_cast<double>(0.001F), 0.00100000004) << "what a value has to be above";
}

TEST(Dyn1Cards, CapTheNumberOfTopUnbalances) {
  EXPECT_EQ(with(2, [](auto& v) { v.NTOP = 25; }).cards.NTOP, 20);
  EXPECT_EQ(with(2, [](auto& v) { v.NTOP = -1; }).cards.NTOP, 0);
}

TEST(Dyn1Cards, WithoutATimeIntervalHaveNone) {
  const Dyn1Cards cards = with(2, [](auto& v) { v.outputs = "    1        0.   -2      -1.0    3       0.5"; }).cards;
  EXPECT_EQ(cards.nodal.steps, 1);
  EXPECT_EQ(cards.nodal.time, 1.0E15);
  EXPECT_EQ(cards.elements.steps, 0);
  EXPECT_EQ(cards.elements.time, 1.0E15);
  EXPECT_EQ(cards.envelopes.time, 0.5);
  EXPECT_EQ(cards.post.steps, 0);
  EXPECT_EQ(cards.post.time, 1.0E15);
}

TEST(Dyn1Cards, WithoutACapacityFactorHaveALevelThatIsNotReached) {
  const Dyn1Cards none = with(1, [](auto& v) { v.PRECMX = 0.5; }).cards;
  EXPECT_EQ(none.PRECF, 0.0);
  EXPECT_EQ(none.limits.PRECMX, 2.0);
  const Dyn1Cards constant = with(2, [](auto& v) { v.PRECF = 0.5; }).cards;
  EXPECT_EQ(constant.limits.PRECMX, 2.0) << "constant steps read no capacity factor";
  const Dyn1Cards on = with(1, [](auto& v) {
                         v.PRECF = -0.25;
                         v.PRECMX = 1.5;
                       }).cards;
  EXPECT_EQ(on.PRECF, 0.25);
  EXPECT_TRUE(on.continues);
  EXPECT_EQ(on.limits.PRECMX, 1.5);
}

TEST(Dyn1Cards, RefuseValuesThatNoAnalysisCanRunWith) {
  const auto refused = [](int KSOL, auto&& change) { return with(KSOL, change).runmod == 1; };
  EXPECT_FALSE(refused(1, [](auto&) {}));
  EXPECT_TRUE(refused(0, [](auto&) {}));
  EXPECT_TRUE(refused(5, [](auto&) {}));
  EXPECT_TRUE(refused(2, [](auto& v) { v.DT = 0.0; }));
  EXPECT_TRUE(refused(2, [](auto& v) { v.BETA = -1.0E-9; }));
  for (const int KSOL : {1, 3, 4}) {
    EXPECT_TRUE(refused(KSOL, [](auto& v) { v.ERRUP = 0.0; }));
    EXPECT_TRUE(refused(KSOL, [](auto& v) { v.ERRUP = 1.0, v.ERRLO = 1.001; }));
    EXPECT_FALSE(refused(KSOL, [](auto& v) { v.ERRUP = v.ERRLO = 1.0; }));
    EXPECT_TRUE(refused(KSOL, [](auto& v) { v.DTMIN = 0.1001; }));
    EXPECT_TRUE(refused(KSOL, [](auto& v) { v.DTMIN = -0.1001; }));
    EXPECT_FALSE(refused(KSOL, [](auto& v) { v.DTMIN = 0.1; }));
  }
  EXPECT_TRUE(refused(4, [](auto& v) { v.REDF = -0.5; }));
  EXPECT_TRUE(refused(4, [](auto& v) { v.REDF = 1.001; }));
  EXPECT_FALSE(refused(4, [](auto& v) { v.REDF = 1.0; }));
  EXPECT_TRUE(refused(4, [](auto& v) { v.INCF = -2.0; }));
  EXPECT_TRUE(refused(4, [](auto& v) { v.INCF = 0.5; }));
  EXPECT_FALSE(refused(2, [](auto& v) { v.ERRUP = -1.0; })) << "the card is not read";
}

TEST(Dyn1Cards, NameTheColumnsOfABadValue) {
  EXPECT_TRUE(has(with(1, [](auto& v) { v.ERRUP = 0.0; }).errors, "TAModel.inp line 2, columns 41-50:"));
  EXPECT_TRUE(has(with(7, [](auto&) {}).errors, "TAModel.inp line 1, columns 1-5:"));
}

TEST(Dyn1Cards, AreEchoedUnderTheirHeadings) {
  const std::string report = with(1, [](auto& v) { v.KACC = 1; }).report;
  for (const char* text :
       {"\n DYNAMIC ANALYSIS CONTROL INFORMATION\n",
        "\n TIME STEP SELECTION CONTROL PARAMETERS\n",
        "\n DYNAMIC ANALYSIS TERMINATION CONTROL\n",
        "\n DYNAMIC ANALYSIS OUTPUT CONTROL\n",
        "     SOLUTION TYPE .................................. =    1     EVENT-TO-EVENT WITH VARIABLE DELTA-T\n",
        "     ACCELERATION CORRECTION CODE ................... =    1     SUPPRESS ACCELERATION CORRECTION\n",
        "     STEP SIZE (INITIAL STEP FOR VARIABLE DELTA-T) .. =  0.1000E+00\n",
        "     INTEGRATION PARAMETER, BETA  ................... =  0.0000E+00\n",
        "     MASS PROPORTIONAL DAMPING FACTOR ........... =  0.0000E+00\n",
        "     NUMBER OF INITIAL CONDITIONS GENERATION COMMANDS =    0     INIT. COND FROM CURRENT RESULTS SEQ.\n",
        "     CODE FOR APPLYING GROUND ACC RECORDS ........... =    0\n",
        "     NUMBER OF FORCE-TH APPLICATION COMMANDS ........ =    0\n",
        "     NUMBER OF IMPOSED DIS-TH APPLICATION COMMANDS .. =    0\n",
        "     ELEMENT ENVELOPE INITIALIZATION CODE ........... =    0\n",
        "     CODE TO DUMP BEAM ELEMENT ENVELOPES TO TAPE .... =    0\n",
        "     MINIMUM ALLOWABLE STEP SIZE DELTA-T ............ =  0.1000E-05\n",
        "IF POSITIVE CONTINUE ANALYSIS WITH MIN. DELTA-T\n",
        "IF NEGATIVE STOP ANALYSIS IF EXCEEDED\n",
        "     MAXIMUM ALLOWABLE STEP SIZE DELTA-T ............ =  0.0000E+00\n",
        "     STEP SIZE REDUCTION FACTOR ..................... =  0.5000E+00\n",
        "     STEP SIZE INCREASE FACTOR ...................... =  0.2000E+01\n",
        "     UPPER TOLERANCE ON MIDSTEP ERROR ............... =  0.1000E+11\n",
        "     LOWER TOLERANCE ON MIDSTEP ERROR ............... =  0.0000E+00\n",
        "     NUMBER OF STEPS BELOW TOLERANCE FOR RESTEPPING.. =    2\n",
        "     MOMENT CODE FOR MIDSTEP ERROR .................. =    0\n",
        "     CAPACITY PRECISION FACTOR ...................... =  0.0000E+00\n",
        "     MAXIMUM ACCUMULATED PRECISION FACTOR............ =  0.2000E+01\n",
        "     MAX. NO. OF TIME STEPS FOR THIS ANALYSIS ....... =    1\n",
        "     MAX. TIME INCREMENT FOR THIS ANALYSIS .......... =  0.1000E+07\n",
        "     MAX. ALLOWABLE UNBALANCE FORCE ................. =  0.1000E+10\n",
        "     MAX. ALLOWABLE TOTAL DISPLACEMENT .............. =  0.1000E+16\n",
        "     MAX. DISPLACEMENT INCREMENT FOR EVENT CONTROL .. =  0.1000E+16\n",
        "     MAX. ALLOWABLE NUMBER OF SUBSTEPS .............. =   10\n",
        "     MAX. CUTOFF VELOCITY ........................... =  0.1000E-03\n",
        "     NUMBER OF NODE DOF's WITH LARGEST UNBALANCED F.. =    0\n",
        "     UPPER TOLERANCE OF UNBALANCED F. FOR RESTEPPING. =  0.1000E+11\n",
        "     LOWER TOLERANCE OF UNBALANCED F. FOR RESTEPPING. =  0.0000E+00\n",
        "RESPONSE IS PRINTED EVERY TIME STEP INTERVAL OR\n",
        "TIME INTERVAL SPECIFIED WHICHEVER OCCURS FIRST\n"})
    EXPECT_TRUE(has(report, text)) << text << report;
}

TEST(Dyn1Cards, NameTheOtherSolutionTypes) {
  EXPECT_TRUE(has(with(2, [](auto&) {}).report, "=    2     EVENT-TO-EVENT WITH CONSTANT DELTA-T\n"));
  EXPECT_TRUE(has(with(3, [](auto&) {}).report,
                  "=    3     VARIABLE DELTA-T W/O EVENT CALCULATION\n           USING MIDSTEP ERROR\n"));
  EXPECT_TRUE(has(with(4, [](auto&) {}).report,
                  "=    4     VARIABLE DELTA-T W/O EVENT CALCULATION\n           USING DISPL. LOCAL ERROR\n"));
  EXPECT_FALSE(has(with(2, [](auto&) {}).report, "TIME STEP SELECTION"));
  EXPECT_TRUE(has(with(3, [](auto&) {}).report, "=    0     APPLY ACCELERATION CORRECTION\n"));
}

MacroRun one_step(int KSOL) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  Dyn1CardValues cards = usual(KSOL);
  cards.DTMAX = 0.32;
  cards.ERRUP = 0.05;
  cards.ERRLO = 0.03;
  cards.DISMAX = 0.5;
  cards.TMAX = 4.0;
  cards.NSMAX = 1;
  return run_one(deck, cards);
}

TEST(Dyn1Legend, TellsTheColumnsWithTheirLimits) {
  const MacroRun run = one_step(3);
  EXPECT_TRUE(has(run.progress, "     START OF DYN1 MACRO: NUMBER =  1\n"));
  EXPECT_TRUE(
      has(run.progress,
          "     DYN1 MACRO OUTPUT INFORMATION:\n"
          "     (1) - LINE TYPE\n"
          "     1 - END OF STEP, RETAIN SAME DELTA-T\n"
          "     2 - END OF STEP, INCREASE DELTA-T\n"
          "     3 - END OF SUBSTEP, MIDSTEP ERROR WITHIN ALLOWABLE TOLERANCE\n"
          "     4 - END OF SUBSTEP, MIDSTEP ERROR EXCEEDS TOLERANCE, STEP TO BE REPEATED\n"
          "     5 - BEGINNING OF SUBSTEP, SUBSTEP COUNTER EXCEEDS MAXIMUM NUMBER OF ALLOWABLE SUBSTEPS, STEP TO "
          "BE REPEATED\n"
          "     (2) - CURRENT STEP NUMBER (MAX=      1)\n"
          "     (3) - CURRENT SUBSTEP NUMBER (MAX=10)\n"
          "     (4) - LOAD STEP (SEQUENCE) NUMBER (SAVED TO POSTPROCESSOR)\n"
          "     (5) - TOTAL NUMBER OF STIFFNESS REFORMULATIONS\n"
          "     (6) - CURRENT ANALYSIS TIME (MAX=  4.000    )\n"
          "     (7) - CURRENT TIME INTERVAL, (LIMIT=.320E+00)\n"
          "     (8) - NORM OF APPLIED LOAD\n"
          "     (9) - NORM OF OUT-OF-BALANCE LOAD\n"
          "     (10)- NORM OF MIDSTEP ERROR (MAX=.500E-01)\n"
          "     (11)- MAXIMUM ALLOWABLE DISPLACEMENT (LIMIT=.500    )\n"
          "     (17)- LOAD LEVEL FOR ULT\n"
          "     (18)- NAME OF NODE WITH MAXIMUM VELOCITY\n"
          "     (19)- DIRECTION CODE FOR THE NODE\n"
          "     (20)- THE VALUE OF MAXIMUM VELOCITY\n"))
      << run.progress;
  EXPECT_TRUE(has(run.report, "\n LINE TYPE DESCRIPTION\n     1 - END OF STEP, RETAIN SAME DELTA-T\n"));
}

TEST(Dyn1Legend, OfConstantStepsHasTheStepAndNoError) {
  const MacroRun run = one_step(2);
  EXPECT_TRUE(has(run.progress, "(LIMIT=.100E+00)")) << run.progress;
  EXPECT_TRUE(has(run.progress, "(10)- NORM OF MIDSTEP ERROR (MAX=0.00    )")) << run.progress;
}

/// Entries of a line with the columns in which they end.
std::vector<std::pair<std::string, int>> entries_of(const std::string& line) {
  std::vector<std::pair<std::string, int>> entries;
  std::string word;
  for (std::size_t i = 0; i <= line.size(); ++i) {
    const bool blank = i == line.size() || line[i] == ' ';
    if (!blank) word += line[i];
    const bool ends = i == line.size() || blank || line[i] == ')';
    if (ends && !word.empty()) {
      entries.emplace_back(word, static_cast<int>(blank ? i : i + 1));
      word.clear();
    }
  }
  return entries;
}

TEST(Dyn1Legend, HasItsHeadsOverTheColumnsOfALine) {
  using Entries = std::vector<std::pair<std::string, int>>;
  const std::vector<std::string> lines = lines_of(one_step(3).progress);
  const auto first = std::ranges::find_if(lines, [](const std::string& line) { return line.starts_with("(1)"); });
  ASSERT_LT(first, lines.end() - 2);
  EXPECT_EQ(entries_of(first[0]), (Entries{{"(1)", 3},
                                           {"(2)", 8},
                                           {"(3)", 11},
                                           {"(4)", 16},
                                           {"(5)", 21},
                                           {"(6)", 31},
                                           {"(7)", 39},
                                           {"(8)", 48},
                                           {"(9)", 57},
                                           {"(10)", 66},
                                           {"(11)", 75},
                                           {"(12)", 85},
                                           {"(13)", 94},
                                           {"(14)", 103},
                                           {"(15)", 112},
                                           {"(16)", 121},
                                           {"(17)", 128},
                                           {"(18)", 133},
                                           {"(19)", 138}}));
  EXPECT_EQ(entries_of(first[1]),
            (Entries{{"T", 1},         {"STEP", 8},       {"SB", 11},       {"LOAD", 16},     {"STIF", 21},
                     {"CURRENT", 31},  {"DELTA-T", 39},   {"APPLIED", 48},  {"UNBALANC", 57}, {"MIDSTEP", 66},
                     {"MAX.", 75},     {"UNBALANCE", 85}, {"EXTERNAL", 94}, {"KINETIC", 103}, {"ELASTIC", 112},
                     {"VISCOUS", 121}, {"ULT", 128},      {"NODE", 133},    {"D", 135},       {"MAX.", 144}}));
  EXPECT_EQ(entries_of(first[2]), (Entries{{"STEP", 16},
                                           {"TIME", 31},
                                           {"LOAD", 48},
                                           {"LOAD", 57},
                                           {"ERROR", 66},
                                           {"DISPL.", 75},
                                           {"ENERGY", 85},
                                           {"PLASTIC", 112},
                                           {"DAMPING", 121},
                                           {"LEVEL", 128},
                                           {"VEL.", 144}}));
}

TEST(Dyn1Legend, ALineHasItsValuesInTheirColumns) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  Dyn1CardValues cards = usual(2);
  cards.DT = 0.02;
  cards.NINIT = 1;
  cards.commands = initial_card(2, 1.0);
  const MacroRun run = run_one(deck, cards);
  EXPECT_TRUE(has(run.progress, "\n1      1  1    1    1    0.0200  0.0200 .000E+00 ")) << run.progress;
  ASSERT_EQ(run.lines.size(), 1U);
  const Dyn1Line& line = run.lines[0];
  EXPECT_NEAR(line.displacement, 0.0198, 0.00005);
  EXPECT_NEAR(line.external, 2.0, 0.005);
  EXPECT_NEAR(line.kinetic + line.elastic, 2.0, 0.03) << "two digits each";
  EXPECT_EQ(line.viscous, 0.0);
  EXPECT_EQ(line.level, 1.0);
  EXPECT_EQ(line.node, 2);
  EXPECT_EQ(line.direction, 1);
  EXPECT_NEAR(line.velocity, 0.980, 0.0005);
}

TEST(Dyn1Macro, WithABadCardReadsItsCommandsAndEnds) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  Dyn1CardValues bad = usual(2);
  bad.DT = 0.0;
  bad.NINIT = 1;
  bad.commands = initial_card(2, 1.0);
  deck.macro(dyn1_text(bad) + dyn1_text(usual(2)));
  const MacroRun run = run_macros(deck.text());
  ASSERT_EQ(run.behind.size(), 2U);
  EXPECT_EQ(run.status, 4);
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 TERMINATED: FATAL ERRORS ENCOUNTERED IN INPUT CARDS\n"));
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  2 TERMINATED:FATAL ERRORS FOUND BEFORE THIS MACRO\n"));
  EXPECT_TRUE(run.lines.empty());
}

TEST(Dyn1Macro, WithAMarkedCommandEndsLikeABadCard) {
  Dyn1Deck deck;
  deck.bar(400.0, 4.0);
  Dyn1CardValues cards = usual(2);
  cards.NFORCE = 1;
  cards.commands = command_card(2, 3);  // there is no record
  const MacroRun run = run_one(deck, cards);
  EXPECT_TRUE(has(run.progress, "     DYN1 MACRO NUMBER  1 TERMINATED: FATAL ERRORS ENCOUNTERED IN INPUT CARDS\n"));
  EXPECT_EQ(run.last().runmod, 1);
}

}  // namespace
}  // namespace tidearc::test
