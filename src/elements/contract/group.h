// The element group: what all elements of a run of one type share, kept as one record of 2022 words per group.
#pragma once

#include <array>
#include <type_traits>

#include "run/words.h"

namespace tidearc {

inline constexpr int group_property_words = 2000;

/// Words of a group's record. Written while the group's cards are read; read back at the head of every pass.
struct GroupRecord {
  int ITYPE = 0;                 ///< type number as on the card; outside 2..28 it is a truss group
  int NUMEL = 0;                 ///< elements in the group                                         [-]
  int NFIRST = 1;                ///< number of the first element                                   [-]
  std::array<char, 40> TITLE{};  ///< group title, on every report of the group
  int LEI = 0;                   ///< words of an element record: LFIX + LTAN + LAUX                [-]
  int LFIX = 0;                  ///< words of its first portion, which state determination may change
  int LTAN = 0;                  ///< first count of its tail, which the stiffness pass writes      [-]
  int LAUX = 0;                  ///< second count of its tail                                      [-]
  int NDOF = 0;                  ///< degrees of freedom per element                                [-]
  double BETAO = 0.0;            ///< damping coefficient on the initial stiffness                  [s]
  double BETAT = 0.0;            ///< damping coefficient on the tangent stiffness                  [s]
  std::array<Word, group_property_words> properties{};  ///< owned by the type
};
static_assert(std::is_trivially_copyable_v<GroupRecord> && std::is_standard_layout_v<GroupRecord>);
static_assert(words(sizeof(GroupRecord)) == 2022);
inline constexpr int group_words = words(sizeof(GroupRecord));

/// The group that is current in a pass or in input, and what its input and the loading keep about all groups.
inline GroupRecord group;
/// Whether its elements have stiffness-proportional damping.
inline bool group_damps() { return group.BETAO != 0.0 || group.BETAT != 0.0; }

/// Written by ELDATA; everybody else reads.
struct ElementCountBlock {
  int NELTOT = 0;  ///< elements of all groups; saturates where a 32-bit count ends   [-]
  int MAXLEI = 0;  ///< longest element record                                       [-]
};
inline ElementCountBlock element_counts;
static_assert(std::is_trivially_copyable_v<ElementCountBlock>);

}  // namespace tidearc
