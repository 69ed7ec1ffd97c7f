// Element input by the contract: group headers, banners, files, masses, column heights; loading and the storage report.
#include "elements/contract/input.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <limits>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/work.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

bool tells(const Line& line, const std::string& words) {
  return trimmed(line.report()).find(words) != std::string::npos;
}

TEST(ElementInput, EveryGroupOpensANewPageWithItsHeader) {
  Line line(3, group_card(1, 1, 7, "TOWER LEGS") + spring_card(7, 1, 2), 1);
  ELDATA();
  EXPECT_TRUE(tells(line,
                    "1********************************\n"
                    " ELEMENT SPECIFICATION, GROUP   1\n"
                    " ********************************\n"
                    "\n"
                    "     FAKE SPRINGS\n"
                    "\n"
                    "     NUMBER OF ELEMENTS IN THIS GROUP ............... =    1\n"
                    "     NUMBER OF FIRST ELEMENT IN THIS GROUP .......... =    7\n"
                    "     DAMPING COEFFICIENT, BETA-O .................... =  0.5000E+00\n"
                    "     DAMPING COEFFICIENT, BETA-T .................... =  0.2500E+00\n"
                    "\n"
                    "     TOWER LEGS\n"))
      << line.report();
}

TEST(ElementInput, TheGroupRecordHoldsTheHeader) {
  Line line(3, group_card(1, 1, 7, "TOWER LEGS") + spring_card(7, 1, 2), 1);
  ELDATA();
  FILE(units.NT5, "REWI");
  GroupRecord record;
  FILE(units.NT5, "READ", 2022, &record);
  EXPECT_EQ(record.ITYPE, 1);
  EXPECT_EQ(record.NUMEL, 1);
  EXPECT_EQ(record.NFIRST, 7);
  EXPECT_EQ(std::string(record.TITLE.begin(), record.TITLE.begin() + 10), "TOWER LEGS");
  EXPECT_EQ(record.LEI, spring_words);
  EXPECT_EQ(record.LFIX, spring_first);
  EXPECT_EQ(record.LTAN, 42);
  EXPECT_EQ(record.NDOF, 6);
  EXPECT_EQ(record.BETAO, 0.5);
  EXPECT_EQ(record.BETAT, 0.25);
}

TEST(ElementInput, WordsOfTheGroupRecordStandWhereOtherProgramsLook) {
  GroupRecord record;
  record.LEI = 14;
  record.NDOF = 18;
  record.BETAT = 2.0;
  record.properties[0] = 23;
  const Word* word = reinterpret_cast<const Word*>(&record);
  EXPECT_EQ(word[14 - 1], 14);
  EXPECT_EQ(word[18 - 1], 18);
  EXPECT_EQ(*reinterpret_cast<const double*>(word + 21 - 1), 2.0);
  EXPECT_EQ(word[23 - 1], 23);
}

TEST(ElementInput, AFirstNumberBelowOneIsOne) {
  for (const int NFIRST : {0, -5}) {
    Line line(3, group_card(1, 1, NFIRST) + spring_card(1, 1, 2), 1);
    ELDATA();
    EXPECT_TRUE(tells(line, "NUMBER OF FIRST ELEMENT IN THIS GROUP .......... =    1"));
  }
}

TEST(ElementInput, AGroupWithoutElementsReadsItsCardsAndMakesNoRecords) {
  Line line(3, group_card(1, 0) + group_card(1, 1) + spring_card(1, 1, 2), 2);
  line.build();
  EXPECT_EQ(element_counts.NELTOT, 1);
  line.displace(1, 1, 0.5);
  determine_states();
  EXPECT_EQ(calls, std::vector<std::string>{"state 2/1"});
}

TEST(ElementInput, NoGroupsAtAllStillLeaveTheirFilesAndAProfile) {
  Line line(3, "", 0);
  line.build();
  EXPECT_EQ(trimmed(line.scratch().contents("TAModel.bcd1")), " 1\n");
  EXPECT_EQ(solver.NSTO, 6) << "the diagonal";
  determine_states();
  EXPECT_EQ(solver.NELCHK, 0);
}

