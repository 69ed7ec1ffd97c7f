// Passes of dynamic analyses: determinations in motion, half-way and without a trace, damping forces, envelopes that
// start anew, forces by group, and the search for an element that went wrong.
#include <gtest/gtest.h>

#include <cmath>
#include <cstring>
#include <limits>
#include <vector>

#include "elements/contract/element_files.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "fake_types.h"
#include "lattice.h"
#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

/// Springs 1-2 and 2-3 of stiffness 100 and 200 with damping, spring 1-3 of 50 without, and a block at node 2.
std::string damped_and_undamped() {
  return group_card(1, 2) + spring_card(1, 1, 2, 100.0) + spring_card(2, 2, 3, 200.0) + undamped_group_card(1, 1, 4) +
         spring_card(4, 1, 3, 50.0) + undamped_group_card(11, 1) + "    2\n";
}

class StatesInMotion : public EveryScheme {};
class MidstepPass : public EveryScheme {};
class RestartedEnvelopes : public EveryScheme {};
class ForcesByGroup : public EveryScheme {};
class BadElement : public EveryScheme {};
IN_EVERY_SCHEME(StatesInMotion);
IN_EVERY_SCHEME(MidstepPass);
IN_EVERY_SCHEME(RestartedEnvelopes);
IN_EVERY_SCHEME(ForcesByGroup);
IN_EVERY_SCHEME(BadElement);

void put(int vector, int equation, double value) { equation_vector(vector)(equation) = value; }
double at(int vector, int equation) { return equation_vector(vector)(equation); }
std::vector<double> all_of(int vector) {
  const Reals v = equation_vector(vector);
  return {v.begin(), v.begin() + sizes.NEQ};
}

FakeSpring spring(int running) {
  const std::vector<Word> found = records_at_hand()[static_cast<std::size_t>(running - 1)];
  FakeSpring record;
  std::memcpy(&record, found.data(), sizeof(record));
  return record;
}

// Damping of a spring is three times its velocities. Node 1 at 2 and node 2 at 0.5 in X; trial velocities differ.
TEST_P(StatesInMotion, GiveTheDampingForcesOfTheDampedVelocitiesInTheSameWalk) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  line.displace(1, 1, 0.5);
  put(arrays.VT, 1, 7.0);
  put(arrays.AT, 4, 11.0);
  put(arrays.VD, 1, 2.0);
  put(arrays.VD, 4, 0.5);
  put(arrays.DAMP, 3, 99.0);
  determine_states({arrays.VT, arrays.AT, arrays.VD, arrays.DAMP});
  EXPECT_EQ(calls, (std::vector<std::string>{"state 1/1", "state 1/2", "state 2/4"})) << "one walk";
  EXPECT_DOUBLE_EQ(line.force(1, 1), 0.5 * 100.0 + 0.5 * 50.0);
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 1), 6.0) << "spring 4 has no damping";
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 4), 1.5 + 1.5);
  EXPECT_EQ(at(arrays.DAMP, 3), 0.0) << "summed from zero";
  EXPECT_EQ(spring(1).speed, 7.0);
  EXPECT_EQ(spring(1).growth, -11.0);
  EXPECT_EQ(spring(3).speed, 7.0) << "not the damped velocities, which the element before was left with";
}

TEST_P(StatesInMotion, StandStillWhenNothingIsGiven) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  put(arrays.VT, 1, 7.0);
  put(arrays.AT, 1, 7.0);
  put(arrays.VD, 1, 2.0);
  put(arrays.DAMP, 1, 99.0);
  determine_states({.velocity = arrays.VT, .acceleration = arrays.AT});
  EXPECT_EQ(at(arrays.DAMP, 1), 99.0) << "not asked for";
  determine_states();
  EXPECT_EQ(spring(1).speed, 0.0);
  EXPECT_EQ(spring(1).growth, 0.0);
  determine_states({.acceleration = arrays.AT, .damped = arrays.VD, .damping = arrays.DAMP});
  EXPECT_EQ(spring(2).speed, 0.0);
  EXPECT_EQ(spring(1).growth, 7.0);
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 1), 6.0);
}

TEST_P(StatesInMotion, AreTheSameStatesAndForcesAsAtRest) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  line.displace(1, 1, 0.3);
  line.displace(2, 1, -0.7);
  determine_states();
  const std::vector<double> R = all_of(arrays.R);
  const auto records = records_at_hand();
  put(arrays.VD, 1, 2.0);
  determine_states({.damped = arrays.VD, .damping = arrays.DAMP});
  EXPECT_EQ(all_of(arrays.R), R);
  EXPECT_EQ(records_at_hand(), records);
}

