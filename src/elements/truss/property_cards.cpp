// Group, material and section cards of a truss group.
#include <algorithm>
#include <numbers>
#include <string>

#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "elements/contract/water_input.h"
#include "elements/truss/cards.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

constexpr int input_phase = 4;
constexpr int material_words = words(sizeof(TrussMaterial));
constexpr int section_words = words(sizeof(TrussSection));
constexpr int general_words = words(sizeof(GeneralCoefficients));

[[noreturn]] void stop_too_many(const std::string& what, int count) {
  const std::string sentence = "MAXIMUM ALLOWABLE NUMBER OF " + what + " TYPES IS ";
  write(units.NDOUT, "/,' ERROR MESSAGES',/,/,5X,A80", sentence + std::to_string(most_truss_properties) + ".");
  complain(whole_line, std::to_string(count) + " " + what + " types, at most " + std::to_string(most_truss_properties) +
                           " are allowed");
  CLOSUP();
}

[[noreturn]] void stop_not_sequential(const std::string& what, int number, int expected) {
  write(units.NDOUT, "/,5X,'** ERROR **',A80", "  " + what + " PROPERTY NUMBERS SHOULD BE INPUT SEQUENTIALLY.");
  complain({1, 5}, what + " number " + std::to_string(number) + " where " + std::to_string(expected) + " is expected");
  CLOSUP();
}

void read_material(int expected, TrussMaterial& m) {
  int number = 0;
  int spare = 0;
  read(units.NDIN, "I5,6F10.0,I5", number, m.EMOD, m.ratio, m.yield_tension, m.yield_compression, m.poisson, m.weight,
       spare);
  if (number != expected) stop_not_sequential("MATERIAL", number, expected);
  read(units.NDIN, "5F10.0,I5,2F10.0", m.mass, m.fluid_weight, m.fluid_mass, m.pressure, m.ductility, spare,
       m.overshoot_yield, m.overshoot_unload);
}

void echo_material_heading() {
  write(units.NDOUT, "/,/,5X,'MATERIAL PROPERTIES',/");
  write(units.NDOUT,
        "' MAT.              RATIO     YIELD STRESS      POISON''S SELF WEIGHT     ',"
        "'MASS INTERNAL FLUID INTERNAL FLUID INTERNAL FLUID  DUCTILITY'");
  write(units.NDOUT,
        "'  NO.      EMOD     EH/E   TENSION COMPRESSION    RATIO     DNESITY  ',"
        "'DENSITY WEIGHT DENSITY   MASS DENSITY       PRESSURE OF FAILURE',/");
}

void echo_material(int number, const TrussMaterial& m) {
  write(units.NDOUT, "I5,1P,E10.3,E9.2,E10.3,E12.3,E9.2,E12.3,E9.2,3E15.3,E11.3", number, m.EMOD, m.ratio,
        m.yield_tension, m.yield_compression, m.poisson, m.weight, m.mass, m.fluid_weight, m.fluid_mass, m.pressure,
        m.ductility);
}

void read_section(int expected, TrussSection& s, GeneralCoefficients& general) {
  int number = 0;
  read(units.NDIN, "I5,10F10.0", number, s.area, s.thickness, s.inside_diameter, s.water_diameter, s.CD, s.CM, s.CKM,
       s.longitudinal_CD, s.growth_weight, s.buoyant_diameter);
  if (number != expected) stop_not_sequential("SECTION", number, expected);
  read(units.NDIN, "4F10.0,2I5", s.CTV, s.CTD, s.CAM, s.CAD, s.ICA, s.JCA);
  general = {};
  if (has_general_table(s.ICA)) read_general_table(general);
}

void echo_section_heading() {
  write(units.NDOUT, "/,/,5X,'SECTION PROPERTIES',/");
  write(units.NDOUT,
        "' SEC.',5X,'AREA OR',6X,'WALL',8X,'INT.',7X,'WATER',39X,'LONG.',10X,'MG',6X,'Buoy_',/,'  NO.',7X,'DIAM.',5X,"
        "'THIC.',8X,'DIAM',8X,'DIAM',10X,'CD',10X,'CM',9X,'CKM',10X,'CD',5X,'Wt/Leng',8X,'Diam',/");
}

