// The cut of a structure matrix into blocks, its page on the report, and the empty block records.
#include "solve/blocking.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "model/control.h"
#include "run/layout.h"
#include "run/report_lines.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/workpool.h"
#include "solve/solver.h"

namespace tidearc {

namespace {

constexpr int buffers = 2;  ///< blocks that stand in memory at a time

// Where blocks end. A block takes columns while their heights and their slots fit.
class BlockWalk {
 public:
  BlockWalk(std::int64_t length, Integers last) : MBLOCK_(length), last_(last) {}

  void take(int equation, int height) {
    sum_ += height + 1;
    if (sum_ <= MBLOCK_) return;
    end_block(equation - 1);
    sum_ = height + 1;
  }
  /// Blocks beyond the room of the directory are counted only.
  void end_block(int equation) {
    if (++count_ <= last_.size()) last_(count_) = equation;
  }
  int count() const { return count_; }

 private:
  std::int64_t MBLOCK_;
  Integers last_;
  std::int64_t sum_ = 0;
  int count_ = 0;
};

int walk_blocks(ConstIntegers IDIAG, int NEQ, std::int64_t MBLOCK, Integers last) {
  BlockWalk walk(MBLOCK, last);
  int address = 0;  // of the diagonal before
  for (int e = 1; e <= NEQ; ++e) {
    walk.take(e, IDIAG(e) - address);
    address = IDIAG(e);
  }
  walk.end_block(NEQ);
  return walk.count();
}

// Turns last equations into counts and addresses of the whole profile into addresses within the block. Returns the
// largest count.
int rebase(Integers IDIAG, Integers BLKEQ, int NBLOCK) {
  int before = 0;   // last equation of the block before
  int address = 0;  // and its address in the whole profile
  int most = 0;
  for (int b = 1; b <= NBLOCK; ++b) {
    const int last = BLKEQ(b);
    const int next_address = IDIAG(last);
    for (int e = before + 1; e <= last; ++e) IDIAG(e) -= address;
    BLKEQ(b) = last - before;
    most = std::max(most, BLKEQ(b));
    before = last;
    address = next_address;
  }
  return most;
}

void write_table(const BlockingInput& input, const Blocking& cut) {
  const std::array<std::pair<const char*, std::int64_t>, 6> rows{{
      {"NUMBER OF EQUILIBRIUM EQUATIONS ............ =", input.NEQ},
      {"MAXIMUM HALF BAND WIDTH .................... =", input.NHBW},
      {"COMPACTED VECTOR LENGTH OF STIFF. MATRIX ... =", input.NSTO},
      {"STORAGE PROVIDED FOR MATRIX BLOCKING ....... =", cut.storage},
      {"STORAGE ALLOCATED FOR A MATRIX BLOCK ....... =", cut.MBLOCK * ITWO},
      {"NUMBER OF MATRIX BLOCKS .................... =", cut.NBLOCK},
  }};
  for (const auto& [label, value] : rows) write(units.NDOUT, "5X,A46,I6,/", label, static_cast<int>(value));
}

void write_page(const BlockingInput& input, const Blocking& cut) {
  put_text(units.NDOUT,
           '1' + std::string(37, '*') + "\n STIFFNESS MATRIX BLOCKING INFORMATION\n" + row_of('*', 38) + "\n");
  write_table(input, cut);
}

bool set_error(const std::string& cause) {
  complain(not_on_deck, cause);
  set_fatal_flag();
  run.had_data_error = true;
  return false;
}

bool limited_by_card(const BlockingInput& input) {
  return input.words_per_block != 0 && input.words_per_block < input.storage;
}

bool refuse_storage(const BlockingInput& input, const Blocking& cut) {
  write(units.NDOUT, "/,/,/,/,5X,'**** PROGRAM ERROR ****   INSUFFICIENT STORAGE',/,/");
  write_table(input, cut);
  const std::int64_t least = std::int64_t{buffers} * ITWO * (input.NHBW + 1);
  // When both are too small the pool is named first: a larger one is needed in any case.
  const bool card = limited_by_card(input) && input.storage >= least;
  const std::string words = card ? "the storage card allows " + std::to_string(input.words_per_block) + " words"
                                 : std::to_string(input.storage) + " words are left";
  return set_error("insufficient storage for the stiffness matrix in blocks: " + words + ", a column of " +
                   std::to_string(input.NHBW) + " reals takes at least " + std::to_string(least) + " words");
}

bool refuse_blocks(const BlockingInput& input, const Blocking& cut) {
  write(units.NDOUT, "5X,'**** PROGRAM ERROR ****   NUMBER OF MATRIX BLOCKS MORE THAN LIMIT OF',I6", MAXBLK);
  const std::string remedy = limited_by_card(input) ? "more words on the storage card make" : "a larger pool makes";
  return set_error("the stiffness matrix would take " + std::to_string(cut.NBLOCK) + " blocks, at most " +
                   std::to_string(MAXBLK) + " are possible: " + remedy + " larger blocks");
}

// Zero blocks with the addresses of their columns, from which the first assembly starts.
void write_empty_blocks(const Blocking& cut, ConstIntegers IDIAG, ConstIntegers BLKEQ, int triangles) {
  const int words = static_cast<int>(cut.MBLOCK) * ITWO;
  const Integers record(pool.words(storage.NEXT, words), words);
  FILE(units.NT3, "REWI");
  int first = 1;
  for (int b = 1; b <= cut.NBLOCK; ++b) {
    std::fill(record.begin(), record.end(), 0);
    const int n = BLKEQ(b);
    for (int i = 1; i <= n; ++i) record(words - ITWO * (n - i)) = IDIAG(first + i - 1);
    for (int t = 1; t <= triangles; ++t) FILE(units.NT3, "WRIT", words, record.data());
    first += n;
  }
}

}  // namespace

Blocking cut_blocks(const BlockingInput& input, Integers IDIAG, Integers BLKEQ) {
  const int T = input.triangles;
  const std::int64_t length = input.NSTO / T;
  Blocking cut;
  cut.storage = input.storage;
  if (input.words_per_block != 0) cut.storage = std::min<std::int64_t>(cut.storage, input.words_per_block);
  if (cut.storage > T * (length + input.NEQ) * ITWO) {
    cut.NBLOCK = 1;
    cut.MBLOCK = length + input.NEQ;
    cut.maxeq = BLKEQ(1) = input.NEQ;
    return cut;
  }
  cut.MBLOCK = cut.storage / (buffers * ITWO);
  cut.storage = cut.MBLOCK * buffers * ITWO;
  if (cut.MBLOCK <= input.NHBW) return cut;
  cut.NBLOCK = walk_blocks(IDIAG, input.NEQ, cut.MBLOCK, BLKEQ);
  if (cut.NBLOCK <= BLKEQ.size()) cut.maxeq = rebase(IDIAG, BLKEQ, cut.NBLOCK);
  return cut;
}

bool BLKSET(std::int64_t storage_words) {
  const BlockingInput input{sizes.NEQ, solver.NHBW, solver.NSTO, storage_words, solver.NWDBLK, unsymmetric() ? 2 : 1};
  const Integers IDIAG = pool.integers(solver.IDIAG, NEQ1());
  const Integers BLKEQ = pool.integers(solver.BLKEQ, MAXBLK);
  const Blocking cut = cut_blocks(input, IDIAG, BLKEQ);
  solver.NBLOCK = cut.NBLOCK;
  solver.MBLOCK = static_cast<int>(cut.MBLOCK);
  if (cut.NBLOCK == 0) return refuse_storage(input, cut);
  write_page(input, cut);
  if (cut.NBLOCK > MAXBLK) return refuse_blocks(input, cut);
  if (cut.NBLOCK > 1) write_empty_blocks(cut, IDIAG, BLKEQ, input.triangles);
  return true;
}

}  // namespace tidearc
