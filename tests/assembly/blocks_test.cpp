// Element matrices into blocks on disk, against the same matrices into one piece in core, and by hand.
#include "assembly/blocks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <set>
#include <vector>

#include "assembly/element_tape.h"
#include "block_problem.h"
#include "model/control.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc {
namespace {

using test::BlockProblem;
using test::MadeUpElement;
using test::stop_of;

int below(std::mt19937& random, int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); }

/// Elements of up to 20 freedoms over equations that lie near each other, with repeats, zeros and sinks.
std::vector<MadeUpElement> random_elements(std::mt19937& random, int NEQ, int count) {
  std::uniform_real_distribution<double> value(-1.0, 1.0);
  std::vector<MadeUpElement> elements;
  for (int n = 0; n < count; ++n) {
    MadeUpElement e;
    const int ND = 1 + below(random, 20);
    const int start = below(random, NEQ), reach = 1 + below(random, NEQ / 2 + 1);
    for (int i = 0; i < ND; ++i) {
      const int equation = start + below(random, reach);
      const int dropped = below(random, 2) == 0 ? 0 : NEQ + 1;
      e.LM.push_back(below(random, 8) == 0 || equation > NEQ ? dropped : equation);
    }
    e.packed = below(random, 2) == 0;
    const int entries = e.packed ? ND * (ND + 1) / 2 : ND * ND;
    for (int k = 0; k < entries; ++k) e.EMAT.push_back(value(random));
    elements.push_back(e);
  }
  return elements;
}

/// What element input would have left: the smallest equation connected to each.
std::vector<int> first_rows(const std::vector<MadeUpElement>& elements, int NEQ) {
  std::vector<int> rows;
  for (int e = 1; e <= NEQ; ++e) rows.push_back(e);
  for (const MadeUpElement& element : elements) {
    int lowest = NEQ + 1;
    for (const int e : element.LM)
      if (e >= 1) lowest = std::min(lowest, e);
    for (const int e : element.LM)
      if (e >= 1 && e <= NEQ)
        rows[static_cast<std::size_t>(e - 1)] = std::min(rows[static_cast<std::size_t>(e - 1)], lowest);
  }
  return rows;
}

struct Assembled {
  std::vector<double> upper, lower, DIAG;
  int NBLOCK = 0;
  bool operator==(const Assembled& other) const { return upper == other.upper && lower == other.lower; }
};

/// A macro's start, two updates by some of the elements with a sweep, and a reset behind them.
std::vector<Assembled> assemble_four_times(int KSTOR, int NWDBLK, const std::vector<MadeUpElement>& elements, int NEQ) {
  BlockProblem problem(KSTOR, first_rows(elements, NEQ), NWDBLK);
  std::vector<Assembled> states;
  if (problem.refused()) return states;
  const std::size_t n = elements.size();
  const std::vector<MadeUpElement> back(elements.begin() + static_cast<std::ptrdiff_t>(n / 2), elements.end());
  const std::vector<MadeUpElement> one(1, elements[n / 3]);
  for (const auto& [due, reset] :
       {std::pair{elements, true}, std::pair{back, false}, std::pair{one, false}, std::pair{elements, true}}) {
    problem.assemble(due, reset, false);
    Assembled state{problem.values(1), {}, {}, solver.NBLOCK};
    if (KSTOR < 0) state.lower = problem.values(2);
    const Reals DIAG = equation_vector(arrays.DIAG);
    state.DIAG.assign(DIAG.begin(), DIAG.begin() + NEQ);
    states.push_back(state);
  }
  return states;
}

/// Words that a symmetric or unsymmetric matrix of this profile takes when nothing is cut.
int words_uncut(const std::vector<int>& rows, int triangles) {
  int length = 0, NEQ = static_cast<int>(rows.size());
  for (int e = 1; e <= NEQ; ++e) length += e - rows[static_cast<std::size_t>(e - 1)] + 1;
  return triangles * (length + NEQ) * ITWO;
}

