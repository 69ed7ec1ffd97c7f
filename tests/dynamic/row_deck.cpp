#include "row_deck.h"

#include <cstdio>

#include "support/truss_deck.h"

namespace tidearc::test {

namespace {

std::string five(int value) {
  char field[16];
  std::snprintf(field, sizeof field, "%5d", value);
  return field;
}
std::string fives(const std::vector<int>& values) {
  std::string text;
  for (const int value : values) text += five(value);
  return text;
}

std::string nodes_and_constraints(int count) {
  std::string text;
  for (int n = 1; n <= count; ++n) text += five(n) + ten(10.0 * (n - 1)) + ten(0.0) + ten(0.0) + "\n";
  text += "    1    111111\n";
  for (int n = 2; n <= count; ++n) text += five(n) + "    011111\n";
  return text;
}

}  // namespace

std::string dyn2_text(const Dyn2Cards& c) {
  char head[32];
  std::snprintf(head, sizeof head, "%6d%4d", c.NSTEP, c.NINIT);
  return ten(c.DT) + ten(c.ALPHA) + ten(c.BETA) + ten(c.DMASS) + "\n" + head +
         fives({c.KGRND, c.NFORCE, c.NIMPOS, c.KPNOD, c.KPELM, c.KPENV, c.KRST, c.KENV, c.KDUMP, c.KPOST, c.KRISAV}) +
         "\n" + fives({c.MAXIT, c.KSSTF, c.KISTF, c.KISTA, c.KTERM}) + ten(c.TOL) +
         fives({c.KUTYPE, c.KUMOM, c.NTOP, c.ISLULT}) + "\n" + c.commands;
}

std::string initial_card(int node, double velocity, double acceleration) {
  return five(1) + ten(velocity) + ten(acceleration) + five(node) + "\n";
}

std::string command_card(int node, int record, double scale, double time) {
  return five(record) + five(1) + ten(time) + ten(scale) + five(node) + "\n";
}

std::string ground_card(int record, double scale, double time) { return five(record) + ten(time) + ten(scale) + "\n"; }

std::string table_record(const std::vector<std::array<double, 2>>& points, bool with_kind) {
  std::string text = with_kind ? "    1\n" : "";
  text += std::string(60, ' ') + "(2F10.0)\n" + five(static_cast<int>(points.size())) + five(0) + ten(0.0) + ten(1.0) +
          "\n";
  for (const auto& point : points) text += ten(point[0]) + ten(point[1]) + "\n";
  return text;
}

std::string sine_record(double amplitude, double interval, int points) {
  return "    2\n\n" + five(points) + five(0) + ten(interval) + ten(1.0) + ten(0.0) + "\n" + ten(1.0) + ten(0.0) +
         ten(amplitude) + ten(0.0) + "\n";
}

std::string RowDeck::problem(const std::string& command) const {
  const int n = static_cast<int>(springs.size()) + 1;
  std::string mass_cards;
  int mass_count = 0;
  for (std::size_t i = 0; i < masses.size(); ++i) {
    if (masses[i] == 0.0) continue;
    mass_cards += five(static_cast<int>(i) + 2) + ten(masses[i]) + "\n";
    ++mass_count;
  }
  std::string t = " " + command + "   P4.314  SPRINGS IN A ROW\n\n\n" + storage + "\n";
  t += fives({n, n, 0, 0, 0, 0, n, 0, mass_count, 1, 0, 0, IENRGY}) + "\n";
  t += nodes_and_constraints(n) + mass_cards;
  t += fives({1, n - 1, 1}) + ten(BETAO) + ten(BETAT) + "     SPRINGS\n" + fives({1, n - 1, 0}) + "\n";
  t += five(1) + ten(10.0) + ten(ratio) + ten(yield) + ten(yield) + "\n\n";
  for (std::size_t i = 0; i < springs.size(); ++i) t += five(static_cast<int>(i) + 1) + ten(springs[i]) + "\n\n";
  for (int i = 1; i < n; ++i) t += fives({i, i, i + 1, 1, i}) + "\n";
  t += static_card + "\n" + patterns;
  t += fives({NGACC, NDFRC, NIDSP, 20, 20, 2000}) + "\n" + ground + forces + displacements;
  return t + fives({-1, 0, 0}) + "\n" + macros + "NONE\n";
}

RowDeck one_mass(double spring, double mass) {
  RowDeck deck;
  deck.springs = {spring};
  deck.masses = {mass};
  return deck;
}

}  // namespace tidearc::test
