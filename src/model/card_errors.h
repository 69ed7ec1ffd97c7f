// Boxes around what is wrong on a card without being a data error: the reader goes on, or ends the run itself.
#pragma once

#include <string>
#include <string_view>

#include "run/stops.h"

namespace tidearc {

/// An error box "ERROR -----words", and the words with the deck place on the error stream. Sets no flag.
inline void card_error(std::string_view words, const DeckPlace& where) {
  fatal_box("     ERROR -----" + std::string(words));
  complain(where, words);
}
inline void card_error(std::string_view words, Columns where = whole_line) {
  card_error(words, DeckPlace(deck_line(), where));
}

/// The same as a warning.
inline void card_warning(std::string_view words, Columns where = whole_line) {
  warning_box("     WARNING -----" + std::string(words));
  complain(where, words);
}

}  // namespace tidearc
