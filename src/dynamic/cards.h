// What the control cards of both dynamic macros share.
#pragma once

#include <string_view>

#include "run/stops.h"

namespace tidearc {

/// A value that cannot be worked with: a box with the words, a line on the error stream about the deck line read last,
/// and the fatal flag. Reading goes on.
void dynamic_card_error(Columns where, std::string_view words);
/// The fatal flag for cards that have been told to be wrong.
void refuse_dynamic_cards();
/// AB from the ALPHA of a card: a positive one counts as 0. Below -1/3 the dissipation falls off, which is told.
void take_alpha(double ALPHA);

}  // namespace tidearc
