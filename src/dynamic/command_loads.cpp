// What the commands of a dynamic macro load and impose at a time.
#include <array>

#include "dynamic/commands.h"
#include "model/control.h"
#include "model/masses.h"
#include "model/nodes.h"
#include "model/records.h"
#include "run/vectors.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

/// The arrays of a list, its `count` entries.
struct ListView {
  explicit ListView(const CommandList& list)
      : count(list.count),
        time(pool.reals(list.time, count)),
        scale(pool.reals(list.scale, count)),
        equation(pool.integers(list.equation, count)),
        record(pool.integers(list.record, count)) {}
  int count;
  Reals time, scale;
  Integers equation, record;
};

/// Calls act(equation, scaled value) for every entry in order. value(record, time) is asked for once for entries in a
/// row that have both alike: the nodes of a command do.
template <class Value, class Act>
void for_each_entry(const CommandList& entries, Value&& value, Act&& act) {
  const ListView list(entries);
  double v = 0.0;
  for (int i = 1; i <= list.count; ++i) {
    const bool alike = i > 1 && list.record(i) == list.record(i - 1) && list.time(i) == list.time(i - 1);
    if (!alike) v = value(list.record(i), list.time(i));
    act(list.equation(i), list.scale(i) * v);
  }
}

void add_forces(double elapsed, double level, Reals P) {
  for_each_entry(
      commands.forces, [&](int record, double time) { return record_value(RecordKind::force, record, time + elapsed); },
      [&](int e, double force) { P(e) += level * force; });
}

/// Component along an axis (3 * local system + direction) of a vector in master axes.
double along(int axis, const std::array<double, 3>& vector) {
  const int k = (axis - 1) % 3 + 1;
  const int system = (axis - k) / 3;
  if (system == 0) return vector[static_cast<std::size_t>(k - 1)];
  const RealTable axes = axes_of(system);
  return axes(1, k) * vector[0] + axes(2, k) * vector[1] + axes(3, k) * vector[2];
}

void add_ground_loads(double elapsed, double level, Reals P) {
  if (commands.ground_loads < 1) return;
  std::array<double, 3> acceleration{};
  for (std::size_t i = 0; i < acceleration.size(); ++i) {
    const GroundCommand& command = commands.ground[i];
    acceleration[i] = command.scale * record_value(RecordKind::ground, command.record, command.time + elapsed);
  }
  const ConstReals AMASS = pool.reals(masses.AMASS, NEQ1());
  const Integers equations = pool.integers(load_records.ground_equation, commands.ground_loads);
  const Integers axes = pool.integers(load_records.ground_axis, commands.ground_loads);
  for (int i = 1; i <= commands.ground_loads; ++i) {
    const int e = equations(i);
    P(e) -= level * (AMASS(e) * along(axes(i), acceleration));
  }
}

}  // namespace

void add_record_loads(double elapsed, double level, Reals P) {
  add_forces(elapsed, level, P);
  add_ground_loads(elapsed, level, P);
}

void form_imposed(double elapsed, Reals XI) {
  RZERO(XI.data(), XI.size());
  const auto way = [&](int record, double time) {
    const double start = record_value(RecordKind::displacement, record, time);
    return record_value(RecordKind::displacement, record, time + elapsed) - start;
  };
  for_each_entry(commands.displacements, way, [&](int e, double displacement) { XI(e) += displacement; });
}

bool has_record_loads() { return commands.forces.count > 0 || commands.ground_loads > 0; }

bool has_imposed() { return commands.displacements.count > 0; }

}  // namespace tidearc
