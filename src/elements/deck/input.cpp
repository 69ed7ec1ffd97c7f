// Input of a deck inundation group: four cards for each element, and their records.
#include "elements/contract/input.h"

#include <algorithm>
#include <array>
#include <string>

#include "elements/contract/group.h"
#include "elements/deck/operations.h"
#include "elements/deck/record.h"
#include "model/control.h"
#include "model/gravity.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr int downward_Z = -3;
constexpr int most_strips = 1000;  // on a side; more would only slow a run down
constexpr const char* key_read = "  ";
constexpr const char* key_sequence = "**";

/// The four cards of a deck.
struct DeckCards {
  int number = 0;
  std::array<int, deck_nodes> NODE{};
  int NODEC = 0, OUTPUT = 0;
  int Nx = 0, Ny = 0;
  std::array<double, 4> corner{};
  std::array<double, 3> size{};
  double PHI = 0.0;
  std::array<double, 3> R{}, CD{}, KI{};
  std::array<double, 2> F0{};
  std::array<double, 3> KS{};
  std::int64_t line = 0;  ///< deck line of the first card
};

DeckCards read_first_card() {
  DeckCards c;
  read(units.NDIN, "6I5,4F10.0,I5", c.number, c.NODE, c.NODEC, c.corner, c.OUTPUT);
  c.line = deck_line();
  return c;
}

void read_other_cards(DeckCards& c) {
  read(units.NDIN, "2I5,7F10.0", c.Nx, c.Ny, c.size, c.PHI, c.R);
  read(units.NDIN, "8F10.0", c.CD, c.KI, c.F0);
  read(units.NDIN, "3F10.0", c.KS);
}

/// What the cards leave at 0 is 1.
void take_defaults(DeckCards& c) {
  if (c.PHI == 0.0) c.PHI = 1.0;
  for (double& factor : c.R) {
    if (factor == 0.0) factor = 1.0;
  }
  for (int* strips : {&c.Nx, &c.Ny}) {
    if (*strips < 1) *strips = 1;
    if (*strips > most_strips) *strips = most_strips;
  }
}

void echo_heading() {
  const int out = units.NDOUT;
  write(out, "/,' ELEMENT INFORMATION',/");
  write(
      out,
      "' KEY ELEM  NODE1  NODE2  NODE3  NODE4  NODEC           X0           Y0           Z0        THETA OUTPUT',/,"
      "'       NX     NY         HIGH       LENGTH        WIDTH          PHI           RX           RY           RZ',/,"
      "'                CDX          CDY          CDZ          KIX          KIY          KIZ          FX0          "
      "FY0',/,"
      "'                KSX          KSY          KSZ',/");
}

void echo_first_card(const char* key, const DeckCards& c) {
  write(units.NDOUT, "1X,A2,1X,I5,5I7,4G13.5,I7", key, c.number, c.NODE, c.NODEC, c.corner, c.OUTPUT);
}

void echo_other_cards(const DeckCards& c) {
  const int out = units.NDOUT;
  write(out, "4X,I5,I7,7G13.5", c.Nx, c.Ny, c.size, c.PHI, c.R);
  write(out, "6X,8G13.5", c.CD, c.KI, c.F0);
  write(out, "6X,3G13.5", c.KS);
}

void fill_record(const DeckCards& c, DeckRecord& deck) {
  deck.head.number = c.number;
  deck.NODEC = c.NODEC;
  deck.OUTPUT = c.OUTPUT;
  deck.PHI = c.PHI;
  deck.Nx = c.Nx;
  deck.Ny = c.Ny;
  std::ranges::copy(c.NODE, deck.NODE);
  std::ranges::copy(c.corner, deck.corner);
  std::ranges::copy(c.size, deck.size);
  std::ranges::copy(c.R, deck.R);
  std::ranges::copy(c.CD, deck.CD);
  std::ranges::copy(c.KI, deck.KI);
  std::ranges::copy(c.F0, deck.F0);
  std::ranges::copy(c.KS, deck.KS);
}

bool nodes_in_range(const DeckCards& c) {
  bool inside = true;
  for (std::size_t n = 0; n < deck_nodes; ++n) {
    const int first = static_cast<int>(6 + 5 * n);
    if (!node_in_range(c.NODE[n], sizes.NUMNP, DeckPlace(c.line, {first, first + 4}))) inside = false;
  }
  return inside;
}

void check_size(const DeckCards& c) {
  if (std::ranges::none_of(c.size, [](double side) { return side < 0.0; })) return;
  report_data_error(DeckPlace(c.line + 1, {11, 40}),
                    format("' ELEMENT',I6,'  HAS A NEGATIVE SIZE, ENTERING CHEC MODE'", c.number));
}

/// The mean of the nodes, about which the moments are formed, and the location vector. The element has no stiffness and
/// connects no equations.
void place(DeckRecord& deck) {
  for (const int node : deck.NODE) {
    const std::array<double, 3> x = coordinates(node);
    for (std::size_t i = 0; i < 3; ++i) deck.centre[i] += 0.25 * x[i];
  }
  form_location_vector(deck.NODE, 6, deck.head.LM);
}

void make_element(const DeckCards& cards) {
  std::fill_n(record_words(), group.LEI, 0);
  DeckRecord& deck = current_record<DeckRecord>();
  fill_record(cards, deck);
  if (nodes_in_range(cards)) place(deck);
  write_element_record();
}

void check_gravity() {
  if (gravity_axis() == downward_Z) return;
  write(units.NDOUT, "' ERROR! ELEMENT ASSUMES GRAVITY IS IN GLOBAL -Z D'");
  complain(not_on_deck, "a deck inundation element needs gravity along -Z");
  CLOSUP();
}

/// The four cards of the next deck, echoed. A deck stands for itself: none is generated between two cards.
DeckCards next_deck(const ElementNumbering& numbering) {
  DeckCards cards = read_first_card();
  if (numbering.order(cards.number) != CardOrder::next) {
    echo_first_card(key_sequence, cards);
    stop_out_of_sequence(cards.number, numbering.next());
  }
  read_other_cards(cards);
  take_defaults(cards);
  echo_first_card(key_read, cards);
  echo_other_cards(cards);
  check_size(cards);
  return cards;
}

}  // namespace

void INEL20() {
  echo_count("NUMBER OF DEGREES OF FREEDOM PER ELEMENT", group.NDOF);
  echo_count("LENGTH OF ELEMENT INFORMATION", group.LEI);
  check_gravity();
  echo_heading();
  ElementNumbering numbering(group.NFIRST, group.NUMEL);
  while (!numbering.complete()) {
    const DeckCards cards = next_deck(numbering);
    make_element(cards);
    numbering.accept(cards.number);
  }
  print_key_table();
}

}  // namespace tidearc
