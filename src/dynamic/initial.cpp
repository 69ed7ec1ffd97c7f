// Initial conditions of a dynamic macro: velocities and accelerations from cards, or as the analysis before left them.
#include <array>
#include <string>

#include "dynamic/command_marks.h"
#include "dynamic/commands.h"
#include "model/control.h"
#include "model/nodes.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

constexpr int most_nodes = 11;  ///< of a card
struct InitialCard {
  int component = 0;
  double velocity = 0.0;
  double acceleration = 0.0;
  std::array<int, most_nodes> nodes{};
};

InitialCard read_card() {
  InitialCard card;
  read(units.NDIN, "I5,2F10.0,11I5", card.component, card.velocity, card.acceleration, card.nodes);
  return card;
}

void clear_motion() {
  for (const int vector : {arrays.VEL, arrays.ACC, arrays.DSTEP}) clear_vector(vector);
}

/// Nodes of a card up to the first entry below 1.
std::size_t listed(const InitialCard& card) {
  std::size_t n = 0;
  while (n < card.nodes.size() && card.nodes[n] >= 1) ++n;
  return n;
}

/// Echoes a card and checks it; false when its component is wrong.
bool check_card(const InitialCard& card) {
  const bool good = card.component >= 1 && card.component <= 6;
  const std::string_view direction = good ? direction_of(card.component).substr(0, 2) : component_mark;
  write(units.NDOUT, "8X,A2,4X,2E15.5,11I6", direction, card.velocity, card.acceleration,
        std::span<const int>(card.nodes).first(listed(card)));
  if (!good) note_mark({1, 5}, "there is no component " + std::to_string(card.component));
  return good;
}

/// Sets the values at the card's nodes; `applying` is false in a data check, in which only the nodes are checked.
void follow(const InitialCard& card, bool component_good, bool applying) {
  for (std::size_t i = 0; i < listed(card); ++i) {
    const int column = 26 + 5 * static_cast<int>(i);
    if (!node_in_range(card.nodes[i], sizes.NUMNP, Columns{column, column + 4})) continue;
    if (!component_good || !applying) continue;
    const int e = equation_of(card.nodes[i], card.component);
    if (e > sizes.NEQ) continue;
    equation_vector(arrays.VEL)(e) = card.velocity;
    equation_vector(arrays.ACC)(e) = card.acceleration;
  }
}

void read_cards(int count, bool applying) {
  write(units.NDOUT,
        "/,5X,'INITIAL VEL AND ACC CONDITIONS INPUT THRU CARDS',/,/,5X,'DIRECTION',7X,'VELOCITY',7X,'ACCELRN',3X,"
        "'LIST OF NODES',/");
  if (applying) clear_motion();
  bool marked = false;
  for (int i = 1; i <= count; ++i) {
    const InitialCard card = read_card();
    const bool good = check_card(card);
    marked = marked || !good;
    follow(card, good, applying);
  }
  if (marked) print_mark_table();
}

void print_table() {
  write(units.NDOUT,
        "'1',/,' INITIAL CONDITIONS FOR DYNAMIC ANALYSIS',/,/,3X,'EQUATION',9X,'DISPLACEMENT',10X,'VELOCITY',6X,"
        "'ACCELERATION',/");
  const ConstReals U = equation_vector(arrays.U);
  const ConstReals VEL = equation_vector(arrays.VEL);
  const ConstReals ACC = equation_vector(arrays.ACC);
  for (int e = 1; e <= sizes.NEQ; ++e) write(units.NDOUT, "I11,3X,3E18.5", e, U(e), VEL(e), ACC(e));
}

}  // namespace

void read_initial_conditions(int count) {
  const bool applying = executing();
  put_text(units.NDOUT, "\n");
  write_framed(" INITIAL CONDITION GENERATION COMMANDS", '*', 38);
  if (count < 0) {
    write(units.NDOUT, "/,' (NONE)  ZERO INITIAL VEL AND ACC CONDITIONS'");
    if (applying) clear_motion();
  } else if (count == 0) {
    write(units.NDOUT, "/,' (NONE)  INITIAL CONDITIONS OF CURRENT RESULTS SEQ.NO.'");
  } else {
    read_cards(count, applying);
  }
  if (applying) print_table();
}

}  // namespace tidearc
