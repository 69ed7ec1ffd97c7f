// The compacted profile: addresses from smallest connected equations.
#include "solve/profile.h"

#include <gtest/gtest.h>

#include <vector>

#include "model/control.h"
#include "model/masses.h"
#include "run/workpool.h"
#include "solve/solver.h"
#include "support/scratch.h"

namespace tidearc {
namespace {

TEST(Profile, AddressesAreTheRunningSumOfColumnHeights) {
  // Equation 4 is connected to 2, equation 5 to 1; the others stand alone.
  std::vector<int> marks{1, 2, 3, 2, 1};
  const ProfileSize size = diagonal_addresses({marks.data(), 5}, 5);
  EXPECT_EQ(marks, (std::vector<int>{1, 2, 3, 6, 11}));
  EXPECT_EQ(size.length, 11);
  EXPECT_EQ(size.tallest, 5);
}

TEST(Profile, EntriesOfAColumnRiseToItsDiagonal) {
  const std::vector<int> IDIAG{1, 2, 3, 6, 11};
  std::vector<double> values{1, 2, 3, 24, 34, 4, 15, 25, 35, 45, 5};
  const Profile<double> K{{values.data(), 11}, {IDIAG.data(), 5}, 5};
  EXPECT_EQ(K.height(1), 1);
  EXPECT_EQ(K.height(4), 3);
  EXPECT_EQ(K.top(4), 2);
  EXPECT_EQ(K.top(5), 1);
  EXPECT_EQ(K.column(4)(2), 24);
  EXPECT_EQ(K.column(4)(4), 4);
  EXPECT_EQ(K.column(5)(1), 15);
  EXPECT_EQ(K.diagonal(5), 5);
}

TEST(Profile, OfOneEquationIsItsDiagonal) {
  std::vector<int> marks{1};
  const ProfileSize size = diagonal_addresses({marks.data(), 1}, 1);
  EXPECT_EQ(marks[0], 1);
  EXPECT_EQ(size.length, 1);
  EXPECT_EQ(size.tallest, 1);
}

TEST(Profile, BeyondA32BitAddressIsMeasuredButNotTurned) {
  // A full triangle of 65536 equations has 2147516416 entries, 32769 more than the largest address; 65535 equations
  // have 2147450880 and pass.
  std::vector<int> marks(65536, 1);
  EXPECT_EQ(diagonal_addresses({marks.data(), 65536}, 65536).length, 2147516416LL);
  EXPECT_EQ(marks.back(), 1);
  EXPECT_EQ(diagonal_addresses({marks.data(), 65535}, 65535).length, 2147450880LL);
  EXPECT_EQ(marks[65534], 2147450880);
}

// A pool that holds the marks of NEQ equations at word 1.
class FinishedProfile : public testing::Test {
 protected:
  void make_marks(int NEQ, int first_row) {
    sizes = {};
    solver = {};
    storage = {};
    sizes.NEQ = NEQ;
    pool.allocate(2 * NEQ1());
    storage.NEXT = 1;
    masses.MARKS = carve_integers(NEQ1());
    const Integers marks = pool.integers(masses.MARKS, NEQ1());
    for (int e = 1; e <= NEQ1(); ++e) marks(e) = std::min(e, first_row);
  }
  ~FinishedProfile() override { pool.release(); }
  test::Scratch scratch;
};

TEST_F(FinishedProfile, StandsInTheArrayOfTheMarks) {
  make_marks(3, 1);
  finish_profile();
  EXPECT_EQ(solver.IDIAG, masses.MARKS);
  EXPECT_EQ(solver.NHBW, 3);
  EXPECT_EQ(solver.NSTO, 6);
  EXPECT_EQ(pool.integers(solver.IDIAG, 3)(3), 6);
}

TEST_F(FinishedProfile, WithoutEquationsIsEmpty) {
  make_marks(0, 1);
  finish_profile();
  EXPECT_EQ(solver.NSTO, 0);
  EXPECT_EQ(solver.NHBW, 0);
}

TEST_F(FinishedProfile, ThatNoPoolCanAddressStopsInTheStorageCheckOfTheMatrix) {
  // Matrix and factor of 40000 full columns: 2 * 2 * 800020000 words, where the report's count of words ends.
  make_marks(40000, 1);
  EXPECT_EQ(test::stop_of(finish_profile), 1);
  const std::string report = scratch.report();
  EXPECT_NE(report.find("INPUT PHASE - STORAGE FOR STIFFNESS MATRIX"), std::string::npos) << report;
  EXPECT_NE(report.find("STORAGE REQUIRED UP TO THIS PHASE = 2147483647"), std::string::npos) << report;
  EXPECT_NE(scratch.errors().find("the profile of 40000 equations takes 800020000 reals"), std::string::npos);
}

TEST_F(FinishedProfile, OfMoreRealsThan32BitsCountStopsTheSameWay) {
  make_marks(65536, 1);
  EXPECT_EQ(test::stop_of(finish_profile), 1);
  EXPECT_NE(scratch.errors().find("takes 2147516416 reals"), std::string::npos);
}

TEST_F(FinishedProfile, ThatJustFitsTheWordIndexPasses) {
  // 32767 full columns take 536854528 reals: matrix and factor 2147418112 words, of which the last may be 2147483647.
  make_marks(32767, 1);
  storage.NEXT = 2147483647 - 2147418112 + 1;
  finish_profile();
  EXPECT_EQ(solver.NSTO, 536854528);
  make_marks(32767, 1);
  storage.NEXT = 2147483647 - 2147418112 + 2;
  EXPECT_EQ(test::stop_of(finish_profile), 1);
}

TEST_F(FinishedProfile, OfTwoTrianglesFitsHalfAsFar) {
  // 23170 full columns take 268436035 reals: two triangles of matrix and factor are 2147488280 words.
  make_marks(23170, 1);
  solver.KSTOR = -1;
  EXPECT_EQ(test::stop_of(finish_profile), 1);
  make_marks(23169, 1);
  solver.KSTOR = -1;
  finish_profile();
  EXPECT_EQ(solver.NSTO, 268412865) << "of one triangle";
}

TEST_F(FinishedProfile, OfADiskJobMayHaveAsManyRealsAsCanBeCounted) {
  make_marks(65535, 1);  // 2147450880 reals
  solver.KSTOR = 2;
  finish_profile();
  EXPECT_EQ(solver.NSTO, 2147450880);
  for (const auto& [NEQ, KSTOR] : {std::pair{65536, 2}, std::pair{65535, -2}}) {
    make_marks(NEQ, 1);
    solver.KSTOR = KSTOR;
    EXPECT_EQ(test::stop_of(finish_profile), 1);
  }
}

}  // namespace
}  // namespace tidearc
