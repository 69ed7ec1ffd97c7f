// What the analyses get from the pattern file: loads at a factor and a displacement, node temperatures.
#include <cmath>

#include "load_model.h"

namespace tidearc::test {
namespace {

constexpr double round_off = 1.0E-12;

/// A model whose pattern section has been read, with room for the vectors of an analysis.
struct Loaded {
  LoadModel& model;
  std::vector<double> U, row, load;

  explicit Loaded(LoadModel& m) : model(m) {
    PATTIN();
    const auto n = static_cast<std::size_t>(NEQ1());
    U.assign(n, 0.0);
    row.assign(n, 0.0);
    load.assign(n, 0.0);
    FILE(units.NT10, "REWI");
  }
  double& displacement(int node, int c) { return U[static_cast<std::size_t>(equation_of(node, c) - 1)]; }
  double load_at(int node, int c) const { return load[static_cast<std::size_t>(equation_of(node, c) - 1)]; }
  PatternType add(double factor) {
    const int n = NEQ1();
    return add_next_pattern(factor, ConstReals(U.data(), n), Reals(row.data(), n), Reals(load.data(), n));
  }
  void expect_load(int node, const Position& wanted, double tolerance = round_off) const {
    for (int c = 1; c <= 3; ++c) EXPECT_NEAR(load_at(node, c), wanted[static_cast<std::size_t>(c - 1)], tolerance) << c;
  }
};

/// Direction 1 along global Y, 2 along global -X, 3 along global Z.
const std::array<Position, 3> quarter_turn{Position{0, 1, 0}, Position{-1, 0, 0}, Position{0, 0, 1}};

TEST(AddPattern, NodalLoadsEnterAtTheirFactor) {
  LoadModel model("    1\n    1       2.0\n    1\n    1       5.0      10.0\n", row_of_nodes(1));
  model.number();
  static_loads.NFPAT = static_loads.NPAT = 2;
  Loaded loaded(model);
  EXPECT_EQ(loaded.add(3.0), pattern_nodal);
  EXPECT_EQ(loaded.add(-1.0), pattern_nodal);
  loaded.expect_load(1, {1.0, -10.0, 0.0});
}

TEST(AddPattern, FactorOfZeroPassesOverEveryKind) {
  LoadModel model(
      "    1\n    1       2.0\n"                                       // nodal
      "    2\n    1    2       1.0\n    1    2\n"                      // follower
      "    0\n"                                                        // temperature
      "    2    3    0       1.0\n    1    2    3\n    3    2    1\n"  // two surfaces
      ,
      row_of_nodes(3));
  model.number();
  static_loads.NFPAT = static_loads.NFOLL = static_loads.NTPAT = static_loads.NPPAT = 1;
  static_loads.ISELFW = 1;
  static_loads.NPAT = 5;
  model.vector(patterns.KSELFW)(1) = 8.0;
  Loaded loaded(model);
  EXPECT_EQ(loaded.add(0.0), pattern_nodal);
  EXPECT_EQ(loaded.add(0.0), pattern_follower);
  EXPECT_EQ(loaded.add(0.0), pattern_temperature);
  EXPECT_EQ(loaded.add(0.0), pattern_surface);
  for (const double value : loaded.load) EXPECT_EQ(value, 0.0);
  EXPECT_EQ(loaded.add(2.0), pattern_self_weight);
  EXPECT_EQ(loaded.load[0], 16.0);
}

TEST(AddPattern, GeneratedPatternsEnterLikeNodalLoads) {
  LoadModel model("", row_of_nodes(1));
  model.number();
  static_loads.ISELFW = static_loads.IBUOY = static_loads.ICURR = 1;
  static_loads.NPAT = 3;
  model.vector(patterns.KSELFW)(3) = -8.0;
  model.vector(patterns.KBUOYV)(3) = 5.0;
  model.vector(patterns.KCURRV)(1) = 2.0;
  Loaded loaded(model);
  EXPECT_EQ(loaded.add(1.0), pattern_self_weight);
  EXPECT_EQ(loaded.add(2.0), pattern_buoyancy);
  EXPECT_EQ(loaded.add(3.0), pattern_current);
  loaded.expect_load(1, {6.0, 0.0, 2.0});
}

// ---- follower forces

LoadModel& follower_model(LoadModel& model) {
  model.number();
  static_loads.NFOLL = static_loads.NPAT = 1;
  return model;
}
const std::string follower_deck = "    1\n    1    2      10.0\n";

TEST(AddFollowerForce, ActsOnTheFirstNodeAloneTowardTheSecond) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 4}});
  Loaded loaded(follower_model(model));
  EXPECT_EQ(loaded.add(0.5), pattern_follower);
  loaded.expect_load(1, {3, 0, 4});
  loaded.expect_load(2, {0, 0, 0});
}

