// The element-state log: records that count, those that are dropped, and the way back of a restep.
#include "elements/contract/state_log.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "elements/contract/pass.h"
#include "lattice.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc::test {
namespace {

std::string two_springs() { return group_card(1, 2) + spring_card(1, 1, 2) + spring_card(2, 2, 3); }

class StateLogOfSteps : public EveryScheme {};
IN_EVERY_SCHEME(StateLogOfSteps);

StateLogRecord change(int number) {
  StateLogRecord record{};
  record.number = number;
  return record;
}
/// Element numbers of all records on the log.
std::vector<int> logged(int count) {
  std::vector<int> numbers;
  FILE(UNIT_STATE_LOG, "REWI");
  FILE(UNIT_STATE_LOG, "SKIP", 1);
  for (int i = 0; i < count; ++i) numbers.push_back(next_record(UNIT_STATE_LOG)[1]);
  return numbers;
}
bool ends_behind(int count) {
  logged(count);
  return stop_of([] { next_record(UNIT_STATE_LOG); }).has_value();
}

TEST(StateLog, IsWrittenOnlyWhileItsFileIsOpen) {
  Line line(3, "", 0);
  log_state_change(change(1));
  EXPECT_FALSE(is_open_tape(UNIT_STATE_LOG));
  EXPECT_EQ(state_log.written, 0);
}

TEST(StateLog, RecordsFollowTheHeader) {
  Line line(3, "", 0);
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  const Word header = 0;
  FILE(UNIT_STATE_LOG, "WRIT", 1, &header);
  FILE(UNIT_STATE_LOG, "REWI");
  log_state_change(change(11));
  log_state_change(change(12));
  EXPECT_EQ(logged(2), (std::vector<int>{11, 12}));
}

TEST(StateLog, UncommittedRecordsAreDropped) {
  Line line(3, "", 0);
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  log_state_change(change(11));
  commit_changes();
  log_state_change(change(12));
  log_state_change(change(13));
  drop_uncommitted_changes();
  log_state_change(change(14));
  commit_changes();
  EXPECT_TRUE(ends_behind(2));
  EXPECT_EQ(logged(2), (std::vector<int>{11, 14}));
}

TEST(StateLog, DroppedRecordsAreCutAtTheStateUpdate) {
  for (const bool with_record : {false, true}) {
    Line line(3, "", 0);
    open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
    if (with_record) log_state_change(change(11));
    commit_changes();
    log_state_change(change(12));
    drop_uncommitted_changes();
    commit_changes();
    EXPECT_TRUE(ends_behind(with_record ? 1 : 0));
  }
}

TEST_P(StateLogOfSteps, RecoveringGoesBackToTheSavedRecords) {
  Line line(3, two_springs(), 1);
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  line.build();
  log_state_change(change(11));
  commit_changes();
  save_states();
  log_state_change(change(12));
  commit_changes();
  log_state_change(change(13));
  recover_states();
  log_state_change(change(14));
  commit_changes();
  EXPECT_TRUE(ends_behind(2));
  EXPECT_EQ(logged(2), (std::vector<int>{11, 14}));
}

// A determination at zero increment before the first step may log a change. Nothing has committed it when the step
// saves its start, and the next determination logs it again.
TEST_P(StateLogOfSteps, ARecordThatNoUpdateHadCommittedIsNotKeptByARestep) {
  Line line(3, two_springs(), 1);
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  line.build();
  log_state_change(change(11));  // at zero increment
  save_states();
  drop_uncommitted_changes();  // the step's determination begins
  log_state_change(change(11));
  commit_changes();
  recover_states();  // restep
  EXPECT_EQ(state_log.committed, 0);
  drop_uncommitted_changes();
  log_state_change(change(11));
  commit_changes();
  EXPECT_TRUE(ends_behind(1));
  EXPECT_EQ(logged(1), std::vector<int>{11});
}

TEST_P(StateLogOfSteps, ANewModelBeginsANewLog) {
  Line line(3, two_springs(), 1);
  open_tape(UNIT_STATE_LOG, "OVRLOAD", true);
  log_state_change(change(11));
  commit_changes();
  line.build();
  log_state_change(change(21));
  commit_changes();
  EXPECT_TRUE(ends_behind(1));
  EXPECT_EQ(logged(1), std::vector<int>{21});
}

}  // namespace
}  // namespace tidearc::test