void echo_section(int number, const TrussSection& s) {
  write(units.NDOUT, "I5,1P,10E12.4", number, s.area, s.thickness, s.inside_diameter, s.water_diameter, s.CD, s.CM,
        s.CKM, s.longitudinal_CD, s.growth_weight, s.buoyant_diameter);
}

void echo_morison(const TrussProperties& group_properties) {
  write(units.NDOUT,
        "/,/,5X,'COEFFICIENTS FOR USE OF EXTENDED MORISON EQUATION',/,/,' SEC.',/,"
        "'  NO.',9X,'CTV',9X,'CTD',9X,'CAM',9X,'CAD    ICA    JCA',/");
  for (int k = 1; k <= group_properties.counts.NSEC; ++k) {
    const TrussSection& s = group_properties.sections[k - 1];
    write(units.NDOUT, "I5,1P,4E12.4,2I7", k, s.CTV, s.CTD, s.CAM, s.CAD, s.ICA, s.JCA);
  }
  echo_general_tables(group_properties.counts.NSEC, group_properties.general,
                      [&](int k) { return group_properties.sections[k].ICA; });
}

/// The first field of a tube is its diameter; the wall makes it an area.
void take_area_of_tube(TrussSection& s) {
  if (!(s.thickness > 0.0)) return;
  const double inside = s.area - 2.0 * s.thickness;
  s.area = std::numbers::pi / 4.0 * (s.area * s.area - inside * inside);
}

/// `n` structs of `length` words each at the high-water mark.
template <class T>
T* carve(int n, int length) {
  const int index = carve_integers(static_cast<std::int64_t>(n) * length);
  check_storage(input_phase);
  return reinterpret_cast<T*>(pool.words(index, static_cast<long long>(n) * length));
}

}  // namespace

TrussGroupCard read_truss_group_card() {
  TrussGroupCard card{};
  read(units.NDIN, "3I5", card.NMAT, card.NSEC, card.NGAUSS);
  card.NMAT = std::max(card.NMAT, 1);
  card.NSEC = std::max(card.NSEC, 1);
  card.NGAUSS = std::min(card.NGAUSS, most_gauss_points);
  write(units.NDOUT, "/,5X,'NUMBER OF DIFFERENT MATERIAL TYPES.......',I5", card.NMAT);
  write(units.NDOUT, "5X,'NUMBER OF DIFFERENT SECTION TYPES........',I5", card.NSEC);
  write(units.NDOUT, "5X,'NUMBER OF GAUSS WAVE INTEGRATION POINTS..',I5", card.NGAUSS);
  if (card.NMAT > most_truss_properties) stop_too_many("MATERIAL", card.NMAT);
  if (card.NSEC > most_truss_properties) stop_too_many("SECTION", card.NSEC);
  return card;
}

TrussProperties read_truss_properties(const TrussGroupCard& counts) {
  TrussProperties properties{counts, carve<TrussMaterial>(counts.NMAT, material_words),
                             carve<TrussSection>(counts.NSEC, section_words),
                             carve<GeneralCoefficients>(counts.NSEC, general_words)};
  echo_material_heading();
  for (int k = 1; k <= counts.NMAT; ++k) {
    read_material(k, properties.materials[k - 1]);
    echo_material(k, properties.materials[k - 1]);
  }
  echo_section_heading();
  for (int k = 1; k <= counts.NSEC; ++k) {
    read_section(k, properties.sections[k - 1], properties.general[k - 1]);
    echo_section(k, properties.sections[k - 1]);
  }
  echo_morison(properties);
  for (int k = 1; k <= counts.NSEC; ++k) take_area_of_tube(properties.sections[k - 1]);
  return properties;
}

}  // namespace tidearc
