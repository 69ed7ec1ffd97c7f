// Force of the sea on a deck that the wave reaches: silhouette drag with momentum and inertia terms on the two sides
// that face the water, drag, slam, inertia and buoyancy on the underside, as the published procedures for wave in deck
// loads have them.
//
// The deck is a box with its own axes: x' at THETA degrees from global X about Z, y' = Z x x', z up. (X0, Y0, Z0) is
// its lowest corner of least x' and y'.
#pragma once

#include "sea/field.h"

namespace tidearc {

/// What the cards of a deck say. Ratios, factors and numbers of strips that the cards leave at 0 are 1.
struct DeckBox {
  double X0, Y0, Z0;           ///< lowest corner of least x', y'                                  [length]
  double THETA;                ///< of x' from global X                                            [degrees]
  double HIGH, LENGTH, WIDTH;  ///< along z, x', y'                                                [length]
  double PHI;                  ///< solid ratio                                                    [-]
  double R[3];                 ///< factors on water velocity and acceleration along x', y', z     [-]
  double CD[3];                ///< drag coefficients along x', y', z                              [-]
  double KI[3];                ///< inertia coefficients                                           [-]
  double F0[2];                ///< constant forces along x', y' while a cell of the underside is wet  [force]
  double KS[3];                ///< slam coefficients, while the water rises                       [-]
  int Nx, Ny;                  ///< strips along x' and y'                                         [-]
};

/// The water that the deck sees.
struct DeckWater {
  const WaveFamily* family;
  double time;           ///< [s]
  double lower_current;  ///< lowest elevation of the current  [length]
  double rho;            ///< mass density                     [mass/volume]
  double weight;         ///< weight density                   [force/volume]
};

struct DeckForce {
  Point F{};  ///< global components                                    [force]
  Point M{};  ///< about `about`, global components                     [force*length]
};

/// Total force on the deck and its moment about the point `about` (global). Gravity acts along global -Z; velocities
/// are absolute, wave and current together. Vertical stations: sides at mid wet height, underside at Z0. The side that
/// is hit is that which faces the velocity at the middle of the box, at mid wet height there, or in the surface when
/// the middle is dry. F0 act at `about`, while a cell of the underside is wet.
DeckForce deck_force(const DeckBox& box, const DeckWater& water, const Point& about);

}  // namespace tidearc
