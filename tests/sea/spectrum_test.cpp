// Spectra, counts of components and random phases as formulas.
#include "sea/spectrum.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace tidearc::test {
namespace {

constexpr int most = 4000;

// A, B and S(0.07) for a wind of 20 m/s: computed by hand from the formula.
TEST(PiersonMoskowitzSpectrum, HasItsConstantsAndValues) {
  const PiersonMoskowitz spectrum = pierson_moskowitz(9.81, 20.0);
  EXPECT_NEAR(spectrum.A, 5.00154e-4, 5e-10);
  EXPECT_NEAR(spectrum.B, 2.74833e-5, 5e-11);
  EXPECT_NEAR(spectrum_value(spectrum, 0.07), 94.7315, 5e-5);
}

// Case W08 of the project's verification cases: rows wind, significant height, peak frequency, closed form; the last
// in feet.
struct PeakRow {
  double g, wind, Hs, fp;
};
constexpr std::array peak_rows{
    PeakRow{9.80665, 15.0, 4.80085388, 0.0912704044}, PeakRow{9.80665, 20.0, 8.53485134, 0.0684528033},
    PeakRow{9.80665, 25.0, 13.3357052, 0.0547622426}, PeakRow{32.2, 80.0, 41.5892173, 0.0561909589}};

TEST(PiersonMoskowitzSpectrum, PeaksWhereItsClosedFormDoes) {
  for (const PeakRow& row : peak_rows) {
    const PiersonMoskowitz spectrum = pierson_moskowitz(row.g, row.wind);
    const double top = spectrum_value(spectrum, row.fp);
    EXPECT_GT(top, spectrum_value(spectrum, row.fp * 1.0001));
    EXPECT_GT(top, spectrum_value(spectrum, row.fp * 0.9999));
  }
}

TEST(PiersonMoskowitzSpectrum, HoldsTheEnergyOfItsClosedForm) {
  for (const PeakRow& row : peak_rows) {
    const PiersonMoskowitz spectrum = pierson_moskowitz(row.g, row.wind);
    double m0 = 0.0;
    const double df = row.fp / 400.0;
    for (double f = df; f < 40.0 * row.fp; f += df) m0 += spectrum_value(spectrum, f) * df;
    // What lies beyond 40 peak frequencies is 1.25/40^4 of the energy.
    EXPECT_NEAR(4.0 * std::sqrt(m0), row.Hs, 1e-6 * row.Hs);
  }
}

TEST(PiersonMoskowitzSpectrum, IsZeroAtVeryLowFrequenciesAndWithoutWind) {
  EXPECT_EQ(spectrum_value(pierson_moskowitz(9.81, 20.0), 1e-7), 0.0);
  EXPECT_EQ(spectrum_value(pierson_moskowitz(9.81, 0.0), 0.1), 0.0);
}

constexpr std::array frequencies{0.05, 0.10, 0.20};
constexpr std::array values{2.0, 12.0, 4.0};

TEST(SpectrumByPoints, IsStraightBetweenItsPoints) {
  EXPECT_NEAR(spectrum_value(frequencies, values, 0.075).S, 7.0, 1e-12);
  EXPECT_NEAR(spectrum_value(frequencies, values, 0.15).S, 8.0, 1e-12);
  EXPECT_FALSE(spectrum_value(frequencies, values, 0.15).outside);
}

TEST(SpectrumByPoints, HoldsItsFirstAndItsLastPoint) {
  EXPECT_EQ(spectrum_value(frequencies, values, 0.05).S, 2.0);
  EXPECT_FALSE(spectrum_value(frequencies, values, 0.05).outside);
  EXPECT_EQ(spectrum_value(frequencies, values, 0.20).S, 4.0);
  EXPECT_FALSE(spectrum_value(frequencies, values, 0.20).outside);
}

TEST(SpectrumByPoints, ContinuesItsLastIntervalOutsideButNotBelowZero) {
  const TableValue above = spectrum_value(frequencies, values, 0.24);
  EXPECT_TRUE(above.outside);
  EXPECT_NEAR(above.S, 0.8, 1e-12);
  EXPECT_EQ(spectrum_value(frequencies, values, 0.30).S, 0.0);
  const TableValue below = spectrum_value(frequencies, values, 0.04);
  EXPECT_TRUE(below.outside);
  EXPECT_NEAR(below.S, 16.8, 1e-12);
}

TEST(SpectrumByPoints, TakesTheFirstPairThatBrackets) {
  constexpr std::array f{0.1, 0.2, 0.1, 0.2};
  constexpr std::array S{1.0, 2.0, 10.0, 20.0};
  EXPECT_NEAR(spectrum_value(f, S, 0.15).S, 1.5, 1e-12);
}

TEST(SpectrumByPoints, TakesTheUpperValueOfAnIntervalWithoutWidth) {
  constexpr std::array f{0.1, 0.1};
  constexpr std::array S{1.0, 2.0};
  EXPECT_EQ(spectrum_value(f, S, 0.1).S, 2.0);
}

TEST(SpectrumByPoints, OfFewerThanTwoPointsIsZero) {
  EXPECT_EQ(spectrum_value(std::span(frequencies).first(1), values, 0.05).S, 0.0);
  EXPECT_TRUE(spectrum_value(std::span(frequencies).first(0), values, 0.05).outside);
}

TEST(ComponentCount, IsTheWholePartOfTheBandPlusOne) {
  EXPECT_EQ(component_count(0.04, 0.30, 0.01, most), 27);
  EXPECT_EQ(component_count(0.1, 0.3, 0.1, most), 2);  // (0.3 - 0.1)/0.1 is just below 2 in double arithmetic
  EXPECT_EQ(component_count(0.25, 0.5, 0.125, most), 3);
  EXPECT_EQ(component_count(0.2, 0.2, 0.1, most), 1);
}

TEST(ComponentCount, BelowZeroIsZero) {
  EXPECT_EQ(component_count(0.3, 0.1, 0.01, most), 0);
  EXPECT_EQ(component_count(0.3, 0.2, 0.1, most), 1);  // -0.99... has the whole part 0
  EXPECT_EQ(component_count(0.1, 0.3, -1e-12, most), 0);
}

TEST(ComponentCount, StopsOneAboveItsLimit) {
  EXPECT_EQ(component_count(0.0, 3999.5, 1.0, most), 4000);
  EXPECT_EQ(component_count(0.0, 4000.0, 1.0, most), 4001);
  EXPECT_EQ(component_count(0.1, 0.3, 1e-300, most), 4001);
  EXPECT_EQ(component_count(0.1, 0.3, 0.0, most), 4001);
  EXPECT_EQ(component_count(0.2, 0.2, 0.0, most), 1);
}

// From the sequence 1013904223, 1196435762, 3519870697, 2868466484, 1649599747, 2670642822 (j0 = 0), reckoned apart.
TEST(RandomPhases, AreThoseOfTheSequence) {
  PhaseNumbers numbers;
  EXPECT_NEAR(numbers.phase(0), 50.1420, 5e-5);
  EXPECT_NEAR(numbers.phase(0), -120.2160, 5e-5);
  EXPECT_NEAR(numbers.phase(0), 111.9253, 5e-5);
  PhaseNumbers again;
  EXPECT_EQ(again.draw(), 1013904223.0 / 4294967296.0);
  EXPECT_EQ(again.draw(), 1196435762.0 / 4294967296.0);
  EXPECT_EQ(again.draw(), 3519870697.0 / 4294967296.0);
}

TEST(RandomPhases, SkipAsManyNumbersAsAreDrawn) {
  for (const int n : {0, 1, 2, 3, 17, 1000}) {
    PhaseNumbers one_by_one;
    for (int i = 0; i < n; ++i) one_by_one.draw();
    PhaseNumbers at_once;
    at_once.skip(n);
    EXPECT_EQ(at_once.draw(), one_by_one.draw()) << n;
  }
}

TEST(RandomPhases, SkipNothingForANegativeCount) {
  PhaseNumbers numbers;
  numbers.skip(-5);
  EXPECT_EQ(numbers.draw(), 1013904223.0 / 4294967296.0);
}

TEST(RandomPhases, SkipBeforeEachPhase) {
  PhaseNumbers numbers;
  PhaseNumbers reference;
  const double first = numbers.phase(2);
  const double second = numbers.phase(2);
  reference.skip(2);
  EXPECT_EQ(first, reference.phase(0));
  reference.skip(2);
  EXPECT_EQ(second, reference.phase(0));
}

TEST(RandomPhases, FillTheCircleEvenly) {
  PhaseNumbers numbers;
  std::array<int, 4> quarter{};
  for (int i = 0; i < 4000; ++i) {
    const double phase = numbers.phase(0);
    ASSERT_LE(std::abs(phase), 180.0);
    ++quarter[static_cast<std::size_t>(std::min(3.0, (phase + 180.0) / 90.0))];
  }
  // 1000 each; five standard deviations of a fair draw are 137.
  for (const int count : quarter) EXPECT_NEAR(count, 1000, 137);
}

}  // namespace
}  // namespace tidearc::test
