#include "deck_text.h"

#include <sstream>

#include "run/layout.h"
#include "support/scratch.h"
#include "support/truss_deck.h"

namespace tidearc::test {

namespace {

std::string nodes() {
  std::string text;
  int n = 0;
  for (const double z : {12.0, 2.0}) {
    for (const auto& [x, y] : {std::pair{-15.0, -10.0}, {15.0, -10.0}, {15.0, 10.0}, {-15.0, 10.0}})
      text += format("I5", ++n) + ten(x) + ten(y) + ten(z) + "\n";
  }
  return text;
}

const std::string columns =
    "    3    4    1        0.        0.     COLUMNS\n"
    "    1    1    0    0    0\n"
    "    1          1.0E6      0.25\n"
    "    1    0        0.        0.        1.        0.        1.        1.   1.   0.        0.\n"
    "\n\n"
    "    1    5    1    1    0    1    1\n"
    "    4    8    4    1    0    1    1\n";

}  // namespace

void DeckOfDeck::dyn2(int steps) {
  macros += "DYN2    STEPS OF A SECOND\n        1.        0.        0.        0.\n" + format("I6,I4", steps, 0) +
            "    0    0    0    1    1    0    0    0    0    0    0\n" +
            "    1    1    0    1    0  1000000.    0    0    0    0\n";
}

void DeckOfDeck::stat() {
  SegmentCards segment;
  segment.KPRINT = 1;
  macros += "STAT    STATIC\n    1   SEGMENTS\n" + segment_text(segment);
}

std::string DeckOfDeck::text() const {
  std::string t = " STAR   P4.314  A DECK\n\n\n" + storage + "\n";
  t += format("11I5", 8, 8, 0, 0, system_count, assignment_count, 1, 0, 0, with_deck ? 2 : 1, with_gravity ? 1 : 0) +
       "\n";
  t += (with_gravity ? gravity : "") + nodes() + systems + assignments + "    5    111111    8\n" + columns;
  if (with_deck) t += header + cards;
  t += format("5I5", load != 0.0 ? 1 : 0, 0, 0, 0, 0) + "\n";
  if (load != 0.0) t += "    1PATTERN\n    1" + ten(load) + "\n";
  t += format("8I5", 0, 0, 0, 0, 0, 0, wave.empty() ? 0 : 1, 0) + "\n" + wave;
  return t + "   -1   -1   -1\n" + macros + "NONE\n STOP\n";
}

std::vector<DeckRow> deck_rows(const std::string& report, int page) {
  std::vector<DeckRow> rows;
  int seen = -1;
  bool on_page = false;
  for (const std::string& line : lines_of(report)) {
    if (line.rfind(" ELEM   NODE      FX", 0) == 0) {
      on_page = ++seen == page;
      continue;
    }
    if (!on_page) continue;
    std::istringstream in(line.size() < 5 ? "" : line.substr(5));
    DeckRow row{};
    in >> row.node;
    for (double& force : row.force) in >> force;
    on_page = !in.fail();
    if (on_page) rows.push_back(row);
  }
  return rows;
}

}  // namespace tidearc::test
