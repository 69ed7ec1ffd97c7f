// The cards of type 2 and type 27 groups: group, material, section and element cards, read and echoed.
#pragma once

#include <cstdint>

#include "elements/beam/local_axes.h"
#include "elements/beam/properties.h"
#include "run/stops.h"
#include "sea/members/member.h"

namespace tidearc {

inline constexpr int most_large_properties = 150;  ///< materials, sections, and offset types, of a group

struct LargeGroupCard {
  bool vortex;  ///< type 27
  int NMAT, NSEC;
  int NSUB;   ///< wave integration points, under the name of sub-divisions
  int KFEM;   ///< 1: loads along the member give end moments too
  int NECC;   ///< offset types; 0 in type 27
  int KVIV;   ///< algorithm of vortex shedding, type 27
  int KPOST;  ///< post result flag, 0 effective force
  AxisConvention convention;
};
/// Reads and echoes the group card of type 2 or of type 27 (which also reads its vortex cards); too many materials,
/// sections or offset types end the run.
LargeGroupCard read_large_group_card();
LargeGroupCard read_vortex_group_card();

/// Material tables for the time of the group's input; the thermal coefficient stands beside the other constants.
struct LargeMaterial {
  BeamMaterial material;
  double ALPHA;  ///< [1/temperature]
};
struct LargeProperties {
  LargeMaterial* materials;
  LargeSection* sections;
  GeneralCoefficients* general;  ///< of each section; zero without load code 7
};
/// Reads and echoes the property cards, in the form of the type. The caller puts the high-water mark back.
LargeProperties read_large_properties(const LargeGroupCard& counts);

struct LargeCard {
  int number, NODEI, NODEJ;
  int increment;  ///< of the node numbers of generated elements; 0 as 1
  int K;          ///< third node; 0 or below: the group's convention
  int MAT, SEC;
  int KOUT, KGI, KGE, KSD, KWAVE, KBUOY;
  double axial;  ///< initial axial force, tension positive
  int KECC, KCAT;
  int KINIT;     ///< 0 none, 1 initial forces, 2 initial deformations, 3 both
  double Q0[6];  ///< initial natural forces
  double E0[6];  ///< initial natural deformations
  std::int64_t line;
  bool generated;  ///< made from this card, so that its own columns are not to blame

  bool has_forces() const { return KINIT == 1 || KINIT == 3; }
  bool has_deformations() const { return KINIT == 2 || KINIT == 3; }
  DeckPlace place(int first, int last) const { return {line, generated ? whole_line : Columns{first, last}}; }
};
LargeCard read_large_card();
/// The further cards of an element with initial forces or deformations.
void read_initial_cards(LargeCard& card);

void echo_large_heading();
void echo_large_element(const char* key, const LargeCard& card, double distance);
void echo_initial_state(const LargeCard& card);

}  // namespace tidearc
