// Input of groups in the cards of the linear beam: what its types share.
#pragma once

#include <algorithm>

#include "elements/beam/cards.h"
#include "elements/beam/linear_cards.h"
#include "elements/beam/placing.h"
#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "elements/contract/work.h"

namespace tidearc {

/// A group's input at work.
struct LinearInput {
  LinearGroupCard counts;
  BeamOffsets* offsets;
  GeneralCoefficients* general;  ///< of each section; zero without load code 7
  ElementNumbering numbering;

  const BeamMaterial& material(const LinearCard& card) const { return linear_materials()[card.MAT - 1]; }
  const LinearSection& section(const LinearCard& card) const { return linear_sections(counts.NMAT)[card.SEC - 1]; }
};

/// How a type makes its record in the work block: from the card; then from its place, when its nodes are in the model.
struct LinearRecordMaker {
  void (*start)(const LinearInput& input, const LinearCard& card);
  void (*finish)(const LinearInput& input, const LinearCard& card, const PlacedBeam& placed);
};

/// Reads and echoes a whole group, makes and writes its records.
void read_linear_group(const LinearRecordMaker& type);

/// Clears the work block and fills what the records of all these types take over from the cards.
template <class Record>
Record& start_linear_record(const LinearInput& input, const LinearCard& card) {
  std::fill_n(record_words(), group.LEI, 0);
  Record& beam = current_record<Record>();
  beam.head.number = card.number;
  beam.NODEI = card.NODEI;
  beam.NODEJ = card.NODEJ;
  beam.MAT = card.MAT;
  beam.SEC = card.SEC;
  beam.KWAVE = card.KWAVE;
  beam.KBUOY = card.KBUOY;
  beam.KECC = card.KECC;
  beam.NGAUSS = input.counts.NGAUSS;
  beam.KFEM = input.counts.KFEM;
  if (card.KECC > 0) std::ranges::copy(input.offsets[card.KECC - 1].ECC, beam.ECC);
  beam.water = input.section(card).water;
  beam.general = input.general[card.SEC - 1];
  return beam;
}

/// Fills what follows from the place.
template <class Record>
void place_linear_record(const PlacedBeam& placed, Record& beam) {
  beam.KNODE = placed.KNODE;
  beam.XL = placed.local.length;
  std::ranges::copy(placed.local.axes, beam.TELEM);
}

}  // namespace tidearc
