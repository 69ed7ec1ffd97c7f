// Element matrices of one assembly on their way into the blocks.
#include "assembly/element_tape.h"

#include <algorithm>

#include "run/tapefile.h"
#include "run/units.h"
#include "solve/solver.h"

namespace tidearc {

void begin_element_matrices() {
  solver.NADDED = 0;
  FILE(units.NT9, "REWI");
}

void ADDTAP(ConstIntegers LM, bool packed, const double* EMAT) {
  MatrixHeader header{packed ? 1 : 0, LM.size(), {}};
  std::copy(LM.begin(), LM.end(), header.LM.begin());
  write_element_matrix(units.NT9, header, EMAT);
  ++solver.NADDED;
}

void write_element_matrix(int unit, const MatrixHeader& header, const double* EMAT) {
  FILE(unit, "WRIT", matrix_header_words, static_cast<const void*>(&header));
  FILE(unit, "WRIT", header.value_words(), static_cast<const void*>(EMAT));
}

MatrixHeader read_matrix_header(int unit) {
  MatrixHeader header;
  FILE(unit, "READ", matrix_header_words, &header);
  return header;
}

}  // namespace tidearc
