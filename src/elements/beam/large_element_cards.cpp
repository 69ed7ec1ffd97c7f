// Element cards of type 2 and type 27 groups.
#include <span>

#include "elements/beam/large_cards.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

LargeCard read_large_card() {
  LargeCard c{};
  read(units.NDIN, "13I5,F10.0,I5,I5,I5", c.number, c.NODEI, c.NODEJ, c.increment, c.K, c.MAT, c.SEC, c.KOUT, c.KGI,
       c.KGE, c.KSD, c.KWAVE, c.KBUOY, c.axial, c.KECC, c.KCAT, c.KINIT);
  c.line = deck_line();
  return c;
}

void read_initial_cards(LargeCard& card) {
  if (card.has_forces()) read(units.NDIN, "6F10.0", std::span<double>(card.Q0));
  if (card.has_deformations()) read(units.NDIN, "6F10.0", std::span<double>(card.E0));
}

void echo_large_heading() {
  write(units.NDOUT, "/,/,5X,'ELEMENT DATA',/");
  write(units.NDOUT,
        "' KEY   ELEM  NODE-I  NODE-J  DIFF       K  MAT.  SEC.   OUT   KGI   KGE  S.D.  WAVE BUOY.  INITIAL AXIAL"
        "   ECC   CAT  INIT       LENGTH'");
  write(units.NDOUT,
        "'        NO.                                NO.   NO.  CODE              CODE GAUSS  CODE          FORCE"
        "  TYPE   NO.  CODE     OF NODES',/");
}

void echo_large_element(const char* key, const LargeCard& c, double distance) {
  write(units.NDOUT, "1X,A2,I8,2I8,I6,I8,8I6,1P,E15.4,3I6,E13.4", key, c.number, c.NODEI, c.NODEJ, c.increment, c.K,
        c.MAT, c.SEC, c.KOUT, c.KGI, c.KGE, c.KSD, c.KWAVE, c.KBUOY, c.axial, c.KECC, c.KCAT, c.KINIT, distance);
}

void echo_initial_state(const LargeCard& card) {
  if (card.has_forces()) {
    write(units.NDOUT,
          "11X,'INITIAL MOMENTS AND FORCES',9X,'M22-I',9X,'M22-J',9X,'M33-I',9X,'M33-J',6X,'TORQUE-I',5X,'AXIAL TEN',"
          "/,37X,1P,6E14.5",
          std::span<const double>(card.Q0));
  }
  if (card.has_deformations()) {
    write(units.NDOUT,
          "11X,'INITIAL DEFORMATIONS',15X,'M22-I',9X,'M22-J',9X,'M33-I',9X,'M33-J',6X,'TORQUE-I',5X,'AXIAL TEN',"
          "/,37X,1P,6E14.5",
          std::span<const double>(card.E0));
  }
}

}  // namespace tidearc
