// The one table of element types: titles, storage counts, and the operations of those that are built.
#include <array>
#include <cstddef>

#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/contract/types.h"
#include "elements/deck/operations.h"
#include "elements/deck/record.h"
#include "elements/truss/operations.h"
#include "elements/truss/record.h"

namespace tidearc {

namespace {

constexpr int type_count = 28;
constexpr int variable = 0;  // the type's input sets the count

constexpr ElementOperations truss = {INEL01, SDET01, RESP01, DYNF01, STIF01, EVNT01, ENVO01, PRNT01, RENV01, SEAL01};
constexpr ElementOperations linear_beam = {INEL03,  SDET03, RESP03, DYNF03, STIF03,
                                           nullptr, ENVO03, PRNT03, RENV03, SEAL03};
constexpr ElementOperations wave_beam = {INEL07,  SDET07, RESP07,  nullptr, nullptr,
                                         nullptr, ENVO07, nullptr, RENV07,  SEAL07};
constexpr ElementOperations large_beam = {INEL02,  SDET02, RESP02, DYNF02, STIF02,
                                          nullptr, ENVO02, PRNT02, RENV02, SEAL02};
constexpr ElementOperations vortex_beam = {INEL27,  SDET02, RESP02, DYNF02, STIF02,
                                           nullptr, ENVO27, PRNT02, RENV02, SEAL27};
constexpr ElementOperations deck = {INEL20,  SDET20,  RESP20, nullptr, nullptr,
                                    nullptr, nullptr, PRNT20, nullptr, SEAL20};
constexpr ElementOperations none = {};

// clang-format off
constexpr std::array<ElementType, type_count> table = {{
    // type, title, NDOF, LFIX, LTAN, LAUX, word of the stiffness pass, nodes in the graph, words of the sea: first, count; operations
    {1, "THREE DIMENSIONAL TRUSS ELEMENTS", 6, 314, 42, 2, truss_KLAST_word, 2, truss_sea_word, 12, truss},
    {2, "3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS", 12, 668, 156, 2, 0, 2, large_sea_word, large_sea_words, large_beam},
    {3, "LINEAR BEAM ELEMENT", 12, 530, 156, 2, 0, 2, linear_sea_word, linear_sea_words, linear_beam},
    {4, "INELASTIC BEAM-COLUMN ELEMENTS - PARALLEL", 12, 1010, 156, 2, 0, 2, 0, 0, none},
    {5, "THREE DIMENSIONAL GAP-FRICTION ELEMENTS", 12, 184, 12, 2, 0, 1, 0, 0, none},
    {6, "TWO DIMENSIONAL ", variable, variable, variable, variable, 0, 8, 0, 0, none},
    {7, "LINEAR BEAM WAVE ELEMENT", 12, 296, 2, 2, 0, 0, wave_beam_sea_word, linear_sea_words, wave_beam},
    {8, "MARSHALL STRUT ELEMENTS", 6, 308, 42, 2, 0, 2, 0, 0, none},
    {9, "TRUL NEAR FIELD SOIL-PILE INTERACTION ELEMENTS", 6, 384, 42, 2, 0, 1, 0, 0, none},
    {10, "THREE DIMENSIONAL CABLE ELEMENTS", 6, 92, 18, 2, 0, 2, 0, 0, none},
    {11, "SHIM ELEMENTS", 6, 62, 0, 0, 0, 2, 0, 0, none},
    {12, "", 0, 0, 0, 0, 0, 2, 0, 0, none},
    {13, "INELASTIC BM-COL WITH TWO GAUSSES STATION ELEMENTS", 12, 1214, 2, 156, 0, 2, 0, 0, none},
    {14, "INELASTIC BEAM-COLUMN ELEMENTS", 12, 1116, 156, 2, 0, 2, 0, 0, none},
    {15, "ANCHOR-SPRING", 6, 124, 2, 2, 0, 2, 0, 0, none},
    {16, "JOINT STIFFNESS", 6, 232, 2, 2, 0, 0, 0, 0, none},
    {17, "JOINT DAMPER", 6, 234, 2, 2, 0, 0, 0, 0, none},
    {18, "3D FIBER BEAM COLUMN ELEMENT", 12, 3524, 288, 2, 0, 2, 0, 0, none},
    {19, "3D FIBER HINGE BEAM COLUMN ELEMENT", 12, 3800, 288, 2, 0, 2, 0, 0, none},
    {20, "DECK INUNDATION ELEMENT", 24, 118, 2, 2, 0, 0, deck_sea_word, deck_sea_words, deck},
    {21, "INELASTIC BEAM-COLUMN ELEMENTS - PARALLEL", 12, 1130, 156, 4, 0, 2, 0, 0, none},
    {22, "THREE DIMENSIONAL STIFFNESS ELEMENTS", variable, 2892, 2, 2, 0, 0, 0, 0, none},
    {23, "THREE DIMENSIONAL SLIP-SLIDE ELEMENTS", variable, 326, 44, 2, 0, 0, 0, 0, none},
    {24, "LARGE-BODY WAVE ELEMENT", 6, 118, 42, 2, 0, 0, 0, 0, none},
    {25, "DIFFRACTION-BASED WAVE ELEMENT", 6, 13906, 2, 2, 0, 0, 0, 0, none},
    {26, "LUMPED NODE ELEMENT", 6, 454, 42, 2, 0, 0, 0, 0, none},
    {27, "3-D LINEAR BEAM-COLUMN WITH GEOMETRIC STIFFNESS AND VIV", 12, 1326, 156, 2, 0, 0, large_sea_word, vortex_sea_words, vortex_beam},
    {28, "PLATE BENDING ELEMENTS", 24, 682, 488, 2, 0, 0, 0, 0, none},
}};
// clang-format on

}  // namespace

const ElementType& element_type(int ITYPE) {
  const bool known = ITYPE >= 2 && ITYPE <= type_count;
  return table[static_cast<std::size_t>(known ? ITYPE : 1) - 1];
}

}  // namespace tidearc
