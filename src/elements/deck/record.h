// The record of a deck that the wave reaches, 122 words.
#pragma once

#include <cstddef>
#include <type_traits>

#include "elements/contract/work.h"
#include "elements/deck/inundation.h"

namespace tidearc {

inline constexpr int deck_nodes = 4;
inline constexpr int deck_freedoms = 24;

struct DeckRecord {
  ElementHead<deck_freedoms> head;
  int NODE[deck_nodes];  ///< nodes that take the force, a quarter each
  int NODEC;             ///< centre node of the card, echoed only
  int OUTPUT;            ///< output code of the card, echoed only
  double corner[4];      ///< X0, Y0, Z0 and THETA                                  [length, degrees]
  double size[3];        ///< HIGH, LENGTH, WIDTH                                   [length]
  double PHI;            ///< solid ratio                                           [-]
  double R[3], CD[3], KI[3];
  double F0[2];
  double KS[3];
  int Nx, Ny;
  double centre[3];  ///< mean of the four nodes                                    [length]
  double F[3];       ///< force of the sea at the time of the last load             [force]
  double M[3];       ///< its moment about the centre                               [force*length]
  int spare[22];     ///< up to the length of the first portion
  int tail[4];       ///< no matrix
};
static_assert(std::is_standard_layout_v<DeckRecord> && std::is_trivially_copyable_v<DeckRecord>);
static_assert(sizeof(DeckRecord) == bytes_of_words(122));
static_assert(offsetof(DeckRecord, tail) == bytes_of_words(118));

/// Word (from 1) and count of the loads that the pass of the sea keeps: F and M.
inline constexpr int deck_sea_word = words(offsetof(DeckRecord, F)) + 1;
inline constexpr int deck_sea_words = 12;

}  // namespace tidearc
