// Surface pressure patterns: four-node surfaces and the pressure on them. The nodal forces are formed by the analyses,
// on the displaced geometry (pattern_apply.cpp).
#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

struct PressureHead {
  int surface_cards = 0;
  int KPRS = 0;
  int pressure_cards = 0;
  PressureData data{};
};

[[noreturn]] void stop_on_pressure_card(Columns where, std::string_view words) {
  write(units.NDOUT, "5X,'ERROR IN PRESSURE INPUT DATA'");
  stop_on_load_command(where, words);
}

void print_head(const PressureHead& head) {
  const double density = head.KPRS == pressure_of_fluid ? head.data.value : 0.0;
  const double uniform = head.KPRS == pressure_uniform ? head.data.value : 0.0;
  write(units.NDOUT, "/,/,' LOAD PATTERN',I5,' - SURFACE PRESSURE LOAD',/", pattern_number());
  write_count("NO. OF SURFACE ELEMENT CARDS FOR THIS PATTERN", head.surface_cards);
  write_count("PRESSURE CODE", head.KPRS);
  write(units.NDOUT,
        "5X,'1: NODAL PRESSURES INPUT DIRECTLY',/,5X,'2: PRESSURE FROM FLUID DEPTH',/,5X,'3: UNIFORM PRESSURE'");
  write_count("NO. OF PRESSURE CARDS (KPRS = 1 ONLY)", head.pressure_cards);
  write(units.NDOUT, "5X,A50,E12.4", dotted("KPRS = 2: FLUID DENSITY"), density);
  write(units.NDOUT, "5X,A50,E12.4", dotted("KPRS = 3: UNIFORM PRESSURE VALUE"), uniform);
  if (head.KPRS != pressure_of_fluid) return;
  write(units.NDOUT, "5X,A50,3F12.4", dotted("UPWARD DIRECTION, X, Y, Z"), head.data.up);
  write(units.NDOUT, "5X,A50,3F12.4", dotted("POINT OF THE FLUID SURFACE, X, Y, Z"), head.data.level);
}

PressureHead read_head() {
  PressureHead head;
  read(units.NDIN, "3I5,4F10.0,3F5.0", head.surface_cards, head.KPRS, head.pressure_cards, head.data.value,
       head.data.up, head.data.level);
  print_head(head);
  if (head.KPRS < pressure_at_nodes || head.KPRS > pressure_uniform) {
    stop_on_pressure_card({6, 10}, "pressure code is not 1, 2 or 3");
  }
  return head;
}

/// Three nodes, and a fourth unless it is 0.
bool nodes_in_range(const SurfaceNodes& node) {
  for (int k = 0; k < 4; ++k) {
    const int n = node[static_cast<std::size_t>(k)];
    if (k == 3 && n == 0) break;
    if (!node_in_range(n, sizes.NUMNP, {5 * k + 1, 5 * k + 5})) return false;
  }
  return true;
}

/// The surfaces of one card, put on NT2 and listed; a surface with a node out of range ends the card. A fourth node of
/// 0 stays 0. Returns how many were put, counted on from `surfaces`.
int read_surface_card(int surfaces) {
  SurfaceNodes node{};
  SurfaceNodes increment{};
  int repeat = 0;
  read(units.NDIN, "9I5", node, repeat, increment);
  const bool triangle = node[3] == 0;
  for (int r = 1; r <= (repeat < 1 ? 1 : repeat); ++r) {
    if (!nodes_in_range(node)) break;
    ++surfaces;
    write(units.NDOUT, "3X,5I8", surfaces, node);
    FILE(units.NT2, "WRIT", words(sizeof node), node.data());
    for (std::size_t k = 0; k < (triangle ? 3U : 4U); ++k) node[k] += increment[k];
  }
  return surfaces;
}

int read_surfaces(int cards) {
  write(units.NDOUT, "/,4X,'SURFACE',2X,'NODE 1',2X,'NODE 2',2X,'NODE 3',2X,'NODE 4',/");
  FILE(units.NT2, "REWI");
  int surfaces = 0;
  for (int i = 1; i <= cards; ++i) surfaces = read_surface_card(surfaces);
  return surfaces;
}

void read_pressure_card(Reals pressure) {
  int first = 0;
  int last = 0;
  int increment = 0;
  double value = 0.0;
  read(units.NDIN, "3I5,F10.0", first, last, increment, value);
  const NodeRange range = node_range(first, last, increment);
  if (range.first < 1 || range.last > sizes.NUMNP || !is_even(range)) {
    stop_on_pressure_card({1, 15},
                          "pressure card: range of nodes outside the model, or backward, or not a whole "
                          "multiple of the increment");
  }
  for (int node = range.first; node <= range.last; node += range.difference) pressure(node) = value;
}

/// Node pressures from the cards, 0 where none is given, with their table.
void read_pressures(int cards, Reals pressure) {
  RZERO(pressure.data(), pressure.size());
  for (int i = 1; i <= cards; ++i) read_pressure_card(pressure);
  write(units.NDOUT, "/,' NODAL PRESSURES',/,/,6X,'NODE',7X,'PRESSURE',/");
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    if (pressure(node) != 0.0) write(units.NDOUT, "I10,E15.4", node, pressure(node));
  }
}

/// Copies the surfaces from NT2, each with its corner pressures when these come from nodes.
void copy_surfaces(int surfaces, int KPRS, ConstReals pressure) {
  FILE(units.NT2, "REWI");
  for (int s = 1; s <= surfaces; ++s) {
    SurfaceRecord record{};
    FILE(units.NT2, "READ", words(sizeof record.node), record.node.data());
    for (std::size_t k = 0; k < 4 && KPRS == pressure_at_nodes; ++k) {
      const int corner = record.node[k] == 0 ? record.node[2] : record.node[k];
      record.pressure[k] = pressure(corner);
    }
    FILE(units.NT10, "WRIT", surface_words, &record);
  }
  FILE(units.NT2, "REWI");
}

}  // namespace

void read_surface_pattern() {
  const PressureHead head = read_head();
  const int surfaces = read_surfaces(head.surface_cards);
  PatternTitle blank;
  blank.fill(' ');
  write_header(pattern_surface, surfaces + 1, blank);
  FILE(units.NT10, "WRIT", 1, &head.KPRS);
  const Reals pressure = pattern_pressures();
  if (head.KPRS == pressure_at_nodes) read_pressures(head.pressure_cards, pressure);
  FILE(units.NT10, "WRIT", pressure_words, &head.data);
  copy_surfaces(surfaces, head.KPRS, pressure);
  count_pattern(pattern_surface, {});
}

}  // namespace tidearc
