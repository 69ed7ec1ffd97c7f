// Files of a disk job: their roles, what stands on them, and the one record in the pool.
#include "elements/contract/element_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "elements/contract/group.h"
#include "elements/contract/pass.h"
#include "elements/contract/stiffness.h"
#include "elements/contract/walk.h"
#include "fake_types.h"
#include "lattice.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/tapefile.h"
#include "run/units.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

/// A spring, a latch and two blocks.
std::string three_types() {
  return group_card(1, 1) + spring_card(1, 1, 2) + group_card(13, 1) + node_card(1) + group_card(11, 2) + node_card(2);
}
constexpr int block_first = words(sizeof(FakeBlock));

class ElementFiles : public testing::Test {
 protected:
  void SetUp() override { Line::scheme = Scheme::stream; }
  void TearDown() override { Line::scheme = Scheme::core; }
};

void form_all() {
  form_element_matrices(0, true, 0, [](const ElementMatrix&) {});
}

/// Lengths of the records of a file, up to the first beyond `most`.
std::vector<std::size_t> lengths(int unit, int most) {
  std::vector<std::size_t> found;
  FILE(unit, "REWI");
  for (int i = 0; i < most; ++i) found.push_back(next_record(unit).size());
  return found;
}
bool ends_behind(int unit, int count) {
  lengths(unit, count);
  return stop_of([&] { next_record(unit); }).has_value();
}

TEST_F(ElementFiles, HoldWordsOfTheStiffnessPassAndATailWhereTheTypeHasOne) {
  Line line(3, three_types(), 3);
  line.build();
  const std::vector<std::size_t> expected = {2, 42, 2, 3, 2, 2};
  EXPECT_EQ(lengths(units.NT13, 6), expected);
  EXPECT_TRUE(ends_behind(units.NT13, 6)) << "blocks have no tail";
  determine_states();
  EXPECT_EQ(lengths(units.NT13, 6), expected);
  EXPECT_TRUE(ends_behind(units.NT13, 6));
  const std::vector<std::size_t> first = {static_cast<std::size_t>(spring_first), static_cast<std::size_t>(latch_first),
                                          block_first, block_first};
  EXPECT_EQ(lengths(units.NT1, 4), first);
  EXPECT_EQ(lengths(units.NT12, 4), first);
}

TEST_F(ElementFiles, AStateUpdateExchangesReferenceAndCurrent) {
  Line line(3, three_types(), 3);
  line.build();
  EXPECT_EQ(generations.current, units.NT1) << "one state at the start";
  determine_states();
  EXPECT_EQ(units.NT1, 1);
  EXPECT_EQ(generations.current, 18);
  take_over_states();
  EXPECT_EQ(units.NT1, 18);
  EXPECT_EQ(units.NT12, 1);
  EXPECT_EQ(generations.current, 18) << "both generations are one";
  take_over_states();
  EXPECT_EQ(units.NT1, 18) << "nothing has been determined since";
  determine_states();
  take_over_states();
  EXPECT_EQ(units.NT1, 1);
}

TEST_F(ElementFiles, TailsExchangeAtAnAssemblyAndADetermination) {
  Line line(3, three_types(), 3);
  line.build();
  EXPECT_EQ(units.NT13, 2) << "exchanged once when the records were divided";
  form_all();
  EXPECT_EQ(units.NT13, 19);
  determine_states();
  EXPECT_EQ(units.NT13, 2);
  print_elements();
  EXPECT_EQ(units.NT13, 2) << "a pass that only reads leaves them";
}

TEST_F(ElementFiles, AKeptStepStartIsNeverWrittenOver) {
  Line line(3, three_types(), 3);
  line.build();
  determine_states();
  save_states();  // two different generations
  const std::array<int, 3> kept = {generations.kept_reference, generations.kept_current, generations.kept_vectors};
  for (int i = 0; i < 5; ++i) {
    determine_states();
    EXPECT_EQ(std::count(kept.begin(), kept.end(), generations.current), 0);
    take_over_states();
  }
  recover_states();
  EXPECT_EQ(units.NT1, kept[0]);
  EXPECT_EQ(generations.current, kept[1]);
}