// Node 1's local 2 is -X: a velocity of 2 along it is -2 in X, and the force comes back likewise.
TEST_P(StatesInMotion, TurnWithLocalAxes) {
  Line line(3, damped_and_undamped(), 3, true);
  line.build();
  put(arrays.VT, 2, 4.0);
  put(arrays.VD, 2, 2.0);
  determine_states({.velocity = arrays.VT, .damped = arrays.VD, .damping = arrays.DAMP});
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 2), 6.0);
  EXPECT_DOUBLE_EQ(spring(1).speed, -4.0);
}

TEST_P(StatesInMotion, DampingIsFoundInAnyGroup) {
  for (const bool damped : {false, true}) {
    const std::string second = damped ? group_card(1, 1) : undamped_group_card(1, 1);
    Line line(3, undamped_group_card(1, 1) + spring_card(1, 1, 2) + second + spring_card(1, 2, 3), 2);
    line.build();
    EXPECT_EQ(elements_damp(), damped);
  }
}

/// A kept step start at an extension of 0.5 (0.25 at the last update before it), and states that have moved on since.
void keep_and_move_on(const Line& line) {
  line.displace(1, 1, 0.25);
  determine_states();
  line.update_state();
  line.displace(1, 1, 0.5);
  determine_states();
  save_states();
  line.update_state();
  line.displace(1, 1, 0.75);
  determine_states();
  line.update_state();
  line.displace(1, 1, 0.875);
  determine_states();
}

TEST_P(MidstepPass, StartsFromTheCurrentGenerationOfTheKeptStates) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  keep_and_move_on(line);
  put(arrays.BFGS1, 1, 0.125);
  put(arrays.VD, 1, 2.0);
  put(arrays.BFGS2, 2, 77.0);
  put(arrays.DAMP, 2, 77.0);
  determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
  EXPECT_DOUBLE_EQ(at(arrays.BFGS2, 1), 0.625 * 150.0);
  EXPECT_DOUBLE_EQ(at(arrays.BFGS2, 4), -0.625 * 100.0);
  EXPECT_EQ(at(arrays.BFGS2, 2), 0.0) << "summed from zero";
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 1), 6.0) << "spring 4 has no damping";
  EXPECT_EQ(at(arrays.DAMP, 4), 0.0) << "node 2 stands still";
  EXPECT_EQ(at(arrays.DAMP, 2), 0.0);
}

TEST_P(MidstepPass, LeavesStatesForcesMarksAndTheLogUntouched) {
  Line line(3, damped_and_undamped(), 3);
  open_state_log();
  line.build();
  keep_and_move_on(line);
  solver.NELCHK = 2;
  const auto records = records_at_hand();
  const std::vector<double> R = all_of(arrays.R);
  const int written = state_log.written;
  put(arrays.BFGS1, 1, 5.0);  // springs 1 and 4 would soften
  determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
  EXPECT_DOUBLE_EQ(at(arrays.BFGS2, 1), 5.5 * 75.0);
  EXPECT_EQ(records_at_hand(), records);
  EXPECT_EQ(all_of(arrays.R), R);
  EXPECT_EQ(solver.NELCHK, 2);
  EXPECT_EQ(state_log.written, written);
  EXPECT_FALSE(state_log.silent);
  line.displace(1, 1, 1.0);  // from the reference at 0.75, not from where the pass went
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 1.0);
  EXPECT_EQ(spring(1).code, 0);
}

TEST_P(MidstepPass, MayBeRepeatedAndTheStepStartRecoveredBehindIt) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  keep_and_move_on(line);
  put(arrays.BFGS1, 1, 0.125);
  for (int i = 0; i < 3; ++i) {
    determine_midstep(arrays.BFGS1, arrays.VD, arrays.BFGS2, arrays.DAMP);
    EXPECT_DOUBLE_EQ(at(arrays.BFGS2, 1), 0.625 * 150.0);
  }
  recover_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.5) << "current";
  for (int e = 1; e <= sizes.NEQ; ++e) put(arrays.U0, e, at(arrays.U, e));
  put(arrays.U0, 1, 0.25);
  line.displace(1, 1, 0.375);
  determine_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 0.375) << "reference";
}

