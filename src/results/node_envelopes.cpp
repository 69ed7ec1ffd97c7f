// Largest and smallest displacements of the nodes during a macro, with the times at which they stood.
#include <array>
#include <cstddef>

#include "elements/contract/pass.h"
#include "model/control.h"
#include "model/nodes.h"
#include "results/reports.h"
#include "run/layout.h"
#include "run/units.h"
#include "run/vectors.h"
#include "solve/arrays.h"

namespace tidearc {
namespace {

using SixValues = std::array<double, NDF>;

/// A vector by equation at the six components of a node. The sink entry of the envelopes stays zero, so constrained
/// components give 0.
SixValues at_node(int node, int vector) {
  const Reals by_equation = equation_vector(vector);
  SixValues values{};
  for (int component = 1; component <= NDF; ++component) {
    values[static_cast<std::size_t>(component - 1)] = by_equation(equation_of(node, component));
  }
  return values;
}

}  // namespace

void clear_node_envelopes() {
  for (const int vector : {arrays.ENVMAX, arrays.TMAX, arrays.ENVMIN, arrays.TMIN}) {
    const Reals values = equation_vector(vector);
    RZERO(values.data(), values.size());
  }
}

void update_node_envelopes() {
  const Reals U = equation_vector(arrays.U);
  const Reals largest = equation_vector(arrays.ENVMAX);
  const Reals time_of_largest = equation_vector(arrays.TMAX);
  const Reals smallest = equation_vector(arrays.ENVMIN);
  const Reals time_of_smallest = equation_vector(arrays.TMIN);
  for (int e = 1; e <= sizes.NEQ; ++e) {
    if (U(e) > largest(e)) {
      largest(e) = U(e);
      time_of_largest(e) = response.TIME;
    }
    if (U(e) < smallest(e)) {
      smallest(e) = U(e);
      time_of_smallest(e) = response.TIME;
    }
  }
}

void NODENV() {
  write(
      units.NDOUT,
      "/,'1',47('*'),/,' NODAL DISPLACEMENT ENVELOPES, TIME =',E11.4,/,48('*'),/,/,/,5X,'NODE',14X,'X-DISPLACEMENT',4X,"
      "'Y-DISPLACEMENT',4X,'Z-DISPLACEMENT',8X,'X-ROTATION',8X,'Y-ROTATION',8X,'Z-ROTATION'",
      print_time());
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    write(units.NDOUT,
          "/,I9,2X,'POSITIVE',6E18.5,/,11X,'TIME    ',6(E16.3,2X),/,11X,'NEGATIVE',6E18.5,/,11X,'TIME    ',6(E16.3,2X)",
          node, at_node(node, arrays.ENVMAX), at_node(node, arrays.TMAX), at_node(node, arrays.ENVMIN),
          at_node(node, arrays.TMIN));
  }
  print_element_envelopes();
}

}  // namespace tidearc