TEST(Blocks, GiveTheDigitsOfOnePieceWhateverTheirNumber) {
  std::mt19937 random(31);
  std::set<int> seen;
  for (int trial = 0; trial < 60; ++trial) {
    const int NEQ = 12 + below(random, 60);
    const std::vector<MadeUpElement> elements = random_elements(random, NEQ, 3 + below(random, 20));
    const std::vector<int> rows = first_rows(elements, NEQ);
    const int sign = trial % 2 == 0 ? 1 : -1;
    const std::vector<Assembled> core = assemble_four_times(sign, 0, elements, NEQ);
    // From the tallest column upward; too many blocks are skipped.
    int tallest = 0;
    for (int e = 1; e <= NEQ; ++e) tallest = std::max(tallest, e - rows[static_cast<std::size_t>(e - 1)] + 1);
    const int uncut = words_uncut(rows, sign > 0 ? 1 : 2);
    const int least = std::max(2 * ITWO * (tallest + 1), (sign > 0 ? 2 : 1) * uncut / 20);
    for (int words = least; words <= uncut; words += 1 + uncut / 6) {
      const std::vector<Assembled> disk = assemble_four_times(2 * sign, words, elements, NEQ);
      if (disk.empty()) continue;  // more than twenty
      seen.insert(disk[0].NBLOCK);
      for (std::size_t k = 0; k < core.size(); ++k) {
        ASSERT_EQ(disk[k], core[k]) << "trial " << trial << ", assembly " << k << ", blocks " << disk[k].NBLOCK;
      }
    }
  }
  for (int blocks = 2; blocks <= 20; ++blocks) EXPECT_TRUE(seen.contains(blocks)) << blocks;
}

/// NEQ equations, each joined to `reach` before it, and one element for each pair of neighbours.
std::vector<int> band(int NEQ, int reach) {
  std::vector<int> rows;
  for (int e = 1; e <= NEQ; ++e) rows.push_back(std::max(1, e - reach));
  return rows;
}
MadeUpElement spring(int a, int b, double k = 1.0) { return {{a, b}, false, {k, -k, -k, k}}; }

/// Twelve equations of height 2 (the first 1): three slots a column. Blocks of `columns` columns.
BlockProblem chain_in_blocks(int KSTOR, int columns) { return {KSTOR, band(12, 1), 2 * ITWO * 3 * columns}; }

std::vector<MadeUpElement> chain() {
  std::vector<MadeUpElement> elements;
  for (int e = 1; e < 12; ++e) elements.push_back(spring(e, e + 1));
  return elements;
}

TEST(Blocks, KeepTheAssembledDiagonal) {
  for (const int KSTOR : {2, -2}) {
    BlockProblem problem = chain_in_blocks(KSTOR, 3);
    ASSERT_EQ(solver.NBLOCK, 4);
    problem.assemble(chain(), true, false);
    const Reals DIAG = equation_vector(arrays.DIAG);
    EXPECT_EQ(DIAG(1), 1.0);
    for (int e = 2; e < 12; ++e) EXPECT_EQ(DIAG(e), 2.0) << e;
    problem.assemble({spring(8, 9, 5.0)}, false, false);
    EXPECT_EQ(DIAG(3), 2.0) << "a block that was only copied";
    EXPECT_EQ(DIAG(8), 7.0);
  }
}

TEST(Blocks, ThatNoElementReachesAreCopiedAsTheyStand) {
  for (const int KSTOR : {2, -2}) {
    BlockProblem problem = chain_in_blocks(KSTOR, 3);
    problem.assemble(chain(), true, false);
    const auto before = problem.records();
    problem.assemble({spring(7, 8)}, false, false);
    EXPECT_EQ(solver.KFIRST, 7);
    const auto after = problem.records();
    const std::size_t records = before.size() / 4;  // of one block
    for (std::size_t r = 0; r < 2 * records; ++r) EXPECT_EQ(after[r], before[r]) << "equations 1 to 6";
    EXPECT_NE(after[2 * records], before[2 * records]) << "equations 7 to 9";
    EXPECT_EQ(after[3 * records], before[3 * records]) << "gone through, but nothing was added";
  }
}

