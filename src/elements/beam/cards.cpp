// Cards that the beam groups share, and the stops of their input.
#include "elements/beam/cards.h"

#include <string_view>

#include "elements/contract/input.h"
#include "run/layout.h"
#include "run/units.h"

namespace tidearc {

AxisConvention read_convention(const std::array<char, 5>& KDEF, Columns columns) {
  const std::string_view word(KDEF.data(), KDEF.size());
  if (word == "     " || word == "SACS " || word == "sacs ") {
    write(units.NDOUT, "5X,'MEMBER AXES DEFAULT TO SACS CONVENTIONS'");
    return axes_SACS;
  }
  if (word == "STRUD" || word == "strud") {
    write(units.NDOUT, "5X,'MEMBER AXES DEFAULT TO STRUDL CONVENTIONS'");
    return axes_STRUDL;
  }
  write(units.NDOUT, "/,5X,'ERROR! UNDEFINED LOCAL AXIS CONVENTION DATA.',5X,A5", word);
  complain(columns, "'" + std::string(word) + "' is no axis convention: blank, SACS, sacs, STRUD or strud");
  CLOSUP();
}

void stop_too_many(const std::string& what, int count, int limit, Columns columns) {
  const std::string sentence = "MAXIMUM ALLOWABLE NUMBER OF " + what + " IS " + std::to_string(limit) + ".";
  write(units.NDOUT, "/,' ERROR MESSAGES',/,/,5X,A80", sentence);
  complain(columns, std::to_string(count) + " " + what + ", at most " + std::to_string(limit) + " are allowed");
  CLOSUP();
}

void stop_not_sequential(const std::string& what, int number, int expected) {
  write(units.NDOUT, "/,5X,'** ERROR **',A80", "  " + what + " NUMBERS SHOULD BE INPUT SEQUENTIALLY.");
  complain({1, 5}, what + " number " + std::to_string(number) + " where " + std::to_string(expected) + " is expected");
  CLOSUP();
}

void stop_element_sequence(int number, int expected) {
  write(units.NDOUT, "/,5X,'**',5X,'ELEMENT DATA OUT OF SEQUENCE'");
  stop_out_of_sequence(number, expected);
}

void stop_initial_and_catenary(const DeckPlace& where, int number) {
  write(units.NDOUT, "/,5X,'** ERROR **','  CAN NOT SPECIFY INITIAL MOMENTS AND CATENARY GENERATION.'");
  complain(where, "element " + std::to_string(number) + " has initial moments and a catenary");
  CLOSUP();
}

BeamOffsets* read_offsets(int count) {
  BeamOffsets* table = carve_table<BeamOffsets>(count);
  if (count == 0) return table;
  write(units.NDOUT,
        "/,/,5X,'END ECCENTRICITY TYPES',/,/,'  TYPE',2(10X,A5,10X,'-',9X),/,'   NO.',2(9X,'X',11X,'Y',11X,'Z',2X),/",
        "I-END", "J-END");
  for (int k = 1; k <= count; ++k) {
    int number = 0;
    double(&e)[6] = table[k - 1].ECC;
    read(units.NDIN, "I5,5X,6F10.0", number, e[0], e[2], e[4], e[1], e[3], e[5]);
    if (number != k) stop_not_sequential("ECCENTRICITY TYPE", number, k);
    write(units.NDOUT, "I6,1P,6E12.4", number, e[0], e[2], e[4], e[1], e[3], e[5]);
  }
  return table;
}

int property_number(int number, int count, int element_number, const DeckPlace& where) {
  if (number == 0) return 1;
  if (number >= 1 && number <= count) return number;
  report_data_error(where,
                    format("' ELEMENT',I6,'  PROPERTY NUMBER OUT OF RANGE, ENTERING CHEC MODE'", element_number));
  return 1;
}

int offset_number(int number, int count, int element_number, const DeckPlace& where) {
  if (number == 0) return 0;
  const int taken = property_number(number, count, element_number, where);
  return count == 0 ? 0 : taken;
}

void read_morison(BeamWater& w, GeneralCoefficients& general) {
  read(units.NDIN, "4F10.0,2I5", w.CTV, w.CTD, w.CAM, w.CAD, w.ICA, w.JCA);
  general = {};
  if (has_general_table(w.ICA)) read_general_table(general);
}

void echo_morison_heading() {
  write(units.NDOUT,
        "/,/,5X,'COEFFICIENTS FOR USE OF EXTENDED MORISON EQUATION',/,/,' SEC.',/,"
        "'  NO.',9X,'CTV',9X,'CTD',9X,'CAM',9X,'CAD    ICA    JCA',/");
}

void echo_morison(int number, const BeamWater& w) {
  write(units.NDOUT, "I5,1P,4E12.4,2I7", number, w.CTV, w.CTD, w.CAM, w.CAD, w.ICA, w.JCA);
}

}  // namespace tidearc
