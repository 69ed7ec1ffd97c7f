// Lumped masses by equation.
#pragma once

#include <type_traits>

namespace tidearc {

/// Pool indices of the vectors that model reading fills. Written by DATAIN while it carves.
struct MassBlock {
  int AMASS = 1;   ///< lumped mass by equation, reals, NEQ1                                 [mass]
  int MARKS = 1;   ///< integers, NEQ1: marks of the mass input, then column heights, then IDIAG  [-]
  int KEDATP = 1;  ///< element masses by equation, reals, NEQ1, added to AMASS after the last group  [mass];
                   ///< then the load vector of the pattern that is being read  [force]
};
inline MassBlock masses;
static_assert(std::is_trivially_copyable_v<MassBlock>);

inline constexpr int mark_mass = 2;  ///< mark of an equation to which a mass command has added

/// Lays AMASS and MARKS down (storage phase 3) when the equations have been numbered.
void carve_mass_vectors();
/// Lays the vectors down that element input fills (storage phase 4) and sets them to zero: element masses, self weight,
/// buoyancy, static current.
void carve_element_vectors();

/// Mass commands (sizes.NMASS cards): clears AMASS and the marks, reads and echoes each command and adds its masses at
/// the equations of its nodes, in the nodes' own axes; prints the table of command masses unless renumbering follows
/// (sizes.IBANDW not 0). A node out of range or a negative difference is a data error: the command is skipped.
void MASSIN();
/// Lumped mass summary of the final AMASS with its totals, on a new page.
void MASSUM();

}  // namespace tidearc
