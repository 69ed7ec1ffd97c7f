// Where the surface cuts a member.
#include <gtest/gtest.h>

#include "sea/surface_cut.h"
#include "test_sea.h"

namespace tidearc::test {
namespace {

double still_cut_at(double level, double from, double to) {
  return surface_cut([level](double, const Point&) { return level; }, {0.0, 0.0, from}, {0.0, 0.0, to}, 0.0)[2];
}

TEST(SurfaceCut, HalvesTheChordSevenTimes) {
  const Sea sea;
  EXPECT_EQ(still_cut_at(3.3, -10.0, 10.0), 3.28125);  // short of the surface from the wet end
  EXPECT_EQ(still_cut_at(3.3, 10.0, -10.0), 3.4375);   // beyond it from the dry end
}

// Without its own rule such an end would be cut at 127/128 of the chord: every product with a zero difference is zero,
// which counts as "not passed yet".
TEST(SurfaceCut, AnEndInTheSurfaceIsTheCut) {
  const Sea sea;
  EXPECT_EQ(still_cut_at(0.0, 0.0, 10.0), 0.0);
  double walked = 0.0;
  for (double step = 0.5; step >= 0.0078125; step *= 0.5)
    if (0.0 * (0.0 - (walked + step * 10.0)) >= 0.0) walked += step * 10.0;
  EXPECT_EQ(walked, 10.0 * 127.0 / 128.0);
}

TEST(SurfaceCut, EndsAtOnceWhereItHitsTheSurface) {
  const Sea sea;
  EXPECT_EQ(still_cut_at(0.0, -10.0, 10.0), 0.0);
  EXPECT_EQ(still_cut_at(5.0, -10.0, 10.0), 5.0);
  int asked = 0;
  surface_cut([&](double, const Point&) { return ++asked, 5.0; }, {0.0, 0.0, -10.0}, {0.0, 0.0, 10.0}, 0.0);
  EXPECT_EQ(asked, 3);  // A, the middle, three quarters
}

TEST(SurfaceCut, AsksTheSurfaceOverEachTrialPoint) {
  const Sea sea;
  const auto sloping = [](double time, const Point& at) { return 0.1 * at[0] + time; };
  const Point cut = surface_cut(sloping, {0.0, 0.0, -8.0}, {16.0, 4.0, 8.0}, 0.5);
  EXPECT_NEAR(cut[2], 0.1 * cut[0] + 0.5, 16.0 / 128.0);
  EXPECT_EQ(cut[0] - 0.0, cut[2] + 8.0);  // on the chord
  EXPECT_EQ(cut[1], 0.25 * cut[0]);
}

TEST(SurfaceCut, OfEachFamilyLiesWithinAHundredthOfTheChord) {
  for (const WaveType type : {wave_airy, wave_stokes, wave_stream, wave_current_only}) {
    for (const int vertical : {1, 2, 3}) {
      for (const double sg : {-1.0, 1.0}) {
        const Sea sea(type, 12.0, 12.0, 50.0);
        Sea::turn(vertical, sg, 3.0);
        const Point A = place(5.0, -30.0), B = place(15.0, 20.0);
        const Point cut = wave_family(type).cut(A, B, 1.2);
        const double z = -depth_of(cut[Sea::axis(vertical)]);
        const double x = 5.0 + 10.0 * (z + 30.0) / 50.0;
        EXPECT_LE(z, eta_at(x, 1.2));  // on the wet side
        EXPECT_NEAR(z, eta_at(x, 1.2), 50.0 / 128.0 + 0.1);
      }
    }
  }
}

}  // namespace
}  // namespace tidearc::test
