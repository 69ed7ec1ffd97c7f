// The work array: reservation, carving, clearing, the storage check.
#include "run/workpool.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <fstream>
#include <limits>
#include <string>

#include "../support/scratch.h"
#include "run/stops.h"

namespace tidearc {
namespace {

using test::Scratch;
using test::stop_of;
using test::trimmed;

constexpr int last_index = std::numeric_limits<int>::max();

class Pool : public testing::Test {
 protected:
  void SetUp() override { storage = {}; }
  void TearDown() override {
    pool.release();
    storage = {};
  }
};

long resident_bytes() {
  long total = 0;
  long resident = 0;
  std::ifstream("/proc/self/statm") >> total >> resident;
  return resident * sysconf(_SC_PAGESIZE);
}

TEST_F(Pool, IsZeroAndTellsItsSize) {
  pool.allocate(10);
  EXPECT_EQ(storage.MSTOR, 10);
  for (int i = 1; i <= 10; ++i) EXPECT_EQ(pool.integers(1, 10)(i), 0);
}

TEST_F(Pool, ANegativeSizeIsAPoolOfNoWords) {
  pool.allocate(-3);
  EXPECT_EQ(storage.MSTOR, 0);
}

TEST_F(Pool, IntegersAndRealsShareTheWords) {
  pool.allocate(8);
  pool.reals(3, 1)(1) = 1.0;  // 1.0 is 3FF00000 00000000, little-endian: the high word comes second
  EXPECT_EQ(pool.integers(3, 2)(1), 0);
  EXPECT_EQ(pool.integers(3, 2)(2), 0x3FF00000);
}

TEST_F(Pool, RealsOnOddWordsStandOnEightByteBoundaries) {
  pool.allocate(8);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pool.reals(1, 1).data()) % 8, 0U);
  EXPECT_EQ(reinterpret_cast<std::uintptr_t>(pool.reals(3, 1).data()) % 8, 0U);
}

TEST_F(Pool, TheDefaultPoolIsReservedAndNotTouched) {
  const long before = resident_bytes();
  pool.allocate(1500000000);
  pool.integers(1400000001, 100)(1) = 7;
  EXPECT_LT(resident_bytes() - before, 1L << 20) << "a few pages, not six gigabytes";
}

TEST_F(Pool, ClearingCostsOnlyWhatWasHandedOut) {
  pool.allocate(1500000000);
  pool.integers(1, 1000)(1000) = 7;
  const long before = resident_bytes();
  pool.clear_from(1);
  EXPECT_EQ(pool.integers(1, 1000)(1000), 0);
  EXPECT_LT(resident_bytes() - before, 1L << 20);
}

TEST_F(Pool, ClearingZeroesFromTheIndexOnAndLeavesWhatStandsBelow) {
  pool.allocate(10);
  for (int& word : pool.integers(1, 10)) word = 9;
  pool.clear_from(4);
  const auto words = pool.integers(1, 10);
  EXPECT_EQ(words(3), 9);
  EXPECT_EQ(words(4), 0);
  EXPECT_EQ(words(10), 0);
}

TEST_F(Pool, ClearingTwiceFindsWhatWasWrittenInBetween) {
  pool.allocate(10);
  pool.integers(5, 1)(1) = 1;
  pool.clear_from(1);
  pool.integers(5, 1)(1) = 2;
  pool.clear_from(3);
  EXPECT_EQ(pool.integers(5, 1)(1), 0);
}

TEST_F(Pool, ClearingTheUpperPartRemembersWhatIsDirtyBelow) {
  pool.allocate(10);
  pool.integers(2, 4)(1) = 7;
  pool.clear_from(3);
  pool.clear_from(1);
  EXPECT_EQ(pool.integers(2, 1)(1), 0);
}

TEST_F(Pool, ClearingBehindTheEndDoesNothing) {
  pool.allocate(4);
  pool.integers(4, 1)(1) = 5;
  pool.clear_from(5);
  EXPECT_EQ(pool.integers(4, 1)(1), 5);
}

TEST_F(Pool, AnOddIntegerArrayGetsAPadWord) {
  EXPECT_EQ(carve_integers(3), 1);
  EXPECT_EQ(storage.NEXT, 5);
  EXPECT_EQ(carve_integers(4), 5);
  EXPECT_EQ(storage.NEXT, 9);
}

TEST_F(Pool, ARealArrayTakesTwoWordsPerEntry) {
  EXPECT_EQ(carve_reals(3), 1);
  EXPECT_EQ(storage.NEXT, 7);
}

