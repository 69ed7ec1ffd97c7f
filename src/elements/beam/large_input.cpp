// Input of type 2 and type 27 groups: their cards, their records, and what the model gets from their elements.
#include <algorithm>
#include <array>

#include "elements/beam/cards.h"
#include "elements/beam/large_cards.h"
#include "elements/beam/large_state.h"
#include "elements/beam/natural.h"
#include "elements/beam/operations.h"
#include "elements/beam/placing.h"
#include "elements/beam/record.h"
#include "elements/beam/sea.h"
#include "elements/contract/group.h"
#include "elements/contract/input.h"
#include "model/nodes.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

struct LargeInput {
  LargeGroupCard counts;
  LargeProperties properties;
  BeamOffsets* offsets;
  ElementNumbering numbering;
};

/// Fills what a record takes over from the cards; the work block is cleared first.
LargeBeam& start_record(const LargeInput& input, const LargeCard& card) {
  std::fill_n(record_words(), group.LEI, 0);
  LargeBeam& beam = current_record<LargeBeam>();
  beam.head.number = card.number;
  beam.head.KSTIF = 1;
  beam.NODEI = card.NODEI;
  beam.NODEJ = card.NODEJ;
  beam.KGI = card.KGI;
  beam.KGE = card.KGE;
  beam.KSD = card.KSD;
  beam.KECC = card.KECC;
  beam.MAT = card.MAT;
  beam.SEC = card.SEC;
  beam.KOUT = card.KOUT;
  beam.KWAVE = card.KWAVE;
  beam.KBUOY = card.KBUOY;
  beam.KCAT = card.KCAT;
  beam.KINIT = card.KINIT;
  beam.KPOST = input.counts.KPOST;
  beam.KFEM = input.counts.KFEM;
  beam.NSUB = input.counts.NSUB;
  beam.AXIAL = card.axial;
  beam.material = input.properties.materials[card.MAT - 1].material;
  beam.ALPHA = input.properties.materials[card.MAT - 1].ALPHA;
  beam.section = input.properties.sections[card.SEC - 1];
  beam.general = input.properties.general[card.SEC - 1];
  beam.PNU = beam.material.poisson;
  if (card.KECC > 0) std::ranges::copy(input.offsets[card.KECC - 1].ECC, beam.ECC);
  return beam;
}

void set_constants(LargeBeam& beam) {
  const BeamMaterial& m = beam.material;
  beam.EI2L = m.EMOD * beam.section.IY / beam.XL;
  beam.EI3L = m.EMOD * beam.section.IZ / beam.XL;
  beam.GJL = m.G() * beam.section.J / beam.XL;
  beam.EAL = m.EMOD * beam.section.area / beam.XL;
}

/// Frame and chord at input; a vertical member's axes keep the told directions.
void set_frame(const PlacedBeam& placed, LargeBeam& beam) {
  beam.KNODE = placed.KNODE;
  beam.XL = placed.local.length;
  std::ranges::copy(placed.local.axes, beam.TELEM);
  for (std::size_t i = 0; i < 3; ++i) beam.CHORD[i] = beam.XL * beam.TELEM[i];
  natural_transformation(beam.TELEM, beam.XL, beam.TGLOB);
}

/// Deformations of the card, and the extension that bears the initial axial force; forces of the card are a constant
/// part (as is the axial force of a member that no extension can bear). Until the first determination the matrix knows
/// an axial force only where KGI asks for it.
void set_initial_state(const LargeCard& card, LargeBeam& beam) {
  std::ranges::copy(card.Q0, beam.Q0);
  std::ranges::copy(card.E0, beam.ENAT);
  if (beam.EAL != 0.0) beam.ENAT[5] += card.axial / beam.EAL;
  recover_forces({}, beam);
  beam.P = beam.KGI == 1 ? card.axial : 0.0;
}

void finish_record(const LargeInput& input, const LargeCard& card, const BeamPlace& place, LargeBeam& beam) {
  set_frame(place_beam(place), beam);
  set_constants(beam);
  set_initial_state(card, beam);
  connect_beam(card.NODEI, card.NODEJ, beam.head.LM);
  const LargeSection& s = beam.section;
  add_mass_and_weight({card.NODEI, card.NODEJ, beam.XL, mass_per_length(beam.material, s.area, s.inside_diameter),
                       weight_per_length(beam.material, s.area, s.inside_diameter, s.water.growth_weight), beam.TELEM,
                       beam.ECC, input.counts.KFEM == 1});
  take_still_water(in_sea(beam), &beam.sea);
}

/// Echoes one element and writes its record. Nodes out of range leave a record without connections.
bool make_element(const LargeInput& input, const LargeCard& card) {
  echo_large_element(card.generated ? key_generated : key_read, card, node_distance(card.NODEI, card.NODEJ));
  if (!card.generated) echo_initial_state(card);
  LargeBeam& beam = start_record(input, card);
  const BeamPlace place{card.number,
                        card.NODEI,
                        card.NODEJ,
                        card.K,
                        input.counts.convention,
                        beam.ECC,
                        beam.section.angle,
                        DeckPlace(card.line, whole_line)};
  const bool inside = beam_nodes_in_range(place, card.place(6, 10), card.place(11, 15), card.place(21, 25));
  if (inside) finish_record(input, card, place, beam);
  write_element_record();
  return inside;
}

/// A code that announces no known cards is a data error, and none are read.
int initial_code(const LargeCard& card) {
  if (card.KINIT >= 0 && card.KINIT <= 3) return card.KINIT;
  data_error({86, 90}, "' ELEMENT',I6,'  INITIAL CODE',I6,'  IS NOT 0, 1, 2 OR 3, ENTERING CHEC MODE'", card.number,
             card.KINIT);
  return 0;
}

LargeCard next_card(const LargeInput& input) {
  LargeCard card = read_large_card();
  if (input.numbering.order(card.number) == CardOrder::sequence) {
    echo_large_element(key_sequence, card, node_distance(card.NODEI, card.NODEJ));
    stop_element_sequence(card.number, input.numbering.next());
  }
  card.MAT = property_number(card.MAT, input.counts.NMAT, card.number, card.place(26, 30));
  card.SEC = property_number(card.SEC, input.counts.NSEC, card.number, card.place(31, 35));
  card.KECC = offset_number(card.KECC, input.counts.NECC, card.number, card.place(76, 80));
  card.KINIT = initial_code(card);
  if (card.has_forces() && card.KCAT != 0) stop_initial_and_catenary(card.place(81, 90), card.number);
  read_initial_cards(card);
  return card;
}

void read_elements(LargeInput& input) {
  read_numbered_cards(
      input.numbering, [&] { return next_card(input); },
      [&](const LargeCard& card) { return make_element(input, card); });
}

void read_group(bool vortex) {
  echo_count("NUMBER OF DEGREES OF FREEDOM PER ELEMENT", group.NDOF);
  echo_count("LENGTH OF ELEMENT INFORMATION", group.LEI);
  const LargeGroupCard counts = vortex ? read_vortex_group_card() : read_large_group_card();
  const int mark = storage.NEXT;
  const LargeProperties properties = read_large_properties(counts);
  LargeInput input{counts, properties, read_offsets(counts.NECC), ElementNumbering(group.NFIRST, group.NUMEL)};
  echo_large_heading();
  read_elements(input);
  storage.NEXT = mark;
  print_key_table();
}

}  // namespace

void INEL02() { read_group(false); }
void INEL27() { read_group(true); }

}  // namespace tidearc
