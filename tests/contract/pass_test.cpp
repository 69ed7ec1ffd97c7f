// The passes over all elements: determination, generations, stiffness, reports, state log.
#include "elements/contract/pass.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <vector>

#include "elements/contract/stiffness.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/control.h"
#include "model/nodes.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

/// Springs 1-2 and 2-3 of stiffness 100 and 200 in one group, spring 1-3 of 50 in a second.
std::string two_groups() {
  return group_card(1, 2) + spring_card(1, 1, 2, 100.0) + spring_card(2, 2, 3, 200.0) + group_card(1, 1, 4) +
         spring_card(4, 1, 3, 50.0);
}

FakeSpring spring(int running) {
  const std::vector<Word> found = records_at_hand()[static_cast<std::size_t>(running - 1)];
  FakeSpring record;
  std::memcpy(&record, found.data(), sizeof(record));
  return record;
}

class Determination : public EveryScheme {};
class Generations : public EveryScheme {};
class StiffnessPass : public EveryScheme {};
class ElementReports : public EveryScheme {};
IN_EVERY_SCHEME(Determination);
IN_EVERY_SCHEME(Generations);
IN_EVERY_SCHEME(StiffnessPass);
IN_EVERY_SCHEME(ElementReports);

TEST_P(Determination, SumsTheForcesOfAllElements) {
  Line line(3, two_groups(), 2);
  line.build();
  line.displace(1, 1, 0.5);
  line.displace(2, 2, 0.25);
  determine_states();
  EXPECT_DOUBLE_EQ(line.force(1, 1), 0.5 * 100.0 + 0.5 * 50.0);
  EXPECT_DOUBLE_EQ(line.force(2, 1), -50.0);
  EXPECT_DOUBLE_EQ(line.force(1, 2), -25.0);
  EXPECT_DOUBLE_EQ(line.force(2, 2), 75.0);
  EXPECT_EQ(calls, (std::vector<std::string>{"state 1/1", "state 1/2", "state 2/4"})) << "in the order of the deck";
  determine_states();
  EXPECT_DOUBLE_EQ(line.force(1, 1), 75.0) << "summed anew";
}

TEST_P(Determination, StartsFromTheLastStateUpdate) {
  Line line(3, two_groups(), 2);
  line.build();
  line.displace(1, 1, 0.5);
  determine_states();
  line.displace(1, 1, 0.25);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.25);
  line.update_state();
  line.displace(1, 1, 0.75);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.75);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.75);
}

TEST_P(Determination, MarksTheLastElementWithAChangedMatrix) {
  Line line(3, two_groups(), 2);
  line.build();
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
  determine_states();
  EXPECT_EQ(solver.NELCHK, 0);
  line.displace(1, 1, 2.0);  // springs 1 and 3 (running) soften
  determine_states();
  EXPECT_EQ(solver.NELCHK, 3);
  line.displace(1, 1, 0.0);
  line.displace(2, 1, 2.0);  // spring 2 alone
  determine_states();
  EXPECT_EQ(solver.NELCHK, 2);
}

TEST_P(Determination, DoesNotLowerTheMarkWhileTheMatrixIsToBeRebuilt) {
  Line line(3, two_groups(), 2);
  line.build();
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
  solver.KRESET = 1;
  solver.NELCHK = 3;
  determine_states();
  EXPECT_EQ(solver.NELCHK, 3);
}

// Node 1's local 1 is global Y, its local 2 is global -X.
TEST_P(Determination, TurnsTheComponentsOfNodesWithLocalAxes) {
  Line line(3, two_groups(), 2, true);
  line.build();
  line.displace(1, 1, 0.5);
  line.displace(1, 2, 0.25);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], -0.25);
  EXPECT_DOUBLE_EQ(spring(1).difference[1], 0.5);
  EXPECT_DOUBLE_EQ(line.force(1, 1), 75.0);
  EXPECT_DOUBLE_EQ(line.force(1, 2), 37.5);
  EXPECT_DOUBLE_EQ(line.force(2, 1), 25.0) << "node 2 stands in the master system";
  EXPECT_DOUBLE_EQ(line.force(2, 2), -50.0);
}

TEST_P(Determination, FreedomsWithoutASlotGatherZeroAndScatterNowhere) {
  Line line(3, group_card(11, 2) + "    2\n", 1);
  line.build();
  line.displace(2, 1, 3.0);
  line.displace(2, 2, 5.0);
  determine_states();
  EXPECT_EQ(line.force(2, 1), 6.0);
  EXPECT_EQ(line.force(2, 2), 0.0);
}

TEST_P(Generations, WordsOfTheStiffnessPassBelongToNeither) {
  Line line(3, two_groups(), 2);
  line.build();
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
  EXPECT_EQ(spring(1).last_code, 0);
  EXPECT_EQ(spring(1).head.KSTIF, 0);
  determine_states();
  EXPECT_EQ(spring(1).last_code, 0) << "the reference, written before the matrix was formed, does not take it back";
  EXPECT_EQ(spring(1).head.KSTIF, 0);
}

