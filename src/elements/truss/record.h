// The truss element's record, and the material and section that each record carries a copy of.
#pragma once

#include <cstddef>
#include <type_traits>

#include "elements/contract/work.h"
#include "sea/members/member.h"

namespace tidearc {

inline constexpr int truss_freedoms = 6;
inline constexpr int curve_pairs = 11;  ///< pairs of a force-deformation curve; the last is stored and has no effect
inline constexpr int curve_ordinates = 10;

/// Yield codes. A curve element has 100 + k on segment k of its curve: 100 below the first ordinate, 110 beyond the
/// last.
enum TrussCode : int {
  truss_elastic = 0,
  truss_yielded = 1,         ///< yielding, or buckled
  truss_failed_outward = 2,  ///< failed; the motion has the sign of the force that it still bears
  truss_failed_inward = 3,   ///< failed; the motion is against that sign
  truss_gone = 4,            ///< failed, force gone
  truss_curve = 100,
};
enum TrussLaw : int { law_symmetric = 0, law_buckling = 1, law_curve = 2 };
inline constexpr int never_formed = -1;           ///< KLAST of an element whose matrix has not been formed yet
inline constexpr double no_yield = 1.0E20;        ///< yield force of a side that does not yield          [force]
inline constexpr double gone_stiffness = 1.0E-8;  ///< tangent of an element whose force is gone     [force/length]

struct TrussMaterial {
  double EMOD;               ///< Young's modulus                                        [force/area]
  double ratio;              ///< hardening ratio EH/E                                   [-]
  double yield_tension;      ///< not above 0: no yield in tension                       [force/area]
  double yield_compression;  ///< its sign does not matter; 0: no yield in compression   [force/area]
  double poisson;            ///< Poisson's ratio                                        [-]
  double weight;             ///< weight density                                         [force/volume]
  double mass;               ///< mass density                                           [mass/volume]
  double fluid_weight;       ///< weight density of the contained fluid                  [force/volume]
  double fluid_mass;         ///< mass density of the contained fluid                    [mass/volume]
  double pressure;           ///< internal pressure                                      [force/area]
  double ductility;          ///< failure extension over yield extension; 0: never fails [-]
  double overshoot_yield;    ///< overshoot strain at yield                              [-]
  double overshoot_unload;   ///< overshoot strain at unloading                          [-]
};

struct TrussSection {
  double area;                ///< cross-section                                           [area]
  double thickness;           ///< wall thickness                                          [length]
  double inside_diameter;     ///< of the contained fluid                                  [length]
  double water_diameter;      ///< that the water sees                                     [length]
  double CD, CM, CKM;         ///< drag, inertia and added mass coefficients of waves      [-]
  double longitudinal_CD;     ///< drag along the member                                   [-]
  double growth_weight;       ///< weight of marine growth per length                      [force/length]
  double buoyant_diameter;    ///< of buoyancy                                             [length]
  double CTV, CTD, CAM, CAD;  ///< coefficients of the extended wave force equation     [-]
  int ICA, JCA;               ///< load code, and the second code beside it
};

/// The record of 358 words. Directions, forces and coordinates are in master axes.
struct TrussRecord {
  ElementHead<truss_freedoms> head;
  int NODEI, NODEJ;       ///< end nodes
  int KGEOM;              ///< not 0: length and direction follow the nodes
  int KHIST;              ///< hysteresis selector, for reports
  int KBUCK;              ///< TrussLaw; any other value not 0 buckles
  int KYLD;               ///< TrussCode
  double SK1;             ///< stiffness of the yielding branch, (1-r) E A / L              [force/length]
  double SK2;             ///< stiffness of the hardening branch, r E A / L                 [force/length]
  double FYT, FYC;        ///< yield forces of the first branch, tension and (negative) compression  [force]
  double PNU;             ///< Poisson's ratio                                              [-]
  double OVTOL[2];        ///< overshoot extensions at yield and unloading                  [length]
  double XL;              ///< current length                                               [length]
  double XI[3], XJ[3];    ///< current end coordinates                                      [length]
  double DIR[6];          ///< (xI-xJ)/L and its negative                                   [-]
  double EXT;             ///< total extension                                              [length]
  double F1, F2;          ///< forces of the two parallel branches, tension positive        [force]
  double EXTMAX, EXTMIN;  ///< largest and smallest extension                               [length]
  double PLPOS, PLNEG;    ///< accumulated plastic extension in tension and in compression (negative)  [length]
  double PLBUCK;          ///< plastic shortening of a buckled strut not yet taken up       [length]
  double FMAX, FMIN;      ///< largest and smallest reported force                          [force]
  double TFMAX, TFMIN, TEMAX, TEMIN;  ///< their times, and those of EXTMAX and EXTMIN     [s]
  double ROT[9];                      ///< local axes for wave loading, column by column                [-]
  double CURVE[2 * curve_pairs];      ///< deformation and force ratios, pair by pair          [-]
  double DUCTL;                       ///< failure extension, 0 never fails                             [length]
  int KFAIL;                          ///< 1 after failure
  int KLAST;                          ///< KYLD when the stiffness was last formed; belongs to the stiffness pass
  double DY;                          ///< yield extension                                              [length]
  double FREP;                        ///< reported axial force of the last state                       [force]
  double UE[6];                       ///< displacements of the ends                                    [length]
  /// Nodal forces, master components: of waves at the present time; of static current and buoyancy at factor 1.
  double FWAVE[6], FCURR[6], FBUOY[6];
  int MAT, SEC;  ///< material and section numbers
  int KCAT;      ///< catenary number of the card
  int KWAVE;     ///< wave integration points of the card
  int KBUOY;     ///< buoyancy code
  int NGAUSS;    ///< wave integration points of the group
  TrussMaterial material;
  TrussSection section;
  double FCURVE;                ///< yield force of the curve's ratios, A fyt, or E A / L without yield stress  [force]
  GeneralCoefficients general;  ///< general drag and lift of a section with load code 7
  double
      tangent[truss_freedoms * (truss_freedoms + 1) / 2];  ///< matrix that has been delivered, upper triangle by rows
  double auxiliary;
};
static_assert(std::is_standard_layout_v<TrussRecord> && std::is_trivially_copyable_v<TrussRecord>);
static_assert(sizeof(TrussRecord) == bytes_of_words(358));
static_assert(offsetof(TrussRecord, tangent) == bytes_of_words(314));
static_assert(offsetof(TrussRecord, SK1) == bytes_of_words(14));

/// Word (from 1) at which KLAST stands.
inline constexpr int truss_KLAST_word = words(offsetof(TrussRecord, KLAST)) + 1;
/// Word (from 1) at which FWAVE begins.
inline constexpr int truss_sea_word = words(offsetof(TrussRecord, FWAVE)) + 1;

}  // namespace tidearc
