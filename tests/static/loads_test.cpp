// Load vectors of a segment, from pattern records written by hand.
#include <gtest/gtest.h>

#include <array>
#include <cstring>

#include "run/tapefile.h"
#include "segment_fixture.h"

namespace tidearc::test {
namespace {

/// Writes patterns on NT10 as the model input does, behind the three node model.
class PatternTape {
 public:
  PatternTape() : scratch_("") {
    three_node_model();
    FILE(units.NT10, "REWI");
  }

  void nodal(const std::array<double, 7>& vector, PatternType type = pattern_nodal) {
    header(type, 14);
    FILE(units.NT10, "WRIT", 14, vector.data());
  }
  void follower(int NODA, int NODD, double force) {
    struct {
      int NODA, NODD;
      double force;
    } card{NODA, NODD, force};
    header(pattern_follower, 1);
    FILE(units.NT10, "WRIT", 4, static_cast<const void*>(&card));
  }
  void temperature(const std::array<double, 3>& T, const std::array<double, 3>& p) {
    header(pattern_temperature, 6);
    FILE(units.NT10, "WRIT", 6, T.data());
    FILE(units.NT10, "WRIT", 6, p.data());
    patterns.have_temperatures = true;
  }
  /// A uniform pressure on one triangle.
  void pressure(double value, int a, int b, int c) {
    const int KPRS = 3;
    const std::array<double, 7> data{value};
    struct {
      std::array<int, 4> node;
      std::array<double, 4> pressure;
    } surface{{a, b, c, 0}, {}};
    header(pattern_surface, 2);
    FILE(units.NT10, "WRIT", 1, static_cast<const void*>(&KPRS));
    FILE(units.NT10, "WRIT", 14, data.data());
    FILE(units.NT10, "WRIT", 12, static_cast<const void*>(&surface));
  }
  /// Lays down what the analyses need, after the last pattern.
  void done() {
    static_loads.NPAT = static_loads.NMADE;
    patterns.KTEMP = carve_reals(3);
    patterns.KPRES = carve_reals(3);
    carve_analysis_arrays();
    statics.moving_loads = false;
  }

