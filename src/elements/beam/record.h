// The records of the beam elements: type 3 (linear), type 2 (large displacement), type 27 (type 2 under vortex
// shedding), type 7 (a linear beam that takes the loads of the sea and has no stiffness).
//
// Forces, frames and coordinates are in master axes unless a member says local. Local axes stand column by column.
#pragma once

#include <cstddef>
#include <type_traits>

#include "elements/beam/envelope.h"
#include "elements/beam/properties.h"
#include "elements/beam/stiffness_parts.h"
#include "elements/contract/work.h"
#include "sea/members/member.h"
#include "sea/members/wake.h"

namespace tidearc {

inline constexpr int beam_triangle = 78;  ///< upper triangle of a 12 by 12 matrix  [-]

/// Equivalent loads of the sea on the ends of a beam, three forces and three moments each: in local axes, but in master
/// axes where the frame turns (types 2 and 27), since the loads keep their directions.
struct BeamSea {
  double FWAVE[12];  ///< of waves and currents at the present time; belongs to the pass of the sea  [force, moment]
  double FCURR[12];  ///< of static current at factor 1                                              [force, moment]
  double FBUOY[12];  ///< of buoyancy at factor 1                                                    [force, moment]
};

/// Record of type 3, 688 words.
struct LinearBeamRecord {
  ElementHead<12> head;
  int NODEI, NODEJ;
  int KNODE;           ///< third node, or an AxisConvention
  int MAT, SEC;        ///< material and section in the group's property area
  int KHIST;           ///< history code, without effect
  int KGEOM;           ///< 1: bending stiffness includes the terms of the initial axial force
  int KWAVE, KBUOY;    ///< wave integration points, buoyancy code
  int KECC;            ///< offset type, 0 none
  int KCAT;            ///< catenary number, without effect
  int KINIT;           ///< not 0: initial forces and displacements were given
  int HINGEI, HINGEJ;  ///< released freedoms, decimal digits: axial, torsion, about 2, about 3
  int NGAUSS;          ///< wave integration points of the group
  int KFEM;            ///< 1: loads along the member give end moments too
  double XL;           ///< length between the ends                                       [length]
  double TELEM[9];     ///< local axes                                                    [-]
  double ECC[6];       ///< offsets, I-X, J-X, I-Y, J-Y, I-Z, J-Z                         [length]
  double AXIAL;        ///< initial axial force, tension positive                         [force]
  BeamStiffness K;     ///< local stiffness, hinges condensed
  double U[12];        ///< local end displacements, initial ones included                [length, rad]
  double F[12];        ///< local end forces as they act on the element                   [force, moment]
  double F0[12];       ///< those that the element started with                           [force, moment]
  BeamEnvelope envelope;
  BeamSea sea;
  BeamWater water;                  ///< of the section
  GeneralCoefficients general;      ///< general drag and lift of a section with load code 7
  int spare[4];                     ///< up to the length of the first portion
  double delivered[beam_triangle];  ///< matrix that has been delivered, upper triangle by rows
  double auxiliary;
};
static_assert(std::is_standard_layout_v<LinearBeamRecord> && std::is_trivially_copyable_v<LinearBeamRecord>);
static_assert(sizeof(LinearBeamRecord) == bytes_of_words(688));
static_assert(offsetof(LinearBeamRecord, delivered) == bytes_of_words(530));

/// First portion of a type 2 record, and its first 668 words in type 27.
struct LargeBeam {
  ElementHead<12> head;
  int NODEI, NODEJ;
  int KGI;    ///< 1: the matrix formed before the first determination has the terms of the initial axial force
  int KGE;    ///< 1: no terms of the axial force in the natural stiffness
  int KSD;    ///< how the frame of an increment is found: 1 start frame, 2 half-step, 3 repeated half-step
  int KNODE;  ///< third node, or an AxisConvention
  double EI2L, EI3L, GJL, EAL;  ///< stiffnesses over the length, about axes 2 and 3     [moment, force/length]
  double PNU;                   ///< Poisson's ratio                                     [-]
  double XL;                    ///< length between the ends at input                    [length]
  double TELEM[9];              ///< local axes                                          [-]
  double TGLOB[72];             ///< end displacements to natural deformations, 6 by 12, column by column
  double QNAT[6];               ///< natural forces (natural.h)                          [moment, force]
  double ENAT[6];               ///< natural deformations                                [rad, length]
  int KECC;                     ///< offset type, 0 none
  int MAT;                      ///< material number
  double ECC[6];                ///< offsets, I-X, J-X, I-Y, J-Y, I-Z, J-Z               [length]
  double ALPHA;                 ///< thermal coefficient                                 [1/temperature]
  double PEND[2];               ///< end pressures times area                            [force]
  double P;                     ///< effective axial force, tension positive             [force]
  double Q0[6];                 ///< initial natural forces, a constant part of QNAT     [moment, force]
  double AXIAL;                 ///< initial axial force of the card: where EAL is 0, a constant part of P and QNAT
  double CHORD[3];              ///< from end I to end J at input                        [length]
  double UTOT[12];              ///< nodal displacements                                 [length, rad]
  BeamEnvelope envelope;
  int SEC;           ///< section number
  int KOUT;          ///< output code, without effect
  int KWAVE, KBUOY;  ///< wave integration points, buoyancy code
  int KCAT;          ///< catenary number, without effect
  int KINIT;         ///< 1 initial forces, 2 initial deformations, 3 both were given
  int KPOST;         ///< post result flag of the group, 0 effective force
  int KFEM;          ///< 1: loads along the member give end moments too
  BeamMaterial material;
  LargeSection section;
  int KTOLD;  ///< 1 when the warning of vortex shedding has been printed; goes with the wave loads
  int NSUB;   ///< wave integration points of the group
  BeamSea sea;
  int spare[8];                 ///< up to the length of the first portion
  GeneralCoefficients general;  ///< general drag and lift of a section with load code 7
};
static_assert(std::is_standard_layout_v<LargeBeam> && std::is_trivially_copyable_v<LargeBeam>);
static_assert(sizeof(LargeBeam) == bytes_of_words(668));
static_assert(offsetof(LargeBeam, EI2L) == bytes_of_words(20));

/// Record of type 2, 826 words.
struct LargeBeamRecord {
  LargeBeam beam;
  double delivered[beam_triangle];  ///< matrix that has been delivered, upper triangle by rows
  double auxiliary;
};
static_assert(std::is_standard_layout_v<LargeBeamRecord> && sizeof(LargeBeamRecord) == bytes_of_words(826));
static_assert(offsetof(LargeBeamRecord, delivered) == bytes_of_words(668));

/// Record of type 27, 1484 words.
struct VortexBeamRecord {
  LargeBeam beam;
  double FLIFT[12];  ///< the part of FWAVE that comes of vortex shedding  [force, moment]
  WakeState wake;    ///< goes with the wave loads
  int spare[634 - words(sizeof(WakeState))];
  double delivered[beam_triangle];  ///< matrix that has been delivered, upper triangle by rows
  double auxiliary;
};
static_assert(std::is_standard_layout_v<VortexBeamRecord> && sizeof(VortexBeamRecord) == bytes_of_words(1484));
static_assert(offsetof(VortexBeamRecord, delivered) == bytes_of_words(1326));

/// Record of type 7, 300 words.
struct WaveBeamRecord {
  ElementHead<12> head;
  int NODEI, NODEJ;
  int KNODE;                    ///< third node, or an AxisConvention
  int MAT, SEC;                 ///< material and section in the group's property area
  int KWAVE, KBUOY;             ///< wave integration points, buoyancy code
  int KECC;                     ///< offset type, 0 none
  int NGAUSS;                   ///< wave integration points of the group
  int KFEM;                     ///< 1: loads along the member give end moments too
  double XL;                    ///< length between the ends                                   [length]
  double TELEM[9];              ///< local axes                                                [-]
  double ECC[6];                ///< offsets, I-X, J-X, I-Y, J-Y, I-Z, J-Z                     [length]
  BeamWater water;              ///< of the section
  GeneralCoefficients general;  ///< general drag and lift of a section with load code 7
  double FWAVE[12];             ///< as in BeamSea                                             [force, moment]
  Extremes loads;               ///< of the wave loads at the factor at which they act
  int spare[46];                ///< up to the length of the first portion
  double tail[2];               ///< nothing is delivered, nothing is kept
};
static_assert(std::is_standard_layout_v<WaveBeamRecord> && std::is_trivially_copyable_v<WaveBeamRecord>);
static_assert(sizeof(WaveBeamRecord) == bytes_of_words(300));
static_assert(offsetof(WaveBeamRecord, tail) == bytes_of_words(296));

/// Word (from 1) at which the words of the sea begin, and their count: the wave loads, and KTOLD before them.
inline constexpr int linear_sea_word = words(offsetof(LinearBeamRecord, sea)) + 1;
inline constexpr int wave_beam_sea_word = words(offsetof(WaveBeamRecord, FWAVE)) + 1;
inline constexpr int large_sea_word = words(offsetof(LargeBeam, KTOLD)) + 1;
inline constexpr int linear_sea_words = words(sizeof(BeamSea::FWAVE));
inline constexpr int large_sea_words = 2 + linear_sea_words;
/// Of type 27: to the end of the wake. What stands between does not change behind input.
inline constexpr int vortex_sea_words =
    words(offsetof(VortexBeamRecord, wake) + sizeof(WakeState)) - (large_sea_word - 1);
static_assert(offsetof(LargeBeam, sea) == offsetof(LargeBeam, KTOLD) + bytes_of_words(2));

/// The delivered matrix in the tail of the current record, of any beam type.
inline double* delivered_matrix(int LFIX) { return reinterpret_cast<double*>(record_words() + LFIX); }

}  // namespace tidearc
