// Water motion of the grid wave at a point: cells, bilinear values, edges, stops.
#include <cmath>

#include "grid_section.h"

namespace tidearc::test {
namespace {

WaterMotion motion(const Point& at, MotionParts parts = {}) {
  WaterMotion result;
  result.velocity = {9.0, 9.0, 9.0};
  result.acceleration = {9.0, 9.0, 9.0};
  GRDVEL(at, 0.0, -1.0e6, parts, result);
  return result;
}

void expect_fields(double x, double z, const WaterMotion& found, double tolerance = 1e-12) {
  const LinearFields f;
  EXPECT_NEAR(found.velocity[0], f.U(x, z), tolerance);
  EXPECT_NEAR(found.velocity[1], 0.0, tolerance);
  EXPECT_NEAR(found.velocity[2], f.V(x, z), tolerance);
  EXPECT_NEAR(found.acceleration[0], f.UU(x, z), tolerance);
  EXPECT_NEAR(found.acceleration[2], f.VV(x, z), tolerance);
}

TEST(GridCell, IsTheFirstPairWhoseUpperCoordinateExceedsThePoint) {
  const auto cell = [](double p, double z) { return grid_cell(grid_X, grid_Z, p, z); };
  EXPECT_EQ(cell(-20.0, 0.0).column, 0U);
  EXPECT_EQ(cell(-20.0, 0.0).r, -1.0);
  EXPECT_EQ(cell(-5.0, 0.0).column, 1U);  // on a column: the pair above it
  EXPECT_EQ(cell(-5.0, 0.0).r, -1.0);
  EXPECT_EQ(cell(9.99, 0.0).column, 1U);
  EXPECT_EQ(cell(25.0, 0.0).column, 2U);
  EXPECT_EQ(cell(25.0, 0.0).r, 0.0);
  EXPECT_EQ(cell(0.0, -20.0).row, 1U);
  EXPECT_EQ(cell(0.0, -35.0).row, 0U);
  EXPECT_EQ(cell(0.0, -35.0).s, 0.0);
}

TEST(GridCell, HoldsItsLastColumnAndNothingBeyondTheEdges) {
  const auto cell = [](double p) { return grid_cell(grid_X, grid_Z, p, 0.0); };
  EXPECT_TRUE(cell(40.0).inside);
  EXPECT_EQ(cell(40.0).column, 2U);
  EXPECT_EQ(cell(40.0).r, 1.0);
  EXPECT_TRUE(cell(-20.0).inside);
  EXPECT_FALSE(cell(40.0000001).inside);
  EXPECT_FALSE(cell(-20.0000001).inside);
  EXPECT_FALSE(cell(std::nan("")).inside);
}

TEST(GridCell, CutsHeightsAtTheOuterRows) {
  const auto cell = [](double z) { return grid_cell(grid_X, grid_Z, 0.0, z); };
  EXPECT_EQ(cell(10.0).s, 1.0);
  EXPECT_EQ(cell(30.0).s, 1.0);
  EXPECT_EQ(cell(30.0).row, 1U);
  EXPECT_EQ(cell(-70.0).s, -1.0);
  EXPECT_EQ(cell(-70.0).row, 0U);
}

TEST(GridWaveMotion, HoldsALinearFieldExactly) {
  GridSection m;
  m.start();
  for (const double x : {-20.0, -19.0, -5.0, 0.0, 10.0, 33.3, 40.0})
    for (const double z : {-50.0, -36.0, -20.0, 3.0, 10.0}) expect_fields(x, z, motion({x, 7.0, z}));
}

TEST(GridWaveMotion, TakesEachCornerOfItsCell) {
  // Values that no two corners share: 1, 2 in the lower row, 4, 8 in the upper one.
  GridBytes bytes;
  bytes.head({0.0, 1.0}, {0.0, 1.0}).reals({5.0, 6.0});
  for (const double value : {1.0, 2.0, 4.0, 8.0}) bytes.reals({value, 10.0 * value, 0.0, 0.0, 0.0});
  GridSection m({}, bytes);
  m.start();
  EXPECT_NEAR(motion({0.0, 0.0, 0.0}).velocity[0], 1.0, 1e-14);
  EXPECT_NEAR(motion({1.0, 0.0, 0.0}).velocity[0], 2.0, 1e-14);
  EXPECT_NEAR(motion({0.0, 0.0, 1.0}).velocity[0], 4.0, 1e-14);
  EXPECT_NEAR(motion({1.0, 0.0, 1.0}).velocity[0], 8.0, 1e-14);
  EXPECT_NEAR(motion({0.5, 0.0, 0.5}).velocity[0], 3.75, 1e-14);
  EXPECT_NEAR(motion({0.25, 0.0, 0.75}).velocity[2], 10.0 * (0.1875 + 0.125 + 2.25 + 1.5), 1e-13);
}

TEST(GridWaveMotion, OfAPointBeyondTheRowsTakesTheirEdge) {
  GridSection m;
  m.start();
  expect_fields(3.0, 10.0, motion({3.0, 0.0, 14.0}));
  expect_fields(3.0, -50.0, motion({3.0, 0.0, -64.0}));
}

TEST(GridWaveMotion, RunsAlongItsDirection) {
  GridSection m({.direction = {"3.", "4.", ""}});
  m.start();
  const LinearFields f;
  const WaterMotion found = motion({5.0, 2.5, -10.0});  // 5 along the wave
  EXPECT_NEAR(found.velocity[0], 0.6 * f.U(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.velocity[1], 0.8 * f.U(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.velocity[2], f.V(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.acceleration[0], 0.6 * f.UU(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.acceleration[1], 0.8 * f.UU(5.0, -10.0), 1e-12);
  EXPECT_NEAR(GRDETA(0.0, {5.0, 2.5, 0.0}), f.surface(5.0), 1e-12);
}

TEST(GridWaveMotion, StandsOnTheAxisOfGravity) {
  GridSection m({.direction = {"", "1.", ""}});
  gravity.direction = {-1.0, 0.0, 0.0};
  m.start();
  const WaterMotion found = motion({-10.0, 5.0, 77.0});
  const LinearFields f;
  EXPECT_NEAR(found.velocity[1], f.U(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.velocity[0], f.V(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.velocity[2], 0.0, 1e-12);
}

TEST(GridWaveMotion, ReducesHorizontalPartsByTheKinematicFactor) {
  GridSection m;
  m.start();
  wave.kinematic_factor = 0.85;
  const LinearFields f;
  const WaterMotion found = motion({5.0, 0.0, -10.0});
  EXPECT_NEAR(found.velocity[0], 0.85 * f.U(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.velocity[2], f.V(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.acceleration[0], 0.85 * f.UU(5.0, -10.0), 1e-12);
  EXPECT_NEAR(found.acceleration[2], f.VV(5.0, -10.0), 1e-12);
}

TEST(GridWaveMotion, TakesTheCurrentBesideIt) {
  GridSection m;
  m.start();
  wave.current_code = 1;
  current_now.NLEVEL = 2;
  current_now.level[1] = 50.0;
  current_now.vector[0] = 1.5;
  current_now.vector[3] = 0.5;
  const LinearFields f;
  EXPECT_NEAR(motion({5.0, 0.0, -25.0}).velocity[0], f.U(5.0, -25.0) + 1.0, 1e-12);
  EXPECT_NEAR(motion({5.0, 0.0, -25.0}, {.wave_only = true}).velocity[0], f.U(5.0, -25.0), 1e-12);
  const WaterMotion alone = motion({5.0, 0.0, -25.0}, {.current_only = true});
  EXPECT_NEAR(alone.velocity[0], 1.0, 1e-12);
  EXPECT_EQ(alone.velocity[2], 0.0);
  EXPECT_EQ(alone.acceleration[0], 0.0);
  // Stretched to the surface of the grid, 2.5 above mean level over x = 5: level 0 stands there.
  wave.current_stretching = 2;
  EXPECT_NEAR(motion({5.0, 0.0, 2.5}, {.current_only = true}).velocity[0], 1.5, 1e-12);
}

TEST(GridWaveSurface, IsStraightBetweenColumns) {
  GridBytes bytes;
  bytes.head({0.0, 10.0, 30.0}, {0.0}).reals({1.0, 3.0, -1.0}).reals(std::vector<double>(15, 0.0));
  GridSection m({}, bytes);
  m.start();
  EXPECT_NEAR(GRDETA(0.0, {0.0, 0.0, 0.0}), 1.0, 1e-14);
  EXPECT_NEAR(GRDETA(0.0, {2.5, 0.0, 0.0}), 1.5, 1e-14);
  EXPECT_NEAR(GRDETA(0.0, {10.0, 0.0, 0.0}), 3.0, 1e-14);
  EXPECT_NEAR(GRDETA(0.0, {25.0, 0.0, 0.0}), 0.0, 1e-14);
  EXPECT_NEAR(GRDETA(0.0, {30.0, 0.0, 0.0}), -1.0, 1e-14);
}

TEST(GridWaveSurface, CutsAChordOnASideOfIt) {
  GridSection m;
  m.start();
  const Point cut = GRDCUT({5.0, 0.0, -10.0}, {5.0, 0.0, 10.0}, 0.0);
  EXPECT_LE(cut[2], 2.5);
  EXPECT_NEAR(cut[2], 2.5, 20.0 / 128.0);
}

TEST(GridWavePressure, IsThatOfTheGridAndDynamicWithoutStillWater) {
  GridSection m;
  gravity.water_level = 1.0;
  m.start();
  const WavePressure p = GRDPRS(3.0, {5.0, 0.0, -10.0}, 0.0);
  EXPECT_NEAR(p.total, LinearFields{}.P(5.0, -10.0), 1e-11);
  EXPECT_NEAR(p.dynamic, LinearFields{}.P(5.0, -10.0) - 1.025 * 9.81 * 11.0, 1e-11);
  EXPECT_EQ(GRDPRS(-10.001, {5.0, 0.0, -10.0}, 0.0).total, 0.0);
  EXPECT_NE(GRDPRS(-10.0, {5.0, 0.0, -10.0}, 0.0).total, 0.0);
}

TEST(GridWaveMotion, BeforeTheFirstGroupIsStillWater) {
  GridSection m({.position = "2"});
  gravity.water_level = 1.0;
  m.read();
  start_grid_steps();
  EXPECT_EQ(GRDETA(0.0, {5.0, 0.0, 0.0}), 1.0);
  EXPECT_EQ(motion({5.0, 0.0, -10.0}).velocity[0], 0.0);
  EXPECT_NEAR(GRDPRS(1.0, {5.0, 0.0, -10.0}, 0.0).total, 1.025 * 9.81 * 11.0, 1e-11);
  EXPECT_EQ(GRDPRS(1.0, {5.0, 0.0, -10.0}, 0.0).dynamic, 0.0);
}

TEST(SmallGrids, OfOneColumnHoldPointsOnItAlone) {
  GridSection m({}, linear_grid(1, {5.0}, grid_Z));
  m.start();
  expect_fields(5.0, -13.0, motion({5.0, 2.0, -13.0}));
  EXPECT_NEAR(GRDETA(0.0, {5.0, 0.0, 0.0}), 2.5, 1e-14);
  EXPECT_EQ(stop_of([] { motion({5.0001, 0.0, -13.0}); }), status_fatal);
  EXPECT_EQ(stop_of([] { motion({4.9999, 0.0, -13.0}); }), status_fatal);
}

TEST(SmallGrids, OfOneRowHoldAtAllHeights) {
  GridSection m({}, linear_grid(1, grid_X, {-10.0}));
  m.start();
  for (const double z : {-60.0, -10.0, 25.0}) expect_fields(3.0, -10.0, motion({3.0, 0.0, z}));
}

TEST(SmallGrids, OfOnePointHoldItsValues) {
  GridSection m({}, linear_grid(1, {0.0}, {-10.0}));
  m.start();
  expect_fields(0.0, -10.0, motion({0.0, 3.0, 4.0}));
}

// --- stops ----------------------------------------------------------------------------------------------------------

TEST(GridWave, EndsTheRunAtAPointOutsideItsColumns) {
  GridSection m({.direction = {"", "1.", ""}});
  m.start();
  for (const double y : {40.001, -20.001}) {
    EXPECT_EQ(stop_of([y] { GRDETA(0.0, {3.0, y, -7.0}); }), status_fatal);
    EXPECT_EQ(stop_of([y] { motion({3.0, y, -7.0}); }), status_fatal);
    EXPECT_EQ(stop_of([y] { GRDPRS(10.0, {3.0, y, -7.0}, 0.0); }), status_fatal);
  }
  EXPECT_EQ(m.times_reported("     FORCE POINT OUTSIDE LIMITS OF GRID\n"), 6);
  EXPECT_TRUE(m.reports("     POINT COORDINATES =    3.00000        40.0010       -7.00000\n")) << m.report();
  EXPECT_TRUE(m.reports("     TRANSFORMED COORDINATES =    40.0010       -7.00000\n"));
  EXPECT_EQ(stop_of([] { GRDETA(0.0, {3.0, 40.0, -7.0}); }), std::nullopt);
  EXPECT_EQ(stop_of([] { GRDETA(0.0, {3.0, -20.0, -7.0}); }), std::nullopt);
}

TEST(GridWave, NeedsAVerticalAxisThatPointsUp) {
  GridSection m;
  gravity.direction = {0.0, 0.0, 1.0};
  m.start();
  EXPECT_EQ(stop_of([] { motion({3.0, 0.0, -7.0}); }), status_fatal);
  EXPECT_TRUE(m.reports("     GLOBAL VERTICAL AXIS IS NOT DIRECTED UP (OPPOSITE GRAVITY)\n"));
}

}  // namespace
}  // namespace tidearc::test