TEST(AddFollowerForce, TurnsWithTheDisplacedLine) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 4}});
  Loaded loaded(follower_model(model));
  loaded.displacement(1, 1) = -1.0;  // line from (-1, 0, 0) to (2, 4, 0)
  loaded.displacement(2, 1) = -1.0;
  loaded.displacement(2, 2) = 4.0;
  loaded.displacement(2, 3) = -4.0;
  loaded.add(1.0);
  loaded.expect_load(1, {6, 8, 0});
}

TEST(AddFollowerForce, OfATurnedNodeEntersInItsOwnAxes) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 4}});
  model.turn(1, quarter_turn);
  Loaded loaded(follower_model(model));
  // Local 2 of node 1 is global -X: 1.0 along it moves the node to (-1, 0, 0).
  loaded.displacement(1, 2) = 1.0;
  loaded.displacement(2, 1) = -1.0;
  loaded.displacement(2, 2) = 4.0;
  loaded.displacement(2, 3) = -4.0;
  loaded.add(1.0);
  loaded.expect_load(1, {8, -6, 0});  // global (6, 8, 0)
}

TEST(AddFollowerForce, FollowsATurnedSecondNode) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 0}});
  model.turn(2, quarter_turn);
  Loaded loaded(follower_model(model));
  loaded.displacement(2, 1) = 4.0;  // global Y: line to (3, 4, 0)
  loaded.add(1.0);
  loaded.expect_load(1, {6, 8, 0});
}

TEST(AddFollowerForce, VanishesBetweenNodesThatMeet) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 0}});
  Loaded loaded(follower_model(model));
  loaded.displacement(2, 1) = -3.0;
  loaded.add(1.0);
  loaded.expect_load(1, {0, 0, 0});
}

TEST(AddFollowerForce, LeavesAConstrainedComponentToTheSink) {
  LoadModel model(follower_deck, {{0, 0, 0}, {3, 0, 4}});
  model.fix(1, {3});
  Loaded loaded(follower_model(model));
  loaded.add(1.0);
  EXPECT_NEAR(loaded.load_at(1, 1), 6.0, round_off);
  EXPECT_NEAR(loaded.load.back(), 8.0, round_off);  // nobody reads it
}

// ---- surface pressures

const std::vector<Position> square{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}};

LoadModel& surface_model(LoadModel& model) {
  model.number();
  static_loads.NPPAT = static_loads.NPAT = 1;
  return model;
}

TEST(AddSurfacePressure, UniformPressureIsSharedByTheCorners) {
  LoadModel model("    1    3    0       6.0\n    1    2    3    4\n", square);
  Loaded loaded(surface_model(model));
  EXPECT_EQ(loaded.add(0.5), pattern_surface);
  for (int n = 1; n <= 4; ++n) loaded.expect_load(n, {0, 0, -3});  // 0.5 * 6 * 4 / 4
}

TEST(AddSurfacePressure, ActsOnTheDisplacedSurface) {
  LoadModel model("    1    3    0       6.0\n    1    2    3    4\n", square);
  Loaded loaded(surface_model(model));
  // Nodes 2 and 3 move so that the surface stands upright, in the plane X = 0, and is twice as long: normal -X.
  for (const int n : {2, 3}) {
    loaded.displacement(n, 1) = -2.0;
    loaded.displacement(n, 3) = 4.0;
  }
  loaded.add(1.0);
  for (int n = 1; n <= 4; ++n) loaded.expect_load(n, {12, 0, 0});  // 6 * 8 / 4 against -X
}

TEST(AddSurfacePressure, TurnedNodesMoveAndAreLoadedInTheirOwnAxes) {
  LoadModel model("    1    3    0       6.0\n    1    2    3    4\n", square);
  for (int n = 1; n <= 4; ++n) model.turn(n, quarter_turn);
  Loaded loaded(surface_model(model));
  for (const int n : {2, 3}) {
    loaded.displacement(n, 2) = 2.0;  // global X: -2
    loaded.displacement(n, 3) = 4.0;
  }
  loaded.add(1.0);
  for (int n = 1; n <= 4; ++n) loaded.expect_load(n, {0, -12, 0});  // global X is local -2
}

