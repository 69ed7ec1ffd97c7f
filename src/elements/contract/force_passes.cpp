// Passes that want forces only, of the states at hand: the forces of the integrators and those of each group.
#include <algorithm>
#include <cmath>

#include "elements/contract/pass.h"
#include "elements/contract/pass_vectors.h"
#include "elements/contract/walk.h"

namespace tidearc {

namespace {

void stand_still() {
  element.EVEL = {};
  element.EACC = {};
  element.TIME = response.TIME;
}

bool forces_are_finite() {
  return std::all_of(element.ERES.begin(), element.ERES.begin() + group.NDOF,
                     [](double force) { return std::isfinite(force); });
}

}  // namespace

bool elements_damp() {
  bool found = false;
  for_each_group([&](const ElementType&) { found = found || group_damps(); });
  return found;
}

ElementPlace first_bad_element() {
  ElementPlace place;
  stand_still();
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    if (place.group != 0) return;
    load_record(record);
    type.operations.resist();
    if (!forces_are_finite()) place = {element.IGRP, record_words()[0]};
  });
  return place;
}

void sum_dynamic_forces(double c1, double c2, int VEL, int ACC, const DynamicForces& into) {
  const Gathering nodal = gathering();
  const double* velocities = given(VEL);
  const double* accelerations = given(ACC);
  double* effective = cleared(into.effective);
  double* resisting = cleared(into.resisting);
  double* damping = cleared(into.damping);
  element.TIME = response.TIME;
  for_each_element(Pass::reading, [&](const ElementType& type, const Word* record, int) {
    const bool damps = group_damps();
    if (!damps && resisting == nullptr) return;
    load_record(record);
    gather_given(nodal, velocities, element.EVEL);
    gather_given(nodal, accelerations, element.EACC);
    if (damps && effective != nullptr && type.operations.dynamic != nullptr) {
      type.operations.dynamic(c1, c2);
      add_to(nodal, element.EDYNF, effective);
    }
    if (resisting == nullptr && damping == nullptr) return;
    type.operations.resist();
    add_to(nodal, element.ERES, resisting);
    if (damps) add_to(nodal, element.EDAMP, damping);
  });
}

void sum_forces_by_group(int damped, int resisting, int damping, const std::function<void(int group)>& done) {
  const Gathering nodal = gathering();
  const double* velocities = given(damped);
  double* R = cleared(resisting);
  double* D = cleared(damping);
  stand_still();
  for_each_element(
      Pass::reading,
      [&](const ElementType& type, const Word* record, int) {
        load_record(record);
        gather_given(nodal, velocities, element.EVEL);
        type.operations.resist();
        add_to(nodal, element.ERES, R);
        if (group_damps()) add_to(nodal, element.EDAMP, D);
      },
      [&] {
        done(element.IGRP);
        cleared(resisting);
        cleared(damping);
      });
}

}  // namespace tidearc
