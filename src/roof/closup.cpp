// The close-down: the one way on which a run ends in order, by its STOP card, a limit or a fatal message.
#include "roof/closup.h"

#include "run/layout.h"
#include "run/tapefile.h"
#include "run/units.h"

namespace tidearc {

namespace {

void close_unit(int unit) {
  close_formatted(unit);
  close_tape(unit);
}

void close_member_forces() {
  if (units.TAPFRC <= 0) return;
  close_unit(units.TAPFRC);
  units.TAPFRC = 0;
}

void delete_scratch_files() {
  for (const int unit : {units.NT1, units.NT5, units.NT10, units.NT13, units.NT15, units.NT12}) close_tape(unit, true);
}

void write_wave_count() {
  if (run.NWAVNO <= 0) return;
  close_unit(UNIT_LOADS_TEXT);
  close_unit(UNIT_LOADS);
  open_formatted(UNIT_WAVES, "TAModel.wavno", OpenMode::fresh);
  write(UNIT_WAVES, "I5", run.NWAVNO);
  close_unit(UNIT_WAVES);
}

}  // namespace

ExitStatus exit_status(const RunBlock& ended) {
  if (ended.RUNMOD != 3) return status_fatal;
  if (ended.had_data_error) return status_data_error;
  return ended.had_terminated_macro ? status_terminated : status_good;
}

void CLOSUP() {
  close_member_forces();
  delete_scratch_files();
  for (const int unit : {32, 36, 72}) close_unit(unit);
  write_wave_count();
  for (const int unit : {53, 54, 55, 75, 76, 77}) close_unit(unit);
  flush_all_units();
  end_process(exit_status(run));
}

}  // namespace tidearc
