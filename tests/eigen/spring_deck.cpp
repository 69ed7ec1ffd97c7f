#include "spring_deck.h"

#include <algorithm>
#include <cstdio>
#include <sstream>

#include "support/run_deck.h"
#include "support/scratch.h"
#include "support/truss_deck.h"

namespace tidearc::test {

namespace {

template <class... Values>
std::string card(const char* pattern, Values... values) {
  char line[256];
  std::snprintf(line, sizeof line, pattern, values...);
  return line;
}

std::vector<std::string> words_of(const std::string& line) {
  std::istringstream in(line);
  std::vector<std::string> words;
  for (std::string word; in >> word;) words.push_back(word);
  return words;
}

}  // namespace

int SpringDeck::point(double x, double y, double z, const std::string& codes) {
  points_ += card("%5d", ++point_count_) + ten(x) + ten(y) + ten(z) + "\n";
  fixes_ += card("%5d    ", point_count_) + codes + "\n";
  return point_count_;
}

void SpringDeck::mass(int node, const std::array<double, 3>& values) {
  ++mass_count_;
  masses_ += card("%5d", node) + ten(values[0]) + ten(values[1]) + ten(values[2]) + "\n";
}

void SpringDeck::spring(int i, int j, double stiffness) { springs_.push_back({i, j, stiffness}); }

void SpringDeck::tie(int master, int slave) {
  ++tie_count_;
  ties_ += "100000    " + card("%5d%5d\n", master, slave);
}

void SpringDeck::turn(int node, const std::array<double, 3>& a, const std::array<double, 3>& b) {
  ++system_count_;
  const auto side = [](int direction, const std::array<double, 3>& v) {
    return card("%5d", direction) + ten(v[0]) + ten(v[1]) + ten(v[2]) + std::string(5, ' ');
  };
  systems_ += side(1, a) + side(2, b) + "\n";
  assignments_ += card("%5d%5d\n", node, system_count_);
}

void SpringDeck::want(int NFREQ, double FCUT, double FSHIFT) {
  eigen_card = card("%5d     ", NFREQ) + ten(FCUT) + ten(FSHIFT);
}

void SpringDeck::eign(int NPRINT, int NITEM, int KSTURM, double ZCUT) {
  macros = "EIGN    MODES\n" + card("%5d%5d%5d", NPRINT, NITEM, KSTURM) + ten(ZCUT) + "\n";
}

std::string SpringDeck::problem() const {
  std::string t = " " + command + "   P4.314  SPRINGS AND MASSES\n\n\n" + storage + "\n";
  t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d\n", point_count_, point_count_, 0, 0, system_count_,
            system_count_, point_count_, tie_count_, mass_count_, 1, gravity_card.empty() ? 0 : 1, IEIGN, 0, 0, IBANDW);
  if (!gravity_card.empty()) t += gravity_card + "\n";
  t += points_ + systems_ + assignments_ + fixes_ + ties_ + masses_;
  if (IEIGN == 1) t += eigen_card + "\n";
  const int count = static_cast<int>(springs_.size());
  t += card("%5d%5d%5d", 1, count, 1) + std::string(25, ' ') + "SPRINGS\n";
  std::vector<double> sections;  // one for each stiffness
  std::string bars;
  for (int s = 1; s <= count; ++s) {
    const Spring& spring = springs_[static_cast<std::size_t>(s - 1)];
    const auto found = std::find(sections.begin(), sections.end(), spring.stiffness);
    const int section = static_cast<int>(found - sections.begin()) + 1;
    if (found == sections.end()) sections.push_back(spring.stiffness);
    bars += card("%5d%5d%5d%5d%5d\n", s, spring.i, spring.j, 1, section);
  }
  t += card("%5d%5d%5d\n", 1, static_cast<int>(sections.size()), 0) + card("%5d", 1) + ten(1.0) + "\n\n";
  for (std::size_t k = 0; k < sections.size(); ++k)
    t += card("%5d", static_cast<int>(k) + 1) + ten(sections[k]) + "\n\n";
  t += bars;
  t += card("%5d%30s%5d\n", NFPAT, "", NZDISP);
  t += patterns;
  t += "\n";                             // dynamic load control card
  t += card("%5d%5d%5d\n", -1, -1, -1);  // response output card: all nodes
  return t + macros + "NONE\n";
}

std::string SpringDeck::text() const { return problem() + " STOP\n"; }

SpringDeck oscillator() {
  SpringDeck deck;
  const int wall = deck.point(0, 0, 0, "111111");
  const int node = deck.point(1, 0, 0, "011111");
  deck.spring(wall, node, 4.0);
  deck.mass(node, 1.0);
  return deck;
}

SpringDeck spring_chain(int n, double k, double m, bool held) {
  SpringDeck deck;
  int last = 0;
  const int total = n + (held ? 2 : 0);
  for (int i = 1; i <= total; ++i) {
    const bool wall = held && (i == 1 || i == total);
    const int node = deck.point(i, 0.0, 0.0, wall ? "111111" : "011111");
    if (!wall) deck.mass(node, {m, 0.0, 0.0});
    if (last > 0) deck.spring(last, node, k);
    last = node;
  }
  return deck;
}

std::vector<PrintedMode> printed_modes(const std::string& report) {
  const std::vector<std::string> lines = lines_of(report);
  std::vector<PrintedMode> modes;
  enum { none, frequencies, shapes, cuts } page = none;
  std::size_t mode = 0;
  for (const std::string& line : lines) {
    const std::vector<std::string> words = words_of(line);
    if (line.starts_with(" STRUCTURE FREQUENCIES")) {
      page = frequencies;
    } else if (line.starts_with(" STRUCTURE MODE SHAPES")) {
      page = shapes;
    } else if (line.starts_with(" MODAL CUT FORCES/MOMENTS")) {
      page = cuts;
    } else if (page == frequencies && line.starts_with("0   ")) {
      modes.push_back(
          {std::stod(line.substr(11, 10)), std::stod(line.substr(23, 10)), std::stod(line.substr(35, 10)), {}, {}});
    } else if (line.starts_with(" M O D E  S H A P E  -  N O .")) {
      mode = static_cast<std::size_t>(std::stoi(words.back())) - 1;
    } else if (page == shapes && words.size() == 7) {
      std::array<double, 6> row{};
      for (std::size_t c = 0; c < 6; ++c) row[c] = std::stod(words[c + 1]);
      modes.at(mode).shape.push_back(row);
    } else if (page == cuts && words.size() == 5 && words[0] != "MODE") {
      for (std::size_t c = 0; c < 4; ++c) modes.at(std::stoul(words[0]) - 1).cut[c] = std::stod(words[c + 1]);
      if (std::stoul(words[0]) == modes.size()) break;
    }
  }
  return modes;
}

std::vector<double> last_values(const std::string& report, const std::string& kind) {
  const std::vector<std::string> lines = lines_of(report);
  std::vector<double> values;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (!lines[i].starts_with("     CURRENT " + kind + ",")) continue;
    values.clear();
    for (std::size_t k = i + 1; k < lines.size() && lines[k].starts_with("     ") && lines[k].size() % 20 == 0; ++k)
      for (const std::string& word : words_of(lines[k])) values.push_back(std::stod(word));
  }
  return values;
}

int cycles_of(const std::string& report) { return count_of(report, "CURRENT EIGENVALUES, ITERATION"); }

}  // namespace tidearc::test
