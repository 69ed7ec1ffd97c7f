// A structure matrix without a structure.
#include "block_problem.h"

#include <algorithm>
#include <stdexcept>

#include "../support/element_model.h"
#include "assembly/add.h"
#include "assembly/blocks.h"
#include "assembly/element_tape.h"
#include "solve/profile.h"
#include "solve/stiffness_area.h"

namespace tidearc::test {

namespace {

constexpr int pool_words = 400000;

Profile<double> in_core(int triangle) {
  const int length = triangle_length();
  return {pool.reals(solver.KASM + (triangle - 1) * ITWO * length, length), pool.integers(solver.IDIAG, NEQ1()),
          sizes.NEQ};
}

bool add_in_core(const MadeUpElement& e) {
  const ConstIntegers LM(e.LM.data(), static_cast<int>(e.LM.size()));
  if (unsymmetric()) return (e.packed ? ADDUNP : ADDUNS)(LM, e.EMAT.data(), {in_core(1), in_core(2)});
  return (e.packed ? ADDSYP : ADDSYM)(LM, e.EMAT.data(), in_core(1));
}

}  // namespace

BlockProblem::BlockProblem(int KSTOR, const std::vector<int>& first_rows, int NWDBLK) : scratch_("") {
  reset_model();
  keep_scratch_in_memory(true);
  pool.allocate(pool_words);
  sizes.NEQ = static_cast<int>(first_rows.size());
  solver.KSTOR = KSTOR;
  solver.NWDBLK = NWDBLK;
  masses.MARKS = carve_integers(NEQ1());
  std::copy(first_rows.begin(), first_rows.end(), pool.integers(masses.MARKS, NEQ1()).begin());
  finish_profile();
  carve_analysis_arrays();
  refused_ = !carve_stiffness(0);
}

BlockProblem::~BlockProblem() { reset_model(); }

void BlockProblem::assemble(const std::vector<MadeUpElement>& elements, bool reset, bool stand_ins) {
  solver.KRESET = reset ? 1 : 0;
  solver.KFIRST = sizes.NEQ;
  if (blocked()) begin_element_matrices();
  if (!blocked() && reset) std::ranges::fill(pool.reals(solver.KASM, solver.NSTO), 0.0);
  for (const MadeUpElement& e : elements) {
    const ConstIntegers LM(e.LM.data(), static_cast<int>(e.LM.size()));
    solver.KFIRST = std::min(solver.KFIRST, lowest_equation(LM, sizes.NEQ));
    if (blocked()) {
      ADDTAP(LM, e.packed, e.EMAT.data());
    } else if (!add_in_core(e)) {
      throw std::runtime_error("outside the profile");
    }
  }
  if (blocked()) (unsymmetric() ? BLKASU : BLKASM)(stand_ins ? Diagonals::stand_ins : Diagonals::as_added);
}

std::vector<std::vector<int>> BlockProblem::records() const {
  std::vector<std::vector<int>> all;
  FILE(units.NT3, "REWI");
  for (int i = 0; i < solver.NBLOCK * triangles(); ++i) {
    const auto record = next_record(units.NT3);
    all.emplace_back(record.begin(), record.end());
  }
  return all;
}

std::vector<double> BlockProblem::values(int triangle) const {
  if (!blocked()) {
    const Reals A = in_core(triangle).A;
    return {A.begin(), A.end()};
  }
  std::vector<double> all;
  const std::vector<std::vector<int>> found = records();
  int last = 0;
  for (int b = 1; b <= solver.NBLOCK; ++b) {
    last += pool.integers(solver.BLKEQ, MAXBLK)(b);
    const std::vector<int>& record = found[static_cast<std::size_t>((b - 1) * triangles() + triangle - 1)];
    const double* A = reinterpret_cast<const double*>(record.data());
    all.insert(all.end(), A, A + pool.integers(solver.IDIAG, NEQ1())(last));
  }
  return all;
}

}  // namespace tidearc::test
