// The eigensolution control card, and the element records of the eigenvalue file.
#include <algorithm>

#include "eigen/eigen.h"
#include "elements/contract/walk.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/actcol.h"
#include "solve/eigen.h"

namespace tidearc {

namespace {

constexpr int input_phase = 4;  // the storage check of element input, whose arrays follow

/// Masses are not known yet: as many vectors as the structure can have modes. A wish beyond that gets no room, because
/// the macro refuses it.
int vectors_needed() { return eigen.NFREQ > sizes.NEQ ? 0 : subspace_size(eigen.NFREQ, sizes.NEQ); }

void carve_eigen_arrays() {
  const std::int64_t q = eigen.room = vectors_needed();
  for (int* table : {&eigen.LOADS, &eigen.SHAPES}) *table = carve_reals(q * sizes.NEQ);
  eigen.TOGETHER = carve_reals(std::int64_t{together(eigen.room)} * sizes.NEQ);
  for (int* matrix : {&eigen.STIFFNESS, &eigen.MASS, &eigen.ROTATION}) *matrix = carve_reals(q * q);
  for (int* list : {&eigen.VALUES, &eigen.LAST, &eigen.RESIDUALS, &eigen.ENERGY}) *list = carve_reals(q);
  check_storage(input_phase);
}

/// Where RSAOUT finds the records: a data check loads none, they still stand on the files of the element input.
enum class Source { nowhere, input_files, work_array, streams };

Source source_of_records() {
  if (executing()) return records_on_disk() ? Source::streams : Source::work_array;
  const bool complete = run.check_run && !run.had_data_error && storage.NEEDED <= storage.MSTOR;
  return complete ? Source::input_files : Source::nowhere;
}

void read_input_record(Word* record) {
  const int tail = group.LEI - group.LFIX;
  FILE(units.NT1, "READ", group.LFIX, record);
  if (tail > 0) FILE(units.NT13, "READ", tail, record + group.LFIX);
}

/// The records of one group behind its header; in the work array they stand from `index` on.
void write_group(Source source, const ElementType& type, int& index) {
  FILE(UNIT_EIGEN, "WRIT", group_words, static_cast<const void*>(&group));
  for (int i = 0; i < group.NUMEL; ++i) {
    Word* record = pool.words(index, group.LEI);
    if (source == Source::input_files) read_input_record(record);
    if (source == Source::streams) fetch_record(Pass::reading, type, record);
    FILE(UNIT_EIGEN, "WRIT", group.LEI, static_cast<const void*>(record));
    if (source == Source::work_array) index += group.LEI + 1;
  }
}

void go_to_first_record(Source source) {
  FILE(UNIT_EIGEN, "REWI");
  if (source == Source::streams) begin_streams(Pass::reading);
  if (source != Source::input_files) return;
  for (const int unit : {units.NT1, units.NT13}) FILE(unit, "REWI");
}

}  // namespace

void EIGNIN() {
  read(units.NDIN, "I5,5X,2F10.0", eigen.NFREQ, eigen.FCUT, eigen.FSHIFT);
  eigen.line = deck_line();
  eigen.NFREQ = std::max(eigen.NFREQ, 0);
  if (eigen.FSHIFT < 0.0) complain({21, 30}, "a negative shift acts as the positive one of its size");
  write(units.NDOUT, "'1',/,' EIGENSOLUTION CONTROL',/");
  write(units.NDOUT, "' NUMBER OF FREQUENCIES AND MODE SHAPES =',I5", eigen.NFREQ);
  write(units.NDOUT, "' TOP CUT-OFF FREQUENCY                 =',E12.4", eigen.FCUT);
  write(units.NDOUT, "' SHIFT FOR EIGENVALUE SOLUTION         =',E12.4", eigen.FSHIFT);
  carve_eigen_arrays();
}

void RSAOUT() {
  write_list(units.NDOUT, "SUBROUTINE RSAOUT, KEDAT,LSOFAR,NELGR=", storage.KEDAT, storage.NEEDED, sizes.NELGR);
  const Source source = source_of_records();
  if (source != Source::nowhere) go_to_first_record(source);
  int index = storage.KEDAT;
  for_each_group([&](const ElementType& type) {
    write_list(units.NDOUT, "  GROUP", element.IGRP, "    NUMBER OF ELEMENTS=", group.NUMEL);
    if (source != Source::nowhere) write_group(source, type, index);
  });
  if (source == Source::streams) end_streams(Pass::reading);
}

}  // namespace tidearc
