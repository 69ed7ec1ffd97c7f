// Components of an irregular sea: generated from a spectrum, or given one by one.
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>

#include "model/gravity.h"
#include "run/layout.h"
#include "run/units.h"
#include "sea/irrsea.h"
#include "sea/sea_report.h"
#include "sea/spectrum.h"
#include "sea/wave_state.h"

namespace tidearc {
namespace {

constexpr int most_spectrum_points = 20;
constexpr int pairs_on_a_card = 4;
constexpr double lowest_frequency = 1e-7;  ///< in place of zero [1/s]

/// The spectrum of generated components, of either kind.
struct Spectrum {
  bool given = false;  ///< by points
  PiersonMoskowitz formula{};
  std::size_t points = 0;
  std::array<double, most_spectrum_points> f{};
  std::array<double, most_spectrum_points> S{};
  int skipped = 0;  ///< random numbers skipped before each phase
};

/// A direction off the horizontal plane is told; false then.
bool take_direction(Columns where) {
  make_unit(wave.direction, where);
  write_sea_direction(wave.direction);
  if (is_horizontal(wave.direction)) return true;
  sea_error("WAVE DIRECTION DOES NOT LIE ON THE HORIZONTAL PLANE", where);
  return false;
}

// --- generated ------------------------------------------------------------------------------------------------------

bool read_pierson_moskowitz(Spectrum& spectrum) {
  double wind = 0.0;
  read(units.NDIN, "4F10.0,I5", wind, wave.direction, spectrum.skipped);
  spectrum.formula = pierson_moskowitz(wave.g, wind);
  write_sea_value("MEAN WIND VELOCITY AT 64 FT ABOVE SEA LEVEL", wind);
  const bool on_plane = take_direction({11, 40});
  write_sea_count("NUMBER OF RANDOM NUMBERS TO SKIP", spectrum.skipped);
  return on_plane;
}

/// All pairs are read, those behind the twentieth for the order of the deck alone.
void read_pairs(Spectrum& spectrum, int count) {
  for (int first = 0; first < count; first += pairs_on_a_card) {
    std::array<double, 2 * pairs_on_a_card> pairs{};
    read(units.NDIN, "8F10.3", pairs);
    for (int i = first; i < std::min({count, first + pairs_on_a_card, most_spectrum_points}); ++i) {
      const auto at = static_cast<std::size_t>(i);
      spectrum.f[at] = pairs[2 * static_cast<std::size_t>(i - first)];
      spectrum.S[at] = pairs[2 * static_cast<std::size_t>(i - first) + 1];
      write(units.NDOUT, "8X,2G14.5", spectrum.f[at], spectrum.S[at]);
    }
  }
  spectrum.points = static_cast<std::size_t>(std::clamp(count, 0, most_spectrum_points));
}

bool read_spectrum_points(Spectrum& spectrum) {
  int count = 0;
  read(units.NDIN, "I5,3F10.0,I5", count, wave.direction, spectrum.skipped);
  spectrum.given = true;
  if (count > most_spectrum_points) sea_error("NUMBER OF POINTS IN SPECTRA CAN NOT BE LARGER THAN 20,", {1, 5});
  write_sea_count("NUMBER OF SPECTRUM POINTS", count);
  const bool on_plane = take_direction({6, 35});
  write_sea_count("NUMBER OF RANDOM NUMBERS TO SKIP", spectrum.skipped);
  write(units.NDOUT, "8X,'     FREQUENCY         VALUE'");
  read_pairs(spectrum, count);
  return on_plane;
}

/// A value below zero, given or continued, counts as zero.
double value_at(const Spectrum& spectrum, double f) {
  if (!spectrum.given) return spectrum_value(spectrum.formula, f);
  const TableValue value = spectrum_value(std::span(spectrum.f).first(spectrum.points), spectrum.S, f);
  if (value.outside) sea_error("FREQUENCY RANGE SPECIFIED IS BEYOND THE SPECTRUM", not_on_deck);
  return std::max(0.0, value.S);
}

struct Band {
  double fmin = 0.0;
  double fmax = 0.0;
  double df = 0.0;
  int count = 0;
};

Band read_band() {
  Band band;
  read(units.NDIN, "8F10.3", band.fmin, band.fmax, band.df);
  if (!(band.fmin > 0.0)) band.fmin = lowest_frequency;
  band.count = component_count(band.fmin, band.fmax, band.df, most_components);
  if (band.count > most_components) {
    sea_error("NUMBER OF FREQUENCIES CAN NOT BE LARGER THAN 100");  // a number of former days: 4000 are
    band.count = most_components;
  }
  write_sea_tolerance("MINIMUM FREQUENCY CUT OFF", band.fmin);
  write_sea_tolerance("MAXIMUM FREQUENCY CUT OFF", band.fmax);
  write_sea_tolerance("FREQUENCY INCREMENT", band.df);
  write_sea_count("NUMBER OF COMPONENTS", band.count);
  return band;
}

SeaSum generate_components(const ComponentCard& card) {
  Spectrum spectrum;
  SeaSum sum;
  sum.on_plane = card.spectrum == 1 ? read_spectrum_points(spectrum) : read_pierson_moskowitz(spectrum);
  const Band band = read_band();
  PhaseNumbers numbers;
  print_component_heading();
  for (int i = 0; i < band.count; ++i) {
    ComponentData data;
    data.f = band.fmin + i * band.df;
    data.T = 1.0 / data.f;
    const double area = std::max(0.0, value_at(spectrum, data.f) * band.df);
    data.height = 2.0 * std::sqrt(2.0 * area);
    data.phase = numbers.phase(spectrum.skipped);
    data.direction = wave.direction;
    add_component(data, card);
    sum.square += 16.0 * area;
    sum.amplitude += 0.5 * data.height;
  }
  return sum;
}

// --- given by the user ----------------------------------------------------------------------------------------------

ComponentData read_component(bool with_direction, double start_time) {
  ComponentData data;
  if (with_direction) {
    read(units.NDIN, "6F10.0", data.T, data.height, data.phase, data.direction);
    make_unit(data.direction, {31, 60});
  } else {
    read(units.NDIN, "3F10.0", data.T, data.height, data.phase);
    data.direction = wave.direction;
  }
  if (!(data.T > 0.0)) {
    fatal_box("     ERROR-----  WAVE PERIOD IS NOT POSITIVE.");
    complain({1, 10}, "wave period of a component is not positive");
    CLOSUP();
  }
  data.f = 1.0 / data.T;
  data.phase -= start_time * 360.0 / data.T;
  return data;
}

SeaSum read_user_components(const ComponentCard& card, double start_time) {
  SeaSum sum;
  int count = 0;
  int unused = 0;
  read(units.NDIN, "I5,3F10.0,I5", count, wave.direction, unused);
  if (count > most_components) {
    sea_error("NUMBER OF COMPONENTS EXCEEDS 4000, SET = 4000 ", {1, 5});
    count = most_components;
  }
  write_sea_count("NUMBER OF COMPONENTS", count);
  const bool with_direction = card.generation == components_directions;
  if (!with_direction) sum.on_plane = take_direction({6, 35});
  print_component_heading();
  for (int i = 0; i < count; ++i) {
    const ComponentData data = read_component(with_direction, start_time);
    add_component(data, card);
    sum.square += 2.0 * data.height * data.height;
    sum.amplitude += 0.5 * data.height;
  }
  return sum;
}

}  // namespace

SeaSum read_components(const ComponentCard& card, double start_time) {
  wave.NCOMP = 0;
  const bool given = card.generation == components_one_direction || card.generation == components_directions;
  return given ? read_user_components(card, start_time) : generate_components(card);
}

}  // namespace tidearc
