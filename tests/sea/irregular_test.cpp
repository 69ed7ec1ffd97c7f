// Water motion of irregular seas: against the closed form of linear waves, against differences, with stretching,
// current and limits.
#include "irregular_section.h"

namespace tidearc::test {
namespace {

constexpr double far_down = -1.0e6;

WaterMotion motion(const Point& at, double time, MotionParts parts = {}) {
  WaterMotion result;
  result.velocity = {9.0, 9.0, 9.0};  // is written over
  result.acceleration = {9.0, 9.0, 9.0};
  IRRVEL(at, time, far_down, parts, result);
  return result;
}

const std::vector<Swell> five_swells{{14.0, 1.5, 0.3, 0.0},
                                     {11.0, 2.0, -1.2, 25.0},
                                     {9.0, 1.1, 2.5, -40.0},
                                     {6.5, 0.7, 0.9, 110.0},
                                     {4.0, 0.2, -2.2, 200.0}};

struct LinearWave {
  double a, T, d, k;
  double omega() const { return 2.0 * std::numbers::pi / T; }
  double theta(double x, double t) const { return k * x - omega() * t; }
};

/// Orbital motion of a linear wave in the plane of the wave, textbook form.
void expect_linear(const LinearWave& w, double x, double s, double t, const WaterMotion& found, double tolerance) {
  const double U = w.a * w.omega();
  const double Ch = std::cosh(w.k * s) / std::sinh(w.k * w.d);
  const double Sh = std::sinh(w.k * s) / std::sinh(w.k * w.d);
  const double theta = w.theta(x, t);
  EXPECT_NEAR(found.velocity[0], U * Ch * std::cos(theta), tolerance);
  EXPECT_NEAR(found.velocity[2], U * Sh * std::sin(theta), tolerance);
  EXPECT_NEAR(found.acceleration[0], U * w.omega() * Ch * std::sin(theta), tolerance);
  EXPECT_NEAR(found.acceleration[2], -U * w.omega() * Sh * std::cos(theta), tolerance);
  EXPECT_EQ(found.velocity[1], 0.0);
  EXPECT_EQ(found.acceleration[1], 0.0);
}

// H 12, T 12, d 50, k 0.03067471, t -1, z -5: the table of checks of the Airy wave.
TEST(SingleComponent, IsAnAiryWave) {
  const Sea sea;
  put_swell({{12.0, 6.0}});
  const WaterMotion m = motion({0.0, 0.0, -5.0}, -1.0);
  EXPECT_NEAR(IRRETA(-1.0, {0.0, 0.0, -5.0}), 5.19615, 5e-6);
  EXPECT_NEAR(m.velocity[0], 2.60257, 1e-5);
  EXPECT_NEAR(m.velocity[2], 1.32383, 1e-5);
  EXPECT_NEAR(m.acceleration[0], 0.78676, 1e-5);
  EXPECT_NEAR(m.acceleration[2], -1.20058, 1e-5);
  const LinearWave w{6.0, 12.0, 50.0, components.of[0].k};
  for (const double z : {-49.0, -20.0, 0.0, 5.0})
    for (const double t : {0.0, 1.0, 4.5, 7.0}) expect_linear(w, 13.0, 50.0 + z, t, motion({13.0, 4.0, z}, t), 1e-12);
}

TEST(SingleComponent, IsStretchedAsAnAiryWave) {
  const Sea sea;
  put_swell({{12.0, 6.0}});
  wave.ISTRCH = 1;
  const WaterMotion m = motion({0.0, 0.0, -5.0}, -1.0);
  EXPECT_NEAR(m.velocity[0], 2.32577, 1e-5);
  EXPECT_NEAR(m.velocity[2], 1.13922, 1e-5);
  EXPECT_NEAR(m.acceleration[0], 0.70308, 1e-5);
  EXPECT_NEAR(m.acceleration[2], -1.03316, 1e-5);
}

TEST(SingleComponent, EqualsTheAiryFamilyAtEveryPoint) {
  const Sea sea(wave_airy, 12.0, 12.0, 50.0);
  for (const int ISTRCH : {0, 1}) {
    wave.ISTRCH = ISTRCH;
    for (const double z : {-50.0, -30.0, -5.0, 0.0, 5.0}) {
      for (const double t : {0.0, 1.0, 5.0, 100.0}) {
        const Point at{17.0, 3.0, z};
        wave.IWTY = wave_airy;
        WaterMotion airy;
        AIRVEL(at, t, far_down, {}, airy);
        const double eta = AIRETA(t, at);
        const WavePressure pressure = AIRPRS(1.0e3, at, t);
        put_swell({{12.0, 6.0}});
        const WaterMotion m = motion(at, t);
        for (std::size_t i = 0; i < 3; ++i) {
          EXPECT_NEAR(m.velocity[i], airy.velocity[i], 1e-11);
          EXPECT_NEAR(m.acceleration[i], airy.acceleration[i], 1e-11);
        }
        EXPECT_NEAR(IRRETA(t, at), eta, 1e-11);
        EXPECT_NEAR(IRRPRS(1.0e3, at, t).total, pressure.total, 1e-9);
        EXPECT_NEAR(IRRPRS(1.0e3, at, t).dynamic, pressure.dynamic, 1e-9);
      }
    }
  }
}

TEST(SingleComponent, RunsTowardItsDirection) {
  const Sea sea;
  put_swell({{10.0, 2.0, 0.0, 30.0}});
  const double C = 2.0 * std::numbers::pi / 10.0 / components.of[0].k;
  const double t = 3.0;
  const Point crest{C * t * std::cos(std::numbers::pi / 6.0), C * t * 0.5, 0.0};
  EXPECT_NEAR(IRRETA(t, crest), 2.0, 1e-10);
  const WaterMotion m = motion(crest, t);
  EXPECT_GT(m.velocity[0], 0.0);
  EXPECT_NEAR(m.velocity[1] / m.velocity[0], std::tan(std::numbers::pi / 6.0), 1e-12);
}

TEST(SingleComponent, StartsAtItsPhase) {
  const Sea sea;
  put_swell({{10.0, 2.0, std::numbers::pi / 3.0}});
  EXPECT_NEAR(IRRETA(0.0, {0.0, 0.0, 0.0}), 1.0, 1e-12);
  EXPECT_NEAR(IRRETA(-10.0 / 6.0, {0.0, 0.0, 0.0}), 2.0, 1e-12);
}

TEST(SingleComponent, InDeepWaterIsOneExponential) {
  const Sea sea;
  const double d = 2000.0;
  put_swell({{5.0, 1.0}}, d);
  const double k = components.of[0].k;
  ASSERT_GT(k * d, 100.0);
  for (const double z : {-100.0, -1.0, 0.0, 2.0}) {
    const WaterMotion m = motion({0.0, 0.0, z}, 0.7);
    const double U = 2.0 * std::numbers::pi / 5.0 * std::exp(k * z);
    const double theta = -2.0 * std::numbers::pi / 5.0 * 0.7;
    EXPECT_NEAR(m.velocity[0], U * std::cos(theta), 1e-12);
    EXPECT_NEAR(m.velocity[2], U * std::sin(theta), 1e-12);
    EXPECT_NEAR(IRRPRS(100.0, {0.0, 0.0, z}, 0.7).dynamic, 1.025 * 9.81 * std::exp(k * z) * std::cos(theta), 1e-11);
  }
  // Near the bed everything has died away, without overflow.
  const WaterMotion bed = motion({0.0, 0.0, -d}, 0.7);
  EXPECT_NEAR(bed.velocity[0], 0.0, 1e-30);
  EXPECT_TRUE(std::isfinite(IRRPRS(100.0, {0.0, 0.0, -d}, 0.7).dynamic));
}

TEST(SingleComponent, KeepsItsProfileAcrossTheSeamOfDeepWater) {
  const Sea sea;
  // k d = 100 at d = 100/k; the two forms differ by exp(-200).
  put_swell({{6.0, 1.0}}, 800.0);
  const double k = components.of[0].k;
  for (const double d : {99.999 / k, 100.001 / k}) {
    put_swell({{6.0, 1.0}}, d);
    EXPECT_NEAR(motion({0.0, 0.0, -20.0}, 0.0).velocity[0], 2.0 * std::numbers::pi / 6.0 * std::exp(-20.0 * k), 1e-12);
  }
}

TEST(ComponentProfile, BecomesDeepAboveAHundred) {
  SeaComponent component{};
  component.k = 1.0;
  set_profile(component, 100.0);
  EXPECT_EQ(component.shift, 0.0);
  set_profile(component, 100.001);
  EXPECT_EQ(component.shift, 100.001);
}

TEST(ComponentProfile, HoldsInAnyDepthFromBedToSurface) {
  for (const double kd : {0.01, 1.0, 50.0, 99.0, 101.0, 300.0, 2000.0}) {
    SeaComponent component{};
    component.k = kd;
    set_profile(component, 1.0);
    EXPECT_NEAR(motion_profile(component, 1.0).Ch, 1.0 / std::tanh(kd), 1e-12 / std::tanh(kd)) << kd;
    EXPECT_NEAR(motion_profile(component, 1.0).Sh, 1.0, 1e-12) << kd;
    EXPECT_NEAR(pressure_profile(component, 1.0), 1.0, 1e-12) << kd;
    // At the bed 1/cosh, which in deep water is twice exp(-k d).
    if (kd < 700.0) {
      EXPECT_NEAR(pressure_profile(component, 0.0) * std::cosh(kd), 1.0, 1e-11) << kd;
    }
    EXPECT_GE(motion_profile(component, 0.0).Sh, 0.0) << kd;
  }
}

TEST(SingleComponent, TakesItsWaterPeriodInAmplitudesAlone) {
  const Sea sea;
  put_swell({{10.0, 2.0}});
  const WaterMotion still = motion({5.0, 0.0, -3.0}, 1.5);
  const double eta = IRRETA(1.5, {5.0, 0.0, 0.0});
  components.of[0].omega_water *= 1.1;
  const WaterMotion m = motion({5.0, 0.0, -3.0}, 1.5);
  EXPECT_EQ(IRRETA(1.5, {5.0, 0.0, 0.0}), eta);
  for (const std::size_t i : {0U, 2U}) {
    EXPECT_NEAR(m.velocity[i], 1.1 * still.velocity[i], 1e-13);
    EXPECT_NEAR(m.acceleration[i], 1.21 * still.acceleration[i], 1e-13);
  }
}

// --- sums -----------------------------------------------------------------------------------------------------------

TEST(IrregularMotion, IsTheSumOfItsComponents) {
  const Sea sea;
  const Point at{12.0, -7.0, -4.0};
  const double t = 2.3;
  Point velocity{};
  Point acceleration{};
  double eta = 0.0;
  double pressure = 0.0;
  for (const Swell& swell : five_swells) {
    put_swell({swell});
    const WaterMotion m = motion(at, t);
    for (std::size_t i = 0; i < 3; ++i) {
      velocity[i] += m.velocity[i];
      acceleration[i] += m.acceleration[i];
    }
    eta += IRRETA(t, at);
    pressure += IRRPRS(100.0, at, t).dynamic;
  }
  put_swell(five_swells);
  const WaterMotion m = motion(at, t);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(m.velocity[i], velocity[i], 1e-13);
    EXPECT_NEAR(m.acceleration[i], acceleration[i], 1e-13);
  }
  EXPECT_NEAR(IRRETA(t, at), eta, 1e-13);
  EXPECT_NEAR(IRRPRS(100.0, at, t).dynamic, pressure, 1e-11);
}

TEST(IrregularMotion, HasTheAccelerationOfItsVelocity) {
  const Sea sea;
  put_swell(five_swells);
  const Point at{12.0, -7.0, -4.0};
  const double h = 1e-4;
  for (const double t : {0.0, 2.3, 40.0}) {
    const WaterMotion before = motion(at, t - h);
    const WaterMotion after = motion(at, t + h);
    const WaterMotion m = motion(at, t);
    // Error of the difference: h^2/6 times the third derivative, below 1e-8.
    for (std::size_t i = 0; i < 3; ++i)
      EXPECT_NEAR((after.velocity[i] - before.velocity[i]) / (2.0 * h), m.acceleration[i], 1e-8);
  }
}

TEST(IrregularMotion, NeitherGainsNorLosesWaterAndDoesNotTurn) {
  const Sea sea;
  put_swell(five_swells);
  const double h = 1e-4;
  const Point at{12.0, -7.0, -4.0};
  std::array<std::array<double, 3>, 3> gradient{};  // of component i along axis j
  for (std::size_t j = 0; j < 3; ++j) {
    Point up = at;
    Point down = at;
    up[j] += h;
    down[j] -= h;
    for (std::size_t i = 0; i < 3; ++i)
      gradient[i][j] = (motion(up, 1.0).velocity[i] - motion(down, 1.0).velocity[i]) / (2.0 * h);
  }
  EXPECT_NEAR(gradient[0][0] + gradient[1][1] + gradient[2][2], 0.0, 1e-9);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(gradient[i][(i + 1) % 3], gradient[(i + 1) % 3][i], 1e-9);
}

TEST(IrregularMotion, FollowsItsSurface) {
  const Sea sea;
  put_swell(five_swells);
  const Point at{12.0, -7.0, 0.0};
  const double h = 1e-4;
  EXPECT_NEAR((IRRETA(5.0 + h, at) - IRRETA(5.0 - h, at)) / (2.0 * h), motion(at, 5.0).velocity[2], 1e-8);
}

// Newton's law of a water particle, linear: rho a = -grad p, and rho g eta at mean level.
TEST(IrregularPressure, DrivesTheWater) {
  const Sea sea;
  put_swell(five_swells);
  const Point at{12.0, -7.0, -4.0};
  const double h = 1e-4;
  const WaterMotion m = motion(at, 2.3);
  for (std::size_t i = 0; i < 3; ++i) {
    Point up = at;
    Point down = at;
    up[i] += h;
    down[i] -= h;
    const double slope = (IRRPRS(100.0, up, 2.3).dynamic - IRRPRS(100.0, down, 2.3).dynamic) / (2.0 * h);
    EXPECT_NEAR(-slope, 1.025 * m.acceleration[i], 1e-7);
  }
  const Point mean{12.0, -7.0, 0.0};
  EXPECT_NEAR(IRRPRS(100.0, mean, 2.3).dynamic, 1.025 * 9.81 * IRRETA(2.3, mean), 1e-12);
}

TEST(IrregularPressure, AddsTheStaticPartAndEndsAtTheGivenSurface) {
  const Sea sea;
  put_swell({{12.0, 6.0}});
  wave.MWL = 2.0;
  const WavePressure p = IRRPRS(10.0, {0.0, 0.0, -3.0}, -1.0);
  EXPECT_NEAR(p.dynamic, 45.535, 1e-3);  // as an Airy wave 5 below mean level
  EXPECT_NEAR(p.total, 45.535 + 50.276, 1e-3);
  EXPECT_EQ(IRRPRS(-3.001, {0.0, 0.0, -3.0}, -1.0).total, 0.0);
  EXPECT_EQ(IRRPRS(-3.001, {0.0, 0.0, -3.0}, -1.0).dynamic, 0.0);
  EXPECT_NE(IRRPRS(-3.0, {0.0, 0.0, -3.0}, -1.0).total, 0.0);
}

TEST(IrregularPressure, IsStretchedByTheWholeSurface) {
  const Sea sea;
  put_swell(five_swells);
  wave.ISTRCH = 1;
  const double eta = IRRETA(2.3, {1.0, 2.0, 0.0});
  const double surface_pressure = IRRPRS(100.0, {1.0, 2.0, eta}, 2.3).dynamic;
  EXPECT_NEAR(surface_pressure, 1.025 * 9.81 * eta, 1e-10);
}

TEST(IrregularMotion, WithStretchingTakesTheMeanLevelAtTheSurface) {
  const Sea sea;
  put_swell(five_swells);
  const WaterMotion mean = motion({1.0, 2.0, 0.0}, 2.3);
  const double eta = IRRETA(2.3, {1.0, 2.0, 0.0});
  ASSERT_GT(std::abs(eta), 0.5);
  wave.ISTRCH = 1;
  const WaterMotion surface = motion({1.0, 2.0, eta}, 2.3);
  const WaterMotion bed = motion({1.0, 2.0, -50.0}, 2.3);
  for (std::size_t i = 0; i < 3; ++i) {
    EXPECT_NEAR(surface.velocity[i], mean.velocity[i], 1e-12);
    EXPECT_NEAR(surface.acceleration[i], mean.acceleration[i], 1e-12);
  }
  EXPECT_NEAR(bed.velocity[2], 0.0, 1e-12);
}

TEST(IrregularMotion, ReducesHorizontalPartsByTheKinematicFactor) {
  const Sea sea;
  put_swell(five_swells);
  const Point at{12.0, -7.0, -4.0};
  const WaterMotion full = motion(at, 1.0);
  const double pressure = IRRPRS(100.0, at, 1.0).dynamic;
  wave.kinematic_factor = 0.8;
  const WaterMotion m = motion(at, 1.0);
  for (const std::size_t i : {0U, 1U}) {
    EXPECT_NEAR(m.velocity[i], 0.8 * full.velocity[i], 1e-14);
    EXPECT_NEAR(m.acceleration[i], 0.8 * full.acceleration[i], 1e-14);
  }
  EXPECT_EQ(m.velocity[2], full.velocity[2]);
  EXPECT_EQ(m.acceleration[2], full.acceleration[2]);
  EXPECT_EQ(IRRPRS(100.0, at, 1.0).dynamic, pressure);
}

TEST(IrregularMotion, TurnsWithTheVerticalAxis) {
  for (const int vertical : {1, 2, 3}) {
    const Sea sea;
    Sea::turn(vertical, -1.0);
    put_swell(five_swells);
    Point at{};
    at[Sea::axis(wave.horizontal[0])] = 12.0;
    at[Sea::axis(wave.horizontal[1])] = -7.0;
    at[Sea::axis(vertical)] = -4.0;
    const WaterMotion turned = motion(at, 2.3);
    Sea::turn(3, -1.0);
    const WaterMotion m = motion({12.0, -7.0, -4.0}, 2.3);
    for (std::size_t i = 0; i < 3; ++i) {
      const std::size_t axis = (static_cast<std::size_t>(vertical) + i) % 3;
      EXPECT_EQ(turned.velocity[axis], m.velocity[i]);
      EXPECT_EQ(turned.acceleration[axis], m.acceleration[i]);
    }
  }
}

// The vertical parts stand on the global axis as they are: with a downward axis they point the wrong way. Known, and
// told in the manual.
TEST(IrregularMotion, TakesTheVerticalAxisAsPointingUp) {
  const Sea sea;
  put_swell(five_swells);
  const WaterMotion up = motion({12.0, -7.0, -4.0}, 2.3);
  const double eta = IRRETA(2.3, {12.0, -7.0, -4.0});
  Sea::turn(3, 1.0);
  const WaterMotion down = motion({12.0, -7.0, 4.0}, 2.3);
  for (std::size_t i = 0; i < 3; ++i) EXPECT_EQ(down.velocity[i], up.velocity[i]);
  EXPECT_EQ(IRRETA(2.3, {12.0, -7.0, 4.0}), -eta);
}

TEST(IrregularMotion, AddsTheCurrentToTheVelocity) {
  const Sea sea;
  put_swell(five_swells);
  const Point at{12.0, -7.0, -5.0};
  const WaterMotion still = motion(at, 2.3);
  set_current({{0.0, 1.0}, {20.0, 0.5}, {50.0, 0.0}});
  const WaterMotion m = motion(at, 2.3);
  EXPECT_NEAR(m.velocity[0], still.velocity[0] + 0.875, 1e-13);
  EXPECT_EQ(m.velocity[1], still.velocity[1]);
  EXPECT_EQ(m.acceleration[0], still.acceleration[0]);
  EXPECT_EQ(motion(at, 2.3, {.wave_only = true}).velocity[0], still.velocity[0]);
  const WaterMotion alone = motion(at, 2.3, {.current_only = true});
  EXPECT_NEAR(alone.velocity[0], 0.875, 1e-13);
  EXPECT_EQ(alone.velocity[2], 0.0);
  EXPECT_EQ(alone.acceleration[0], 0.0);
}

TEST(IrregularMotion, EndsTheCurrentAtItsLimit) {
  const Sea sea;
  put_swell({});
  set_current({{0.0, 1.0}, {50.0, 1.0}});
  WaterMotion m;
  IRRVEL({0.0, 0.0, -30.0}, 0.0, -30.0, {}, m);
  EXPECT_EQ(m.velocity[0], 1.0);
  IRRVEL({0.0, 0.0, -30.01}, 0.0, -30.0, {}, m);
  EXPECT_EQ(m.velocity[0], 0.0);
}

// Linear stretching carries level 0 to the surface, whole motion and current alone alike.
TEST(IrregularMotion, StretchesTheCurrentByTheWholeSurface) {
  const Sea sea;
  put_swell(five_swells);
  set_current({{0.0, 1.0}, {50.0, 0.0}}, 2);
  const double eta = IRRETA(2.3, {1.0, 2.0, 0.0});
  const Point at{1.0, 2.0, eta};
  EXPECT_NEAR(motion(at, 2.3, {.current_only = true}).velocity[0], 1.0, 1e-12);
  EXPECT_NEAR(motion(at, 2.3).velocity[0] - motion(at, 2.3, {.wave_only = true}).velocity[0], 1.0, 1e-12);
}

TEST(IrregularSurface, CutsAChordAsEveryFamilyDoes) {
  const Sea sea;
  put_swell({});
  wave.MWL = 3.3;
  EXPECT_NEAR(IRRCUT({0.0, 0.0, -10.0}, {0.0, 0.0, 10.0}, 0.0)[2], 3.28125, 1e-12);
  EXPECT_NEAR(IRRCUT({0.0, 0.0, 10.0}, {0.0, 0.0, -10.0}, 0.0)[2], 3.4375, 1e-12);
  put_swell(five_swells);
  const Point cut = IRRCUT({0.0, 0.0, -10.0}, {10.0, 5.0, 15.0}, 2.3);
  EXPECT_NEAR(cut[2], IRRETA(2.3, cut), 25.0 / 128.0);
}

TEST(IrregularSurface, OfFourThousandComponentsIsTheirSum) {
  const Sea sea;
  put_swell({});
  put_swell(std::vector<Swell>(4000, Swell{8.0, 0.001}));
  EXPECT_NEAR(IRRETA(0.0, {0.0, 0.0, 0.0}), 4.0, 1e-11);
  const WaterMotion m = motion({0.0, 0.0, 0.0}, 0.0);
  EXPECT_NEAR(m.velocity[0], 4.0 * 2.0 * std::numbers::pi / 8.0 / std::tanh(components.of[3999].k * 50.0), 1e-10);
}

}  // namespace
}  // namespace tidearc::test
