// Renumbering of whole problems: the answers do not know in which order the equations stand.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "model/nodes.h"
#include "roof/driver.h"
#include "roof/startup.h"
#include "run/stops.h"
#include "run_deck.h"
#include "scratch.h"
#include "solve/arrays.h"
#include "solve/solver.h"

namespace tidearc::test {
namespace {

template <class... Values>
std::string card(const char* pattern, Values... values) {
  char line[512];
  std::snprintf(line, sizeof line, pattern, values...);
  return std::string(line) + "\n";
}

/// A mast of four legs, eight levels and X braces, whose nodes are named in an irregular row. The lowest level is held
/// but for one foot, which sinks by a prescribed displacement; the foot of the second leg stands on a skew roller;
/// nodes of the top are tied, one of them to a master with a higher number. Bars yield and harden; they have mass and
/// weight.
class Mast {
 public:
  std::string text(int IBANDW) const {
    std::string t = " STAR   P4.314  MAST\n\n\n\n";
    t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d", nodes_in_all, nodes_in_all, 0, 0, 1, 1, 4 + levels - 1,
              2, 2, 1, 1, 0, 0, 0, IBANDW);
    t += "   -Z            0.0       0.0       0.0    0    0      9.81\n";
    for (int level = 0; level < levels; ++level) {
      for (int leg = 0; leg < 4; ++leg) t += control_node(leg, level);
    }
    t += card("%5d%10.1f%10.1f%10.1f%5s%5d%10.1f%10.1f%10.1f", 1, 0.8, 0.0, 0.6, "", 3, -0.6, 0.0, 0.8);
    t += card("%5d%5d", name(1, 0), 1);
    return t + constraints() + ties_and_masses() + bars() + loads();
  }

 private:
  static constexpr int levels = 8;
  static constexpr int nodes_in_all = 4 * levels;

  /// 1..32 in an irregular row: 13 and 33 have no common divisor.
  static int name(int leg, int level) { return 13 * (leg + 4 * level + 1) % (nodes_in_all + 1); }

  static std::string control_node(int leg, int level) {
    const double half = 2.0 - 0.1 * level;
    const double x = leg == 0 || leg == 3 ? -half : half;
    const double y = leg < 2 ? -half : half;
    return card("%5d%10.3f%10.3f%10.3f", name(leg, level), x, y, 3.0 * level);
  }

  static std::string constraints() {
    std::string t;
    for (int level = 1; level < levels; ++level) {
      t += card("%5d    000111%5s%5s%5d%5d%5d", name(0, level), "", "", name(1, level), name(2, level), name(3, level));
    }
    t += card("%5d    111111", name(0, 0));
    t += card("%5d    011111", name(1, 0));  // free along its own first direction, uphill
    t += card("%5d    111111", name(2, 0));
    t += card("%5d    110111", name(3, 0));  // sinks
    return t;
  }

  static std::string ties_and_masses() {
    std::string t = card("100000    %5d%5d%5d", name(0, 7), name(1, 7), name(2, 7));
    t += card("010000    %5d%5d", name(3, 6), name(2, 6));
    t += card("%5d%10.1f%10.1f%10.1f", name(0, 7), 5.0, 5.0, 5.0);
    t += card("%5d%10.1f%10.1f%10.1f", name(2, 4), 1.0, 2.0, 3.0);
    return t;
  }

  static std::string bars() {
    std::string cards;
    int count = 0;
    const auto bar = [&](int I, int J) { cards += card("%5d%5d%5d%5d%5d%10s%5d", ++count, I, J, 1, 1, "", 1); };
    for (int level = 1; level < levels; ++level) {
      for (int leg = 0; leg < 4; ++leg) {
        const int next = (leg + 1) % 4;
        bar(name(leg, level - 1), name(leg, level));
        bar(name(leg, level - 1), name(next, level));
        bar(name(next, level - 1), name(leg, level));
        bar(name(leg, level), name(next, level));
      }
      bar(name(0, level), name(2, level));
    }
    std::string t = card("%5d%5d%5d%10s%10s     MAST", 1, count, 1, "", "") + "    1    1    0\n";
    t += card("%5d%10.1f%10.3f%10.1f%10.1f%10s%10.3f", 1, 2.0e5, 0.05, 300.0, 300.0, "", 0.02);
    t += card("%10.4f", 0.01) + card("%5d%10.3f", 1, 1.0) + "\n";
    return t + cards;
  }

