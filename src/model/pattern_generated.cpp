// Patterns that no card gives: self weight, buoyancy and static current, from the vectors that element input filled.
#include <algorithm>
#include <string>

#include "model/pattern_records.h"
#include "run/layout.h"
#include "run/vectors.h"

namespace tidearc {

namespace {

/// What tells the generated patterns apart.
struct Generated {
  int index;                 ///< pool index of its vector
  std::string_view title;    ///< in the header on NT10
  std::string_view heading;  ///< on the report
  std::string_view total;    ///< over the sums
};

Generated generated(PatternType type) {
  if (type == pattern_buoyancy) {
    return {patterns.KBUOYV, "BUOYANCY", " STATIC BUOYANCY FORCE PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)",
            "TOTAL BUOYANCY FORCES IN GLOBAL DIRECTIONS:"};
  }
  if (type == pattern_current) {
    return {patterns.KCURRV, "STATIC CURRENT", " STATIC CURRENT FORCE PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)",
            "TOTAL CURRENT FORCES IN GLOBAL DIRECTIONS:"};
  }
  return {patterns.KSELFW, "SELF WEIGHT", " STATIC SELF WEIGHT PATTERN (PRINTED IN GLOBAL COORDINATE SYSTEM)",
          "TOTAL GRAVITY FORCES IN GLOBAL DIRECTIONS:"};
}

/// One line for each node with a load, in global axes; returns the sums of what reaches free equations.
NodeValues print_loads(ConstReals vector) {
  NodeValues total{};
  const Reals seen = pattern_vector();
  RZERO(seen.data(), seen.size());
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    NodeValues load = values_at_node(node, vector);
    if (!any_nonzero(load)) continue;
    NodeValues counted = not_yet_counted(node, load, seen);
    if (system_of(node) > 0) {
      for (NodeValues* values : {&load, &counted}) {
        to_global(node, values->data());
        to_global(node, values->data() + 3);
      }
      write(units.NDOUT, "I7,6F12.3,'  NONGL'", node, load);
    } else {
      write(units.NDOUT, "I7,6F12.3", node, load);
    }
    add_to(total, counted);
  }
  return total;
}

}  // namespace

void write_generated_pattern(PatternType type) {
  const Generated pattern = generated(type);
  const Reals vector = pool.reals(pattern.index, NEQ1());
  PatternTitle title;
  title.fill(' ');
  std::copy(pattern.title.begin(), pattern.title.end(), title.begin());
  write_header(type, ITWO * NEQ1(), title);
  FILE(units.NT10, "WRIT", ITWO * NEQ1(), vector.data());

  put_text(units.NDOUT, "\n\n" + std::string(pattern.heading) + "\n");
  write(units.NDOUT,
        "/,5X,'NODAL LOADS',/,/,3X,'NODE',6X,'X-LOAD',6X,'Y-LOAD',6X,'Z-LOAD',6X,'X-MOMT',6X,'Y-MOMT',6X,'Z-MOMT',/");
  const NodeValues total = print_loads(vector);
  put_text(units.NDOUT, "\n     " + std::string(pattern.total) + "\n");
  write(units.NDOUT, "/,14X,'FX          FY          FZ          MX          MY          MZ',/,8X,6G12.5", total);
  count_pattern(type, total);
}

}  // namespace tidearc
