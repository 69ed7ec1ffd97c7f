// Group and property cards of type 3 and type 7 groups.
#include "elements/beam/linear_cards.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "elements/beam/cards.h"
#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

static_assert(most_linear_reals * ITWO == group_property_words);

/// Deck line of each section's first card.
using SectionLines = std::array<std::int64_t, most_linear_reals / linear_section_reals>;

double* property_reals() { return reinterpret_cast<double*>(group.properties.data()); }

[[noreturn]] void stop_tables_too_long(int NMAT, int NSEC) {
  write(units.NDOUT, "/,' ERROR MESSAGES',/,/,' NMAT*',I1,' + NSEC*',I2,' <= ',I4", linear_material_reals,
        linear_section_reals, most_linear_reals);
  complain({1, 10}, std::to_string(NMAT) + " materials and " + std::to_string(NSEC) +
                        " sections do not fit: materials*7 + sections*22 may be 1000 at most");
  CLOSUP();
}

[[noreturn]] void stop_too_many_offsets(int NECC) {
  write(units.NDOUT, "/,' FATAL ERROR - NECC .GT. ',I3,' - INCREASE DIMENSION',' IN SUBROUTINE INEL03.'",
        most_linear_offsets);
  complain({21, 25}, std::to_string(NECC) + " eccentricity types, at most " + std::to_string(most_linear_offsets) +
                         " are allowed");
  CLOSUP();
}

void read_material(int expected, BeamMaterial& m) {
  int number = 0;
  read(units.NDIN, "I5,5X,7F10.0", number, m.EMOD, m.poisson, m.weight, m.mass, m.fluid_weight, m.fluid_mass,
       m.pressure);
  if (number != expected) stop_not_sequential("MATERIAL PROPERTY", number, expected);
  write(units.NDOUT, "I5,1P,E11.3,E10.2,2E12.3,3E16.3", number, m.EMOD, m.poisson, m.weight, m.mass, m.fluid_weight,
        m.fluid_mass, m.pressure);
  if (!(m.EMOD > 0.0)) {
    warning_box(" YOUNGS MODULUS EITHER ZERO OR NEGATIVE");
    complain({11, 20}, "material " + std::to_string(number) + ": Young's modulus is not positive");
  }
}

void read_materials(int count) {
  write(units.NDOUT, "/,/,5X,'MATERIAL PROPERTIES',/");
  write(units.NDOUT,
        "' MAT.     YOUNGS  POISSON  SELF WEIGHT        MASS  INTERNAL FLUID  INTERNAL FLUID  INTERNAL FLUID',/,"
        "'  NO.    MODULUS    RATIO      DENSITY     DENSITY  WEIGHT DENSITY    MASS DENSITY        PRESSURE',/");
  for (int k = 1; k <= count; ++k) read_material(k, linear_materials()[k - 1]);
}

/// A section that has shear areas and nothing else ends the run; one without area is told. What the water asks of a
/// section (the second card) is none of its properties. `line`: of its first card.
void check_section(int number, const LinearSection& s, std::int64_t line) {
  bool nothing_else = true;
  for (const double value : {s.outside_diameter, s.thickness, s.area, s.inside_diameter, s.J, s.I3, s.I2}) {
    if (value != 0.0) nothing_else = false;
  }
  if (nothing_else && (s.AS2 != 0.0 || s.AS3 != 0.0)) {
    fatal_box(" PROPERTIES OTHER THAN SHEAR AREAS ARE ZERO");
    complain(DeckPlace(line, {11, 90}), "section " + std::to_string(number) + " has shear areas and nothing else");
    CLOSUP();
  }
  if (!(s.area > 0.0)) {
    warning_box(format("' AREA OF SECTION ',I5,' EITHER ZERO OR NEGATIVE.'", number));
    complain(DeckPlace(line, {31, 40}), "section " + std::to_string(number) + ": its area is not positive");
  }
}

/// Reads the cards of a section; returns the line of the first.
std::int64_t read_section(int expected, LinearSection& s, GeneralCoefficients& general) {
  int number = 0;
  int spare = 0;
  BeamWater& w = s.water;
  read(units.NDIN, "I5,I5,6F10.0,2F5.0,F10.0", number, spare, s.outside_diameter, s.thickness, s.area,
       s.inside_diameter, s.J, s.I3, s.I2, s.AS2, s.AS3);
  if (number != expected) stop_not_sequential("SECTION PROPERTY", number, expected);
  const std::int64_t line = deck_line();
  read(units.NDIN, "5F10.0,I5,2F10.0", w.wave_diameter, w.CD, w.CM, w.CKM, w.longitudinal_CD, spare, w.growth_weight,
       w.buoyant_diameter);
  read_morison(w, general);
  fill_from_tube(s);
  return line;
}

