// The solvers of a matrix that stands in blocks on disk: which record comes into which buffer, and when.
//
// Symmetric: the block at work fills the first buffer, the blocks before it pass through the second, then the block is
// reduced against itself and written.
//
// Unsymmetric, where two triangles meet in two buffers: an upper block needs the lower triangles of the blocks before
// it, and a lower block the upper ones. So the upper block comes first, against the lower triangles before it, and is
// parked on the new file; then the lower one against the upper triangles before it; then the upper one comes back into
// the second buffer and both are reduced against each other.
#include "solve/blocked.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <utility>

#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/factor.h"
#include "solve/profile.h"
#include "solve/solver.h"
#include "solve/unsymmetric.h"

namespace tidearc {

namespace {

ConstIntegers diagonals() { return pool.integers(solver.IDIAG, NEQ1()); }
ConstIntegers status_links() { return pool.integers(arrays.MSTAT, NEQ1()); }
Integers reach_flags() { return pool.integers(solver.BLKFLG, MAXBLK); }

/// Columns first..last of the matrix; blocks are numbered from 1 as their records are.
struct Block {
  int number;
  int first;
  int last;
};

class Blocks {
 public:
  Blocks() {
    const ConstIntegers BLKEQ = pool.integers(solver.BLKEQ, MAXBLK);
    int before = 0;
    for (int b = 1; b <= solver.NBLOCK; ++b) {
      blocks_[static_cast<std::size_t>(b - 1)] = {b, before + 1, before + BLKEQ(b)};
      before += BLKEQ(b);
    }
  }
  const Block* begin() const { return blocks_.data(); }
  const Block* end() const { return blocks_.data() + solver.NBLOCK; }
  const Block& operator()(int number) const { return blocks_[static_cast<std::size_t>(number - 1)]; }