TEST(ElementInput, MakesTheFilesOfTheFamilies) {
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 1);
  ELDATA();
  EXPECT_EQ(trimmed(line.scratch().contents("TAModel.bcd1")), " 1\n");
  for (const char* file : {"TrulCapacity", "BCDATA.TAP"}) {
    EXPECT_TRUE(std::filesystem::exists(file)) << file;
  }
}

TEST(ElementInput, TheTitleOfType22LosesItsFirstWord) {
  Line line(3, group_card(22, 1, 1, "SLIPPING") + spring_card(1, 1, 2), 1);
  ELDATA();
  EXPECT_EQ(std::string(group.TITLE.begin(), group.TITLE.begin() + 8), "    PING");
}

TEST(ElementInput, ATypeThatIsNotBuiltStops) {
  Line line(3, group_card(5, 1), 1);
  EXPECT_EQ(stop_of([] { ELDATA(); }), status_fatal);
  EXPECT_TRUE(tells(line, " **ERROR! ELEMENT TYPE  5 IS NOT AVAILABLE."));
  EXPECT_NE(line.errors().find("line 1, columns 1-5"), std::string::npos) << line.errors();
}

TEST(ElementInput, AMissingGroupCardEndsInTheIOLayer) {
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 2);
  EXPECT_EQ(stop_of([] { ELDATA(); }), status_io);
}

// A spring of nodes 1 and 3 connects equations 1 to 3 and 7 to 9: columns 7, 8, 9 reach up to row 1.
TEST(ElementInput, ColumnsReachTheSmallestConnectedEquation) {
  Line line(4, group_card(1, 1) + spring_card(1, 1, 3), 1);
  ELDATA();
  const Integers diagonal = pool.integers(solver.IDIAG, NEQ1());
  const int heights[9] = {1, 2, 3, 1, 1, 1, 7, 8, 9};
  int address = 0;
  for (int e = 1; e <= 9; ++e) {
    address += heights[e - 1];
    EXPECT_EQ(diagonal(e), address) << e;
  }
  EXPECT_EQ(solver.NHBW, 9);
  EXPECT_EQ(solver.NSTO, 33);
}

TEST(ElementInput, TheSinkConnectsNothing) {
  Line line(3, group_card(1, 1) + spring_card(1, 2, 3), 1);
  ELDATA();
  EXPECT_EQ(solver.NSTO, 3 + 6) << "node 2 with itself; node 3 is held";
}

TEST(ElementInput, MassesAndWeightsOfElementsAddUpFromZero) {
  Line line(3, group_card(1, 2) + spring_card(1, 1, 2) + spring_card(2, 1, 3), 1);
  pool.reals(patterns.KSELFW, NEQ1())(1) = 99.0;  // left by an earlier problem
  pool.reals(masses.KEDATP, NEQ1())(1) = 99.0;
  pool.reals(patterns.KBUOYV, NEQ1())(2) = 99.0;
  pool.reals(patterns.KCURRV, NEQ1())(2) = 99.0;
  gravity.direction = {1.0, 0.0, 0.0};
  ELDATA();
  EXPECT_EQ(pool.reals(masses.AMASS, NEQ1())(1), 2.0);
  EXPECT_EQ(pool.reals(patterns.KSELFW, NEQ1())(1), 4.0);
  EXPECT_EQ(pool.reals(patterns.KBUOYV, NEQ1())(2), 0.0);
  EXPECT_EQ(pool.reals(patterns.KCURRV, NEQ1())(2), 0.0);
}

TEST(ElementNumbers, FollowTheRulesOfAGroup) {
  ElementNumbering numbering(5, 4);  // 5 .. 8
  EXPECT_EQ(numbering.order(4), CardOrder::sequence);
  EXPECT_EQ(numbering.order(6), CardOrder::sequence) << "the first card bears the first number";
  EXPECT_EQ(numbering.order(5), CardOrder::next);
  numbering.accept(5);
  EXPECT_EQ(numbering.order(5), CardOrder::sequence);
  EXPECT_EQ(numbering.order(6), CardOrder::next);
  EXPECT_EQ(numbering.order(8), CardOrder::gap);
  EXPECT_EQ(numbering.order(9), CardOrder::sequence);
  EXPECT_FALSE(numbering.complete());
  numbering.accept(8);
  EXPECT_TRUE(numbering.complete());
  EXPECT_TRUE(ElementNumbering(1, 0).complete());
}

