// The echo of every control card, label by label, and what DATAIN lays out at its end.
#include <gtest/gtest.h>

#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

#include "model/control.h"
#include "roof/datain.h"
#include "run_deck.h"
#include "scratch.h"
#include "truss_deck.h"

namespace tidearc::test {
namespace {

bool has(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

/// Label, blank, dots, blank, '=' in report column 55, then the value in five columns.
std::string count_line(const std::string& label, int value) {
  std::string line = "     " + label + " ";
  line.append(53 - line.size(), '.');
  char field[16];
  std::snprintf(field, sizeof field, " =%5d\n", value);
  return line + field;
}

/// Two nodes and a bar, with the second to fifth deck line given.
std::string bar_deck(const std::string& data_file, const std::string& post, const std::string& storage,
                     const std::string& sizes, const std::string& static_card, const std::string& dynamic_card) {
  return " CHEC   P4.314  CARDS\n" + data_file + "\n" + post + "\n" + storage + "\n" + sizes + "\n" +
         "    1       0.0\n    2      10.0\n    1    111111\n    2    011111\n" + "    1    1    1\n    1    1\n" +
         "    1    1000.0\n\n    1       1.0\n\n    1    1    2\n" + static_card + "\n" + dynamic_card +
         "\n    0    0    0\nNONE\n STOP\n";
}

std::string plain_deck() { return bar_deck("", "", "", "    2    2    0    0    0    0    2    0    0    1", "", ""); }

TEST(ControlCards, TheSizeCardIsEchoedToItsLastCode) {
  // Counts of sections that need cards stay 0; codes take values that ask for nothing.
  const std::string sizes = "    2    2    0    0    0    0    2    0    0    1    3    4    5    6    0";
  const std::string report = run_deck(bar_deck("", "", "", sizes, "", "")).report;
  const std::vector<std::pair<std::string, int>> lines = {{"TOTAL NUMBER OF NODES", 2},
                                                          {"NUMBER OF CONTROL NODES", 2},
                                                          {"NUMBER OF NODE COORD. GENERATION COMMANDS", 0},
                                                          {"NUMBER OF CATENARY GENERATION COMMANDS", 0},
                                                          {"NUMBER OF NODAL LOCAL COORDINATE SYSTEMS", 0},
                                                          {"NUMBER OF LOCAL COORD. ASSIGNMENT COMMANDS", 0},
                                                          {"NUMBER OF ZERO DISPLACEMENT COMMANDS", 2},
                                                          {"NUMBER OF EQUAL DISPLACEMENT COMMANDS", 0},
                                                          {"NUMBER OF NODAL MASS GENERATION COMMANDS", 0},
                                                          {"NUMBER OF DIFFERENT GROUPS OF ELEMENTS", 1},
                                                          {"GRAVITY AND WATER EFFECT CODE", 3},
                                                          {"EIGENSOLUTION INPUT CODE", 4},
                                                          {"ENERGY CALCULATION CODE", 5},
                                                          {"LBEM GEOMETRIC STIFFNESS CODE", 6},
                                                          {"BAND-WIDTH REDUCTION CODE", 0}};
  for (const auto& [label, value] : lines) EXPECT_TRUE(has(report, count_line(label, value))) << label;
  for (const char* meaning :
       {"0:  NO ENERGY CALCULATION", "1:  DO ENERGY CALCULATION", "0:  UPDATE LBEM GEOMETRIC STIFFNESS",
        "1:  CONSTANT LBEM GEOMETRIC STIFFNESS", "0:  NO\n", "1:  YES\n"})
    EXPECT_TRUE(has(report, meaning)) << meaning;
}

TEST(ControlCards, NegativeCountsAreZeroAndCodesKeepTheirSign) {
  const std::string sizes = "    2    2   -1   -2    0    0    2   -3   -4    1   -5";
  const RunResult run = run_deck(bar_deck("", "", "", sizes, "   -1    0    0    0   -2", ""));
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF NODE COORD. GENERATION COMMANDS", 0)));
  EXPECT_TRUE(has(run.report, count_line("GRAVITY AND WATER EFFECT CODE", -5)));
  EXPECT_TRUE(has(run.report, count_line("NUMBER OF NODAL FORCE PATTERNS", 0)));
  EXPECT_TRUE(has(run.report, count_line("SELF WEIGHT PATTERN GENERATION CODE", 0)));
}

TEST(ControlCards, TheStaticLoadCardIsEchoed) {
  const std::string report = run_deck(bar_deck("", "", "", "    2    2    0    0    0    0    2    0    0    1",
                                               "    0    0    0    0    7", ""))
                                 .report;
  for (const auto& [label, value] :
       std::vector<std::pair<std::string, int>>{{"NUMBER OF NODAL FORCE PATTERNS", 0},
                                                {"NUMBER OF FOLLOWER FORCE PATTERNS", 0},
                                                {"NUMBER OF NODAL TEMPERATURE PATTERNS", 0},
                                                {"NUMBER OF 4-NODE SURFACE PRESSURE PATTERNS", 0},
                                                {"SELF WEIGHT PATTERN GENERATION CODE", 7},
                                                {"BUOYANCY PATTERN GENERATION CODE", 0},
                                                {"STATIC CURRENT PATTERN GENERATION CODE", 0},
                                                {"NUMBER OF STATIC PRESCRIBED DISP. PATTERNS", 0}})
    EXPECT_TRUE(has(report, count_line(label, value))) << label;
}

TEST(ControlCards, TheFileCardsTellWhatTheirCodesMean) {
  const std::string report = run_deck(plain_deck()).report;
  for (const char* meaning : {"IF EQ. OLDF, RESTART RESULTS FROM OLD FILE",
                              "IF EQ. NEWF, RESULTS WRITTEN ON A NEW FILE",
                              "IF EQ. NOFL, NO FILE USED FOR RESULTS SAVE",
                              "IF EQ.     , NO FILE USED FOR RESULTS SAVE",
                              "IF EQ. 0 RESULTS NOT PRINTED",
                              "IF EQ. 1 PRINT ONLY GEOMETRY DATA",
                              "IF EQ. 2 PRINT ONLY ELEMENT RESULTS",
                              "IF EQ. 3 PRINT BOTH GEOM. AND ELEMENT RESULTS",
                              "IF EQ. OLDF, POST-PROC RESULTS FROM OLD FILE",
                              "IF EQ. NEWF, POST-PROC RESULTS ON A NEW FILE",
                              "IF EQ. NOFL, NO FILE USED FOR POST-PROCESSOR",
                              "IF EQ.     , NO FILE USED FOR POST-PROCESSOR",
                              "IF EQ. 0  TAMODEL.PST",
                              "IF EQ. 1  TAMODEL.p03, ...",
                              "IF EQ. 2  Both Types",
                              "IF EQ. CORE , ENTIRELY IN CORE",
                              "IF EQ. DISK , OUT-OF-CORE",
                              "IF EQ. SYMM , SYMMETRIC STIFFNESS MATRIX",
                              "IF EQ. USYM , UNSYMMETRIC STIFFNESS MATRIX",
                              "IF EQ. 0 , ALL AVAILABLE",
                              "PRINT CODE FOR RESTART RESULTS SEQUENCE ........ =    0"})
    EXPECT_TRUE(has(report, meaning)) << meaning;
}

TEST(ControlCards, PagesHaveTheirHeadings) {
  const std::string report = run_deck(plain_deck()).report;
  const auto framed = [](const std::string& page, const std::string& heading, std::size_t stars) {
    return page + std::string(stars, '*') + "\n" + heading + "\n " + std::string(stars, '*') + "\n";
  };
  EXPECT_TRUE(has(report, framed(" ", " PROBLEM INITIATION INFORMATION", 31)));
  EXPECT_TRUE(has(report, framed("1", " STORAGE ALLOCATION INFORMATION", 31)));
  EXPECT_TRUE(has(report, framed(" ", " PROBLEM SIZE CONTROL INFORMATION", 33)));
  EXPECT_TRUE(has(report, "\n STATIC LOAD SPECIFICATION CONTROL INFORMATION\n"));
  EXPECT_TRUE(has(report, "\n RESPONSE OUTPUT CONTROL INFORMATION\n"));
  EXPECT_TRUE(has(report, count_line("RIGID BODY OUTPUT CODE", 0) + "          0=NO,  1=YES\n"));
  EXPECT_TRUE(has(report, count_line("POST-PROCESSOR FILE TYPE", 0)));
}

TEST(ControlCards, TheFileTypeSetsTheSequenceLimit) {
  Scratch scratch(" NOFL    0\n NOFL   -1\n NOFL    2\n");
  for (const int limit : {-1, -1, 100}) {
    read_post_processor_card();
    EXPECT_EQ(output.NPSEQ, limit);
  }
}

TEST(ControlCards, ABlockSizeBeyondFiveColumnsIsEchoedAsAsterisks) {
  const std::string deck =
      bar_deck("", "", " CORE SYMM    123456", "    2    2    0    0    0    0    2    0    0    1", "", "");
  EXPECT_TRUE(has(run_deck(deck).report, "NUMBER OF WORDS IN ONE BLOCK FOR DISK OPTION ... =*****\n"));
}

TEST(Layout, TheStiffnessLineTellsItsFourValues) {
  // No pattern here: 4 words fewer than the 168 of a deck with one pattern, and no node lists, 12 words fewer.
  EXPECT_TRUE(has(run_deck(plain_deck()).report, " NSTO,LAVSST,KEDAT,MSTOR 1 2 153 4000000\n"));
}

TEST(Layout, AMatrixThatDoesNotFitStopsAfterItsLine) {
  // 1000 nodes on a line, 20 bars from the first to the last twenty: 60 columns that reach up to equation 1.
  std::string deck = " STAR   P4.314  WIDE\n\n\n\n 1000    2    0    0    0    0    0    0    0    1\n";
  deck += "    1       0.0\n 1000     999.0\n    1   20    1\n    1    1\n    1    1000.0\n\n    1       1.0\n\n";
  for (int k = 1; k <= 20; ++k) {
    char card[64];
    std::snprintf(card, sizeof card, "%5d    1%5d\n", k, 980 + k);
    deck += card;
  }
  deck += "\n\n    0    0    0\nNONE\n STOP\n";
  const RunResult run = run_deck(deck, "1M");
  EXPECT_EQ(run.status, 1);
  EXPECT_TRUE(has(run.report, " NSTO,LAVSST,KEDAT,MSTOR "));
  EXPECT_TRUE(has(run.report, "INPUT PHASE - STORAGE FOR STIFFNESS MATRIX"));
}

TEST(Layout, PrescribedPatternsNeedNoForcePattern) {
  TrussDeck deck = bar_along_x();
  deck.prescribe(2, 1, 0.02);
  deck.stat({{.factors = {}, .pfactors = {1.0}}});
  const RunResult run = run_deck(deck.text());
  EXPECT_EQ(run.status, 0) << run.errors;
  EXPECT_NEAR(truss_rows(run.report)[0].force, 2.0, 1e-9);
}

TEST(Deck, TabsReadAsBlanks) {
  std::string deck = plain_deck();
  const std::string card = "    1       0.0\n";
  const std::size_t at = deck.find(card);
  deck.replace(at, card.size(), "\t\t\t\t1\t      0.0\t\n");
  EXPECT_EQ(run_deck(deck).status, 0) << run_deck(deck).errors;
}

}  // namespace
}  // namespace tidearc::test