  static std::string loads() {
    std::string t = "    1    0    0    0    1    0    0    1\n    2PUSH\n";
    t += card("%5d%10.1f%10.1f%10.1f", name(0, 7), 90.0, 20.0, -50.0);
    t += card("%5d%10.1f%10.1f%10.1f", name(3, 4), 40.0, 0.0, 0.0);
    t += "    1   SINKING FOOT\n" + card("%5d%5d%10.4f", name(3, 0), 3, -0.02);
    t += "\n   -1   -1   -1\nSTAT    PUSH\n    1   MAST\n";
    t += card("%5d%5d%10s%5d%5d%10.3f%5d%5d%5d%5d%5d%5d", 1, 0, "", 0, 1, 0.25, 4, 0, 1, 0, 30, 1);
    t += "    1    1    0    0    2    0    0    0    0\n    0    0    1.0E-8\n";
    t += "       1.0\n\n\n\n       1.0\n       1.0\n";
    return t;
  }
};

struct Answer {
  std::vector<double> displacements;  ///< by node and component
  std::string report;
  int NSTO = 0;
};

/// Runs a problem whose macro cards end where the deck ends, so that the state of the last step still stands.
Answer answer_of(const std::string& deck) {
  Scratch scratch(deck);
  const auto status = stop_of([] {
    start_process("1M");
    DRIVER();
  });
  EXPECT_EQ(status, status_io) << scratch.errors();
  Answer answer;
  answer.report = trimmed(scratch.report());
  answer.NSTO = solver.NSTO;
  for (int node = 1; node <= sizes.NUMNP; ++node) {
    for (int c = 1; c <= 6; ++c) answer.displacements.push_back(equation_vector(arrays.U)(equation_of(node, c)));
  }
  return answer;
}

std::string section(const std::string& report, const std::string& from, const std::string& to) {
  const auto first = report.find(from);
  return first == std::string::npos ? "" : report.substr(first, report.find(to, first) - first);
}

double largest(const std::vector<double>& values) {
  double size = 0.0;
  for (const double value : values) size = std::max(size, std::abs(value));
  return size;
}

class RenumberedMast : public testing::TestWithParam<int> {};

TEST_P(RenumberedMast, HasTheAnswerOfTheMastAsItIsNumbered) {
  const Answer plain = answer_of(Mast().text(0));
  const Answer renumbered = answer_of(Mast().text(GetParam()));
  ASSERT_EQ(plain.displacements.size(), 192U);
  ASSERT_GT(largest(plain.displacements), 0.01);
  double difference = 0.0;
  for (std::size_t i = 0; i < plain.displacements.size(); ++i)
    difference = std::max(difference, std::abs(plain.displacements[i] - renumbered.displacements[i]));
  // The same sums in another order, some 1e4 of them deep: far below, but not at, the last digit.
  EXPECT_LT(difference, 1e-10 * largest(plain.displacements));
}

TEST_P(RenumberedMast, KeepsMassesAndWeightsAtTheirNodes) {
  const Answer plain = answer_of(Mast().text(0));
  const Answer renumbered = answer_of(Mast().text(GetParam()));
  for (const auto& [from, to] : {std::pair{" LUMPED MASS SUMMARY", "STATIC FORCE PATTERN"},
                                 std::pair{"STATIC SELF WEIGHT PATTERN", "PRESCRIBED"}}) {
    EXPECT_GT(section(plain.report, from, to).size(), 1000U) << from;
    EXPECT_EQ(section(renumbered.report, from, to), section(plain.report, from, to));
  }
}

INSTANTIATE_TEST_SUITE_P(EveryCode, RenumberedMast, testing::Values(1, 2, 3, 4, 5, -1));

TEST(Renumbered, SloanHalvesTheProfileOfTheMast) {
  EXPECT_LT(2 * answer_of(Mast().text(1)).NSTO, answer_of(Mast().text(0)).NSTO);
}

TEST(Renumbered, TheTableOfCodesComesOnceUnderItsOwnHeading) {
  const Answer plain = answer_of(Mast().text(0));
  EXPECT_EQ(count_of(plain.report, "\n DISPLACEMENT CODES\n"), 1);
  EXPECT_EQ(count_of(plain.report, "BAND-WIDTH REDUCTION COMMANDS"), 0);
  const Answer renumbered = answer_of(Mast().text(1));
  EXPECT_EQ(count_of(renumbered.report, "\n DISPLACEMENT CODES\n"), 0);
  EXPECT_EQ(count_of(renumbered.report, "\n DISPLACEMENT CODES (RENUMBERED)\n"), 1);
}

TEST(Renumbered, AProfileThatNoPoolCanHoldIsNotMetBeforeRenumbering) {
  // A chain of bars whose nodes are named from both ends in turn: neighbours are up to n apart, the profile as it
  // stands has some 9 n * n / 2 entries, of which matrix and factor take two words each: more than 32 bits can address.
  constexpr int n = 12000;
  const auto deck = [](int IBANDW) {
    std::string t = " CHEC   P4.314  CHAIN\n\n\n\n";
    t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d", n, 2, 0, 0, 0, 0, 2, 0, 0, 1, 0, 0, 0, 0, IBANDW);
    t += card("%5d%10.1f%10.1f%10.1f", 1, 0.0, 0.0, 0.0) + card("%5d%10.1f%10.1f%10.1f", n, n - 1.0, 0.0, 0.0);
    t += card("%5d    000111%5d", 1, n) + card("%5d    111111", 1);
    t += card("%5d%5d%5d", 1, n - 1, 1) + "    1    1    0\n" + card("%5d%10.1f", 1, 1.0) + "\n";
    t += card("%5d%10.1f", 1, 1.0) + "\n";
    for (int e = 1; e < n; ++e) {
      const int half = e / 2;
      const int I = e % 2 == 1 ? half + 1 : n - half + 1;
      const int J = e % 2 == 1 ? n - half : half + 1;
      t += card("%5d%5d%5d%5d%5d", e, I, J, 1, 1);
    }
    return t + "\n\n    0    0    0\nNONE\n STOP\n";
  };
  const RunResult plain = run_deck(deck(0), "64M");
  EXPECT_EQ(plain.status, status_fatal);
  EXPECT_NE(plain.report.find("**** STORAGE CHECK ****"), std::string::npos);
  const RunResult renumbered = run_deck(deck(1), "64M");
  EXPECT_EQ(renumbered.status, status_good) << renumbered.errors;
  // 3 (n - 1) equations, columns of 4, 5, 6 but for the first node's.
  EXPECT_NE(renumbered.report.find("STORAGE FOR STRUCTURE STIFFNESS MATRIX ......... =      179976"),
            std::string::npos);
}

}  // namespace
}  // namespace tidearc::test
