// Stream function waves: kernels. A wave is a struct of its own; nothing here knows the deck's wave or prints.
//
// In the frame that moves with the crest, z above mean water level, theta = 0 at the crest:
//
//   psi = (L/T - U) z + sum X(n) sinh(n k (d + z)) cos(n theta),   u = -d psi/dz,  w = +d psi/dx
//
// The series is harmonic and has no flow through the bed; the surface is the line psi = X(NN). What is left is
// Bernoulli's condition there, met by least squares at points from crest to trough, with the height and the mean level
// of the surface as constraints.
//
// Sources: R. G. Dean, "Stream function representation of nonlinear ocean waves", J. Geophys. Res. 70 (1965);
// J. E. Chappelear, J. Geophys. Res. 66 (1961); J. R. Chaplin, "Developments of stream-function wave theory", Coastal
// Engineering 3 (1980); S. K. Chakrabarti, Hydrodynamics of Offshore Structures (1987), ch. 3.
#pragma once

#include <array>
#include <span>

#include "run/views.h"
#include "sea/wave_state.h"

namespace tidearc {

struct StreamWave {
  double H = 0.0;  ///< height                                                                   [length]
  double T = 0.0;  ///< period of a fixed observer                                                    [s]
  double d = 0.0;  ///< depth                                                                    [length]
  double g = 0.0;  ///< acceleration of gravity                                               [length/s2]
  double U = 0.0;  ///< uniform current along the wave                                         [length/s]
  int NN = 0;      ///< order plus 1; harmonics 1 .. NN-1                                             [-]
  int NPTS = 0;    ///< points from crest to trough, 3 to 37                                          [-]

  /// Unknowns: X[0] the wave length, X[n] the coefficient of harmonic n, X[NN] the stream function on the surface.
  std::array<double, most_wave_order + 2> X{};
  std::array<double, most_wave_points> theta{};  ///< phases of the points                        [rad]
  std::array<double, most_wave_points> eta{};    ///< surface elevations there                 [length]
  double Q = 0.0;    ///< mean of eta + (u^2 + w^2) / 2g over the points                          [length]
  double RMS = 0.0;  ///< root of the mean square of the deviations from it                       [length]

  using Harmonics = std::array<double, most_wave_order + 1>;  ///< [n], n from 1
  std::array<Harmonics, most_wave_points> cosine{}, sine{};   ///< of n theta at the points
};

/// A wave without solution: points and their tables, X and eta zero.
StreamWave stream_wave(double H, double T, double d, double g, double U, int order, int points);
/// Where an attempt starts, from the length L of a linear wave: longer with the breaking ratio, one harmonic, no
/// surface.
void start_stream_wave(StreamWave& solved, double L, double breaking_ratio);

/// How near a height is to the breaking limit y = 0.02711 tanh(28.77 x), x = d/gT^2, y = H/gT^2.
struct Breaking {
  double x, y, limit;
  double ratio() const { return y / limit; }
  bool beyond() const { return y - limit > accuracy; }
  bool within_accuracy() const { return !beyond() && !(limit - y > accuracy); }
  static constexpr double accuracy = 0.0003;
};
Breaking breaking_of(double H, double T, double d, double g);

/// The damping of the first attempt in tenths: 3 near breaking, for NN above 18 and in shallow water, else 5.
int first_damping(const Breaking& breaking, int NN);

/// Half a step of the surface: elevations `to` at all points from the stream function at the elevations `from`.
void SFSURF(const StreamWave& of, std::span<const double> from, std::span<double> to);

struct SurfaceSolution {
  double height_error;  ///< H - eta(crest) + eta(trough)                                   [length]
  bool agreed;          ///< two successive surfaces within 0.001 of a unit at all points
};
/// Solves the surface eta for the present X, from the present eta on, in at most 20 passes of two half steps.
SurfaceSolution SFETA(StreamWave& solved);

struct StreamStep {
  double mean_level_error;  ///< integral of -eta from crest to trough                   [length]
  bool singular;            ///< a pivot of the equations was zero
};
/// One Newton step at the present surface: forms Q and RMS and solves for the corrections of X, of which `damping` is
/// added; a damping of zero leaves X.
StreamStep SFCFF(StreamWave& solved, double damping);

/// Gaussian elimination of the whole matrix A, largest pivot of the column; the solution takes the place of `b`. Where
/// no pivot but zero is left the column is passed over, its unknown is zero, and false is returned.
bool SFGAUSS(RealTable A, Reals b);

}  // namespace tidearc
