// Element matrices into a matrix that stands in blocks on disk.
//
// The two buffers hold a stretch of columns at a time: two blocks of a symmetric matrix, or both triangles of one block
// of an unsymmetric one. Stretches are taken in groups. The first of a group goes through all element matrices and
// keeps aside those that the others of its group need; so the long file is read once a group, about sqrt(NBLOCK) times.
#include "assembly/blocks.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "assembly/add.h"
#include "assembly/element_tape.h"
#include "elements/contract/work.h"
#include "model/control.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/vectors.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

/// A block, and the equation before its first.
struct BlockPlace {
  int number = 1;
  int before = 0;

  int equations() const { return pool.integers(solver.BLKEQ, MAXBLK)(number); }
  int last() const { return before + equations(); }
  BlockPlace next() const { return {number + 1, last()}; }
};

int record_words_of_block() { return ITWO * solver.MBLOCK; }

void read_block(int buffer) {
  FILE(units.NT3, "READ", record_words_of_block(), pool.words(buffer, record_words_of_block()));
}
void write_block(int buffer) {
  FILE(units.NT7, "WRIT", record_words_of_block(), pool.words(buffer, record_words_of_block()));
}

/// The record of a block in a buffer, as columns. After a reset its coefficients are zero; the addresses in its tail
/// stay.
Profile<double> load_block(const BlockPlace& block, int buffer) {
  read_block(buffer);
  const Reals A = pool.reals(buffer, solver.MBLOCK);
  if (solver.KRESET == 1) RZERO(A.data(), solver.MBLOCK - block.equations());
  return {A, pool.integers(solver.IDIAG, NEQ1()), block.last(), block.before + 1};
}

void keep_diagonal(const Profile<double>& K) {
  const Reals DIAG = equation_vector(arrays.DIAG);
  for (int e = K.first; e <= K.NEQ; ++e) DIAG(e) = K.diagonal(e);
}

/// One or two blocks of a symmetric matrix in the buffers.
class PairOfBlocks {
 public:
  static constexpr int blocks = 2;
  static constexpr const char* assembler = "BLKASM";

  explicit PairOfBlocks(const BlockPlace& block) : first_(load_block(block, solver.KASM)) {
    if (block.number < solver.NBLOCK) second_ = load_block(block.next(), solver.KFAC);
  }
  int last() const { return second_.NEQ > 0 ? second_.NEQ : first_.NEQ; }
  int first() const { return first_.first; }

  bool add(const MatrixHeader& header, const double* EMAT) const {
    const auto add_one = header.packed != 0 ? ADDSYP : ADDSYM;
    return add_one(header.equations(), EMAT, first_) &&
           (second_.NEQ == 0 || add_one(header.equations(), EMAT, second_));
  }
  void finish(Diagonals diagonals) const {
    finish_block(first_, solver.KASM, diagonals);
    if (second_.NEQ > 0) finish_block(second_, solver.KFAC, diagonals);
  }

 private:
  static void finish_block(const Profile<double>& K, int buffer, Diagonals diagonals) {
    finish_diagonals(K, diagonals);
    keep_diagonal(K);
    write_block(buffer);
  }

  Profile<double> first_;
  Profile<double> second_;  ///< no columns when the last block stands alone
};

/// Both triangles of one block of an unsymmetric matrix in the buffers.
class PairOfTriangles {
 public:
  static constexpr int blocks = 1;
  static constexpr const char* assembler = "BLKASU";

  explicit PairOfTriangles(const BlockPlace& block)
      : K_{load_block(block, solver.KASM), load_block(block, solver.KFAC)} {}
  int last() const { return K_.upper.NEQ; }
  int first() const { return K_.upper.first; }

