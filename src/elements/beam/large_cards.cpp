// Group and property cards of type 2 and type 27 groups.
#include "elements/beam/large_cards.h"

#include <algorithm>
#include <array>

#include "elements/beam/cards.h"
#include "elements/beam/vortex.h"
#include "elements/contract/input.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

namespace {

/// The six integers of a group card with the convention behind the fourth, and what both types echo alike.
LargeGroupCard read_counts(std::array<char, 5>& KDEF, int& sixth) {
  LargeGroupCard card{};
  read(units.NDIN, "4I5,A5,2I5", card.NMAT, card.NSEC, card.NSUB, card.KFEM, KDEF, sixth, card.KPOST);
  card.NMAT = std::max(card.NMAT, 1);
  card.NSEC = std::max(card.NSEC, 1);
  write(units.NDOUT, "/");
  echo_count("NUMBER OF DIFFERENT MATERIAL TYPES", card.NMAT);
  echo_count("NUMBER OF DIFFERENT SECTION TYPES", card.NSEC);
  echo_count("NUMBER OF SUB-DIVISIONS FOR WAVE FORCE", card.NSUB);
  echo_count("FLAG FOR THE INDUCED FIXED END MOMENTS", card.KFEM);
  return card;
}

void check_counts(const LargeGroupCard& card) {
  const int most = most_large_properties;
  if (card.NMAT > most) stop_too_many("MATERIAL TYPES", card.NMAT, most, {1, 5});
  if (card.NSEC > most) stop_too_many("SECTION TYPES", card.NSEC, most, {6, 10});
  if (card.NECC > most) stop_too_many("END ECCS.", card.NECC, most, {26, 30});
}

void read_material(int expected, bool vortex, LargeMaterial& table) {
  BeamMaterial& m = table.material;
  int number = 0;
  if (vortex) {
    read(units.NDIN, "I5,5X,2F10.0", number, m.EMOD, m.poisson);
  } else {
    read(units.NDIN, "I5,5X,3F10.0", number, m.EMOD, m.poisson, m.weight);
  }
  if (number != expected) stop_not_sequential("MATERIAL PROPERTY", number, expected);
  if (vortex) {
    read(units.NDIN, "5F10.0", m.weight, m.mass, m.fluid_weight, m.fluid_mass, m.pressure);
    table.ALPHA = 0.0;
  } else {
    read(units.NDIN, "5F10.0", m.mass, m.fluid_weight, m.fluid_mass, m.pressure, table.ALPHA);
  }
}

void echo_material(int number, bool vortex, const LargeMaterial& table) {
  const BeamMaterial& m = table.material;
  if (vortex) {
    write(units.NDOUT, "I5,1P,E11.3,E10.2,2E12.3,3E16.3", number, m.EMOD, m.poisson, m.weight, m.mass, m.fluid_weight,
          m.fluid_mass, m.pressure);
  } else {
    write(units.NDOUT, "I5,1P,E11.3,E10.2,2E12.3,4E16.3", number, m.EMOD, m.poisson, m.weight, m.mass, m.fluid_weight,
          m.fluid_mass, m.pressure, table.ALPHA);
  }
}

void read_materials(int count, bool vortex, LargeMaterial* table) {
  write(units.NDOUT, "/,/,5X,'MATERIAL PROPERTIES',/");
  write(units.NDOUT,
        "' MAT.     YOUNGS POISSON   SELF WEIGHT        MASS  INTERNAL FLUID  INTERNAL FLUID  INTERNAL FLUID',A16,/,"
        "'  NO.    MODULUS RATIO         DENSITY     DENSITY  WEIGHT DENSITY    MASS DENSITY        PRESSURE',/",
        vortex ? "" : "   THEMAL COEFF.");
  for (int k = 1; k <= count; ++k) {
    read_material(k, vortex, table[k - 1]);
    echo_material(k, vortex, table[k - 1]);
  }
}

void read_section(int expected, bool vortex, LargeSection& s, GeneralCoefficients& general) {
  BeamWater& w = s.water;
  int number = 0;
  int spare = 0;
  if (vortex) {
    read(units.NDIN, "I5,5X,6F10.0", number, s.area, s.thickness, s.inside_diameter, s.IY, s.IZ, s.J);
  } else {
    read(units.NDIN, "I5,5X,7F10.0", number, s.area, s.thickness, s.inside_diameter, s.IY, s.IZ, s.J, w.wave_diameter);
  }
  if (number != expected) stop_not_sequential("SECTION PROPERTY", number, expected);
  if (vortex) {
    read(units.NDIN, "5F10.0,I5,2F10.0", w.wave_diameter, w.CD, w.CM, w.CKM, w.longitudinal_CD, spare, w.growth_weight,
         w.buoyant_diameter);
    s.angle = 0.0;
  } else {
    read(units.NDIN, "5F10.0,I5,2F10.0", w.CD, w.CM, w.CKM, w.longitudinal_CD, w.growth_weight, spare,
         w.buoyant_diameter, s.angle);
  }
  read_morison(w, general);
}

void echo_section(int number, bool vortex, const LargeSection& s) {
  if (vortex) {
    write(units.NDOUT, "I5,1P,7E12.4", number, s.area, s.thickness, s.inside_diameter, s.IY, s.IZ, s.J,
          s.water.wave_diameter);
  } else {
    write(units.NDOUT, "I5,1P,8E12.4", number, s.area, s.thickness, s.inside_diameter, s.IY, s.IZ, s.J,
          s.water.wave_diameter, s.angle);
  }
}

void read_sections(int count, bool vortex, LargeSection* table, GeneralCoefficients* general) {
  write(units.NDOUT, "/,/,5X,'SECTION PROPERTIES',/");
  write(units.NDOUT, "' SEC.',8X,'AREA  WALL THIC.   INT. DIAM',9X,'I-Y',9X,'I-Z',11X,'J   WAVE DIAM',A12,/,'  NO.',/",
        vortex ? "" : "  Angle(rad)");
  for (int k = 1; k <= count; ++k) {
    read_section(k, vortex, table[k - 1], general[k - 1]);
    echo_section(k, vortex, table[k - 1]);
  }
  write(units.NDOUT, "/,' SEC.',10X,'CD',10X,'CM',9X,'CKM    LONG. CD  MG Wt/Leng   Buoy_Diam',/,'  NO.',/");
  for (int k = 1; k <= count; ++k) {
    const BeamWater& w = table[k - 1].water;
    write(units.NDOUT, "I5,1P,6E12.4", k, w.CD, w.CM, w.CKM, w.longitudinal_CD, w.growth_weight, w.buoyant_diameter);
  }
  echo_morison_heading();
  for (int k = 1; k <= count; ++k) echo_morison(k, table[k - 1].water);
  echo_general_tables(count, general, [&](int k) { return table[k].water.ICA; });
}

}  // namespace