TEST_F(ElementFiles, RolesStayAnExchangeOfTheSameFourFiles) {
  Line line(3, three_types(), 3);
  line.build();
  for (int i = 0; i < 20; ++i) {
    determine_states();
    if (i % 3 == 0) save_states();
    if (i % 2 == 0) take_over_states();
    if (i % 5 == 4) recover_states();
    std::array<int, 4> files = {units.NT1, units.NT12, units.NT15, units.NT16};
    std::ranges::sort(files);
    EXPECT_EQ(files, (std::array<int, 4>{1, 18, 21, 22}));
  }
}

TEST_F(ElementFiles, NothingIsLoadedIntoThePoolButTheOneRecordAtWork) {
  Line line(3, three_types(), 3);
  line.build();
  const int longest = element_counts.MAXLEI + 1;
  EXPECT_EQ(storage.NEEDED, storage.KEDAT - 1 + longest);
  line.displace(1, 1, 3.0);
  determine_states();
  form_all();
  const Word* behind = pool.words(storage.KEDAT + longest, 2000);
  EXPECT_TRUE(std::all_of(behind, behind + 2000, [](Word word) { return word == 0; }));
}

/// Words of the pool up to the last one of the element data of a core job.
int words_of_core_job() {
  const Scheme scheme = Line::scheme;
  Line::scheme = Scheme::core;
  Line line(3, three_types(), 3);
  line.build();
  Line::scheme = scheme;
  return storage.NEEDED;
}

TEST_F(ElementFiles, ElementDataThatExceedThePoolByOneWordRunFromThem) {
  const int enough = words_of_core_job();
  Line::scheme = Scheme::core;
  {
    Line line(3, three_types(), 3, false, enough - 1);
    EXPECT_EQ(stop_of([&] { line.build(); }), status_fatal);
  }
  Line::scheme = Scheme::stream;
  Line line(3, three_types(), 3, false, enough - 1);
  line.build();
  line.displace(1, 1, 3.0);
  determine_states();
  EXPECT_DOUBLE_EQ(line.force(1, 1), 0.5 * 100.0 * 3.0 + 2.0 * 3.0);
  EXPECT_TRUE(executing());
}

TEST_F(ElementFiles, ThePoolOfADiskJobHoldsExactlyTheLongestRecord) {
  Line ample(3, three_types(), 3);
  ample.build();
  const int needed = storage.NEEDED;
  {
    Line line(3, three_types(), 3, false, needed);
    EXPECT_FALSE(stop_of([&] {
                   line.build();
                   determine_states();
                   form_all();
                 }).has_value());
    EXPECT_TRUE(executing());
  }
  Line line(3, three_types(), 3, false, needed - 1);
  EXPECT_FALSE(stop_of([&] { line.build(); }).has_value()) << "a disk job is not stopped here";
  EXPECT_FALSE(executing()) << "but nothing is analysed";
}

TEST_F(ElementFiles, AModelWithoutElementsPassesThroughEveryPass) {
  Line line(3, group_card(1, 0) + group_card(11, 0) + node_card(1), 2);
  line.build();
  determine_states();
  form_all();
  save_states();
  determine_states();
  take_over_states();
  recover_states();
  EXPECT_TRUE(records_at_hand().empty());
  EXPECT_EQ(solver.NELCHK, 0);
}

TEST_F(ElementFiles, TheNextModelBeginsWithOneStateAgain) {
  Line line(3, three_types() + three_types(), 3);
  line.build();
  line.displace(1, 1, 3.0);
  determine_states();
  take_over_states();
  save_states();
  units = {};  // what a new problem does before its input
  line.build();
  EXPECT_EQ(generations.current, units.NT1);
  EXPECT_EQ(generations.kept_reference, 0);
  EXPECT_EQ(records_at_hand()[1][8], 0) << "the latch has not moved";
  determine_states();
  EXPECT_EQ(records_at_hand()[1][8], 1);
}

TEST_F(ElementFiles, StandInTheFolderOfADiskJob) {
  Line::scheme = Scheme::disk;
  Line line(3, three_types(), 3);
  line.build();
  determine_states();
  flush_all_tapes();
  const std::size_t first = static_cast<std::size_t>(spring_first + latch_first + 2 * block_first + 2 * 4);
  EXPECT_EQ(std::filesystem::file_size("fort.1"), 4 * first);
  EXPECT_EQ(std::filesystem::file_size("fort.18"), 4 * first);
  EXPECT_EQ(std::filesystem::file_size("fort.19"), 4U * (4 * (2 + 2) + (42 + 2) + (3 + 2)));
}

}  // namespace
}  // namespace tidearc::test
