// Where matrix, factor and block buffers stand, word by word, and what is refused.
#include "solve/stiffness_area.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "model/control.h"
#include "model/masses.h"
#include "run/run_block.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/profile.h"
#include "solve/solver.h"
#include "support/scratch.h"

namespace tidearc {
namespace {

// Four equations of heights 1, 2, 3, 1: seven reals. Their marks take six words, so the matrix begins at word 7.
const std::vector<int> four_columns{1, 1, 1, 4};
constexpr int directories = 40;  // words of two directories of twenty blocks
constexpr int kept = 9;          // words for element data

class StiffnessArea : public testing::Test {
 protected:
  ~StiffnessArea() override {
    close_all_tapes();
    pool.release();
    run = {};
    solver = {};
    storage = {};
    sizes = {};
  }
  void make_profile(int KSTOR, int words, int NWDBLK = 0, const std::vector<int>& first_rows = four_columns) {
    close_all_tapes();
    run = {};
    solver = {};
    storage = {};
    sizes = {};
    pool.allocate(words);
    storage.NEXT = 1;
    sizes.NEQ = static_cast<int>(first_rows.size());
    solver.KSTOR = KSTOR;
    solver.NWDBLK = NWDBLK;
    masses.MARKS = carve_integers(NEQ1());
    std::copy(first_rows.begin(), first_rows.end(), pool.integers(masses.MARKS, NEQ1()).begin());
    finish_profile();
  }
  /// A disk job of the four equations in which `room` words are left for the matrix.
  bool carve_with_room(int triangles, int room, int NWDBLK = 0) {
    make_profile(triangles == 1 ? 2 : -2, 6 + directories + room + kept, NWDBLK);
    return carve_stiffness(kept);
  }
  bool reported(const std::string& part) const { return scratch.report().find(part) != std::string::npos; }

