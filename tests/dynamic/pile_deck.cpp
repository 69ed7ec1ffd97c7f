#include "pile_deck.h"

#include <array>
#include <cstdio>

namespace tidearc::test {

std::string PileDeck::text() const {
  std::array<char, 100> control{};
  std::snprintf(control.data(), control.size(), "%5d%5d    0%5d%10.3f    0        0.        0.    0    0\n", IWTY,
                current, relative_velocity, ramp);
  return " START  P4.314  PILE\n"
         "         0    0\n"
         "\n" +
         storage +
         "\n"
         "    3    3    0    0    0    0    2    1    1    2    1    0    0\n"
         "   -Z             0.  10.05525     1.025    0    0      9.81\n"
         "    1        0.        0.      -30.\n"
         "    2        0.        0.       -5.\n"
         "    3       -1.        0.       -5.\n" +
         supports +
         "    2       20.        0.        0.        0.        0.        0.\n"
         "    3    1    1        0.        0.     pile\n"
         "    1    1    4    1    0STRUD\n"
         "    1     210000000.        .3        0.        0.\n"
         "    1    0        1.       .05\n"
         "        1.        1.        2.        1.        0.    0        0.        0.\n"
         "\n"
         "    1    1    2    0    0    1    1    0    0    4    0        0. 0  0 0   0   0\n"
         "    1    1    1        0.        0.     spring\n"
         "    1    1    0\n"
         "    1    98.994        0.        0.        0.\n"
         "\n"
         "    1        1.\n"
         "\n"
         "    1    3    2    1    1\n" +
         (static_card.empty() ? std::string("    0    0    0    0    0    0    0    0\n") : static_card) + patterns +
         "    0    0    0    0    0    0    1    0\n" + control.data() + wave_cards + "   -1   -1   -1    0\n" +
         macros + "NONE\n";
}

}  // namespace tidearc::test
