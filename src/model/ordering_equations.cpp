// Equation numbers that follow a new order of the nodes.
#include <algorithm>

#include "model/ordering.h"

namespace tidearc {

bool number_equations(ConstIntegers order, IntegerTable ID, int NEQ, Integers new_number) {
  std::fill(new_number.begin(), new_number.end(), 0);
  new_number(NEQ + 1) = NEQ + 1;
  int next = 0;
  for (const int node : order) {
    for (int c = 1; c <= 6; ++c) {
      const int e = ID(node, c);
      if (e < 1 || e > NEQ + 1) return false;
      if (new_number(e) == 0) new_number(e) = ++next;
    }
  }
  return next == NEQ;
}

void reorder(ConstIntegers new_number, Reals vector, Reals scratch) {
  for (int e = 1; e <= vector.size(); ++e) scratch(new_number(e)) = vector(e);
  std::copy(scratch.begin(), scratch.end(), vector.begin());
}

}  // namespace tidearc
