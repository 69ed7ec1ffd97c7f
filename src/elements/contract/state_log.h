// The element-state log: a record for each change of an element's state code, on the record file of unit 33.
//
// The first analysis of a problem opens the file, writes its header (one word 0) and rewinds it. While it is not open,
// nothing is written. A record is 24 words:
//   1     element type              9-10   time
//   2     element number            11-12  force
//   3, 4  end nodes                 13-14  force again
//   5     new state code            15-16  extension
//   6     group                     17-18  extension again
//   7     load step                 19-20  accumulated plastic extension in tension
//   8     0                         21-22  accumulated plastic extension in compression
//                                   23-24  stress
// A determination starts from the last state update and tells the same changes again, so records that no state update
// has committed are dropped when the next determination begins.
#pragma once

#include <type_traits>

namespace tidearc {

struct StateLogRecord {
  int type;
  int number;
  int node_i, node_j;
  int code;
  int group;
  int step;
  int zero;
  double time;
  double force, force_again;
  double extension, extension_again;
  double plastic_tension, plastic_compression;
  double stress;
};
static_assert(std::is_trivially_copyable_v<StateLogRecord> && sizeof(StateLogRecord) == 24 * 4);

/// Position of the log. Advanced by the passes; saved and recovered with the element states.
struct StateLogBlock {
  int written = 0;      ///< records behind the header up to the file's position                          [-]
  int committed = 0;    ///< those of them that a state update has made final                             [-]
  bool placed = false;  ///< the file stands behind `written` records (after its opening it stands at its start)
  bool stale = false;   ///< dropped records still follow the position
  bool silent = false;  ///< a determination that leaves no trace is at work: nothing is written
};
inline StateLogBlock state_log;
static_assert(std::is_trivially_copyable_v<StateLogBlock>);

/// Opens the log with its header; no effect when it is open already.
void open_state_log();
/// Appends a record, when the file is open.
void log_state_change(const StateLogRecord& record);
/// Drops the records that no state update has committed.
void drop_uncommitted_changes();
/// Makes the records so far final and cuts what was dropped behind them.
void commit_changes();
/// Goes back to an earlier number of records, all of them committed.
void recover_changes(int committed);

}  // namespace tidearc
