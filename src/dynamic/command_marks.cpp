// Marks of wrong values in commands.
#include "dynamic/command_marks.h"

#include <array>

#include "run/layout.h"
#include "run/run_block.h"
#include "run/units.h"

namespace tidearc {

std::string_view direction_of(int component) {
  constexpr std::array<std::string_view, 7> texts{" X ", " Y ", " Z ", "XR ", "YR ", "ZR ", "   "};
  const bool known = component >= 1 && component < no_component;
  return texts[static_cast<std::size_t>((known ? component : no_component) - 1)];
}

void note_mark(Columns where, const std::string& words) {
  complain(where, words);
  set_fatal_flag();
  run.had_data_error = true;
}

void print_mark_table() {
  write(units.NDOUT,
        "/,/,' ERROR MESSAGES - NONFATAL DATA ERRORS',/,/,5X,'KEY',5X,'--------------- MESSAGE --------------',/,/,"
        "5X,'  *',5X,'INCORRECT NODE NUMBER INPUT',/,5X,' **',5X,'INCORRECT RECORD NUMBER INPUT',/,"
        "5X,'***',5X,'INCORRECT DOF NUMBER INPUT'");
}

}  // namespace tidearc
