// The deck of a deck: four columns of unit bending stiffness that carry it, in water that flows past its lower half.
#pragma once

#include <string>
#include <vector>

namespace tidearc::test {

/// Columns of length 10 (E 1e6, area and inertias 1, no mass) from fixed nodes 5 to 8 up to nodes 1 to 4 at (+-15,
/// +-10, 12). The deck is 30 by 20 by 4 with its lowest corner at (-15, -10, 5); CDx 2. The water stands at 7
/// (density 1.025, g 9.81) and flows with 3 along X: force 369 along X and 12066.3 upward at (-15 or 0, 0, 6 or 5),
/// that is a moment of 369*(-6) about Y about the mean of the nodes.
struct DeckOfDeck {
  std::string storage = "";
  std::string gravity = "   -Z            7.0  10.05525     1.025    0    0      9.81\n";
  std::string header = "   20    1    1        0.        0.     TOP SIDE\n";
  std::string cards =
      "    1    1    2    3    4    5     -15.0     -10.0       5.0       0.0    9\n"
      "    0    0       4.0      30.0      20.0       0.0       0.0       0.0       0.0\n"
      "       2.0       0.0       0.0       0.0       0.0       0.0       0.0       0.0\n"
      "       0.0       0.0       0.0\n";
  std::string wave =
      "    3    1    0    0        0.    0        0.        0.    0    0\n"
      "    1    2    0        0.                                                      1\n"
      "        0.\n"
      "        0.        1.        0.        0.        3.\n"
      "       50.        1.        0.        0.        3.\n";
  std::string systems = "", assignments = "";  ///< of node axes, with their counts
  int system_count = 0, assignment_count = 0;
  bool with_deck = true;
  bool with_gravity = true;
  double load = 0.0;  ///< along X on node 1, in the pattern of the static macros
  std::string macros = "";

  /// Steps of a second from time 0, with node and element results at each.
  void dyn2(int steps);
  void stat();
  std::string text() const;
};

/// Rows of the k-th result page of decks, from 0: node, then FX FY FZ MX MY MZ.
struct DeckRow {
  int node;
  double force[6];
};
std::vector<DeckRow> deck_rows(const std::string& report, int page);

}  // namespace tidearc::test
