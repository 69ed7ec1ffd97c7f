// Services for the input of members that stand in water.
#include "elements/contract/water_input.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <span>

#include "elements/contract/input.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

constexpr std::size_t angles = 12;  ///< of a table, 30 degrees apart  [-]

Point unit_chord(const MemberPlace& place) {
  Point chord{};
  for (std::size_t i = 0; i < 3; ++i) chord[i] = place.J[i] - place.I[i];
  const double length = std::sqrt(DOT3(chord.data(), chord.data()));
  for (double& component : chord) component /= length;
  return chord;
}

}  // namespace

void read_general_table(GeneralCoefficients& table) {
  std::array<double, 1 + 2 * angles> values{};
  read(units.NDIN, "8F10.0", values);
  table.inertia = values[0];
  std::copy_n(values.begin() + 1, angles, table.drag);
  std::copy_n(values.begin() + 1 + angles, angles, table.lift);
}

void echo_general_heading() {
  write(units.NDOUT,
        "/,/,5X,'COEFFICIENTS OF GENERAL DRAG AND LIFT',/,/,' SEC.     INERTIA         ANGLE OF ATTACK',/,'  NO.',25X,"
        "'0.',6X,'30.',6X,'60.',6X,'90.',5X,'120.',5X,'150.',5X,'180.',5X,'210.',5X,'240.',5X,'270.',5X,'300.',5X,"
        "'330.',/");
}

void echo_general_table(int number, const GeneralCoefficients& table) {
  write(units.NDOUT, "I5,1P,E12.4,0P,'  DRAG',12F9.4", number, table.inertia, std::span<const double>(table.drag));
  write(units.NDOUT, "17X,'  LIFT',12F9.4", std::span<const double>(table.lift));
}

StillWaterLoads still_water_loads(const WaterSection& section, double Db, int KBUOY, const MemberPlace& place) {
  StillWaterLoads loads;
  if (gravity.KBUOY >= 1 && KBUOY != 0) BUOYLD(Db == 0.0 ? section.D : Db, place, loads.buoyancy);
  if (gravity.KCURR >= 1) static_current_load(section, place, loads.current);
  return loads;
}

void add_added_mass(const WaterSection& section, const MemberPlace& place) {
  if (sizes.IGRAV != 1) return;
  const Point whole = added_mass(section, place.I, place.J);
  // In each direction it is m (1 - e^2), e the unit chord, which sums to 2 m. A node's own axes see their own e.
  const double half = 0.25 * (whole[0] + whole[1] + whole[2]);
  const Point chord = unit_chord(place);
  for (const int node : {place.NODEI, place.NODEJ}) {
    Point e = chord;
    to_local(node, e.data());
    Point mass{};
    for (std::size_t i = 0; i < 3; ++i) mass[i] = half * (1.0 - e[i] * e[i]);
    add_element_mass(node, mass);
  }
}

}  // namespace tidearc