TEST(Blocks, ExchangeTheirTwoFiles) {
  BlockProblem problem = chain_in_blocks(2, 3);
  const int before = units.NT3, other = units.NT7;
  problem.assemble(chain(), true, false);
  EXPECT_EQ(units.NT3, other);
  EXPECT_EQ(units.NT7, before);
  problem.assemble({}, false, false);
  EXPECT_EQ(units.NT3, before);
}

TEST(Blocks, KeepTheAddressesOfTheirColumnsInTheTail) {
  for (const int KSTOR : {2, -2}) {
    BlockProblem problem = chain_in_blocks(KSTOR, 5);  // 5, 5 and 2 equations
    ASSERT_EQ(solver.NBLOCK, 3);
    problem.assemble(chain(), true, false);
    problem.assemble(chain(), false, false);
    const auto records = problem.records();
    const std::vector<std::vector<int>> addresses{{1, 3, 5, 7, 9}, {2, 4, 6, 8, 10}, {2, 4}};
    for (std::size_t r = 0; r < records.size(); ++r) {
      const std::vector<int>& expected = addresses[r / (records.size() / 3)];
      ASSERT_EQ(records[r].size(), 2u * 15u);
      for (std::size_t i = 0; i < expected.size(); ++i)
        EXPECT_EQ(records[r][records[r].size() - 2 * (expected.size() - i) + 1], expected[i]) << r;
    }
  }
}

TEST(Blocks, AfterAResetStartFromZero) {
  BlockProblem problem = chain_in_blocks(2, 3);
  problem.assemble(chain(), true, false);
  const std::vector<double> once = problem.values(1);
  problem.assemble(chain(), false, false);
  EXPECT_EQ(problem.values(1)[0], 2.0) << "added";
  problem.assemble(chain(), true, false);
  EXPECT_EQ(problem.values(1), once);
}

TEST(Blocks, OfDiagonalsThatAreZeroGetStandInsWithoutAWord) {
  for (const int KSTOR : {2, -2}) {
    BlockProblem problem = chain_in_blocks(KSTOR, 3);
    const std::size_t written = problem.report().size();
    problem.assemble({spring(10, 11)}, true, true);  // equations 1 to 9 and 12 have no stiffness
    for (int triangle = 1; triangle <= (KSTOR < 0 ? 2 : 1); ++triangle) {
      const std::vector<double> A = problem.values(triangle);
      for (const int e : {1, 2, 3, 4, 7, 9, 12}) EXPECT_EQ(A[static_cast<std::size_t>(2 * e - 2)], 1.0e-8) << e;
      EXPECT_EQ(A[18], 1.0);
    }
    EXPECT_EQ(equation_vector(arrays.DIAG)(5), 1.0e-8);
    EXPECT_EQ(solver.KFIRST, 1) << "the factor must take them up, blocks in front of all elements included";
    EXPECT_EQ(problem.report().size(), written);
  }
}

TEST(Blocks, WithoutASweepKeepTheirZeros) {
  BlockProblem problem = chain_in_blocks(2, 3);
  problem.assemble({spring(10, 11)}, true, false);
  EXPECT_EQ(problem.values(1)[0], 0.0);
  EXPECT_EQ(solver.KFIRST, 10);
}

TEST(Blocks, OfAnAssemblyOfNothingGoThroughTheLast) {
  BlockProblem problem = chain_in_blocks(2, 3);
  problem.assemble(chain(), true, false);
  const auto before = problem.records();
  problem.assemble({}, false, false);
  EXPECT_EQ(solver.KFIRST, 12);
  EXPECT_EQ(problem.records(), before);
}

TEST(Blocks, DropAnElementWithoutEquations) {
  BlockProblem problem = chain_in_blocks(2, 3);
  problem.assemble(chain(), true, false);
  const std::vector<double> before = problem.values(1);
  problem.assemble({spring(0, 13, 7.0)}, false, false);
  EXPECT_EQ(solver.KFIRST, 12) << "the value of an assembly that touched nothing";
  EXPECT_EQ(solver.NADDED, 1);
  EXPECT_EQ(problem.values(1), before);
}

