// Stream function waves: tables, surface and the conditions at its points.
#include "sea/stream_function.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "sea/hyperbolic.h"

namespace tidearc {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int most_surface_passes = 20;
constexpr double surface_agreement = 0.001;  ///< units of length, whatever the unit

std::size_t at(int i) { return static_cast<std::size_t>(i); }

}  // namespace

StreamWave stream_wave(double H, double T, double d, double g, double U, int order, int points) {
  StreamWave made;
  made.H = H;
  made.T = T;
  made.d = d;
  made.g = g;
  made.U = U;
  made.NN = order + 1;
  made.NPTS = points;
  for (int i = 0; i < points; ++i) {
    const double theta = i * pi / (points - 1);
    made.theta[at(i)] = theta;
    for (int n = 1; n < made.NN; ++n) {
      made.cosine[at(i)][at(n)] = std::cos(n * theta);
      made.sine[at(i)][at(n)] = std::sin(n * theta);
    }
  }
  return made;
}

void start_stream_wave(StreamWave& solved, double L, double breaking_ratio) {
  solved.X = {};
  solved.eta = {};
  const double length = L * (1.0 + 0.2 * breaking_ratio * breaking_ratio);
  solved.X[0] = length;
  solved.X[1] = -solved.H * length / (2.0 * solved.T * SINCSH(2.0 * pi * (solved.d + solved.H / 2.0) / length).sinh);
}

Breaking breaking_of(double H, double T, double d, double g) {
  const double gT2 = g * T * T;
  const double x = d / gT2;
  return {.x = x, .y = H / gT2, .limit = 0.02711 * std::tanh(28.77 * x)};
}

int first_damping(const Breaking& breaking, int NN) {
  constexpr double shallow = 0.00233;
  return breaking.ratio() > 0.75 || NN > 18 || breaking.x < shallow ? 3 : 5;
}

void SFSURF(const StreamWave& of, std::span<const double> from, std::span<double> to) {
  const double k = 2.0 * pi / of.X[0];
  const double speed = of.X[0] / of.T - of.U;
  for (int i = 0; i < of.NPTS; ++i) {
    double series = 0.0;
    for (int n = 1; n < of.NN; ++n) {
      series += of.X[at(n)] * SINCSH(n * k * (of.d + from[at(i)])).sinh * of.cosine[at(i)][at(n)];
    }
    to[at(i)] = (of.X[at(of.NN)] - series) / speed;
  }
}

SurfaceSolution SFETA(StreamWave& solved) {
  const std::size_t points = at(solved.NPTS);
  const std::span<double> eta = std::span(solved.eta).first(points);
  std::array<double, most_wave_points> between{};
  bool agreed = false;
  for (int pass = 0; pass < most_surface_passes && !agreed; ++pass) {
    SFSURF(solved, eta, between);
    SFSURF(solved, between, eta);
    agreed = std::equal(eta.begin(), eta.end(), between.begin(),
                        [](double a, double b) { return std::abs(a - b) <= surface_agreement; });
  }
  return {.height_error = solved.H - eta.front() + eta.back(), .agreed = agreed};
}

}  // namespace tidearc
