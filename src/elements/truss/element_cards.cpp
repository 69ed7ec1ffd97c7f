// Element cards of a truss group.
#include <string>

#include "elements/contract/group.h"
#include "elements/truss/cards.h"
#include "elements/truss/curve.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

TrussCard read_truss_card() {
  TrussCard card{};
  read(units.NDIN, "5I5,F10.0,7I5", card.number, card.NODEI, card.NODEJ, card.MAT, card.SEC, card.force, card.KGEOM,
       card.KHIST, card.KBUCK, card.KCAT, card.KWAVE, card.KBUOY, card.increment);
  card.line = deck_line();
  return card;
}

void read_curve_card(TrussCard& card) {
  read(units.NDIN, "22F10.0", card.curve);
  complete_curve(card.curve);
}

int property_number(int number, int count, int element_number, int first_column) {
  if (number == 0) return 1;
  if (number >= 1 && number <= count) return number;
  data_error({first_column, first_column + 4}, "' ELEMENT',I6,'  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE'",
             element_number);
  return 1;
}

void echo_element_heading() {
  write(units.NDOUT, "/,/,5X,'ELEMENT DATA',/");
  write(units.NDOUT,
        "' KEY   ELEM  NODE-I  NODE-J   MAT.   SEC.  INITIAL FORCE   GEOM   HIST   BUCK    CAT   WAVE   BUOY"
        "   NODE        LENGTH'");
  write(units.NDOUT,
        "'        NO.                    NO.    NO.                  CODE   CODE   CODE    NO.  GAUSS   CODE"
        "   INCR.',/");
}

void echo_element(const char* key, const TrussCard& card, double length) {
  write(units.NDOUT, "1X,A2,I8,2I8,2I7,1P,E15.4,7I7,E14.5", key, card.number, card.NODEI, card.NODEJ, card.MAT,
        card.SEC, card.force, card.KGEOM, card.KHIST, card.KBUCK, card.KCAT, card.KWAVE, card.KBUOY, card.increment,
        length);
}

void echo_curve(const TrussCard& card) {
  write(units.NDOUT, "11X,'Deformation vs Force data pairs:',/,(11X,1P,8E13.4)", card.curve);
}

}  // namespace tidearc