/// Records that stand on a unit, counted to the end of the file.
int records_on(int unit) {
  int count = 0;
  FILE(unit, "REWI");
  while (!stop_of([unit] { next_record(unit); })) ++count;
  return count;
}

TEST(Groups, OfPairsKeepAsideWhatTheirLaterPairsNeed) {
  // Four blocks of three columns: trunc(sqrt(4)) / 2 + 1 = 2 pairs share one reading. The second holds equations 7 to
  // 12, which six of the eleven springs reach: 6-7 to 11-12.
  BlockProblem problem = chain_in_blocks(2, 3);
  problem.assemble(chain(), true, false);
  EXPECT_EQ(solver.NADDED, 11);
  EXPECT_EQ(records_on(units.NT9), 2 * 11);
  EXPECT_EQ(records_on(units.NT8), 2 * 6);
}

TEST(Groups, OfOnePairKeepNothing) {
  // Three blocks: trunc(sqrt(3)) / 2 + 1 = 1.
  BlockProblem problem = chain_in_blocks(2, 4);
  ASSERT_EQ(solver.NBLOCK, 3);
  problem.assemble(chain(), true, false);
  EXPECT_EQ(records_on(units.NT8), 0);
}

TEST(Groups, OfTrianglesAreBlocks) {
  // Both triangles of one block fill the buffers. Four blocks of three columns, two a group: the first of the second
  // group, equations 7 to 9, keeps what reaches 10 to 12: springs 9-10, 10-11 and 11-12.
  BlockProblem problem = chain_in_blocks(-2, 3);
  ASSERT_EQ(solver.NBLOCK, 4);
  problem.assemble(chain(), true, false);
  EXPECT_EQ(records_on(units.NT8), 2 * 3);
}

TEST(ElementFile, HoldsPairsOfHeaderAndMatrix) {
  BlockProblem problem = chain_in_blocks(2, 3);
  begin_element_matrices();
  const std::vector<int> LM{4, 0, 13};
  const std::vector<double> full(9, 2.5), packed(6, -1.5);
  ADDTAP({LM.data(), 3}, false, full.data());
  ADDTAP({LM.data(), 3}, true, packed.data());
  EXPECT_EQ(solver.NADDED, 2);
  FILE(units.NT9, "REWI");
  for (const bool form : {false, true}) {
    const auto header = next_record(units.NT9);
    ASSERT_EQ(header.size(), 62u);
    EXPECT_EQ(header[0], form ? 1 : 0);
    EXPECT_EQ(header[1], 3);
    EXPECT_EQ(std::vector<int>(header.begin() + 2, header.begin() + 6), (std::vector<int>{4, 0, 13, 0}));
    const auto values = next_record(units.NT9);
    EXPECT_EQ(values.size(), form ? 6u * ITWO : 9u * ITWO);
    EXPECT_EQ(*reinterpret_cast<const double*>(values.data()), form ? -1.5 : 2.5);
  }
}

TEST(OutsideTheProfile, AnEntryInABlockStopsTheRun) {
  for (const int KSTOR : {2, -2}) {
    for (const MadeUpElement& element : {spring(5, 8), spring(8, 5), MadeUpElement{{5, 8}, true, {1, -1, 1}}}) {
      BlockProblem problem = chain_in_blocks(KSTOR, 3);
      EXPECT_EQ(stop_of([&] { problem.assemble({element}, true, false); }), 1);
      const std::string name = KSTOR > 0 ? "BLKASM" : "BLKASU";
      EXPECT_NE(problem.report().find("FATAL ERROR DETECTED IN " + name + " - JOB ABORTED"), std::string::npos);
      EXPECT_NE(problem.errors().find("outside the profile"), std::string::npos);
    }
  }
}

}  // namespace
}  // namespace tidearc
