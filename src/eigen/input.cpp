// The eigensolution control card, and the element records of the eigenvalue file.
#include <algorithm>

#include "eigen/eigen.h"
#include "elements/contract/walk.h"
#include "model/control.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
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
  for (int* matrix : {&eigen.STIFFNESS, &eigen.MASS, &eigen.ROTATION}) *matrix = carve_reals(q * q);
  for (int* list : {&eigen.VALUES, &eigen.LAST, &eigen.RESIDUALS, &eigen.ROW}) *list = carve_reals(q);
  check_storage(input_phase);
}

/// The records of one group behind its header; in core they stand from `index` on.
void write_group(const ElementType& type, int& index) {
  FILE(UNIT_EIGEN, "WRIT", group_words, static_cast<const void*>(&group));
  for (int i = 0; i < group.NUMEL; ++i) {
    Word* record = pool.words(index, group.LEI);
    if (records_on_disk()) fetch_record(Pass::reading, type, record);
    FILE(UNIT_EIGEN, "WRIT", group.LEI, static_cast<const void*>(record));
    if (!records_on_disk()) index += group.LEI + 1;
  }
}

}  // namespace

void EIGNIN() {
  read(units.NDIN, "I5,5X,2F10.0", eigen.NFREQ, eigen.FCUT, eigen.FSHIFT);
  eigen.line = deck_line();
  eigen.NFREQ = std::max(eigen.NFREQ, 0);
  write(units.NDOUT, "'1',/,' EIGENSOLUTION CONTROL',/");
  write(units.NDOUT, "' NUMBER OF FREQUENCIES AND MODE SHAPES =',I5", eigen.NFREQ);
  write(units.NDOUT, "' TOP CUT-OFF FREQUENCY                 =',E12.4", eigen.FCUT);
  write(units.NDOUT, "' SHIFT FOR EIGENVALUE SOLUTION         =',E12.4", eigen.FSHIFT);
  carve_eigen_arrays();
}

void RSAOUT() {
  write_list(units.NDOUT, "SUBROUTINE RSAOUT, KEDAT,LSOFAR,NELGR=", storage.KEDAT, storage.NEEDED, sizes.NELGR);
  const bool writing = executing();
  const bool streaming = writing && records_on_disk();
  if (writing) FILE(UNIT_EIGEN, "REWI");
  if (streaming) begin_streams(Pass::reading);
  int index = storage.KEDAT;
  for_each_group([&](const ElementType& type) {
    write_list(units.NDOUT, "  GROUP", element.IGRP, "    NUMBER OF ELEMENTS=", group.NUMEL);
    if (writing) write_group(type, index);
  });
  if (streaming) end_streams(Pass::reading);
}

}  // namespace tidearc
