// A pile in waves: an upright tube from -30 to -5 that a spring lets move along X alone, with 20 t on it.
#pragma once

#include <string>

namespace tidearc::test {

struct PileDeck {
  int current = 0;  ///< current code; the cards stand in `wave_cards`
  int relative_velocity = 1;
  double ramp = 0.0;
  int IWTY = 1;
  /// The cards behind the wave control card; as given an Airy wave H 6, T 8, d 50 with its crest over the pile at time
  /// 0.
  std::string wave_cards =
      "        6.        8.        1.        0.        0.        0.       50.        0.        0.\n"
      "        0.        0.        0.    0    0    0    0    0    0    0\n";
  std::string storage = " CORE SYMM         0";
  /// Two cards of constrained nodes, one of identical displacements.
  std::string supports =
      "    1    011111    2\n"
      "    3    111111\n"
      "100000        1    2\n";
  std::string patterns, static_card = "";  ///< static loads
  std::string macros;

  std::string text() const;
};

}  // namespace tidearc::test