TEST_P(Generations, RecoveringGoesBackToBothGenerations) {
  Line line(3, two_groups(), 2);
  line.build();
  line.displace(1, 1, 0.25);
  determine_states();
  line.update_state();
  line.displace(1, 1, 0.5);
  determine_states();
  save_states();
  const Word behind = 77;
  FILE(units.NT15, "WRIT", 1, &behind);  // what a step keeps behind the element states

  line.displace(1, 1, 9.0);
  determine_states();
  line.update_state();
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
  recover_states();
  Word found = 0;
  FILE(units.NT15, "READ", 1, &found);
  EXPECT_EQ(found, 77);
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.5) << "current";
  EXPECT_EQ(spring(1).last_code, 1) << "what was delivered last stays known";
  equation_vector(arrays.U0)(1) = 0.25;
  line.displace(1, 1, 0.75);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.75) << "reference";
}

// The extreme of the first determination stays when a state is updated and when another macro starts.
TEST_P(Generations, EnvelopesLastThroughStateUpdates) {
  Line line(3, two_groups(), 2);
  line.build();
  line.displace(1, 1, 0.75);
  determine_states();
  line.update_state();
  line.displace(1, 1, 0.25);
  determine_states();
  line.update_state();
  EXPECT_DOUBLE_EQ(spring(1).largest, 0.75);
}

struct Formed {
  std::vector<int> LM;
  std::vector<double> EMAT;
};
std::vector<Formed> form(bool reset, int NELCHK) {
  std::vector<Formed> formed;
  form_element_matrices(0, reset, NELCHK, [&](const ElementMatrix& m) {
    formed.push_back({{m.LM, m.LM + m.ND}, {m.EMAT, m.EMAT + m.ND * m.ND}});
  });
  return formed;
}

TEST_P(StiffnessPass, FormsEveryElementAfterAReset) {
  Line line(3, two_groups(), 2);
  line.build();
  EXPECT_EQ(form(true, 0).size(), 3u);
  EXPECT_EQ(form(true, 0).size(), 3u) << "again, whole";
  EXPECT_EQ(form(true, 0)[0].EMAT[0], 100.0);
}

TEST_P(StiffnessPass, FormsOnlyChangedElementsUpToTheMark) {
  Line line(3, two_groups(), 2);
  line.build();
  form(true, 0);
  line.displace(1, 1, 2.0);
  determine_states();
  calls.clear();
  const std::vector<Formed> first = form(false, 1);
  EXPECT_EQ(calls, std::vector<std::string>{"form 1/1"}) << "the third is beyond the mark";
  EXPECT_EQ(first[0].EMAT[0], -50.0);
  calls.clear();
  form(false, 3);
  EXPECT_EQ(calls, std::vector<std::string>{"form 2/4"});
}

TEST_P(StiffnessPass, DeliversEquationsAndKeepsSlots) {
  Line line(3, two_groups(), 2);
  line.build();
  const std::vector<Formed> formed = form(true, 0);
  EXPECT_EQ(formed[1].LM, (std::vector<int>{4, 5, 6, 7, 7, 7})) << "7 is the sink";
  EXPECT_EQ(spring(2).head.LM[1], 5) << "slot of component 2 at node 2";
}

TEST_P(StiffnessPass, TurnsBothSidesOfTheMatrix) {
  Line line(3, two_groups(), 2, true);
  line.build();
  const std::vector<double> K = form(true, 0)[0].EMAT;
  const auto at = [&](std::size_t i, std::size_t j) { return K[(j - 1) * 6 + i - 1]; };
  EXPECT_DOUBLE_EQ(at(1, 1), 100.0);
  EXPECT_DOUBLE_EQ(at(1, 5), -100.0) << "local 1 of node 1 is the direction of Y at node 2";
  EXPECT_DOUBLE_EQ(at(2, 4), 100.0) << "local 2 of node 1 runs against X";
  EXPECT_DOUBLE_EQ(at(1, 4), 0.0);
  EXPECT_DOUBLE_EQ(at(5, 1), at(1, 5));
  EXPECT_DOUBLE_EQ(spring(1).tangent[3], -100.0) << "the record keeps global axes";
}

TEST_P(StiffnessPass, ATypeWithoutATailHasNone) {
  Line line(3, group_card(11, 2) + "    2\n" + group_card(1, 1) + spring_card(1, 1, 2), 2);
  line.build();
  EXPECT_EQ(form(true, 0).size(), 3u);
  determine_states();
  EXPECT_EQ(calls.back(), "state 2/1");
}

// Blocks deliver packed: entry (i, j), i not above j, is 10 i + j.
TEST_P(StiffnessPass, TheTypeTellsTheFormOfItsMatrix) {
  Line line(3, group_card(11, 1) + "    2\n" + group_card(1, 1) + spring_card(1, 1, 2), 2);
  line.build();
  std::vector<bool> packed;
  std::vector<double> first;
  form_element_matrices(0, true, 0, [&](const ElementMatrix& m) {
    packed.push_back(m.packed);
    if (m.packed) first.assign(m.EMAT, m.EMAT + 21);
  });
  EXPECT_EQ(packed, (std::vector<bool>{true, false}));
  EXPECT_EQ(first,
            (std::vector<double>{11, 12, 13, 14, 15, 16, 22, 23, 24, 25, 26, 33, 34, 35, 36, 44, 45, 46, 55, 56, 66}));
}