TEST(AddSurfacePressure, TriangleSharesAThirdToEachNode) {
  LoadModel model("    1    3    0       6.0\n    1    2    3    0\n", square);
  Loaded loaded(surface_model(model));
  loaded.add(1.0);
  for (int n = 1; n <= 3; ++n) loaded.expect_load(n, {0, 0, -4});
  loaded.expect_load(4, {0, 0, 0});
}

TEST(AddSurfacePressure, NodalPressuresStayWithTheirNodes) {
  LoadModel model("    1    1    1\n    1    2    3    4\n    3                36.0\n", square);
  Loaded loaded(surface_model(model));
  loaded.add(1.0);
  // p = 36 N3 on an area of 4: shares 1, 2, 4, 2 of 36 parts.
  loaded.expect_load(1, {0, 0, -4});
  loaded.expect_load(2, {0, 0, -8});
  loaded.expect_load(3, {0, 0, -16});
  loaded.expect_load(4, {0, 0, -8});
}

TEST(AddSurfacePressure, FluidPressureGrowsAsTheSurfaceSinks) {
  LoadModel model("    1    2    0     10.0       0.0       0.0       1.0  0.0  0.0  3.0\n    1    2    3    4\n",
                  square);
  Loaded loaded(surface_model(model));
  loaded.add(1.0);
  loaded.expect_load(1, {0, 0, -30});  // depth 3: 10 * 3 * 4 / 4
  for (int n = 1; n <= 4; ++n) loaded.displacement(n, 3) = -1.0;
  std::fill(loaded.load.begin(), loaded.load.end(), 0.0);
  FILE(units.NT10, "REWI");
  loaded.add(1.0);
  loaded.expect_load(1, {0, 0, -40});
}

TEST(AddSurfacePressure, FluidDoesNotPullAboveItsSurface) {
  LoadModel model("    1    2    0     10.0       0.0       0.0       1.0  0.0  0.0 -3.0\n    1    2    3    4\n",
                  square);
  Loaded loaded(surface_model(model));
  loaded.add(1.0);
  for (int n = 1; n <= 4; ++n) loaded.expect_load(n, {0, 0, 0});
}

// ---- temperatures

TEST(NodeTemperature, IsZeroWithoutTemperaturePatterns) {
  LoadModel model("", row_of_nodes(2));
  model.number();
  PATTIN();
  EXPECT_EQ(node_temperature(1), 0.0);
  EXPECT_EQ(node_pressure(2), 0.0);
}

TEST(NodeTemperature, IsZeroUntilAnAnalysisAddsAPattern) {
  LoadModel model("    1\n    1    2    1      20.0       3.0\n", row_of_nodes(2));
  model.number();
  static_loads.NTPAT = static_loads.NPAT = 1;
  PATTIN();
  EXPECT_EQ(node_temperature(2), 0.0);
  EXPECT_EQ(node_pressure(2), 0.0);
}

TEST(AddTemperature, SumsPatternsAtTheirFactorsAndPassesOverTheOthers) {
  LoadModel model(
      "    1\n    1       2.0\n"                      // nodal
      "    1\n    1    2       1.0\n"                 // follower
      "    1\n    1    2    1      20.0       3.0\n"  // temperatures
      "    1\n    2    2    1     100.0\n"
      "    1    3    0       1.0\n    1    2    1\n",  // surface
      row_of_nodes(2));
  model.number();
  static_loads.NFPAT = static_loads.NFOLL = static_loads.NPPAT = 1;
  static_loads.NTPAT = 2;
  static_loads.ISELFW = static_loads.IBUOY = static_loads.ICURR = 1;
  static_loads.NPAT = 8;
  PATTIN();
  FILE(units.NT10, "REWI");
  for (const double factor : {9.0, 9.0, 0.5, 2.0, 9.0, 9.0, 9.0, 9.0}) add_next_temperature(factor);
  EXPECT_EQ(node_temperature(1), 10.0);
  EXPECT_EQ(node_temperature(2), 210.0);
  EXPECT_EQ(node_pressure(1), 1.5);
  EXPECT_EQ(node_pressure(2), 1.5);
}

TEST(AddTemperature, FactorOfZeroPassesOverBothRecords) {
  LoadModel model("    1\n    1    2    1      20.0\n    1\n    1    2    1      30.0\n", row_of_nodes(2));
  model.number();
  static_loads.NTPAT = static_loads.NPAT = 2;
  PATTIN();
  FILE(units.NT10, "REWI");
  add_next_temperature(0.0);
  add_next_temperature(1.0);
  EXPECT_EQ(node_temperature(1), 30.0);
}

}  // namespace
}  // namespace tidearc::test
