// Temperature and pressure patterns, and the node vectors that the analyses fill from them.
#include <string>

#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

struct TemperatureCard {
  int first = 0;
  int last = 0;
  int increment = 0;
  double temperature = 0.0;
  double pressure = 0.0;
};

[[noreturn]] void stop_on_temperature_card(Columns where, const std::string& text) {
  put_text(units.NDOUT, " ERROR IN TEMPERATURE LOAD INPUT\n" + text + "\n");
  stop_on_load_command(where, "temperature card:" + text);
}

/// The range of a card; an increment of 0 counts as 1. Here a last node of 0 is a last node below the first.
NodeRange checked_range(const TemperatureCard& card) {
  const NodeRange range{card.first, card.last, card.increment == 0 ? 1 : card.increment};
  if (range.first == 0) stop_on_temperature_card({1, 5}, " FIRST NODE EQUALS ZERO");
  if (range.last < range.first) stop_on_temperature_card({6, 10}, " LAST NODE IS LESS THAN FIRST NODE");
  if (!is_even(range)) stop_on_temperature_card({11, 15}, " INCREMENT SPACING NOT EVEN");
  return range;
}

void print_node_vectors(ConstReals temperature, ConstReals pressure) {
  write(units.NDOUT, "/,' NODAL TEMPERATURES AND PRESSURES',/,/,6X,'NODE',4X,'TEMPERATURE',7X,'PRESSURE',/");
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    if (temperature(node) == 0.0 && pressure(node) == 0.0) continue;
    write(units.NDOUT, "I10,2D15.4", node, temperature(node), pressure(node));
  }
}

}  // namespace

void read_temperature_pattern() {
  int cards = 0;
  PatternTitle title{};
  read(units.NDIN, "I5,10A4", cards, title);
  write(units.NDOUT,
        "/,/,' LOAD PATTERN NO.',I5,' -  TEMPERATURE ','AND PRESSURE LOAD',/,5X,10A4,/,/,5X,'INPUT DATA',/,/,5X,'NO.',"
        "5X,'FIRST',3X,'LAST',4X,'INC',7X,'TEMPERATURE',7X,'PRESSURE',/",
        pattern_number(), title);
  const Reals temperature = pattern_temperatures();
  const Reals pressure = pattern_pressures();
  RZERO(temperature.data(), temperature.size());
  RZERO(pressure.data(), pressure.size());
  for (int i = 1; i <= cards; ++i) {
    TemperatureCard card;
    read(units.NDIN, "3I5,2F10.0", card.first, card.last, card.increment, card.temperature, card.pressure);
    write(units.NDOUT, "5X,I3,5X,I5,2X,I5,2X,I5,3X,2D15.4", i, card.first, card.last, card.increment, card.temperature,
          card.pressure);
    const NodeRange range = checked_range(card);
    if (!node_in_range(range.first, sizes.NUMNP, {1, 5}) || !node_in_range(range.last, sizes.NUMNP, {6, 10})) continue;
    for (int node = range.first; node <= range.last; node += range.difference) {
      temperature(node) = card.temperature;
      pressure(node) = card.pressure;
    }
  }
  write_header(pattern_temperature, ITWO * sizes.NUMNP, title);
  FILE(units.NT10, "WRIT", ITWO * sizes.NUMNP, temperature.data());
  FILE(units.NT10, "WRIT", ITWO * sizes.NUMNP, pressure.data());
  print_node_vectors(temperature, pressure);
  patterns.have_temperatures = true;
  count_pattern(pattern_temperature, {});
}

double node_temperature(int node) { return patterns.have_temperatures ? pattern_temperatures()(node) : 0.0; }
double node_pressure(int node) { return patterns.have_temperatures ? pattern_pressures()(node) : 0.0; }

}  // namespace tidearc
