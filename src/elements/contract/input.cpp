// Services for the input operations of the element types.
#include "elements/contract/input.h"

#include <algorithm>
#include <numbers>
#include <string>

#include "elements/contract/group.h"
#include "elements/contract/work.h"
#include "model/gravity.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/patterns.h"
#include "run/layout.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

CardOrder ElementNumbering::order(int number) const {
  const bool first_card = last_ < first_;
  if (number <= last_ || number > end_ || (first_card && number != first_)) return CardOrder::sequence;
  return number == last_ + 1 ? CardOrder::next : CardOrder::gap;
}

int stepped_node(int node, int increment, int k) {
  constexpr std::int64_t beyond = 1000000000;
  return static_cast<int>(std::clamp(node + static_cast<std::int64_t>(increment) * k, -beyond, beyond));
}

void form_location_vector(std::span<const int> node_numbers, int components, int* LM) {
  int i = 0;
  for (const int node : node_numbers) {
    for (int c = 1; c <= components; ++c) LM[i++] = (c - 1) * sizes.NUMNP + node;
  }
}

void clear_column_heights() {
  const Integers heights = pool.integers(masses.MARKS, NEQ1());
  for (int e = 1; e <= NEQ1(); ++e) heights(e) = e;
}

void lower_column_heights(const int* LM, int NDOF) {
  int smallest = NEQ1();
  std::array<int, most_freedoms> equations{};
  for (int i = 0; i < NDOF; ++i) {
    const int e = LM[i] < 1 ? 0 : equation_at(LM[i]);
    const bool free = e >= 1 && e <= sizes.NEQ;
    equations[static_cast<std::size_t>(i)] = free ? e : 0;
    if (free) smallest = std::min(smallest, e);
  }
  const Integers heights = pool.integers(masses.MARKS, NEQ1());
  for (const int e : equations) {
    if (e > 0) heights(e) = std::min(heights(e), smallest);
  }
}

void add_element_mass(int node, double mass) { add_element_mass(node, {mass, mass, mass}); }

void add_element_mass(int node, const std::array<double, 3>& mass) {
  const Reals vector = pool.reals(masses.KEDATP, NEQ1());
  for (int c = 1; c <= 3; ++c) {
    const int e = equation_of(node, c);
    if (e >= 1 && e <= NEQ1()) vector(e) += mass[static_cast<std::size_t>(c - 1)];
  }
}

void add_nodal_load(int vector, int node, std::span<double> load) {
  const Reals sum = pool.reals(vector, NEQ1());
  for (std::size_t first = 0; first + 3 <= load.size(); first += 3) to_local(node, load.data() + first);
  int c = 0;
  for (const double value : load) {
    const int e = equation_of(node, ++c);
    if (e >= 1 && e <= NEQ1()) sum(e) += value;
  }
}

void add_self_weight(int node, double weight) {
  std::array<double, 3> force = gravity.direction;
  for (double& component : force) component *= weight;
  add_nodal_load(patterns.KSELFW, node, force);
}

double filled_tube(double density, double area, double fluid_density, double bore) {
  return density * area + fluid_density * (std::numbers::pi / 4.0 * bore * bore);
}

void write_element_record() {
  const Word* record = record_words();
  FILE(units.NT1, "WRIT", group.LFIX, record);
  const int tail = group.LTAN + group.LAUX;
  if (tail > 0) FILE(units.NT13, "WRIT", tail, record + group.LFIX);
}

std::string label_column(std::string_view label) {
  constexpr std::size_t equals_at = 50;
  std::string line(label);
  line += ' ';
  line.resize(equals_at - 2, '.');
  return line + " =";
}

void echo_count(std::string_view label, int value) {
  // A count that the usual field cannot hold gets a wider one rather than asterisks.
  if (value < 100000) {
    write(units.NDOUT, "5X,A50,I5", label_column(label), value);
  } else {
    write(units.NDOUT, "5X,A50,I11", label_column(label), value);
  }
}

void print_key_table() {
  write(units.NDOUT, "/,' ERROR MESSAGES',/,/,5X,'KEY',5X,'MESSAGE',26X,'ERROR',/");
  write(units.NDOUT, "13X,'ELEMENT DATA INPUT DIRECTLY',6X,'NONE'");
  write(units.NDOUT, "5X,'*',7X,'ELEMENT DATA GENERATED',11X,'NONE'");
  write(units.NDOUT, "5X,'**',6X,'ELEMENT CARD OUT OF SEQUENCE',5X,'FATAL'");
}

void stop_out_of_sequence(int number, int expected) {
  print_key_table();
  complain({1, 5}, "element card " + std::to_string(number) + " is out of sequence, the next element of the group is " +
                       std::to_string(expected));
  CLOSUP();
}

}  // namespace tidearc