 private:
  void header(PatternType type, int length) {
    struct {
      int type, length;
      std::array<char, 40> title;
    } words{type, length, {}};
    FILE(units.NT10, "WRIT", 12, static_cast<const void*>(&words));
    patterns.type[static_cast<std::size_t>(static_loads.NMADE++)] = type;
  }
  Scratch scratch_;
};

double RINC(int e) { return equation_vector(arrays.RINC)(e); }
double P(int e) { return equation_vector(arrays.P)(e); }

TEST(LODSEG, AddsEveryPatternAtItsFactorOfTheSegment) {
  PatternTape tape;
  tape.nodal({1, 2, 3, 4, 5, 6, 0});
  tape.nodal({10, 0, 0, 0, 0, 20, 0}, pattern_self_weight);
  tape.nodal({0, 100, 0, 0, 0, 0, 0}, pattern_buoyancy);
  tape.nodal({0, 0, 1000, 0, 0, 0, 0}, pattern_current);
  tape.done();
  segment.factor[0] = 2.0;
  segment.factor[1] = 0.5;
  segment.factor[2] = -1.0;
  segment.factor[3] = 0.25;
  equation_vector(arrays.RINC)(1) = 99.0;  // what the segment before left
  LODSEG();
  const std::array<double, 6> expected{2.0 + 5.0, 4.0 - 100.0, 6.0 + 250.0, 8.0, 10.0, 12.0 + 10.0};
  for (int e = 1; e <= 6; ++e) EXPECT_EQ(RINC(e), expected[static_cast<std::size_t>(e - 1)]);
  EXPECT_FALSE(statics.moving_loads);
}

TEST(LODSEG, CanBeCalledAgainAndAgain) {
  PatternTape tape;
  tape.nodal({1, 0, 0, 0, 0, 0, 0});
  tape.done();
  segment.factor[0] = 3.0;
  LODSEG();
  LODSEG();
  EXPECT_EQ(RINC(1), 3.0);
}

TEST(LODSEG, WithoutPatternsIsZero) {
  PatternTape tape;
  tape.done();
  equation_vector(arrays.RINC)(2) = 1.0;
  LODSEG();
  EXPECT_EQ(RINC(2), 0.0);
}

TEST(LODSEG, ReadsPastATemperaturePattern) {
  PatternTape tape;
  tape.temperature({10, 20, 30}, {1, 2, 3});
  tape.nodal({7, 0, 0, 0, 0, 0, 0});
  tape.done();
  segment.factor[0] = 1.0;
  segment.factor[1] = 1.0;
  LODSEG();
  EXPECT_EQ(RINC(1), 7.0);
  EXPECT_EQ(node_temperature(2), 0.0);
}

/// Node 2 at (0,0,0), node 3 at (3,0,0); a force of 10 at node 2 toward node 3.
void place_follower_nodes() {
  for (const int vector : {nodes.X, nodes.Y, nodes.Z}) {
    for (double& value : pool.reals(vector, 3)) value = 0.0;
  }
  pool.reals(nodes.X, 3)(3) = 3.0;
}

TEST(FollowerForce, ActsAlongTheLineAtTheDisplacementsAtHand) {
  PatternTape tape;
  tape.follower(2, 3, 10.0);
  tape.done();
  place_follower_nodes();
  segment.factor[0] = 2.0;
  LODSEG();
  EXPECT_EQ(RINC(1), 20.0);
  EXPECT_EQ(RINC(2), 0.0);
  // Node 3 moves 4 up: the line is 3, 4, 5.
  equation_vector(arrays.U)(5) = 4.0;
  LODSEG();
  EXPECT_DOUBLE_EQ(RINC(1), 12.0);
  EXPECT_DOUBLE_EQ(RINC(2), 16.0);
  EXPECT_EQ(RINC(4), 0.0);  // the force acts on the first node alone
}

TEST(FollowerForce, TurnsAllTheLoadAppliedSoFarWithTheGeometry) {
  PatternTape tape;
  tape.follower(2, 3, 10.0);
  tape.done();
  place_follower_nodes();
  segment.factor[0] = 2.0;
  statics.accumulated[0] = 3.0;
  equation_vector(arrays.U)(5) = 4.0;
  LODLVL(0.5);  // (0.5*2 + 3) * 10 along (0.6, 0.8)
  EXPECT_DOUBLE_EQ(P(1), 24.0);
  EXPECT_DOUBLE_EQ(P(2), 32.0);
}

TEST(MovingLoads, AreMarkedByAFollowerPatternWhateverItsFactor) {
  PatternTape tape;
  tape.nodal({1, 0, 0, 0, 0, 0, 0});
  tape.follower(2, 3, 10.0);
  tape.nodal({1, 0, 0, 0, 0, 0, 0});
  tape.done();
  place_follower_nodes();
  segment.factor[0] = 1.0;
  segment.factor[2] = 1.0;
  LODSEG();
  EXPECT_TRUE(statics.moving_loads);
  EXPECT_EQ(RINC(1), 2.0);
}

/// A right triangle with legs of 1 in the plane of X and Y, seen counter-clockwise from above: the outward normal is
/// up. A pressure of 6 pushes with 6 * 0.5 downward, a third of it at each corner.
void place_triangle() {
  place_follower_nodes();
  pool.reals(nodes.X, 3)(2) = 1.0;
  pool.reals(nodes.X, 3)(3) = 0.0;
  pool.reals(nodes.Y, 3)(3) = 1.0;
}

TEST(SurfacePressure, IsEvaluatedOnTheDisplacedGeometryAndMarksMovingLoads) {
  PatternTape tape;
  tape.pressure(6.0, 1, 2, 3);
  tape.done();
  place_triangle();
  segment.factor[0] = 1.0;
  LODSEG();
  EXPECT_TRUE(statics.moving_loads);
  EXPECT_NEAR(RINC(3), -1.0, 1e-14);  // two Gauss points a side integrate the bilinear product exactly
  EXPECT_NEAR(RINC(6), -1.0, 1e-14);
  EXPECT_NEAR(RINC(1), 0.0, 1e-14);
  equation_vector(arrays.U)(1) = 1.0;  // node 2 moves out: twice the area
  LODLVL(0.5);
  EXPECT_NEAR(P(3), -1.0, 1e-14);
}

TEST(MovingLoads, AreMarkedByASurfacePatternAtFactorZero) {
  PatternTape tape;
  tape.pressure(6.0, 1, 2, 3);
  tape.done();
  place_triangle();
  LODSEG();
  EXPECT_TRUE(statics.moving_loads);
  EXPECT_EQ(RINC(3), 0.0);
}

TEST(LODLVL, IsLevelTimesFactorPlusAccumulatedForEachPattern) {
  PatternTape tape;
  tape.nodal({1, 0, 0, 0, 0, 0, 0});
  tape.nodal({0, 1, 0, 0, 0, 0, 0}, pattern_self_weight);
  tape.done();
  segment.factor[0] = 8.0;
  segment.factor[1] = 0.0;
  statics.accumulated[0] = 16.0;
  statics.accumulated[1] = 1.5;
  equation_vector(arrays.P)(3) = 77.0;  // of the trial before
  LODLVL(0.25);
  EXPECT_EQ(P(1), 18.0);
  EXPECT_EQ(P(2), 1.5);
  EXPECT_EQ(P(3), 0.0);
  LODLVL(0.0);
  EXPECT_EQ(P(1), 16.0);
}

TEST(LODLVL, SetsNodeTemperaturesAndPressuresOfTheLevel) {
  PatternTape tape;
  tape.temperature({10, 20, 30}, {1, 2, 3});
  tape.nodal({1, 0, 0, 0, 0, 0, 0});
  tape.temperature({100, 0, 0}, {0, 0, 50});
  tape.done();
  segment.factor[0] = 2.0;
  segment.factor[1] = 4.0;
  segment.factor[2] = 1.0;
  statics.accumulated[0] = 1.0;
  for (int trial = 1; trial <= 2; ++trial) {  // the vectors are set, not added to
    LODLVL(0.5);
    EXPECT_EQ(node_temperature(1), 2.0 * 10 + 0.5 * 100);
    EXPECT_EQ(node_temperature(2), 2.0 * 20);
    EXPECT_EQ(node_pressure(3), 2.0 * 3 + 0.5 * 50);
    EXPECT_EQ(P(1), 2.0);  // no thermal load in the load vector
    EXPECT_EQ(P(2), 0.0);
  }
}

TEST(LODLVL, ATemperaturePatternAtZeroIsPassedOver) {
  PatternTape tape;
  tape.temperature({10, 20, 30}, {1, 2, 3});
  tape.nodal({5, 0, 0, 0, 0, 0, 0});
  tape.done();
  segment.factor[1] = 1.0;
  LODLVL(1.0);
  EXPECT_EQ(P(1), 5.0);
  EXPECT_EQ(node_temperature(2), 0.0);
}

TEST(LODLVL, ZeroTemperaturesReturnAfterTheLoadIsGone) {
  PatternTape tape;
  tape.temperature({10, 20, 30}, {1, 2, 3});
  tape.done();
  segment.factor[0] = 1.0;
  LODLVL(1.0);
  EXPECT_EQ(node_temperature(3), 30.0);
  LODLVL(0.0);
  EXPECT_EQ(node_temperature(3), 0.0);
  EXPECT_EQ(node_pressure(3), 0.0);
}

TEST(LoadVectors, PatternRowsLeaveTheNeighbouringVectorsAlone) {
  PatternTape tape;
  tape.nodal({1, 1, 1, 1, 1, 1, 1});
  tape.nodal({2, 2, 2, 2, 2, 2, 2});
  tape.done();
  segment.factor[0] = segment.factor[1] = 1.0;
  for (double& value : equation_vector(arrays.XP)) value = 5.0;
  for (double& value : equation_vector(arrays.DDIS)) value = 6.0;
  LODSEG();
  LODLVL(1.0);
  for (const double value : equation_vector(arrays.XP)) EXPECT_EQ(value, 5.0);
  for (const double value : equation_vector(arrays.DDIS)) EXPECT_EQ(value, 6.0);
  EXPECT_EQ(P(6), 3.0);
}

}  // namespace
}  // namespace tidearc::test
