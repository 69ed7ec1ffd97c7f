// The element-state log: appending, dropping and committing records of unit 33.
#include "elements/contract/state_log.h"

#include <algorithm>
#include <array>

#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

namespace {

constexpr int record_words = words(sizeof(StateLogRecord));

/// Puts the file behind the header and the records that count. A log without records begins with its header again: the
/// file may have changed its form, and lost its contents, since the macro wrote it.
void place() {
  if (state_log.placed) return;
  FILE(UNIT_STATE_LOG, "REWI");
  if (state_log.written == 0) {
    const Word header = 0;
    FILE(UNIT_STATE_LOG, "WRIT", 1, &header);
  } else {
    FILE(UNIT_STATE_LOG, "SKIP", 1 + state_log.written);
  }
  state_log.placed = true;
}

void go_back_to(int count) {
  const int dropped = state_log.written - count;
  if (dropped < 1) return;
  if (state_log.placed) FILE(UNIT_STATE_LOG, "BACK", dropped);
  state_log.written = count;
  state_log.stale = true;
}

/// A write cuts what follows it, so the last record that counts is written again in its place.
void cut_stale_records() {
  place();
  FILE(UNIT_STATE_LOG, "BACK", 1);
  const std::span<const Word> last = next_record(UNIT_STATE_LOG);
  std::array<Word, record_words> copy{};
  const int count = std::min(static_cast<int>(last.size()), record_words);
  std::copy_n(last.begin(), count, copy.begin());
  FILE(UNIT_STATE_LOG, "BACK", 1);
  FILE(UNIT_STATE_LOG, "WRIT", count, copy.data());
  state_log.stale = false;
}

}  // namespace

void open_state_log() {
  if (is_open_tape(UNIT_STATE_LOG)) return;
  const Word header = 0;
  open_tape(UNIT_STATE_LOG, "OVRLOAD", false);
  FILE(UNIT_STATE_LOG, "WRIT", 1, &header);
  FILE(UNIT_STATE_LOG, "REWI");
}

void log_state_change(const StateLogRecord& record) {
  if (state_log.silent || !is_open_tape(UNIT_STATE_LOG)) return;
  place();
  FILE(UNIT_STATE_LOG, "WRIT", record_words, &record);
  ++state_log.written;
  state_log.stale = false;
}

void drop_uncommitted_changes() {
  if (is_open_tape(UNIT_STATE_LOG)) go_back_to(state_log.committed);
}

void commit_changes() {
  if (!is_open_tape(UNIT_STATE_LOG)) return;
  if (state_log.stale) cut_stale_records();
  state_log.committed = state_log.written;
}

void recover_changes(int committed) {
  if (!is_open_tape(UNIT_STATE_LOG)) return;
  go_back_to(committed);
  state_log.committed = state_log.written;
}

}  // namespace tidearc