TEST_F(Pool, AnArrayThatIsNotWantedTakesNoRoom) {
  carve_integers(2);
  const int first = carve_integers(0);
  const int second = carve_reals(0);
  EXPECT_EQ(first, second);
  EXPECT_EQ(storage.NEXT, 3);
}

TEST_F(Pool, ANegativeCountTakesNoRoom) {
  EXPECT_EQ(carve_integers(-3), 1);
  EXPECT_EQ(carve_reals(std::numeric_limits<std::int64_t>::min()), 1);
  EXPECT_EQ(carve_integers(std::numeric_limits<std::int64_t>::min()), 1);
  EXPECT_EQ(storage.NEXT, 1);
}

TEST_F(Pool, TheMarkStaysWhereA32BitIndexEnds) {
  carve_reals(1073741822);  // NEXT = 2147483645
  EXPECT_EQ(storage.NEXT, last_index - 2);
  carve_integers(2);
  EXPECT_EQ(storage.NEXT, last_index);
  carve_reals(1);
  EXPECT_EQ(storage.NEXT, last_index);
  carve_reals(std::numeric_limits<std::int64_t>::max());
  carve_integers(std::numeric_limits<std::int64_t>::max());
  EXPECT_EQ(storage.NEXT, last_index);
}

TEST_F(Pool, AModelThatNeedsExactlyThePoolPasses) {
  Scratch scratch;
  pool.allocate(12);
  carve_reals(6);
  EXPECT_FALSE(stop_of([] { check_storage(1); }).has_value());
  EXPECT_EQ(scratch.report(), "");
}

TEST_F(Pool, OneWordMoreThanThePoolStops) {
  Scratch scratch;
  pool.allocate(12);
  carve_reals(6);
  carve_integers(1);
  EXPECT_EQ(stop_of([] { check_storage(1); }), status_fatal);
}

TEST_F(Pool, APoolOfNoWordsFailsTheFirstCheck) {
  Scratch scratch;
  pool.allocate(0);
  carve_integers(6);
  EXPECT_EQ(stop_of([] { check_storage(1); }), status_fatal);
}

TEST_F(Pool, TheStorageCheckPrintsPhaseNeedAndProvision) {
  Scratch scratch;
  pool.allocate(100);
  storage.NEXT = 205;
  EXPECT_EQ(stop_of([] { check_storage(9); }), status_fatal);
  EXPECT_EQ(trimmed(scratch.report()),
            "\n\n\n\n **** STORAGE CHECK ****\n\n"
            "     INPUT PHASE - STORAGE FOR ANALYSIS ARRAYS\n\n"
            "     STORAGE REQUIRED UP TO THIS PHASE =        204\n"
            "     STORAGE PROVIDED                  =        100\n\n\n");
  EXPECT_EQ(scratch.errors(),
            "the work array has 100 words, 204 are needed up to the input phase STORAGE FOR ANALYSIS ARRAYS\n");
}

TEST_F(Pool, EveryPhaseHasItsName) {
  const std::array<const char*, 11> names{"NODAL COORD/DOF CONSTRAINTS", "LOCAL COORDINATE SYSTEMS",
                                          "LUMPED NODAL MASSES",         "ELEM. DATA INPUT",
                                          "STATIC LOAD PATTERNS",        "STATIC SUPPORT DISP. PATTERNS",
                                          "DYNAMIC FORCE RECORDS",       "LIST OF OUTPUT NODES",
                                          "STORAGE FOR ANALYSIS ARRAYS", "STORAGE FOR STIFFNESS MATRIX",
                                          "LIST OF POST-PROCESSOR NODES"};
  for (int phase = 1; phase <= 11; ++phase) {
    Scratch scratch;
    stop_of([&] { STORCK(2, 1, phase); });
    const std::string line = std::string("     INPUT PHASE - ") + names[static_cast<std::size_t>(phase - 1)] + "\n";
    EXPECT_NE(trimmed(scratch.report()).find(line), std::string::npos) << phase;
  }
}

TEST_F(Pool, AnUnknownPhaseHasNoName) {
  Scratch scratch;
  EXPECT_EQ(stop_of([] { STORCK(2, 1, 12); }), status_fatal);
  EXPECT_NE(trimmed(scratch.report()).find("     INPUT PHASE -\n"), std::string::npos);
}

}  // namespace
}  // namespace tidearc
