// A stream function wave in an irregular sea; the table of families.
#include "sea/embedded.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "sea/components.h"
#include "test_sea.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

TEST(EmbeddedWeight, FallsBetweenHalfAndThreeQuartersOfAPeriod) {
  EXPECT_EQ(blending_weight(0.0), 1.0);
  EXPECT_EQ(blending_weight(0.5), 1.0);
  EXPECT_NEAR(blending_weight(0.6), 0.654508, 1.0e-6);
  EXPECT_NEAR(blending_weight(0.625), 0.5, 1.0e-15);
  EXPECT_NEAR(blending_weight(0.7), 0.095492, 1.0e-6);
  EXPECT_EQ(blending_weight(0.75), 0.0);
  EXPECT_EQ(blending_weight(3.0), 0.0);
}

/// H 12, T 12, d 50 with its peak at 100 s; one component of amplitude 1, 8 s, along X.
class EmbeddedSea : public ::testing::Test {
 protected:
  EmbeddedSea() : sea_(wave_embedded, 12.0, 12.0, 50.0) {
    wave.peak_time = 100.0;
    wave.d_irregular = 50.0;
    wave.NCOMP = 1;
    SeaComponent& one = components.of[0];
    one.omega = one.omega_water = 2 * pi / 8.0;
    one.amplitude = 1.0;
    one.phase = 0.4;
    one.k = one.omega * one.omega / 9.81;
    one.cosine = 1.0;
    one.sine = 0.0;
    set_profile(one, 50.0);
  }
  ~EmbeddedSea() override { components.of[0] = {}; }
  static Seen of(void (*kinematics)(const Point&, double, double, MotionParts, WaterMotion&), double t) {
    WaterMotion motion;
    kinematics(place(3.0, -5.0), t, wave.lower_current, {.wave_only = true}, motion);
    return seen(motion);
  }
  Sea sea_;
};

TEST_F(EmbeddedSea, WeightCountsFromThePeakBothWays) {
  EXPECT_EQ(embedded_weight(100.0), 1.0);
  EXPECT_EQ(embedded_weight(106.0), 1.0);
  EXPECT_NEAR(embedded_weight(107.5), 0.5, 1.0e-14);
  EXPECT_NEAR(embedded_weight(92.5), 0.5, 1.0e-14);
  EXPECT_EQ(embedded_weight(91.0), 0.0);
  EXPECT_EQ(embedded_weight(0.0), 0.0);
}

// A sea that is not a number spoils every sum that it enters, even with a factor of zero.
TEST_F(EmbeddedSea, AroundThePeakTheSeaIsNotAsked) {
  components.of[0].amplitude = std::nan("");
  for (const double t : {94.0, 100.0, 106.0}) {
    EXPECT_EQ(eta_at(3.0, t), -depth_of(SFNETA(t, place(3.0, 0.0))));
    EXPECT_EQ(motion_at(3.0, -5.0, t).u, of(SFNVEL, t).u);
    EXPECT_EQ(pressure_at(3.0, -5.0, t).total, SFNPRS(1.0e3, place(3.0, -5.0), t).total);
  }
  EXPECT_TRUE(std::isnan(eta_at(3.0, 107.5)));
  EXPECT_TRUE(std::isnan(motion_at(3.0, -5.0, 107.5).u));
}

// A surface that cannot be found would stop the run.
TEST_F(EmbeddedSea, AwayFromThePeakTheWaveIsNotAsked) {
  wave.NPTS = 0;
  wave_constants.stream.Xk[0] = std::nan("");
  for (const double t : {0.0, 91.0, 109.0}) {
    EXPECT_EQ(stop_of([t] { EXPECT_EQ(eta_at(3.0, t), -depth_of(IRRETA(t, place(3.0, 0.0)))); }), std::nullopt);
    EXPECT_EQ(motion_at(3.0, -5.0, t).u, of(IRRVEL, t).u);
    EXPECT_EQ(pressure_at(3.0, -5.0, t).total, IRRPRS(1.0e3, place(3.0, -5.0), t).total);
  }
  EXPECT_EQ(stop_of([] { eta_at(3.0, 107.5); }), 1);
}

