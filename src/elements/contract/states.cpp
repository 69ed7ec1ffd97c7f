// Element states: determination from the reference generation, taking over, saving and going back.
//
// The current generation is the pool record of each element. The reference generation, the state at the last state
// update, is one record of LFIX words per element on TapeFile NT12. KSTIF and the word of the type's stiffness pass
// belong to the element and to neither generation.
#include <array>
#include <utility>

#include "elements/contract/gather.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"
#include "run/vectors.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

/// The work block gets the element's reference state, with the words that belong to no generation as they stand.
void load_reference(const ElementType& type, const Word* record) {
  const int tail = group.LEI - group.LFIX;
  copy_words(record_words(), next_record(units.NT12).data(), group.LFIX);
  copy_words(record_words() + group.LFIX, record + group.LFIX, tail);
  put_stiffness_words(type, stiffness_words(type, record), record_words());
}

void start_determination() {
  drop_uncommitted_changes();
  FILE(units.NT12, "REWI");
  RZERO(equation_vector(arrays.R).data(), NEQ1());
  element.EVEL = {};
  element.EACC = {};
  element.TIME = response.TIME;
}

/// The last element with a changed matrix; while the matrix is to be rebuilt the mark is not lowered.
void set_last_changed(int last) {
  if (solver.KRESET == 0 || last > solver.NELCHK) solver.NELCHK = last;
}

/// Copies the record's first portion from a TapeFile, leaving the words of the stiffness pass as they are.
void recover_current(const ElementType& type, Word* record) {
  const StiffnessWords kept = stiffness_words(type, record);
  FILE(units.NT15, "READ", group.LFIX, record);
  put_stiffness_words(type, kept, record);
}

}  // namespace

void determine_states() {
  start_determination();
  const Gathering nodal = gathering();
  const double* U = equation_vector(arrays.U).data();
  const double* U0 = equation_vector(arrays.U0).data();
  double* R = equation_vector(arrays.R).data();
  int last = 0;
  for_each_element([&](const ElementType& type, Word* record, int running) {
    load_reference(type, record);
    gather_change(nodal, location_vector(), group.NDOF, U, U0, element.EDISP.data());
    type.operations.state();
    copy_words(record, record_words(), group.LFIX);
    type.operations.resist();
    scatter_add(nodal, location_vector(), group.NDOF, element.ERES.data(), R);
    if (record[1] != 0) last = running;
  });
  set_last_changed(last);
}

void take_over_states() {
  FILE(units.NT12, "REWI");
  for_each_element([](const ElementType&, const Word* record, int) { FILE(units.NT12, "WRIT", group.LFIX, record); });
  commit_changes();
}

void save_states() {
  // Not `written`: records that no update has committed are told again by the next determination.
  FILE(units.NT15, "WRIT", 1, &state_log.committed);
  FILE(units.NT12, "REWI");
  for_each_element([](const ElementType&, const Word* record, int) {
    FILE(units.NT15, "WRIT", group.LFIX, next_record(units.NT12).data());
    FILE(units.NT15, "WRIT", group.LFIX, record);
  });
}

void recover_states() {
  int logged = 0;
  FILE(units.NT15, "READ", 1, &logged);
  recover_changes(logged);
  FILE(units.NT12, "REWI");
  for_each_element([](const ElementType& type, Word* record, int) {
    FILE(units.NT12, "WRIT", group.LFIX, next_record(units.NT15).data());
    recover_current(type, record);
  });
}

}  // namespace tidearc
