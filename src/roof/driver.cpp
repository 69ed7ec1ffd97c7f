// The run: problems one after the other, and in each the macro cards in the order of the deck.
#include "roof/driver.h"

#include <optional>
#include <string>
#include <string_view>

#include "dynamic/dynamic.h"
#include "eigen/eigen.h"
#include "roof/datain.h"
#include "roof/macros.h"
#include "roof/timlog.h"
#include "run/layout.h"
#include "run/run_block.h"
#include "run/stops.h"
#include "run/units.h"
#include "run/workpool.h"
#include "solve/arrays.h"
#include "static/segment.h"

namespace tidearc {

namespace {

constexpr int stop_requested = 3;

std::string_view current_keyword() { return {run.MACTXT.data(), run.MACTXT.size()}; }

[[noreturn]] void stop_on_unknown_macro() {
  write(units.NDOUT, "/,/,/,' **** EXECUTION TERMINATED ****',5X,' INCORRECT ANALYSIS CONTROL CARD'");
  complain(Columns{1, 4}, "'" + std::string(current_keyword()) +
                              "' is no analysis, expected STAT, DYN1, VISC, NONE, DYN2, EIGN, SAVE or REST");
  FATERR("MAIN");
}

/// A macro whose procedure does not stand: its cards cannot be read, so the deck would be out of step.
[[noreturn]] void stop_on_missing_macro(std::string_view routine) {
  const std::string words = "THE MACRO " + std::string(current_keyword()) + " IS NOT AVAILABLE";
  fatal_box(" " + words);
  complain(Columns{1, 4}, words);
  FATERR(routine);
}

Macro read_macro_card() {
  read(units.NDIN, "A4,4X,18A4", run.MACTXT, run.MACTTL);
  const std::optional<Macro> macro = macro_of(current_keyword());
  if (!macro) stop_on_unknown_macro();
  write(units.NDOUT, "'1',18A4,/,/,/", run.MACTTL);
  return *macro;
}

/// The look ahead, when the arrays were laid down, took an earlier line for the end of the problem.
[[noreturn]] void stop_without_dynamic_arrays() {
  const std::string keyword(current_keyword());
  fatal_box(" NO STORAGE WAS LAID DOWN FOR THE MACRO " + keyword);
  complain(Columns{1, 4}, "no storage was laid down for " + keyword +
                              ": a line that begins with NONE, with a first card behind it, stands before this card");
  FATERR(keyword);
}

/// Runs an analysis under the clocks of its activity.
void run_analysis(Activity activity, void (*analysis)()) {
  const Stopwatch watch(activity);
  run.NRESPR = 0;
  if (analysis != nullptr) analysis();
  watch.stop();
  run.LASTMA = run.MACTXT;
}

void run_dynamic_analysis(void (*analysis)()) {
  if (!dynamic_arrays_stand()) stop_without_dynamic_arrays();
  run_analysis(dynamic_analysis, analysis);
}

/// True when the problem has ended.
bool run_macro(Macro macro) {
  switch (macro) {
    case Macro::stat:
      run_analysis(static_analysis, STAT);
      break;
    case Macro::visc:
      run_analysis(visco_static_analysis, nullptr);
      break;
    case Macro::eign:
      run_analysis(eigen_analysis, EIGN);
      break;
    case Macro::dyn1:
      run_dynamic_analysis(DYN1);
      break;
    case Macro::dyn2:
      run_dynamic_analysis(DYN2);
      break;
    case Macro::save:
      if (run.RUNMOD != 1) stop_on_missing_macro("SAVRST");
      break;
    case Macro::rest:
      stop_on_missing_macro("SAVRST");
    case Macro::none:
      return true;
  }
  return false;
}

/// Reads one problem and runs its macros; false when the STOP card was read instead.
bool run_problem() {
  const Stopwatch watch(data_input);
  DATAIN();
  if (run.RUNMOD == stop_requested) return false;
  watch.stop();
  while (!run_macro(read_macro_card())) {
  }
  TIMLOG();
  return true;
}

}  // namespace

void DRIVER() {
  pool.allocate(run.MTOT);
  while (run_problem()) {
  }
  pool.release();
}

}  // namespace tidearc
