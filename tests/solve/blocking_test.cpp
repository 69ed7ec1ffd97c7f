// The cut of a profile into blocks, its page, its two errors, and the empty block records.
#include "solve/blocking.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "model/control.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/solver.h"
#include "solver_fixture.h"

namespace tidearc {
namespace {

// A profile by its column heights, and the directory that a cut fills.
struct Cut {
  std::vector<int> IDIAG;
  std::vector<int> BLKEQ = std::vector<int>(MAXBLK, -7);
  Blocking result;

  Cut(const std::vector<int>& heights, std::int64_t storage, int words_per_block = 0, int triangles = 1) {
    int address = 0;
    BlockingInput input;
    for (const int height : heights) {
      IDIAG.push_back(address += height);
      input.NHBW = std::max(input.NHBW, height);
    }
    input.NEQ = static_cast<int>(heights.size());
    input.NSTO = std::int64_t{address} * triangles;
    input.storage = storage;
    input.words_per_block = words_per_block;
    input.triangles = triangles;
    result = cut_blocks(input, {IDIAG.data(), input.NEQ}, {BLKEQ.data(), MAXBLK});
  }
  std::vector<int> counts() const { return {BLKEQ.begin(), BLKEQ.begin() + result.NBLOCK}; }
};

// Nine reals in five columns: one triangle and its slots take 28 words.
const std::vector<int> five_columns{1, 2, 3, 1, 2};

TEST(BlockCut, LeavesAMatrixWholeThatLeavesAWordOfItsStorage) {
  const Cut cut(five_columns, 29);
  EXPECT_EQ(cut.result.NBLOCK, 1);
  EXPECT_EQ(cut.result.MBLOCK, 14);
  EXPECT_EQ(cut.result.storage, 29);
  EXPECT_EQ(cut.result.maxeq, 5);
  EXPECT_EQ(cut.BLKEQ[0], 5);
  EXPECT_EQ(cut.IDIAG, (std::vector<int>{1, 3, 6, 7, 9}));
}

TEST(BlockCut, BlocksAMatrixWhoseStorageIsJustWhatItTakes) {
  const Cut cut(five_columns, 28);
  EXPECT_EQ(cut.result.MBLOCK, 7);
  EXPECT_EQ(cut.result.storage, 28);
  EXPECT_EQ(cut.counts(), (std::vector<int>{2, 2, 1}));
}

TEST(BlockCut, EndsABlockBeforeTheColumnThatNoLongerFits) {
  // With their slots the columns take 2, 3, 4, 2, 3: blocks of six hold 2 + 3, 4 + 2, 3.
  const Cut cut(five_columns, 27);
  EXPECT_EQ(cut.result.MBLOCK, 6);
  EXPECT_EQ(cut.result.storage, 24) << "two blocks of whole reals";
  EXPECT_EQ(cut.result.NBLOCK, 3);
  EXPECT_EQ(cut.result.maxeq, 2);
  EXPECT_EQ(cut.counts(), (std::vector<int>{2, 2, 1}));
  EXPECT_EQ(cut.IDIAG, (std::vector<int>{1, 3, 3, 4, 2})) << "addresses within each block";
}

TEST(BlockCut, FillsABlockToItsLastSlot) {
  EXPECT_EQ(Cut(five_columns, 20).counts(), (std::vector<int>{2, 1, 2}));        // 2 + 3 | 4 | 2 + 3
  EXPECT_EQ(Cut(five_columns, 16).counts(), (std::vector<int>{1, 1, 1, 1, 1}));  // 2 | 3 | 4 | 2 | 3
}

TEST(BlockCut, RefusesABlockThatIsNotLongerThanTheTallestColumn) {
  const Cut tight(five_columns, 4 * 4);
  EXPECT_EQ(tight.result.MBLOCK, 4);
  EXPECT_GT(tight.result.NBLOCK, 0);
  const Cut refused(five_columns, 4 * 4 - 1);
  EXPECT_EQ(refused.result.MBLOCK, 3);
  EXPECT_EQ(refused.result.storage, 12);
  EXPECT_EQ(refused.result.NBLOCK, 0);
  EXPECT_EQ(refused.IDIAG, (std::vector<int>{1, 3, 6, 7, 9}));
  EXPECT_EQ(Cut(five_columns, -100).result.NBLOCK, 0);
}

TEST(BlockCut, TakesTheCardsLimitOnlyWhenItIsSmaller) {
  EXPECT_EQ(Cut(five_columns, 1000, 27).result.storage, 24);
  EXPECT_EQ(Cut(five_columns, 1000, 27).result.NBLOCK, 3);
  EXPECT_EQ(Cut(five_columns, 27, 1000).result.storage, 24);
  EXPECT_EQ(Cut(five_columns, 1000, 0).result.NBLOCK, 1);
  EXPECT_EQ(Cut(five_columns, 1000, 29).result.storage, 29);
  EXPECT_EQ(Cut(five_columns, 1000, -5).result.NBLOCK, 0);
}

TEST(BlockCut, OfTwoTrianglesNeedsTwiceTheStorageForAWholeMatrix) {
  EXPECT_EQ(Cut(five_columns, 57, 0, 2).result.MBLOCK, 14);
  EXPECT_EQ(Cut(five_columns, 57, 0, 2).result.NBLOCK, 1);
  // A buffer holds one triangle of a block. With just the whole storage it holds one triangle of the whole matrix, so
  // the walk ends with a single block, which is solved in core.
  EXPECT_EQ(Cut(five_columns, 56, 0, 2).result.NBLOCK, 1);
  EXPECT_EQ(Cut(five_columns, 56, 0, 2).result.MBLOCK, 14);
  EXPECT_EQ(Cut(five_columns, 55, 0, 2).result.MBLOCK, 13);
  EXPECT_EQ(Cut(five_columns, 55, 0, 2).counts(), (std::vector<int>{4, 1}));
}

TEST(BlockCut, CountsBlocksBeyondTheLimitWithoutCutting) {
  const std::vector<int> diagonal(21, 1);
  const Cut cut(diagonal, 4 * 2);  // one column a block
  EXPECT_EQ(cut.result.NBLOCK, 21);
  EXPECT_EQ(cut.IDIAG.back(), 21);
  const Cut most(std::vector<int>(20, 1), 4 * 2);
  EXPECT_EQ(most.counts(), std::vector<int>(20, 1));
  EXPECT_EQ(most.IDIAG, std::vector<int>(20, 1));
}

TEST(BlockCut, OfEqualColumnsMakesEqualBlocks) {
  const Cut cut(std::vector<int>(60, 1), 4 * 20);
  EXPECT_EQ(cut.counts(), std::vector<int>(6, 10));
  EXPECT_EQ(cut.result.maxeq, 10);
}

class BlockSet : public test::SolverProblem {
 protected:
  BlockSet() { run = {}; }
  ~BlockSet() override {
    run = {};
    close_tape(units.NT3, true);
  }
  void with_columns(const std::vector<int>& heights, int KSTOR) {
    sizes.NEQ = static_cast<int>(heights.size());
    storage.NEXT = 1;
    solver.KSTOR = KSTOR;
    solver.IDIAG = carve_integers(NEQ1());
    solver.BLKEQ = carve_integers(MAXBLK);
    int address = 0;
    int e = 0;
    for (const int height : heights) {
      solver.NHBW = std::max(solver.NHBW, height);
      pool.integers(solver.IDIAG, NEQ1())(++e) = address += height;
    }
    solver.NSTO = address * triangles();
    keep_scratch_in_memory(true);
  }
  static std::string table(int NEQ, int NHBW, int NSTO, int provided, int allocated, int NBLOCK) {
    const auto row = [](const std::string& label, int value) {
      const std::string digits = std::to_string(value);
      return "     " + label + std::string(6 - digits.size(), ' ') + digits + "\n\n";
    };
    return row("NUMBER OF EQUILIBRIUM EQUATIONS ............ =", NEQ) +
           row("MAXIMUM HALF BAND WIDTH .................... =", NHBW) +
           row("COMPACTED VECTOR LENGTH OF STIFF. MATRIX ... =", NSTO) +
           row("STORAGE PROVIDED FOR MATRIX BLOCKING ....... =", provided) +
           row("STORAGE ALLOCATED FOR A MATRIX BLOCK ....... =", allocated) +
           row("NUMBER OF MATRIX BLOCKS .................... =", NBLOCK);
  }
  static std::string heading() {
    return "1" + std::string(37, '*') + "\n STIFFNESS MATRIX BLOCKING INFORMATION\n " + std::string(38, '*') + "\n";
  }
  static std::vector<int> record(int words) {
    std::vector<int> values(static_cast<std::size_t>(words));
    FILE(units.NT3, "READ", words, values.data());
    return values;
  }
  static bool at_end() {
    int word = 0;
    return test::stop_of([&] { FILE(units.NT3, "READ", 0, &word); }).has_value();
  }
};

TEST_F(BlockSet, PrintsItsPageAndSetsTheDirectory) {
  with_columns(five_columns, 2);
  EXPECT_TRUE(BLKSET(27));
  EXPECT_EQ(scratch.report(), heading() + table(5, 3, 9, 24, 12, 3));
  EXPECT_EQ(solver.NBLOCK, 3);
  EXPECT_EQ(solver.MBLOCK, 6);
  const Integers BLKEQ = pool.integers(solver.BLKEQ, 3);
  EXPECT_EQ(std::vector<int>(BLKEQ.begin(), BLKEQ.end()), (std::vector<int>{2, 2, 1}));
  const Integers IDIAG = pool.integers(solver.IDIAG, 5);
  EXPECT_EQ(std::vector<int>(IDIAG.begin(), IDIAG.end()), (std::vector<int>{1, 3, 3, 4, 2}));
  EXPECT_EQ(run.RUNMOD, 0);
}

TEST_F(BlockSet, WritesZeroBlocksWithTheirAddressesInTheLastSlots) {
  with_columns(five_columns, 2);
  std::fill_n(pool.words(storage.NEXT, 100), 100, 77);
  ASSERT_TRUE(BLKSET(27));
  FILE(units.NT3, "REWI");
  EXPECT_EQ(record(12), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 3}));
  EXPECT_EQ(record(12), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 3, 0, 4}));
  EXPECT_EQ(record(12), (std::vector<int>{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 2}));
  EXPECT_TRUE(at_end());
}

