// The cards of type 3 and type 7 groups: group, material, section and element cards, read and echoed.
#pragma once

#include <cstdint>

#include "elements/beam/local_axes.h"
#include "elements/beam/properties.h"
#include "run/stops.h"
#include "sea/members/member.h"

namespace tidearc {

inline constexpr int most_linear_reals = 1000;  ///< of materials and sections together in the property area  [-]
inline constexpr int most_linear_offsets = 100;

struct LinearGroupCard {
  int NMAT, NSEC;
  int NGAUSS;  ///< wave integration points
  int KFEM;    ///< 1: loads along the member give end moments too
  int NECC;    ///< offset types
  AxisConvention convention;
};
/// Reads and echoes the group card; tables that are too long end the run.
LinearGroupCard read_linear_group_card();

/// Tables in the property area of the current group: materials, then sections.
BeamMaterial* linear_materials();
LinearSection* linear_sections(int NMAT);
/// Reads and echoes them; `general` gets the tables of general drag and lift, one for each section.
void read_linear_properties(const LinearGroupCard& counts, GeneralCoefficients* general);

struct LinearCard {
  int number, NODEI, NODEJ;
  int increment;  ///< of the node numbers of generated elements; 0 as 1
  int K;          ///< third node; 0 or below: the group's convention
  int MAT, SEC;
  int KHIST, KGEOM, KWAVE, KBUOY;
  double axial;  ///< initial axial force, tension positive
  int KECC, KCAT, KINIT;
  int HINGEI, HINGEJ;
  int master, slave;  ///< of the further cards: inert
  double F0[12];      ///< initial local end forces, order of local freedoms
  double U0[12];      ///< initial local end displacements
  std::int64_t line;
  bool generated;  ///< made from this card, so that its own columns are not to blame

  DeckPlace place(int first, int last) const { return {line, generated ? whole_line : Columns{first, last}}; }
};
LinearCard read_linear_card();
/// The two further cards of an element with initial forces and displacements.
void read_initial_cards(LinearCard& card);

void echo_linear_heading();
void echo_linear_element(const char* key, const LinearCard& card, double distance);
void echo_initial_state(const LinearCard& card);

}  // namespace tidearc