TEST(ElementNumbers, HoldForTheLargestNumbers) {
  const int largest = std::numeric_limits<int>::max();
  ElementNumbering numbering(largest, largest);
  EXPECT_EQ(numbering.order(largest), CardOrder::next);
  numbering.accept(largest);
  EXPECT_FALSE(numbering.complete());
  EXPECT_EQ(numbering.order(largest), CardOrder::sequence);
  EXPECT_GT(stepped_node(2, largest, 2), 0) << "a node beyond the model stays beyond it";
  EXPECT_LT(stepped_node(2, -largest, 2), 0);
}

TEST(StorageReport, TellsEveryValue) {
  Line line(3, group_card(1, 2) + spring_card(1, 1, 2) + spring_card(2, 2, 3) + group_card(11, 1) + "    1\n", 2);
  line.build();
  const int elements = 2 * (spring_words + 1) + (words(sizeof(FakeBlock)) + 1);
  EXPECT_TRUE(tells(line, format("'\n\n\n\n*********************\n STORAGE REQUIREMENTS\n*********************\n\n'"
                                 "5X,'STORAGE REQUIRED EXCLUDING ELEMENT DATA ........ =',I12,/,"
                                 "5X,'MINIMUM TOTAL STORAGE REQUIRED ................. =',I12,/,"
                                 "5X,'TOTAL STORAGE PROVIDED ......................... =',I12,/,"
                                 "5X,'TOTAL NUMBER OF EQUILIBRIUM EQUATIONS .......... =',I12,/,"
                                 "5X,'MAXIMUM BAND WIDTH OF STRUCTURE MATRIX ......... =',I12,/,"
                                 "5X,'STORAGE FOR STRUCTURE STIFFNESS MATRIX ......... =',I12",
                                 storage.KEDAT - 1, storage.KEDAT - 1 + elements, 100000, 6, 6, 21)))
      << line.report();
}

/// Words up to and with the element data of a small model, by a run in a large pool.
int words_needed() {
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 1);
  line.build();
  return storage.NEEDED;
}

TEST(StorageReport, ExactlyTheProvidedStoragePasses) {
  const int needed = words_needed();
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 1, false, needed);
  EXPECT_FALSE(stop_of([&] { line.build(); }).has_value());
  EXPECT_TRUE(executing());
}

TEST(StorageReport, OneWordLessStopsBehindTheReport) {
  const int needed = words_needed();
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 1, false, needed - 1);
  EXPECT_EQ(stop_of([&] { line.build(); }), status_fatal);
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(tells(line, format("'MINIMUM TOTAL STORAGE REQUIRED ................. =',I12", needed)));
  EXPECT_TRUE(tells(line, "FATAL ERROR DETECTED IN ELDATA - JOB ABORTED"));
}

TEST(StorageReport, LaterGroupsAreCountedWithoutLoading) {
  const std::string cards = group_card(1, 1) + spring_card(1, 1, 2);
  const int needed = words_needed();
  Line line(3, cards + cards, 2, false, needed - 1);
  EXPECT_EQ(stop_of([&] { line.build(); }), status_fatal);
  EXPECT_TRUE(tells(line, format("'REQUIRED ................. =',I12", needed + spring_words + 1)));
}

TEST(StorageReport, DiskJobsNeedTheLongestRecord) {
  Line line(3, group_card(1, 2) + spring_card(1, 1, 2) + spring_card(2, 2, 3), 1);
  solver.KSTOR = 2;
  line.build();
  EXPECT_EQ(storage.NEEDED, storage.KEDAT - 1 + spring_words + 1);
}

TEST(StorageReport, CheckRunsReportWithoutLoading) {
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2), 1);
  run.RUNMOD = 1;
  line.build();
  EXPECT_TRUE(tells(line, "STORAGE REQUIREMENTS"));
  EXPECT_EQ(*pool.words(storage.KEDAT, 1), 0);
}

}  // namespace
}  // namespace tidearc::test
