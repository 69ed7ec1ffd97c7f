// Water motion at points, family by family: points a second beside a plain sum of library functions at the same points.
//
// The wave is 12 high, its period 12, the water 50 deep (metres, seconds); the points lie between bed and crest. The
// figures to reach on one core: Airy 8 million points a second, Stokes 3, stream function of order 9 2, a sea of 100
// components 0.15. Every row asks the family as a member does, through the table; "plain" rows form the same two
// vectors.
#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "folder.h"
#include "run/units.h"
#include "sea/components.h"
#include "sea/field.h"
#include "sea/wave_constants.h"
#include "sea/wave_state.h"
#include "sea/wavein.h"

namespace tidearc {
namespace {

constexpr double two_pi = 2.0 * std::numbers::pi;
constexpr std::size_t point_count = 512;
constexpr int no_stretching = 0, Wheeler = 1;

void set_water(WaveType type) {
  wave = {};
  wave.IWTY = type;
  wave.H = 12.0;
  wave.T_water = wave.T_structure = 12.0;
  wave.d = 50.0;
  wave.g = 9.81;
  wave.rho = 1.025;
  wave.sg = -1.0;
  wave.gravity = {0.0, 0.0, -1.0};
  wave.direction = {0.8, 0.6, 0.0};
}

/// Airy and Stokes.
void set_wave(WaveType type, int ISTRCH) {
  set_water(type);
  wave.ISTRCH = ISTRCH;
  WAVSOL(1.0E-10, 200);
  prepare_wave_constants();
}

void set_stream(int order) {
  set_water(wave_stream);
  wave.NPTS = 37;
  SFSOLVE(1.0E-6, 20, 30, order, 0);
  prepare_wave_constants();
}

/// Components from 5 to 25 seconds with directions about X.
void set_sea(int count) {
  set_water(wave_irregular);
  wave.d_irregular = wave.d;
  wave.NCOMP = count;
  for (int i = 0; i < count; ++i) {
    SeaComponent& component = components.of[static_cast<std::size_t>(i)];
    const double f = 0.04 + 0.16 * i / count;
    component.omega = component.omega_water = two_pi * f;
    component.amplitude = 0.1;
    component.phase = 0.7 * i;
    component.k = component.omega * component.omega / wave.g;
    for (int pass = 0; pass < 200; ++pass)
      component.k = component.omega * component.omega / (wave.g * std::tanh(component.k * wave.d));
    component.cosine = std::cos(0.01 * i);
    component.sine = std::sin(0.01 * i);
    set_profile(component, wave.d);
  }
}

std::array<Point, point_count> some_points() {
  std::array<Point, point_count> points;
  for (std::size_t i = 0; i < point_count; ++i) {
    const double n = static_cast<double>(i);
    points[i] = {std::fmod(37.7 * n, 300.0) - 150.0, std::fmod(11.3 * n, 80.0), std::fmod(7.1 * n, 56.0) - 50.0};
  }
  return points;
}

/// Asks `motion_at(point, time, motion)` for all points, at a new time in every pass.
template <class Motion>
void run(benchmark::State& state, Motion&& motion_at) {
  const std::array<Point, point_count> points = some_points();
  double time = 0.0;
  for (auto _ : state) {
    for (const Point& at : points) {
      WaterMotion motion;
      motion_at(at, time, motion);
      benchmark::DoNotOptimize(motion);
    }
    time += 0.05;
  }
  state.counters["points/s"] = benchmark::Counter(
      static_cast<double>(point_count) * static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

/// The family in force, beside the figure that it has to reach.
void run_family(benchmark::State& state, double bar) {
  state.counters["bar"] = bar;
  const auto kinematics = wave_family(wave.IWTY).kinematics;
  run(state, [&](const Point& at, double time, WaterMotion& motion) { kinematics(at, time, -50.0, {}, motion); });
}

// --- the plain sums ------------------------------------------------------------------------------------------------

struct Place {
  double s;      ///< height over the bed
  double theta;  ///< phase
};
Place place_of(const Point& at, double time) {
  const double x = at[0] * wave.direction[0] + at[1] * wave.direction[1];
  return {wave.d + at[2], wave.k * x - two_pi * time / wave.T_structure};
}

void write_vectors(double u, double w, double a, double b, WaterMotion& motion) {
  for (std::size_t i = 0; i < 3; ++i) {
    motion.velocity[i] = u * wave.direction[i] - w * wave.gravity[i];
    motion.acceleration[i] = a * wave.direction[i] - b * wave.gravity[i];
  }
}

void plain_airy(const Point& at, double time, WaterMotion& motion) {
  const auto [height, theta] = place_of(at, time);
  const double eta = 0.5 * wave.H * std::cos(theta);
  const double s = wave.ISTRCH == 1 ? height * wave.d / (wave.d + eta) : height;
  const double A = std::numbers::pi * wave.H / wave.T_water;
  const double B = two_pi * A / wave.T_water;
  const double Ch = std::cosh(wave.k * s) / std::sinh(wave.k * wave.d);
  const double Sh = std::sinh(wave.k * s) / std::sinh(wave.k * wave.d);
  write_vectors(A * Ch * std::cos(theta), A * Sh * std::sin(theta), B * Ch * std::sin(theta), -B * Sh * std::cos(theta),
                motion);
}

void plain_stokes(const Point& at, double time, WaterMotion& motion) {
  const auto [s, theta] = place_of(at, time);
  double u = 0.0, w = 0.0, a = 0.0, b = 0.0;
  for (int n = 1; n <= 5; ++n) {
    const double G = wave.G[static_cast<std::size_t>(n - 1)];
    u += G * std::cosh(n * wave.k * s) * std::cos(n * theta);
    w += G * std::sinh(n * wave.k * s) * std::sin(n * theta);
    a += wave.k * wave.C * n * G * std::cosh(n * wave.k * s) * std::sin(n * theta);
    b -= wave.k * wave.C * n * G * std::sinh(n * wave.k * s) * std::cos(n * theta);
  }
  write_vectors(u, w, a, b, motion);
}

void plain_stream(const Point& at, double time, WaterMotion& motion) {
  const auto [s, theta] = place_of(at, time);
  double U = 0.0, W = 0.0, Ux = 0.0, Uz = 0.0;
  for (int n = 1; n < wave.NN; ++n) {
    const double X = wave.X[static_cast<std::size_t>(n)];
    const double kn = n * wave.k;
    U -= X * kn * std::cosh(kn * s) * std::cos(n * theta);
    W -= X * kn * std::sinh(kn * s) * std::sin(n * theta);
    Ux += X * kn * kn * std::cosh(kn * s) * std::sin(n * theta);
    Uz -= X * kn * kn * std::sinh(kn * s) * std::cos(n * theta);
  }
  write_vectors(U, W, Uz * W + (U - wave.C) * Ux, (U - wave.C) * Uz - Ux * W, motion);
}

void plain_sea(const Point& at, double time, WaterMotion& motion) {
  motion = {};
  for (int i = 0; i < wave.NCOMP; ++i) {
    const SeaComponent& c = components.of[static_cast<std::size_t>(i)];
    const double theta = c.k * (at[0] * c.cosine + at[1] * c.sine) - c.omega * time - c.phase;
    const double s = wave.d + at[2];
    const double A = c.amplitude * c.omega_water, B = A * c.omega_water;
    const double Ch = std::cosh(c.k * s) / std::sinh(c.k * wave.d);
    const double Sh = std::sinh(c.k * s) / std::sinh(c.k * wave.d);
    motion.velocity[0] += A * Ch * std::cos(theta) * c.cosine;
    motion.velocity[1] += A * Ch * std::cos(theta) * c.sine;
    motion.velocity[2] += A * Sh * std::sin(theta);
    motion.acceleration[0] += B * Ch * std::sin(theta) * c.cosine;
    motion.acceleration[1] += B * Ch * std::sin(theta) * c.sine;
    motion.acceleration[2] -= B * Sh * std::cos(theta);
  }
}

// --- rows ----------------------------------------------------------------------------------------------------------

void airy(benchmark::State& state) {
  set_wave(wave_airy, no_stretching);
  run_family(state, 8.0E6);
}
BENCHMARK(airy);
void airy_plain(benchmark::State& state) {
  set_wave(wave_airy, no_stretching);
  run(state, plain_airy);
}
BENCHMARK(airy_plain);

void airy_Wheeler(benchmark::State& state) {
  set_wave(wave_airy, Wheeler);
  run_family(state, 8.0E6);
}
BENCHMARK(airy_Wheeler);
void airy_Wheeler_plain(benchmark::State& state) {
  set_wave(wave_airy, Wheeler);
  run(state, plain_airy);
}
BENCHMARK(airy_Wheeler_plain);

void stokes(benchmark::State& state) {
  set_wave(wave_stokes, no_stretching);
  run_family(state, 3.0E6);
}
BENCHMARK(stokes);
void stokes_plain(benchmark::State& state) {
  set_wave(wave_stokes, no_stretching);
  run(state, plain_stokes);
}
BENCHMARK(stokes_plain);

void stream_function(benchmark::State& state) {
  set_stream(static_cast<int>(state.range(0)));
  run_family(state, 2.0E6);
}
BENCHMARK(stream_function)->ArgName("order")->Arg(9)->Arg(15);
void stream_function_plain(benchmark::State& state) {
  set_stream(static_cast<int>(state.range(0)));
  run(state, plain_stream);
}
BENCHMARK(stream_function_plain)->ArgName("order")->Arg(9)->Arg(15);

/// What a member asks besides: where the surface stands over the point.
void stream_function_surface(benchmark::State& state) {
  set_stream(static_cast<int>(state.range(0)));
  run(state, [](const Point& at, double time, WaterMotion& motion) { motion.velocity[0] = SFNETA(time, at); });
}
BENCHMARK(stream_function_surface)->ArgName("order")->Arg(9);

void irregular_sea(benchmark::State& state) {
  set_sea(static_cast<int>(state.range(0)));
  run_family(state, 0.15E6);
}
BENCHMARK(irregular_sea)->ArgName("components")->Arg(100);
void irregular_sea_plain(benchmark::State& state) {
  set_sea(static_cast<int>(state.range(0)));
  run(state, plain_sea);
}
BENCHMARK(irregular_sea_plain)->ArgName("components")->Arg(100);

}  // namespace
}  // namespace tidearc

int main(int count, char** words) {
  const tidearc::bench::Folder folder;
  tidearc::open_formatted(tidearc::units.NDOUT, "TAModel.out", tidearc::OpenMode::fresh);
  benchmark::Initialize(&count, words);
  benchmark::RunSpecifiedBenchmarks();
}
