// The first card of a problem: what is to be done, for which version of the program, under which title.
#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <string_view>

#include "model/gravity.h"
#include "roof/datain.h"
#include "run/clocks.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/words.h"

namespace tidearc {

namespace {

constexpr int mode_execution = 0;
constexpr int mode_check = 1;
constexpr int mode_stop = 3;

constexpr std::size_t tag_width = 8;     ///< columns of the title that bear the deck's version tag
constexpr std::size_t tag_compared = 3;  ///< characters that decide whether the deck fits
using Command = std::array<char, 4>;

std::string_view text_of(const Command& command) { return {command.data(), command.size()}; }

/// Looks for the next START, CHECK or STOP card and reads over everything else, which is how comments stand in a deck.
Command find_first_card() {
  Command command{};
  while (true) {
    read(units.NDIN, "1X,A4,3X,18A4", command, run.TITLE);
    if (is_first_card(text_of(command))) return command;
  }
}

/// Takes the deck's version from the title; true when the deck fits this program, whose tag is then blanked.
bool take_version_tag() {
  const std::string_view tag(run.TITLE.data(), tag_width);
  if (!scan(tag.substr(1, 4), "F4.0", run.DATVER)) run.DATVER = 0.0;
  if (tag.substr(0, tag_compared) != VERSION.substr(0, tag_compared)) return false;
  std::fill_n(run.TITLE.begin(), tag_width, ' ');
  return true;
}

void write_date() {
  const CalendarTime now = calendar_time();
  write(units.NDOUT, "/,'1','DATE',5X,I2,'-',I2,'-',I4,1X,A8", now.month, now.day, now.year, now.time);
}

void write_banner() {
  write(
      units.NDOUT,
      "' ','KESTRA',10X,'FINITE ELEMENT STATIC AND DYNAMIC',' NONLINEAR ANALYSIS PROGRAM - TIDEARC',10X,'VERSION ',A9",
      VERSION);
  write(units.NDOUT, "' ',73('*'),/,' ',18A4,/,' ',73('*')", run.TITLE);
}

/// The deck was made for another version: nothing is closed down and the scratch files stay.
[[noreturn]] void stop_on_version() {
  write(units.NDOUT, "5X,'INPUT DATA INCOMPATIBLE WITH PROGRAM VERSION',1X,A6,5X,'PROGRAM STOPS.'", VERSION);
  complain(Columns{9, 16}, "'" + std::string(run.TITLE.data(), tag_width) +
                               "' is no version tag of this program, expected " +
                               std::string(VERSION.substr(0, tag_compared)) + " and a number");
  std::puts("PROGRAM STOPS BECAUSE THE DATA FILE DOES NOT MATCH THIS VERSION OF PROGRAM.");
  flush_all_units();
  end_process(status_fatal);
}

}  // namespace

bool is_first_card(std::string_view command) { return command == "STAR" || command == "CHEC" || command == "STOP"; }

void FIRSTC() {
  reset_gravity();
  const Command command = find_first_card();
  if (text_of(command) == "STOP") {
    run.RUNMOD = mode_stop;
    return;
  }
  run.check_run = text_of(command) == "CHEC";
  run.RUNMOD = run.check_run ? mode_check : mode_execution;
  write_date();
  const bool fits = take_version_tag();
  write_banner();
  if (!fits) stop_on_version();
  write(units.NDOUT, "5X,'OPERATION COMMAND =',1X,A4,1X,4X,5A4,/", command,
        run.check_run ? "(DATA CHECK ONLY)" : "(EXECUTION)");
}

}  // namespace tidearc
