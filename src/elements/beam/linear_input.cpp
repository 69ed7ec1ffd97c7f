// Input of type 3 groups, and of all groups in its cards.
#include "elements/beam/linear_input.h"

#include <array>

#include "elements/beam/operations.h"
#include "elements/beam/record.h"
#include "elements/beam/sea.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

void start_record(const LinearInput& input, const LinearCard& card) {
  LinearBeamRecord& beam = start_linear_record<LinearBeamRecord>(input, card);
  beam.head.KSTIF = 1;
  beam.KHIST = card.KHIST;
  beam.KGEOM = card.KGEOM;
  beam.KCAT = card.KCAT;
  beam.KINIT = card.KINIT;
  beam.HINGEI = card.HINGEI;
  beam.HINGEJ = card.HINGEJ;
  beam.AXIAL = card.axial;
}

/// Local stiffness from material, section and length, with the terms of the initial axial force where they are asked
/// for, hinges condensed.
void form_stiffness(const BeamMaterial& m, const LinearSection& s, LinearBeamRecord& beam) {
  const double L = beam.XL;
  EndBending about2 = end_bending(m.EMOD * s.I2, m.G(), s.AS3, L);
  EndBending about3 = end_bending(m.EMOD * s.I3, m.G(), s.AS2, L);
  if (beam.KGEOM == 1) {
    about2 = about2 + end_bending_of_force(beam.AXIAL, L);
    about3 = about3 + end_bending_of_force(beam.AXIAL, L);
  }
  beam.K = beam_stiffness(m.EMOD * s.area / L, m.G() * s.J / L, about2, about3, L);
  release_hinges(beam.HINGEI, beam.HINGEJ, beam.K);
}

/// Forces and displacements before any load: those of the card, and the initial axial force.
void set_initial_state(const LinearCard& card, LinearBeamRecord& beam) {
  std::ranges::copy(card.F0, beam.F0);
  std::ranges::copy(card.U0, beam.U);
  beam.F0[0] -= card.axial;
  beam.F0[6] += card.axial;
  local_forces(beam.K, beam.U, beam.F);
  for (std::size_t i = 0; i < beam_freedoms; ++i) beam.F[i] += beam.F0[i];
}

void finish_record(const LinearInput& input, const LinearCard& card, const PlacedBeam& placed) {
  LinearBeamRecord& beam = current_record<LinearBeamRecord>();
  const BeamMaterial& m = input.material(card);
  const LinearSection& s = input.section(card);
  place_linear_record(placed, beam);
  connect_beam(card.NODEI, card.NODEJ, beam.head.LM);
  form_stiffness(m, s, beam);
  set_initial_state(card, beam);
  add_mass_and_weight({card.NODEI, card.NODEJ, beam.XL, mass_per_length(m, s.area, s.inside_diameter),
                       weight_per_length(m, s.area, s.inside_diameter, s.water.growth_weight), beam.TELEM, beam.ECC,
                       input.counts.KFEM == 1});
  take_still_water(in_sea(beam), &beam.sea);
}

BeamPlace beam_place(const LinearInput& input, const LinearCard& card) {
  static constexpr BeamOffsets no_offsets{};
  const BeamOffsets& offsets = card.KECC > 0 ? input.offsets[card.KECC - 1] : no_offsets;
  return {card.number,
          card.NODEI,
          card.NODEJ,
          card.K,
          input.counts.convention,
          offsets.ECC,
          0.0,
          DeckPlace(card.line, whole_line)};
}

/// Echoes one element and writes its record. Nodes out of range leave a record without connections.
bool make_element(const LinearInput& input, const LinearRecordMaker& type, const LinearCard& card) {
  echo_linear_element(card.generated ? key_generated : key_read, card, node_distance(card.NODEI, card.NODEJ));
  if (card.KINIT != 0 && !card.generated) echo_initial_state(card);
  type.start(input, card);
  const BeamPlace place = beam_place(input, card);
  const bool inside = beam_nodes_in_range(place, card.place(6, 10), card.place(11, 15), card.place(21, 25));
  if (inside) type.finish(input, card, place_beam(place));
  write_element_record();
  return inside;
}

int hinge_code(int code, const LinearCard& card, Columns columns) {
  if (is_hinge_code(code)) return code;
  data_error(columns, "' ELEMENT',I6,'  HINGE CODE',I6,'  IS NOT MADE OF DIGITS 0 AND 1, ENTERING CHEC MODE'",
             card.number, code);
  return 0;
}

LinearCard next_card(const LinearInput& input) {
  LinearCard card = read_linear_card();
  if (input.numbering.order(card.number) == CardOrder::sequence) {
    echo_linear_element(key_sequence, card, node_distance(card.NODEI, card.NODEJ));
    stop_element_sequence(card.number, input.numbering.next());
  }
  card.MAT = property_number(card.MAT, input.counts.NMAT, card.number, card.place(26, 30));
  card.SEC = property_number(card.SEC, input.counts.NSEC, card.number, card.place(31, 35));
  card.KECC = offset_number(card.KECC, input.counts.NECC, card.number, card.place(66, 67));
  card.HINGEI = hinge_code(card.HINGEI, card, {73, 76});
  card.HINGEJ = hinge_code(card.HINGEJ, card, {77, 80});
  if (card.KINIT == 0) return card;
  // The further cards bear moments whatever the code.
  if (card.KCAT != 0) stop_initial_and_catenary(card.place(68, 72), card.number);
  read_initial_cards(card);
  return card;
}

}  // namespace

void read_linear_group(const LinearRecordMaker& type) {
  echo_count("NUMBER OF DEGREES OF FREEDOM PER ELEMENT", group.NDOF);
  echo_count("LENGTH OF ELEMENT INFORMATION", group.LEI);
  const LinearGroupCard counts = read_linear_group_card();
  const int mark = storage.NEXT;
  GeneralCoefficients* general = carve_table<GeneralCoefficients>(counts.NSEC);
  read_linear_properties(counts, general);
  LinearInput input{counts, read_offsets(counts.NECC), general, ElementNumbering(group.NFIRST, group.NUMEL)};
  echo_linear_heading();
  read_numbered_cards(
      input.numbering, [&] { return next_card(input); },
      [&](const LinearCard& card) { return make_element(input, type, card); });
  storage.NEXT = mark;
  print_key_table();
}

void INEL03() { read_linear_group({start_record, finish_record}); }

}  // namespace tidearc
