// Element states: determination from the reference generation, taking over, saving and going back.
//
// Two generations: the reference is the state at the last state update, the current one that of the last determination.
// In core the current generation is the pool record of each element and the reference one record of LFIX words per
// element on TapeFile NT12; in a disk job both are files (element_files.h). KSTIF and the word of the type's stiffness
// pass belong to the element and to neither generation.
#include "elements/contract/gather.h"
#include "elements/contract/pass.h"
#include "elements/contract/state_log.h"
#include "elements/contract/walk.h"
#include "run/vectors.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

int reference_unit() { return records_on_disk() ? units.NT1 : units.NT12; }

/// The work block gets the element's reference state, with the words that belong to no generation as they stand.
void load_reference(int reference, const ElementType& type, const Word* record) {
  const int tail = group.LEI - group.LFIX;
  copy_words(record_words(), next_record(reference).data(), group.LFIX);
  copy_words(record_words() + group.LFIX, record + group.LFIX, tail);
  put_stiffness_words(type, stiffness_words(type, record), record_words());
}

void start_determination() {
  drop_uncommitted_changes();
  FILE(reference_unit(), "REWI");
  RZERO(equation_vector(arrays.R).data(), NEQ1());
  element.EVEL = {};
  element.EACC = {};
  element.TIME = response.TIME;
}

/// The last element with a changed matrix; while the matrix is to be rebuilt the mark is not lowered.
void set_last_changed(int last) {
  if (solver.KRESET == 0 || last > solver.NELCHK) solver.NELCHK = last;
}

/// Core: the first portions of all records onto the reference file.
void write_reference() {
  FILE(units.NT12, "REWI");
  for_each_element(Pass::reading,
                   [](const ElementType&, const Word* record, int) { FILE(units.NT12, "WRIT", group.LFIX, record); });
}

/// Core: both generations of every element onto NT15.
void write_generations() {
  FILE(units.NT15, "REWI");
  FILE(units.NT12, "REWI");
  for_each_element(Pass::reading, [](const ElementType&, const Word* record, int) {
    FILE(units.NT15, "WRIT", group.LFIX, next_record(units.NT12).data());
    FILE(units.NT15, "WRIT", group.LFIX, record);
  });
}

/// Core: both generations back from NT15, the words of the stiffness pass as they are.
void read_generations() {
  FILE(units.NT15, "REWI");
  FILE(units.NT12, "REWI");
  for_each_element(Pass::reading, [](const ElementType& type, Word* record, int) {
    FILE(units.NT12, "WRIT", group.LFIX, next_record(units.NT15).data());
    const StiffnessWords kept = stiffness_words(type, record);
    FILE(units.NT15, "READ", group.LFIX, record);
    put_stiffness_words(type, kept, record);
  });
}

}  // namespace

void determine_states() {
  start_determination();
  const Gathering nodal = gathering();
  const double* U = equation_vector(arrays.U).data();
  const double* U0 = equation_vector(arrays.U0).data();
  double* R = equation_vector(arrays.R).data();
  const int reference = reference_unit();
  int last = 0;
  for_each_element(Pass::determination, [&](const ElementType& type, Word* record, int running) {
    load_reference(reference, type, record);
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
  if (records_on_disk()) {
    exchange_generations();
  } else {
    write_reference();
  }
  commit_changes();
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
