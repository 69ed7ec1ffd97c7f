// Passes that leave the states as they are: the event pass, resisting forces, dynamic forces.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "elements/contract/pass.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/control.h"
#include "solve/arrays.h"

namespace tidearc::test {
namespace {

/// Springs 1-2 and 2-3 of stiffness 100 and 200 in one group, spring 1-3 of 50 in a second, and a block at node 2.
std::string three_groups() {
  return group_card(1, 2) + spring_card(1, 1, 2, 100.0) + spring_card(2, 2, 3, 200.0) + group_card(1, 1, 4) +
         spring_card(4, 1, 3, 50.0) + group_card(11, 1) + "    2\n";
}

class EventPass : public EveryScheme {};
class ResistingForces : public EveryScheme {};
class DynamicForces : public EveryScheme {};
IN_EVERY_SCHEME(EventPass);
IN_EVERY_SCHEME(ResistingForces);
IN_EVERY_SCHEME(DynamicForces);

void put(int vector, int equation, double value) { equation_vector(vector)(equation) = value; }

// Springs soften at a difference of 1. With an increment of 4 at node 1 springs 1 and 3 (number 4 of group 2) do at a
// quarter of it; spring 2 does not move.
TEST_P(EventPass, OfEqualFactorsTheFirstInTheOrderOfTheDeckWins) {
  Line line(3, three_groups(), 3);
  line.build();
  put(arrays.WORK, 1, 4.0);
  const FirstEvent found = first_event(arrays.WORK);
  EXPECT_DOUBLE_EQ(found.EFAC, 0.25);
  EXPECT_EQ(found.IEVT, 7);
  EXPECT_EQ(found.IGRP, 1);
  EXPECT_EQ(found.IMEM, 1);
  EXPECT_EQ(calls, (std::vector<std::string>{"event 1/1", "event 1/2", "event 2/4"})) << "blocks have no events";
}

// Node 1 by 4, node 2 by 3: spring 1 stretches by 1, spring 2 by 3, spring 4 by 4.
TEST_P(EventPass, TellsGroupAndNumberOfTheSmallestFactor) {
  Line line(3, three_groups(), 3);
  line.build();
  put(arrays.WORK, 1, 4.0);
  put(arrays.WORK, 4, 3.0);
  const FirstEvent found = first_event(arrays.WORK);
  EXPECT_DOUBLE_EQ(found.EFAC, 0.25);
  EXPECT_EQ(found.IGRP, 2);
  EXPECT_EQ(found.IMEM, 4);
}

TEST_P(EventPass, AFactorOfOneIsNoEvent) {
  Line line(3, three_groups(), 3);
  line.build();
  put(arrays.WORK, 1, 1.0);  // exactly the whole increment
  const FirstEvent found = first_event(arrays.WORK);
  EXPECT_EQ(found.EFAC, 1.0);
  EXPECT_EQ(found.IEVT, 0);
  EXPECT_EQ(found.IGRP, 0);
  EXPECT_EQ(found.IMEM, 0);
}

TEST_P(EventPass, StartsFromTheStateAtHandAndLeavesIt) {
  Line line(3, three_groups(), 3);
  line.build();
  line.displace(1, 1, 0.5);
  determine_states();  // not taken over
  const std::vector<std::vector<Word>> before = records_at_hand();
  put(arrays.WORK, 1, 1.0);
  EXPECT_DOUBLE_EQ(first_event(arrays.WORK).EFAC, 0.5);
  EXPECT_EQ(records_at_hand(), before);
}

// Node 1's local 2 is -X.
TEST_P(EventPass, TurnsTheIncrementOfNodesWithLocalAxes) {
  Line line(3, three_groups(), 3, true);
  line.build();
  put(arrays.WORK, 2, -2.0);
  EXPECT_DOUBLE_EQ(first_event(arrays.WORK).EFAC, 0.5);
}

TEST_P(EventPass, AModelWithoutElementsHasNone) {
  Line line(3, group_card(1, 0), 1);
  line.build();
  put(arrays.WORK, 1, 4.0);
  EXPECT_EQ(first_event(arrays.WORK).EFAC, 1.0);
}

TEST_P(ResistingForces, AreThoseOfTheStatesAtHandWhateverTheDisplacementsSay) {
  Line line(3, three_groups(), 3);
  line.build();
  line.displace(1, 1, 0.5);
  line.displace(2, 1, 0.25);
  determine_states();
  const std::vector<std::vector<Word>> before = records_at_hand();
  calls.clear();
  line.displace(1, 1, 9.0);
  put(arrays.WORK, 1, 77.0);
  sum_dynamic_forces(0.0, 0.0, 0, 0, {.resisting = arrays.WORK});
  // Spring 1: 100 (0.5 - 0.25), spring 4: 50 * 0.5; node 2: -25 + 200 * 0.25, and 0.25 of the block.
  EXPECT_DOUBLE_EQ(equation_vector(arrays.WORK)(1), 50.0);
  EXPECT_DOUBLE_EQ(equation_vector(arrays.WORK)(4), 25.25);
  EXPECT_EQ(records_at_hand(), before);
  EXPECT_TRUE(calls.empty()) << "no state is determined";
}

/// Velocities of 2 and accelerations of 8 at node 1 in X, on a model at an extension of 0.5 there.
void set_in_motion(const Line& line) {
  line.displace(1, 1, 0.5);
  determine_states();
  put(arrays.VEL, 1, 2.0);
  put(arrays.ACC, 1, 8.0);
  calls.clear();
}

// The springs' damping is their stiffness: (1 + 0.5) 2 + 0.25 * 8 = 5 at node 1, times 100 and 50.
TEST_P(DynamicForces, ApplyTheTypesToVelocitiesAndAccelerations) {
  Line line(3, three_groups(), 3);
  line.build();
  set_in_motion(line);
  const std::vector<std::vector<Word>> before = records_at_hand();
  put(arrays.WORK, 1, 77.0);
  put(arrays.BFGS1, 1, 55.0);
  sum_dynamic_forces(0.5, 0.25, arrays.VEL, arrays.ACC, {.effective = arrays.WORK});
  EXPECT_DOUBLE_EQ(equation_vector(arrays.WORK)(1), 750.0) << "summed from zero";
  EXPECT_EQ(equation_vector(arrays.WORK)(2), 0.0);
  EXPECT_EQ(equation_vector(arrays.BFGS1)(1), 55.0) << "not asked for";
  EXPECT_EQ(calls, (std::vector<std::string>{"dynamic 1/1", "dynamic 1/2", "dynamic 2/4"})) << "blocks have none";
  EXPECT_EQ(records_at_hand(), before);
}

TEST_P(DynamicForces, GiveResistingAndDampingForcesWhenAskedFor) {
  Line line(3, three_groups(), 3);
  line.build();
  set_in_motion(line);
  sum_dynamic_forces(0.0, 0.0, arrays.VEL, arrays.ACC,
                     {.effective = arrays.WORK, .resisting = arrays.BFGS1, .damping = arrays.BFGS2});
  EXPECT_DOUBLE_EQ(equation_vector(arrays.WORK)(1), 300.0);
  EXPECT_DOUBLE_EQ(equation_vector(arrays.BFGS1)(1), 75.0);
  EXPECT_DOUBLE_EQ(equation_vector(arrays.BFGS1)(4), -50.0);
  // Each spring's damping force is three times its velocities: springs 1 and 4 at node 1.
  EXPECT_DOUBLE_EQ(equation_vector(arrays.BFGS2)(1), 12.0);
  EXPECT_EQ(equation_vector(arrays.BFGS2)(4), 0.0) << "node 2 stands still";
}

// Node 1's local 1 is Y, its local 2 is -X: a local velocity of 2 in 2 is -2 in X, and the force comes back likewise.
TEST_P(DynamicForces, TurnBothWays) {
  Line line(3, three_groups(), 3, true);
  line.build();
  put(arrays.VEL, 2, 2.0);
  sum_dynamic_forces(0.0, 0.0, arrays.VEL, arrays.ACC, {.effective = arrays.WORK});
  EXPECT_DOUBLE_EQ(equation_vector(arrays.WORK)(2), 300.0);
  EXPECT_EQ(equation_vector(arrays.WORK)(1), 0.0);
}

}  // namespace
}  // namespace tidearc::test
