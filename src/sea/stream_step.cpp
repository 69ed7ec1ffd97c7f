// Stream function waves: one Newton step of the least squares fit of Bernoulli's condition, under two constraints.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>
#include <utility>

#include "sea/hyperbolic.h"
#include "sea/stream_function.h"

namespace tidearc {

namespace {

constexpr double pi = std::numbers::pi;
constexpr int most_unknowns = static_cast<int>(most_wave_order) + 2;
constexpr int most_equations = most_unknowns + 2;

std::size_t at(int i) { return static_cast<std::size_t>(i); }

/// Elevation and Bernoulli sum at a point of the surface, with their derivatives by the unknowns (in the order of X).
struct SurfacePoint {
  double eta, Q;
  std::array<double, most_unknowns> d_eta, d_Q;
};

/// What the series gives at a point: velocities relative to the crest and their slopes over z, and the derivatives of
/// the velocities and of the stream function by the wave length.
struct Flow {
  double u, w;
  double uz = 0.0, wz = 0.0;
  double u_L, w_L = 0.0;
  double psi_L;
};

/// Derivatives of the velocities by the coefficient of a harmonic, and of the stream function.
struct HarmonicFlow {
  std::array<double, most_wave_order + 1> u, w, psi;
};

Flow flow_at(const StreamWave& of, int i, HarmonicFlow& by) {
  const double L = of.X[0];
  const double k = 2.0 * pi / L;
  const double eta = of.eta[at(i)];
  const double z = of.d + eta;
  Flow flow{.u = of.U - L / of.T, .w = 0.0, .u_L = -1.0 / of.T, .psi_L = eta / of.T};
  for (int n = 1; n < of.NN; ++n) {
    const double kn = n * k;
    const auto [sh, ch] = SINCSH(kn * z);
    const double cosine = of.cosine[at(i)][at(n)];
    const double sine = of.sine[at(i)][at(n)];
    const double X = of.X[at(n)];
    by.u[at(n)] = -kn * ch * cosine;
    by.w[at(n)] = -kn * sh * sine;
    by.psi[at(n)] = sh * cosine;
    flow.u += X * by.u[at(n)];
    flow.w += X * by.w[at(n)];
    flow.uz -= X * kn * kn * sh * cosine;
    flow.wz -= X * kn * kn * ch * sine;
    flow.u_L += X * (kn / L) * (ch + kn * z * sh) * cosine;
    flow.w_L += X * (kn / L) * (sh + kn * z * ch) * sine;
    flow.psi_L -= X * ch * cosine * kn * z / L;
  }
  return flow;
}

/// Moving the surface line changes the elevation by d psi / u, since psi falls with z by u.
SurfacePoint surface_point(const StreamWave& of, int i) {
  HarmonicFlow by{};
  const Flow flow = flow_at(of, i, by);
  const double g = of.g;
  SurfacePoint point{};
  point.eta = of.eta[at(i)];
  point.Q = point.eta + (flow.u * flow.u + flow.w * flow.w) / (2.0 * g);
  const double along_z = 1.0 + (flow.u * flow.uz + flow.w * flow.wz) / g;
  const auto set = [&](int l, double d_psi, double du, double dw) {
    point.d_eta[at(l)] = d_psi / flow.u;
    point.d_Q[at(l)] = (flow.u * du + flow.w * dw) / g + along_z * point.d_eta[at(l)];
  };
  set(0, flow.psi_L, flow.u_L, flow.w_L);
  for (int n = 1; n < of.NN; ++n) set(n, by.psi[at(n)], by.u[at(n)], by.w[at(n)]);
  set(of.NN, -1.0, 0.0, 0.0);
  return point;
}

using SurfacePoints = std::array<SurfacePoint, most_wave_points>;

/// Simpson's rule over the points 0 to half a wave. An even number of points leaves the last interval out.
template <class Value>
double simpson(int points, Value value) {
  const int last = points % 2 == 1 ? points : points - 1;
  double sum = value(0);
  for (int i = 1; i < last - 1; ++i) sum += (i % 2 == 1 ? 4.0 : 2.0) * value(i);
  return (sum + value(last - 1)) * pi / (points - 1) / 3.0;
}

template <class Value>
double mean(int points, Value value) {
  double sum = 0.0;
  for (int i = 0; i < points; ++i) sum += value(i);
  return sum / points;
}

/// The normal equations of the fit: rows and columns 1 .. NN+1.
void fit_equations(const StreamWave& of, const SurfacePoints& points, RealTable CFF, Reals right) {
  for (int l = 0; l <= of.NN; ++l) {
    const double average = mean(of.NPTS, [&](int i) { return points[at(i)].d_Q[at(l)]; });
    for (int i = 0; i < of.NPTS; ++i) {
      const double deviation = points[at(i)].d_Q[at(l)] - average;
      for (int m = 0; m <= of.NN; ++m) CFF(l + 1, m + 1) += deviation * points[at(i)].d_Q[at(m)];
      right(l + 1) += deviation * (of.Q - points[at(i)].Q);
    }
  }
}

/// Row and column NN+2: the mean level; NN+3: the height. Returns the error of the mean level.
double constraint_equations(const StreamWave& of, const SurfacePoints& points, RealTable CFF, Reals right) {
  const int level = of.NN + 2;
  const int height = of.NN + 3;
  const SurfacePoint& crest = points[0];
  const SurfacePoint& trough = points[at(of.NPTS - 1)];
  for (int l = 0; l <= of.NN; ++l) {
    CFF(l + 1, level) = simpson(of.NPTS, [&](int i) { return points[at(i)].d_eta[at(l)]; });
    CFF(l + 1, height) = crest.d_eta[at(l)] - trough.d_eta[at(l)];
    CFF(level, l + 1) = CFF(l + 1, level);
    CFF(height, l + 1) = CFF(l + 1, height);
  }
  right(level) = simpson(of.NPTS, [&](int i) { return -points[at(i)].eta; });
  right(height) = of.H - crest.eta + trough.eta;
  return right(level);
}

/// The row of the largest entry of column k from row k down.
int pivot_row(RealTable A, int k) {
  int row = k;
  for (int i = k + 1; i <= A.rows(); ++i) {
    if (std::abs(A(i, k)) > std::abs(A(row, k))) row = i;
  }
  return row;
}

void swap_rows(RealTable A, Reals b, int i, int k) {
  for (int j = 1; j <= A.columns(); ++j) std::swap(A(i, j), A(k, j));
  std::swap(b(i), b(k));
}

}  // namespace

bool SFGAUSS(RealTable A, Reals b) {
  const int n = A.rows();
  bool regular = true;
  for (int k = 1; k <= n; ++k) {
    if (const int row = pivot_row(A, k); row != k) swap_rows(A, b, row, k);
    if (A(k, k) == 0.0) {
      regular = false;
      continue;
    }
    for (int i = k + 1; i <= n; ++i) {
      const double factor = A(i, k) / A(k, k);
      for (int j = k; j <= n; ++j) A(i, j) -= factor * A(k, j);
      b(i) -= factor * b(k);
    }
  }
  for (int k = n; k >= 1; --k) {
    double rest = b(k);
    for (int j = k + 1; j <= n; ++j) rest -= A(k, j) * b(j);
    b(k) = A(k, k) == 0.0 ? 0.0 : rest / A(k, k);
  }
  return regular;
}

StreamStep SFCFF(StreamWave& solved, double damping) {
  SurfacePoints points{};
  for (int i = 0; i < solved.NPTS; ++i) points[at(i)] = surface_point(solved, i);
  solved.Q = mean(solved.NPTS, [&](int i) { return points[at(i)].Q; });
  solved.RMS = std::sqrt(mean(solved.NPTS, [&](int i) {
    const double deviation = points[at(i)].Q - solved.Q;
    return deviation * deviation;
  }));

  const int equations = solved.NN + 3;
  std::array<double, static_cast<std::size_t>(most_equations * most_equations)> matrix{};
  std::array<double, static_cast<std::size_t>(most_equations)> vector{};
  const RealTable CFF(matrix.data(), equations, equations);
  const Reals right(vector.data(), equations);
  fit_equations(solved, points, CFF, right);
  const double mean_level_error = constraint_equations(solved, points, CFF, right);
  const bool regular = SFGAUSS(CFF, right);
  if (damping > 0.0) {
    for (int l = 0; l <= solved.NN; ++l) solved.X[at(l)] += damping * right(l + 1);
  }
  return {.mean_level_error = mean_level_error, .singular = !regular};
}

}  // namespace tidearc