void echo_sections(int count, const LinearSection* table, const SectionLines& lines) {
  for (int k = 1; k <= count; ++k) {
    const LinearSection& s = table[k - 1];
    write(units.NDOUT, "I5,1P,9E12.4", k, s.outside_diameter, s.thickness, s.area, s.inside_diameter, s.J, s.I3, s.I2,
          s.AS2, s.AS3);
    check_section(k, s, lines[static_cast<std::size_t>(k - 1)]);
  }
  write(units.NDOUT,
        "/,' SEC.',8X,'WAVE',43X,'LONG.',10X,'MG',7X,'Buoy_',/,'  NO.',8X,'DIAM',10X,'CD',10X,'CM',9X,'CKM',10X,'CD',"
        "5X,'Wt/Leng',8X,'Diam',/");
  for (int k = 1; k <= count; ++k) {
    const BeamWater& w = table[k - 1].water;
    write(units.NDOUT, "I5,1P,7E12.4", k, w.wave_diameter, w.CD, w.CM, w.CKM, w.longitudinal_CD, w.growth_weight,
          w.buoyant_diameter);
  }
  echo_morison_heading();
  for (int k = 1; k <= count; ++k) echo_morison(k, table[k - 1].water);
}

}  // namespace

LinearGroupCard read_linear_group_card() {
  LinearGroupCard card{};
  std::array<char, 5> KDEF{};
  read(units.NDIN, "5I5,A5", card.NMAT, card.NSEC, card.NGAUSS, card.KFEM, card.NECC, KDEF);
  card.NMAT = std::max(card.NMAT, 1);
  card.NSEC = std::max(card.NSEC, 1);
  card.NECC = std::max(card.NECC, 0);
  write(units.NDOUT, "/");
  echo_count("NUMBER OF DIFFERENT MATERIAL TYPES", card.NMAT);
  echo_count("NUMBER OF DIFFERENT SECTION TYPES", card.NSEC);
  echo_count("NUMBER OF GAUSS WAVE INTEGRATION POINTS", card.NGAUSS);
  echo_count("FLAG FOR THE INDUCED FIXED END MOMENTS", card.KFEM);
  echo_count("NUMBER OF END-ECCENTRICITY TYPES", card.NECC);
  card.convention = read_convention(KDEF, {26, 30});
  const std::int64_t reals = static_cast<std::int64_t>(card.NMAT) * linear_material_reals +
                             static_cast<std::int64_t>(card.NSEC) * linear_section_reals;
  if (reals > most_linear_reals) stop_tables_too_long(card.NMAT, card.NSEC);
  if (card.NECC > most_linear_offsets) stop_too_many_offsets(card.NECC);
  return card;
}

BeamMaterial* linear_materials() { return reinterpret_cast<BeamMaterial*>(property_reals()); }
LinearSection* linear_sections(int NMAT) {
  return reinterpret_cast<LinearSection*>(property_reals() + linear_material_reals * NMAT);
}

void read_linear_properties(const LinearGroupCard& counts, GeneralCoefficients* general) {
  read_materials(counts.NMAT);
  write(units.NDOUT, "/,/,5X,'SECTION PROPERTIES',/");
  write(units.NDOUT,
        "' SEC.',5X,'OUTSIDE',8X,'WALL',20X,'INT.',5X,'TORSION',5X,'INERTIA',5X,'INERTIA',2(2X,A10),/,"
        "'  NO.',8X,'DIAM',7X,'THIC.',8X,'AREA',8X,'DIAM',5X,'INERTIA',2(6X,A6),2(6X,A6),/",
        "SHEAR AREA", "SHEAR AREA", "AXIS-3", "AXIS-2", "AXIS-2", "AXIS-3");
  LinearSection* sections = linear_sections(counts.NMAT);
  SectionLines lines{};
  for (int k = 1; k <= counts.NSEC; ++k) {
    lines[static_cast<std::size_t>(k - 1)] = read_section(k, sections[k - 1], general[k - 1]);
  }
  echo_sections(counts.NSEC, sections, lines);
  echo_general_tables(counts.NSEC, general, [&](int k) { return sections[k].water.ICA; });
}

}  // namespace tidearc
