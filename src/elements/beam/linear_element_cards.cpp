// Element cards of type 3 and type 7 groups.
#include <array>
#include <cstddef>
#include <string>

#include "elements/beam/linear_cards.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

/// The cards give moments about 2, moments about 3, torsion, axial, shear 2, shear 3, each at I and J: here each
/// component's place among the freedoms of one end.
constexpr std::size_t card_order[6] = {4, 5, 3, 0, 1, 2};

void sort_to_freedoms(const std::array<double, 12>& pairs, double (&values)[12]) {
  for (std::size_t k = 0; k < 6; ++k) {
    values[card_order[k]] = pairs[2 * k];
    values[card_order[k] + 6] = pairs[2 * k + 1];
  }
}

/// The six values of one end in the order of the cards.
std::array<double, 6> card_values(const double (&values)[12], std::size_t end) {
  std::array<double, 6> row{};
  for (std::size_t k = 0; k < 6; ++k) row[k] = values[card_order[k] + 6 * end];
  return row;
}

}  // namespace

LinearCard read_linear_card() {
  LinearCard c{};
  read(units.NDIN, "I5,2I5,I5,I5,2I5,4I5,F10.0,I2,I3,I2,2I4", c.number, c.NODEI, c.NODEJ, c.increment, c.K, c.MAT,
       c.SEC, c.KHIST, c.KGEOM, c.KWAVE, c.KBUOY, c.axial, c.KECC, c.KCAT, c.KINIT, c.HINGEI, c.HINGEJ);
  c.line = deck_line();
  return c;
}

void read_initial_cards(LinearCard& card) {
  std::array<double, 12> forces{};
  std::array<double, 12> displacements{};
  read(units.NDIN, "4X,I6,4X,I6,12F10.0", card.master, card.slave, forces);
  if (card.master != 0 || card.slave != 0) {
    warning_box(" WARNING - MASTER/SLAVE NOT WORKING IN THIS VERSION ");
    complain({5, 20}, "element " + std::to_string(card.number) + ": master and slave have no effect");
  }
  read(units.NDIN, "20X,12F10.0", displacements);
  sort_to_freedoms(forces, card.F0);
  sort_to_freedoms(displacements, card.U0);
}

void echo_initial_state(const LinearCard& card) {
  write(units.NDOUT,
        "11X,'INITIAL FORCES         MASTER   SLAVE  NODE',4X,'MOMENTS(22)',4X,'MOMENTS(33)',7X,'TORSIONS',10X,'AXIAL',"
        "6X,'SHEAR(22)',6X,'SHEAR(33)'");
  write(units.NDOUT, "32X,2I8,5X,A1,1P,6E15.5", card.master, card.slave, "I", card_values(card.F0, 0));
  write(units.NDOUT, "53X,A1,1P,6E15.5", "J", card_values(card.F0, 1));
  write(units.NDOUT,
        "11X,'INITIAL DISPLACEMENTS                  NODE',2X,'ROTATIONS(22)',2X,'ROTATIONS(33)',7X,'TORSIONS',6X,"
        "'AXIAL DEF',2X,'SHEAR DEF(22)',2X,'SHEAR DEF(33)'");
  write(units.NDOUT, "53X,A1,1P,6E15.5", "I", card_values(card.U0, 0));
  write(units.NDOUT, "53X,A1,1P,6E15.5", "J", card_values(card.U0, 1));
}

void echo_linear_heading() {
  write(units.NDOUT, "/,/,5X,'ELEMENT DATA',/");
  write(units.NDOUT,
        "' KEY   ELEM  NODE-I  NODE-J  DIFF       K  MAT.  SEC.  HIST  GEOM  WAVE  BUOY  INITIAL AXIAL   ECC   CAT"
        "  INIT  I-END  J-END       LENGTH'");
  write(units.NDOUT,
        "'        NO.                                NO.   NO.  CODE  CODE  GAUS  CODE          FORCE  TYPE   NO."
        "  CODE  HINGE  HINGE     OF NODES',/");
}

void echo_linear_element(const char* key, const LinearCard& c, double distance) {
  write(units.NDOUT, "1X,A2,I8,2I8,I6,I8,6I6,1P,E15.4,3I6,2I7,E13.4", key, c.number, c.NODEI, c.NODEJ, c.increment, c.K,
        c.MAT, c.SEC, c.KHIST, c.KGEOM, c.KWAVE, c.KBUOY, c.axial, c.KECC, c.KCAT, c.KINIT, c.HINGEI, c.HINGEJ,
        distance);
}

}  // namespace tidearc
