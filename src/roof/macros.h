// Macro cards: their keywords, and a look ahead at those of the problem.
#pragma once

#include <optional>
#include <string_view>

namespace tidearc {

enum class Macro { stat, dyn1, visc, none, dyn2, eign, save, rest };

/// The macro whose keyword this is, to the letter; the keyword stands in columns 1 to 4 of a macro card.
std::optional<Macro> macro_of(std::string_view keyword);

/// Whether a dynamic macro stands among the cards of the problem that are still to be read; true as well for a deck in
/// which there is no way back. Reads nothing off.
bool dynamic_macro_ahead();

}  // namespace tidearc
