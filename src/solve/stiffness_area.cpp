// Where the structure matrix stands, by the storage scheme.
#include "solve/stiffness_area.h"

#include <algorithm>
#include <cstdint>
#include <limits>

#include "run/layout.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/blocking.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr int stiffness_phase = 10;

void carve_in_core() {
  solver.KASM = carve_reals(solver.NSTO);
  solver.KFAC = carve_reals(solver.NSTO);
  storage.KEDAT = storage.NEXT;
  write_list(units.NDOUT, "NSTO,LAVSST,KEDAT,MSTOR", solver.NSTO, storage.LAVSST, storage.KEDAT, storage.MSTOR);
  check_storage(stiffness_phase);
}

/// Words from NEXT on that leave room for the element data; below zero when not even those fit.
std::int64_t words_left(int element_words) { return std::int64_t{storage.MSTOR} - storage.NEXT + 1 - element_words; }

void carve_one_block(int element_words) {
  solver.KASM = carve_reals(solver.NSTO);
  const bool room = std::int64_t{ITWO} * solver.NSTO <= words_left(element_words);
  solver.KFAC = room ? carve_reals(solver.NSTO) : 0;
}

void carve_buffers() {
  solver.KASM = carve_reals(solver.MBLOCK);
  solver.KFAC = carve_reals(solver.MBLOCK);
}

bool carve_on_disk(int element_words) {
  solver.BLKEQ = carve_integers(MAXBLK);
  solver.BLKFLG = carve_integers(MAXBLK);
  check_storage(stiffness_phase);
  const bool cut = BLKSET(words_left(element_words));
  if (cut && blocked()) carve_buffers();
  if (cut && !blocked()) carve_one_block(element_words);
  storage.KEDAT = storage.NEXT;
  return cut;
}

}  // namespace

bool carve_stiffness(int element_words) {
  solver.NSTO *= triangles();
  const std::int64_t array_words = std::int64_t{ITWO} * solver.NSTO;
  storage.LAVSST = static_cast<int>(std::min<std::int64_t>(array_words, std::numeric_limits<int>::max()));
  if (records_on_disk()) return carve_on_disk(element_words);
  carve_in_core();
  return true;
}

}  // namespace tidearc
