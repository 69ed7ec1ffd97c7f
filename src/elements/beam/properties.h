// Materials, sections and end offsets of beam groups, as their cards give them.
#pragma once

#include <type_traits>

namespace tidearc {

/// Material of all beam types. Types 3 and 27 have no thermal coefficient on their cards.
struct BeamMaterial {
  double EMOD;          ///< Young's modulus                          [force/area]
  double poisson;       ///< Poisson's ratio                          [-]
  double weight;        ///< weight density                           [force/volume]
  double mass;          ///< mass density                             [mass/volume]
  double fluid_weight;  ///< weight density of the contained fluid    [force/volume]
  double fluid_mass;    ///< mass density of the contained fluid      [mass/volume]
  double pressure;      ///< internal pressure                        [force/area]

  double G() const { return EMOD / (2.0 * (1.0 + poisson)); }
};

/// What waves, current and buoyancy ask of a section.
struct BeamWater {
  double wave_diameter;       ///< that the water sees                                     [length]
  double CD, CM, CKM;         ///< drag, inertia and added mass coefficients of waves      [-]
  double longitudinal_CD;     ///< drag along the member                                   [-]
  double growth_weight;       ///< weight of marine growth per length                      [force/length]
  double buoyant_diameter;    ///< of buoyancy                                             [length]
  double CTV, CTD, CAM, CAD;  ///< coefficients of the extended wave force equation        [-]
  int ICA, JCA;               ///< load code, and the second code beside it
};

/// Section of types 2 and 27. Nothing is computed from a diameter.
struct LargeSection {
  double area;
  double thickness;        ///< wall thickness                                             [length]
  double inside_diameter;  ///< of the contained fluid                                     [length]
  double IY, IZ;           ///< second moments of bending about axes 2 and 3               [length^4]
  double J;                ///< torsion constant                                           [length^4]
  double angle;            ///< of axes 2 and 3 about the member axis, type 2              [rad]
  BeamWater water;
};

/// Section of type 3. Outside diameter and wall thickness fill what the card leaves at zero.
struct LinearSection {
  double outside_diameter;  ///< [length]
  double thickness;         ///< wall thickness  [length]
  double area;
  double inside_diameter;  ///< of the contained fluid                          [length]
  double J;                ///< torsion constant                                [length^4]
  double I3, I2;           ///< second moments of bending about axes 3 and 2    [length^4]
  double AS2, AS3;         ///< shear areas along axes 2 and 3; 0: no shear deformation there  [area]
  BeamWater water;
  double spare;  ///< the two spare integers of the cards have no effect
};

/// Reals that a type 3 group keeps per material and per section in its property area.
inline constexpr int linear_material_reals = 7;
inline constexpr int linear_section_reals = 22;
static_assert(std::is_trivially_copyable_v<BeamMaterial> && sizeof(BeamMaterial) == linear_material_reals * 8);
static_assert(std::is_trivially_copyable_v<LinearSection> && sizeof(LinearSection) == linear_section_reals * 8);
static_assert(std::is_trivially_copyable_v<LargeSection>);

/// One offset card: rigid arms from the nodes to the member's ends, master components, in the order of the table:
/// I-X, J-X, I-Y, J-Y, I-Z, J-Z.
struct BeamOffsets {
  double ECC[6];  ///< [length]
};

/// The values that a tube of this outside diameter and wall thickness gives to what the section leaves at zero.
void fill_from_tube(LinearSection& section);

/// Mass and weight per unit length; bore: the area that the contained fluid fills.
double mass_per_length(const BeamMaterial& material, double area, double inside_diameter);
double weight_per_length(const BeamMaterial& material, double area, double inside_diameter, double growth_weight);

}  // namespace tidearc
