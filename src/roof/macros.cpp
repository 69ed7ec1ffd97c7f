// Macro cards: their keywords, and a look ahead at those of the problem.
#include "roof/macros.h"

#include <algorithm>
#include <array>

#include "roof/datain.h"
#include "run/units.h"

namespace tidearc {

namespace {

struct Keyword {
  std::string_view word;
  Macro macro;
};
constexpr std::array<Keyword, 8> keywords{{{"STAT", Macro::stat},
                                           {"DYN1", Macro::dyn1},
                                           {"VISC", Macro::visc},
                                           {"NONE", Macro::none},
                                           {"DYN2", Macro::dyn2},
                                           {"EIGN", Macro::eign},
                                           {"SAVE", Macro::save},
                                           {"REST", Macro::rest}}};

}  // namespace

std::optional<Macro> macro_of(std::string_view keyword) {
  const auto found = std::ranges::find(keywords, keyword, &Keyword::word);
  if (found == keywords.end()) return std::nullopt;
  return found->macro;
}

// Nothing but its place in the deck tells a macro card from a data card, so every line is taken for one. Fields of data
// cards that begin a line are numbers, which no keyword is; the one card that may begin with any text is the factor
// card of a group without patterns. A NONE is therefore believed when a first card follows it. A word that is no macro
// card costs storage at most; a macro that was not seen stops when it is met.
bool dynamic_macro_ahead() {
  bool dynamic = false;
  bool none = false;
  const bool looked = look_ahead(units.NDIN, [&](std::string_view line) {
    const std::optional<Macro> macro = macro_of(line.substr(0, 4));
    dynamic = macro == Macro::dyn1 || macro == Macro::dyn2;
    none = none || macro == Macro::none;
    const bool problem_ends = none && !line.empty() && is_first_card(line.substr(1, 4));
    return !dynamic && !problem_ends;
  });
  return dynamic || !looked;
}

}  // namespace tidearc
