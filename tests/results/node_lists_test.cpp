// The lists of nodes for output: their cards, their room, their echo.
#include "results/node_lists.h"

#include <gtest/gtest.h>

#include "node_model.h"
#include "results/reports.h"

namespace tidearc::test {
namespace {

std::vector<int> nodes_in(const NodeList& list) {
  std::vector<int> result;
  for (int i = 1; i <= list.count(); ++i) result.push_back(list.node(i));
  return result;
}

TEST(PrintLists, AreReadAxisByAxisAndEchoedUnderTheirHeading) {
  Scratch scratch("    2    3\n    5\n    1    4    6\n");
  free_nodes(6);
  output.NPR = {2, 1, 3};
  PRLIST();
  EXPECT_EQ(nodes_in(print_list(1)), (std::vector<int>{2, 3}));
  EXPECT_EQ(nodes_in(print_list(2)), (std::vector<int>{5}));
  EXPECT_EQ(nodes_in(print_list(3)), (std::vector<int>{1, 4, 6}));
  const std::string row = " " + std::string(43, '*') + "\n";
  EXPECT_EQ(trimmed(scratch.report()), "\n\n" + row + "     LIST OF NODES FOR DISPLACEMENT PRINT OUTPUT\n" + row +
                                           "\n      X DISPLACEMENT RESPONSE\n\n          2     3\n"
                                           "\n      Y DISPLACEMENT RESPONSE\n\n          5\n"
                                           "\n      Z DISPLACEMENT RESPONSE\n\n          1     4     6\n");
}

TEST(PrintLists, AZeroListEchoesNoneAndReadsNoCard) {
  Scratch scratch("NEXT\n");
  free_nodes(6);
  output.NPR = {0, 0, 0};
  PRLIST();
  const std::string report = trimmed(scratch.report());
  EXPECT_NE(report.find("\n\n      X DISPLACEMENT RESPONSE - NONE\n\n      Y DISPLACEMENT RESPONSE - NONE\n\n"
                        "      Z DISPLACEMENT RESPONSE - NONE\n"),
            std::string::npos);
  std::string line;
  ASSERT_TRUE(next_line(units.NDIN, line));
  EXPECT_EQ(line, "NEXT");
}

TEST(PrintLists, AllNodesTakeNoCardAndNoRoomAndAreEchoed) {
  Scratch scratch("NEXT\n");
  free_nodes(18);
  output.NPR = {0, -1, 0};
  const int before = storage.NEXT;
  PRLIST();
  EXPECT_EQ(storage.NEXT, before);
  EXPECT_EQ(print_list(2).count(), 18);
  EXPECT_EQ(print_list(2).node(18), 18);
  EXPECT_EQ(line_after(scratch.report(), "      Y DISPLACEMENT RESPONSE", 2),
            "          1     2     3     4     5     6     7     8     9    10    11    12    13    14    15    16");
  EXPECT_EQ(line_after(scratch.report(), "      Y DISPLACEMENT RESPONSE", 3), "         17    18");
}

TEST(PrintLists, SixteenNodesFillACardAndSeventeenNeedTwo) {
  std::string card;
  for (int node = 1; node <= 16; ++node) card += (node < 10 ? "    " : "   ") + std::to_string(node);
  Scratch scratch(card + "\n" + card + "\n   17\n");
  free_nodes(20);
  output.NPR = {16, 17, 0};
  PRLIST();
  EXPECT_EQ(print_list(1).count(), 16);
  EXPECT_EQ(print_list(1).node(16), 16);
  EXPECT_EQ(print_list(2).count(), 17);
  EXPECT_EQ(print_list(2).node(17), 17);
}

TEST(PrintLists, TakeTheirLengthAndAPadWordWhenItIsOdd) {
  Scratch scratch("    1    2    3\n\n");
  free_nodes(6);
  output.NPR = {3, 0, 2};
  const int before = storage.NEXT;
  PRLIST();
  EXPECT_EQ(output.KPR[0], before);
  EXPECT_EQ(output.KPR[1], before + 4);  // an empty list stands where the next begins
  EXPECT_EQ(output.KPR[2], before + 4);
  EXPECT_EQ(storage.NEXT, before + 6);
}

TEST(PrintLists, AListThatFitsExactlyPassesAndOneWordMoreStops) {
  const std::string cards = "    1    2    3    4\n";
  {
    Scratch scratch(cards);
    free_nodes(6, 40);  // 36 words of equation numbers
    output.NPR = {4, 0, 0};
    EXPECT_FALSE(stop_of([] { PRLIST(); }).has_value());
  }
  Scratch scratch(cards);
  free_nodes(6, 39);
  output.NPR = {4, 0, 0};
  EXPECT_EQ(stop_of([] { PRLIST(); }), status_fatal);
  EXPECT_NE(scratch.report().find("INPUT PHASE - LIST OF OUTPUT NODES"), std::string::npos);
}

TEST(PrintLists, AHugeLengthStopsBeforeItIsTouched) {
  Scratch scratch("    1\n");
  free_nodes(6);
  output.NPR = {2147483647, 2147483647, 2147483647};
  EXPECT_EQ(stop_of([] { PRLIST(); }), status_fatal);
}

TEST(PrintLists, ANodeOutOfRangeIsADataErrorAndIsLeftOut) {
  for (const std::string wrong : {"    7", "   -2"}) {
    Scratch scratch("    2" + wrong + "    6\n");
    free_nodes(6);
    output.NPR = {0, 3, 0};
    PRLIST();
    EXPECT_EQ(nodes_in(print_list(2)), (std::vector<int>{2, 6}));
    EXPECT_EQ(run.RUNMOD, 1);
    EXPECT_NE(
        scratch.report().find(" ***** DATA ERROR *****      NODE " + wrong + "  OUT OF RANGE, ENTERING CHEC MODE"),
        std::string::npos);
    EXPECT_EQ(scratch.errors().rfind("TAModel.inp line 1, columns 6-10: NODE", 0), 0U) << scratch.errors();
  }
}

TEST(PrintLists, ZerosAtTheEndOfAListAreNoError) {
  Scratch scratch("    2    6\n");
  free_nodes(6);
  output.NPR = {5, 0, 0};
  PRLIST();
  EXPECT_EQ(nodes_in(print_list(1)), (std::vector<int>{2, 6}));
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST(PrintLists, AZeroBeforeAnotherNodeIsADataError) {
  Scratch scratch("    2    0    6\n");
  free_nodes(6);
  output.NPR = {3, 0, 0};
  PRLIST();
  EXPECT_EQ(nodes_in(print_list(1)), (std::vector<int>{2, 6}));
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_EQ(scratch.errors().rfind("TAModel.inp line 1, columns 6-10: NODE 0 OUT OF RANGE", 0), 0U) << scratch.errors();
}

TEST(PrintLists, AListWithoutAnyNodeIsEmpty) {
  Scratch scratch("\n");
  free_nodes(6);
  output.NPR = {3, 0, 0};
  PRLIST();
  EXPECT_EQ(output.NPR[0], 0);
  EXPECT_NE(scratch.report().find("  X DISPLACEMENT RESPONSE - NONE"), std::string::npos);
}

TEST(PrintLists, AMissingCardStopsInTheInputLayer) {
  Scratch scratch("    1\n");
  free_nodes(6);
  output.NPR = {17, 0, 0};
  EXPECT_EQ(stop_of([] { PRLIST(); }), status_io);
}

TEST(PostLists, HaveTheirOwnHeadingLengthsAndStoragePhase) {
  {
    Scratch scratch("    4\n");
    free_nodes(6);
    output.NPS = {0, 0, 1};
    POLIST();
    EXPECT_EQ(nodes_in(post_list(3)), (std::vector<int>{4}));
    const std::string row = " " + std::string(46, '*');
    EXPECT_EQ(line_after(scratch.report(), row), "     LIST OF NODES FOR DISPLACEMENT POST-PROCESSING");
    EXPECT_EQ(line_after(scratch.report(), row, 2), row);
    EXPECT_NE(scratch.report().find("  X DISPLACEMENT RESPONSE - NONE"), std::string::npos);
  }
  Scratch scratch("    4\n");
  free_nodes(6, 37);
  output.NPS = {0, 0, 1};
  EXPECT_EQ(stop_of([] { POLIST(); }), status_fatal);
  EXPECT_NE(scratch.report().find("INPUT PHASE - LIST OF POST-PROCESSOR NODES"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
