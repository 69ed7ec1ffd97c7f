// What the control cards of both dynamic macros share.
#include "dynamic/cards.h"

#include <algorithm>
#include <string>

#include "run/run_block.h"
#include "run/words.h"
#include "solve/integration.h"

namespace tidearc {

void dynamic_card_error(Columns where, std::string_view words) {
  fatal_box(" " + std::string(words));
  complain(where, words);
  refuse_dynamic_cards();
}

void refuse_dynamic_cards() {
  set_fatal_flag();
  if (run.check_run) run.had_data_error = true;  // a data check has no analysis whose end would tell
}

void take_alpha(double ALPHA) {
  constexpr double most_dissipation = -1.0 / 3.0;
  integration.AB = std::max(ZERO, ZERO - ALPHA);
  if (ALPHA < most_dissipation)
    warning_box(" ALPHA IS BELOW -1/3: THE NUMERICAL DISSIPATION FALLS OFF, BELOW -1/2 THE SCHEME IS UNSTABLE");
}

}  // namespace tidearc
