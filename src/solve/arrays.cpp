// The analysis vectors: their order in the pool.
#include "solve/arrays.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>

#include "sea/grid.h"
#include "solve/solve.h"

namespace tidearc {

namespace {

constexpr int analysis_phase = 9;

void carve_vectors(std::initializer_list<int*> indices, int length = NEQ1()) {
  for (int* index : indices) *index = carve_reals(length);
}

int carve_table(int vectors) { return carve_reals(static_cast<std::int64_t>(vectors) * NEQ1()); }

/// Entries of an output list: all nodes for a length of -1.
int listed(int length) { return length == -1 ? sizes.NUMNP : length; }

}  // namespace

void carve_analysis_arrays(Analyses wanted) {
  // Reals then fall on 8-byte boundaries of the pool.
  if (storage.NEXT % 2 == 0) ++storage.NEXT;
  storage.KSTART = storage.NEXT;
  if (storage.NEXT <= storage.MSTOR) pool.clear_from(storage.NEXT);
  ArrayBlock& a = arrays;
  carve_vectors({&a.U, &a.VEL, &a.ACC, &a.R, &a.RU, &a.RA, &a.RINC, &a.U0});
  a.MSTAT = carve_integers(NEQ1());
  carve_vectors({&a.XP});
  a.PATTERN = carve_table(static_loads.NPAT);
  carve_vectors({&a.DDIS, &a.P, &a.ENVMAX, &a.TMAX, &a.ENVMIN, &a.TMIN, &a.WORK});
  a.ZDISP = carve_table(static_loads.NZDISP);
  carve_vectors({&a.DSTEP, &a.WAVE});
  grid_wave.KGRID = carve_reals(std::int64_t{grid_reals} * grid_wave.NH * grid_wave.NV);
  carve_vectors({&a.BFGS1, &a.BFGS2});
  a.STATUS = carve_integers(NEQ1());
  carve_vectors({&a.PIVOT, &a.DIAG});
  carve_vectors({&a.UN, &a.UTS, &a.VT, &a.AT, &a.VD, &a.PS, &a.PN, &a.RN, &a.D, &a.DN, &a.DAMP, &a.XI, &a.XIN},
                wanted == Analyses::all ? NEQ1() : 0);
  for (std::size_t axis = 0; axis < 3; ++axis) a.HISTORY[axis] = carve_reals(listed(output.NPR[axis]));
  check_storage(analysis_phase);
  reset_status();
}

}  // namespace tidearc
