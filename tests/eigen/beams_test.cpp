// Frequencies of beams with lumped masses against an independent program, and the order in which they converge.
#include <gtest/gtest.h>

#include <cmath>
#include <cstdio>
#include <string>

#include "spring_deck.h"
#include "support/run_deck.h"
#include "support/truss_deck.h"

namespace tidearc {
namespace {

using namespace test;

/// A beam of 3 m along X that bends in the plane of X and Z: E 2.1E11, A 0.01, I 1E-5, 7850 kg/m3, in n elements.
std::string beam_deck(int n, int modes, const std::string& left, const std::string& right) {
  char line[128];
  const auto card = [&](const char* pattern, auto... values) {
    std::snprintf(line, sizeof line, pattern, values...);
    return std::string(line);
  };
  std::string t = " STAR   P4.314  BEAM\n\n\n\n";
  t += card("%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d%5d\n", n + 1, n + 1, 0, 0, 0, 0, 3, 0, 0, 1, 0, 1);
  for (int i = 0; i <= n; ++i) t += card("%5d", i + 1) + ten(3.0 * i / n) + ten(0.0) + ten(0.0) + "\n";
  t += card("%5d    110101%5d%5d\n", 1, n + 1, 1);
  t += card("%5d    %s\n", 1, left.c_str()) + card("%5d    %s\n", n + 1, right.c_str());
  t += card("%5d\n", modes);
  t += card("%5d%5d%5d", 3, n, 1) + std::string(25, ' ') + "BEAM\n" + card("%5d%5d%5d\n", 1, 1, 2);
  t += card("%5d     ", 1) + ten(2.1e11) + ten(0.3) + ten(0.0) + ten(7850.0) + "\n";
  t += card("%5d%5d", 1, 0) + ten(0.0) + ten(0.0) + ten(0.01) + ten(0.0) + ten(2e-5) + ten(1e-5) + "1.E-5\n\n\n";
  for (int i = 1; i <= n; ++i) t += card("%5d%5d%5d%5d%5d%5d%5d\n", i, i, i + 1, 0, 0, 1, 1);
  return t + "\n\n" + card("%5d%5d%5d\n", 0, 0, 0) + "EIGN\n    1   60\nNONE\n STOP\n";
}

double frequency(const std::string& report, std::size_t mode) {
  return std::sqrt(last_values(report).at(mode)) / (2.0 * 3.14159265358979324);
}

// Independent program, half of the mass of an element at each end.
struct LumpedBeam {
  int elements;
  double cantilever[2], simple[2];
};
constexpr LumpedBeam lumped[] = {{2, {9.12896257, 47.0241189}, {28.3392308, 0.0}},
                                 {4, {9.88620247, 58.1085411}, {28.5377461, 113.356923}},
                                 {8, {10.097196, 62.1903263}, {28.5459662, 114.150985}}};

TEST(BeamModes, OfACantileverAgreeWithAnIndependentProgram) {
  for (const LumpedBeam& beam : lumped) {
    const RunResult run = run_deck(beam_deck(beam.elements, 2, "111111", "110101"));
    ASSERT_EQ(run.status, 0) << run.errors;
    for (std::size_t mode = 0; mode < 2; ++mode)
      EXPECT_NEAR(frequency(run.report, mode) / beam.cantilever[mode], 1.0, 1e-5) << beam.elements << ' ' << mode;
  }
}

TEST(BeamModes, OfASimplySupportedBeamAgreeWithAnIndependentProgram) {
  for (const LumpedBeam& beam : lumped) {
    const int modes = beam.elements == 2 ? 1 : 2;  // two elements have one mass
    const RunResult run = run_deck(beam_deck(beam.elements, modes, "111101", "111101"));
    ASSERT_EQ(run.status, 0) << run.errors;
    for (int mode = 0; mode < modes; ++mode)
      EXPECT_NEAR(frequency(run.report, static_cast<std::size_t>(mode)) / beam.simple[mode], 1.0, 1e-5)
          << beam.elements << ' ' << mode;
  }
}

TEST(BeamModes, OfALumpedCantileverConvergeInSecondOrder) {
  constexpr double exact = 10.1695841;  // (1.8751041 / L)^2 sqrt(EI / m) / (2 pi)
  double before = 0.0;
  for (const int n : {8, 16, 32}) {
    const double error = exact - frequency(run_deck(beam_deck(n, 1, "111111", "110101")).report, 0);
    EXPECT_GT(error, 0.0) << "lumped masses of a cantilever make it slower";
    if (before > 0.0) {
      EXPECT_NEAR(std::log2(before / error), 2.0, 0.05) << n;
    }
    before = error;
  }
}

}  // namespace
}  // namespace tidearc
