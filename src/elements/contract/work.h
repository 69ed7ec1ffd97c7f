// The element work block: the one element that is current, and the element-level vectors beside it.
//
// A type's record is a standard-layout struct that overlays the work block, so that its members are the words of the
// record on TapeFiles and in the pool. Word 1 is the element number, word 2 KSTIF, from word 3 on stands LM.
#pragma once

#include <array>
#include <cstddef>
#include <type_traits>

#include "run/words.h"

namespace tidearc {

inline constexpr int longest_record = 13910;      ///< words of the longest record of any type  [-]
inline constexpr std::size_t most_freedoms = 60;  ///< degrees of freedom of an element         [-]

/// The head that all records share. LM(i) is the slot of local freedom i in the ID table, (c-1)*NUMNP + n for component
/// c of node n, 0 for a freedom that the element does not connect.
template <int NDOF>
struct ElementHead {
  int number;    ///< number on the element card
  int KSTIF;     ///< non-zero: the element's matrix has changed since it was last formed
  int LM[NDOF];  ///< location vector
};

/// Scratch of whoever treats an element; nothing in it outlives the element but what a pass copies back.
struct WorkBlock {
  alignas(double) std::array<std::byte, bytes_of_words(longest_record)> record{};  ///< the current element's record
  std::array<double, most_freedoms>
      EDISP{};                               ///< displacement change since the last state update, global  [length, rad]
  std::array<double, most_freedoms> EVEL{};  ///< velocities, global                                       [1/s]
  std::array<double, most_freedoms> EACC{};  ///< accelerations, global                                    [1/s2]
  std::array<double, most_freedoms> ERES{};  ///< resisting forces of the state, global                    [force]
  std::array<double, most_freedoms> EDAMP{};  ///< damping forces, global                                   [force]
  std::array<double, most_freedoms> EDYNF{};  ///< dynamic effective forces, global                         [force]
  std::array<double, most_freedoms * most_freedoms> EMAT{};  ///< element matrix, NDOF by NDOF, column by column
  double TIME = 0.0;  ///< time that goes with envelope extremes (ETIME; that is a macro of C)  [s]
  int IGRP = 0;       ///< running number of the current group                      [-]
  int KPRINT = 1;     ///< print code of a result pass: 1 the report, -1 the load file  [-]
};
inline WorkBlock element;
static_assert(std::is_trivially_copyable_v<WorkBlock>);

/// The current record as words: [0] number, [1] KSTIF, [2].. LM.
inline Word* record_words() { return reinterpret_cast<Word*>(element.record.data()); }
/// The current record as a type sees it.
template <class Record>
Record& current_record() {
  static_assert(std::is_standard_layout_v<Record> && std::is_trivially_copyable_v<Record>);
  static_assert(words(sizeof(Record)) <= longest_record && alignof(Record) <= alignof(double));
  return *reinterpret_cast<Record*>(element.record.data());
}
inline int* location_vector() { return record_words() + 2; }

}  // namespace tidearc