TEST_F(EmbeddedSea, BetweenThemBothAreBlended) {
  const double t = 107.2, w = 0.654508497187474;  // r = 0.6
  const Seen is = motion_at(3.0, -5.0, t), stream = of(SFNVEL, t), sea = of(IRRVEL, t);
  EXPECT_NEAR(is.u, w * stream.u + (1 - w) * sea.u, 1.0e-13);
  EXPECT_NEAR(is.w, w * stream.w + (1 - w) * sea.w, 1.0e-13);
  EXPECT_NEAR(is.a, w * stream.a + (1 - w) * sea.a, 1.0e-13);
  EXPECT_NEAR(is.b, w * stream.b + (1 - w) * sea.b, 1.0e-13);
  const Point at = place(3.0, -5.0);
  EXPECT_NEAR(eta_at(3.0, t), w * -depth_of(SFNETA(t, at)) + (1 - w) * -depth_of(IRRETA(t, at)), 1.0e-13);
  const WavePressure p = pressure_at(3.0, -5.0, t), p1 = SFNPRS(1.0e3, at, t), p2 = IRRPRS(1.0e3, at, t);
  EXPECT_NEAR(p.dynamic, w * p1.dynamic + (1 - w) * p2.dynamic, 1.0e-11);
  EXPECT_NEAR(p.total - p.dynamic, 1.025 * 9.81 * 5.0, 1.0e-11);
}

TEST_F(EmbeddedSea, TheCurrentComesOnceStretchedToTheSurfaceOfBoth) {
  set_current({{0.0, 1.0}, {50.0, 0.0}}, 2);
  const double t = 107.2;
  const double level = 50.0 - 45.0 * 50.0 / (50.0 + eta_at(3.0, t));
  const double current = motion_at(3.0, -5.0, t, {.current_only = true}).u;
  EXPECT_NEAR(current, 1.0 - level / 50.0, 1.0e-13);
  const double w = 0.654508497187474;
  EXPECT_NEAR(motion_at(3.0, -5.0, t).u, w * of(SFNVEL, t).u + (1 - w) * of(IRRVEL, t).u + current, 1.0e-13);
}

TEST_F(EmbeddedSea, TheKinematicFactorActsInsideBoth) {
  const Seen plain = motion_at(3.0, -5.0, 107.2);
  wave.kinematic_factor = 0.8;
  EXPECT_NEAR(motion_at(3.0, -5.0, 107.2).u, 0.8 * plain.u, 1.0e-13);
  EXPECT_EQ(motion_at(3.0, -5.0, 107.2).w, plain.w);
}

TEST_F(EmbeddedSea, AMemberIsCutByTheSurfaceOfBoth) {
  const Point cut = wave_family(wave_embedded).cut(place(3.0, -20.0), place(3.0, 20.0), 107.2);
  EXPECT_NEAR(cut[2], eta_at(3.0, 107.2), 40.0 / 128.0);
  EXPECT_LE(cut[2], eta_at(3.0, 107.2));
}

TEST(WaveFamily, EveryTypeWithAFieldHasAllOperations) {
  for (const int type : {1, 2, 3, 4, 5, 6, 8}) {
    const WaveFamily& family = wave_family(type);
    EXPECT_NE(family.surface, nullptr) << type;
    EXPECT_NE(family.kinematics, nullptr) << type;
    EXPECT_NE(family.pressure, nullptr) << type;
    EXPECT_NE(family.cut, nullptr) << type;
  }
}

TEST(WaveFamily, ATypeWithoutAFieldStopsTheRun) {
  for (const int type : {0, 7, -1, 9, 1000}) {
    const Sea sea;
    EXPECT_EQ(stop_of([type] { wave_family(type); }), 1) << type;
    EXPECT_NE(sea.scratch.errors().find("wave type " + std::to_string(type) + " has no water motion"),
              std::string::npos);
  }
}

TEST(WaveFamily, ACurrentAloneLeavesTheSurfaceAtMeanLevel) {
  Sea sea;
  wave.IWTY = wave_current_only;
  wave.d = 50.0;
  wave.MWL = 3.0;
  set_current({{0.0, 1.0}, {50.0, 0.0}});
  EXPECT_EQ(wave_family(wave_current_only).surface(4.0, {10.0, 0.0, -20.0}), 3.0);
  const Seen is = motion_at(0.0, -10.0, 4.0);
  EXPECT_DOUBLE_EQ(is.u, 0.8);
  EXPECT_EQ(is.w, 0.0);
  EXPECT_EQ(is.a, 0.0);
  EXPECT_EQ(motion_at(0.0, -10.0, 4.0, {.wave_only = true}).u, 0.0);
}

}  // namespace
}  // namespace tidearc::test