TEST_F(BlockSet, WritesEachUnsymmetricBlockTwice) {
  with_columns(five_columns, -2);
  ASSERT_TRUE(BLKSET(27));
  EXPECT_EQ(scratch.report(), heading() + table(5, 3, 18, 24, 12, 3));
  FILE(units.NT3, "REWI");
  std::vector<int> addresses;
  for (int r = 1; r <= 6; ++r) addresses.push_back(record(12)[11]);
  EXPECT_EQ(addresses, (std::vector<int>{3, 3, 4, 4, 2, 2}));
  EXPECT_TRUE(at_end());
}

TEST_F(BlockSet, WritesNoRecordOfAWholeMatrix) {
  with_columns(five_columns, 2);
  EXPECT_TRUE(BLKSET(29));
  EXPECT_EQ(scratch.report(), heading() + table(5, 3, 9, 29, 28, 1));
  EXPECT_EQ(solver.NBLOCK, 1);
  FILE(units.NT3, "REWI");
  EXPECT_TRUE(at_end());
}

TEST_F(BlockSet, TakesTheLimitOfTheStorageCard) {
  with_columns(five_columns, 2);
  solver.NWDBLK = 20;
  EXPECT_TRUE(BLKSET(100000));
  EXPECT_EQ(scratch.report(), heading() + table(5, 3, 9, 20, 10, 3));
}

