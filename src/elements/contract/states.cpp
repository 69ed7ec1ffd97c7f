// Element states: determination from the reference generation, taking over, saving and going back.
//
// Two generations: the reference is the state at the last state update, the current one that of the last determination.
// In core the current generation is the pool record of each element and the reference one record of LFIX words per
// element on TapeFile NT12; in a disk job both are files (element_files.h). KSTIF, the word of the type's stiffness
// pass and the loads of the sea belong to the element and to neither generation.
//
// In core a state update only marks that NT12 is to become what the records are; the next determination writes it, when
// it has each record in hand anyway.
#include "elements/contract/pass.h"
#include "elements/contract/pass_vectors.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

int reference_unit() { return records_on_disk() ? units.NT1 : units.NT12; }

/// The work block gets the element's reference state.
void load_reference(int reference, const ElementType& type, const Word* record) {
  if (generations.reference_due) {
    FILE(reference, "WRIT", group.LFIX, record);
    load_record(record);
  } else {
    load_state(type, next_record(reference).data(), record);
  }
}

void start_determination() {
  drop_uncommitted_changes();
  FILE(reference_unit(), "REWI");
  element.EVEL = {};
  element.EACC = {};
  element.TIME = response.TIME;
}

/// The last element with a changed matrix; while the matrix is to be rebuilt the mark is not lowered.
void set_last_changed(int last) {
  if (solver.KRESET == 0 || last > solver.NELCHK) solver.NELCHK = last;
}

/// Core: both generations of every element onto NT15, the reference first; once when they are the same.
void write_generations() {
  generations.kept_alike = generations.reference_due;
  FILE(units.NT15, "REWI");
  FILE(units.NT12, "REWI");
  for_each_element(Pass::reading, [](const ElementType&, const Word* record, int) {
    if (!generations.kept_alike) FILE(units.NT15, "WRIT", group.LFIX, next_record(units.NT12).data());
    FILE(units.NT15, "WRIT", group.LFIX, record);
  });
}

/// Core: both generations back from NT15, the words of the stiffness pass and of the sea as they are.
void read_generations() {
  FILE(units.NT15, "REWI");
  FILE(units.NT12, "REWI");
  for_each_element(Pass::reading, [](const ElementType& type, Word* record, int) {
    if (!generations.kept_alike) FILE(units.NT12, "WRIT", group.LFIX, next_record(units.NT15).data());
    load_state(type, next_record(units.NT15).data(), record);
    copy_words(record, record_words(), group.LFIX);
  });
  generations.reference_due = generations.kept_alike;
}

}  // namespace

void determine_states(const Motion& motion) {
  start_determination();
  const Gathering nodal = gathering();
  const double* U = equation_vector(arrays.U).data();
  const double* U0 = equation_vector(arrays.U0).data();
  const double* velocities = given(motion.velocity);
  const double* accelerations = given(motion.acceleration);
  const double* damped = given(motion.damped);
  const bool moving = velocities != nullptr || accelerations != nullptr || damped != nullptr;
  double* R = cleared(arrays.R);
  double* damping = cleared(motion.damping);
  const int reference = reference_unit();
  int last = 0;
  for_each_element(Pass::determination, [&](const ElementType& type, Word* record, int running) {
    load_reference(reference, type, record);
    gather_change(nodal, location_vector(), group.NDOF, U, U0, element.EDISP.data());
    if (moving) {
      gather_given(nodal, velocities, element.EVEL);
      gather_given(nodal, accelerations, element.EACC);
    }
    type.operations.state();
    copy_words(record, record_words(), group.LFIX);
    const bool damps = damping != nullptr && group_damps();
    if (damps) gather_given(nodal, damped, element.EVEL);
    type.operations.resist();
    add_to(nodal, element.ERES, R);
    if (damps) add_to(nodal, element.EDAMP, damping);
    if (record[1] != 0) last = running;
  });
  generations.reference_due = false;
  set_last_changed(last);
}

void take_over_states() {
  if (records_on_disk()) {
    exchange_generations();
  } else {
    generations.reference_due = true;
  }
  commit_changes();
}

void restart_element_envelopes() {
  take_over_states();
  element.TIME = response.TIME;
  for_each_element(Pass::rewriting, [](const ElementType& type, Word* record, int) {
    if (type.operations.restart_envelope == nullptr) return;
    load_record(record);
    type.operations.restart_envelope();
    copy_words(record, record_words(), group.LFIX);
  });
}

void save_states() {
  if (records_on_disk()) {
    keep_generations();
  } else {
    write_generations();
  }
  // Not `written`: records that no update has committed are told again by the next determination.
  FILE(units.NT15, "WRIT", 1, &state_log.committed);
}

void recover_states() {
  if (records_on_disk()) {
    return_to_kept_generations();
  } else {
    read_generations();
  }
  int logged = 0;
  FILE(units.NT15, "READ", 1, &logged);
  recover_changes(logged);
}

}  // namespace tidearc
