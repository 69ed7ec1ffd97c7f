// The cards of a truss group: group, material, section and element cards, read and echoed.
#pragma once

#include <array>
#include <cstdint>

#include "elements/truss/record.h"
#include "run/stops.h"
#include "run/views.h"

namespace tidearc {

inline constexpr int most_truss_properties = 150;  ///< material types, and section types, of a group   [-]
inline constexpr int most_gauss_points = 4;        ///< wave integration points                         [-]

struct TrussGroupCard {
  int NMAT;    ///< material types  [-]
  int NSEC;    ///< section types   [-]
  int NGAUSS;  ///< wave integration points  [-]
};
/// Reads and echoes the group card. More than 150 material or section types end the run.
TrussGroupCard read_truss_group_card();

/// Material and section tables, carved in the work array for the time of the group's input.
struct TrussProperties {
  TrussGroupCard counts;
  TrussMaterial* materials;
  TrussSection* sections;
  GeneralCoefficients* general;  ///< of each section; zero without load code 7
};
/// Carves the tables at the high-water mark (storage phase 4), reads and echoes all their cards. A number out of
/// sequence ends the run. The caller puts the high-water mark back.
TrussProperties read_truss_properties(const TrussGroupCard& counts);

struct TrussCard {
  int number, NODEI, NODEJ;
  int MAT, SEC;
  double force;  ///< initial force, tension positive
  int KGEOM, KHIST, KBUCK, KCAT, KWAVE, KBUOY;
  int increment;  ///< of the node numbers of generated elements; 0 as 1
  std::array<double, 2 * curve_pairs> curve;
  std::int64_t line;  ///< deck line of the card
  bool generated;     ///< the element was generated from this card, so that its own columns are not to blame

  /// Columns of the card for a message about it, whatever has been read since.
  DeckPlace place(int first, int last) const { return {line, generated ? whole_line : Columns{first, last}}; }
  bool has_curve() const { return KBUCK == law_curve || KHIST == law_curve; }
};
TrussCard read_truss_card();
/// The second card of an element with a curve; the last pair that is not zero fills the rest.
void read_curve_card(TrussCard& card);

/// A material or section number of an element card: 0 is 1; outside 1..count it is a data error, and 1 is taken.
int property_number(int number, int count, int element_number, int first_column);

void echo_element_heading();
/// The line of an element with its key: blank as read, * generated, ** out of sequence.
void echo_element(const char* key, const TrussCard& card, double length);
void echo_curve(const TrussCard& card);

}  // namespace tidearc