  test::Scratch scratch{""};
};

TEST_F(StiffnessArea, InCoreIsMatrixAndFactor) {
  make_profile(1, 100);
  EXPECT_TRUE(carve_stiffness(kept));
  EXPECT_EQ(solver.KASM, 7);
  EXPECT_EQ(solver.KFAC, 21);
  EXPECT_EQ(storage.KEDAT, 35);
  EXPECT_EQ(storage.LAVSST, 14);
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_TRUE(reported(" NSTO,LAVSST,KEDAT,MSTOR 7 14 35 100\n"));
}

TEST_F(StiffnessArea, OfAnUnsymmetricMatrixIsDoubledOnce) {
  make_profile(-1, 100);
  EXPECT_EQ(solver.NSTO, 7);
  EXPECT_TRUE(carve_stiffness(kept));
  EXPECT_EQ(solver.NSTO, 14);
  EXPECT_EQ(solver.KASM, 7);
  EXPECT_EQ(solver.KFAC, 35);
  EXPECT_EQ(storage.KEDAT, 63);
  EXPECT_EQ(triangle_length(), 7);
  EXPECT_TRUE(reported(" NSTO,LAVSST,KEDAT,MSTOR 14 28 63 100\n"));
}

TEST_F(StiffnessArea, ThatTakesThePoolToItsLastWordFits) {
  make_profile(1, 34);
  EXPECT_TRUE(carve_stiffness(kept)) << "element data are checked where they are loaded";
  make_profile(-1, 62);
  EXPECT_TRUE(carve_stiffness(kept));
}

TEST_F(StiffnessArea, ThatLacksAWordStopsBehindItsLine) {
  make_profile(1, 33);
  EXPECT_EQ(test::stop_of([] { carve_stiffness(kept); }), 1);
  EXPECT_TRUE(reported(" NSTO,LAVSST,KEDAT,MSTOR 7 14 35 33\n"));
  EXPECT_TRUE(reported("INPUT PHASE - STORAGE FOR STIFFNESS MATRIX"));
  EXPECT_TRUE(reported("STORAGE REQUIRED UP TO THIS PHASE =         34"));
  make_profile(-1, 61);
  EXPECT_EQ(test::stop_of([] { carve_stiffness(kept); }), 1);
  EXPECT_TRUE(reported("STORAGE REQUIRED UP TO THIS PHASE =         62"));
}

TEST_F(StiffnessArea, OnDiskBeginsWithTheDirectories) {
  EXPECT_TRUE(carve_with_room(1, 100));
  EXPECT_EQ(solver.BLKEQ, 7);
  EXPECT_EQ(solver.BLKFLG, 27);
  EXPECT_EQ(solver.KASM, 47);
  EXPECT_EQ(solver.KFAC, 61);
  EXPECT_EQ(storage.KEDAT, 75);
  EXPECT_EQ(storage.LAVSST, 14);
  EXPECT_FALSE(reported("NSTO,LAVSST")) << "the line is of core jobs";
}

TEST_F(StiffnessArea, OnDiskIsOneBlockFromOneWordMoreThanItTakes) {
  // Seven reals and four slots: 22 words.
  EXPECT_TRUE(carve_with_room(1, 23));
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_EQ(solver.MBLOCK, 11);
  EXPECT_TRUE(carve_with_room(1, 22));
  EXPECT_EQ(solver.NBLOCK, 3);
  EXPECT_EQ(solver.MBLOCK, 5);
}

TEST_F(StiffnessArea, OfTwoTrianglesOnDiskLikewise) {
  // 44 words. Just that is half a pool for each of two buffers, and one of them takes all columns of a triangle.
  EXPECT_TRUE(carve_with_room(2, 45));
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_TRUE(carve_with_room(2, 44));
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_TRUE(carve_with_room(2, 43));
  EXPECT_EQ(solver.NBLOCK, 2);
  EXPECT_EQ(solver.MBLOCK, 10);
}

TEST_F(StiffnessArea, OfOneBlockHoldsTheFactorWhenBothFit) {
  EXPECT_TRUE(carve_with_room(1, 28));
  EXPECT_EQ(solver.KFAC, 61);
  EXPECT_EQ(storage.KEDAT + kept - 1, storage.MSTOR);
}

TEST_F(StiffnessArea, OfOneBlockLeavesTheFactorOutWhenOnlyTheMatrixFits) {
  EXPECT_TRUE(carve_with_room(1, 27));
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_EQ(solver.KASM, 47);
  EXPECT_EQ(solver.KFAC, 0);
  EXPECT_EQ(storage.KEDAT, 61);
  EXPECT_TRUE(carve_with_room(2, 44));
  EXPECT_EQ(solver.KFAC, 0);
  EXPECT_EQ(storage.KEDAT, 47 + 28);
  EXPECT_TRUE(scratch.errors().empty());
}

TEST_F(StiffnessArea, OfOneBlockByItsCardKeepsTheWholePool) {
  EXPECT_TRUE(carve_with_room(1, 100, 23));
  EXPECT_EQ(solver.NBLOCK, 1);
  EXPECT_EQ(solver.KFAC, 61) << "the card limits the blocks, not what stands beside them";
}

TEST_F(StiffnessArea, OfBlocksIsTwoBuffers) {
  EXPECT_TRUE(carve_with_room(1, 22));
  EXPECT_EQ(solver.KASM, 47);
  EXPECT_EQ(solver.KFAC, 57);
  EXPECT_EQ(storage.KEDAT, 67);
  EXPECT_LE(storage.KEDAT + kept - 1, storage.MSTOR);
  EXPECT_TRUE(carve_with_room(2, 43));
  EXPECT_EQ(solver.KFAC, 67);
  EXPECT_EQ(storage.KEDAT, 87);
}

TEST_F(StiffnessArea, OfBlocksWritesOneRecordForEachTriangle) {
  for (const int triangles : {1, 2}) {
    EXPECT_TRUE(carve_with_room(triangles, 22));
    FILE(units.NT3, "REWI");
    int records = 0;
    while (!test::stop_of([] { next_record(units.NT3); })) ++records;
    EXPECT_EQ(records, triangles * 3);
  }
}

TEST_F(StiffnessArea, TakesTheLimitOfTheCardWhenItIsTheLower) {
  EXPECT_TRUE(carve_with_room(1, 100, 22));
  EXPECT_EQ(solver.NBLOCK, 3);
  EXPECT_EQ(storage.KEDAT, 67);
  EXPECT_TRUE(carve_with_room(1, 100, 2000000000));
  EXPECT_EQ(solver.NBLOCK, 1);
}

TEST_F(StiffnessArea, NeedsBlocksLongerThanTheTallestColumn) {
  EXPECT_TRUE(carve_with_room(1, 16));  // buffers of 4 reals
  EXPECT_EQ(solver.MBLOCK, solver.NHBW + 1);
  EXPECT_EQ(solver.NBLOCK, 4);
  EXPECT_FALSE(carve_with_room(1, 15));  // of 3
  EXPECT_TRUE(reported("**** PROGRAM ERROR ****   INSUFFICIENT STORAGE"));
  EXPECT_EQ(storage.KEDAT, 47);
  EXPECT_EQ(run.RUNMOD, 1);
}

TEST_F(StiffnessArea, RefusesCardsThatLeaveNoRoom) {
  for (const int words : {1, 15, -1, -2000000000}) EXPECT_FALSE(carve_with_room(1, 100, words)) << words;
}

TEST_F(StiffnessArea, RefusesAPoolThatHoldsTheDirectoriesAlone) {
  make_profile(2, 6 + directories);
  EXPECT_FALSE(carve_stiffness(kept)) << "fewer words than none are left";
  EXPECT_TRUE(reported("INSUFFICIENT STORAGE"));
}

TEST_F(StiffnessArea, StopsWhenTheDirectoriesDoNotFit) {
  for (const int KSTOR : {2, -2}) {
    make_profile(KSTOR, 6 + directories - 1);
    EXPECT_EQ(test::stop_of([] { carve_stiffness(kept); }), 1);
    EXPECT_TRUE(reported("STORAGE REQUIRED UP TO THIS PHASE =         46"));
  }
}

TEST_F(StiffnessArea, OfTwentyBlocksPassesAndOfTwentyOneDoesNot) {
  // Columns of one entry and a slot each, one a block.
  std::vector<int> diagonal;
  for (int e = 1; e <= 20; ++e) diagonal.push_back(e);
  make_profile(2, 1000, 8, diagonal);
  EXPECT_TRUE(carve_stiffness(kept));
  EXPECT_EQ(solver.NBLOCK, 20);
  diagonal.push_back(21);
  make_profile(2, 1000, 8, diagonal);
  EXPECT_FALSE(carve_stiffness(kept));
  EXPECT_TRUE(reported("**** PROGRAM ERROR ****   NUMBER OF MATRIX BLOCKS MORE THAN LIMIT OF    20\n"));
}

TEST_F(StiffnessArea, OfNoEquationIsEmptyInEveryScheme) {
  for (const int KSTOR : {1, 2, -1, -2}) {
    make_profile(KSTOR, 100, 0, {});
    EXPECT_TRUE(carve_stiffness(kept));
    EXPECT_EQ(solver.NBLOCK, 1);
    EXPECT_EQ(solver.NSTO, 0);
  }
}

}  // namespace
}  // namespace tidearc