 private:
  std::array<Block, MAXBLK> blocks_{};
};

Reals first_buffer() { return pool.reals(solver.KASM, solver.MBLOCK); }
Reals second_buffer() { return pool.reals(solver.KFAC, solver.MBLOCK); }
Profile<double> columns(Reals buffer, const Block& block) { return {buffer, diagonals(), block.last, block.first}; }

void read_block(int unit, Reals buffer) { FILE(unit, "READ", ITWO * buffer.size(), buffer.data()); }
void write_block(int unit, Reals buffer) { FILE(unit, "WRIT", ITWO * buffer.size(), buffer.data()); }
void copy_block(int from, int to) {
  read_block(from, first_buffer());
  write_block(to, first_buffer());
}
void rewind(std::initializer_list<int> files) {
  for (const int unit : files) FILE(unit, "REWI");
}

// The lowest row that a column of the block reaches.
int lowest_row(const Block& block) {
  const Profile<double> K = columns(first_buffer(), block);
  int row = block.first;
  for (int c = block.first; c <= block.last; ++c) row = std::min(row, K.top(c));
  return row;
}

bool reaches_prescribed(const Block& block, int row) {
  const ConstIntegers MSTAT = status_links();
  return MSTAT(row) > 0 || -MSTAT(row) < block.last;
}

void mark_reach(const Block& block) {
  reach_flags()(block.number) = reaches_prescribed(block, lowest_row(block)) ? 1 : 0;
}

// Brings the next assembled block into the first buffer; in front of it, when there is one, what its old factor keeps:
// columns before KFIRST and rows before KROW0.
void load_block(const Block& block, int assembled_file, int factor_file) {
  if (solver.KFIRST < 2) {
    read_block(assembled_file, first_buffer());
    return;
  }
  read_block(factor_file, first_buffer());
  read_block(assembled_file, second_buffer());
  copy_changed_rows(columns(second_buffer(), block), first_buffer(), solver.KFIRST, solver.KROW0);
}

// Blocks before `block` whose rows it is to be reduced at come into the second buffer one by one. `file` stands behind
// the records of the blocks before and of `parked` more; it ends behind those of the blocks before.
template <class Act>
void pass_earlier(const Blocks& blocks, const Block& block, int file, int parked, Act&& act) {
  const int row = std::max(lowest_row(block), solver.KROW0);
  int first = 1;
  while (first < block.number && blocks(first).last < row) ++first;
  FILE(file, "BACK", block.number - first + parked);
  for (int b = first; b < block.number; ++b) {
    read_block(file, second_buffer());
    act(columns(second_buffer(), blocks(b)));
  }
}

void reduce_block(const Blocks& blocks, const Block& block, const ReductionRange& range) {
  load_block(block, units.NT3, units.NT4);
  mark_reach(block);
  const Profile<double> K = columns(first_buffer(), block);
  pass_earlier(blocks, block, units.NT8, 0,
               [&](const Profile<const double>& earlier) { reduce_against(K, earlier, range); });
  const ZeroPivot zero = reduce_within(K, range);
  if (zero.equation != 0) stop_at_zero_pivot(zero.equation, zero.equation, false);
  write_block(units.NT8, first_buffer());
}

void reduce_symmetric_blocks(const Blocks& blocks) {
  const ReductionRange range{status_links(), equation_vector(arrays.PIVOT), solver.KFIRST, solver.KROW0};
  rewind({units.NT3, units.NT4, units.NT8});
  for (const Block& block : blocks) {
    if (block.last < solver.KFIRST) {
      FILE(units.NT3, "SKIP", 1);
      copy_block(units.NT4, units.NT8);
    } else {
      reduce_block(blocks, block, range);
    }
  }
  std::swap(units.NT4, units.NT8);
}

void reduce_triangles(const Blocks& blocks, const Block& block, const TriangleRange& range) {
  const Profile<double> target = columns(first_buffer(), block);
  load_block(block, units.NT3, units.NT4);
  mark_reach(block);
  pass_earlier(blocks, block, units.NT8, 0,
               [&](const Profile<const double>& earlier) { reduce_upper_against(target, earlier, range); });
  write_block(units.NT7, first_buffer());
  load_block(block, units.NT3, units.NT6);
  pass_earlier(blocks, block, units.NT7, 1,
               [&](const Profile<const double>& earlier) { reduce_lower_against(target, earlier, range); });
  read_block(units.NT7, second_buffer());
  reduce_triangles_within(columns(second_buffer(), block), target, range);
  FILE(units.NT7, "BACK", 1);
  write_block(units.NT7, second_buffer());
  write_block(units.NT8, first_buffer());
  const Reals D = equation_vector(arrays.PIVOT);
  for (int c = block.first; c <= block.last; ++c) D(c) = target.diagonal(c);
}

void reduce_unsymmetric_blocks(const Blocks& blocks) {
  const TriangleRange range{status_links(), solver.KFIRST, solver.KROW0};
  rewind({units.NT3, units.NT4, units.NT6, units.NT7, units.NT8});
  for (const Block& block : blocks) {
    if (block.last < solver.KFIRST) {
      FILE(units.NT3, "SKIP", 2);
      copy_block(units.NT4, units.NT7);
      copy_block(units.NT6, units.NT8);
    } else {
      reduce_triangles(blocks, block, range);
    }
  }
  std::swap(units.NT4, units.NT7);
  std::swap(units.NT6, units.NT8);
}

// Streams a file forward from its start: blocks that `wanted` names come into the first buffer.
template <class Wanted, class Act>
void stream_forward(const Blocks& blocks, int file, Wanted&& wanted, Act&& act) {
  FILE(file, "REWI");
  for (const Block& block : blocks) {
    if (wanted(block)) {
      read_block(file, first_buffer());
      act(columns(first_buffer(), block));
    } else {
      FILE(file, "SKIP", 1);
    }
  }
}

// Streams a file from its end back to its start.
template <class Act>
void stream_backward(const Blocks& blocks, int file, Act&& act) {
  for (const Block* block = blocks.end(); block != blocks.begin();) {
    --block;
    FILE(file, "BACK", 1);
    read_block(file, first_buffer());
    act(columns(first_buffer(), *block));
    FILE(file, "BACK", 1);
  }
}

bool has_reach(const Block& block) { return reach_flags()(block.number) != 0; }

void solve_symmetric_blocks(const Blocks& blocks, Reals R) {
  using Columns = Profile<const double>;
  const ConstIntegers MSTAT = status_links();
  if (std::any_of(blocks.begin(), blocks.end(), has_reach)) {
    stream_forward(blocks, units.NT4, has_reach, [&](const Columns& K) { couple_prescribed(K, MSTAT, R); });
  }
  const int f = first_loaded(R, sizes.NEQ);
  stream_forward(
      blocks, units.NT4, [&](const Block& block) { return block.last > f; },
      [&](const Columns& K) { forward_substitute(K, MSTAT, R, f); });
  divide_by_pivots(equation_vector(arrays.PIVOT), MSTAT, R, f, sizes.NEQ);
  stream_backward(blocks, units.NT4, [&](const Columns& K) { back_substitute(K, MSTAT, R); });
}

void solve_unsymmetric_blocks(const Blocks& blocks, Reals R) {
  using Columns = Profile<const double>;
  const ConstIntegers MSTAT = status_links();
  if (std::any_of(blocks.begin(), blocks.end(), has_reach)) {
    stream_forward(blocks, units.NT6, has_reach, [&](const Columns& L) { couple_lower(L, MSTAT, R); });
    stream_forward(blocks, units.NT4, has_reach, [&](const Columns& U) { couple_upper(U, MSTAT, R); });
  }
  const int f = first_loaded(R, sizes.NEQ);
  stream_forward(
      blocks, units.NT6, [&](const Block& block) { return block.last >= f; },
      [&](const Columns& L) { forward_substitute_lower(L, MSTAT, R, f); });
  // The upper records are walked from their end, wherever the file stands.
  FILE(units.NT4, "REWI");
  FILE(units.NT4, "SKIP", solver.NBLOCK);
  stream_backward(blocks, units.NT4, [&](const Columns& U) { back_substitute(U, MSTAT, R); });
}

}  // namespace

void SOLVDS(int rhs, SolveMode mode) {
  const Blocks blocks;
  if (mode != solve_only) reduce_symmetric_blocks(blocks);
  if (mode != reduce_only) solve_symmetric_blocks(blocks, equation_vector(rhs));
}

void SOLVDU(int rhs, SolveMode mode) {
  const Blocks blocks;
  if (mode != solve_only) reduce_unsymmetric_blocks(blocks);
  if (mode != reduce_only) solve_unsymmetric_blocks(blocks, equation_vector(rhs));
}

}  // namespace tidearc
