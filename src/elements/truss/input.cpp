// Input of a truss group: its cards, its records, and what the model gets from its elements.
#include "elements/contract/input.h"

#include <algorithm>
#include <array>
#include <numbers>
#include <optional>
#include <string>

#include "elements/contract/group.h"
#include "elements/truss/cards.h"
#include "elements/truss/geometry.h"
#include "elements/truss/law.h"
#include "elements/truss/operations.h"
#include "elements/truss/sea.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

constexpr const char* key_read = "  ";
constexpr const char* key_generated = "* ";
constexpr const char* key_sequence = "**";

/// The group's input at work.
struct GroupInput {
  TrussProperties properties;
  ElementNumbering numbering;
  bool zero_length = false;
};

bool inside(int node) { return node >= 1 && node <= sizes.NUMNP; }

/// Fills what a record takes over from the cards; the work block is cleared first.
TrussRecord& start_record(const GroupInput& input, const TrussCard& card) {
  std::fill_n(record_words(), group.LEI, 0);
  TrussRecord& truss = current_record<TrussRecord>();
  truss.head.number = card.number;
  truss.head.KSTIF = 1;
  truss.NODEI = card.NODEI;
  truss.NODEJ = card.NODEJ;
  truss.KGEOM = card.KGEOM;
  truss.KHIST = card.KHIST;
  truss.KBUCK = card.has_curve() ? static_cast<int>(law_curve) : card.KBUCK;
  truss.KLAST = never_formed;
  truss.MAT = card.MAT;
  truss.SEC = card.SEC;
  truss.KCAT = card.KCAT;
  truss.KWAVE = card.KWAVE;
  truss.KBUOY = card.KBUOY;
  truss.NGAUSS = input.properties.counts.NGAUSS;
  truss.material = input.properties.materials[card.MAT - 1];
  truss.section = input.properties.sections[card.SEC - 1];
  truss.general = input.properties.general[card.SEC - 1];
  truss.PNU = truss.material.poisson;
  std::ranges::copy(card.curve, truss.CURVE);
  return truss;
}

/// Ends, length and directions; false when the ends coincide.
bool place_record(TrussRecord& truss) {
  std::ranges::copy(coordinates(truss.NODEI), truss.XI);
  std::ranges::copy(coordinates(truss.NODEJ), truss.XJ);
  const TrussGeometry geometry = truss_geometry(truss.XI, truss.XJ);
  if (!(geometry.length > 0.0)) return false;
  truss.XL = geometry.length;
  std::ranges::copy(geometry.DIR, truss.DIR);
  wave_axes(std::span<const double, 3>(truss.DIR + 3, 3), truss.ROT);
  return true;
}

/// Half of the element's mass and weight, contained fluid and growth included, goes to each end.
void add_mass_and_weight(const TrussRecord& truss) {
  const TrussMaterial& m = truss.material;
  const TrussSection& section = truss.section;
  const double half = 0.5 * truss.XL;
  const double mass = half * filled_tube(m.mass, section.area, m.fluid_mass, section.inside_diameter);
  const double weight =
      half * (filled_tube(m.weight, section.area, m.fluid_weight, section.inside_diameter) + section.growth_weight);
  for (const int node : {truss.NODEI, truss.NODEJ}) {
    add_element_mass(node, mass);
    add_self_weight(node, weight);
  }
}

[[noreturn]] void stop_no_deformation(const TrussCard& card) {
  write(units.NDOUT, "/,5X,'****ERROR****',5X,'NO CORRESPONDING DEFORMATION',' CAN BE FOUND FROM INITIAL FORCE ',E12.4",
        card.force);
  complain(card.place(26, 35),
           "element " + std::to_string(card.number) + ": the curve bears the initial force nowhere");
  CLOSUP();
}

/// Law and state of an element whose ends are known, and its share in masses, weights and column heights.
void finish_record(GroupInput& input, const TrussCard& card, TrussRecord& truss) {
  if (!place_record(truss)) {
    write(units.NDOUT, "' ERROR ELEMENT',I6,' HAS ZERO LENGTH'", card.number);
    complain(DeckPlace(card.line, whole_line), "element " + std::to_string(card.number) + " has zero length");
    input.zero_length = true;
    return;
  }
  form_truss_law(truss);
  if (!set_initial_state(truss, card.force)) stop_no_deformation(card);
  if (truss.KBUCK == law_curve && card.force != 0.0) {
    write(units.NDOUT, "11X,'Initial Internal Deformation and its ratio to DY = ',1P,2E13.5", truss.EXT,
          truss.EXT / truss.DY);
  }
  const std::array<int, 2> ends = {truss.NODEI, truss.NODEJ};
  form_location_vector(ends, 3, truss.head.LM);
  lower_column_heights(truss.head.LM, truss_freedoms);
  add_mass_and_weight(truss);
  take_still_water(truss);
}

double distance_of(const TrussCard& card) {
  if (!inside(card.NODEI) || !inside(card.NODEJ)) return 0.0;
  return truss_geometry(coordinates(card.NODEI), coordinates(card.NODEJ)).length;
}

/// Echoes one element and writes its record. Nodes out of range leave a record without connections.
bool make_element(GroupInput& input, const TrussCard& card) {
  echo_element(card.generated ? key_generated : key_read, card, distance_of(card));
  if (!card.generated && card.has_curve()) echo_curve(card);
  TrussRecord& truss = start_record(input, card);
  const bool I_inside = node_in_range(card.NODEI, sizes.NUMNP, card.place(6, 10));
  const bool J_inside = node_in_range(card.NODEJ, sizes.NUMNP, card.place(11, 15));
  if (I_inside && J_inside) finish_record(input, card, truss);
  write_element_record();
  return I_inside && J_inside;
}

TrussCard next_card(GroupInput& input) {
  TrussCard card = read_truss_card();
  if (input.numbering.order(card.number) == CardOrder::sequence) {
    echo_element(key_sequence, card, distance_of(card));
    stop_out_of_sequence(card.number, input.numbering.next());
  }
  card.MAT = property_number(card.MAT, input.properties.counts.NMAT, card.number, 16);
  card.SEC = property_number(card.SEC, input.properties.counts.NSEC, card.number, 21);
  if (card.has_curve()) read_curve_card(card);
  return card;
}

void read_elements(GroupInput& input) {
  read_numbered_cards(
      input.numbering, [&] { return next_card(input); },
      [&](const TrussCard& card) { return make_element(input, card); });
}

}  // namespace

void INEL01() {
  echo_count("NUMBER OF DEGREES OF FREEDOM PER ELEMENT", group.NDOF);
  echo_count("LENGTH OF ELEMENT INFORMATION", group.LEI);
  const TrussGroupCard counts = read_truss_group_card();
  const int mark = storage.NEXT;
  GroupInput input{read_truss_properties(counts), ElementNumbering(group.NFIRST, group.NUMEL)};
  echo_element_heading();
  read_elements(input);
  storage.NEXT = mark;
  print_key_table();
  if (input.zero_length) CLOSUP();
}

}  // namespace tidearc
