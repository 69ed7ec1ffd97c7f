// Services for the input operation of a type: numbering of element cards, location vectors, column heights, masses and
// weights, the element writer, and the lines that every group's echo shares.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tidearc {

/// What an element card's number asks for.
enum class CardOrder {
  next,      ///< the next expected number
  gap,       ///< above it: the elements between are generated from the previous card
  sequence,  ///< out of sequence: fatal
};

/// Follows the numbers of a group's element cards: the first bears NFIRST, they rise, the last is NFIRST + NUMEL - 1.
class ElementNumbering {
 public:
  ElementNumbering(int first, int count) : first_(first), last_(first - 1LL), end_(first - 1LL + count) {}
  bool complete() const { return last_ >= end_; }
  int next() const { return static_cast<int>(last_ + 1); }
  CardOrder order(int number) const;
  void accept(int number) { last_ = number; }

 private:
  std::int64_t first_;
  std::int64_t last_;
  std::int64_t end_;
};

/// The element cards of a group, until its last element: next_card() reads and judges one, make_element(card) writes
/// its record and tells whether its nodes are inside the model. A gap before a card is filled from the card before it,
/// with that card's node increment (0 as 1) and all other data. Where nodes leave the model the rest of the gap is not
/// made: the data error has ended the analysis, and a deck can ask for a gap of any length. A card has number,
/// increment, NODEI, NODEJ, and `generated`, which is set for those that fill a gap.
template <class NextCard, class MakeElement>
void read_numbered_cards(ElementNumbering& numbering, NextCard&& next_card, MakeElement&& make_element);

/// Node number `node` plus k steps, saturated, so that a number beyond the nodes stays beyond them.
int stepped_node(int node, int increment, int k);

/// LM of nodes with `components` freedoms each (3: translations, 6: all), node after node, as slots of the ID table.
/// The nodes are within 1..NUMNP.
void form_location_vector(std::span<const int> node_numbers, int components, int* LM);
/// Every equation is connected to itself alone: the column heights before the first element.
void clear_column_heights();
/// Lowers the smallest equation connected to each equation of the element. Constrained freedoms connect nothing.
void lower_column_heights(const int* LM, int NDOF);
/// Adds a mass to the three translations of a node; or one to each, in the node's own axes.
void add_element_mass(int node, double mass);
void add_element_mass(int node, const std::array<double, 3>& mass);
/// Adds nodal loads in global directions, three forces or three forces and three moments, to a vector by equation (a
/// pool index; the generated patterns are such vectors). `load` is turned to the node's axes in place.
void add_nodal_load(int vector, int node, std::span<double> load);
/// Adds a weight, acting in the direction of gravity, to the self weight vector at a node.
void add_self_weight(int node, double weight);

/// Writes the current record: the first portion on the first element file, the tail, when it has one, on the second.
void write_element_record();

/// A label of up to 46 characters padded with dots to its equals sign, the 50th character.
std::string label_column(std::string_view label);
/// A line with a label and a count.
void echo_count(std::string_view label, int value);
/// The table of keys with which a group's echo ends.
void print_key_table();
/// Material, and the fluid that fills its bore (a diameter), per unit length: their densities times their areas.
double filled_tube(double density, double area, double fluid_density, double bore);
/// The close-down of a group with an element card out of sequence; the card's line with key ** has been printed.
[[noreturn]] void stop_out_of_sequence(int number, int expected);

template <class NextCard, class MakeElement>
void read_numbered_cards(ElementNumbering& numbering, NextCard&& next_card, MakeElement&& make_element) {
  decltype(next_card()) previous{};
  while (!numbering.complete()) {
    const auto card = next_card();
    const bool gap = numbering.order(card.number) == CardOrder::gap;
    bool inside = true;
    for (int number = numbering.next(); gap && inside && number < card.number; ++number) {
      const int increment = previous.increment == 0 ? 1 : previous.increment;
      auto between = previous;
      between.number = number;
      between.generated = true;
      between.NODEI = stepped_node(previous.NODEI, increment, number - previous.number);
      between.NODEJ = stepped_node(previous.NODEJ, increment, number - previous.number);
      inside = make_element(between);
    }
    make_element(card);
    numbering.accept(card.number);
    previous = card;
  }
}

}  // namespace tidearc
