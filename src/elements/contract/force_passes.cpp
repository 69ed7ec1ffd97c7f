// Passes that want forces only: resisting forces of the states at hand, and the dynamic forces of the integrators.
#include <array>

#include "elements/contract/gather.h"
#include "elements/contract/pass.h"
#include "elements/contract/walk.h"
#include "run/vectors.h"
#include "solve/arrays.h"

namespace tidearc {

namespace {

/// A vector that a pass sums into, from zero; null when it is not asked for.
double* cleared(int index) {
  if (index < 1) return nullptr;
  double* vector = equation_vector(index).data();
  RZERO(vector, NEQ1());
  return vector;
}

void add(const Gathering& nodal, std::array<double, most_freedoms>& values, double* vector) {
  if (vector != nullptr) scatter_add(nodal, location_vector(), group.NDOF, values.data(), vector);
}

}  // namespace

void sum_resisting_forces(int resisting) {
  const Gathering nodal = gathering();
  double* R = cleared(resisting);
  element.EVEL = {};
  element.EACC = {};
  element.TIME = response.TIME;
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    type.operations.resist();
    add(nodal, element.ERES, R);
  });
}

void sum_dynamic_forces(double c1, double c2, int VEL, int ACC, const DynamicForces& into) {
  const Gathering nodal = gathering();
  const double* velocities = equation_vector(VEL).data();
  const double* accelerations = equation_vector(ACC).data();
  double* effective = cleared(into.effective);
  double* resisting = cleared(into.resisting);
  double* damping = cleared(into.damping);
  element.TIME = response.TIME;
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    load_record(record);
    gather(nodal, location_vector(), group.NDOF, velocities, element.EVEL.data());
    gather(nodal, location_vector(), group.NDOF, accelerations, element.EACC.data());
    if (type.operations.dynamic != nullptr) {
      type.operations.dynamic(c1, c2);
      add(nodal, element.EDYNF, effective);
    }
    if (resisting == nullptr && damping == nullptr) return;
    type.operations.resist();
    add(nodal, element.ERES, resisting);
    add(nodal, element.EDAMP, damping);
  });
}

}  // namespace tidearc