// Local 1 of node 1 is global Y, local 2 is -X: K'(1,1) = K(2,2), K'(1,2) = -K(2,1), K'(1,4) = K(2,4).
TEST_P(StiffnessPass, APackedMatrixIsTurnedAsAFullOne) {
  Line line(3, group_card(11, 1) + "    1\n", 1, true);
  line.build();
  int calls_of_add = 0;
  form_element_matrices(0, true, 0, [&](const ElementMatrix& m) {
    ++calls_of_add;
    EXPECT_FALSE(m.packed);
    const auto at = [&](int i, int j) { return m.EMAT[(j - 1) * 6 + i - 1]; };
    EXPECT_DOUBLE_EQ(at(1, 1), 22.0);
    EXPECT_DOUBLE_EQ(at(2, 2), 11.0);
    EXPECT_DOUBLE_EQ(at(1, 2), -12.0);
    EXPECT_DOUBLE_EQ(at(3, 3), 33.0);
    EXPECT_DOUBLE_EQ(at(1, 4), 24.0);
    EXPECT_DOUBLE_EQ(at(4, 2), -14.0);
    EXPECT_DOUBLE_EQ(at(6, 5), 56.0);
  });
  EXPECT_EQ(calls_of_add, 1);
}

TEST(UnpackedMatrix, HasBothTriangles) {
  for (const int ND : {1, 2, 3, 60}) {
    std::vector<double> K(static_cast<std::size_t>(ND * ND), -1.0);
    std::size_t next = 0;
    for (int i = 1; i <= ND; ++i) {
      for (int j = i; j <= ND; ++j) K[next++] = 100 * i + j;
    }
    unpack_matrix(ND, K.data());
    for (int i = 1; i <= ND; ++i) {
      for (int j = 1; j <= ND; ++j) {
        EXPECT_EQ(K[static_cast<std::size_t>((j - 1) * ND + i - 1)], 100 * std::min(i, j) + std::max(i, j)) << ND;
      }
    }
  }
}

TEST(DeliveredChange, KeepsTheUpperTriangleByRows) {
  double K[9] = {1, 2, 3, 2, 4, 5, 3, 5, 6};
  double delivered[6] = {9, 9, 9, 9, 9, 9};
  deliver_change(3, true, K, delivered);
  const double triangle[6] = {1, 2, 3, 4, 5, 6};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(delivered[i], triangle[i]);
  EXPECT_EQ(K[5], 5.0);
  double next[9] = {1, 2, 3, 2, 14, 5, 3, 5, 7};
  deliver_change(3, false, next, delivered);
  const double change[9] = {0, 0, 0, 0, 10, 0, 0, 0, 1};
  for (int i = 0; i < 9; ++i) EXPECT_EQ(next[i], change[i]);
  EXPECT_EQ(delivered[3], 14.0);
}

TEST_P(ElementReports, WalkInTheOrderOfTheDeckAndSkipTypesWithoutAPrint) {
  Line line(3, group_card(11, 1) + "    2\n" + two_groups(), 3);
  line.build();
  print_elements();
  EXPECT_EQ(calls, (std::vector<std::string>{"print 2/1", "print 2/2", "print 3/4"}));
}

TEST_P(ElementReports, EnvelopesHaveOneTitlePerGroup) {
  Line line(3, group_card(1, 0) + two_groups(), 3);
  line.build();
  response.TIME = 12.0;
  print_element_envelopes();
  EXPECT_EQ(calls, (std::vector<std::string>{"envelope 2/1", "envelope 2/2", "envelope 3/4"}));
  const std::string report = line.report();
  EXPECT_EQ(report.find("ELEMENT GROUP  1"), std::string::npos);
  const std::string title = " RESPONSE ENVELOPES, ELEMENT GROUP  2 TIME = 0.1200E+02";
  const std::size_t at = report.find(title);
  ASSERT_NE(at, std::string::npos);
  EXPECT_EQ(report.find(title, at + 1), std::string::npos);
  EXPECT_EQ(report.substr(at - 56, 56), "1" + std::string(54, '*') + "\n");
}

TEST_P(ElementReports, AGroupWithoutElementsBetweenOthersPrintsNothing) {
  Line line(3, group_card(1, 1) + spring_card(1, 1, 2) + group_card(1, 0) + group_card(1, 1) + spring_card(1, 2, 3), 3);
  line.build();
  print_elements();
  EXPECT_EQ(calls, (std::vector<std::string>{"print 1/1", "print 3/1"}));
  print_element_envelopes();
  const std::string report = line.report();
  EXPECT_NE(report.find("RESPONSE ENVELOPES, ELEMENT GROUP  1"), std::string::npos);
  EXPECT_EQ(report.find("RESPONSE ENVELOPES, ELEMENT GROUP  2"), std::string::npos);
  EXPECT_NE(report.find("RESPONSE ENVELOPES, ELEMENT GROUP  3"), std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
