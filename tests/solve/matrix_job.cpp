// A matrix in any of the four storage schemes.
#include "matrix_job.h"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solve.h"
#include "solve/solver.h"

namespace tidearc::test {

namespace {

std::size_t at(int i) { return static_cast<std::size_t>(i); }

void reset() {
  sizes = {};
  solver = {};
  arrays = {};
  storage = {};
  units = {};
}

void lay_vectors() {
  arrays.MSTAT = carve_integers(NEQ1());
  arrays.STATUS = carve_integers(NEQ1());
  for (int* index : {&arrays.WORK, &arrays.RU, &arrays.PIVOT, &arrays.DIAG}) *index = carve_reals(NEQ1());
}

// Address of the first value of each block in the whole profile, counted from 0, and the end of the last one.
std::vector<int> block_starts(const std::vector<int>& IDIAG, const std::vector<int>& counts) {
  std::vector<int> starts{0};
  int last = 0;
  for (const int count : counts) {
    last += count;
    starts.push_back(IDIAG[at(last - 1)]);
  }
  return starts;
}

std::vector<int> directory() {
  const Integers BLKEQ = pool.integers(solver.BLKEQ, MAXBLK);
  return {BLKEQ.begin(), BLKEQ.begin() + solver.NBLOCK};
}

// Diagonal addresses of the whole profile, from those of the blocks.
std::vector<int> whole_addresses() {
  std::vector<int> IDIAG;
  int start = 0;
  const Integers stored = pool.integers(solver.IDIAG, NEQ1());
  for (const int count : directory()) {
    for (int i = 0; i < count; ++i) IDIAG.push_back(start + stored(static_cast<int>(IDIAG.size()) + 1));
    start = IDIAG.back();
  }
  return IDIAG;
}

void spoil(int index, int n) {
  const Reals values = pool.reals(index, n);
  std::fill(values.begin(), values.end(), std::numeric_limits<double>::quiet_NaN());
}

}  // namespace

MatrixJob::MatrixJob(int pool_words) {
  reset();
  keep_scratch_in_memory(true);
  pool.allocate(pool_words);
}

MatrixJob::~MatrixJob() {
  for (const int unit : {3, 4, 8, 13, 14}) close_tape(unit, true);
  release_outside_factor();
  pool.release();
  reset();
}

void MatrixJob::lay_out(const TestMatrix& matrix, const std::vector<int>& counts, bool outside) {
  reset();
  storage.NEXT = 1;
  sizes.NEQ = matrix.n();
  solver.KSTOR = (counts.size() > 1 ? 2 : 1) * (matrix.symmetric() ? 1 : -1);
  solver.NSTO = static_cast<int>(matrix.upper.A.size()) * triangles();
  solver.NBLOCK = static_cast<int>(counts.size());
  solver.IDIAG = carve_integers(NEQ1());
  solver.BLKEQ = carve_integers(MAXBLK);
  solver.BLKFLG = carve_integers(MAXBLK);
  lay_vectors();
  std::copy(counts.begin(), counts.end(), pool.integers(solver.BLKEQ, MAXBLK).begin());
  const std::vector<int> starts = block_starts(matrix.upper.IDIAG, counts);
  const Integers IDIAG = pool.integers(solver.IDIAG, NEQ1());
  int e = 0;
  for (std::size_t b = 0; b < counts.size(); ++b) {
    solver.MBLOCK = std::max(solver.MBLOCK, starts[b + 1] - starts[b] + counts[b]);
    for (int i = 0; i < counts[b]; ++i, ++e) IDIAG(e + 1) = matrix.upper.IDIAG[at(e)] - starts[b];
  }
  solver.KASM = carve_reals(blocked() ? solver.MBLOCK : solver.NSTO);
  solver.KFAC = outside ? 0 : carve_reals(blocked() ? solver.MBLOCK : solver.NSTO);
  set_status(std::vector<int>(at(sizes.NEQ), 0));
  assemble(matrix);
}

void MatrixJob::assemble(const TestMatrix& matrix) {
  if (blocked()) {
    assemble_blocks(matrix);
    return;
  }
  const Reals KASM = pool.reals(solver.KASM, solver.NSTO);
  std::copy(matrix.lower.begin(), matrix.lower.end(),
            std::copy(matrix.upper.A.begin(), matrix.upper.A.end(), KASM.begin()));
}

// On the second generation of the assembled blocks, which then becomes the first; the scratch file gets something else.
void MatrixJob::assemble_blocks(const TestMatrix& matrix) {
  const std::vector<int> starts = block_starts(matrix.upper.IDIAG, directory());
  const Reals buffer = pool.reals(solver.KASM, solver.MBLOCK);
  FILE(units.NT7, "REWI");
  for (std::size_t b = 0; b + 1 < starts.size(); ++b) {
    for (const std::vector<double>* values : {&matrix.upper.A, &matrix.lower}) {
      if (values->empty()) continue;
      std::fill(buffer.begin(), buffer.end(), -77.0);
      std::copy(values->begin() + starts[b], values->begin() + starts[b + 1], buffer.begin());
      FILE(units.NT7, "WRIT", ITWO * solver.MBLOCK, buffer.data());
    }
  }
  std::swap(units.NT3, units.NT7);
  FILE(units.NT8, "REWI");
  const int word = 5;
  FILE(units.NT8, "WRIT", 1, &word);
  spoil(solver.KASM, solver.MBLOCK);
  spoil(solver.KFAC, solver.MBLOCK);
}

void MatrixJob::set_status(const std::vector<int>& status) {
  const std::vector<int> links = links_by_definition(status);
  std::copy(links.begin(), links.end(), pool.integers(arrays.MSTAT, NEQ1()).begin());
}

void MatrixJob::reduce(int KFIRST, int KROW0) {
  solver.KFIRST = KFIRST;
  solver.KROW0 = KROW0;
  factorise();
  if (!blocked()) return;
  spoil(solver.KASM, solver.MBLOCK);
  spoil(solver.KFAC, solver.MBLOCK);
}

std::vector<double> MatrixJob::solve(const std::vector<double>& given) {
  const Reals RU = equation_vector(arrays.RU);
  std::copy(given.begin(), given.end(), RU.begin());
  SOLVE(arrays.RU);
  return {RU.begin(), RU.begin() + sizes.NEQ};
}

std::vector<double> MatrixJob::factor() const {
  if (!blocked()) {
    const Reals values = factor_values();
    return {values.begin(), values.end()};
  }
  std::vector<double> all;
  std::vector<double> record(at(solver.MBLOCK));
  const std::vector<int> starts = block_starts(whole_addresses(), directory());
  for (const int unit : {units.NT4, units.NT6}) {
    if (unit == units.NT6 && !unsymmetric()) continue;
    FILE(unit, "REWI");
    for (std::size_t b = 0; b + 1 < starts.size(); ++b) {
      FILE(unit, "READ", ITWO * solver.MBLOCK, record.data());
      all.insert(all.end(), record.begin(), record.begin() + (starts[b + 1] - starts[b]));
    }
  }
  return all;
}

std::vector<int> random_counts(Random& random, int n, int blocks) {
  std::set<int> ends{n};
  while (static_cast<int>(ends.size()) < std::min(blocks, n)) ends.insert(random_int(random, 1, n));
  std::vector<int> counts;
  int before = 0;
  for (const int end : ends) {
    counts.push_back(end - before);
    before = end;
  }
  return counts;
}

}  // namespace tidearc::test
