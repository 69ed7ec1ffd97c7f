// A vertical pile in a regular wave: H 12, T 12, d 50, D 1, CD 1, CM 2, foot at the bed; metres, seconds, kN.
#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "scratch.h"
#include "sea/wave_constants.h"
#include "water.h"

namespace tidearc::test {
namespace {

constexpr double pi = std::numbers::pi;

/// Force along the wave and moment about the bed.
struct BaseLoad {
  double shear = 0.0;
  double overturning = 0.0;
};

BaseLoad base_load(const std::vector<MemberPlace>& piles, const WaterSection& section, double time, double bed) {
  BaseLoad sum;
  for (const MemberPlace& place : piles) {
    const Resultant part = resultant(place, wave_load(section, place, time));
    sum.shear += part.force[0];
    sum.overturning += part.moment[1] - bed * part.force[0];
  }
  return sum;
}

void expect_load(const BaseLoad& is, double shear, double overturning, double of_shear, double of_overturning) {
  EXPECT_NEAR(is.shear, shear, of_shear);
  EXPECT_NEAR(is.overturning, overturning, of_overturning);
}

TEST(PileInAiryWave, UnderTheCrestHasTheDragOfItsPoints) {
  airy_sea();
  // Gauss sums of the drag in plain arithmetic, in another language; the closed form is 116.391 and 3828.30.
  const std::array<std::array<double, 2>, 4> sums{
      {{88.7028707, 2217.57177}, {114.979188, 3705.24689}, {116.363530, 3825.05855}, {116.391112, 3828.25595}}};
  for (int points = 1; points <= 4; ++points) {
    const auto& [shear, overturning] = sums[static_cast<std::size_t>(points) - 1];
    expect_load(base_load({pile(-50.0, 0.0, points)}, plain_tube(), 0.0, -50.0), shear, overturning, 1e-6, 1e-4);
  }
}

TEST(PileInAiryWave, AQuarterPeriodBeforeTheCrestHasTheInertiaOfTheClosedForm) {
  airy_sea();
  // 0.25 pi CM D^2 rho B/k with B = 2 pi^2 H/T^2, and the integral with the height over the bed.
  const double k = wave.k, B = 2.0 * pi * pi * 12.0 / 144.0, mass = 0.25 * pi * 2.0 * rho;
  const double shear = mass * B / k;
  const double overturning = shear * 50.0 - mass * B * (std::cosh(k * 50.0) - 1.0) / (k * k * std::sinh(k * 50.0));
  EXPECT_NEAR(shear, 86.3399, 1e-4);
  EXPECT_NEAR(overturning, 2501.23, 1e-2);
  expect_load(base_load({pile(-50.0, 0.0, 4)}, plain_tube(), -3.0, -50.0), shear, overturning, 2e-4, 0.01);
}

/// A wave from the bed at -50 to 10 above still water in six piles one above the other.
std::vector<MemberPlace> six_piles(int form) {
  std::vector<MemberPlace> piles;
  for (int i = 0; i < 6; ++i) {
    const MemberPlace place = pile(-50.0 + 10.0 * i, -40.0 + 10.0 * i, 4, form == 0);
    piles.push_back(form == 2 ? bar_of(place) : place);
  }
  return piles;
}

/// Force of the sea at hand by thin slices up to its surface: no cut of a member, no end loads.
BaseLoad by_slices(double time) {
  const WaveFamily& family = wave_family(wave.IWTY);
  const double top = family.surface(time, {});
  constexpr int slices = 20000;
  const double thick = (top + 50.0) / slices;
  BaseLoad sum;
  for (int i = 0; i < slices; ++i) {
    const double z = -50.0 + (i + 0.5) * thick;
    WaterMotion water;
    family.kinematics({0.0, 0.0, z}, time, wave.lower_current, {}, water);
    const double u = water.velocity[0], a = water.acceleration[0];
    const double force = (0.5 * rho * u * std::abs(u) + 0.5 * pi * rho * a) * thick;
    sum.shear += force;
    sum.overturning += force * (z + 50.0);
  }
  return sum;
}

struct PileRow {
  double time;
  BaseLoad told;  ///< six members, four points, surface cut within 1/128 of a member
  BaseLoad fine;  ///< to the true surface
};

/// Base shear is held to `share` of itself; every form of end loads gives it, and the overturning moment.
void expect_rows(const std::vector<PileRow>& rows, double share) {
  for (const auto& [time, told, fine] : rows) {
    SCOPED_TRACE(time);
    for (const int form : {0, 1, 2}) {
      const BaseLoad is = base_load(six_piles(form), plain_tube(), time, -50.0);
      expect_load(is, told.shear, told.overturning, share * told.shear, share * told.overturning);
    }
    const BaseLoad measure = by_slices(time);
    expect_load(measure, fine.shear, fine.overturning, share * fine.shear, share * fine.overturning);
    // What four points and the cut leave out.
    expect_load(base_load(six_piles(0), plain_tube(), time, -50.0), measure.shear, measure.overturning,
                0.004 * measure.shear, 0.006 * measure.overturning);
  }
}

// The tables below: independent sums in another language, with its own kinematics; given to five or six digits.
constexpr double half_a_digit = 5e-5;

TEST(PileToTheSurface, InAnAiryWave) {
  airy_sea();
  expect_rows({{0.0, {159.38, 6112.6}, {159.92, 6142.5}},
               {-1.0, {165.88, 5988.0}, {166.19, 6005.2}},
               {-2.0, {116.59, 3778.3}, {116.73, 3785.8}}},
              half_a_digit);
}

TEST(PileToTheSurface, InAnAiryWaveWithWheelerStretching) {
  airy_sea(1);
  expect_rows({{0.0, {129.98, 4780.9}, {130.36, 4802.2}},
               {-1.0, {143.78, 5009.8}, {144.02, 5023.1}},
               {-2.0, {109.98, 3502.5}, {110.10, 3509.2}}},
              half_a_digit);
}

TEST(PileToTheSurface, InAStokesWave) {
  Scratch scratch;
  stokes_sea();
  expect_rows({{0.0, {172.24, 6765.1}, {172.43, 6775.8}},
               {-1.0, {172.62, 6269.9}, {173.14, 6298.4}},
               {-2.0, {113.51, 3599.8}, {113.69, 3609.5}}},
              half_a_digit);
}

TEST(PileToTheSurface, InAStreamFunctionWave) {
  Scratch scratch;
  stream_sea();
  expect_rows({{0.0, {172.17, 6762.9}, {172.46, 6779.2}},
               {-1.0, {169.76, 6184.5}, {170.21, 6209.3}},
               {-2.0, {110.84, 3523.0}, {111.00, 3531.1}}},
              2e-4);  // two solutions of the wave agree to that
}

/// A case of the collection of verification cases: pile to mean water level, no stretching, newtons.
void expect_verification_case(double H, double T, double d, double D, double CD, double CM, double L,
                              const std::array<double, 4>& reference) {
  still_sea();
  wave.IWTY = wave_airy;
  wave.rho = 1025.0;
  wave.g = 9.80665;
  wave.H = H;
  wave.T_water = wave.T_structure = T;
  wave.d = d;
  wave.direction = {1.0, 0.0, 0.0};
  wave.L = L;
  wave.k = 2.0 * pi / L;
  wave.C = L / T;
  wave.lower_force = wave.lower_current = -d;
  wave.upper_force = H;
  prepare_wave_constants();
  WaterSection section = plain_tube(D);
  section.CD = CD;
  section.CM = CM;
  std::vector<MemberPlace> piles;
  for (int i = 0; i < 4; ++i) piles.push_back(pile(-d + i * d / 4.0, -d + (i + 1) * d / 4.0, 4));
  piles.back().J[2] = 0.0;
  const BaseLoad drag = base_load(piles, section, 0.0, -d);
  expect_load(drag, reference[0], reference[2], 1e-5 * reference[0], 1e-5 * reference[2]);
  const BaseLoad inertia = base_load(piles, section, -T / 4.0, -d);
  expect_load(inertia, reference[1], reference[3], 1e-5 * reference[1], 1e-5 * reference[3]);
}

// Case M01, drag and inertia amplitudes of shear and moment in closed form, cross-checked there by another program.
// Wave lengths of the same waves: case W01.
TEST(PileInAiryWave, HasTheAmplitudesOfVerificationCaseM01) {
  expect_verification_case(8.0, 10.0, 50.001, 1.0, 1.0, 2.0, 151.252972,
                           {45452.8214, 61205.087, 1672557.03, 1915047.73});
  expect_verification_case(15.0, 14.0, 100.0, 2.0, 0.7, 2.0, 297.129971,
                           {222277.76, 460082.013, 16463776.4, 28936826.7});
}

}  // namespace
}  // namespace tidearc::test