// Largest 0.75; the states at hand, at 0.25, have not been taken over.
TEST_P(RestartedEnvelopes, TakeThePresentValuesInBothGenerations) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  response.TIME = 1.0;
  line.displace(1, 1, 0.75);
  determine_states();
  line.update_state();
  response.TIME = 2.0;
  line.displace(1, 1, 0.25);
  determine_states();
  EXPECT_EQ(spring(1).largest, 0.75);
  response.TIME = 3.0;
  calls.clear();
  restart_element_envelopes();
  EXPECT_EQ(calls, (std::vector<std::string>{"restart 1/1", "restart 1/2", "restart 2/4"})) << "blocks keep none";
  EXPECT_EQ(spring(1).largest, 0.25);
  EXPECT_EQ(spring(1).largest_time, 3.0);
  EXPECT_EQ(spring(2).largest, 0.0);
  EXPECT_EQ(spring(2).largest_time, 3.0);
  put(arrays.U0, 1, 0.25);
  line.displace(1, 1, 0.125);
  determine_states();
  EXPECT_EQ(spring(1).largest, 0.25) << "the reference";
  EXPECT_EQ(spring(1).difference[0], 0.125);
  response.TIME = 4.0;
  line.displace(1, 1, 0.5);
  determine_states();
  EXPECT_EQ(spring(1).largest, 0.5);
  EXPECT_EQ(spring(1).largest_time, 4.0);
}

TEST_P(RestartedEnvelopes, CommitTheLogAndLeaveTheKeptStepStart) {
  Line line(3, damped_and_undamped(), 3);
  open_state_log();
  line.build();
  line.displace(1, 1, 2.0);  // springs 1 and 4 soften
  determine_states();
  save_states();
  restart_element_envelopes();
  EXPECT_EQ(state_log.committed, 2);
  line.displace(1, 1, 3.0);
  put(arrays.U0, 1, 2.0);
  determine_states();
  take_over_states();
  recover_states();
  EXPECT_DOUBLE_EQ(spring(1).difference[0], 2.0);
}

TEST_P(ForcesByGroup, AreSummedFromZeroForEachGroup) {
  Line line(3, damped_and_undamped() + undamped_group_card(1, 0), 4);
  line.build();
  line.displace(1, 1, 0.5);
  determine_states();
  put(arrays.VD, 1, 2.0);
  put(arrays.BFGS1, 1, 77.0);
  const auto records = records_at_hand();
  std::vector<int> groups;
  std::vector<double> R, D;
  sum_forces_by_group(arrays.VD, arrays.BFGS1, arrays.BFGS2, [&](int g) {
    groups.push_back(g);
    R.push_back(at(arrays.BFGS1, 1));
    D.push_back(at(arrays.BFGS2, 1));
  });
  EXPECT_EQ(groups, (std::vector<int>{1, 2, 3, 4}));
  EXPECT_EQ(R, (std::vector<double>{50.0, 25.0, 0.0, 0.0}));
  EXPECT_EQ(D, (std::vector<double>{6.0, 0.0, 0.0, 0.0}));
  EXPECT_EQ(records_at_hand(), records);
}

TEST_P(BadElement, IsTheFirstWhoseForcesAreNotFinite) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  determine_states();
  EXPECT_EQ(first_bad_element().group, 0);
  line.displace(1, 1, std::numeric_limits<double>::infinity());
  determine_states();
  EXPECT_EQ(first_bad_element().group, 1);
  EXPECT_EQ(first_bad_element().number, 1);
}

TEST_P(BadElement, IsNotOneThatAnotherNodeReaches) {
  Line line(4, damped_and_undamped(), 3);  // node 3 is free: springs 2 and 4 reach it
  line.build();
  line.displace(3, 2, std::nan(""));
  determine_states();
  EXPECT_EQ(first_bad_element().group, 1);
  EXPECT_EQ(first_bad_element().number, 2);
}

TEST_P(BadElement, MayStandInALaterGroup) {
  Line line(3,
            group_card(1, 1) + spring_card(1, 2, 3) + group_card(1, 2, 7) + spring_card(7, 2, 3) + spring_card(8, 1, 2),
            2);
  line.build();
  line.displace(1, 3, std::nan(""));
  determine_states();
  EXPECT_EQ(first_bad_element().group, 2);
  EXPECT_EQ(first_bad_element().number, 8);
}

TEST_P(StatesInMotion, DynamicForcesPassOverGroupsWithoutDamping) {
  Line line(3, damped_and_undamped(), 3);
  line.build();
  put(arrays.VEL, 1, 2.0);
  calls.clear();
  sum_dynamic_forces(0.0, 0.0, arrays.VEL, arrays.ACC, {.effective = arrays.WORK, .damping = arrays.DAMP});
  EXPECT_EQ(calls, (std::vector<std::string>{"dynamic 1/1", "dynamic 1/2"}));
  EXPECT_DOUBLE_EQ(at(arrays.WORK, 1), 200.0);
  EXPECT_DOUBLE_EQ(at(arrays.DAMP, 1), 6.0);
}

}  // namespace
}  // namespace tidearc::test
