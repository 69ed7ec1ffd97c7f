// Loads and imposed displacements of commands at a time, by hand.
#include "command_model.h"

namespace tidearc::test {
namespace {

TEST(RecordForces, FollowTheirRecordFromTheTimeInIt) {
  // Ordinates 2, 4, 0 at 0, 1, 2; the macro begins at record time 0.5.
  CommandModel model(2, {{}, {{2.0, 4.0, 0.0}}, {}}, command(1, 2, "0.5", "10.0", {2}));
  model.ready();
  DYNCMD(0, 1, 0);
  const int e = equation_of(2, 2);
  EXPECT_EQ(model.loads(0.0)(e), 30.0);
  EXPECT_EQ(model.loads(0.5)(e), 40.0);
  EXPECT_EQ(model.loads(1.25)(e), 10.0);
  EXPECT_EQ(model.loads(1.75)(e), 0.0) << "behind the record";
  EXPECT_EQ(model.loads(0.5, 0.25)(e), 10.0) << "times the level";
}

TEST(RecordForces, NegativeTimeInTheRecordDelaysIt) {
  CommandModel model(2, {{}, {{2.0, 4.0}}, {}}, command(1, 2, "-3.0", "1.0", {2}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_EQ(model.loads(2.9)(equation_of(2, 2)), 0.0);
  EXPECT_EQ(model.loads(3.0)(equation_of(2, 2)), 2.0);
}

TEST(RecordForces, TwoOnOneComponentBothAct) {
  CommandModel model(2, {{}, {{2.0, 4.0}, {10.0, 10.0}}, {}},
                     command(1, 2, "0.0", "1.0", {2, 2}) + command(2, 2, "0.0", "-1.0", {2}));
  model.ready();
  DYNCMD(0, 2, 0);
  EXPECT_EQ(model.loads(1.0)(equation_of(2, 2)), 4.0 + 4.0 - 10.0);
}

// At 0: 2 on both nodes; the same record from its time 1 on, 4; another record at that time, 10; the same with scale 2.
TEST(RecordForces, OfCommandsInARowHaveTheirOwnRecordTimeAndScale) {
  CommandModel model(2, {{}, {{2.0, 4.0}, {10.0, 10.0}}, {}},
                     command(1, 2, "0.0", "1.0", {1, 2}) + command(1, 2, "1.0", "1.0", {1}) +
                         command(2, 2, "1.0", "1.0", {1}) + command(2, 2, "1.0", "2.0", {2}));
  model.ready();
  DYNCMD(0, 4, 0);
  EXPECT_EQ(model.loads(0.0)(equation_of(1, 2)), 2.0 + 4.0 + 10.0);
  EXPECT_EQ(model.loads(0.0)(equation_of(2, 2)), 2.0 + 20.0);
}

TEST(RecordForces, ScaleOfZeroActsNowhere) {
  CommandModel model(2, {{}, {{2.0, 4.0}}, {}}, command(1, 2, "0.0", "", {2}));
  model.ready();
  DYNCMD(0, 1, 0);
  EXPECT_EQ(model.loads(0.5)(equation_of(2, 2)), 0.0);
}

TEST(RecordForces, LeaveOtherLoadsAlone) {
  CommandModel model(2, {{}, {{2.0, 4.0}}, {}}, command(1, 2, "0.0", "1.0", {2}));
  model.ready();
  DYNCMD(0, 1, 0);
  const Reals P = model.vector(arrays.P);
  for (double& load : P) load = 7.0;
  add_record_loads(0.0, 1.0, P);
  EXPECT_EQ(P(equation_of(1, 2)), 7.0);
  EXPECT_EQ(P(equation_of(2, 2)), 9.0);
}

TEST(GroundLoads, AreMinusMassTimesAcceleration) {
  CommandModel model(2, {{{1.0, 3.0}, {0.5, 0.5}}, {}, {}},
                     "    1       0.5      10.0    0                        2\n");
  model.ready().mass(1, 1, 4.0).mass(2, 1, 2.0).mass(2, 2, 2.0).mass(2, 3, 2.0).mass(2, 4, 2.0);
  DYNCMD(1, 0, 0);
  const Reals P = model.loads(0.0);
  EXPECT_EQ(P(equation_of(1, 1)), -4.0 * 10.0 * 2.0);
  EXPECT_EQ(P(equation_of(2, 1)), -2.0 * 10.0 * 2.0);
  EXPECT_EQ(P(equation_of(2, 2)), 0.0);
  EXPECT_EQ(P(equation_of(2, 3)), 0.0) << "its scale is 0";
  EXPECT_EQ(P(equation_of(2, 4)), 0.0) << "rotations get nothing";
  EXPECT_EQ(model.loads(1.0)(equation_of(1, 1)), 0.0) << "behind the record";
  EXPECT_EQ(model.loads(0.0, 0.5)(equation_of(1, 1)), -40.0);
}

TEST(GroundLoads, ActAlongTheAxesOfTheirNode) {
  // Local axes turned 30 degrees about Z: -2 cos 30 and +2 sin 30.
  const double c = std::sqrt(3.0) / 2.0;
  CommandModel model(1, {{{1.0, 1.0}}, {}, {}}, "    1       0.0       1.0\n");
  model.turn(1, {{{c, 0.5, 0.0}, {-0.5, c, 0.0}, {0.0, 0.0, 1.0}}});
  model.ready();
  for (int k = 1; k <= 3; ++k) model.mass(1, k, 2.0);
  DYNCMD(1, 0, 0);
  const Reals P = model.loads(0.0);
  EXPECT_NEAR(P(equation_of(1, 1)), -1.732050808, 1e-9);
  EXPECT_NEAR(P(equation_of(1, 2)), 1.0, 1e-15);
  EXPECT_EQ(P(equation_of(1, 3)), 0.0);
}

TEST(GroundLoads, OfThreeDirectionsAdd) {
  const double c = std::sqrt(3.0) / 2.0;
  CommandModel model(1, {{{1.0, 1.0}}, {}, {}},
                     "    1       0.0       1.0    1       0.0       2.0    1       0.0       4.0\n");
  model.turn(1, {{{c, 0.5, 0.0}, {-0.5, c, 0.0}, {0.0, 0.0, 1.0}}});
  model.ready();
  for (int k = 1; k <= 3; ++k) model.mass(1, k, 1.0);
  DYNCMD(1, 0, 0);
  const Reals P = model.loads(0.0);
  EXPECT_NEAR(P(equation_of(1, 1)), -(c + 0.5 * 2.0), 1e-15);
  EXPECT_NEAR(P(equation_of(1, 2)), -(-0.5 + c * 2.0), 1e-15);
  EXPECT_EQ(P(equation_of(1, 3)), -4.0);
}

TEST(GroundLoads, TiedEquationCountsOnceByItsFirstNode) {
  // Node 1 holds the equation along its local axis at 90 degrees to master X, node 2 along master X itself.
  CommandModel model(2, {{{1.0, 1.0}}, {}, {}},
                     "    1       0.0       1.0    1       0.0      10.0    0       0.0       0.0\n");
  model.turn(1, {{{0.0, 1.0, 0.0}, {-1.0, 0.0, 0.0}, {0.0, 0.0, 1.0}}}).tie(2, 1, 1);
  model.ready().mass(1, 1, 3.0);
  DYNCMD(1, 0, 0);
  ASSERT_EQ(equation_of(1, 1), equation_of(2, 1));
  EXPECT_EQ(model.loads(0.0)(equation_of(1, 1)), -30.0);
  EXPECT_EQ(commands.ground_loads, 1);
}

TEST(GroundLoads, PassMasslessAndConstrainedComponentsBy) {
  CommandModel model(2, {{{1.0, 1.0}}, {}, {}}, "    1       0.0       1.0\n");
  model.fix(1, {1, 2, 3});
  model.ready().mass(2, 1, 3.0);
  model.vector(masses.AMASS)(NEQ1()) = 100.0;  // of what is constrained
  DYNCMD(1, 0, 0);
  EXPECT_EQ(commands.ground_loads, 1);
  EXPECT_EQ(model.loads(0.0)(NEQ1()), 0.0);
}

TEST(ImposedDisplacements, AreCountedFromTheMacrosStart) {
  // Record from 3 by 1 per second, the macro at record time 2.
  CommandModel model(2, {{}, {}, {{3, 4, 5, 6, 7}}}, command(1, 2, "2.0", "1.0", {2}));
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_EQ(model.imposed(0.0)(equation_of(2, 2)), 0.0);
  EXPECT_EQ(model.imposed(0.5)(equation_of(2, 2)), 0.5);
  EXPECT_EQ(model.imposed(9.0)(equation_of(2, 2)), 2.0) << "the last value is held";
  EXPECT_EQ(model.imposed(0.5)(equation_of(1, 2)), 0.0);
}

TEST(ImposedDisplacements, HoldTheFirstValueUntilADelayedRecordBegins) {
  CommandModel model(2, {{}, {}, {{3, 4}}}, command(1, 2, "-2.0", "1.0", {2}));
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_EQ(model.imposed(2.0)(equation_of(2, 2)), 0.0);
  EXPECT_EQ(model.imposed(2.5)(equation_of(2, 2)), 0.5);
}

TEST(ImposedDisplacements, OfOneEquationAdd) {
  CommandModel model(
      2, {{}, {}, {{0, 1}, {0, 10}}},
      command(1, 2, "0.0", "2.0", {2}) + command(2, 2, "0.0", "1.0", {2}) + command(1, 2, "0.0", "0.0", {1}));
  model.ready();
  DYNCMD(0, 0, 3);
  EXPECT_EQ(model.imposed(1.0)(equation_of(2, 2)), 12.0);
  EXPECT_EQ(model.imposed(1.0)(equation_of(1, 2)), 0.0);
  EXPECT_EQ(commands.displacements.count, 3) << "a scale of 0 still holds its equation";
}

// Ways in one second: 2 from 0 on, 1 from 0.5 on (the last value is held), 2 of the other record, twice that.
TEST(ImposedDisplacements, OfCommandsInARowHaveTheirOwnRecordTimeAndScale) {
  CommandModel model(2, {{}, {}, {{1, 3}, {5, 9}}},
                     command(1, 2, "0.0", "1.0", {1, 2}) + command(1, 2, "0.5", "1.0", {1}) +
                         command(2, 2, "0.5", "1.0", {1}) + command(2, 2, "0.5", "2.0", {2}));
  model.ready();
  DYNCMD(0, 0, 4);
  EXPECT_EQ(model.imposed(1.0)(equation_of(1, 2)), 2.0 + 1.0 + 2.0);
  EXPECT_EQ(model.imposed(1.0)(equation_of(2, 2)), 2.0 + 4.0);
}

TEST(ImposedDisplacements, OnConstrainedComponentsAreIgnored) {
  CommandModel model(2, {{}, {}, {{0, 1}}}, command(1, 2, "0.0", "2.0", {2}));
  model.fix(2, {2});
  model.ready();
  DYNCMD(0, 0, 1);
  EXPECT_FALSE(has_imposed());
  EXPECT_EQ(model.imposed(1.0)(NEQ1()), 0.0);
}

}  // namespace
}  // namespace tidearc::test
