// Prescribed displacement patterns: sets of held or moved equations, behind the force patterns on NT10.
#include <algorithm>
#include <span>

#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/workpool.h"

namespace tidearc {

namespace {

struct Entry {
  int node = 0;
  int component = 0;
  double displacement = 0.0;
};
constexpr int entries_of_card = 4;
constexpr int entry_columns = 20;

/// Reads and echoes a card of `count` entries, 1 to 4; fields behind them are not looked at.
void read_entries(std::array<Entry, entries_of_card>& entries, int count) {
  const auto items = static_cast<std::size_t>(3 * count);
  auto& [a, b, c, d] = entries;
  const std::array<InItem, 12> in{a.node, a.component, a.displacement, b.node, b.component, b.displacement,
                                  c.node, c.component, c.displacement, d.node, d.component, d.displacement};
  read_items(units.NDIN, "4(2I5,F10.0)", std::span(in).first(items));
  const std::array<OutItem, 12> out{a.node, a.component, a.displacement, b.node, b.component, b.displacement,
                                    c.node, c.component, c.displacement, d.node, d.component, d.displacement};
  write_items(units.NDOUT, "5X,4(I5,1X,I5,1X,E15.4)", std::span(out).first(items));
}

/// Stores entry number `i` (0-based) of a card. The later of two entries on one equation holds; a constrained component
/// is left alone.
void store(const Entry& entry, int i, Reals vector) {
  const int column = i * entry_columns;
  if (!node_in_range(entry.node, sizes.NUMNP, {column + 1, column + 5})) return;
  if (!component_in_range(entry.component, {column + 6, column + 10})) return;
  const int e = equation_of(entry.node, entry.component);
  if (e <= sizes.NEQ) vector(e) = entry.displacement;
}

void read_prescribed_pattern(int number, Reals vector) {
  int entries = 0;
  std::array<char, 72> title{};
  read(units.NDIN, "I5,3X,18A4", entries, title);
  write(units.NDOUT,
        "/,/,' PRESCRIBED DISPLACEMENT PATTERN',I5,' - ',18A4,/,/,5X,4(1X,'NODE',3X,'DOF',4X,'DISPLACEMENT',1X),/",
        number, title);
  for (double& value : vector) value = unprescribed;
  for (int done = 0; done < entries; done += entries_of_card) {
    const int count = entries - done < entries_of_card ? entries - done : entries_of_card;
    std::array<Entry, entries_of_card> card{};
    read_entries(card, count);
    for (int i = 0; i < count; ++i) store(card[static_cast<std::size_t>(i)], i, vector);
  }
  PatternTitle short_title{};
  std::copy_n(title.begin(), short_title.size(), short_title.begin());
  write_header(number, ITWO * NEQ1(), short_title);
  FILE(units.NT10, "WRIT", ITWO * NEQ1(), vector.data());
}

}  // namespace

void PDISIN() {
  patterns.KZDISP = carve_reals(NEQ1());
  check_storage(6);
  write(units.NDOUT, "'1',/,' PRESCRIBED DISPLACEMENT PATTERN SPECIFICATION COMMANDS'");
  if (static_loads.NZDISP < 1) {
    write(units.NDOUT, "/,' (NONE)'");
    return;
  }
  const Reals vector = pool.reals(patterns.KZDISP, NEQ1());
  for (int number = 1; number <= static_loads.NZDISP; ++number) read_prescribed_pattern(number, vector);
}

}  // namespace tidearc