  bool add(const MatrixHeader& header, const double* EMAT) const {
    return (header.packed != 0 ? ADDUNP : ADDUNS)(header.equations(), EMAT, K_);
  }
  void finish(Diagonals diagonals) const {
    finish_diagonals(K_.upper, diagonals);
    finish_diagonals(K_.lower, diagonals);
    keep_diagonal(K_.upper);
    write_block(solver.KASM);
    write_block(solver.KFAC);
  }

 private:
  Triangles K_;
};

/// True when an equation of the element lies in from..to.
bool has_equation(ConstIntegers LM, int from, int to) {
  return std::any_of(LM.begin(), LM.end(), [from, to](int e) { return e >= from && e <= to; });
}

/// Adds `count` element matrices from a unit to a stretch. Those with an equation behind it, up to `top`, are written
/// on `aside` (0: none). Returns how many were.
template <class Stretch>
int add_elements(const Stretch& stretch, int unit, int count, int aside, int top) {
  FILE(unit, "REWI");
  int kept = 0;
  for (int i = 0; i < count; ++i) {
    const MatrixHeader header = read_matrix_header(unit);
    const bool wanted = has_equation(header.equations(), stretch.first(), stretch.last());
    const bool later = aside != 0 && has_equation(header.equations(), stretch.last() + 1, top);
    if (!wanted && !later) {
      FILE(unit, "SKIP", 1);
      continue;
    }
    double* EMAT = element.EMAT.data();
    FILE(unit, "READ", header.value_words(), EMAT);
    if (wanted && !stretch.add(header, EMAT)) {
      complain(not_on_deck, "an element matrix reaches outside the profile of the structure matrix");
      FATERR(Stretch::assembler);
    }
    if (!later) continue;
    write_element_matrix(aside, header, EMAT);
    ++kept;
  }
  return kept;
}

/// Stretches that share one reading of all element matrices.
int stretches_of_group() { return static_cast<int>(std::sqrt(static_cast<double>(solver.NBLOCK))) / 2 + 1; }

/// Assembles the stretches of one group; returns the first block behind it.
template <class Stretch>
BlockPlace assemble_group(BlockPlace block, Diagonals diagonals) {
  BlockPlace behind = block;
  for (int i = 0; i < stretches_of_group() * Stretch::blocks && behind.number <= solver.NBLOCK; ++i)
    behind = behind.next();
  const int top = behind.before;
  int kept = 0;
  for (bool leading = true; block.number < behind.number; leading = false) {
    const Stretch stretch(block);
    if (leading) {
      FILE(units.NT8, "REWI");
      kept = add_elements(stretch, units.NT9, solver.NADDED, units.NT8, top);
    } else {
      add_elements(stretch, units.NT8, kept, 0, top);
    }
    stretch.finish(diagonals);
    for (int i = 0; i < Stretch::blocks && block.number < behind.number; ++i) block = block.next();
  }
  return behind;
}

/// Copies the blocks that no element of this assembly reaches. After a reset none is copied: what stood in a block
/// goes, and equations without elements need their stand-ins.
BlockPlace copy_unchanged_blocks(int records) {
  BlockPlace block;
  if (solver.KRESET == 1) return block;
  for (; block.number <= solver.NBLOCK && block.last() < solver.KFIRST; block = block.next()) {
    for (int i = 0; i < records; ++i) {
      read_block(solver.KASM);
      write_block(solver.KASM);
    }
  }
  return block;
}

template <class Stretch>
void assemble_blocks(Diagonals diagonals) {
  for (const int unit : {units.NT3, units.NT7}) FILE(unit, "REWI");
  BlockPlace block = copy_unchanged_blocks(triangles());
  while (block.number <= solver.NBLOCK) block = assemble_group<Stretch>(block, diagonals);
  std::swap(units.NT3, units.NT7);
}

}  // namespace

void BLKASM(Diagonals diagonals) { assemble_blocks<PairOfBlocks>(diagonals); }

void BLKASU(Diagonals diagonals) { assemble_blocks<PairOfTriangles>(diagonals); }

}  // namespace tidearc
