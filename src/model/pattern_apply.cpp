// What the analyses take from NT10: the next pattern at a factor, added to a load vector or to the node vectors.
#include <cstring>
#include <span>

#include "model/pattern_records.h"
#include "model/surface.h"

namespace tidearc {

namespace {

PatternHeader read_pattern_header() {
  PatternHeader header{};
  FILE(units.NT10, "READ", header_words, &header);
  return header;
}

/// Moves over the records of a pattern whose header has been read.
void pass_over(const PatternHeader& header) {
  switch (static_cast<PatternType>(header.kind)) {
    case pattern_follower:
      FILE(units.NT10, "SKIP", header.length);
      return;
    case pattern_temperature:
      FILE(units.NT10, "SKIP", 2);
      return;
    case pattern_surface:
      FILE(units.NT10, "SKIP", header.length + 1);
      return;  // code, data, length - 1 surfaces
    case pattern_nodal:
    case pattern_self_weight:
    case pattern_buoyancy:
    case pattern_current:
      FILE(units.NT10, "SKIP", 1);
      return;
  }
}

/// Where a node stands when it has moved by its entries of U, in the master system.
Point displaced(int node, ConstReals U) {
  Point x = coordinates(node);
  Point u{U(equation_of(node, 1)), U(equation_of(node, 2)), U(equation_of(node, 3))};
  to_global(node, u.data());
  for (std::size_t i = 0; i < 3; ++i) x[i] += u[i];
  return x;
}

/// Adds a force in the master system at the equations of a node's translations.
void add_force(int node, Point force, Reals load) {
  to_local(node, force.data());
  for (int c = 1; c <= 3; ++c) load(equation_of(node, c)) += force[static_cast<std::size_t>(c - 1)];
}

void add_load_vector(double factor, Reals row, Reals load) {
  FILE(units.NT10, "READ", ITWO * row.size(), row.data());
  for (int e = 1; e <= row.size(); ++e) load(e) += factor * row(e);
}

void add_follower_forces(double factor, int cards, ConstReals U, Reals load) {
  for (int i = 1; i <= cards; ++i) {
    FollowerRecord card{};
    FILE(units.NT10, "READ", follower_words, &card);
    if (card.force == 0.0) continue;
    add_force(card.NODA, force_along_line(factor * card.force, displaced(card.NODA, U), displaced(card.NODD, U)), load);
  }
}

std::array<double, 4> corner_pressures(int KPRS, const PressureData& data, const SurfaceRecord& surface,
                                       const Corners& x) {
  std::array<double, 4> p = surface.pressure;
  for (std::size_t k = 0; k < 4; ++k) {
    if (KPRS == pressure_of_fluid) p[k] = fluid_pressure(data.value, data.up, data.level, x[k]);
    if (KPRS == pressure_uniform) p[k] = data.value;
  }
  return p;
}

void add_surface_pressures(double factor, int surfaces, ConstReals U, Reals load) {
  int KPRS = 0;
  PressureData data{};
  FILE(units.NT10, "READ", 1, &KPRS);
  FILE(units.NT10, "READ", pressure_words, &data);
  for (int s = 1; s <= surfaces; ++s) {
    SurfaceRecord surface{};
    FILE(units.NT10, "READ", surface_words, &surface);
    if (surface.node[3] == 0) surface.node[3] = surface.node[2];
    Corners x{};
    for (std::size_t k = 0; k < 4; ++k) x[k] = displaced(surface.node[k], U);
    const Corners force = pressure_forces(x, corner_pressures(KPRS, data, surface, x));
    for (std::size_t k = 0; k < 4; ++k) {
      add_force(surface.node[k], {factor * force[k][0], factor * force[k][1], factor * force[k][2]}, load);
    }
  }
}

/// Reads the next record, NUMNP reals, and adds it to a node vector.
void add_node_record(double factor, Reals node_vector) {
  const std::span<const Word> record = next_record(units.NT10);
  const auto bytes = static_cast<std::ptrdiff_t>(sizeof(double));
  const char* from = reinterpret_cast<const char*>(record.data());
  for (int node = 1; node <= node_vector.size(); ++node, from += bytes) {
    double value = 0.0;
    std::memcpy(&value, from, sizeof value);
    node_vector(node) += factor * value;
  }
}

}  // namespace

PatternType add_next_pattern(double factor, ConstReals U, Reals row, Reals load) {
  const PatternHeader header = read_pattern_header();
  const auto type = static_cast<PatternType>(header.kind);
  if (factor == 0.0) {
    pass_over(header);
    return type;
  }
  switch (type) {
    case pattern_nodal:
    case pattern_self_weight:
    case pattern_buoyancy:
    case pattern_current:
      add_load_vector(factor, row, load);
      break;
    case pattern_follower:
      add_follower_forces(factor, header.length, U, load);
      break;
    case pattern_temperature:
      pass_over(header);
      break;
    case pattern_surface:
      add_surface_pressures(factor, header.length - 1, U, load);
      break;
  }
  return type;
}

void add_next_temperature(double factor) {
  const PatternHeader header = read_pattern_header();
  if (header.kind != pattern_temperature || factor == 0.0) {
    pass_over(header);
    return;
  }
  add_node_record(factor, pattern_temperatures());
  add_node_record(factor, pattern_pressures());
}

}  // namespace tidearc