TEST_F(BlockSet, RefusesTooLittleStorage) {
  with_columns(five_columns, 2);
  EXPECT_FALSE(BLKSET(15));
  EXPECT_EQ(scratch.report(),
            "\n\n\n\n     **** PROGRAM ERROR ****   INSUFFICIENT STORAGE\n\n\n" + table(5, 3, 9, 12, 6, 0));
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_TRUE(run.had_data_error);
  EXPECT_NE(scratch.errors().find("15 words are left, a column of 3 reals takes at least 16 words"), std::string::npos)
      << scratch.errors();
  FILE(units.NT3, "REWI");
  EXPECT_TRUE(at_end());
}

TEST_F(BlockSet, RefusesMoreThanTwentyBlocks) {
  with_columns(std::vector<int>(21, 1), 2);
  EXPECT_FALSE(BLKSET(8));
  EXPECT_EQ(scratch.report(), heading() + table(21, 1, 21, 8, 4, 21) +
                                  "     **** PROGRAM ERROR ****   NUMBER OF MATRIX BLOCKS MORE THAN LIMIT OF    20\n");
  EXPECT_EQ(run.RUNMOD, 1);
  EXPECT_NE(scratch.errors().find("21 blocks, at most 20"), std::string::npos);
  FILE(units.NT3, "REWI");
  EXPECT_TRUE(at_end());
}

TEST_F(BlockSet, TakesTwentyBlocks) {
  with_columns(std::vector<int>(20, 1), 2);
  EXPECT_TRUE(BLKSET(8));
  EXPECT_EQ(solver.NBLOCK, 20);
}

}  // namespace
}  // namespace tidearc