LargeGroupCard read_large_group_card() {
  std::array<char, 5> KDEF{};
  int NECC = 0;
  LargeGroupCard card = read_counts(KDEF, NECC);
  card.NECC = std::max(NECC, 0);
  card.convention = read_convention(KDEF, {21, 25});
  echo_count("NUMBER OF END-ECCENTRICITY TYPES", card.NECC);
  echo_count("POST RESULT FLAG (=0 EFFECTIVE FORCE)", card.KPOST);
  check_counts(card);
  return card;
}

LargeGroupCard read_vortex_group_card() {
  std::array<char, 5> KDEF{};
  int KVIV = 0;
  LargeGroupCard card = read_counts(KDEF, KVIV);
  card.vortex = true;
  card.KVIV = KVIV;
  write(units.NDOUT, "5X,A50,A5", label_column("MEMBER LOCAL AXIS ORIENTATION (KDEF)"), KDEF);
  card.convention = read_convention(KDEF, {21, 25});
  echo_count("VIV ALGORITHM (kviv)", card.KVIV);
  echo_count("POST RESULT FLAG (=0 EFFECTIVE FORCE)", card.KPOST);
  check_counts(card);
  read_vortex_cards(card.KVIV);
  return card;
}

LargeProperties read_large_properties(const LargeGroupCard& counts) {
  const LargeProperties properties{carve_table<LargeMaterial>(counts.NMAT), carve_table<LargeSection>(counts.NSEC),
                                   carve_table<GeneralCoefficients>(counts.NSEC)};
  read_materials(counts.NMAT, counts.vortex, properties.materials);
  read_sections(counts.NSEC, counts.vortex, properties.sections, properties.general);
  return properties;
}

}  // namespace tidearc
