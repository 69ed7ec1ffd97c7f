// Services for the input of members that stand in water: the table of general drag and lift behind a section's cards,
// the loads of still water and static current, and the added mass.
#pragma once

#include "sea/members/member.h"

namespace tidearc {

/// Load code of a section with a table of general drag and lift.
inline constexpr int code_of_general_table = 7;
inline bool has_general_table(int ICA) { return ICA == code_of_general_table; }

/// Reads the four cards of a table: inertia coefficient, twelve of drag, twelve of lift.
void read_general_table(GeneralCoefficients& table);
void echo_general_heading();
void echo_general_table(int number, const GeneralCoefficients& table);
/// Echoes the tables of those of a group's sections that have one; ICA_of(k) is the load code of section k, from 0.
template <class CodeOf>
void echo_general_tables(int count, const GeneralCoefficients* tables, CodeOf&& ICA_of) {
  bool headed = false;
  for (int k = 0; k < count; ++k) {
    if (!has_general_table(ICA_of(k))) continue;
    if (!headed) echo_general_heading();
    headed = true;
    echo_general_table(k + 1, tables[k]);
  }
}

/// Loads that stand in the records from input on, as their patterns have them with factor 1.
struct StillWaterLoads {
  MemberLoad buoyancy{};  ///< zero without the generation code, or without the element's own buoyancy code
  MemberLoad current{};   ///< zero without the generation code of static current
};
/// `Db`: diameter of buoyancy, 0 as that of waves; `KBUOY`: the element's buoyancy code.
StillWaterLoads still_water_loads(const WaterSection& section, double Db, int KBUOY, const MemberPlace& place);

/// Half of a member's added mass to each of its nodes, normal to the member; nothing without a gravity and water card.
void add_added_mass(const WaterSection& section, const MemberPlace& place);

}  // namespace tidearc
